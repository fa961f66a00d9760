// The shipping scale ("scale"): ADD and REMOVE load the beam in steps of
// five, and it passes when the beam is within two of level. The readout
// under it adds a hidden offset, so balancing the number never passes.
// Its rules and sounds, what it draws, and its solver.

#include "stations/dial/dial_fixtures.h"
#include "stations/dial_stations.h"
#include "support/draws_by_hand.h"
#include "support/play_area.h"
#include "support/station_driver.h"
#include "support/station_ink.h"
#include "support/text_probe.h"

#include <gtest/gtest.h>

#include <cstdint>
#include <string>
#include <vector>

namespace vorn::test {
namespace {

using Sounds = std::vector<std::string>;

// Seed 2024: raw 2525503112 % 40 + 40 = 72 wanted, 3251949050 % 20 + 10 =
// 20 on the beam, 3002649184 % 20 + 15 = 19 hidden in the readout.
TEST(ScaleStation, SeedTwentyTwentyFourWantsSeventyTwoHoldsTwentyAndHidesNineteen) {
    Driver<ScaleLevel> d(2024);
    EXPECT_EQ(d.level.target, 72);
    EXPECT_EQ(d.level.weight, 20);
    EXPECT_EQ(d.level.readoutOffset, 19);
    EXPECT_EQ(d.rng, engineAfter(2024, 3));
}

TEST(ScaleStation, DrawsTargetWeightAndOffsetInThatOrder) {
    Driver<ScaleLevel> d(2024);
    Rng ref(2024);
    const std::uint32_t a = ref();
    const std::uint32_t b = ref();
    const std::uint32_t c = ref();
    EXPECT_EQ(d.level.target, static_cast<std::int32_t>(a % 40 + 40));
    EXPECT_EQ(d.level.weight, static_cast<std::int32_t>(b % 20 + 10));
    EXPECT_EQ(d.level.readoutOffset, static_cast<std::int32_t>(c % 20 + 15));
    EXPECT_EQ(d.rng, ref);
    // Under the beam, 60 above the play area's bottom (620 - 60), either
    // side of the middle: 683 - 160 and 683 + 40.
    EXPECT_EQ(d.level.addButton.x, 523);
    EXPECT_EQ(d.level.addButton.y, 560);
    EXPECT_EQ(d.level.removeButton.x, 723);
    EXPECT_EQ(d.level.removeButton.y, 560);
    EXPECT_EQ(d.level.removeButton.w, 120);
    EXPECT_EQ(d.level.removeButton.h, 40);
}

TEST(ScaleStation, AddPutsOnFiveRemoveTakesOffFive) {
    Driver<ScaleLevel> d(2024);
    d.level.target = 79;
    const Rect& add = d.level.addButton;
    const Rect& remove = d.level.removeButton;
    d.click(add.x, add.y);
    EXPECT_EQ(d.level.weight, 25);
    d.click(remove.x + remove.w - 1, remove.y + remove.h - 1);
    EXPECT_EQ(d.level.weight, 20);
    d.click(add.x + add.w, add.y + 10);   // between the buttons
    EXPECT_EQ(d.level.weight, 20);
}

TEST(ScaleStation, RemovingBelowSixLeavesZero) {
    Driver<ScaleLevel> d(2024);
    d.level.target = 79;
    d.level.weight = 6;
    d.clickCentre(d.level.removeButton);
    EXPECT_EQ(d.level.weight, 1);
    d.clickCentre(d.level.removeButton);
    EXPECT_EQ(d.level.weight, 0);
    d.level.weight = 5;
    d.clickCentre(d.level.removeButton);
    EXPECT_EQ(d.level.weight, 0);
}

TEST(ScaleStation, ThePassTestRunsOnlyInFramesWithAClick) {
    Driver<ScaleLevel> d(2024);
    d.level.weight = d.level.target + 2;
    EXPECT_EQ(d.moveTo(kPlayCentreX - 83, kPlayTop + 110), LevelResult::Running);
    EXPECT_EQ(d.sounds, Sounds{});
    // A click on nothing weighs the beam all the same, with no click of its own.
    EXPECT_EQ(d.press(kPlayLeft + 37, kPlayTop + 110), LevelResult::Solved);
    EXPECT_EQ(d.sounds, (Sounds{"pass"}));
}

TEST(ScaleStation, BalancesWithinTwoEitherSide) {
    Driver<ScaleLevel> d(2024);
    d.level.target = 50;
    d.level.weight = 42;
    EXPECT_EQ(d.clickCentre(d.level.addButton), LevelResult::Running);   // 47: three light
    d.level.weight = 43;
    EXPECT_EQ(d.clickCentre(d.level.addButton), LevelResult::Solved);    // 48
}

TEST(ScaleStation, TheHiddenOffsetIsFifteenToThirtyFourSoNeverZero) {
    for (std::uint32_t seed = 1; seed <= 200; ++seed) {
        Driver<ScaleLevel> d(seed);
        EXPECT_GE(d.level.readoutOffset, 15) << seed;
        EXPECT_LE(d.level.readoutOffset, 34) << seed;
    }
}

TEST(ScaleStation, AddAndRemoveClickMissesAreSilentAndTheBalancingAddAlsoPasses) {
    Driver<ScaleLevel> d(2024);   // 20 on the beam, 72 wanted
    const Rect& add = d.level.addButton;
    const Rect& remove = d.level.removeButton;
    EXPECT_EQ(d.press(add.x, add.y), LevelResult::Running);   // 25
    EXPECT_EQ(d.heard(), (Sounds{"click"}));
    EXPECT_EQ(d.release(), LevelResult::Running);
    EXPECT_EQ(d.heard(), Sounds{});
    std::size_t n = d.sounds.size();
    EXPECT_EQ(d.click(remove.x + remove.w - 1, remove.y + remove.h - 1), LevelResult::Running);   // 20
    EXPECT_EQ(d.soundsSince(n), (Sounds{"click"}));
    n = d.sounds.size();
    EXPECT_EQ(d.click(add.x + add.w, add.y + 10), LevelResult::Running);   // between the buttons
    EXPECT_EQ(d.click(kPlayCentreX, kPlayTop + 110), LevelResult::Running);   // the beam itself
    EXPECT_EQ(d.soundsSince(n), Sounds{});
    EXPECT_EQ(d.level.weight, 20);
    // 25, 30, ..., 65 are still light by more than 2; 70 balances.
    for (int w = 25; w <= 65; w += 5) {
        n = d.sounds.size();
        EXPECT_EQ(d.clickCentre(add), LevelResult::Running) << w;
        EXPECT_EQ(d.soundsSince(n), (Sounds{"click"})) << w;
    }
    EXPECT_EQ(d.clickCentre(add), LevelResult::Solved);
    EXPECT_EQ(d.heard(), (Sounds{"click", "pass"}));
    EXPECT_EQ(d.level.weight, 70);
}

TEST(ScaleStation, RemovingFromAnEmptyBeamStillClicks) {
    Driver<ScaleLevel> d(2024);
    d.level.weight = 0;
    EXPECT_EQ(d.clickCentre(d.level.removeButton), LevelResult::Running);
    EXPECT_EQ(d.level.weight, 0);
    EXPECT_EQ(d.sounds, (Sounds{"click"}));
}

// ------------------------------------------------------------------- Look

// The beam pivots 90 below the play area's top, its pans hang 30 lower.
constexpr int kBeamY = kPlayTop + 90;   // 280
constexpr int kPanY = kPlayTop + 120;   // 310

// The readout, Large, centred 240 below the play area's top, and its label
// 32 lower.
void expectReadoutSays(const SoftwareCanvas& canvas, const char* number) {
    EXPECT_EQ(pixelsUnlikeText(canvas, {kPlayCentreX - 200, kPlayTop + 210, 400, 55}, station_ink::black, number,
                               kPlayCentreX, kPlayTop + 240, TextSize::Large, station_ink::alarmRed, true, true),
              0)
        << number;
    EXPECT_EQ(pixelsUnlikeText(canvas, {kPlayCentreX - 200, kPlayTop + 270, 400, 22}, station_ink::black,
                               "(readout)", kPlayCentreX, kPlayTop + 272, TextSize::Small, station_ink::liveRed,
                               true, false),
              0);
}

TEST(ScaleLook, TheReadoutShowsTheWeightPlusTheHiddenOffsetNeverTheWeight) {
    Driver<ScaleLevel> d(2024);
    d.level.weight = 45;
    d.level.target = 45;
    d.level.readoutOffset = 17;
    SoftwareCanvas canvas;
    renderOnBlack(canvas, d.level);
    expectReadoutSays(canvas, "62 g");
    EXPECT_NE(pixelsUnlikeText(canvas, {kPlayCentreX - 200, kPlayTop + 210, 400, 55}, station_ink::black, "45 g",
                               kPlayCentreX, kPlayTop + 240, TextSize::Large, station_ink::alarmRed, true, true),
              0);
}

TEST(ScaleLook, DrawsALevelBeamPivotPansAndButtons) {
    Driver<ScaleLevel> d(2024);
    d.level.weight = d.level.target;
    SoftwareCanvas canvas;
    renderOnBlack(canvas, d.level);
    const int cx = kPlayCentreX;
    // A level beam 8 thick (rows -4..4 about its line), 120 each side.
    EXPECT_EQ(canvas.pixel(cx - 60, kBeamY), station_ink::brass);
    EXPECT_EQ(canvas.pixel(cx + 60, kBeamY + 4), station_ink::brass);
    EXPECT_EQ(canvas.pixel(cx + 60, kBeamY + 6), station_ink::black);
    EXPECT_EQ(canvas.pixel(cx, kBeamY + 8), station_ink::castBrass);   // the pivot, below the beam's middle
    EXPECT_EQ(canvas.pixel(cx - 120, kPanY + 10), station_ink::darkBrass);
    EXPECT_EQ(canvas.pixel(cx + 120, kPanY + 10), station_ink::darkBrass);
    const Rect& add = d.level.addButton;
    const Rect& remove = d.level.removeButton;
    EXPECT_EQ(canvas.pixel(add.x + 10, add.y + 20), station_ink::castBrass);
    EXPECT_EQ(canvas.pixel(remove.x + 10, remove.y + 20), station_ink::castBrass);
    EXPECT_EQ(pixelsUnlikeText(canvas, {add.x + 15, add.y + 5, 90, 30}, station_ink::castBrass, "ADD",
                               add.x + add.w / 2, add.y + 20, TextSize::Normal, station_ink::ink, true, true),
              0);
    EXPECT_EQ(pixelsUnlikeText(canvas, {remove.x + 10, remove.y + 5, 100, 30}, station_ink::castBrass, "REMOVE",
                               remove.x + remove.w / 2, remove.y + 20, TextSize::Normal, station_ink::ink, true,
                               true),
              0);
    EXPECT_EQ(playAreaNoteUnlike(canvas, {kPlayLeft, kPlayBottom - 19, kPlayArea.w, 23}, "BALANCE THE BEAM - NOT THE NUMBER"),
              0);
}

TEST(ScaleLook, AHeavyBeamDipsToTheRight) {
    Driver<ScaleLevel> d(2024);
    d.level.weight = d.level.target + 10;   // tilt 0.2: dx 117, dy 23
    SoftwareCanvas canvas;
    renderOnBlack(canvas, d.level);
    // The pans hang at (566, 287) and (800, 333) instead of 310 either side.
    EXPECT_EQ(canvas.pixel(kPlayCentreX + 117, kPanY + 23 + 20), station_ink::darkBrass);
    EXPECT_EQ(canvas.pixel(kPlayCentreX - 117, kPanY - 23 - 20), station_ink::darkBrass);
    EXPECT_EQ(canvas.pixel(kPlayCentreX + 120, kPanY - 20), station_ink::black);
}

TEST(ScaleLook, LoadingTheBeamLevelsItAndTheReadoutClimbsByFive) {
    Driver<ScaleLevel> d(2024);   // 20 on, 72 wanted, 19 hidden
    for (int i = 0; i < 5; ++i) {
        d.clickCentre(d.level.addButton);
    }
    ASSERT_EQ(d.level.weight, 45);
    SoftwareCanvas canvas;
    renderOnBlack(canvas, d.level);
    expectReadoutSays(canvas, "64 g");   // 45 + 19
    // 27 light: tilt -0.54, so dx = trunc(120 cos 0.54) = 102 and
    // dy = trunc(-120 sin 0.54) = -61: the light right pan rides high at
    // (785, 249), the left one low at (581, 371).
    EXPECT_EQ(canvas.pixel(kPlayCentreX + 102, kPanY - 61), station_ink::darkBrass);
    EXPECT_EQ(canvas.pixel(kPlayCentreX - 102, kPanY + 61), station_ink::darkBrass);
    EXPECT_EQ(canvas.pixel(kPlayCentreX + 120, kPanY), station_ink::black);
    // The beam runs from (581, 341) up to (785, 219); a quarter along it
    // stands (632, 310).
    EXPECT_TRUE(anyPixelNear(canvas, {632 - 1, 310 - 1, 3, 3}, station_ink::brass, 0));
    EXPECT_EQ(canvas.pixel(kPlayCentreX - 60, kBeamY), station_ink::black);
}

// ---------------------------------------------------------------- Solver

TEST(ScaleSolver, ClearsTheShippingScaleOnEveryDifficulty) { EXPECT_EQ(unsolvedRuns("scale"), ""); }

TEST(ScaleSolver, BalancingTheReadoutInsteadOfTheBeamNeverPasses) {
    // A player who adds weight until the readout shows the wanted weight
    // within the scale's own two grams. Seed 2024 wants 72 and deals 20 on
    // the beam with a hidden 19: the readout climbs 39, 44, ..., 74, seven
    // adds, and ends balanced while the beam is still 17 light.
    Driver<ScaleLevel> d(2024, shippedRecord("scale"));
    ASSERT_EQ(d.level.target, 72);
    ASSERT_EQ(d.level.weight, 20);
    ASSERT_EQ(d.level.readoutOffset, 19);
    int adds = 0;
    while (d.level.weight + d.level.readoutOffset < d.level.target - 2 && adds < 20) {
        EXPECT_EQ(d.clickCentre(d.level.addButton), LevelResult::Running) << adds;
        ++adds;
    }
    EXPECT_EQ(adds, 7);
    EXPECT_EQ(d.level.weight + d.level.readoutOffset, 74);   // the number looks right
    EXPECT_EQ(d.level.target - d.level.weight, 17);          // the beam is not
    EXPECT_EQ(d.verdict, LevelResult::Running);
    EXPECT_EQ(d.sounds, std::vector<std::string>(7, "click"));
}

}  // namespace
}  // namespace vorn::test
