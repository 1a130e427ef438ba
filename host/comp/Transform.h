#pragma once
// Layer-to-world matrices of the emulated host.
//
// Matrices are 4x4 doubles in the host's row-vector convention: a point maps as p' = p * M,
// rows 0-2 are the images of the x, y and z axes and row 3 is the translation. The frame is
// composition space: x right, y down, z into the screen, origin at the top-left corner.

#include "host/comp/Composition.h"

namespace host {

struct Matrix4d {
    double m[4][4];  // m[row][column]

    static Matrix4d identity();
    static Matrix4d translation(const Vec3& t);
    static Matrix4d scaling(const Vec3& s);
    // Right-handed rotations in the y-down, z-in frame, angles in degrees.
    static Matrix4d rotation_x(double degrees);
    static Matrix4d rotation_y(double degrees);
    static Matrix4d rotation_z(double degrees);

    Matrix4d operator*(const Matrix4d& o) const;
    // The image of the point (x, y, z, 1).
    Vec3 transform_point(const Vec3& p) const;
};

// Rotation that turns local +z towards `target` seen from `from`: a pitch about x, then a yaw
// about y, with no roll. Identity when the two points coincide.
Matrix4d look_at_rotation(const Vec3& from, const Vec3& target);

// The layer's own matrix (without its parent) at composition time `comp_seconds`:
//   3D layers: T(-anchor) S(scale/100) Rz Ry Rx O(orientation) T(position)
//   2D layers: T(-anchor) S(scale/100) Rz T(position), all with z = 0
//   cameras and lights: Rz Ry Rx O(orientation) [look-at] T(position)
Matrix4d local_to_parent(const Layer& layer, double comp_seconds);

// The full matrix including the chain of parents. A cycle in the parent links stops at the
// first repeated layer.
Matrix4d layer_to_world(const Composition& comp, const Layer& layer, double comp_seconds);

}  // namespace host
