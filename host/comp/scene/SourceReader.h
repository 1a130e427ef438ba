#pragma once
// Reads a footage or solid layer's "source": an image file or a generated pattern.

#include "host/comp/scene/SceneFields.h"

namespace host {
namespace scene {

// Relative file names are taken from `base_dir`; an image file's size comes from its header.
FootageSource read_source(const Reader& in, const Json& j, const std::string& path, LayerKind kind,
                          const std::string& base_dir);

}  // namespace scene
}  // namespace host
