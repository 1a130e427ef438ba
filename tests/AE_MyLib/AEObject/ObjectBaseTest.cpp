// Suite holders, the in-data's suites and the sticky error word of every wrapper.

#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "AE_MyLib/AEObject/AEO_Base.h"
#include "AE_MyLib/AEObject/AEO_InData.h"
#include "AE_MyLib/AEObject/AEO_Layer.h"
#include "AE_MyLib/AEObject/FakeHost.h"

namespace {

using Log = std::vector<std::string>;

struct WithError : AEO::ObjectBase {
    explicit WithError(PF_Err err) { _err = err; }
};

TEST(SuiteHolder, AcquiresOnFirstUseOnlyAndReleasesByTheSameNameAndVersion)
{
    fake::FakeHost host;
    {
        AEO::Suite<AEGP_LayerSuite6> holder(&host.basic);
        EXPECT_TRUE(host.suite_log.empty()) << "nothing is acquired before the first use";
        EXPECT_EQ(holder.acquire(), &host.layer);
        EXPECT_EQ(holder.acquire(), &host.layer);
        EXPECT_EQ(host.suite_log, Log{"acquire AEGP Layer Suite 12"});
    }
    EXPECT_EQ(host.suite_log, (Log{"acquire AEGP Layer Suite 12", "release AEGP Layer Suite 12"}));
}

TEST(SuiteHolder, KeepsARefusalAndReleasesNothing)
{
    fake::FakeHost host;
    host.acquire_errors["AEGP Camera Suite"] = A_Err_MISSING_SUITE;
    {
        AEO::Suite<AEGP_CameraSuite2> holder(&host.basic);
        EXPECT_EQ(holder.acquire(), nullptr);
        EXPECT_EQ(holder.err(), A_Err_MISSING_SUITE);
        EXPECT_EQ(holder.acquire(), nullptr);  // not asked again
    }
    EXPECT_EQ(host.suite_log, Log{"refuse AEGP Camera Suite 2"});
}

TEST(InDataSuites, AcquiredInOrderAtConstructionAndReleasedInReverse)
{
    fake::FakeHost host;
    {
        AEO::InData in_data(host.in());
        EXPECT_EQ(in_data.sampling8().get(), &host.sampling8);
        EXPECT_EQ(in_data.sampling16().get(), &host.sampling16);
        EXPECT_EQ(in_data.samplingFloat().get(), &host.sampling_float);
    }
    EXPECT_EQ(host.suite_log, (Log{"acquire PF Sampling8 Suite 1", "acquire PF Sampling16 Suite 1",
                                   "acquire PF SamplingFloat Suite 1", "release PF SamplingFloat Suite 1",
                                   "release PF Sampling16 Suite 1", "release PF Sampling8 Suite 1"}));
}

TEST(InDataSuites, AFailureStaysInThatSuitesHolder)
{
    fake::FakeHost host;
    host.acquire_errors["PF Sampling16 Suite"] = fake::kSuiteNotFound;
    {
        AEO::InData in_data(host.in());
        EXPECT_EQ(in_data.sampling8().err(), A_Err_NONE);
        EXPECT_EQ(in_data.sampling16().err(), fake::kSuiteNotFound);
        EXPECT_EQ(in_data.samplingFloat().err(), A_Err_NONE);
        EXPECT_EQ(in_data.err(), PF_Err_NONE);
    }
    EXPECT_EQ(host.live_suites(), 0);
    EXPECT_EQ(host.suite_log.back(), "release PF Sampling8 Suite 1");
}

TEST(StickyError, TheFirstFailureSkipsEveryLaterCall)
{
    fake::FakeHost host;
    host.layer_flags_error = A_Err_PARAMETER;
    host.object_type = AEGP_ObjectType_LIGHT;
    AEO::InData in_data(host.in());
    AEO::Layer layer(in_data, reinterpret_cast<AEGP_LayerH>(&host));

    layer.GetFlags();
    EXPECT_EQ(layer.err(), A_Err_PARAMETER);
    EXPECT_EQ(layer.GetObjectType(), AEGP_ObjectType_NONE) << "skipped, so the default comes back";
    EXPECT_EQ(host.layer_calls, 1);
    EXPECT_EQ(layer.take_err(), A_Err_PARAMETER);

    EXPECT_EQ(layer.GetObjectType(), AEGP_ObjectType_LIGHT) << "calls run again once the error is taken";
    EXPECT_EQ(host.layer_calls, 2);
}

TEST(StickyError, AMissingSuiteBecomesTheObjectsError)
{
    fake::FakeHost host;
    host.acquire_errors["AEGP Layer Suite"] = fake::kSuiteNotFound;
    AEO::InData in_data(host.in());
    AEO::Layer layer(in_data, nullptr);
    EXPECT_EQ(layer.GetFlags(), AEGP_LayerFlags(AEGP_LayerFlag_NONE));
    EXPECT_EQ(layer.err(), fake::kSuiteNotFound);
    EXPECT_EQ(host.layer_calls, 0);
    layer.take_err();
}

TEST(StickyError, DestroyingAnObjectWithALiveErrorIsAnAssertionFailure)
{
#ifdef NDEBUG
    GTEST_SKIP() << "assertions are compiled out";
#else
    GTEST_FLAG_SET(death_test_style, "threadsafe");
    EXPECT_DEATH({ WithError object(PF_Err_OUT_OF_MEMORY); },
                 "_err == PF_Err_NONE \\|\\| _err == PF_Interrupt_CANCEL");
#endif
}

TEST(StickyError, ACancelledObjectMayDie)
{
    { WithError cancelled(PF_Interrupt_CANCEL); }
    { WithError clean(PF_Err_NONE); }
    SUCCEED();
}

}  // namespace
