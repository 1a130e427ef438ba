#pragma once
// Reads the scene's "composition": size, pixel aspect, frame rate, duration and background.

#include "host/comp/scene/SceneFields.h"

#include <memory>

namespace host {
namespace scene {

std::shared_ptr<Composition> read_composition(const Reader& in, const Json& j, const std::string& path);

}  // namespace scene
}  // namespace host
