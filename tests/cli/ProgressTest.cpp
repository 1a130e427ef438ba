#include <gtest/gtest.h>

#include "cli/CallTable.h"
#include "cli/OutputWriter.h"
#include "cli/Progress.h"

namespace {

TEST(Timing, ClockTimeShowsHoursOnlyWhenNeeded) {
    EXPECT_EQ(cli::clockTime(0), "0:00");
    EXPECT_EQ(cli::clockTime(62.4), "1:02");
    EXPECT_EQ(cli::clockTime(59.6), "1:00");
    EXPECT_EQ(cli::clockTime(3600 * 12 + 5), "12:00:05");
    EXPECT_EQ(cli::clockTime(-3), "0:00");
}

TEST(Timing, SummaryNamesTheFastestAndSlowestFrames) {
    EXPECT_EQ(cli::timingSummary({}), "");
    EXPECT_EQ(cli::timingSummary({{7, 0.5}}), "1 frame in 0.50 s");
    EXPECT_EQ(cli::timingSummary({{10, 0.5}, {11, 0.25}, {12, 0.75}}),
              "3 frames in 1.50 s: 0.50 s per frame (min 0.25 s frame 11, max 0.75 s frame 12)");
}

TEST(Timing, ProgressLineEstimatesTheTimeLeftFromTheFramesDone) {
    EXPECT_EQ(cli::progressLine(0, 48, 0, 0.2), "[ 0/48]   0%  frame 0  elapsed 0:00");
    // 12 of 48 done in 30 s: 36 left at 2.5 s each.
    EXPECT_EQ(cli::progressLine(12, 48, 12, 30), "[12/48]  25%  frame 12  elapsed 0:30  left 1:30");
}

// A function After Effects refuses on render threads is marked on its row and named at the end.
TEST(HostCallTable, MarksAndNamesTheCallsAfterEffectsRefuses) {
    host::RenderCallLog log;
    log.render = {{"AEGP_DisposeStream", 2, 0, true}, {"checkout_output", 1, 0, false}};
    EXPECT_EQ(cli::formatCallTable(log, 1),
              "  host calls over 1 frame    pre-render        render\n"
              "  AEGP_DisposeStream                  0             2  refused by After Effects on render threads\n"
              "  checkout_output                     0             1\n"
              "1 refused by After Effects 13.5+ on render threads: AEGP_DisposeStream\n");
}

TEST(Flatten, CompositesStraightColourOverTheBackground) {
    host::Image frame(2, 1);
    frame.at(0, 0) = host::RGBA{1.0f, 0.5f, 0.0f, 0.25f};
    frame.at(1, 0) = host::RGBA{0.2f, 0.4f, 0.6f, 1.0f};
    cli::flattenOver(frame, host::RGBA{0.0f, 0.0f, 1.0f, 1.0f});
    EXPECT_FLOAT_EQ(frame.at(0, 0).r, 0.25f);
    EXPECT_FLOAT_EQ(frame.at(0, 0).g, 0.125f);
    EXPECT_FLOAT_EQ(frame.at(0, 0).b, 0.75f);
    EXPECT_FLOAT_EQ(frame.at(0, 0).a, 1.0f);
    EXPECT_FLOAT_EQ(frame.at(1, 0).b, 0.6f);  // opaque pixels keep their colour
}

}  // namespace
