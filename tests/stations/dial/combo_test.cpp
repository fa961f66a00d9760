// The combination lock ("combo"): a click on the dial's upper half steps it
// one number clockwise, on the lower half one back. The code is printed
// openly above it; a number counts only the moment the dial arrives on it.
// Its rules and sounds, what it draws, and its solver.

#include "stations/dial/dial_fixtures.h"
#include "stations/dial_stations.h"
#include "support/draws_by_hand.h"
#include "support/play_area.h"
#include "support/station_driver.h"
#include "support/station_ink.h"
#include "support/text_probe.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace vorn::test {
namespace {

using Sounds = std::vector<std::string>;

// A lock with its code set by the test. Clicks 55 above or 45 below the
// centre land well inside the dial's upper or lower half.
struct Lock : Driver<ComboLevel> {
    Lock() : Driver<ComboLevel>(2024) {}
    Lock(int a, int b, int c) : Lock() {
        level.code[0] = a;
        level.code[1] = b;
        level.code[2] = c;
    }
    LevelResult up() { return click(level.centerX, level.centerY - 55); }
    LevelResult down() { return click(level.centerX, level.centerY + 45); }
};

TEST(ComboStation, CodeIsThreeUniformDrawsOfZeroToElevenAndTheDialStartsAtZero) {
    Lock d;
    Rng ref(2024);
    for (int i = 0; i < 3; ++i) {
        EXPECT_EQ(d.level.code[i], uniformBelowByHand(ref, 12)) << i;
    }
    EXPECT_EQ(d.rng, ref);
    EXPECT_EQ(d.level.position, 0);
    EXPECT_EQ(d.level.stage, 0);
    EXPECT_EQ(d.level.centerX, 683);   // the play area's middle: 263 + 840 / 2
    EXPECT_EQ(d.level.centerY, 405);   // 190 + 430 / 2
    EXPECT_EQ(d.level.radius, 120);
}

TEST(ComboStation, UpperHalfStepsClockwiseLowerHalfBackWrappingAtTwelve) {
    Lock d(7, 7, 7);
    const int cx = d.level.centerX;
    const int cy = d.level.centerY;
    d.click(cx, cy - 1);
    EXPECT_EQ(d.level.position, 1);
    d.click(cx, cy);   // level with the centre counts as the lower half
    EXPECT_EQ(d.level.position, 0);
    d.click(cx, cy + 95);
    EXPECT_EQ(d.level.position, 11);
    d.click(cx + 17, cy - 105);
    EXPECT_EQ(d.level.position, 0);
}

TEST(ComboStation, ClicksFortyPixelsOutsideTheRimAreIgnored) {
    Lock d(7, 7, 7);
    d.click(d.level.centerX, d.level.centerY - 160);
    EXPECT_EQ(d.level.position, 0);
    d.click(d.level.centerX, d.level.centerY - 159);
    EXPECT_EQ(d.level.position, 1);
}

TEST(ComboStation, ZeroZeroZeroIsLandedBySteppingAwayAndBack) {
    Lock d(0, 0, 0);
    // Resting on 0 from the start is not arriving there.
    EXPECT_EQ(d.idle(), LevelResult::Running);
    EXPECT_EQ(d.level.stage, 0);
    for (int landed = 1; landed <= 3; ++landed) {
        EXPECT_EQ(d.up(), LevelResult::Running);
        EXPECT_EQ(d.level.stage, landed - 1);
        const LevelResult r = d.down();
        EXPECT_EQ(d.level.stage, landed);
        EXPECT_EQ(r, landed == 3 ? LevelResult::Solved : LevelResult::Running);
    }
}

TEST(ComboStation, ARepeatedNumberStillNeedsAStepAwayAndBack) {
    Lock d(1, 1, 4);
    d.up();
    EXPECT_EQ(d.level.stage, 1);
    EXPECT_EQ(d.idle(), LevelResult::Running);
    EXPECT_EQ(d.level.stage, 1);   // sitting on the second 1 does not land it
    d.up();
    d.down();
    EXPECT_EQ(d.level.stage, 2);
}

TEST(ComboStation, PassingAWrongNumberCostsNothingAndANumberCountsFromEitherSide) {
    Lock d(5, 2, 9);
    for (int i = 0; i < 5; ++i) {
        d.up();   // through 1, 2, 3, 4 (2 is not due yet) to 5
    }
    EXPECT_EQ(d.level.stage, 1);
    for (int i = 0; i < 3; ++i) {
        d.down();   // back down through 4, 3 to 2
    }
    EXPECT_EQ(d.level.stage, 2);
    for (int i = 0; i < 4; ++i) {
        EXPECT_EQ(d.down(), LevelResult::Running);   // 1, 0, 11, 10
    }
    EXPECT_EQ(d.down(), LevelResult::Solved);   // 9
}

TEST(ComboStation, SeedTwentyTwentyFourDealsSevenNineEight) {
    // Raw 2525503112, 3251949050, 3002649184, each times 12: high words 7, 9
    // and 8, no low word under 4, so no redraw.
    Lock d;
    EXPECT_EQ(d.level.code[0], 7);
    EXPECT_EQ(d.level.code[1], 9);
    EXPECT_EQ(d.level.code[2], 8);
    EXPECT_EQ(d.rng, engineAfter(2024, 3));
}

TEST(ComboStation, EachStepClicksALandedNumberClicksTwiceAndTheLastAlsoPasses) {
    Lock d;   // code 7 - 9 - 8
    const int cx = d.level.centerX;
    const int above = d.level.centerY - 105;
    for (int i = 1; i <= 6; ++i) {
        EXPECT_EQ(d.press(cx, above), LevelResult::Running) << i;
        EXPECT_EQ(d.heard(), (Sounds{"click"})) << i;
        EXPECT_EQ(d.release(), LevelResult::Running);
        EXPECT_EQ(d.heard(), Sounds{}) << i;
    }
    std::size_t n = d.sounds.size();
    EXPECT_EQ(d.up(), LevelResult::Running);   // 7 landed
    EXPECT_EQ(d.soundsSince(n), (Sounds{"click", "click"}));
    EXPECT_EQ(d.level.stage, 1);
    n = d.sounds.size();
    EXPECT_EQ(d.up(), LevelResult::Running);   // 8: not due yet
    EXPECT_EQ(d.soundsSince(n), (Sounds{"click"}));
    n = d.sounds.size();
    EXPECT_EQ(d.up(), LevelResult::Running);   // 9 landed
    EXPECT_EQ(d.soundsSince(n), (Sounds{"click", "click"}));
    EXPECT_EQ(d.press(cx, d.level.centerY + 95), LevelResult::Solved);   // back to 8
    EXPECT_EQ(d.heard(), (Sounds{"click", "click", "pass"}));
}

TEST(ComboStation, ClicksOutOfReachAndFramesWithoutAClickAreSilent) {
    Lock d;
    const int cx = d.level.centerX;
    const int cy = d.level.centerY;
    EXPECT_EQ(d.click(cx, cy - 160), LevelResult::Running);
    EXPECT_EQ(d.click(cx + 160, cy), LevelResult::Running);
    // A press out of reach, held and carried onto the upper half.
    EXPECT_EQ(d.press(cx, cy - 160), LevelResult::Running);
    EXPECT_EQ(d.moveTo(cx, cy - 105), LevelResult::Running);
    EXPECT_EQ(d.idle(), LevelResult::Running);
    d.release();
    EXPECT_EQ(d.sounds, Sounds{});
    EXPECT_EQ(d.level.position, 0);
}

// ------------------------------------------------------------------- Look

// The code line, centred 30 below the play area's top.
void expectCodeReads(const SoftwareCanvas& canvas, const char* words) {
    EXPECT_EQ(pixelsUnlikeText(canvas, {kPlayLeft, kPlayTop + 15, kPlayArea.w, 32}, station_ink::black, words,
                               kPlayCentreX, kPlayTop + 30, TextSize::Normal, station_ink::gold, true, true),
              0)
        << words;
}

TEST(ComboLook, DrawsTheFaceNumbersPointerAndTheCodeOpenly) {
    Lock d(4, 11, 0);
    d.level.stage = 1;
    d.level.position = 3;   // pointer at three o'clock
    SoftwareCanvas canvas;
    renderOnBlack(canvas, d.level);
    const int cx = d.level.centerX;
    const int cy = d.level.centerY;
    EXPECT_EQ(canvas.pixel(cx, cy + 116), station_ink::darkBrass);   // the rim, 112 to 120 out
    EXPECT_EQ(canvas.pixel(cx - 40, cy + 40), station_ink::ink);
    EXPECT_EQ(canvas.pixel(cx + 50, cy), station_ink::alarmRed);
    EXPECT_EQ(canvas.pixel(cx + 50, cy + 4), station_ink::ink);   // four thick: five lines, -2..2
    // The numbers sit 98 out, the current one in green, the others dull.
    // (The pointer ends at 90 out, just short of the 3.)
    EXPECT_EQ(pixelsUnlikeText(canvas, {cx + 92, cy - 12, 20, 24}, station_ink::ink, "3", cx + 98, cy,
                               TextSize::Small, station_ink::terminalGreen, true, true),
              0);
    EXPECT_EQ(pixelsUnlikeText(canvas, {cx - 108, cy - 12, 20, 24}, station_ink::ink, "9", cx - 98, cy,
                               TextSize::Small, dial_ink::dullNumber, true, true),
              0);
    expectCodeReads(canvas, "COMBO: 4 - 11 - 0   (stage 2)");
    EXPECT_EQ(playAreaNoteUnlike(canvas, {kPlayLeft, kPlayBottom - 19, kPlayArea.w, 23}, "CLICK UPPER=CW, LOWER=CCW \xE2\x80\x94 LAND EACH NUMBER IN ORDER"),
              0);
}

TEST(ComboLook, TheStageCountsFromOneAndThePointerMovesWithTheDial) {
    Lock d;   // code 7 - 9 - 8
    const int cx = d.level.centerX;
    const int cy = d.level.centerY;
    {
        SoftwareCanvas canvas;
        renderOnBlack(canvas, d.level);
        expectCodeReads(canvas, "COMBO: 7 - 9 - 8   (stage 1)");
        EXPECT_EQ(canvas.pixel(cx, cy - 50), station_ink::alarmRed);   // on 0: straight up
        EXPECT_EQ(pixelsUnlikeText(canvas, {cx - 10, cy - 110, 20, 18}, station_ink::ink, "0", cx, cy - 98,
                                   TextSize::Small, station_ink::terminalGreen, true, true),
                  0);
    }
    for (int i = 0; i < 7; ++i) {
        d.up();
    }
    ASSERT_EQ(d.level.stage, 1);
    SoftwareCanvas canvas;
    renderOnBlack(canvas, d.level);
    expectCodeReads(canvas, "COMBO: 7 - 9 - 8   (stage 2)");
    // On 7, seven twelfths of a turn: the pointer down and to the left; the
    // 7 is green (its lower half, clear of the pointer's tip) and the 0 is
    // dull again.
    EXPECT_EQ(canvas.pixel(dial::alongX(cx, 50, 7 / 12.0), dial::alongY(cy, 50, 7 / 12.0)), station_ink::alarmRed);
    EXPECT_EQ(canvas.pixel(cx, cy - 50), station_ink::ink);
    const int sevenX = dial::alongX(cx, 98, 7 / 12.0);
    const int sevenY = dial::alongY(cy, 98, 7 / 12.0);
    EXPECT_EQ(pixelsUnlikeText(canvas, {sevenX - 10, sevenY - 3, 20, 15}, station_ink::ink, "7", sevenX, sevenY,
                               TextSize::Small, station_ink::terminalGreen, true, true),
              0);
    EXPECT_EQ(pixelsUnlikeText(canvas, {cx - 10, cy - 110, 20, 18}, station_ink::ink, "0", cx, cy - 98,
                               TextSize::Small, dial_ink::dullNumber, true, true),
              0);
}

TEST(ComboSolver, ClearsTheCombinationLockOnEveryDifficulty) { EXPECT_EQ(unsolvedRuns("combo"), ""); }

}  // namespace
}  // namespace vorn::test
