// Layer-to-world matrices against values worked out by hand in the row-vector convention.
#include "host/Transform.h"

#include <gtest/gtest.h>

#include <cmath>

namespace host {
namespace {

constexpr double kTol = 1e-9;

void expect_point(const Vec3& actual, double x, double y, double z) {
    EXPECT_NEAR(actual.x, x, kTol);
    EXPECT_NEAR(actual.y, y, kTol);
    EXPECT_NEAR(actual.z, z, kTol);
}

Layer solid3d() {
    Layer l;
    l.kind = LayerKind::Solid;
    l.is_3d = true;
    l.source.name = "Solid";
    l.source.width = 100;
    l.source.height = 100;
    return l;
}

Composition comp640() { return Composition("Comp", 640, 360, 30, 10); }

TEST(LayerToWorld, AnchorScaleAndPositionApplyInThatOrder) {
    Composition comp = comp640();
    Layer l = solid3d();
    l.transform.anchor = Vec3{50, 50, 0};
    l.transform.scale = Vec3{200, 50, 100};
    l.transform.position = Vec3{320, 180, 10};
    const Layer& added = comp.add_layer(l);
    Matrix4d m = layer_to_world(comp, added, 0);
    // (0,0) - anchor = (-50,-50) -> scaled (-100,-25) -> + position.
    expect_point(m.transform_point({0, 0, 0}), 220, 155, 10);
    expect_point(m.transform_point({50, 50, 0}), 320, 180, 10);
    // Axis rows carry the scale; the translation row is what the origin maps to.
    EXPECT_NEAR(m.m[0][0], 2.0, kTol);
    EXPECT_NEAR(m.m[1][1], 0.5, kTol);
    EXPECT_NEAR(m.m[3][0], 220, kTol);
    EXPECT_NEAR(m.m[3][3], 1.0, kTol);
}

TEST(LayerToWorld, PositiveZRotationIsClockwiseOnScreen) {
    Composition comp = comp640();
    Layer l = solid3d();
    l.transform.rotation_z = 90.0;
    const Layer& added = comp.add_layer(l);
    // With y down, +x turning clockwise on screen ends up pointing down (+y).
    expect_point(layer_to_world(comp, added, 0).transform_point({1, 0, 0}), 0, 1, 0);
}

TEST(LayerToWorld, XAndYRotationSigns) {
    Composition comp = comp640();
    Layer lx = solid3d();
    lx.transform.rotation_x = 90.0;
    Layer ly = solid3d();
    ly.transform.rotation_y = 90.0;
    const Layer& ax = comp.add_layer(lx);
    const Layer& ay = comp.add_layer(ly);
    // Rx: y -> (0, c, s); Ry: x -> (c, 0, -s).
    expect_point(layer_to_world(comp, ax, 0).transform_point({0, 1, 0}), 0, 0, 1);
    expect_point(layer_to_world(comp, ay, 0).transform_point({1, 0, 0}), 0, 0, -1);
}

TEST(LayerToWorld, ZRotationActsBeforeXRotationOnThePoint) {
    Composition comp = comp640();
    Layer l = solid3d();
    l.transform.rotation_x = 90.0;
    l.transform.rotation_z = 90.0;
    const Layer& added = comp.add_layer(l);
    // p * Rz: (1,0,0) -> (0,1,0); then * Rx: (0,1,0) -> (0,0,1).
    expect_point(layer_to_world(comp, added, 0).transform_point({1, 0, 0}), 0, 0, 1);
}

TEST(LayerToWorld, OrientationFollowsTheRotations) {
    Composition comp = comp640();
    Layer l = solid3d();
    l.transform.rotation_z = 90.0;             // (1,0,0) -> (0,1,0)
    l.transform.orientation = Vec3{90, 0, 0};  // then (0,1,0) -> (0,0,1)
    const Layer& added = comp.add_layer(l);
    expect_point(layer_to_world(comp, added, 0).transform_point({1, 0, 0}), 0, 0, 1);
}

TEST(LayerToWorld, TwoDLayerIgnoresZAndXYRotation) {
    Composition comp = comp640();
    Layer l = solid3d();
    l.is_3d = false;
    l.transform.position = Vec3{10, 20, 500};
    l.transform.rotation_x = 45.0;
    l.transform.scale = Vec3{100, 100, 300};
    const Layer& added = comp.add_layer(l);
    expect_point(layer_to_world(comp, added, 0).transform_point({1, 1, 1}), 11, 21, 1);
}

TEST(LayerToWorld, ChildIsTransformedByItsParentsFullMatrix) {
    Composition comp = comp640();
    Layer parent = solid3d();
    parent.transform.anchor = Vec3{50, 50, 0};
    parent.transform.position = Vec3{100, 100, 0};
    parent.transform.rotation_z = 90.0;
    parent.transform.scale = Vec3{200, 200, 200};
    const Layer& p = comp.add_layer(parent);
    Layer child = solid3d();
    child.parent_id = p.id;
    child.transform.position = Vec3{60, 50, 0};
    const Layer& c = comp.add_layer(child);
    // Child origin (60,50) in parent space; minus anchor (10,0); scaled (20,0); rotated (0,20);
    // plus position.
    expect_point(layer_to_world(comp, c, 0).transform_point({0, 0, 0}), 100, 120, 0);
}

TEST(LayerToWorld, ParentCycleDoesNotLoopForever) {
    Composition comp = comp640();
    Layer& a = comp.add_layer(solid3d());
    Layer& b = comp.add_layer(solid3d());
    a.parent_id = b.id;
    b.parent_id = a.id;
    a.transform.position = Vec3{1, 0, 0};
    b.transform.position = Vec3{0, 2, 0};
    expect_point(layer_to_world(comp, a, 0).transform_point({0, 0, 0}), 1, 2, 0);
}

TEST(LayerToWorld, KeyframedPositionIsReadAtTheTime) {
    Composition comp = comp640();
    Layer l = solid3d();
    l.transform.position.add_key(0.0, Vec3{0, 0, 0});
    l.transform.position.add_key(2.0, Vec3{100, 0, -40});
    const Layer& added = comp.add_layer(l);
    expect_point(layer_to_world(comp, added, 0.5).transform_point({0, 0, 0}), 25, 0, -10);
}

TEST(CameraToWorld, AutoOrientAimsLocalZAtThePointOfInterest) {
    Composition comp = comp640();
    Layer cam;
    cam.kind = LayerKind::Camera;
    cam.transform.position = Vec3{320, 180, -500};
    cam.transform.point_of_interest = Vec3{820, 180, 0};  // 45 degrees to the right
    const Layer& c = comp.add_layer(cam);
    Matrix4d m = layer_to_world(comp, c, 0);
    double h = std::sqrt(0.5);
    // Row 2 is the image of local +z: the unit direction towards the target.
    EXPECT_NEAR(m.m[2][0], h, kTol);
    EXPECT_NEAR(m.m[2][1], 0, kTol);
    EXPECT_NEAR(m.m[2][2], h, kTol);
    // Yaw without roll keeps x horizontal: x -> (c, 0, -s).
    EXPECT_NEAR(m.m[0][0], h, kTol);
    EXPECT_NEAR(m.m[0][1], 0, kTol);
    EXPECT_NEAR(m.m[0][2], -h, kTol);
    expect_point(m.transform_point({0, 0, 0}), 320, 180, -500);
}

TEST(CameraToWorld, LookingUpPitchesWithoutRoll) {
    Composition comp = comp640();
    Layer light;
    light.kind = LayerKind::Light;
    light.transform.position = Vec3{0, 0, 0};
    light.transform.point_of_interest = Vec3{0, -3, 4};  // y is down: this is up and ahead
    const Layer& l = comp.add_layer(light);
    Matrix4d m = layer_to_world(comp, l, 0);
    expect_point(m.transform_point({0, 0, 1}), 0, -0.6, 0.8);
    expect_point(m.transform_point({1, 0, 0}), 1, 0, 0);
    expect_point(m.transform_point({0, 1, 0}), 0, 0.8, 0.6);
}

TEST(CameraToWorld, OneNodeCameraIgnoresThePointOfInterest) {
    Composition comp = comp640();
    Layer cam;
    cam.kind = LayerKind::Camera;
    cam.transform.auto_orient = false;
    cam.transform.position = Vec3{5, 6, 7};
    cam.transform.point_of_interest = Vec3{100, 0, 0};
    cam.transform.anchor = Vec3{50, 50, 50};  // cameras have no anchor point
    const Layer& c = comp.add_layer(cam);
    expect_point(layer_to_world(comp, c, 0).transform_point({0, 0, 1}), 5, 6, 8);
}

TEST(CameraToWorld, OwnRotationActsInTheAimedFrame) {
    Composition comp = comp640();
    Layer cam;
    cam.kind = LayerKind::Camera;
    cam.transform.position = Vec3{0, 0, 0};
    cam.transform.point_of_interest = Vec3{10, 0, 0};  // aim along +x: yaw 90
    cam.transform.rotation_z = 90.0;                  // roll: local x -> local y first
    const Layer& c = comp.add_layer(cam);
    // local x -> (Rz) local y -> (yaw about y leaves y alone) world y.
    expect_point(layer_to_world(comp, c, 0).transform_point({1, 0, 0}), 0, 1, 0);
    expect_point(layer_to_world(comp, c, 0).transform_point({0, 0, 1}), 1, 0, 0);
}

TEST(CameraToWorld, CoincidentTargetLeavesTheCameraUnrotated) {
    Composition comp = comp640();
    Layer cam;
    cam.kind = LayerKind::Camera;
    cam.transform.position = Vec3{3, 3, 3};
    cam.transform.point_of_interest = Vec3{3, 3, 3};
    const Layer& c = comp.add_layer(cam);
    expect_point(layer_to_world(comp, c, 0).transform_point({0, 0, 1}), 3, 3, 4);
}

}  // namespace
}  // namespace host
