#include <algorithm>
#include <cstdint>
#include <string>
#include <vector>

#include <gtest/gtest.h>

#include "host/HandleHeap.h"
#include "host/Host.h"
#include "render/RenderInfo.h"

namespace {

vLight lightWithIntensity(double intensity)
{
    vLight light = {};
    light.intensity = intensity;
    light.type = 2;
    light.color[0] = 1.0f;
    light.casts_shadows = true;
    return light;
}

TEST(RenderInfoDefaults, ConstructorSetsTheDocumentedDefaults)
{
    RenderInfo info(nullptr);
    EXPECT_EQ(info.in_data, nullptr);
    EXPECT_EQ(info.object_to_world.getCol3().getW(), 0.0f);
    EXPECT_EQ(info.object_to_world.getCol0().getX(), 0.0f);
    EXPECT_EQ(info.size.getX(), 0.0f);
    EXPECT_EQ(info.slide, 0.0);
    EXPECT_EQ(info.output, nullptr);
    EXPECT_EQ(info.lights.size(), 0u);
    EXPECT_EQ(info.lights.capacity(), 0u);
    EXPECT_EQ(info.falloff_mode, 1);
    EXPECT_EQ(info.falloff_radius, 1.0);
    EXPECT_EQ(info.falloff_distance, 1.0);
    EXPECT_EQ(info.reflection_layer.data, nullptr);
    EXPECT_EQ(info.reflection_layer.width, 0);
    EXPECT_EQ(info.reflection_layer.height, 0);
    EXPECT_EQ(info.sharpness_inv, 1.0);
    EXPECT_TRUE(info.perspective);
    EXPECT_EQ(info.dof_blur, 1.0);
    EXPECT_EQ(info.extension.head_extensions, 0);
    EXPECT_EQ(info.extension.tail_extensions, 0);
    EXPECT_FALSE(info.extension.flip_vertical);
    EXPECT_EQ(info.extension.screw, 0.0);
    EXPECT_EQ(info.extension.interval, 0.0);
    EXPECT_EQ(info.depth_composite.mode, 1);
    EXPECT_EQ(info.depth_composite.length, 1.0);
    EXPECT_EQ(info.depth_composite.start, 0.0);
}

TEST(RenderInfoDefaults, ALightNeedsHostMemory)
{
    RenderInfo info(nullptr);  // no in-data: no memory at all
    EXPECT_FALSE(info.appendLight(lightWithIntensity(1.0)));
    EXPECT_EQ(info.lights.size(), 0u);
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
        for (int i = 0; i < 5; ++i)
            ASSERT_TRUE(info.appendLight(lightWithIntensity(0.5 * i)));
        ASSERT_EQ(info.lights.size(), 5u);
        for (std::size_t i = 0; i < info.lights.size(); ++i) {
            const vLight* light = info.lights[i];
            EXPECT_EQ(reinterpret_cast<std::uintptr_t>(light) % 16, 0u) << i;
            EXPECT_EQ(light->intensity, 0.5 * i);
            EXPECT_EQ(light->type, 2);
            EXPECT_TRUE(light->casts_shadows);
        }
        EXPECT_GE(host.handles().live(), baseline + 6);  // five lights and the array
    }
    EXPECT_EQ(host.handles().live(), baseline);
}

TEST_F(RenderInfoLightsTest, NoLightsTakeNoMemory)
{
    {
        RenderInfo info(scope->in_data());
        EXPECT_EQ(host.handles().live(), baseline);
    }
    EXPECT_EQ(host.handles().live(), baseline);
}

TEST_F(RenderInfoLightsTest, LightWithoutMemoryIsDropped)
{
    RenderInfo info(scope->in_data());
    ASSERT_TRUE(info.appendLight(lightWithIntensity(1.0)));
    host.faults().fail_every("host_new_handle", PF_Err_OUT_OF_MEMORY);
    EXPECT_FALSE(info.appendLight(lightWithIntensity(2.0)));
    host.faults().reset();
    ASSERT_EQ(info.lights.size(), 1u);
    EXPECT_EQ(info.lights[0]->intensity, 1.0);
}

TEST_F(RenderInfoLightsTest, LightWithoutASlotIsDroppedAndItsMemoryReturned)
{
    RenderInfo info(scope->in_data());
    ASSERT_TRUE(info.appendLight(lightWithIntensity(1.0)));
    const std::size_t with_one_light = host.handles().live();
    // The next append makes the light (new handle, lock), then grows the array: fail that.
    host.faults().fail_call(host.faults().calls() + 3, PF_Err_OUT_OF_MEMORY);
    EXPECT_FALSE(info.appendLight(lightWithIntensity(2.0)));
    host.faults().reset();
    EXPECT_EQ(info.lights.size(), 1u);
    EXPECT_EQ(host.handles().live(), with_one_light);

    EXPECT_TRUE(info.appendLight(lightWithIntensity(3.0)));  // the next one fits again
    ASSERT_EQ(info.lights.size(), 2u);
    EXPECT_EQ(info.lights[1]->intensity, 3.0);
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
