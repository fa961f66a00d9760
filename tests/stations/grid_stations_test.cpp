// The grid family: the lighting panel, the fire-exit walk, the plumbing and
// the patch panel. Boards are checked against deals worked out longhand
// from raw engine outputs, so the stations' own helpers are not trusted to
// check themselves.

#include "audio/audio_system.h"
#include "data/level_catalogue.h"
#include "stations/grid_stations.h"
#include "stations/level_factory.h"
#include "support/draws_by_hand.h"
#include "support/software_canvas.h"
#include "support/solvers/family_solvers.h"
#include "support/station_bench.h"
#include "support/station_sounds.h"
#include "support/station_desk.h"

#include <SDL_mixer.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <cstdlib>
#include <vector>

namespace vorn {
namespace {

using test::Desk;

// The play area every station gets: {263, 190, 840, 430}, centre x 683.
constexpr int kCx = 683;
constexpr Color kInstructionColour = rgb(178, 119, 32);

using test::centreX;
using test::centreY;

// A canvas with a station drawn on black, fonts loaded.
struct Drawn {
    test::SoftwareCanvas canvas;
    explicit Drawn(Level& level) {
        canvas.useGameFonts();
        canvas.graphics.clear(palette::black);
        level.render(canvas.graphics);
    }
    Color at(int x, int y) const { return canvas.pixel(x, y); }
    bool shows(const Rect& box, Color c) const { return test::anyPixelNear(canvas, box, c, 0); }
};

// Small words exactly as and where they belong: drawn alone at (x, y), they
// give the very pixels of colour c that the station drew inside `box`, no
// more and no fewer.
void expectWords(const Drawn& d, const char* words, int x, int y, Color c, bool centred,
                 const Rect& box) {
    test::SoftwareCanvas alone;
    alone.useGameFonts();
    alone.graphics.clear(palette::black);
    alone.graphics.text(words, x, y, TextSize::Small, c, centred, false);
    int expected = 0;
    int mismatched = 0;
    for (int py = box.y; py < box.y + box.h; ++py) {
        for (int px = box.x; px < box.x + box.w; ++px) {
            const bool want = alone.pixel(px, py) == c;
            const bool got = d.at(px, py) == c;
            expected += want ? 1 : 0;
            mismatched += want != got ? 1 : 0;
        }
    }
    EXPECT_GT(expected, 10) << words;
    EXPECT_EQ(mismatched, 0) << words;
}

// The station's own line of orders, exactly as and where it belongs: the
// words drawn alone, centred on x 683 and `fromBottom` pixels above the play
// area's foot, give the very pixels of that colour the station drew, no
// more and no fewer.
void expectInstruction(const Drawn& d, const char* words, int fromBottom) {
    expectWords(d, words, kCx, 620 - fromBottom, kInstructionColour, true,
                Rect{263, 540, 840, 120});
}

TEST(GridFamily, EachTypeStringMakesItsStation) {
    EXPECT_NE(dynamic_cast<LightsOutLevel*>(createLevel("lightsout").get()), nullptr);
    EXPECT_NE(dynamic_cast<MazeLevel*>(createLevel("maze").get()), nullptr);
    EXPECT_NE(dynamic_cast<PipesLevel*>(createLevel("pipes").get()), nullptr);
    EXPECT_NE(dynamic_cast<WiresLevel*>(createLevel("wires").get()), nullptr);
}

TEST(GridFamily, TimePassingAloneNeverEndsAStation) {
    Desk<LightsOutLevel> lights(3);
    Desk<MazeLevel> maze(3);
    Desk<PipesLevel> pipes(3);
    Desk<WiresLevel> wires(3);
    for (int i = 0; i < 2000; ++i) {
        ASSERT_EQ(lights.step(0.05), LevelResult::Running);
        ASSERT_EQ(maze.step(0.05), LevelResult::Running);
        ASSERT_EQ(pipes.step(0.05), LevelResult::Running);
        ASSERT_EQ(wires.step(0.05), LevelResult::Running);
    }
}

// ------------------------------------------------------------- LightsOut

// The panel a seed deals, worked out longhand: bit 3 r + c set for a dark
// cell. `draws` is how many raw outputs the deal took.
struct LightsDeal {
    unsigned dark = 0;
    int presses = 0;
    int draws = 0;
};

// The cells a press at `cell` inverts, as bits 3 r + c.
unsigned crossMask(int cell) {
    const int row = cell / 3;
    const int column = cell % 3;
    unsigned m = 1u << cell;
    if (column > 0) m |= 1u << (cell - 1);
    if (column < 2) m |= 1u << (cell + 1);
    if (row > 0) m |= 1u << (cell - 3);
    if (row < 2) m |= 1u << (cell + 3);
    return m;
}

LightsDeal lightsByHand(std::uint32_t seed) {
    Rng ref(seed);
    LightsDeal deal;
    deal.presses = static_cast<int>(ref() % 3u) + 4;
    deal.draws = 1;
    for (int k = 0; k < deal.presses; ++k) {
        const int row = static_cast<int>(ref() % 3u);
        const int column = static_cast<int>(ref() % 3u);
        deal.draws += 2;
        deal.dark ^= crossMask(row * 3 + column);
    }
    return deal;
}

unsigned darkMask(const LightsOutLevel& level) {
    unsigned m = 0;
    for (int i = 0; i < 9; ++i) {
        m |= level.lit[i] ? 0u : 1u << i;
    }
    return m;
}

int darkCount(const LightsOutLevel& level) {
    return static_cast<int>(std::count(std::begin(level.lit), std::end(level.lit), false));
}

TEST(LightsOut, NineCellsOfOneHundredTenCentredOnThePlayArea) {
    Desk<LightsOutLevel> desk;
    EXPECT_EQ(desk.level.n, 3);
    for (int row = 0; row < 3; ++row) {
        for (int column = 0; column < 3; ++column) {
            const Rect& c = desk.level.cells[row * 3 + column];
            EXPECT_EQ(c.x, kCx - 181 + 126 * column);
            EXPECT_EQ(c.y, 190 + 54 + 126 * row);
            EXPECT_EQ(c.w, 110);
            EXPECT_EQ(c.h, 110);
        }
    }
    // Another area: the grid follows its centre and top.
    Desk<LightsOutLevel> other(5489, 11, Rect{10, 20, 501, 400});
    EXPECT_EQ(other.level.cells[0].x, 10 + 250 - 181);
    EXPECT_EQ(other.level.cells[8].y, 20 + 54 + 252);
}

TEST(LightsOut, TheScrambleIsFourToSixPressesFromRawDraws) {
    bool sawPresses[7] = {};
    for (std::uint32_t seed = 1; seed <= 60; ++seed) {
        Desk<LightsOutLevel> desk(seed);
        const LightsDeal deal = lightsByHand(seed);
        EXPECT_EQ(darkMask(desk.level), deal.dark) << "seed " << seed;
        EXPECT_EQ(desk.rng, test::engineAfter(seed, static_cast<unsigned long long>(deal.draws))) << "seed " << seed;
        sawPresses[deal.presses] = true;
    }
    EXPECT_TRUE(sawPresses[4] && sawPresses[5] && sawPresses[6]);
}

TEST(LightsOut, AScrambleThatCancelsLeavesEveryCellLitButUnsolved) {
    std::uint32_t seed = 1;
    while (lightsByHand(seed).dark != 0) {
        ++seed;
        ASSERT_LT(seed, 100000u);
    }
    Desk<LightsOutLevel> desk(seed);
    EXPECT_EQ(darkCount(desk.level), 0);
    // Frames pass, the pointer wanders, a click lands in a gap: not solved.
    for (int i = 0; i < 100; ++i) {
        desk.pointAt(kCx, 400);
        ASSERT_EQ(desk.step(0.05), LevelResult::Running);
    }
    const Rect& c0 = desk.level.cells[0];
    EXPECT_EQ(desk.click(c0.x + 113, c0.y + 50), LevelResult::Running);   // between two cells
    EXPECT_EQ(darkCount(desk.level), 0);
    // The first real click darkens three cells; the same click undoes it and
    // only then, with a click made and all lit, is the panel done.
    EXPECT_EQ(desk.clickCentre(c0), LevelResult::Running);
    EXPECT_EQ(darkCount(desk.level), 3);
    EXPECT_EQ(desk.press(c0.x + 5, c0.y + 5), LevelResult::Solved);
}

TEST(LightsOut, ACornerTogglesThreeAnEdgeFourTheCentreFive) {
    Desk<LightsOutLevel> desk;
    auto fromAllLit = [&](int cell) {
        std::fill(std::begin(desk.level.lit), std::end(desk.level.lit), true);
        EXPECT_EQ(desk.clickCentre(desk.level.cells[cell]), LevelResult::Running);
        return darkMask(desk.level);
    };
    // Bits: 0 1 2 / 3 4 5 / 6 7 8.
    EXPECT_EQ(fromAllLit(0), 0b000'001'011u);
    EXPECT_EQ(fromAllLit(2), 0b000'100'110u);
    EXPECT_EQ(fromAllLit(6), 0b011'001'000u);
    EXPECT_EQ(fromAllLit(8), 0b110'100'000u);
    EXPECT_EQ(fromAllLit(1), 0b000'010'111u);
    EXPECT_EQ(fromAllLit(3), 0b001'011'001u);
    EXPECT_EQ(fromAllLit(5), 0b100'110'100u);
    EXPECT_EQ(fromAllLit(7), 0b111'010'000u);
    EXPECT_EQ(fromAllLit(4), 0b010'111'010u);
}

TEST(LightsOut, APressInvertsRatherThanLights) {
    Desk<LightsOutLevel> desk;
    std::fill(std::begin(desk.level.lit), std::end(desk.level.lit), false);
    desk.level.lit[1] = true;
    EXPECT_EQ(desk.clickCentre(desk.level.cells[0]), LevelResult::Running);
    EXPECT_TRUE(desk.level.lit[0]);
    EXPECT_FALSE(desk.level.lit[1]);
    EXPECT_TRUE(desk.level.lit[3]);
}

TEST(LightsOut, TheClickThatLightsTheLastCellSolves) {
    Desk<LightsOutLevel> desk;
    std::fill(std::begin(desk.level.lit), std::end(desk.level.lit), true);
    desk.level.press(1, 1);   // the centre's cross goes dark
    EXPECT_EQ(desk.clickCentre(desk.level.cells[0]), LevelResult::Running);
    desk.level.press(0, 0);   // undo the player's corner by hand
    EXPECT_EQ(desk.clickCentre(desk.level.cells[4]), LevelResult::Solved);
}

TEST(LightsOut, OnlyAPressEdgeCountsAndCellEdgesAreHalfOpen) {
    Desk<LightsOutLevel> desk;
    const unsigned before = darkMask(desk.level);
    const Rect& c = desk.level.cells[4];
    // The button held over a cell without a new press: nothing.
    desk.pointAt(centreX(c), centreY(c));
    desk.in.mouseDown = true;
    EXPECT_EQ(desk.step(0.016), LevelResult::Running);
    EXPECT_EQ(darkMask(desk.level), before);
    desk.in.mouseDown = false;
    // One past the right and bottom edges is the gap.
    desk.click(c.x + 110, c.y + 10);
    desk.click(c.x + 10, c.y + 110);
    desk.click(c.x - 1, c.y + 10);
    EXPECT_EQ(darkMask(desk.level), before);
    desk.click(c.x + 109, c.y + 109);
    EXPECT_NE(darkMask(desk.level), before);
}

TEST(LightsOut, LitAndDarkCellsAndTheInstruction) {
    Desk<LightsOutLevel> desk;
    std::fill(std::begin(desk.level.lit), std::end(desk.level.lit), true);
    desk.level.lit[4] = false;
    Drawn d(desk.level);
    const Rect& lit = desk.level.cells[0];
    const Rect& dark = desk.level.cells[4];
    EXPECT_EQ(d.at(lit.x + 4, lit.y + 55), rgb(59, 190, 117));     // rim
    EXPECT_EQ(d.at(lit.x + 8, lit.y + 55), rgb(70, 224, 138));     // inset face
    EXPECT_EQ(d.at(lit.x + 101, lit.y + 101), rgb(70, 224, 138));
    EXPECT_EQ(d.at(lit.x + 102, lit.y + 102), rgb(59, 190, 117));
    EXPECT_EQ(d.at(dark.x + 4, dark.y + 55), rgb(30, 30, 30));
    EXPECT_EQ(d.at(dark.x + 55, dark.y + 55), rgb(24, 30, 22));
    EXPECT_EQ(d.at(lit.x + 113, lit.y + 55), palette::black);      // the gap
    EXPECT_EQ(d.at(lit.x, lit.y), palette::black);                 // rounded corner
    expectInstruction(d, "TURN EVERY CELL ON \xE2\x80\x94 CLICKS AFFECT NEIGHBOURS", 16);
}

// ------------------------------------------------------------------ Maze

// The floor plan a seed deals, worked out longhand.
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

TEST(Maze, SevenByFiveTilesOfSeventyCentredBelowTheTop) {
    Desk<MazeLevel> desk;
    EXPECT_EQ(desk.level.columns, 7);
    EXPECT_EQ(desk.level.rows, 5);
    EXPECT_EQ(desk.level.cell, 70);
    EXPECT_EQ(desk.level.originX, 263 + (840 - 490) / 2);
    EXPECT_EQ(desk.level.originY, 220);
    const Rect c = desk.level.cellRect(4, 6);
    EXPECT_EQ(c.x, 438 + 420);
    EXPECT_EQ(c.y, 220 + 280);
    EXPECT_EQ(c.w, 70);
    // A narrow area: the width decides the tile size.
    Desk<MazeLevel> narrow(5489, 11, Rect{0, 0, 300, 400});
    EXPECT_EQ(narrow.level.cell, 37);
    EXPECT_EQ(narrow.level.originX, (300 - 259) / 2);
    EXPECT_EQ(narrow.level.originY, 30);
}

TEST(Maze, ThePathIsDealtFromRawDrawsInOrder) {
    for (std::uint32_t seed = 1; seed <= 60; ++seed) {
        Desk<MazeLevel> desk(seed);
        const MazeDeal deal = mazeByHand(seed);
        for (int r = 0; r < 5; ++r) {
            for (int c = 0; c < 7; ++c) {
                EXPECT_EQ(desk.level.wall[r][c], !deal.open[r][c])
                    << "seed " << seed << " tile " << r << "," << c;
            }
        }
        EXPECT_EQ(desk.level.startRow, deal.startRow);
        EXPECT_EQ(desk.level.exitRow, deal.exitRow);
        EXPECT_EQ(desk.level.playerRow, deal.startRow);
        EXPECT_EQ(desk.level.playerColumn, 0);
        EXPECT_EQ(desk.rng, test::engineAfter(seed, static_cast<unsigned long long>(deal.draws))) << "seed " << seed;
    }
}

TEST(Maze, AStepIntoTheEdgeIsClampedAndThePathGoesStraightOn) {
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
    Desk<MazeLevel> desk(seed);
    // The step opened the tile the path was already on: that column has one
    // open tile, on the edge, and the path goes straight on from it.
    int open = 0;
    int row = -1;
    for (int r = 0; r < 5; ++r) {
        if (!desk.level.wall[r][column]) {
            ++open;
            row = r;
        }
    }
    EXPECT_EQ(open, 1) << "seed " << seed << " column " << column;
    EXPECT_TRUE(row == 0 || row == 4);
    EXPECT_FALSE(desk.level.wall[row][column + 1]);
}

TEST(Maze, TheLastColumnNeverTakesAStep) {
    for (std::uint32_t seed = 1; seed <= 200; ++seed) {
        Desk<MazeLevel> desk(seed);
        int open = 0;
        for (int r = 0; r < 5; ++r) {
            open += desk.level.wall[r][6] ? 0 : 1;
        }
        ASSERT_EQ(open, 1) << "seed " << seed;
        ASSERT_FALSE(desk.level.wall[desk.level.exitRow][6]);
    }
}

struct MazeWalk : ::testing::Test {
    Desk<MazeLevel> desk{11};
    MazeLevel& m = desk.level;

    LevelResult clickTile(int row, int column) { return desk.clickCentre(m.cellRect(row, column)); }
};

TEST_F(MazeWalk, ClickingTheOwnTileOrATileTwoAwayDoesNothingEvenOnAWall) {
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
}

TEST_F(MazeWalk, ANeighbouringWallFires) {
    const int r = m.playerRow;
    const int wallRow = r > 0 && m.wall[r - 1][0] ? r - 1 : r + 1;
    ASSERT_TRUE(wallRow >= 0 && wallRow < 5 && m.wall[wallRow][0]);
    EXPECT_EQ(clickTile(wallRow, 0), LevelResult::Failed);
}

TEST_F(MazeWalk, WalkingTheDarkTilesToTheLastColumnSolvesAndBackIsAllowed) {
    // Follow the path: in each column go up or down through open tiles to
    // where the next column is open, then step right.
    int row = m.playerRow;
    bool steppedBack = false;
    for (int c = 0; c < 7; ++c) {
        if (c == 1) {
            // One step back onto the tile just left, and forward again.
            ASSERT_EQ(clickTile(row, 0), LevelResult::Running);
            EXPECT_EQ(m.playerColumn, 0);
            ASSERT_EQ(clickTile(row, 1), LevelResult::Running);
            steppedBack = true;
        }
        while (c < 6 && m.wall[row][c + 1]) {
            const int next = row + 1 < 5 && !m.wall[row + 1][c] ? row + 1 : row - 1;
            ASSERT_FALSE(m.wall[next][c]);
            ASSERT_EQ(clickTile(next, c), LevelResult::Running);
            row = next;
        }
        if (c == 6) {
            break;
        }
        const LevelResult r = clickTile(row, c + 1);
        if (c + 1 == 6) {
            EXPECT_EQ(r, LevelResult::Solved);
        } else {
            ASSERT_EQ(r, LevelResult::Running);
            EXPECT_EQ(m.playerColumn, c + 1);
            EXPECT_EQ(m.playerRow, row);
        }
    }
    EXPECT_TRUE(steppedBack);
}

TEST_F(MazeWalk, ATileTakesClicksOnlyTwoPixelsInFromItsEdges) {
    // Put the player on the exit row's second-last tile, so the exit is a
    // step to the right (the board is edited to make the route).
    m.playerColumn = 5;
    m.playerRow = m.exitRow;
    m.wall[m.exitRow][5] = false;
    const Rect exit = m.cellRect(m.exitRow, 6);
    EXPECT_EQ(desk.click(exit.x + 1, exit.y + 35), LevelResult::Running);
    EXPECT_EQ(desk.click(exit.x + 35, exit.y + 68), LevelResult::Running);
    EXPECT_EQ(desk.click(exit.x + 68, exit.y + 35), LevelResult::Running);
    EXPECT_EQ(m.playerColumn, 5);
    EXPECT_EQ(desk.click(exit.x + 2, exit.y + 67), LevelResult::Solved);
}

TEST_F(MazeWalk, WallsBrightPathDarkExitGreenPlayerRed) {
    int wallRow = 0;
    while (!m.wall[wallRow][3]) {
        ++wallRow;
    }
    const Rect w = m.cellRect(wallRow, 3);
    const Rect start = m.cellRect(m.startRow, 0);
    Rect path = m.cellRect(m.startRow, 1);
    if (m.wall[m.startRow][1]) {
        path = m.cellRect(m.startRow, 0);   // the start tile is path too
    }
    const Rect exit = m.cellRect(m.exitRow, 6);
    Drawn d(m);
    EXPECT_EQ(d.at(w.x + 3, w.y + 35), rgb(229, 194, 96));
    EXPECT_EQ(d.at(w.x + 5, w.y + 35), rgb(255, 170, 46));    // outline
    EXPECT_EQ(d.at(w.x + 64, w.y + 35), rgb(255, 170, 46));
    EXPECT_EQ(d.at(w.x + 35, w.y + 35), rgb(229, 194, 96));
    EXPECT_EQ(d.at(w.x + 1, w.y + 35), palette::black);        // the seam
    EXPECT_EQ(d.at(path.x + 5, path.y + 12), rgb(24, 30, 22));
    EXPECT_EQ(d.at(path.x + 12, path.y + 12), rgb(28, 28, 28));
    // The exit's face covers its outline.
    EXPECT_EQ(d.at(exit.x + 5, exit.y + 35), rgb(35, 112, 69));
    EXPECT_EQ(d.at(exit.x + 35, exit.y + 35), rgb(35, 112, 69));
    // The player: a disc of radius 22 centred on the start tile's face.
    EXPECT_EQ(d.at(start.x + 35, start.y + 35), rgb(255, 58, 42));
    EXPECT_EQ(d.at(start.x + 35 + 20, start.y + 35), rgb(255, 58, 42));
    EXPECT_NE(d.at(start.x + 35 + 24, start.y + 35), rgb(255, 58, 42));
    expectInstruction(d, "FOLLOW THE DARK PATH", 18);
}

// ----------------------------------------------------------------- Pipes

TEST(Pipes, FiveByThreeCellsOf113) {
    Desk<PipesLevel> desk;
    EXPECT_EQ(desk.level.columns, 5);
    EXPECT_EQ(desk.level.rows, 3);
    EXPECT_EQ(desk.level.cell, 113);
    EXPECT_EQ(desk.level.originX, 263 + (840 - 565) / 2);
    EXPECT_EQ(desk.level.originY, 220);
    Desk<PipesLevel> narrow(5489, 11, Rect{0, 0, 300, 400});
    EXPECT_EQ(narrow.level.cell, 52);
    EXPECT_EQ(narrow.level.originX, 20);
}

TEST(Pipes, RotationsAreTheLowTwoBitsOfOneDrawACellThenTheCentreLocks) {
    for (std::uint32_t seed = 1; seed <= 40; ++seed) {
        Desk<PipesLevel> desk(seed);
        Rng ref(seed);
        for (int r = 0; r < 3; ++r) {
            for (int c = 0; c < 5; ++c) {
                const int drawn = static_cast<int>(ref() & 3u);
                const bool centre = r == 1 && c == 2;
                EXPECT_EQ(desk.level.rotation[r][c], centre ? 1 : drawn);
                EXPECT_EQ(desk.level.locked[r][c], centre);
            }
        }
        EXPECT_EQ(desk.rng, ref) << "seed " << seed;
    }
}

TEST(Pipes, AClickTurnsASegmentAQuarterWrappingAfterThree) {
    Desk<PipesLevel> desk;
    desk.level.rotation[0][0] = 1;   // keep the top row from solving
    desk.level.rotation[2][0] = 1;
    const Rect c = desk.level.cellRect(1, 0);
    desk.level.rotation[1][0] = 2;
    EXPECT_EQ(desk.clickCentre(c), LevelResult::Running);
    EXPECT_EQ(desk.level.rotation[1][0], 3);
    EXPECT_EQ(desk.clickCentre(c), LevelResult::Running);
    EXPECT_EQ(desk.level.rotation[1][0], 0);
    // Two pixels in from the edge is the first pixel that counts.
    EXPECT_EQ(desk.click(c.x + 1, c.y + 50), LevelResult::Running);
    EXPECT_EQ(desk.click(c.x + 111, c.y + 50), LevelResult::Running);
    EXPECT_EQ(desk.level.rotation[1][0], 0);
    EXPECT_EQ(desk.click(c.x + 2, c.y + 110), LevelResult::Running);
    EXPECT_EQ(desk.level.rotation[1][0], 1);
}

TEST(Pipes, TheLockedCentreNeverTurnsAndNeverFires) {
    Desk<PipesLevel> desk;
    const Rect c = desk.level.cellRect(1, 2);
    for (int i = 0; i < 10; ++i) {
        ASSERT_EQ(desk.clickCentre(c), LevelResult::Running);
    }
    EXPECT_EQ(desk.level.rotation[1][2], 1);
}

TEST(Pipes, TheCentreRowNeverSolvesOnlyTheTopOrBottomRow) {
    Desk<PipesLevel> desk;
    PipesLevel& p = desk.level;
    for (int c = 0; c < 5; ++c) {
        p.rotation[0][c] = 1;
        p.rotation[2][c] = 3;
        p.rotation[1][c] = c == 2 ? 1 : 3;
    }
    // Turn every free segment of the middle row level: still not solved.
    for (int c = 0; c < 5; ++c) {
        if (c != 2) {
            ASSERT_EQ(desk.clickCentre(p.cellRect(1, c)), LevelResult::Running);
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
        ASSERT_EQ(desk.clickCentre(p.cellRect(2, c)), LevelResult::Running);
    }
    EXPECT_EQ(desk.clickCentre(p.cellRect(2, 4)), LevelResult::Solved);
}

TEST(Pipes, TheTopRowSolvesToo) {
    Desk<PipesLevel> desk;
    PipesLevel& p = desk.level;
    for (int c = 0; c < 5; ++c) {
        p.rotation[0][c] = c == 4 ? 3 : 2;
        p.rotation[2][c] = 1;
    }
    EXPECT_FALSE(p.solved());
    EXPECT_EQ(desk.clickCentre(p.cellRect(0, 4)), LevelResult::Solved);
    EXPECT_EQ(p.rotation[0][4], 0);
}

TEST(Pipes, ARowAlreadyLevelSolvesOnTheFirstTurnAnywhereElse) {
    Desk<PipesLevel> desk;
    PipesLevel& p = desk.level;
    for (int c = 0; c < 5; ++c) {
        p.rotation[0][c] = 0;
        p.rotation[2][c] = 1;
    }
    EXPECT_TRUE(p.solved());
    EXPECT_EQ(desk.step(0.016), LevelResult::Running);   // no click, no verdict
    EXPECT_EQ(desk.clickCentre(p.cellRect(1, 0)), LevelResult::Solved);
}

TEST(Pipes, TilesSegmentsAndTheInOutLabels) {
    Desk<PipesLevel> desk;
    PipesLevel& p = desk.level;
    for (int c = 0; c < 5; ++c) {
        p.rotation[0][c] = 1;
        p.rotation[2][c] = 1;
    }
    p.rotation[0][0] = 2;   // level
    p.rotation[0][1] = 3;   // upright
    const Rect level = p.cellRect(0, 0);
    const Rect upright = p.cellRect(0, 1);
    const Rect centre = p.cellRect(1, 2);
    constexpr int h = (113 - 4) / 2 - 2;   // 52
    {
        Drawn d(p);
        EXPECT_EQ(d.at(level.x + 10, level.y + 10), rgb(89, 69, 23));
        EXPECT_EQ(d.at(centre.x + 10, centre.y + 10), rgb(102, 23, 16));
        // A level segment: (x + 6, y + 52, 101, 8).
        EXPECT_EQ(d.at(level.x + 6, level.y + h), rgb(255, 170, 46));
        EXPECT_EQ(d.at(level.x + 106, level.y + h + 7), rgb(255, 170, 46));
        EXPECT_EQ(d.at(level.x + 56, level.y + h - 1), rgb(89, 69, 23));
        EXPECT_EQ(d.at(level.x + 56, level.y + h + 8), rgb(89, 69, 23));
        // An upright one: (x + 52, y + 6, 8, 101).
        EXPECT_EQ(d.at(upright.x + h, upright.y + 6), rgb(255, 170, 46));
        EXPECT_EQ(d.at(upright.x + h + 7, upright.y + 106), rgb(255, 170, 46));
        EXPECT_EQ(d.at(upright.x + h + 8, upright.y + 50), rgb(89, 69, 23));
        EXPECT_EQ(d.at(centre.x + h, centre.y + 20), rgb(255, 170, 46));
        // IN and OUT mark the middle row from outside the board.
        expectWords(d, "IN", p.originX - 26, p.originY + 113, rgb(70, 224, 138), false,
                    Rect{p.originX - 60, p.originY + 90, 58, 60});
        expectWords(d, "OUT", p.originX + 565 + 4, p.originY + 113, rgb(70, 224, 138), false,
                    Rect{p.originX + 565 + 2, p.originY + 90, 70, 60});
        expectInstruction(d, "ONE SEGMENT IS LOCKED - ROUTE AROUND IT", 16);
    }
    // Solved, every segment turns green.
    for (int c = 0; c < 5; ++c) {
        p.rotation[2][c] = 0;
    }
    Drawn d(p);
    EXPECT_EQ(d.at(level.x + 6, level.y + h), rgb(70, 224, 138));
    EXPECT_EQ(d.at(centre.x + h, centre.y + 20), rgb(70, 224, 138));
}

// ----------------------------------------------------------------- Wires

TEST(Wires, FourPlugsEachSideSixtyFourApart) {
    Desk<WiresLevel> desk;
    EXPECT_EQ(desk.level.wireCount, 4);
    for (int i = 0; i < 4; ++i) {
        const Rect& l = desk.level.leftPlugs[i];
        const Rect& r = desk.level.rightPlugs[i];
        EXPECT_EQ(l.x, 263 + 72);
        EXPECT_EQ(l.y, 190 + 42 + 64 * i);
        EXPECT_EQ(r.x, 263 + 840 - 108);
        EXPECT_EQ(r.y, 190 + 42 + 64 * i);
        EXPECT_EQ(l.w, 36);
        EXPECT_EQ(r.h, 36);
        EXPECT_EQ(desk.level.leftColour[i], i);
        EXPECT_FALSE(desk.level.connected[i]);
    }
    EXPECT_EQ(desk.level.dragging, -1);
}

TEST(Wires, TheRightColoursAreTheFirstFourShuffledByTheRunsRule) {
    bool sawMoved = false;
    for (std::uint32_t seed = 1; seed <= 60; ++seed) {
        Desk<WiresLevel> desk(seed);
        Rng ref(seed);
        int order[8] = {0, 1, 2, 3, 4, 5, 6, 7};
        for (int k = 1; k <= 3; ++k) {
            const int j = test::uniformBelowByHand(ref, static_cast<std::uint32_t>(k + 1));
            std::swap(order[k], order[j]);
        }
        for (int i = 0; i < 4; ++i) {
            EXPECT_EQ(desk.level.rightColour[i], order[i]) << "seed " << seed;
            sawMoved = sawMoved || order[i] != i;
        }
        EXPECT_EQ(desk.rng, ref) << "seed " << seed;
    }
    EXPECT_TRUE(sawMoved);
}

struct WireDrag : ::testing::Test {
    Desk<WiresLevel> desk;
    WiresLevel& w = desk.level;

    LevelResult drag(int from, const Rect& to) {
        const Rect& l = w.leftPlugs[from];
        const LevelResult r = desk.press(centreX(l), centreY(l));
        if (r != LevelResult::Running) {
            return r;
        }
        desk.pointAt(centreX(to), centreY(to));
        desk.step(0.016);
        return desk.release(centreX(to), centreY(to));
    }
};

TEST_F(WireDrag, AllFourByPositionSolves) {
    for (int i = 0; i < 3; ++i) {
        ASSERT_EQ(drag(i, w.rightPlugs[i]), LevelResult::Running);
        EXPECT_TRUE(w.connected[i]);
        EXPECT_EQ(w.dragging, -1);
    }
    EXPECT_EQ(drag(3, w.rightPlugs[3]), LevelResult::Solved);
}

TEST_F(WireDrag, AWrongSocketFires) {
    EXPECT_EQ(drag(1, w.rightPlugs[2]), LevelResult::Failed);
}

TEST_F(WireDrag, ReleasingOverEmptySpaceOrALeftPlugCancelsWithoutPenalty) {
    EXPECT_EQ(drag(0, Rect{kCx, 300, 1, 1}), LevelResult::Running);
    EXPECT_EQ(w.dragging, -1);
    EXPECT_FALSE(w.connected[0]);
    EXPECT_EQ(drag(0, w.leftPlugs[2]), LevelResult::Running);
    EXPECT_EQ(w.dragging, -1);
    EXPECT_FALSE(w.connected[0]);
    EXPECT_FALSE(w.connected[2]);
    // Just past a socket's right edge is empty space as well.
    const Rect& r0 = w.rightPlugs[0];
    desk.press(centreX(w.leftPlugs[0]), centreY(w.leftPlugs[0]));
    EXPECT_EQ(desk.release(r0.x + 36, r0.y + 10), LevelResult::Running);
    EXPECT_FALSE(w.connected[0]);
    // The wire is still in the player's hand to try again.
    EXPECT_EQ(drag(0, w.rightPlugs[0]), LevelResult::Running);
    EXPECT_TRUE(w.connected[0]);
}

TEST_F(WireDrag, AConnectedPlugStartsNoDrag) {
    ASSERT_EQ(drag(0, w.rightPlugs[0]), LevelResult::Running);
    const Rect& l = w.leftPlugs[0];
    desk.press(centreX(l), centreY(l));
    EXPECT_EQ(w.dragging, -1);
    // So dropping it on a wrong socket is no drop at all.
    EXPECT_EQ(desk.release(centreX(w.rightPlugs[1]), centreY(w.rightPlugs[1])),
              LevelResult::Running);
    EXPECT_FALSE(w.connected[1]);
}

TEST_F(WireDrag, ReleasingWithoutADragDoesNothing) {
    const Rect& r = w.rightPlugs[1];
    desk.press(kCx, 300);
    EXPECT_EQ(w.dragging, -1);
    EXPECT_EQ(desk.release(centreX(r), centreY(r)), LevelResult::Running);
}

TEST_F(WireDrag, APressAndReleaseInOneFrameIsADropOnTheSpot) {
    const Rect& l = w.leftPlugs[1];
    desk.pointAt(centreX(l), centreY(l));
    desk.in.mousePressed = true;
    desk.in.mouseReleased = true;
    EXPECT_EQ(desk.step(0.016), LevelResult::Running);
    EXPECT_EQ(w.dragging, -1);
    EXPECT_FALSE(w.connected[1]);
}

TEST(Wires, WireZeroGoesToSocketZeroWhateverItsColourAndLabelSay) {
    // A deal in which socket 0 is not red, and its label names yet another
    // colour.
    std::uint32_t seed = 1;
    for (;; ++seed) {
        ASSERT_LT(seed, 1000u);
        Desk<WiresLevel> probe(seed);
        if (probe.level.rightColour[0] != 0 && (probe.level.rightColour[0] + 1) % 4 != 0) {
            break;
        }
    }
    Desk<WiresLevel> desk(seed);
    WiresLevel& w = desk.level;
    const int shown = w.rightColour[0];
    int redSocket = 0;
    while (w.rightColour[redSocket] != 0) {
        ++redSocket;
    }
    ASSERT_NE(redSocket, 0);
    const Rect& l = w.leftPlugs[0];
    const Rect& r = w.rightPlugs[0];
    desk.press(centreX(l), centreY(l));
    EXPECT_EQ(desk.release(centreX(r), centreY(r)), LevelResult::Running);
    EXPECT_TRUE(w.connected[0]);
    // And the drawing really shows that socket in another colour.
    Drawn d(w);
    EXPECT_EQ(d.at(centreX(r), centreY(r)), WiresLevel::kPalette[shown].colour);
    EXPECT_NE(d.at(centreX(r), centreY(r)), rgb(255, 58, 42));
}

TEST(Wires, PlugColoursNextColourLabelsAndGreenWires) {
    Desk<WiresLevel> desk(7);
    WiresLevel& w = desk.level;
    w.rightColour[0] = 2;
    w.rightColour[1] = 0;
    w.rightColour[2] = 3;
    w.rightColour[3] = 1;
    w.connected[1] = true;
    Drawn d(w);
    for (int i = 0; i < 4; ++i) {
        const Rect& l = w.leftPlugs[i];
        const Rect& r = w.rightPlugs[i];
        EXPECT_EQ(d.at(centreX(l), centreY(l)), WiresLevel::kPalette[i].colour);
        EXPECT_EQ(d.at(centreX(r), centreY(r)), WiresLevel::kPalette[w.rightColour[i]].colour);
        EXPECT_TRUE(d.shows(Rect{l.x - 44, l.y + 8, 40, 20}, rgb(242, 232, 207)));
        EXPECT_TRUE(d.shows(Rect{r.x + 40, r.y + 8, 40, 20}, rgb(242, 232, 207)));
    }
    // Wire 1 runs from the left plug's right edge to the socket's left edge.
    const Rect& l1 = w.leftPlugs[1];
    EXPECT_EQ(d.at(kCx, l1.y + 18), rgb(70, 224, 138));
    EXPECT_EQ(d.at(l1.x + 40, l1.y + 18), rgb(70, 224, 138));
    // Four pixels thick: rows y + 16 to y + 20.
    EXPECT_EQ(d.at(kCx, l1.y + 16), rgb(70, 224, 138));
    EXPECT_EQ(d.at(kCx, l1.y + 20), rgb(70, 224, 138));
    EXPECT_NE(d.at(kCx, l1.y + 15), rgb(70, 224, 138));
    EXPECT_NE(d.at(kCx, l1.y + 21), rgb(70, 224, 138));
    EXPECT_NE(d.at(kCx, w.leftPlugs[0].y + 18), rgb(70, 224, 138));
    EXPECT_NE(d.at(kCx, w.leftPlugs[2].y + 18), rgb(70, 224, 138));
    expectInstruction(d, "MATCH BY POSITION", 20);
}

// The pixels of a 40 x 20 box of the canvas, row by row.
std::vector<Color> boxPixels(const test::SoftwareCanvas& canvas, int x0, int y0) {
    std::vector<Color> out;
    for (int y = y0; y < y0 + 20; ++y) {
        for (int x = x0; x < x0 + 40; ++x) {
            out.push_back(canvas.pixel(x, y));
        }
    }
    return out;
}

// Each label names the colour after its plug's own, round the four in use:
// the drawn label matches the next colour's word drawn on its own.
TEST(Wires, EachLabelNamesTheNextColourRound) {
    Desk<WiresLevel> desk(7);
    WiresLevel& w = desk.level;
    w.rightColour[0] = 2;
    w.rightColour[1] = 0;
    w.rightColour[2] = 3;
    w.rightColour[3] = 1;
    test::SoftwareCanvas canvas;
    canvas.useGameFonts();
    Graphics& g = canvas.graphics;
    auto word = [&](int colour) {
        g.clear(palette::black);
        g.text(WiresLevel::kPalette[colour].label, 100, 100, TextSize::Small, rgb(242, 232, 207),
               false, false);
        return boxPixels(canvas, 100, 100);
    };
    g.clear(palette::black);
    w.render(g);
    std::vector<std::vector<Color>> left;
    std::vector<std::vector<Color>> right;
    for (int i = 0; i < 4; ++i) {
        left.push_back(boxPixels(canvas, w.leftPlugs[i].x - 44, w.leftPlugs[i].y + 8));
        right.push_back(boxPixels(canvas, w.rightPlugs[i].x + 40, w.rightPlugs[i].y + 8));
    }
    for (int i = 0; i < 4; ++i) {
        EXPECT_EQ(left[i], word((i + 1) % 4)) << "left plug " << i;
        EXPECT_NE(left[i], word(i)) << "left plug " << i;
        EXPECT_EQ(right[i], word((w.rightColour[i] + 1) % 4)) << "right plug " << i;
    }
}

}  // namespace
}  // namespace vorn

// ------------------------------------------------- the automatic player

namespace vorn::test {
namespace {

TEST(GridSolvers, LightsOutIsClearedOnEveryDifficulty) {
    EXPECT_EQ(unsolvedRuns("lightsout"), "");
}
TEST(GridSolvers, MazeIsClearedOnEveryDifficulty) { EXPECT_EQ(unsolvedRuns("maze"), ""); }
TEST(GridSolvers, PipesIsClearedOnEveryDifficulty) { EXPECT_EQ(unsolvedRuns("pipes"), ""); }
TEST(GridSolvers, WiresIsClearedOnEveryDifficulty) { EXPECT_EQ(unsolvedRuns("wires"), ""); }

// A panel dealt all lit still needs two clicks: the solver makes them.
TEST(GridSolvers, TheLightsSolverFinishesAPanelDealtAllLit) {
    std::uint32_t seed = 1;
    while (lightsByHand(seed).dark != 0) {
        ++seed;
        ASSERT_LT(seed, 100000u);
    }
    const LevelDef def = shippedRecord("lightsout");
    StationBench bench(def, seed);
    std::unique_ptr<Solver> solver = makeSolver("lightsout");
    const StationBench::Outcome out = bench.play(*solver, clockFor(def, Difficulty::vorn));
    EXPECT_EQ(out.result, LevelResult::Solved);
}

// Plays one station with a solver and expects the pass sound with the verdict.
void expectSolvedWithPass(const std::string& type, std::uint32_t seed) {
    const LevelDef def = shippedRecord(type);
    StationBench bench(def, seed);
    std::unique_ptr<Solver> solver = makeSolver(type);
    EXPECT_EQ(bench.play(*solver, clockFor(def, Difficulty::vorn)).result, LevelResult::Solved);
    EXPECT_TRUE(bench.lastSoundWasPass()) << type;
}

TEST(GridBench, EachStationPlaysThePassSoundWithItsVerdict) {
    expectSolvedWithPass("lightsout", 4);
    expectSolvedWithPass("maze", 4);
    expectSolvedWithPass("pipes", 4);
    expectSolvedWithPass("wires", 4);
}

// A real click through SDL events, a frame for the press and one for the release.
LevelResult clickThrough(StationBench& bench, int x, int y) {
    pushMotion(x, y);
    pushButton(true, x, y);
    const LevelResult r = bench.frame(1.0 / 60.0);
    if (r != LevelResult::Running) {
        return r;
    }
    pushButton(false, x, y);
    return bench.frame(1.0 / 60.0);
}

// A click through the bench and exactly the sounds it asked for.
std::vector<std::string> soundsOfClick(StationBench& bench, int x, int y, LevelResult expected) {
    const std::size_t before = bench.sounds.size();
    EXPECT_EQ(clickThrough(bench, x, y), expected);
    return soundsFrom(bench.sounds, before);
}

using Sounds = std::vector<std::string>;

TEST(GridBench, TheMazeFiresWithTheFailSoundOnANeighbouringWall) {
    StationBench bench(shippedRecord("maze"), 11);
    const auto& m = dynamic_cast<const MazeLevel&>(*bench.station);
    const int r = m.playerRow;
    const int wallRow = r > 0 && m.wall[r - 1][0] ? r - 1 : r + 1;
    ASSERT_TRUE(m.wall[wallRow][0]);
    const Rect c = m.cellRect(wallRow, 0);
    EXPECT_EQ(soundsOfClick(bench, c.x + 35, c.y + 35, LevelResult::Failed), Sounds{"fail"});
}

TEST(GridBench, AMazeStepClicks) {
    StationBench bench(shippedRecord("maze"), 11);
    const auto& m = dynamic_cast<const MazeLevel&>(*bench.station);
    const int row = m.playerRow;
    const int next = m.wall[row][1] ? (row + 1 < 5 && !m.wall[row + 1][0] ? row + 1 : row - 1)
                                    : row;
    const Rect c = m.cellRect(next, next == row ? 1 : 0);
    EXPECT_EQ(soundsOfClick(bench, c.x + 35, c.y + 35, LevelResult::Running), Sounds{"click"});
    EXPECT_FALSE(m.playerRow == row && m.playerColumn == 0);
}

TEST(GridBench, TheLockedPipeBuzzesWithTheFailSoundButNeverFires) {
    StationBench bench(shippedRecord("pipes"), 11);
    const auto& p = dynamic_cast<const PipesLevel&>(*bench.station);
    const Rect c = p.cellRect(1, 2);
    for (int i = 0; i < 3; ++i) {
        EXPECT_EQ(soundsOfClick(bench, c.x + 56, c.y + 56, LevelResult::Running), Sounds{"fail"});
        // The buzz is all: many frames later there is still no verdict.
        for (int f = 0; f < 30; ++f) {
            ASSERT_EQ(bench.frame(1.0 / 60.0), LevelResult::Running);
        }
    }
    EXPECT_EQ(p.rotation[1][2], 1);
    // A free segment turns with a click, not a buzz.
    const Rect free = p.cellRect(1, 0);
    EXPECT_EQ(soundsOfClick(bench, free.x + 56, free.y + 56, LevelResult::Running), Sounds{"click"});
}

TEST(GridBench, TheLightsClickOnEveryPressAndNeverFire) {
    // Press every cell twice in a row: the panel ends where it began, each
    // press clicks, and nothing ever fires. The deal must be more than one
    // press from solved, or the first press of a pair would solve it.
    const unsigned dark = lightsByHand(11).dark;
    ASSERT_NE(dark, 0u);
    for (int i = 0; i < 9; ++i) {
        ASSERT_NE(dark, crossMask(i));
    }
    StationBench bench(shippedRecord("lightsout"), 11);
    const auto& l = dynamic_cast<const LightsOutLevel&>(*bench.station);
    for (int i = 0; i < 9; ++i) {
        for (int twice = 0; twice < 2; ++twice) {
            const Rect& c = l.cells[i];
            EXPECT_EQ(soundsOfClick(bench, c.x + 55, c.y + 55, LevelResult::Running), Sounds{"click"});
        }
    }
}

TEST(GridBench, WiresFireWithTheFailSoundOnTheSocketOfTheirOwnColour) {
    // A player who matches colours: wire 0 (red) to the red socket, which
    // the shuffle put in another row.
    std::uint32_t seed = 1;
    int redSocket = 0;
    for (;; ++seed) {
        ASSERT_LT(seed, 1000u);
        StationBench probe(shippedRecord("wires"), seed);
        const auto& w = dynamic_cast<const WiresLevel&>(*probe.station);
        redSocket = 0;
        while (w.rightColour[redSocket] != 0) {
            ++redSocket;
        }
        if (redSocket != 0) {
            break;
        }
    }
    StationBench bench(shippedRecord("wires"), seed);
    const auto& w = dynamic_cast<const WiresLevel&>(*bench.station);
    struct ByColour final : Solver {
        int socket = 0;
        Intent decide(const Level& s, const Hand& hand, double) override {
            const auto& wires = dynamic_cast<const WiresLevel&>(s);
            const Rect& l = wires.leftPlugs[0];
            const Rect& r = wires.rightPlugs[socket];
            if (wires.dragging == 0 && hand.down) {
                const bool over = std::abs(hand.x - (r.x + 18)) <= 2 &&
                                  std::abs(hand.y - (r.y + 18)) <= 2;
                return Intent{r.x + 18, r.y + 18, !over};
            }
            return clickAt(hand, l.x + 18, l.y + 18);
        }
    } byColour;
    byColour.socket = redSocket;
    EXPECT_EQ(w.rightColour[redSocket], 0);
    EXPECT_EQ(bench.play(byColour, 10.0).result, LevelResult::Failed);
    EXPECT_TRUE(bench.lastSoundWasFail());
}

}  // namespace
}  // namespace vorn::test
