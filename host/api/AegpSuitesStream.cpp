// Stream and Dynamic Stream suites: layer and effect-parameter streams, their values at a
// time, their expressions and their interface flags.
#include "host/api/AegpSuitesInternal.h"

#include "host/comp/Expression.h"
#include "host/session/Host.h"

#include <cstring>

namespace host {
namespace aegp {

namespace {

StreamRecord* stream_of(AegpSuites* s, AEGP_StreamRefH streamH) {
    return find_record(s, &AegpSuites::Records::streams, streamH);
}

#define NEED_STREAM(handle)                          \
    StreamRecord* stream = stream_of(s_, handle);    \
    if (stream == nullptr) return A_Err_PARAMETER

AEGP_StreamRefH new_stream(AegpSuites* s, bool effect, int layer_id, int which) {
    auto record = std::make_unique<StreamRecord>();
    record->effect = effect;
    record->layer_id = layer_id;
    record->which = which;
    return keep_record<AEGP_StreamRefH>(s, &AegpSuites::Records::streams, std::move(record), Resource::AegpStream);
}

bool is_camera_stream(int which) { return which >= AEGP_LayerStream_ZOOM && which <= AEGP_LayerStream_BLUR_LEVEL; }
bool is_light_stream(int which) {
    return which >= AEGP_LayerStream_INTENSITY && which <= AEGP_LayerStream_SHADOW_DIFFUSION;
}

bool legal(const Layer& l, int which) {
    bool aims = l.kind == LayerKind::Camera || l.kind == LayerKind::Light;
    switch (which) {
        case AEGP_LayerStream_POSITION:
        case AEGP_LayerStream_ROTATE_Z:
        case AEGP_LayerStream_ROTATE_X:
        case AEGP_LayerStream_ROTATE_Y:
        case AEGP_LayerStream_ORIENTATION:
            return true;
        case AEGP_LayerStream_ANCHORPOINT:
        case AEGP_LayerStream_SCALE:
        case AEGP_LayerStream_OPACITY:
            return !aims;
        case AEGP_LayerStream_CASTS_SHADOWS:
            return l.kind != LayerKind::Camera;
        default:
            if (is_camera_stream(which)) return l.kind == LayerKind::Camera;
            if (is_light_stream(which)) return l.kind == LayerKind::Light;
            return false;
    }
}

void put(AEGP_StreamVal2* v, AEGP_StreamType* type, double one_d) {
    v->one_d = one_d;
    *type = AEGP_StreamType_OneD;
}

void put(AEGP_StreamVal2* v, AEGP_StreamType* type, const Vec3& p, AEGP_StreamType kind) {
    v->three_d = AEGP_ThreeDVal{p.x, p.y, p.z};
    *type = kind;
}

// The stored value of a layer stream, before any expression.
void layer_value(const Layer& l, int which, double t, AEGP_StreamVal2* v, AEGP_StreamType* type) {
    const LayerTransform& x = l.transform;
    switch (which) {
        case AEGP_LayerStream_ANCHORPOINT: return put(v, type, x.anchor.at(t), AEGP_StreamType_ThreeD_SPATIAL);
        case AEGP_LayerStream_POSITION: return put(v, type, x.position.at(t), AEGP_StreamType_ThreeD_SPATIAL);
        case AEGP_LayerStream_SCALE: return put(v, type, x.scale.at(t), AEGP_StreamType_ThreeD);
        case AEGP_LayerStream_ORIENTATION: return put(v, type, x.orientation.at(t), AEGP_StreamType_ThreeD);
        case AEGP_LayerStream_ROTATE_Z: return put(v, type, x.rotation_z.at(t));
        case AEGP_LayerStream_ROTATE_X: return put(v, type, x.rotation_x.at(t));
        case AEGP_LayerStream_ROTATE_Y: return put(v, type, x.rotation_y.at(t));
        case AEGP_LayerStream_OPACITY: return put(v, type, 100.0);
        case AEGP_LayerStream_ZOOM: return put(v, type, l.camera.zoom.at(t));
        case AEGP_LayerStream_DEPTH_OF_FIELD: return put(v, type, l.camera.depth_of_field.at(t));
        case AEGP_LayerStream_FOCUS_DISTANCE: return put(v, type, l.camera.focus_distance.at(t));
        case AEGP_LayerStream_APERTURE: return put(v, type, l.camera.aperture.at(t));
        case AEGP_LayerStream_BLUR_LEVEL: return put(v, type, l.camera.blur_level.at(t));
        case AEGP_LayerStream_INTENSITY: return put(v, type, l.light.intensity.at(t));
        case AEGP_LayerStream_CONE_ANGLE: return put(v, type, l.light.cone_angle.at(t));
        case AEGP_LayerStream_CONE_FEATHER: return put(v, type, l.light.cone_feather.at(t));
        case AEGP_LayerStream_SHADOW_DARKNESS: return put(v, type, l.light.shadow_darkness.at(t));
        case AEGP_LayerStream_SHADOW_DIFFUSION: return put(v, type, l.light.shadow_diffusion.at(t));
        case AEGP_LayerStream_CASTS_SHADOWS:
            return put(v, type, l.kind == LayerKind::Light ? l.light.casts_shadows.at(t) : 0.0);
        case AEGP_LayerStream_COLOR: {
            Color c = l.light.color.at(t);
            v->color = AEGP_ColorVal{c.alpha, c.red, c.green, c.blue};
            *type = AEGP_StreamType_COLOR;
            return;
        }
        default: *type = AEGP_StreamType_NO_DATA; return;
    }
}

void report_unsupported(AegpSuites* s, const std::string& text) {
    bool first;
    {
        std::lock_guard<std::mutex> lock(s->records().mutex);
        first = s->records().reported.insert("expression:" + text).second;
    }
    if (first) s->host().message("expression not supported by this host, the value before it is used: " + text);
}

// Applies an expression to a one-dimensional value when the caller wants the evaluated value.
void apply_expression(AegpSuites* s, const std::string* text, double comp_seconds,
                      AEGP_StreamVal2* v, AEGP_StreamType type) {
    if (text == nullptr) return;
    ExpressionResult r = evaluate_expression(*text, *s->composition(), comp_seconds,
                                             type == AEGP_StreamType_OneD ? v->one_d : 0.0);
    if (r.status == ExpressionResult::Status::Unsupported || type != AEGP_StreamType_OneD) {
        report_unsupported(s, *text);
        return;
    }
    v->one_d = r.value;
}

A_Err effect_value(AegpSuites* s, PF_ParamIndex index, double t, AEGP_StreamVal2* v,
                   AEGP_StreamType* type) {
    try {
        Host& host = s->host();
        PF_ParamType param_type = host.param_def(index).param_type;
        if (param_type == PF_Param_GROUP_START || param_type == PF_Param_GROUP_END) {
            *type = AEGP_StreamType_NO_DATA;
            return A_Err_NONE;
        }
        if (index == 0) {
            v->layer_id = host.effect_layer_id();
            *type = AEGP_StreamType_LAYER_ID;
            return A_Err_NONE;
        }
        ParamValue p = host.param_value(index, t);
        switch (param_type) {
            case PF_Param_LAYER:
                v->layer_id = static_cast<AEGP_LayerIDVal>(p.v[0]);
                *type = AEGP_StreamType_LAYER_ID;
                break;
            case PF_Param_COLOR:
                v->color = AEGP_ColorVal{p.v[0] / 255.0, p.v[1] / 255.0, p.v[2] / 255.0, p.v[3] / 255.0};
                *type = AEGP_StreamType_COLOR;
                break;
            case PF_Param_POINT:
                v->two_d = AEGP_TwoDVal{p.v[0], p.v[1]};
                *type = AEGP_StreamType_TwoD_SPATIAL;
                break;
            case PF_Param_POINT_3D:
                v->three_d = AEGP_ThreeDVal{p.v[0], p.v[1], p.v[2]};
                *type = AEGP_StreamType_ThreeD_SPATIAL;
                break;
            default:
                v->one_d = p.v[0];
                *type = AEGP_StreamType_OneD;
                break;
        }
        return A_Err_NONE;
    } catch (const std::exception&) {
        return A_Err_PARAMETER;
    }
}

// Value of a stream at a time in the given mode; with `pre_expression` false the stream's
// expression is applied.
A_Err stream_value(AegpSuites* s, const StreamRecord& stream, AEGP_LTimeMode mode, const A_Time* time,
                   bool pre_expression, AEGP_StreamVal2* v, AEGP_StreamType* type) {
    double seconds;
    Composition* comp = s->composition();
    if (v == nullptr || comp == nullptr || !to_seconds(time, &seconds)) return A_Err_PARAMETER;
    const Layer* layer = comp->find_by_id(stream.layer_id);
    if (layer == nullptr) return A_Err_PARAMETER;
    double comp_seconds = mode == AEGP_LTimeMode_LayerTime ? layer->comp_time(seconds) : seconds;
    std::memset(v, 0, sizeof *v);
    if (stream.effect) {
        if (A_Err err = effect_value(s, stream.which, comp_seconds, v, type)) return err;
        if (!pre_expression) apply_expression(s, s->effect_expression(stream.which), comp_seconds, v, *type);
    } else {
        layer_value(*layer, stream.which, comp_seconds, v, type);
        if (!pre_expression) {
            apply_expression(s, comp->layer_expression(layer->id, stream.which), comp_seconds, v, *type);
        }
    }
    return A_Err_NONE;
}

// ---- Stream suite ------------------------------------------------------------------------

A_Err IsStreamLegal(AEGP_LayerH layerH, AEGP_LayerStream which, A_Boolean* is_legal) {
    AEGP_ENTER("AEGP_IsStreamLegal");
    NEED_LAYER(layerH);
    if (is_legal == nullptr) return A_Err_PARAMETER;
    *is_legal = legal(*layer, which) ? 1 : 0;
    return A_Err_NONE;
}

A_Err GetNewLayerStream(AEGP_PluginID, AEGP_LayerH layerH, AEGP_LayerStream which, AEGP_StreamRefH* streamPH) {
    AEGP_ENTER("AEGP_GetNewLayerStream");
    NEED_LAYER(layerH);
    if (streamPH == nullptr || !legal(*layer, which)) return A_Err_PARAMETER;
    *streamPH = new_stream(s_, false, layer->id, which);
    return A_Err_NONE;
}

// The effect a reference stands for, or null.
EffectRecord* effect_of(AegpSuites* s, AEGP_EffectRefH effectH) {
    return find_record(s, &AegpSuites::Records::effects, effectH);
}

A_Err GetEffectNumParamStreams(AEGP_EffectRefH effectH, A_long* num) {
    AEGP_ENTER("AEGP_GetEffectNumParamStreams");
    if (effect_of(s_, effectH) == nullptr || num == nullptr) return A_Err_PARAMETER;
    *num = s_->host().num_params();
    return A_Err_NONE;
}

A_Err GetNewEffectStreamByIndex(AEGP_PluginID, AEGP_EffectRefH effectH, PF_ParamIndex index,
                                AEGP_StreamRefH* streamPH) {
    AEGP_ENTER("AEGP_GetNewEffectStreamByIndex");
    EffectRecord* effect = effect_of(s_, effectH);
    if (effect == nullptr || streamPH == nullptr || index < 0 || index >= s_->host().num_params()) {
        return A_Err_PARAMETER;
    }
    *streamPH = new_stream(s_, true, effect->layer_id, index);
    return A_Err_NONE;
}

A_Err DisposeStream(AEGP_StreamRefH streamH) {
    AEGP_ENTER("AEGP_DisposeStream");
    return drop_record(s_, &AegpSuites::Records::streams, streamH, Resource::AegpStream);
}

A_Err GetStreamType(AEGP_StreamRefH streamH, AEGP_StreamType* type) {
    AEGP_ENTER("AEGP_GetStreamType");
    NEED_STREAM(streamH);
    if (type == nullptr) return A_Err_PARAMETER;
    AEGP_StreamVal2 v;
    A_Time zero{0, 1};
    return stream_value(s_, *stream, AEGP_LTimeMode_CompTime, &zero, true, &v, type);
}

A_Err GetNewStreamValue(AEGP_PluginID, AEGP_StreamRefH streamH, AEGP_LTimeMode mode, const A_Time* time,
                        A_Boolean pre_expression, AEGP_StreamValue2* value) {
    AEGP_ENTER("AEGP_GetNewStreamValue");
    NEED_STREAM(streamH);
    if (value == nullptr) return A_Err_PARAMETER;
    AEGP_StreamType type;
    if (A_Err err = stream_value(s_, *stream, mode, time, pre_expression != 0, &value->val, &type)) return err;
    value->streamH = streamH;
    s_->host().counters().acquire(Resource::AegpStreamValue, key_of(streamH));
    return A_Err_NONE;
}

A_Err DisposeStreamValue(AEGP_StreamValue2* value) {
    AEGP_ENTER("AEGP_DisposeStreamValue");
    if (value == nullptr) return A_Err_PARAMETER;
    if (!s_->host().counters().release(Resource::AegpStreamValue, key_of(value->streamH))) {
        return A_Err_PARAMETER;
    }
    return A_Err_NONE;
}

A_Err GetLayerStreamValue(AEGP_LayerH layerH, AEGP_LayerStream which, AEGP_LTimeMode mode, const A_Time* time,
                          A_Boolean pre_expression, AEGP_StreamVal2* value, AEGP_StreamType* type0) {
    AEGP_ENTER("AEGP_GetLayerStreamValue");
    NEED_LAYER(layerH);
    if (!legal(*layer, which)) return A_Err_PARAMETER;
    StreamRecord stream;
    stream.layer_id = layer->id;
    stream.which = which;
    AEGP_StreamType type;
    A_Err err = stream_value(s_, stream, mode, time, pre_expression != 0, value, &type);
    if (err == A_Err_NONE && type0 != nullptr) *type0 = type;
    return err;
}

const std::string* expression_of(AegpSuites* s, const StreamRecord& stream) {
    if (stream.effect) return s->effect_expression(stream.which);
    return s->composition()->layer_expression(stream.layer_id, stream.which);
}

A_Err GetExpressionState(AEGP_PluginID, AEGP_StreamRefH streamH, A_Boolean* enabled) {
    AEGP_ENTER("AEGP_GetExpressionState");
    NEED_STREAM(streamH);
    if (enabled == nullptr) return A_Err_PARAMETER;
    *enabled = expression_of(s_, *stream) != nullptr ? 1 : 0;
    return A_Err_NONE;
}

A_Err GetExpression(AEGP_PluginID, AEGP_StreamRefH streamH, AEGP_MemHandle* expressionH) {
    AEGP_ENTER("AEGP_GetExpression");
    NEED_STREAM(streamH);
    if (expressionH == nullptr) return A_Err_PARAMETER;
    const std::string* text = expression_of(s_, *stream);
    std::string copy = text == nullptr ? std::string() : *text;
    *expressionH = new_mem_handle(copy.c_str(), copy.size() + 1);
    return A_Err_NONE;
}

A_Err SetExpression(AEGP_PluginID, AEGP_StreamRefH streamH, const A_char* expression) {
    AEGP_ENTER("AEGP_SetExpression");
    NEED_STREAM(streamH);
    if (expression == nullptr) return A_Err_PARAMETER;
    std::string text = expression;  // the host keeps its own copy
    if (stream->effect) {
        s_->set_effect_expression(stream->which, text);
    } else {
        s_->composition()->set_layer_expression(stream->layer_id, stream->which, text);
    }
    if (!text.empty() && !parse_layer_link_expression(text)) report_unsupported(s_, text);
    return A_Err_NONE;
}

A_Err DuplicateStreamRef(AEGP_PluginID, AEGP_StreamRefH streamH, AEGP_StreamRefH* dupPH) {
    AEGP_ENTER("AEGP_DuplicateStreamRef");
    NEED_STREAM(streamH);
    if (dupPH == nullptr) return A_Err_PARAMETER;
    *dupPH = new_stream(s_, stream->effect, stream->layer_id, stream->which);
    return A_Err_NONE;
}

AEGP_StreamSuite4 make_stream_suite() {
    AEGP_StreamSuite4 t{};
    t.AEGP_IsStreamLegal = IsStreamLegal;
    AEGP_UNIMPLEMENTED(t, AEGP_CanVaryOverTime);
    AEGP_UNIMPLEMENTED(t, AEGP_GetValidInterpolations);
    t.AEGP_GetNewLayerStream = GetNewLayerStream;
    t.AEGP_GetEffectNumParamStreams = GetEffectNumParamStreams;
    t.AEGP_GetNewEffectStreamByIndex = GetNewEffectStreamByIndex;
    AEGP_UNIMPLEMENTED(t, AEGP_GetNewMaskStream);
    t.AEGP_DisposeStream = DisposeStream;
    AEGP_UNIMPLEMENTED(t, AEGP_GetStreamName);
    AEGP_UNIMPLEMENTED(t, AEGP_GetStreamUnitsText);
    AEGP_UNIMPLEMENTED(t, AEGP_GetStreamProperties);
    AEGP_UNIMPLEMENTED(t, AEGP_IsStreamTimevarying);
    t.AEGP_GetStreamType = GetStreamType;
    t.AEGP_GetNewStreamValue = GetNewStreamValue;
    t.AEGP_DisposeStreamValue = DisposeStreamValue;
    AEGP_UNIMPLEMENTED(t, AEGP_SetStreamValue);
    t.AEGP_GetLayerStreamValue = GetLayerStreamValue;
    t.AEGP_GetExpressionState = GetExpressionState;
    AEGP_UNIMPLEMENTED(t, AEGP_SetExpressionState);
    t.AEGP_GetExpression = GetExpression;
    t.AEGP_SetExpression = SetExpression;
    t.AEGP_DuplicateStreamRef = DuplicateStreamRef;
    return t;
}

// ---- Dynamic stream suite ----------------------------------------------------------------

std::pair<int, int> flag_key(const StreamRecord& stream) {
    return {stream.effect ? 0 : stream.layer_id, stream.which};
}

A_Err GetDynamicStreamFlags(AEGP_StreamRefH streamH, AEGP_DynStreamFlags* flags) {
    AEGP_ENTER("AEGP_GetDynamicStreamFlags");
    NEED_STREAM(streamH);
    if (flags == nullptr) return A_Err_PARAMETER;
    std::lock_guard<std::mutex> lock(s_->records().mutex);
    auto it = s_->records().dyn_flags.find(flag_key(*stream));
    *flags = it == s_->records().dyn_flags.end() ? 0 : it->second;
    return A_Err_NONE;
}

A_Err SetDynamicStreamFlag(AEGP_StreamRefH streamH, AEGP_DynStreamFlags flag, A_Boolean, A_Boolean set) {
    AEGP_ENTER("AEGP_SetDynamicStreamFlag");
    NEED_STREAM(streamH);
    // One flag per call; DISABLED is read-only.
    bool single = flag != 0 && (flag & (flag - 1)) == 0;
    if (!single || flag == AEGP_DynStreamFlag_DISABLED) return A_Err_PARAMETER;
    std::lock_guard<std::mutex> lock(s_->records().mutex);
    AEGP_DynStreamFlags& flags = s_->records().dyn_flags[flag_key(*stream)];
    flags = set ? (flags | flag) : (flags & ~flag);
    return A_Err_NONE;
}

AEGP_DynamicStreamSuite4 make_dynamic_stream_suite() {
    AEGP_DynamicStreamSuite4 t{};
    AEGP_UNIMPLEMENTED(t, AEGP_GetNewStreamRefForLayer);
    AEGP_UNIMPLEMENTED(t, AEGP_GetNewStreamRefForMask);
    AEGP_UNIMPLEMENTED(t, AEGP_GetStreamDepth);
    AEGP_UNIMPLEMENTED(t, AEGP_GetStreamGroupingType);
    AEGP_UNIMPLEMENTED(t, AEGP_GetNumStreamsInGroup);
    t.AEGP_GetDynamicStreamFlags = GetDynamicStreamFlags;
    t.AEGP_SetDynamicStreamFlag = SetDynamicStreamFlag;
    AEGP_UNIMPLEMENTED(t, AEGP_GetNewStreamRefByIndex);
    AEGP_UNIMPLEMENTED(t, AEGP_GetNewStreamRefByMatchname);
    AEGP_UNIMPLEMENTED(t, AEGP_DeleteStream);
    AEGP_UNIMPLEMENTED(t, AEGP_ReorderStream);
    AEGP_UNIMPLEMENTED(t, AEGP_DuplicateStream);
    AEGP_UNIMPLEMENTED(t, AEGP_SetStreamName);
    AEGP_UNIMPLEMENTED(t, AEGP_CanAddStream);
    AEGP_UNIMPLEMENTED(t, AEGP_AddStream);
    AEGP_UNIMPLEMENTED(t, AEGP_GetMatchName);
    AEGP_UNIMPLEMENTED(t, AEGP_GetNewParentStreamRef);
    AEGP_UNIMPLEMENTED(t, AEGP_GetStreamIsModified);
    AEGP_UNIMPLEMENTED(t, AEGP_GetStreamIndexInParent);
    AEGP_UNIMPLEMENTED(t, AEGP_IsSeparationLeader);
    AEGP_UNIMPLEMENTED(t, AEGP_AreDimensionsSeparated);
    AEGP_UNIMPLEMENTED(t, AEGP_SetDimensionsSeparated);
    AEGP_UNIMPLEMENTED(t, AEGP_GetSeparationFollower);
    AEGP_UNIMPLEMENTED(t, AEGP_IsSeparationFollower);
    AEGP_UNIMPLEMENTED(t, AEGP_GetSeparationLeader);
    AEGP_UNIMPLEMENTED(t, AEGP_GetSeparationDimension);
    return t;
}

const AEGP_StreamSuite4 kStreamSuite = make_stream_suite();
const AEGP_DynamicStreamSuite4 kDynamicStreamSuite = make_dynamic_stream_suite();

}  // namespace

void register_stream_suites(SuiteRegistry& registry) {
    registry.add(kAEGPStreamSuite, kAEGPStreamSuiteVersion4, &kStreamSuite);
    registry.add(kAEGPDynamicStreamSuite, kAEGPDynamicStreamSuiteVersion4, &kDynamicStreamSuite);
}

}  // namespace aegp
}  // namespace host
