#pragma once
// The --list-params table: every parameter the effect registered, with its kind, valid range,
// default, the scene's value and its state in the effect controls.

#include "host/session/Host.h"

#include <string>

namespace cli {

// "enabled", "disabled" or "hidden" from a parameter's UI flags.
const char* uiState(const PF_ParamDef& def);

// Kind as a user would name it: "slider", "integer slider", "angle", "checkbox", "popup",
// "colour", "point", "layer", "group".
const char* kindName(PF_ParamType type);

// The table, one parameter per line, groups as indented headings. Values are those at
// composition time `seconds`.
std::string listParams(host::Host& host, double seconds);

}  // namespace cli
