// The catalogue that ships with the game is content, and it decides how a
// shift plays: these tests hold it to the shape the run and the screens rely
// on, measured with the fonts the game really ships.

#include "data/level_catalogue.h"
#include "stations/level_factory.h"
#include "stations/paperwork_stations.h"
#include "support/test_platform.h"

#include <gtest/gtest.h>

#include <SDL_ttf.h>

#include <cstdio>
#include <cstdlib>
#include <map>
#include <set>
#include <string>
#include <vector>

namespace vorn {
namespace {

const char* const kCataloguePath = VORN_SOURCE_DIR "/content/levels.json";

std::vector<LevelDef> shipped() {
    std::vector<LevelDef> levels;
    EXPECT_TRUE(loadLevels(levels, kCataloguePath));
    return levels;
}

// Every type string the factory knows.
const std::set<std::string> kFactoryTypes = {
    "button",    "hold",     "twohand",  "patience",   "timing",  "orbit",    "whack",
    "doubleclick", "precision", "decoy", "greased",    "hotcold", "simon",    "antisimon",
    "sequence",  "recall",   "memory",   "morse",      "lightsout", "maze",   "pipes",
    "wires",     "switches", "fusebox",  "valve",      "gauntlet", "dial",    "combo",
    "calibrate", "scale",    "keypad",   "liarkeypad", "eula",    "settings", "quiz",
    "stroop",    "stamp",    "reverse"};

TEST(ShippedCatalogue, HoldsThirtyEightStationsWithUniqueNumbersAndIds) {
    const auto levels = shipped();
    ASSERT_EQ(levels.size(), 38u);
    std::set<std::int32_t> numbers;
    std::set<std::string> ids;
    for (const LevelDef& def : levels) {
        EXPECT_TRUE(numbers.insert(def.number).second) << "number " << def.number << " twice";
        EXPECT_TRUE(ids.insert(def.id).second) << "id " << def.id << " twice";
        EXPECT_FALSE(def.id.empty());
        for (const char c : def.id) {
            EXPECT_TRUE((c >= 'a' && c <= 'z') || (c >= '0' && c <= '9') || c == '-') << def.id;
        }
    }
}

TEST(ShippedCatalogue, NumbersGroupTenProbationTwentyFiveShiftThreeOvertime) {
    int probation = 0;
    int shift = 0;
    int overtime = 0;
    int lateShift = 0;
    for (const LevelDef& def : shipped()) {
        if (def.number >= 1 && def.number <= 10) {
            ++probation;
        } else if (def.number >= 31 && def.number <= 33) {
            ++overtime;
        } else {
            EXPECT_TRUE((def.number >= 11 && def.number <= 30) || def.number >= 34) << def.number;
            ++shift;
            lateShift += def.number >= 40 ? 1 : 0;
        }
    }
    EXPECT_EQ(probation, 10);
    EXPECT_EQ(shift, 25);
    EXPECT_EQ(overtime, 3);
    // A few shift stations sit at 40 and above, where they play harder.
    EXPECT_GE(lateShift, 2);
}

TEST(ShippedCatalogue, OneStationPerFactoryTypeButTwoHandPlusOneOddTile) {
    std::map<std::string, int> seen;
    int unknown = 0;
    for (const LevelDef& def : shipped()) {
        if (kFactoryTypes.count(def.type) == 0) {
            ++unknown;
            // An unknown type plays as the odd-tile station.
            EXPECT_NE(dynamic_cast<GenericLevel*>(createLevel(def.type).get()), nullptr);
        } else {
            ++seen[def.type];
        }
    }
    EXPECT_EQ(unknown, 1);
    EXPECT_EQ(seen.count("twohand"), 0u);
    for (const std::string& type : kFactoryTypes) {
        if (type != "twohand") {
            EXPECT_EQ(seen[type], 1) << type;
        }
    }
}

TEST(ShippedCatalogue, EveryStationHasItsTextsAndAPlayableTime) {
    for (const LevelDef& def : shipped()) {
        EXPECT_FALSE(def.name.empty()) << def.number;
        EXPECT_FALSE(def.instruction.empty()) << def.number;
        EXPECT_FALSE(def.trick.empty()) << def.number;
        EXPECT_EQ(def.instruction.find('\n'), std::string::npos) << def.number;
        EXPECT_GE(def.baseTime, 10) << def.number;
        EXPECT_LE(def.baseTime, 90) << def.number;
    }
}

// Width in pixels of UTF-8 text in a shipped font at a point size.
int widthOf(const char* font, int points, const std::string& text) {
    TTF_Font* f = TTF_OpenFont((std::string(VORN_GAME_DIR) + "/assets/fonts/" + font).c_str(), points);
    EXPECT_NE(f, nullptr) << font;
    if (f == nullptr) {
        return 1 << 20;
    }
    int w = 0;
    int h = 0;
    TTF_SizeUTF8(f, text.c_str(), &w, &h);
    TTF_CloseFont(f);
    return w;
}

struct Fonts : ::testing::Test {
    void SetUp() override { ASSERT_EQ(TTF_Init(), 0); }
    void TearDown() override { TTF_Quit(); }
};

TEST_F(Fonts, EveryHeaderFitsBetweenTheBadgeAndTheClock) {
    // "STATION %02d : %s" in the display font at the Large size (30 pt) has
    // the 658 px from x 445 to 1103.
    for (const LevelDef& def : shipped()) {
        char header[256];
        std::snprintf(header, sizeof header, "STATION %02d : %s", def.number, def.name.c_str());
        EXPECT_LE(widthOf("display.ttf", 30, header), 658) << header;
    }
}

TEST_F(Fonts, EveryInstructionFitsOnItsLine) {
    // One line in the game font at the Small size (16 pt), x 445 to 1103.
    for (const LevelDef& def : shipped()) {
        EXPECT_LE(widthOf("game.ttf", 16, def.instruction), 658) << def.instruction;
    }
}

TEST(ShippedCatalogue, ARealJsonParserAcceptsTheFile) {
    // Python's json module is strict JSON; the game's own scanner is not, so
    // the file is held to the stricter reader.
    VORN_NATIVE_ONLY("python3 is a program of the build machine");
    const std::string command = std::string("python3 -c \"import json,sys; "
                                            "d=json.load(open(sys.argv[1], encoding='utf-8')); "
                                            "sys.exit(0 if len(d['levels'])==38 else 3)\" ") +
                                kCataloguePath;
    EXPECT_EQ(std::system(command.c_str()), 0);
}

}  // namespace
}  // namespace vorn
