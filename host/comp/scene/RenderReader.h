#pragma once
// Reads the scene's "render" settings: the time or frames, the bit depth and the downsample.

#include "host/comp/scene/SceneFields.h"

namespace host {
namespace scene {

// Times and frames are held to the composition as the command line's --time and --frames are.
SceneRender read_render(const Reader& in, const Json& j, const std::string& path, const Composition& comp);

}  // namespace scene
}  // namespace host
