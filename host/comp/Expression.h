#pragma once
// The emulated host's expression support. Expressions are stored verbatim; the one form the
// effect writes can also be evaluated:
//
//   try{length(thisComp.layer("NAME").toWorld([1,1,1]));}catch(e){value;}
//
// optionally followed by a line feed. It yields the length of the world-space image of the
// named layer's local point (1, 1, 1), or the property's own value when no layer has that name.

#include "host/comp/Composition.h"

#include <optional>
#include <string>

namespace host {

// The layer name inside the control-layer link expression, or nothing for any other text.
std::optional<std::string> parse_layer_link_expression(const std::string& text);

struct ExpressionResult {
    enum class Status {
        Evaluated,       // the named layer was found
        FellBack,        // no such layer: the catch branch gave the property's own value
        Unsupported,     // not a form this host understands: the pre-expression value is kept
    };
    Status status;
    double value;
};

// Evaluates `text` at `comp_seconds` for a one-dimensional property whose value before the
// expression is `own_value`.
ExpressionResult evaluate_expression(const std::string& text, const Composition& comp,
                                     double comp_seconds, double own_value);

}  // namespace host
