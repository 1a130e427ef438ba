#pragma once
// The scene files of tests/e2e/scenes run through host::Session with the built module, and the
// output pixels read back as floats.

#include <memory>
#include <string>

#include "host/session/Session.h"

namespace e2e {

// tests/e2e/scenes/<name> set up in a session with the built module.
std::unique_ptr<host::Session> openScene(const std::string& name, host::HostOptions options = host::HostOptions());

// The scene's own frame (its render time) at `bit_depth` and `downsample`.
host::RenderResult renderScene(host::Session& session, short bit_depth = 32, int downsample = 1);

// Output pixel (x, y) as floats, 8-bit and 16-bit white becoming 1.
PF_PixelFloat pixelAt(const host::RenderResult& result, int x, int y);

}  // namespace e2e
