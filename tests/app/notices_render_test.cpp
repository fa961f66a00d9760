// The fired and victory notices as Application::render draws them, and the
// flat picture every terminal screen falls back to when no texture could be
// made.

#include "gfx/screens.h"
#include "gfx/terminal.h"
#include "support/canvas_app.h"

#include <gtest/gtest.h>

namespace vorn::test {
namespace {

constexpr Rect kReasonRow{300, 366, 766, 26};
constexpr Rect kNoCardRow{300, 376, 766, 26};
constexpr Color kReasonInk = rgb(229, 153, 41);
constexpr Color kNoReasonInk = rgb(204, 46, 33);
constexpr Color kNoCardInk = rgb(216, 144, 39);
constexpr Color kCardInk = rgb(20, 20, 20);

// Every line of the notices is centred on x 683 and on its own y.
::testing::AssertionResult showsLine(const CanvasApp& shot, const Rect& area, const char* s, int y,
                                     TextSize size, Color c) {
    return showsInkBox(shot.canvas, area, {s, 683, y, size, c, true, true});
}

// Points of the monitor and room outside the glass: keyboard block and its
// rim, casing, faces, recess, knobs, lamp, badge, plate, wall and rail.
constexpr std::pair<int, int> kFrameProbes[] = {
    {600, 745}, {600, 750}, {184, 300}, {1185, 300}, {190, 384}, {233, 384}, {241, 384},
    {283, 720}, {397, 720}, {1060, 720}, {683, 716}, {60, 300},  {30, 20},   {683, 755}};

TEST(NoticeFrames, FiredAndVictoryShareTheTerminalAndOnlyTheGlassDiffers) {
    CanvasApp fired;
    fired.show(GameScreen::fired);
    CanvasApp victory;
    victory.show(GameScreen::victory);
    for (const auto& p : kFrameProbes) {
        EXPECT_EQ(fired.pixel(p.first, p.second), victory.pixel(p.first, p.second))
            << p.first << "," << p.second;
    }
    // Empty glass away from every line of text: red for the fired notice.
    for (const auto& p : {std::pair{400, 200}, {950, 560}, {300, 500}}) {
        const Color red = fired.pixel(p.first, p.second);
        const Color green = victory.pixel(p.first, p.second);
        EXPECT_GT(vorn::red(red), vorn::green(red)) << p.first << "," << p.second;
        EXPECT_GT(vorn::green(green), vorn::red(green)) << p.first << "," << p.second;
    }
}

TEST(NoticeFrames, BothNoticesKeepTheGlassOverlay) {
    CanvasApp fired({false, true, true});
    fired.show(GameScreen::fired);
    EXPECT_TRUE(shows(fired.canvas, 400, 300, palette::redScreen)) << std::hex << fired.pixel(400, 300);
    EXPECT_NE(fired.pixel(400, 300), palette::redScreen);   // a scan line
    EXPECT_TRUE(shows(fired.canvas, 250, 384, palette::redScreen));   // the shaded edge
    EXPECT_NE(fired.pixel(250, 384), palette::redScreen);
    CanvasApp victory({false, true, true});
    victory.show(GameScreen::victory);
    EXPECT_TRUE(shows(victory.canvas, 400, 300, palette::greenScreen));
    EXPECT_NE(victory.pixel(400, 300), palette::greenScreen);
}

TEST(FiredNotice, HeadlineAndOfficeLine) {
    CanvasApp shot;
    shot.show(GameScreen::fired);
    EXPECT_GT(countInk(shot.canvas, {500, 220, 366, 116}, palette::alarmRed), 2000);
    EXPECT_TRUE(showsLine(shot, {300, 116, 766, 26}, "THE VORN CO. - OFFICE OF TERMINATIONS", 128, TextSize::Normal, palette::amber));
    EXPECT_TRUE(showsLine(shot, {300, 630, 766, 22}, "> REHIRED. RETURN TO STATION 01.", 640, TextSize::Small, palette::amber));
}

TEST(FiredNotice, GivesItsReasonOffVorn) {
    CanvasApp shot;
    shot.app.difficulty = Difficulty::hard;
    shot.show(GameScreen::fired);
    EXPECT_EQ(countInk(shot.canvas, kReasonRow, kNoReasonInk), 0);
    EXPECT_TRUE(showsLine(shot, kReasonRow, "YOUR EMPLOYMENT HAS BEEN TERMINATED.", 378, TextSize::Normal, kReasonInk));
}

TEST(FiredNotice, GivesNoReasonOnVorn) {
    CanvasApp shot;
    shot.app.difficulty = Difficulty::vorn;
    shot.show(GameScreen::fired);
    EXPECT_EQ(countInk(shot.canvas, kReasonRow, kReasonInk), 0);
    EXPECT_TRUE(showsLine(shot, kReasonRow, "[ NO REASON ON FILE ]", 378, TextSize::Normal, kNoReasonInk));
}

TEST(FiredNotice, CountsTheFiringsInSixDigitsInABrassBox) {
    CanvasApp shot;
    shot.app.save.timesFired = 42;
    shot.show(GameScreen::fired);
    EXPECT_TRUE(shows(shot.canvas, 600, 438, palette::brass));
    EXPECT_TRUE(shows(shot.canvas, 553, 468, palette::brass));
    EXPECT_TRUE(showsLine(shot, {560, 444, 246, 20}, "TIMES FIRED", 454, TextSize::Small, palette::brass));
    EXPECT_TRUE(showsLine(shot, {560, 466, 246, 26}, "000042", 478, TextSize::Normal, palette::alarmRed));
}

TEST(VictoryNotice, HeadlineAndSubtitle) {
    CanvasApp shot;
    shot.show(GameScreen::victory);
    EXPECT_TRUE(showsLine(shot, {300, 186, 766, 64}, "SHIFT COMPLETE", 218, TextSize::Huge, palette::terminalGreen));
    EXPECT_TRUE(showsLine(shot, {300, 280, 766, 38}, "You survived The Vorn Co.", 298, TextSize::Large, palette::gold));
    EXPECT_TRUE(showsLine(shot, {300, 640, 766, 22}, "[ click or press any key ]", 650, TextSize::Small, rgb(49, 156, 96)));
}

TEST(VictoryNotice, AnAwardedCardIsABrassCardWithDarkLettering) {
    CanvasApp shot;
    shot.app.difficulty = Difficulty::easy;
    shot.app.cardAwarded = true;
    shot.show(GameScreen::victory);
    EXPECT_TRUE(shows(shot.canvas, 545, 370, palette::brass));
    EXPECT_TRUE(shows(shot.canvas, 600, 358, palette::gold));
    EXPECT_TRUE(showsLine(shot, {540, 376, 286, 26}, "CLOCK-IN CARD AWARDED", 388, TextSize::Normal, kCardInk));
    EXPECT_TRUE(showsLine(shot, {540, 408, 286, 22}, "Continue is now unlocked.", 418, TextSize::Small, kCardInk));
    EXPECT_EQ(countInk(shot.canvas, kNoCardRow, kNoCardInk), 0);
}

TEST(VictoryNotice, WithoutACardTheGlassStaysEmptyAndSaysSo) {
    CanvasApp shot;
    shot.app.difficulty = Difficulty::medium;
    shot.app.cardAwarded = false;
    shot.show(GameScreen::victory);
    EXPECT_FALSE(shows(shot.canvas, 545, 370, palette::brass));
    EXPECT_TRUE(showsLine(shot, kNoCardRow, "No clock-in card this time.", 388, TextSize::Normal, kNoCardInk));
}

TEST(VictoryNotice, OnVornNoCardAndTheCompanySaysWhy) {
    CanvasApp shot;
    shot.app.difficulty = Difficulty::vorn;
    shot.app.cardAwarded = false;
    shot.show(GameScreen::victory);
    EXPECT_FALSE(shows(shot.canvas, 545, 370, palette::brass));
    EXPECT_TRUE(showsLine(shot, kNoCardRow, "No card. The Vorn Co. never rewards Vorn.", 388, TextSize::Normal, kNoCardInk));
}

// ---- no textures at all ----

TEST(FlatTerminal, WithoutTexturesRoomCasingAndGlassAreFlatAndThereAreNoBolts) {
    CanvasApp flat({false, true, true});
    flat.show(GameScreen::title);
    EXPECT_EQ(flat.pixel(60, 300), kFlatWall);
    EXPECT_EQ(flat.pixel(1300, 700), kFlatWall);
    EXPECT_EQ(flat.pixel(683, 760), kFlatWall);   // no hazard strip
    // No rail, so no bolts: not even their tops above the monitor.
    for (int x = 30; x < 1366; x += 90) {
        ASSERT_EQ(flat.pixel(x, 17), kFlatWall) << x;
    }
    EXPECT_EQ(flat.pixel(184, 300), palette::casingBeige);
    EXPECT_EQ(flat.pixel(600, 745), palette::casingBeige);
    EXPECT_EQ(flat.pixel(400, 200), palette::greenScreen);
    // The flat glass is rounded: its corner shows the recess.
    EXPECT_TRUE(shows(flat.canvas, 248, 79, kGlassRecess));
    EXPECT_TRUE(shows(flat.canvas, 300, 79, palette::greenScreen));
}

TEST(FlatTerminal, FlatFiredGlassIsTheRedScreenColour) {
    CanvasApp flat({false, true, true});
    flat.show(GameScreen::fired);
    EXPECT_EQ(flat.pixel(400, 200), palette::redScreen);
    EXPECT_EQ(flat.pixel(184, 300), palette::casingBeige);
    EXPECT_EQ(flat.pixel(60, 300), kFlatWall);
}

}  // namespace
}  // namespace vorn::test
