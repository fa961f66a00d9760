// The screens' own pieces drawn alone on a software canvas: the shift cards
// and their fade, the station header and footer, and the clock.

#include "gfx/screens.h"
#include "support/canvas_app.h"
#include "support/play_area.h"
#include "support/screen_palette.h"
#include "support/software_canvas.h"

#include <gtest/gtest.h>

namespace vorn::test {
namespace {

class ScreenPieces : public ::testing::Test {
protected:
    void SetUp() override {
        canvas.useGameFonts();
        g.clear(screen_ink::black);
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

// The whole canvas: a card is nothing but its two lines on black.
constexpr Rect kWholeCanvas{0, 0, kCanvasWidth, kCanvasHeight};

::testing::AssertionResult cardReads(const SoftwareCanvas& canvas, const char* heading, Color headingInk,
                                     const char* subtitle, Color subtitleInk) {
    return showsTexts(canvas, kWholeCanvas,
                      {{heading, kCanvasCentreX, 364, TextSize::Giant, headingInk, true, true},
                       {subtitle, kCanvasCentreX, 432, TextSize::Normal, subtitleInk, true, true}},
                      screen_ink::black, Seen::direct);
}

TEST_F(ScreenPieces, ProbationCardReportsToTheStationInGoldAndBrass) {
    drawShiftCard(g, 0, 1.5);
    EXPECT_TRUE(cardReads(canvas, "PROBATION", screen_ink::gold, "Report to your station.", screen_ink::brass));
}

TEST_F(ScreenPieces, ShiftStartsCardSaysTheRealWorkBegins) {
    drawShiftCard(g, 1, 1.5);
    EXPECT_TRUE(cardReads(canvas, "SHIFT STARTS", screen_ink::gold, "Probation complete. The real work begins.",
                          screen_ink::brass));
}

TEST_F(ScreenPieces, OvertimeHeadingIsAlarmRed) {
    drawShiftCard(g, 2, 1.5);
    EXPECT_TRUE(cardReads(canvas, "OVERTIME", screen_ink::alarmRed, "Clock's against you now. No mercy.",
                          screen_ink::brass));
}

TEST_F(ScreenPieces, ShiftCardFadesItsColourTowardsBlackNotItsAlpha) {
    drawShiftCard(g, 1, 0.2);   // half way in: every channel halved, truncated
    EXPECT_TRUE(cardReads(canvas, "SHIFT STARTS", faded(screen_ink::gold, 0.5),
                          "Probation complete. The real work begins.", faded(screen_ink::brass, 0.5)));
    g.clear(screen_ink::black);
    drawShiftCard(g, 2, 2.8);   // half way out
    EXPECT_TRUE(cardReads(canvas, "OVERTIME", faded(screen_ink::alarmRed, 0.5),
                          "Clock's against you now. No mercy.", faded(screen_ink::brass, 0.5)));
    g.clear(screen_ink::black);
    drawShiftCard(g, 0, 0.1);   // a quarter in
    EXPECT_TRUE(cardReads(canvas, "PROBATION", faded(screen_ink::gold, 0.25), "Report to your station.",
                          faded(screen_ink::brass, 0.25)));
}

TEST_F(ScreenPieces, ShiftCardIsGoneAtThreeSeconds) {
    drawShiftCard(g, 0, 3.0);
    EXPECT_EQ(redPeak(kWholeCanvas), 0);
}

// ---- station header and footer ----

constexpr Rect kHeaderText{425, 95, 670, 75};
constexpr Rect kBadgeInside{279, 103, 138, 59};
constexpr Rect kFooterText{276, 627, 815, 49};

TEST_F(ScreenPieces, HeaderBandBadgeAndTheirOutlines) {
    drawStationHeader(g, "STATION 01 : X", "Y");
    EXPECT_EQ(canvas.pixel(1000, 152), screen_ink::darkPanel);
    EXPECT_EQ(canvas.pixel(kCanvasCentreX, 94), screen_ink::brass);   // band outline
    EXPECT_EQ(canvas.pixel(kCanvasCentreX, 170), screen_ink::brass);
    EXPECT_EQ(canvas.pixel(400, 152), screen_ink::badgeRed);
    EXPECT_EQ(canvas.pixel(273, 132), screen_ink::brass);  // badge outline
    EXPECT_EQ(canvas.pixel(423, 132), screen_ink::brass);
    EXPECT_TRUE(showsText(canvas, kBadgeInside,
                          {"THE VORN CO.", 348, 132, TextSize::Small, screen_ink::gold, true, true},
                          screen_ink::badgeRed, Seen::direct));
}

TEST_F(ScreenPieces, HeaderTitleAndInstructionStartAt445) {
    drawStationHeader(g, "STATION 07 : PUNCH CARD", "DO IT NOW");
    EXPECT_TRUE(showsTexts(canvas, kHeaderText,
                           {{"STATION 07 : PUNCH CARD", 445, 118, TextSize::Large, screen_ink::gold, false, true},
                            {"DO IT NOW", 445, 146, TextSize::Small, screen_ink::instruction, false, true}},
                           screen_ink::darkPanel, Seen::direct));
}

::testing::AssertionResult footerReads(const SoftwareCanvas& canvas, const char* mode, Color modeInk,
                                       const char* progress) {
    return showsTexts(canvas, kFooterText,
                      {{"EMPLOYEE No. 0049", 281, 640, TextSize::Small, screen_ink::gold, false, false},
                       {mode, 497, 640, TextSize::Small, modeInk, false, false},
                       {progress, 697, 640, TextSize::Small, screen_ink::gold, false, false}},
                      screen_ink::footerBand, Seen::direct);
}

TEST_F(ScreenPieces, FooterBandAndItsThreeGoldFields) {
    drawStationFooter(g, "MEDIUM", false, 3, 5);
    EXPECT_EQ(canvas.pixel(275, 668), screen_ink::footerBand);
    EXPECT_EQ(canvas.pixel(kCanvasCentreX, 626), screen_ink::brass);
    EXPECT_EQ(canvas.pixel(kCanvasCentreX, 676), screen_ink::brass);
    EXPECT_TRUE(footerReads(canvas, "MODE: MEDIUM", screen_ink::gold, "STATION 3 / 5"));
}

TEST_F(ScreenPieces, FooterProgressOfEqualWidthIsToldApart) {
    drawStationFooter(g, "HARD", false, 2, 5);
    EXPECT_TRUE(footerReads(canvas, "MODE: HARD", screen_ink::gold, "STATION 2 / 5"));
    EXPECT_FALSE(footerReads(canvas, "MODE: HARD", screen_ink::gold, "STATION 3 / 4"));
    g.clear(screen_ink::black);
    drawStationFooter(g, "HARD", false, 3, 4);
    EXPECT_TRUE(footerReads(canvas, "MODE: HARD", screen_ink::gold, "STATION 3 / 4"));
    EXPECT_FALSE(footerReads(canvas, "MODE: HARD", screen_ink::gold, "STATION 2 / 5"));
}

TEST_F(ScreenPieces, FooterModeIsRedOnVorn) {
    drawStationFooter(g, "VORN", true, 1, 5);
    // The other fields stay gold.
    EXPECT_TRUE(footerReads(canvas, "MODE: VORN", screen_ink::alarmRed, "STATION 1 / 5"));
}

// ---- the clock ----

TEST_F(ScreenPieces, ClockSitsInTwoRings) {
    drawClock(g, 9.5, 0.0, false);
    EXPECT_EQ(canvas.pixel(1059 + 22, 651), screen_ink::clockRim);
    EXPECT_EQ(canvas.pixel(1059, 651 - 23), screen_ink::clockRim);
    EXPECT_EQ(canvas.pixel(1059 - 17, 651), screen_ink::clockFace);
    EXPECT_NE(canvas.pixel(1059 + 25, 651), screen_ink::clockRim);
}

// The square of the dark face that holds the digits.
constexpr Rect kClockFaceSquare{1045, 637, 29, 29};

::testing::AssertionResult clockReads(const SoftwareCanvas& canvas, const char* digits, Color ink) {
    return showsText(canvas, kClockFaceSquare, {digits, 1059, 651, TextSize::Normal, ink, true, true},
                     screen_ink::clockFace, Seen::direct);
}

TEST_F(ScreenPieces, ClockCountsWholeSecondsUpwardsInTwoDigits) {
    drawClock(g, 9.2, 0.0, false);
    EXPECT_TRUE(clockReads(canvas, "10", screen_ink::terminalGreen));
    g.clear(screen_ink::black);
    drawClock(g, 10.0, 0.0, false);
    EXPECT_TRUE(clockReads(canvas, "10", screen_ink::terminalGreen));
    g.clear(screen_ink::black);
    drawClock(g, 0.3, 0.0, false);   // the last second, on a red blink
    EXPECT_TRUE(clockReads(canvas, "01", screen_ink::alarmRed));
}

TEST_F(ScreenPieces, ClockShowsZeroZeroOnceTimeIsUpAndNeverANegativeNumber) {
    for (double left : {0.0, -0.4, -3.0}) {
        g.clear(screen_ink::black);
        drawClock(g, left, 0.0, false);
        EXPECT_TRUE(clockReads(canvas, "00", screen_ink::terminalGreen)) << left;
    }
}

TEST(ClockColour, GreenUntilTheLastThreeSeconds) {
    EXPECT_EQ(clockColor(9.0, 0.0, false), screen_ink::terminalGreen);
    EXPECT_EQ(clockColor(3.01, 0.0, false), screen_ink::terminalGreen);   // still shows 4
}

TEST(ClockColour, BlinksRedOnEvenSixthsAndGoldOnOddOnesInTheLastThreeSeconds) {
    EXPECT_EQ(clockColor(3.0, 0.0, false), screen_ink::alarmRed);
    EXPECT_EQ(clockColor(2.5, 0.1, false), screen_ink::alarmRed);    // sixth 0
    EXPECT_EQ(clockColor(2.5, 0.2, false), screen_ink::gold);        // sixth 1
    EXPECT_EQ(clockColor(2.5, 0.34, false), screen_ink::alarmRed);   // sixth 2
    EXPECT_EQ(clockColor(0.01, 1.0, false), screen_ink::alarmRed);   // sixth 6
    EXPECT_EQ(clockColor(0.01, 1.17, false), screen_ink::gold);      // sixth 7
}

TEST(ClockColour, GreenAgainOnceTimeIsUp) {
    EXPECT_EQ(clockColor(0.0, 0.0, false), screen_ink::terminalGreen);
    EXPECT_EQ(clockColor(-1.0, 0.2, false), screen_ink::terminalGreen);
}

TEST(ClockColour, NeverBlinksOnVorn) {
    for (double t = 0.0; t < 1.0; t += 0.05) {
        ASSERT_EQ(clockColor(2.5, t, true), screen_ink::terminalGreen) << t;
    }
}

TEST_F(ScreenPieces, ClockDigitsTakeTheBlinkColour) {
    drawClock(g, 2.5, 0.2, false);
    EXPECT_TRUE(clockReads(canvas, "03", screen_ink::gold));
    g.clear(screen_ink::black);
    drawClock(g, 2.5, 0.0, false);
    EXPECT_TRUE(clockReads(canvas, "03", screen_ink::alarmRed));
    g.clear(screen_ink::black);
    drawClock(g, 2.5, 0.0, true);
    EXPECT_TRUE(clockReads(canvas, "03", screen_ink::terminalGreen));
}

TEST_F(ScreenPieces, ClockTellsDigitsOfEqualWidthApart) {
    drawClock(g, 57.3, 0.0, false);
    EXPECT_TRUE(clockReads(canvas, "58", screen_ink::terminalGreen));
    EXPECT_FALSE(clockReads(canvas, "57", screen_ink::terminalGreen));
    EXPECT_FALSE(clockReads(canvas, "85", screen_ink::terminalGreen));
}

}  // namespace
}  // namespace vorn::test
