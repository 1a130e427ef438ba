#pragma once
// Parameter overrides from the command line: --set "Open Parameter=0.5".

#include "host/comp/Scene.h"

#include <string>
#include <vector>

namespace cli {

// "Name=value" -> a scene parameter labelled "--set Name" for messages, its value read by
// host::parseParamText. Throws CliError (bad input) when there is no '=', no name or no value.
host::SceneParameter parseOverride(const std::string& argument);

// Appends the overrides to the scene's parameters; an override replaces whatever the scene
// gave that parameter, keyframes included.
void applyOverrides(const std::vector<std::string>& arguments, std::vector<host::SceneParameter>& parameters);

}  // namespace cli
