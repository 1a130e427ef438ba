// The effect and stream wrappers own host handles. They must hold the suite that gives a handle
// back before they ask for it, so that a refused suite can never strand a handle in the host.

#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "AE_MyLib/AEObject/AEO_Effect.h"
#include "AE_MyLib/AEObject/AEO_Interface.h"
#include "AE_MyLib/AEObject/FakeHost.h"

namespace {

using Log = std::vector<std::string>;

constexpr PF_ParamIndex kSomeParam = 56;
constexpr A_Err kHostRefusal = 0x1234;

// The wrappers as the effect builds them for one command: interface, effect, stream.
struct EffectAndStream {
    explicit EffectAndStream(fake::FakeHost& host)
        : effect_interface(&host.basic, host.in()->effect_ref),
          effect(&host.basic, effect_interface, host.plugin_id),
          stream(effect, kSomeParam)
    {
    }

    // Hands every wrapper's error back (interface, effect, stream), so that none dies with one.
    std::vector<PF_Err> takeErrors()
    {
        return {effect_interface.take_err(), effect.take_err(), stream.take_err()};
    }

    AEO::Interface effect_interface;
    AEO::Effect effect;
    AEO::Stream stream;
};

TEST(EffectAndStreamHandles, AreTakenAfterTheirDisposingSuiteAndGivenBackInReverse)
{
    fake::FakeHost host;
    {
        EffectAndStream wrappers(host);
        EXPECT_NE(wrappers.effect.handle(), nullptr);
        EXPECT_NE(wrappers.stream.handle(), nullptr);
        EXPECT_EQ(host.stream_index, kSomeParam);
        wrappers.stream.SetExpression("value");
        EXPECT_EQ(host.expression_set, "value");
        EXPECT_EQ(wrappers.takeErrors(), (std::vector<PF_Err>{PF_Err_NONE, PF_Err_NONE, PF_Err_NONE}));
    }
    EXPECT_EQ(host.suite_log, (Log{
                                  "acquire AEGP Effect Suite 3",        // to dispose of the effect
                                  "acquire AEGP PF Interface Suite 1",  // to ask for it
                                  "call AEGP_GetNewEffectForEffect",
                                  "acquire AEGP Stream Suite 9",        // the stream's, to dispose of it
                                  "acquire AEGP Stream Suite 9",        // the effect's, to ask for it
                                  "call AEGP_GetNewEffectStreamByIndex",
                                  "call AEGP_SetExpression",
                                  "call AEGP_DisposeStream",
                                  "release AEGP Stream Suite 9",
                                  "call AEGP_DisposeEffect",
                                  "release AEGP Stream Suite 9",
                                  "release AEGP Effect Suite 3",
                                  "release AEGP PF Interface Suite 1",
                              }));
    EXPECT_EQ(host.effects_live, 0);
    EXPECT_EQ(host.streams_live, 0);
}

TEST(EffectAndStreamHandles, ARefusedEffectSuiteMeansTheEffectIsNeverAskedFor)
{
    fake::FakeHost host;
    host.acquire_errors["AEGP Effect Suite"] = kHostRefusal;
    {
        EffectAndStream wrappers(host);
        EXPECT_EQ(wrappers.effect.handle(), nullptr);
        EXPECT_EQ(wrappers.stream.handle(), nullptr);
        // The refusal stands in the effect and, as the stream could not be had, in the stream.
        EXPECT_EQ(wrappers.takeErrors(), (std::vector<PF_Err>{PF_Err_NONE, kHostRefusal, kHostRefusal}));
    }
    EXPECT_EQ(host.suite_log, Log{"refuse AEGP Effect Suite 3"});
    EXPECT_EQ(host.effects_live, 0);
    EXPECT_EQ(host.streams_live, 0);
}

TEST(EffectAndStreamHandles, ARefusedStreamSuiteMeansTheStreamIsNeverAskedFor)
{
    fake::FakeHost host;
    host.acquire_errors["AEGP Stream Suite"] = kHostRefusal;
    {
        EffectAndStream wrappers(host);
        EXPECT_NE(wrappers.effect.handle(), nullptr);
        EXPECT_EQ(wrappers.stream.handle(), nullptr);
        wrappers.stream.SetExpression("value");
        EXPECT_EQ(wrappers.takeErrors(), (std::vector<PF_Err>{PF_Err_NONE, PF_Err_NONE, kHostRefusal}));
    }
    EXPECT_EQ(host.suite_log, (Log{
                                  "acquire AEGP Effect Suite 3",
                                  "acquire AEGP PF Interface Suite 1",
                                  "call AEGP_GetNewEffectForEffect",
                                  "refuse AEGP Stream Suite 9",  // sticky: nothing more on the stream
                                  "call AEGP_DisposeEffect",
                                  "release AEGP Effect Suite 3",
                                  "release AEGP PF Interface Suite 1",
                              }));
    EXPECT_EQ(host.effects_live, 0);
    EXPECT_EQ(host.expression_set, "");
}

TEST(EffectAndStreamHandles, AFailedHostCallIsCarriedOnWithoutTakingAnything)
{
    fake::FakeHost host;
    host.new_effect_error = kHostRefusal;
    {
        EffectAndStream wrappers(host);
        EXPECT_EQ(wrappers.stream.handle(), nullptr);
        EXPECT_EQ(wrappers.takeErrors(), (std::vector<PF_Err>{kHostRefusal, kHostRefusal, kHostRefusal}));
    }
    EXPECT_EQ(host.effects_live, 0);
    EXPECT_EQ(host.live_suites(), 0);

    host.new_effect_error = A_Err_NONE;
    host.new_stream_error = kHostRefusal;
    {
        EffectAndStream wrappers(host);
        EXPECT_EQ(wrappers.takeErrors(), (std::vector<PF_Err>{PF_Err_NONE, kHostRefusal, kHostRefusal}));
    }
    EXPECT_EQ(host.effects_live, 0);
    EXPECT_EQ(host.streams_live, 0);
    EXPECT_EQ(host.live_suites(), 0);
}

// The route from a layer parameter to its layer, as the interface rules and the render use it.
class LayerParamRoute : public ::testing::TestWithParam<const char*> {};

TEST_P(LayerParamRoute, ReturnsTheRefusalOfADisposingSuiteAndLeavesNothingBehind)
{
    fake::FakeHost host;
    host.acquire_errors[GetParam()] = kHostRefusal;
    {
        AEO::InData in_data(host.in());
        AEGP_LayerH layer = reinterpret_cast<AEGP_LayerH>(&host);
        EXPECT_EQ(AEO::GetLayerOfLayerParam(in_data, host.plugin_id, kSomeParam, &layer), kHostRefusal);
        EXPECT_EQ(layer, nullptr);
    }
    EXPECT_EQ(host.effects_live, 0);
    EXPECT_EQ(host.streams_live, 0);
    EXPECT_EQ(host.live_suites(), 0);
}

INSTANTIATE_TEST_SUITE_P(RefusedSuite, LayerParamRoute, ::testing::Values("AEGP Effect Suite", "AEGP Stream Suite"));

TEST(LayerParamRouteWithoutALayer, GivesBackTheValueTheStreamAndTheEffect)
{
    fake::FakeHost host;
    {
        AEO::InData in_data(host.in());
        AEGP_LayerH layer = reinterpret_cast<AEGP_LayerH>(&host);
        EXPECT_EQ(AEO::GetLayerOfLayerParam(in_data, host.plugin_id, kSomeParam, &layer), PF_Err_NONE);
        EXPECT_EQ(layer, nullptr);
        EXPECT_EQ(host.stream_index, kSomeParam);
    }
    EXPECT_EQ(host.stream_values_live, 0);
    EXPECT_EQ(host.effects_live, 0);
    EXPECT_EQ(host.streams_live, 0);
    EXPECT_EQ(host.live_suites(), 0);
}

}  // namespace
