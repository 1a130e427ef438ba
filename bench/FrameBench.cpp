// Cost of ray tracing one 1920 x 1080 frame, reported per output pixel, in each pixel depth:
// a textured cylinder filling most of the frame, head-on under the default camera, lit by one
// point light with self shadow. The single pass and the two depth-of-field passes are timed
// separately. Run a Release build; the host's iteration spreads the pixels over all cores.

#include <memory>

#include <benchmark/benchmark.h>

#include "AE_MyLib/AEObject/AEO_EffectWorld.h"
#include "host/Host.h"
#include "host/PixelWorld.h"
#include "math/PixelConvert.h"
#include "raytrace/DepthOfField.h"
#include "raytrace/PrimaryRays.h"
#include "render/RenderInfo.h"

namespace {

using Vectormath::Aos::Matrix4;
using Vectormath::Aos::Vector3;
using Vectormath::Aos::Vector4;

constexpr A_long kWidth = 1920;
constexpr A_long kHeight = 1080;
constexpr float kCameraDistance = 2666.7f;  // the default camera of a 1920-wide composition
constexpr A_long kTextureWidth = 1024;
constexpr A_long kTextureHeight = 512;
constexpr float kTwoPi = 6.2831853f;

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

// A 32-pixel checker of two opaque colours.
template <class Pixel>
void fillChecker(host::OwnedWorld& texture)
{
    texture.allocate(kTextureWidth, kTextureHeight, host::PixelFormatOf<Pixel>::value);
    const PF_PixelFloat light = {1.0f, 0.9f, 0.8f, 0.3f};
    const PF_PixelFloat dark = {1.0f, 0.1f, 0.2f, 0.6f};
    for (A_long y = 0; y < kTextureHeight; ++y)
        for (A_long x = 0; x < kTextureWidth; ++x)
            host::worldPixel<Pixel>(texture.get(), x, y) =
                PixelTraits<Pixel>::fromFloat(((x / 32 + y / 32) % 2) ? light : dark);
}

// The frame: record, texture and output of one pixel depth.
template <class Pixel>
class Frame {
public:
    Frame() : scope_(host_.render_scope(BitsOf<Pixel>::value))
    {
        fillChecker<Pixel>(texture_);
        output_.allocate(kWidth, kHeight, host::PixelFormatOf<Pixel>::value);
        info_ = std::make_unique<RenderInfo>(scope_->in_data());
        RenderInfo& info = *info_;

        // The texture's width wraps once around; its height runs along the axis.
        const float radius = kWidth / kTwoPi;
        info.object_to_world = Matrix4::identity();
        info.world_to_object = Matrix4::identity();
        info.size = Vector3(radius, radius, 0.0f);
        info.size_sq = Vector3(radius * radius, radius * radius, 0.0f);
        info.inv_size = Vector3(1.0f / radius, 1.0f / radius, 0.0f);
        info.inv_size_sq = Vector3(1.0f / (radius * radius), 1.0f / (radius * radius), 0.0f);
        info.texture_layer = texture_.get();
        info.texture_width = kWidth;
        info.texture_height = kHeight * 0.8;
        info.open_scale = 1.0;
        info.output = &output_.get();
        info.pixel_format = host::PixelFormatOf<Pixel>::value;

        // Camera x -> local x, camera y -> local z, viewing direction -> local -y.
        info.perspective = true;
        info.neg_focal = -kCameraDistance;
        info.image_center[0] = kWidth * 0.5f;
        info.image_center[1] = kHeight * 0.5f;
        info.camera_to_object = Matrix4(Vector4(1, 0, 0, 0), Vector4(0, 0, 1, 0),
                                        Vector4(0, -1, 0, 0), Vector4(0, kCameraDistance, 0, 1));
        info.eye_y = kCameraDistance;
        info.eye_implicit = info.eye_y * info.eye_y * info.inv_size_sq.getY() - 1.0;
        info.render_side = 1;

        info.emit = 0.1f;
        info.ambient = 0.2f;
        info.diffuse = 0.8f;
        info.specular = 0.5f;
        info.shininess = 20.0f;
        info.light_transmission = 0.3f;
        info.self_shadow = true;
        vLight light = {};
        light.to_object = Matrix4::translation(Vector3(400.0f, 900.0f, -300.0f));
        light.color[0] = light.color[1] = light.color[2] = light.color[3] = 1.0f;
        light.type = 2;  // point
        light.intensity = 1.0;
        light.cos_half_cone = 0.5;
        light.shadow_darkness = 1.0f;
        light.casts_shadows = true;
        info.appendLight(light);

        info.focus_distance = kCameraDistance;
        info.dof_blur = 12.0;
    }

    ~Frame()
    {
        for (auto& world : dof_worlds_)
            world.reset();
        info_.reset();
    }

    PF_Err run(PF_Err (*callback)(void*, A_long, A_long, A_long))
    {
        return scope_->in_data()->utils->iterate_generic(kWidth * kHeight, info_.get(), callback);
    }

    void makeDofWorlds()
    {
        const auto colour = static_cast<AEO::PixelFormat::e>(host::PixelFormatOf<Pixel>::value);
        for (int i = 0; i < 4; ++i) {
            dof_worlds_[i] = std::make_unique<AEO::NewEffectWorld>(
                info_->aeo_in_data, kWidth, kHeight, i < 2 ? colour : AEO::PixelFormat::ARGB32);
            info_->depth_worlds[i] = dof_worlds_[i].get();
        }
    }

private:
    host::Host host_;
    std::unique_ptr<host::RenderScope> scope_;
    host::OwnedWorld texture_;
    host::OwnedWorld output_;
    std::unique_ptr<RenderInfo> info_;
    std::unique_ptr<AEO::NewEffectWorld> dof_worlds_[4];
};

void reportPerPixel(benchmark::State& state)
{
    state.counters["time_per_pixel"] = benchmark::Counter(
        double(kWidth) * kHeight,
        benchmark::Counter::kIsIterationInvariantRate | benchmark::Counter::kInvert);
}

template <class Pixel>
void BM_SinglePassFrame(benchmark::State& state)
{
    Frame<Pixel> frame;
    for (auto _ : state) {
        const PF_Err err = frame.run(RayTrace_PixelCallback<Pixel>);
        if (err != PF_Err_NONE)
            state.SkipWithError("the pixel callback failed");
    }
    reportPerPixel(state);
}

template <class Pixel>
void BM_DepthOfFieldFrame(benchmark::State& state)
{
    Frame<Pixel> frame;
    frame.makeDofWorlds();
    for (auto _ : state) {
        PF_Err err = frame.run(RayTrace_PixelDepthCallback<Pixel>);
        if (err == PF_Err_NONE)
            err = frame.run(DofCompositeCallback<Pixel>);
        if (err != PF_Err_NONE)
            state.SkipWithError("a depth-of-field pass failed");
    }
    reportPerPixel(state);
}

BENCHMARK_TEMPLATE(BM_SinglePassFrame, PF_Pixel)->Unit(benchmark::kMillisecond)->UseRealTime();
BENCHMARK_TEMPLATE(BM_SinglePassFrame, PF_Pixel16)->Unit(benchmark::kMillisecond)->UseRealTime();
BENCHMARK_TEMPLATE(BM_SinglePassFrame, PF_PixelFloat)->Unit(benchmark::kMillisecond)->UseRealTime();
BENCHMARK_TEMPLATE(BM_DepthOfFieldFrame, PF_Pixel)->Unit(benchmark::kMillisecond)->UseRealTime();
BENCHMARK_TEMPLATE(BM_DepthOfFieldFrame, PF_Pixel16)->Unit(benchmark::kMillisecond)->UseRealTime();
BENCHMARK_TEMPLATE(BM_DepthOfFieldFrame, PF_PixelFloat)->Unit(benchmark::kMillisecond)->UseRealTime();

}  // namespace

BENCHMARK_MAIN();
