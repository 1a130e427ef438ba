#pragma once
// Checks that orbivane-render refuses a bad input: the expected exit status, a message on
// stderr naming the problem, nothing on stdout and nothing left in the output folder.

#include <gtest/gtest.h>

#include <string>
#include <utility>
#include <vector>

#include "CliRunner.h"
#include "SmallScene.h"

namespace clitest {

struct BadCase {
    const char* what;
    std::vector<std::string> args;
    int exit_code;
    std::vector<std::string> message_parts;
};

// Runs `c` in a folder holding the small scene as small.json (plus `files`) and checks status,
// message and that no file was added. Returns the run for further checks.
inline CliRun expectRefused(const BadCase& c, const std::vector<std::pair<std::string, std::string>>& files = {}) {
    TempFolder dir;
    dir.write("small.json", smallScene());
    for (const auto& f : files) dir.write(f.first, f.second);
    const std::set<std::string> before = dir.files();
    CliRun run = runCli(dir, c.args);
    EXPECT_EQ(run.exit_code, c.exit_code) << c.what << "\n" << run.err;
    EXPECT_EQ(run.out, "") << c.what;
    for (const std::string& part : c.message_parts)
        EXPECT_NE(run.err.find(part), std::string::npos) << c.what << ": no \"" << part << "\" in\n" << run.err;
    EXPECT_EQ(run.err.rfind("orbivane-render: ", 0), 0u) << c.what << "\n" << run.err;
    EXPECT_EQ(dir.files(), before) << c.what;
    return run;
}

}  // namespace clitest
