// The screens' own pieces drawn alone on a software canvas: the shift cards
// and their fade, the station header and footer, and the clock.

#include "gfx/screens.h"
#include "support/canvas_app.h"
#include "support/software_canvas.h"

#include <gtest/gtest.h>

namespace vorn::test {
namespace {

class ScreenPieces : public ::testing::Test {
protected:
    void SetUp() override {
        canvas.useGameFonts();
        g.clear(palette::black);
    }
    int redPeak(const Rect& area) const {
        int peak = 0;
        for (int y = area.y; y < area.y + area.h; ++y) {
            for (int x = area.x; x < area.x + area.w; ++x) {
                peak = std::max(peak, red(canvas.pixel(x, y)));
            }
        }
        return peak;
    }

    SoftwareCanvas canvas;
    Graphics& g = canvas.graphics;
};

constexpr Rect kHeadingBox{200, 290, 966, 130};
constexpr Rect kSubtitleBox{200, 420, 966, 28};

// ---- shift cards ----

TEST(ShiftCardFade, RisesOverFourTenthsHoldsAndFallsOverTheLastFourTenths) {
    EXPECT_DOUBLE_EQ(shiftCardFade(0.0), 0.0);
    EXPECT_DOUBLE_EQ(shiftCardFade(0.2), 0.5);
    EXPECT_DOUBLE_EQ(shiftCardFade(0.4), 1.0);
    EXPECT_DOUBLE_EQ(shiftCardFade(1.5), 1.0);
    EXPECT_DOUBLE_EQ(shiftCardFade(2.6), 1.0);
    EXPECT_NEAR(shiftCardFade(2.8), 0.5, 1e-9);
    EXPECT_DOUBLE_EQ(shiftCardFade(3.0), 0.0);
    EXPECT_DOUBLE_EQ(shiftCardFade(3.4), 0.0);
}

TEST_F(ScreenPieces, ShiftCardHeadingIsGoldAndItsSubtitleBrass) {
    drawShiftCard(g, 0, 1.5);
    EXPECT_GT(countInk(canvas, kHeadingBox, palette::gold, Seen::direct), 500);
    EXPECT_GT(countInk(canvas, kSubtitleBox, rgb(199, 154, 53), Seen::direct), 50);
    EXPECT_EQ(countInk(canvas, kHeadingBox, palette::alarmRed, Seen::direct), 0);
}

TEST_F(ScreenPieces, OvertimeHeadingIsAlarmRed) {
    drawShiftCard(g, 2, 1.5);
    EXPECT_GT(countInk(canvas, kHeadingBox, palette::alarmRed, Seen::direct), 500);
    EXPECT_EQ(countInk(canvas, kHeadingBox, palette::gold, Seen::direct), 0);
}

TEST_F(ScreenPieces, ShiftCardFadesItsColourTowardsBlackNotItsAlpha) {
    drawShiftCard(g, 1, 0.2);   // half way in
    EXPECT_GT(countInk(canvas, kHeadingBox, rgb(127, 108, 53), Seen::direct), 500);
    EXPECT_LE(redPeak(kHeadingBox), 127);
    EXPECT_GT(countInk(canvas, kSubtitleBox, rgb(99, 77, 26), Seen::direct), 50);
    EXPECT_LE(redPeak(kSubtitleBox), 99);
}

TEST_F(ScreenPieces, ShiftCardIsGoneAtThreeSeconds) {
    drawShiftCard(g, 0, 3.0);
    EXPECT_EQ(redPeak({0, 0, 1366, 768}), 0);
}

TEST_F(ScreenPieces, EachPhaseHasItsOwnHeading) {
    const char* const headings[] = {"PROBATION", "SHIFT STARTS", "OVERTIME"};
    const char* const subtitles[] = {"Report to your station.",
                                     "Probation complete. The real work begins.",
                                     "Clock's against you now. No mercy."};
    const Color colours[] = {palette::gold, palette::gold, palette::alarmRed};
    for (int phase = 0; phase < 3; ++phase) {
        g.clear(palette::black);
        drawShiftCard(g, phase, 1.0);
        EXPECT_TRUE(showsInkBox(canvas, kHeadingBox,
                              {headings[phase], 683, 364, TextSize::Giant, colours[phase], true, true},
                              Seen::direct));
        EXPECT_TRUE(showsInkBox(canvas, kSubtitleBox,
                              {subtitles[phase], 683, 432, TextSize::Normal, rgb(199, 154, 53), true,
                               true},
                              Seen::direct));
    }
}

// ---- station header and footer ----

TEST_F(ScreenPieces, HeaderBandBadgeAndTheirOutlines) {
    drawStationHeader(g, "STATION 01 : X", "Y");
    EXPECT_EQ(canvas.pixel(1000, 152), palette::darkPanel);
    EXPECT_EQ(canvas.pixel(683, 94), palette::brass);   // band outline
    EXPECT_EQ(canvas.pixel(400, 152), kBadgeRed);
    EXPECT_EQ(canvas.pixel(273, 132), palette::brass);  // badge outline
    EXPECT_GT(countInk(canvas, {283, 120, 130, 24}, palette::gold, Seen::direct), 20);
}

TEST_F(ScreenPieces, HeaderTitleAndInstructionStartAt445) {
    drawStationHeader(g, "STATION 07 : PUNCH CARD", "DO IT NOW");
    EXPECT_TRUE(showsInkBox(canvas, {430, 98, 660, 38},
                          {"STATION 07 : PUNCH CARD", 445, 118, TextSize::Large, palette::gold, false,
                           true},
                          Seen::direct));
    EXPECT_TRUE(showsInkBox(canvas, {430, 136, 660, 24},
                          {"DO IT NOW", 445, 146, TextSize::Small, kInstructionColor, false, true},
                          Seen::direct));
    EXPECT_TRUE(showsInkBox(canvas, {283, 116, 130, 32},
                          {"THE VORN CO.", 348, 132, TextSize::Small, palette::gold, true, true},
                          Seen::direct));
}

TEST_F(ScreenPieces, FooterBandAndItsThreeGoldFields) {
    drawStationFooter(g, "MEDIUM", false, 3, 5);
    EXPECT_EQ(canvas.pixel(275, 668), kFooterBand);
    EXPECT_EQ(canvas.pixel(683, 626), palette::brass);
    const Rect row{270, 634, 800, 30};
    EXPECT_TRUE(showsInkBox(canvas, {270, 634, 210, 30},
                          {"EMPLOYEE No. 0049", 281, 640, TextSize::Small, palette::gold, false, false},
                          Seen::direct));
    EXPECT_TRUE(showsInkBox(canvas, {490, 634, 200, 30},
                          {"MODE: MEDIUM", 497, 640, TextSize::Small, palette::gold, false, false},
                          Seen::direct));
    EXPECT_TRUE(showsInkBox(canvas, {690, 634, 300, 30},
                          {"STATION 3 / 5", 697, 640, TextSize::Small, palette::gold, false, false},
                          Seen::direct));
    EXPECT_EQ(countInk(canvas, row, palette::alarmRed, Seen::direct), 0);
}

TEST_F(ScreenPieces, FooterModeIsRedOnVorn) {
    drawStationFooter(g, "VORN", true, 1, 5);
    const Rect mode{490, 636, 200, 26};
    EXPECT_GT(countInk(canvas, mode, palette::alarmRed, Seen::direct), 20);
    EXPECT_EQ(countInk(canvas, mode, palette::gold, Seen::direct), 0);
    // The other fields stay gold.
    EXPECT_GT(countInk(canvas, {270, 636, 210, 26}, palette::gold, Seen::direct), 20);
}

// ---- the clock ----

constexpr Rect kClockDigits{1038, 634, 43, 34};

TEST_F(ScreenPieces, ClockSitsInTwoRings) {
    drawClock(g, 9.5, 0.0, false);
    EXPECT_EQ(canvas.pixel(1059 + 22, 651), kClockRim);
    EXPECT_EQ(canvas.pixel(1059, 651 - 23), kClockRim);
    EXPECT_EQ(canvas.pixel(1059 - 17, 651), kClockFace);
    EXPECT_NE(canvas.pixel(1059 + 25, 651), kClockRim);
}

TEST_F(ScreenPieces, ClockCountsWholeSecondsUpwardsInTwoDigits) {
    drawClock(g, 9.2, 0.0, false);
    SoftwareCanvas reference;
    reference.useGameFonts();
    reference.graphics.clear(palette::black);
    reference.graphics.circle(1059, 651, 24, kClockRim, true);
    reference.graphics.circle(1059, 651, 20, kClockFace, true);
    reference.graphics.text("10", 1059, 651, TextSize::Normal, palette::terminalGreen, true, true);
    for (int y = 620; y < 680; ++y) {
        for (int x = 1030; x < 1090; ++x) {
            ASSERT_EQ(canvas.pixel(x, y), reference.pixel(x, y)) << x << "," << y;
        }
    }
}

TEST_F(ScreenPieces, ClockShowsZeroZeroOnceTimeIsUpAndNeverANegativeNumber) {
    SoftwareCanvas reference;
    reference.useGameFonts();
    reference.graphics.clear(palette::black);
    reference.graphics.circle(1059, 651, 24, kClockRim, true);
    reference.graphics.circle(1059, 651, 20, kClockFace, true);
    reference.graphics.text("00", 1059, 651, TextSize::Normal, palette::terminalGreen, true, true);
    for (double left : {0.0, -0.4, -3.0}) {
        g.clear(palette::black);
        drawClock(g, left, 0.0, false);
        for (int y = 620; y < 680; ++y) {
            for (int x = 1030; x < 1090; ++x) {
                ASSERT_EQ(canvas.pixel(x, y), reference.pixel(x, y)) << left << ": " << x << "," << y;
            }
        }
    }
}

TEST(ClockColour, GreenUntilTheLastThreeSeconds) {
    EXPECT_EQ(clockColor(9.0, 0.0, false), palette::terminalGreen);
    EXPECT_EQ(clockColor(3.01, 0.0, false), palette::terminalGreen);   // still shows 4
}

TEST(ClockColour, BlinksRedOnEvenSixthsAndGoldOnOddOnesInTheLastThreeSeconds) {
    EXPECT_EQ(clockColor(3.0, 0.0, false), palette::alarmRed);
    EXPECT_EQ(clockColor(2.5, 0.1, false), palette::alarmRed);    // sixth 0
    EXPECT_EQ(clockColor(2.5, 0.2, false), palette::gold);        // sixth 1
    EXPECT_EQ(clockColor(2.5, 0.34, false), palette::alarmRed);   // sixth 2
    EXPECT_EQ(clockColor(0.01, 1.0, false), palette::alarmRed);   // sixth 6
    EXPECT_EQ(clockColor(0.01, 1.17, false), palette::gold);      // sixth 7
}

TEST(ClockColour, GreenAgainOnceTimeIsUp) {
    EXPECT_EQ(clockColor(0.0, 0.0, false), palette::terminalGreen);
    EXPECT_EQ(clockColor(-1.0, 0.2, false), palette::terminalGreen);
}

TEST(ClockColour, NeverBlinksOnVorn) {
    for (double t = 0.0; t < 1.0; t += 0.05) {
        ASSERT_EQ(clockColor(2.5, t, true), palette::terminalGreen) << t;
    }
}

TEST_F(ScreenPieces, ClockDigitsTakeTheBlinkColour) {
    drawClock(g, 2.5, 0.2, false);
    EXPECT_GT(countInk(canvas, kClockDigits, palette::gold, Seen::direct), 10);
    EXPECT_EQ(countInk(canvas, kClockDigits, palette::terminalGreen, Seen::direct), 0);
    g.clear(palette::black);
    drawClock(g, 2.5, 0.0, false);
    EXPECT_GT(countInk(canvas, kClockDigits, palette::alarmRed, Seen::direct), 10);
    g.clear(palette::black);
    drawClock(g, 2.5, 0.0, true);
    EXPECT_GT(countInk(canvas, kClockDigits, palette::terminalGreen, Seen::direct), 10);
    EXPECT_EQ(countInk(canvas, kClockDigits, palette::alarmRed, Seen::direct), 0);
}

}  // namespace
}  // namespace vorn::test
