// The suite handler, parameter checkouts and layer names.

#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "AE_MyLib/AEObject/AEGP_SuiteHandler.h"
#include "AE_MyLib/AEObject/AEO_Layer.h"
#include "AE_MyLib/AEObject/ATParameter.h"
#include "AE_MyLib/AEObject/FakeHost.h"

namespace {

using Log = std::vector<std::string>;

TEST(SuiteHandler, AcquiresEachSuiteOnceAndReleasesAllAtTheEnd)
{
    fake::FakeHost host;
    {
        AEGP_SuiteHandler suites(&host.basic);
        EXPECT_TRUE(host.suite_log.empty());
        EXPECT_EQ(suites.LayerSuite6(), &host.layer);
        EXPECT_EQ(suites.LayerSuite6(), &host.layer);
        EXPECT_EQ(suites.UtilitySuite5(), &host.utility);
        EXPECT_EQ(host.suite_log, (Log{"acquire AEGP Layer Suite 12", "acquire AEGP Utility Suite 11"}));
    }
    EXPECT_EQ(host.live_suites(), 0);
    EXPECT_EQ(host.suite_log.size(), 4u);
}

TEST(SuiteHandler, AMissingSuiteThrowsBadCallbackParam)
{
    fake::FakeHost host;
    host.acquire_errors["PF SamplingFloat Suite"] = fake::kSuiteNotFound;
    AEGP_SuiteHandler suites(&host.basic);
    try {
        suites.SamplingFloatSuite1();
        FAIL() << "no throw";
    } catch (PF_Err err) {
        EXPECT_EQ(err, PF_Err_BAD_CALLBACK_PARAM);
    }
    EXPECT_EQ(suites.Sampling8Suite1(), &host.sampling8) << "other suites are unaffected";
}

TEST(ATParameterCheckout, HoldsOneParameterAtATime)
{
    fake::FakeHost host;
    {
        ATParameter param(host.in());
        EXPECT_EQ(host.checkout_log, Log{"out 0"});
        EXPECT_EQ(param.param(39).uu.id, 39);
        EXPECT_EQ(param.param(39).uu.id, 39);
        EXPECT_EQ(host.checkout_log, (Log{"out 0", "in 0", "out 39"})) << "same index: no new checkout";
        param.param(1);
        EXPECT_EQ(param.err(), PF_Err_NONE);
    }
    EXPECT_EQ(host.checkout_log, (Log{"out 0", "in 0", "out 39", "in 39", "out 1", "in 1"}));
}

TEST(ATParameterCheckout, KeepsTheErrorAndChecksNothingInAfterAFailure)
{
    fake::FakeHost host;
    {
        ATParameter param(host.in());
        host.checkout_error = PF_Err_INVALID_INDEX;
        param.param(5);
        EXPECT_EQ(param.err(), PF_Err_INVALID_INDEX);
        host.checkout_error = PF_Err_NONE;
        param.param(6);
        EXPECT_EQ(param.err(), PF_Err_NONE) << "the error is that of the last checkout";
    }
    EXPECT_EQ(host.checkout_log, (Log{"out 0", "in 0", "out 5", "out 6", "in 6"}));
}

TEST(LayerNames, ReadsBothNamesAndFreesTheHostsHandles)
{
    fake::FakeHost host;
    host.layer_name = u"";
    host.source_name = u"Footage \u00E9t\u00E9";
    AEO::InData in_data(host.in());
    AEO::Layer layer(in_data, reinterpret_cast<AEGP_LayerH>(&host), host.plugin_id);

    EXPECT_TRUE(layer.getLayerName().empty());
    const AEO::String<char16_t> source = layer.getSourceName();
    EXPECT_EQ(std::u16string(source.c_str()), u"Footage \u00E9t\u00E9");
    EXPECT_EQ(host.mem_handles_live, 0);

    layer.SetName(source);
    EXPECT_EQ(host.name_set, u"Footage \u00E9t\u00E9");
    host.layer_name = host.name_set;
    EXPECT_STREQ(layer.getLayerNameLocalized().c_str(), "Footage \xC3\xA9t\xC3\xA9");
    EXPECT_EQ(host.mem_handles_live, 0);
    EXPECT_EQ(layer.err(), PF_Err_NONE);
}

}  // namespace
