// Evaluation of the control-layer link expression and refusal of everything else.
#include "host/comp/Expression.h"

#include <gtest/gtest.h>

#include <cmath>
#include <string>

namespace host {
namespace {

const char* kLink = "try{length(thisComp.layer(\"Ctrl\").toWorld([1,1,1]));}catch(e){value;}\n";

std::string link(const std::string& name, const char* point = "[1,1,1]", const char* end = "\n") {
    return "try{length(thisComp.layer(\"" + name + "\").toWorld(" + point + "));}catch(e){value;}" + end;
}

// The name comes out with or without the trailing line feed; any other text is refused (a
// quote inside the name would end the string early in the real language).
TEST(LinkExpression, ParsesTheNameOfExactlyTheLinkText) {
    EXPECT_EQ(parse_layer_link_expression(kLink).value_or("?"), "Ctrl");
    EXPECT_EQ(parse_layer_link_expression(link("My layer 2", "[1,1,1]", "")).value_or("?"), "My layer 2");
    for (const std::string& text : {std::string("value*2"), std::string(), link("A", "[1,1,0]"),
                                    link("A", "[1,1,1]", "\n\n"), link("A\"B")})
        EXPECT_FALSE(parse_layer_link_expression(text)) << text;
}

class LinkEvaluation : public ::testing::Test {
protected:
    LinkEvaluation() : comp("C", 640, 360, 30, 10) {
        Layer ctrl;
        ctrl.name = "Ctrl";
        ctrl.is_3d = true;
        ctrl.transform.position.add_key(0.0, Vec3{0, 0, 0});
        ctrl.transform.position.add_key(1.0, Vec3{2, 3, 5});
        comp.add_layer(ctrl);
    }
    Composition comp;
};

TEST_F(LinkEvaluation, GivesTheLengthOfTheWorldImageOfPointOneOneOne) {
    ExpressionResult r = evaluate_expression(kLink, comp, 1.0, 42.0);
    EXPECT_EQ(r.status, ExpressionResult::Status::Evaluated);
    // (1,1,1) + (2,3,5) = (3,4,6).
    EXPECT_NEAR(r.value, std::sqrt(9.0 + 16.0 + 36.0), 1e-12);
    // At time 0 the layer sits at the origin.
    EXPECT_NEAR(evaluate_expression(kLink, comp, 0.0, 42.0).value, std::sqrt(3.0), 1e-12);
}

// Unsupported text keeps the pre-expression value; a missing layer falls back to it.
TEST_F(LinkEvaluation, OtherwiseKeepsTheOwnValue) {
    ExpressionResult r = evaluate_expression("wiggle(2, 10)", comp, 1.0, 7.0);
    EXPECT_EQ(r.status, ExpressionResult::Status::Unsupported);
    EXPECT_EQ(r.value, 7.0);
    comp.layer(0).name = "Renamed";
    r = evaluate_expression(kLink, comp, 1.0, 42.0);
    EXPECT_EQ(r.status, ExpressionResult::Status::FellBack);
    EXPECT_EQ(r.value, 42.0);
}

}  // namespace
}  // namespace host
