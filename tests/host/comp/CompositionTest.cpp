// The composition model: keyframes, defaults, lookups and the active-camera rule.
#include "host/comp/Composition.h"

#include <gtest/gtest.h>

namespace host {
namespace {

TEST(Animated, InterpolatesPerComponentHoldsOutsideTheKeysAndStepsEnums) {
    Animated<double> constant(7.5);
    EXPECT_FALSE(constant.is_animated());
    EXPECT_EQ(constant.at(-100), 7.5);
    Animated<double> a(0.0);
    a.add_key(3.0, 30.0);  // added out of order on purpose
    a.add_key(1.0, 10.0);
    a.add_key(2.0, 99.0);
    a.add_key(2.0, 0.0);  // replaces the key at the same time
    EXPECT_TRUE(a.is_animated());
    EXPECT_EQ(a.keys().size(), 3u);
    const std::pair<double, double> expected[] = {{0.0, 10.0}, {1.5, 5.0}, {2.0, 0.0}, {2.25, 7.5}, {99.0, 30.0}};
    for (const auto& [t, value] : expected) EXPECT_EQ(a.at(t), value) << t;
    Animated<Color> c(Color{});
    c.add_key(0, Color{1, 0, 0, 0});
    c.add_key(1, Color{1, 1, 0.5, 0});
    EXPECT_DOUBLE_EQ(c.at(0.5).red, 0.5);
    EXPECT_DOUBLE_EQ(c.at(0.5).green, 0.25);
    Animated<LightType> type(LightType::Point);
    type.add_key(0, LightType::Spot);
    type.add_key(1, LightType::Ambient);
    EXPECT_EQ(type.at(0.99), LightType::Spot);
    EXPECT_EQ(type.at(1.0), LightType::Ambient);
}

TEST(Composition, AddLayerAssignsUniqueIdsAndDefaults) {
    Composition comp("C", 640, 360, 30, 10);
    Layer cam;
    cam.kind = LayerKind::Camera;
    cam.in_point = 2;
    const Layer& a = comp.add_layer(cam);
    const Layer& b = comp.add_layer(Layer{});
    EXPECT_NE(a.id, 0);
    EXPECT_NE(a.id, b.id);
    EXPECT_DOUBLE_EQ(a.duration, 8);  // to the end of the composition
    EXPECT_NEAR(a.camera.zoom.at(0), 888.888888889, 1e-6);
    EXPECT_DOUBLE_EQ(a.camera.focus_distance.at(0), a.camera.zoom.at(0));
    EXPECT_EQ(comp.index_of(b.id), 1);
    EXPECT_EQ(comp.index_of(12345), -1);
    // The default camera sits 50/36 widths in front of the centre.
    const DefaultCamera dflt = Composition("C", 1920, 1080, 25, 1).default_camera();
    EXPECT_NEAR(dflt.distance, 2666.6666666667, 1e-9);
    EXPECT_DOUBLE_EQ(dflt.position.x, 960);
    EXPECT_DOUBLE_EQ(dflt.position.y, 540);
    EXPECT_NEAR(dflt.position.z, -2666.6666666667, 1e-9);
}

TEST(Composition, FindByNameUsesTheShownNameAndTakesTheTopmost) {
    Composition comp("C", 640, 360, 30, 10);
    Layer footage;
    footage.kind = LayerKind::Footage;
    footage.source.name = "texture.png";
    Layer named = footage;
    named.name = "Named";
    const Layer& n = comp.add_layer(named);
    const Layer& u = comp.add_layer(footage);
    // The named layer no longer answers to its source's name; the unnamed one does.
    EXPECT_EQ(comp.find_by_name("texture.png"), &u);
    EXPECT_EQ(comp.find_by_name("Named"), &n);
    EXPECT_EQ(comp.find_by_name(""), nullptr);
    Layer twin;
    twin.name = "Twin";
    const Layer& top = comp.add_layer(twin);
    comp.add_layer(twin);
    EXPECT_EQ(comp.find_by_name("Twin"), &top);
}

Layer camera(double in, double duration, bool video) {
    Layer c;
    c.kind = LayerKind::Camera;
    c.in_point = in;
    c.duration = duration;
    c.video_active = video;
    return c;
}

TEST(ActiveCamera, IsTheTopmostVisibleCameraWhoseSpanContainsTheTimeOrNone) {
    Composition comp("C", 640, 360, 30, 10);
    comp.add_layer(camera(0, 10, false));
    const Layer& late = comp.add_layer(camera(2, 3, true));  // covers [2, 5)
    comp.add_layer(Layer{});
    const Layer& always = comp.add_layer(camera(0, 10, true));
    EXPECT_EQ(comp.active_camera(1.0), &always);
    EXPECT_EQ(comp.active_camera(2.0), &late);
    EXPECT_EQ(comp.active_camera(4.999), &late);
    EXPECT_EQ(comp.active_camera(5.0), &always);  // out point is exclusive
    EXPECT_EQ(comp.active_camera(10.0), nullptr);
}

TEST(Composition, EmptyExpressionRemovesTheStoredOne) {
    Composition comp("C", 640, 360, 30, 10);
    comp.set_layer_expression(3, 16, "value*2");
    EXPECT_EQ(*comp.layer_expression(3, 16), "value*2");
    EXPECT_EQ(comp.layer_expression(3, 17), nullptr);
    comp.set_layer_expression(3, 16, "");
    EXPECT_EQ(comp.layer_expression(3, 16), nullptr);
}

}  // namespace
}  // namespace host
