#pragma once
// Writes rendered frames: PNG at 8 or 16 bits, OpenEXR at 32, never a half-written file under
// the final name.

#include "host/pixels/Image.h"
#include "host/files/ImageIO.h"

#include <string>

namespace cli {

// Composites a straight-alpha frame over an opaque colour (0..1 channels): the result is
// opaque.
void flattenOver(host::Image& frame, const host::RGBA& background);

// Writes `frame` to `path` (creating missing folders) with the encoder settings of `encoding`
// (its PNG depth follows bit_depth). The file appears under its name only when complete, and a
// failure leaves the file already there untouched. Throws CliError (write failure) naming the
// file and the operating system's reason.
void writeFrame(const host::Image& frame, const std::string& path, int bit_depth, host::SaveOptions encoding = {});
// The same for a frame already in PNG channels.
void writeFrame(const host::QuantisedImage& frame, const std::string& path, host::SaveOptions encoding = {});
// The same for a float world: an OpenEXR.
void writeFrame(const host::FloatWorldFrame& frame, const std::string& path, const host::SaveOptions& encoding = {});

}  // namespace cli
