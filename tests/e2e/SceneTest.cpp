// Camera, lights, depth of field, output depths and downsampling, end to end.

#include <gtest/gtest.h>

#include <algorithm>

#include "e2e/ImageCompare.h"
#include "e2e/SceneFiles.h"
#include "host/checks/FaultInjector.h"

namespace {

constexpr int kCentreX = 100;
constexpr int kCentreY = 50;

// A camera at half the default distance with the default zoom doubles the picture: the
// silhouette's half width becomes a * zoom / sqrt(138.9^2 - a^2) = 32 px.
TEST(CompositionCamera, CloserCameraEnlargesTheSurface)
{
    const auto session = e2e::openScene("camera.json");
    const host::RenderResult close = e2e::renderScene(*session);
    ASSERT_EQ(close.err, PF_Err_NONE);
    EXPECT_GT(e2e::pixelAt(close, kCentreX + 28, kCentreY).alpha, 0.999f);
    EXPECT_EQ(e2e::pixelAt(close, kCentreX + 34, kCentreY).alpha, 0.0f);
}

TEST(CompositionCamera, IgnoredWhenTheEffectIsToldNotToUseIt)
{
    const auto session = e2e::openScene("camera.json");
    session->set("Use Composition Camera", 0);
    const host::RenderResult frame = e2e::renderScene(*session);
    const auto plain = e2e::openScene("default_camera.json");
    EXPECT_EQ(e2e::compareFrames(frame, e2e::renderScene(*plain), 2e-3f), "");
}

// Emission 100 % shows the texel (64/255 grey); one ambient light at 100 % adds it once more.
// The switched-off light and the one that starts later add nothing.
TEST(Lights, OnlyTheActiveAmbientLightAddsItsShare)
{
    const auto session = e2e::openScene("lights.json");
    const host::RenderResult frame = e2e::renderScene(*session);
    ASSERT_EQ(frame.err, PF_Err_NONE);
    const PF_PixelFloat centre = e2e::pixelAt(frame, kCentreX, kCentreY);
    const float twice = 2.0f * 64.0f / 255.0f;
    EXPECT_FLOAT_EQ(centre.alpha, 1.0f);
    EXPECT_NEAR(centre.red, twice, 1e-4);
    EXPECT_NEAR(centre.green, twice, 1e-4);
    EXPECT_NEAR(centre.blue, twice, 1e-4);
}

int iterationsOfOneRender(host::Session& session)
{
    host::FaultInjector& faults = session.host().faults();
    faults.reset();
    faults.set_recording(true);
    const host::RenderResult frame = e2e::renderScene(session);
    EXPECT_EQ(frame.err, PF_Err_NONE);
    const std::vector<std::string> calls = faults.recorded_calls();
    faults.reset();
    return int(std::count(calls.begin(), calls.end(), "iterate_generic"));
}

// Only "On" with the composition's camera in use adds the blur pass.
TEST(DepthOfField, OnWithACameraRunsTwoPasses)
{
    struct Row {
        const char* scene;
        int depth_of_field;
        bool use_camera;
        int passes;
    };
    for (const Row& row : {Row{"camera.json", 3, true, 2}, Row{"camera.json", 1, true, 1},
                           Row{"camera.json", 3, false, 1}, Row{"default_camera.json", 3, true, 1}}) {
        const auto session = e2e::openScene(row.scene);
        session->set("Depth Of Field", row.depth_of_field);
        session->set("Use Composition Camera", row.use_camera ? 1 : 0);
        EXPECT_EQ(iterationsOfOneRender(*session), row.passes)
            << row.scene << " depth of field " << row.depth_of_field << " camera " << row.use_camera;
    }
}

// The camera focuses on the pivot's distance, so the pivot stays sharp through the passes.
TEST(DepthOfField, PassesLeaveTheFocusedCentreSharp)
{
    const auto session = e2e::openScene("camera.json");
    session->set("Depth Of Field", 3);
    const host::RenderResult frame = e2e::renderScene(*session);
    ASSERT_EQ(frame.err, PF_Err_NONE);
    const PF_PixelFloat left = e2e::pixelAt(frame, kCentreX - 4, kCentreY);
    const PF_PixelFloat right = e2e::pixelAt(frame, kCentreX + 3, kCentreY);
    EXPECT_NEAR(left.alpha, 1.0f, 1e-3);
    EXPECT_GT(left.red, 0.9f);
    EXPECT_GT(right.blue, 0.9f);
    EXPECT_EQ(e2e::pixelAt(frame, 0, 0).alpha, 0.0f);
}

TEST(OutputDepths, EightSixteenAndFloatAgreeWithinTheirPrecision)
{
    const auto session = e2e::openScene("lights.json");
    const host::RenderResult full = e2e::renderScene(*session, 32);
    const host::RenderResult sixteen = e2e::renderScene(*session, 16);
    const host::RenderResult eight = e2e::renderScene(*session, 8);
    ASSERT_TRUE(full.rendered && sixteen.rendered && eight.rendered);
    // Truncation loses up to one step of the channel type.
    EXPECT_EQ(e2e::compareFrames(sixteen, full, 1.0f / 32768 + 1e-5f), "");
    EXPECT_EQ(e2e::compareFrames(eight, full, 1.0f / 255 + 1e-5f), "");
    EXPECT_EQ(e2e::pixelAt(eight, kCentreX, kCentreY).red, 128.0f / 255);  // 2 * 64, exactly
}

// At downsample 2 every output pixel covers a 2 x 2 block of the full frame: where that block
// is uniform, the half-size pixel shows the same.
TEST(Downsample, HalfSizeShowsTheSamePicture)
{
    const auto session = e2e::openScene("default_camera.json");
    const host::RenderResult full = e2e::renderScene(*session, 32, 1);
    const host::RenderResult half = e2e::renderScene(*session, 32, 2);
    ASSERT_TRUE(half.rendered);
    ASSERT_EQ(half.output->get().width, 100);
    ASSERT_EQ(half.output->get().height, 50);
    int uniform_blocks = 0;
    for (int y = 0; y < 50; ++y) {
        for (int x = 0; x < 100; ++x) {
            const PF_PixelFloat corner = e2e::pixelAt(full, 2 * x, 2 * y);
            bool uniform = true;
            for (int j = 0; j < 2; ++j)
                for (int i = 0; i < 2; ++i)
                    uniform = uniform &&
                              e2e::largestChannelDifference(e2e::pixelAt(full, 2 * x + i, 2 * y + j), corner) < 1e-3f;
            if (!uniform)
                continue;
            ++uniform_blocks;
            EXPECT_LT(e2e::largestChannelDifference(e2e::pixelAt(half, x, y), corner), 2e-3f) << x << ", " << y;
        }
    }
    EXPECT_GT(uniform_blocks, 4500);  // all but the silhouette's edges and the seam
}

}  // namespace
