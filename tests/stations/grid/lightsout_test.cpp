// The lighting panel ("lightsout"): nine lamps, each click inverting a lamp
// and its neighbours, solved once all are lit. The scramble a seed deals is
// worked out longhand from raw engine outputs, so the station's own press
// is not trusted to check itself; the panel is looked at lamp by lamp.

#include "stations/grid/grid_fixtures.h"
#include "stations/grid_stations.h"
#include "support/board_probe.h"
#include "support/draws_by_hand.h"
#include "support/play_area.h"
#include "support/solvers/family_solvers.h"
#include "support/station_driver.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <iterator>
#include <memory>

namespace vorn::test {
namespace {

using Lights = Driver<LightsOutLevel>;

constexpr const char* kOrders = "TURN EVERY CELL ON \xE2\x80\x94 CLICKS AFFECT NEIGHBOURS";

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

// r() % 3 + 4 presses, each at row r() % 3 and column r() % 3.
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

// The first seed whose scramble cancels out to an all-lit panel.
std::uint32_t seedDealingAllLit() {
    std::uint32_t seed = 1;
    while (lightsByHand(seed).dark != 0) {
        ++seed;
    }
    return seed;
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

void lightAll(LightsOutLevel& level) {
    std::fill(std::begin(level.lit), std::end(level.lit), true);
}

TEST(LightsOutStation, NineCellsOfOneHundredTenCentredOnThePlayArea) {
    Lights d;
    EXPECT_EQ(d.level.n, 3);
    // 110-pixel cells 126 apart: three of them span 362, so the first
    // starts 181 left of the centre; the top row is 54 below the area's top.
    for (int row = 0; row < 3; ++row) {
        for (int column = 0; column < 3; ++column) {
            const Rect& c = d.level.cells[row * 3 + column];
            EXPECT_EQ(c.x, kPlayCentreX - 181 + 126 * column);
            EXPECT_EQ(c.y, kPlayTop + 54 + 126 * row);
            EXPECT_EQ(c.w, 110);
            EXPECT_EQ(c.h, 110);
        }
    }
    // Another area: the grid follows its centre (10 + 501 / 2 = 260) and top.
    Lights other(5489, 11, Rect{10, 20, 501, 400});
    EXPECT_EQ(other.level.cells[0].x, 260 - 181);
    EXPECT_EQ(other.level.cells[8].y, 20 + 54 + 252);
}

TEST(LightsOutStation, TheScrambleIsFourToSixPressesFromRawDraws) {
    bool sawPresses[7] = {};
    for (std::uint32_t seed = 1; seed <= 60; ++seed) {
        Lights d(seed);
        const LightsDeal deal = lightsByHand(seed);
        EXPECT_EQ(darkMask(d.level), deal.dark) << "seed " << seed;
        EXPECT_EQ(d.rng, engineAfter(seed, static_cast<unsigned long long>(deal.draws)))
            << "seed " << seed;
        sawPresses[deal.presses] = true;
    }
    EXPECT_TRUE(sawPresses[4] && sawPresses[5] && sawPresses[6]);
}

TEST(LightsOutStation, AScrambleThatCancelsLeavesEveryCellLitButUnsolved) {
    Lights d(seedDealingAllLit());
    EXPECT_EQ(darkCount(d.level), 0);
    // Time passes with the pointer over the panel, a click lands in the gap
    // between two cells: still not solved, and not a sound.
    const Rect& c0 = d.level.cells[0];
    EXPECT_EQ(d.moveTo(kPlayCentreX, c0.y + 150), LevelResult::Running);
    EXPECT_EQ(d.holdFor(5.0), LevelResult::Running);
    EXPECT_EQ(d.click(c0.x + 113, c0.y + 50), LevelResult::Running);
    EXPECT_EQ(darkCount(d.level), 0);
    EXPECT_EQ(d.sounds, Sounds{});
    // The first real click darkens three cells; the same click undoes it and
    // only then, with a click made and all lit, is the panel done.
    EXPECT_EQ(d.clickCentre(c0), LevelResult::Running);
    EXPECT_EQ(darkCount(d.level), 3);
    EXPECT_EQ(d.sounds, Sounds{"click"});
    EXPECT_EQ(d.press(c0.x + 5, c0.y + 5), LevelResult::Solved);
    EXPECT_EQ(d.heard(), (Sounds{"click", "pass"}));
}

TEST(LightsOutStation, ACornerTogglesThreeAnEdgeFourTheCentreFive) {
    Lights d;
    auto fromAllLit = [&](int cell) {
        lightAll(d.level);
        EXPECT_EQ(d.clickCentre(d.level.cells[cell]), LevelResult::Running);
        return darkMask(d.level);
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

TEST(LightsOutStation, APressInvertsRatherThanLights) {
    Lights d;
    std::fill(std::begin(d.level.lit), std::end(d.level.lit), false);
    d.level.lit[1] = true;
    EXPECT_EQ(d.clickCentre(d.level.cells[0]), LevelResult::Running);
    EXPECT_TRUE(d.level.lit[0]);
    EXPECT_FALSE(d.level.lit[1]);
    EXPECT_TRUE(d.level.lit[3]);
}

TEST(LightsOutStation, TheClickThatLightsTheLastCellSolves) {
    Lights d;
    lightAll(d.level);
    d.level.press(1, 1);   // the centre's cross goes dark
    EXPECT_EQ(d.clickCentre(d.level.cells[0]), LevelResult::Running);
    d.level.press(0, 0);   // undo the player's corner by hand
    const std::size_t before = d.sounds.size();
    EXPECT_EQ(d.clickCentre(d.level.cells[4]), LevelResult::Solved);
    EXPECT_EQ(d.soundsSince(before), (Sounds{"click", "pass"}));
}

TEST(LightsOutStation, APressOnACellClicksOnceAndAnythingElseIsSilent) {
    Lights d;
    // Two corners dark-crossed: no single press can finish this panel.
    lightAll(d.level);
    d.level.press(0, 0);
    d.level.press(2, 2);
    const Rect& c = d.level.cells[4];
    // Pressed in the gap, carried over a cell, let go there; clicked in the
    // gaps and above the panel: not a sound.
    EXPECT_EQ(d.press(c.x - 8, c.y + 50), LevelResult::Running);
    EXPECT_EQ(d.moveTo(centreX(c), centreY(c)), LevelResult::Running);
    EXPECT_EQ(d.release(), LevelResult::Running);
    EXPECT_EQ(d.click(c.x + 50, c.y + 110), LevelResult::Running);
    EXPECT_EQ(d.click(kPlayCentreX, kPlayTop + 10), LevelResult::Running);
    EXPECT_EQ(d.sounds, Sounds{});
    // One press on a cell: one click, and the release after it adds nothing.
    EXPECT_EQ(d.clickCentre(c), LevelResult::Running);
    EXPECT_EQ(d.sounds, Sounds{"click"});
    EXPECT_EQ(d.clickCentre(d.level.cells[1]), LevelResult::Running);
    EXPECT_EQ(d.sounds, (Sounds{"click", "click"}));
}

TEST(LightsOutStation, OnlyAPressEdgeCountsAndCellEdgesAreHalfOpen) {
    Lights d;
    const unsigned before = darkMask(d.level);
    const Rect& c = d.level.cells[4];
    // The button held over a cell without a new press there: nothing.
    d.press(c.x - 8, c.y + 10);
    d.moveTo(centreX(c), centreY(c));
    d.idle(10);
    d.release();
    EXPECT_EQ(darkMask(d.level), before);
    // One past the right and bottom edges is the gap, as is one before the left.
    d.click(c.x + 110, c.y + 10);
    d.click(c.x + 10, c.y + 110);
    d.click(c.x - 1, c.y + 10);
    EXPECT_EQ(darkMask(d.level), before);
    d.click(c.x + 109, c.y + 109);
    EXPECT_NE(darkMask(d.level), before);
}

// A lit lamp is a green rim with corners of radius 8 round a brighter face
// inset by 8 (94 square); an unlit one a charcoal rim round dark glass.
// Black gaps of 16 lie between the cells.
TEST(LightsOutStation, EachLampShowsLitOrDarkInItsOwnCell) {
    Lights d;
    const bool on[9] = {true, false, true, false, false, true, true, true, false};
    std::copy(std::begin(on), std::end(on), std::begin(d.level.lit));
    StationPicture p(d.level);
    for (int i = 0; i < 9; ++i) {
        const Rect& c = d.level.cells[i];
        const Color rim = on[i] ? grid_ink::litRim : station_ink::charcoal;
        const Color face = on[i] ? station_ink::terminalGreen : grid_ink::darkGlass;
        EXPECT_EQ(p.at(c.x, c.y + 55), rim) << "cell " << i;
        EXPECT_EQ(p.at(c.x + 7, c.y + 55), rim) << "cell " << i;
        EXPECT_EQ(p.at(c.x + 8, c.y + 8), face) << "cell " << i;
        EXPECT_EQ(p.at(c.x + 55, c.y + 55), face) << "cell " << i;
        EXPECT_EQ(p.at(c.x + 101, c.y + 101), face) << "cell " << i;
        EXPECT_EQ(p.at(c.x + 102, c.y + 102), rim) << "cell " << i;
        EXPECT_EQ(p.at(c.x + 109, c.y + 55), rim) << "cell " << i;
        EXPECT_EQ(p.at(c.x + 55, c.y + 109), rim) << "cell " << i;
        EXPECT_EQ(bareAlongTopRow(p, c, rim), 8) << "cell " << i;
        // The gap around it (below the last row runs the line of orders).
        EXPECT_EQ(p.at(c.x - 1, c.y + 55), station_ink::black) << "cell " << i;
        EXPECT_EQ(p.at(c.x + 110, c.y + 55), station_ink::black) << "cell " << i;
        EXPECT_EQ(p.at(c.x + 55, c.y - 1), station_ink::black) << "cell " << i;
        if (i < 6) {
            EXPECT_EQ(p.at(c.x + 55, c.y + 110), station_ink::black) << "cell " << i;
        }
    }
    // The bottom row of cells reaches 606 - 190 = 416 into the play area and
    // the line of orders starts 16 above its foot, at 604: the words are
    // compared below the cells.
    EXPECT_EQ(playAreaNoteUnlike(p, playAreaRows(d.level.cells[8].y + 110 + 1, kPlayBottom + 40),
                                 kOrders, 16), 0);
}

TEST(LightsOutStation, EveryPressClicksAndThePanelNeverFires) {
    // Press every cell twice in a row: the panel ends where it began, each
    // press clicks, and nothing ever fires. The deal must be more than one
    // press from solved, or the first press of a pair would solve it.
    const unsigned dark = lightsByHand(11).dark;
    ASSERT_NE(dark, 0u);
    for (int i = 0; i < 9; ++i) {
        ASSERT_NE(dark, crossMask(i));
    }
    Lights d(11);
    for (int i = 0; i < 9; ++i) {
        for (int twice = 0; twice < 2; ++twice) {
            const std::size_t before = d.sounds.size();
            EXPECT_EQ(d.clickCentre(d.level.cells[i]), LevelResult::Running);
            EXPECT_EQ(d.soundsSince(before), Sounds{"click"});
        }
    }
    EXPECT_EQ(darkMask(d.level), dark);
}

TEST(LightsOutStation, TheAutomaticPlayerClearsItOnEveryDifficulty) {
    EXPECT_EQ(unsolvedRuns("lightsout"), "");
}

// A panel dealt all lit still needs two clicks: the solver makes them.
TEST(LightsOutStation, TheAutomaticPlayerFinishesAPanelDealtAllLit) {
    const LevelDef def = shippedRecord("lightsout");
    StationDriver d(def, seedDealingAllLit());
    std::unique_ptr<Solver> solver = makeSolver("lightsout");
    EXPECT_EQ(d.play(*solver, clockFor(def, Difficulty::vorn)).result, LevelResult::Solved);
}

}  // namespace
}  // namespace vorn::test
