// Layer-to-world matrices against values worked out by hand in the row-vector convention.
#include "host/comp/Transform.h"

#include <gtest/gtest.h>

#include <cmath>
#include <functional>

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
    l.source.width = 100;
    l.source.height = 100;
    return l;
}

Layer camera() {
    Layer l;
    l.kind = LayerKind::Camera;
    return l;
}

Composition comp640() { return Composition("Comp", 640, 360, 30, 10); }

// One layer on its own: where a local point lands in world space at time `t`.
struct Row {
    const char* what;
    Layer base;
    std::function<void(LayerTransform&)> set;
    double t;
    Vec3 local, world;
};

TEST(LayerToWorld, SingleLayersMapPointsAsWorkedOutByHand) {
    const Row rows[] = {
        // (0,0) - anchor = (-50,-50) -> scaled (-100,-25) -> + position.
        {"anchor, scale, position in that order", solid3d(),
         [](LayerTransform& x) { x.anchor = Vec3{50, 50, 0}; x.scale = Vec3{200, 50, 100}; x.position = Vec3{320, 180, 10}; },
         0, {0, 0, 0}, {220, 155, 10}},
        // With y down, +x turning clockwise on screen ends up pointing down (+y).
        {"positive z rotation is clockwise", solid3d(), [](LayerTransform& x) { x.rotation_z = 90.0; }, 0, {1, 0, 0}, {0, 1, 0}},
        // Rx: y -> (0, c, s); Ry: x -> (c, 0, -s).
        {"x rotation sign", solid3d(), [](LayerTransform& x) { x.rotation_x = 90.0; }, 0, {0, 1, 0}, {0, 0, 1}},
        {"y rotation sign", solid3d(), [](LayerTransform& x) { x.rotation_y = 90.0; }, 0, {1, 0, 0}, {0, 0, -1}},
        // p * Rz: (1,0,0) -> (0,1,0); then * Rx: (0,1,0) -> (0,0,1).
        {"z acts before x", solid3d(), [](LayerTransform& x) { x.rotation_x = 90.0; x.rotation_z = 90.0; }, 0, {1, 0, 0}, {0, 0, 1}},
        {"orientation follows the rotations", solid3d(),
         [](LayerTransform& x) { x.rotation_z = 90.0; x.orientation = Vec3{90, 0, 0}; }, 0, {1, 0, 0}, {0, 0, 1}},
        {"keyframed position read at the time", solid3d(),
         [](LayerTransform& x) { x.position.add_key(0.0, Vec3{0, 0, 0}); x.position.add_key(2.0, Vec3{100, 0, -40}); },
         0.5, {0, 0, 0}, {25, 0, -10}},
        {"one-node camera ignores its target and anchor", camera(),
         [](LayerTransform& x) {
             x.auto_orient = false; x.position = Vec3{5, 6, 7}; x.point_of_interest = Vec3{100, 0, 0};
             x.anchor = Vec3{50, 50, 50};
         },
         0, {0, 0, 1}, {5, 6, 8}},
        // Aimed along +x (yaw 90) with a roll: local x -> (Rz) local y -> (yaw) world y.
        {"camera rotation acts in the aimed frame, x", camera(),
         [](LayerTransform& x) { x.point_of_interest = Vec3{10, 0, 0}; x.rotation_z = 90.0; }, 0, {1, 0, 0}, {0, 1, 0}},
        {"camera rotation acts in the aimed frame, z", camera(),
         [](LayerTransform& x) { x.point_of_interest = Vec3{10, 0, 0}; x.rotation_z = 90.0; }, 0, {0, 0, 1}, {1, 0, 0}},
        {"coincident target leaves the camera unrotated", camera(),
         [](LayerTransform& x) { x.position = Vec3{3, 3, 3}; x.point_of_interest = Vec3{3, 3, 3}; }, 0, {0, 0, 1}, {3, 3, 4}},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(row.what);
        Composition comp = comp640();
        Layer l = row.base;
        row.set(l.transform);
        const Layer& added = comp.add_layer(l);
        expect_point(layer_to_world(comp, added, row.t).transform_point(row.local), row.world.x, row.world.y, row.world.z);
    }
}

TEST(LayerToWorld, AxisRowsCarryTheScaleAndTheLastRowTheTranslation) {
    Composition comp = comp640();
    Layer l = solid3d();
    l.transform.anchor = Vec3{50, 50, 0};
    l.transform.scale = Vec3{200, 50, 100};
    l.transform.position = Vec3{320, 180, 10};
    Matrix4d m = layer_to_world(comp, comp.add_layer(l), 0);
    EXPECT_NEAR(m.m[0][0], 2.0, kTol);
    EXPECT_NEAR(m.m[1][1], 0.5, kTol);
    EXPECT_NEAR(m.m[3][0], 220, kTol);
    EXPECT_NEAR(m.m[3][3], 1.0, kTol);
}

TEST(LayerToWorld, TwoDLayerIgnoresZAndXYRotation) {
    Composition comp = comp640();
    Layer l = solid3d();
    l.is_3d = false;
    l.transform.position = Vec3{10, 20, 500};
    l.transform.rotation_x = 45.0;
    l.transform.scale = Vec3{100, 100, 300};
    expect_point(layer_to_world(comp, comp.add_layer(l), 0).transform_point({1, 1, 1}), 11, 21, 1);
}

TEST(LayerToWorld, ChildIsTransformedByItsParentsFullMatrix) {
    Composition comp = comp640();
    Layer parent = solid3d();
    parent.transform.anchor = Vec3{50, 50, 0};
    parent.transform.position = Vec3{100, 100, 0};
    parent.transform.rotation_z = 90.0;
    parent.transform.scale = Vec3{200, 200, 200};
    Layer child = solid3d();
    child.parent_id = comp.add_layer(parent).id;
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

TEST(CameraToWorld, AutoOrientAimsLocalZAtThePointOfInterest) {
    Composition comp = comp640();
    Layer cam = camera();
    cam.transform.position = Vec3{320, 180, -500};
    cam.transform.point_of_interest = Vec3{820, 180, 0};  // 45 degrees to the right
    Matrix4d m = layer_to_world(comp, comp.add_layer(cam), 0);
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
    light.transform.point_of_interest = Vec3{0, -3, 4};  // y is down: this is up and ahead
    Matrix4d m = layer_to_world(comp, comp.add_layer(light), 0);
    expect_point(m.transform_point({0, 0, 1}), 0, -0.6, 0.8);
    expect_point(m.transform_point({1, 0, 0}), 1, 0, 0);
    expect_point(m.transform_point({0, 1, 0}), 0, 0.8, 0.6);
}

}  // namespace
}  // namespace host
