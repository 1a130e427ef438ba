// Frames rendered at the same time by two host threads on one loaded module, each frame's
// pixels spread over several iteration threads: every frame must come out exactly as when it
// is rendered alone, and nothing may be left behind. Meant to run under ThreadSanitizer too.

#include <gtest/gtest.h>

#include <thread>
#include <vector>

#include "support/RawPixels.h"
#include "reliability/TestScene.h"
#include "shell/ParamIds.h"

namespace reliability {
namespace {

constexpr int kIterationThreads = 4;
constexpr int kRepeats = 3;

struct Frame {
    double seconds;
    short depth;
};

host::RenderResult renderAlone(host::Host& host, const Frame& frame) {
    host::RenderRequest request;
    request.seconds = frame.seconds;
    request.bitdepth = frame.depth;
    return host.render(request);
}

class ConcurrentFrames : public ::testing::TestWithParam<bool> {
protected:
    static host::HostOptions threaded() {
        host::HostOptions options;
        options.threads = kIterationThreads;
        return options;
    }

    void SetUp() override {
        session.host().load(ORBIVANE_MODULE_PATH);
        session.chooseLayers();
        session.host().set_param(PARAM_CONTROL_LAYER, host::ParamValue::layer(session.layers().control));
        ASSERT_EQ(session.host().user_changed_param(PARAM_CONTROL_LAYER), PF_Err_NONE);
        session.setDepthOfField(GetParam());
    }

    Session session{threaded()};
};

TEST_P(ConcurrentFrames, TwoHostThreadsRenderTheSameFramesAsOneAlone) {
    host::Host& host = session.host();
    // Each thread renders a different time and depth, so their records, lights, worlds and
    // sample tables differ while they run side by side.
    const std::vector<std::vector<Frame>> per_thread = {{{0.2, 8}, {0.6, 32}, {1.0, 16}},
                                                        {{1.4, 32}, {0.8, 16}, {0.0, 8}}};
    std::vector<std::vector<std::vector<host::RGBA>>> expected(per_thread.size());
    for (std::size_t t = 0; t < per_thread.size(); ++t) {
        for (const Frame& frame : per_thread[t]) {
            const host::RenderResult alone = renderAlone(host, frame);
            ASSERT_EQ(alone.err, PF_Err_NONE);
            expected[t].push_back(test_support::rawChannels(alone).pixels());
            ASSERT_FALSE(expected[t].back().empty());
        }
    }

    std::vector<std::vector<std::string>> mismatches(per_thread.size());
    std::vector<std::thread> threads;
    for (std::size_t t = 0; t < per_thread.size(); ++t) {
        threads.emplace_back([&, t] {
            for (int repeat = 0; repeat < kRepeats; ++repeat) {
                for (std::size_t f = 0; f < per_thread[t].size(); ++f) {
                    const host::RenderResult result = renderAlone(host, per_thread[t][f]);
                    if (result.err != PF_Err_NONE || test_support::rawChannels(result).pixels() != expected[t][f]) {
                        mismatches[t].push_back("thread " + std::to_string(t) + " frame " + std::to_string(f) +
                                                " error " + std::to_string(result.err));
                    }
                }
            }
        });
    }
    for (std::thread& thread : threads) thread.join();
    for (const auto& list : mismatches)
        for (const std::string& m : list) ADD_FAILURE() << m << ": differs from the frame rendered alone";

    EXPECT_EQ(host.unload(), "");
}

TEST_P(ConcurrentFrames, ACancelOnOneThreadLeavesTheOtherFramesIntact) {
    host::Host& host = session.host();
    const Frame frame{0.5, 32};
    const host::Image expected = test_support::rawChannels(renderAlone(host, frame));
    // The cancel switch is host-wide: renders that start while it is on are cancelled, renders
    // after it is off must be complete again, and all of them give everything back.
    std::thread other([&] {
        for (int repeat = 0; repeat < kRepeats; ++repeat) {
            const host::RenderResult r = renderAlone(host, frame);
            EXPECT_TRUE(r.err == PF_Err_NONE || r.err == PF_Interrupt_CANCEL) << r.err;
        }
    });
    host.faults().set_cancel(true);
    const host::RenderResult cancelled = renderAlone(host, frame);
    host.faults().set_cancel(false);
    other.join();
    EXPECT_EQ(cancelled.err, PF_Interrupt_CANCEL);
    EXPECT_FALSE(cancelled.rendered);
    const host::RenderResult after = renderAlone(host, frame);
    EXPECT_EQ(after.err, PF_Err_NONE);
    EXPECT_TRUE(test_support::rawChannels(after).pixels() == expected.pixels());
    EXPECT_EQ(host.unload(), "");
}

INSTANTIATE_TEST_SUITE_P(DepthOfField, ConcurrentFrames, ::testing::Bool(),
                         [](const ::testing::TestParamInfo<bool>& info) {
                             return info.param ? std::string("On") : std::string("Off");
                         });

}  // namespace
}  // namespace reliability
