#pragma once
// Reads a light layer's "light": type, intensity, colour, cone and shadows.

#include "host/comp/scene/SceneFields.h"

namespace host {
namespace scene {

void read_light(const Reader& in, const Json& j, const std::string& path, LightSettings& l);

}  // namespace scene
}  // namespace host
