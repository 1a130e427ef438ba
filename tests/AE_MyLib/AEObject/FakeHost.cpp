#include "AE_MyLib/AEObject/FakeHost.h"

#include <cstdarg>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <stdexcept>

namespace fake {

namespace {

FakeHost* g_current = nullptr;

FakeHost& host() { return FakeHost::current(); }

std::string key(const char* name, int32 version) { return std::string(name) + " " + std::to_string(version); }

SPErr acquireSuite(const char* name, int32 version, const void** suite)
{
    auto err = host().acquire_errors.find(name);
    if (err != host().acquire_errors.end()) {
        host().suite_log.push_back("refuse " + key(name, version));
        return err->second;
    }
    *suite = host().suite(key(name, version));
    if (!*suite) {
        host().suite_log.push_back("refuse " + key(name, version));
        return kSuiteNotFound;
    }
    host().suite_log.push_back("acquire " + key(name, version));
    return kSPNoError;
}

SPErr releaseSuite(const char* name, int32 version)
{
    host().suite_log.push_back("release " + key(name, version));
    return kSPNoError;
}

PF_Handle newHandle(A_u_longlong size) { return host().newHandle(size); }

void* lockHandle(PF_Handle h)
{
    ++host().handles.at(h).locks;
    return *h;
}

void unlockHandle(PF_Handle h) { --host().handles.at(h).locks; }

void disposeHandle(PF_Handle h)
{
    host().handles.erase(h);
    std::free(*h);
    delete h;
}

int ansiSprintf(A_char* buffer, const A_char* format, ...)
{
    va_list args;
    va_start(args, format);
    const int n = std::vsnprintf(buffer, PF_MAX_EFFECT_MSG_LEN + 1, format, args);
    va_end(args);
    return n;
}

A_char* ansiStrcpy(A_char* dst, const A_char* src) { return std::strcpy(dst, src); }

PF_Err addParam(PF_ProgPtr, PF_ParamIndex index, PF_ParamDefPtr def)
{
    FakeHost& h = host();
    if (index != -1) {
        return PF_Err_INVALID_CALLBACK;
    }
    if (int(h.added_params.size()) == h.fail_add_param_at) {
        return h.add_param_error;
    }
    PF_ParamDef copy = *def;
    h.added_params.push_back(copy);
    return PF_Err_NONE;
}

PF_Err checkoutParam(PF_ProgPtr, PF_ParamIndex index, A_long, A_long, A_u_long, PF_ParamDef* param)
{
    host().checkout_log.push_back("out " + std::to_string(index));
    param->uu.id = index;  // lets a test see which parameter it holds
    return host().checkout_error;
}

PF_Err checkinParam(PF_ProgPtr, PF_ParamDef* param)
{
    host().checkout_log.push_back("in " + std::to_string(param->uu.id));
    return PF_Err_NONE;
}

A_Err registerWithAEGP(AEGP_GlobalRefcon, const A_char* name, AEGP_PluginID* id)
{
    host().registered_name = name;
    *id = host().plugin_id;
    return host().register_error;
}

A_Err getLayerFlags(AEGP_LayerH, AEGP_LayerFlags* flags)
{
    ++host().layer_calls;
    *flags = host().layer_flags;
    return host().layer_flags_error;
}

A_Err getLayerObjectType(AEGP_LayerH, AEGP_ObjectType* type)
{
    ++host().layer_calls;
    *type = host().object_type;
    return A_Err_NONE;
}

AEGP_MemHandle newName(const std::u16string& text)
{
    ++host().mem_handles_live;
    auto* data = static_cast<A_UTF16Char*>(std::calloc(text.size() + 1, sizeof(A_UTF16Char)));
    for (std::size_t i = 0; i < text.size(); ++i) {
        data[i] = A_UTF16Char(text[i]);
    }
    return reinterpret_cast<AEGP_MemHandle>(new void*(data));
}

A_Err getLayerName(AEGP_PluginID, AEGP_LayerH, AEGP_MemHandle* layer_name, AEGP_MemHandle* source_name)
{
    ++host().layer_calls;
    if (layer_name) {
        *layer_name = newName(host().layer_name);
    }
    if (source_name) {
        *source_name = newName(host().source_name);
    }
    return A_Err_NONE;
}

A_Err setLayerName(AEGP_LayerH, const A_UTF16Char* name)
{
    ++host().layer_calls;
    host().name_set.clear();
    for (std::size_t i = 0; name[i] != 0; ++i) {
        host().name_set.push_back(char16_t(name[i]));
    }
    return A_Err_NONE;
}

A_Err lockMem(AEGP_MemHandle h, void** ptr)
{
    *ptr = *reinterpret_cast<void**>(h);
    return A_Err_NONE;
}

A_Err unlockMem(AEGP_MemHandle) { return A_Err_NONE; }

A_Err freeMem(AEGP_MemHandle h)
{
    --host().mem_handles_live;
    void** master = reinterpret_cast<void**>(h);
    std::free(*master);
    delete master;
    return A_Err_NONE;
}

// Effect and stream handles are the host object's address plus a count: distinct, never null,
// and never dereferenced.
A_Err newEffectForEffect(AEGP_PluginID, PF_ProgPtr, AEGP_EffectRefH* effect)
{
    FakeHost& h = host();
    h.suite_log.push_back("call AEGP_GetNewEffectForEffect");
    if (h.new_effect_error != A_Err_NONE) {
        return h.new_effect_error;
    }
    ++h.effects_live;
    *effect = reinterpret_cast<AEGP_EffectRefH>(reinterpret_cast<char*>(&h) + 1);
    return A_Err_NONE;
}

A_Err disposeEffect(AEGP_EffectRefH)
{
    host().suite_log.push_back("call AEGP_DisposeEffect");
    --host().effects_live;
    return A_Err_NONE;
}

A_Err newEffectStreamByIndex(AEGP_PluginID, AEGP_EffectRefH effect, PF_ParamIndex index, AEGP_StreamRefH* stream)
{
    FakeHost& h = host();
    h.suite_log.push_back("call AEGP_GetNewEffectStreamByIndex");
    if (!effect) {
        return A_Err_PARAMETER;
    }
    if (h.new_stream_error != A_Err_NONE) {
        return h.new_stream_error;
    }
    ++h.streams_live;
    h.stream_index = index;
    *stream = reinterpret_cast<AEGP_StreamRefH>(reinterpret_cast<char*>(&h) + 2);
    return A_Err_NONE;
}

A_Err disposeStream(AEGP_StreamRefH)
{
    host().suite_log.push_back("call AEGP_DisposeStream");
    --host().streams_live;
    return A_Err_NONE;
}

A_Err setExpression(AEGP_PluginID, AEGP_StreamRefH stream, const A_char* text)
{
    host().suite_log.push_back("call AEGP_SetExpression");
    if (!stream) {
        return A_Err_PARAMETER;
    }
    host().expression_set = text;
    return A_Err_NONE;
}

// Every stream is a layer parameter without a layer chosen.
A_Err newStreamValue(AEGP_PluginID, AEGP_StreamRefH stream, AEGP_LTimeMode, const A_Time*, A_Boolean,
                     AEGP_StreamValue2* value)
{
    host().suite_log.push_back("call AEGP_GetNewStreamValue");
    if (!stream) {
        return A_Err_PARAMETER;
    }
    ++host().stream_values_live;
    value->streamH = stream;
    value->val.layer_id = AEGP_LayerIDVal_NONE;
    return A_Err_NONE;
}

A_Err disposeStreamValue(AEGP_StreamValue2*)
{
    host().suite_log.push_back("call AEGP_DisposeStreamValue");
    --host().stream_values_live;
    return A_Err_NONE;
}

}  // namespace

FakeHost::FakeHost()
{
    if (g_current) {
        throw std::logic_error("one FakeHost at a time");
    }
    g_current = this;

    basic.AcquireSuite = &acquireSuite;
    basic.ReleaseSuite = &releaseSuite;
    utils.host_new_handle = &fake::newHandle;
    utils.host_lock_handle = &lockHandle;
    utils.host_unlock_handle = &unlockHandle;
    utils.host_dispose_handle = &disposeHandle;
    utils.ansi.sprintf = &ansiSprintf;
    utils.ansi.strcpy = &ansiStrcpy;
    in_data.inter.add_param = &addParam;
    in_data.inter.checkout_param = &checkoutParam;
    in_data.inter.checkin_param = &checkinParam;
    in_data.utils = &utils;
    in_data.pica_basicP = &basic;
    in_data.effect_ref = reinterpret_cast<PF_ProgPtr>(this);
    in_data.version.major = 13;
    in_data.version.minor = 29;
    in_data.num_params = 1;
    in_data.time_scale = 30;
    in_data.time_step = 1;

    utility.AEGP_RegisterWithAEGP = &registerWithAEGP;
    layer.AEGP_GetLayerFlags = &getLayerFlags;
    layer.AEGP_GetLayerObjectType = &getLayerObjectType;
    layer.AEGP_GetLayerName = &getLayerName;
    layer.AEGP_SetLayerName = &setLayerName;
    memory.AEGP_LockMemHandle = &lockMem;
    memory.AEGP_UnlockMemHandle = &unlockMem;
    memory.AEGP_FreeMemHandle = &freeMem;
    pf_interface.AEGP_GetNewEffectForEffect = &newEffectForEffect;
    effect.AEGP_DisposeEffect = &disposeEffect;
    stream.AEGP_GetNewEffectStreamByIndex = &newEffectStreamByIndex;
    stream.AEGP_DisposeStream = &disposeStream;
    stream.AEGP_SetExpression = &setExpression;
    stream.AEGP_GetNewStreamValue = &newStreamValue;
    stream.AEGP_DisposeStreamValue = &disposeStreamValue;

    suites_[key(kPFSampling8Suite, kPFSampling8SuiteVersion1)] = &sampling8;
    suites_[key(kPFSampling16Suite, kPFSampling16SuiteVersion1)] = &sampling16;
    suites_[key(kPFSamplingFloatSuite, kPFSamplingFloatSuiteVersion1)] = &sampling_float;
    suites_[key(kPFWorldSuite, kPFWorldSuiteVersion2)] = &world;
    suites_[key(kAEGPUtilitySuite, kAEGPUtilitySuiteVersion5)] = &utility;
    suites_[key(kAEGPLayerSuite, kAEGPLayerSuiteVersion6)] = &layer;
    suites_[key(kAEGPMemorySuite, kAEGPMemorySuiteVersion1)] = &memory;
    suites_[key(kAEGPStreamSuite, kAEGPStreamSuiteVersion4)] = &stream;
    suites_[key(kAEGPCameraSuite, kAEGPCameraSuiteVersion2)] = &camera;
    suites_[key(kAEGPLightSuite, kAEGPLightSuiteVersion2)] = &light;
    suites_[key(kAEGPItemSuite, kAEGPItemSuiteVersion8)] = &item;
    suites_[key(kAEGPCompSuite, kAEGPCompSuiteVersion5)] = &comp;
    suites_[key(kAEGPPFInterfaceSuite, kAEGPPFInterfaceSuiteVersion1)] = &pf_interface;
    suites_[key(kAEGPEffectSuite, kAEGPEffectSuiteVersion3)] = &effect;
    suites_[key(kAEGPDynamicStreamSuite, kAEGPDynamicStreamSuiteVersion4)] = &dynamic_stream;
    suites_[key(kPFParamUtilsSuite, kPFParamUtilsSuiteVersion3)] = &param_utils;
}

FakeHost::~FakeHost()
{
    while (!handles.empty()) {
        disposeHandle(handles.begin()->first);
    }
    g_current = nullptr;
}

FakeHost& FakeHost::current()
{
    if (!g_current) {
        throw std::logic_error("no FakeHost");
    }
    return *g_current;
}

PF_Handle FakeHost::newHandle(A_u_longlong size)
{
    if (fail_new_handle) {
        return nullptr;
    }
    PF_Handle h = reinterpret_cast<PF_Handle>(new void*(std::malloc(size ? size : 1)));
    handles[h] = HandleInfo{size, 0};
    ++handles_made;
    return h;
}

int FakeHost::live_suites() const
{
    int live = 0;
    for (const std::string& entry : suite_log) {
        if (entry.rfind("acquire ", 0) == 0) {
            ++live;
        } else if (entry.rfind("release ", 0) == 0) {
            --live;
        }
    }
    return live;
}

const void* FakeHost::suite(const std::string& name_and_version) const
{
    auto found = suites_.find(name_and_version);
    return found == suites_.end() ? nullptr : found->second;
}

}  // namespace fake
