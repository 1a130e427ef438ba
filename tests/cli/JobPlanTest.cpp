#include <gtest/gtest.h>

#include <climits>

#include "cli/CliError.h"
#include "cli/JobPlan.h"

namespace {

using cli::CliError;
using cli::JobPlan;
using cli::Options;
using cli::SceneTiming;

// 10 fps for 2 seconds: frames 0-19; the scene itself asks for one frame at 0.5 s.
SceneTiming tenFpsTwoSeconds() {
    SceneTiming t;
    t.frame_rate = 10;
    t.duration = 2;
    t.time = 0.5;
    return t;
}

// The last run of hashes becomes the zero-padded frame number; default names follow the bit
// depth and the frame count.
TEST(FramePattern, ExpandsTheLastRunOfHashesAndNamesByDepth) {
    const std::pair<std::string, std::string> expansions[] = {
        {cli::expandFramePattern("out.####.png", 7), "out.0007.png"},
        {cli::expandFramePattern("out.#.png", 7), "out.7.png"},
        {cli::expandFramePattern("out.##.png", 12345), "out.12345.png"},  // never truncated
        {cli::expandFramePattern("take#2/f.###.png", 4), "take#2/f.004.png"},
        {cli::expandFramePattern("still.png", 4), "still.png"},
        {cli::defaultOutputName("orbit", 8, false), "orbit.png"},
        {cli::defaultOutputName("orbit", 16, true), "orbit.####.png"},
        {cli::defaultOutputName("orbit", 32, false), "orbit.exr"}};
    for (const auto& [got, expected] : expansions) EXPECT_EQ(got, expected);
    EXPECT_TRUE(cli::hasFramePattern("a.#.png"));
    EXPECT_FALSE(cli::hasFramePattern("a.png"));
}

TEST(JobPlanning, SceneTimeGivesOneFrameNumberedByItsTime) {
    JobPlan plan = cli::planJobs(tenFpsTwoSeconds(), Options{}, "orbit");
    ASSERT_EQ(plan.jobs.size(), 1u);
    EXPECT_EQ(plan.jobs[0].frame, 5);  // 0.5 s × 10 fps
    EXPECT_DOUBLE_EQ(plan.jobs[0].seconds, 0.5);
    EXPECT_EQ(plan.jobs[0].path, "orbit.png");
}

TEST(JobPlanning, RangeFromTheCommandLineReplacesTheScenesChoice) {
    Options o;
    o.frames = cli::FrameRange{3, 5};
    o.output = "r/f.####.png";
    JobPlan plan = cli::planJobs(tenFpsTwoSeconds(), o, "orbit");
    ASSERT_EQ(plan.jobs.size(), 3u);
    EXPECT_EQ(plan.jobs[0].path, "r/f.0003.png");
    EXPECT_EQ(plan.jobs[2].path, "r/f.0005.png");
    EXPECT_DOUBLE_EQ(plan.jobs[1].seconds, 0.4);
}

TEST(JobPlanning, ScenesOwnRangeAndSettingsApplyUnlessOverridden) {
    SceneTiming t = tenFpsTwoSeconds();
    t.has_frames = true;
    t.first_frame = 18;
    t.last_frame = 19;
    t.bit_depth = 16;
    t.downsample = 2;
    JobPlan plan = cli::planJobs(t, Options{}, "orbit");
    ASSERT_EQ(plan.jobs.size(), 2u);
    EXPECT_EQ(plan.jobs[1].path, "orbit.0019.png");
    EXPECT_EQ(plan.bit_depth, 16);
    EXPECT_EQ(plan.downsample, 2);

    Options o;
    o.bit_depth = 32;
    o.downsample = 1;
    plan = cli::planJobs(t, o, "orbit");
    EXPECT_EQ(plan.jobs[0].path, "orbit.0018.exr");
    EXPECT_EQ(plan.downsample, 1);
}

TEST(JobPlanning, TimeOptionRendersOneFrameAtThatTime) {
    Options o;
    o.time = 1.25;
    JobPlan plan = cli::planJobs(tenFpsTwoSeconds(), o, "orbit");
    ASSERT_EQ(plan.jobs.size(), 1u);
    EXPECT_DOUBLE_EQ(plan.jobs[0].seconds, 1.25);
    EXPECT_EQ(plan.jobs[0].frame, 13);  // 12.5 rounds away from zero
}

TEST(JobPlanning, RefusesFramesOutsideTheComposition) {
    Options o;
    o.frames = cli::FrameRange{19, 20};  // 20 starts at 2.0 s, the end
    o.output = "f.####.png";
    try {
        cli::planJobs(tenFpsTwoSeconds(), o, "orbit");
        FAIL() << "frame 20 accepted";
    } catch (const CliError& e) {
        EXPECT_EQ(e.code(), cli::kExitBadInput);
        EXPECT_NE(std::string(e.what()).find("frames 0-19"), std::string::npos) << e.what();
    }
    Options late;
    late.time = 2.0;
    EXPECT_THROW(cli::planJobs(tenFpsTwoSeconds(), late, "orbit"), CliError);
    late.time = -0.1;
    EXPECT_THROW(cli::planJobs(tenFpsTwoSeconds(), late, "orbit"), CliError);
}

TEST(JobPlanning, FractionalDurationKeepsItsPartialLastFrame) {
    SceneTiming t = tenFpsTwoSeconds();
    t.duration = 1.05;  // frames 0-10: frame 10 starts at 1.0 s, inside
    Options o;
    o.frames = cli::FrameRange{10, 10};
    EXPECT_EQ(cli::planJobs(t, o, "x").jobs.size(), 1u);
    o.frames = cli::FrameRange{11, 11};
    EXPECT_THROW(cli::planJobs(t, o, "x"), CliError);
}

// Frame counts and numbers beyond an int saturate rather than overflow the conversion (the
// sanitizer build checks float-to-int conversions).
TEST(JobPlanning, FrameArithmeticBeyondAnIntSaturates) {
    SceneTiming endless = tenFpsTwoSeconds();
    endless.frame_rate = 1e7;
    endless.duration = 1e9;
    Options one;
    one.frames = cli::FrameRange{5, 5};
    EXPECT_EQ(cli::planJobs(endless, one, "x").jobs.at(0).frame, 5);
    Options late;
    late.time = 5e8;
    EXPECT_EQ(cli::planJobs(endless, late, "x").jobs.at(0).frame, INT_MAX);
}

TEST(JobPlanning, SeveralFramesNeedAPattern) {
    Options o;
    o.frames = cli::FrameRange{0, 1};
    o.output = "still.png";
    try {
        cli::planJobs(tenFpsTwoSeconds(), o, "orbit");
        FAIL();
    } catch (const CliError& e) {
        EXPECT_NE(std::string(e.what()).find("####"), std::string::npos) << e.what();
    }
    o.frames = cli::FrameRange{1, 1};  // one frame of a range: a plain name is fine
    EXPECT_EQ(cli::planJobs(tenFpsTwoSeconds(), o, "orbit").jobs[0].path, "still.png");
}

TEST(JobPlanning, ExtensionMustMatchTheBitDepth) {
    struct Row {
        const char* output;
        int bit_depth;
        bool accepted;
    };
    for (const Row& row : {Row{"a.exr", 8, false}, Row{"a.exr", 32, true}, Row{"a.png", 32, false},
                           Row{"a.PNG", 16, true},
                           Row{"dir.v2/frame", 16, false}}) {  // no extension: the dot belongs to the folder
        Options o;
        o.output = row.output;
        o.bit_depth = row.bit_depth;
        bool accepted = true;
        try {
            cli::planJobs(tenFpsTwoSeconds(), o, "x");
        } catch (const CliError&) {
            accepted = false;
        }
        EXPECT_EQ(accepted, row.accepted) << row.output << " at " << row.bit_depth << " bits";
    }
}

}  // namespace
