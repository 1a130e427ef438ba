#pragma once

// Foundation of the host object layer: the sticky error word every wrapper carries, and the
// holder that acquires one host suite lazily and releases it when the holder dies.

#include "AEConfig.h"
#include "AE_Effect.h"
#include "AE_EffectCBSuites.h"
#include "AE_EffectSuites.h"
#include "AE_GeneralPlug.h"
#include "SPBasic.h"

namespace AEO {

// Name and version under which a suite structure is registered with the basic suite. The
// version is the registration number, which is not the number in the structure's name.
template <class SuiteT>
struct SuiteTraits;

#define AEO_DECLARE_SUITE(SUITE_T, NAME, VERSION)                  \
    template <>                                                    \
    struct SuiteTraits<SUITE_T> {                                  \
        static const char* name() { return NAME; }                 \
        static int32 version() { return VERSION; }                 \
    }

AEO_DECLARE_SUITE(PF_Sampling8Suite1, kPFSampling8Suite, kPFSampling8SuiteVersion1);
AEO_DECLARE_SUITE(PF_Sampling16Suite1, kPFSampling16Suite, kPFSampling16SuiteVersion1);
AEO_DECLARE_SUITE(PF_SamplingFloatSuite1, kPFSamplingFloatSuite, kPFSamplingFloatSuiteVersion1);
AEO_DECLARE_SUITE(PF_WorldSuite2, kPFWorldSuite, kPFWorldSuiteVersion2);
AEO_DECLARE_SUITE(AEGP_PFInterfaceSuite1, kAEGPPFInterfaceSuite, kAEGPPFInterfaceSuiteVersion1);
AEO_DECLARE_SUITE(AEGP_MemorySuite1, kAEGPMemorySuite, kAEGPMemorySuiteVersion1);
AEO_DECLARE_SUITE(AEGP_DynamicStreamSuite4, kAEGPDynamicStreamSuite, kAEGPDynamicStreamSuiteVersion4);
AEO_DECLARE_SUITE(AEGP_CameraSuite2, kAEGPCameraSuite, kAEGPCameraSuiteVersion2);
AEO_DECLARE_SUITE(AEGP_LightSuite2, kAEGPLightSuite, kAEGPLightSuiteVersion2);
AEO_DECLARE_SUITE(AEGP_LayerSuite6, kAEGPLayerSuite, kAEGPLayerSuiteVersion6);
AEO_DECLARE_SUITE(AEGP_StreamSuite4, kAEGPStreamSuite, kAEGPStreamSuiteVersion4);
AEO_DECLARE_SUITE(AEGP_CompSuite5, kAEGPCompSuite, kAEGPCompSuiteVersion5);
AEO_DECLARE_SUITE(AEGP_ItemSuite8, kAEGPItemSuite, kAEGPItemSuiteVersion8);
AEO_DECLARE_SUITE(AEGP_EffectSuite3, kAEGPEffectSuite, kAEGPEffectSuiteVersion3);

#undef AEO_DECLARE_SUITE

// Holds one suite of the host. The suite is acquired on first use; a failed acquisition is
// remembered (and not retried) in the holder's own error word. The destructor releases the
// suite by the same name and version when, and only when, it was acquired.
template <class SuiteT>
class Suite {
public:
    explicit Suite(const SPBasicSuite* basic) : _err(A_Err_NONE), _suite(nullptr), _basic(basic) {}
    ~Suite()
    {
        if (_suite) {
            _basic->ReleaseSuite(SuiteTraits<SuiteT>::name(), SuiteTraits<SuiteT>::version());
        }
    }
    Suite(const Suite&) = delete;
    Suite& operator=(const Suite&) = delete;

    // The suite, acquired now if this is the first use; null when it cannot be had.
    const SuiteT* acquire()
    {
        if (_suite || _err != A_Err_NONE) {
            return _suite;
        }
        if (!_basic) {
            _err = A_Err_MISSING_SUITE;
            return nullptr;
        }
        const void* suite = nullptr;
        const SPErr result =
            _basic->AcquireSuite(SuiteTraits<SuiteT>::name(), SuiteTraits<SuiteT>::version(), &suite);
        if (result != kSPNoError) {
            _err = result;
        } else if (!suite) {
            _err = A_Err_MISSING_SUITE;
        } else {
            _suite = static_cast<const SuiteT*>(suite);
        }
        return _suite;
    }

    const SuiteT* get() const { return _suite; }  // without acquiring
    A_Err err() const { return _err; }

private:
    A_Err _err;
    const SuiteT* _suite;
    const SPBasicSuite* _basic;
};

// Base of every wrapper: one error word. The first failure is kept and every later operation on
// the object is skipped, so a caller may run a whole sequence of calls and look at the error
// once. A wrapper must not die with an error standing other than a user cancel: whoever meets
// an error is expected to have read and handled it (see take_err()).
class ObjectBase {
public:
    ObjectBase() : _err(PF_Err_NONE) {}
    virtual ~ObjectBase();
    ObjectBase(const ObjectBase&) = delete;
    ObjectBase& operator=(const ObjectBase&) = delete;

    PF_Err err() const { return _err; }
    bool ok() const { return _err == PF_Err_NONE; }

    // Hands the error to the caller and clears it: the caller now answers for it.
    PF_Err take_err()
    {
        const PF_Err err = _err;
        _err = PF_Err_NONE;
        return err;
    }

protected:
    // Steps 1 and 2 of every operation: null when the object already failed or the suite cannot
    // be acquired (the acquisition error then becomes the object's error).
    template <class SuiteT>
    const SuiteT* usable(Suite<SuiteT>& holder)
    {
        if (_err != PF_Err_NONE) {
            return nullptr;
        }
        const SuiteT* suite = holder.acquire();
        if (!suite) {
            _err = holder.err();
        }
        return suite;
    }

    PF_Err _err;
};

}  // namespace AEO
