// The sign-off station ("doubleclick"): eight desks, one lit, which wants two
// clicks less than four tenths of a second apart; a click on a dark desk
// fires you, and the light wanders to another desk every 1.4 s, drawn from
// the run's engine. The station's own clock stands still on the frame of a
// click on a desk, so a click's own frame never counts towards the gap.
// Seed 5489 lights desk 4 (3499211612 & 7), then desk 6 (581869302 mod 8).

#include "stations/aim_stations.h"
#include "support/draws_by_hand.h"
#include "aim_fixtures.h"

#include <gtest/gtest.h>

namespace vorn::test {
namespace {

using DoubleClick = Driver<DoubleClickLevel>;

// Desks 0-3 on the top row, 4-7 under them. Column lefts are the canvas
// middle 683 - 267, - 129, + 9 and + 147; the rows start 70 and 198 px under
// the top of the play area (190).
constexpr int kDeskLeft[4] = {416, 554, 692, 830};
constexpr int kDeskTop[2] = {260, 388};

// Somewhere on a desk, clear of its rounded corners.
int onX(const Rect& desk) { return desk.x + 5; }
int onY(const Rect& desk) { return desk.y + 5; }

TEST(DoubleClickStation, EightDesksInTwoRowsAroundTheMiddle) {
    DoubleClick d;
    for (int i = 0; i < 8; ++i) {
        const Rect& c = d.level.cells[i];
        EXPECT_EQ(c.x, kDeskLeft[i % 4]) << i;
        EXPECT_EQ(c.y, kDeskTop[i / 4]) << i;
        EXPECT_EQ(c.w, 120) << i;
        EXPECT_EQ(c.h, 110) << i;
    }
}

TEST(DoubleClickStation, TheLitDeskIsTheFirstDrawAndSeven) {
    DoubleClick d;
    EXPECT_EQ(d.level.litCell, 4);   // 3499211612 & 7
    EXPECT_EQ(d.level.armedCell, -1);
    EXPECT_EQ(d.level.armedTime, -1.0);
    EXPECT_EQ(d.level.litTimer, 0.0);
    EXPECT_EQ(d.level.clock, 0.0);
    EXPECT_EQ(d.level.rng, &d.rng);
    EXPECT_EQ(d.rng, engineAfter(5489, 1));
    DoubleClick other(42);   // 1608637542 & 7 = 6
    EXPECT_EQ(other.level.litCell, 6);
}

TEST(DoubleClickStation, TheLightMovesEveryOnePointFourSecondsWithOneDraw) {
    DoubleClick d;
    // Eighth-second frames add up exactly: 1.375 s after eleven, 1.5 s after twelve.
    for (int i = 0; i < 11; ++i) d.frame(0.125);
    EXPECT_EQ(d.rng, engineAfter(5489, 1));
    d.frame(0.125);
    EXPECT_EQ(d.level.litCell, 6);   // 581869302 mod 8
    EXPECT_EQ(d.rng, engineAfter(5489, 2));
    for (int i = 0; i < 12; ++i) d.frame(0.125);
    EXPECT_EQ(d.rng, engineAfter(5489, 3));
    EXPECT_EQ(d.sounds, Sounds{});
}

TEST(DoubleClickStation, TheLightStaysAtExactlyOnePointFourAndMovesJustPastIt) {
    DoubleClick d;
    d.level.litTimer = 1.4;
    d.level.armedCell = 4;
    d.frame(0.0);
    EXPECT_EQ(d.level.litCell, 4);
    EXPECT_EQ(d.level.armedCell, 4);
    EXPECT_EQ(d.rng, engineAfter(5489, 1));
    d.frame(1.0 / 1024);
    EXPECT_EQ(d.level.litCell, 6);
    EXPECT_EQ(d.level.armedCell, -1);
    EXPECT_EQ(d.level.litTimer, 0.0);
    EXPECT_EQ(d.rng, engineAfter(5489, 2));
}

TEST(DoubleClickStation, TheFirstClickOnTheLitDeskArmsItWithAClick) {
    DoubleClick d;
    const Rect& lit = d.level.cells[4];
    d.idle(15);
    const double before = d.level.clock;
    EXPECT_EQ(d.press(lit.x, lit.y), LevelResult::Running);   // its top left corner
    EXPECT_EQ(d.level.armedCell, 4);
    EXPECT_EQ(d.level.armedTime, before);
    EXPECT_EQ(d.sounds, Sounds{"click"});
}

TEST(DoubleClickStation, TwoClicksTwentyThreeFramesApartSignItOff) {
    // 23 frames between the presses: 0.383 s on the station's clock.
    DoubleClick d;
    const Rect& lit = d.level.cells[d.level.litCell];
    EXPECT_EQ(d.click(onX(lit), onY(lit)), LevelResult::Running);   // the release is frame one
    EXPECT_EQ(d.level.armedCell, d.level.litCell);
    d.idle(22);
    const std::size_t before = d.sounds.size();
    EXPECT_EQ(d.press(onX(lit), onY(lit)), LevelResult::Solved);
    EXPECT_EQ(d.soundsSince(before), Sounds{"pass"});
    EXPECT_EQ(d.sounds, (Sounds{"click", "pass"}));
}

TEST(DoubleClickStation, TwoClicksTwentyFiveFramesApartOnlyReArm) {
    // 25 frames between the presses: 0.417 s, too slow.
    DoubleClick d;
    const Rect& lit = d.level.cells[d.level.litCell];
    d.click(onX(lit), onY(lit));
    d.idle(24);
    EXPECT_EQ(d.press(onX(lit), onY(lit)), LevelResult::Running);
    EXPECT_EQ(d.level.armedCell, d.level.litCell);
    EXPECT_EQ(d.level.armedTime, d.level.clock);
    EXPECT_EQ(d.sounds, (Sounds{"click", "click"}));
}

TEST(DoubleClickStation, ClicksExactlyFourTenthsApartOnlyReArm) {
    DoubleClick d;
    const Rect& lit = d.level.cells[4];
    d.level.armedCell = 4;
    d.level.armedTime = 0.0;
    d.level.clock = 0.4;
    EXPECT_EQ(d.press(onX(lit), onY(lit)), LevelResult::Running);
    EXPECT_EQ(d.level.armedTime, 0.4);
    EXPECT_EQ(d.sounds, Sounds{"click"});
}

TEST(DoubleClickStation, TheClockStandsStillOnTheFrameOfAClickOnADesk) {
    DoubleClick d;
    const Rect& lit = d.level.cells[d.level.litCell];
    d.idle();
    EXPECT_EQ(d.level.clock, d.elapsed);
    const double before = d.level.clock;
    d.press(onX(lit), onY(lit));
    EXPECT_EQ(d.level.clock, before);
    EXPECT_EQ(d.level.armedTime, before);
    d.release();
    d.click(kPlayLeft + 10, kPlayTop + 10);   // nowhere near a desk: the clock runs
    EXPECT_DOUBLE_EQ(d.level.clock, before + 3 * StationDriver::kFrame);
}

TEST(DoubleClickStation, NeitherClicksOwnFrameCountsTowardsTheGap) {
    // From the first press to the end of the second 25 frames pass, 0.417 s
    // of play, yet only the 23 between them are on the station's clock.
    DoubleClick d;
    const Rect& lit = d.level.cells[d.level.litCell];
    const double start = d.elapsed;
    d.click(onX(lit), onY(lit));
    d.idle(22);
    EXPECT_EQ(d.press(onX(lit), onY(lit)), LevelResult::Solved);
    EXPECT_GT(d.elapsed - start, 0.4);
}

TEST(DoubleClickStation, AClickOnADarkDeskFires) {
    DoubleClick d;
    const Rect& dark = d.level.cells[(d.level.litCell + 1) % 8];
    EXPECT_EQ(d.press(dark.x + dark.w - 1, dark.y + dark.h - 1), LevelResult::Failed);
    EXPECT_EQ(d.sounds, Sounds{"fail"});
}

TEST(DoubleClickStation, AClickOnADarkDeskFiresEvenWithTheLitDeskArmed) {
    DoubleClick d;
    const Rect& lit = d.level.cells[4];
    const Rect& dark = d.level.cells[0];
    d.click(onX(lit), onY(lit));
    EXPECT_EQ(d.press(onX(dark), onY(dark)), LevelResult::Failed);
    EXPECT_EQ(d.sounds, (Sounds{"click", "fail"}));
}

TEST(DoubleClickStation, AButtonHeldDownOnTheLitDeskIsNoClick) {
    DoubleClick d;
    const Rect& lit = d.level.cells[4];
    d.press(kPlayLeft + 10, kPlayTop + 10);   // off the desks, and held
    EXPECT_EQ(d.moveTo(onX(lit), onY(lit)), LevelResult::Running);
    EXPECT_EQ(d.level.armedCell, -1);
    EXPECT_EQ(d.level.clock, d.elapsed);
    EXPECT_EQ(d.sounds, Sounds{});
}

TEST(DoubleClickStation, AClickInTheGapBetweenDesksDoesNothing) {
    DoubleClick d;
    const Rect& lit = d.level.cells[d.level.litCell];
    // The lit desk's right edge is outside it (half-open); the next desk starts 18 px on.
    EXPECT_EQ(d.click(lit.x + lit.w, onY(lit)), LevelResult::Running);
    EXPECT_EQ(d.click(onX(lit), lit.y + lit.h), LevelResult::Running);
    EXPECT_EQ(d.click(lit.x - 1, onY(lit)), LevelResult::Running);
    EXPECT_EQ(d.level.armedCell, -1);
    EXPECT_EQ(d.level.clock, d.elapsed);
    EXPECT_EQ(d.sounds, Sounds{});
}

TEST(DoubleClickStation, ADoubleClickThatStraddlesAMoveOnlyArmsTheNewDesk) {
    DoubleClick d;
    // Seed 5489 lights desk 4 and then desk 6; the light is set to move a
    // frame and a half from now, between the press and the release.
    const Rect& first = d.level.cells[4];
    const Rect& second = d.level.cells[6];
    d.level.litTimer = 1.4 - 1.5 * StationDriver::kFrame;
    d.press(onX(first), onY(first));
    EXPECT_EQ(d.level.armedCell, 4);
    d.release();
    EXPECT_EQ(d.level.litCell, 6);
    EXPECT_EQ(d.level.armedCell, -1);
    // The old desk is dark now; the new desk takes a first click only.
    EXPECT_EQ(d.press(onX(second), onY(second)), LevelResult::Running);
    EXPECT_EQ(d.level.armedCell, 6);
    EXPECT_EQ(d.sounds, (Sounds{"click", "click"}));
}

// ---------------------------------------------------------------------------
// What the player sees: dark brass desks, the lit one bright with its "x2"

TEST(DoubleClickLook, TheLitDeskIsBrightBrassWithItsX2) {
    for (const int lit : {4, 3}) {
        DoubleClick d;
        d.level.litCell = lit;
        Canvas canvas;
        d.level.render(canvas.graphics);
        for (int i = 0; i < 8; ++i) {
            const Rect& c = d.level.cells[i];
            const Color face = i == lit ? station_ink::litBrass : station_ink::darkBrass;
            // Rounded by 8: the top edge is bare up to 6 px in and filled from 8 px in.
            EXPECT_EQ(canvas.pixel(c.x + 1, c.y + 1), station_ink::black) << lit << " " << i;
            EXPECT_EQ(canvas.pixel(c.x + 6, c.y), station_ink::black) << lit << " " << i;
            EXPECT_EQ(canvas.pixel(c.x + 8, c.y), face) << lit << " " << i;
            EXPECT_EQ(canvas.pixel(c.x + c.w - 9, c.y + c.h - 1), face) << lit << " " << i;
            EXPECT_EQ(canvas.pixel(c.x + 10, c.y + 10), face) << lit << " " << i;
            EXPECT_EQ(canvas.pixel(c.x + c.w, c.y + 10), station_ink::black) << lit << " " << i;
        }
        const Rect& c = d.level.cells[lit];
        EXPECT_EQ(pixelsUnlikeText(canvas, {c.x + 10, c.y + 10, 100, 90}, station_ink::litBrass, "x2",
                                   c.x + 60, c.y + 55, TextSize::Large, station_ink::ink, true, true),
                  0)
            << lit;
        EXPECT_EQ(playAreaNoteUnlike(canvas, kPlayAreaNoteBand,
                                     "DOUBLE-CLICK THE LIT CELL \xE2\x80\x94 FAST"), 0);
        const Rect* desks = d.level.cells;
        EXPECT_EQ(strayPixels(canvas, station_ink::black,
                              {roundedBox(desks[0]), roundedBox(desks[1]), roundedBox(desks[2]), roundedBox(desks[3]),
                               roundedBox(desks[4]), roundedBox(desks[5]), roundedBox(desks[6]), roundedBox(desks[7]),
                               kPlayAreaNoteBand}),
                  0)
            << lit;
    }
}

// ---------------------------------------------------------------------------
// The automatic player, and the obvious wrong move

TEST(DoubleClickSolver, ClearsTheShippedStationOnEveryDifficulty) {
    EXPECT_EQ(unsolvedRuns("doubleclick"), "");
}

TEST(DoubleClickSolver, ASolvedRunClicksToArmThenPasses) {
    for (const std::uint32_t seed : {5489u, 7u}) {
        const Sounds sounds = soundsOfASolvedRun("doubleclick", seed);
        ASSERT_GE(sounds.size(), 2u) << seed;
        EXPECT_EQ(sounds, clicksThenPass(sounds.size() - 1)) << seed;
    }
}

TEST(DoubleClickStation, ClickingADarkDeskFiresWithTheFailSound) {
    StationDriver d(shippedRecord("doubleclick"), 5489);
    auto wrong = careless<DoubleClickLevel>([](const DoubleClickLevel& level, int& x, int& y) {
        const Rect& c = level.cells[(level.litCell + 4) % 8];
        x = centreX(c);
        y = centreY(c);
        return true;
    });
    EXPECT_EQ(d.play(wrong, 10.0).result, LevelResult::Failed);
    EXPECT_EQ(d.sounds, Sounds{"fail"});
}

}  // namespace
}  // namespace vorn::test
