// The drawing kit's primitives, read back pixel by pixel from a software canvas.

#include "support/play_area.h"
#include "support/screen_palette.h"
#include "support/software_canvas.h"
#include "support/test_platform.h"

#include <SDL_ttf.h>
#include <gtest/gtest.h>

#include <cmath>

namespace vorn::test {
namespace {

constexpr Color kBackground = rgb(10, 20, 30);
constexpr Color kInk = rgb(200, 100, 50);

class GraphicsPixels : public ::testing::Test {
protected:
    SoftwareCanvas canvas;
    Graphics& g = canvas.graphics;

    void SetUp() override { g.clear(kBackground); }
    bool inked(int x, int y) const { return canvas.pixel(x, y) == kInk; }
};

TEST_F(GraphicsPixels, ClearFillsTheCanvas) {
    g.clear(kInk);
    EXPECT_EQ(canvas.pixel(0, 0), kInk);
    EXPECT_EQ(canvas.pixel(1365, 767), kInk);
}

TEST_F(GraphicsPixels, ColoursAreRedInTheLowestByte) {
    g.rect({5, 5, 1, 1}, 0xFF141414u, true);
    EXPECT_EQ(canvas.pixel(5, 5), rgb(20, 20, 20));
    g.rect({6, 5, 1, 1}, 0xFF0000FFu, true);
    EXPECT_EQ(canvas.pixel(6, 5), rgb(255, 0, 0));
}

TEST_F(GraphicsPixels, FilledAndOutlinedRectangles) {
    g.rect({100, 100, 10, 5}, kInk, true);
    EXPECT_TRUE(inked(100, 100));
    EXPECT_TRUE(inked(109, 104));
    EXPECT_FALSE(inked(110, 104));
    EXPECT_FALSE(inked(109, 105));
    g.rect({200, 200, 10, 5}, kInk, false);
    EXPECT_TRUE(inked(209, 204));
    EXPECT_FALSE(inked(205, 202));
}

TEST_F(GraphicsPixels, RoundRectRadiusIsClampedToHalfTheShorterSide) {
    // 40 x 20 with radius 50: the corners are rounded with radius 10.
    g.roundRect({100, 100, 40, 20}, 50, kInk, true);
    EXPECT_TRUE(inked(120, 100));   // top edge between the corners
    EXPECT_TRUE(inked(100, 110));   // left edge at mid height
    EXPECT_TRUE(inked(103, 103));   // inside the quarter disc: 7² + 7² <= 10²
    EXPECT_FALSE(inked(100, 100));  // the corner itself is cut away
    EXPECT_FALSE(inked(101, 101));  // 9² + 9² > 10²
}

TEST_F(GraphicsPixels, FilledRoundRectCornersReachRightAndBottomEdgePlusOne) {
    g.roundRect({100, 100, 40, 20}, 4, kInk, true);
    EXPECT_TRUE(inked(140, 116));   // x + w, inside the lower right quarter disc
    EXPECT_TRUE(inked(136, 120));   // y + h
    EXPECT_FALSE(inked(140, 110));  // the straight right side stops at x + w - 1
}

TEST_F(GraphicsPixels, RoundRectOutlineIsFourStraightEdgesOnePixelOutsideRightAndBottom) {
    g.roundRect({100, 100, 50, 30}, 5, kInk, false);
    EXPECT_TRUE(inked(125, 100));   // top
    EXPECT_TRUE(inked(125, 130));   // bottom at y + h
    EXPECT_FALSE(inked(125, 129));
    EXPECT_TRUE(inked(100, 115));   // left
    EXPECT_TRUE(inked(150, 115));   // right at x + w
    EXPECT_FALSE(inked(149, 115));
    EXPECT_FALSE(inked(100, 100));  // no corner arcs
    EXPECT_FALSE(inked(101, 101));
    EXPECT_FALSE(inked(125, 115));  // not filled
}

TEST_F(GraphicsPixels, RoundRectWithZeroRadiusIsAPlainRect) {
    g.roundRect({100, 100, 50, 30}, 0, kInk, false);
    EXPECT_TRUE(inked(100, 100));
    EXPECT_TRUE(inked(149, 129));
    EXPECT_FALSE(inked(150, 115));
}

TEST_F(GraphicsPixels, LineOfThicknessTwoDrawsThreeParallelLines) {
    g.line(100, 200, 200, 200, kInk, 2);
    EXPECT_TRUE(inked(150, 199));
    EXPECT_TRUE(inked(150, 200));
    EXPECT_TRUE(inked(150, 201));
    EXPECT_FALSE(inked(150, 198));
    EXPECT_FALSE(inked(150, 202));
}

TEST_F(GraphicsPixels, LineOfOddThicknessDrawsThatManyLines) {
    g.line(100, 300, 200, 300, kInk, 3);
    EXPECT_TRUE(inked(150, 299));
    EXPECT_TRUE(inked(150, 301));
    EXPECT_FALSE(inked(150, 298));
    EXPECT_FALSE(inked(150, 302));
}

TEST_F(GraphicsPixels, ThinLineIsOnePixelWide) {
    g.line(100, 400, 200, 400, kInk, 1);
    EXPECT_TRUE(inked(100, 400));
    EXPECT_TRUE(inked(200, 400));
    EXPECT_FALSE(inked(150, 399));
    EXPECT_FALSE(inked(150, 401));
}

TEST_F(GraphicsPixels, ThickLineWithIdenticalEndsIsOneThinLine) {
    // With no direction there is no normal to offset along: a thick line of
    // zero length falls back to one plain line, exactly what a thin one
    // draws (SDL's software renderer shows nothing for a zero-length line).
    // Without that guard the normal would be NaN, and the sanitized build
    // stops on the NaN-to-int conversion.
    g.line(300, 300, 300, 300, kInk, 6);
    SoftwareCanvas reference;
    reference.graphics.clear(kBackground);
    reference.graphics.line(300, 300, 300, 300, kInk, 1);
    for (int y = 290; y <= 310; ++y) {
        for (int x = 290; x <= 310; ++x) {
            ASSERT_EQ(canvas.pixel(x, y), reference.pixel(x, y)) << x << "," << y;
        }
    }
}

TEST_F(GraphicsPixels, FilledCircleSpansEveryRow) {
    g.circle(500, 400, 20, kInk, true);
    EXPECT_TRUE(inked(480, 400));
    EXPECT_TRUE(inked(520, 400));
    EXPECT_TRUE(inked(494, 381));   // dy = -19: half-width trunc(sqrt(39)) = 6
    EXPECT_FALSE(inked(493, 381));
    EXPECT_TRUE(inked(506, 419));
    EXPECT_FALSE(inked(521, 400));
    EXPECT_TRUE(inked(486, 386));   // dy = -14: half-width trunc(sqrt(204)) = 14
    EXPECT_FALSE(inked(485, 386));
}

TEST_F(GraphicsPixels, CircleOutlineLeavesTheInsideEmpty) {
    g.circle(500, 400, 20, kInk, false);
    EXPECT_TRUE(inked(520, 400));   // the first and last of the 91 points
    EXPECT_TRUE(inked(500, 419));   // sin never quite reaches 1 at a sample
    EXPECT_FALSE(inked(500, 420));
    EXPECT_FALSE(inked(500, 400));
    EXPECT_FALSE(inked(510, 400));
}

TEST_F(GraphicsPixels, ArcTurnsClockwiseOnScreenAsABandOfDots) {
    const double quarter = std::acos(-1.0) / 2.0;
    g.arc(600, 400, 50, 0.0, quarter, 3, kInk);
    EXPECT_TRUE(inked(650, 400));   // angle 0
    EXPECT_TRUE(inked(649, 400));   // band: radius - 1
    EXPECT_TRUE(inked(651, 400));   // band: radius + 1
    EXPECT_FALSE(inked(652, 400));
    EXPECT_TRUE(inked(600, 450));   // a quarter turn points down
    EXPECT_FALSE(inked(600, 350));
    EXPECT_FALSE(inked(550, 400));
}

TEST_F(GraphicsPixels, BlitCenteredIgnoresANullTexture) {
    g.blitCentered(nullptr, kCanvasCentreX, kCanvasCentreY, 100, 100);
    EXPECT_EQ(canvas.pixel(kCanvasCentreX, kCanvasCentreY), kBackground);
}

TEST_F(GraphicsPixels, BlitCenteredCopiesAroundTheCentre) {
    SDL_Texture* tex = SDL_CreateTexture(g.renderer, SDL_PIXELFORMAT_ABGR8888,
                                         SDL_TEXTUREACCESS_STATIC, 2, 2);
    ASSERT_NE(tex, nullptr);
    const Uint32 pixels[4] = {kInk, kInk, kInk, kInk};
    SDL_UpdateTexture(tex, nullptr, pixels, 8);
    g.blitCentered(tex, 700, 300, 10, 6);
    EXPECT_TRUE(inked(695, 297));
    EXPECT_TRUE(inked(704, 302));
    EXPECT_FALSE(inked(694, 300));
    EXPECT_FALSE(inked(705, 300));
    SDL_DestroyTexture(tex);
}

TEST_F(GraphicsPixels, LoadTextureOfAMissingFileIsNull) {
    int w = -1;
    SDL_Texture* tex = g.loadTexture("/no/such/image.png", &w, nullptr);
    EXPECT_EQ(tex, nullptr);
    EXPECT_EQ(w, -1);
}

TEST_F(GraphicsPixels, MonitorOverlayShadesOnlyTheGlass) {
    const Color untouched = grey(100);
    canvas.fill(untouched);
    g.monitorOverlay();
    // Outside the glass nothing changes.
    EXPECT_EQ(canvas.pixel(246, 300), untouched);
    EXPECT_EQ(canvas.pixel(1119, 300), untouched);
    EXPECT_EQ(canvas.pixel(kCanvasCentreX, 77), untouched);
    EXPECT_EQ(canvas.pixel(kCanvasCentreX, 690), untouched);
    // The middle of the glass between scan lines is clear.
    EXPECT_EQ(canvas.pixel(kCanvasCentreX, 301), untouched);
    // A scan line (every third row from 78): black at alpha 46,
    // 100 x (255 - 46) / 255 = 82.
    EXPECT_TRUE(near(canvas.pixel(kCanvasCentreX, 300), grey(82), 1))
        << std::hex << canvas.pixel(kCanvasCentreX, 300);
    // The leftmost and rightmost columns: black at alpha 70, 100 x 185 / 255 = 73.
    EXPECT_TRUE(near(canvas.pixel(247, 302), grey(73), 1)) << std::hex << canvas.pixel(247, 302);
    EXPECT_TRUE(near(canvas.pixel(1118, 302), grey(73), 1));
    // Column 90 from the side is past the shading.
    EXPECT_EQ(canvas.pixel(337, 302), untouched);
    // Row 100: top shading at alpha 48, then the white glare at alpha 10.
    EXPECT_TRUE(near(canvas.pixel(kCanvasCentreX, 100), grey(87), 2))
        << std::hex << canvas.pixel(kCanvasCentreX, 100);
    // The glare stops short of the glass's sides: there only side shading
    // (alpha 40) and top shading (alpha 48) darken the row.
    EXPECT_TRUE(near(canvas.pixel(1080, 100), grey(68), 2)) << std::hex << canvas.pixel(1080, 100);
    // The first row of the glass takes a scan line and both edge shadings.
    EXPECT_TRUE(near(canvas.pixel(kCanvasCentreX, 78), grey(59), 2))
        << std::hex << canvas.pixel(kCanvasCentreX, 78);
}

TEST_F(GraphicsPixels, MonitorOverlayRemovesItsClip) {
    g.monitorOverlay();
    g.rect({0, 0, 4, 4}, kInk, true);
    EXPECT_TRUE(inked(1, 1));
}

// ---- text ----

TEST_F(GraphicsPixels, EmptyTextDrawsNothingAndReturnsZero) {
    canvas.useGameFonts();
    EXPECT_EQ(g.text("", 100, 100, TextSize::Normal, kInk, false, false), 0);
    for (int y = 95; y < 130; ++y) {
        for (int x = 95; x < 130; ++x) {
            ASSERT_EQ(canvas.pixel(x, y), kBackground);
        }
    }
}

TEST_F(GraphicsPixels, TextDrawsAtItsNaturalWidthAndReturnsIt) {
    canvas.useGameFonts();
    const int w = g.text("VORN", 100, 100, TextSize::Large, kInk, false, false);
    EXPECT_GT(w, 0);
    EXPECT_EQ(w, g.textWidth("VORN", TextSize::Large));
    int lit = 0;
    for (int y = 100; y < 140; ++y) {
        for (int x = 100; x < 100 + w; ++x) {
            lit += canvas.pixel(x, y) != kBackground;
        }
    }
    EXPECT_GT(lit, 50);
    for (int y = 95; y < 140; ++y) {
        EXPECT_EQ(canvas.pixel(99, y), kBackground);
        EXPECT_EQ(canvas.pixel(100 + w + 1, y), kBackground);
    }
}

TEST_F(GraphicsPixels, CentredTextStraddlesItsPoint) {
    canvas.useGameFonts();
    const int w = g.text("MMMM", kCanvasCentreX, kCanvasCentreY, TextSize::Normal, kInk, true, true);
    ASSERT_GT(w, 0);
    int left = 1366;
    int right = -1;
    for (int y = 360; y < 410; ++y) {
        for (int x = 600; x < 770; ++x) {
            if (canvas.pixel(x, y) != kBackground) {
                left = std::min(left, x);
                right = std::max(right, x);
            }
        }
    }
    EXPECT_NEAR((left + right) / 2, kCanvasCentreX, 3);
}

TEST(GraphicsText, WidthIsEstimatedWithoutAFont) {
    Graphics g;   // no font paths, TTF not started
    EXPECT_EQ(g.textWidth("0123456789", TextSize::Giant), 480);
    EXPECT_EQ(g.textWidth("0123456789", TextSize::Tiny), 55);
    EXPECT_EQ(g.textWidth("", TextSize::Normal), 0);
    EXPECT_EQ(g.text("anything", 0, 0, TextSize::Normal, kInk, false, false), 0);
}

TEST(GraphicsText, UnknownSizeIsTwentyPointInTheGameFont) {
    EXPECT_EQ(pointSize(static_cast<TextSize>(7)), 20);
    EXPECT_EQ(pointSize(static_cast<TextSize>(-1)), 20);
    EXPECT_FALSE(usesDisplayFont(static_cast<TextSize>(7)));
    Graphics g;
    EXPECT_EQ(g.textWidth("abcd", static_cast<TextSize>(7)), 40);
}

TEST(GraphicsText, UnknownSizeOpensTheGameFontAtTwentyPoints) {
    SoftwareCanvas canvas;
    canvas.useGameFonts();
    Graphics& g = canvas.graphics;
    TTF_Font* odd = g.fontFor(static_cast<TextSize>(7));
    TTF_Font* normal = g.fontFor(TextSize::Normal);
    ASSERT_NE(odd, nullptr);
    ASSERT_NE(normal, nullptr);
    EXPECT_NE(odd, normal);   // its own cache entry
    EXPECT_STREQ(TTF_FontFaceFamilyName(odd), TTF_FontFaceFamilyName(normal));
    EXPECT_EQ(TTF_FontHeight(odd), TTF_FontHeight(normal));
    EXPECT_EQ(g.textWidth("Clock-in", static_cast<TextSize>(7)),
              g.textWidth("Clock-in", TextSize::Normal));
}

TEST(GraphicsText, PointSizesOfTheSixSizes) {
    EXPECT_EQ(pointSize(TextSize::Tiny), 11);
    EXPECT_EQ(pointSize(TextSize::Small), 16);
    EXPECT_EQ(pointSize(TextSize::Normal), 20);
    EXPECT_EQ(pointSize(TextSize::Large), 30);
    EXPECT_EQ(pointSize(TextSize::Huge), 52);
    EXPECT_EQ(pointSize(TextSize::Giant), 96);
    EXPECT_FALSE(usesDisplayFont(TextSize::Normal));
    EXPECT_TRUE(usesDisplayFont(TextSize::Large));
}

TEST(GraphicsText, AFontThatFailsToOpenIsCachedAsNullAndNeverRetried) {
    TTF_Init();
    Graphics g;
    g.gameFontPath = "/no/such/font.ttf";
    EXPECT_EQ(g.fontFor(TextSize::Small), nullptr);
    ASSERT_EQ(g.fontCache.count(TextSize::Small), 1u);
    g.gameFontPath = VORN_GAME_DIR "/assets/fonts/game.ttf";
    EXPECT_EQ(g.fontFor(TextSize::Small), nullptr);
    EXPECT_NE(g.fontFor(TextSize::Tiny), nullptr);
    g.shutdown();
    TTF_Quit();
}

TEST(GraphicsText, FontCacheHashIsFnv1aOverTheKeysFourBytes) {
    // FNV-1a of the bytes 00 00 00 00 and 05 00 00 00.
    EXPECT_EQ(TextSizeHash{}(TextSize::Tiny), 0x4B95F515u);
    EXPECT_EQ(TextSizeHash{}(TextSize::Giant), 0xBAB8B9C0u);
}

TEST(GraphicsText, FormatIntoBehavesLikeSnprintf) {
    char small[8];
    EXPECT_EQ(Graphics::formatInto(small, sizeof small, "STATION %02d", 7), 10);
    EXPECT_STREQ(small, "STATION");
    char wide[32];
    EXPECT_EQ(Graphics::formatInto(wide, sizeof wide, "%06ld", 42L), 6);
    EXPECT_STREQ(wide, "000042");
}

TEST(GraphicsFonts, ShippedFontsAreFoundInTheFontsFolder) {
    Graphics g;
    EXPECT_TRUE(g.loadFonts(VORN_GAME_DIR "/assets/fonts"));
    EXPECT_EQ(g.gameFontPath, std::string(VORN_GAME_DIR "/assets/fonts") + test::kSep + "game.ttf");
    EXPECT_EQ(g.displayFontPath, std::string(VORN_GAME_DIR "/assets/fonts") + test::kSep + "display.ttf");
    EXPECT_EQ(g.fontPath, g.gameFontPath);
}

TEST(GraphicsFonts, MissingFontsFallBackToSystemFonts) {
    Graphics g;
    EXPECT_TRUE(g.loadFonts("/no/such/folder"));
    EXPECT_EQ(g.gameFontPath, "/usr/share/fonts/truetype/dejavu/DejaVuSansMono.ttf");
    EXPECT_EQ(g.displayFontPath, "/usr/share/fonts/truetype/dejavu/DejaVuSans-Bold.ttf");
}

}  // namespace
}  // namespace vorn::test
