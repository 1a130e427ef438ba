#pragma once
// Reads the scene's "layers": each layer, its source, transform, camera or light, the effect and parents.

#include "host/comp/scene/SceneFields.h"

namespace host {
namespace scene {

// Adds the layers to `scene.composition` in order and reads the effect of the layer that
// carries it into `scene`. Relative image paths are taken from `base_dir`.
void read_layers(const Reader& in, const Json& j, const std::string& path, const std::string& base_dir,
                 Scene& scene);

}  // namespace scene
}  // namespace host
