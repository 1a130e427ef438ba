#pragma once
// Hand-filled render records for the primary-ray and depth-of-field tests, rendered through
// the emulated host's iterate_generic into a poisoned output world (a pixel the callbacks
// forget to write keeps the poison).
//
// The surface is a circular cylinder of radius R about the local z axis. The camera looks
// along local -y from local (0, eye_distance, 0); camera x is local x and camera y (down the
// image) is local z, so the axis runs down the picture and the silhouettes are columns.
// There is no texture layer: the surface shows the UV test colour (red u, green v, alpha 1)
// times Emit, with v = z / texture_height + 0.5.

#include <memory>

#include "host/Host.h"
#include "host/PixelWorld.h"
#include "math/PixelConvert.h"
#include "raytrace/PrimaryRays.h"
#include "render/RenderInfo.h"

namespace trace_test {

using Vectormath::Aos::Matrix4;
using Vectormath::Aos::Vector3;
using Vectormath::Aos::Vector4;

template <class Pixel>
struct BitsOf;
template <>
struct BitsOf<PF_Pixel> {
    static constexpr short value = 8;
};
template <>
struct BitsOf<PF_Pixel16> {
    static constexpr short value = 16;
};
template <>
struct BitsOf<PF_PixelFloat> {
    static constexpr short value = 32;
};

class TraceScene {
public:
    explicit TraceScene(short bitdepth) : scope_(host_.render_scope(bitdepth))
    {
        info_ = std::make_unique<RenderInfo>(scope_->in_data());
        info_->object_to_world = Matrix4::identity();
        info_->world_to_object = Matrix4::identity();
        info_->texture_height = 1000.0;
        info_->open_scale = 1.0;
        info_->emit = 1.0f;
        info_->render_side = 1;
        setCylinder(60.0f, 0.0f);
    }

    ~TraceScene()
    {
        info_.reset();  // the lights and suites go back before the scope ends
    }

    RenderInfo& info() { return *info_; }
    host::Host& host() { return host_; }
    PF_InData* inData() { return scope_->in_data(); }

    // Radius a = b = radius; c > 0 pinches the waist into a hyperboloid.
    void setCylinder(float radius, float c)
    {
        auto inverse = [](float v) { return v > 0.0f ? 1.0f / v : 0.0f; };
        info_->size = Vector3(radius, radius, c);
        info_->size_sq = Vector3(radius * radius, radius * radius, c * c);
        info_->inv_size = Vector3(inverse(radius), inverse(radius), inverse(c));
        info_->inv_size_sq = Vector3(inverse(radius) * inverse(radius),
                                     inverse(radius) * inverse(radius), inverse(c) * inverse(c));
        updateEye();
    }

    // Any camera: its axes and position in local space.
    void setCamera(const Matrix4& camera_to_object)
    {
        info_->camera_to_object = camera_to_object;
        updateEye();
    }

    // The looking-down-local-minus-y camera described above, at (0, eye_distance, 0).
    void setFacingCamera(float eye_distance, bool perspective, float focal)
    {
        info_->perspective = perspective;
        info_->neg_focal = -focal;
        setCamera(Matrix4(Vector4(1, 0, 0, 0), Vector4(0, 0, 1, 0), Vector4(0, -1, 0, 0),
                          Vector4(0, eye_distance, 0, 1)));
    }

    void setImageCenter(float x, float y)
    {
        info_->image_center[0] = x;
        info_->image_center[1] = y;
    }

    template <class Pixel>
    void allocateOutput(A_long width, A_long height)
    {
        host::WorldOptions options;
        options.clear = false;  // poison
        options.writeable = true;
        output_.allocate(width, height, host::PixelFormatOf<Pixel>::value, options);
        info_->output = &output_.get();
    }

    // Runs `callback` over every output pixel through the host's iteration.
    PF_Err iterate(PF_Err (*callback)(void*, A_long, A_long, A_long))
    {
        const A_long count = output_->width * output_->height;
        return inData()->utils->iterate_generic(count, info_.get(), callback);
    }

    template <class Pixel>
    PF_Err render()
    {
        return iterate(RayTrace_PixelCallback<Pixel>);
    }

    template <class Pixel>
    Pixel& pixel(A_long x, A_long y)
    {
        return host::worldPixel<Pixel>(output_.get(), x, y);
    }

    template <class Pixel>
    PF_PixelFloat colour(A_long x, A_long y)
    {
        return PixelTraits<Pixel>::toFloat(pixel<Pixel>(x, y));
    }

private:
    void updateEye()
    {
        const Vector4 eye = info_->camera_to_object.getCol3();
        info_->eye_x = eye.getX();
        info_->eye_y = eye.getY();
        info_->eye_z = eye.getZ();
        const Vector3 q = info_->inv_size_sq;
        info_->eye_implicit = info_->eye_y * info_->eye_y * q.getY() +
                              info_->eye_x * info_->eye_x * q.getX() -
                              info_->eye_z * info_->eye_z * q.getZ() - 1.0;
    }

    host::Host host_;
    std::unique_ptr<host::RenderScope> scope_;
    host::OwnedWorld output_;
    std::unique_ptr<RenderInfo> info_;
};

}  // namespace trace_test
