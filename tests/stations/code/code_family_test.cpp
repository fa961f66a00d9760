// What the code family's two pads share: the factory makes each from its
// type string, exactly as written, and each solved by the automatic player
// ends with the pass sound.

#include "stations/code/code_fixtures.h"
#include "stations/code_stations.h"
#include "stations/level_factory.h"
#include "support/play_area.h"
#include "support/solvers/family_solvers.h"
#include "support/station_driver.h"

#include <gtest/gtest.h>

#include <memory>

namespace vorn::test {
namespace {

TEST(CodeFamily, TheFactoryMakesBothPadsFromTheirTypeStrings) {
    EXPECT_NE(dynamic_cast<KeypadLevel*>(createLevel("keypad").get()), nullptr);
    EXPECT_NE(dynamic_cast<LiarKeypadLevel*>(createLevel("liarkeypad").get()), nullptr);
    EXPECT_EQ(dynamic_cast<LiarKeypadLevel*>(createLevel("liarKeypad").get()), nullptr);
}

TEST(CodeFamily, EachPadSolvedPlaysThePassSoundWithItsVerdict) {
    for (const char* type : {"keypad", "liarkeypad"}) {
        const LevelDef def = shippedRecord(type);
        StationDriver d(def, 6);
        std::unique_ptr<Solver> solver = makeSolver(type);
        EXPECT_EQ(d.play(*solver, clockFor(def, Difficulty::vorn)).result, LevelResult::Solved)
            << type;
        EXPECT_TRUE(d.lastSoundWasPass()) << type;
    }
}

TEST(CodeFamily, TimePassingAloneNeverEndsAPad) {
    for (const char* type : {"keypad", "liarkeypad"}) {
        StationDriver d(madeUpRecord(type, 11), 3);
        d.moveTo(kPlayLeft + 10, kPlayTop + 10);   // off every key
        EXPECT_EQ(d.holdFor(90.0), LevelResult::Running) << type;
        EXPECT_EQ(d.sounds, Sounds{}) << type;
    }
}

}  // namespace
}  // namespace vorn::test
