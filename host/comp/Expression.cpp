#include "host/comp/Expression.h"

#include "host/comp/Transform.h"

#include <cmath>

namespace host {

namespace {

const std::string kHead = "try{length(thisComp.layer(\"";
const std::string kTail = "\").toWorld([1,1,1]));}catch(e){value;}";

bool starts_with(const std::string& s, const std::string& prefix) {
    return s.size() >= prefix.size() && s.compare(0, prefix.size(), prefix) == 0;
}

bool ends_with(const std::string& s, const std::string& suffix) {
    return s.size() >= suffix.size() &&
           s.compare(s.size() - suffix.size(), suffix.size(), suffix) == 0;
}

}  // namespace

std::optional<std::string> parse_layer_link_expression(const std::string& text) {
    std::string body = text;
    if (ends_with(body, "\n")) body.pop_back();
    if (body.size() < kHead.size() + kTail.size()) return std::nullopt;
    if (!starts_with(body, kHead) || !ends_with(body, kTail)) return std::nullopt;
    std::string name = body.substr(kHead.size(), body.size() - kHead.size() - kTail.size());
    // A quote, backslash or line break would change the meaning of the string literal.
    if (name.find_first_of("\"\\\n\r") != std::string::npos) return std::nullopt;
    return name;
}

ExpressionResult evaluate_expression(const std::string& text, const Composition& comp,
                                     double comp_seconds, double own_value) {
    std::optional<std::string> name = parse_layer_link_expression(text);
    if (!name) return {ExpressionResult::Status::Unsupported, own_value};
    const Layer* layer = comp.find_by_name(*name);
    if (layer == nullptr) return {ExpressionResult::Status::FellBack, own_value};
    Vec3 p = layer_to_world(comp, *layer, comp_seconds).transform_point(Vec3{1, 1, 1});
    return {ExpressionResult::Status::Evaluated, std::sqrt(p.x * p.x + p.y * p.y + p.z * p.z)};
}

}  // namespace host
