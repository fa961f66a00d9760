// The dial, slider and balance stations: thermostat dial, combination lock,
// sensor calibration and shipping scale; their rules and their sounds. What
// they draw is checked in dial_station_pictures_test.cpp.

#include "audio/audio_system.h"
#include "data/level_catalogue.h"
#include "stations/dial_stations.h"
#include "stations/level_factory.h"
#include "support/draws_by_hand.h"
#include "support/solvers/family_solvers.h"
#include "support/station_driver.h"
#include "support/station_sounds.h"

#include <gtest/gtest.h>

#include <cstdint>
#include <string>
#include <vector>

namespace vorn {
namespace {

// A station of type T set up in the run's play area, fed hand-filled input
// with a sound system that was never opened but logs every sound asked of
// it. Every update is held to its verdict sounds (pass right before Solved,
// never while running).
template <typename T>
struct Station : ::testing::Test {
    T level;
    Rng rng{2024};
    std::vector<std::string> sounds;  // every sound request, in order
    AudioSystem silent;
    InputState in;

    void SetUp() override {
        silent.requestLog = &sounds;
        level.setup(LevelDef{}, rng, kPlayArea);
    }

    LevelResult step() {
        const std::size_t before = sounds.size();
        const LevelResult r = level.update(1.0 / 60, in, silent);
        EXPECT_TRUE(test::soundsFitVerdict(r, sounds, before));
        return r;
    }
    // The sounds asked for since the log held `from` requests.
    std::vector<std::string> soundsSince(std::size_t from) const {
        return test::soundsFrom(sounds, from);
    }

    LevelResult idle() {
        in.mousePressed = in.mouseReleased = false;
        return step();
    }
    LevelResult moveTo(int x, int y) {
        in.mouseX = x;
        in.mouseY = y;
        return idle();
    }
    LevelResult press(int x, int y) {
        in.mouseX = x;
        in.mouseY = y;
        in.mouseDown = true;
        in.mousePressed = true;
        in.mouseReleased = false;
        return step();
    }
    LevelResult release() {
        in.mouseDown = false;
        in.mousePressed = false;
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
};

using Sounds = std::vector<std::string>;

// ---------------------------------------------------------------- Dial

using DialStation = Station<DialLevel>;

TEST_F(DialStation, KnobSitsInTheMiddleOfThePlayAreaWithRadiusNinety) {
    EXPECT_EQ(level.centerX, 683);
    EXPECT_EQ(level.centerY, 405);
    EXPECT_EQ(level.radius, 90);
    EXPECT_EQ(level.value, 0.0);
    EXPECT_FALSE(level.grabbed);
}

TEST_F(DialStation, TargetIsPointFiftyFivePlusAQuarterOfOneUniformRealDraw) {
    Rng ref(2024);
    const double expected = 0.55 + 0.25 * test::uniformRealByHand(ref);
    EXPECT_DOUBLE_EQ(level.target, expected);
    EXPECT_EQ(rng, ref);  // two raw draws, nothing more
}

TEST_F(DialStation, TargetStaysWithinPointFiftyFiveToPointEighty) {
    for (std::uint32_t seed = 1; seed <= 200; ++seed) {
        DialLevel d;
        Rng r(seed);
        d.setup(LevelDef{}, r, kPlayArea);
        EXPECT_GE(d.target, 0.55);
        EXPECT_LT(d.target, 0.80);
    }
}

TEST_F(DialStation, DraggingRightTurnsTheKnobByAQuarterPercentPerPixel) {
    press(600, 405);
    EXPECT_TRUE(level.grabbed);
    moveTo(640, 405);
    EXPECT_NEAR(level.value, 0.1, 1e-12);
    moveTo(620, 300);  // only sideways movement turns it
    EXPECT_NEAR(level.value, 0.05, 1e-12);
}

TEST_F(DialStation, GrabsOnlyWithinTwentyPixelsOutsideTheRim) {
    press(683 - 110, 405);  // exactly radius + 20 away: not closer
    EXPECT_FALSE(level.grabbed);
    moveTo(683, 405);
    EXPECT_EQ(level.value, 0.0);
    release();
    press(683 - 109, 405);
    EXPECT_TRUE(level.grabbed);
}

TEST_F(DialStation, LettingGoDropsTheKnob) {
    press(650, 405);
    moveTo(690, 405);
    release();
    EXPECT_FALSE(level.grabbed);
    const double turned = level.value;
    moveTo(730, 405);
    EXPECT_EQ(level.value, turned);
}

TEST_F(DialStation, TurningLeftBelowZeroClampsAtZero) {
    press(700, 405);
    moveTo(600, 405);
    EXPECT_EQ(level.value, 0.0);
    // The stop holds: turning back right starts from zero, not from -0.25.
    moveTo(640, 405);
    EXPECT_NEAR(level.value, 0.1, 1e-12);
}

TEST_F(DialStation, OvershootResetsToZeroInThatSameFrame) {
    level.target = 0.6;
    press(600, 405);
    moveTo(600 + 260, 405);  // 0.65: past the band but within the grace
    ASSERT_NEAR(level.value, 0.65, 1e-12);
    EXPECT_EQ(moveTo(600 + 260 + 13, 405), LevelResult::Running);  // 0.6825 > 0.68
    EXPECT_EQ(level.value, 0.0);
    EXPECT_TRUE(level.grabbed);  // the hand still holds it
}

TEST_F(DialStation, JustUnderTheOvershootLimitIsNeitherResetNorAccepted) {
    level.target = 0.6;
    press(600, 405);
    EXPECT_EQ(moveTo(600 + 271, 405), LevelResult::Running);  // 0.6775 <= 0.68
    EXPECT_NEAR(level.value, 0.6775, 1e-12);
}

TEST_F(DialStation, InsideTheGreenArcButMoreThanPointZeroThreeOffIsNotAccepted) {
    level.target = 0.6;
    press(600, 405);
    EXPECT_EQ(moveTo(600 + 224, 405), LevelResult::Running);  // 0.56: drawn green, not accepted
    EXPECT_EQ(moveTo(600 + 256, 405), LevelResult::Running);  // 0.64: likewise above
    EXPECT_EQ(moveTo(600 + 229, 405), LevelResult::Solved);   // 0.5725: within 0.03
}

TEST_F(DialStation, TheMiddleOfTheBandPasses) {
    level.target = 0.7;
    press(600, 405);
    EXPECT_EQ(moveTo(600 + 280, 405), LevelResult::Solved);
}

TEST_F(DialStation, SeedTwentyTwentyFourCentresTheBandAtPointSevenThreeNine) {
    // Raw draws 2525503112 then 3251949050: (3251949050 x 2^21 + 2525503112 >> 11)
    // / 2^53 = 0.7571534, so the target is 0.55 + 0.25 x that = 0.7392883476.
    EXPECT_NEAR(level.target, 0.73928834764449947, 1e-15);
    EXPECT_EQ(rng, test::engineAfter(2024, 2));
}

TEST_F(DialStation, TurningIsSilentAndTheBandsEdgePassesWithOnlyThePassSound) {
    // Target 0.73929: the accepted band starts at 0.70929, 283.7 px of drag.
    EXPECT_EQ(press(600, 405), LevelResult::Running);
    EXPECT_EQ(moveTo(700, 405), LevelResult::Running);
    EXPECT_EQ(moveTo(883, 405), LevelResult::Running);  // 0.7075: not yet
    EXPECT_EQ(sounds, Sounds{});
    EXPECT_EQ(moveTo(884, 405), LevelResult::Solved);  // 0.71
    EXPECT_EQ(sounds, (Sounds{"pass"}));
}

TEST_F(DialStation, AnOvershootBuzzesOnceAndTheDragGoesOnSilentlyFromZero) {
    level.target = 0.6;
    press(600, 405);
    moveTo(600 + 260, 405);
    std::size_t n = sounds.size();
    EXPECT_EQ(moveTo(600 + 273, 405), LevelResult::Running);  // 0.6825 > 0.68
    EXPECT_EQ(soundsSince(n), (Sounds{"fail"}));
    EXPECT_EQ(level.value, 0.0);
    n = sounds.size();
    EXPECT_EQ(moveTo(600 + 273 + 40, 405), LevelResult::Running);  // 0.1 from zero
    EXPECT_NEAR(level.value, 0.1, 1e-12);
    EXPECT_EQ(moveTo(600, 405), LevelResult::Running);  // against the stop at zero
    release();
    EXPECT_EQ(soundsSince(n), Sounds{});
    EXPECT_EQ(sounds, (Sounds{"fail"}));
}

// ---------------------------------------------------------------- Combo

using ComboStation = Station<ComboLevel>;

TEST_F(ComboStation, CodeIsThreeUniformDrawsOfZeroToElevenAndTheDialStartsAtZero) {
    Rng ref(2024);
    for (int i = 0; i < 3; ++i) {
        EXPECT_EQ(level.code[i], test::uniformBelowByHand(ref, 12)) << i;
    }
    EXPECT_EQ(rng, ref);
    EXPECT_EQ(level.position, 0);
    EXPECT_EQ(level.stage, 0);
    EXPECT_EQ(level.centerX, 683);
    EXPECT_EQ(level.centerY, 405);
    EXPECT_EQ(level.radius, 120);
}

TEST_F(ComboStation, UpperHalfStepsClockwiseLowerHalfBackWrappingAtTwelve) {
    level.code[0] = 7;
    level.code[1] = 7;
    level.code[2] = 7;
    click(683, 404);
    EXPECT_EQ(level.position, 1);
    click(683, 405);  // level with the centre counts as the lower half
    EXPECT_EQ(level.position, 0);
    click(683, 500);
    EXPECT_EQ(level.position, 11);
    click(700, 300);
    EXPECT_EQ(level.position, 0);
}

TEST_F(ComboStation, ClicksFortyPixelsOutsideTheRimAreIgnored) {
    level.code[0] = 7;
    click(683, 405 - 160);
    EXPECT_EQ(level.position, 0);
    click(683, 405 - 159);
    EXPECT_EQ(level.position, 1);
}

TEST_F(ComboStation, ZeroZeroZeroIsLandedBySteppingAwayAndBack) {
    level.code[0] = level.code[1] = level.code[2] = 0;
    // Resting on 0 from the start is not arriving there.
    EXPECT_EQ(idle(), LevelResult::Running);
    EXPECT_EQ(level.stage, 0);
    for (int landed = 1; landed <= 3; ++landed) {
        EXPECT_EQ(click(683, 350), LevelResult::Running);
        EXPECT_EQ(level.stage, landed - 1);
        const LevelResult r = click(683, 450);
        EXPECT_EQ(level.stage, landed);
        EXPECT_EQ(r, landed == 3 ? LevelResult::Solved : LevelResult::Running);
    }
}

TEST_F(ComboStation, ARepeatedNumberStillNeedsAStepAwayAndBack) {
    level.code[0] = 1;
    level.code[1] = 1;
    level.code[2] = 4;
    click(683, 350);
    EXPECT_EQ(level.stage, 1);
    EXPECT_EQ(idle(), LevelResult::Running);
    EXPECT_EQ(level.stage, 1);  // sitting on the second 1 does not land it
    click(683, 350);
    click(683, 450);
    EXPECT_EQ(level.stage, 2);
}

TEST_F(ComboStation, PassingAWrongNumberCostsNothingAndANumberCountsFromEitherSide) {
    level.code[0] = 5;
    level.code[1] = 2;
    level.code[2] = 9;
    for (int i = 0; i < 5; ++i) {
        click(683, 350);  // through 1, 2, 3, 4 (2 is not due yet) to 5
    }
    EXPECT_EQ(level.stage, 1);
    for (int i = 0; i < 3; ++i) {
        click(683, 450);  // back down through 4, 3 to 2
    }
    EXPECT_EQ(level.stage, 2);
    for (int i = 0; i < 4; ++i) {
        EXPECT_EQ(click(683, 450), LevelResult::Running);  // 1, 0, 11, 10
    }
    EXPECT_EQ(click(683, 450), LevelResult::Solved);  // 9
}

TEST_F(ComboStation, SeedTwentyTwentyFourDealsSevenNineEight) {
    // Raw 2525503112, 3251949050, 3002649184, each times 12: high words 7, 9
    // and 8, no low word under 4, so no redraw.
    EXPECT_EQ(level.code[0], 7);
    EXPECT_EQ(level.code[1], 9);
    EXPECT_EQ(level.code[2], 8);
    EXPECT_EQ(rng, test::engineAfter(2024, 3));
}

TEST_F(ComboStation, EachStepClicksALandedNumberClicksTwiceAndTheLastAlsoPasses) {
    // Code 7 - 9 - 8.
    for (int i = 1; i <= 6; ++i) {
        const std::size_t n = sounds.size();
        EXPECT_EQ(press(683, 300), LevelResult::Running) << i;
        EXPECT_EQ(soundsSince(n), (Sounds{"click"})) << i;
        EXPECT_EQ(release(), LevelResult::Running);
        EXPECT_EQ(soundsSince(n), (Sounds{"click"})) << i;
    }
    std::size_t n = sounds.size();
    EXPECT_EQ(click(683, 300), LevelResult::Running);  // 7 landed
    EXPECT_EQ(soundsSince(n), (Sounds{"click", "click"}));
    EXPECT_EQ(level.stage, 1);
    n = sounds.size();
    EXPECT_EQ(click(683, 300), LevelResult::Running);  // 8: not due yet
    EXPECT_EQ(soundsSince(n), (Sounds{"click"}));
    n = sounds.size();
    EXPECT_EQ(click(683, 300), LevelResult::Running);  // 9 landed
    EXPECT_EQ(soundsSince(n), (Sounds{"click", "click"}));
    n = sounds.size();
    EXPECT_EQ(press(683, 500), LevelResult::Solved);  // back to 8
    EXPECT_EQ(soundsSince(n), (Sounds{"click", "click", "pass"}));
}

TEST_F(ComboStation, ClicksOutOfReachAndFramesWithoutAClickAreSilent) {
    EXPECT_EQ(click(683, 405 - 160), LevelResult::Running);
    EXPECT_EQ(click(683 + 160, 405), LevelResult::Running);
    in.mouseDown = true;
    EXPECT_EQ(moveTo(683, 300), LevelResult::Running);
    EXPECT_EQ(idle(), LevelResult::Running);
    release();
    EXPECT_EQ(sounds, Sounds{});
    EXPECT_EQ(level.position, 0);
}

// ---------------------------------------------------------------- Calibrate

using CalibrateStation = Station<CalibrateLevel>;

TEST_F(CalibrateStation, TargetsAreThreeRawDrawsModuloSixtyAndSlidersStartHalfway) {
    Rng ref(2024);
    for (int i = 0; i < 3; ++i) {
        const std::uint32_t r = ref();
        EXPECT_DOUBLE_EQ(level.target[i], (r % 60) / 100.0 + 0.2) << i;
        EXPECT_EQ(level.value[i], 0.5);
    }
    EXPECT_EQ(rng, ref);
    EXPECT_EQ(level.active, -1);
}

TEST_F(CalibrateStation, ThreeTracksTwoHundredApart) {
    // step = (840 - 240) / 3 = 200
    const int xs[3] = {383, 583, 783};
    for (int i = 0; i < 3; ++i) {
        EXPECT_EQ(level.tracks[i].x, xs[i]);
        EXPECT_EQ(level.tracks[i].y, 250);
        EXPECT_EQ(level.tracks[i].w, 40);
        EXPECT_EQ(level.tracks[i].h, 270);
    }
}

TEST_F(CalibrateStation, IsSolvedOnItsFirstUpdateWhenEveryTargetIsNearTheMiddle) {
    // Find a seed whose three draws all land within 0.04 of 0.5 (26..34 of 60).
    std::uint32_t seed = 0;
    for (std::uint32_t s = 1; s < 100000 && seed == 0; ++s) {
        Rng probe(s);
        bool near = true;
        for (int i = 0; i < 3; ++i) {
            const std::uint32_t r = probe() % 60;
            near = near && r >= 26 && r <= 34;
        }
        seed = near ? s : 0;
    }
    ASSERT_NE(seed, 0u);
    CalibrateLevel fresh;
    Rng r(seed);
    fresh.setup(LevelDef{}, r, kPlayArea);
    EXPECT_EQ(fresh.update(1.0 / 60, InputState{}, silent), LevelResult::Solved);
    EXPECT_EQ(sounds, (Sounds{"pass"}));
}

TEST_F(CalibrateStation, OneSliderOffItsMarkKeepsItRunning) {
    level.target[0] = 0.5;
    level.target[1] = 0.53;
    level.target[2] = 0.45;  // 0.05 away from where the slider rests
    EXPECT_EQ(idle(), LevelResult::Running);
    const Rect& t = level.tracks[2];
    EXPECT_EQ(press(t.x + 20, t.y + 148), LevelResult::Solved);  // 1 - 148/270 = 0.4519
}

TEST_F(CalibrateStation, PressingATrackMakesItFollowThePointerTopIsOne) {
    const Rect& t = level.tracks[1];
    press(t.x + 5, t.y + 54);
    EXPECT_EQ(level.active, 1);
    EXPECT_NEAR(level.value[1], 0.8, 1e-12);
    moveTo(t.x + 300, t.y + 216);  // the drag keeps going off to the side
    EXPECT_NEAR(level.value[1], 0.2, 1e-12);
    EXPECT_EQ(level.value[0], 0.5);
}

TEST_F(CalibrateStation, DraggingBeyondTheEndsClampsAtZeroAndOne) {
    const Rect& t = level.tracks[0];
    press(t.x + 20, t.y + 100);
    moveTo(t.x + 20, 60);
    EXPECT_EQ(level.value[0], 1.0);
    moveTo(t.x + 20, 760);
    EXPECT_EQ(level.value[0], 0.0);
}

TEST_F(CalibrateStation, ReleasingEndsTheDragAndMissesStartNone) {
    const Rect& t = level.tracks[2];
    press(t.x + t.w, t.y + 10);  // just right of the track: half-open
    EXPECT_EQ(level.active, -1);
    release();
    press(t.x + t.w - 1, t.y + 10);
    EXPECT_EQ(level.active, 2);
    release();
    EXPECT_EQ(level.active, -1);
    const double v = level.value[2];
    moveTo(t.x + 20, t.y + 200);
    EXPECT_EQ(level.value[2], v);
}

TEST_F(CalibrateStation, SeedTwentyTwentyFourSetsTheMarksAtFiftyTwoSeventyAndTwentyFour) {
    // Raw 2525503112 % 60 = 32, 3251949050 % 60 = 50, 3002649184 % 60 = 4.
    EXPECT_NEAR(level.target[0], 0.52, 1e-12);
    EXPECT_NEAR(level.target[1], 0.70, 1e-12);
    EXPECT_NEAR(level.target[2], 0.24, 1e-12);
    EXPECT_EQ(rng, test::engineAfter(2024, 3));
}

TEST_F(CalibrateStation, SlidingIsSilentAndOnlyThePassMakesASound) {
    // Marks 0.52, 0.70, 0.24; slider 0 already sits within 0.04 of its mark.
    const Rect* t = level.tracks;
    EXPECT_EQ(press(t[1].x + 20, t[1].y + 81), LevelResult::Running);  // 1 - 81/270 = 0.7
    EXPECT_EQ(moveTo(t[1].x + 20, t[1].y + 85), LevelResult::Running);
    EXPECT_EQ(release(), LevelResult::Running);
    EXPECT_EQ(press(t[2].x + 20, t[2].y + 150), LevelResult::Running);
    EXPECT_EQ(sounds, Sounds{});
    EXPECT_EQ(moveTo(t[2].x + 20, t[2].y + 205), LevelResult::Solved);  // 0.2407
    EXPECT_EQ(sounds, (Sounds{"pass"}));
}

// ---------------------------------------------------------------- Scale

using ScaleStation = Station<ScaleLevel>;

TEST_F(ScaleStation, DrawsTargetWeightAndOffsetInThatOrder) {
    Rng ref(2024);
    const std::uint32_t a = ref();
    const std::uint32_t b = ref();
    const std::uint32_t c = ref();
    EXPECT_EQ(level.target, static_cast<std::int32_t>(a % 40 + 40));
    EXPECT_EQ(level.weight, static_cast<std::int32_t>(b % 20 + 10));
    EXPECT_EQ(level.readoutOffset, static_cast<std::int32_t>(c % 20 + 15));
    EXPECT_EQ(rng, ref);
    EXPECT_EQ(level.addButton.x, 523);
    EXPECT_EQ(level.addButton.y, 560);
    EXPECT_EQ(level.removeButton.x, 723);
    EXPECT_EQ(level.removeButton.w, 120);
    EXPECT_EQ(level.removeButton.h, 40);
}

TEST_F(ScaleStation, AddPutsOnFiveRemoveTakesOffFive) {
    level.target = 79;
    level.weight = 20;
    click(523, 560);
    EXPECT_EQ(level.weight, 25);
    click(723 + 119, 560 + 39);
    EXPECT_EQ(level.weight, 20);
    click(523 + 120, 570);  // between the buttons
    EXPECT_EQ(level.weight, 20);
}

TEST_F(ScaleStation, RemovingBelowSixLeavesZero) {
    level.target = 79;
    level.weight = 6;
    click(730, 570);
    EXPECT_EQ(level.weight, 1);
    click(730, 570);
    EXPECT_EQ(level.weight, 0);
    level.weight = 5;
    click(730, 570);
    EXPECT_EQ(level.weight, 0);
}

TEST_F(ScaleStation, ThePassTestRunsOnlyInFramesWithAClick) {
    level.weight = level.target + 2;
    EXPECT_EQ(moveTo(600, 300), LevelResult::Running);
    EXPECT_EQ(sounds, Sounds{});
    // A click on nothing weighs the beam all the same, with no click of its own.
    EXPECT_EQ(press(300, 300), LevelResult::Solved);
    EXPECT_EQ(sounds, (Sounds{"pass"}));
}

TEST_F(ScaleStation, BalancesWithinTwoEitherSide) {
    level.target = 50;
    level.weight = 42;
    EXPECT_EQ(click(530, 570), LevelResult::Running);  // 47: three light
    level.weight = 43;
    EXPECT_EQ(click(530, 570), LevelResult::Solved);  // 48
}

TEST_F(ScaleStation, TheHiddenOffsetIsFifteenToThirtyFourSoNeverZero) {
    for (std::uint32_t seed = 1; seed <= 200; ++seed) {
        ScaleLevel s;
        Rng r(seed);
        s.setup(LevelDef{}, r, kPlayArea);
        EXPECT_GE(s.readoutOffset, 15);
        EXPECT_LE(s.readoutOffset, 34);
    }
}

TEST_F(ScaleStation, SeedTwentyTwentyFourWantsSeventyTwoHoldsTwentyAndHidesNineteen) {
    // Raw 2525503112 % 40 + 40 = 72, 3251949050 % 20 + 10 = 20,
    // 3002649184 % 20 + 15 = 19.
    EXPECT_EQ(level.target, 72);
    EXPECT_EQ(level.weight, 20);
    EXPECT_EQ(level.readoutOffset, 19);
    EXPECT_EQ(rng, test::engineAfter(2024, 3));
}

TEST_F(ScaleStation, AddAndRemoveClickMissesAreSilentAndTheBalancingAddAlsoPasses) {
    std::size_t n = sounds.size();
    EXPECT_EQ(press(523, 560), LevelResult::Running);  // add: 25
    EXPECT_EQ(soundsSince(n), (Sounds{"click"}));
    EXPECT_EQ(release(), LevelResult::Running);
    EXPECT_EQ(soundsSince(n), (Sounds{"click"}));
    n = sounds.size();
    EXPECT_EQ(click(842, 599), LevelResult::Running);  // remove: 20
    EXPECT_EQ(soundsSince(n), (Sounds{"click"}));
    n = sounds.size();
    EXPECT_EQ(click(643, 570), LevelResult::Running);  // between the buttons
    EXPECT_EQ(click(683, 300), LevelResult::Running);  // the beam itself
    EXPECT_EQ(soundsSince(n), Sounds{});
    EXPECT_EQ(level.weight, 20);
    // 25, 30, ..., 65 are still light by more than 2; 70 balances.
    for (int w = 25; w <= 65; w += 5) {
        n = sounds.size();
        EXPECT_EQ(click(600, 580), LevelResult::Running) << w;
        EXPECT_EQ(soundsSince(n), (Sounds{"click"})) << w;
    }
    n = sounds.size();
    EXPECT_EQ(press(600, 580), LevelResult::Solved);
    EXPECT_EQ(soundsSince(n), (Sounds{"click", "pass"}));
    EXPECT_EQ(level.weight, 70);
}

TEST_F(ScaleStation, RemovingFromAnEmptyBeamStillClicks) {
    level.weight = 0;
    EXPECT_EQ(click(730, 570), LevelResult::Running);
    EXPECT_EQ(level.weight, 0);
    EXPECT_EQ(sounds, (Sounds{"click"}));
}

// ---------------------------------------------------------------- Factory

TEST(DialFamily, TheFactoryMakesEachStationFromItsTypeString) {
    EXPECT_NE(dynamic_cast<DialLevel*>(createLevel("dial").get()), nullptr);
    EXPECT_NE(dynamic_cast<ComboLevel*>(createLevel("combo").get()), nullptr);
    EXPECT_NE(dynamic_cast<CalibrateLevel*>(createLevel("calibrate").get()), nullptr);
    EXPECT_NE(dynamic_cast<ScaleLevel*>(createLevel("scale").get()), nullptr);
    EXPECT_EQ(dynamic_cast<DialLevel*>(createLevel("Dial").get()), nullptr);
}

}  // namespace
}  // namespace vorn

namespace vorn::test {
namespace {

TEST(DialSolver, ClearsTheThermostatOnEveryDifficulty) { EXPECT_EQ(unsolvedRuns("dial"), ""); }
TEST(ComboSolver, ClearsTheCombinationLockOnEveryDifficulty) {
    EXPECT_EQ(unsolvedRuns("combo"), "");
}
TEST(CalibrateSolver, ClearsTheSensorsOnEveryDifficulty) {
    EXPECT_EQ(unsolvedRuns("calibrate"), "");
}
TEST(ScaleSolver, ClearsTheShippingScaleOnEveryDifficulty) { EXPECT_EQ(unsolvedRuns("scale"), ""); }

TEST(DialSolver, SolvingPlaysThePassSound) {
    StationDriver bench(shippedRecord("dial"), 3);
    std::unique_ptr<Solver> solver = makeSolver("dial");
    EXPECT_EQ(bench.play(*solver, 30.0).result, LevelResult::Solved);
    EXPECT_TRUE(bench.lastSoundWasPass());
}

TEST(DialSolver, YankingTheKnobPastTheBandBuzzesAndStartsAgainFromZero) {
    StationDriver bench(shippedRecord("dial"), 3);
    const auto& level = dynamic_cast<const DialLevel&>(*bench.station);
    const int x = level.centerX - 100;
    const int y = level.centerY;
    pushMotion(x, y);
    pushButton(true, x, y);
    ASSERT_EQ(bench.frame(1.0 / 60), LevelResult::Running);
    ASSERT_TRUE(level.grabbed);
    pushMotion(x + 360, y);  // 0.9 of a turn: beyond any band
    EXPECT_EQ(bench.frame(1.0 / 60), LevelResult::Running);
    EXPECT_TRUE(bench.lastSoundWasFail());
    EXPECT_EQ(level.value, 0.0);
}

TEST(ScaleSolver, BalancingTheReadoutInsteadOfTheBeamNeverPasses) {
    // A player who adds weight until the readout shows the wanted weight
    // within the scale's own two grams. Seed 2024 wants 72 and deals 20 on
    // the beam with a hidden 19 (raw 2525503112 % 40 + 40, 3251949050 % 20 +
    // 10, 3002649184 % 20 + 15): the readout climbs 39, 44, ..., 74, seven
    // adds, and ends balanced while the beam is still 17 light.
    StationDriver bench(shippedRecord("scale"), 2024);
    const auto& level = dynamic_cast<const ScaleLevel&>(*bench.station);
    ASSERT_EQ(level.target, 72);
    ASSERT_EQ(level.weight, 20);
    ASSERT_EQ(level.readoutOffset, 19);
    const Rect& add = level.addButton;
    int adds = 0;
    while (level.weight + level.readoutOffset < level.target - 2 && adds < 20) {
        pushMotion(add.x + 5, add.y + 5);
        pushButton(true, add.x + 5, add.y + 5);
        EXPECT_EQ(bench.frame(1.0 / 60), LevelResult::Running) << adds;
        pushButton(false, add.x + 5, add.y + 5);
        EXPECT_EQ(bench.frame(1.0 / 60), LevelResult::Running) << adds;
        ++adds;
    }
    EXPECT_EQ(adds, 7);
    EXPECT_EQ(level.weight + level.readoutOffset, 74);  // the number looks right
    EXPECT_EQ(level.target - level.weight, 17);         // the beam is not
    EXPECT_EQ(bench.verdict, LevelResult::Running);
    EXPECT_EQ(bench.sounds, std::vector<std::string>(7, "click"));
}

}  // namespace
}  // namespace vorn::test
