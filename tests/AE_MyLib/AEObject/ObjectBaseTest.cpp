// Suite holders, the in-data's suites and the sticky error word of every wrapper.

#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "AE_MyLib/AEObject/AEO_Base.h"
#include "AE_MyLib/AEObject/AEO_InData.h"
#include "AE_MyLib/AEObject/AEO_Layer.h"
#include "AE_MyLib/AEObject/HostedCommand.h"

namespace {

using Log = std::vector<std::string>;

struct WithError : AEO::ObjectBase {
    explicit WithError(PF_Err err) { _err = err; }
};

TEST(SuiteHolder, KeepsARefusalAndReleasesNothing)
{
    hosted::HostedCommand command;
    command.host().faults().fail_every("AcquireSuite", A_Err_MISSING_SUITE);
    {
        AEO::Suite<AEGP_CameraSuite2> holder(command.basic());
        EXPECT_EQ(holder.acquire(), nullptr);
        EXPECT_EQ(holder.err(), A_Err_MISSING_SUITE);
        EXPECT_EQ(holder.acquire(), nullptr);  // not asked again
    }
    EXPECT_EQ(command.calls(), Log{"refuse AEGP Camera Suite 2"});
}

TEST(InDataSuites, AcquiredInOrderAtConstructionAndReleasedInReverse)
{
    hosted::HostedCommand command;
    const host::SuiteRegistry& suites = command.host().registry();
    {
        AEO::InData in_data(command.in());
        EXPECT_EQ(in_data.sampling8().get(), suites.find(kPFSampling8Suite, kPFSampling8SuiteVersion1));
        EXPECT_EQ(in_data.sampling16().get(), suites.find(kPFSampling16Suite, kPFSampling16SuiteVersion1));
        EXPECT_EQ(in_data.samplingFloat().get(), suites.find(kPFSamplingFloatSuite, kPFSamplingFloatSuiteVersion1));
    }
    EXPECT_EQ(command.calls(), (Log{"acquire PF Sampling8 Suite 1", "acquire PF Sampling16 Suite 1",
                                   "acquire PF SamplingFloat Suite 1", "release PF SamplingFloat Suite 1",
                                   "release PF Sampling16 Suite 1", "release PF Sampling8 Suite 1"}));
}

TEST(InDataSuites, AFailureStaysInThatSuitesHolder)
{
    hosted::HostedCommand command;
    command.remove_suite(kPFSampling16Suite, kPFSampling16SuiteVersion1);
    {
        AEO::InData in_data(command.in());
        EXPECT_EQ(in_data.sampling8().err(), A_Err_NONE);
        EXPECT_EQ(in_data.sampling16().err(), kSPSuiteNotFoundError);
        EXPECT_EQ(in_data.samplingFloat().err(), A_Err_NONE);
        EXPECT_EQ(in_data.err(), PF_Err_NONE);
    }
    EXPECT_EQ(command.live_suites(), 0);
    EXPECT_EQ(command.calls().back(), "release PF Sampling8 Suite 1");
    EXPECT_EQ(command.count("release PF Sampling16 Suite 1"), 0) << "a refused suite is not released";
}

TEST(StickyError, TheFirstFailureSkipsEveryLaterCall)
{
    hosted::HostedCommand command;
    command.host().faults().fail_every("AEGP_GetLayerFlags", A_Err_PARAMETER);
    AEO::InData in_data(command.in());
    AEO::Layer layer(in_data, command.light_layer());
    auto layer_calls = [&] { return command.count("AEGP_GetLayerFlags") + command.count("AEGP_GetLayerObjectType"); };

    layer.GetFlags();
    EXPECT_EQ(layer.err(), A_Err_PARAMETER);
    EXPECT_EQ(layer.GetObjectType(), AEGP_ObjectType_NONE) << "skipped, so the default comes back";
    EXPECT_EQ(layer_calls(), 1);
    EXPECT_EQ(layer.take_err(), A_Err_PARAMETER);

    EXPECT_EQ(layer.GetObjectType(), AEGP_ObjectType_LIGHT) << "calls run again once the error is taken";
    EXPECT_EQ(layer_calls(), 2);
}

// A cancelled or clean object may die; one with any other live error fails an assertion.
TEST(StickyError, DestroyingAnObjectWithALiveErrorIsAnAssertionFailure)
{
#ifdef NDEBUG
    GTEST_SKIP() << "assertions are compiled out";
#else
    { WithError cancelled(PF_Interrupt_CANCEL); }
    { WithError clean(PF_Err_NONE); }
    GTEST_FLAG_SET(death_test_style, "threadsafe");
    EXPECT_DEATH({ WithError object(PF_Err_OUT_OF_MEMORY); },
                 "_err == PF_Err_NONE \\|\\| _err == PF_Interrupt_CANCEL");
#endif
}

}  // namespace
