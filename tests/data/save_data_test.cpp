#include "data/save_data.h"

#include "support/temp_dir.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <sstream>
#include <stdexcept>
#include <string>

namespace vorn {
namespace {

SaveData loadText(const std::string& text) {
    SaveData save;
    std::istringstream in(text);
    loadSaveFrom(save, in);
    return save;
}

void expectDefaults(const SaveData& save) {
    EXPECT_FALSE(save.splashSeen);
    EXPECT_FALSE(save.introSeen);
    EXPECT_EQ(save.timesFired, 0);
    EXPECT_EQ(save.clockInCards, 0);
    EXPECT_EQ(save.lastDifficulty, 1);
}

const char* const kDefaultFile =
    "# The Vorn Co. save file. Auto-generated; safe to delete.\n"
    "splashSeen=0\n"
    "introSeen=0\n"
    "timesFired=0\n"
    "clockInCards=0\n"
    "lastDifficulty=1\n";

TEST(SaveFile, BlanksAroundKeyAndValueAreIgnored) {
    EXPECT_TRUE(loadText("  splashSeen = true  \n").splashSeen);
    EXPECT_TRUE(loadText("\tintroSeen\t=\t1\t\n").introSeen);
}

TEST(SaveFile, FlagIsTrueOnlyForOneOrLowercaseTrue) {
    EXPECT_TRUE(loadText("splashSeen=1\n").splashSeen);
    EXPECT_TRUE(loadText("splashSeen=true\n").splashSeen);
    for (const char* value : {"TRUE", "True", "yes", "0", "2", ""}) {
        SaveData save;
        save.splashSeen = true;
        std::istringstream in(std::string("splashSeen=") + value + "\n");
        loadSaveFrom(save, in);
        EXPECT_FALSE(save.splashSeen) << "value '" << value << "'";
    }
}

TEST(SaveFile, TimesFiredReadsASignedNumberAndIgnoresTrailingText) {
    EXPECT_EQ(loadText("timesFired=-3\n").timesFired, -3);
    EXPECT_EQ(loadText("timesFired=7 times\n").timesFired, 7);
    EXPECT_EQ(loadText("timesFired=12abc\n").timesFired, 12);
    EXPECT_EQ(loadText("timesFired=+5\n").timesFired, 5);
}

TEST(SaveFile, ClockInCardsReadsANumber) {
    EXPECT_EQ(loadText("clockInCards=4\n").clockInCards, 4);
    EXPECT_EQ(loadText("clockInCards=2 cards\n").clockInCards, 2);
}

TEST(SaveFile, LastDifficultyOutsideZeroToThreeIsIgnored) {
    EXPECT_EQ(loadText("lastDifficulty=4\n").lastDifficulty, 1);
    EXPECT_EQ(loadText("lastDifficulty=-1\n").lastDifficulty, 1);
    EXPECT_EQ(loadText("lastDifficulty=2\nlastDifficulty=4\n").lastDifficulty, 2);
    EXPECT_EQ(loadText("lastDifficulty=0\n").lastDifficulty, 0);
    EXPECT_EQ(loadText("lastDifficulty=3\n").lastDifficulty, 3);
}

TEST(SaveFile, HashLineIsACommentAndEmptyKeySetsNothing) {
    const SaveData save = loadText("#lastDifficulty=2\n=5\n  # timesFired=9\n");
    expectDefaults(save);
}

TEST(SaveFile, LineWithoutEqualsAndUnknownKeysAreIgnored) {
    const SaveData save = loadText("splashSeen\ntimesfired=5\nhighScore=10\nTimesFired=3\n");
    expectDefaults(save);
}

TEST(SaveFile, ValueRunsFromTheFirstEqualsSign) {
    // "1 = 1" is not exactly "1", so the flag stays false; the number
    // conversion stops at the blank after 5.
    const SaveData save = loadText("splashSeen = 1 = 1\ntimesFired = 5 = 6\n");
    EXPECT_FALSE(save.splashSeen);
    EXPECT_EQ(save.timesFired, 5);
}

TEST(SaveFile, KeyThatOccursTwiceTakesItsLastValue) {
    const SaveData save = loadText("timesFired=3\nsplashSeen=1\ntimesFired=8\nsplashSeen=0\n");
    EXPECT_EQ(save.timesFired, 8);
    EXPECT_FALSE(save.splashSeen);
}

TEST(SaveFile, WindowsLineEndsLoadLikeBareLineFeeds) {
    const std::string bare = "# header\nsplashSeen=1\nintroSeen=true\ntimesFired=12\nclockInCards=3\nlastDifficulty=2\n";
    const std::string windows =
        "# header\r\nsplashSeen=1\r\nintroSeen=true\r\ntimesFired=12\r\nclockInCards=3\r\nlastDifficulty=2\r\n";
    const SaveData a = loadText(bare);
    const SaveData b = loadText(windows);
    EXPECT_TRUE(b.splashSeen);
    EXPECT_TRUE(b.introSeen);
    EXPECT_EQ(b.timesFired, 12);
    EXPECT_EQ(b.clockInCards, 3);
    EXPECT_EQ(b.lastDifficulty, 2);
    EXPECT_EQ(a.splashSeen, b.splashSeen);
    EXPECT_EQ(a.introSeen, b.introSeen);
    EXPECT_EQ(a.timesFired, b.timesFired);
    EXPECT_EQ(a.clockInCards, b.clockInCards);
    EXPECT_EQ(a.lastDifficulty, b.lastDifficulty);
}

TEST(SaveFile, WindowsLineEndsLoadFromAFile) {
    test::TempDir dir("save_crlf");
    const auto path = dir.write("vornco_save.txt", "splashSeen=true\r\ntimesFired=4\r\n");
    SaveData save;
    loadSave(save, path.string());
    EXPECT_TRUE(save.splashSeen);
    EXPECT_EQ(save.timesFired, 4);
}

TEST(SaveFile, NumberWithNoDigitsThrowsTheStandardConversionError) {
    EXPECT_THROW(loadText("timesFired=\n"), std::invalid_argument);
    EXPECT_THROW(loadText("timesFired=lots\n"), std::invalid_argument);
    EXPECT_THROW(loadText("clockInCards=-\n"), std::invalid_argument);
    EXPECT_THROW(loadText("lastDifficulty=hard\n"), std::invalid_argument);
}

TEST(SaveFile, NumberBeyond32BitsThrowsOutOfRange) {
    EXPECT_THROW(loadText("timesFired=3000000000\n"), std::out_of_range);
    EXPECT_THROW(loadText("timesFired=-2147483649\n"), std::out_of_range);
    EXPECT_THROW(loadText("clockInCards=99999999999\n"), std::out_of_range);
    EXPECT_THROW(loadText("lastDifficulty=4294967296\n"), std::out_of_range);
    EXPECT_EQ(loadText("timesFired=2147483647\n").timesFired, 2147483647);
}

TEST(SaveFile, MissingFileKeepsDefaultsAndRemembersThePath) {
    test::TempDir dir("save_missing");
    const std::string path = (dir.path() / "vornco_save.txt").string();
    SaveData save;
    loadSave(save, path);
    EXPECT_EQ(save.path, path);
    expectDefaults(save);
}

// Windows' narrow file functions read a path in the ANSI code page; the save
// takes its path as UTF-8 everywhere, so a folder named in any script works.
TEST(SaveFile, WritesAndReadsBackInAFolderWithANonAsciiName) {
    test::TempDir dir("\u00fcn\u00ef \u03a9mega");
    const std::string path = (dir.path() / "vornco_save.txt").u8string();
    SaveData save;
    loadSave(save, path);
    save.timesFired = 5;
    save.clockInCards = 2;
    writeSave(save);
    ASSERT_TRUE(std::filesystem::exists(dir.path() / "vornco_save.txt"));
    SaveData again;
    loadSave(again, path);
    EXPECT_EQ(again.timesFired, 5);
    EXPECT_EQ(again.clockInCards, 2);
}

TEST(SaveFile, FreshWriteHoldsHeaderAndDefaults) {
    test::TempDir dir("save_fresh");
    SaveData save;
    loadSave(save, (dir.path() / "vornco_save.txt").string());
    writeSave(save);
    EXPECT_EQ(test::readTextFile(dir.path() / "vornco_save.txt"), kDefaultFile);
}

TEST(SaveFile, DeletedFileResetsToDefaultsAndNextWriteRecreatesIt) {
    test::TempDir dir("save_deleted");
    const std::string path = (dir.path() / "vornco_save.txt").string();
    SaveData played;
    loadSave(played, path);
    played.splashSeen = true;
    played.timesFired = 5;
    played.lastDifficulty = 3;
    writeSave(played);

    std::filesystem::remove(path);
    SaveData next;
    loadSave(next, path);
    expectDefaults(next);
    writeSave(next);
    EXPECT_EQ(test::readTextFile(path), kDefaultFile);
}

TEST(SaveFile, WriteUsesDigitsForFlagsAndRoundTrips) {
    test::TempDir dir("save_roundtrip");
    const std::string path = (dir.path() / "vornco_save.txt").string();
    SaveData save;
    save.path = path;
    save.splashSeen = true;
    save.introSeen = false;
    save.timesFired = -2;
    save.clockInCards = 17;
    save.lastDifficulty = 0;
    writeSave(save);
    EXPECT_EQ(test::readTextFile(path),
              "# The Vorn Co. save file. Auto-generated; safe to delete.\n"
              "splashSeen=1\nintroSeen=0\ntimesFired=-2\nclockInCards=17\nlastDifficulty=0\n");

    SaveData back;
    loadSave(back, path);
    EXPECT_TRUE(back.splashSeen);
    EXPECT_FALSE(back.introSeen);
    EXPECT_EQ(back.timesFired, -2);
    EXPECT_EQ(back.clockInCards, 17);
    EXPECT_EQ(back.lastDifficulty, 0);
}

TEST(SaveFile, WriteReplacesTheWholeFile) {
    test::TempDir dir("save_truncate");
    const auto path = dir.write("vornco_save.txt", std::string(500, '#') + "\nextra=1\n");
    SaveData save;
    save.path = path.string();
    writeSave(save);
    EXPECT_EQ(test::readTextFile(path), kDefaultFile);
}

TEST(SaveFile, WriteWithEmptyPathDoesNothing) {
    test::TempDir dir("save_no_path");
    test::ScopedWorkingDirectory cwd(dir.path());
    SaveData save;
    save.timesFired = 3;
    writeSave(save);
    EXPECT_TRUE(std::filesystem::is_empty(dir.path()));
}

TEST(SaveFile, UnwritablePathIsSkippedSilently) {
    test::TempDir dir("save_unwritable");
    SaveData save;
    save.path = (dir.path() / "no_such_folder" / "vornco_save.txt").string();
    EXPECT_NO_THROW(writeSave(save));
    EXPECT_FALSE(std::filesystem::exists(save.path));
}

TEST(SaveFile, TrimRemovesOnlyBlanksTabsAndLineEnds) {
    EXPECT_EQ(trim(" \t\r\nab c\n\r\t "), "ab c");
    EXPECT_EQ(trim(" \t \r\n"), "");
    EXPECT_EQ(trim(""), "");
    EXPECT_EQ(trim("\vx\f"), "\vx\f");
    EXPECT_EQ(trim("x"), "x");
}

}  // namespace
}  // namespace vorn
