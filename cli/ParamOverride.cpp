#include "cli/ParamOverride.h"

#include "cli/CliError.h"
#include "host/comp/ParamText.h"

#include <algorithm>

namespace cli {

host::SceneParameter parseOverride(const std::string& argument) {
    const std::size_t eq = argument.find('=');
    if (eq == std::string::npos)
        throw badInput("--set \"" + argument + "\": expected \"Name=value\", e.g. --set \"Open Parameter=0.5\"");
    host::SceneParameter p;
    p.name = host::trimBlanks(argument.substr(0, eq));
    if (p.name.empty()) throw badInput("--set \"" + argument + "\": the parameter name is missing");
    const std::string value = argument.substr(eq + 1);
    if (host::trimBlanks(value).empty()) throw badInput("--set \"" + argument + "\": the value is missing");
    p.path = "--set " + p.name;
    p.value = host::parseParamText(value);
    return p;
}

void applyOverrides(const std::vector<std::string>& arguments, std::vector<host::SceneParameter>& parameters) {
    for (const std::string& argument : arguments) {
        host::SceneParameter p = parseOverride(argument);
        parameters.erase(std::remove_if(parameters.begin(), parameters.end(),
                                        [&](const host::SceneParameter& q) { return q.name == p.name; }),
                         parameters.end());
        parameters.push_back(std::move(p));
    }
}

}  // namespace cli
