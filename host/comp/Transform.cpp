#include "host/comp/Transform.h"

#include <cmath>
#include <vector>

namespace host {

namespace {

constexpr double kRadiansPerDegree = 3.14159265358979323846 / 180.0;
constexpr double kDegreesPerRadian = 180.0 / 3.14159265358979323846;

// Sets the upper 3x3 block; the rest stays identity.
Matrix4d rotation_rows(double r00, double r01, double r02, double r10, double r11, double r12,
                       double r20, double r21, double r22) {
    Matrix4d r = Matrix4d::identity();
    r.m[0][0] = r00; r.m[0][1] = r01; r.m[0][2] = r02;
    r.m[1][0] = r10; r.m[1][1] = r11; r.m[1][2] = r12;
    r.m[2][0] = r20; r.m[2][1] = r21; r.m[2][2] = r22;
    return r;
}

// Orientation and the three rotation properties turn the layer through the same product.
Matrix4d orientation(const Vec3& degrees) {
    return Matrix4d::rotation_z(degrees.z) * Matrix4d::rotation_y(degrees.y) *
           Matrix4d::rotation_x(degrees.x);
}

Matrix4d own_rotation(const LayerTransform& t, double s) {
    return orientation(Vec3{t.rotation_x.at(s), t.rotation_y.at(s), t.rotation_z.at(s)});
}

Vec3 flat(Vec3 v) {
    v.z = 0;
    return v;
}

Matrix4d layer_matrix_3d(const LayerTransform& t, double s) {
    Vec3 scale = t.scale.at(s) * 0.01;
    return Matrix4d::translation(t.anchor.at(s) * -1.0) * Matrix4d::scaling(scale) *
           own_rotation(t, s) * orientation(t.orientation.at(s)) *
           Matrix4d::translation(t.position.at(s));
}

Matrix4d layer_matrix_2d(const LayerTransform& t, double s) {
    Vec3 scale = t.scale.at(s) * 0.01;
    scale.z = 1.0;
    return Matrix4d::translation(flat(t.anchor.at(s)) * -1.0) * Matrix4d::scaling(scale) *
           Matrix4d::rotation_z(t.rotation_z.at(s)) * Matrix4d::translation(flat(t.position.at(s)));
}

Matrix4d camera_or_light_matrix(const LayerTransform& t, double s) {
    Vec3 position = t.position.at(s);
    Matrix4d m = own_rotation(t, s) * orientation(t.orientation.at(s));
    if (t.auto_orient) m = m * look_at_rotation(position, t.point_of_interest.at(s));
    return m * Matrix4d::translation(position);
}

}  // namespace

Matrix4d Matrix4d::identity() {
    Matrix4d r{};
    for (int i = 0; i < 4; ++i) r.m[i][i] = 1.0;
    return r;
}

Matrix4d Matrix4d::translation(const Vec3& t) {
    Matrix4d r = identity();
    r.m[3][0] = t.x;
    r.m[3][1] = t.y;
    r.m[3][2] = t.z;
    return r;
}

Matrix4d Matrix4d::scaling(const Vec3& s) {
    Matrix4d r = identity();
    r.m[0][0] = s.x;
    r.m[1][1] = s.y;
    r.m[2][2] = s.z;
    return r;
}

Matrix4d Matrix4d::rotation_x(double degrees) {
    double c = std::cos(degrees * kRadiansPerDegree), s = std::sin(degrees * kRadiansPerDegree);
    return rotation_rows(1, 0, 0, 0, c, s, 0, -s, c);
}

Matrix4d Matrix4d::rotation_y(double degrees) {
    double c = std::cos(degrees * kRadiansPerDegree), s = std::sin(degrees * kRadiansPerDegree);
    return rotation_rows(c, 0, -s, 0, 1, 0, s, 0, c);
}

Matrix4d Matrix4d::rotation_z(double degrees) {
    double c = std::cos(degrees * kRadiansPerDegree), s = std::sin(degrees * kRadiansPerDegree);
    return rotation_rows(c, s, 0, -s, c, 0, 0, 0, 1);
}

Matrix4d Matrix4d::operator*(const Matrix4d& o) const {
    Matrix4d r{};
    for (int i = 0; i < 4; ++i)
        for (int j = 0; j < 4; ++j)
            for (int k = 0; k < 4; ++k) r.m[i][j] += m[i][k] * o.m[k][j];
    return r;
}

Vec3 Matrix4d::transform_point(const Vec3& p) const {
    double v[3];
    for (int j = 0; j < 3; ++j) v[j] = p.x * m[0][j] + p.y * m[1][j] + p.z * m[2][j] + m[3][j];
    return {v[0], v[1], v[2]};
}

Matrix4d look_at_rotation(const Vec3& from, const Vec3& target) {
    Vec3 d = target - from;
    double len = std::sqrt(d.x * d.x + d.y * d.y + d.z * d.z);
    if (len == 0.0) return Matrix4d::identity();
    d = d * (1.0 / len);
    double pitch = -std::asin(d.y) * kDegreesPerRadian;
    double yaw = std::atan2(d.x, d.z) * kDegreesPerRadian;
    return Matrix4d::rotation_x(pitch) * Matrix4d::rotation_y(yaw);
}

Matrix4d local_to_parent(const Layer& layer, double comp_seconds) {
    if (layer.kind == LayerKind::Camera || layer.kind == LayerKind::Light) {
        return camera_or_light_matrix(layer.transform, comp_seconds);
    }
    return layer.is_3d ? layer_matrix_3d(layer.transform, comp_seconds)
                       : layer_matrix_2d(layer.transform, comp_seconds);
}

Matrix4d layer_to_world(const Composition& comp, const Layer& layer, double comp_seconds) {
    Matrix4d m = local_to_parent(layer, comp_seconds);
    std::vector<int> visited{layer.id};
    for (const Layer* p = comp.parent_of(layer); p != nullptr; p = comp.parent_of(*p)) {
        for (int id : visited)
            if (id == p->id) return m;
        visited.push_back(p->id);
        m = m * local_to_parent(*p, comp_seconds);
    }
    return m;
}

}  // namespace host
