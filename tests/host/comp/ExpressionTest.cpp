// Evaluation of the control-layer link expression and refusal of everything else.
#include "host/comp/Expression.h"

#include <gtest/gtest.h>

#include <cmath>

namespace host {
namespace {

const char* kLink = "try{length(thisComp.layer(\"Ctrl\").toWorld([1,1,1]));}catch(e){value;}\n";

TEST(LinkExpression, ParsesTheNameWithOrWithoutTheTrailingLineFeed) {
    EXPECT_EQ(parse_layer_link_expression(kLink).value_or("?"), "Ctrl");
    std::string no_lf = kLink;
    no_lf.pop_back();
    EXPECT_EQ(parse_layer_link_expression(no_lf).value_or("?"), "Ctrl");
    EXPECT_EQ(parse_layer_link_expression(
                  "try{length(thisComp.layer(\"My layer 2\").toWorld([1,1,1]));}catch(e){value;}")
                  .value_or("?"),
              "My layer 2");
}

TEST(LinkExpression, RejectsOtherText) {
    EXPECT_FALSE(parse_layer_link_expression("value*2"));
    EXPECT_FALSE(parse_layer_link_expression(""));
    EXPECT_FALSE(parse_layer_link_expression(
        "try{length(thisComp.layer(\"A\").toWorld([1,1,0]));}catch(e){value;}"));
    EXPECT_FALSE(parse_layer_link_expression(
        "try{length(thisComp.layer(\"A\").toWorld([1,1,1]));}catch(e){value;}\n\n"));
    // A quote inside the name would end the string early in the real language.
    EXPECT_FALSE(parse_layer_link_expression(
        "try{length(thisComp.layer(\"A\"B\").toWorld([1,1,1]));}catch(e){value;}"));
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
