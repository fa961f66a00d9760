// Whole frames from Application::render on a software canvas: which screens
// stand in the room behind the glass, the splash and the shift cards, and the
// title terminal, probed at points taken from the layout with the glass
// overlay accounted for.

#include "gfx/screens.h"
#include "gfx/terminal.h"
#include "support/canvas_app.h"
#include "support/play_area.h"
#include "support/screen_palette.h"

#include <gtest/gtest.h>

#include <string>

namespace vorn::test {
namespace {

// A point of the glass that no overlay band touches: past the side and top
// shading, off the scan lines and below the glare.
constexpr int kClearX = 400;
constexpr int kClearY = 200;

TEST(RenderDispatch, TheIntroIsPlainBlack) {
    CanvasApp shot;
    shot.show(GameScreen::intro);
    for (const auto& p :
         {std::pair{0, 0}, {kCanvasCentreX, 100}, {kCanvasCentreX, kCanvasCentreY}, {1365, 767}}) {
        EXPECT_EQ(shot.pixel(p.first, p.second), screen_ink::black) << p.first << "," << p.second;
    }
}

TEST(RenderDispatch, SplashAndShiftCardsHaveNoRoomMonitorOrGlass) {
    CanvasApp shot;
    shot.app.shiftCardPhase = 0;
    shot.show(GameScreen::shiftCard, 1.0);
    // The glare would lift this row off black; the room would fill the corner.
    EXPECT_EQ(shot.pixel(kCanvasCentreX, 100), screen_ink::black);
    EXPECT_EQ(shot.pixel(30, 20), screen_ink::black);
    EXPECT_EQ(shot.pixel(184, 300), screen_ink::black);
    shot.show(GameScreen::splash, 1.0);
    EXPECT_EQ(shot.pixel(kCanvasCentreX, 100), screen_ink::black);
    EXPECT_EQ(shot.pixel(30, 20), screen_ink::black);
}

TEST(RenderDispatch, TerminalScreensAreCoveredByTheGlass) {
    CanvasApp flat({false, true, true});
    for (GameScreen screen : {GameScreen::title, GameScreen::station, GameScreen::victory}) {
        flat.show(screen);
        // A scan line across the flat green glass.
        EXPECT_TRUE(shows(flat.canvas, kClearX, 300, screen_ink::greenScreen))
            << static_cast<int>(screen) << std::hex << " " << flat.pixel(kClearX, 300);
        EXPECT_NE(flat.pixel(kClearX, 300), screen_ink::greenScreen);
        EXPECT_EQ(flat.pixel(kClearX, kClearY), screen_ink::greenScreen);
    }
}

TEST(RenderDispatch, BoltsShowThroughTheRoomsDarkening) {
    CanvasApp shot;
    shot.show(GameScreen::title);
    // Bolts clear of the monitor, which stands in front of the rail.
    for (int x : {30, 120, 1200, 1290}) {
        EXPECT_TRUE(near(opaque(shot.pixel(x, 20)), roomLens().through(screen_ink::bolt, x, 20), 3))
            << x << std::hex << " " << shot.pixel(x, 20);
    }
}

// ---- shift cards, as the application picks them ----

::testing::AssertionResult cardShows(const CanvasApp& shot, const char* heading, Color headingInk,
                                     const char* subtitle, Color subtitleInk) {
    return showsTexts(shot.canvas, {0, 0, kCanvasWidth, kCanvasHeight},
                      {{heading, kCanvasCentreX, 364, TextSize::Giant, headingInk, true, true},
                       {subtitle, kCanvasCentreX, 432, TextSize::Normal, subtitleInk, true, true}},
                      screen_ink::black, Seen::direct);
}

TEST(ShiftCardScreen, ShowsTheCardOfTheRunsPhase) {
    CanvasApp shot;
    shot.app.shiftCardPhase = 0;
    shot.show(GameScreen::shiftCard, 1.0);
    EXPECT_TRUE(cardShows(shot, "PROBATION", screen_ink::gold, "Report to your station.", screen_ink::brass));
    shot.app.shiftCardPhase = 1;
    shot.show(GameScreen::shiftCard, 1.0);
    EXPECT_TRUE(cardShows(shot, "SHIFT STARTS", screen_ink::gold, "Probation complete. The real work begins.",
                          screen_ink::brass));
    shot.app.shiftCardPhase = 2;
    shot.show(GameScreen::shiftCard, 1.0);
    EXPECT_TRUE(cardShows(shot, "OVERTIME", screen_ink::alarmRed, "Clock's against you now. No mercy.",
                          screen_ink::brass));
}

TEST(ShiftCardScreen, FadesWithTheTimeOnTheScreen) {
    CanvasApp shot;
    shot.app.shiftCardPhase = 1;
    shot.show(GameScreen::shiftCard, 0.2);   // half way in
    EXPECT_TRUE(cardShows(shot, "SHIFT STARTS", faded(screen_ink::gold, 0.5),
                          "Probation complete. The real work begins.", faded(screen_ink::brass, 0.5)));
    shot.show(GameScreen::shiftCard, 2.9);   // three quarters of the way out: a quarter left
    EXPECT_TRUE(cardShows(shot, "SHIFT STARTS", faded(screen_ink::gold, 0.25),
                          "Probation complete. The real work begins.", faded(screen_ink::brass, 0.25)));
}

// ---- splash ----

class Splash : public ::testing::Test {
protected:
    // A plain white logo of a known size in place of the shipped one.
    void useWhiteLogo(int w, int h) {
        SDL_Texture* logo = SDL_CreateTexture(shot.app.graphics.renderer, SDL_PIXELFORMAT_RGBA32,
                                              SDL_TEXTUREACCESS_STATIC, w, h);
        ASSERT_NE(logo, nullptr);
        std::vector<Uint32> white(static_cast<std::size_t>(w) * h, 0xFFFFFFFFu);
        SDL_UpdateTexture(logo, nullptr, white.data(), w * 4);
        SDL_SetTextureBlendMode(logo, SDL_BLENDMODE_BLEND);
        shot.app.studioLogo = logo;
        shot.app.studioLogoW = w;
        shot.app.studioLogoH = h;
    }
    void revealAt(double revealAt, double now) {
        shot.app.splashRevealed = true;
        shot.app.splashRevealAt = revealAt;
        shot.show(GameScreen::splash, now);
    }

    CanvasApp shot{{true, true, false}};
};

TEST_F(Splash, StaysBlackUntilRevealed) {
    useWhiteLogo(512, 100);
    shot.app.splashRevealed = false;
    shot.show(GameScreen::splash, 1.4);
    EXPECT_EQ(shot.pixel(kCanvasCentreX, kCanvasCentreY), screen_ink::black);
}

TEST_F(Splash, LogoIsAlways956PixelsWideAroundTheCentre) {
    useWhiteLogo(512, 100);
    revealAt(1.5, 2.5);
    EXPECT_EQ(shot.pixel(204, kCanvasCentreY), screen_ink::black);
    EXPECT_EQ(shot.pixel(205, kCanvasCentreY), screen_ink::white);
    EXPECT_EQ(shot.pixel(1160, kCanvasCentreY), screen_ink::white);
    EXPECT_EQ(shot.pixel(1161, kCanvasCentreY), screen_ink::black);
    // 956 columns about x 683 run from 205 to 1160. Height 100 scaled by
    // 956 / 512 is 186 rows, from 384 - 93 = 291 to 476.
    EXPECT_EQ(shot.pixel(kCanvasCentreX, 290), screen_ink::black);
    EXPECT_EQ(shot.pixel(kCanvasCentreX, 291), screen_ink::white);
    EXPECT_EQ(shot.pixel(kCanvasCentreX, 476), screen_ink::white);
    EXPECT_EQ(shot.pixel(kCanvasCentreX, 477), screen_ink::black);
}

TEST_F(Splash, LogoFadesInOverFourTenthsOfASecondFromTheReveal) {
    useWhiteLogo(512, 100);
    revealAt(1.5, 1.5);
    EXPECT_EQ(shot.pixel(kCanvasCentreX, kCanvasCentreY), screen_ink::black);
    revealAt(1.5, 1.7);   // half way: alpha 127
    const Color middle = shot.pixel(kCanvasCentreX, kCanvasCentreY);
    EXPECT_TRUE(near(opaque(middle), grey(127), 2)) << std::hex << middle;
    revealAt(1.5, 1.9);
    EXPECT_TRUE(near(opaque(shot.pixel(kCanvasCentreX, kCanvasCentreY)), screen_ink::white, 1));
}

TEST_F(Splash, ShippedLogoStaysWithinItsWidth) {
    shot.app.studioLogo = shot.app.graphics.loadTexture(VORN_GAME_DIR "/assets/images/studio_logo.png",
                                                        &shot.app.studioLogoW, &shot.app.studioLogoH);
    ASSERT_NE(shot.app.studioLogo, nullptr);
    revealAt(0.0, 1.0);
    int lit = 0;
    for (int y = 0; y < 768; ++y) {
        ASSERT_EQ(shot.pixel(204, y), screen_ink::black) << y;
        ASSERT_EQ(shot.pixel(1161, y), screen_ink::black) << y;
        for (int x = 205; x < 1161; x += 7) {
            lit += shot.pixel(x, y) != screen_ink::black ? 1 : 0;
        }
    }
    EXPECT_GT(lit, 1000);
}

TEST_F(Splash, WithoutALogoTheStudioIsNamedAtFullStrengthAtOnce) {
    revealAt(1.5, 1.5);   // no fade: full colour at the reveal itself
    // Nothing but the name on the whole black canvas.
    EXPECT_TRUE(showsText(shot.canvas, {0, 0, kCanvasWidth, kCanvasHeight},
                          {"ZEMBRILUX", kCanvasCentreX, kCanvasCentreY, TextSize::Large, screen_ink::splashName,
                           true, true},
                          screen_ink::black, Seen::direct));
}

// ---- title terminal ----

// The title drawn without textures, so the glass behind its lines is the flat
// green screen colour.
class Title : public ::testing::Test {
protected:
    void show(int cards, int highlighted) {
        shot.app.save.clockInCards = cards;
        shot.app.menuIndex = highlighted;
        shot.show(GameScreen::title);
    }
    // Inside the outline of menu row i: only the label on the row's colour.
    static Rect insideRow(int i) { return {536, 353 + 46 * i, 295, 33}; }
    // The label of row i as it should read, on its row.
    ::testing::AssertionResult rowReads(int i, const char* label, Color ink, bool lit) const {
        return showsText(shot.canvas, insideRow(i),
                         {label, kCanvasCentreX, 369 + 46 * i, TextSize::Normal, ink, true, true},
                         lit ? screen_ink::menuHighlight : screen_ink::greenScreen);
    }

    CanvasApp shot{{false, true, true}};
};

TEST_F(Title, HeaderBandAndItsGreenLine) {
    show(0, 0);
    EXPECT_TRUE(shows(shot.canvas, 1000, 152, screen_ink::darkPanel));
    EXPECT_TRUE(shows(shot.canvas, kCanvasCentreX, 94, screen_ink::brass));
    // The whole band inside its outline, clear of the rounded corners.
    EXPECT_TRUE(showsText(shot.canvas, {272, 95, 822, 75},
                          {"// EMPLOYMENT TERMINAL v8.31 //", kCanvasCentreX, 132, TextSize::Normal,
                           screen_ink::terminalGreen, true, true},
                          screen_ink::darkPanel));
}

TEST_F(Title, LogoLinesReadTheVornCoInGold) {
    show(0, 0);
    // Everything between the header band and the first menu row.
    EXPECT_TRUE(showsTexts(shot.canvas, {262, 172, 842, 176},
                           {{"THE", kCanvasCentreX, 198, TextSize::Large, screen_ink::gold, true, true},
                            {"VORN", kCanvasCentreX, 253, TextSize::Giant, screen_ink::gold, true, true},
                            {"CO.", kCanvasCentreX, 303, TextSize::Huge, screen_ink::gold, true, true}},
                           screen_ink::greenScreen));
}

TEST_F(Title, HighlightedRowIsFilledAndOutlinedInTerminalGreen) {
    show(0, 0);
    EXPECT_TRUE(shows(shot.canvas, 545, 356, screen_ink::menuHighlight));
    EXPECT_TRUE(shows(shot.canvas, 600, 350, screen_ink::terminalGreen));
    // Row 2 is only outlined, in dim green, over the glass.
    EXPECT_FALSE(shows(shot.canvas, 545, 448, screen_ink::menuHighlight));
    EXPECT_TRUE(shows(shot.canvas, 600, 442, screen_ink::dimGreen));
}

TEST_F(Title, HighlightFollowsTheMenuIndex) {
    show(0, 2);
    EXPECT_TRUE(shows(shot.canvas, 545, 448, screen_ink::menuHighlight));
    EXPECT_TRUE(shows(shot.canvas, 600, 442, screen_ink::terminalGreen));
    EXPECT_FALSE(shows(shot.canvas, 545, 356, screen_ink::menuHighlight));
    EXPECT_TRUE(shows(shot.canvas, 600, 350, screen_ink::dimGreen));
    EXPECT_TRUE(rowReads(2, "NEW: HARD", screen_ink::terminalGreen, true));
    EXPECT_TRUE(rowReads(0, "NEW: EASY", screen_ink::terminalGreen, false));
}

TEST_F(Title, WithoutACardFiveRowsReadTheDifficultiesAndQuitWithOnlyVornInRed) {
    show(0, 0);
    EXPECT_TRUE(rowReads(0, "NEW: EASY", screen_ink::terminalGreen, true));
    EXPECT_TRUE(rowReads(1, "NEW: MEDIUM", screen_ink::terminalGreen, false));
    EXPECT_TRUE(rowReads(2, "NEW: HARD", screen_ink::terminalGreen, false));
    EXPECT_TRUE(rowReads(3, "NEW: VORN", screen_ink::alarmRed, false));
    EXPECT_TRUE(rowReads(4, "QUIT", screen_ink::terminalGreen, false));
    // No sixth row: the glass below QUIT is empty down to the footer.
    EXPECT_TRUE(showsOnly(shot.canvas, {300, 582, 766, 36}, screen_ink::greenScreen));
}

TEST_F(Title, ACardPutsContinueFirstAndMovesTheVornLabelDown) {
    show(1, 0);
    EXPECT_TRUE(rowReads(0, "> CONTINUE", screen_ink::terminalGreen, true));
    EXPECT_TRUE(rowReads(1, "NEW: EASY", screen_ink::terminalGreen, false));
    EXPECT_TRUE(rowReads(2, "NEW: MEDIUM", screen_ink::terminalGreen, false));
    EXPECT_TRUE(rowReads(3, "NEW: HARD", screen_ink::terminalGreen, false));
    EXPECT_TRUE(rowReads(4, "NEW: VORN", screen_ink::alarmRed, false));
    EXPECT_TRUE(rowReads(5, "QUIT", screen_ink::terminalGreen, false));
    // Six rows: the last one, QUIT, is outlined at y 580.
    EXPECT_TRUE(shows(shot.canvas, 600, 580, screen_ink::dimGreen));
}

// The footer line and the build, the only things on the glass below the menu.
::testing::AssertionResult footerReads(CanvasApp& shot, const char* counts) {
    const int left = 1103 - shot.app.graphics.textWidth("v0.01", TextSize::Small);
    return showsTexts(shot.canvas, {262, 630, 842, 46},
                      {{counts, kCanvasCentreX, 660, TextSize::Small, screen_ink::titleFooter, true, true},
                       {"v0.01", left, 664, TextSize::Small, screen_ink::amber, false, false}},
                      screen_ink::greenScreen);
}

TEST_F(Title, FooterCountsFiredAndCards) {
    shot.app.save.timesFired = 12;
    show(3, 0);
    EXPECT_TRUE(footerReads(shot, "TIMES FIRED: 12    CLOCK-IN CARDS: 3"));
}

TEST_F(Title, FooterTellsCountsOfEqualWidthApart) {
    shot.app.save.timesFired = 7;
    show(0, 0);
    EXPECT_TRUE(footerReads(shot, "TIMES FIRED: 7    CLOCK-IN CARDS: 0"));
    EXPECT_FALSE(footerReads(shot, "TIMES FIRED: 8    CLOCK-IN CARDS: 0"));
    EXPECT_FALSE(footerReads(shot, "TIMES FIRED: 7    CLOCK-IN CARDS: 1"));
}

TEST_F(Title, FooterCountsALongCareer) {
    shot.app.save.timesFired = 1234567L;
    show(12, 0);
    EXPECT_TRUE(footerReads(shot, "TIMES FIRED: 1234567    CLOCK-IN CARDS: 12"));
}

TEST_F(Title, BuildEndsAtX1103InAmber) {
    show(0, 0);
    const int width = shot.app.graphics.textWidth("v0.01", TextSize::Small);
    ASSERT_GT(width, 20);
    // The corner right of the footer line holds only the build.
    EXPECT_TRUE(showsText(shot.canvas, {1000, 640, 104, 36},
                          {"v0.01", 1103 - width, 664, TextSize::Small, screen_ink::amber, false, false},
                          screen_ink::greenScreen));
}

}  // namespace
}  // namespace vorn::test
