// The dial, slider and balance stations: thermostat dial, combination lock,
// sensor calibration and shipping scale.

#include "audio/audio_system.h"
#include "data/level_catalogue.h"
#include "stations/dial_stations.h"
#include "stations/level_factory.h"
#include "support/draws_by_hand.h"
#include "support/software_canvas.h"
#include "support/solvers/family_solvers.h"
#include "support/station_bench.h"
#include "support/text_probe.h"

#include <gtest/gtest.h>

#include <cmath>

namespace vorn {
namespace {

constexpr double kPi = 3.14159265358979323846;
constexpr Color kInk = rgb(20, 20, 20);
constexpr Color kGreen = rgb(70, 224, 138);
constexpr Color kRed = rgb(255, 58, 42);
constexpr Color kRim = rgb(99, 77, 26);
constexpr Color kBrass = rgb(199, 154, 53);
constexpr Color kOrange = rgb(255, 170, 46);
constexpr Color kInstruction = rgb(178, 119, 32);

// A station of type T set up in the run's play area, fed hand-filled input
// with a sound system that was never opened.
template <typename T>
struct Station : ::testing::Test {
    T level;
    Rng rng{2024};
    AudioSystem silent;
    InputState in;

    void SetUp() override { level.setup(LevelDef{}, rng, kPlayArea); }

    LevelResult idle() {
        in.mousePressed = in.mouseReleased = false;
        return level.update(1.0 / 60, in, silent);
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
        return level.update(1.0 / 60, in, silent);
    }
    LevelResult release() {
        in.mouseDown = false;
        in.mousePressed = false;
        in.mouseReleased = true;
        return level.update(1.0 / 60, in, silent);
    }
    LevelResult click(int x, int y) {
        const LevelResult r = press(x, y);
        if (r != LevelResult::Running) {
            return r;
        }
        return release();
    }
};

// A point `r` pixels out along a dial fraction, truncated as dials place things.
int atX(int cx, int r, double f) {
    return cx + static_cast<int>(std::cos(2 * kPi * f - kPi / 2) * r);
}
int atY(int cy, int r, double f) {
    return cy + static_cast<int>(std::sin(2 * kPi * f - kPi / 2) * r);
}

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

TEST_F(DialStation, DrawsRimWellBandNeedleAndHub) {
    level.target = 0.6;
    level.value = 0.25;  // the needle points at three o'clock
    test::SoftwareCanvas canvas;
    canvas.fill(rgb(0, 0, 0));
    level.render(canvas.graphics);
    EXPECT_EQ(canvas.pixel(683, 405 - 85), kRim);       // rim at twelve o'clock
    EXPECT_EQ(canvas.pixel(683 - 40, 405 - 40), kInk);  // the well
    EXPECT_EQ(canvas.pixel(atX(683, 84, 0.6), atY(405, 84, 0.6)), kGreen);
    // The paint runs 0.05 either side of the target, past what is accepted.
    EXPECT_EQ(canvas.pixel(atX(683, 84, 0.645), atY(405, 84, 0.645)), kGreen);
    EXPECT_EQ(canvas.pixel(atX(683, 84, 0.555), atY(405, 84, 0.555)), kGreen);
    EXPECT_EQ(canvas.pixel(atX(683, 84, 0.7), atY(405, 84, 0.7)), kRim);
    EXPECT_EQ(canvas.pixel(683 + 45, 405), kRed);      // needle
    EXPECT_EQ(canvas.pixel(683 + 45, 405 + 4), kInk);  // five pixels thick, no more
    EXPECT_EQ(canvas.pixel(683 - 7, 405), kBrass);     // hub
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

TEST_F(ComboStation, DrawsTheFaceNumbersPointerAndTheCodeOpenly) {
    level.code[0] = 4;
    level.code[1] = 11;
    level.code[2] = 0;
    level.stage = 1;
    level.position = 3;  // pointer at three o'clock
    test::SoftwareCanvas canvas;
    canvas.useGameFonts();
    canvas.fill(rgb(0, 0, 0));
    level.render(canvas.graphics);
    EXPECT_EQ(canvas.pixel(683, 405 + 116), kRim);
    EXPECT_EQ(canvas.pixel(683 - 40, 405 + 40), kInk);
    EXPECT_EQ(canvas.pixel(683 + 50, 405), kRed);
    EXPECT_EQ(canvas.pixel(683 + 50, 405 + 4), kInk);  // four thick: five lines, -2..2
    // The current number in green, the others in dull brass.
    // (The pointer ends at x 773, just short of the 3.)
    const Rect three{775, 393, 20, 24};
    const Rect nine{575, 393, 20, 24};
    EXPECT_EQ(test::pixelsUnlikeText(canvas, three, kInk, "3", 683 + 98, 405, TextSize::Small,
                                     kGreen, true, true),
              0);
    canvas.fill(rgb(0, 0, 0));
    level.render(canvas.graphics);
    EXPECT_EQ(test::pixelsUnlikeText(canvas, nine, kInk, "9", 683 - 98, 405, TextSize::Small,
                                     rgb(153, 102, 27), true, true),
              0);
    EXPECT_EQ(test::pixelsUnlikeText(canvas, {263, 205, 840, 32}, rgb(0, 0, 0),
                                     "COMBO: 4 - 11 - 0   (stage 2)", 683, 220, TextSize::Normal,
                                     rgb(255, 216, 107), true, true),
              0);
    EXPECT_EQ(
        test::pixelsUnlikeText(canvas, {263, 601, 840, 23}, rgb(0, 0, 0),
                               "CLICK UPPER=CW, LOWER=CCW \xE2\x80\x94 LAND EACH NUMBER IN ORDER",
                               683, 604, TextSize::Small, kInstruction, true, false),
        0);
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

TEST_F(CalibrateStation, DrawsTracksGhostMarksAndKnobsGreenOnlyOnTheirMarks) {
    level.target[0] = 0.5;
    level.target[1] = 0.3;
    level.target[2] = 0.7;
    level.value[2] = 0.2;
    test::SoftwareCanvas canvas;
    canvas.useGameFonts();
    canvas.fill(rgb(0, 0, 0));
    level.render(canvas.graphics);
    const Rect* t = level.tracks;
    EXPECT_EQ(canvas.pixel(t[0].x + 20, t[0].y + 20), rgb(30, 30, 30));
    // Slider 1's mark at 250 + trunc(0.7 x 270) = 439, reaching 8 px past the track.
    EXPECT_EQ(canvas.pixel(t[1].x - 5, 439), rgb(42, 134, 82));
    EXPECT_EQ(canvas.pixel(t[1].x - 5, 443), rgb(0, 0, 0));
    // Knobs: slider 0 sits on its mark, slider 1 does not.
    EXPECT_EQ(canvas.pixel(t[0].x - 3, 385 + 5), kGreen);
    EXPECT_EQ(canvas.pixel(t[1].x + 20, 385 + 5), kOrange);
    // Slider 2's knob near the bottom: 250 + trunc(0.8 x 270) = 466.
    EXPECT_EQ(canvas.pixel(t[2].x + t[2].w + 4, 466 - 6), kOrange);
    EXPECT_EQ(test::pixelsUnlikeText(canvas, {263, 601, 840, 23}, rgb(0, 0, 0),
                                     "MATCH ALL THREE TO THE GHOST MARKS", 683, 604,
                                     TextSize::Small, kInstruction, true, false),
              0);
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
    // A click on nothing weighs the beam all the same.
    EXPECT_EQ(press(300, 300), LevelResult::Solved);
}

TEST_F(ScaleStation, BalancesWithinTwoEitherSide) {
    level.target = 50;
    level.weight = 42;
    EXPECT_EQ(click(530, 570), LevelResult::Running);  // 47: three light
    level.weight = 43;
    EXPECT_EQ(click(530, 570), LevelResult::Solved);  // 48
}

TEST_F(ScaleStation, TheReadoutShowsTheWeightPlusTheHiddenOffsetNeverTheWeight) {
    level.weight = 45;
    level.target = 45;
    level.readoutOffset = 17;
    test::SoftwareCanvas canvas;
    canvas.useGameFonts();
    canvas.fill(rgb(0, 0, 0));
    level.render(canvas.graphics);
    const Rect readout{483, 400, 400, 55};
    EXPECT_EQ(test::pixelsUnlikeText(canvas, readout, rgb(0, 0, 0), "62 g", 683, 430,
                                     TextSize::Large, kRed, true, true),
              0);
    EXPECT_NE(test::pixelsUnlikeText(canvas, readout, rgb(0, 0, 0), "45 g", 683, 430,
                                     TextSize::Large, kRed, true, true),
              0);
    EXPECT_EQ(test::pixelsUnlikeText(canvas, {483, 460, 400, 22}, rgb(0, 0, 0), "(readout)", 683,
                                     462, TextSize::Small, rgb(178, 40, 29), true, false),
              0);
    // And the offset is never zero.
    for (std::uint32_t seed = 1; seed <= 200; ++seed) {
        ScaleLevel s;
        Rng r(seed);
        s.setup(LevelDef{}, r, kPlayArea);
        EXPECT_GE(s.readoutOffset, 15);
        EXPECT_LE(s.readoutOffset, 34);
    }
}

TEST_F(ScaleStation, DrawsALevelBeamPivotPansAndButtons) {
    level.weight = level.target;
    test::SoftwareCanvas canvas;
    canvas.useGameFonts();
    canvas.fill(rgb(0, 0, 0));
    level.render(canvas.graphics);
    EXPECT_EQ(canvas.pixel(683 - 60, 280), kBrass);
    EXPECT_EQ(canvas.pixel(683 + 60, 284), kBrass);
    EXPECT_EQ(canvas.pixel(683 + 60, 286), rgb(0, 0, 0));
    EXPECT_EQ(canvas.pixel(683, 288), rgb(139, 107, 37));  // pivot below the beam's middle
    EXPECT_EQ(canvas.pixel(683 - 120, 320), kRim);
    EXPECT_EQ(canvas.pixel(683 + 120, 320), kRim);
    EXPECT_EQ(canvas.pixel(523 + 10, 560 + 20), rgb(139, 107, 37));
    EXPECT_EQ(canvas.pixel(723 + 10, 560 + 20), rgb(139, 107, 37));
    EXPECT_EQ(test::pixelsUnlikeText(canvas, {538, 565, 90, 30}, rgb(139, 107, 37), "ADD", 583, 580,
                                     TextSize::Normal, kInk, true, true),
              0);
    EXPECT_EQ(test::pixelsUnlikeText(canvas, {733, 565, 100, 30}, rgb(139, 107, 37), "REMOVE", 783,
                                     580, TextSize::Normal, kInk, true, true),
              0);
    EXPECT_EQ(test::pixelsUnlikeText(canvas, {263, 601, 840, 23}, rgb(0, 0, 0),
                                     "BALANCE THE BEAM - NOT THE NUMBER", 683, 604, TextSize::Small,
                                     kInstruction, true, false),
              0);
}

TEST_F(ScaleStation, AHeavyBeamDipsToTheRight) {
    level.weight = level.target + 10;  // tilt 0.2: dx 117, dy 23
    test::SoftwareCanvas canvas;
    canvas.fill(rgb(0, 0, 0));
    level.render(canvas.graphics);
    // The pans hang at (566, 287) and (800, 333) instead of 310 either side.
    EXPECT_EQ(canvas.pixel(800, 333 + 20), kRim);
    EXPECT_EQ(canvas.pixel(566, 287 - 20), kRim);
    EXPECT_EQ(canvas.pixel(803, 310 - 20), rgb(0, 0, 0));
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
    StationBench bench(shippedRecord("dial"), 3);
    std::unique_ptr<Solver> solver = makeSolver("dial");
    EXPECT_EQ(bench.play(*solver, 30.0).result, LevelResult::Solved);
    EXPECT_TRUE(bench.lastSoundWasPass());
}

TEST(DialSolver, YankingTheKnobPastTheBandBuzzesAndStartsAgainFromZero) {
    StationBench bench(shippedRecord("dial"), 3);
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
    // A player who adds weight until the readout shows the shipped weight
    // (say the target's own number) stops short by the hidden offset.
    StationBench bench(shippedRecord("scale"), 11);
    const auto& level = dynamic_cast<const ScaleLevel&>(*bench.station);
    const Rect& add = level.addButton;
    while (level.weight + level.readoutOffset + 5 <= level.target) {
        pushMotion(add.x + 5, add.y + 5);
        pushButton(true, add.x + 5, add.y + 5);
        bench.frame(1.0 / 60);
        pushButton(false, add.x + 5, add.y + 5);
        bench.frame(1.0 / 60);
    }
    EXPECT_EQ(bench.verdict, LevelResult::Running);
    EXPECT_GT(level.target - level.weight, 2);
}

}  // namespace
}  // namespace vorn::test
