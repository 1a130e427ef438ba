// Every slider at both ends of its valid range, at 32 bits, over the example scenes: a valid
// value never puts NaN or infinity into the output. The sweep renders at quarter resolution to
// stay quick; faults that sit on a single full-resolution pixel have their own rows below.

#include <gtest/gtest.h>

#include <algorithm>
#include <filesystem>
#include <string>
#include <vector>

#include "host/session/Session.h"
#include "support/RawPixels.h"

namespace reliability {
namespace {

constexpr double kFixedOne = 65536.0;
constexpr short kFloatDepth = 32;
constexpr int kSweepDownsample = 4;

host::HostOptions renderOptions() {
    host::HostOptions options;
    options.threads = 2;
    return options;
}

std::vector<std::string> exampleScenes() {
    std::vector<std::string> scenes;
    for (const auto& entry : std::filesystem::directory_iterator(ORBIVANE_SOURCE_DIR "/examples"))
        if (entry.path().extension() == ".json") scenes.push_back(entry.path().string());
    std::sort(scenes.begin(), scenes.end());
    return scenes;
}

// The two ends of a slider's valid range in user units; empty for other parameters.
std::vector<double> validEnds(const PF_ParamDef& def) {
    if (def.param_type == PF_Param_FIX_SLIDER) return {def.u.fd.valid_min / kFixedOne, def.u.fd.valid_max / kFixedOne};
    if (def.param_type == PF_Param_SLIDER) return {double(def.u.sd.valid_min), double(def.u.sd.valid_max)};
    return {};
}

// "scene: Name=value: N channels" for every value that leaves NaN or infinity in the output.
std::vector<std::string> sweepScene(const std::string& scene) {
    host::Session session(scene, ORBIVANE_MODULE_PATH, renderOptions());
    host::Host& host = session.host();
    const double t = session.times().front();
    std::vector<std::string> failures;
    for (PF_ParamIndex i = 1; i < host.num_params(); ++i) {
        const PF_ParamDef& def = host.param_def(i);
        const host::ParamValue scene_value = host.param_value(i, t);
        for (double end : validEnds(def)) {
            host.set_param(i, host::ParamValue::number(end));
            const host::RenderResult result = session.render(t, kFloatDepth, kSweepDownsample);
            const std::size_t bad = test_support::nonFiniteChannels(test_support::rawChannels(result));
            if (result.err != PF_Err_NONE || bad != 0)
                failures.push_back(std::filesystem::path(scene).filename().string() + ": " + std::string(def.PF_DEF_NAME) + "=" +
                                   std::to_string(end) + ": error " + std::to_string(result.err) + ", " +
                                   std::to_string(bad) + " non-finite channels");
        }
        if (!validEnds(def).empty()) host.set_param(i, scene_value);
    }
    return failures;
}

TEST(SliderExtremes, EveryEndOfEverySliderRendersFiniteOverTheExamples) {
    std::vector<std::string> failures;
    for (const std::string& scene : exampleScenes()) {
        const std::vector<std::string> found = sweepScene(scene);
        failures.insert(failures.end(), found.begin(), found.end());
    }
    std::string shown;
    for (const std::string& f : failures) shown += f + "\n";
    EXPECT_TRUE(failures.empty()) << shown;
}

// Roughness 0 makes the highlight exponent about 1.6e16; one full-resolution pixel of the
// reflection example has a mirrored light direction whose cosine rounds just past 1.
TEST(SliderExtremes, SharpestHighlightStaysFiniteAtFullResolution) {
    host::Session session(ORBIVANE_SOURCE_DIR "/examples/reflection.json", ORBIVANE_MODULE_PATH, renderOptions());
    session.set("Roughness", 0.0);
    const host::RenderResult result = session.render(session.times().front(), kFloatDepth, 1);
    ASSERT_EQ(result.err, PF_Err_NONE);
    EXPECT_EQ(test_support::nonFiniteChannels(test_support::rawChannels(result)), 0u);
}

}  // namespace
}  // namespace reliability
