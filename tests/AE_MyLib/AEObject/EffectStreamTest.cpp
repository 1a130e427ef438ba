// The effect and stream wrappers own host handles. They must hold the suite that gives a handle
// back before they ask for it, so that a refused suite can never strand a handle in the host.

#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "AE_MyLib/AEObject/AEO_Effect.h"
#include "AE_MyLib/AEObject/AEO_Interface.h"
#include "AE_MyLib/AEObject/HostedCommand.h"
#include "host/api/AegpSuites.h"

namespace {

using Log = std::vector<std::string>;

constexpr PF_ParamIndex kSomeParam = 56;
constexpr PF_ParamIndex kLayerParam = 1;  // a layer parameter, <none> by default
constexpr AEGP_PluginID kPluginId = 1;
constexpr A_Err kHostRefusal = 0x1234;

long live(hosted::HostedCommand& command, host::Resource kind) { return command.host().counters().live(kind); }

// Nothing the wrappers took is still held: no effect, stream, stream value or suite.
void expectNothingHeld(hosted::HostedCommand& command)
{
    for (host::Resource kind : {host::Resource::AegpEffect, host::Resource::AegpStream, host::Resource::AegpStreamValue})
        EXPECT_EQ(live(command, kind), 0) << static_cast<int>(kind);
    EXPECT_EQ(command.live_suites(), 0);
}

// The wrappers as the effect builds them for one command: interface, effect, stream.
struct EffectAndStream {
    explicit EffectAndStream(hosted::HostedCommand& command)
        : effect_interface(command.basic(), command.in()->effect_ref),
          effect(command.basic(), effect_interface, kPluginId),
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
    hosted::HostedCommand command(true);
    {
        EffectAndStream wrappers(command);
        EXPECT_NE(wrappers.effect.handle(), nullptr);
        EXPECT_NE(wrappers.stream.handle(), nullptr);
        wrappers.stream.SetExpression("value");
        const std::string* expression = command.host().aegp().effect_expression(kSomeParam);
        ASSERT_NE(expression, nullptr) << "the stream is that of the parameter asked for";
        EXPECT_EQ(*expression, "value");
        EXPECT_EQ(wrappers.takeErrors(), (std::vector<PF_Err>{PF_Err_NONE, PF_Err_NONE, PF_Err_NONE}));
    }
    EXPECT_EQ(command.calls(), (Log{
                                  "acquire AEGP Effect Suite 3",        // to dispose of the effect
                                  "acquire AEGP PF Interface Suite 1",  // to ask for it
                                  "AEGP_GetNewEffectForEffect",
                                  "acquire AEGP Stream Suite 9",        // the stream's, to dispose of it
                                  "acquire AEGP Stream Suite 9",        // the effect's, to ask for it
                                  "AEGP_GetNewEffectStreamByIndex",
                                  "AEGP_SetExpression",
                                  "AEGP_DisposeStream",
                                  "release AEGP Stream Suite 9",
                                  "AEGP_DisposeEffect",
                                  "release AEGP Stream Suite 9",
                                  "release AEGP Effect Suite 3",
                                  "release AEGP PF Interface Suite 1",
                              }));
    expectNothingHeld(command);
}

TEST(EffectAndStreamHandles, ARefusedEffectSuiteMeansTheEffectIsNeverAskedFor)
{
    hosted::HostedCommand command(true);
    command.remove_suite(kAEGPEffectSuite, kAEGPEffectSuiteVersion3);
    {
        EffectAndStream wrappers(command);
        EXPECT_EQ(wrappers.effect.handle(), nullptr);
        EXPECT_EQ(wrappers.stream.handle(), nullptr);
        // The refusal stands in the effect and, as the stream could not be had, in the stream.
        EXPECT_EQ(wrappers.takeErrors(), (std::vector<PF_Err>{PF_Err_NONE, kSPSuiteNotFoundError, kSPSuiteNotFoundError}));
    }
    EXPECT_EQ(command.calls(), Log{"refuse AEGP Effect Suite 3"});
    expectNothingHeld(command);
}

TEST(EffectAndStreamHandles, ARefusedStreamSuiteMeansTheStreamIsNeverAskedFor)
{
    hosted::HostedCommand command(true);
    command.remove_suite(kAEGPStreamSuite, kAEGPStreamSuiteVersion4);
    {
        EffectAndStream wrappers(command);
        EXPECT_NE(wrappers.effect.handle(), nullptr);
        EXPECT_EQ(wrappers.stream.handle(), nullptr);
        wrappers.stream.SetExpression("value");
        EXPECT_EQ(wrappers.takeErrors(), (std::vector<PF_Err>{PF_Err_NONE, PF_Err_NONE, kSPSuiteNotFoundError}));
    }
    EXPECT_EQ(command.calls(), (Log{
                                  "acquire AEGP Effect Suite 3",
                                  "acquire AEGP PF Interface Suite 1",
                                  "AEGP_GetNewEffectForEffect",
                                  "refuse AEGP Stream Suite 9",  // sticky: nothing more on the stream
                                  "AEGP_DisposeEffect",
                                  "release AEGP Effect Suite 3",
                                  "release AEGP PF Interface Suite 1",
                              }));
    expectNothingHeld(command);
    EXPECT_EQ(command.host().aegp().effect_expression(kSomeParam), nullptr);
}

TEST(EffectAndStreamHandles, AFailedHostCallIsCarriedOnWithoutTakingAnything)
{
    hosted::HostedCommand command(true);
    command.host().faults().fail_every("AEGP_GetNewEffectForEffect", kHostRefusal);
    {
        EffectAndStream wrappers(command);
        EXPECT_EQ(wrappers.stream.handle(), nullptr);
        EXPECT_EQ(wrappers.takeErrors(), (std::vector<PF_Err>{kHostRefusal, kHostRefusal, kHostRefusal}));
    }
    expectNothingHeld(command);

    command.host().faults().reset();
    command.host().faults().fail_every("AEGP_GetNewEffectStreamByIndex", kHostRefusal);
    {
        EffectAndStream wrappers(command);
        EXPECT_EQ(wrappers.takeErrors(), (std::vector<PF_Err>{PF_Err_NONE, kHostRefusal, kHostRefusal}));
    }
    expectNothingHeld(command);
}

// The route from a layer parameter to its layer, as the interface rules and the render use it.
struct MissingSuite {
    const char* name;
    int version;
};

class LayerParamRoute : public ::testing::TestWithParam<MissingSuite> {};

TEST_P(LayerParamRoute, ReturnsTheRefusalOfADisposingSuiteAndLeavesNothingBehind)
{
    hosted::HostedCommand command(true);
    command.remove_suite(GetParam().name, GetParam().version);
    {
        AEO::InData in_data(command.in());
        AEGP_LayerH layer = command.light_layer();
        EXPECT_EQ(AEO::GetLayerOfLayerParam(in_data, kPluginId, kLayerParam, &layer), kSPSuiteNotFoundError);
        EXPECT_EQ(layer, nullptr);
    }
    expectNothingHeld(command);
}

INSTANTIATE_TEST_SUITE_P(RefusedSuite, LayerParamRoute,
                         ::testing::Values(MissingSuite{kAEGPEffectSuite, kAEGPEffectSuiteVersion3},
                                           MissingSuite{kAEGPStreamSuite, kAEGPStreamSuiteVersion4}));

TEST(LayerParamRouteWithoutALayer, GivesBackTheValueTheStreamAndTheEffect)
{
    hosted::HostedCommand command(true);
    {
        AEO::InData in_data(command.in());
        AEGP_LayerH layer = command.light_layer();
        EXPECT_EQ(AEO::GetLayerOfLayerParam(in_data, kPluginId, kLayerParam, &layer), PF_Err_NONE);
        EXPECT_EQ(layer, nullptr);
        EXPECT_EQ(command.count("AEGP_GetNewEffectStreamByIndex"), 1);
        EXPECT_EQ(command.count("AEGP_DisposeStreamValue"), 1);
    }
    expectNothingHeld(command);
}

}  // namespace
