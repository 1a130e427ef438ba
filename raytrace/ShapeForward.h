#pragma once

// The per-frame render record derives from its shape; the shape operations read record fields
// (texture height, open factor, fixed point, slide) through it.
template <class Shape>
class RenderInfoTemplate;

class Cylinder;
class Hyperboloid;
class Sphere;
