#pragma once
// Runs orbivane-render as a separate process in a fresh temporary folder and collects its exit
// status and output.

#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <set>
#include <sstream>
#include <string>
#include <sys/wait.h>
#include <vector>

namespace clitest {

struct CliRun {
    int exit_code = -1;
    std::string out;  // stdout
    std::string err;  // stderr
};

class TempFolder {
public:
    TempFolder() {
        std::string pattern = (std::filesystem::temp_directory_path() / "orbivane-cli-XXXXXX").string();
        path_ = mkdtemp(pattern.data());
    }
    ~TempFolder() {
        std::error_code ec;
        std::filesystem::remove_all(path_, ec);
    }
    TempFolder(const TempFolder&) = delete;
    TempFolder& operator=(const TempFolder&) = delete;

    const std::filesystem::path& path() const { return path_; }
    std::filesystem::path operator/(const std::string& name) const { return path_ / name; }

    void write(const std::string& name, const std::string& text) const {
        std::filesystem::create_directories((path_ / name).parent_path());
        std::ofstream(path_ / name) << text;
    }
    // Every file below the folder, relative to it.
    std::set<std::string> files() const {
        std::set<std::string> out;
        for (const auto& entry : std::filesystem::recursive_directory_iterator(path_))
            if (entry.is_regular_file()) out.insert(std::filesystem::relative(entry.path(), path_).string());
        return out;
    }

private:
    std::filesystem::path path_;
};

inline std::string quoted(const std::string& s) {
    std::string q = "'";
    for (char c : s) q += c == '\'' ? std::string("'\\''") : std::string(1, c);
    return q + "'";
}

inline std::string slurp(const std::filesystem::path& path) {
    std::ifstream in(path);
    std::stringstream s;
    s << in.rdbuf();
    return s.str();
}

// Runs the program in `folder` with `args`; `env` is prefixed as "NAME=value ..." (may be
// empty). Output goes to files outside the folder so they do not count as left-behind files.
inline CliRun runCli(const TempFolder& folder, const std::vector<std::string>& args, const std::string& env = "") {
    static int counter = 0;
    const std::string base = folder.path().string() + ".run" + std::to_string(++counter);
    std::string command = "cd " + quoted(folder.path().string()) + " && env -u ORBIVANE_MODULE " + env + " " +
                          quoted(ORBIVANE_RENDER_PATH);
    for (const std::string& a : args) command += " " + quoted(a);
    command += " >" + quoted(base + ".out") + " 2>" + quoted(base + ".err") + " </dev/null";
    const int status = std::system(command.c_str());
    CliRun run;
    run.exit_code = WIFEXITED(status) ? WEXITSTATUS(status) : -1;
    run.out = slurp(base + ".out");
    run.err = slurp(base + ".err");
    std::filesystem::remove(base + ".out");
    std::filesystem::remove(base + ".err");
    return run;
}

}  // namespace clitest
