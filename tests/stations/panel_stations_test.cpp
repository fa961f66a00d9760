// The control-panel stations: breaker levers, the fuse box, the valve wheel
// and the start-up checklist.

#include "audio/audio_system.h"
#include "data/level_catalogue.h"
#include "stations/level_factory.h"
#include "stations/panel_stations.h"
#include "support/draws_by_hand.h"
#include "support/software_canvas.h"
#include "support/station_bench.h"

#include <gtest/gtest.h>

#include <cstdint>

namespace vorn {
namespace {

// A station driven directly: a seeded engine, the run's play area, a
// hand-filled input and an audio system that was never opened.
template <typename L>
struct Panel {
    L level;
    Rng rng;
    AudioSystem silent;
    InputState in;

    explicit Panel(std::uint32_t seed = 5489) : rng(seed) { level.setup(LevelDef{}, rng, kPlayArea); }

    // A frame with nothing new: the pointer and the button as they were.
    LevelResult idle() {
        in.clearEdges();
        return level.update(0.016, in, silent);
    }
    LevelResult press(int x, int y) {
        in.clearEdges();
        in.mouseX = x;
        in.mouseY = y;
        in.mouseDown = true;
        in.mousePressed = true;
        return level.update(0.016, in, silent);
    }
    LevelResult moveTo(int x, int y) {
        in.clearEdges();
        in.mouseX = x;
        in.mouseY = y;
        return level.update(0.016, in, silent);
    }
    LevelResult release() {
        in.clearEdges();
        in.mouseDown = false;
        in.mouseReleased = true;
        return level.update(0.016, in, silent);
    }
    LevelResult click(int x, int y) {
        const LevelResult r = press(x, y);
        if (r != LevelResult::Running) {
            return r;
        }
        return release();
    }
    LevelResult clickCentre(const Rect& r) { return click(r.x + r.w / 2, r.y + r.h / 2); }
};

// True when some pixel of the box has colour c (within 2 per channel): text
// is anti-aliased, but its solid strokes carry the exact colour.
bool anyPixelNear(const test::SoftwareCanvas& canvas, const Rect& box, Color c) {
    return test::anyPixelNear(canvas, box, c, 2);
}

constexpr Color kInk = palette::ink;
constexpr Color kOrange = palette::orange;
constexpr Color kGreen = rgb(70, 224, 138);

TEST(PanelFactory, EachTypeStringMakesItsStation) {
    EXPECT_NE(dynamic_cast<SwitchesLevel*>(createLevel("switches").get()), nullptr);
    EXPECT_NE(dynamic_cast<FuseboxLevel*>(createLevel("fusebox").get()), nullptr);
    EXPECT_NE(dynamic_cast<ValveLevel*>(createLevel("valve").get()), nullptr);
    EXPECT_NE(dynamic_cast<GauntletLevel*>(createLevel("gauntlet").get()), nullptr);
    EXPECT_EQ(dynamic_cast<ValveLevel*>(createLevel("Valve").get()), nullptr);
}

// ---------------------------------------------------------------- Switches

TEST(SwitchesStation, SixLeversSpacedASeventhOfTheWidthApart) {
    Panel<SwitchesLevel> p;
    EXPECT_EQ(p.level.count, 6);
    // spacing = 840 / 7 = 120; x = 263 - 26 + (i + 1) * 120; y = 190 - 50 + 215.
    for (int i = 0; i < 6; ++i) {
        EXPECT_EQ(p.level.rects[i].x, 357 + 120 * i) << i;
        EXPECT_EQ(p.level.rects[i].y, 355) << i;
        EXPECT_EQ(p.level.rects[i].w, 52) << i;
        EXPECT_EQ(p.level.rects[i].h, 100) << i;
    }
}

TEST(SwitchesStation, EachLeverIsTheTopBitOfOneDrawInOrder) {
    Panel<SwitchesLevel> p(5489);
    // Seed 5489 opens 3499211612, 581869302, 3890346734, 3586334585,
    // 545404204, 4161255391: top bits 1 0 1 1 0 1.
    const bool expected[6] = {true, false, true, true, false, true};
    for (int i = 0; i < 6; ++i) {
        EXPECT_EQ(p.level.up[i], expected[i]) << i;
    }
    EXPECT_EQ(p.rng, test::engineAfter(5489, 6));

    for (std::uint32_t seed = 1; seed <= 40; ++seed) {
        Panel<SwitchesLevel> q(seed);
        Rng ref(seed);
        for (int i = 0; i < 6; ++i) {
            EXPECT_EQ(q.level.up[i], ref() >= 0x80000000u) << "seed " << seed << " lever " << i;
        }
        EXPECT_EQ(q.rng, ref) << seed;
    }
}

// The first seed whose six levers are all dealt down.
std::uint32_t allDownSeed() {
    for (std::uint32_t seed = 1;; ++seed) {
        Rng r(seed);
        bool anyUp = false;
        for (int i = 0; i < 6; ++i) {
            anyUp = anyUp || (r() >> 31) != 0;
        }
        if (!anyUp) {
            return seed;
        }
    }
}

TEST(SwitchesStation, ARowDealtAllDownIsSolvedOnTheFirstUpdateWithThePassSound) {
    test::StationBench bench(test::shippedRecord("switches"), allDownSeed());
    const auto& level = dynamic_cast<const SwitchesLevel&>(*bench.station);
    for (int i = 0; i < 6; ++i) {
        ASSERT_FALSE(level.up[i]);
    }
    EXPECT_EQ(bench.frame(1.0 / 60.0), LevelResult::Solved);
    EXPECT_TRUE(bench.lastSoundWasPass());
}

TEST(SwitchesStation, ARowWithALeverUpKeepsRunning) {
    Panel<SwitchesLevel> p(5489);
    EXPECT_EQ(p.idle(), LevelResult::Running);
}

TEST(SwitchesStation, AClickFlipsTheLeverUnderThePointerBothWays) {
    Panel<SwitchesLevel> p(5489);
    const Rect& r = p.level.rects[1];   // dealt down
    EXPECT_EQ(p.click(r.x, r.y), LevelResult::Running);
    EXPECT_TRUE(p.level.up[1]);
    EXPECT_EQ(p.click(r.x + r.w - 1, r.y + r.h - 1), LevelResult::Running);
    EXPECT_FALSE(p.level.up[1]);
    // The right and bottom edges are outside.
    EXPECT_EQ(p.click(r.x + r.w, r.y), LevelResult::Running);
    EXPECT_FALSE(p.level.up[1]);
    // Only the lever under the pointer moves.
    EXPECT_TRUE(p.level.up[0]);
    EXPECT_TRUE(p.level.up[2]);
}

TEST(SwitchesStation, AClickThatMissesEveryLeverStillRunsTheAllDownTest) {
    Panel<SwitchesLevel> p(5489);
    for (bool& lever : p.level.up) {
        lever = false;
    }
    EXPECT_EQ(p.press(p.level.rects[0].x - 10, p.level.rects[0].y), LevelResult::Solved);
}

TEST(SwitchesStation, FlippingTheLastAmberLeverDownPassesInThatFrame) {
    test::StationBench bench(test::shippedRecord("switches"), 5489);
    auto& level = dynamic_cast<SwitchesLevel&>(*bench.station);
    for (int i = 1; i < 6; ++i) {
        level.up[i] = false;
    }
    level.up[0] = true;
    const Rect& r = level.rects[0];
    test::pushMotion(r.x + 20, r.y + 20);
    test::pushButton(true, r.x + 20, r.y + 20);
    EXPECT_EQ(bench.frame(1.0 / 60.0), LevelResult::Solved);
    EXPECT_TRUE(bench.lastSoundWasPass());
}

TEST(SwitchesStation, UpLeversAreAmberAtTheTopAndDownLeversGreenAtTheBottom) {
    Panel<SwitchesLevel> p(5489);   // levers 0 up, 1 down
    test::SoftwareCanvas canvas;
    canvas.graphics.clear(rgb(0, 0, 0));
    p.level.render(canvas.graphics);
    const Rect& a = p.level.rects[0];
    const Rect& b = p.level.rects[1];
    EXPECT_EQ(canvas.pixel(a.x + 2, a.y + 50), rgb(99, 77, 26));    // the plate
    EXPECT_EQ(canvas.pixel(a.x + 5, a.y + 50), kInk);               // the slot
    EXPECT_EQ(canvas.pixel(a.x + 26, a.y + 25), kOrange);           // lever up
    EXPECT_EQ(canvas.pixel(a.x + 26, a.y + 75), kInk);
    EXPECT_EQ(canvas.pixel(b.x + 26, b.y + 25), kInk);
    EXPECT_EQ(canvas.pixel(b.x + 26, b.y + 75), kGreen);            // lever down
    EXPECT_EQ(canvas.pixel(b.x + 10, b.y + 66), kGreen);            // lever spans x + 8 .. x + 43
    EXPECT_EQ(canvas.pixel(b.x + 45, b.y + 75), kInk);
    EXPECT_EQ(canvas.pixel(a.x - 5, a.y + 50), rgb(0, 0, 0));       // between plates
}

// ----------------------------------------------------------------- Fusebox

TEST(FuseboxStation, MasterAboveFiveFusesAtANinetyPixelPitch) {
    Panel<FuseboxLevel> p;
    // cx = 683.
    EXPECT_EQ(p.level.master.x, 623);
    EXPECT_EQ(p.level.master.y, 210);
    EXPECT_EQ(p.level.master.w, 120);
    EXPECT_EQ(p.level.master.h, 56);
    EXPECT_EQ(p.level.fuseCount, 5);
    const int xs[5] = {468, 558, 648, 738, 828};
    for (int i = 0; i < 5; ++i) {
        EXPECT_EQ(p.level.fuses[i].x, xs[i]) << i;
        EXPECT_EQ(p.level.fuses[i].y, 310) << i;
        EXPECT_EQ(p.level.fuses[i].w, 70) << i;
        EXPECT_EQ(p.level.fuses[i].h, 90) << i;
    }
    EXPECT_TRUE(p.level.live);
    EXPECT_FALSE(p.level.replaced);
}

TEST(FuseboxStation, TheBlownFuseIsOneDrawModuloFive) {
    Panel<FuseboxLevel> p(5489);
    EXPECT_EQ(p.level.blown, 2);   // 3499211612 % 5
    EXPECT_EQ(p.rng, test::engineAfter(5489, 1));
    for (std::uint32_t seed = 1; seed <= 40; ++seed) {
        Panel<FuseboxLevel> q(seed);
        Rng ref(seed);
        EXPECT_EQ(q.level.blown, static_cast<std::int32_t>(ref() % 5)) << seed;
        EXPECT_EQ(q.rng, ref) << seed;
    }
}

TEST(FuseboxStation, AGoodFuseClickedWhileLiveOnlyClicks) {
    Panel<FuseboxLevel> p(5489);
    for (int i = 0; i < 5; ++i) {
        if (i != p.level.blown) {
            EXPECT_EQ(p.clickCentre(p.level.fuses[i]), LevelResult::Running) << i;
        }
    }
    EXPECT_TRUE(p.level.live);
    EXPECT_FALSE(p.level.replaced);
}

TEST(FuseboxStation, TouchingTheBlownFuseWhileLiveFailsWithTheFailSound) {
    test::StationBench bench(test::shippedRecord("fusebox"), 11);
    const auto& level = dynamic_cast<const FuseboxLevel&>(*bench.station);
    const Rect& f = level.fuses[level.blown];
    test::pushMotion(f.x + 10, f.y + 10);
    test::pushButton(true, f.x + 10, f.y + 10);
    EXPECT_EQ(bench.frame(1.0 / 60.0), LevelResult::Failed);
    EXPECT_TRUE(bench.lastSoundWasFail());
}

TEST(FuseboxStation, MasterOffAndOnWithoutTheFuseIsNeverAPass) {
    Panel<FuseboxLevel> p(5489);
    for (int round = 0; round < 3; ++round) {
        EXPECT_EQ(p.clickCentre(p.level.master), LevelResult::Running);
        EXPECT_FALSE(p.level.live);
        EXPECT_EQ(p.clickCentre(p.level.master), LevelResult::Running);
        EXPECT_TRUE(p.level.live);
    }
}

TEST(FuseboxStation, MasterOffBlownFuseMasterOnPasses) {
    Panel<FuseboxLevel> p(5489);
    EXPECT_EQ(p.clickCentre(p.level.master), LevelResult::Running);
    EXPECT_EQ(p.clickCentre(p.level.fuses[p.level.blown]), LevelResult::Running);
    EXPECT_TRUE(p.level.replaced);
    EXPECT_EQ(p.press(p.level.master.x, p.level.master.y), LevelResult::Solved);
    EXPECT_TRUE(p.level.live);
}

TEST(FuseboxStation, ReplacingTheFuseAndLeavingThePowerOffDoesNotSolve) {
    Panel<FuseboxLevel> p(5489);
    p.clickCentre(p.level.master);
    p.clickCentre(p.level.fuses[p.level.blown]);
    for (int i = 0; i < 30; ++i) {
        EXPECT_EQ(p.idle(), LevelResult::Running);
    }
    // Clicking the new fuse again, or a good one, changes nothing either.
    EXPECT_EQ(p.clickCentre(p.level.fuses[p.level.blown]), LevelResult::Running);
    EXPECT_EQ(p.clickCentre(p.level.fuses[(p.level.blown + 1) % 5]), LevelResult::Running);
    EXPECT_FALSE(p.level.live);
    EXPECT_TRUE(p.level.replaced);
}

TEST(FuseboxStation, ThePassPlaysItsSoundOnTheMasterClick) {
    test::StationBench bench(test::shippedRecord("fusebox"), 3);
    auto& level = dynamic_cast<FuseboxLevel&>(*bench.station);
    level.live = false;
    level.replaced = true;
    test::pushMotion(level.master.x + 5, level.master.y + 5);
    test::pushButton(true, level.master.x + 5, level.master.y + 5);
    EXPECT_EQ(bench.frame(1.0 / 60.0), LevelResult::Solved);
    EXPECT_TRUE(bench.lastSoundWasPass());
}

TEST(FuseboxStation, LiveBoxShowsARedMasterAndTheBlownFuseMarked) {
    Panel<FuseboxLevel> p(5489);   // blown fuse 2
    test::SoftwareCanvas canvas;
    canvas.useGameFonts();
    canvas.graphics.clear(rgb(0, 0, 0));
    p.level.render(canvas.graphics);
    const Rect& m = p.level.master;
    EXPECT_EQ(canvas.pixel(m.x + 3, m.y + 10), rgb(178, 40, 29));
    const Rect& blown = p.level.fuses[2];
    const Rect& good = p.level.fuses[0];
    EXPECT_EQ(canvas.pixel(blown.x + 3, blown.y + 45), rgb(119, 92, 31));
    EXPECT_EQ(canvas.pixel(blown.x + 12, blown.y + 12), rgb(127, 29, 21));
    EXPECT_EQ(canvas.pixel(good.x + 3, good.y + 45), rgb(119, 92, 31));
    EXPECT_EQ(canvas.pixel(good.x + 12, good.y + 12), kInk);
    // The X over the blown fuse, and the warning line near the bottom.
    EXPECT_TRUE(anyPixelNear(canvas, {blown.x + 8, blown.y + 8, 54, 74}, rgb(255, 58, 42)));
    EXPECT_FALSE(anyPixelNear(canvas, {good.x + 8, good.y + 8, 54, 74}, rgb(255, 58, 42)));
    EXPECT_TRUE(anyPixelNear(canvas, {463, 602, 440, 24}, rgb(204, 46, 33)));
    EXPECT_FALSE(anyPixelNear(canvas, {263, 560, 840, 40}, rgb(204, 46, 33)));
}

TEST(FuseboxStation, SafeBoxShowsAGreenMasterAndTheNewFuseGreen) {
    Panel<FuseboxLevel> p(5489);
    p.clickCentre(p.level.master);
    p.clickCentre(p.level.fuses[p.level.blown]);
    test::SoftwareCanvas canvas;
    canvas.useGameFonts();
    canvas.graphics.clear(rgb(0, 0, 0));
    p.level.render(canvas.graphics);
    const Rect& m = p.level.master;
    EXPECT_EQ(canvas.pixel(m.x + 3, m.y + 10), rgb(42, 134, 82));
    const Rect& blown = p.level.fuses[2];
    EXPECT_EQ(canvas.pixel(blown.x + 12, blown.y + 12), kGreen);
    EXPECT_EQ(canvas.pixel(blown.x + 35, blown.y + 45), kGreen);   // no X any more
    EXPECT_TRUE(anyPixelNear(canvas, {463, 602, 440, 24}, rgb(56, 179, 110)));
    EXPECT_FALSE(anyPixelNear(canvas, {263, 560, 840, 60}, rgb(204, 46, 33)));
}

// ------------------------------------------------------------------- Valve

TEST(ValveStation, WheelTwoThirdsAcrossAndNoDraws) {
    Panel<ValveLevel> p(5489);
    EXPECT_EQ(p.level.cx, 823);   // 263 + 1680 / 3
    EXPECT_EQ(p.level.cy, 405);
    EXPECT_EQ(p.level.radius, 86);
    EXPECT_DOUBLE_EQ(p.level.fill, 0.15);
    EXPECT_DOUBLE_EQ(p.level.angle, 0.0);
    EXPECT_FALSE(p.level.grabbed);
    EXPECT_EQ(p.rng, Rng(5489));
}

TEST(ValveStation, DraggingLeftFillsTheGaugeAndTurnsTheWheelBack) {
    Panel<ValveLevel> p;
    const int cx = p.level.cx;
    const int cy = p.level.cy;
    EXPECT_EQ(p.press(cx + 40, cy), LevelResult::Running);
    EXPECT_TRUE(p.level.grabbed);
    EXPECT_EQ(p.moveTo(cx - 60, cy), LevelResult::Running);
    EXPECT_NEAR(p.level.fill, 0.15 + 0.16, 1e-9);
    EXPECT_NEAR(p.level.angle, -60.0, 1e-9);
}

TEST(ValveStation, VerticalMotionDoesNotTurnTheWheel) {
    Panel<ValveLevel> p;
    p.press(p.level.cx, p.level.cy + 50);
    p.moveTo(p.level.cx, p.level.cy - 50);
    EXPECT_DOUBLE_EQ(p.level.fill, 0.15);
    EXPECT_DOUBLE_EQ(p.level.angle, 0.0);
}

TEST(ValveStation, ThePressMustLandWithinTwentyPixelsOfTheRim) {
    Panel<ValveLevel> p;
    p.press(p.level.cx + 106, p.level.cy);   // d = 106 is not < 86 + 20
    EXPECT_FALSE(p.level.grabbed);
    p.moveTo(p.level.cx - 100, p.level.cy);
    EXPECT_DOUBLE_EQ(p.level.fill, 0.15);
    p.release();
    p.press(p.level.cx + 105, p.level.cy);
    EXPECT_TRUE(p.level.grabbed);
    // Holding the button over the wheel without a fresh press grabs nothing.
    p.release();
    p.in.mouseDown = true;
    p.moveTo(p.level.cx, p.level.cy);
    EXPECT_FALSE(p.level.grabbed);
}

TEST(ValveStation, ADragKeepsWorkingOutsideTheWheelWhileTheButtonIsHeld) {
    Panel<ValveLevel> p;
    const int cx = p.level.cx;
    const int cy = p.level.cy;
    p.press(cx + 50, cy);
    p.moveTo(cx - 200, cy + 250);   // far outside the grab ring
    EXPECT_TRUE(p.level.grabbed);
    EXPECT_NEAR(p.level.fill, 0.15 + 0.0016 * 250, 1e-9);
    p.moveTo(cx - 300, cy + 250);
    EXPECT_NEAR(p.level.fill, 0.15 + 0.0016 * 350, 1e-9);
    // Letting go drops the wheel: later motion does nothing.
    p.release();
    EXPECT_FALSE(p.level.grabbed);
    const double before = p.level.fill;
    p.moveTo(cx - 400, cy + 250);
    EXPECT_DOUBLE_EQ(p.level.fill, before);
}

TEST(ValveStation, DraggingRightDrainsToZeroAndStaysThereWithoutFailing) {
    Panel<ValveLevel> p;
    const int cx = p.level.cx;
    const int cy = p.level.cy;
    EXPECT_EQ(p.press(cx, cy), LevelResult::Running);
    for (int step = 1; step <= 40; ++step) {
        EXPECT_EQ(p.moveTo(cx + 10 * step, cy), LevelResult::Running) << step;
    }
    EXPECT_DOUBLE_EQ(p.level.fill, 0.0);
    EXPECT_TRUE(p.level.emptied);
    EXPECT_NEAR(p.level.angle, 240.0, 1e-9);   // the wheel itself turns on
    // Clamped at zero, not below: ten pixels back left show at once.
    p.moveTo(cx + 390, cy);
    EXPECT_NEAR(p.level.fill, 0.016, 1e-9);
}

TEST(ValveStation, FillingToTheMarkPassesWithThePassSound) {
    test::StationBench bench(test::shippedRecord("valve"), 1);
    const auto& level = dynamic_cast<const ValveLevel&>(*bench.station);
    int x = level.cx + 60;
    test::pushMotion(x, level.cy);
    test::pushButton(true, x, level.cy);
    EXPECT_EQ(bench.frame(1.0 / 60.0), LevelResult::Running);
    // 0.985 - 0.15 = 0.835 needs 521.9 px to the left: 522 px in 29 steps of 18.
    for (int step = 1; step < 29; ++step) {
        x -= 18;
        test::pushMotion(x, level.cy);
        ASSERT_EQ(bench.frame(1.0 / 60.0), LevelResult::Running) << step;
    }
    x -= 18;
    test::pushMotion(x, level.cy);
    EXPECT_EQ(bench.frame(1.0 / 60.0), LevelResult::Solved);
    EXPECT_TRUE(bench.lastSoundWasPass());
}

TEST(ValveStation, GaugeWheelAndTheLyingLabel) {
    Panel<ValveLevel> p;
    test::SoftwareCanvas canvas;
    canvas.useGameFonts();
    canvas.graphics.clear(rgb(0, 0, 0));
    p.level.render(canvas.graphics);
    const int gx = 473;   // 263 + 840 / 4
    const int gy = 405;
    EXPECT_EQ(canvas.pixel(gx - 66, gy), rgb(99, 77, 26));      // gauge rim
    EXPECT_EQ(canvas.pixel(gx, gy - 20), kInk);                 // above the level
    EXPECT_EQ(canvas.pixel(gx, gy + 50), kOrange);              // level: 16 px up from gy + 55
    EXPECT_EQ(canvas.pixel(gx, gy + 37), kInk);
    EXPECT_EQ(canvas.pixel(gx - 25, gy - 50), kGreen);          // target mark
    const int cx = p.level.cx;
    const int cy = p.level.cy;
    EXPECT_EQ(canvas.pixel(cx + 72, cy + 29), rgb(109, 84, 29));  // rim, between spokes
    EXPECT_EQ(canvas.pixel(cx + 46, cy + 19), rgb(16, 36, 15));   // face, between spokes
    EXPECT_EQ(canvas.pixel(cx + 50, cy + 2), rgb(199, 154, 53));  // the level spoke
    EXPECT_EQ(canvas.pixel(cx + 15, cy + 8), rgb(199, 154, 53));  // hub
    // "OPEN >" sits right of the rim, level with its top, in alarm red.
    EXPECT_TRUE(anyPixelNear(canvas, {cx + 86 + 8, cy - 86, 80, 26}, rgb(255, 58, 42)));
}

TEST(ValveStation, TheSpokesFollowTheAngleAndTheLevelFollowsTheFill) {
    Panel<ValveLevel> p;
    p.level.angle = 22.5;
    p.level.fill = 1.0;
    test::SoftwareCanvas canvas;
    canvas.graphics.clear(rgb(0, 0, 0));
    p.level.render(canvas.graphics);
    const int cx = p.level.cx;
    const int cy = p.level.cy;
    EXPECT_EQ(canvas.pixel(cx + 46, cy + 19), rgb(199, 154, 53));
    EXPECT_EQ(canvas.pixel(cx + 50, cy + 2), rgb(16, 36, 15));
    EXPECT_EQ(canvas.pixel(473, 405 - 20), kOrange);   // 110 px of level
}

// ---------------------------------------------------------------- Gauntlet

TEST(GauntletStation, SwitchValveAndDashLeftToRightAndNoDraws) {
    Panel<GauntletLevel> p(5489);
    EXPECT_EQ(p.level.stage, 0);
    EXPECT_EQ(p.level.switchRect.x, 323);
    EXPECT_EQ(p.level.switchRect.y, 375);
    EXPECT_EQ(p.level.switchRect.w, 80);
    EXPECT_EQ(p.level.switchRect.h, 60);
    EXPECT_EQ(p.level.valveX, 683);
    EXPECT_EQ(p.level.valveY, 405);
    EXPECT_EQ(p.level.dashRect.x, 923);
    EXPECT_EQ(p.level.dashRect.y, 380);
    EXPECT_EQ(p.level.dashRect.w, 130);
    EXPECT_EQ(p.level.dashRect.h, 50);
    EXPECT_DOUBLE_EQ(p.level.fill, 0.15);
    EXPECT_EQ(p.rng, Rng(5489));
}

TEST(GauntletStation, DashingBeforeTheSwitchFailsWithTheFailSound) {
    test::StationBench bench(test::shippedRecord("gauntlet"), 1);
    const auto& level = dynamic_cast<const GauntletLevel&>(*bench.station);
    const Rect& d = level.dashRect;
    test::pushMotion(d.x + 20, d.y + 20);
    test::pushButton(true, d.x + 20, d.y + 20);
    EXPECT_EQ(bench.frame(1.0 / 60.0), LevelResult::Failed);
    EXPECT_TRUE(bench.lastSoundWasFail());
}

TEST(GauntletStation, TheValveIsInertUntilTheSwitchIsThrown) {
    Panel<GauntletLevel> p;
    p.press(p.level.valveX + 20, p.level.valveY);
    p.moveTo(p.level.valveX - 300, p.level.valveY);
    EXPECT_FALSE(p.level.grabbed);
    EXPECT_DOUBLE_EQ(p.level.fill, 0.15);
    EXPECT_EQ(p.level.stage, 0);
}

TEST(GauntletStation, TheSwitchOpensTheValveStage) {
    Panel<GauntletLevel> p;
    EXPECT_EQ(p.clickCentre(p.level.switchRect), LevelResult::Running);
    EXPECT_EQ(p.level.stage, 1);
    // Throwing it again changes nothing.
    EXPECT_EQ(p.clickCentre(p.level.switchRect), LevelResult::Running);
    EXPECT_EQ(p.level.stage, 1);
}

TEST(GauntletStation, InTheValveStageADashClickIsIgnoredNotAFailure) {
    Panel<GauntletLevel> p;
    p.clickCentre(p.level.switchRect);
    EXPECT_EQ(p.clickCentre(p.level.dashRect), LevelResult::Running);
    EXPECT_EQ(p.level.stage, 1);
}

TEST(GauntletStation, TheValveGrabsWithinAHundredPixelsAndFillsByDraggingLeft) {
    Panel<GauntletLevel> p;
    p.clickCentre(p.level.switchRect);
    const int vx = p.level.valveX;
    const int vy = p.level.valveY;
    p.press(vx + 100, vy);
    EXPECT_FALSE(p.level.grabbed);
    p.release();
    p.press(vx + 99, vy);
    EXPECT_TRUE(p.level.grabbed);
    p.moveTo(vx + 199, vy);   // right drains
    EXPECT_DOUBLE_EQ(p.level.fill, 0.0);
    p.moveTo(vx - 1, vy);
    EXPECT_NEAR(p.level.fill, 0.32, 1e-9);
    EXPECT_NEAR(p.level.angle, -60.0, 1e-9);
    EXPECT_EQ(p.level.stage, 1);
}

TEST(GauntletStation, AFullValveLightsTheDashButtonWhichThenPasses) {
    test::StationBench bench(test::shippedRecord("gauntlet"), 2);
    const auto& level = dynamic_cast<const GauntletLevel&>(*bench.station);
    const Rect& s = level.switchRect;
    test::pushMotion(s.x + 10, s.y + 10);
    test::pushButton(true, s.x + 10, s.y + 10);
    test::pushButton(false, s.x + 10, s.y + 10);
    EXPECT_EQ(bench.frame(1.0 / 60.0), LevelResult::Running);
    EXPECT_EQ(level.stage, 1);

    int x = level.valveX + 90;
    test::pushMotion(x, level.valveY);
    test::pushButton(true, x, level.valveY);
    EXPECT_EQ(bench.frame(1.0 / 60.0), LevelResult::Running);
    for (int step = 0; step < 30 && level.stage == 1; ++step) {
        x -= 20;
        test::pushMotion(x, level.valveY);
        EXPECT_EQ(bench.frame(1.0 / 60.0), LevelResult::Running);
    }
    EXPECT_EQ(level.stage, 2);
    EXPECT_GE(level.fill, 0.985);
    EXPECT_FALSE(bench.lastSoundWasPass());   // only a click so far
    test::pushButton(false, x, level.valveY);
    EXPECT_EQ(bench.frame(1.0 / 60.0), LevelResult::Running);

    const Rect& d = level.dashRect;
    test::pushMotion(d.x + 5, d.y + 5);
    test::pushButton(true, d.x + 5, d.y + 5);
    EXPECT_EQ(bench.frame(1.0 / 60.0), LevelResult::Solved);
    EXPECT_TRUE(bench.lastSoundWasPass());
}

TEST(GauntletStation, ClicksAwayFromTheDashButtonDoNotPassTheLastStage) {
    Panel<GauntletLevel> p;
    p.level.stage = 2;
    EXPECT_EQ(p.clickCentre(p.level.switchRect), LevelResult::Running);
    EXPECT_EQ(p.click(p.level.valveX, p.level.valveY), LevelResult::Running);
    EXPECT_EQ(p.click(p.level.dashRect.x + p.level.dashRect.w, p.level.dashRect.y), LevelResult::Running);
    EXPECT_EQ(p.level.stage, 2);
    EXPECT_EQ(p.click(p.level.dashRect.x, p.level.dashRect.y), LevelResult::Solved);
}

// Probes of one stage's drawing: switch, valve disc, valve spoke, dash.
struct GauntletLook {
    Color switchPlate;
    Color valveDisc;
    Color valveSpoke;
    Color dashButton;
    Color line;
};

void expectGauntletLook(int stage, const GauntletLook& look) {
    Panel<GauntletLevel> p;
    p.level.stage = stage;
    test::SoftwareCanvas canvas;
    canvas.useGameFonts();
    canvas.graphics.clear(rgb(0, 0, 0));
    p.level.render(canvas.graphics);
    const Rect& s = p.level.switchRect;
    const Rect& d = p.level.dashRect;
    const int vx = p.level.valveX;
    const int vy = p.level.valveY;
    EXPECT_EQ(canvas.pixel(s.x + 5, s.y + 10), look.switchPlate) << "stage " << stage;
    EXPECT_EQ(canvas.pixel(vx + 46, vy + 19), look.valveDisc) << "stage " << stage;
    EXPECT_EQ(canvas.pixel(vx + 50, vy + 2), look.valveSpoke) << "stage " << stage;
    EXPECT_EQ(canvas.pixel(vx + 60, vy + 5), look.valveDisc) << "stage " << stage;   // spoke is 9 px
    EXPECT_EQ(canvas.pixel(d.x + 12, d.y + 4), look.dashButton) << "stage " << stage;
    EXPECT_TRUE(anyPixelNear(canvas, {463, 604, 440, 24}, look.line)) << "stage " << stage;
}

TEST(GauntletStation, EachStageLightsItsOwnPart) {
    expectGauntletLook(0, {rgb(119, 92, 31), rgb(59, 46, 15), rgb(119, 92, 31), rgb(30, 30, 30),
                           rgb(204, 136, 36)});
    expectGauntletLook(1, {rgb(35, 112, 69), rgb(127, 85, 23), rgb(255, 170, 46), rgb(30, 30, 30),
                           rgb(204, 136, 36)});
    expectGauntletLook(2, {rgb(35, 112, 69), rgb(35, 112, 69), rgb(70, 224, 138), rgb(229, 194, 96),
                           rgb(204, 136, 36)});
}

}  // namespace
}  // namespace vorn

namespace vorn::test {
namespace {

TEST(PanelSolvers, ClearTheBreakerRowOnEveryDifficulty) {
    EXPECT_EQ(unsolvedRuns("switches"), "");
}

TEST(PanelSolvers, ClearTheFuseboxOnEveryDifficulty) {
    EXPECT_EQ(unsolvedRuns("fusebox"), "");
}

TEST(PanelSolvers, ClearTheValveOnEveryDifficulty) {
    EXPECT_EQ(unsolvedRuns("valve"), "");
}

TEST(PanelSolvers, ClearTheStartupChecklistOnEveryDifficulty) {
    EXPECT_EQ(unsolvedRuns("gauntlet"), "");
}

}  // namespace
}  // namespace vorn::test
