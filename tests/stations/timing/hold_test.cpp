// The hold station: press inside the bar and keep the button down for two
// seconds; letting go early fires the player, and once the hold has begun
// the pointer may wander off. Covers the bar's place, the two seconds at
// sixty frames a second, where a hold may begin, the sounds, what the bar
// shows (its word, and the green fill rising from its foot), and the
// automatic player.

#include "stations/timing/timing_fixtures.h"
#include "stations/timing_stations.h"
#include "support/play_area.h"
#include "support/solvers/family_solvers.h"
#include "support/station_driver.h"
#include "support/station_ink.h"
#include "support/text_probe.h"

#include <gtest/gtest.h>

#include <string>
#include <utility>
#include <vector>

namespace vorn::test {
namespace {

using Sounds = std::vector<std::string>;

// Seed 99, station 2: the bar stands at x 633..732, y 220..579.
struct HoldDesk : Driver<HoldLevel> {
    HoldDesk() : Driver<HoldLevel>(99, 2) {}
    int barX() const { return level.bar.x + level.bar.w / 2; }
    int barY() const { return level.bar.y + level.bar.h / 2; }
};

// ------------------------------------------------------------------ layout

TEST(HoldStation, TheBarStandsMidAreaAndNothingIsDrawnFromTheEngine) {
    HoldDesk d;
    // 100 px wide round the middle, 30 px below the area's top and 40 px
    // above its foot: 430 - 70 = 360 px high.
    EXPECT_EQ(d.level.bar.x, kPlayCentreX - 50);
    EXPECT_EQ(d.level.bar.y, kPlayTop + 30);
    EXPECT_EQ(d.level.bar.w, 100);
    EXPECT_EQ(d.level.bar.h, 360);
    EXPECT_EQ(d.level.requiredTime, 2.0);
    EXPECT_EQ(d.rng, Rng(99));
}

// ------------------------------------------------------------------- rules

TEST(HoldStation, HoldingTwoSecondsFromAPressInsideTheBarPasses) {
    HoldDesk d;
    EXPECT_EQ(d.press(d.barX(), d.barY()), LevelResult::Running);   // the press frame counts
    EXPECT_TRUE(d.level.holding);
    EXPECT_EQ(d.level.heldTime, StationDriver::kFrame);
    // Two seconds are 120 frames, but 120 sixtieths add up to a hair under
    // 2.0 in doubles (1.9999999999999978): the bar is full on frame 121.
    EXPECT_EQ(d.idle(119), LevelResult::Running);
    EXPECT_EQ(d.sounds, Sounds{});
    EXPECT_EQ(d.idle(), LevelResult::Solved);
    EXPECT_EQ(d.sounds, Sounds{"pass"});
}

TEST(HoldStation, LettingGoOnTheLastFrameBeforeTheBarIsFullFires) {
    HoldDesk d;
    d.press(d.barX(), d.barY());
    ASSERT_EQ(d.idle(119), LevelResult::Running);
    EXPECT_NEAR(d.level.heldTime, 2.0, 1e-9);   // 120 frames, just short
    EXPECT_EQ(d.release(), LevelResult::Failed);
    EXPECT_EQ(d.sounds, Sounds{"fail"});
}

TEST(HoldStation, LettingGoEarlyPlaysTheFailSoundAlone) {
    HoldDesk d;
    d.press(d.barX(), d.barY());
    d.holdFor(1.0);
    d.moveTo(kPlayLeft / 2, kPlayBottom + 40);   // wandered off, still held
    d.holdFor(0.5);
    EXPECT_EQ(d.sounds, Sounds{});
    EXPECT_EQ(d.release(), LevelResult::Failed);
    EXPECT_EQ(d.sounds, Sounds{"fail"});
}

TEST(HoldStation, APressThatStartsOutsideTheBarNeverBeginsTheHold) {
    HoldDesk d;
    EXPECT_EQ(d.press(d.level.bar.x - 1, d.barY()), LevelResult::Running);
    // Dragged into the bar and held there for three seconds: still nothing.
    d.moveTo(d.barX(), d.barY());
    EXPECT_EQ(d.holdFor(3.0), LevelResult::Running);
    EXPECT_FALSE(d.level.holding);
    EXPECT_EQ(d.level.heldTime, 0.0);
    // And letting go of a hold that never began is no offence, nor is a
    // click just above the bar.
    EXPECT_EQ(d.release(), LevelResult::Running);
    EXPECT_EQ(d.click(d.barX(), d.level.bar.y - 1), LevelResult::Running);
    EXPECT_EQ(d.sounds, Sounds{});
}

TEST(HoldStation, AHoldStartedInsideTheBarMayDriftOutside) {
    HoldDesk d;
    d.press(d.level.bar.x, d.level.bar.y);   // the bar's top-left pixel
    d.moveTo(kPlayLeft / 2, kPlayBottom + 40);
    EXPECT_EQ(d.holdFor(2.5), LevelResult::Solved);
    EXPECT_EQ(d.sounds, Sounds{"pass"});
}

TEST(HoldStation, TheBarsRightAndBottomEdgesAreOutsideIt) {
    HoldDesk d;
    const Rect& b = d.level.bar;
    const std::vector<std::pair<int, int>> outside{
        {b.x + b.w, d.barY()}, {d.barX(), b.y + b.h}, {b.x - 1, d.barY()}, {d.barX(), b.y - 1}};
    for (const auto& [x, y] : outside) {
        EXPECT_EQ(d.press(x, y), LevelResult::Running);
        EXPECT_FALSE(d.level.holding) << x << "," << y;
        EXPECT_EQ(d.release(), LevelResult::Running);
    }
    d.press(b.x + b.w - 1, b.y + b.h - 1);
    EXPECT_TRUE(d.level.holding);
}

// ---------------------------------------------------------------- pictures

// The word is set in orange 6 px above the bar's top, but the font leaves
// room over its capitals, so its letters fall in the bar's top rows: the
// rows above the bar show nothing, and the bar's flat middle (8 px in from
// the round corners) shows the word on the bar's dark brass.
void expectWord(const HoldDesk& d, const Picture& picture, const char* word) {
    const Rect& b = d.level.bar;
    EXPECT_EQ(pixelsUnlikeText(picture.canvas, Rect{kPlayLeft, kPlayTop, kPlayArea.w, b.y - kPlayTop},
                               station_ink::black, word, d.barX(), b.y - 6, TextSize::Normal,
                               timing_ink::orange, true, false),
              0)
        << word << ", over the bar";
    EXPECT_EQ(pixelsUnlikeText(picture.canvas, Rect{b.x + 8, b.y, b.w - 16, 30}, station_ink::darkBrass,
                               word, d.barX(), b.y - 6, TextSize::Normal, timing_ink::orange, true,
                               false),
              0)
        << word << ", on the bar";
}

// The green fill stands on the bar's inner foot, 8 px in from its sides and
// foot: `rows` rows of it, over the dark brass of the bar.
void expectFill(const HoldDesk& d, const Picture& picture, int rows) {
    const Rect& b = d.level.bar;
    const int foot = b.y + b.h - 8;   // the first row under the fill
    if (rows == 0) {
        // Even empty, the fill shows as one green row on the foot: the
        // renderer draws a rectangle of no height as a line.
        EXPECT_EQ(picture.at(d.barX(), foot), station_ink::terminalGreen);
        EXPECT_EQ(picture.at(d.barX(), foot - 1), station_ink::darkBrass);
        EXPECT_EQ(picture.at(d.barX(), foot + 1), station_ink::darkBrass);
        return;
    }
    EXPECT_EQ(picture.at(d.barX(), foot), station_ink::darkBrass);
    EXPECT_EQ(picture.at(d.barX(), foot - rows - 1), station_ink::darkBrass) << "over the fill";
    EXPECT_EQ(picture.at(d.barX(), foot - rows), station_ink::terminalGreen) << "its top row";
    EXPECT_EQ(picture.at(d.barX(), foot - 1), station_ink::terminalGreen) << "its foot";
    EXPECT_EQ(picture.at(b.x + 8, foot - 1), station_ink::terminalGreen);
    EXPECT_EQ(picture.at(b.x + 7, foot - 1), station_ink::darkBrass);
    EXPECT_EQ(picture.at(b.x + b.w - 9, foot - 1), station_ink::terminalGreen);
    EXPECT_EQ(picture.at(b.x + b.w - 8, foot - 1), station_ink::darkBrass);
}

TEST(HoldStation, BeforeTheHoldTheBarIsEmptyAndSaysPressAndHold) {
    HoldDesk d;
    const Picture picture(d.level);
    expectWord(d, picture, "PRESS & HOLD");
    expectFill(d, picture, 0);
    EXPECT_EQ(picture.at(d.level.bar.x + 4, d.barY()), station_ink::darkBrass);
    // Nothing but the bar and its word, which overhangs the bar's sides.
    EXPECT_EQ(paintedOutside(picture, {plateReach(d.level.bar), Rect{kPlayLeft, kPlayTop, kPlayArea.w, 60}}), 0);
}

TEST(HoldStation, APressOutsideTheBarChangesNothingOnScreen) {
    HoldDesk d;
    const Picture before(d.level);
    d.press(d.level.bar.x - 1, d.barY());
    d.moveTo(d.barX(), d.barY());
    d.holdFor(0.5);
    const Picture after(d.level);
    EXPECT_EQ(pixelsDiffering(before, after), 0);
}

TEST(HoldStation, WhileHeldTheBarSaysHoldAndFillsFromTheBottom) {
    HoldDesk d;
    d.press(d.barX(), d.barY());
    d.idle(30);
    {
        // 31 frames held of 120: 344 px x (31/60 s) / 2 s = 88.87, 88 rows.
        const Picture picture(d.level);
        expectWord(d, picture, "HOLD!");
        expectFill(d, picture, 88);
    }
    d.moveTo(kPlayLeft / 2, kPlayBottom + 40);   // drifted off: still held
    d.idle(29);
    {
        // 61 frames: 344 x (61/60) / 2 = 174.87, 174 rows.
        const Picture picture(d.level);
        expectWord(d, picture, "HOLD!");
        expectFill(d, picture, 174);
    }
}

TEST(HoldStation, TheFillIsTruncatedNotRounded) {
    HoldDesk d;
    d.press(d.barX(), d.barY());
    // One frame held: 344 x (1/60) / 2 = 2.87, so 2 rows, not 3.
    expectFill(d, Picture(d.level), 2);
}

// ----------------------------------------------------------------- solvers

TEST(HoldSolver, ClearsTheHoldOnEveryDifficulty) { EXPECT_EQ(unsolvedRuns("hold"), ""); }

TEST(HoldSolver, AClickOnTheBarFiresWithTheFailSound) {
    Driver<HoldLevel> d(4, shippedRecord("hold"));
    auto clicker = scripted([](const Level& station, const Hand& hand, double) {
        return clickCentre(hand, static_cast<const HoldLevel&>(station).bar);
    });
    EXPECT_EQ(d.play(clicker, 5.0).result, LevelResult::Failed);
    EXPECT_EQ(d.sounds, Sounds{"fail"});
}

}  // namespace
}  // namespace vorn::test
