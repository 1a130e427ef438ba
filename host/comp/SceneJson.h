#pragma once
// Scene text to a JSON document, stricter than JSON itself: a key given twice in one object and
// a number too large for a double are errors naming the JSON path, not silently resolved.

#include <nlohmann/json.hpp>

#include <string>

namespace host {

// Ordered, so parameters keep the order they are written in.
using SceneJson = nlohmann::ordered_json;

// Throws SceneError: "scene.json: composition.width: ...".
SceneJson parseSceneJson(const std::string& text, const std::string& file);

}  // namespace host
