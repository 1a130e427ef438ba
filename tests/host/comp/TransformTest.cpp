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

Layer of(LayerKind kind, bool is_3d = true) {
    Layer l;
    l.kind = kind;
    l.is_3d = is_3d;
    l.source.width = 100;
    l.source.height = 100;
    return l;
}
Layer solid3d() { return of(LayerKind::Solid); }
Layer camera() { return of(LayerKind::Camera); }

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
    const double kH = std::sqrt(0.5);
    auto aimRight = [](LayerTransform& x) { x.position = Vec3{320, 180, -500}; x.point_of_interest = Vec3{820, 180, 0}; };
    auto lookUp = [](LayerTransform& x) { x.point_of_interest = Vec3{0, -3, 4}; };
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
        {"2D layer ignores z and x/y rotation", of(LayerKind::Solid, false),
         [](LayerTransform& x) { x.position = Vec3{10, 20, 500}; x.rotation_x = 45.0; x.scale = Vec3{100, 100, 300}; },
         0, {1, 1, 1}, {11, 21, 1}},
        // Auto-orient aims local z at the target (45 degrees to the right); yaw without roll
        // keeps x horizontal: x -> (c, 0, -s).
        {"auto-orient aims z at the target", camera(), aimRight, 0, {0, 0, 1}, {320 + kH, 180, -500 + kH}},
        {"auto-orient keeps x level", camera(), aimRight, 0, {1, 0, 0}, {320 + kH, 180, -500 - kH}},
        // y is down: this target is up and ahead; looking up pitches without roll.
        {"looking up pitches z", of(LayerKind::Light), lookUp, 0, {0, 0, 1}, {0, -0.6, 0.8}},
        {"looking up pitches y", of(LayerKind::Light), lookUp, 0, {0, 1, 0}, {0, 0.8, 0.6}},
        {"looking up leaves x", of(LayerKind::Light), lookUp, 0, {1, 0, 0}, {1, 0, 0}},
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

}  // namespace
}  // namespace host
