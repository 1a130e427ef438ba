#pragma once
// Reads a camera layer's "camera": zoom, depth of field and projection.

#include "host/comp/scene/SceneFields.h"

namespace host {
namespace scene {

void read_camera(const Reader& in, const Json& j, const std::string& path, CameraSettings& c);

}  // namespace scene
}  // namespace host
