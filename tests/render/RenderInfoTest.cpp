#include <algorithm>
#include <cstdint>
#include <string>
#include <vector>

#include <gtest/gtest.h>

#include "host/checks/HandleHeap.h"
#include "host/session/Host.h"
#include "render/RenderInfo.h"

namespace {

vLight lightWithIntensity(double intensity)
{
    vLight light = {};
    light.intensity = intensity;
    return light;
}

// The record's lights live in host handle memory for one render call.
class RenderInfoLightsTest : public ::testing::Test {
protected:
    RenderInfoLightsTest() : scope(host.render_scope(8)), baseline(host.handles().live()) {}

    host::Host host;
    std::unique_ptr<host::RenderScope> scope;
    std::size_t baseline;
};

TEST_F(RenderInfoLightsTest, LightsAreAlignedCopiesFreedWithTheRecord)
{
    {
        RenderInfo info(scope->in_data());
        EXPECT_EQ(host.handles().live(), baseline) << "no lights take no memory";
        for (int i = 0; i < 5; ++i)
            ASSERT_TRUE(info.appendLight(lightWithIntensity(0.5 * i)));
        ASSERT_EQ(info.lights.size(), 5u);
        for (std::size_t i = 0; i < info.lights.size(); ++i) {
            const vLight* light = info.lights[i];
            EXPECT_EQ(reinterpret_cast<std::uintptr_t>(light) % 16, 0u) << i;
            EXPECT_EQ(light->intensity, 0.5 * i);
        }
        EXPECT_GE(host.handles().live(), baseline + 6);  // five lights and the array
    }
    EXPECT_EQ(host.handles().live(), baseline);
}

// A light is dropped, its memory returned, when its own handle is refused (the first call of
// the append) or when the array cannot grow after the light was made (new handle, lock, then
// the third call); the next light fits again.
TEST_F(RenderInfoLightsTest, LightWithoutMemoryOrSlotIsDroppedAndItsMemoryReturned)
{
    for (const int failing_call : {1, 3}) {
        SCOPED_TRACE(failing_call);
        RenderInfo info(scope->in_data());
        ASSERT_TRUE(info.appendLight(lightWithIntensity(1.0)));
        const std::size_t with_one_light = host.handles().live();
        host.faults().fail_call(host.faults().calls() + failing_call, PF_Err_OUT_OF_MEMORY);
        EXPECT_FALSE(info.appendLight(lightWithIntensity(2.0)));
        host.faults().reset();
        EXPECT_EQ(info.lights.size(), 1u);
        EXPECT_EQ(host.handles().live(), with_one_light);
        EXPECT_TRUE(info.appendLight(lightWithIntensity(3.0)));
        ASSERT_EQ(info.lights.size(), 2u);
        EXPECT_EQ(info.lights[0]->intensity, 1.0);
        EXPECT_EQ(info.lights[1]->intensity, 3.0);
    }
}

TEST_F(RenderInfoLightsTest, DestructionFreesMemoryBeforeReleasingSuites)
{
    auto info = std::make_unique<RenderInfo>(scope->in_data());
    for (int i = 0; i < 3; ++i)
        ASSERT_TRUE(info->appendLight(lightWithIntensity(i)));
    host.faults().set_recording(true);
    info.reset();
    const std::vector<std::string> calls = host.faults().recorded_calls();
    host.faults().reset();

    const auto disposals = std::count(calls.begin(), calls.end(), "host_dispose_handle");
    EXPECT_EQ(disposals, 4);  // three lights and the array
    const auto last_disposal =
        std::find(calls.rbegin(), calls.rend(), "host_dispose_handle").base();
    const auto first_release = std::find(calls.begin(), calls.end(), "ReleaseSuite");
    ASSERT_NE(first_release, calls.end());
    EXPECT_LE(last_disposal - calls.begin(), first_release - calls.begin());
    EXPECT_EQ(host.handles().live(), baseline);
}

}  // namespace
