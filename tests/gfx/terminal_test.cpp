// The room and the monitor, drawn piece by piece onto a software canvas with
// textures painted on the canvas's own renderer, and without them.

#include "gfx/procedural_art.h"
#include "gfx/terminal.h"
#include "support/canvas_app.h"
#include "support/play_area.h"
#include "support/screen_palette.h"
#include "support/software_canvas.h"

#include <gtest/gtest.h>

namespace vorn::test {
namespace {

class Room : public ::testing::Test {
protected:
    void SetUp() override {
        art.build(g.renderer);
        g.clear(screen_ink::black);
    }
    void TearDown() override { art.release(); }

    // Leaves the textures in the renderer (it frees them) but out of the set.
    void without(SDL_Texture*& texture) { texture = nullptr; }

    SoftwareCanvas canvas;
    Graphics& g = canvas.graphics;
    ProceduralArt art;
};

TEST_F(Room, WallTilesFromTheOriginInStepsOfItsSize) {
    without(art.topRail);
    without(art.bottomStrip);
    without(art.roomOverlay);
    drawRoom(g, art);
    const PixelBuffer wall = paintWall();
    for (const auto& p : {std::pair{0, 0}, {511, 287}, {512, 0}, {700, 300}, {1024, 576},
                          {1365, 767}, {30, 20}}) {
        EXPECT_EQ(canvas.pixel(p.first, p.second), wall.at(p.first % 512, p.second % 288))
            << p.first << "," << p.second;
    }
}

TEST_F(Room, BoltsSitOnTheRailEveryNinetyPixelsFromThirty) {
    without(art.roomOverlay);
    drawRoom(g, art);
    for (int x = 30; x < 1366; x += 90) {
        EXPECT_EQ(canvas.pixel(x, 20), screen_ink::bolt) << x;
        EXPECT_EQ(canvas.pixel(x - 4, 20), screen_ink::bolt) << x;
        EXPECT_EQ(canvas.pixel(x + 4, 20), screen_ink::bolt) << x;
        EXPECT_EQ(canvas.pixel(x, 17), screen_ink::bolt) << x;
        EXPECT_EQ(canvas.pixel(x, 23), screen_ink::bolt) << x;
        EXPECT_NE(canvas.pixel(x + 5, 20), screen_ink::bolt) << x;
        EXPECT_NE(canvas.pixel(x + 45, 20), screen_ink::bolt) << x;
    }
    // The last bolt is at 1290; the next would be off the canvas.
    EXPECT_NE(canvas.pixel(1362, 20), screen_ink::bolt);
}

TEST_F(Room, RailIsStretchedOverTheTopFortyRows) {
    without(art.roomOverlay);
    const PixelBuffer wall = paintWall();
    drawRoom(g, art);
    EXPECT_NE(canvas.pixel(75, 39), wall.at(75, 39));
    EXPECT_EQ(canvas.pixel(75, 40), wall.at(75, 40));
}

TEST_F(Room, WithoutTheRailThereAreNoBolts) {
    without(art.topRail);
    without(art.roomOverlay);
    drawRoom(g, art);
    const PixelBuffer wall = paintWall();
    for (int x = 30; x < 1366; x += 90) {
        ASSERT_EQ(canvas.pixel(x, 20), wall.at(x % 512, 20)) << x;
    }
}

TEST_F(Room, HazardStripCoversTheBottomTwentySixRows) {
    without(art.roomOverlay);
    drawRoom(g, art);
    const PixelBuffer wall = paintWall();
    EXPECT_EQ(canvas.pixel(kCanvasCentreX, 741), wall.at(kCanvasCentreX % 512, 741 % 288));
    int amber = 0;
    int dark = 0;
    for (int y = 742; y < 768; ++y) {
        for (int x = 0; x < 1366; ++x) {
            const Color c = canvas.pixel(x, y);
            ASSERT_LE(blue(c), 28) << x << "," << y;
            amber += near(c, screen_ink::hazardAmber, 8) ? 1 : 0;
            dark += near(c, screen_ink::hazardDark, 8) ? 1 : 0;
        }
    }
    EXPECT_GT(amber, 5000);
    EXPECT_GT(dark, 5000);
}

TEST_F(Room, StripesOnTheCanvasRepeatEvery28PixelsAndSpeckleByXTimesYModuloSeven) {
    // The strip texture copied at its own size, read back from the canvas.
    g.blitCentered(art.bottomStrip, 32, 32, 64, 64);
    for (int y = 0; y < 64; ++y) {
        for (int x = 0; x < 64; ++x) {
            const Color c = canvas.pixel(x, y);
            const bool amberBand = ((x + y) / 14) % 2 == 1;
            ASSERT_EQ(green(c), amberBand ? 140 : 18) << x << "," << y;
            ASSERT_EQ(red(c), (amberBand ? 210 : 26) - (x * y) % 7) << x << "," << y;
            if (x + 28 < 64) {
                ASSERT_EQ(green(c), green(canvas.pixel(x + 28, y))) << x << "," << y;
            }
        }
    }
}

TEST_F(Room, OverlayIsClearAtItsCentreAndTakes216OfAlphaInTheCorners) {
    // The overlay texture at its own size over white: the centre stays
    // white, the corners keep 255 - 216 = 39 of it.
    canvas.fill(screen_ink::white);
    g.blitCentered(art.roomOverlay, 128, 72, 256, 144);
    EXPECT_EQ(canvas.pixel(128, 72), screen_ink::white);
    EXPECT_TRUE(near(opaque(canvas.pixel(0, 0)), grey(39), 1)) << std::hex << canvas.pixel(0, 0);
}

TEST_F(Room, OverlayLeavesTheMiddleOfTheRoomAndDarkensItsCorners) {
    SDL_Texture* overlay = art.roomOverlay;
    without(art.roomOverlay);
    drawRoom(g, art);
    const Color centre = canvas.pixel(kCanvasCentreX, kCanvasCentreY);
    const Color corner = canvas.pixel(1365, 767);
    art.roomOverlay = overlay;
    drawRoom(g, art);
    EXPECT_EQ(canvas.pixel(kCanvasCentreX, kCanvasCentreY), centre);
    const Color darkened = faded(corner, 39.0 / 255);
    EXPECT_TRUE(near(opaque(canvas.pixel(1365, 767)), darkened, 2)) << std::hex << canvas.pixel(1365, 767);
}

TEST(FlatRoom, WithoutTexturesTheRoomIsOneFlatColourWithNoBolts) {
    SoftwareCanvas canvas;
    const ProceduralArt none;
    drawRoom(canvas.graphics, none);
    for (const auto& p : {std::pair{0, 0}, {30, 20}, {120, 20}, {kCanvasCentreX, kCanvasCentreY},
                          {kCanvasCentreX, 755}, {1365, 767}}) {
        EXPECT_EQ(canvas.pixel(p.first, p.second), screen_ink::flatWall) << p.first << "," << p.second;
    }
}

// ---- the monitor ----

class Monitor : public Room {};

TEST_F(Monitor, StandsInFrontOfTheRoom) {
    drawRoom(g, art);
    const Color wall = canvas.pixel(60, 300);
    const Color rail = canvas.pixel(30, 20);
    g.clear(screen_ink::black);
    drawTerminal(g, art, screen_ink::greenScreen);
    EXPECT_EQ(canvas.pixel(60, 300), wall);
    EXPECT_EQ(canvas.pixel(30, 20), rail);
}

TEST_F(Monitor, FacesStepInAndDarkenTowardsTheGlass) {
    drawTerminal(g, art, screen_ink::greenScreen);
    EXPECT_EQ(canvas.pixel(190, kCanvasCentreY), screen_ink::casingHighlight);   // the first face
    EXPECT_EQ(canvas.pixel(209, kCanvasCentreY), screen_ink::fifthFace);
    EXPECT_EQ(canvas.pixel(233, kCanvasCentreY), screen_ink::innerFace);          // the last
    EXPECT_EQ(canvas.pixel(kCanvasCentreX, 739), screen_ink::casingHighlight);   // the chin reaches y 740
}

TEST_F(Monitor, CasingOutlineShowsBesideTheFaces) {
    drawTerminal(g, art, screen_ink::greenScreen);
    EXPECT_EQ(canvas.pixel(181, 300), screen_ink::casingOutline);
    EXPECT_EQ(canvas.pixel(1185, 300), screen_ink::casingOutline);
}

TEST_F(Monitor, GlassRecessRingsTheScreen) {
    drawTerminal(g, art, screen_ink::greenScreen);
    EXPECT_EQ(canvas.pixel(241, kCanvasCentreY), screen_ink::glassRecess);
    EXPECT_EQ(canvas.pixel(1124, kCanvasCentreY), screen_ink::glassRecess);
    EXPECT_EQ(canvas.pixel(kCanvasCentreX, 72), screen_ink::glassRecess);
}

// A screen colour with as much red as green, which no screen of the game uses.
constexpr Color kRedAndGreenAlike = rgb(50, 50, 0);

TEST_F(Monitor, GlassIsRedOnlyWhenTheScreenColoursRedByteBeatsItsGreen) {
    drawTerminal(g, art, screen_ink::greenScreen);
    const Color green = canvas.pixel(kCanvasCentreX, kCanvasCentreY);
    drawTerminal(g, art, screen_ink::redScreen);
    const Color red = canvas.pixel(kCanvasCentreX, kCanvasCentreY);
    drawTerminal(g, art, kRedAndGreenAlike);   // a tie keeps the green glass
    const Color tie = canvas.pixel(kCanvasCentreX, kCanvasCentreY);
    EXPECT_GT(vorn::green(green), vorn::red(green));
    EXPECT_GT(vorn::red(red), vorn::green(red));
    EXPECT_EQ(tie, green);
}

TEST_F(Monitor, KeyboardBlockShowsBelowTheChinWithItsRim) {
    drawTerminal(g, art, screen_ink::greenScreen);
    EXPECT_TRUE(near(canvas.pixel(600, 745), screen_ink::casingPlastic, 12))
        << std::hex << canvas.pixel(600, 745);
    EXPECT_EQ(canvas.pixel(600, 750), screen_ink::casingOutline);
}

TEST_F(Monitor, KnobsLampBadgeAndPlateSitOnTheChin) {
    drawTerminal(g, art, screen_ink::greenScreen);
    for (int x : {283, 325}) {
        EXPECT_EQ(canvas.pixel(x, 720), screen_ink::plateInk) << x;
        EXPECT_EQ(canvas.pixel(x + 10, 720), screen_ink::knobFace) << x;
        EXPECT_EQ(canvas.pixel(x + 14, 720), screen_ink::casingOutline) << x;
    }
    EXPECT_EQ(canvas.pixel(397, 720), screen_ink::alarmRed);
    EXPECT_EQ(canvas.pixel(401, 720), screen_ink::lampHousing);
    EXPECT_EQ(canvas.pixel(1060, 720), screen_ink::casingHighlight);
    EXPECT_EQ(canvas.pixel(1069, 708), screen_ink::plateInk);
    EXPECT_EQ(canvas.pixel(1069, 732), screen_ink::plateInk);
}

TEST_F(Monitor, MakersPlateReadsVornCoMkIv) {
    canvas.useGameFonts();
    drawTerminal(g, art, screen_ink::greenScreen);
    // Across the middle of the chin, the only pixels in the plate's ink are
    // its lettering, in small type centred on the canvas at the chin's y 720.
    EXPECT_TRUE(showsInkOf(canvas, {560, 705, 246, 25},
                           {"VORN CO. Mk.IV", kCanvasCentreX, 720, TextSize::Small, screen_ink::plateInk,
                            true, true}));
    // One letter off is seen.
    EXPECT_FALSE(showsInkOf(canvas, {560, 705, 246, 25},
                            {"VORN CO. Mk.V", kCanvasCentreX, 720, TextSize::Small, screen_ink::plateInk,
                             true, true}));
}

TEST(FlatMonitor, WithoutTexturesCasingIsFlatBeigeAndGlassIsARoundedFlatScreenColour) {
    SoftwareCanvas canvas;
    const ProceduralArt none;
    drawTerminal(canvas.graphics, none, screen_ink::greenScreen);
    EXPECT_EQ(canvas.pixel(184, 300), screen_ink::casingBeige);   // casing
    EXPECT_EQ(canvas.pixel(600, 745), screen_ink::casingBeige);   // keyboard block
    EXPECT_EQ(canvas.pixel(kCanvasCentreX, kCanvasCentreY), screen_ink::greenScreen);
    EXPECT_EQ(canvas.pixel(300, 120), screen_ink::greenScreen);
    // The glass's corners are rounded off: the recess shows there.
    EXPECT_EQ(canvas.pixel(248, 79), screen_ink::glassRecess);
    EXPECT_EQ(canvas.pixel(1117, 688), screen_ink::glassRecess);
    // No rail, so no bolts.
    EXPECT_EQ(canvas.pixel(30, 20), screen_ink::flatWall);

    drawTerminal(canvas.graphics, none, screen_ink::redScreen);
    EXPECT_EQ(canvas.pixel(kCanvasCentreX, kCanvasCentreY), screen_ink::redScreen);
}

}  // namespace
}  // namespace vorn::test
