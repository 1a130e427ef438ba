#pragma once
// Reads a layer's "transform": anchor, position, scale, rotations and, for cameras and lights, aim.

#include "host/comp/scene/SceneFields.h"

namespace host {
namespace scene {

// Fills `l.transform`; what the scene leaves out keeps the layer's default placement.
void read_transform(const Reader& in, const Json& j, const std::string& path, Layer& l);

}  // namespace scene
}  // namespace host
