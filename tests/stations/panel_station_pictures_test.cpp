// What the control-panel stations draw, pixel for pixel: each picture is
// compared with the same picture drawn by hand from the station's look (every
// plate, lever, gauge, spoke and word with its literal place, size and
// colour), in the states a player passes through.

#include "stations/panel_stations.h"
#include "support/panel_scenes.h"
#include "support/software_canvas.h"
#include "support/station_desk.h"
#include "support/text_probe.h"

#include <gtest/gtest.h>

#include <array>
#include <cmath>
#include <cstdint>

namespace vorn {
namespace {

constexpr Color kBlack = rgb(0, 0, 0);
constexpr double kPi = 3.14159265358979323846;

// A frame in which the pointer moves (the button as it was).
template <typename L>
void moveTo(test::Desk<L>& desk, int x, int y) {
    desk.pointAt(x, y);
    desk.step(0.016);
}

// The station's own frame on a black canvas with the game's fonts.
template <typename L>
void renderOnBlack(test::SoftwareCanvas& canvas, L& level) {
    canvas.useGameFonts();
    canvas.fill(kBlack);
    level.render(canvas.graphics);
}

// Four spokes through (cx, cy), `reach` pixels each way, at k pi / 4 plus
// the wheel's turn in degrees, each end truncated to whole pixels.
void spokesByHand(Graphics& g, int cx, int cy, int reach, double degrees, Color c, int thickness) {
    for (int k = 0; k < 4; ++k) {
        const double a = k * kPi / 4 + degrees * kPi / 180;
        const int dx = static_cast<int>(std::cos(a) * reach);
        const int dy = static_cast<int>(std::sin(a) * reach);
        g.line(cx - dx, cy - dy, cx + dx, cy + dy, c, thickness);
    }
}

// ---------------------------------------------------------------- Switches

// The breaker row as the player must see it: per lever a housing plate, a
// dark slot, and the lever at the top in amber or at the bottom in green.
// No words at all.
void drawSwitchesByHand(Graphics& g, const std::array<bool, 6>& up) {
    for (int i = 0; i < 6; ++i) {
        const int x = 357 + 120 * i;   // 263 - 26 + (i + 1) x 120; y = 190 - 50 + 215
        g.roundRect({x, 355, 52, 100}, 6, rgb(99, 77, 26), true);
        g.rect({x + 4, 359, 44, 92}, rgb(20, 20, 20), true);
        g.roundRect({x + 8, up[i] ? 363 : 413, 36, 34}, 4, up[i] ? rgb(255, 170, 46) : rgb(70, 224, 138),
                    true);
    }
}

TEST(SwitchesLook, TheRowIsDrawnAsDealtAndRedrawnAfterAFlip) {
    test::Desk<SwitchesLevel> p(5489);
    {
        test::SoftwareCanvas canvas;
        renderOnBlack(canvas, p.level);
        EXPECT_TRUE(test::looksDrawnByHand(canvas, kBlack, [](Graphics& g) {
            drawSwitchesByHand(g, {true, false, true, true, false, true});
        }));
    }
    p.clickCentre(p.level.rects[3]);
    p.clickCentre(p.level.rects[4]);
    test::SoftwareCanvas canvas;
    renderOnBlack(canvas, p.level);
    EXPECT_TRUE(test::looksDrawnByHand(canvas, kBlack, [](Graphics& g) {
        drawSwitchesByHand(g, {true, false, true, false, true, true});
    }));
}

// ----------------------------------------------------------------- Fusebox

// The fuse box as the player must see it: the master plate with its state
// word, five fuse holders (the blown one red with an X until swapped, then
// green) and the status line under them.
void drawFuseboxByHand(Graphics& g, int blown, bool live, bool replaced) {
    g.roundRect({623, 210, 120, 56}, 8, live ? rgb(178, 40, 29) : rgb(42, 134, 82), true);
    g.text(live ? "MASTER: LIVE" : "MASTER: OFF", 683, 238, TextSize::Small, rgb(20, 20, 20), true,
           true);
    for (int i = 0; i < 5; ++i) {
        const int x = 468 + 90 * i;
        g.roundRect({x, 310, 70, 90}, 6, rgb(119, 92, 31), true);
        const Color core = i != blown ? rgb(20, 20, 20) : replaced ? rgb(70, 224, 138) : rgb(127, 29, 21);
        g.rect({x + 8, 318, 54, 74}, core, true);
        if (i == blown && !replaced) {
            g.text("X", x + 35, 355, TextSize::Large, rgb(255, 58, 42), true, true);
        }
    }
    // 18 above the bottom edge: 190 + 430 - 18.
    if (live) {
        g.text("(LIVE - do not touch fuses)", 683, 602, TextSize::Small, rgb(204, 46, 33), true, false);
    } else {
        g.text("(safe to swap)", 683, 602, TextSize::Small, rgb(56, 179, 110), true, false);
    }
}

TEST(FuseboxLook, ALiveBoxIsDrawnWithItsWordsExactly) {
    for (const std::uint32_t seed : {5489u, 1u, 11u, 2u}) {   // blown 2, 0, 1, 3
        test::Desk<FuseboxLevel> p(seed);
        test::SoftwareCanvas canvas;
        renderOnBlack(canvas, p.level);
        const int blown = seed == 5489u ? 2 : seed == 1u ? 0 : seed == 11u ? 1 : 3;
        EXPECT_TRUE(test::looksDrawnByHand(canvas, kBlack, [&](Graphics& g) {
            drawFuseboxByHand(g, blown, true, false);
        })) << "seed " << seed;
    }
}

TEST(FuseboxLook, TheMasterShowsLiveThenOffAsItIsThrown) {
    test::Desk<FuseboxLevel> p(5489);
    const Rect plateInside{631, 218, 104, 40};   // clear of the rounded corners
    {
        test::SoftwareCanvas canvas;
        renderOnBlack(canvas, p.level);
        EXPECT_EQ(test::pixelsUnlikeText(canvas, plateInside, rgb(178, 40, 29), "MASTER: LIVE", 683, 238,
                                         TextSize::Small, rgb(20, 20, 20), true, true),
                  0);
    }
    p.click(683, 238);
    test::SoftwareCanvas canvas;
    renderOnBlack(canvas, p.level);
    EXPECT_EQ(test::pixelsUnlikeText(canvas, plateInside, rgb(42, 134, 82), "MASTER: OFF", 683, 238,
                                     TextSize::Small, rgb(20, 20, 20), true, true),
              0);
}

TEST(FuseboxLook, AnOffBoxIsDrawnSafeBeforeAndAfterTheSwap) {
    test::Desk<FuseboxLevel> p(5489);
    p.click(683, 238);
    {
        test::SoftwareCanvas canvas;
        renderOnBlack(canvas, p.level);
        EXPECT_TRUE(test::looksDrawnByHand(canvas, kBlack,
                                           [](Graphics& g) { drawFuseboxByHand(g, 2, false, false); }));
    }
    p.click(683, 355);
    test::SoftwareCanvas canvas;
    renderOnBlack(canvas, p.level);
    EXPECT_TRUE(test::looksDrawnByHand(canvas, kBlack,
                                       [](Graphics& g) { drawFuseboxByHand(g, 2, false, true); }));
}

// ------------------------------------------------------------------- Valve

// The valve as the player must see it: the gauge with its level, target mark
// and words on the left, the wheel with its spokes turned by the angle, and
// the lying label.
void drawValveByHand(Graphics& g, double fill, double angle) {
    // Gauge at (263 + 840 / 4, 190 + 430 / 2) = (473, 405).
    g.circle(473, 405, 70, rgb(99, 77, 26), true);
    g.circle(473, 405, 62, rgb(20, 20, 20), true);
    const int h = static_cast<int>(fill * 110);
    g.rect({455, 405 - h + 55, 36, h}, rgb(255, 170, 46), true);
    g.line(443, 355, 503, 355, rgb(70, 224, 138), 3);
    g.text("TARGET", 509, 347, TextSize::Small, rgb(70, 224, 138), false, false);
    g.text("FILL", 473, 469, TextSize::Small, rgb(255, 170, 46), true, false);
    // Wheel at (263 + 1680 / 3, 405) = (823, 405), radius 86.
    g.circle(823, 405, 86, rgb(109, 84, 29), true);
    g.circle(823, 405, 70, rgb(16, 36, 15), true);
    spokesByHand(g, 823, 405, 86, angle, rgb(199, 154, 53), 12);
    g.circle(823, 405, 22, rgb(199, 154, 53), true);
    g.text("OPEN >", 917, 319, TextSize::Normal, rgb(255, 58, 42), false, false);
}

TEST(ValveLook, TheGaugeWheelAndWordsAreDrawnExactlyAtTheStart) {
    test::Desk<ValveLevel> p;
    test::SoftwareCanvas canvas;
    renderOnBlack(canvas, p.level);
    EXPECT_TRUE(test::looksDrawnByHand(canvas, kBlack, [](Graphics& g) { drawValveByHand(g, 0.15, 0.0); }));
}

TEST(ValveLook, ADragLeftRaisesTheLevelAndTurnsTheSpokesBack) {
    test::Desk<ValveLevel> p;
    p.press(883, 405);
    moveTo(p, 783, 405);   // 100 px left: fill 0.31 (34 px of level), angle -60
    test::SoftwareCanvas canvas;
    renderOnBlack(canvas, p.level);
    EXPECT_TRUE(test::looksDrawnByHand(canvas, kBlack, [](Graphics& g) { drawValveByHand(g, 0.31, -60.0); }));
}

TEST(ValveLook, ADryGaugeShowsNoLevelAtAll) {
    test::Desk<ValveLevel> p;
    p.press(823, 405);
    moveTo(p, 923, 405);   // 100 px right: empty, angle 60
    test::SoftwareCanvas canvas;
    renderOnBlack(canvas, p.level);
    EXPECT_TRUE(test::looksDrawnByHand(canvas, kBlack, [](Graphics& g) { drawValveByHand(g, 0.0, 60.0); }));
}

// ---------------------------------------------------------------- Gauntlet

// The checklist as the player must see it in one stage: switch 1, valve 2
// (its disc at half the stage colour, spokes in full), dash button 3, and
// the stage's line of orders 16 above the bottom edge.
void drawGauntletByHand(Graphics& g, int stage, double angle) {
    g.roundRect({323, 375, 80, 60}, 6, stage >= 1 ? rgb(35, 112, 69) : rgb(119, 92, 31), true);
    g.text("1", 363, 405, TextSize::Large, rgb(20, 20, 20), true, true);
    const Color full = stage == 2 ? rgb(70, 224, 138) : stage == 1 ? rgb(255, 170, 46) : rgb(119, 92, 31);
    const Color half = stage == 2 ? rgb(35, 112, 69) : stage == 1 ? rgb(127, 85, 23) : rgb(59, 46, 15);
    g.circle(683, 405, 70, half, true);
    spokesByHand(g, 683, 405, 70, angle, full, 9);
    g.text("2", 683, 405, TextSize::Large, rgb(20, 20, 20), true, true);
    g.roundRect({923, 380, 130, 50}, 8, stage == 2 ? rgb(229, 194, 96) : rgb(30, 30, 30), true);
    g.text("3 DASH", 988, 405, TextSize::Normal, stage == 2 ? rgb(20, 20, 20) : rgb(121, 116, 103), true,
           true);
    const char* orders = stage == 0   ? "SWITCH, then VALVE (left), then DASH - in order"
                         : stage == 1 ? "now turn the VALVE LEFT to fill"
                                      : "now DASH!";
    g.text(orders, 683, 604, TextSize::Small, rgb(204, 136, 36), true, false);
}

void expectGauntletDrawnAs(test::Desk<GauntletLevel>& p, int stage, double angle) {
    test::SoftwareCanvas canvas;
    renderOnBlack(canvas, p.level);
    EXPECT_TRUE(test::looksDrawnByHand(canvas, kBlack,
                                       [&](Graphics& g) { drawGauntletByHand(g, stage, angle); }))
        << "stage " << stage;
}

TEST(GauntletLook, EachStageIsDrawnWithItsOwnOrdersAsThePlayerGoes) {
    test::Desk<GauntletLevel> p;
    expectGauntletDrawnAs(p, 0, 0.0);
    p.click(363, 405);
    p.press(773, 405);
    moveTo(p, 723, 405);   // 50 px left: the spokes turn back 30 degrees
    expectGauntletDrawnAs(p, 1, -30.0);
    moveTo(p, 173, 405);   // 550 px more: full (clamped at 1), angle -360
    ASSERT_EQ(p.level.stage, 2);
    expectGauntletDrawnAs(p, 2, -360.0);
}

}  // namespace
}  // namespace vorn
