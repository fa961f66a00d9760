// What the dial, slider and balance stations draw, pixel for pixel: each
// picture is compared with the same picture drawn by hand from the station's
// look (rims, bands, needles, numbers, tracks, beam and every word with its
// literal place, size and colour), in the states a player passes through.

#include "stations/dial_stations.h"
#include "support/panel_scenes.h"
#include "support/software_canvas.h"
#include "support/station_desk.h"
#include "support/text_probe.h"

#include <gtest/gtest.h>

#include <cmath>
#include <string>

namespace vorn {
namespace {

constexpr double kPi = 3.14159265358979323846;
constexpr Color kBlack = rgb(0, 0, 0);
constexpr Color kInk = rgb(20, 20, 20);
constexpr Color kGreen = rgb(70, 224, 138);
constexpr Color kRed = rgb(255, 58, 42);
constexpr Color kRim = rgb(99, 77, 26);
constexpr Color kBrass = rgb(199, 154, 53);
constexpr Color kOrange = rgb(255, 170, 46);
constexpr Color kInstruction = rgb(178, 119, 32);

// A point `r` pixels out along a dial fraction, truncated as dials place
// things: a fraction f of a turn sits at 2 pi f - pi / 2, clockwise from 12.
int atX(int cx, int r, double f) {
    return cx + static_cast<int>(std::cos(2 * kPi * f - kPi / 2) * r);
}
int atY(int cy, int r, double f) {
    return cy + static_cast<int>(std::sin(2 * kPi * f - kPi / 2) * r);
}

// A frame in which the pointer moves (the button as it was).
template <typename T>
void moveTo(test::Desk<T>& desk, int x, int y) {
    desk.pointAt(x, y);
    desk.step(1.0 / 60);
}

// The station's own frame on a black canvas with the game's fonts.
template <typename T>
void renderOnBlack(test::SoftwareCanvas& canvas, T& level) {
    canvas.useGameFonts();
    canvas.fill(kBlack);
    level.render(canvas.graphics);
}

// ---------------------------------------------------------------- Dial

TEST(DialLook, DrawsRimWellBandNeedleAndHub) {
    test::Desk<DialLevel> d(2024);
    d.level.target = 0.6;
    d.level.value = 0.25;  // the needle points at three o'clock
    test::SoftwareCanvas canvas;
    canvas.fill(rgb(0, 0, 0));
    d.level.render(canvas.graphics);
    EXPECT_EQ(canvas.pixel(683, 405 - 85), kRim);       // rim at twelve o'clock
    EXPECT_EQ(canvas.pixel(683 - 40, 405 - 40), kInk);  // the well
    EXPECT_EQ(canvas.pixel(atX(683, 84, 0.6), atY(405, 84, 0.6)), kGreen);
    // The paint runs 0.05 either side of the target, past what is accepted.
    EXPECT_EQ(canvas.pixel(atX(683, 84, 0.645), atY(405, 84, 0.645)), kGreen);
    EXPECT_EQ(canvas.pixel(atX(683, 84, 0.555), atY(405, 84, 0.555)), kGreen);
    EXPECT_EQ(canvas.pixel(atX(683, 84, 0.7), atY(405, 84, 0.7)), kRim);
    EXPECT_EQ(canvas.pixel(683 + 45, 405), kRed);      // needle
    EXPECT_EQ(canvas.pixel(683 + 45, 405 + 4), kInk);  // five pixels thick, no more
    EXPECT_EQ(canvas.pixel(683 - 7, 405), kBrass);     // hub
}

// The dial as the player must see it: rim, well, the green band painted 0.05
// either side of the target at radius 84, the needle to radius 70 and the
// hub. A fraction f of a turn sits at 2 pi f - pi / 2.
void drawDialByHand(Graphics& g, double target, double value) {
    const auto angle = [](double f) { return 2 * kPi * f - kPi / 2; };
    g.circle(683, 405, 90, kRim, true);
    g.circle(683, 405, 78, kInk, true);
    g.arc(683, 405, 84, angle(target - 0.05), angle(target + 0.05), 10, kGreen);
    g.line(683, 405, atX(683, 70, value), atY(405, 70, value), kRed, 5);
    g.circle(683, 405, 12, kBrass, true);
}

TEST(DialLook, TheDialIsDrawnExactlyAtTheStartAndAfterATurn) {
    test::Desk<DialLevel> d(2024);
    {
        test::SoftwareCanvas canvas;
        renderOnBlack(canvas, d.level);
        EXPECT_TRUE(test::looksDrawnByHand(
            canvas, kBlack, [](Graphics& g) { drawDialByHand(g, 0.73928834764449947, 0.0); }));
    }
    d.press(600, 405);
    moveTo(d, 800, 405);  // half a turn
    test::SoftwareCanvas canvas;
    renderOnBlack(canvas, d.level);
    EXPECT_TRUE(test::looksDrawnByHand(
        canvas, kBlack, [](Graphics& g) { drawDialByHand(g, 0.73928834764449947, 0.5); }));
}

// ---------------------------------------------------------------- Combo

TEST(ComboLook, DrawsTheFaceNumbersPointerAndTheCodeOpenly) {
    test::Desk<ComboLevel> d(2024);
    d.level.code[0] = 4;
    d.level.code[1] = 11;
    d.level.code[2] = 0;
    d.level.stage = 1;
    d.level.position = 3;  // pointer at three o'clock
    test::SoftwareCanvas canvas;
    canvas.useGameFonts();
    canvas.fill(rgb(0, 0, 0));
    d.level.render(canvas.graphics);
    EXPECT_EQ(canvas.pixel(683, 405 + 116), kRim);
    EXPECT_EQ(canvas.pixel(683 - 40, 405 + 40), kInk);
    EXPECT_EQ(canvas.pixel(683 + 50, 405), kRed);
    EXPECT_EQ(canvas.pixel(683 + 50, 405 + 4), kInk);  // four thick: five lines, -2..2
    // The current number in green, the others in dull brass.
    // (The pointer ends at x 773, just short of the 3.)
    const Rect three{775, 393, 20, 24};
    const Rect nine{575, 393, 20, 24};
    EXPECT_EQ(test::pixelsUnlikeText(canvas, three, kInk, "3", 683 + 98, 405, TextSize::Small,
                                     kGreen, true, true),
              0);
    canvas.fill(rgb(0, 0, 0));
    d.level.render(canvas.graphics);
    EXPECT_EQ(test::pixelsUnlikeText(canvas, nine, kInk, "9", 683 - 98, 405, TextSize::Small,
                                     rgb(153, 102, 27), true, true),
              0);
    EXPECT_EQ(test::pixelsUnlikeText(canvas, {263, 205, 840, 32}, rgb(0, 0, 0),
                                     "COMBO: 4 - 11 - 0   (stage 2)", 683, 220, TextSize::Normal,
                                     rgb(255, 216, 107), true, true),
              0);
    EXPECT_EQ(
        test::pixelsUnlikeText(canvas, {263, 601, 840, 23}, rgb(0, 0, 0),
                               "CLICK UPPER=CW, LOWER=CCW \xE2\x80\x94 LAND EACH NUMBER IN ORDER",
                               683, 604, TextSize::Small, kInstruction, true, false),
        0);
}

// The lock as the player must see it: rim and well, the twelve numbers at
// radius 98 (the current one green), the pointer to radius 90, the code
// openly above with the stage counted from 1, and the line of orders.
void drawComboByHand(Graphics& g, int c0, int c1, int c2, int position, const char* stageWord) {
    g.circle(683, 405, 120, kRim, true);
    g.circle(683, 405, 112, kInk, true);
    const char* numbers[12] = {"0", "1", "2", "3", "4", "5", "6", "7", "8", "9", "10", "11"};
    for (int i = 0; i < 12; ++i) {
        g.text(numbers[i], atX(683, 98, i / 12.0), atY(405, 98, i / 12.0), TextSize::Small,
               i == position ? kGreen : rgb(153, 102, 27), true, true);
    }
    g.line(683, 405, atX(683, 90, position / 12.0), atY(405, 90, position / 12.0), kRed, 4);
    const std::string header = "COMBO: " + std::to_string(c0) + " - " + std::to_string(c1) + " - " +
                               std::to_string(c2) + "   (stage " + stageWord + ")";
    g.text(header.c_str(), 683, 220, TextSize::Normal, rgb(255, 216, 107), true, true);
    g.text("CLICK UPPER=CW, LOWER=CCW \xE2\x80\x94 LAND EACH NUMBER IN ORDER", 683, 604, TextSize::Small,
           kInstruction, true, false);
}

TEST(ComboLook, TheLockIsDrawnExactlyAtTheStartAndAfterTheFirstNumber) {
    test::Desk<ComboLevel> d(2024);
    {
        test::SoftwareCanvas canvas;
        renderOnBlack(canvas, d.level);
        EXPECT_TRUE(test::looksDrawnByHand(
            canvas, kBlack, [](Graphics& g) { drawComboByHand(g, 7, 9, 8, 0, "1"); }));
    }
    for (int i = 0; i < 7; ++i) {
        d.click(683, 300);
    }
    ASSERT_EQ(d.level.stage, 1);
    test::SoftwareCanvas canvas;
    renderOnBlack(canvas, d.level);
    EXPECT_TRUE(test::looksDrawnByHand(canvas, kBlack,
                                       [](Graphics& g) { drawComboByHand(g, 7, 9, 8, 7, "2"); }));
}

// ---------------------------------------------------------------- Calibrate

TEST(CalibrateLook, DrawsTracksGhostMarksAndKnobsGreenOnlyOnTheirMarks) {
    test::Desk<CalibrateLevel> d(2024);
    d.level.target[0] = 0.5;
    d.level.target[1] = 0.3;
    d.level.target[2] = 0.7;
    d.level.value[2] = 0.2;
    test::SoftwareCanvas canvas;
    canvas.useGameFonts();
    canvas.fill(rgb(0, 0, 0));
    d.level.render(canvas.graphics);
    const Rect* t = d.level.tracks;
    EXPECT_EQ(canvas.pixel(t[0].x + 20, t[0].y + 20), rgb(30, 30, 30));
    // Slider 1's mark at 250 + trunc(0.7 x 270) = 439, reaching 8 px past the track.
    EXPECT_EQ(canvas.pixel(t[1].x - 5, 439), rgb(42, 134, 82));
    EXPECT_EQ(canvas.pixel(t[1].x - 5, 443), rgb(0, 0, 0));
    // Knobs: slider 0 sits on its mark, slider 1 does not.
    EXPECT_EQ(canvas.pixel(t[0].x - 3, 385 + 5), kGreen);
    EXPECT_EQ(canvas.pixel(t[1].x + 20, 385 + 5), kOrange);
    // Slider 2's knob near the bottom: 250 + trunc(0.8 x 270) = 466.
    EXPECT_EQ(canvas.pixel(t[2].x + t[2].w + 4, 466 - 6), kOrange);
    EXPECT_EQ(test::pixelsUnlikeText(canvas, {263, 601, 840, 23}, rgb(0, 0, 0),
                                     "MATCH ALL THREE TO THE GHOST MARKS", 683, 604,
                                     TextSize::Small, kInstruction, true, false),
              0);
}

// The sliders as the player must see them: dark tracks, a ghost mark across
// each at its target, and each knob green only within 0.04 of its mark. The
// marks are given as the draws modulo 60.
void drawCalibrateByHand(Graphics& g, const int (&drawn)[3], const double (&value)[3]) {
    for (int i = 0; i < 3; ++i) {
        const int x = 383 + 200 * i;  // 263 + 120 + i (840 - 240) / 3; y 250, h 270
        const double target = drawn[i] / 100.0 + 0.2;
        g.roundRect({x, 250, 40, 270}, 6, rgb(30, 30, 30), true);
        const int markY = 250 + static_cast<int>((1.0 - target) * 270);
        g.line(x - 8, markY, x + 48, markY, rgb(42, 134, 82), 2);
        const int knobY = 250 + static_cast<int>((1.0 - value[i]) * 270);
        g.rect({x - 6, knobY - 8, 52, 16}, std::fabs(value[i] - target) <= 0.04 ? kGreen : kOrange, true);
    }
    g.text("MATCH ALL THREE TO THE GHOST MARKS", 683, 604, TextSize::Small, kInstruction, true, false);
}

TEST(CalibrateLook, TheSlidersAreDrawnExactlyAtTheStartAndAfterADrag) {
    test::Desk<CalibrateLevel> d(2024);
    {
        test::SoftwareCanvas canvas;
        renderOnBlack(canvas, d.level);
        EXPECT_TRUE(test::looksDrawnByHand(
            canvas, kBlack, [](Graphics& g) { drawCalibrateByHand(g, {32, 50, 4}, {0.5, 0.5, 0.5}); }));
    }
    d.press(d.level.tracks[1].x + 20, d.level.tracks[1].y + 81);
    test::SoftwareCanvas canvas;
    renderOnBlack(canvas, d.level);
    EXPECT_TRUE(test::looksDrawnByHand(canvas, kBlack, [](Graphics& g) {
        drawCalibrateByHand(g, {32, 50, 4}, {0.5, 1.0 - 81.0 / 270, 0.5});
    }));
}

// ---------------------------------------------------------------- Scale

TEST(ScaleLook, TheReadoutShowsTheWeightPlusTheHiddenOffsetNeverTheWeight) {
    test::Desk<ScaleLevel> d(2024);
    d.level.weight = 45;
    d.level.target = 45;
    d.level.readoutOffset = 17;
    test::SoftwareCanvas canvas;
    canvas.useGameFonts();
    canvas.fill(rgb(0, 0, 0));
    d.level.render(canvas.graphics);
    const Rect readout{483, 400, 400, 55};
    EXPECT_EQ(test::pixelsUnlikeText(canvas, readout, rgb(0, 0, 0), "62 g", 683, 430,
                                     TextSize::Large, kRed, true, true),
              0);
    EXPECT_NE(test::pixelsUnlikeText(canvas, readout, rgb(0, 0, 0), "45 g", 683, 430,
                                     TextSize::Large, kRed, true, true),
              0);
    EXPECT_EQ(test::pixelsUnlikeText(canvas, {483, 460, 400, 22}, rgb(0, 0, 0), "(readout)", 683,
                                     462, TextSize::Small, rgb(178, 40, 29), true, false),
              0);
}

TEST(ScaleLook, DrawsALevelBeamPivotPansAndButtons) {
    test::Desk<ScaleLevel> d(2024);
    d.level.weight = d.level.target;
    test::SoftwareCanvas canvas;
    canvas.useGameFonts();
    canvas.fill(rgb(0, 0, 0));
    d.level.render(canvas.graphics);
    EXPECT_EQ(canvas.pixel(683 - 60, 280), kBrass);
    EXPECT_EQ(canvas.pixel(683 + 60, 284), kBrass);
    EXPECT_EQ(canvas.pixel(683 + 60, 286), rgb(0, 0, 0));
    EXPECT_EQ(canvas.pixel(683, 288), rgb(139, 107, 37));  // pivot below the beam's middle
    EXPECT_EQ(canvas.pixel(683 - 120, 320), kRim);
    EXPECT_EQ(canvas.pixel(683 + 120, 320), kRim);
    EXPECT_EQ(canvas.pixel(523 + 10, 560 + 20), rgb(139, 107, 37));
    EXPECT_EQ(canvas.pixel(723 + 10, 560 + 20), rgb(139, 107, 37));
    EXPECT_EQ(test::pixelsUnlikeText(canvas, {538, 565, 90, 30}, rgb(139, 107, 37), "ADD", 583, 580,
                                     TextSize::Normal, kInk, true, true),
              0);
    EXPECT_EQ(test::pixelsUnlikeText(canvas, {733, 565, 100, 30}, rgb(139, 107, 37), "REMOVE", 783,
                                     580, TextSize::Normal, kInk, true, true),
              0);
    EXPECT_EQ(test::pixelsUnlikeText(canvas, {263, 601, 840, 23}, rgb(0, 0, 0),
                                     "BALANCE THE BEAM - NOT THE NUMBER", 683, 604, TextSize::Small,
                                     kInstruction, true, false),
              0);
}

TEST(ScaleLook, AHeavyBeamDipsToTheRight) {
    test::Desk<ScaleLevel> d(2024);
    d.level.weight = d.level.target + 10;  // tilt 0.2: dx 117, dy 23
    test::SoftwareCanvas canvas;
    canvas.fill(rgb(0, 0, 0));
    d.level.render(canvas.graphics);
    // The pans hang at (566, 287) and (800, 333) instead of 310 either side.
    EXPECT_EQ(canvas.pixel(800, 333 + 20), kRim);
    EXPECT_EQ(canvas.pixel(566, 287 - 20), kRim);
    EXPECT_EQ(canvas.pixel(803, 310 - 20), rgb(0, 0, 0));
}

// The scale as the player must see it: the beam tilted by the true weight,
// its pivot and pans, the lying readout, the buttons and the line of orders.
void drawScaleByHand(Graphics& g, int weight, int target, const char* readout) {
    const double tilt = (weight - target) * 0.02;
    const int dx = static_cast<int>(std::cos(tilt) * 120);
    const int dy = static_cast<int>(std::sin(tilt) * 120);
    g.line(683 - dx, 280 - dy, 683 + dx, 280 + dy, kBrass, 8);  // 190 + 90
    g.circle(683, 280, 10, rgb(139, 107, 37), true);
    g.circle(683 - dx, 310 - dy, 22, kRim, true);
    g.circle(683 + dx, 310 + dy, 22, kRim, true);
    g.text(readout, 683, 430, TextSize::Large, kRed, true, true);
    g.text("(readout)", 683, 462, TextSize::Small, rgb(178, 40, 29), true, false);
    g.roundRect({523, 560, 120, 40}, 8, rgb(139, 107, 37), true);
    g.text("ADD", 583, 580, TextSize::Normal, kInk, true, true);
    g.roundRect({723, 560, 120, 40}, 8, rgb(139, 107, 37), true);
    g.text("REMOVE", 783, 580, TextSize::Normal, kInk, true, true);
    g.text("BALANCE THE BEAM - NOT THE NUMBER", 683, 604, TextSize::Small, kInstruction, true, false);
}

TEST(ScaleLook, TheScaleIsDrawnExactlyAtTheStartAndAfterLoading) {
    test::Desk<ScaleLevel> d(2024);
    {
        test::SoftwareCanvas canvas;
        renderOnBlack(canvas, d.level);
        EXPECT_TRUE(test::looksDrawnByHand(canvas, kBlack,
                                           [](Graphics& g) { drawScaleByHand(g, 20, 72, "39 g"); }));
    }
    for (int i = 0; i < 5; ++i) {
        d.click(600, 580);
    }
    test::SoftwareCanvas canvas;
    renderOnBlack(canvas, d.level);
    EXPECT_TRUE(test::looksDrawnByHand(canvas, kBlack,
                                       [](Graphics& g) { drawScaleByHand(g, 45, 72, "64 g"); }));
}

}  // namespace
}  // namespace vorn
