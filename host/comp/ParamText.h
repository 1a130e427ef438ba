#pragma once
// A parameter value written as text, e.g. on a command line: read the way a scene file's JSON
// value is read, so both go through the same conversion afterwards.

#include <string>

#include "host/comp/Scene.h"

namespace host {

// Surrounding blanks are ignored; then
//   none / null                    -> no layer
//   true / false, on / off          -> 1 / 0 (any letter case)
//   a number                        -> that number
//   "r,g,b", "x,y" or "[r, g, b]"   -> a list of numbers (colour 0..255, point in pixels)
//   anything else                   -> text (a popup item or a layer name)
SceneValue parseParamText(const std::string& text);

// `text` without leading and trailing white space.
std::string trimBlanks(const std::string& text);

}  // namespace host
