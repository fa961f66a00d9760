// The sensor calibration ("calibrate"): three vertical sliders, each with a
// faint ghost mark; a press on a track makes its knob follow the pointer,
// and the station passes the moment all three sit within 0.04 of their
// marks. Its rules and sounds, what it draws, and its solver.

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

TEST(CalibrateStation, TargetsAreThreeRawDrawsModuloSixtyAndSlidersStartHalfway) {
    Driver<CalibrateLevel> d(2024);
    Rng ref(2024);
    for (int i = 0; i < 3; ++i) {
        const std::uint32_t r = ref();
        EXPECT_DOUBLE_EQ(d.level.target[i], (r % 60) / 100.0 + 0.2) << i;
        EXPECT_EQ(d.level.value[i], 0.5);
    }
    EXPECT_EQ(d.rng, ref);
    EXPECT_EQ(d.level.active, -1);
}

TEST(CalibrateStation, ThreeTracksTwoHundredApart) {
    Driver<CalibrateLevel> d(2024);
    // step = (840 - 240) / 3 = 200, from 263 + 120; 60 below the top (190),
    // 430 - 160 tall.
    const int xs[3] = {383, 583, 783};
    for (int i = 0; i < 3; ++i) {
        EXPECT_EQ(d.level.tracks[i].x, xs[i]);
        EXPECT_EQ(d.level.tracks[i].y, 250);
        EXPECT_EQ(d.level.tracks[i].w, 40);
        EXPECT_EQ(d.level.tracks[i].h, 270);
    }
}

TEST(CalibrateStation, IsSolvedOnItsFirstUpdateWhenEveryTargetIsNearTheMiddle) {
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
    Driver<CalibrateLevel> d(seed);
    EXPECT_EQ(d.idle(), LevelResult::Solved);
    EXPECT_EQ(d.sounds, (Sounds{"pass"}));
}

TEST(CalibrateStation, OneSliderOffItsMarkKeepsItRunning) {
    Driver<CalibrateLevel> d(2024);
    d.level.target[0] = 0.5;
    d.level.target[1] = 0.53;
    d.level.target[2] = 0.45;   // 0.05 away from where the slider rests
    EXPECT_EQ(d.idle(), LevelResult::Running);
    const Rect& t = d.level.tracks[2];
    EXPECT_EQ(d.press(t.x + 20, t.y + 148), LevelResult::Solved);   // 1 - 148/270 = 0.4519
}

TEST(CalibrateStation, PressingATrackMakesItFollowThePointerTopIsOne) {
    Driver<CalibrateLevel> d(2024);
    const Rect& t = d.level.tracks[1];
    d.press(t.x + 5, t.y + 54);
    EXPECT_EQ(d.level.active, 1);
    EXPECT_NEAR(d.level.value[1], 0.8, 1e-12);   // 1 - 54/270
    d.moveTo(t.x + 300, t.y + 216);   // the drag keeps going off to the side
    EXPECT_NEAR(d.level.value[1], 0.2, 1e-12);
    EXPECT_EQ(d.level.value[0], 0.5);
}

TEST(CalibrateStation, DraggingBeyondTheEndsClampsAtZeroAndOne) {
    Driver<CalibrateLevel> d(2024);
    const Rect& t = d.level.tracks[0];
    d.press(t.x + 20, t.y + 100);
    d.moveTo(t.x + 20, t.y - 190);
    EXPECT_EQ(d.level.value[0], 1.0);
    d.moveTo(t.x + 20, kCanvasHeight - 8);
    EXPECT_EQ(d.level.value[0], 0.0);
}

TEST(CalibrateStation, ReleasingEndsTheDragAndMissesStartNone) {
    Driver<CalibrateLevel> d(2024);
    const Rect& t = d.level.tracks[2];
    d.press(t.x + t.w, t.y + 10);   // just right of the track: half-open
    EXPECT_EQ(d.level.active, -1);
    d.release();
    d.press(t.x + t.w - 1, t.y + 10);
    EXPECT_EQ(d.level.active, 2);
    d.release();
    EXPECT_EQ(d.level.active, -1);
    const double v = d.level.value[2];
    d.moveTo(t.x + 20, t.y + 200);
    EXPECT_EQ(d.level.value[2], v);
}

TEST(CalibrateStation, SeedTwentyTwentyFourSetsTheMarksAtFiftyTwoSeventyAndTwentyFour) {
    // Raw 2525503112 % 60 = 32, 3251949050 % 60 = 50, 3002649184 % 60 = 4.
    Driver<CalibrateLevel> d(2024);
    EXPECT_NEAR(d.level.target[0], 0.52, 1e-12);
    EXPECT_NEAR(d.level.target[1], 0.70, 1e-12);
    EXPECT_NEAR(d.level.target[2], 0.24, 1e-12);
    EXPECT_EQ(d.rng, engineAfter(2024, 3));
}

TEST(CalibrateStation, SlidingIsSilentAndOnlyThePassMakesASound) {
    // Marks 0.52, 0.70, 0.24; slider 0 already sits within 0.04 of its mark.
    Driver<CalibrateLevel> d(2024);
    const Rect* t = d.level.tracks;
    EXPECT_EQ(d.press(t[1].x + 20, t[1].y + 81), LevelResult::Running);   // 1 - 81/270 = 0.7
    EXPECT_EQ(d.moveTo(t[1].x + 20, t[1].y + 85), LevelResult::Running);
    EXPECT_EQ(d.release(), LevelResult::Running);
    EXPECT_EQ(d.press(t[2].x + 20, t[2].y + 150), LevelResult::Running);
    EXPECT_EQ(d.sounds, Sounds{});
    EXPECT_EQ(d.moveTo(t[2].x + 20, t[2].y + 205), LevelResult::Solved);   // 0.2407
    EXPECT_EQ(d.sounds, (Sounds{"pass"}));
}

// ------------------------------------------------------------------- Look

// A knob is a bar 12 wider than its track and 16 tall, its row `knobY`
// eight from its top.
void expectKnob(const SoftwareCanvas& canvas, const Rect& t, int knobY, Color c) {
    EXPECT_EQ(canvas.pixel(t.x - 6, knobY), c);
    EXPECT_EQ(canvas.pixel(t.x + t.w + 5, knobY), c);
    EXPECT_EQ(canvas.pixel(t.x + t.w / 2, knobY - 8), c);
    EXPECT_EQ(canvas.pixel(t.x + t.w / 2, knobY + 7), c);
    EXPECT_EQ(canvas.pixel(t.x - 7, knobY), station_ink::black);
    EXPECT_EQ(canvas.pixel(t.x + t.w / 2, knobY - 9), station_ink::charcoal);
    EXPECT_EQ(canvas.pixel(t.x + t.w / 2, knobY + 8), station_ink::charcoal);
}

TEST(CalibrateLook, DrawsTracksGhostMarksAndKnobsGreenOnlyOnTheirMarks) {
    Driver<CalibrateLevel> d(2024);
    d.level.target[0] = 0.52;  // the knob rests 0.02 under it: on the mark
    d.level.target[1] = 0.3;   // the knob rests 0.2 above it
    d.level.target[2] = 0.5;
    d.level.value[2] = 0.2;    // the knob far below it
    SoftwareCanvas canvas;
    renderOnBlack(canvas, d.level);
    const Rect* t = d.level.tracks;
    // Dark tracks.
    EXPECT_EQ(canvas.pixel(t[0].x + 20, t[0].y + 20), station_ink::charcoal);
    EXPECT_EQ(canvas.pixel(t[1].x + 20, t[1].y + t[1].h - 3), station_ink::charcoal);
    EXPECT_EQ(canvas.pixel(t[1].x + 20, t[1].y + t[1].h + 1), station_ink::black);
    // Slider 2's ghost mark at its middle, 250 + 270 / 2 = 385, reaching 8
    // past the track each side; a thickness of two is the rows either side too.
    for (const int row : {384, 385, 386}) {
        EXPECT_EQ(canvas.pixel(t[2].x - 8, row), station_ink::dimGreen) << row;
        EXPECT_EQ(canvas.pixel(t[2].x + t[2].w + 8, row), station_ink::dimGreen) << row;
        EXPECT_EQ(canvas.pixel(t[2].x + 20, row), station_ink::dimGreen) << row;
    }
    EXPECT_EQ(canvas.pixel(t[2].x - 9, 385), station_ink::black);
    EXPECT_EQ(canvas.pixel(t[2].x - 5, 383), station_ink::black);
    EXPECT_EQ(canvas.pixel(t[2].x - 5, 387), station_ink::black);
    // Knobs at 250 + 270 / 2 = 385 for a half-way slider, green only on the
    // mark; slider 2's near the bottom, at 250 + 0.8 x 270 = 466.
    expectKnob(canvas, t[0], 385, station_ink::terminalGreen);
    expectKnob(canvas, t[1], 385, station_ink::orange);
    expectKnob(canvas, t[2], 466, station_ink::orange);
    EXPECT_EQ(playAreaNoteUnlike(canvas, {kPlayLeft, kPlayBottom - 19, kPlayArea.w, 23}, "MATCH ALL THREE TO THE GHOST MARKS"),
              0);
}

TEST(CalibrateLook, AKnobDraggedOntoItsMarkTurnsGreenWhereItNowIs) {
    Driver<CalibrateLevel> d(2024);   // marks 0.52, 0.70, 0.24
    const Rect* t = d.level.tracks;
    {
        SoftwareCanvas canvas;
        renderOnBlack(canvas, d.level);
        expectKnob(canvas, t[0], 385, station_ink::terminalGreen);   // 0.5 is within 0.04 of 0.52
        expectKnob(canvas, t[1], 385, station_ink::orange);
        expectKnob(canvas, t[2], 385, station_ink::orange);
        // Slider 1's mark, 0.3 of the track down: 250 + 81.
        EXPECT_EQ(canvas.pixel(t[1].x - 7, 331), station_ink::dimGreen);
    }
    d.press(t[1].x + 20, t[1].y + 81);   // 1 - 81/270 = 0.7: onto the mark
    SoftwareCanvas canvas;
    renderOnBlack(canvas, d.level);
    EXPECT_EQ(canvas.pixel(t[1].x + 20, 331 - 4), station_ink::terminalGreen);
    EXPECT_EQ(canvas.pixel(t[1].x + 20, 331 + 4), station_ink::terminalGreen);
    EXPECT_EQ(canvas.pixel(t[1].x + 20, 385), station_ink::charcoal);   // gone from half-way
    expectKnob(canvas, t[0], 385, station_ink::terminalGreen);
    expectKnob(canvas, t[2], 385, station_ink::orange);
}

TEST(CalibrateSolver, ClearsTheSensorsOnEveryDifficulty) { EXPECT_EQ(unsolvedRuns("calibrate"), ""); }

}  // namespace
}  // namespace vorn::test
