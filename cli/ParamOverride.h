#pragma once
// Parameter overrides from the command line: --set "Open Parameter=0.5".

#include "host/Scene.h"

#include <string>
#include <vector>

namespace cli {

// Reads the text after '=' as the scene file would read the JSON value:
//   none / null           -> no layer
//   true / false, on / off -> 1 / 0
//   a number               -> that number
//   "r,g,b", "x,y" or "[r, g, b]" -> a list of numbers (colour 0..255, point in pixels)
//   anything else          -> text (a popup item or a layer name)
host::SceneValue parseOverrideValue(const std::string& text);

// "Name=value" -> a scene parameter labelled "--set Name" for messages. Throws CliError (bad
// input) when there is no '=' or no name.
host::SceneParameter parseOverride(const std::string& argument);

// Appends the overrides to the scene's parameters; an override replaces whatever the scene
// gave that parameter, keyframes included.
void applyOverrides(const std::vector<std::string>& arguments, std::vector<host::SceneParameter>& parameters);

}  // namespace cli
