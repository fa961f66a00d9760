// The fire-exit walk ("maze"): seven columns of tiles, bright walls and a
// dark path, walked tile by tile from the first column to the last. The
// floor plan a seed deals is worked out longhand from raw engine outputs;
// the walk is clicked tile by tile, and the plan is looked at tile by tile.

#include "stations/grid/grid_fixtures.h"
#include "stations/grid_stations.h"
#include "support/board_probe.h"
#include "support/draws_by_hand.h"
#include "support/play_area.h"
#include "support/station_driver.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cstdlib>

namespace vorn::test {
namespace {

// The floor plan a seed deals, worked out longhand: a start row r() % 5,
// then for each of the first six columns a raw draw whose low bit says
// whether the path steps, and if so one more whose low bit says down.
struct MazeDeal {
    bool open[5][7] = {};
    int startRow = 0;
    int exitRow = 0;
    int draws = 0;
    bool clamped = false;   // a step ran into the top or bottom edge
};

MazeDeal mazeByHand(std::uint32_t seed) {
    Rng ref(seed);
    MazeDeal deal;
    int row = static_cast<int>(ref() % 5u);
    deal.draws = 1;
    deal.startRow = row;
    for (int c = 0; c < 7; ++c) {
        deal.open[row][c] = true;
        if (c == 6) {
            break;
        }
        ++deal.draws;
        if ((ref() & 1u) == 1u) {
            ++deal.draws;
            const int want = row + ((ref() & 1u) == 1u ? 1 : -1);
            deal.clamped = deal.clamped || want < 0 || want > 4;
            row = std::min(std::max(want, 0), 4);
            deal.open[row][c] = true;
        }
    }
    deal.exitRow = row;
    return deal;
}

// The walk on seed 11, a tile clicked at a time.
struct MazeStation : ::testing::Test {
    Driver<MazeLevel> d{11};
    MazeLevel& m = d.level;
    Sounds heard;   // what the last clickTile asked for, press to release

    LevelResult clickTile(int row, int column) {
        const std::size_t before = d.sounds.size();
        const LevelResult r = d.clickCentre(m.cellRect(row, column));
        heard = d.soundsSince(before);
        return r;
    }
};

TEST_F(MazeStation, SevenByFiveTilesOfSeventyCentredBelowTheTop) {
    EXPECT_EQ(m.columns, 7);
    EXPECT_EQ(m.rows, 5);
    // The smaller of (430 - 80) / 5 = 70 and (840 - 40) / 7 = 114.
    EXPECT_EQ(m.cell, 70);
    // Seven tiles span 490 of the 840: 175 either side.
    EXPECT_EQ(m.originX, kPlayLeft + 175);
    EXPECT_EQ(m.originY, kPlayTop + 30);
    const Rect c = m.cellRect(4, 6);
    EXPECT_EQ(c.x, kPlayLeft + 175 + 420);
    EXPECT_EQ(c.y, kPlayTop + 30 + 280);
    EXPECT_EQ(c.w, 70);
    EXPECT_EQ(c.h, 70);
    // A narrow area: the width decides, (300 - 40) / 7 = 37, and seven of
    // those (259) leave 41 to share.
    Driver<MazeLevel> narrow(5489, 11, Rect{0, 0, 300, 400});
    EXPECT_EQ(narrow.level.cell, 37);
    EXPECT_EQ(narrow.level.originX, 41 / 2);
    EXPECT_EQ(narrow.level.originY, 30);
}

TEST_F(MazeStation, ThePathIsDealtFromRawDrawsInOrder) {
    for (std::uint32_t seed = 1; seed <= 60; ++seed) {
        Driver<MazeLevel> dealt(seed);
        const MazeLevel& plan = dealt.level;
        const MazeDeal deal = mazeByHand(seed);
        for (int r = 0; r < 5; ++r) {
            for (int c = 0; c < 7; ++c) {
                EXPECT_EQ(plan.wall[r][c], !deal.open[r][c])
                    << "seed " << seed << " tile " << r << "," << c;
            }
        }
        EXPECT_EQ(plan.startRow, deal.startRow);
        EXPECT_EQ(plan.exitRow, deal.exitRow);
        EXPECT_EQ(plan.playerRow, deal.startRow);
        EXPECT_EQ(plan.playerColumn, 0);
        EXPECT_EQ(dealt.rng, engineAfter(seed, static_cast<unsigned long long>(deal.draws)))
            << "seed " << seed;
    }
}

TEST_F(MazeStation, AStepIntoTheEdgeIsClampedAndThePathGoesStraightOn) {
    // Find a deal in which the path, on the top or bottom row, was told to
    // step off the board, and the column where that happened.
    std::uint32_t seed = 0;
    int column = -1;
    while (column < 0) {
        ++seed;
        ASSERT_LT(seed, 5000u);
        Rng ref(seed);
        int row = static_cast<int>(ref() % 5u);
        for (int c = 0; c < 6 && column < 0; ++c) {
            if ((ref() & 1u) == 1u) {
                const int want = row + ((ref() & 1u) == 1u ? 1 : -1);
                if (want < 0 || want > 4) {
                    column = c;
                }
                row = std::min(std::max(want, 0), 4);
            }
        }
    }
    EXPECT_TRUE(mazeByHand(seed).clamped);
    Driver<MazeLevel> dealt(seed);
    // The step opened the tile the path was already on: that column has one
    // open tile, on the edge, and the path goes straight on from it.
    int open = 0;
    int row = -1;
    for (int r = 0; r < 5; ++r) {
        if (!dealt.level.wall[r][column]) {
            ++open;
            row = r;
        }
    }
    EXPECT_EQ(open, 1) << "seed " << seed << " column " << column;
    EXPECT_TRUE(row == 0 || row == 4);
    EXPECT_FALSE(dealt.level.wall[row][column + 1]);
}

TEST_F(MazeStation, TheLastColumnNeverTakesAStep) {
    for (std::uint32_t seed = 1; seed <= 200; ++seed) {
        Driver<MazeLevel> dealt(seed);
        int open = 0;
        for (int r = 0; r < 5; ++r) {
            open += dealt.level.wall[r][6] ? 0 : 1;
        }
        ASSERT_EQ(open, 1) << "seed " << seed;
        ASSERT_FALSE(dealt.level.wall[dealt.level.exitRow][6]);
    }
}

TEST_F(MazeStation, ClickingTheOwnTileOrATileTwoAwayDoesNothingEvenOnAWall) {
    EXPECT_EQ(clickTile(m.playerRow, m.playerColumn), LevelResult::Running);
    int far = 0;
    for (int r = 0; r < 5; ++r) {
        for (int c = 0; c < 7; ++c) {
            if (std::abs(r - m.playerRow) + std::abs(c - m.playerColumn) >= 2) {
                EXPECT_EQ(clickTile(r, c), LevelResult::Running) << r << "," << c;
                far += m.wall[r][c] ? 1 : 0;
            }
        }
    }
    EXPECT_GT(far, 10);   // plenty of those were walls
    EXPECT_EQ(m.playerRow, m.startRow);
    EXPECT_EQ(m.playerColumn, 0);
    // Ignored means ignored: no click, and above all no buzz.
    EXPECT_EQ(d.sounds, Sounds{});
}

TEST_F(MazeStation, ANeighbouringWallFires) {
    const int r = m.playerRow;
    const int wallRow = r > 0 && m.wall[r - 1][0] ? r - 1 : r + 1;
    ASSERT_TRUE(wallRow >= 0 && wallRow < 5 && m.wall[wallRow][0]);
    EXPECT_EQ(clickTile(wallRow, 0), LevelResult::Failed);
    EXPECT_EQ(d.sounds, Sounds{"fail"});
}

TEST_F(MazeStation, WalkingTheDarkTilesToTheLastColumnSolvesAndBackIsAllowed) {
    // Follow the path: in each column go up or down through open tiles to
    // where the next column is open, then step right.
    int row = m.playerRow;
    bool steppedBack = false;
    for (int c = 0; c < 7; ++c) {
        if (c == 1) {
            // One step back onto the tile just left, and forward again.
            ASSERT_EQ(clickTile(row, 0), LevelResult::Running);
            EXPECT_EQ(m.playerColumn, 0);
            EXPECT_EQ(heard, Sounds{"click"});
            ASSERT_EQ(clickTile(row, 1), LevelResult::Running);
            EXPECT_EQ(heard, Sounds{"click"});
            steppedBack = true;
        }
        while (c < 6 && m.wall[row][c + 1]) {
            const int next = row + 1 < 5 && !m.wall[row + 1][c] ? row + 1 : row - 1;
            ASSERT_FALSE(m.wall[next][c]);
            ASSERT_EQ(clickTile(next, c), LevelResult::Running);
            EXPECT_EQ(heard, Sounds{"click"});
            row = next;
        }
        if (c == 6) {
            break;
        }
        const LevelResult r = clickTile(row, c + 1);
        if (c + 1 == 6) {
            EXPECT_EQ(r, LevelResult::Solved);
            EXPECT_EQ(heard, (Sounds{"click", "pass"}));
        } else {
            ASSERT_EQ(r, LevelResult::Running);
            EXPECT_EQ(heard, Sounds{"click"});
            EXPECT_EQ(m.playerColumn, c + 1);
            EXPECT_EQ(m.playerRow, row);
        }
    }
    EXPECT_TRUE(steppedBack);
}

TEST_F(MazeStation, ATileTakesClicksOnlyTwoPixelsInFromItsEdges) {
    // Put the player on the exit row's second-last tile, so the exit is a
    // step to the right (the board is edited to make the route).
    m.playerColumn = 5;
    m.playerRow = m.exitRow;
    m.wall[m.exitRow][5] = false;
    const Rect exit = m.cellRect(m.exitRow, 6);
    EXPECT_EQ(d.click(exit.x + 1, exit.y + 35), LevelResult::Running);
    EXPECT_EQ(d.click(exit.x + 35, exit.y + 68), LevelResult::Running);
    EXPECT_EQ(d.click(exit.x + 68, exit.y + 35), LevelResult::Running);
    EXPECT_EQ(m.playerColumn, 5);
    EXPECT_EQ(d.sounds, Sounds{});
    EXPECT_EQ(d.click(exit.x + 2, exit.y + 67), LevelResult::Solved);
    EXPECT_EQ(d.sounds, (Sounds{"click", "pass"}));
}

// Every tile of the plan seed 11 deals, as the player sees it: a face 2 in
// from the tile's edges (66 square, corners of radius 4), bright for a
// wall, dark for the path, with an outline 5 in (60 square) in amber on a
// wall and dark glass on the path; the exit tile's face is green all over,
// outline and all; black seams between the tiles.
TEST_F(MazeStation, EveryTileShowsWallOrPathAsDealt) {
    const MazeDeal deal = mazeByHand(11);
    StationPicture p(m);
    for (int r = 0; r < 5; ++r) {
        for (int c = 0; c < 7; ++c) {
            const Rect t = m.cellRect(r, c);
            const bool exit = r == deal.exitRow && c == 6;
            const bool wall = !deal.open[r][c];
            const Color face = exit ? station_ink::darkGreen
                                    : wall ? station_ink::paleGold : station_ink::soot;
            const Color outline = exit ? face : wall ? grid_ink::amber : grid_ink::darkGlass;
            const auto at = [&](int dx, int dy) { return p.at(t.x + dx, t.y + dy); };
            EXPECT_EQ(at(12, 12), face) << "tile " << r << "," << c;
            EXPECT_EQ(at(4, 35), face) << "tile " << r << "," << c;
            EXPECT_EQ(at(65, 35), face) << "tile " << r << "," << c;
            EXPECT_EQ(at(5, 35), outline) << "tile " << r << "," << c;
            EXPECT_EQ(at(64, 35), outline) << "tile " << r << "," << c;
            EXPECT_EQ(at(35, 5), outline) << "tile " << r << "," << c;
            EXPECT_EQ(at(35, 64), outline) << "tile " << r << "," << c;
            EXPECT_EQ(bareAlongTopRow(p, Rect{t.x + 2, t.y + 2, 66, 66}, face), 4)
                << "tile " << r << "," << c;
            EXPECT_EQ(at(1, 35), station_ink::black) << "tile " << r << "," << c;
            EXPECT_EQ(at(68, 35), station_ink::black) << "tile " << r << "," << c;
            EXPECT_EQ(at(35, 1), station_ink::black) << "tile " << r << "," << c;
            EXPECT_EQ(at(35, 68), station_ink::black) << "tile " << r << "," << c;
        }
    }
    EXPECT_EQ(playAreaNoteUnlike(p, playAreaRows(m.originY + 5 * 70 + 5, kPlayBottom + 40),
                                 "FOLLOW THE DARK PATH", 18), 0);
}

// The player: a red disc of radius 22 ((70 - 4) / 3) on the middle of the
// face of the tile the player stands on, (x + 35, y + 35), and nowhere else.
TEST_F(MazeStation, ThePlayerIsARedDiscOnTheirOwnTile) {
    const Color red = station_ink::alarmRed;
    {
        StationPicture p(m);
        const Rect start = m.cellRect(m.startRow, 0);
        const int x = start.x + 35;
        const int y = start.y + 35;
        EXPECT_EQ(p.at(x, y), red);
        // The middle row reaches 22 to either side; the top and bottom rows
        // shrink to a point, so upward the red stops within 22.
        EXPECT_EQ(p.at(x + 22, y), red);
        EXPECT_EQ(p.at(x - 22, y), red);
        EXPECT_NE(p.at(x + 23, y), red);
        EXPECT_NE(p.at(x - 23, y), red);
        EXPECT_EQ(p.at(x, y - 21), red);
        EXPECT_EQ(p.at(x, y + 21), red);
        EXPECT_NE(p.at(x, y - 23), red);
        EXPECT_NE(p.at(x, y + 23), red);
    }
    // Moved to the middle of the board, the disc goes with the player.
    m.playerRow = 2;
    m.playerColumn = 3;
    StationPicture p(m);
    const Rect middle = m.cellRect(2, 3);
    const Rect start = m.cellRect(m.startRow, 0);
    EXPECT_EQ(p.at(middle.x + 35, middle.y + 35), red);
    EXPECT_EQ(p.at(middle.x + 35 + 22, middle.y + 35), red);
    EXPECT_NE(p.at(middle.x + 35 + 23, middle.y + 35), red);
    EXPECT_EQ(p.at(start.x + 35, start.y + 35), station_ink::soot);
}

TEST_F(MazeStation, TheAutomaticPlayerClearsItOnEveryDifficulty) {
    EXPECT_EQ(unsolvedRuns("maze"), "");
}

}  // namespace
}  // namespace vorn::test
