// The suite handler, parameter checkouts and layer names.

#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "AE_MyLib/AEObject/AEGP_SuiteHandler.h"
#include "AE_MyLib/AEObject/AEO_Layer.h"
#include "AE_MyLib/AEObject/ATParameter.h"
#include "AE_MyLib/AEObject/HostedCommand.h"
#include "host/comp/Composition.h"

namespace {

using Log = std::vector<std::string>;

TEST(SuiteHandler, AcquiresEachSuiteOnceAndReleasesAllAtTheEnd)
{
    hosted::HostedCommand command;
    const host::SuiteRegistry& registry = command.host().registry();
    {
        AEGP_SuiteHandler suites(command.basic());
        EXPECT_TRUE(command.calls().empty());
        EXPECT_EQ(suites.LayerSuite6(), registry.find(kAEGPLayerSuite, kAEGPLayerSuiteVersion6));
        EXPECT_EQ(suites.LayerSuite6(), registry.find(kAEGPLayerSuite, kAEGPLayerSuiteVersion6));
        EXPECT_EQ(suites.UtilitySuite5(), registry.find(kAEGPUtilitySuite, kAEGPUtilitySuiteVersion5));
        EXPECT_EQ(command.calls(), (Log{"acquire AEGP Layer Suite 12", "acquire AEGP Utility Suite 11"}));
    }
    EXPECT_EQ(command.live_suites(), 0);
    EXPECT_EQ(command.calls().size(), 4u);
}

// Parameter check-outs and check-ins, in order.
Log checkouts(const hosted::HostedCommand& command)
{
    Log log;
    for (const std::string& call : command.calls()) {
        if (call == "checkout_param" || call == "checkin_param") {
            log.push_back(call == "checkout_param" ? "out" : "in");
        }
    }
    return log;
}

long heldCheckouts(hosted::HostedCommand& command, const char* key)
{
    return command.host().counters().live(host::Resource::ParamCheckout, key);
}

TEST(ATParameterCheckout, HoldsOneParameterAtATime)
{
    hosted::HostedCommand command(true);
    {
        ATParameter param(command.in());
        EXPECT_EQ(checkouts(command), Log{"out"});
        EXPECT_EQ(heldCheckouts(command, "param 0"), 1);
        EXPECT_EQ(param.param(39).param_type, command.host().param_def(39).param_type);
        EXPECT_STREQ(param.param(39).PF_DEF_NAME, command.host().param_def(39).PF_DEF_NAME);
        EXPECT_EQ(checkouts(command), (Log{"out", "in", "out"})) << "same index: no new checkout";
        EXPECT_EQ(heldCheckouts(command, "param 0"), 0);
        EXPECT_EQ(heldCheckouts(command, "param 39"), 1);
        EXPECT_STREQ(param.param(1).PF_DEF_NAME, command.host().param_def(1).PF_DEF_NAME);
        EXPECT_EQ(param.err(), PF_Err_NONE);
        EXPECT_EQ(heldCheckouts(command, "param 39"), 0);
        EXPECT_EQ(heldCheckouts(command, "param 1"), 1);
        command.in()->current_time += command.in()->time_step;
        param.param(1);
        EXPECT_EQ(checkouts(command).size(), 7u) << "another time: the value is checked out again";
    }
    EXPECT_EQ(checkouts(command), (Log{"out", "in", "out", "in", "out", "in", "out", "in"}));
    EXPECT_EQ(command.host().counters().live(host::Resource::ParamCheckout), 0);
}

TEST(ATParameterCheckout, KeepsTheErrorAndChecksNothingInAfterAFailure)
{
    hosted::HostedCommand command(true);
    host::FaultInjector& faults = command.host().faults();
    {
        ATParameter param(command.in());
        faults.fail_call(faults.calls() + 2, PF_Err_INVALID_INDEX);  // after the check-in of 0
        param.param(5);
        EXPECT_EQ(param.err(), PF_Err_INVALID_INDEX);
        param.param(6);
        EXPECT_EQ(param.err(), PF_Err_NONE) << "the error is that of the last checkout";
        EXPECT_EQ(heldCheckouts(command, "param 6"), 1);
    }
    EXPECT_EQ(checkouts(command), (Log{"out", "in", "out", "out", "in"}));
    EXPECT_EQ(command.host().counters().live(host::Resource::ParamCheckout), 0);
}

TEST(LayerNames, ReadsBothNamesAndFreesTheHostsHandles)
{
    hosted::HostedCommand command;  // the effect layer has no name; its footage is "Footage été"
    const long mem_handles_before = command.host().counters().total(host::Resource::AegpMemHandle);
    AEO::InData in_data(command.in());
    AEO::Layer layer(in_data, command.effect_layer(), 1);
    auto live_mem_handles = [&] { return command.host().counters().live(host::Resource::AegpMemHandle); };

    EXPECT_TRUE(layer.getLayerName().empty());
    const AEO::String<char16_t> source = layer.getSourceName();
    EXPECT_EQ(std::u16string(source.c_str()), u"Footage \u00E9t\u00E9");
    EXPECT_EQ(live_mem_handles(), 0);
    EXPECT_GT(command.host().counters().total(host::Resource::AegpMemHandle), mem_handles_before);

    layer.SetName(source);
    EXPECT_EQ(command.host().effect_layer()->name, "Footage \xC3\xA9t\xC3\xA9") << "the layer's own name now";
    command.host().composition()->find_by_id(command.host().effect_layer_id())->source.name = "Other";
    EXPECT_STREQ(layer.getLayerNameLocalized().c_str(), "Footage \xC3\xA9t\xC3\xA9");
    EXPECT_EQ(live_mem_handles(), 0);
    EXPECT_EQ(layer.err(), PF_Err_NONE);
}

}  // namespace
