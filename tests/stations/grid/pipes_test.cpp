// The plumbing ("pipes"): three rows of five segments, each click turning
// one a quarter, solved once the top or the bottom row lies level. The
// middle row's centre is locked upright and only buzzes. The turns a seed
// deals are read longhand from raw engine outputs.

#include "stations/grid/grid_fixtures.h"
#include "stations/grid_stations.h"
#include "support/board_probe.h"
#include "support/play_area.h"
#include "support/station_driver.h"

#include <gtest/gtest.h>

#include <algorithm>

namespace vorn::test {
namespace {

using Pipes = Driver<PipesLevel>;

// Sets every turn of the board at once, row by row.
void turnAll(PipesLevel& p, const int (&rotation)[3][5]) {
    std::copy(&rotation[0][0], &rotation[0][0] + 15, &p.rotation[0][0]);
}

TEST(PipesStation, FiveByThreeCellsOf113) {
    Pipes d;
    EXPECT_EQ(d.level.columns, 5);
    EXPECT_EQ(d.level.rows, 3);
    // The smaller of (430 - 90) / 3 = 113 and (840 - 40) / 5 = 160.
    EXPECT_EQ(d.level.cell, 113);
    // Five cells span 565 of the 840: 137 either side.
    EXPECT_EQ(d.level.originX, kPlayLeft + 137);
    EXPECT_EQ(d.level.originY, kPlayTop + 30);
    // A narrow area: the width decides, (300 - 40) / 5 = 52, leaving 40.
    Pipes narrow(5489, 11, Rect{0, 0, 300, 400});
    EXPECT_EQ(narrow.level.cell, 52);
    EXPECT_EQ(narrow.level.originX, 20);
}

TEST(PipesStation, RotationsAreTheLowTwoBitsOfOneDrawACellThenTheCentreLocks) {
    for (std::uint32_t seed = 1; seed <= 40; ++seed) {
        Pipes d(seed);
        Rng ref(seed);
        for (int r = 0; r < 3; ++r) {
            for (int c = 0; c < 5; ++c) {
                const int drawn = static_cast<int>(ref() & 3u);
                const bool centre = r == 1 && c == 2;
                EXPECT_EQ(d.level.rotation[r][c], centre ? 1 : drawn);
                EXPECT_EQ(d.level.locked[r][c], centre);
            }
        }
        EXPECT_EQ(d.rng, ref) << "seed " << seed;
    }
}

TEST(PipesStation, AClickTurnsASegmentAQuarterWrappingAfterThree) {
    Pipes d;
    d.level.rotation[0][0] = 1;   // keep the top row from solving
    d.level.rotation[2][0] = 1;
    const Rect c = d.level.cellRect(1, 0);
    d.level.rotation[1][0] = 2;
    EXPECT_EQ(d.clickCentre(c), LevelResult::Running);
    EXPECT_EQ(d.level.rotation[1][0], 3);
    EXPECT_EQ(d.sounds, Sounds{"click"});
    EXPECT_EQ(d.clickCentre(c), LevelResult::Running);
    EXPECT_EQ(d.level.rotation[1][0], 0);
    EXPECT_EQ(d.sounds, (Sounds{"click", "click"}));
    // Two pixels in from the edge is the first pixel that counts; the seam
    // is silent.
    EXPECT_EQ(d.click(c.x + 1, c.y + 50), LevelResult::Running);
    EXPECT_EQ(d.click(c.x + 111, c.y + 50), LevelResult::Running);
    EXPECT_EQ(d.click(c.x + 50, c.y + 1), LevelResult::Running);
    EXPECT_EQ(d.click(c.x + 50, c.y + 111), LevelResult::Running);
    EXPECT_EQ(d.level.rotation[1][0], 0);
    EXPECT_EQ(d.sounds.size(), 2u);
    EXPECT_EQ(d.click(c.x + 2, c.y + 110), LevelResult::Running);
    EXPECT_EQ(d.level.rotation[1][0], 1);
    EXPECT_EQ(d.soundsSince(2), Sounds{"click"});
}

TEST(PipesStation, TheLockedCentreBuzzesButNeverTurnsOrFires) {
    Pipes d;
    const Rect c = d.level.cellRect(1, 2);
    for (int i = 0; i < 10; ++i) {
        const std::size_t before = d.sounds.size();
        ASSERT_EQ(d.clickCentre(c), LevelResult::Running);
        // A buzz, never a click.
        EXPECT_EQ(d.soundsSince(before), Sounds{"fail"});
        // The buzz is all: half a second later there is still no verdict.
        ASSERT_EQ(d.holdFor(0.5), LevelResult::Running);
    }
    EXPECT_EQ(d.level.rotation[1][2], 1);
    // A free segment beside it turns with a click, not a buzz.
    d.level.rotation[0][0] = 1;   // keep the top row from solving
    const std::size_t before = d.sounds.size();
    EXPECT_EQ(d.clickCentre(d.level.cellRect(1, 0)), LevelResult::Running);
    EXPECT_EQ(d.soundsSince(before), Sounds{"click"});
}

TEST(PipesStation, TheCentreRowNeverSolvesOnlyTheTopOrBottomRow) {
    Pipes d;
    PipesLevel& p = d.level;
    for (int c = 0; c < 5; ++c) {
        p.rotation[0][c] = 1;
        p.rotation[2][c] = 3;
        p.rotation[1][c] = c == 2 ? 1 : 3;
    }
    // Turn every free segment of the middle row level: still not solved.
    for (int c = 0; c < 5; ++c) {
        if (c != 2) {
            ASSERT_EQ(d.clickCentre(p.cellRect(1, c)), LevelResult::Running);
            ASSERT_EQ(p.rotation[1][c], 0);
        }
    }
    EXPECT_FALSE(p.solved());
    // Even if the centre were level, the middle row is never asked.
    p.rotation[1][2] = 0;
    EXPECT_FALSE(p.solved());
    p.rotation[1][2] = 1;
    // The bottom row, one segment at a time: the last turn solves.
    for (int c = 0; c < 4; ++c) {
        ASSERT_EQ(d.clickCentre(p.cellRect(2, c)), LevelResult::Running);
    }
    EXPECT_EQ(d.clickCentre(p.cellRect(2, 4)), LevelResult::Solved);
}

TEST(PipesStation, TheTopRowSolvesToo) {
    Pipes d;
    PipesLevel& p = d.level;
    for (int c = 0; c < 5; ++c) {
        p.rotation[0][c] = c == 4 ? 3 : 2;
        p.rotation[2][c] = 1;
    }
    EXPECT_FALSE(p.solved());
    EXPECT_EQ(d.clickCentre(p.cellRect(0, 4)), LevelResult::Solved);
    EXPECT_EQ(p.rotation[0][4], 0);
    EXPECT_EQ(d.sounds, (Sounds{"click", "pass"}));
}

TEST(PipesStation, ARowAlreadyLevelSolvesOnTheFirstTurnAnywhereElse) {
    Pipes d;
    PipesLevel& p = d.level;
    for (int c = 0; c < 5; ++c) {
        p.rotation[0][c] = 0;
        p.rotation[2][c] = 1;
    }
    EXPECT_TRUE(p.solved());
    EXPECT_EQ(d.idle(), LevelResult::Running);   // no click, no verdict
    EXPECT_EQ(d.clickCentre(p.cellRect(1, 0)), LevelResult::Solved);
}

// What the player sees of a segment on its tile. A tile of 113 has a brass
// face 2 in from its edges (109 square, corners of radius 4); a level
// segment is the bar (x + 6, y + 52, 101, 8) and an upright one the bar
// (x + 52, y + 6, 8, 101), where 52 = (113 - 4) / 2 - 2.
void expectTile(const StationPicture& p, const Rect& t, bool level, Color face, Color segment) {
    constexpr int h = 52;
    const auto at = [&](int dx, int dy) { return p.at(t.x + dx, t.y + dy); };
    EXPECT_EQ(at(2, 20), face);
    EXPECT_EQ(at(110, 20), face);
    EXPECT_EQ(at(1, 20), station_ink::black);
    EXPECT_EQ(at(111, 20), station_ink::black);
    EXPECT_EQ(bareAlongTopRow(p, Rect{t.x + 2, t.y + 2, 109, 109}, face), 4);
    if (level) {
        EXPECT_EQ(at(6, h), segment);
        EXPECT_EQ(at(106, h + 7), segment);
        EXPECT_EQ(at(5, h), face);
        EXPECT_EQ(at(107, h + 7), face);
        EXPECT_EQ(at(56, h - 1), face);
        EXPECT_EQ(at(56, h + 8), face);
        EXPECT_EQ(at(h + 4, 20), face);   // nothing upright
    } else {
        EXPECT_EQ(at(h, 6), segment);
        EXPECT_EQ(at(h + 7, 106), segment);
        EXPECT_EQ(at(h, 5), face);
        EXPECT_EQ(at(h + 7, 107), face);
        EXPECT_EQ(at(h - 1, 50), face);
        EXPECT_EQ(at(h + 8, 50), face);
        EXPECT_EQ(at(20, h + 4), face);   // nothing level
    }
}

TEST(PipesStation, EachTileShowsItsSegmentLevelOrUpright) {
    Pipes d;
    PipesLevel& p = d.level;
    const int rotation[3][5] = {{0, 1, 2, 3, 0}, {3, 2, 1, 0, 1}, {1, 1, 2, 0, 3}};
    turnAll(p, rotation);
    ASSERT_FALSE(p.solved());
    StationPicture picture(p);
    for (int r = 0; r < 3; ++r) {
        for (int c = 0; c < 5; ++c) {
            SCOPED_TRACE(testing::Message() << "tile " << r << "," << c);
            const bool locked = r == 1 && c == 2;
            expectTile(picture, p.cellRect(r, c), rotation[r][c] % 2 == 0,
                       locked ? station_ink::lockedRed : station_ink::unlitKey, grid_ink::amber);
        }
    }
    // IN and OUT mark the middle row from outside the board, at the height
    // of its top: IN 26 left of the board, OUT 4 right of it (the board
    // spans 565 from its left edge).
    // Each is compared over a box of 80 rows from 33 above that height,
    // out to the play area's side.
    const int rowTop = p.originY + p.cell;
    const int boardRight = p.originX + 565;
    const Rect leftOfBoard{kPlayLeft + 37, rowTop - 33, p.originX - kPlayLeft - 37, 80};
    const Rect rightOfBoard{boardRight + 1, rowTop - 33, kPlayRight - boardRight - 1, 80};
    EXPECT_EQ(smallWordsUnlike(picture, leftOfBoard, "IN", p.originX - 26, rowTop,
                               station_ink::terminalGreen, false),
              0);
    EXPECT_EQ(smallWordsUnlike(picture, rightOfBoard, "OUT", boardRight + 4, rowTop,
                               station_ink::terminalGreen, false),
              0);
    EXPECT_EQ(playAreaNoteUnlike(picture, playAreaRows(p.originY + 3 * p.cell + 5, kPlayBottom + 40),
                                 "ONE SEGMENT IS LOCKED - ROUTE AROUND IT", 16), 0);
}

TEST(PipesStation, SolvedEverySegmentTurnsGreen) {
    Pipes d;
    PipesLevel& p = d.level;
    const int rotation[3][5] = {{0, 2, 2, 0, 0}, {3, 2, 1, 0, 1}, {1, 1, 2, 0, 3}};
    turnAll(p, rotation);
    ASSERT_TRUE(p.solved());
    StationPicture picture(p);
    for (int r = 0; r < 3; ++r) {
        for (int c = 0; c < 5; ++c) {
            SCOPED_TRACE(testing::Message() << "tile " << r << "," << c);
            const bool locked = r == 1 && c == 2;
            expectTile(picture, p.cellRect(r, c), rotation[r][c] % 2 == 0,
                       locked ? station_ink::lockedRed : station_ink::unlitKey,
                       station_ink::terminalGreen);
        }
    }
}

TEST(PipesStation, TheAutomaticPlayerClearsItOnEveryDifficulty) {
    EXPECT_EQ(unsolvedRuns("pipes"), "");
}

}  // namespace
}  // namespace vorn::test
