// One frame through the smart render protocol: SMART_PRE_RENDER with a zeroed output, then,
// unless the effect's result is empty, SMART_RENDER with its input and output checkouts.

#include <algorithm>
#include <cmath>

#include "host/comp/Composition.h"
#include "host/session/Host.h"
#include "host/session/HostInternals.h"
#include "host/comp/ParamStore.h"

namespace host {

namespace {

bool isEmpty(const PF_LRect& r) { return r.right <= r.left || r.bottom <= r.top; }

PF_LRect intersect(const PF_LRect& a, const PF_LRect& b) {
    PF_LRect r{std::max(a.left, b.left), std::max(a.top, b.top), std::min(a.right, b.right),
               std::min(a.bottom, b.bottom)};
    if (isEmpty(r)) r = PF_LRect{0, 0, 0, 0};
    return r;
}

PF_Err checkoutLayer(PF_ProgPtr effect_ref, PF_ParamIndex index, A_long checkout_id, const PF_RenderRequest* req,
                     A_long what_time, A_long, A_u_long time_scale, PF_CheckoutResult* result) {
    if (PF_Err err = HOST_FAULT_POINT("checkout_layer")) return err;
    CallContext* context = CallContext::from(effect_ref);
    if (!context || !req || !result || time_scale == 0 || context->cmd != PF_Cmd_SMART_PRE_RENDER)
        return PF_Err_BAD_CALLBACK_PARAM;
    Host& host = *context->host;
    if (index < 0 || index >= host.num_params() || host.param_def(index).param_type != PF_Param_LAYER)
        return PF_Err_INVALID_INDEX;
    if (checkout_id < 0 || context->layer_checkouts.count(checkout_id)) return PF_Err_BAD_CALLBACK_PARAM;

    const double layer_seconds = double(what_time) / double(time_scale);
    const double comp_seconds = host.effect_layer() ? host.effect_layer()->comp_time(layer_seconds) : layer_seconds;
    LayerCheckout checkout;
    checkout.index = index;
    checkout.layer_seconds = layer_seconds;
    if (index == 0) {
        checkout.layer_id = host.effect_layer_id();
    } else {
        DeliveryFrame frame;
        frame.effect_layer_id = host.effect_layer_id();
        checkout.layer_id = host.params().layer_id(index, comp_seconds, frame);
    }
    *result = PF_CheckoutResult{};
    if (checkout.layer_id != 0) {
        const PF_LRect bounds = host.layer_bounds(checkout.layer_id, context->in_data.downsample_x,
                                                  context->in_data.downsample_y);
        const PF_LRect full = host.layer_bounds(checkout.layer_id, {1, 1}, {1, 1});
        const Layer* layer = host.composition()->find_by_id(checkout.layer_id);
        checkout.result_rect = intersect(req->rect, bounds);
        result->result_rect = checkout.result_rect;
        result->max_result_rect = bounds;
        result->par = PF_RationalScale{layer->source.par_num, static_cast<A_u_long>(layer->source.par_den)};
        result->ref_width = full.right;
        result->ref_height = full.bottom;
    }
    context->layer_checkouts[checkout_id] = checkout;
    return PF_Err_NONE;
}

PF_Err guidMixIn(PF_ProgPtr effect_ref, A_u_long, const void*) {
    if (PF_Err err = HOST_FAULT_POINT("GuidMixInPtr")) return err;
    return CallContext::from(effect_ref) ? PF_Err_NONE : PF_Err_BAD_CALLBACK_PARAM;
}

PF_Err checkoutLayerPixels(PF_ProgPtr effect_ref, A_long checkout_id, PF_EffectWorld** pixels) {
    if (PF_Err err = HOST_FAULT_POINT("checkout_layer_pixels")) return err;
    CallContext* context = CallContext::from(effect_ref);
    if (!context || !pixels || context->cmd != PF_Cmd_SMART_RENDER) return PF_Err_BAD_CALLBACK_PARAM;
    auto it = context->layer_checkouts.find(checkout_id);
    if (it == context->layer_checkouts.end() || it->second.fetched) return PF_Err_BAD_CALLBACK_PARAM;
    LayerCheckout& checkout = it->second;
    *pixels = nullptr;
    if (checkout.layer_id != 0) {
        Host& host = *context->host;
        const double comp_seconds =
            host.effect_layer() ? host.effect_layer()->comp_time(checkout.layer_seconds) : checkout.layer_seconds;
        checkout.world = host.layer_world(checkout.layer_id, comp_seconds, context->bitdepth,
                                          context->in_data.downsample_x, context->in_data.downsample_y,
                                          &checkout.result_rect, false);
        if (!checkout.world) return PF_Err_OUT_OF_MEMORY;
        *pixels = &checkout.world->get();
        countAcquire(Resource::LayerCheckout, "checkout id " + std::to_string(checkout_id));
    }
    checkout.fetched = true;
    context->any_input_fetched = true;
    return PF_Err_NONE;
}

PF_Err checkinLayerPixels(PF_ProgPtr effect_ref, A_long checkout_id) {
    if (PF_Err err = HOST_FAULT_POINT("checkin_layer_pixels")) return err;
    CallContext* context = CallContext::from(effect_ref);
    if (!context) return PF_Err_BAD_CALLBACK_PARAM;
    auto it = context->layer_checkouts.find(checkout_id);
    if (it == context->layer_checkouts.end() || !it->second.fetched) return PF_Err_BAD_CALLBACK_PARAM;
    if (it->second.world) {
        context->forget_samples(it->second.world->get().data);
        countRelease(Resource::LayerCheckout, "checkout id " + std::to_string(checkout_id));
        it->second.world.reset();
    }
    return PF_Err_NONE;
}

PF_Err checkoutOutput(PF_ProgPtr effect_ref, PF_EffectWorld** output) {
    if (PF_Err err = HOST_FAULT_POINT("checkout_output")) return err;
    CallContext* context = CallContext::from(effect_ref);
    if (!context || !output || context->cmd != PF_Cmd_SMART_RENDER || !context->output) return PF_Err_BAD_CALLBACK_PARAM;
    // An effect with inputs must check one out before the output.
    if (!context->layer_checkouts.empty() && !context->any_input_fetched) return PF_Err_BAD_CALLBACK_PARAM;
    *output = &context->output->get();
    return PF_Err_NONE;
}

// What this host cannot render, refused before any command is sent.
void refuseUnrenderable(const Host& host, const RenderRequest& request) {
    if (!host.loaded()) throw HostError("no module loaded");
    if (request.bitdepth != 8 && request.bitdepth != 16 && request.bitdepth != 32)
        throw HostError("bit depth must be 8, 16 or 32");
    if (request.downsample < 1) throw HostError("downsample must be 1 or more");
    if (!(host.out_flags2() & PF_OutFlag2_SUPPORTS_SMART_RENDER))
        throw HostError(host.effect_name() + " is not a smart effect");
    if (request.bitdepth == 16 && !(host.out_flags() & PF_OutFlag_DEEP_COLOR_AWARE))
        throw HostError(host.effect_name() + " does not render 16 bits per channel");
    if (request.bitdepth == 32 && !(host.out_flags2() & PF_OutFlag2_FLOAT_COLOR_AWARE))
        throw HostError(host.effect_name() + " does not render 32-bit float");
    if (!host.effect_layer()) throw HostError("the effect is not applied to a layer of a composition");
}

PF_PixelFormat pixelFormat(short bitdepth) {
    return bitdepth == 32 ? PF_PixelFormat_ARGB128 : bitdepth == 16 ? PF_PixelFormat_ARGB64 : PF_PixelFormat_ARGB32;
}

}  // namespace

RenderResult Host::render(const RenderRequest& request) {
    refuseUnrenderable(*this, request);
    RenderResult result;
    CallContext context;
    prepare_context(context, PF_Cmd_SMART_PRE_RENDER, layer_seconds(request.seconds), request.bitdepth,
                    request.downsample);
    const PF_LRect whole = layer_bounds(effect_layer_id_, context.in_data.downsample_x, context.in_data.downsample_y);

    PF_PreRenderInput input{};
    input.output_request.rect = request.rect ? *request.rect : whole;
    input.output_request.field = PF_Field_FRAME;
    input.output_request.channel_mask = PF_ChannelMask_ARGB;
    input.bitdepth = request.bitdepth;
    input.what_gpu = PF_GPU_Framework_NONE;
    PF_PreRenderOutput output{};  // the effect unions into empty rects
    PF_PreRenderCallbacks callbacks{checkoutLayer, guidMixIn};
    PF_PreRenderExtra pre_extra{&input, &output, &callbacks};

    // Without threaded rendering the host renders one frame at a time.
    std::unique_lock<std::mutex> serial(global_mutex_, std::defer_lock);
    if (!(out_flags2_ & PF_OutFlag2_SUPPORTS_THREADED_RENDERING)) serial.lock();

    result.err = call(context, nullptr, nullptr, &pre_extra);
    result.result_rect = output.result_rect;
    result.max_result_rect = output.max_result_rect;
    if (result.err == PF_Err_NONE && !isEmpty(output.result_rect))
        smart_render(context, input.output_request, output, request.bitdepth, result);
    // The host owns the pre-render data and frees it even when no render followed.
    if (output.pre_render_data && output.delete_pre_render_data_func)
        output.delete_pre_render_data_func(output.pre_render_data);
    finish_context(context);
    result.return_msg = return_msg();
    result.calls = renderCallLog(context.calls());
    {
        std::lock_guard<std::mutex> lock(state_mutex_);
        last_render_calls_ = result.calls;
    }
    return result;
}

void Host::smart_render(CallContext& context, const PF_RenderRequest& request, const PF_PreRenderOutput& pre_render,
                        short bitdepth, RenderResult& result) {
    const PF_LRect& rect = pre_render.result_rect;
    context.cmd = PF_Cmd_SMART_RENDER;
    context.output = new_world(rect.right - rect.left, rect.bottom - rect.top, pixelFormat(bitdepth), false, true);
    if (!context.output) {
        result.err = PF_Err_OUT_OF_MEMORY;
        return;
    }
    context.output->get().origin_x = rect.left;
    context.output->get().origin_y = rect.top;
    PF_SmartRenderInput render_input{};
    render_input.output_request = request;
    render_input.bitdepth = bitdepth;
    render_input.pre_render_data = pre_render.pre_render_data;
    render_input.what_gpu = PF_GPU_Framework_NONE;
    PF_SmartRenderCallbacks render_callbacks{checkoutLayerPixels, checkinLayerPixels, checkoutOutput};
    PF_SmartRenderExtra render_extra{&render_input, &render_callbacks};
    result.err = call(context, nullptr, nullptr, &render_extra);
    result.rendered = result.err == PF_Err_NONE;
    result.output = context.output;
}

}  // namespace host
