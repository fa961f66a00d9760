// The control-panel stations: breaker levers, the fuse box, the valve wheel
// and the start-up checklist; their rules and their sounds. What they draw is
// checked in panel_station_pictures_test.cpp.

#include "audio/audio_system.h"
#include "data/level_catalogue.h"
#include "stations/level_factory.h"
#include "stations/panel_stations.h"
#include "support/draws_by_hand.h"
#include "support/station_driver.h"
#include "support/station_sounds.h"

#include <gtest/gtest.h>

#include <cstdint>
#include <string>
#include <vector>

namespace vorn {
namespace {

// A station driven directly: a seeded engine, the run's play area, a
// hand-filled input and an audio system that was never opened but logs every
// sound asked of it. Every update is held to its verdict sounds (pass right
// before Solved, fail right before Failed, no pass while running).
template <typename L>
struct Panel {
    L level;
    Rng rng;
    std::vector<std::string> sounds;   // every sound request, in order
    AudioSystem silent;
    InputState in;

    explicit Panel(std::uint32_t seed = 5489) : rng(seed) {
        silent.requestLog = &sounds;
        level.setup(LevelDef{}, rng, kPlayArea);
    }
    Panel(const Panel&) = delete;
    Panel& operator=(const Panel&) = delete;

    LevelResult step() {
        const std::size_t before = sounds.size();
        const LevelResult r = level.update(0.016, in, silent);
        EXPECT_TRUE(test::soundsFitVerdict(r, sounds, before));
        return r;
    }
    // The sounds asked for since the log held `from` requests.
    std::vector<std::string> soundsSince(std::size_t from) const { return test::soundsFrom(sounds, from); }

    // A frame with nothing new: the pointer and the button as they were.
    LevelResult idle() {
        in.clearEdges();
        return step();
    }
    LevelResult press(int x, int y) {
        in.clearEdges();
        in.mouseX = x;
        in.mouseY = y;
        in.mouseDown = true;
        in.mousePressed = true;
        return step();
    }
    LevelResult moveTo(int x, int y) {
        in.clearEdges();
        in.mouseX = x;
        in.mouseY = y;
        return step();
    }
    LevelResult release() {
        in.clearEdges();
        in.mouseDown = false;
        in.mouseReleased = true;
        return step();
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

using Sounds = std::vector<std::string>;

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
    const std::size_t n = p.sounds.size();
    EXPECT_EQ(p.press(p.level.rects[0].x - 10, p.level.rects[0].y), LevelResult::Solved);
    EXPECT_EQ(p.soundsSince(n), (Sounds{"pass"}));   // no click: nothing was hit
}

// The first seed whose six levers are all dealt down, by the top bits of a
// plain MT19937 (66, worked out once).
TEST(SwitchesStation, SeedSixtySixIsTheFirstToDealEveryLeverDown) {
    EXPECT_EQ(allDownSeed(), 66u);
    Panel<SwitchesLevel> p(66);
    for (int i = 0; i < 6; ++i) {
        EXPECT_FALSE(p.level.up[i]) << i;
    }
}

TEST(SwitchesStation, ARowDealtAllDownPassesBeforeAnyInputWithOnlyThePassSound) {
    Panel<SwitchesLevel> p(66);
    ASSERT_TRUE(p.sounds.empty());
    EXPECT_EQ(p.idle(), LevelResult::Solved);
    EXPECT_EQ(p.sounds, (Sounds{"pass"}));
}

TEST(SwitchesStation, AClickOnALeverClicksOnceAndClicksBesideTheLeversAreSilent) {
    Panel<SwitchesLevel> p(5489);   // up: 1 0 1 1 0 1
    std::size_t n = p.sounds.size();
    EXPECT_EQ(p.press(482, 360), LevelResult::Running);   // lever 1 (x 477), dealt down, flips up
    EXPECT_EQ(p.soundsSince(n), (Sounds{"click"}));
    EXPECT_TRUE(p.level.up[1]);
    n = p.sounds.size();
    EXPECT_EQ(p.release(), LevelResult::Running);
    EXPECT_EQ(p.idle(), LevelResult::Running);
    EXPECT_EQ(p.soundsSince(n), Sounds{});
    EXPECT_EQ(p.press(482, 360), LevelResult::Running);   // and back down: a click again
    EXPECT_EQ(p.soundsSince(n), (Sounds{"click"}));
    EXPECT_FALSE(p.level.up[1]);
    p.release();
    n = p.sounds.size();
    // Between plates 0 and 1, just above lever 2 and just below lever 3.
    EXPECT_EQ(p.click(409, 400), LevelResult::Running);
    EXPECT_EQ(p.click(597 + 20, 354), LevelResult::Running);
    EXPECT_EQ(p.click(717 + 20, 455), LevelResult::Running);
    EXPECT_EQ(p.soundsSince(n), Sounds{});
    const bool dealt[6] = {true, false, true, true, false, true};
    for (int i = 0; i < 6; ++i) {
        EXPECT_EQ(p.level.up[i], dealt[i]) << i;
    }
}

TEST(SwitchesStation, FlippingTheLastAmberLeverDownClicksAndPassesInThatFrame) {
    Panel<SwitchesLevel> p(5489);
    for (bool& lever : p.level.up) {
        lever = false;
    }
    p.level.up[4] = true;
    const std::size_t n = p.sounds.size();
    EXPECT_EQ(p.press(837 + 26, 355 + 50), LevelResult::Solved);   // lever 4
    EXPECT_EQ(p.soundsSince(n), (Sounds{"click", "pass"}));
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

TEST(FuseboxStation, EveryStepOfTheElectriciansOrderClicksAndTheLastAlsoPasses) {
    Panel<FuseboxLevel> p(5489);   // blown fuse 2: x 648..717, centre (683, 355)
    std::size_t n = p.sounds.size();
    EXPECT_EQ(p.press(683, 238), LevelResult::Running);   // master off
    EXPECT_EQ(p.soundsSince(n), (Sounds{"click"}));
    EXPECT_FALSE(p.level.live);
    n = p.sounds.size();
    EXPECT_EQ(p.release(), LevelResult::Running);
    EXPECT_EQ(p.soundsSince(n), Sounds{});
    EXPECT_EQ(p.press(683, 355), LevelResult::Running);   // the blown fuse swapped
    EXPECT_EQ(p.soundsSince(n), (Sounds{"click"}));
    EXPECT_TRUE(p.level.replaced);
    p.release();
    n = p.sounds.size();
    EXPECT_EQ(p.press(683, 238), LevelResult::Solved);   // master on again
    EXPECT_EQ(p.soundsSince(n), (Sounds{"click", "pass"}));
}

TEST(FuseboxStation, GoodFusesOnlyClickLiveOrOff) {
    Panel<FuseboxLevel> p(5489);
    const int goodCentres[4] = {503, 593, 773, 863};   // fuses 0, 1, 3, 4
    for (const bool live : {true, false}) {
        for (const int x : goodCentres) {
            const std::size_t n = p.sounds.size();
            EXPECT_EQ(p.press(x, 355), LevelResult::Running) << x;
            EXPECT_EQ(p.soundsSince(n), (Sounds{"click"})) << x;
            p.release();
            EXPECT_EQ(p.level.live, live);
            EXPECT_FALSE(p.level.replaced);
        }
        p.click(683, 238);
    }
}

TEST(FuseboxStation, TheBlownFuseUnderPowerFailsWithOnlyTheFailSound) {
    Panel<FuseboxLevel> p(11);   // blown fuse 1: 774252441 % 5
    ASSERT_EQ(p.level.blown, 1);
    EXPECT_EQ(p.press(558, 310), LevelResult::Failed);   // its top-left corner
    EXPECT_EQ(p.sounds, (Sounds{"fail"}));
}

TEST(FuseboxStation, TheMasterClicksEachWayAndTheNewFuseClicksAgainWhenTouched) {
    Panel<FuseboxLevel> p(5489);
    std::size_t n = p.sounds.size();
    EXPECT_EQ(p.click(623, 210), LevelResult::Running);   // off, at the master's corner
    EXPECT_EQ(p.click(742, 265), LevelResult::Running);   // on, at the opposite corner
    EXPECT_EQ(p.soundsSince(n), (Sounds{"click", "click"}));
    EXPECT_TRUE(p.level.live);
    p.click(683, 238);
    p.click(683, 355);
    n = p.sounds.size();
    EXPECT_EQ(p.click(683, 355), LevelResult::Running);
    EXPECT_EQ(p.soundsSince(n), (Sounds{"click"}));
    EXPECT_TRUE(p.level.replaced);
}

TEST(FuseboxStation, ClicksOffTheHardwareAndFramesWithoutAClickAreSilent) {
    Panel<FuseboxLevel> p(5489);
    // Beside the master, between fuses 0 and 1, below fuse 2, and the frames
    // with the button held or let go over the blown fuse while live.
    EXPECT_EQ(p.click(743, 238), LevelResult::Running);
    EXPECT_EQ(p.click(545, 355), LevelResult::Running);
    EXPECT_EQ(p.click(683, 400), LevelResult::Running);
    p.in.mouseDown = true;
    EXPECT_EQ(p.moveTo(683, 355), LevelResult::Running);
    EXPECT_EQ(p.release(), LevelResult::Running);
    EXPECT_EQ(p.sounds, Sounds{});
    EXPECT_TRUE(p.level.live);
    EXPECT_FALSE(p.level.replaced);
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

TEST(ValveStation, FillingTheGaugeIsSilentUntilThePassSound) {
    Panel<ValveLevel> p;
    // From x 883, 522 px to the left in 29 steps of 18: 0.15 + 0.0016 x 504
    // = 0.9564 after 28 steps, full after the 29th.
    int x = 883;
    EXPECT_EQ(p.press(x, 405), LevelResult::Running);
    for (int step = 1; step <= 28; ++step) {
        x -= 18;
        ASSERT_EQ(p.moveTo(x, 405), LevelResult::Running) << step;
    }
    EXPECT_EQ(p.sounds, Sounds{});
    EXPECT_EQ(p.moveTo(x - 18, 405), LevelResult::Solved);
    EXPECT_EQ(p.sounds, (Sounds{"pass"}));
}

TEST(ValveStation, DrainingTheGaugeDryMakesNoSound) {
    Panel<ValveLevel> p;
    p.press(823, 405);
    for (int step = 1; step <= 20; ++step) {
        EXPECT_EQ(p.moveTo(823 + 10 * step, 405), LevelResult::Running);
    }
    p.release();
    EXPECT_DOUBLE_EQ(p.level.fill, 0.0);
    EXPECT_EQ(p.sounds, Sounds{});
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
    test::StationDriver bench(test::shippedRecord("gauntlet"), 2);
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

TEST(GauntletStation, InTheFirstStageOnlyTheSwitchClicksAndOtherClicksAreSilent) {
    Panel<GauntletLevel> p;
    // The valve's hub, empty panel, and just outside the dash button.
    EXPECT_EQ(p.click(683, 405), LevelResult::Running);
    EXPECT_EQ(p.click(500, 250), LevelResult::Running);
    EXPECT_EQ(p.click(922, 405), LevelResult::Running);
    EXPECT_EQ(p.sounds, Sounds{});
    EXPECT_EQ(p.level.stage, 0);
    EXPECT_EQ(p.press(323, 375), LevelResult::Running);   // the switch's corner
    EXPECT_EQ(p.sounds, (Sounds{"click"}));
    EXPECT_EQ(p.level.stage, 1);
}

TEST(GauntletStation, AnEarlyDashFailsWithOnlyTheFailSound) {
    Panel<GauntletLevel> p;
    EXPECT_EQ(p.press(1052, 429), LevelResult::Failed);   // the dash button's far corner
    EXPECT_EQ(p.sounds, (Sounds{"fail"}));
}

TEST(GauntletStation, InTheValveStageTheSwitchAndTheDashAreIgnoredWithoutASound) {
    Panel<GauntletLevel> p;
    p.click(363, 405);
    const std::size_t n = p.sounds.size();
    EXPECT_EQ(p.click(988, 405), LevelResult::Running);   // dash: no buzz, no verdict
    EXPECT_EQ(p.click(363, 405), LevelResult::Running);   // switch again: no click
    EXPECT_EQ(p.soundsSince(n), Sounds{});
    EXPECT_EQ(p.level.stage, 1);
    EXPECT_DOUBLE_EQ(p.level.fill, 0.15);
}

TEST(GauntletStation, TheFullValveClicksOnceThenItIsInertAndOnlyTheDashPasses) {
    Panel<GauntletLevel> p;
    p.click(363, 405);
    std::size_t n = p.sounds.size();
    int x = 773;   // grabbed 90 px right of the hub
    EXPECT_EQ(p.press(x, 405), LevelResult::Running);
    // 0.15 + 26 x 0.032 = 0.982 is still short; the 27th step of 20 px fills it.
    for (int step = 1; step <= 26; ++step) {
        x -= 20;
        ASSERT_EQ(p.moveTo(x, 405), LevelResult::Running) << step;
        ASSERT_EQ(p.level.stage, 1) << step;
    }
    EXPECT_EQ(p.soundsSince(n), Sounds{});
    x -= 20;
    EXPECT_EQ(p.moveTo(x, 405), LevelResult::Running);
    EXPECT_EQ(p.level.stage, 2);
    EXPECT_EQ(p.soundsSince(n), (Sounds{"click"}));
    n = p.sounds.size();
    // The wheel no longer turns, and the switch and the valve are silent.
    const double angle = p.level.angle;
    EXPECT_EQ(p.moveTo(x + 300, 405), LevelResult::Running);
    EXPECT_DOUBLE_EQ(p.level.angle, angle);
    EXPECT_DOUBLE_EQ(p.level.fill, 1.0);
    p.release();
    EXPECT_EQ(p.click(363, 405), LevelResult::Running);
    EXPECT_EQ(p.click(683, 405), LevelResult::Running);
    EXPECT_EQ(p.soundsSince(n), Sounds{});
    EXPECT_EQ(p.press(988, 405), LevelResult::Solved);
    EXPECT_EQ(p.soundsSince(n), (Sounds{"pass"}));
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
