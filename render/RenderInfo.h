#pragma once

#include <cstddef>

#include "AEConfig.h"
#include "AE_Effect.h"
#include "AE_MyLib/AEObject/AEGP_SuiteHandler.h"
#include "AE_MyLib/AEObject/AEO_InData.h"
#include "AE_MyLib/AEObject/AEO_Vector.h"
#include "math/Vectormath.h"
#include "raytrace/Cylinder.h"
#include "raytrace/Extension.h"
#include "raytrace/HighlightPower.h"
#include "render/Ray.h"
#include "render/vLight.h"

namespace AEO {
class NewEffectWorld;
}

// Everything the per-pixel ray tracer needs for one frame. The driver builds one on its stack
// per smart-render call; its address is the refcon of every pixel callback, which only read it.
// The record derives from its shape, so the shape's placement and size fields (object_to_world,
// world_to_object, size, size_sq, inv_size, inv_size_sq) are fields of the record and the
// shape operations are called on it: info.getUVFromCoordinate(info, p, u, v).
// Lengths are in full-resolution composition pixels unless noted.
template <class Shape>
class RenderInfoTemplate : public Shape {
public:
    // Fog or fade-out by hit depth.
    struct DepthCompositeInfo {
        A_long mode;          // 1 Off, 2 Fog, 3 Fade Out
        double length;        // end depth - start depth, pixels (may be zero or negative)
        double start;         // pixels
        PF_PixelFloat color;  // alpha 1, straight colour 0..1
    };

    PF_InData* in_data;
    AEGP_SuiteHandler suites;  // sampling suites are acquired lazily from the pixel callbacks
    AEO::InData aeo_in_data;   // its memory callbacks own the lights

    double downsample_x;  // numerator / denominator
    double downsample_y;
    double pixel_aspect;  // numerator / denominator

    bool inverted;  // the surface is mirrored inside out
    double slide;   // texture rotation, turns

    PF_LayerDef texture_layer;  // by-value copy of the checked-out texture
    double texture_width;       // full-resolution pixels
    double texture_height;      // world height of the unrolled texture; negative when flipped

    PF_LayerDef* output;
    A_u_long pixel_format;  // four-character code of the output world

    float image_center[2];  // principal point of the view
    float neg_focal;        // minus the focal length, pixels
    Vectormath::Aos::Matrix4 camera_to_world;
    Vectormath::Aos::Matrix4 camera_to_object;

    bool show_pivot;
    double open_scale;  // open factor K, 1 for a closed surface
    double fixed_u;     // texture u kept in place while opening
    double fixed_v;     // always 0.5

    AEO::Vector<vLight*> lights;
    A_long falloff_mode;      // 1 None, 2 Smooth, 3 Inverse Square Clamped
    double falloff_radius;    // pixels
    double falloff_distance;  // pixels

    bool self_shadow;
    float light_transmission;  // fractions from here on
    float emit;
    float ambient;
    float diffuse;
    float specular;
    float shininess;  // specular exponent
    float metal;
    HighlightCutoff highlight_cutoff;  // where pow(cosine, shininess) is zero; none by default

    PF_LayerDef reflection_layer;  // all zero without a reflection map
    float reflection_intensity;
    float reflection_rolloff;

    double eye_x, eye_y, eye_z;  // camera origin in shape local space
    double eye_implicit;         // implicit surface function at the eye, negative inside

    A_long render_side;  // 1 Full, 2 Inside, 3 Outside
    A_long dof_mode;     // 1 Off, 2 Camera Settings, 3 On
    bool perspective;
    bool depth_pass;          // render through the two depth-of-field passes
    double focus_distance;    // pixels, at least 1
    double dof_blur;          // blur scale of the depth-of-field pass
    AEO::NewEffectWorld* depth_worlds[4];  // owned by the driver
    double sharpness_inv;     // 1 - sharpness; scales every texture footprint

    typename ExtraRenderInfo<Shape>::ExtensionInfo extension;
    DepthCompositeInfo depth_composite;

    explicit RenderInfoTemplate(PF_InData* in_data_)
        : Shape(),
          in_data(in_data_),
          suites(in_data_ ? in_data_->pica_basicP : nullptr),
          aeo_in_data(in_data_),
          downsample_x(1.0),
          downsample_y(1.0),
          pixel_aspect(1.0),
          inverted(false),
          slide(0.0),
          texture_layer(),
          texture_width(0.0),
          texture_height(0.0),
          output(nullptr),
          pixel_format(0),
          image_center{0.0f, 0.0f},
          neg_focal(0.0f),
          show_pivot(false),
          open_scale(1.0),
          fixed_u(0.0),
          fixed_v(0.5),
          lights(&aeo_in_data),
          falloff_mode(1),
          falloff_radius(1.0),
          falloff_distance(1.0),
          self_shadow(false),
          light_transmission(0.0f),
          emit(0.0f),
          ambient(0.0f),
          diffuse(0.0f),
          specular(0.0f),
          shininess(0.0f),
          metal(0.0f),
          reflection_layer(),
          reflection_intensity(0.0f),
          reflection_rolloff(0.0f),
          eye_x(0.0),
          eye_y(0.0),
          eye_z(0.0),
          eye_implicit(0.0),
          render_side(1),
          dof_mode(1),
          perspective(true),
          depth_pass(false),
          focus_distance(1.0),
          dof_blur(1.0),
          depth_worlds{nullptr, nullptr, nullptr, nullptr},
          sharpness_inv(1.0),
          extension(),
          depth_composite()
    {
        this->object_to_world = Vectormath::Aos::Matrix4();
        this->size = Vectormath::Aos::Vector3(0.0f, 0.0f, 0.0f);
        depth_composite.mode = 1;
        depth_composite.length = 1.0;
        depth_composite.start = 0.0;
    }

    // Lights first, in index order, then (by member order) the light array, aeo_in_data and
    // the suites.
    ~RenderInfoTemplate()
    {
        for (std::size_t i = 0; i < lights.size(); ++i)
            aeo_in_data.aligned_free(lights[i]);
    }

    RenderInfoTemplate(const RenderInfoTemplate&) = delete;
    RenderInfoTemplate& operator=(const RenderInfoTemplate&) = delete;

    // Copies `light` into host handle memory (16-byte aligned) and appends it. A light that
    // gets no memory, or no slot in the array, is dropped and false returned.
    bool appendLight(const vLight& light)
    {
        vLight* copy = aeo_in_data.aligned_new(light, 16);
        if (copy == nullptr)
            return false;
        const std::size_t count = lights.size();
        lights.resize(count + 1, copy);
        if (lights.size() == count) {
            aeo_in_data.aligned_free(copy);
            return false;
        }
        return true;
    }
};

using RenderInfo = RenderInfoTemplate<Cylinder>;
