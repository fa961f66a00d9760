// Whole frames from Application::render on a software canvas: which screens
// stand in the room behind the glass, the splash and the shift cards, and the
// title terminal, probed at points taken from the layout with the glass
// overlay accounted for.

#include "gfx/screens.h"
#include "gfx/terminal.h"
#include "support/canvas_app.h"

#include <gtest/gtest.h>

namespace vorn::test {
namespace {

// A point of the glass that no overlay band touches: past the side and top
// shading, off the scan lines and below the glare.
constexpr int kClearX = 400;
constexpr int kClearY = 200;

TEST(RenderDispatch, TheIntroIsPlainBlack) {
    CanvasApp shot;
    shot.show(GameScreen::intro);
    for (const auto& p : {std::pair{0, 0}, {683, 100}, {683, 384}, {1365, 767}}) {
        EXPECT_EQ(shot.pixel(p.first, p.second), palette::black) << p.first << "," << p.second;
    }
}

TEST(RenderDispatch, SplashAndShiftCardsHaveNoRoomMonitorOrGlass) {
    CanvasApp shot;
    shot.app.shiftCardPhase = 0;
    shot.show(GameScreen::shiftCard, 1.0);
    // The glare would lift this row off black; the room would fill the corner.
    EXPECT_EQ(shot.pixel(683, 100), palette::black);
    EXPECT_EQ(shot.pixel(30, 20), palette::black);
    EXPECT_EQ(shot.pixel(184, 300), palette::black);
    shot.show(GameScreen::splash, 1.0);
    EXPECT_EQ(shot.pixel(683, 100), palette::black);
    EXPECT_EQ(shot.pixel(30, 20), palette::black);
}

TEST(RenderDispatch, TerminalScreensAreCoveredByTheGlass) {
    CanvasApp flat({false, true, true});
    for (GameScreen screen : {GameScreen::title, GameScreen::station, GameScreen::victory}) {
        flat.show(screen);
        // A scan line across the flat green glass.
        EXPECT_TRUE(shows(flat.canvas, kClearX, 300, palette::greenScreen))
            << static_cast<int>(screen) << std::hex << " " << flat.pixel(kClearX, 300);
        EXPECT_NE(flat.pixel(kClearX, 300), palette::greenScreen);
        EXPECT_EQ(flat.pixel(kClearX, kClearY), palette::greenScreen);
    }
}

TEST(RenderDispatch, BoltsShowThroughTheRoomsDarkening) {
    CanvasApp shot;
    shot.show(GameScreen::title);
    // Bolts clear of the monitor, which stands in front of the rail.
    for (int x : {30, 120, 1200, 1290}) {
        EXPECT_TRUE(near(opaque(shot.pixel(x, 20)), roomLens().through(kBoltColor, x, 20), 3))
            << x << std::hex << " " << shot.pixel(x, 20);
    }
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
    EXPECT_EQ(shot.pixel(683, 384), palette::black);
}

TEST_F(Splash, LogoIsAlways956PixelsWideAroundTheCentre) {
    useWhiteLogo(512, 100);
    revealAt(1.5, 2.5);
    const Color white = rgb(255, 255, 255);
    EXPECT_EQ(shot.pixel(204, 384), palette::black);
    EXPECT_EQ(shot.pixel(205, 384), white);
    EXPECT_EQ(shot.pixel(1160, 384), white);
    EXPECT_EQ(shot.pixel(1161, 384), palette::black);
    // Height 100 scaled by 956 / 512 is 186 rows, from 384 - 93.
    EXPECT_EQ(shot.pixel(683, 290), palette::black);
    EXPECT_EQ(shot.pixel(683, 291), white);
    EXPECT_EQ(shot.pixel(683, 476), white);
    EXPECT_EQ(shot.pixel(683, 477), palette::black);
}

TEST_F(Splash, LogoFadesInOverFourTenthsOfASecondFromTheReveal) {
    useWhiteLogo(512, 100);
    revealAt(1.5, 1.5);
    EXPECT_EQ(shot.pixel(683, 384), palette::black);
    revealAt(1.5, 1.7);   // half way: alpha 127
    EXPECT_TRUE(near(opaque(shot.pixel(683, 384)), rgb(127, 127, 127), 2)) << std::hex << shot.pixel(683, 384);
    revealAt(1.5, 1.9);
    EXPECT_TRUE(near(opaque(shot.pixel(683, 384)), rgb(255, 255, 255), 1));
}

TEST_F(Splash, ShippedLogoStaysWithinItsWidth) {
    shot.app.studioLogo = shot.app.graphics.loadTexture(VORN_GAME_DIR "/assets/images/studio_logo.png",
                                                        &shot.app.studioLogoW, &shot.app.studioLogoH);
    ASSERT_NE(shot.app.studioLogo, nullptr);
    revealAt(0.0, 1.0);
    int lit = 0;
    for (int y = 0; y < 768; ++y) {
        ASSERT_EQ(shot.pixel(204, y), palette::black) << y;
        ASSERT_EQ(shot.pixel(1161, y), palette::black) << y;
        for (int x = 205; x < 1161; x += 7) {
            lit += shot.pixel(x, y) != palette::black ? 1 : 0;
        }
    }
    EXPECT_GT(lit, 1000);
}

TEST_F(Splash, WithoutALogoTheStudioIsNamedAtFullStrengthAtOnce) {
    revealAt(1.5, 1.5);   // no fade: full colour at the reveal itself
    const Rect name{400, 350, 566, 70};
    EXPECT_GT(countInk(shot.canvas, name, palette::casingBeige, Seen::direct), 100);
    EXPECT_TRUE(showsInkBox(shot.canvas, name,
                          {"ZEMBRILUX", 683, 384, TextSize::Large, palette::casingBeige, true, true},
                          Seen::direct));
}

// ---- title terminal ----

class Title : public ::testing::Test {
protected:
    void show(int cards, int highlighted) {
        shot.app.save.clockInCards = cards;
        shot.app.menuIndex = highlighted;
        shot.show(GameScreen::title);
    }
    // Where the label of menu row i sits.
    static Rect label(int i) { return {560, 356 + 46 * i, 246, 28}; }

    CanvasApp shot;
};

TEST_F(Title, HeaderBandAndItsGreenLine) {
    show(0, 0);
    EXPECT_TRUE(shows(shot.canvas, 1000, 152, palette::darkPanel));
    EXPECT_TRUE(shows(shot.canvas, 683, 94, palette::brass));
    EXPECT_TRUE(showsInkBox(shot.canvas, {300, 116, 766, 32},
                          {"// EMPLOYMENT TERMINAL v8.31 //", 683, 132, TextSize::Normal,
                           palette::terminalGreen, true, true}));
}

TEST_F(Title, LogoLinesAreGold) {
    show(0, 0);
    EXPECT_GT(countInk(shot.canvas, {620, 180, 126, 36}, palette::gold), 100);    // THE
    EXPECT_GT(countInk(shot.canvas, {560, 200, 246, 110}, palette::gold), 2000);  // VORN
    EXPECT_GT(countInk(shot.canvas, {630, 280, 106, 48}, palette::gold), 300);    // CO.
}

TEST_F(Title, HighlightedRowIsFilledAndOutlinedInTerminalGreen) {
    show(0, 0);
    EXPECT_TRUE(shows(shot.canvas, 545, 356, kMenuHighlight));
    EXPECT_TRUE(shows(shot.canvas, 600, 350, palette::terminalGreen));
    // Row 2 is only outlined, in dim green, over the glass.
    EXPECT_FALSE(shows(shot.canvas, 545, 448, kMenuHighlight));
    EXPECT_TRUE(shows(shot.canvas, 600, 442, palette::dimGreen));
}

TEST_F(Title, HighlightFollowsTheMenuIndex) {
    show(0, 2);
    EXPECT_TRUE(shows(shot.canvas, 545, 448, kMenuHighlight));
    EXPECT_TRUE(shows(shot.canvas, 600, 442, palette::terminalGreen));
    EXPECT_FALSE(shows(shot.canvas, 545, 356, kMenuHighlight));
    EXPECT_TRUE(shows(shot.canvas, 600, 350, palette::dimGreen));
}

TEST_F(Title, OnlyTheVornLabelIsRed) {
    show(0, 0);
    for (int i = 0; i < 5; ++i) {
        const bool vorn = i == 3;
        EXPECT_EQ(countInk(shot.canvas, label(i), palette::alarmRed) > 20, vorn) << i;
        EXPECT_EQ(countInk(shot.canvas, label(i), palette::terminalGreen) > 20, !vorn) << i;
    }
}

TEST_F(Title, ACardPutsContinueFirstAndMovesTheVornLabelDown) {
    show(1, 0);
    EXPECT_TRUE(showsInkBox(shot.canvas, label(0),
                          {"> CONTINUE", 683, 369, TextSize::Normal, palette::terminalGreen, true, true}));
    EXPECT_EQ(countInk(shot.canvas, label(3), palette::alarmRed), 0);
    EXPECT_GT(countInk(shot.canvas, label(4), palette::alarmRed), 20);
    // Six rows: the last one, QUIT, is outlined at y 580.
    EXPECT_TRUE(shows(shot.canvas, 600, 580, palette::dimGreen));
}

TEST_F(Title, FooterCountsFiredAndCards) {
    shot.app.save.timesFired = 12;
    show(3, 0);
    char expected[96];
    Graphics::formatInto(expected, sizeof expected, "TIMES FIRED: %ld    CLOCK-IN CARDS: %d", 12L, 3);
    EXPECT_TRUE(showsInkBox(shot.canvas, {300, 646, 766, 28},
                          {expected, 683, 660, TextSize::Small, kTitleFooterInk, true, true}));
}

TEST_F(Title, BuildEndsAtX1103InAmber) {
    show(0, 0);
    const Rect corner{1000, 658, 119, 30};
    const int left = 1103 - shot.app.graphics.textWidth("v0.01", TextSize::Small);
    EXPECT_TRUE(showsInkBox(shot.canvas, corner, {"v0.01", left, 664, TextSize::Small, palette::amber,
                                                false, false}));
    EXPECT_LE(inkSpan(shot.canvas, corner, palette::amber).right, 1103);
}

}  // namespace
}  // namespace vorn::test
