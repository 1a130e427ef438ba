// orbivane-render against what the operating system does to a render: failed system calls and
// a full disk while a frame is written, and SIGINT / SIGTERM. Each must end with the right
// status and one line naming the frame, the file and the reason; the frames before are
// complete, the file already under the failing frame's name is untouched, and no temporary
// file is left.

#include <gtest/gtest.h>

#include "host/files/ImageIO.h"
#include "support/CliProcess.h"

#include <csignal>
#include <cstring>
#include <fcntl.h>
#include <sys/mount.h>
#include <sys/statvfs.h>
#include <thread>
#include <unistd.h>

namespace {

using namespace test_support;

constexpr const char* kOldPicture = "the earlier render of frame 1";

bool isPicture(const std::filesystem::path& path) {
    try {
        return !host::loadImage(path.string()).empty();
    } catch (const std::exception&) {
        return false;
    }
}

// A folder with the small scene and an earlier frame 1 in `out` (the folder itself or below it).
void prepare(const TempFolder& dir, const std::string& out = "") {
    dir.write("small.json", smallScene());
    dir.write(out + "f.0001.png", kOldPicture);
}

// Frames 0-2 of the small scene into f.####.png, with `fault` armed.
CliRun renderThreeFrames(const TempFolder& dir, const std::string& fault, const std::string& threads) {
    return runCli(dir, {"small.json", "--frames", "0-2", "-j", threads, "-o", "f.####.png"},
                  "ORBIVANE_TEST_FAULT=" + fault);
}

// What every failed or interrupted run must show: one line, frame 0 complete, frame 1 as
// `frame1_is_new` says, nothing else.
void expectStopped(const TempFolder& dir, const CliRun& run, const std::string& what, bool frame1_is_new,
                   const std::string& out = "") {
    EXPECT_EQ(std::count(run.err.begin(), run.err.end(), '\n'), 1) << what << "\n" << run.err;
    EXPECT_FALSE(contains(run.out, "wrote")) << what << "\n" << run.out;
    EXPECT_EQ(dir.files(), (std::set<std::string>{"small.json", out + "f.0000.png", out + "f.0001.png"})) << what;
    EXPECT_TRUE(isPicture(dir / (out + "f.0000.png"))) << what;
    if (frame1_is_new)
        EXPECT_TRUE(isPicture(dir / (out + "f.0001.png"))) << what;
    else
        EXPECT_EQ(slurp(dir / (out + "f.0001.png")), kOldPicture) << what;
}

// A failed system call fails the frame it writes (exit 5, one line naming frame, file and
// reason); a signal raised while frame 1 is written stops before the next frame, a second one
// at once.
TEST(OutputFaults, AFailedSystemCallOrASignalStopsCleanly) {
    struct Case {
        const char* fault;
        int exit_code;
        const char* message;  // the start of the one line
        const char* reason;
        bool frame1_is_new;
    };
    const char* failed = "orbivane-render: frame 1: ";
    const Case cases[] = {
        {"open:EACCES:2", 5, failed, "Permission denied", false},
        {"write:ENOSPC:2", 5, failed, "No space left on device", false},
        {"sync:EIO:2", 5, failed, "Input/output error", false},
        {"close:EDQUOT:2", 5, failed, "Disk quota exceeded", false},
        {"rename:EXDEV:2", 5, failed, "Invalid cross-device link", false},
        {"alloc:ENOMEM:2", 5, failed, "out of memory", false},
        {"write:SIGINT:2", 130, "orbivane-render: interrupted by SIGINT at frame 2", "", true},
        {"write:SIGTERM:2", 143, "orbivane-render: interrupted by SIGTERM at frame 2", "", true},
        {"write:SIGTERMx2:2", 143, "orbivane-render: interrupted again, stopped at once", "", false}};
    for (const Case& c : cases) {
        for (const char* threads : {"1", "2"}) {  // written after each render, and beside the next
            TempFolder dir;
            prepare(dir);
            const CliRun run = renderThreeFrames(dir, c.fault, threads);
            const std::string what = std::string(c.fault) + " -j " + threads;
            EXPECT_EQ(run.exit_code, c.exit_code) << what << "\n" << run.err;
            EXPECT_EQ(run.err.rfind(c.message, 0), 0u) << what << "\n" << run.err;
            EXPECT_TRUE(contains(run.err, c.reason)) << what << "\n" << run.err;
            EXPECT_TRUE(c.exit_code != 5 || contains(run.err, "f.0001.png")) << what << "\n" << run.err;
            expectStopped(dir, run, what, c.frame1_is_new);
        }
    }
}

TEST(OutputFaults, AFolderThatCannotBeMadeIsNamed) {
    TempFolder dir;
    dir.write("small.json", smallScene());
    const CliRun run = runCli(dir, {"small.json", "-o", "out/x.png"}, "ORBIVANE_TEST_FAULT=mkdir:EACCES");
    EXPECT_EQ(run.exit_code, 5) << run.err;
    EXPECT_TRUE(contains(run.err, "cannot create the folder out: Permission denied")) << run.err;
    EXPECT_EQ(dir.files(), (std::set<std::string>{"small.json"}));
}

TEST(OutputFaults, TheLongestNameAFolderTakesIsWritten) {
    TempFolder dir;
    dir.write("small.json", smallScene());
    const std::string name = std::string(251 - 4, 'n') + ".png";  // NAME_MAX is 255
    const CliRun run = runCli(dir, {"small.json", "-q", "-o", name});
    EXPECT_EQ(run.exit_code, 0) << run.err;
    EXPECT_EQ(run.out + run.err, "") << "quiet";
    EXPECT_EQ(dir.files(), (std::set<std::string>{"small.json", name}));
}

// A small tmpfs filled so that frame 0 fits and frame 1 does not. Needs the right to mount
// (root outside a restricted container); elsewhere the injected ENOSPC above stands in.
TEST(OutputFaults, AFullDiskFailsTheFrameThatDoesNotFit) {
    TempFolder dir;
    const std::filesystem::path disk = dir / "disk";
    std::filesystem::create_directories(disk);
    if (::mount("tmpfs", disk.c_str(), "tmpfs", 0, "size=200k") != 0)
        GTEST_SKIP() << "cannot mount a tmpfs here: " << std::strerror(errno);
    struct Unmount {
        std::string path;
        ~Unmount() { ::umount2(path.c_str(), MNT_DETACH); }
    } unmount{disk.string()};

    // The demo at a quarter size: frames of a few pages, so the disk's page rounding cannot
    // make room for one more.
    prepare(dir, "disk/");
    const std::vector<std::string> demo = {"-d", "4", "--frames", "0-2", "-o", "disk/f.####.png"};
    ASSERT_EQ(runCli(dir, {"-d", "4", "-q", "-o", "probe.png"}).exit_code, 0);
    const auto frame_bytes = std::filesystem::file_size(dir / "probe.png");
    std::filesystem::remove(dir / "probe.png");
    struct statvfs fs;
    ASSERT_EQ(::statvfs(disk.c_str(), &fs), 0);
    const auto free_bytes = static_cast<std::uintmax_t>(fs.f_bavail) * fs.f_frsize;
    ASSERT_GT(free_bytes, 2 * frame_bytes + 8192) << "frames too large for the test disk";
    std::ofstream(disk / "filler", std::ios::binary) << std::string(free_bytes - frame_bytes - 4096, 'x');

    const CliRun run = runCli(dir, demo);
    std::filesystem::remove(disk / "filler");
    EXPECT_EQ(run.exit_code, 5) << run.err;
    EXPECT_TRUE(contains(run.err, "frame 1: ")) << run.err;
    EXPECT_TRUE(contains(run.err, "disk/f.0001.png': No space left on device")) << run.err;
    expectStopped(dir, run, "full disk", false, "disk/");
}

// A signal from outside, as a user's Ctrl-C or a farm's kill: sent once the first frame is
// complete, while later frames render.
TEST(Interrupts, SigintFromOutsideLeavesOnlyCompleteFrames) {
    TempFolder dir;
    const std::string err = dir.path().string() + ".err";
    const pid_t pid = ::fork();
    ASSERT_GE(pid, 0);
    if (pid == 0) {
        if (::chdir(dir.path().c_str()) != 0) ::_exit(99);
        const int fd = ::open(err.c_str(), O_WRONLY | O_CREAT | O_TRUNC, 0644);
        ::dup2(fd, STDERR_FILENO);
        ::execl(ORBIVANE_RENDER_PATH, ORBIVANE_RENDER_PATH, "--frames", "0-99", "-q", "-o", "f.####.png",
                static_cast<char*>(nullptr));
        ::_exit(98);
    }
    // The render outlives this wait by far (a hundred frames): the wait is no timing assumption.
    while (!std::filesystem::exists(dir / "f.0000.png")) {
        int status = 0;
        ASSERT_EQ(::waitpid(pid, &status, WNOHANG), 0) << "orbivane-render ended early";
        std::this_thread::sleep_for(std::chrono::milliseconds(5));
    }
    ::kill(pid, SIGINT);
    int status = 0;
    ASSERT_EQ(::waitpid(pid, &status, 0), pid);
    const std::string message = slurp(err);
    std::filesystem::remove(err);
    ASSERT_TRUE(WIFEXITED(status)) << message;
    EXPECT_EQ(WEXITSTATUS(status), 130) << message;
    EXPECT_EQ(message.rfind("orbivane-render: interrupted by SIGINT at frame ", 0), 0u) << message;
    const std::set<std::string> files = dir.files();
    EXPECT_LT(files.size(), 100u);
    for (const std::string& name : files) {
        EXPECT_EQ(name.size(), std::string("f.0000.png").size()) << name;  // no temporary file
        EXPECT_EQ(host::loadImage((dir / name).string()).width(), 960) << name;
    }
}

}  // namespace
