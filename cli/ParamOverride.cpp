#include "cli/ParamOverride.h"

#include "cli/CliError.h"

#include <algorithm>
#include <cctype>
#include <cmath>
#include <cstdlib>

namespace cli {

namespace {

std::string trim(const std::string& s) {
    std::size_t b = 0, e = s.size();
    while (b < e && std::isspace(static_cast<unsigned char>(s[b]))) ++b;
    while (e > b && std::isspace(static_cast<unsigned char>(s[e - 1]))) --e;
    return s.substr(b, e - b);
}

std::string lower(std::string s) {
    for (char& c : s) c = static_cast<char>(std::tolower(static_cast<unsigned char>(c)));
    return s;
}

// The whole of `text` as a finite number; false when anything else is left over.
bool parseNumber(const std::string& text, double& out) {
    if (text.empty()) return false;
    char* end = nullptr;
    out = std::strtod(text.c_str(), &end);
    return end == text.c_str() + text.size() && std::isfinite(out);
}

// "1,2,3" or "[1, 2, 3]": two or three numbers; false otherwise.
bool parseNumberList(std::string text, std::vector<double>& out) {
    if (text.size() >= 2 && text.front() == '[' && text.back() == ']') text = text.substr(1, text.size() - 2);
    if (text.find(',') == std::string::npos) return false;
    out.clear();
    std::size_t start = 0;
    while (true) {
        const std::size_t comma = text.find(',', start);
        double v;
        if (!parseNumber(trim(text.substr(start, comma - start)), v)) return false;
        out.push_back(v);
        if (comma == std::string::npos) break;
        start = comma + 1;
    }
    return out.size() == 2 || out.size() == 3;
}

}  // namespace

host::SceneValue parseOverrideValue(const std::string& raw) {
    const std::string text = trim(raw);
    const std::string word = lower(text);
    host::SceneValue v;
    if (word == "none" || word == "null") {
        v.kind = host::SceneValue::Kind::None;
    } else if (word == "true" || word == "on") {
        v.kind = host::SceneValue::Kind::Number;
        v.number = 1;
    } else if (word == "false" || word == "off") {
        v.kind = host::SceneValue::Kind::Number;
        v.number = 0;
    } else if (parseNumber(text, v.number)) {
        v.kind = host::SceneValue::Kind::Number;
    } else if (parseNumberList(text, v.numbers)) {
        v.kind = host::SceneValue::Kind::Numbers;
    } else {
        v.kind = host::SceneValue::Kind::Text;
        v.text = text;
    }
    return v;
}

host::SceneParameter parseOverride(const std::string& argument) {
    const std::size_t eq = argument.find('=');
    if (eq == std::string::npos)
        throw badInput("--set \"" + argument + "\": expected \"Name=value\", e.g. --set \"Open Parameter=0.5\"");
    host::SceneParameter p;
    p.name = trim(argument.substr(0, eq));
    if (p.name.empty()) throw badInput("--set \"" + argument + "\": the parameter name is missing");
    const std::string value = argument.substr(eq + 1);
    if (trim(value).empty()) throw badInput("--set \"" + argument + "\": the value is missing");
    p.path = "--set " + p.name;
    p.value = parseOverrideValue(value);
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
