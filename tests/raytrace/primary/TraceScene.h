#pragma once
// Hand-filled render records for the primary-ray and depth-of-field tests, rendered through
// the emulated host's iterate_generic into a poisoned output world (a pixel the callbacks
// forget to write keeps the poison).
//
// The surface is a circular cylinder of radius R about the local z axis, seen by the facing
// camera of test_support::RecordScene, so the axis runs down the picture and the silhouettes
// are columns. There is no texture layer: the surface shows the UV test colour (red u,
// green v, alpha 1) times Emit, with v = z / texture_height + 0.5.

#include "math/PixelConvert.h"
#include "raytrace/PrimaryRays.h"
#include "support/RecordScene.h"
#include "support/ShapeSize.h"

namespace trace_test {

using Vectormath::Aos::Matrix4;
using Vectormath::Aos::Vector3;
using Vectormath::Aos::Vector4;
using test_support::BitsOf;

class TraceScene : public test_support::RecordScene {
public:
    explicit TraceScene(short bitdepth) : RecordScene(bitdepth)
    {
        RenderInfo& record = info();
        record.object_to_world = Matrix4::identity();
        record.world_to_object = Matrix4::identity();
        record.texture_height = 1000.0;
        record.open_scale = 1.0;
        record.emit = 1.0f;
        record.render_side = 1;
        setCylinder(60.0f, 0.0f);
    }

    // Radius a = b = radius; c > 0 pinches the waist into a hyperboloid.
    void setCylinder(float radius, float c)
    {
        setShapeSize(info(), radius, radius, c);
        updateEye();
    }

    void setImageCenter(float x, float y)
    {
        info().image_center[0] = x;
        info().image_center[1] = y;
    }

    // Parallel rays along local -y from y = 500 + R: sample (dx, dy) of pixel (x, y) starts at
    // local (x + dx - centre_x, 500 + R, y + dy - centre_y).
    void setParallelView(float centre_x, float centre_y)
    {
        setFacingCamera(500.0f, false, 100.0f);
        setImageCenter(centre_x, centre_y);
    }

    // An output world of poison, so a pixel left unwritten shows.
    template <class Pixel>
    void allocateOutput(A_long width, A_long height)
    {
        host::WorldOptions options;
        options.initial = host::WorldOptions::Initial::Poison;
        options.writeable = true;
        RecordScene::allocateOutput<Pixel>(width, height, options);
    }

    template <class Pixel>
    PF_Err render()
    {
        return iterate(RayTrace_PixelCallback<Pixel>);
    }
};

}  // namespace trace_test
