// The timing family as a whole: the factory makes each of its six stations
// from its type string, a station fresh from its constructor holds nothing
// but its presets, and the automatic player has a solver for each of them.

#include "stations/level_factory.h"
#include "stations/timing_stations.h"
#include "support/solvers/family_solvers.h"

#include <gtest/gtest.h>

namespace vorn {
namespace {

TEST(TimingFamily, TheFactoryMakesEachTimingStationFromItsTypeString) {
    EXPECT_NE(dynamic_cast<ButtonLevel*>(createLevel("button").get()), nullptr);
    EXPECT_NE(dynamic_cast<HoldLevel*>(createLevel("hold").get()), nullptr);
    EXPECT_NE(dynamic_cast<TwoHandLevel*>(createLevel("twohand").get()), nullptr);
    EXPECT_NE(dynamic_cast<PatienceLevel*>(createLevel("patience").get()), nullptr);
    EXPECT_NE(dynamic_cast<TimingLevel*>(createLevel("timing").get()), nullptr);
    EXPECT_NE(dynamic_cast<OrbitLevel*>(createLevel("orbit").get()), nullptr);
    // Type strings are matched exactly: no folding of case, no trimming.
    EXPECT_EQ(dynamic_cast<ButtonLevel*>(createLevel("Button").get()), nullptr);
    EXPECT_EQ(dynamic_cast<OrbitLevel*>(createLevel("orbit ").get()), nullptr);
}

TEST(TimingFamily, ConstructorsZeroEverythingButTheirPresets) {
    const HoldLevel hold;
    EXPECT_EQ(hold.requiredTime, 2.0);
    EXPECT_EQ(hold.heldTime, 0.0);
    EXPECT_FALSE(hold.holding);
    const TimingLevel timing;
    EXPECT_EQ(timing.angularSpeed, 2.6);
    EXPECT_EQ(timing.tolerance, 0.5);
    EXPECT_EQ(timing.angle, 0.0);
    const OrbitLevel orbit;
    EXPECT_EQ(orbit.orbitRadius, 130);
    EXPECT_EQ(orbit.orbRadius, 24);
    EXPECT_EQ(orbit.angularSpeed, 2.2);
    const ButtonLevel button;
    EXPECT_EQ(button.flashTimer, 0.0);
    EXPECT_EQ(button.target.w, 0);
    const TwoHandLevel twohand;
    EXPECT_EQ(twohand.charge, 0.0);
    EXPECT_EQ(twohand.direction, 0);
    const PatienceLevel patience;
    EXPECT_EQ(patience.wait, 0.0);
    EXPECT_FALSE(patience.ready);
}

TEST(TimingSolvers, EveryTimingTypeHasItsOwnSolverAndNoOtherTypeDoes) {
    for (const char* type : {"button", "hold", "twohand", "patience", "timing", "orbit"}) {
        EXPECT_NE(test::makeTimingSolver(type), nullptr) << type;
    }
    EXPECT_EQ(test::makeTimingSolver("whack"), nullptr);
    EXPECT_EQ(test::makeTimingSolver(""), nullptr);
}

}  // namespace
}  // namespace vorn
