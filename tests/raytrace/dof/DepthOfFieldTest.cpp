#include <cmath>
#include <cstring>
#include <memory>
#include <tuple>
#include <utility>
#include <vector>

#include <gtest/gtest.h>

#include "AE_MyLib/AEObject/AEO_EffectWorld.h"
#include "raytrace/DepthOfField.h"
#include "raytrace/PrimaryRays.h"
#include "raytrace/primary/TraceScene.h"
#include "support/ColourWorld.h"

using trace_test::TraceScene;
using namespace test_support;

namespace {

enum { kNearColour = 0, kFarColour = 1, kNearDepth = 2, kFarDepth = 3 };

// The four temporary worlds of the two passes, made through the host's world suite:
// two colour worlds of the pixel type, two 8-bit worlds holding one float depth per pixel.
template <class Pixel>
class DofWorlds {
public:
    DofWorlds(TraceScene& scene, A_long width, A_long height)
    {
        const auto colour = static_cast<AEO::PixelFormat::e>(host::PixelFormatOf<Pixel>::value);
        for (int i = 0; i < 4; ++i) {
            worlds_[i] = std::make_unique<AEO::NewEffectWorld>(
                scene.info().aeo_in_data, width, height, i < 2 ? colour : AEO::PixelFormat::ARGB32);
            EXPECT_EQ(worlds_[i]->err(), PF_Err_NONE);
            scene.info().depth_worlds[i] = worlds_[i].get();
        }
    }

    PF_PixelFloat colour(int which, A_long x, A_long y) const
    {
        return PixelTraits<Pixel>::toFloat(*worldPixelAt<Pixel>(worlds_[which]->world(), x, y));
    }
    float depth(int which, A_long x, A_long y) const
    {
        float d = 0.0f;
        std::memcpy(&d, worldPixelAt<PF_Pixel>(worlds_[which]->world(), x, y), sizeof d);
        return d;
    }
    void setDepth(int which, A_long x, A_long y, float d)
    {
        std::memcpy(worldPixelAt<PF_Pixel>(worlds_[which]->world(), x, y), &d, sizeof d);
    }

    // Fills a whole layer: colour(x, y) into world `colour_world`, depth into its depth world.
    template <class Fn>
    void fillLayer(int colour_world, float depth, Fn colour)
    {
        const PF_LayerDef& w = worlds_[colour_world]->world();
        for (A_long y = 0; y < w.height; ++y)
            for (A_long x = 0; x < w.width; ++x) {
                *worldPixelAt<Pixel>(w, x, y) = PixelTraits<Pixel>::fromFloat(colour(x, y));
                setDepth(colour_world + 2, x, y, depth);
            }
    }

private:
    std::unique_ptr<AEO::NewEffectWorld> worlds_[4];
};

// --- Composite pass over hand-filled layers ----------------------------------------------------

// Focus 100, layer at depth 300, blur scale 3: circle of confusion 3 * 200 / (100 + 200) = 2.
class DofComposite : public ::testing::Test {
protected:
    DofComposite() : scene(32), worlds(scene, 20, 5)
    {
        scene.allocateOutput<PF_PixelFloat>(20, 5);
        scene.info().focus_distance = 100.0;
        scene.info().dof_blur = 3.0;
        worlds.fillLayer(kNearColour, 300.0f, [](A_long x, A_long) { return x <= 9 ? kRed : kClear; });
        worlds.fillLayer(kFarColour, -1.0f, [](A_long, A_long) { return kBlue; });
    }

    PF_Err composite() { return scene.iterate(DofCompositeCallback<PF_PixelFloat>); }
    PF_PixelFloat out(A_long x, A_long y) { return scene.pixel<PF_PixelFloat>(x, y); }

    TraceScene scene;
    DofWorlds<PF_PixelFloat> worlds;
};

// A box of half-width r about pixel x weighs columns x-r .. x+r by 1/2, 1, ..., 1, 1/2 (of 2r)
// over the red columns 0..9: full scale r = 2, downsampled by 1/2 r = 1.
TEST_F(DofComposite, EdgeIsBlurredByTheCircleOfConfusionScaledByTheDownsampling)
{
    const struct {
        double downsample_x;
        A_long first;
        std::vector<float> alphas;
    } cases[] = {{1.0, 7, {1.0f, 0.875f, 0.625f, 0.375f, 0.125f, 0.0f}},
                 {0.5, 8, {1.0f, 0.75f, 0.25f, 0.0f}}};
    for (const auto& c : cases) {
        scene.info().downsample_x = c.downsample_x;
        ASSERT_EQ(composite(), PF_Err_NONE);
        for (A_long y = 0; y < 5; ++y)
            for (std::size_t k = 0; k < c.alphas.size(); ++k) {
                const A_long x = c.first + A_long(k);
                const PF_PixelFloat p = out(x, y);
                EXPECT_NEAR(p.alpha, c.alphas[k], 1e-5) << "downsample " << c.downsample_x << " x " << x << " y " << y;
                if (c.alphas[k] > 0.0f) {
                    EXPECT_NEAR(p.red, 1.0f, 1e-5);  // straight colour, not darkened
                    EXPECT_NEAR(p.blue, 0.0f, 1e-5);
                }
            }
    }
    // The box is clipped to the image, so borders keep full alpha.
    EXPECT_NEAR(out(0, 0).alpha, 1.0f, 1e-6);  // unclipped, the box would reach outside
    EXPECT_NEAR(out(1, 4).alpha, 1.0f, 1e-6);
    EXPECT_NEAR(out(19, 2).alpha, 0.0f, 1e-6);
}

TEST_F(DofComposite, LayerInTheFocalPlaneIsPointSampled)
{
    worlds.fillLayer(kNearColour, 100.0f, [](A_long x, A_long y) {
        return PF_PixelFloat{(x + y) % 3 == 0 ? 1.0f : 0.25f, x / 20.0f, y / 5.0f, 0.5f};
    });
    scene.info().dof_blur = 50.0;
    ASSERT_EQ(composite(), PF_Err_NONE);
    for (A_long y = 0; y < 5; ++y)
        for (A_long x = 0; x < 20; ++x) {
            SCOPED_TRACE(::testing::Message() << x << "," << y);
            expectColour(out(x, y), worlds.colour(kNearColour, x, y), 1e-6f);
        }
}

// Two uniform layers in focus: the nearer depth, not the world's index, decides which is in
// front; an opaque front hides the back, a half-transparent one is laid over it, and negative
// depths are empty layers (nothing sampled, so a failing sampler gives no error either).
TEST_F(DofComposite, NearerLayerIsLaidOverTheFarther)
{
    const PF_PixelFloat kHalfRed = {0.5f, 1.0f, 0.0f, 0.0f};
    const struct {
        const char* name;
        float near_depth;
        PF_PixelFloat near;
        float far_depth;
        PF_PixelFloat expected;
        float tolerance;
    } cases[] = {
        {"opaque front", 100.0f, kRed, 200.0f, kRed, 1e-6f},
        {"front by depth, not index", 200.0f, kRed, 100.0f, kBlue, 1e-6f},
        {"half-transparent front", 100.0f, kHalfRed, 100.5f, {1.0f, 0.5f, 0.0f, 0.5f}, 1e-5f},
        {"both empty", -1.0f, kRed, -5.0f, kClear, 0.0f},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(c.name);
        worlds.fillLayer(kNearColour, c.near_depth, [&](A_long, A_long) { return c.near; });
        worlds.fillLayer(kFarColour, c.far_depth, [](A_long, A_long) { return kBlue; });
        if (c.near_depth < 0.0f)
            scene.host().faults().fail_every("area_sample_float", PF_Err_INTERNAL_STRUCT_DAMAGED);
        ASSERT_EQ(composite(), PF_Err_NONE);
        scene.host().faults().reset();
        expectColour(out(5, 2), c.expected, c.tolerance);
    }
}

// A failing area sample is returned; a missing sampling suite is returned, not thrown.
TEST_F(DofComposite, ReturnsSamplingErrors)
{
    const struct {
        const char* call;
        PF_Err injected, expected;
    } cases[] = {{"AcquireSuite", PF_Err_OUT_OF_MEMORY, PF_Err_BAD_CALLBACK_PARAM},
                 {"area_sample_float", PF_Err_INTERNAL_STRUCT_DAMAGED, PF_Err_INTERNAL_STRUCT_DAMAGED}};
    for (const auto& c : cases) {
        scene.host().faults().fail_every(c.call, c.injected);
        EXPECT_EQ(composite(), c.expected) << c.call;
        scene.host().faults().reset();
    }
}

// --- Depth pass -------------------------------------------------------------------------------

// Parallel rays along local -y from y = 500 + R, R = 50.5: the corner ray of pixel (x, 1)
// runs at local x = x - 60, z = 0. So column 60 meets the near face at t = 500 and the far
// face at t = 601; column 111 is a third covered; columns from 112 outwards miss, their
// closest approach lying at t = 550.5, (x - 60) - 50.5 pixels from the surface.
template <class Pixel>
class DepthPassScene {
public:
    explicit DepthPassScene(float c = 0.0f) : scene(trace_test::BitsOf<Pixel>::value), worlds(scene, 120, 3)
    {
        scene.setCylinder(kRadius, c);
        scene.setFacingCamera(500.0f, false, 550.5f);
        scene.setImageCenter(60.0f + 5.0f / 6.0f, 1.0f + 5.0f / 6.0f);
        scene.info().dof_blur = 3.0;  // misses within 3 pixels of the silhouette keep a depth
        scene.allocateOutput<Pixel>(120, 3);
    }

    PF_Err depthPass() { return scene.iterate(RayTrace_PixelDepthCallback<Pixel>); }
    PF_Err composite() { return scene.iterate(DofCompositeCallback<Pixel>); }

    static constexpr float kRadius = 50.5f;
    TraceScene scene;
    DofWorlds<Pixel> worlds;
};

TEST(DofDepthPass, KeepsNearAndFarLayersWithTheirDepthsAndNearMissesTheirClosestApproach)
{
    DepthPassScene<PF_PixelFloat> s;
    ASSERT_EQ(s.depthPass(), PF_Err_NONE);
    // The near face looks towards +y (u 0.75), the far one towards -y (u 0.25).
    for (const auto& [which, depth, u] :
         {std::tuple(kNearColour, 500.0f, 0.75f), std::tuple(kFarColour, 601.0f, 0.25f)}) {
        EXPECT_NEAR(s.worlds.depth(which + 2, 60, 1), depth, 1e-3);
        EXPECT_NEAR(s.worlds.colour(which, 60, 1).red, u, 1e-5);
        EXPECT_EQ(s.worlds.colour(which, 60, 1).alpha, 1.0f);
    }

    // A third of pixel 111 is covered (the dx = 1/6 samples, first of them sample 1 at
    // x = 50 1/3): both layers carry that coverage in alpha.
    const double half_chord = std::sqrt(50.5 * 50.5 - (50.0 + 1.0 / 3.0) * (50.0 + 1.0 / 3.0));
    for (const auto& [which, sign] : {std::pair(kNearColour, -1.0), std::pair(kFarColour, 1.0)}) {
        EXPECT_NEAR(s.worlds.depth(which + 2, 111, 1), 550.5 + sign * half_chord, 1e-2);
        EXPECT_NEAR(s.worlds.colour(which, 111, 1).alpha, 1.0f / 3.0f, 1e-6);
    }

    // The last corner ray (dx = 5/6) passes |x - 60| - 50.5 pixels from the surface: kept
    // below 3 (columns 112, 113 and 9, 7), dropped from 3.5 on (114, 6).
    const struct {
        A_long x;
        float depth;
    } cases[] = {{112, 550.5f}, {113, 550.5f}, {114, -1.0f}, {116, -1.0f},
                 {9, 550.5f}, {7, 550.5f}, {6, -1.0f}, {0, -1.0f}};
    for (const auto& c : cases)
        for (int which : {kNearColour, kFarColour}) {
            EXPECT_NEAR(s.worlds.depth(which + 2, c.x, 1), c.depth, 1e-3) << "x " << c.x;
            EXPECT_EQ(s.worlds.colour(which, c.x, 1).alpha, 0.0f) << "x " << c.x;
        }
}

// Outside hides the far layer, Inside the near one: a straight surface drops the hidden
// face's depth, a waisted one keeps it (c = 50.5 keeps the radius at z = 0 unchanged).
TEST(DofDepthPass, HiddenFacesReportDepthOnlyOnAWaistedSurface)
{
    const struct {
        float c;
        short side;
        int hidden, shown;
        float hidden_depth;
    } cases[] = {{0.0f, 3, kFarColour, kNearColour, -1.0f},
                 {0.0f, 2, kNearColour, kFarColour, -1.0f},
                 {50.5f, 3, kFarColour, kNearColour, 601.0f},
                 {50.5f, 2, kNearColour, kFarColour, 500.0f}};
    for (const auto& c : cases) {
        SCOPED_TRACE(::testing::Message() << "c " << c.c << " side " << c.side);
        DepthPassScene<PF_PixelFloat> s(c.c);
        s.scene.info().render_side = c.side;
        ASSERT_EQ(s.depthPass(), PF_Err_NONE);
        EXPECT_EQ(s.worlds.colour(c.hidden, 60, 1).alpha, 0.0f);
        EXPECT_NEAR(s.worlds.depth(c.hidden + 2, 60, 1), c.hidden_depth, 1e-3);
        EXPECT_EQ(s.worlds.colour(c.shown, 60, 1).alpha, 1.0f);
        EXPECT_NEAR(s.worlds.depth(c.shown + 2, 60, 1), c.shown == kNearColour ? 500.0f : 601.0f, 1e-3);
    }
}

// --- Both passes -------------------------------------------------------------------------------

template <class Pixel>
class DofBothPasses : public ::testing::Test {};
using PixelTypes = ::testing::Types<PF_Pixel, PF_Pixel16, PF_PixelFloat>;
TYPED_TEST_SUITE(DofBothPasses, PixelTypes);

// Focused on the near face at column 60 (t = 500): nearby columns lie within 0.1 pixel of the
// focal plane, blur to less than 1/1000 pixel and so reproduce the sharp single pass, whose
// opaque near face hides the far one.
TYPED_TEST(DofBothPasses, FocalPlaneMatchesTheSharpRender)
{
    using Pixel = TypeParam;
    DepthPassScene<Pixel> s;
    s.scene.info().focus_distance = 500.0;
    ASSERT_EQ(s.scene.template render<Pixel>(), PF_Err_NONE);
    std::vector<Pixel> sharp;
    for (A_long x = 57; x <= 63; ++x)
        for (A_long y = 0; y < 3; ++y)
            sharp.push_back(s.scene.template pixel<Pixel>(x, y));

    s.scene.template allocateOutput<Pixel>(120, 3);
    ASSERT_EQ(s.depthPass(), PF_Err_NONE);
    ASSERT_EQ(s.composite(), PF_Err_NONE);
    std::size_t k = 0;
    for (A_long x = 57; x <= 63; ++x)
        for (A_long y = 0; y < 3; ++y, ++k) {
            SCOPED_TRACE(::testing::Message() << x << "," << y);
            expectColour(toFloatPixel(s.scene.template pixel<Pixel>(x, y)), toFloatPixel(sharp[k]),
                         1.0f / PixelTraits<Pixel>::white + 1e-6f);
        }
    EXPECT_NEAR(toFloatPixel(s.scene.template pixel<Pixel>(60, 1)).red, 0.75f, 0.01f);
}

// Focus at 1 and blur scale 3: every layer near depth 550 blurs by r = 3 * 549.5 / 550.5.
// Column 112 misses but keeps depth 550.5; its box [112 - r, 112 + r] (rows 0..2 after
// clipping, all alike) holds r - 2.5 of pixel 109, all of pixel 110 (both opaque in each
// layer) and of pixel 111 (a third covered): alpha a = (r - 2.5 + 1 + 1/3) / (2r) per layer,
// and the far layer seen through the near one gives a + (1 - a) a.
TEST(DofBothPassesBlur, SilhouetteSpreadsOverNearbyMisses)
{
    DepthPassScene<PF_PixelFloat> s;
    s.scene.info().focus_distance = 1.0;
    ASSERT_EQ(s.depthPass(), PF_Err_NONE);
    ASSERT_EQ(s.composite(), PF_Err_NONE);

    const double r = 3.0 * 549.5 / 550.5;
    const double layer = (r - 2.5 + 1.0 + 1.0 / 3.0) / (2.0 * r);
    EXPECT_NEAR(s.scene.pixel<PF_PixelFloat>(112, 1).alpha, layer + (1.0 - layer) * layer, 2e-3);
    EXPECT_GT(s.scene.pixel<PF_PixelFloat>(113, 1).alpha, 0.0f);
    EXPECT_EQ(s.scene.pixel<PF_PixelFloat>(114, 1).alpha, 0.0f);  // too far to keep a depth
    EXPECT_NEAR(s.scene.pixel<PF_PixelFloat>(60, 1).alpha, 1.0f, 1e-5);
}

// Every pixel pass, the sharp one included: a negative thread index writes nothing.
TEST(PixelCallbacks, NegativeThreadIndexWritesNothing)
{
    DepthPassScene<PF_Pixel> s;
    s.worlds.setDepth(kNearDepth, 60, 1, 123.0f);
    const PF_Pixel before = s.scene.pixel<PF_Pixel>(60, 1);
    EXPECT_EQ(RayTrace_PixelCallback<PF_Pixel>(&s.scene.info(), -1, 120 + 60, 360), PF_Err_NONE);
    EXPECT_EQ(RayTrace_PixelDepthCallback<PF_Pixel>(&s.scene.info(), -1, 120 + 60, 360), PF_Err_NONE);
    EXPECT_EQ(DofCompositeCallback<PF_Pixel>(&s.scene.info(), -1, 120 + 60, 360), PF_Err_NONE);
    EXPECT_EQ(s.worlds.depth(kNearDepth, 60, 1), 123.0f);
    const PF_Pixel after = s.scene.pixel<PF_Pixel>(60, 1);
    EXPECT_EQ(std::memcmp(&before, &after, sizeof before), 0);
}

TEST(CircleOfConfusion, GrowsFromZeroAtFocusTowardsTheBlurScale)
{
    EXPECT_NEAR(circleOfConfusion(100.0, 100.0, 3.0), 3.0 * 1e-5 / 100.0, 1e-9);
    EXPECT_DOUBLE_EQ(circleOfConfusion(300.0, 100.0, 3.0), 2.0);
    EXPECT_DOUBLE_EQ(circleOfConfusion(0.0, 100.0, 3.0), 1.5);  // |z - F| = F: half way
    EXPECT_NEAR(circleOfConfusion(1e9, 1.0, 3.0), 3.0, 1e-8);
}

}  // namespace
