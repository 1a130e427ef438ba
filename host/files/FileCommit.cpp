#include "host/files/FileCommit.h"

#include "host/checks/SystemFaults.h"

#include <algorithm>
#include <atomic>
#include <cerrno>
#include <climits>
#include <cstdio>
#include <cstring>
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

namespace host {

namespace {

// Temporary files being written, readable from a signal handler: a slot is claimed (1),
// filled, then published (2); the handler only reads published slots.
struct PendingSlot {
    std::atomic<int> state{0};
    char path[PATH_MAX];
};
constexpr int kPendingSlots = 8;  // the CLI has at most two frames in flight
PendingSlot g_pending[kPendingSlots];
static_assert(std::atomic<int>::is_always_lock_free, "read from a signal handler");

// Keeps a temporary path in the table while it may exist on disk.
class PendingFile {
public:
    explicit PendingFile(const std::string& temp) {
        if (temp.size() >= PATH_MAX) return;
        for (PendingSlot& s : g_pending) {
            int free = 0;
            if (!s.state.compare_exchange_strong(free, 1)) continue;
            std::memcpy(s.path, temp.c_str(), temp.size() + 1);
            s.state.store(2);
            slot_ = &s;
            return;
        }
    }
    ~PendingFile() {
        if (slot_) slot_->state.store(0);
    }
    PendingFile(const PendingFile&) = delete;
    PendingFile& operator=(const PendingFile&) = delete;

private:
    PendingSlot* slot_ = nullptr;
};

std::string temporaryPathFor(const std::string& path) {
    static std::atomic<unsigned> counter{0};
    const std::size_t slash = path.find_last_of('/');
    const std::string folder = slash == std::string::npos ? "" : path.substr(0, slash + 1);
    return folder + ".ovtmp" + std::to_string(::getpid()) + "-" + std::to_string(counter.fetch_add(1));
}

// The system call's result, or -1 with errno set to the injected fault.
template <class Call>
auto checked(SystemCall which, Call call) -> decltype(call()) {
    if (const int err = systemFault(which)) {
        errno = err;
        return -1;
    }
    return call();
}

// An open temporary file: removed again unless committed.
class TemporaryFile {
public:
    explicit TemporaryFile(std::string final_path)
        : final_(std::move(final_path)), temp_(temporaryPathFor(final_)), pending_(temp_) {
        fd_ = checked(SystemCall::Open,
                      [&] { return ::open(temp_.c_str(), O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC, 0666); });
        if (fd_ < 0) fail("");
    }
    ~TemporaryFile() {
        if (fd_ >= 0) ::close(fd_);
        if (!committed_) ::unlink(temp_.c_str());
    }
    TemporaryFile(const TemporaryFile&) = delete;
    TemporaryFile& operator=(const TemporaryFile&) = delete;

    void write(const unsigned char* data, std::size_t size) {
        constexpr std::size_t kChunk = std::size_t(1) << 22;
        while (size > 0) {
            const ssize_t n = checked(SystemCall::Write, [&] { return ::write(fd_, data, std::min(size, kChunk)); });
            if (n < 0 && errno == EINTR) continue;
            if (n < 0) fail("");
            if (n == 0) fail("the file system accepted no more bytes");
            data += n;
            size -= static_cast<std::size_t>(n);
        }
    }

    // Flushes to the disk, checks the size the file system holds, closes and renames.
    void commit(std::size_t expected_size) {
        if (checked(SystemCall::Sync, [&] { return ::fsync(fd_); }) != 0 && errno != EINVAL) fail("");
        struct stat st;
        if (::fstat(fd_, &st) != 0) fail("");
        if (static_cast<std::size_t>(st.st_size) != expected_size)
            fail("the file holds " + std::to_string(st.st_size) + " of " + std::to_string(expected_size) + " bytes");
        const int fd = fd_;
        fd_ = -1;
        if (checked(SystemCall::Close, [&] { return ::close(fd); }) != 0) fail("");
        if (checked(SystemCall::Rename, [&] { return ::rename(temp_.c_str(), final_.c_str()); }) != 0) fail("");
        committed_ = true;
    }

private:
    [[noreturn]] void fail(const std::string& what) {
        throw FileError(final_, what.empty() ? std::string(std::strerror(errno)) : what);
    }

    std::string final_;
    std::string temp_;
    PendingFile pending_;
    int fd_ = -1;
    bool committed_ = false;
};

}  // namespace

void writeFileAtomically(const std::string& path, const void* data, std::size_t size) {
    TemporaryFile file(path);
    file.write(static_cast<const unsigned char*>(data), size);
    file.commit(size);
}

void removeUnfinishedFiles() {
    for (PendingSlot& s : g_pending)
        if (s.state.load() == 2) ::unlink(s.path);
}

}  // namespace host
