#pragma once
// A render record filled by hand, with the emulated host session it lives in: the host in a
// render scope of one bit depth, the record, and the output world the pixel callbacks write,
// run through the host's iterate_generic. Shared by the ray tracer tests and the benchmarks.
//
// The facing camera looks along local -y from local (0, eye_distance, 0); camera x is local x
// and camera y (down the image) is local z, so a surface about the local z axis runs down the
// picture.

#include <memory>

#include "host/session/Host.h"
#include "host/pixels/PixelWorld.h"
#include "render/RenderInfo.h"

namespace test_support {

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

class RecordScene {
public:
    explicit RecordScene(short bitdepth)
        : scope_(host_.render_scope(bitdepth)),
          info_(std::make_unique<RenderInfo>(scope_->in_data()))
    {
    }

    ~RecordScene()
    {
        info_.reset();  // the lights and suites go back before the scope ends
    }

    RecordScene(const RecordScene&) = delete;
    RecordScene& operator=(const RecordScene&) = delete;

    RenderInfo& info() { return *info_; }
    const RenderInfo& info() const { return *info_; }
    host::Host& host() { return host_; }
    PF_InData* inData() { return scope_->in_data(); }

    // Any camera: its axes and position in local space. Set the shape's size first: the eye's
    // implicit value depends on it.
    void setCamera(const Vectormath::Aos::Matrix4& camera_to_object)
    {
        info_->camera_to_object = camera_to_object;
        updateEye();
    }

    // The facing camera described above, at (0, eye_distance, 0).
    void setFacingCamera(float eye_distance, bool perspective, float focal)
    {
        using Vectormath::Aos::Matrix4;
        using Vectormath::Aos::Vector4;
        info_->perspective = perspective;
        info_->neg_focal = -focal;
        setCamera(Matrix4(Vector4(1, 0, 0, 0), Vector4(0, 0, 1, 0), Vector4(0, -1, 0, 0),
                          Vector4(0, eye_distance, 0, 1)));
    }

    // The eye's position and implicit value, from the camera and the shape's size.
    void updateEye()
    {
        const Vectormath::Aos::Vector4 eye = info_->camera_to_object.getCol3();
        info_->eye_x = eye.getX();
        info_->eye_y = eye.getY();
        info_->eye_z = eye.getZ();
        const Vectormath::Aos::Vector3 q = info_->inv_size_sq;
        info_->eye_implicit = info_->eye_y * info_->eye_y * q.getY() +
                              info_->eye_x * info_->eye_x * q.getX() -
                              info_->eye_z * info_->eye_z * q.getZ() - 1.0;
    }

    template <class Pixel>
    void allocateOutput(A_long width, A_long height,
                        const host::WorldOptions& options = host::WorldOptions())
    {
        output_.allocate(width, height, host::PixelFormatOf<Pixel>::value, options);
        info_->output = &output_.get();
    }

    const PF_LayerDef& output() const { return output_.get(); }

    // Runs `callback` over every output pixel through the host's iteration.
    PF_Err iterate(PF_Err (*callback)(void*, A_long, A_long, A_long))
    {
        // The per-frame constant the record construction would derive from the shininess.
        info_->highlight_cutoff = highlightCutoffFor(info_->shininess);
        const A_long count = output_->width * output_->height;
        return inData()->utils->iterate_generic(count, info_.get(), callback);
    }

    template <class Pixel>
    Pixel& pixel(A_long x, A_long y)
    {
        return host::worldPixel<Pixel>(output_.get(), x, y);
    }

private:
    host::Host host_;
    std::unique_ptr<host::RenderScope> scope_;
    host::OwnedWorld output_;
    std::unique_ptr<RenderInfo> info_;
};

}  // namespace test_support
