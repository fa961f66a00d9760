// The thermostat dial ("dial"): grab the knob and drag sideways until the
// needle sits in the green band. The band is painted wider than what it
// accepts, and turning too far snaps the knob back to zero with the buzzer.
// Its rules and sounds, what it draws, and its solver.

#include "stations/dial/dial_fixtures.h"
#include "stations/dial_stations.h"
#include "support/draws_by_hand.h"
#include "support/solvers/family_solvers.h"
#include "support/station_driver.h"
#include "support/station_ink.h"

#include <gtest/gtest.h>

#include <cstdint>
#include <memory>
#include <string>
#include <vector>

namespace vorn::test {
namespace {

using Sounds = std::vector<std::string>;

// Every test here grabs the knob this far left of its centre, well inside
// the grab ring, so a drag of n pixels turns it by n x 0.0025.
constexpr int kGrabLeft = 83;

TEST(DialStation, KnobSitsInTheMiddleOfThePlayAreaWithRadiusNinety) {
    Driver<DialLevel> d(2024);
    EXPECT_EQ(d.level.centerX, 683);   // 263 + 840 / 2
    EXPECT_EQ(d.level.centerY, 405);   // 190 + 430 / 2
    EXPECT_EQ(d.level.radius, 90);
    EXPECT_EQ(d.level.value, 0.0);
    EXPECT_FALSE(d.level.grabbed);
}

TEST(DialStation, TargetIsPointFiftyFivePlusAQuarterOfOneUniformRealDraw) {
    Driver<DialLevel> d(2024);
    Rng ref(2024);
    const double expected = 0.55 + 0.25 * uniformRealByHand(ref);
    EXPECT_DOUBLE_EQ(d.level.target, expected);
    EXPECT_EQ(d.rng, ref);   // two raw draws, nothing more
}

TEST(DialStation, TargetStaysWithinPointFiftyFiveToPointEighty) {
    for (std::uint32_t seed = 1; seed <= 200; ++seed) {
        Driver<DialLevel> d(seed);
        EXPECT_GE(d.level.target, 0.55) << seed;
        EXPECT_LT(d.level.target, 0.80) << seed;
    }
}

TEST(DialStation, DraggingRightTurnsTheKnobByAQuarterPercentPerPixel) {
    Driver<DialLevel> d(2024);
    const int x = d.level.centerX - kGrabLeft;
    const int y = d.level.centerY;
    d.press(x, y);
    EXPECT_TRUE(d.level.grabbed);
    d.moveTo(x + 40, y);
    EXPECT_NEAR(d.level.value, 0.1, 1e-12);
    d.moveTo(x + 20, y - 105);   // only sideways movement turns it
    EXPECT_NEAR(d.level.value, 0.05, 1e-12);
}

TEST(DialStation, GrabsOnlyWithinTwentyPixelsOutsideTheRim) {
    Driver<DialLevel> d(2024);
    const int cx = d.level.centerX;
    const int cy = d.level.centerY;
    d.press(cx - 110, cy);   // exactly radius + 20 away: not closer
    EXPECT_FALSE(d.level.grabbed);
    d.moveTo(cx, cy);
    EXPECT_EQ(d.level.value, 0.0);
    d.release();
    d.press(cx - 109, cy);
    EXPECT_TRUE(d.level.grabbed);
}

TEST(DialStation, LettingGoDropsTheKnob) {
    Driver<DialLevel> d(2024);
    const int cx = d.level.centerX;
    const int cy = d.level.centerY;
    d.press(cx - 33, cy);
    d.moveTo(cx + 7, cy);
    d.release();
    EXPECT_FALSE(d.level.grabbed);
    const double turned = d.level.value;
    d.moveTo(cx + 47, cy);
    EXPECT_EQ(d.level.value, turned);
}

TEST(DialStation, TurningLeftBelowZeroClampsAtZero) {
    Driver<DialLevel> d(2024);
    const int x = d.level.centerX + 17;
    const int y = d.level.centerY;
    d.press(x, y);
    d.moveTo(x - 100, y);
    EXPECT_EQ(d.level.value, 0.0);
    // The stop holds: turning back right starts from zero, not from -0.25.
    d.moveTo(x - 60, y);
    EXPECT_NEAR(d.level.value, 0.1, 1e-12);
}

TEST(DialStation, OvershootResetsToZeroInThatSameFrame) {
    Driver<DialLevel> d(2024);
    d.level.target = 0.6;
    const int x = d.level.centerX - kGrabLeft;
    const int y = d.level.centerY;
    d.press(x, y);
    d.moveTo(x + 260, y);   // 0.65: past the band but within the grace
    ASSERT_NEAR(d.level.value, 0.65, 1e-12);
    EXPECT_EQ(d.moveTo(x + 260 + 13, y), LevelResult::Running);   // 0.6825 > 0.68
    EXPECT_EQ(d.level.value, 0.0);
    EXPECT_TRUE(d.level.grabbed);   // the hand still holds it
}

TEST(DialStation, JustUnderTheOvershootLimitIsNeitherResetNorAccepted) {
    Driver<DialLevel> d(2024);
    d.level.target = 0.6;
    const int x = d.level.centerX - kGrabLeft;
    d.press(x, d.level.centerY);
    EXPECT_EQ(d.moveTo(x + 271, d.level.centerY), LevelResult::Running);   // 0.6775 <= 0.68
    EXPECT_NEAR(d.level.value, 0.6775, 1e-12);
}

TEST(DialStation, InsideTheGreenArcButMoreThanPointZeroThreeOffIsNotAccepted) {
    Driver<DialLevel> d(2024);
    d.level.target = 0.6;
    const int x = d.level.centerX - kGrabLeft;
    const int y = d.level.centerY;
    d.press(x, y);
    EXPECT_EQ(d.moveTo(x + 224, y), LevelResult::Running);   // 0.56: drawn green, not accepted
    EXPECT_EQ(d.moveTo(x + 256, y), LevelResult::Running);   // 0.64: likewise above
    EXPECT_EQ(d.moveTo(x + 229, y), LevelResult::Solved);    // 0.5725: within 0.03
}

TEST(DialStation, TheMiddleOfTheBandPasses) {
    Driver<DialLevel> d(2024);
    d.level.target = 0.7;
    const int x = d.level.centerX - kGrabLeft;
    d.press(x, d.level.centerY);
    EXPECT_EQ(d.moveTo(x + 280, d.level.centerY), LevelResult::Solved);
}

TEST(DialStation, SeedTwentyTwentyFourCentresTheBandAtPointSevenThreeNine) {
    // Raw draws 2525503112 then 3251949050: (3251949050 x 2^21 + 2525503112 >> 11)
    // / 2^53 = 0.7571534, so the target is 0.55 + 0.25 x that = 0.7392883476.
    Driver<DialLevel> d(2024);
    EXPECT_NEAR(d.level.target, 0.73928834764449947, 1e-15);
    EXPECT_EQ(d.rng, engineAfter(2024, 2));
}

TEST(DialStation, TurningIsSilentAndTheBandsEdgePassesWithOnlyThePassSound) {
    // Target 0.73929: the accepted band starts at 0.70929, 283.7 px of drag.
    Driver<DialLevel> d(2024);
    const int x = d.level.centerX - kGrabLeft;
    const int y = d.level.centerY;
    EXPECT_EQ(d.press(x, y), LevelResult::Running);
    EXPECT_EQ(d.moveTo(x + 100, y), LevelResult::Running);
    EXPECT_EQ(d.moveTo(x + 283, y), LevelResult::Running);   // 0.7075: not yet
    EXPECT_EQ(d.sounds, Sounds{});
    EXPECT_EQ(d.moveTo(x + 284, y), LevelResult::Solved);    // 0.71
    EXPECT_EQ(d.sounds, (Sounds{"pass"}));
}

TEST(DialStation, AnOvershootBuzzesOnceAndTheDragGoesOnSilentlyFromZero) {
    Driver<DialLevel> d(2024);
    d.level.target = 0.6;
    const int x = d.level.centerX - kGrabLeft;
    const int y = d.level.centerY;
    d.press(x, y);
    d.moveTo(x + 260, y);
    EXPECT_EQ(d.moveTo(x + 273, y), LevelResult::Running);   // 0.6825 > 0.68
    EXPECT_EQ(d.heard(), (Sounds{"fail"}));
    EXPECT_EQ(d.level.value, 0.0);
    const std::size_t n = d.sounds.size();
    EXPECT_EQ(d.moveTo(x + 273 + 40, y), LevelResult::Running);   // 0.1 from zero
    EXPECT_NEAR(d.level.value, 0.1, 1e-12);
    EXPECT_EQ(d.moveTo(x, y), LevelResult::Running);   // against the stop at zero
    d.release();
    EXPECT_EQ(d.soundsSince(n), Sounds{});
    EXPECT_EQ(d.sounds, (Sounds{"fail"}));
}

// ------------------------------------------------------------------- Look

TEST(DialLook, DrawsRimWellBandNeedleAndHub) {
    Driver<DialLevel> d(2024);
    d.level.target = 0.6;
    d.level.value = 0.25;   // the needle points at three o'clock
    SoftwareCanvas canvas;
    renderOnBlack(canvas, d.level);
    const int cx = d.level.centerX;
    const int cy = d.level.centerY;
    EXPECT_EQ(canvas.pixel(cx, cy - 85), station_ink::darkBrass);      // rim at twelve o'clock
    EXPECT_EQ(canvas.pixel(cx - 40, cy - 40), station_ink::ink);       // the well
    // The band at radius 84, painted 0.05 either side of the target: past
    // what is accepted.
    EXPECT_EQ(canvas.pixel(dial::alongX(cx, 84, 0.6), dial::alongY(cy, 84, 0.6)), station_ink::terminalGreen);
    EXPECT_EQ(canvas.pixel(dial::alongX(cx, 84, 0.645), dial::alongY(cy, 84, 0.645)), station_ink::terminalGreen);
    EXPECT_EQ(canvas.pixel(dial::alongX(cx, 84, 0.555), dial::alongY(cy, 84, 0.555)), station_ink::terminalGreen);
    EXPECT_EQ(canvas.pixel(dial::alongX(cx, 84, 0.7), dial::alongY(cy, 84, 0.7)), station_ink::darkBrass);
    EXPECT_EQ(canvas.pixel(cx + 45, cy), station_ink::alarmRed);   // the needle
    EXPECT_EQ(canvas.pixel(cx + 45, cy + 4), station_ink::ink);    // five pixels thick, no more
    EXPECT_EQ(canvas.pixel(cx + 69, cy), station_ink::alarmRed);   // reaching to radius 70
    EXPECT_EQ(canvas.pixel(cx + 72, cy), station_ink::ink);
    EXPECT_EQ(canvas.pixel(cx - 7, cy), station_ink::brass);       // the hub
}

TEST(DialLook, TheNeedleFollowsTheKnobAndTheBandStaysOnTheSeedsTarget) {
    Driver<DialLevel> d(2024);   // target 0.7393
    const int cx = d.level.centerX;
    const int cy = d.level.centerY;
    const double target = 0.73928834764449947;
    {
        SoftwareCanvas canvas;
        renderOnBlack(canvas, d.level);
        EXPECT_EQ(canvas.pixel(cx, cy - 45), station_ink::alarmRed);   // at zero: straight up
        EXPECT_EQ(canvas.pixel(cx, cy + 45), station_ink::ink);
        EXPECT_EQ(canvas.pixel(dial::alongX(cx, 84, target), dial::alongY(cy, 84, target)),
                  station_ink::terminalGreen);
        EXPECT_EQ(canvas.pixel(dial::alongX(cx, 84, target - 0.07), dial::alongY(cy, 84, target - 0.07)),
                  station_ink::darkBrass);
    }
    d.press(cx - kGrabLeft, cy);
    d.moveTo(cx - kGrabLeft + 200, cy);   // half a turn
    ASSERT_NEAR(d.level.value, 0.5, 1e-12);
    SoftwareCanvas canvas;
    renderOnBlack(canvas, d.level);
    EXPECT_EQ(canvas.pixel(cx, cy + 45), station_ink::alarmRed);   // straight down now
    EXPECT_EQ(canvas.pixel(cx, cy - 45), station_ink::ink);
    EXPECT_EQ(canvas.pixel(dial::alongX(cx, 84, target), dial::alongY(cy, 84, target)),
              station_ink::terminalGreen);
}

// ---------------------------------------------------------------- Solver

TEST(DialSolver, ClearsTheThermostatOnEveryDifficulty) { EXPECT_EQ(unsolvedRuns("dial"), ""); }

TEST(DialSolver, SolvingPlaysThePassSound) {
    StationDriver bench(shippedRecord("dial"), 3);
    std::unique_ptr<Solver> solver = makeSolver("dial");
    EXPECT_EQ(bench.play(*solver, 30.0).result, LevelResult::Solved);
    EXPECT_TRUE(bench.lastSoundWasPass());
}

TEST(DialSolver, YankingTheKnobPastTheBandBuzzesAndStartsAgainFromZero) {
    Driver<DialLevel> d(3, shippedRecord("dial"));
    const int x = d.level.centerX - 100;
    const int y = d.level.centerY;
    ASSERT_EQ(d.press(x, y), LevelResult::Running);
    ASSERT_TRUE(d.level.grabbed);
    EXPECT_EQ(d.moveTo(x + 360, y), LevelResult::Running);   // 0.9 of a turn: beyond any band
    EXPECT_TRUE(d.lastSoundWasFail());
    EXPECT_EQ(d.level.value, 0.0);
}

}  // namespace
}  // namespace vorn::test
