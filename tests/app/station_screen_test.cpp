// The station screen as Application::render draws it: the header with the
// station's number, name and instruction, the station's own picture, then
// the footer and the clock on top, all under the glass.

#include "app/difficulty.h"
#include "gfx/screens.h"
#include "support/canvas_app.h"
#include "support/play_area.h"
#include "support/screen_palette.h"

#include <gtest/gtest.h>

namespace vorn::test {
namespace {

// A station that paints the whole canvas, to show what is drawn after it.
class PaintingStation final : public Level {
public:
    LevelResult update(double, const InputState&, AudioSystem&) override { return LevelResult::Running; }
    void render(Graphics& g) override {
        if (paints) {
            g.rect({0, 0, kCanvasWidth, kCanvasHeight}, screen_ink::magenta, true);
        }
    }
    bool paints = false;
};

class StationScreen : public ::testing::Test {
protected:
    StationScreen() {
        auto owned = std::make_unique<PaintingStation>();
        station = owned.get();
        station->number = 7;
        station->name = "PUNCH CARD";
        station->instruction = "CLOCK IN. DO NOT CLOCK OUT.";
        shot.app.station = std::move(owned);
        shot.app.stationOrder = {4, 3, 2, 1, 0};
        shot.app.stationIndex = 2;
        shot.app.timeLeft = 8.6;
        shot.app.difficulty = Difficulty::medium;
    }
    void show(double screenTime = 1.0) { shot.show(GameScreen::station, screenTime); }

    CanvasApp shot;
    PaintingStation* station = nullptr;
};

// The header band right of the badge, inside its outline: the title and the
// instruction on dark panel, nothing else.
constexpr Rect kHeaderText{425, 95, 670, 75};
// The badge inside its brass outline and clear of its rounded corners.
constexpr Rect kBadgeInside{279, 103, 138, 59};
// The footer band inside its outline, from its left end to just short of the
// clock.
constexpr Rect kFooterText{276, 627, 755, 49};
// The square of the clock's dark face that holds the digits.
constexpr Rect kClockFaceSquare{1045, 637, 29, 29};

::testing::AssertionResult headerReads(const CanvasApp& shot, const char* title, const char* instruction) {
    return showsTexts(shot.canvas, kHeaderText,
                      {{title, 445, 118, TextSize::Large, screen_ink::gold, false, true},
                       {instruction, 445, 146, TextSize::Small, screen_ink::instruction, false, true}},
                      screen_ink::darkPanel);
}

::testing::AssertionResult footerReads(const CanvasApp& shot, const char* mode, Color modeInk,
                                       const char* progress) {
    return showsTexts(shot.canvas, kFooterText,
                      {{"EMPLOYEE No. 0049", 281, 640, TextSize::Small, screen_ink::gold, false, false},
                       {mode, 497, 640, TextSize::Small, modeInk, false, false},
                       {progress, 697, 640, TextSize::Small, screen_ink::gold, false, false}},
                      screen_ink::footerBand);
}

::testing::AssertionResult clockReads(const CanvasApp& shot, const char* digits, Color ink) {
    return showsText(shot.canvas, kClockFaceSquare, {digits, 1059, 651, TextSize::Normal, ink, true, true},
                     screen_ink::clockFace);
}

TEST_F(StationScreen, BadgeIsDarkRedWithTheCompanyName) {
    show();
    EXPECT_TRUE(shows(shot.canvas, 400, 152, screen_ink::badgeRed));
    EXPECT_TRUE(shows(shot.canvas, 1000, 152, screen_ink::darkPanel));
    EXPECT_TRUE(showsText(shot.canvas, kBadgeInside,
                          {"THE VORN CO.", 348, 132, TextSize::Small, screen_ink::gold, true, true},
                          screen_ink::badgeRed));
}

TEST_F(StationScreen, TitleCarriesTheZeroPaddedNumberAndTheName) {
    show();
    EXPECT_TRUE(headerReads(shot, "STATION 07 : PUNCH CARD", "CLOCK IN. DO NOT CLOCK OUT."));
}

TEST_F(StationScreen, TitleTellsStationNumbersOfEqualWidthApart) {
    station->number = 12;
    show();
    EXPECT_TRUE(headerReads(shot, "STATION 12 : PUNCH CARD", "CLOCK IN. DO NOT CLOCK OUT."));
    EXPECT_FALSE(headerReads(shot, "STATION 21 : PUNCH CARD", "CLOCK IN. DO NOT CLOCK OUT."));
}

TEST_F(StationScreen, AnEmptyInstructionAsksToBeatTheClock) {
    station->instruction.clear();
    show();
    EXPECT_TRUE(headerReads(shot, "STATION 07 : PUNCH CARD", "Solve the station before the clock runs out."));
}

TEST_F(StationScreen, StationDrawsOverTheHeaderButUnderTheFooterClockAndGlass) {
    station->paints = true;
    show();
    EXPECT_TRUE(shows(shot.canvas, 400, 152, screen_ink::magenta));          // the badge is painted over
    EXPECT_TRUE(shows(shot.canvas, 275, 668, screen_ink::footerBand));       // the footer is not
    EXPECT_TRUE(shows(shot.canvas, 1059 + 22, 651, screen_ink::clockRim));   // nor the clock
    EXPECT_NE(shot.pixel(kCanvasCentreX, 300), screen_ink::magenta);         // the glass covers it
    EXPECT_TRUE(shows(shot.canvas, kCanvasCentreX, 300, screen_ink::magenta));
    EXPECT_TRUE(footerReads(shot, "MODE: MEDIUM", screen_ink::gold, "STATION 3 / 5"));
    EXPECT_TRUE(clockReads(shot, "09", screen_ink::terminalGreen));
}

TEST_F(StationScreen, FooterNamesTheEmployeeModeAndProgressInGold) {
    show();
    EXPECT_TRUE(shows(shot.canvas, 275, 668, screen_ink::footerBand));
    EXPECT_TRUE(footerReads(shot, "MODE: MEDIUM", screen_ink::gold, "STATION 3 / 5"));
}

TEST_F(StationScreen, FooterCountsFromOneAndTellsProgressOfEqualWidthApart) {
    shot.app.stationOrder = {0, 1, 2, 3};
    shot.app.stationIndex = 2;
    shot.app.difficulty = Difficulty::hard;
    show();
    EXPECT_TRUE(footerReads(shot, "MODE: HARD", screen_ink::gold, "STATION 3 / 4"));
    EXPECT_FALSE(footerReads(shot, "MODE: HARD", screen_ink::gold, "STATION 2 / 5"));
    EXPECT_FALSE(footerReads(shot, "MODE: HARD", screen_ink::gold, "STATION 2 / 4"));
    shot.app.stationOrder = {0, 1, 2, 3, 4};
    shot.app.stationIndex = 1;
    show();
    EXPECT_TRUE(footerReads(shot, "MODE: HARD", screen_ink::gold, "STATION 2 / 5"));
    EXPECT_FALSE(footerReads(shot, "MODE: HARD", screen_ink::gold, "STATION 3 / 4"));
}

TEST_F(StationScreen, FooterNamesEasy) {
    shot.app.difficulty = Difficulty::easy;
    shot.app.stationIndex = 0;
    show();
    EXPECT_TRUE(footerReads(shot, "MODE: EASY", screen_ink::gold, "STATION 1 / 5"));
}

TEST_F(StationScreen, ModeIsRedOnVorn) {
    shot.app.difficulty = Difficulty::vorn;
    shot.app.stationIndex = 4;
    show();
    EXPECT_TRUE(footerReads(shot, "MODE: VORN", screen_ink::alarmRed, "STATION 5 / 5"));
}

TEST_F(StationScreen, ClockRingsShowUnderTheGlass) {
    show();
    EXPECT_TRUE(shows(shot.canvas, 1059 + 22, 651, screen_ink::clockRim));
    EXPECT_TRUE(shows(shot.canvas, 1059, 651 - 23, screen_ink::clockRim));
    EXPECT_TRUE(shows(shot.canvas, 1059 - 17, 651, screen_ink::clockFace));
    // 8.6 seconds left read as 9, in green.
    EXPECT_TRUE(clockReads(shot, "09", screen_ink::terminalGreen));
}

TEST_F(StationScreen, ClockCountsWholeSecondsInTwoDigits) {
    shot.app.timeLeft = 42.0;
    show();
    EXPECT_TRUE(clockReads(shot, "42", screen_ink::terminalGreen));
    shot.app.timeLeft = 41.2;
    show();
    EXPECT_TRUE(clockReads(shot, "42", screen_ink::terminalGreen));
    EXPECT_FALSE(clockReads(shot, "41", screen_ink::terminalGreen));
    shot.app.timeLeft = 3.01;   // still four seconds on the face: no warning yet
    show();
    EXPECT_TRUE(clockReads(shot, "04", screen_ink::terminalGreen));
}

TEST_F(StationScreen, ClockAtTimeUpShowsZeroZeroLikeAnyEmptyClock) {
    // The run never lets the clock go below zero, but the picture would not
    // show a minus sign even if it did.
    shot.app.timeLeft = 0.0;
    show();
    EXPECT_TRUE(clockReads(shot, "00", screen_ink::terminalGreen));
    const SDL_Surface* s = shot.canvas.surface;
    const std::vector<Uint8> atZero(static_cast<const Uint8*>(s->pixels),
                                    static_cast<const Uint8*>(s->pixels) + s->pitch * s->h);
    shot.app.timeLeft = -2.5;
    show();
    for (int y = 625; y < 678; ++y) {
        for (int x = 1033; x < 1086; ++x) {
            const std::size_t at = static_cast<std::size_t>(y) * s->pitch + static_cast<std::size_t>(x) * 4;
            ASSERT_EQ(static_cast<const Uint8*>(s->pixels)[at], atZero[at]) << x << "," << y;
        }
    }
    EXPECT_TRUE(clockReads(shot, "00", screen_ink::terminalGreen));
    // One hundredth of a second left is still "01", in the warning red.
    shot.app.timeLeft = 0.01;
    show(0.0);
    EXPECT_TRUE(clockReads(shot, "01", screen_ink::alarmRed));
}

TEST_F(StationScreen, ClockBlinksRedAndGoldInTheLastThreeSeconds) {
    shot.app.timeLeft = 2.5;
    show(0.0);   // sixth 0: red
    EXPECT_TRUE(clockReads(shot, "03", screen_ink::alarmRed));
    show(0.2);   // sixth 1: gold
    EXPECT_TRUE(clockReads(shot, "03", screen_ink::gold));
    show(0.34);  // sixth 2: red again
    EXPECT_TRUE(clockReads(shot, "03", screen_ink::alarmRed));
    shot.app.timeLeft = 3.0;   // exactly three: the warning has begun
    show(0.5);   // sixth 3: gold
    EXPECT_TRUE(clockReads(shot, "03", screen_ink::gold));
}

TEST_F(StationScreen, ClockNeverBlinksOnVorn) {
    shot.app.difficulty = Difficulty::vorn;
    shot.app.timeLeft = 2.5;
    for (double t : {0.0, 0.2, 0.4, 0.55}) {
        show(t);
        EXPECT_TRUE(clockReads(shot, "03", screen_ink::terminalGreen)) << t;
    }
}

}  // namespace
}  // namespace vorn::test
