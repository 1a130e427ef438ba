#pragma once

// Lazy access to the host's suites, in the shape effect code expects from the SDK's utility
// class: one const accessor per suite, acquiring on first use and caching the pointer. The
// cache is written without a lock: threads racing on a first use each acquire the suite, the
// first to store its pointer keeps it, and the others give their own acquisition back.
// A suite that cannot be acquired raises MissingSuiteError(), which throws a PF_Err.

#include <atomic>

#include "AEConfig.h"
#include "AE_Effect.h"
#include "AE_EffectCBSuites.h"
#include "AE_EffectSuites.h"
#include "AE_GeneralPlug.h"
#include "SPBasic.h"

class AEGP_SuiteHandler {
public:
    explicit AEGP_SuiteHandler(const SPBasicSuite* pica_basicP);
    ~AEGP_SuiteHandler();

    const SPBasicSuite* Pica() const { return i_pica_basicP; }

    PF_Sampling8Suite1* Sampling8Suite1() const;
    PF_Sampling16Suite1* Sampling16Suite1() const;
    PF_SamplingFloatSuite1* SamplingFloatSuite1() const;
    PF_ParamUtilsSuite3* ParamUtilsSuite3() const;
    AEGP_UtilitySuite5* UtilitySuite5() const;
    AEGP_PFInterfaceSuite1* PFInterfaceSuite1() const;
    AEGP_LayerSuite6* LayerSuite6() const;
    AEGP_StreamSuite4* StreamSuite4() const;
    AEGP_DynamicStreamSuite4* DynamicStreamSuite4() const;
    AEGP_CompSuite5* CompSuite5() const;
    AEGP_ItemSuite8* ItemSuite8() const;
    AEGP_CameraSuite2* CameraSuite2() const;
    AEGP_LightSuite2* LightSuite2() const;
    AEGP_EffectSuite3* EffectSuite3() const;
    AEGP_MemorySuite1* MemorySuite1() const;

private:
    AEGP_SuiteHandler(const AEGP_SuiteHandler&);             // not copyable
    AEGP_SuiteHandler& operator=(const AEGP_SuiteHandler&);  // not assignable

    struct Suites {
        std::atomic<PF_Sampling8Suite1*> sampling8;
        std::atomic<PF_Sampling16Suite1*> sampling16;
        std::atomic<PF_SamplingFloatSuite1*> sampling_float;
        std::atomic<PF_ParamUtilsSuite3*> param_utils;
        std::atomic<AEGP_UtilitySuite5*> utility;
        std::atomic<AEGP_PFInterfaceSuite1*> pf_interface;
        std::atomic<AEGP_LayerSuite6*> layer;
        std::atomic<AEGP_StreamSuite4*> stream;
        std::atomic<AEGP_DynamicStreamSuite4*> dynamic_stream;
        std::atomic<AEGP_CompSuite5*> comp;
        std::atomic<AEGP_ItemSuite8*> item;
        std::atomic<AEGP_CameraSuite2*> camera;
        std::atomic<AEGP_LightSuite2*> light;
        std::atomic<AEGP_EffectSuite3*> effect;
        std::atomic<AEGP_MemorySuite1*> memory;
    };

    // The suite's function table, acquired now; MissingSuiteError() when it cannot be had.
    void* LoadSuite(const char* name, int32 version) const;
    void ReleaseSuite(const char* name, int32 version);
    void ReleaseAllSuites();
    [[noreturn]] void MissingSuiteError() const;

    template <class SuiteT>
    SuiteT* cached(std::atomic<SuiteT*>& slot, const char* name, int32 version) const
    {
        SuiteT* suite = slot.load(std::memory_order_acquire);
        if (!suite) {
            SuiteT* loaded = static_cast<SuiteT*>(LoadSuite(name, version));
            if (slot.compare_exchange_strong(suite, loaded, std::memory_order_acq_rel)) {
                return loaded;
            }
            // Another thread cached the same suite first: one release per acquisition.
            i_pica_basicP->ReleaseSuite(name, version);
        }
        return suite;
    }

    const SPBasicSuite* i_pica_basicP;
    mutable Suites i_suites;
};
