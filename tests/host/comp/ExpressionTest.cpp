// Recognising the control-layer link expression and refusing everything else (its evaluation
// is tested through the stream suite).
#include "host/comp/Expression.h"

#include <gtest/gtest.h>

#include <string>

namespace host {
namespace {

std::string link(const std::string& name, const char* point = "[1,1,1]", const char* end = "\n") {
    return "try{length(thisComp.layer(\"" + name + "\").toWorld(" + point + "));}catch(e){value;}" + end;
}

// The name comes out with or without the trailing line feed; any other text is refused (a
// quote inside the name would end the string early in the real language).
TEST(LinkExpression, ParsesTheNameOfExactlyTheLinkText) {
    EXPECT_EQ(parse_layer_link_expression(link("Ctrl")).value_or("?"), "Ctrl");
    EXPECT_EQ(parse_layer_link_expression(link("My layer 2", "[1,1,1]", "")).value_or("?"), "My layer 2");
    for (const std::string& text : {std::string("value*2"), std::string(), link("A", "[1,1,0]"),
                                    link("A", "[1,1,1]", "\n\n"), link("A\"B")})
        EXPECT_FALSE(parse_layer_link_expression(text)) << text;
}

}  // namespace
}  // namespace host
