// The valve ("valve"): a hand wheel beside a pressure gauge. A press near the
// wheel grabs it and sideways motion turns it; dragging left fills the gauge
// to its target mark and passes, dragging right drains it, whatever the
// "OPEN >" label says. Its sounds, what it draws, and its solver.

#include "stations/panel/panel_fixtures.h"
#include "stations/panel_stations.h"
#include "support/play_area.h"
#include "support/station_driver.h"
#include "support/station_ink.h"
#include "support/text_probe.h"

#include <gtest/gtest.h>

#include <cmath>
#include <string>
#include <vector>

namespace vorn::test {
namespace {

using Sounds = std::vector<std::string>;

TEST(ValveStation, WheelTwoThirdsAcrossAndNoDraws) {
    Driver<ValveLevel> d(5489);
    EXPECT_EQ(d.level.cx, 823);   // 263 + 1680 / 3
    EXPECT_EQ(d.level.cy, 405);   // 190 + 430 / 2
    EXPECT_EQ(d.level.radius, 86);
    EXPECT_DOUBLE_EQ(d.level.fill, 0.15);
    EXPECT_DOUBLE_EQ(d.level.angle, 0.0);
    EXPECT_FALSE(d.level.grabbed);
    EXPECT_EQ(d.rng, Rng(5489));
}

TEST(ValveStation, DraggingLeftFillsTheGaugeAndTurnsTheWheelBack) {
    Driver<ValveLevel> d;
    const int cx = d.level.cx;
    const int cy = d.level.cy;
    EXPECT_EQ(d.press(cx + 40, cy), LevelResult::Running);
    EXPECT_TRUE(d.level.grabbed);
    EXPECT_EQ(d.moveTo(cx - 60, cy), LevelResult::Running);
    EXPECT_NEAR(d.level.fill, 0.15 + 0.16, 1e-9);   // 100 px at 0.0016 a pixel
    EXPECT_NEAR(d.level.angle, -60.0, 1e-9);        // and 0.6 degrees a pixel
}

TEST(ValveStation, VerticalMotionDoesNotTurnTheWheel) {
    Driver<ValveLevel> d;
    d.press(d.level.cx, d.level.cy + 50);
    d.moveTo(d.level.cx, d.level.cy - 50);
    EXPECT_DOUBLE_EQ(d.level.fill, 0.15);
    EXPECT_DOUBLE_EQ(d.level.angle, 0.0);
}

TEST(ValveStation, ThePressMustLandWithinTwentyPixelsOfTheRim) {
    Driver<ValveLevel> d;
    const int cx = d.level.cx;
    const int cy = d.level.cy;
    d.press(cx + 106, cy);   // d = 106 is not < 86 + 20
    EXPECT_FALSE(d.level.grabbed);
    d.moveTo(cx - 100, cy);
    EXPECT_DOUBLE_EQ(d.level.fill, 0.15);
    d.release();
    d.press(cx + 105, cy);
    EXPECT_TRUE(d.level.grabbed);
    d.release();
    // A press out of reach, held and carried over the wheel, grabs nothing.
    d.press(cx + 200, cy);
    d.moveTo(cx, cy);
    EXPECT_FALSE(d.level.grabbed);
}

TEST(ValveStation, ADragKeepsWorkingOutsideTheWheelWhileTheButtonIsHeld) {
    Driver<ValveLevel> d;
    const int cx = d.level.cx;
    const int cy = d.level.cy;
    d.press(cx + 50, cy);
    d.moveTo(cx - 200, cy + 250);   // far outside the grab ring
    EXPECT_TRUE(d.level.grabbed);
    EXPECT_NEAR(d.level.fill, 0.15 + 0.0016 * 250, 1e-9);
    d.moveTo(cx - 300, cy + 250);
    EXPECT_NEAR(d.level.fill, 0.15 + 0.0016 * 350, 1e-9);
    // Letting go drops the wheel: later motion does nothing.
    d.release();
    EXPECT_FALSE(d.level.grabbed);
    const double before = d.level.fill;
    d.moveTo(cx - 400, cy + 250);
    EXPECT_DOUBLE_EQ(d.level.fill, before);
}

TEST(ValveStation, DraggingRightDrainsToZeroAndStaysThereWithoutFailing) {
    Driver<ValveLevel> d;
    const int cx = d.level.cx;
    const int cy = d.level.cy;
    EXPECT_EQ(d.press(cx, cy), LevelResult::Running);
    for (int step = 1; step <= 40; ++step) {
        EXPECT_EQ(d.moveTo(cx + 10 * step, cy), LevelResult::Running) << step;
    }
    EXPECT_DOUBLE_EQ(d.level.fill, 0.0);
    EXPECT_TRUE(d.level.emptied);
    EXPECT_NEAR(d.level.angle, 240.0, 1e-9);   // the wheel itself turns on
    // Clamped at zero, not below: ten pixels back left show at once.
    d.moveTo(cx + 390, cy);
    EXPECT_NEAR(d.level.fill, 0.016, 1e-9);
}

TEST(ValveStation, FillingTheGaugeIsSilentUntilThePassSound) {
    Driver<ValveLevel> d;
    // From 60 px right of the hub, 522 px to the left in 29 steps of 18:
    // 0.15 + 0.0016 x 504 = 0.9564 after 28 steps, full after the 29th.
    int x = d.level.cx + 60;
    const int y = d.level.cy;
    EXPECT_EQ(d.press(x, y), LevelResult::Running);
    for (int step = 1; step <= 28; ++step) {
        x -= 18;
        ASSERT_EQ(d.moveTo(x, y), LevelResult::Running) << step;
    }
    EXPECT_EQ(d.sounds, Sounds{});
    EXPECT_EQ(d.moveTo(x - 18, y), LevelResult::Solved);
    EXPECT_EQ(d.sounds, (Sounds{"pass"}));
}

TEST(ValveStation, DrainingTheGaugeDryMakesNoSound) {
    Driver<ValveLevel> d;
    d.drag(d.level.cx, d.level.cy, d.level.cx + 200, d.level.cy, 20);
    EXPECT_DOUBLE_EQ(d.level.fill, 0.0);
    EXPECT_EQ(d.verdict, LevelResult::Running);
    EXPECT_EQ(d.sounds, Sounds{});
}

// ------------------------------------------------------------------- Look

// The gauge stands a quarter of the way across the play area, level with
// the wheel: (263 + 840 / 4, 405) = (473, 405).
constexpr int kGaugeX = kPlayLeft + kPlayArea.w / 4;
constexpr int kGaugeY = kPlayCentreY;

constexpr double kPi = 3.14159265358979323846;

// A point `r` pixels out from (cx, cy) at `degrees` clockwise from three
// o'clock (screen y grows downwards).
int outX(int cx, int r, double degrees) { return cx + static_cast<int>(std::cos(degrees * kPi / 180) * r); }
int outY(int cy, int r, double degrees) { return cy + static_cast<int>(std::sin(degrees * kPi / 180) * r); }

// The gauge: a brass rim round a dark well, the orange level standing on a
// floor 55 below the centre, 36 wide and `levelHeight` tall, and the green
// target mark 50 above the centre, three rows thick.
void expectGaugeDrawn(const SoftwareCanvas& canvas, int levelHeight) {
    const int gx = kGaugeX;
    const int gy = kGaugeY;
    EXPECT_EQ(canvas.pixel(gx, gy - 66), station_ink::darkBrass);
    EXPECT_EQ(canvas.pixel(gx - 66, gy), station_ink::darkBrass);
    EXPECT_EQ(canvas.pixel(gx - 40, gy + 20), station_ink::ink);
    if (levelHeight == 0) {
        EXPECT_EQ(canvas.pixel(gx, gy + 54), station_ink::ink);
        EXPECT_EQ(canvas.pixel(gx, gy + 40), station_ink::ink);
    } else {
        const int top = gy + 55 - levelHeight;
        EXPECT_EQ(canvas.pixel(gx, gy + 55), station_ink::ink);   // under the floor
        EXPECT_EQ(canvas.pixel(gx, gy + 54), station_ink::orange);
        EXPECT_EQ(canvas.pixel(gx, top), station_ink::orange);
        EXPECT_EQ(canvas.pixel(gx, top - 1), station_ink::ink);
        EXPECT_EQ(canvas.pixel(gx - 18, gy + 54), station_ink::orange);
        EXPECT_EQ(canvas.pixel(gx - 19, gy + 54), station_ink::ink);
        EXPECT_EQ(canvas.pixel(gx + 17, gy + 54), station_ink::orange);
        EXPECT_EQ(canvas.pixel(gx + 18, gy + 54), station_ink::ink);
    }
    for (const int row : {gy - 51, gy - 50, gy - 49}) {
        EXPECT_EQ(canvas.pixel(gx - 30, row), station_ink::terminalGreen) << row;
        EXPECT_EQ(canvas.pixel(gx + 30, row), station_ink::terminalGreen) << row;
    }
    EXPECT_EQ(canvas.pixel(gx, gy - 52), station_ink::ink);
    EXPECT_EQ(canvas.pixel(gx, gy - 48), station_ink::ink);
    // Its two words, where they stand clear of the rim: TARGET to the right
    // of the mark, FILL hanging under the gauge.
    EXPECT_EQ(pixelsUnlikeText(canvas, {gx + 60, gy - 62, 100, 22}, station_ink::black, "TARGET", gx + 36,
                               gy - 58, TextSize::Small, station_ink::terminalGreen, false, false),
              0);
    EXPECT_EQ(pixelsUnlikeText(canvas, {gx - 40, gy + 71, 80, 20}, station_ink::black, "FILL", gx, gy + 64,
                               TextSize::Small, station_ink::orange, true, false),
              0);
}

// The wheel: a bronze rim round a dark well, four brass spokes 45 degrees
// apart turned by the wheel's angle, a brass hub of radius 22, and the red
// "OPEN >" label off its top right.
void expectWheelDrawn(const SoftwareCanvas& canvas, const ValveLevel& v) {
    const double a = v.angle;
    // A thick slanted line is laid as parallel thin ones and may leave a
    // pinhole, so a spoke is looked for within a pixel of where it runs.
    for (const double spoke : {a, a + 45, a + 90, a + 135, a + 180}) {
        const int x = outX(v.cx, 50, spoke);
        const int y = outY(v.cy, 50, spoke);
        EXPECT_TRUE(anyPixelNear(canvas, {x - 1, y - 1, 3, 3}, station_ink::brass, 0)) << spoke;
    }
    const double between = a + 22.5;
    EXPECT_EQ(canvas.pixel(outX(v.cx, 50, between), outY(v.cy, 50, between)), station_ink::greenScreen);
    EXPECT_EQ(canvas.pixel(outX(v.cx, 78, between), outY(v.cy, 78, between)), station_ink::bronze);
    EXPECT_EQ(canvas.pixel(outX(v.cx, 21, between), outY(v.cy, 21, between)), station_ink::brass);
    EXPECT_EQ(canvas.pixel(outX(v.cx, 26, between), outY(v.cy, 26, between)), station_ink::greenScreen);
    const int labelX = v.cx + v.radius + 8;
    const int labelY = v.cy - v.radius;
    EXPECT_EQ(pixelsUnlikeText(canvas, {labelX - 4, labelY - 4, 160, 40}, station_ink::black, "OPEN >", labelX,
                               labelY, TextSize::Normal, station_ink::alarmRed, false, false),
              0);
}

TEST(ValveLook, TheGaugeWheelAndWordsAtTheStart) {
    Driver<ValveLevel> d;
    SoftwareCanvas canvas;
    renderOnBlack(canvas, d.level);
    expectGaugeDrawn(canvas, 16);   // 0.15 x 110 = 16.5, truncated
    expectWheelDrawn(canvas, d.level);
}

TEST(ValveLook, ADragLeftRaisesTheLevelAndTurnsTheSpokesBack) {
    Driver<ValveLevel> d;
    d.press(d.level.cx + 60, d.level.cy);
    d.moveTo(d.level.cx - 40, d.level.cy);   // 100 px left: fill 0.31, angle -60
    ASSERT_NEAR(d.level.angle, -60.0, 1e-9);
    SoftwareCanvas canvas;
    renderOnBlack(canvas, d.level);
    expectGaugeDrawn(canvas, 34);   // 0.31 x 110 = 34.1
    expectWheelDrawn(canvas, d.level);
    // Where a spoke stood at the start there is only the dark well now.
    EXPECT_EQ(canvas.pixel(d.level.cx + 50, d.level.cy), station_ink::greenScreen);
}

TEST(ValveLook, ADryGaugeShowsNoLevelAtAll) {
    Driver<ValveLevel> d;
    d.press(d.level.cx, d.level.cy);
    d.moveTo(d.level.cx + 100, d.level.cy);   // 100 px right: empty, angle 60
    SoftwareCanvas canvas;
    renderOnBlack(canvas, d.level);
    expectGaugeDrawn(canvas, 0);
    expectWheelDrawn(canvas, d.level);
}

TEST(ValveSolver, ClearsTheValveOnEveryDifficulty) { EXPECT_EQ(unsolvedRuns("valve"), ""); }

}  // namespace
}  // namespace vorn::test
