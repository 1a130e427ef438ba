#pragma once
// A fresh temporary folder, removed with everything in it when the test is done.

#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <set>
#include <sstream>
#include <string>

namespace test_support {

class TempFolder {
public:
    TempFolder() {
        std::string pattern = (std::filesystem::temp_directory_path() / "orbivane-test-XXXXXX").string();
        path_ = ::mkdtemp(pattern.data());
    }
    ~TempFolder() {
        std::error_code ec;
        std::filesystem::remove_all(path_, ec);
    }
    TempFolder(const TempFolder&) = delete;
    TempFolder& operator=(const TempFolder&) = delete;

    const std::filesystem::path& path() const { return path_; }
    std::filesystem::path operator/(const std::string& name) const { return path_ / name; }

    // Writes `text` to `name` below the folder, making the folders on the way.
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

inline std::string slurp(const std::filesystem::path& path) {
    std::ifstream in(path);
    std::stringstream s;
    s << in.rdbuf();
    return s.str();
}

}  // namespace test_support
