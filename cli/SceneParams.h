#pragma once
// Gives the effect the parameter values of a scene: display names become parameter indices,
// popup texts choice numbers, layer names layer ids, as the user would pick them in the
// effect controls.

#include "host/Host.h"
#include "host/Scene.h"

#include <string>
#include <vector>

namespace cli {

// The 1-based choice of `text` among the items "A|B|C" (exact match first, then ignoring
// case); 0 when none matches.
int popupChoice(const std::string& items, const std::string& text);

// The closest display name to `name` among the parameters with a value, for "did you mean";
// empty when nothing is close.
std::string closestParamName(const host::Host& host, const std::string& name);

// Converts one value for parameter `index`. Throws CliError (bad input) naming `path`.
host::ParamValue toParamValue(host::Host& host, PF_ParamIndex index, const host::SceneValue& value,
                              const std::string& path);

// Sets every parameter (constant or keyframed) in order. A supervised parameter is followed by
// USER_CHANGED_PARAM, as a change in the effect controls would be. Throws CliError: bad input
// for names and values, render failure when the effect answers the change with an error.
void applySceneParameters(host::Host& host, const std::vector<host::SceneParameter>& parameters);

}  // namespace cli
