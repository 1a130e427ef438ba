#include "render/SmartRender.h"

#include <optional>

#include "AEConfig.h"
#include "AE_EffectCB.h"
#include "AE_EffectPixelFormat.h"
#include "AE_EffectSuites.h"
#include "AE_MyLib/AEObject/AEGP_SuiteHandler.h"
#include "AE_MyLib/AEObject/AEO_EffectWorld.h"
#include "AE_MyLib/AEObject/AEO_InData.h"
#include "AE_MyLib/AEObject/ATParameter.h"
#include "raytrace/DepthOfField.h"
#include "raytrace/PrimaryRays.h"
#include "render/ConstructRenderInfo.h"
#include "render/RenderInfo.h"
#include "shell/ParamIds.h"

namespace {

// The effect's own input, checked out in pre-render and fetched in smart render under this id.
constexpr A_long kInputCheckoutId = 0;

typedef PF_Err (*PixelCallback)(void* refcon, A_long thread_index, A_long i, A_long iterations);

// The callbacks of the three passes for one output pixel type.
struct PassCallbacks {
    PixelCallback single;
    PixelCallback depth;
    PixelCallback composite;
};

template <class Pixel>
PassCallbacks callbacksFor()
{
    return PassCallbacks{&RayTrace_PixelCallback<Pixel>, &RayTrace_PixelDepthCallback<Pixel>,
                         &DofCompositeCallback<Pixel>};
}

// Float and 16-bit outputs get their own callbacks; anything else is treated as 8-bit ARGB.
PassCallbacks callbacksOf(PF_PixelFormat format)
{
    switch (format) {
    case PF_PixelFormat_ARGB128:
        return callbacksFor<PF_PixelFloat>();
    case PF_PixelFormat_ARGB64:
        return callbacksFor<PF_Pixel16>();
    default:
        return callbacksFor<PF_Pixel>();
    }
}

AEO::PixelFormat::e colourFormatOf(PF_PixelFormat format)
{
    switch (format) {
    case PF_PixelFormat_ARGB128:
        return AEO::PixelFormat::ARGB128;
    case PF_PixelFormat_ARGB64:
        return AEO::PixelFormat::ARGB64;
    default:
        return AEO::PixelFormat::ARGB32;
    }
}

double ratioOf(const PF_RationalScale& scale) { return double(scale.num) / double(scale.den); }

// The output world's pixel format, through a world suite held just for this question.
PF_Err pixelFormatOf(const PF_InData* in_data, PF_EffectWorld* world, PF_PixelFormat& format)
{
    AEO::Suite<PF_WorldSuite2> world_suite(in_data->pica_basicP);
    const PF_WorldSuite2* suite = world_suite.acquire();
    if (!suite)
        return world_suite.err();
    return suite->PF_GetPixelFormat(world, &format);
}

// One host iteration over every output pixel with the record as reference constant.
PF_Err iterateOutput(const PF_InData* in_data, RenderInfo& info, PixelCallback callback)
{
    const A_long count = info.output->width * info.output->height;
    return in_data->utils->iterate_generic(count, &info, callback);
}

// The four temporary worlds of the depth passes, the size of the output: near and far colour in
// the output's depth, then near and far depth in 8-bit worlds whose four-byte pixels hold one
// float. Made in that order, stopping at the first failure; released in reverse order.
class DepthWorlds {
public:
    DepthWorlds(const AEO::InData& in_data, RenderInfo& info) : _info(info), _err(PF_Err_NONE)
    {
        const AEO::PixelFormat::e colour = colourFormatOf(info.pixel_format);
        const AEO::PixelFormat::e formats[kCount] = {colour, colour, AEO::PixelFormat::ARGB32,
                                                     AEO::PixelFormat::ARGB32};
        for (int i = 0; i < kCount && _err == PF_Err_NONE; ++i) {
            _worlds[i].emplace(in_data, info.output->width, info.output->height, formats[i]);
            _err = _worlds[i]->take_err();
            info.depth_worlds[i] = &*_worlds[i];
        }
    }

    ~DepthWorlds()
    {
        for (int i = kCount - 1; i >= 0; --i) {
            _info.depth_worlds[i] = nullptr;
            _worlds[i].reset();
        }
    }

    DepthWorlds(const DepthWorlds&) = delete;
    DepthWorlds& operator=(const DepthWorlds&) = delete;

    PF_Err err() const { return _err; }

private:
    static constexpr int kCount = 4;
    RenderInfo& _info;
    PF_Err _err;
    std::optional<AEO::NewEffectWorld> _worlds[kCount];
};

// Depth of field: the depth pass fills the four worlds, then the composite pass blurs them into
// the output. The second pass runs only after the first succeeded.
PF_Err runDepthPasses(const PF_InData* in_data, const AEO::InData& aeo_in_data, RenderInfo& info,
                      const PassCallbacks& callbacks)
{
    DepthWorlds worlds(aeo_in_data, info);
    PF_Err err = worlds.err();
    if (err == PF_Err_NONE)
        err = iterateOutput(in_data, info, callbacks.depth);
    if (err == PF_Err_NONE)
        err = iterateOutput(in_data, info, callbacks.composite);
    return err;
}

}  // namespace

void UnionLRect(const PF_LRect* src, PF_LRect* dst)
{
    const bool dst_empty = dst->left >= dst->right || dst->top >= dst->bottom;
    const bool src_empty = src->left >= src->right || src->top >= src->bottom;
    if (dst_empty) {
        *dst = *src;
    } else if (!src_empty) {
        dst->left = src->left < dst->left ? src->left : dst->left;
        dst->top = src->top < dst->top ? src->top : dst->top;
        dst->right = src->right > dst->right ? src->right : dst->right;
        dst->bottom = src->bottom > dst->bottom ? src->bottom : dst->bottom;
    }
}

PF_Err PreRender(PF_InData* in_data, PF_OutData*, PF_PreRenderExtra* extra)
{
    PF_RenderRequest request = extra->input->output_request;
    request.preserve_rgb_of_zero_alpha = true;
    PF_CheckoutResult checkout = PF_CheckoutResult();
    const PF_Err err = extra->cb->checkout_layer(in_data->effect_ref, PARAM_INPUT, kInputCheckoutId, &request,
                                                 in_data->current_time, in_data->time_step, in_data->time_scale,
                                                 &checkout);
    UnionLRect(&checkout.result_rect, &extra->output->result_rect);
    UnionLRect(&checkout.max_result_rect, &extra->output->max_result_rect);
    return err;
}

PF_Err SmartRender(PF_InData* in_data, PF_OutData*, PF_SmartRenderExtra* extra)
{
    AEGP_SuiteHandler suites(in_data->pica_basicP);
    AEO::InData aeo_in_data(in_data);
    if (aeo_in_data.sampling8().err() != A_Err_NONE || aeo_in_data.sampling16().err() != A_Err_NONE ||
        aeo_in_data.samplingFloat().err() != A_Err_NONE) {
        // Deliberately the float suite's word: a missing 8-bit or 16-bit suite renders nothing
        // and still reports success.
        return aeo_in_data.samplingFloat().err();
    }

    // The input's pixels are fetched only because the host wants an input checked out before
    // the output; they are not used.
    PF_EffectWorld* input = nullptr;
    PF_EffectWorld* output = nullptr;
    PF_PixelFormat format = PF_PixelFormat_INVALID;
    PF_Err err = extra->cb->checkout_layer_pixels(in_data->effect_ref, kInputCheckoutId, &input);
    if (err == PF_Err_NONE)
        err = extra->cb->checkout_output(in_data->effect_ref, &output);
    if (err == PF_Err_NONE)
        err = pixelFormatOf(in_data, output, format);

    RenderInfo info(in_data);
    info.downsample_x = ratioOf(in_data->downsample_x);
    info.downsample_y = ratioOf(in_data->downsample_y);
    info.pixel_aspect = ratioOf(in_data->pixel_aspect_ratio);
    info.pixel_format = format;
    if (err == PF_Err_NONE)
        ConstructRenderInfo(in_data, info);

    // Both layers stay checked out until the passes are over.
    ATParameter texture_param(in_data);
    info.texture_layer = texture_param.param(PARAM_TEXTURE).u.ld;
    err |= texture_param.err();

    ATParameter reflection_param(in_data);
    const PF_ParamDef reflection = reflection_param.param(PARAM_REFLECTION_MAP);
    if (reflection.u.ld.data) {
        info.reflection_layer = reflection.u.ld;
        err |= reflection_param.err();
    }

    info.output = output;
    if (err == PF_Err_NONE) {
        const PassCallbacks callbacks = callbacksOf(format);
        if (info.depth_pass)
            err = runDepthPasses(in_data, aeo_in_data, info, callbacks);
        else
            err = iterateOutput(in_data, info, callbacks.single);
    }
    return err;
}
