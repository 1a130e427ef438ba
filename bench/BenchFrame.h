#pragma once
// The frame the ray tracing benchmarks render: a textured cylinder filling most of the frame,
// head-on under the default camera of a composition as wide as the frame, lit by one point
// light with self shadow. Everything scales with the frame width, so a small frame has the
// same mix of background, silhouette and surface pixels as a full HD one.

#include <memory>

#include "AE_MyLib/AEObject/AEO_EffectWorld.h"
#include "host/pixels/PixelWorld.h"
#include "math/PixelConvert.h"
#include "tests/support/RecordScene.h"

namespace bench {

constexpr A_long kTextureWidth = 1024;
constexpr A_long kTextureHeight = 512;

using test_support::BitsOf;

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

// The frame: record, texture and output of one pixel depth, `width` x `height` pixels.
template <class Pixel>
class Frame {
public:
    Frame(A_long width, A_long height)
        : width_(width), height_(height), scene_(BitsOf<Pixel>::value)
    {
        using Vectormath::Aos::Matrix4;
        using Vectormath::Aos::Vector3;
        constexpr float kTwoPi = 6.2831853f;
        // The default camera of a 1920-wide composition stands 2666.7 pixels away.
        const float camera_distance = 2666.7f * (float(width) / 1920.0f);

        fillChecker<Pixel>(texture_);
        scene_.allocateOutput<Pixel>(width, height);
        RenderInfo& info = scene_.info();

        // The texture's width wraps once around; its height runs along the axis.
        const float radius = float(width) / kTwoPi;
        info.object_to_world = Matrix4::identity();
        info.world_to_object = Matrix4::identity();
        info.size = Vector3(radius, radius, 0.0f);
        info.size_sq = Vector3(radius * radius, radius * radius, 0.0f);
        info.inv_size = Vector3(1.0f / radius, 1.0f / radius, 0.0f);
        info.inv_size_sq = Vector3(1.0f / (radius * radius), 1.0f / (radius * radius), 0.0f);
        info.texture_layer = texture_.get();
        info.texture_width = width;
        info.texture_height = height * 0.8;
        info.open_scale = 1.0;
        info.pixel_format = host::PixelFormatOf<Pixel>::value;

        scene_.setFacingCamera(camera_distance, true, camera_distance);
        info.image_center[0] = width * 0.5f;
        info.image_center[1] = height * 0.5f;
        info.render_side = 1;

        info.emit = 0.1f;
        info.ambient = 0.2f;
        info.diffuse = 0.8f;
        info.specular = 0.5f;
        info.shininess = 20.0f;
        info.light_transmission = 0.3f;
        info.self_shadow = true;
        const float scale = float(width) / 1920.0f;
        vLight light = {};
        light.to_object =
            Matrix4::translation(Vector3(400.0f * scale, 900.0f * scale, -300.0f * scale));
        light.color[0] = light.color[1] = light.color[2] = light.color[3] = 1.0f;
        light.type = 2;  // point
        light.intensity = 1.0;
        light.cos_half_cone = 0.5;
        light.shadow_darkness = 1.0f;
        light.casts_shadows = true;
        info.appendLight(light);

        info.focus_distance = camera_distance;
        info.dof_blur = 12.0;
    }

    ~Frame()
    {
        for (auto& world : dof_worlds_)
            world.reset();  // before the record whose memory they use
    }

    A_long pixels() const { return width_ * height_; }

    PF_Err run(PF_Err (*callback)(void*, A_long, A_long, A_long))
    {
        return scene_.iterate(callback);
    }

    void makeDofWorlds()
    {
        const auto colour = static_cast<AEO::PixelFormat::e>(host::PixelFormatOf<Pixel>::value);
        for (int i = 0; i < 4; ++i) {
            dof_worlds_[i] = std::make_unique<AEO::NewEffectWorld>(
                scene_.info().aeo_in_data, width_, height_,
                i < 2 ? colour : AEO::PixelFormat::ARGB32);
            scene_.info().depth_worlds[i] = dof_worlds_[i].get();
        }
    }

    const PF_LayerDef& output() const { return scene_.output(); }

private:
    A_long width_;
    A_long height_;
    test_support::RecordScene scene_;
    host::OwnedWorld texture_;
    std::unique_ptr<AEO::NewEffectWorld> dof_worlds_[4];
};

}  // namespace bench
