// The grid family: the lighting panel, the fire-exit walk, the plumbing and
// the patch panel. Boards are checked against deals worked out longhand
// from raw engine outputs, so the stations' own helpers are not trusted to
// check themselves.

#include "audio/audio_system.h"
#include "data/level_catalogue.h"
#include "stations/grid_stations.h"
#include "stations/level_factory.h"
#include "support/board_scenes.h"
#include "support/draws_by_hand.h"
#include "support/software_canvas.h"
#include "support/solvers/family_solvers.h"
#include "support/station_driver.h"
#include "support/station_desk.h"
#include "support/station_sounds.h"
#include "support/text_probe.h"

#include <SDL_mixer.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <cstdlib>
#include <string>
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
};

// Small words exactly as and where they belong: `region`, which holds
// nothing else on the black canvas, shows the very pixels of the words
// drawn alone at (x, y) in colour c, anti-aliased edges included.
void expectWords(const Drawn& d, const char* words, int x, int y, Color c, bool centred,
                 const Rect& region) {
    EXPECT_EQ(test::pixelsUnlikeText(d.canvas, region, palette::black, words, x, y, TextSize::Small,
                                     c, centred, false),
              0)
        << words;
}

// The station's own line of orders, exactly as and where it belongs: small
// and amber, centred on x 683, `fromBottom` pixels above the play area's
// foot (y 620). The region starts at `top`, below anything else drawn.
void expectInstruction(const Drawn& d, const char* words, int fromBottom, int top = 575) {
    expectWords(d, words, kCx, 620 - fromBottom, kInstructionColour, true,
                Rect{263, top, 840, 660 - top});
}

using Sounds = std::vector<std::string>;

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
    // And not a sound from any of them.
    EXPECT_EQ(lights.sounds, Sounds{});
    EXPECT_EQ(maze.sounds, Sounds{});
    EXPECT_EQ(pipes.sounds, Sounds{});
    EXPECT_EQ(wires.sounds, Sounds{});
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
    EXPECT_EQ(desk.sounds, Sounds{});
    // The first real click darkens three cells; the same click undoes it and
    // only then, with a click made and all lit, is the panel done.
    EXPECT_EQ(desk.clickCentre(c0), LevelResult::Running);
    EXPECT_EQ(darkCount(desk.level), 3);
    EXPECT_EQ(desk.sounds, Sounds{"click"});
    EXPECT_EQ(desk.press(c0.x + 5, c0.y + 5), LevelResult::Solved);
    EXPECT_EQ(desk.soundsSince(1), (Sounds{"click", "pass"}));
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
    const std::size_t before = desk.sounds.size();
    EXPECT_EQ(desk.clickCentre(desk.level.cells[4]), LevelResult::Solved);
    EXPECT_EQ(desk.soundsSince(before), (Sounds{"click", "pass"}));
}

TEST(LightsOut, APressOnACellClicksOnceAndAnythingElseIsSilent) {
    Desk<LightsOutLevel> desk;
    // Two corners dark-crossed: no single press can finish this panel.
    std::fill(std::begin(desk.level.lit), std::end(desk.level.lit), true);
    desk.level.press(0, 0);
    desk.level.press(2, 2);
    const Rect& c = desk.level.cells[4];
    // Held over a cell, moved, let go, clicked in the gaps: not a sound.
    desk.pointAt(centreX(c), centreY(c));
    desk.in.mouseDown = true;
    EXPECT_EQ(desk.step(0.016), LevelResult::Running);
    EXPECT_EQ(desk.release(centreX(c), centreY(c)), LevelResult::Running);
    EXPECT_EQ(desk.click(c.x - 8, c.y + 50), LevelResult::Running);
    EXPECT_EQ(desk.click(c.x + 50, c.y + 110), LevelResult::Running);
    EXPECT_EQ(desk.click(kCx, 200), LevelResult::Running);
    EXPECT_EQ(desk.sounds, Sounds{});
    // One press on a cell: one click, and the release after it adds nothing.
    EXPECT_EQ(desk.clickCentre(c), LevelResult::Running);
    EXPECT_EQ(desk.sounds, Sounds{"click"});
    EXPECT_EQ(desk.clickCentre(desk.level.cells[1]), LevelResult::Running);
    EXPECT_EQ(desk.sounds, (Sounds{"click", "click"}));
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
    // The bottom row of cells reaches y 606 and the line starts at 604:
    // the words are compared below the cells.
    expectInstruction(d, "TURN EVERY CELL ON \xE2\x80\x94 CLICKS AFFECT NEIGHBOURS", 16, 607);
}

// The whole panel against a picture painted by hand: cell (r, c) is the
// 110-pixel square at (502 + 126 c, 244 + 126 r) (683 - 181 = 502), drawn as
// a rim with corners of radius 8 and then a face inset by 8 (94 square);
// the line of orders goes last, centred on 683 at y 604.
TEST(LightsOut, ThePanelMatchesAPicturePaintedCellByCell) {
    Desk<LightsOutLevel> desk;
    const bool on[9] = {true, false, true, false, false, true, true, true, false};
    std::copy(std::begin(on), std::end(on), std::begin(desk.level.lit));
    Drawn d(desk.level);
    test::BlackCanvas want;
    Graphics& g = want.graphics;
    for (int i = 0; i < 9; ++i) {
        const int x = 502 + 126 * (i % 3);
        const int y = 244 + 126 * (i / 3);
        g.roundRect(Rect{x, y, 110, 110}, 8, on[i] ? rgb(59, 190, 117) : rgb(30, 30, 30), true);
        g.rect(Rect{x + 8, y + 8, 94, 94}, on[i] ? rgb(70, 224, 138) : rgb(24, 30, 22), true);
    }
    g.text("TURN EVERY CELL ON \xE2\x80\x94 CLICKS AFFECT NEIGHBOURS", 683, 604, TextSize::Small,
           rgb(178, 119, 32), true, false);
    EXPECT_TRUE(test::sameRegion(d.canvas, want, Rect{263, 190, 840, 450}));
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

    Sounds heard;   // what the last clickTile asked for

    LevelResult clickTile(int row, int column) {
        const std::size_t before = desk.sounds.size();
        const LevelResult r = desk.clickCentre(m.cellRect(row, column));
        heard = desk.soundsSince(before);
        return r;
    }
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
    // Ignored means ignored: no click, and above all no buzz.
    EXPECT_EQ(desk.sounds, Sounds{});
}

TEST_F(MazeWalk, ANeighbouringWallFires) {
    const int r = m.playerRow;
    const int wallRow = r > 0 && m.wall[r - 1][0] ? r - 1 : r + 1;
    ASSERT_TRUE(wallRow >= 0 && wallRow < 5 && m.wall[wallRow][0]);
    EXPECT_EQ(clickTile(wallRow, 0), LevelResult::Failed);
    EXPECT_EQ(desk.sounds, Sounds{"fail"});
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
    EXPECT_EQ(desk.sounds, Sounds{});
    EXPECT_EQ(desk.click(exit.x + 2, exit.y + 67), LevelResult::Solved);
    EXPECT_EQ(desk.sounds, (Sounds{"click", "pass"}));
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
    // Radius 22: the middle row reaches 22 to either side; the top and bottom
    // rows shrink to a point there, so upward the red stops within 22.
    EXPECT_EQ(d.at(start.x + 35 + 22, start.y + 35), rgb(255, 58, 42));
    EXPECT_EQ(d.at(start.x + 35 - 22, start.y + 35), rgb(255, 58, 42));
    EXPECT_NE(d.at(start.x + 35 + 23, start.y + 35), rgb(255, 58, 42));
    EXPECT_NE(d.at(start.x + 35 - 23, start.y + 35), rgb(255, 58, 42));
    EXPECT_EQ(d.at(start.x + 35, start.y + 35 - 21), rgb(255, 58, 42));
    EXPECT_NE(d.at(start.x + 35, start.y + 35 - 23), rgb(255, 58, 42));
    expectInstruction(d, "FOLLOW THE DARK PATH", 18);
}

// Paints the fire-exit floor plan by hand: tile (r, c) at (438 + 70 c,
// 220 + 70 r), a face (x + 2, y + 2, 66, 66) with corners of radius 4 and an
// outline (x + 5, y + 5, 60, 60); then the exit's face again in green, the
// player's disc of radius 22 on the face's centre (x + 35, y + 35), and the
// line of orders centred on 683 at y 602.
void paintMaze(Graphics& g, const MazeDeal& deal, int playerRow, int playerColumn) {
    for (int r = 0; r < 5; ++r) {
        for (int c = 0; c < 7; ++c) {
            const int x = 438 + 70 * c;
            const int y = 220 + 70 * r;
            const bool wall = !deal.open[r][c];
            g.roundRect(Rect{x + 2, y + 2, 66, 66}, 4, wall ? rgb(229, 194, 96) : rgb(28, 28, 28),
                        true);
            g.rect(Rect{x + 5, y + 5, 60, 60}, wall ? rgb(255, 170, 46) : rgb(24, 30, 22), false);
        }
    }
    g.roundRect(Rect{438 + 420 + 2, 220 + 70 * deal.exitRow + 2, 66, 66}, 4, rgb(35, 112, 69),
                true);
    g.circle(438 + 70 * playerColumn + 35, 220 + 70 * playerRow + 35, 22, rgb(255, 58, 42), true);
    g.text("FOLLOW THE DARK PATH", 683, 602, TextSize::Small, rgb(178, 119, 32), true, false);
}

TEST_F(MazeWalk, TheFloorPlanMatchesAPicturePaintedTileByTile) {
    const MazeDeal deal = mazeByHand(11);
    Drawn d(m);
    test::BlackCanvas want;
    paintMaze(want.graphics, deal, deal.startRow, 0);
    EXPECT_TRUE(test::sameRegion(d.canvas, want, Rect{263, 190, 840, 450}));
}

TEST_F(MazeWalk, ThePlayersDiscIsDrawnOnThePlayersTile) {
    const MazeDeal deal = mazeByHand(11);
    m.playerRow = 2;
    m.playerColumn = 3;
    Drawn d(m);
    test::BlackCanvas want;
    paintMaze(want.graphics, deal, 2, 3);
    EXPECT_TRUE(test::sameRegion(d.canvas, want, Rect{263, 190, 840, 450}));
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
    EXPECT_EQ(desk.sounds, Sounds{"click"});
    EXPECT_EQ(desk.clickCentre(c), LevelResult::Running);
    EXPECT_EQ(desk.level.rotation[1][0], 0);
    EXPECT_EQ(desk.sounds, (Sounds{"click", "click"}));
    // Two pixels in from the edge is the first pixel that counts; the seam
    // is silent.
    EXPECT_EQ(desk.click(c.x + 1, c.y + 50), LevelResult::Running);
    EXPECT_EQ(desk.click(c.x + 111, c.y + 50), LevelResult::Running);
    EXPECT_EQ(desk.click(c.x + 50, c.y + 1), LevelResult::Running);
    EXPECT_EQ(desk.click(c.x + 50, c.y + 111), LevelResult::Running);
    EXPECT_EQ(desk.level.rotation[1][0], 0);
    EXPECT_EQ(desk.sounds.size(), 2u);
    EXPECT_EQ(desk.click(c.x + 2, c.y + 110), LevelResult::Running);
    EXPECT_EQ(desk.level.rotation[1][0], 1);
    EXPECT_EQ(desk.soundsSince(2), Sounds{"click"});
}

TEST(Pipes, TheLockedCentreNeverTurnsAndNeverFires) {
    Desk<PipesLevel> desk;
    const Rect c = desk.level.cellRect(1, 2);
    for (int i = 0; i < 10; ++i) {
        const std::size_t before = desk.sounds.size();
        ASSERT_EQ(desk.clickCentre(c), LevelResult::Running);
        // A buzz, never a click.
        EXPECT_EQ(desk.soundsSince(before), Sounds{"fail"});
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
    EXPECT_EQ(desk.sounds, (Sounds{"click", "pass"}));
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
        // The board spans x 400 to 965 and the middle row starts at y 333:
        // IN at (400 - 26, 333), OUT at (400 + 565 + 4, 333).
        expectWords(d, "IN", 374, 333, rgb(70, 224, 138), false, Rect{300, 300, 100, 80});
        expectWords(d, "OUT", 969, 333, rgb(70, 224, 138), false, Rect{966, 300, 137, 80});
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

// Paints the plumbing by hand: the board's tiles of 113 from (400, 220),
// each a face (x + 2, y + 2, 109, 109) with corners of radius 4, brick red
// for the locked centre; then its segment, level (x + 6, y + 52, 101, 8) or
// upright (x + 52, y + 6, 8, 101); IN at (374, 333), OUT at (969, 333); the
// line of orders centred on 683 at y 604.
void paintPipes(Graphics& g, const int (&rotation)[3][5], Color segment) {
    for (int r = 0; r < 3; ++r) {
        for (int c = 0; c < 5; ++c) {
            const int x = 400 + 113 * c;
            const int y = 220 + 113 * r;
            const bool locked = r == 1 && c == 2;
            g.roundRect(Rect{x + 2, y + 2, 109, 109}, 4,
                        locked ? rgb(102, 23, 16) : rgb(89, 69, 23), true);
            if (rotation[r][c] % 2 == 0) {
                g.rect(Rect{x + 6, y + 52, 101, 8}, segment, true);
            } else {
                g.rect(Rect{x + 52, y + 6, 8, 101}, segment, true);
            }
        }
    }
    g.text("IN", 374, 333, TextSize::Small, rgb(70, 224, 138), false, false);
    g.text("OUT", 969, 333, TextSize::Small, rgb(70, 224, 138), false, false);
    g.text("ONE SEGMENT IS LOCKED - ROUTE AROUND IT", 683, 604, TextSize::Small,
           rgb(178, 119, 32), true, false);
}

TEST(Pipes, TheBoardMatchesAPicturePaintedCellByCell) {
    Desk<PipesLevel> desk;
    PipesLevel& p = desk.level;
    int rotation[3][5] = {{0, 1, 2, 3, 0}, {3, 2, 1, 0, 1}, {1, 1, 2, 0, 3}};
    std::copy(&rotation[0][0], &rotation[0][0] + 15, &p.rotation[0][0]);
    {
        Drawn d(p);
        test::BlackCanvas want;
        paintPipes(want.graphics, rotation, rgb(255, 170, 46));
        EXPECT_TRUE(test::sameRegion(d.canvas, want, Rect{263, 190, 840, 450}));
    }
    // Row 0 turned level: the same board, every segment green.
    rotation[0][1] = p.rotation[0][1] = 2;
    rotation[0][3] = p.rotation[0][3] = 0;
    Drawn d(p);
    test::BlackCanvas want;
    paintPipes(want.graphics, rotation, rgb(70, 224, 138));
    EXPECT_TRUE(test::sameRegion(d.canvas, want, Rect{263, 190, 840, 450}));
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
        EXPECT_EQ(l.h, 36);
        EXPECT_EQ(r.w, 36);
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

// The wire palette as it must read, by colour index.
struct Shade {
    Color colour;
    const char* label;
};
constexpr Shade kShades[8] = {
    {rgb(255, 58, 42), "RED"},   {rgb(70, 224, 138), "GRN"},  {rgb(255, 170, 46), "AMB"},
    {rgb(120, 160, 255), "BLU"}, {rgb(220, 120, 220), "PUR"}, {rgb(120, 220, 200), "CYN"},
    {rgb(240, 240, 240), "WHT"}, {rgb(180, 120, 60), "BRN"},
};

TEST(Wires, ThePaletteHoldsItsEightColoursAndWords) {
    for (int i = 0; i < 8; ++i) {
        EXPECT_EQ(WiresLevel::kPalette[i].colour, kShades[i].colour) << i;
        EXPECT_STREQ(WiresLevel::kPalette[i].label, kShades[i].label) << i;
    }
}

struct WireDrag : ::testing::Test {
    Desk<WiresLevel> desk;
    WiresLevel& w = desk.level;
    Sounds heard;   // what the last drag asked for, press to release

    LevelResult drag(int from, const Rect& to) {
        const std::size_t before = desk.sounds.size();
        const LevelResult r = dragFrom(from, to);
        heard = desk.soundsSince(before);
        return r;
    }

private:
    LevelResult dragFrom(int from, const Rect& to) {
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
        EXPECT_EQ(heard, Sounds{"click"}) << "wire " << i;
    }
    EXPECT_EQ(drag(3, w.rightPlugs[3]), LevelResult::Solved);
    EXPECT_EQ(heard, (Sounds{"click", "pass"}));
}

TEST_F(WireDrag, AWrongSocketFires) {
    EXPECT_EQ(drag(1, w.rightPlugs[2]), LevelResult::Failed);
    EXPECT_EQ(heard, Sounds{"fail"});
}

TEST_F(WireDrag, PickingUpAWireIsSilent) {
    const Rect& l = w.leftPlugs[2];
    EXPECT_EQ(desk.press(centreX(l), centreY(l)), LevelResult::Running);
    EXPECT_EQ(w.dragging, 2);
    desk.pointAt(kCx, 300);
    EXPECT_EQ(desk.step(0.016), LevelResult::Running);
    EXPECT_EQ(desk.sounds, Sounds{});
}

TEST_F(WireDrag, APlugTakesPressesOnlyInsideItsThirtySixPixels) {
    const Rect& l = w.leftPlugs[1];   // (335, 296, 36, 36)
    ASSERT_EQ(l.x, 335);
    ASSERT_EQ(l.y, 296);
    const int outside[4][2] = {{334, 310}, {371, 310}, {350, 295}, {350, 332}};
    for (const auto& at : outside) {
        desk.press(at[0], at[1]);
        EXPECT_EQ(w.dragging, -1) << at[0] << "," << at[1];
        desk.release(at[0], at[1]);
    }
    desk.press(370, 331);
    EXPECT_EQ(w.dragging, 1);
    desk.release(kCx, 300);
    desk.press(335, 296);
    EXPECT_EQ(w.dragging, 1);
}

TEST_F(WireDrag, ReleasingOverEmptySpaceOrALeftPlugCancelsWithoutPenalty) {
    EXPECT_EQ(drag(0, Rect{kCx, 300, 1, 1}), LevelResult::Running);
    EXPECT_EQ(w.dragging, -1);
    EXPECT_FALSE(w.connected[0]);
    EXPECT_EQ(drag(0, w.leftPlugs[2]), LevelResult::Running);
    EXPECT_EQ(w.dragging, -1);
    EXPECT_FALSE(w.connected[0]);
    EXPECT_FALSE(w.connected[2]);
    // Without penalty means without a sound, too.
    EXPECT_EQ(desk.sounds, Sounds{});
    // Just past a socket's right edge is empty space as well.
    const Rect& r0 = w.rightPlugs[0];
    desk.press(centreX(w.leftPlugs[0]), centreY(w.leftPlugs[0]));
    EXPECT_EQ(desk.release(r0.x + 36, r0.y + 10), LevelResult::Running);
    EXPECT_FALSE(w.connected[0]);
    EXPECT_EQ(desk.sounds, Sounds{});
    // The wire is still in the player's hand to try again.
    EXPECT_EQ(drag(0, w.rightPlugs[0]), LevelResult::Running);
    EXPECT_TRUE(w.connected[0]);
    EXPECT_EQ(heard, Sounds{"click"});
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
    EXPECT_EQ(desk.soundsSince(1), Sounds{});
}

TEST_F(WireDrag, ReleasingWithoutADragDoesNothing) {
    const Rect& r = w.rightPlugs[1];
    desk.press(kCx, 300);
    EXPECT_EQ(w.dragging, -1);
    EXPECT_EQ(desk.release(centreX(r), centreY(r)), LevelResult::Running);
    EXPECT_EQ(desk.sounds, Sounds{});
}

TEST_F(WireDrag, APressAndReleaseInOneFrameIsADropOnTheSpot) {
    const Rect& l = w.leftPlugs[1];
    desk.pointAt(centreX(l), centreY(l));
    desk.in.mousePressed = true;
    desk.in.mouseReleased = true;
    EXPECT_EQ(desk.step(0.016), LevelResult::Running);
    EXPECT_EQ(w.dragging, -1);
    EXPECT_FALSE(w.connected[1]);
    EXPECT_EQ(desk.sounds, Sounds{});
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
    EXPECT_EQ(desk.sounds, Sounds{"click"});
    // And the drawing really shows that socket in another colour.
    Drawn d(w);
    EXPECT_EQ(d.at(centreX(r), centreY(r)), kShades[shown].colour);
    EXPECT_NE(d.at(centreX(r), centreY(r)), rgb(255, 58, 42));
}

TEST(Wires, PlugColoursAndGreenWires) {
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
        EXPECT_EQ(d.at(centreX(l), centreY(l)), kShades[i].colour);
        EXPECT_EQ(d.at(centreX(r), centreY(r)), kShades[w.rightColour[i]].colour);
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

// Paints the patch panel by hand, wire by wire: the left plug (335,
// 232 + 64 i, 36, 36) with corners of radius 6 in its colour and its label at
// (291, 240 + 64 i); the socket (995, 232 + 64 i, 36, 36) likewise with its
// label at (1035, 240 + 64 i); a connected wire as a green line 4 thick
// from (371, 250 + 64 i) to (995, 250 + 64 i); last the line of orders
// centred on 683 at y 600. `labels` are the words each plug must show.
void paintWires(Graphics& g, const int (&socketColour)[4], const char* const (&leftWords)[4],
                const char* const (&rightWords)[4], const bool (&connected)[4]) {
    for (int i = 0; i < 4; ++i) {
        const int y = 232 + 64 * i;
        g.roundRect(Rect{335, y, 36, 36}, 6, kShades[i].colour, true);
        g.text(leftWords[i], 291, y + 8, TextSize::Small, rgb(242, 232, 207), false, false);
        g.roundRect(Rect{995, y, 36, 36}, 6, kShades[socketColour[i]].colour, true);
        g.text(rightWords[i], 1035, y + 8, TextSize::Small, rgb(242, 232, 207), false, false);
        if (connected[i]) {
            g.line(371, y + 18, 995, y + 18, rgb(70, 224, 138), 4);
        }
    }
    g.text("MATCH BY POSITION", 683, 600, TextSize::Small, rgb(178, 119, 32), true, false);
}

TEST(Wires, ThePanelMatchesAPicturePaintedWireByWire) {
    Desk<WiresLevel> desk(7);
    WiresLevel& w = desk.level;
    const int sockets[4] = {2, 0, 3, 1};
    const bool connected[4] = {false, true, false, true};
    std::copy(std::begin(sockets), std::end(sockets), std::begin(w.rightColour));
    std::copy(std::begin(connected), std::end(connected), std::begin(w.connected));
    Drawn d(w);
    test::BlackCanvas want;
    // Each plug names the colour after its own: red says GRN, green AMB,
    // amber BLU, blue wraps round to RED.
    const char* const left[4] = {"GRN", "AMB", "BLU", "RED"};
    const char* const right[4] = {"BLU", "GRN", "RED", "AMB"};
    paintWires(want.graphics, sockets, left, right, connected);
    EXPECT_TRUE(test::sameRegion(d.canvas, want, Rect{263, 190, 840, 450}));
}

// Each label word on its own, exactly: left labels at (291, 240 + 64 i),
// socket labels at (1035, 240 + 64 i), small, in (242, 232, 207).
TEST(Wires, TheLabelsReadTheNextColoursWord) {
    Desk<WiresLevel> desk(7);
    WiresLevel& w = desk.level;
    const int sockets[4] = {3, 2, 0, 1};
    std::copy(std::begin(sockets), std::end(sockets), std::begin(w.rightColour));
    Drawn d(w);
    const char* const left[4] = {"GRN", "AMB", "BLU", "RED"};
    const char* const right[4] = {"RED", "BLU", "GRN", "AMB"};
    for (int i = 0; i < 4; ++i) {
        const int y = 232 + 64 * i;
        expectWords(d, left[i], 291, y + 8, rgb(242, 232, 207), false, Rect{263, y, 72, 36});
        expectWords(d, right[i], 1035, y + 8, rgb(242, 232, 207), false, Rect{1032, y, 71, 36});
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
    StationDriver bench(def, seed);
    std::unique_ptr<Solver> solver = makeSolver("lightsout");
    const StationDriver::Outcome out = bench.play(*solver, clockFor(def, Difficulty::vorn));
    EXPECT_EQ(out.result, LevelResult::Solved);
}

// Plays one station with a solver and expects the pass sound with the verdict.
void expectSolvedWithPass(const std::string& type, std::uint32_t seed) {
    const LevelDef def = shippedRecord(type);
    StationDriver bench(def, seed);
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
LevelResult clickThrough(StationDriver& bench, int x, int y) {
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
std::vector<std::string> soundsOfClick(StationDriver& bench, int x, int y, LevelResult expected) {
    const std::size_t before = bench.sounds.size();
    EXPECT_EQ(clickThrough(bench, x, y), expected);
    return soundsFrom(bench.sounds, before);
}

TEST(GridBench, TheMazeFiresWithTheFailSoundOnANeighbouringWall) {
    StationDriver bench(shippedRecord("maze"), 11);
    const auto& m = dynamic_cast<const MazeLevel&>(*bench.station);
    const int r = m.playerRow;
    const int wallRow = r > 0 && m.wall[r - 1][0] ? r - 1 : r + 1;
    ASSERT_TRUE(m.wall[wallRow][0]);
    const Rect c = m.cellRect(wallRow, 0);
    EXPECT_EQ(soundsOfClick(bench, c.x + 35, c.y + 35, LevelResult::Failed), Sounds{"fail"});
}

TEST(GridBench, AMazeStepClicks) {
    StationDriver bench(shippedRecord("maze"), 11);
    const auto& m = dynamic_cast<const MazeLevel&>(*bench.station);
    const int row = m.playerRow;
    const int next = m.wall[row][1] ? (row + 1 < 5 && !m.wall[row + 1][0] ? row + 1 : row - 1)
                                    : row;
    const Rect c = m.cellRect(next, next == row ? 1 : 0);
    EXPECT_EQ(soundsOfClick(bench, c.x + 35, c.y + 35, LevelResult::Running), Sounds{"click"});
    EXPECT_FALSE(m.playerRow == row && m.playerColumn == 0);
}

TEST(GridBench, TheLockedPipeBuzzesWithTheFailSoundButNeverFires) {
    StationDriver bench(shippedRecord("pipes"), 11);
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
    StationDriver bench(shippedRecord("lightsout"), 11);
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
        StationDriver probe(shippedRecord("wires"), seed);
        const auto& w = dynamic_cast<const WiresLevel&>(*probe.station);
        redSocket = 0;
        while (w.rightColour[redSocket] != 0) {
            ++redSocket;
        }
        if (redSocket != 0) {
            break;
        }
    }
    StationDriver bench(shippedRecord("wires"), seed);
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
