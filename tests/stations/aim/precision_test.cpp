// The precision station: a tiny green dot drifts and bounces inside a ring.
// A press on the dot (9 px) passes, a press on the ring (44 px) fires, a press
// outside it does nothing. The dot starts in the middle of the play area and
// its heading is two parity draws, across first.

#include "stations/aim_stations.h"
#include "support/draws_by_hand.h"
#include "aim_fixtures.h"

#include <gtest/gtest.h>

namespace vorn::test {
namespace {

using Precision = Driver<PrecisionLevel>;

// The dot held still in the middle, so a press lands where the test says.
void holdStill(Precision& d) {
    d.level.vx = 0.0;
    d.level.vy = 0.0;
}

TEST(PrecisionStation, TheDotStartsInTheMiddleWithTwoParityDrawsAcrossFirst) {
    // Seed 42: 1608637542 is even (vx -40), 3421126067 odd (vy +32).
    Precision d(42);
    EXPECT_EQ(d.level.x, kPlayCentreX);
    EXPECT_EQ(d.level.y, kPlayCentreY);
    EXPECT_EQ(d.level.vx, -40.0);
    EXPECT_EQ(d.level.vy, 32.0);
    EXPECT_EQ(d.rng, engineAfter(42, 2));
    Precision other(1);   // both odd
    EXPECT_EQ(other.level.vx, 40.0);
    EXPECT_EQ(other.level.vy, 32.0);
    // Seed 5489: 3499211612 even, 581869302 even.
    Precision both(5489);
    EXPECT_EQ(both.level.vx, -40.0);
    EXPECT_EQ(both.level.vy, -32.0);
}

TEST(PrecisionStation, TheDotDriftsAndTurnsAtTheWallsWithoutClamping) {
    Precision d(1);
    const double start = kPlayRight - 44 - 0.1;   // 0.1 px short of the right wall line
    d.level.x = start;
    d.idle();
    EXPECT_DOUBLE_EQ(d.level.x, start + 40.0 * StationDriver::kFrame);   // past it, left there
    EXPECT_EQ(d.level.vx, -40.0);
    EXPECT_DOUBLE_EQ(d.level.y, kPlayCentreY + 32.0 * StationDriver::kFrame);
    EXPECT_EQ(d.level.vy, 32.0);
}

// Frames of 1/128 s move the dot 0.3125 px across and 0.25 px up or down, so
// it lands exactly on each wall line, 44 px in from the play area's edges,
// and turns only once past it.
struct Wall {
    double x, y, vx, vy;
    bool across;   // which heading should turn
};

TEST(PrecisionStation, TheDotTurnsOnlyOncePastEachWallLine) {
    const Wall walls[] = {
        {kPlayRight - 44 - 0.3125, kPlayCentreY, 40.0, 32.0, true},    // right
        {kPlayLeft + 44 + 0.3125, kPlayCentreY, -40.0, 32.0, true},    // left
        {kPlayCentreX, kPlayBottom - 44 - 0.25, 40.0, 32.0, false},    // bottom
        {kPlayCentreX, kPlayTop + 44 + 0.25, 40.0, -32.0, false},      // top
    };
    for (const Wall& w : walls) {
        Precision d;
        d.level.x = w.x;
        d.level.y = w.y;
        d.level.vx = w.vx;
        d.level.vy = w.vy;
        d.frame(1.0 / 128);   // on the line: no turn
        EXPECT_EQ(d.level.vx, w.vx) << w.x << "," << w.y;
        EXPECT_EQ(d.level.vy, w.vy) << w.x << "," << w.y;
        d.frame(1.0 / 128);   // past it: turns, without being put back
        EXPECT_EQ(d.level.vx, w.across ? -w.vx : w.vx) << w.x << "," << w.y;
        EXPECT_EQ(d.level.vy, w.across ? w.vy : -w.vy) << w.x << "," << w.y;
        EXPECT_EQ(d.level.x, w.x + 2 * w.vx / 128);
        EXPECT_EQ(d.level.y, w.y + 2 * w.vy / 128);
    }
}

TEST(PrecisionStation, APressExactlyNinePixelsOffSolves) {
    Precision d;
    holdStill(d);
    EXPECT_EQ(d.press(kPlayCentreX + 9, kPlayCentreY), LevelResult::Solved);
    EXPECT_EQ(d.sounds, Sounds{"pass"});
}

TEST(PrecisionStation, APressExactlyFortyFourPixelsOffFires) {
    Precision d;
    holdStill(d);
    EXPECT_EQ(d.press(kPlayCentreX, kPlayCentreY - 44), LevelResult::Failed);
    EXPECT_EQ(d.sounds, Sounds{"fail"});
}

TEST(PrecisionStation, APressJustOutsideTheRingIsIgnored) {
    Precision d;
    holdStill(d);
    d.level.x = kPlayCentreX - 0.01;
    EXPECT_EQ(d.click(kPlayCentreX + 44, kPlayCentreY), LevelResult::Running);   // 44.01 px
    EXPECT_EQ(d.sounds, Sounds{});
    EXPECT_EQ(d.press(kPlayCentreX + 10, kPlayCentreY), LevelResult::Failed);    // 10.01 px: on the ring
}

TEST(PrecisionStation, HoveringOverTheDotWithTheButtonHeldDoesNothing) {
    Precision d;
    holdStill(d);
    d.press(kPlayLeft + 10, kPlayTop + 10);   // far outside the ring, and held
    EXPECT_EQ(d.moveTo(kPlayCentreX, kPlayCentreY), LevelResult::Running);
    EXPECT_EQ(d.sounds, Sounds{});
}

// ---------------------------------------------------------------------------
// What the player sees: a green dot in a thin dark red ring

TEST(PrecisionLook, ARingAroundATinyGreenDot) {
    Precision d;
    d.level.x = 500.7;   // drawn at (500, 300): the position is truncated
    d.level.y = 300.2;
    Canvas canvas;
    d.level.render(canvas.graphics);

    EXPECT_EQ(canvas.pixel(500, 300), station_ink::terminalGreen);
    EXPECT_EQ(canvas.pixel(500 + 8, 300), station_ink::terminalGreen);
    EXPECT_EQ(canvas.pixel(500, 300 - 8), station_ink::terminalGreen);
    EXPECT_EQ(canvas.pixel(500 + 10, 300), station_ink::black);
    EXPECT_EQ(canvas.pixel(500 + 20, 300), station_ink::black);   // the ring is hollow
    EXPECT_EQ(canvas.pixel(500 + 44, 300), aim_ink::ringOuter);
    EXPECT_EQ(canvas.pixel(500 - 44, 300), aim_ink::ringOuter);
    EXPECT_EQ(canvas.pixel(500, 300 - 43), aim_ink::ringOuter);   // the outline is a row short above and below
    EXPECT_EQ(canvas.pixel(500, 300 + 43), aim_ink::ringOuter);
    EXPECT_EQ(canvas.pixel(500 + 43, 300), aim_ink::ringInner);
    EXPECT_EQ(canvas.pixel(500 + 42, 300), station_ink::black);
    EXPECT_EQ(canvas.pixel(500 + 46, 300), station_ink::black);
    EXPECT_EQ(playAreaNoteUnlike(canvas, kPlayAreaNoteBand,
                                 "HIT THE TINY GREEN DOT \xE2\x80\x94 NOT THE RING"), 0);
    EXPECT_EQ(strayPixels(canvas, station_ink::black, {discBox(500, 300, 44), kPlayAreaNoteBand}), 0);
}

// ---------------------------------------------------------------------------
// The automatic player, and the obvious wrong move

TEST(PrecisionSolver, ClearsTheShippedStationOnEveryDifficulty) {
    EXPECT_EQ(unsolvedRuns("precision"), "");
}

TEST(PrecisionSolver, ASolvedRunOnlyPasses) {
    EXPECT_EQ(soundsOfASolvedRun("precision", 5489), clicksThenPass(0));
}

TEST(PrecisionStation, ClickingTheRingFiresWithTheFailSound) {
    StationDriver d(shippedRecord("precision"), 5489);
    auto wrong = careless<PrecisionLevel>([](const PrecisionLevel& level, int& x, int& y) {
        x = static_cast<int>(level.x) + 30;
        y = static_cast<int>(level.y);
        return true;
    });
    EXPECT_EQ(d.play(wrong, 10.0).result, LevelResult::Failed);
    EXPECT_EQ(d.sounds, Sounds{"fail"});
}

}  // namespace
}  // namespace vorn::test
