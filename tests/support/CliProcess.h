#pragma once
// Runs orbivane-render (ORBIVANE_RENDER_PATH) as a separate process in a temporary folder and
// collects its exit status and output; a small scene to give it; and the check of a refusal.

#include <gtest/gtest.h>

#include <algorithm>
#include <string>
#include <sys/wait.h>
#include <utility>
#include <vector>

#include "support/TempFolder.h"

namespace test_support {

struct CliRun {
    int exit_code = -1;
    std::string out;  // stdout
    std::string err;  // stderr
};

inline bool contains(const std::string& text, const std::string& part) { return text.find(part) != std::string::npos; }

inline std::string shellQuoted(const std::string& s) {
    std::string q = "'";
    for (char c : s) q += c == '\'' ? std::string("'\\''") : std::string(1, c);
    return q + "'";
}

// Runs the program in `folder` with `args`; `env` is prefixed as "NAME=value ..." (may be
// empty). Output goes to files outside the folder so they do not count as left-behind files.
inline CliRun runCli(const TempFolder& folder, const std::vector<std::string>& args, const std::string& env = "") {
    static int counter = 0;
    const std::string base = folder.path().string() + ".run" + std::to_string(++counter);
    std::string command = "cd " + shellQuoted(folder.path().string()) + " && env -u ORBIVANE_MODULE " + env + " " +
                          shellQuoted(ORBIVANE_RENDER_PATH);
    for (const std::string& a : args) command += " " + shellQuoted(a);
    command += " >" + shellQuoted(base + ".out") + " 2>" + shellQuoted(base + ".err") + " </dev/null";
    const int status = std::system(command.c_str());
    CliRun run;
    run.exit_code = WIFEXITED(status) ? WEXITSTATUS(status) : -1;
    run.out = slurp(base + ".out");
    run.err = slurp(base + ".err");
    std::filesystem::remove(base + ".out");
    std::filesystem::remove(base + ".err");
    return run;
}

// A scene small enough to render in a blink: a checkerboard wrapped on the surface, 10 fps for
// one second (frames 0-9), 64 x 48 pixels.
inline std::string smallScene(const std::string& extra_params = "", const std::string& render = "{\"time\": 0}") {
    return R"({
  "composition": {"width": 64, "height": 48, "frame_rate": 10, "duration": 1},
  "layers": [
    {"name": "Checker", "type": "footage", "video": false,
     "source": {"generate": "checkerboard", "width": 64, "height": 32, "cell": 8,
                "color": [255, 200, 0], "color2": [0, 60, 255]}},
    {"name": "Surface", "type": "solid", "source": {"width": 64, "height": 48},
     "effect": {"parameters": {"Texture": "Checker")" +
           extra_params + R"(}}}
  ],
  "render": )" + render + "\n}\n";
}

using Files = std::vector<std::pair<std::string, std::string>>;

// A bad input orbivane-render must refuse: run in a folder holding the small scene as
// small.json plus `files`.
struct Refusal {
    const char* what;
    std::vector<std::string> args;
    int exit_code;
    std::vector<std::string> message_parts;
    Files files = {};
};

// The expected status, one line on stderr naming the problem (a usage mistake may add the
// pointer to --help), nothing on stdout and no file added to the folder.
inline void expectRefused(const Refusal& c) {
    TempFolder dir;
    dir.write("small.json", smallScene());
    for (const auto& f : c.files) dir.write(f.first, f.second);
    const std::set<std::string> before = dir.files();
    const CliRun run = runCli(dir, c.args);
    EXPECT_EQ(run.exit_code, c.exit_code) << c.what << "\n" << run.err;
    EXPECT_EQ(run.out, "") << c.what;
    for (const std::string& part : c.message_parts)
        EXPECT_TRUE(contains(run.err, part)) << c.what << ": no \"" << part << "\" in\n" << run.err;
    EXPECT_EQ(run.err.rfind("orbivane-render: ", 0), 0u) << c.what << "\n" << run.err;
    const std::string message = run.err.substr(0, run.err.find("(see orbivane-render --help)"));
    EXPECT_EQ(std::count(message.begin(), message.end(), '\n'), 1) << c.what << "\n" << run.err;
    EXPECT_EQ(dir.files(), before) << c.what;
}

}  // namespace test_support
