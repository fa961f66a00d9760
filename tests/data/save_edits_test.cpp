// Saves as players' editors leave them: a UTF-8 byte-order mark in front,
// Windows line ends, keys the game does not know.

#include "data/save_data.h"

#include <gtest/gtest.h>

#include <sstream>

namespace vorn {
namespace {

TEST(SaveEdits, AByteOrderMarkBeforeTheFirstKeyDoesNotHideIt) {
    SaveData save;
    std::istringstream in("\xEF\xBB\xBFtimesFired=12\nclockInCards=2\n");
    loadSaveFrom(save, in);
    EXPECT_EQ(save.timesFired, 12);
    EXPECT_EQ(save.clockInCards, 2);
}

TEST(SaveEdits, AByteOrderMarkBeforeTheHeaderAndWindowsLineEndsLoadEveryKey) {
    SaveData save;
    std::istringstream in("\xEF\xBB\xBF# The Vorn Co. save file. Auto-generated; safe to delete.\r\n"
                          "splashSeen=1\r\nintroSeen=1\r\ntimesFired=4\r\nclockInCards=3\r\n"
                          "lastDifficulty=3\r\ncolour=blue\r\nfutureKey=7\r\n");
    loadSaveFrom(save, in);
    EXPECT_TRUE(save.splashSeen);
    EXPECT_TRUE(save.introSeen);
    EXPECT_EQ(save.timesFired, 4);
    EXPECT_EQ(save.clockInCards, 3);
    EXPECT_EQ(save.lastDifficulty, 3);
}

TEST(SaveEdits, OnlyAWholeMarkAtTheVeryStartIsSkipped) {
    // The same bytes later in the file are part of a key, which then is
    // unknown and ignored.
    SaveData save;
    std::istringstream in("timesFired=2\n\xEF\xBB\xBFtimesFired=9\n");
    loadSaveFrom(save, in);
    EXPECT_EQ(save.timesFired, 2);
}

}  // namespace
}  // namespace vorn
