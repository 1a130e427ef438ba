#include "host/comp/ParamText.h"

#include <cctype>
#include <cmath>
#include <cstdlib>

namespace host {

std::string trimBlanks(const std::string& s) {
    std::size_t b = 0, e = s.size();
    while (b < e && std::isspace(static_cast<unsigned char>(s[b]))) ++b;
    while (e > b && std::isspace(static_cast<unsigned char>(s[e - 1]))) --e;
    return s.substr(b, e - b);
}

namespace {

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
        if (!parseNumber(trimBlanks(text.substr(start, comma - start)), v)) return false;
        out.push_back(v);
        if (comma == std::string::npos) break;
        start = comma + 1;
    }
    return out.size() == 2 || out.size() == 3;
}

}  // namespace

SceneValue parseParamText(const std::string& raw) {
    const std::string text = trimBlanks(raw);
    const std::string word = lower(text);
    SceneValue v;
    if (word == "none" || word == "null") {
        v.kind = SceneValue::Kind::None;
    } else if (word == "true" || word == "on") {
        v.kind = SceneValue::Kind::Number;
        v.boolean = true;
        v.number = 1;
    } else if (word == "false" || word == "off") {
        v.kind = SceneValue::Kind::Number;
        v.boolean = true;
        v.number = 0;
    } else if (parseNumber(text, v.number)) {
        v.kind = SceneValue::Kind::Number;
    } else if (parseNumberList(text, v.numbers)) {
        v.kind = SceneValue::Kind::Numbers;
    } else {
        v.kind = SceneValue::Kind::Text;
        v.text = text;
    }
    return v;
}

}  // namespace host
