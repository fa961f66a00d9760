// The paperwork family as a whole: the factory makes each of its stations
// from its type string (and the odd tile from any type it does not know),
// a fresh station starts from the family's own defaults, and the automatic
// player's solvers clear every station of the family on every difficulty.
// Each station's own rules and picture are in the file named after its type.

#include "stations/level_factory.h"
#include "stations/paperwork/paperwork_fixtures.h"

#include <gtest/gtest.h>

namespace vorn::test {
namespace {

TEST(PaperworkFactory, EachTypeStringMakesItsOwnStation) {
    EXPECT_NE(dynamic_cast<EulaLevel*>(createLevel("eula").get()), nullptr);
    EXPECT_NE(dynamic_cast<SettingsLevel*>(createLevel("settings").get()), nullptr);
    EXPECT_NE(dynamic_cast<QuizLevel*>(createLevel("quiz").get()), nullptr);
    EXPECT_NE(dynamic_cast<StroopLevel*>(createLevel("stroop").get()), nullptr);
    EXPECT_NE(dynamic_cast<StampLevel*>(createLevel("stamp").get()), nullptr);
    EXPECT_NE(dynamic_cast<ReverseLevel*>(createLevel("reverse").get()), nullptr);
    // Type strings are matched exactly: "Quiz" is no type, so it gets the odd
    // tile, as does the shipped "oddtile", which no table line names.
    EXPECT_NE(dynamic_cast<GenericLevel*>(createLevel("Quiz").get()), nullptr);
    EXPECT_NE(dynamic_cast<GenericLevel*>(createLevel("oddtile").get()), nullptr);
}

TEST(PaperworkDefaults, ConstructorsSetTheFamilysOwnDefaults) {
    EXPECT_EQ(EulaLevel{}.lineCount, 18);
    EXPECT_FALSE(SettingsLevel{}.enabled);
    EXPECT_EQ(QuizLevel{}.count, 4);
    EXPECT_EQ(GenericLevel{}.count, 6);
    EXPECT_DOUBLE_EQ(ReverseLevel{}.position, 0.5);
}

TEST(PaperworkSolvers, ClearTheAgreementOnEveryDifficulty) {
    EXPECT_EQ(unsolvedRuns("eula"), "");
}

TEST(PaperworkSolvers, ClearTheSettingsPageOnEveryDifficulty) {
    EXPECT_EQ(unsolvedRuns("settings"), "");
}

TEST(PaperworkSolvers, ClearTheExamOnEveryDifficulty) {
    EXPECT_EQ(unsolvedRuns("quiz"), "");
}

TEST(PaperworkSolvers, ClearTheReadingTestOnEveryDifficulty) {
    EXPECT_EQ(unsolvedRuns("stroop"), "");
}

TEST(PaperworkSolvers, ClearTheStampsOnEveryDifficulty) {
    EXPECT_EQ(unsolvedRuns("stamp"), "");
}

TEST(PaperworkSolvers, ClearTheBackwardsConveyorOnEveryDifficulty) {
    EXPECT_EQ(unsolvedRuns("reverse"), "");
}

TEST(GenericSolver, ClearsTheOddTileStationOnEveryDifficulty) {
    EXPECT_EQ(unsolvedRuns("oddtile"), "");
}

TEST(GenericSolver, IsTheFallbackForAnyTypeNoFamilyClaims) {
    LevelDef def = shippedRecord("oddtile");
    def.type = "photocopier";
    StationDriver d(def, 3);
    auto solver = makeSolver("photocopier");
    EXPECT_EQ(d.play(*solver, 10.0).result, LevelResult::Solved);
    EXPECT_TRUE(d.lastSoundWasPass());
}

}  // namespace
}  // namespace vorn::test
