#pragma once
// Writing a file all or nothing: the bytes go to a temporary file beside the target, every
// write, the flush to the disk and the close are checked, and only a complete file is renamed
// to the final name. A failure removes the temporary file and leaves whatever was under the
// final name untouched.

#include <cstddef>
#include <stdexcept>
#include <string>

namespace host {

// A file that could not be written: its final name and the operating system's reason.
class FileError : public std::runtime_error {
public:
    FileError(const std::string& path, const std::string& reason)
        : std::runtime_error(path + ": " + reason), path_(path), reason_(reason) {}
    const std::string& path() const { return path_; }
    const std::string& reason() const { return reason_; }

private:
    std::string path_;
    std::string reason_;
};

// Writes `size` bytes to `path` as described above. The temporary name is short and fixed in
// length (".ovtmp<pid>-<n>"), so every final name a folder accepts works. Throws FileError.
void writeFileAtomically(const std::string& path, const void* data, std::size_t size);

// Unlinks the temporary files of the writes under way. Async-signal-safe: for a signal
// handler that ends the process at once.
void removeUnfinishedFiles();

}  // namespace host
