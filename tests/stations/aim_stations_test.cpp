// The aim and pointer stations: whack, double-click, precision, decoy,
// greased and hot-cold. Seed 5489's first outputs are 3499211612, 581869302,
// 3890346734, 3586334585, 545404204, 4161255391, 3922919429.

#include "audio/audio_system.h"
#include "data/level_catalogue.h"
#include "stations/aim_stations.h"
#include "stations/level_factory.h"
#include "support/draws_by_hand.h"
#include "support/software_canvas.h"
#include "support/solvers/family_solvers.h"
#include "support/station_bench.h"
#include "support/station_desk.h"

#include <gtest/gtest.h>

#include <cmath>

namespace vorn {
namespace {

using test::Desk;

// True when some pixel of the box has exactly this colour (for text, whose
// glyph cores are opaque).
bool anyPixel(const test::SoftwareCanvas& canvas, const Rect& box, Color c) {
    return test::anyPixelNear(canvas, box, c, 0);
}

constexpr Color kGreen = rgb(70, 224, 138);
constexpr Color kRed = rgb(255, 58, 42);
constexpr Color kBlack = rgb(0, 0, 0);

// ---------------------------------------------------------------------------
// Factory

TEST(AimFactory, EachTypeStringMakesItsStation) {
    EXPECT_NE(dynamic_cast<WhackLevel*>(createLevel("whack").get()), nullptr);
    EXPECT_NE(dynamic_cast<DoubleClickLevel*>(createLevel("doubleclick").get()), nullptr);
    EXPECT_NE(dynamic_cast<PrecisionLevel*>(createLevel("precision").get()), nullptr);
    EXPECT_NE(dynamic_cast<DecoyLevel*>(createLevel("decoy").get()), nullptr);
    EXPECT_NE(dynamic_cast<GreasedLevel*>(createLevel("greased").get()), nullptr);
    EXPECT_NE(dynamic_cast<HotColdLevel*>(createLevel("hotcold").get()), nullptr);
    EXPECT_EQ(dynamic_cast<WhackLevel*>(createLevel("Whack").get()), nullptr);
}

TEST(AimFactory, ConstructorDefaults) {
    WhackLevel whack;
    EXPECT_EQ(whack.slots[5].radius, 30);
    EXPECT_FALSE(whack.slots[0].active);
    EXPECT_EQ(whack.rng, nullptr);
    DoubleClickLevel dc;
    EXPECT_EQ(dc.columns, 4);
    EXPECT_EQ(dc.rows, 2);
    EXPECT_EQ(dc.cellCount, 8);
    EXPECT_EQ(dc.armedCell, -1);
    EXPECT_EQ(dc.armedTime, -1.0);
    PrecisionLevel precision;
    EXPECT_EQ(precision.dotRadius, 9);
    EXPECT_EQ(precision.ringRadius, 44);
    DecoyLevel decoy;
    EXPECT_EQ(decoy.radius, 34.0);
    EXPECT_EQ(HotColdLevel{}.spotRadius, 46);
}

// ---------------------------------------------------------------------------
// Whack

using WhackDesk = Desk<WhackLevel>;

TEST(WhackStation, SixGreensToSwatBeforeStationFortyAndEightFromThereOn) {
    EXPECT_EQ(WhackDesk(5489, 39).level.goal, 6);
    EXPECT_EQ(WhackDesk(5489, 40).level.goal, 8);
    EXPECT_EQ(WhackDesk(5489, 41).level.goal, 8);
}

TEST(WhackStation, SetupDrawsNothingAndKeepsTheRunsEngine) {
    WhackDesk desk;
    EXPECT_EQ(desk.rng, Rng(5489));
    EXPECT_EQ(desk.level.rng, &desk.rng);
    EXPECT_EQ(desk.level.hits, 0);
    EXPECT_EQ(desk.level.strikes, 0);
    EXPECT_EQ(desk.level.spawnTimer, 0.0);
    for (const WhackLevel::Slot& s : desk.level.slots) {
        EXPECT_FALSE(s.active);
    }
}

TEST(WhackStation, FirstFrameSpawnsFromTheRunsEngineColourThenXThenY) {
    WhackDesk desk;
    EXPECT_EQ(desk.step(0.016), LevelResult::Running);
    // 3499211612 mod 100 = 12 (red); x in [313, 1053] from 581869302 is 413;
    // y in [250, 570] from 3890346734 is 540.
    const WhackLevel::Slot& s = desk.level.slots[0];
    EXPECT_TRUE(s.active);
    EXPECT_TRUE(s.red);
    EXPECT_EQ(s.x, 413);
    EXPECT_EQ(s.y, 540);
    EXPECT_EQ(s.radius, 30);
    EXPECT_DOUBLE_EQ(s.life, 1.1 - 0.016);
    EXPECT_DOUBLE_EQ(desk.level.spawnTimer, 0.55);
    EXPECT_FALSE(desk.level.slots[1].active);
    EXPECT_EQ(desk.rng, test::engineAfter(5489, 3));
}

TEST(WhackStation, SpawnsTakeTheFirstFreeSlotWithTheSameThreeDraws) {
    WhackDesk desk;
    desk.step(0.016);
    desk.level.spawnTimer = 0.0;
    desk.step(0.016);
    // 3586334585 mod 100 = 85 (green) at (407, 561).
    const WhackLevel::Slot& s = desk.level.slots[1];
    EXPECT_TRUE(s.active);
    EXPECT_FALSE(s.red);
    EXPECT_EQ(s.x, 407);
    EXPECT_EQ(s.y, 561);
    EXPECT_EQ(desk.rng, test::engineAfter(5489, 6));
}

TEST(WhackStation, DrawsDuringPlayFollowTheSpawnBeat) {
    // Eighth-second frames: a pop-up every fifth frame (0.625 s), each one
    // gone after nine; three draws each, so the count follows play time.
    WhackDesk desk;
    desk.step(0.125);
    EXPECT_EQ(desk.rng, test::engineAfter(5489, 3));
    for (int i = 0; i < 4; ++i) desk.step(0.125);
    EXPECT_EQ(desk.rng, test::engineAfter(5489, 3));
    desk.step(0.125);
    EXPECT_EQ(desk.rng, test::engineAfter(5489, 6));
    for (int i = 0; i < 5; ++i) desk.step(0.125);
    EXPECT_EQ(desk.rng, test::engineAfter(5489, 9));
    EXPECT_EQ(desk.step(0.125), LevelResult::Running);
    EXPECT_EQ(desk.rng, test::engineAfter(5489, 9));
}

TEST(WhackStation, AFullBoardSpawnsNothingAndDrawsNothing) {
    WhackDesk desk;
    for (int i = 0; i < 6; ++i) {
        desk.level.slots[i] = WhackLevel::Slot{true, true, 350 + 100 * i, 300, 30, 1.0};
    }
    desk.step(0.016);
    EXPECT_EQ(desk.rng, Rng(5489));
    EXPECT_DOUBLE_EQ(desk.level.spawnTimer, 0.55);
    EXPECT_EQ(desk.level.slots[0].x, 350);
}

TEST(WhackStation, TheThirdGreenThatGetsAwayFiresEvenOneSwatShort) {
    WhackDesk desk;
    desk.level.spawnTimer = 1.0;
    desk.level.hits = desk.level.goal - 1;
    desk.level.strikes = 2;
    desk.level.slots[2] = WhackLevel::Slot{true, false, 500, 400, 30, 0.01};
    // The swat on the escaping green comes too late: expiry is checked first.
    EXPECT_EQ(desk.press(500, 400), LevelResult::Failed);
    EXPECT_EQ(desk.level.strikes, 3);
    EXPECT_EQ(desk.level.hits, desk.level.goal - 1);
}

TEST(WhackStation, AGreenThatGetsAwayIsAStrike) {
    WhackDesk desk;
    desk.level.spawnTimer = 1.0;
    desk.level.slots[0] = WhackLevel::Slot{true, false, 500, 400, 30, 0.01};
    EXPECT_EQ(desk.step(0.016), LevelResult::Running);
    EXPECT_FALSE(desk.level.slots[0].active);
    EXPECT_EQ(desk.level.strikes, 1);
}

TEST(WhackStation, ARedThatTimesOutCostsNothing) {
    WhackDesk desk;
    desk.level.spawnTimer = 1.0;
    desk.level.strikes = 2;
    desk.level.slots[0] = WhackLevel::Slot{true, true, 500, 400, 30, 0.01};
    EXPECT_EQ(desk.step(0.016), LevelResult::Running);
    EXPECT_FALSE(desk.level.slots[0].active);
    EXPECT_EQ(desk.level.strikes, 2);
}

TEST(WhackStation, OneSwatOnTwoOverlappingGreensCountsTwo) {
    WhackDesk desk;
    desk.level.spawnTimer = 1.0;
    desk.level.slots[0] = WhackLevel::Slot{true, false, 500, 400, 30, 1.0};
    desk.level.slots[3] = WhackLevel::Slot{true, false, 520, 400, 30, 1.0};
    EXPECT_EQ(desk.press(510, 400), LevelResult::Running);
    EXPECT_EQ(desk.level.hits, 2);
    EXPECT_FALSE(desk.level.slots[0].active);
    EXPECT_FALSE(desk.level.slots[3].active);
}

TEST(WhackStation, TheSwatThatReachesTheGoalSolves) {
    WhackDesk desk;
    desk.level.spawnTimer = 1.0;
    desk.level.hits = 4;
    desk.level.slots[0] = WhackLevel::Slot{true, false, 500, 400, 30, 1.0};
    desk.level.slots[1] = WhackLevel::Slot{true, false, 515, 410, 30, 1.0};
    EXPECT_EQ(desk.press(508, 405), LevelResult::Solved);
    EXPECT_EQ(desk.level.hits, 6);
}

TEST(WhackStation, TouchingARedFiresAtOnce) {
    WhackDesk desk;
    desk.level.spawnTimer = 1.0;
    desk.level.slots[1] = WhackLevel::Slot{true, true, 700, 300, 30, 1.0};
    EXPECT_EQ(desk.press(700 + 29, 300), LevelResult::Failed);
}

TEST(WhackStation, ASwatExactlyOneRadiusAwayMisses) {
    WhackDesk desk;
    desk.level.spawnTimer = 1.0;
    desk.level.slots[1] = WhackLevel::Slot{true, true, 700, 300, 30, 1.0};
    desk.level.slots[2] = WhackLevel::Slot{true, false, 400, 300, 30, 1.0};
    EXPECT_EQ(desk.press(700, 330), LevelResult::Running);   // 30 px under the red
    EXPECT_EQ(desk.press(382, 276), LevelResult::Running);   // 18, 24: 30 px off the green
    EXPECT_EQ(desk.level.hits, 0);
    EXPECT_EQ(desk.press(382, 277), LevelResult::Running);
    EXPECT_EQ(desk.level.hits, 1);
}

TEST(WhackStation, PopUpsAreTwoToneDiscsUnderTheTally) {
    test::SoftwareCanvas canvas;
    canvas.useGameFonts();
    canvas.fill(kBlack);
    WhackDesk desk;
    desk.level.slots[0] = WhackLevel::Slot{true, false, 500, 400, 30, 1.0};
    desk.level.slots[4] = WhackLevel::Slot{true, true, 800, 400, 30, 1.0};
    desk.level.render(canvas.graphics);
    EXPECT_EQ(canvas.pixel(500, 400), kGreen);
    EXPECT_EQ(canvas.pixel(527, 400), rgb(28, 89, 55));
    EXPECT_EQ(canvas.pixel(500, 400 - 27), rgb(28, 89, 55));
    EXPECT_EQ(canvas.pixel(800, 400), kRed);
    EXPECT_EQ(canvas.pixel(773, 400), rgb(102, 23, 16));
    EXPECT_EQ(canvas.pixel(532, 400), kBlack);
    // The tally in gold centred 30 px into the play area; the instruction
    // line along its foot.
    EXPECT_TRUE(anyPixel(canvas, {560, 205, 246, 30}, rgb(255, 216, 107)));
    EXPECT_FALSE(anyPixel(canvas, {263, 190, 840, 12}, rgb(255, 216, 107)));
    EXPECT_TRUE(anyPixel(canvas, {560, 604, 246, 18}, rgb(178, 119, 32)));
}

// ---------------------------------------------------------------------------
// DoubleClick

using ClickDesk = Desk<DoubleClickLevel>;

TEST(DoubleClickStation, EightCellsInTwoRowsAroundTheCentre) {
    ClickDesk desk;
    const Rect* c = desk.level.cells;
    // cx = 683: lefts 416, 554, 692, 830; tops 260 and 388.
    EXPECT_EQ(c[0].x, 416);
    EXPECT_EQ(c[0].y, 260);
    EXPECT_EQ(c[1].x, 554);
    EXPECT_EQ(c[2].x, 692);
    EXPECT_EQ(c[3].x, 830);
    EXPECT_EQ(c[3].y, 260);
    EXPECT_EQ(c[4].x, 416);
    EXPECT_EQ(c[4].y, 388);
    EXPECT_EQ(c[7].x, 830);
    EXPECT_EQ(c[7].y, 388);
    EXPECT_EQ(c[5].w, 120);
    EXPECT_EQ(c[5].h, 110);
}

TEST(DoubleClickStation, TheLitCellIsTheFirstDrawAndSeven) {
    ClickDesk desk;
    EXPECT_EQ(desk.level.litCell, 4);   // 3499211612 & 7
    EXPECT_EQ(desk.level.armedCell, -1);
    EXPECT_EQ(desk.level.armedTime, -1.0);
    EXPECT_EQ(desk.level.rng, &desk.rng);
    EXPECT_EQ(desk.rng, test::engineAfter(5489, 1));
}

TEST(DoubleClickStation, TheLightMovesEveryOnePointFourSecondsWithOneDraw) {
    ClickDesk desk;
    // Eighth-second frames: 1.375 s after eleven, 1.5 s after twelve.
    for (int i = 0; i < 11; ++i) desk.step(0.125);
    EXPECT_EQ(desk.rng, test::engineAfter(5489, 1));
    desk.step(0.125);
    EXPECT_EQ(desk.level.litCell, 6);   // 581869302 mod 8
    EXPECT_EQ(desk.rng, test::engineAfter(5489, 2));
    for (int i = 0; i < 12; ++i) desk.step(0.125);
    EXPECT_EQ(desk.rng, test::engineAfter(5489, 3));
}

TEST(DoubleClickStation, TwoClicksOnTheLitCellJustUnderFourTenthsApartSolve) {
    ClickDesk desk;
    const Rect& c = desk.level.cells[desk.level.litCell];
    EXPECT_EQ(desk.press(c.x + 5, c.y + 5), LevelResult::Running);
    EXPECT_EQ(desk.level.armedCell, desk.level.litCell);
    for (int i = 0; i < 38; ++i) desk.step(0.01);
    EXPECT_EQ(desk.press(c.x + 5, c.y + 5, 0.01), LevelResult::Solved);   // 0.39 s later
}

TEST(DoubleClickStation, TwoClicksJustOverFourTenthsApartOnlyReArm) {
    ClickDesk desk;
    const Rect& c = desk.level.cells[desk.level.litCell];
    desk.press(c.x + 5, c.y + 5, 0.005);
    for (int i = 0; i < 81; ++i) desk.step(0.005);
    EXPECT_EQ(desk.press(c.x + 5, c.y + 5, 0.005), LevelResult::Running);   // 0.41 s later
    EXPECT_EQ(desk.level.armedCell, desk.level.litCell);
    EXPECT_DOUBLE_EQ(desk.level.armedTime, desk.level.clock);
}

TEST(DoubleClickStation, TheClockStandsStillOnTheFramesOfAClickOnACell) {
    ClickDesk desk;
    const Rect& c = desk.level.cells[desk.level.litCell];
    desk.step(0.1);
    EXPECT_DOUBLE_EQ(desk.level.clock, 0.1);
    desk.press(c.x + 5, c.y + 5, 0.1);
    EXPECT_DOUBLE_EQ(desk.level.clock, 0.1);
    EXPECT_DOUBLE_EQ(desk.level.armedTime, 0.1);
    desk.press(100, 100, 0.1);   // nowhere near a desk: the clock runs
    EXPECT_DOUBLE_EQ(desk.level.clock, 0.2);
}

TEST(DoubleClickStation, ClickFramesDoNotCountTowardsTheGap) {
    // 0.395 s between the clicks on the station clock, 0.405 s of real time:
    // the second click's own frame is not counted, so this still solves.
    ClickDesk desk;
    const Rect& c = desk.level.cells[desk.level.litCell];
    desk.press(c.x + 5, c.y + 5, 0.005);
    for (int i = 0; i < 79; ++i) desk.step(0.005);
    EXPECT_EQ(desk.press(c.x + 5, c.y + 5, 0.01), LevelResult::Solved);
}

TEST(DoubleClickStation, AClickOnADarkCellFires) {
    ClickDesk desk;
    const Rect& dark = desk.level.cells[(desk.level.litCell + 1) % 8];
    EXPECT_EQ(desk.press(dark.x + dark.w - 1, dark.y + dark.h - 1), LevelResult::Failed);
}

TEST(DoubleClickStation, AClickInTheGapBetweenCellsDoesNothing) {
    ClickDesk desk;
    const Rect& lit = desk.level.cells[desk.level.litCell];
    // The lit cell's right edge is outside it (half-open); the next desk starts 18 px on.
    EXPECT_EQ(desk.press(lit.x + lit.w, lit.y + 5), LevelResult::Running);
    EXPECT_EQ(desk.press(lit.x + 5, lit.y + lit.h), LevelResult::Running);
    EXPECT_EQ(desk.level.armedCell, -1);
    EXPECT_DOUBLE_EQ(desk.level.clock, 0.032);
}

TEST(DoubleClickStation, ADoubleClickThatStraddlesAMoveOnlyArmsTheNewCell) {
    Desk<DoubleClickLevel> desk(5489);
    // Seed 5489 lights cell 4 and then cell 6.
    const Rect& first = desk.level.cells[4];
    const Rect& second = desk.level.cells[6];
    for (int i = 0; i < 10; ++i) desk.step(0.125);   // 1.25 s
    desk.press(first.x + 5, first.y + 5, 0.125);     // 1.375 s: arms cell 4
    EXPECT_EQ(desk.level.armedCell, 4);
    desk.step(0.125);   // 1.5 s: the light moves to cell 6, disarmed
    EXPECT_EQ(desk.level.litCell, 6);
    EXPECT_EQ(desk.level.armedCell, -1);
    // The old cell is dark now; the new cell takes a first click only.
    EXPECT_EQ(desk.press(second.x + 5, second.y + 5, 0.01), LevelResult::Running);
    EXPECT_EQ(desk.level.armedCell, 6);
}

TEST(DoubleClickStation, TheLitCellIsBrassWithItsX2) {
    test::SoftwareCanvas canvas;
    canvas.useGameFonts();
    canvas.fill(kBlack);
    ClickDesk desk;
    desk.level.render(canvas.graphics);
    const Rect& lit = desk.level.cells[desk.level.litCell];
    const Rect& dark = desk.level.cells[0];
    EXPECT_EQ(canvas.pixel(lit.x + 10, lit.y + 10), rgb(216, 183, 90));
    EXPECT_EQ(canvas.pixel(lit.x + lit.w - 10, lit.y + lit.h - 10), rgb(216, 183, 90));
    EXPECT_EQ(canvas.pixel(dark.x + 10, dark.y + 10), rgb(99, 77, 26));
    EXPECT_EQ(canvas.pixel(dark.x + dark.w / 2, dark.y + dark.h / 2), rgb(99, 77, 26));
    EXPECT_EQ(canvas.pixel(lit.x - 9, lit.y + 10), kBlack);
    EXPECT_TRUE(anyPixel(canvas, {lit.x + 30, lit.y + 30, 60, 50}, rgb(20, 20, 20)));
    EXPECT_FALSE(anyPixel(canvas, {dark.x + 30, dark.y + 30, 60, 50}, rgb(20, 20, 20)));
    EXPECT_TRUE(anyPixel(canvas, {450, 604, 466, 18}, rgb(178, 119, 32)));
}

// ---------------------------------------------------------------------------
// Precision

using PrecisionDesk = Desk<PrecisionLevel>;

TEST(PrecisionStation, TheDotStartsInTheMiddleWithTwoParityDrawsXFirst) {
    // Seed 42: 1608637542 is even (vx -40), 3421126067 odd (vy +32).
    PrecisionDesk desk(42);
    EXPECT_EQ(desk.level.x, 683.0);
    EXPECT_EQ(desk.level.y, 405.0);
    EXPECT_EQ(desk.level.vx, -40.0);
    EXPECT_EQ(desk.level.vy, 32.0);
    EXPECT_EQ(desk.rng, test::engineAfter(42, 2));
    PrecisionDesk other(1);   // both odd
    EXPECT_EQ(other.level.vx, 40.0);
    EXPECT_EQ(other.level.vy, 32.0);
}

TEST(PrecisionStation, TheDotDriftsAndTurnsAtTheWallsWithoutClamping) {
    PrecisionDesk desk(1);
    desk.level.x = 263 + 840 - 44 - 0.1;   // 0.1 px short of the right wall
    desk.level.y = 405.0;
    desk.step(0.01);
    EXPECT_DOUBLE_EQ(desk.level.x, 263 + 840 - 44 - 0.1 + 0.4);
    EXPECT_EQ(desk.level.vx, -40.0);
    EXPECT_DOUBLE_EQ(desk.level.y, 405.32);
    EXPECT_EQ(desk.level.vy, 32.0);
}

struct PrecisionPress : ::testing::Test {
    PrecisionDesk desk;
    void SetUp() override {
        desk.level.vx = 0.0;
        desk.level.vy = 0.0;
    }
};

TEST_F(PrecisionPress, APressExactlyNinePixelsOffSolves) {
    EXPECT_EQ(desk.press(683 + 9, 405), LevelResult::Solved);
}

TEST_F(PrecisionPress, APressExactlyFortyFourPixelsOffFires) {
    EXPECT_EQ(desk.press(683, 405 - 44), LevelResult::Failed);
}

TEST_F(PrecisionPress, APressJustOutsideTheRingIsIgnored) {
    desk.level.x = 683.0 - 0.01;
    EXPECT_EQ(desk.press(683 + 44, 405), LevelResult::Running);   // 44.01 px
    EXPECT_EQ(desk.press(683 + 10, 405), LevelResult::Failed);    // 10.01 px: on the ring
}

TEST(PrecisionStation, ARingAroundATinyGreenDot) {
    test::SoftwareCanvas canvas;
    canvas.fill(kBlack);
    PrecisionDesk desk;
    desk.level.x = 500.7;
    desk.level.y = 300.2;
    desk.level.render(canvas.graphics);
    EXPECT_EQ(canvas.pixel(500, 300), kGreen);
    EXPECT_EQ(canvas.pixel(500 + 8, 300), kGreen);
    EXPECT_EQ(canvas.pixel(500 + 20, 300), kBlack);
    EXPECT_EQ(canvas.pixel(500 + 44, 300), rgb(89, 20, 14));
    EXPECT_EQ(canvas.pixel(500 - 44, 300), rgb(89, 20, 14));
    EXPECT_EQ(canvas.pixel(500 + 43, 300), rgb(63, 14, 10));
    EXPECT_EQ(canvas.pixel(500 + 46, 300), kBlack);
}

// ---------------------------------------------------------------------------
// Decoy

using DecoyDesk = Desk<DecoyLevel>;

TEST(DecoyStation, TheButtonWaitsInTheMiddleAndNothingIsDrawn) {
    DecoyDesk desk;
    EXPECT_EQ(desk.level.x, 683.0);
    EXPECT_EQ(desk.level.y, 405.0);
    EXPECT_EQ(desk.level.radius, 34.0);
    EXPECT_EQ(desk.level.lastX, 263.0);
    EXPECT_EQ(desk.level.lastY, 190.0);
    EXPECT_EQ(desk.level.calm, 0.0);
    EXPECT_EQ(desk.rng, Rng(5489));
}

TEST(DecoyStation, RushingAtTheButtonMakesItFleeAndDrainsCalm) {
    DecoyDesk desk;
    desk.pointAt(383, 405);
    desk.step(0.02);
    desk.level.calm = 0.5;
    // 200 px in one 0.02 s frame (10000 px/s), ending 100 px left of it.
    desk.pointAt(583, 405);
    EXPECT_EQ(desk.step(0.02), LevelResult::Running);
    EXPECT_DOUBLE_EQ(desk.level.x, 683.0 + 260.0 * 0.02);
    EXPECT_DOUBLE_EQ(desk.level.y, 405.0);
    EXPECT_DOUBLE_EQ(desk.level.calm, 0.5 - 2.0 * 0.02);
}

TEST(DecoyStation, ASlowHandNearbyCalmsItAndItStays) {
    DecoyDesk desk;
    desk.level.lastX = 583;
    desk.level.lastY = 405;
    desk.pointAt(584, 405);   // 50 px/s
    desk.step(0.02);
    EXPECT_DOUBLE_EQ(desk.level.calm, 1.6 * 0.02);
    EXPECT_EQ(desk.level.x, 683.0);
}

TEST(DecoyStation, AMiddlingSpeedNeitherCalmsNorScaresIt) {
    DecoyDesk desk;
    desk.level.lastX = 583;
    desk.level.lastY = 405;
    desk.level.calm = 0.5;
    desk.pointAt(587, 405);   // 200 px/s
    desk.step(0.02);
    EXPECT_DOUBLE_EQ(desk.level.calm, 0.5 - 0.04);
    EXPECT_EQ(desk.level.x, 683.0);
}

TEST(DecoyStation, AFastHandFurtherOffDoesNotScareIt) {
    DecoyDesk desk;
    desk.pointAt(383, 405);
    desk.step(0.02);
    desk.pointAt(563, 405);   // 120 px away
    desk.step(0.02);
    EXPECT_EQ(desk.level.x, 683.0);
}

TEST(DecoyStation, OnceItTrustsYouEvenAFastHandDoesNotScareIt) {
    DecoyDesk desk;
    desk.pointAt(383, 405);
    desk.step(0.02);
    desk.level.calm = 1.0;
    desk.pointAt(623, 405);
    desk.step(0.02);
    EXPECT_EQ(desk.level.x, 683.0);
    EXPECT_DOUBLE_EQ(desk.level.calm, 0.96);
}

TEST(DecoyStation, FleeingStopsAtTheEdgeOfThePlayArea) {
    DecoyDesk desk;
    desk.level.x = 263 + 840 - 34 - 1;
    desk.pointAt(900, 405);
    desk.step(0.05);
    desk.pointAt(1003, 405);
    desk.step(0.05);
    EXPECT_EQ(desk.level.x, 263.0 + 840.0 - 34.0);
    desk.level.y = 190 + 34 + 2;
    desk.pointAt(1069, 250);
    desk.step(0.05);
    desk.step(0.05);
    EXPECT_EQ(desk.level.y, 190.0 + 34.0);
}

// A hand resting at (x, y) since the last frame.
void restAt(DecoyDesk& desk, int x, int y) {
    desk.level.lastX = x;
    desk.level.lastY = y;
    desk.pointAt(x, y);
}

TEST(DecoyStation, APressOnItBeforeItTurnsGreenFires) {
    DecoyDesk desk;
    restAt(desk, 683 + 33, 405);
    desk.level.calm = 0.86;   // 0.892 after this calm frame
    EXPECT_EQ(desk.press(683 + 33, 405, 0.02), LevelResult::Failed);
}

TEST(DecoyStation, GrabbingItBeforeItTrustsYouFiresEvenFromAStandstill) {
    DecoyDesk desk;
    desk.pointAt(683, 405);
    desk.step(0.02);   // the first frame's leap from the corner
    EXPECT_EQ(desk.level.x, 683.0);
    EXPECT_EQ(desk.press(683, 405, 0.02), LevelResult::Failed);
}

TEST(DecoyStation, APressOnItOnceGreenCatchesIt) {
    DecoyDesk desk;
    restAt(desk, 683 + 33, 405);
    desk.level.calm = 0.87;   // 0.902 after this calm frame
    EXPECT_EQ(desk.press(683 + 33, 405, 0.02), LevelResult::Solved);
}

TEST(DecoyStation, APressThatMissesDoesNothing) {
    DecoyDesk desk;
    restAt(desk, 683 + 34, 405);
    desk.level.calm = 1.0;
    EXPECT_EQ(desk.press(683 + 34, 405, 0.02), LevelResult::Running);
}

TEST(DecoyStation, ItWarmsFromRedTowardOrangeAndTurnsGreenWhenCalm) {
    test::SoftwareCanvas canvas;
    canvas.useGameFonts();
    canvas.fill(kBlack);
    DecoyDesk desk;
    desk.level.calm = 0.5;
    desk.level.x = 500.9;
    desk.level.render(canvas.graphics);
    EXPECT_EQ(canvas.pixel(500, 405 - 22), rgb(255, 114, 44));
    EXPECT_EQ(canvas.pixel(500, 405 - 31), rgb(102, 45, 17));
    EXPECT_EQ(canvas.pixel(500, 405 - 36), kBlack);
    EXPECT_TRUE(anyPixel(canvas, {470, 396, 60, 18}, rgb(20, 20, 20)));
    desk.level.calm = 0.9;
    desk.level.render(canvas.graphics);
    EXPECT_EQ(canvas.pixel(500, 405 - 22), kGreen);
}

// ---------------------------------------------------------------------------
// Greased

using GreasedDesk = Desk<GreasedLevel>;

TEST(GreasedStation, TheMarkIsOneParityDrawAndTheTrackSpansThePlayArea) {
    GreasedDesk even(5489);   // 3499211612 is even: the right-hand mark
    EXPECT_EQ(even.level.mark, 0.85);
    EXPECT_EQ(even.rng, test::engineAfter(5489, 1));
    GreasedDesk odd(1);       // 1791095845 is odd
    EXPECT_EQ(odd.level.mark, 0.15);
    EXPECT_EQ(even.level.value, 0.5);
    EXPECT_EQ(even.level.dwell, 0.0);
    EXPECT_FALSE(even.level.dragging);
    EXPECT_EQ(even.level.track.x, 343);
    EXPECT_EQ(even.level.track.y, 393);
    EXPECT_EQ(even.level.track.w, 680);
    EXPECT_EQ(even.level.track.h, 24);
}

TEST(GreasedStation, APressOnTheTrackDragsTheKnobTowardThePointer) {
    GreasedDesk desk;
    desk.press(343 + 680, 405, 0.1);   // the right edge is outside the track
    EXPECT_FALSE(desk.level.dragging);
    desk.in.mouseDown = false;
    desk.step(0.1);
    desk.press(343 + 612, 405, 0.1);   // 0.9 of the way along
    EXPECT_TRUE(desk.level.dragging);
    EXPECT_DOUBLE_EQ(desk.level.value, 0.5 + (0.9 - 0.5) * 0.6);
    // While held, the pointer may leave the track.
    desk.pointAt(343 + 680, 100);
    desk.step(0.5);
    EXPECT_DOUBLE_EQ(desk.level.value, 1.0);
}

TEST(GreasedStation, LettingGoLetsTheKnobSlideHomeAndResetsTheDwell) {
    GreasedDesk desk;
    desk.level.value = 0.86;
    desk.level.dwell = 0.5;
    desk.step(0.01);   // still within 0.03 of the mark after sliding
    EXPECT_DOUBLE_EQ(desk.level.value, 0.86 + (0.5 - 0.86) * 0.012);
    EXPECT_DOUBLE_EQ(desk.level.dwell, 0.51);
    for (int i = 0; i < 10 && desk.level.dwell > 0.0; ++i) {
        EXPECT_EQ(desk.step(0.1), LevelResult::Running);
    }
    EXPECT_EQ(desk.level.dwell, 0.0);
    EXPECT_GE(std::fabs(desk.level.value - desk.level.mark), 0.03);
}

TEST(GreasedStation, HeldOnTheMarkForSevenTenthsItSolves) {
    GreasedDesk desk;
    desk.press(343 + 578, 405, 0.01);   // 0.85 along
    desk.level.value = 0.85;
    desk.level.dwell = 0.0;
    for (int i = 0; i < 5; ++i) {
        EXPECT_EQ(desk.step(0.125), LevelResult::Running) << i;
    }
    EXPECT_EQ(desk.step(0.0625), LevelResult::Running);   // 0.6875 s
    EXPECT_EQ(desk.step(0.0625), LevelResult::Solved);    // 0.75 s
}

TEST(GreasedStation, ItNeverFires) {
    GreasedDesk desk;
    for (int i = 0; i < 50; ++i) {
        EXPECT_EQ(desk.press(270 + 17 * i, 200 + 8 * i, 0.05), LevelResult::Running);
    }
}

TEST(GreasedStation, TrackMarkAndKnobTurnGreenOnTheMark) {
    test::SoftwareCanvas canvas;
    canvas.fill(kBlack);
    GreasedDesk desk;   // mark 0.85: the bar at x 917..924, y 383..426
    desk.level.render(canvas.graphics);
    EXPECT_EQ(canvas.pixel(400, 405), rgb(30, 30, 30));
    EXPECT_EQ(canvas.pixel(920, 386), kGreen);
    EXPECT_EQ(canvas.pixel(916, 386), kBlack);
    EXPECT_EQ(canvas.pixel(683, 405), kRed);          // knob at 0.5, no dwell
    EXPECT_EQ(canvas.pixel(683 - 15, 405), kRed);
    EXPECT_EQ(canvas.pixel(660, 365), kBlack);        // no progress bar
    desk.level.dwell = 0.35;
    desk.level.render(canvas.graphics);
    EXPECT_EQ(canvas.pixel(683, 405), kGreen);
    EXPECT_EQ(canvas.pixel(654, 364), kGreen);        // bar {653, 363, 30, 6}
    EXPECT_EQ(canvas.pixel(680, 366), kGreen);
    EXPECT_EQ(canvas.pixel(684, 365), kBlack);
}

// ---------------------------------------------------------------------------
// HotCold

using HotColdDesk = Desk<HotColdLevel>;

TEST(HotColdStation, TheSpotIsTwoUniformDrawsXFirst) {
    HotColdDesk desk;
    EXPECT_EQ(desk.level.spotX, 891);   // [353, 1013] from 3499211612
    EXPECT_EQ(desk.level.spotY, 314);   // [280, 530] from 581869302
    EXPECT_EQ(desk.level.spotRadius, 46);
    EXPECT_EQ(desk.level.heat, 0.0);
    EXPECT_EQ(desk.rng, test::engineAfter(5489, 2));
}

TEST(HotColdStation, HeatFallsWithDistanceOverHalfTheDiagonal) {
    HotColdDesk desk;
    desk.pointAt(891 + 30, 314 + 40);
    desk.step(0.0);
    EXPECT_DOUBLE_EQ(desk.level.heat, 1.0 - 50.0 / (std::hypot(840.0, 430.0) * 0.5));
    desk.pointAt(263, 620);
    desk.step(0.5);   // dt does not matter
    EXPECT_EQ(desk.level.heat, 0.0);
}

TEST(HotColdStation, APressOnTheSpotSolves) {
    HotColdDesk desk;
    EXPECT_EQ(desk.press(891 - 46, 314), LevelResult::Solved);
}

TEST(HotColdStation, AMissInTheColdFires) {
    HotColdDesk desk;
    EXPECT_EQ(desk.press(891 - 300, 314), LevelResult::Failed);
}

TEST(HotColdStation, AWarmMissOnlyClicks) {
    HotColdDesk desk;
    EXPECT_EQ(desk.press(891 - 47, 314), LevelResult::Running);
    EXPECT_EQ(desk.press(891 - 200, 314), LevelResult::Running);
}

TEST(HotColdStation, AMissExactlyAtHalfHeatOnlyClicks) {
    // A 600 x 800 area has a 1000 px diagonal: 250 px off is heat 0.5 exactly.
    HotColdDesk desk(5489, 11, Rect{0, 0, 600, 800});
    desk.level.spotX = 300;
    desk.level.spotY = 400;
    EXPECT_EQ(desk.press(300 + 150, 400 + 200), LevelResult::Running);
    EXPECT_EQ(desk.level.heat, 0.5);
    EXPECT_EQ(desk.press(300 + 251, 400), LevelResult::Failed);
}

TEST(HotColdStation, TheGlowIsTranslucentAndTheWordFollowsTheHeat) {
    test::SoftwareCanvas canvas;
    canvas.useGameFonts();
    const Color glass = rgb(16, 36, 15);
    canvas.fill(glass);
    HotColdDesk desk;
    desk.level.heat = 0.25;   // (70, 80, 30) at alpha 90: "COOL" in orange
    desk.level.render(canvas.graphics);
    const double a = 90.0 / 255.0;
    const Color blended = rgb(static_cast<int>(std::lround(70 * a + 16 * (1 - a))),
                              static_cast<int>(std::lround(80 * a + 36 * (1 - a))),
                              static_cast<int>(std::lround(30 * a + 15 * (1 - a))));
    EXPECT_TRUE(test::near(canvas.pixel(300, 300), blended, 2)) << std::hex << canvas.pixel(300, 300);
    EXPECT_TRUE(test::near(canvas.pixel(1100, 615), blended, 2));
    EXPECT_EQ(canvas.pixel(262, 300), glass);
    EXPECT_EQ(canvas.pixel(300, 620), glass);
    const Rect word{603, 210, 160, 40};
    EXPECT_TRUE(anyPixel(canvas, word, rgb(255, 170, 46)));
    EXPECT_FALSE(anyPixel(canvas, word, kRed));

    canvas.fill(glass);
    desk.level.heat = 0.7;   // "HOT" in red
    desk.level.render(canvas.graphics);
    EXPECT_TRUE(anyPixel(canvas, word, kRed));
    EXPECT_FALSE(anyPixel(canvas, word, rgb(255, 170, 46)));
}

}  // namespace
}  // namespace vorn

// ---------------------------------------------------------------------------
// The automatic player, and the obvious wrong moves

namespace vorn::test {
namespace {

TEST(AimSolvers, ClearWhackOnEveryDifficulty) {
    EXPECT_EQ(unsolvedRuns("whack"), "");
}

TEST(AimSolvers, ClearDoubleClickOnEveryDifficulty) {
    EXPECT_EQ(unsolvedRuns("doubleclick"), "");
}

TEST(AimSolvers, ClearPrecisionOnEveryDifficulty) {
    EXPECT_EQ(unsolvedRuns("precision"), "");
}

TEST(AimSolvers, ClearDecoyOnEveryDifficulty) {
    EXPECT_EQ(unsolvedRuns("decoy"), "");
}

TEST(AimSolvers, ClearGreasedOnEveryDifficulty) {
    EXPECT_EQ(unsolvedRuns("greased"), "");
}

TEST(AimSolvers, ClearHotColdOnEveryDifficulty) {
    EXPECT_EQ(unsolvedRuns("hotcold"), "");
}

// Clicks whatever `pick` points at, as a careless player would.
template <typename T, typename Pick>
struct Careless final : Solver {
    Pick pick;
    explicit Careless(Pick p) : pick(p) {}
    Intent decide(const Level& station, const Hand& hand, double) override {
        int x = hand.x;
        int y = hand.y;
        if (!pick(dynamic_cast<const T&>(station), x, y)) {
            return Intent{hand.x, hand.y, false};
        }
        return clickAt(hand, x, y);
    }
};

template <typename T, typename Pick>
Careless<T, Pick> careless(Pick p) {
    return Careless<T, Pick>(p);
}

TEST(AimWrongMoves, SwattingARedFiresWithTheFailSound) {
    StationBench bench(shippedRecord("whack"), 5489);   // the first pop-up is red
    auto wrong = careless<WhackLevel>([](const WhackLevel& level, int& x, int& y) {
        for (const WhackLevel::Slot& s : level.slots) {
            if (s.active && s.red) {
                x = s.x;
                y = s.y;
                return true;
            }
        }
        return false;
    });
    EXPECT_EQ(bench.play(wrong, 10.0).result, LevelResult::Failed);
    EXPECT_TRUE(bench.lastSoundWasFail());
    EXPECT_LT(dynamic_cast<const WhackLevel&>(*bench.station).strikes, 3);
}

TEST(AimWrongMoves, LettingGreensGoFiresWithTheFailSound) {
    StationBench bench(shippedRecord("whack"), 5489);
    auto idle = careless<WhackLevel>([](const WhackLevel&, int&, int&) { return false; });
    const StationBench::Outcome out = bench.play(idle, 20.0);
    EXPECT_EQ(out.result, LevelResult::Failed);
    EXPECT_TRUE(bench.lastSoundWasFail());
    EXPECT_EQ(dynamic_cast<const WhackLevel&>(*bench.station).strikes, 3);
}

TEST(AimWrongMoves, ClickingADarkDeskFiresWithTheFailSound) {
    StationBench bench(shippedRecord("doubleclick"), 5489);
    auto wrong = careless<DoubleClickLevel>([](const DoubleClickLevel& level, int& x, int& y) {
        const Rect& c = level.cells[(level.litCell + 4) % 8];
        x = c.x + c.w / 2;
        y = c.y + c.h / 2;
        return true;
    });
    EXPECT_EQ(bench.play(wrong, 10.0).result, LevelResult::Failed);
    EXPECT_TRUE(bench.lastSoundWasFail());
}

TEST(AimWrongMoves, ClickingTheRingFiresWithTheFailSound) {
    StationBench bench(shippedRecord("precision"), 5489);
    auto wrong = careless<PrecisionLevel>([](const PrecisionLevel& level, int& x, int& y) {
        x = static_cast<int>(level.x) + 30;
        y = static_cast<int>(level.y);
        return true;
    });
    EXPECT_EQ(bench.play(wrong, 10.0).result, LevelResult::Failed);
    EXPECT_TRUE(bench.lastSoundWasFail());
}

TEST(AimWrongMoves, GrabbingTheShyButtonFiresWithTheFailSound) {
    StationBench bench(shippedRecord("decoy"), 5489);
    auto wrong = careless<DecoyLevel>([](const DecoyLevel& level, int& x, int& y) {
        x = static_cast<int>(level.x);
        y = static_cast<int>(level.y);
        return true;
    });
    EXPECT_EQ(bench.play(wrong, 10.0).result, LevelResult::Failed);
    EXPECT_TRUE(bench.lastSoundWasFail());
}

TEST(AimWrongMoves, ClickingInTheColdFiresWithTheFailSound) {
    StationBench bench(shippedRecord("hotcold"), 5489);
    auto wrong = careless<HotColdLevel>([](const HotColdLevel& level, int& x, int& y) {
        const Rect& p = level.playArea;
        // The corner farthest from the spot.
        x = level.spotX < p.x + p.w / 2 ? p.x + p.w - 5 : p.x + 5;
        y = level.spotY < p.y + p.h / 2 ? p.y + p.h - 5 : p.y + 5;
        return true;
    });
    EXPECT_EQ(bench.play(wrong, 10.0).result, LevelResult::Failed);
    EXPECT_TRUE(bench.lastSoundWasFail());
}

TEST(AimWrongMoves, LettingGoOfTheGreasedKnobOnTheMarkNeverSolves) {
    StationBench bench(shippedRecord("greased"), 5489);
    // One quick click on the mark, then hands off: the knob slides home.
    struct Flick final : Solver {
        bool pressed = false;
        Intent decide(const Level& station, const Hand& hand, double) override {
            const auto& level = dynamic_cast<const GreasedLevel&>(station);
            const Rect& tr = level.track;
            pressed = pressed || hand.down;
            return Intent{tr.x + static_cast<int>(tr.w * level.mark), tr.y + tr.h / 2,
                          !pressed};
        }
    } flick;
    const StationBench::Outcome out = bench.play(flick, 8.0);
    EXPECT_EQ(out.result, LevelResult::Running);
    EXPECT_FALSE(bench.lastSoundWasFail());
}

}  // namespace
}  // namespace vorn::test
