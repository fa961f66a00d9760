// The save is never rewritten in place: whatever stops a write half-way (a
// full disk, a kill, a failed rename) leaves the previous save as it was,
// byte for byte, or the new one whole, and never an empty or cut file.

#include "data/save_data.h"
#include "support/temp_dir.h"
#include "support/test_platform.h"

#include <gtest/gtest.h>

#include <csignal>
#include <cstdlib>
#include <filesystem>
#include <random>
#include <sstream>
#include <string>

#ifndef _WIN32
#include <sys/resource.h>
#include <sys/wait.h>
#include <unistd.h>
#endif

namespace vorn {
namespace {

namespace fs = std::filesystem;

// The file as the game writes it for these numbers (header and five keys).
std::string saveText(int timesFired, int clockInCards) {
    return "# The Vorn Co. save file. Auto-generated; safe to delete.\n"
           "splashSeen=1\nintroSeen=0\ntimesFired=" + std::to_string(timesFired) +
           "\nclockInCards=" + std::to_string(clockInCards) + "\nlastDifficulty=2\n";
}

SaveData saveOf(const fs::path& file, int timesFired, int clockInCards) {
    SaveData save;
    save.path = file.u8string();
    save.splashSeen = true;
    save.timesFired = timesFired;
    save.clockInCards = clockInCards;
    save.lastDifficulty = 2;
    return save;
}

class AtomicSave : public ::testing::Test {
protected:
    void SetUp() override {
        writeSave(saveOf(file, 3, 1));
        ASSERT_EQ(test::readTextFile(file), saveText(3, 1));
        before = test::readFile(file);
    }
    // The previous save, byte for byte, and no temporary file left over.
    void expectPreviousSaveUntouched() const {
        EXPECT_EQ(test::readFile(file), before);
        EXPECT_FALSE(fs::exists(dir.path() / "vornco_save.txt.tmp"));
    }

    test::TempDir dir{"atomic_save"};
    fs::path file = dir.path() / "vornco_save.txt";
    std::string before;
};

TEST_F(AtomicSave, ANewSaveReplacesTheOldOneWhole) {
    writeSave(saveOf(file, 4, 2));
    EXPECT_EQ(test::readTextFile(file), saveText(4, 2));
    EXPECT_FALSE(fs::exists(dir.path() / "vornco_save.txt.tmp"));
}

TEST_F(AtomicSave, AWriteThatFailsHalfWayLeavesThePreviousSave) {
    VORN_NATIVE_ONLY("the full disk is simulated with a POSIX file-size limit");
#ifndef _WIN32
    // Forty bytes and no more may be written to any file: the disk is "full"
    // in the middle of the second line. The signal the limit raises is
    // ignored, so the write just fails, as on a full disk.
    struct rlimit old{};
    ASSERT_EQ(::getrlimit(RLIMIT_FSIZE, &old), 0);
    struct rlimit tight = old;
    tight.rlim_cur = 40;
    void (*oldHandler)(int) = std::signal(SIGXFSZ, SIG_IGN);
    ASSERT_EQ(::setrlimit(RLIMIT_FSIZE, &tight), 0);
    writeSave(saveOf(file, 999999, 7));
    ::setrlimit(RLIMIT_FSIZE, &old);
    std::signal(SIGXFSZ, oldHandler);
    expectPreviousSaveUntouched();
#endif
}

TEST_F(AtomicSave, ATemporaryFileThatCannotBeMadeLeavesThePreviousSave) {
    // A folder stands where the temporary file would go.
    fs::create_directory(dir.path() / "vornco_save.txt.tmp");
    writeSave(saveOf(file, 4, 2));
    EXPECT_EQ(test::readFile(file), before);
    EXPECT_TRUE(fs::is_directory(dir.path() / "vornco_save.txt.tmp"));
}

TEST_F(AtomicSave, AFailedReplaceLeavesTheTargetAndRemovesTheTemporaryFile) {
    // The save's name taken by a folder that holds a file: the new save can
    // be written beside it, but not put in its place.
    const fs::path blocked = dir.path() / "blocked";
    fs::create_directories(blocked / "inside");
    SaveData save = saveOf(blocked, 4, 2);
    writeSave(save);
    EXPECT_TRUE(fs::is_directory(blocked / "inside"));
    EXPECT_FALSE(fs::exists(dir.path() / "blocked.tmp"));
}

TEST(AtomicSaveKill, AKillAtAnyMomentOfABurstOfWritesLeavesAWholeSave) {
    VORN_NATIVE_ONLY("the writer is a forked child ended with SIGKILL");
#ifndef _WIN32
    test::TempDir dir("atomic_kill");
    const fs::path file = dir.path() / "vornco_save.txt";
    std::mt19937 pick(20261123u);
    for (int trial = 0; trial < 24; ++trial) {
        int progress[2];
        ASSERT_EQ(::pipe(progress), 0);
        const pid_t child = ::fork();
        ASSERT_GE(child, 0);
        if (child == 0) {
            // Writes save after save, saying after each one that it is done.
            ::close(progress[0]);
            for (int i = 1;; ++i) {
                writeSave(saveOf(file, trial * 1000 + i, i % 7));
                const char done = 1;
                if (::write(progress[1], &done, 1) != 1) {
                    ::_exit(0);
                }
            }
        }
        ::close(progress[1]);
        // Let a random number of writes finish, then kill the writer in the
        // middle of whatever it is doing.
        const int finished = 1 + static_cast<int>(pick() % 12);
        char done = 0;
        for (int i = 0; i < finished; ++i) {
            ASSERT_EQ(::read(progress[0], &done, 1), 1);
        }
        ::kill(child, SIGKILL);
        int status = 0;
        ::waitpid(child, &status, 0);
        ::close(progress[0]);

        // The save is one of the writes, whole: the last one reported or a
        // later one (the writer runs ahead of the pipe until the kill lands).
        const std::string text = test::readTextFile(file);
        const std::size_t at = text.find("timesFired=");
        ASSERT_NE(at, std::string::npos) << "trial " << trial << ":\n" << text;
        const int i = std::atoi(text.c_str() + at + 11) - trial * 1000;
        EXPECT_GE(i, finished) << "trial " << trial;
        EXPECT_EQ(text, saveText(trial * 1000 + i, i % 7))
            << "trial " << trial << ", after " << finished << " writes";
    }
#endif
}

}  // namespace
}  // namespace vorn
