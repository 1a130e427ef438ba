#pragma once
// Reads the layer's "effect": its parameter values by display name, constant or keyed.

#include "host/comp/scene/SceneFields.h"

#include <vector>

namespace host {
namespace scene {

// Appends the parameters in the order they are written.
void read_effect(const Reader& in, const Json& j, const std::string& path, std::vector<SceneParameter>& parameters);

}  // namespace scene
}  // namespace host
