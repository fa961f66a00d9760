// The start-up checklist ("gauntlet"): switch 1, then valve 2 (filled by
// dragging left), then the dash button 3. Dashing before the switch fires
// the player; once it is thrown an early dash is only ignored. Its stages,
// sounds, what it draws in each stage, and its solver.

#include "stations/panel/panel_fixtures.h"
#include "stations/panel_stations.h"
#include "support/play_area.h"
#include "support/station_driver.h"
#include "support/station_ink.h"
#include "support/text_probe.h"

#include <gtest/gtest.h>

#include <cmath>
#include <string>
#include <vector>

namespace vorn::test {
namespace {

using Sounds = std::vector<std::string>;

// The centre of a plate, where a player aims.
int midX(const Rect& r) { return r.x + r.w / 2; }
int midY(const Rect& r) { return r.y + r.h / 2; }

TEST(GauntletStation, SwitchValveAndDashLeftToRightAndNoDraws) {
    Driver<GauntletLevel> d(5489);
    EXPECT_EQ(d.level.stage, 0);
    // Around the play area's middle row (405): the switch 60 in from the
    // left edge (263 + 60), the valve in the middle, the dash 180 in from
    // the right edge (1103 - 180).
    EXPECT_EQ(d.level.switchRect.x, 323);
    EXPECT_EQ(d.level.switchRect.y, 375);
    EXPECT_EQ(d.level.switchRect.w, 80);
    EXPECT_EQ(d.level.switchRect.h, 60);
    EXPECT_EQ(d.level.valveX, 683);
    EXPECT_EQ(d.level.valveY, 405);
    EXPECT_EQ(d.level.dashRect.x, 923);
    EXPECT_EQ(d.level.dashRect.y, 380);
    EXPECT_EQ(d.level.dashRect.w, 130);
    EXPECT_EQ(d.level.dashRect.h, 50);
    EXPECT_DOUBLE_EQ(d.level.fill, 0.15);
    EXPECT_EQ(d.rng, Rng(5489));
}

TEST(GauntletStation, TheValveIsInertUntilTheSwitchIsThrown) {
    Driver<GauntletLevel> d;
    d.press(d.level.valveX + 20, d.level.valveY);
    d.moveTo(d.level.valveX - 300, d.level.valveY);
    EXPECT_FALSE(d.level.grabbed);
    EXPECT_DOUBLE_EQ(d.level.fill, 0.15);
    EXPECT_EQ(d.level.stage, 0);
}

TEST(GauntletStation, TheSwitchOpensTheValveStage) {
    Driver<GauntletLevel> d;
    EXPECT_EQ(d.clickCentre(d.level.switchRect), LevelResult::Running);
    EXPECT_EQ(d.level.stage, 1);
    // Throwing it again changes nothing.
    EXPECT_EQ(d.clickCentre(d.level.switchRect), LevelResult::Running);
    EXPECT_EQ(d.level.stage, 1);
}

TEST(GauntletStation, TheValveGrabsWithinAHundredPixelsAndFillsByDraggingLeft) {
    Driver<GauntletLevel> d;
    d.clickCentre(d.level.switchRect);
    const int vx = d.level.valveX;
    const int vy = d.level.valveY;
    d.press(vx + 100, vy);
    EXPECT_FALSE(d.level.grabbed);
    d.release();
    d.press(vx + 99, vy);
    EXPECT_TRUE(d.level.grabbed);
    d.moveTo(vx + 199, vy);   // right drains
    EXPECT_DOUBLE_EQ(d.level.fill, 0.0);
    d.moveTo(vx - 1, vy);     // 200 px left: 0.0016 x 200
    EXPECT_NEAR(d.level.fill, 0.32, 1e-9);
    EXPECT_NEAR(d.level.angle, -60.0, 1e-9);
    EXPECT_EQ(d.level.stage, 1);
}

TEST(GauntletStation, AFullValveLightsTheDashButtonWhichThenPasses) {
    Driver<GauntletLevel> d(2, shippedRecord("gauntlet"));
    const Rect& s = d.level.switchRect;
    EXPECT_EQ(d.click(s.x + 10, s.y + 10), LevelResult::Running);
    EXPECT_EQ(d.level.stage, 1);

    int x = d.level.valveX + 90;
    EXPECT_EQ(d.press(x, d.level.valveY), LevelResult::Running);
    for (int step = 0; step < 30 && d.level.stage == 1; ++step) {
        x -= 20;
        EXPECT_EQ(d.moveTo(x, d.level.valveY), LevelResult::Running);
    }
    EXPECT_EQ(d.level.stage, 2);
    EXPECT_GE(d.level.fill, 0.985);
    EXPECT_FALSE(d.lastSoundWasPass());   // only a click so far
    EXPECT_EQ(d.release(), LevelResult::Running);

    const Rect& dash = d.level.dashRect;
    EXPECT_EQ(d.press(dash.x + 5, dash.y + 5), LevelResult::Solved);
    EXPECT_TRUE(d.lastSoundWasPass());
}

TEST(GauntletStation, ClicksAwayFromTheDashButtonDoNotPassTheLastStage) {
    Driver<GauntletLevel> d;
    d.level.stage = 2;
    const Rect& dash = d.level.dashRect;
    EXPECT_EQ(d.clickCentre(d.level.switchRect), LevelResult::Running);
    EXPECT_EQ(d.click(d.level.valveX, d.level.valveY), LevelResult::Running);
    EXPECT_EQ(d.click(dash.x + dash.w, dash.y), LevelResult::Running);
    EXPECT_EQ(d.level.stage, 2);
    EXPECT_EQ(d.click(dash.x, dash.y), LevelResult::Solved);
}

TEST(GauntletStation, InTheFirstStageOnlyTheSwitchClicksAndOtherClicksAreSilent) {
    Driver<GauntletLevel> d;
    const Rect& dash = d.level.dashRect;
    // The valve's hub, an empty bit of panel, and just left of the dash button.
    EXPECT_EQ(d.click(d.level.valveX, d.level.valveY), LevelResult::Running);
    EXPECT_EQ(d.click(kPlayLeft + 237, kPlayTop + 60), LevelResult::Running);
    EXPECT_EQ(d.click(dash.x - 1, midY(dash)), LevelResult::Running);
    EXPECT_EQ(d.sounds, Sounds{});
    EXPECT_EQ(d.level.stage, 0);
    EXPECT_EQ(d.press(d.level.switchRect.x, d.level.switchRect.y), LevelResult::Running);   // its corner
    EXPECT_EQ(d.sounds, (Sounds{"click"}));
    EXPECT_EQ(d.level.stage, 1);
}

TEST(GauntletStation, AnEarlyDashFailsWithOnlyTheFailSound) {
    Driver<GauntletLevel> d;
    const Rect& dash = d.level.dashRect;
    EXPECT_EQ(d.press(dash.x + dash.w - 1, dash.y + dash.h - 1), LevelResult::Failed);   // its far corner
    EXPECT_EQ(d.sounds, (Sounds{"fail"}));
}

TEST(GauntletStation, InTheValveStageTheSwitchAndTheDashAreIgnoredWithoutASound) {
    Driver<GauntletLevel> d;
    d.clickCentre(d.level.switchRect);
    const std::size_t n = d.sounds.size();
    EXPECT_EQ(d.clickCentre(d.level.dashRect), LevelResult::Running);     // no buzz, no verdict
    EXPECT_EQ(d.clickCentre(d.level.switchRect), LevelResult::Running);   // no second click
    EXPECT_EQ(d.soundsSince(n), Sounds{});
    EXPECT_EQ(d.level.stage, 1);
    EXPECT_DOUBLE_EQ(d.level.fill, 0.15);
}

TEST(GauntletStation, TheFullValveClicksOnceThenItIsInertAndOnlyTheDashPasses) {
    Driver<GauntletLevel> d;
    d.clickCentre(d.level.switchRect);
    std::size_t n = d.sounds.size();
    const int y = d.level.valveY;
    int x = d.level.valveX + 90;
    EXPECT_EQ(d.press(x, y), LevelResult::Running);
    // 0.15 + 26 x 0.032 = 0.982 is still short; the 27th step of 20 px fills it.
    for (int step = 1; step <= 26; ++step) {
        x -= 20;
        ASSERT_EQ(d.moveTo(x, y), LevelResult::Running) << step;
        ASSERT_EQ(d.level.stage, 1) << step;
    }
    EXPECT_EQ(d.soundsSince(n), Sounds{});
    x -= 20;
    EXPECT_EQ(d.moveTo(x, y), LevelResult::Running);
    EXPECT_EQ(d.level.stage, 2);
    EXPECT_EQ(d.heard(), (Sounds{"click"}));
    n = d.sounds.size();
    // The wheel no longer turns, and the switch and the valve are silent.
    const double angle = d.level.angle;
    EXPECT_EQ(d.moveTo(x + 300, y), LevelResult::Running);
    EXPECT_DOUBLE_EQ(d.level.angle, angle);
    EXPECT_DOUBLE_EQ(d.level.fill, 1.0);
    d.release();
    EXPECT_EQ(d.clickCentre(d.level.switchRect), LevelResult::Running);
    EXPECT_EQ(d.click(d.level.valveX, y), LevelResult::Running);
    EXPECT_EQ(d.soundsSince(n), Sounds{});
    EXPECT_EQ(d.press(midX(d.level.dashRect), midY(d.level.dashRect)), LevelResult::Solved);
    EXPECT_EQ(d.soundsSince(n), (Sounds{"pass"}));
}

// ------------------------------------------------------------------- Look

constexpr double kPi = 3.14159265358979323846;

// A point `r` pixels out from the valve's hub at `degrees` clockwise from
// three o'clock.
int outX(const GauntletLevel& g, int r, double degrees) {
    return g.valveX + static_cast<int>(std::cos(degrees * kPi / 180) * r);
}
int outY(const GauntletLevel& g, int r, double degrees) {
    return g.valveY + static_cast<int>(std::sin(degrees * kPi / 180) * r);
}

// What one stage looks like to the player.
struct StageLook {
    Color switchPlate;   // the thrown switch turns green
    Color valveDisc;     // the stage colour at half strength
    Color spokes;        // the stage colour
    Color dashPlate;     // dark until the dash is due
    Color dashWord;
    const char* orders;  // the line 16 above the play area's bottom edge
};

void expectStageDrawn(GauntletLevel& level, const StageLook& look) {
    SoftwareCanvas canvas;
    renderOnBlack(canvas, level);
    SCOPED_TRACE(look.orders);
    const Rect& s = level.switchRect;
    EXPECT_EQ(canvas.pixel(s.x + 3, midY(s)), look.switchPlate);
    EXPECT_EQ(canvas.pixel(midX(s), s.y + 3), look.switchPlate);
    EXPECT_EQ(pixelsUnlikeText(canvas, {s.x + 8, s.y + 6, s.w - 16, s.h - 12}, look.switchPlate, "1", midX(s),
                               midY(s), TextSize::Large, station_ink::ink, true, true),
              0);

    // The valve: a disc of radius 70 with four spokes turned by its angle,
    // the 2 in ink over its hub.
    const double a = level.angle;
    // (A thick slanted spoke may leave a pinhole: look within a pixel.)
    for (const double spoke : {a, a + 45, a + 90, a + 135}) {
        const int x = outX(level, 55, spoke);
        const int y = outY(level, 55, spoke);
        EXPECT_TRUE(anyPixelNear(canvas, {x - 1, y - 1, 3, 3}, look.spokes, 0)) << spoke;
    }
    EXPECT_EQ(canvas.pixel(outX(level, 55, a + 22.5), outY(level, 55, a + 22.5)), look.valveDisc);
    EXPECT_EQ(canvas.pixel(outX(level, 72, a + 22.5), outY(level, 72, a + 22.5)), station_ink::black);
    EXPECT_TRUE(anyPixelNear(canvas, {level.valveX - 10, level.valveY - 12, 20, 24}, station_ink::ink, 0));

    const Rect& dash = level.dashRect;
    EXPECT_EQ(canvas.pixel(dash.x + 3, midY(dash)), look.dashPlate);
    EXPECT_EQ(pixelsUnlikeText(canvas, {dash.x + 8, dash.y + 8, dash.w - 16, dash.h - 16}, look.dashPlate,
                               "3 DASH", midX(dash), midY(dash), TextSize::Normal, look.dashWord, true, true),
              0);

    EXPECT_EQ(pixelsUnlikeText(canvas, {kPlayLeft, kPlayBottom - 19, kPlayArea.w, 23}, station_ink::black,
                               look.orders, kPlayCentreX, kPlayBottom - 16, TextSize::Small, panel_ink::orders,
                               true, false),
              0);
}

TEST(GauntletLook, EachStageShowsItsOwnOrdersAsThePlayerGoes) {
    Driver<GauntletLevel> d;
    expectStageDrawn(d.level, {station_ink::oldBrass, panel_ink::halfOldBrass, station_ink::oldBrass,
                               station_ink::charcoal, station_ink::greyedOut,
                               "SWITCH, then VALVE (left), then DASH - in order"});
    d.clickCentre(d.level.switchRect);
    d.press(d.level.valveX + 90, d.level.valveY);
    d.moveTo(d.level.valveX + 40, d.level.valveY);   // 50 px left: the spokes turn back 30 degrees
    ASSERT_NEAR(d.level.angle, -30.0, 1e-9);
    expectStageDrawn(d.level, {station_ink::darkGreen, panel_ink::halfOrange, station_ink::orange,
                               station_ink::charcoal, station_ink::greyedOut,
                               "now turn the VALVE LEFT to fill"});
    d.moveTo(d.level.valveX - 510, d.level.valveY);   // 550 px more: full (clamped at 1), angle -360
    ASSERT_EQ(d.level.stage, 2);
    expectStageDrawn(d.level, {station_ink::darkGreen, station_ink::darkGreen, station_ink::terminalGreen,
                               station_ink::paleGold, station_ink::ink, "now DASH!"});
}

TEST(GauntletSolver, ClearsTheStartupChecklistOnEveryDifficulty) { EXPECT_EQ(unsolvedRuns("gauntlet"), ""); }

}  // namespace
}  // namespace vorn::test
