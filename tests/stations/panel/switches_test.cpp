// The breaker row ("switches"): six levers dealt up or down from the seed,
// a click flips the lever under the pointer, and the row passes the moment
// every lever is down, even before the player has touched it. Its sounds,
// what it draws, and its solver.

#include "stations/panel/panel_fixtures.h"
#include "stations/panel_stations.h"
#include "support/draws_by_hand.h"
#include "support/station_driver.h"
#include "support/station_ink.h"

#include <gtest/gtest.h>

#include <cstdint>
#include <string>
#include <vector>

namespace vorn::test {
namespace {

using Sounds = std::vector<std::string>;

// Seed 5489 opens 3499211612, 581869302, 3890346734, 3586334585, 545404204,
// 4161255391: top bits 1 0 1 1 0 1.
constexpr bool kDealt5489[6] = {true, false, true, true, false, true};

TEST(SwitchesStation, SixLeversSpacedASeventhOfTheWidthApart) {
    Driver<SwitchesLevel> d;
    EXPECT_EQ(d.level.count, 6);
    // spacing = 840 / 7 = 120; x = 263 - 26 + (i + 1) * 120; y = 190 - 50 + 215.
    for (int i = 0; i < 6; ++i) {
        EXPECT_EQ(d.level.rects[i].x, 357 + 120 * i) << i;
        EXPECT_EQ(d.level.rects[i].y, 355) << i;
        EXPECT_EQ(d.level.rects[i].w, 52) << i;
        EXPECT_EQ(d.level.rects[i].h, 100) << i;
    }
}

TEST(SwitchesStation, EachLeverIsTheTopBitOfOneDrawInOrder) {
    Driver<SwitchesLevel> d(5489);
    for (int i = 0; i < 6; ++i) {
        EXPECT_EQ(d.level.up[i], kDealt5489[i]) << i;
    }
    EXPECT_EQ(d.rng, engineAfter(5489, 6));

    for (std::uint32_t seed = 1; seed <= 40; ++seed) {
        Driver<SwitchesLevel> q(seed);
        Rng ref(seed);
        for (int i = 0; i < 6; ++i) {
            EXPECT_EQ(q.level.up[i], ref() >= 0x80000000u) << "seed " << seed << " lever " << i;
        }
        EXPECT_EQ(q.rng, ref) << seed;
    }
}

// The first seed whose six levers are all dealt down.
std::uint32_t allDownSeed() {
    for (std::uint32_t seed = 1;; ++seed) {
        Rng r(seed);
        bool anyUp = false;
        for (int i = 0; i < 6; ++i) {
            anyUp = anyUp || (r() >> 31) != 0;
        }
        if (!anyUp) {
            return seed;
        }
    }
}

TEST(SwitchesStation, ARowWithALeverUpKeepsRunning) {
    Driver<SwitchesLevel> d(5489);
    EXPECT_EQ(d.idle(), LevelResult::Running);
}

TEST(SwitchesStation, AClickFlipsTheLeverUnderThePointerBothWays) {
    Driver<SwitchesLevel> d(5489);
    const Rect& r = d.level.rects[1];   // dealt down
    EXPECT_EQ(d.click(r.x, r.y), LevelResult::Running);
    EXPECT_TRUE(d.level.up[1]);
    EXPECT_EQ(d.click(r.x + r.w - 1, r.y + r.h - 1), LevelResult::Running);
    EXPECT_FALSE(d.level.up[1]);
    // The right and bottom edges are outside.
    EXPECT_EQ(d.click(r.x + r.w, r.y), LevelResult::Running);
    EXPECT_FALSE(d.level.up[1]);
    // Only the lever under the pointer moves.
    EXPECT_TRUE(d.level.up[0]);
    EXPECT_TRUE(d.level.up[2]);
}

TEST(SwitchesStation, AClickThatMissesEveryLeverStillRunsTheAllDownTest) {
    Driver<SwitchesLevel> d(5489);
    for (bool& lever : d.level.up) {
        lever = false;
    }
    EXPECT_EQ(d.press(d.level.rects[0].x - 10, d.level.rects[0].y), LevelResult::Solved);
    EXPECT_EQ(d.heard(), (Sounds{"pass"}));   // no click: nothing was hit
}

// The first seed whose six levers are all dealt down, by the top bits of a
// plain MT19937 (66, worked out once).
TEST(SwitchesStation, SeedSixtySixIsTheFirstToDealEveryLeverDown) {
    EXPECT_EQ(allDownSeed(), 66u);
    Driver<SwitchesLevel> d(66);
    for (int i = 0; i < 6; ++i) {
        EXPECT_FALSE(d.level.up[i]) << i;
    }
}

TEST(SwitchesStation, ARowDealtAllDownPassesBeforeAnyInputWithOnlyThePassSound) {
    Driver<SwitchesLevel> d(66);
    ASSERT_TRUE(d.sounds.empty());
    EXPECT_EQ(d.idle(), LevelResult::Solved);
    EXPECT_EQ(d.sounds, (Sounds{"pass"}));
}

TEST(SwitchesStation, AClickOnALeverClicksOnceAndClicksBesideTheLeversAreSilent) {
    Driver<SwitchesLevel> d(5489);
    const Rect* r = d.level.rects;
    EXPECT_EQ(d.press(r[1].x + 5, r[1].y + 5), LevelResult::Running);   // dealt down, flips up
    EXPECT_EQ(d.heard(), (Sounds{"click"}));
    EXPECT_TRUE(d.level.up[1]);
    std::size_t n = d.sounds.size();
    EXPECT_EQ(d.release(), LevelResult::Running);
    EXPECT_EQ(d.idle(), LevelResult::Running);
    EXPECT_EQ(d.soundsSince(n), Sounds{});
    EXPECT_EQ(d.press(r[1].x + 5, r[1].y + 5), LevelResult::Running);   // and back down: a click again
    EXPECT_EQ(d.heard(), (Sounds{"click"}));
    EXPECT_FALSE(d.level.up[1]);
    d.release();
    n = d.sounds.size();
    // Just right of plate 0, just above plate 2 and just below plate 3.
    EXPECT_EQ(d.click(r[0].x + r[0].w, r[0].y + 45), LevelResult::Running);
    EXPECT_EQ(d.click(r[2].x + 20, r[2].y - 1), LevelResult::Running);
    EXPECT_EQ(d.click(r[3].x + 20, r[3].y + r[3].h), LevelResult::Running);
    EXPECT_EQ(d.soundsSince(n), Sounds{});
    for (int i = 0; i < 6; ++i) {
        EXPECT_EQ(d.level.up[i], kDealt5489[i]) << i;
    }
}

TEST(SwitchesStation, FlippingTheLastAmberLeverDownClicksAndPassesInThatFrame) {
    Driver<SwitchesLevel> d(5489);
    for (bool& lever : d.level.up) {
        lever = false;
    }
    d.level.up[4] = true;
    EXPECT_EQ(d.clickCentre(d.level.rects[4]), LevelResult::Solved);
    EXPECT_EQ(d.heard(), (Sounds{"click", "pass"}));
}

// ------------------------------------------------------------------- Look

// One lever as the player sees it: a brass plate, a dark slot inside it four
// pixels in, and in the slot the lever (eight pixels in, 34 tall), at the
// top in amber while up, at the bottom in green once down.
void expectLeverDrawn(const SoftwareCanvas& canvas, const Rect& r, bool up, int i) {
    const int midX = r.x + r.w / 2;
    const int midY = r.y + r.h / 2;   // between the two lever places: always slot
    EXPECT_EQ(canvas.pixel(r.x + 1, midY), station_ink::darkBrass) << "plate, lever " << i;
    EXPECT_EQ(canvas.pixel(r.x + r.w - 2, midY), station_ink::darkBrass) << "plate, lever " << i;
    EXPECT_EQ(canvas.pixel(r.x + 5, midY), station_ink::ink) << "slot, lever " << i;
    EXPECT_EQ(canvas.pixel(midX, midY), station_ink::ink) << "slot, lever " << i;
    const Color lever = up ? station_ink::orange : station_ink::terminalGreen;
    const int top = up ? r.y + 8 : r.y + r.h - 42;   // the lever's first row
    const int away = up ? r.y + r.h - 25 : r.y + 25;  // where the lever is not
    EXPECT_EQ(canvas.pixel(midX, top), lever) << "lever " << i;
    EXPECT_EQ(canvas.pixel(midX, top + 33), lever) << "lever " << i;
    EXPECT_EQ(canvas.pixel(midX, top - 1), station_ink::ink) << "lever " << i;
    EXPECT_EQ(canvas.pixel(midX, top + 34), station_ink::ink) << "lever " << i;
    EXPECT_EQ(canvas.pixel(r.x + 8, top + 17), lever) << "lever " << i;
    EXPECT_EQ(canvas.pixel(r.x + 7, top + 17), station_ink::ink) << "lever " << i;
    EXPECT_EQ(canvas.pixel(r.x + r.w - 9, top + 17), lever) << "lever " << i;
    EXPECT_EQ(canvas.pixel(r.x + r.w - 8, top + 17), station_ink::ink) << "lever " << i;
    EXPECT_EQ(canvas.pixel(midX, away), station_ink::ink) << "lever " << i;
}

// Pixels drawn anywhere on the canvas outside the six plates. (A rounded
// plate's corner dots reach one pixel past its right and bottom edges.)
int pixelsBesideThePlates(const SoftwareCanvas& canvas, const SwitchesLevel& level) {
    int drawn = 0;
    for (int y = 0; y < kCanvasHeight; ++y) {
        for (int x = 0; x < kCanvasWidth; ++x) {
            bool onPlate = false;
            for (const Rect& r : level.rects) {
                onPlate = onPlate || contains(Rect{r.x, r.y, r.w + 1, r.h + 1}, x, y);
            }
            drawn += !onPlate && canvas.pixel(x, y) != station_ink::black ? 1 : 0;
        }
    }
    return drawn;
}

TEST(SwitchesLook, TheRowIsDrawnAsDealtWithNoWordsOfItsOwn) {
    Driver<SwitchesLevel> d(5489);
    SoftwareCanvas canvas;
    renderOnBlack(canvas, d.level);
    for (int i = 0; i < 6; ++i) {
        expectLeverDrawn(canvas, d.level.rects[i], kDealt5489[i], i);
    }
    // The catalogue's instruction in the header is all the player gets.
    EXPECT_EQ(pixelsBesideThePlates(canvas, d.level), 0);
}

TEST(SwitchesLook, AFlippedLeverIsRedrawnInItsNewPlace) {
    Driver<SwitchesLevel> d(5489);
    d.clickCentre(d.level.rects[3]);   // up to down
    d.clickCentre(d.level.rects[4]);   // down to up
    SoftwareCanvas canvas;
    renderOnBlack(canvas, d.level);
    const bool now[6] = {true, false, true, false, true, true};
    for (int i = 0; i < 6; ++i) {
        expectLeverDrawn(canvas, d.level.rects[i], now[i], i);
    }
}

TEST(SwitchesSolver, ClearsTheBreakerRowOnEveryDifficulty) { EXPECT_EQ(unsolvedRuns("switches"), ""); }

}  // namespace
}  // namespace vorn::test
