// The fired and victory notices as Application::render draws them, and the
// flat picture every terminal screen falls back to when no texture could be
// made.

#include "gfx/screens.h"
#include "gfx/terminal.h"
#include "support/canvas_app.h"
#include "support/play_area.h"
#include "support/screen_palette.h"

#include <gtest/gtest.h>

namespace vorn::test {
namespace {

// The notices' lines are read without textures, on the flat glass. Each area
// spans the glass from side to side (clear of its rounded corners) between
// two neighbouring pieces, so it holds only the lines named for it.
constexpr Rect kTopOfGlass{262, 92, 842, 265};      // office line and FIRED / headline
constexpr Rect kReasonBand{262, 358, 842, 78};       // down to the counter box
constexpr Rect kCounterInside{554, 439, 259, 59};    // inside the brass outline
constexpr Rect kBottomOfGlass{262, 505, 842, 170};   // the last line
constexpr Rect kVictoryTop{262, 92, 842, 262};       // headline and subtitle, above the card
constexpr Rect kCardInside{543, 359, 281, 89};       // inside the card's outline and corners
constexpr Rect kCardBand{262, 358, 842, 92};         // the card's rows when there is no card

// Points of the monitor and room outside the glass: keyboard block and its
// rim, casing, faces, recess, knobs, lamp, badge, plate, wall and rail.
constexpr std::pair<int, int> kFrameProbes[] = {
    {600, 745}, {600, 750}, {184, 300}, {1185, 300},
    {190, kCanvasCentreY}, {233, kCanvasCentreY}, {241, kCanvasCentreY},
    {283, 720}, {397, 720}, {1060, 720}, {kCanvasCentreX, 716},
    {60, 300}, {30, 20}, {kCanvasCentreX, 755}};

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
    EXPECT_TRUE(shows(fired.canvas, 400, 300, screen_ink::redScreen)) << std::hex << fired.pixel(400, 300);
    EXPECT_NE(fired.pixel(400, 300), screen_ink::redScreen);   // a scan line
    EXPECT_TRUE(shows(fired.canvas, 250, kCanvasCentreY, screen_ink::redScreen));   // the shaded edge
    EXPECT_NE(fired.pixel(250, kCanvasCentreY), screen_ink::redScreen);
    CanvasApp victory({false, true, true});
    victory.show(GameScreen::victory);
    EXPECT_TRUE(shows(victory.canvas, 400, 300, screen_ink::greenScreen));
    EXPECT_NE(victory.pixel(400, 300), screen_ink::greenScreen);
}

TEST(FiredNotice, HeadlineAndOfficeLine) {
    CanvasApp shot({false, true, true});
    shot.show(GameScreen::fired);
    EXPECT_TRUE(showsTexts(shot.canvas, kTopOfGlass,
                           {{"THE VORN CO. - OFFICE OF TERMINATIONS", kCanvasCentreX, 128, TextSize::Normal,
                             screen_ink::amber, true, true},
                            {"FIRED", kCanvasCentreX, 278, TextSize::Giant, screen_ink::alarmRed, true, true}},
                           screen_ink::redScreen));
    EXPECT_TRUE(showsText(shot.canvas, kBottomOfGlass,
                          {"> REHIRED. RETURN TO STATION 01.", kCanvasCentreX, 640, TextSize::Small,
                           screen_ink::amber, true, true},
                          screen_ink::redScreen));
}

TEST(FiredNotice, GivesItsReasonOffVorn) {
    for (Difficulty d : {Difficulty::easy, Difficulty::medium, Difficulty::hard}) {
        CanvasApp shot({false, true, true});
        shot.app.difficulty = d;
        shot.show(GameScreen::fired);
        EXPECT_TRUE(showsText(shot.canvas, kReasonBand,
                              {"YOUR EMPLOYMENT HAS BEEN TERMINATED.", kCanvasCentreX, 378, TextSize::Normal,
                               screen_ink::firedReason, true, true},
                              screen_ink::redScreen))
            << static_cast<int>(d);
    }
}

TEST(FiredNotice, GivesNoReasonOnVorn) {
    CanvasApp shot({false, true, true});
    shot.app.difficulty = Difficulty::vorn;
    shot.show(GameScreen::fired);
    EXPECT_TRUE(showsText(shot.canvas, kReasonBand,
                          {"[ NO REASON ON FILE ]", kCanvasCentreX, 378, TextSize::Normal,
                           screen_ink::firedNoReason, true, true},
                          screen_ink::redScreen));
}

::testing::AssertionResult counterReads(const CanvasApp& shot, const char* count) {
    return showsTexts(shot.canvas, kCounterInside,
                      {{"TIMES FIRED", kCanvasCentreX, 454, TextSize::Small, screen_ink::brass, true, true},
                       {count, kCanvasCentreX, 478, TextSize::Normal, screen_ink::alarmRed, true, true}},
                      screen_ink::redScreen);
}

TEST(FiredNotice, CountsTheFiringsInSixDigitsInABrassBox) {
    CanvasApp shot({false, true, true});
    shot.app.save.timesFired = 42;
    shot.show(GameScreen::fired);
    EXPECT_TRUE(shows(shot.canvas, 600, 438, screen_ink::brass));
    EXPECT_TRUE(shows(shot.canvas, 553, 468, screen_ink::brass));
    EXPECT_TRUE(shows(shot.canvas, 813, 468, screen_ink::brass));
    EXPECT_TRUE(shows(shot.canvas, 600, 498, screen_ink::brass));
    EXPECT_TRUE(counterReads(shot, "000042"));
    // A single digit off, at the same width, is told apart.
    EXPECT_FALSE(counterReads(shot, "000043"));
    EXPECT_FALSE(counterReads(shot, "000024"));
}

TEST(FiredNotice, CountKeepsEveryDigitOfSixAndMore) {
    CanvasApp shot({false, true, true});
    shot.app.save.timesFired = 908172;
    shot.show(GameScreen::fired);
    EXPECT_TRUE(counterReads(shot, "908172"));
    shot.app.save.timesFired = 0;
    shot.show(GameScreen::fired);
    EXPECT_TRUE(counterReads(shot, "000000"));
    // Six is the least, not the most: a seventh digit is kept.
    shot.app.save.timesFired = 1000001;
    shot.show(GameScreen::fired);
    EXPECT_TRUE(counterReads(shot, "1000001"));
}

TEST(VictoryNotice, HeadlineAndSubtitle) {
    CanvasApp shot({false, true, true});
    shot.show(GameScreen::victory);
    EXPECT_TRUE(showsTexts(shot.canvas, kVictoryTop,
                           {{"SHIFT COMPLETE", kCanvasCentreX, 218, TextSize::Huge, screen_ink::terminalGreen,
                             true, true},
                            {"You survived The Vorn Co.", kCanvasCentreX, 298, TextSize::Large, screen_ink::gold,
                             true, true}},
                           screen_ink::greenScreen));
    EXPECT_TRUE(showsText(shot.canvas, kBottomOfGlass,
                          {"[ click or press any key ]", kCanvasCentreX, 650, TextSize::Small, screen_ink::dismiss,
                           true, true},
                          screen_ink::greenScreen));
}

TEST(VictoryNotice, AnAwardedCardIsABrassCardWithDarkLettering) {
    CanvasApp shot({false, true, true});
    shot.app.difficulty = Difficulty::easy;
    shot.app.cardAwarded = true;
    shot.show(GameScreen::victory);
    EXPECT_TRUE(shows(shot.canvas, 545, 370, screen_ink::brass));
    EXPECT_TRUE(shows(shot.canvas, 600, 358, screen_ink::gold));
    EXPECT_TRUE(shows(shot.canvas, 600, 448, screen_ink::gold));
    EXPECT_TRUE(showsTexts(shot.canvas, kCardInside,
                           {{"CLOCK-IN CARD AWARDED", kCanvasCentreX, 388, TextSize::Normal,
                             screen_ink::cardLettering, true, true},
                            {"Continue is now unlocked.", kCanvasCentreX, 418, TextSize::Small,
                             screen_ink::cardLettering, true, true}},
                           screen_ink::brass));
}

TEST(VictoryNotice, WithoutACardTheGlassStaysEmptyAndSaysSo) {
    for (Difficulty d : {Difficulty::easy, Difficulty::medium, Difficulty::hard}) {
        CanvasApp shot({false, true, true});
        shot.app.difficulty = d;
        shot.app.cardAwarded = false;
        shot.show(GameScreen::victory);
        EXPECT_TRUE(showsText(shot.canvas, kCardBand,
                              {"No clock-in card this time.", kCanvasCentreX, 388, TextSize::Normal,
                               screen_ink::noCard, true, true},
                              screen_ink::greenScreen))
            << static_cast<int>(d);
    }
}

TEST(VictoryNotice, OnVornNoCardAndTheCompanySaysWhy) {
    CanvasApp shot({false, true, true});
    shot.app.difficulty = Difficulty::vorn;
    shot.app.cardAwarded = false;
    shot.show(GameScreen::victory);
    EXPECT_TRUE(showsText(shot.canvas, kCardBand,
                          {"No card. The Vorn Co. never rewards Vorn.", kCanvasCentreX, 388, TextSize::Normal,
                           screen_ink::noCard, true, true},
                          screen_ink::greenScreen));
}

// ---- no textures at all ----

TEST(FlatTerminal, WithoutTexturesRoomCasingAndGlassAreFlatAndThereAreNoBolts) {
    CanvasApp flat({false, true, true});
    flat.show(GameScreen::title);
    EXPECT_EQ(flat.pixel(60, 300), screen_ink::flatWall);
    EXPECT_EQ(flat.pixel(1300, 700), screen_ink::flatWall);
    EXPECT_EQ(flat.pixel(kCanvasCentreX, 760), screen_ink::flatWall);   // no hazard strip
    // No rail, so no bolts: not even their tops above the monitor.
    for (int x = 30; x < 1366; x += 90) {
        ASSERT_EQ(flat.pixel(x, 17), screen_ink::flatWall) << x;
    }
    EXPECT_EQ(flat.pixel(184, 300), screen_ink::casingBeige);
    EXPECT_EQ(flat.pixel(600, 745), screen_ink::casingBeige);
    EXPECT_EQ(flat.pixel(400, 200), screen_ink::greenScreen);
    // The flat glass is rounded: its corner shows the recess.
    EXPECT_TRUE(shows(flat.canvas, 248, 79, screen_ink::glassRecess));
    EXPECT_TRUE(shows(flat.canvas, 300, 79, screen_ink::greenScreen));
}

TEST(FlatTerminal, FlatFiredGlassIsTheRedScreenColour) {
    CanvasApp flat({false, true, true});
    flat.show(GameScreen::fired);
    EXPECT_EQ(flat.pixel(400, 200), screen_ink::redScreen);
    EXPECT_EQ(flat.pixel(184, 300), screen_ink::casingBeige);
    EXPECT_EQ(flat.pixel(60, 300), screen_ink::flatWall);
}

}  // namespace
}  // namespace vorn::test
