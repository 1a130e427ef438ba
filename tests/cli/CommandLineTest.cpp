#include <gtest/gtest.h>

#include "cli/CliError.h"
#include "cli/ModuleLocator.h"
#include "cli/Options.h"
#include "cli/ParamOverride.h"
#include "host/comp/ParamText.h"
#include "support/TempFolder.h"

#include <tuple>
#include <vector>

namespace {

using Kind = host::SceneValue::Kind;

cli::ParsedCommandLine parse(std::vector<const char*> args) {
    args.insert(args.begin(), "orbivane-render");
    return cli::parseCommandLine(static_cast<int>(args.size()), args.data());
}

TEST(FrameRangeText, AcceptsOneFrameOrAnInclusiveRange) {
    for (const auto& [text, first, last] : {std::tuple{"12", 12, 12}, std::tuple{"0-47", 0, 47}}) {
        const cli::FrameRange r = cli::parseFrameRange(text);
        EXPECT_EQ(r.first, first) << text;
        EXPECT_EQ(r.last, last) << text;
    }
    for (const char* bad : {"", "-", "3-", "-3", "a-b", "5-2", "1.5", "1-2-3", " 4", "9999999999"})
        EXPECT_THROW(cli::parseFrameRange(bad), cli::CliError) << '"' << bad << '"';
}

TEST(CommandLine, ReadsEveryOption) {
    cli::ParsedCommandLine p = parse({"scene.json", "-o", "out.####.png", "--frames", "3-9", "-b", "16", "-d", "2",
                                      "-j", "3", "--set", "Open Parameter=0.5", "--set", "Render Side=Inside",
                                      "--module", "/m.so", "--quiet", "--flatten", "--png-compression", "small",
                                      "--exr-compression", "piz"});
    ASSERT_FALSE(p.finished);
    const cli::Options& o = p.options;
    ASSERT_TRUE(o.frames && o.bit_depth && o.downsample);
    EXPECT_EQ(std::tie(o.scene, o.output, o.frames->first, o.frames->last, *o.bit_depth, *o.downsample, o.threads),
              std::make_tuple("scene.json", "out.####.png", 3, 9, 16, 2, 3));
    EXPECT_EQ(o.overrides, (std::vector<std::string>{"Open Parameter=0.5", "Render Side=Inside"}));
    EXPECT_EQ(std::tie(o.module, o.quiet, o.flatten, o.png_level, o.png_up_filter, o.exr_compression),
              std::make_tuple("/m.so", true, true, 9, false, "piz"));
    EXPECT_FALSE(o.time);
}

TEST(CommandLine, UsageMistakesFinishWithTheBadInputStatus) {
    for (auto args : std::vector<std::vector<const char*>>{{"-b", "12"},
                                                           {"-d", "0"},
                                                           {"--frames", "4-2"},
                                                           {"--frame", "1-3"},
                                                           {"--frame", "2", "--frames", "1-3"},
                                                           {"--time", "1", "--frame", "2"},
                                                           {"--no-such-option"},
                                                           {"--png-compression", "10"},
                                                           {"--exr-compression", "dwaa"},
                                                           {"a.json", "b.json"}}) {
        cli::ParsedCommandLine p = parse(args);
        EXPECT_TRUE(p.finished) << args[0];
        EXPECT_EQ(p.exit_code, cli::kExitBadInput) << args[0];
    }
    cli::ParsedCommandLine help = parse({"--help"});
    EXPECT_TRUE(help.finished);
    EXPECT_EQ(help.exit_code, 0);
}

TEST(OverrideValues, ReadLikeTheSceneFilesJson) {
    struct Row {
        const char* text;
        Kind kind;
        std::vector<double> numbers;  // one for a number
    };
    const Row rows[] = {{" 0.5 ", Kind::Number, {0.5}},          {"-1e2", Kind::Number, {-100}},
                        {"On", Kind::Number, {1}},               {"false", Kind::Number, {0}},
                        {"None", Kind::None, {}},                {"200, 220,255", Kind::Numbers, {200, 220, 255}},
                        {"[320, 180]", Kind::Numbers, {320, 180}}};
    for (const Row& row : rows) {
        const host::SceneValue v = host::parseParamText(row.text);
        EXPECT_EQ(v.kind, row.kind) << row.text;
        if (row.kind == Kind::Number) {
            EXPECT_DOUBLE_EQ(v.number, row.numbers[0]) << row.text;
        }
        if (row.kind == Kind::Numbers) {
            EXPECT_EQ(v.numbers, row.numbers) << row.text;
        }
    }
    // Not numbers after all: kept as text for popups and layer names.
    for (const char* text : {"Both Sides", "1,2,3,4", "1,x", "nan", "12px", "Layer 1"}) {
        const host::SceneValue v = host::parseParamText(text);
        EXPECT_EQ(v.kind, Kind::Text) << text;
        EXPECT_EQ(v.text, text);
    }
}

TEST(OverrideArguments, SplitAtTheFirstEqualsAndReplaceTheScenesValue) {
    host::SceneParameter p = cli::parseOverride("Fog Color = 1,2,3");
    EXPECT_EQ(p.name, "Fog Color");
    EXPECT_EQ(p.path, "--set Fog Color");
    EXPECT_EQ(p.value.numbers.size(), 3u);
    EXPECT_EQ(cli::parseOverride("Texture=a=b").value.text, "a=b");
    EXPECT_THROW(cli::parseOverride("Open Parameter"), cli::CliError);
    EXPECT_THROW(cli::parseOverride("=3"), cli::CliError);
    EXPECT_THROW(cli::parseOverride("Open Parameter= "), cli::CliError);

    std::vector<host::SceneParameter> params(2);
    params[0].name = "Open Parameter";
    params[0].keys.push_back({0.0, host::parseParamText("0")});
    params[1].name = "Screw";
    cli::applyOverrides({"Open Parameter=1.5"}, params);
    ASSERT_EQ(params.size(), 2u);
    EXPECT_EQ(params[0].name, "Screw");
    EXPECT_EQ(params[1].name, "Open Parameter");
    EXPECT_FALSE(params[1].animated());  // the keyframes went with the scene's value
    EXPECT_DOUBLE_EQ(params[1].value.number, 1.5);
}

// An explicit --module is used as given or refused, never replaced; the environment comes
// next; then the program's folder, its parent, the installed layout and the build.
TEST(ModuleSearch, ExplicitChoicesFirstThenTheProgramsFolderItsParentTheInstalledLayoutAndTheBuild) {
    test_support::TempFolder root;
    auto touch = [&](const std::string& name) {
        root.write(name, "x");
        return (root / name).string();
    };
    std::filesystem::create_directories(root / "bin");
    cli::ModuleSearch s;
    s.program_dir = (root / "bin").string();
    s.built_path = touch("built.so");
    s.explicit_path = (root / "missing.so").string();
    s.environment = touch("env.so");
    try {
        cli::locateModule(s);
        FAIL() << "a missing --module fell back to another module";
    } catch (const cli::CliError& e) {
        EXPECT_EQ(e.code(), cli::kExitModuleFailed);
        EXPECT_NE(std::string(e.what()).find("missing.so"), std::string::npos);
    }
    s.explicit_path.clear();
    EXPECT_EQ(cli::locateModule(s), (root / "env.so").string());
    s.environment.clear();
    EXPECT_EQ(cli::locateModule(s), (root / "built.so").string());
    for (const char* found : {"lib/orbivane/Orbivane.so", "Orbivane.so", "bin/Orbivane.so"}) {
        const std::string path = touch(found);
        EXPECT_EQ(cli::locateModule(s), path);
    }
    for (const std::string& name : root.files()) std::filesystem::remove(root / name);
    EXPECT_THROW(cli::locateModule(s), cli::CliError);
}

}  // namespace
