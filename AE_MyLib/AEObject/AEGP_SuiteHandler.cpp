#include "AE_MyLib/AEObject/AEGP_SuiteHandler.h"

AEGP_SuiteHandler::AEGP_SuiteHandler(const SPBasicSuite* pica_basicP) : i_pica_basicP(pica_basicP), i_suites()
{
}

AEGP_SuiteHandler::~AEGP_SuiteHandler() { ReleaseAllSuites(); }

void* AEGP_SuiteHandler::LoadSuite(const char* name, int32 version) const
{
    const void* suite = nullptr;
    if (!i_pica_basicP || i_pica_basicP->AcquireSuite(name, version, &suite) != kSPNoError || !suite) {
        MissingSuiteError();
    }
    return const_cast<void*>(suite);
}

void AEGP_SuiteHandler::ReleaseSuite(const char* name, int32 version)
{
    i_pica_basicP->ReleaseSuite(name, version);
}

void AEGP_SuiteHandler::MissingSuiteError() const
{
    throw PF_Err(PF_Err_BAD_CALLBACK_PARAM);
}

// One release per suite acquired, by the name and version it was acquired with.
void AEGP_SuiteHandler::ReleaseAllSuites()
{
#define RELEASE(SLOT, NAME, VERSION) \
    if (i_suites.SLOT) {             \
        ReleaseSuite(NAME, VERSION); \
        i_suites.SLOT = nullptr;     \
    }
    RELEASE(sampling8, kPFSampling8Suite, kPFSampling8SuiteVersion1)
    RELEASE(sampling16, kPFSampling16Suite, kPFSampling16SuiteVersion1)
    RELEASE(sampling_float, kPFSamplingFloatSuite, kPFSamplingFloatSuiteVersion1)
    RELEASE(param_utils, kPFParamUtilsSuite, kPFParamUtilsSuiteVersion3)
    RELEASE(utility, kAEGPUtilitySuite, kAEGPUtilitySuiteVersion5)
    RELEASE(pf_interface, kAEGPPFInterfaceSuite, kAEGPPFInterfaceSuiteVersion1)
    RELEASE(layer, kAEGPLayerSuite, kAEGPLayerSuiteVersion6)
    RELEASE(stream, kAEGPStreamSuite, kAEGPStreamSuiteVersion4)
    RELEASE(dynamic_stream, kAEGPDynamicStreamSuite, kAEGPDynamicStreamSuiteVersion4)
    RELEASE(comp, kAEGPCompSuite, kAEGPCompSuiteVersion5)
    RELEASE(item, kAEGPItemSuite, kAEGPItemSuiteVersion8)
    RELEASE(camera, kAEGPCameraSuite, kAEGPCameraSuiteVersion2)
    RELEASE(light, kAEGPLightSuite, kAEGPLightSuiteVersion2)
    RELEASE(effect, kAEGPEffectSuite, kAEGPEffectSuiteVersion3)
    RELEASE(memory, kAEGPMemorySuite, kAEGPMemorySuiteVersion1)
#undef RELEASE
}

PF_Sampling8Suite1* AEGP_SuiteHandler::Sampling8Suite1() const
{
    return cached(i_suites.sampling8, kPFSampling8Suite, kPFSampling8SuiteVersion1);
}

PF_Sampling16Suite1* AEGP_SuiteHandler::Sampling16Suite1() const
{
    return cached(i_suites.sampling16, kPFSampling16Suite, kPFSampling16SuiteVersion1);
}

PF_SamplingFloatSuite1* AEGP_SuiteHandler::SamplingFloatSuite1() const
{
    return cached(i_suites.sampling_float, kPFSamplingFloatSuite, kPFSamplingFloatSuiteVersion1);
}

PF_ParamUtilsSuite3* AEGP_SuiteHandler::ParamUtilsSuite3() const
{
    return cached(i_suites.param_utils, kPFParamUtilsSuite, kPFParamUtilsSuiteVersion3);
}

AEGP_UtilitySuite5* AEGP_SuiteHandler::UtilitySuite5() const
{
    return cached(i_suites.utility, kAEGPUtilitySuite, kAEGPUtilitySuiteVersion5);
}

AEGP_PFInterfaceSuite1* AEGP_SuiteHandler::PFInterfaceSuite1() const
{
    return cached(i_suites.pf_interface, kAEGPPFInterfaceSuite, kAEGPPFInterfaceSuiteVersion1);
}

AEGP_LayerSuite6* AEGP_SuiteHandler::LayerSuite6() const
{
    return cached(i_suites.layer, kAEGPLayerSuite, kAEGPLayerSuiteVersion6);
}

AEGP_StreamSuite4* AEGP_SuiteHandler::StreamSuite4() const
{
    return cached(i_suites.stream, kAEGPStreamSuite, kAEGPStreamSuiteVersion4);
}

AEGP_DynamicStreamSuite4* AEGP_SuiteHandler::DynamicStreamSuite4() const
{
    return cached(i_suites.dynamic_stream, kAEGPDynamicStreamSuite, kAEGPDynamicStreamSuiteVersion4);
}

AEGP_CompSuite5* AEGP_SuiteHandler::CompSuite5() const
{
    return cached(i_suites.comp, kAEGPCompSuite, kAEGPCompSuiteVersion5);
}

AEGP_ItemSuite8* AEGP_SuiteHandler::ItemSuite8() const
{
    return cached(i_suites.item, kAEGPItemSuite, kAEGPItemSuiteVersion8);
}

AEGP_CameraSuite2* AEGP_SuiteHandler::CameraSuite2() const
{
    return cached(i_suites.camera, kAEGPCameraSuite, kAEGPCameraSuiteVersion2);
}

AEGP_LightSuite2* AEGP_SuiteHandler::LightSuite2() const
{
    return cached(i_suites.light, kAEGPLightSuite, kAEGPLightSuiteVersion2);
}

AEGP_EffectSuite3* AEGP_SuiteHandler::EffectSuite3() const
{
    return cached(i_suites.effect, kAEGPEffectSuite, kAEGPEffectSuiteVersion3);
}

AEGP_MemorySuite1* AEGP_SuiteHandler::MemorySuite1() const
{
    return cached(i_suites.memory, kAEGPMemorySuite, kAEGPMemorySuiteVersion1);
}
