// The memory family as a whole: each type string makes its station, and the
// automatic player clears every one of them on every difficulty, playing
// from what it saw rather than from the station's hidden state.

#include "stations/level_factory.h"
#include "stations/memory_stations.h"
#include "support/solvers/family_solvers.h"
#include "support/station_driver.h"

#include <gtest/gtest.h>

#include <memory>

namespace vorn::test {
namespace {

TEST(MemoryFamily, EachTypeStringMakesItsStation) {
    EXPECT_NE(dynamic_cast<SimonLevel*>(createLevel("simon").get()), nullptr);
    EXPECT_NE(dynamic_cast<AntiSimonLevel*>(createLevel("antisimon").get()), nullptr);
    EXPECT_NE(dynamic_cast<SequenceLevel*>(createLevel("sequence").get()), nullptr);
    EXPECT_NE(dynamic_cast<RecallLevel*>(createLevel("recall").get()), nullptr);
    EXPECT_NE(dynamic_cast<MemoryLevel*>(createLevel("memory").get()), nullptr);
    EXPECT_NE(dynamic_cast<MorseLevel*>(createLevel("morse").get()), nullptr);
}

TEST(MemorySolvers, SimonIsClearedOnEveryDifficulty) { EXPECT_EQ(unsolvedRuns("simon"), ""); }
TEST(MemorySolvers, AntiSimonIsClearedOnEveryDifficulty) {
    EXPECT_EQ(unsolvedRuns("antisimon"), "");
}
TEST(MemorySolvers, SequenceIsClearedOnEveryDifficulty) {
    EXPECT_EQ(unsolvedRuns("sequence"), "");
}
TEST(MemorySolvers, RecallIsClearedOnEveryDifficulty) { EXPECT_EQ(unsolvedRuns("recall"), ""); }
TEST(MemorySolvers, MemoryIsClearedOnEveryDifficulty) { EXPECT_EQ(unsolvedRuns("memory"), ""); }
TEST(MemorySolvers, MorseIsClearedOnEveryDifficulty) { EXPECT_EQ(unsolvedRuns("morse"), ""); }

// The solver plays from what it saw lit, not from the station's hidden
// sequence: with every flash hidden from it, it has nothing to repeat.
TEST(MemorySolvers, TheSimonSolverWorksFromTheFlashesItSaw) {
    Driver<SimonLevel> d(3, shippedRecord("simon"));
    std::unique_ptr<Solver> solver = makeSolver("simon");
    // Blind the player: the station never lights a pad while showing.
    struct Blind final : Solver {
        Solver* inner = nullptr;
        SimonLevel* level = nullptr;
        Intent decide(const Level& s, const Hand& hand, double t) override {
            if (level->showing) {
                level->litPad = -1;
            }
            return inner->decide(s, hand, t);
        }
    } blind;
    blind.inner = solver.get();
    blind.level = &d.level;
    const StationDriver::Outcome out = d.play(blind, 30.0);
    EXPECT_EQ(out.result, LevelResult::Running);
    EXPECT_EQ(d.level.sequence.size(), 1u);
}

}  // namespace
}  // namespace vorn::test
