// The station screen as Application::render draws it: the header with the
// station's number, name and instruction, the station's own picture, then
// the footer and the clock on top, all under the glass.

#include "app/difficulty.h"
#include "gfx/screens.h"
#include "support/canvas_app.h"

#include <gtest/gtest.h>

namespace vorn::test {
namespace {

constexpr Color kMagenta = rgb(255, 0, 255);

// A station that paints the whole canvas, to show what is drawn after it.
class PaintingStation final : public Level {
public:
    LevelResult update(double, const InputState&, AudioSystem&) override { return LevelResult::Running; }
    void render(Graphics& g) override {
        if (paints) {
            g.rect({0, 0, kCanvasWidth, kCanvasHeight}, kMagenta, true);
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

constexpr Rect kTitleRow{430, 98, 670, 38};
constexpr Rect kInstructionRow{430, 136, 670, 24};
constexpr Rect kEmployeeField{270, 634, 210, 30};
constexpr Rect kModeField{490, 634, 200, 30};
constexpr Rect kProgressField{690, 634, 300, 30};
constexpr Rect kClockDigits{1038, 634, 43, 34};

TEST_F(StationScreen, BadgeIsDarkRedWithTheCompanyName) {
    show();
    EXPECT_TRUE(shows(shot.canvas, 400, 152, kBadgeRed));
    EXPECT_TRUE(shows(shot.canvas, 1000, 152, palette::darkPanel));
    EXPECT_GT(countInk(shot.canvas, {283, 120, 130, 24}, palette::gold), 20);
}

TEST_F(StationScreen, TitleCarriesTheZeroPaddedNumberAndTheName) {
    show();
    EXPECT_TRUE(showsInkBox(shot.canvas, kTitleRow, {"STATION 07 : PUNCH CARD", 445, 118,
                                                   TextSize::Large, palette::gold, false, true}));
}

TEST_F(StationScreen, InstructionIsTheStationsOwnLine) {
    show();
    EXPECT_TRUE(showsInkBox(shot.canvas, kInstructionRow, {"CLOCK IN. DO NOT CLOCK OUT.", 445, 146,
                                                         TextSize::Small, kInstructionColor, false, true}));
}

TEST_F(StationScreen, AnEmptyInstructionAsksToBeatTheClock) {
    station->instruction.clear();
    show();
    EXPECT_TRUE(showsInkBox(shot.canvas, kInstructionRow,
                          {"Solve the station before the clock runs out.", 445, 146, TextSize::Small,
                           kInstructionColor, false, true}));
}

TEST_F(StationScreen, StationDrawsOverTheHeaderButUnderTheFooterClockAndGlass) {
    station->paints = true;
    show();
    EXPECT_TRUE(shows(shot.canvas, 400, 152, kMagenta));            // the badge is painted over
    EXPECT_TRUE(shows(shot.canvas, 275, 668, kFooterBand));         // the footer is not
    EXPECT_TRUE(shows(shot.canvas, 1059 + 22, 651, kClockRim));     // nor the clock
    EXPECT_NE(shot.pixel(683, 300), kMagenta);                      // the glass covers it
    EXPECT_TRUE(shows(shot.canvas, 683, 300, kMagenta));
}

TEST_F(StationScreen, FooterNamesTheEmployeeModeAndProgressInGold) {
    show();
    EXPECT_TRUE(shows(shot.canvas, 275, 668, kFooterBand));
    EXPECT_TRUE(showsInkBox(shot.canvas, kEmployeeField,
                          {"EMPLOYEE No. 0049", 281, 640, TextSize::Small, palette::gold, false, false}));
    EXPECT_TRUE(showsInkBox(shot.canvas, kModeField,
                          {"MODE: MEDIUM", 497, 640, TextSize::Small, palette::gold, false, false}));
    EXPECT_TRUE(showsInkBox(shot.canvas, kProgressField,
                          {"STATION 3 / 5", 697, 640, TextSize::Small, palette::gold, false, false}));
}

TEST_F(StationScreen, ModeIsRedOnVorn) {
    shot.app.difficulty = Difficulty::vorn;
    show();
    EXPECT_GT(countInk(shot.canvas, kModeField, palette::alarmRed), 20);
    EXPECT_EQ(countInk(shot.canvas, kModeField, palette::gold), 0);
    EXPECT_TRUE(showsInkBox(shot.canvas, kModeField,
                          {"MODE: VORN", 497, 640, TextSize::Small, palette::alarmRed, false, false}));
}

TEST_F(StationScreen, ClockRingsShowUnderTheGlass) {
    show();
    EXPECT_TRUE(shows(shot.canvas, 1059 + 22, 651, kClockRim));
    EXPECT_TRUE(shows(shot.canvas, 1059, 651 - 23, kClockRim));
    EXPECT_TRUE(shows(shot.canvas, 1059 - 17, 651, kClockFace));
    EXPECT_GT(countInk(shot.canvas, kClockDigits, palette::terminalGreen), 10);
}

TEST_F(StationScreen, ClockAtTimeUpShowsZeroZeroLikeAnyEmptyClock) {
    // The run never lets the clock go below zero, but the picture would not
    // show a minus sign even if it did.
    shot.app.timeLeft = 0.0;
    show();
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
    EXPECT_GT(countInk(shot.canvas, kClockDigits, palette::terminalGreen), 10);
    EXPECT_TRUE(showsInkBox(shot.canvas, kClockDigits,
                          {"00", 1059, 651, TextSize::Normal, palette::terminalGreen, true, true}));
    // One hundredth of a second left is still "01", in the warning red.
    shot.app.timeLeft = 0.01;
    show(0.0);
    EXPECT_EQ(countInk(shot.canvas, kClockDigits, palette::terminalGreen), 0);
    EXPECT_GT(countInk(shot.canvas, kClockDigits, palette::alarmRed), 10);
}

TEST_F(StationScreen, ClockBlinksRedAndGoldInTheLastThreeSeconds) {
    shot.app.timeLeft = 2.5;
    show(0.0);
    EXPECT_GT(countInk(shot.canvas, kClockDigits, palette::alarmRed), 10);
    show(0.2);
    EXPECT_GT(countInk(shot.canvas, kClockDigits, palette::gold), 10);
    EXPECT_EQ(countInk(shot.canvas, kClockDigits, palette::alarmRed), 0);
}

TEST_F(StationScreen, ClockNeverBlinksOnVorn) {
    shot.app.difficulty = Difficulty::vorn;
    shot.app.timeLeft = 2.5;
    for (double t : {0.0, 0.2, 0.4, 0.55}) {
        show(t);
        EXPECT_GT(countInk(shot.canvas, kClockDigits, palette::terminalGreen), 10) << t;
        EXPECT_EQ(countInk(shot.canvas, kClockDigits, palette::alarmRed), 0) << t;
        EXPECT_EQ(countInk(shot.canvas, kClockDigits, palette::gold), 0) << t;
    }
}

}  // namespace
}  // namespace vorn::test
