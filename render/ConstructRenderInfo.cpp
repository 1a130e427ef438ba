#include "render/ConstructRenderInfo.h"

#include <cmath>

#include "AEConfig.h"
#include "AE_EffectCB.h"
#include "AE_MyLib/AEObject/AEO_Composition.h"
#include "AE_MyLib/AEObject/AEO_Effect.h"
#include "AE_MyLib/AEObject/AEO_Interface.h"
#include "AE_MyLib/AEObject/AEO_Item.h"
#include "AE_MyLib/AEObject/AEO_Layer.h"
#include "AE_MyLib/AEObject/ATParameter.h"
#include "math/HostMatrix.h"
#include "shell/GlobalData.h"
#include "shell/ParamIds.h"

using Vectormath::Aos::Matrix4;
using Vectormath::Aos::Vector3;
using Vectormath::Aos::Vector4;

namespace {

constexpr double kFixedToDouble = 1.52587890625e-5;  // 1 / 65536
constexpr double kPi = 3.141592653589793;
constexpr double kTwoPi = 6.283185307179586;
constexpr double kDegreesToRadians = 0.017453292519943295;
// A hair below pi/2: "Open Parameter" exactly 1 gives a huge but finite open factor.
constexpr double kAlmostHalfPi = 1.5707723583450859;
constexpr double kMaxOpenScale = 10000.0;

// Building the record is best effort: a host error leaves the fields that depend on it unset
// and is not reported. Declared right after a wrapper, this drops the wrapper's error just
// before the wrapper dies, on every path.
class DropErrorAtExit {
public:
    explicit DropErrorAtExit(AEO::ObjectBase& object) : _object(object) {}
    ~DropErrorAtExit() { _object.take_err(); }
    DropErrorAtExit(const DropErrorAtExit&) = delete;
    DropErrorAtExit& operator=(const DropErrorAtExit&) = delete;

private:
    AEO::ObjectBase& _object;
};

double fixedValue(PF_Fixed value) { return value * kFixedToDouble; }
double percentValue(PF_Fixed value) { return fixedValue(value) / 100.0; }
double seconds(const A_Time& time) { return double(time.value) / double(time.scale); }

// The parameter readers: one checked-out parameter at a time, read by index.
double fixedParam(ATParameter& params, PF_ParamIndex index) { return fixedValue(params.param(index).u.fd.value); }
double percentParam(ATParameter& params, PF_ParamIndex index) { return percentValue(params.param(index).u.fd.value); }
double angleParam(ATParameter& params, PF_ParamIndex index) { return fixedValue(params.param(index).u.ad.value); }
A_long popupParam(ATParameter& params, PF_ParamIndex index) { return params.param(index).u.pd.value; }
PF_Boolean checkboxParam(ATParameter& params, PF_ParamIndex index) { return params.param(index).u.bd.value; }

Vector3 xyz(const Vector4& v) { return Vector3(v.getX(), v.getY(), v.getZ()); }

// Where the surface sits before opening: three unit axis columns and a translation, all in
// composition space.
struct Placement {
    Vector3 axis[3];
    Vector3 translation;

    Vector3 rotate(const Vector3& v) const
    {
        return axis[0] * v.getX() + axis[1] * v.getY() + axis[2] * v.getZ();
    }
};

double openScaleOf(const PF_InData* in_data, double open_parameter, bool& inverted)
{
    double (*tangent)(double) = in_data->utils->ansi.tan;
    double open_scale;
    inverted = false;
    if (open_parameter < 1.0) {
        open_scale = tangent(open_parameter * kPi * 0.5) + 1.0;
    } else if (open_parameter == 1.0) {
        open_scale = tangent(kAlmostHalfPi) + 1.0;
    } else {
        const double t = tangent(open_parameter * kPi * 0.5);
        open_scale = t - 1.0 > 0.0 ? t - 1.0 : -(t - 1.0);
        inverted = true;
    }
    if (open_scale < -kMaxOpenScale)
        open_scale = -kMaxOpenScale;
    if (open_scale > kMaxOpenScale)
        open_scale = kMaxOpenScale;
    return open_scale;
}

// The layer chosen as "Control Layer", from its checked-out value. The host names it in the
// value's layer word, also while the layer has no pixels (trimmed out of this time): it is still
// the chosen layer and still places the surface. A host that leaves the word empty is asked
// through the effect's stream of the parameter, the documented route; that route makes an
// effect and a stream reference whose disposal After Effects refuses on render threads, so it
// is taken only when the value carries pixels, i.e. never in a render without a control layer.
// Null for none.
AEGP_LayerH controlLayerOf(const RenderInfoTemplate<Cylinder>& info, const PF_LayerDef& value)
{
    if (AEGP_LayerH named = AEO::ChosenLayerInValue(value))
        return named;
    if (!value.data)
        return nullptr;
    AEGP_PluginID plugin_id = 0;
    {
        GlobalDataAccess global(info.in_data);
        if (global.get())
            plugin_id = global.get()->plugin_id();
    }
    AEGP_LayerH layer = nullptr;
    if (AEO::GetLayerOfLayerParam(info.aeo_in_data, plugin_id, PARAM_CONTROL_LAYER, &layer) != PF_Err_NONE)
        return nullptr;
    return layer;
}

A_Time compTimeOf(const PF_InData* in_data, AEO::Interface& effect)
{
    return effect.ConvertEffectToCompTime(in_data->current_time, in_data->time_scale);
}

// The effect, the layer it is applied to and that layer's composition, opened in this order
// and closed in reverse, each wrapper's error dropped as it closes.
struct EffectComposition {
    EffectComposition(const PF_InData* in_data, const RenderInfoTemplate<Cylinder>& info)
        : effect(in_data->pica_basicP, in_data->effect_ref),
          drop_effect(effect),
          layer(info.aeo_in_data, effect.GetEffectLayer()),
          drop_layer(layer),
          composition(in_data->pica_basicP, layer.GetParentComp()),
          drop_composition(composition)
    {
    }

    AEO::Interface effect;
    DropErrorAtExit drop_effect;
    AEO::Layer layer;
    DropErrorAtExit drop_layer;
    AEO::Composition composition;
    DropErrorAtExit drop_composition;
};

// The pixel aspect ratio of a layer's source; {0, 1} for a layer without one.
A_Ratio sourcePixelAspect(const PF_InData* in_data, AEO::Layer& layer)
{
    A_Ratio ratio = {0, 1};
    AEGP_ItemH source = layer.GetSourceItem();
    if (source) {
        AEO::Item item(in_data->pica_basicP, source);
        DropErrorAtExit drop(item);
        ratio = item.GetPixelAspectRatio();
    }
    return ratio;
}

// The composition the effect's layer lives in: its size and pixel aspect ratio.
struct CompFrame {
    A_long width = 0;
    A_long height = 0;
    A_Ratio pixel_aspect = {1, 1};
};

// Placement by a control layer: its to-world transform, with its scale turned into radii.
void placeByControlLayer(const PF_InData* in_data, RenderInfoTemplate<Cylinder>& info, AEGP_LayerH control,
                         const CompFrame& comp, Placement& placement)
{
    AEO::Interface effect(in_data->pica_basicP, in_data->effect_ref);
    DropErrorAtExit drop_effect(effect);
    const A_Time comp_time = compTimeOf(in_data, effect);

    AEO::Layer layer(info.aeo_in_data, control);
    DropErrorAtExit drop_layer(layer);
    A_Matrix4 to_world = layer.GetToWorldXform(comp_time);
    const A_Ratio source_aspect = sourcePixelAspect(in_data, layer);
    if (source_aspect.num != 0) {
        const double ratio = double(source_aspect.num) / double(source_aspect.den);
        for (int j = 0; j < 3; ++j)
            to_world.mat[0][j] /= ratio;
    }
    ModifyAspectedCoordinate(comp.pixel_aspect, comp.width, to_world);
    const Matrix4 m = fromHostMatrix(to_world);

    float scale[3];
    for (int c = 0; c < 3; ++c) {
        const Vector4 column = m.getCol(c);
        scale[c] = Vectormath::Aos::length(column);
        placement.axis[c] = xyz(scale[c] > 0.0f ? column / scale[c] : column);
    }
    double (*square_root)(double) = in_data->utils->ansi.sqrt;
    const double s = square_root(double(scale[0]) * scale[1]);
    const double r = scale[1] != 0.0f ? square_root(double(scale[0]) / scale[1]) : 1.0;
    info.size.setX(float(r * s * info.texture_width / kTwoPi));
    info.size.setY(float(s * info.texture_width / (r * kTwoPi)));
    info.texture_height *= scale[2];
    placement.translation = xyz(m.getCol3());
}

// Placement by the Transform parameters.
void placeByParameters(const PF_InData* in_data, RenderInfoTemplate<Cylinder>& info, ATParameter& params,
                       Placement& placement)
{
    const float ax = float(angleParam(params, PARAM_ROTATION_X) * kDegreesToRadians);
    const float ay = float(angleParam(params, PARAM_ROTATION_Y) * kDegreesToRadians);
    const float az = float(angleParam(params, PARAM_ROTATION_Z) * kDegreesToRadians);
    const Matrix4 rotation = Matrix4::rotationX(ax) * Matrix4::rotationY(ay) * Matrix4::rotationZ(az);
    for (int c = 0; c < 3; ++c)
        placement.axis[c] = xyz(rotation.getCol(c));

    const PF_ParamDef position = params.param(PARAM_POSITION_XY);
    placement.translation = Vector3(float(fixedValue(position.u.td.x_value) / info.downsample_x),
                                    float(fixedValue(position.u.td.y_value) / info.downsample_y),
                                    float(fixedParam(params, PARAM_POSITION_Z)));

    const double width = percentParam(params, PARAM_RADIUS_SCALE) * info.texture_width;
    info.texture_height *= percentParam(params, PARAM_HEIGHT_SCALE);
    const double k = in_data->utils->ansi.tan((fixedParam(params, PARAM_ELLIPSE_XY) + 1.0) * kPi * 0.25);
    info.size.setX(float(k * width / kTwoPi));
    info.size.setY(float(width / (k * kTwoPi)));
}

float reciprocalOrZero(float x) { return x != 0.0f ? 1.0f / x : 0.0f; }

// Steps from the unopened placement to the final matrices and sizes: the fixed point stays
// where it is while the radii grow by the open factor, and an inverted surface is mirrored
// about its tangent plane at that point.
void openAboutPivot(RenderInfoTemplate<Cylinder>& info, Placement placement)
{
    Vector3& size = info.size;
    info.inv_size = Vector3(reciprocalOrZero(size.getX()), reciprocalOrZero(size.getY()),
                            reciprocalOrZero(size.getZ()));
    info.inv_size_sq = Vectormath::Aos::mulPerElem(info.inv_size, info.inv_size);

    const Vector3 pivot = info.getHitcoordFromUV(info.texture_height, size, info.fixed_u, info.fixed_v);
    Vector3 q = placement.rotate(pivot);
    if (info.inverted) {
        const Vector3 gradient(pivot.getX() * info.inv_size_sq.getX(), pivot.getY() * info.inv_size_sq.getY(),
                               -pivot.getZ() * info.inv_size_sq.getZ());
        const Vector3 n = Vectormath::Aos::normalize(placement.rotate(Vectormath::Aos::normalize(gradient)));
        for (Vector3& axis : placement.axis)
            axis = axis - n * (2.0f * Vectormath::Aos::dot(axis, n));
        const float d = 2.0f * Vectormath::Aos::dot(n, q);
        placement.translation = placement.translation + n * d;
        q = q - n * d;
    }

    const Vector3 origin = placement.translation + q * float(1.0 - info.open_scale);
    info.object_to_world = Matrix4(Vector4(placement.axis[0], 0.0f), Vector4(placement.axis[1], 0.0f),
                                   Vector4(placement.axis[2], 0.0f), Vector4(origin, 1.0f));
    info.world_to_object = Vectormath::Aos::inverse(info.object_to_world);

    const float k = float(info.open_scale);
    size = size * k;
    info.size_sq = Vectormath::Aos::mulPerElem(size, size);
    info.inv_size = Vector3(1.0f / size.getX(), 1.0f / size.getY(), size.getZ() > 0.0f ? 1.0f / size.getZ() : 0.0f);
    info.inv_size_sq = Vectormath::Aos::mulPerElem(info.inv_size, info.inv_size);
}

// The texture, its placement, the open factor and the resulting surface matrices and sizes.
void buildSurface(const PF_InData* in_data, RenderInfoTemplate<Cylinder>& info, ATParameter& params,
                  const CompFrame& comp)
{
    info.slide = angleParam(params, PARAM_SLIDE_TEXTURE) / 360.0;
    info.open_scale = openScaleOf(in_data, fixedParam(params, PARAM_OPEN_PARAMETER), info.inverted);
    info.fixed_u = fixedParam(params, PARAM_FIXED_POINT_U);
    info.fixed_v = 0.5;

    const PF_LayerDef texture = params.param(PARAM_TEXTURE).u.ld;
    if (texture.data) {
        info.texture_width = texture.width / info.downsample_x;
        info.texture_height = texture.height / info.downsample_y;
    } else {
        info.texture_width = in_data->width;
        info.texture_height = in_data->height;
    }

    Placement placement;
    if (AEGP_LayerH control = controlLayerOf(info, params.param(PARAM_CONTROL_LAYER).u.ld))
        placeByControlLayer(in_data, info, control, comp, placement);
    else
        placeByParameters(in_data, info, params, placement);

    const double hyperbolic = std::tan(fixedParam(params, PARAM_HYPERBOLOID) * kPi / 2.0);
    info.size.setZ(hyperbolic > 0.0 ? float(info.texture_height / hyperbolic) : 0.0f);
    openAboutPivot(info, placement);
}

CompFrame compFrameOf(const PF_InData* in_data, RenderInfoTemplate<Cylinder>& info)
{
    CompFrame frame;
    EffectComposition opened(in_data, info);
    AEO::Item item(in_data->pica_basicP, opened.composition.GetItem());
    DropErrorAtExit drop_item(item);
    frame.width = item.width();
    frame.height = item.height();
    frame.pixel_aspect = item.GetPixelAspectRatio();
    return frame;
}

// The camera the surface is seen through: the composition's camera layer, or the host's
// default camera when there is none or the effect is told not to use it.
void buildCamera(const PF_InData* in_data, RenderInfoTemplate<Cylinder>& info, ATParameter& params,
                 const CompFrame& comp, bool& camera_used, bool& camera_dof)
{
    EffectComposition opened(in_data, info);
    AEO::Interface& effect = opened.effect;
    AEO::Composition& composition = opened.composition;
    const A_Time comp_time = compTimeOf(in_data, effect);

    info.perspective = true;
    info.dof_blur = 1.0;
    info.image_center[0] = float(comp.width * 0.5);
    info.image_center[1] = float(comp.height * 0.5);
    camera_used = false;
    camera_dof = false;

    AEGP_LayerH camera_layer = effect.GetEffectCamera(comp_time);
    if (!camera_layer || !checkboxParam(params, PARAM_USE_COMP_CAMERA)) {
        const double d = composition.GetDefaultCameraDistanceToImagePlane();
        info.neg_focal = float(-d);
        info.camera_to_world = Matrix4(Vector4::xAxis(), Vector4::yAxis(), Vector4::zAxis(),
                                       Vector4(float(comp.width * 0.5), float(comp.height * 0.5), float(-d), 1.0f));
        return;
    }

    AEO::CameraLayer camera(info.aeo_in_data, camera_layer);
    DropErrorAtExit drop_camera(camera);
    const AEGP_LTimeMode mode = AEGP_LTimeMode_CompTime;
    A_Matrix4 to_world = camera.GetToWorldXform(comp_time);
    const double zoom = camera.GetZoom(comp_time, mode, false);
    camera_dof = camera.GetDepthOfField(comp_time, mode, false) != 0.0;
    double focus = camera.GetFocusDistance(comp_time, mode, false);
    if (focus < 1.0)
        focus = 1.0;
    info.focus_distance = focus;
    info.perspective = camera.GetCameraType() == AEGP_CameraType_PERSPECTIVE;
    const double blur = camera.GetBlurLevel(comp_time, mode, false);
    const double aperture = camera.GetAperture(comp_time, mode, false);
    const double boost = percentParam(params, PARAM_BOOST_DOF_BLUR);
    info.dof_blur = (zoom / focus) * (aperture / 10.0) * (blur / 100.0) * boost;
    info.neg_focal = float(-zoom);
    ModifyAspectedCoordinate(comp.pixel_aspect, comp.width, to_world);
    info.camera_to_world = fromHostMatrix(to_world);
    camera_used = true;
}

// One light layer, if it shines at composition time `now` (seconds).
void addLightIfActive(RenderInfoTemplate<Cylinder>& info, AEGP_LayerH handle, const A_Time& comp_time,
                      const CompFrame& comp)
{
    AEO::LightLayer light(info.aeo_in_data, handle);
    DropErrorAtExit drop_light(light);
    const AEGP_LTimeMode mode = AEGP_LTimeMode_CompTime;
    if (light.GetObjectType() != AEGP_ObjectType_LIGHT)
        return;
    if (!(light.GetFlags() & AEGP_LayerFlag_VIDEO_ACTIVE))
        return;
    const double now = seconds(comp_time);
    const double in_point = seconds(light.GetInPoint(mode));
    const double duration = seconds(light.GetDuration(mode));
    if (!(in_point <= now && now < in_point + duration))
        return;

    vLight shining = vLight();
    const AEGP_ColorVal color = light.GetColor(comp_time, mode, false);
    shining.color[0] = float(color.alphaF);
    shining.color[1] = float(color.redF);
    shining.color[2] = float(color.greenF);
    shining.color[3] = float(color.blueF);
    shining.type = light.GetLightType();
    shining.intensity = light.GetIntensity(comp_time, mode, false) / 100.0;
    shining.cos_half_cone = std::cos(light.GetConeAngle(comp_time, mode, false) * kPi / 180.0 * 0.5);
    shining.feather = light.GetConeFeather(comp_time, mode, false) / 100.0;
    double darkness = light.GetShadowDarkenss(comp_time, mode, false) / 100.0;
    darkness = darkness < 0.0 ? 0.0 : (darkness > 1.0 ? 1.0 : darkness);
    shining.shadow_darkness = float(darkness);
    shining.shadow_diffusion = light.GetShadowDiffusion(comp_time, mode, false);
    shining.casts_shadows = light.GetCastsShadows(comp_time, mode, false) != 0.0;
    A_Matrix4 to_world = light.GetToWorldXform(comp_time);
    ModifyAspectedCoordinate(comp.pixel_aspect, comp.width, to_world);
    shining.to_object = info.world_to_object * fromHostMatrix(to_world);
    info.appendLight(shining);  // a light without memory is dropped
}

void collectLights(const PF_InData* in_data, RenderInfoTemplate<Cylinder>& info, const CompFrame& comp)
{
    EffectComposition opened(in_data, info);
    AEO::Interface& effect = opened.effect;
    AEO::Composition& composition = opened.composition;
    const A_Time comp_time = compTimeOf(in_data, effect);

    const A_long count = composition.GetNumLayers();
    for (A_long i = 0; i < count && composition.ok(); ++i) {
        AEGP_LayerH layer = composition.GetLayerByIndex(i);
        if (layer)
            addLightIfActive(info, layer, comp_time, comp);
    }
}

void readShading(RenderInfoTemplate<Cylinder>& info, ATParameter& params)
{
    info.falloff_mode = popupParam(params, PARAM_FALLOFF);
    info.falloff_radius = fixedParam(params, PARAM_FALLOFF_RADIUS);
    info.falloff_distance = fixedParam(params, PARAM_FALLOFF_DISTANCE);
    info.self_shadow = checkboxParam(params, PARAM_SELF_SHADOW) == 1;
    info.light_transmission = float(percentParam(params, PARAM_LIGHT_TRANSMISSION));
    info.emit = float(percentParam(params, PARAM_EMIT));
    info.ambient = float(percentParam(params, PARAM_AMBIENT));
    info.diffuse = float(percentParam(params, PARAM_DIFFUSE));
    info.specular = float(percentParam(params, PARAM_SPECULAR));
    info.shininess = float(std::tan((1.0 - fixedParam(params, PARAM_ROUGHNESS)) * kPi * 0.5));
    info.highlight_cutoff = highlightCutoffFor(info.shininess);
    info.metal = float(percentParam(params, PARAM_METAL));
    info.reflection_intensity = float(percentParam(params, PARAM_REFLECTION_INTENSITY));
    info.reflection_rolloff = float(percentParam(params, PARAM_REFLECTION_ROLLOFF));
}

void readRendering(RenderInfoTemplate<Cylinder>& info, ATParameter& params, bool camera_used, bool camera_dof)
{
    info.render_side = popupParam(params, PARAM_RENDER_SIDE);
    if (info.inverted && (info.render_side == 2 || info.render_side == 3))
        info.render_side = 5 - info.render_side;  // inside and outside trade places

    info.dof_mode = popupParam(params, PARAM_DEPTH_OF_FIELD);
    info.depth_pass = camera_used && (info.dof_mode == 3 || (info.dof_mode == 2 && camera_dof));

    const Vector4 eye = info.camera_to_object.getCol3();
    info.eye_x = eye.getX();
    info.eye_y = eye.getY();
    info.eye_z = eye.getZ();
    info.eye_implicit = info.inv_size_sq.getY() * info.eye_y * info.eye_y +
                        info.inv_size_sq.getX() * info.eye_x * info.eye_x -
                        info.inv_size_sq.getZ() * info.eye_z * info.eye_z - 1.0;

    info.show_pivot = checkboxParam(params, PARAM_SHOW_PIVOT) != 0;
    info.sharpness_inv = 1.0 - fixedParam(params, PARAM_SHARPNESS);
}

void readExtension(RenderInfoTemplate<Cylinder>& info, ATParameter& params)
{
    const A_long side = popupParam(params, PARAM_EXTENSION_SIDE);
    const A_long copies = params.param(PARAM_EXTENSIONS).u.sd.value;
    info.extension.head_extensions = (side == 1 || side == 3) ? copies : 0;
    info.extension.tail_extensions = (side == 2 || side == 3) ? copies : 0;
    info.extension.flip_vertical = checkboxParam(params, PARAM_FLIP_VERTICAL) != 0;
    info.extension.screw = angleParam(params, PARAM_SCREW) * kDegreesToRadians / kTwoPi;
    double interval = fixedParam(params, PARAM_INTERVAL) / info.texture_height;
    if (info.texture_height < 0.0)
        interval = -interval;
    info.extension.interval = interval;
}

void readDepthComposite(RenderInfoTemplate<Cylinder>& info, ATParameter& params)
{
    info.depth_composite.mode = popupParam(params, PARAM_DEPTH_COMPOSITE_MODE);
    info.depth_composite.start = fixedParam(params, PARAM_START_DEPTH);
    info.depth_composite.length = fixedParam(params, PARAM_END_DEPTH) - info.depth_composite.start;
    const PF_Pixel fog = params.param(PARAM_FOG_COLOR).u.cd.value;
    info.depth_composite.color.alpha = 1.0f;
    info.depth_composite.color.red = fog.red / 255.0f;
    info.depth_composite.color.green = fog.green / 255.0f;
    info.depth_composite.color.blue = fog.blue / 255.0f;
}

}  // namespace

void ModifyAspectedCoordinate(const A_Ratio& ratio, A_long width, A_Matrix4& matrix)
{
    const double f = double(ratio.num) / double(ratio.den);
    for (int row = 0; row < 3; ++row)
        matrix.mat[row][0] *= f;
    const double middle = width / 2.0;
    matrix.mat[3][0] = middle + f * (matrix.mat[3][0] - middle);
}

PF_Err ConstructRenderInfo(const PF_InData* in_data, RenderInfoTemplate<Cylinder>& info)
{
    // The composition's size and pixel aspect ratio are needed by the placement already.
    const CompFrame comp = compFrameOf(in_data, info);
    ATParameter surface_params(in_data);
    buildSurface(in_data, info, surface_params, comp);

    ATParameter params(in_data);
    bool camera_used = false;
    bool camera_dof = false;
    buildCamera(in_data, info, params, comp, camera_used, camera_dof);
    info.camera_to_object = info.world_to_object * info.camera_to_world;
    collectLights(in_data, info, comp);
    readShading(info, params);
    readRendering(info, params, camera_used, camera_dof);
    readExtension(info, params);
    readDepthComposite(info, params);
    return PF_Err_NONE;
}
