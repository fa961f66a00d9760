// What the grid family's four stations share: the factory makes each from
// its type string, none of them ever ends on time alone (every change comes
// from a click or a drop), and each one solved by the automatic player ends
// with the pass sound.

#include "stations/grid/grid_fixtures.h"
#include "stations/grid_stations.h"
#include "stations/level_factory.h"
#include "support/play_area.h"
#include "support/solvers/family_solvers.h"
#include "support/station_driver.h"

#include <gtest/gtest.h>

#include <memory>
#include <string>

namespace vorn::test {
namespace {

const char* const kGridTypes[] = {"lightsout", "maze", "pipes", "wires"};

TEST(GridFamily, EachTypeStringMakesItsStation) {
    EXPECT_NE(dynamic_cast<LightsOutLevel*>(createLevel("lightsout").get()), nullptr);
    EXPECT_NE(dynamic_cast<MazeLevel*>(createLevel("maze").get()), nullptr);
    EXPECT_NE(dynamic_cast<PipesLevel*>(createLevel("pipes").get()), nullptr);
    EXPECT_NE(dynamic_cast<WiresLevel*>(createLevel("wires").get()), nullptr);
}

TEST(GridFamily, TimePassingAloneNeverEndsAStation) {
    for (const char* type : kGridTypes) {
        StationDriver d(madeUpRecord(type, 11), 3);
        // A minute and a half with the pointer resting on the middle of the
        // play area: no verdict, and not a sound.
        d.moveTo(kPlayCentreX, kPlayCentreY);
        EXPECT_EQ(d.holdFor(90.0), LevelResult::Running) << type;
        EXPECT_EQ(d.sounds, Sounds{}) << type;
    }
}

TEST(GridFamily, EachStationSolvedPlaysThePassSoundWithItsVerdict) {
    for (const char* type : kGridTypes) {
        const LevelDef def = shippedRecord(type);
        StationDriver d(def, 4);
        std::unique_ptr<Solver> solver = makeSolver(type);
        EXPECT_EQ(d.play(*solver, clockFor(def, Difficulty::vorn)).result, LevelResult::Solved)
            << type;
        EXPECT_TRUE(d.lastSoundWasPass()) << type;
    }
}

}  // namespace
}  // namespace vorn::test
