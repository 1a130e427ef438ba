#pragma once
// Renders the planned frames and writes them in order. With more than one thread the write of
// frame N (conversion from the host's world, flattening, encoding, the all-or-nothing file
// write) runs on a oneTBB worker while frame N+1 renders: at most two frames are in flight,
// one rendering and one being written.

#include "cli/JobPlan.h"
#include "cli/Progress.h"
#include "cli/RenderSession.h"
#include "host/pixels/Image.h"
#include "host/files/ImageIO.h"

#include <optional>

namespace cli {

struct FrameStyle {
    int bit_depth = 8;
    std::optional<host::RGBA> flatten_over;  // composite over this colour, or keep alpha
    host::SaveOptions encoding;
};

// Throws CliError: the render failure of a frame (exit 4) or its write failure (exit 5), each
// naming the frame; after SIGINT/SIGTERM, an interruption naming the frame not written (exit
// 130/143). Every frame before the one named is complete under its final name; no other file
// is left.
void renderFrames(RenderSession& session, const JobPlan& plan, const FrameStyle& style, bool overlap,
                  Progress& progress);

}  // namespace cli
