// The run between its stations: the shift cards and when they show, what a
// verdict does (the next station, the fired notice, the victory and its
// clock-in card) and the one sound of the run each verdict plays.

#include "run_fixtures.h"

#include <gtest/gtest.h>

namespace vorn::test {
namespace {

TEST_F(BareRun, EmptyCatalogueGoesStraightBackToTheTitle) {
    app.audio.requestLog = &sounds;
    EXPECT_TRUE(app.levels.empty());
    app.startRunWithSeed(Difficulty::easy, 7);
    EXPECT_EQ(app.screen, GameScreen::title);
    EXPECT_EQ(log().find("SHIFTCARD:"), std::string::npos);
}

TEST_F(BareRun, ShiftCardWaitsThreeSecondsThenStartsTheFirstStation) {
    catalogue({{1, "a", 20}, {2, "a", 20}});
    app.startRunWithSeed(Difficulty::medium, 5);
    // 1/32 s frames add up exactly: 95 of them are 2.97 s, 96 are 3.0 s.
    frames(95, 1.0 / 32);
    EXPECT_EQ(app.screen, GameScreen::shiftCard);
    frames(1, 1.0 / 32);
    EXPECT_EQ(app.screen, GameScreen::station);
    EXPECT_EQ(app.stationIndex, 0);
    EXPECT_DOUBLE_EQ(app.screenTime, 0.0);
}

TEST_F(BareRun, WithoutProbationTheFirstCardStartsAShiftStationAndOvertimeCardFollows) {
    catalogue({{12, "a", 20}, {32, "a", 20}});
    app.startRunWithSeed(Difficulty::medium, 5);
    EXPECT_EQ(app.shiftCardPhase, 0);
    frames(96, 1.0 / 32);
    ASSERT_EQ(app.screen, GameScreen::station);
    EXPECT_EQ(numberAt(app.stationIndex), 12);
    probe().verdict = LevelResult::Solved;
    app.update(0.016);
    EXPECT_EQ(app.screen, GameScreen::shiftCard);
    EXPECT_EQ(app.shiftCardPhase, 2);
    EXPECT_NE(log().find("SHIFTCARD: phase=2 ('OVERTIME')"), std::string::npos);
}

TEST_F(BareRun, WithoutShiftStationsTheShiftCardOpensOvertimeAndNoOvertimeCardShows) {
    catalogue({{1, "a", 20}, {31, "a", 20}, {33, "a", 20}});
    app.startRunWithSeed(Difficulty::medium, 5);
    frames(96, 1.0 / 32);
    probe().verdict = LevelResult::Solved;
    app.update(0.016);
    ASSERT_EQ(app.screen, GameScreen::shiftCard);
    EXPECT_EQ(app.shiftCardPhase, 1);
    frames(96, 1.0 / 32);
    ASSERT_EQ(app.screen, GameScreen::station);
    EXPECT_EQ(app.stationIndex, 1);
    EXPECT_GE(numberAt(1), 31);
    probe().verdict = LevelResult::Solved;
    app.update(0.016);
    EXPECT_EQ(app.screen, GameScreen::station);
    EXPECT_EQ(app.stationIndex, 2);
    EXPECT_EQ(log().find("OVERTIME"), std::string::npos);
}

TEST_F(Run, AFailedVerdictFiresAndWritesTheSave) {
    start("run_failed", {{1, "a", 20}, {2, "a", 20}});
    app().startRunWithSeed(Difficulty::medium, 5);
    app().startStation(0);
    probe().verdict = LevelResult::Failed;
    app().update(0.05);
    EXPECT_EQ(app().screen, GameScreen::fired);
    EXPECT_NE(readTextFile(headless->folder.dir.path() / "data" / "vornco_save.txt").find("timesFired=1"),
              std::string::npos);
}

TEST_F(BareRun, AnyOtherVerdictKeepsPlaying) {
    catalogue({{1, "a", 20}});
    app.startRunWithSeed(Difficulty::medium, 5);
    app.startStation(0);
    ProbeStation& station = probe();
    station.verdict = static_cast<LevelResult>(3);
    app.update(0.05);
    app.update(0.05);
    EXPECT_EQ(app.screen, GameScreen::station);
    EXPECT_EQ(station.updates, 2);
}

TEST_F(BareRun, SolvedMovesToTheNextStation) {
    catalogue({{1, "a", 20}, {2, "a", 20}});
    app.startRunWithSeed(Difficulty::medium, 5);
    app.startStation(0);
    probe().verdict = LevelResult::Solved;
    app.update(0.05);
    EXPECT_EQ(app.screen, GameScreen::station);
    EXPECT_EQ(app.stationIndex, 1);
    EXPECT_NEAR(app.timeLeft, 10.8, 1e-9);
}

TEST_F(Run, VictoryOnEasyAlwaysAwardsACard) {
    start("run_victory_easy", {{1, "a", 20}});
    app().startRunWithSeed(Difficulty::easy, 5);
    app().startStation(0);
    probe().verdict = LevelResult::Solved;
    app().update(0.05);
    EXPECT_EQ(app().screen, GameScreen::victory);
    EXPECT_TRUE(app().cardAwarded);
    EXPECT_EQ(app().save.clockInCards, 1);
    EXPECT_NE(log().find("VICTORY: difficulty=EASY clockInChance=1.00 awarded=YES totalCards=1"),
              std::string::npos);
    EXPECT_NE(readTextFile(headless->folder.dir.path() / "data" / "vornco_save.txt").find("clockInCards=1"),
              std::string::npos);
}

// A one-station run of a hold station deals and sets up without a single
// draw, so its victory roll is made of the seed's first two outputs. The
// seeds were picked once for where their rolls fall (the longhand rule gives
// the roll, and the test checks it again): each lies just on one side of its
// difficulty's chance.
struct VictoryRoll {
    Difficulty difficulty;
    std::uint32_t seed;
    double rollAtLeast;
    double rollBelow;
    const char* line;   // the VICTORY line, the card total starting from none
};

TEST_F(BareRun, AVictoryAwardsACardWhenTheRollFallsUnderTheDifficultysChance) {
    const VictoryRoll cases[] = {
        // EASY's chance is 1.0: even a roll of 0.999 earns the card.
        {Difficulty::easy, 206, 0.999, 1.0,
         "VICTORY: difficulty=EASY clockInChance=1.00 awarded=YES totalCards=1"},
        // MEDIUM's 0.3: 0.2988 earns it, 0.3045 does not.
        {Difficulty::medium, 10, 0.298, 0.3,
         "VICTORY: difficulty=MEDIUM clockInChance=0.30 awarded=YES totalCards=1"},
        {Difficulty::medium, 45, 0.3, 0.305,
         "VICTORY: difficulty=MEDIUM clockInChance=0.30 awarded=no totalCards=0"},
        // HARD's 0.12: 0.11998 earns it, 0.12076 and 0.4808 do not.
        {Difficulty::hard, 495, 0.1199, 0.12,
         "VICTORY: difficulty=HARD clockInChance=0.12 awarded=YES totalCards=1"},
        {Difficulty::hard, 111, 0.12, 0.1208,
         "VICTORY: difficulty=HARD clockInChance=0.12 awarded=no totalCards=0"},
        {Difficulty::hard, 27, 0.48, 0.481,
         "VICTORY: difficulty=HARD clockInChance=0.12 awarded=no totalCards=0"},
        // VORN's 0.0: not even a roll of 0.0057.
        {Difficulty::vorn, 39, 0.0, 0.006,
         "VICTORY: difficulty=VORN clockInChance=0.00 awarded=no totalCards=0"},
    };
    catalogue({{1, "hold", 20}});
    for (const VictoryRoll& c : cases) {
        SCOPED_TRACE(c.line);
        Rng byHand(c.seed);
        const double roll = uniformRealByHand(byHand);
        ASSERT_GE(roll, c.rollAtLeast);
        ASSERT_LT(roll, c.rollBelow);

        app.save.clockInCards = 0;
        const std::size_t before = log().size();
        app.startRunWithSeed(c.difficulty, c.seed);
        app.startStation(0);
        probe().verdict = LevelResult::Solved;
        app.update(0.01);
        const std::string echoed = log().substr(before);
        ASSERT_EQ(app.screen, GameScreen::victory);
        const bool card = std::string(c.line).find("awarded=YES") != std::string::npos;
        EXPECT_EQ(app.cardAwarded, card);
        EXPECT_EQ(app.save.clockInCards, card ? 1 : 0);
        EXPECT_NE(echoed.find(std::string("\n") + c.line + "\n"), std::string::npos) << echoed;
        // The roll is two raw draws and nothing more.
        EXPECT_EQ(app.rng, engineAfter(c.seed, 2));
    }
}

TEST_F(BareRun, AVictoryPlaysPassOnceAndNothingElse) {
    catalogue({{1, "a", 20}});
    app.startRunWithSeed(Difficulty::medium, 5);
    app.startStation(0);
    probe().verdict = LevelResult::Solved;
    app.update(0.01);
    ASSERT_EQ(app.screen, GameScreen::victory);
    EXPECT_EQ(sounds, std::vector<std::string>{"pass"});
    // The notice that follows is quiet.
    frames(30, 0.05);
    EXPECT_EQ(sounds, std::vector<std::string>{"pass"});
}

TEST_F(BareRun, AFailedVerdictPlaysFailOnceAndNothingElse) {
    catalogue({{1, "a", 20}, {2, "a", 20}});
    app.startRunWithSeed(Difficulty::medium, 5);
    app.startStation(0);
    probe().verdict = LevelResult::Failed;
    app.update(0.01);
    ASSERT_EQ(app.screen, GameScreen::fired);
    EXPECT_EQ(sounds, std::vector<std::string>{"fail"});
    frames(30, 0.05);
    EXPECT_EQ(sounds, std::vector<std::string>{"fail"});
}

TEST_F(BareRun, AClockThatRunsOutTicksItsLastSecondThenPlaysFail) {
    catalogue({{1, "a", 20}});
    app.startRunWithSeed(Difficulty::medium, 5);
    app.startStation(0);
    probe();
    app.timeLeft = 0.03;
    app.update(0.05);
    ASSERT_EQ(app.screen, GameScreen::fired);
    // From a shown 10 straight to 0 is one drop of the shown second: one tick.
    EXPECT_EQ(sounds, (std::vector<std::string>{"tick", "fail"}));
}

TEST_F(BareRun, PassingAStationThatIsNotTheLastAddsNoSoundOfTheRun) {
    catalogue({{1, "a", 20}, {2, "a", 20}, {12, "a", 20}});
    app.startRunWithSeed(Difficulty::medium, 5);
    app.startStation(0);
    probe().verdict = LevelResult::Solved;
    app.update(0.01);
    ASSERT_EQ(app.screen, GameScreen::station);
    probe().verdict = LevelResult::Solved;
    app.update(0.01);
    ASSERT_EQ(app.screen, GameScreen::shiftCard);
    frames(70, 0.05);   // the whole card, and on into the next station
    ASSERT_EQ(app.screen, GameScreen::station);
    EXPECT_EQ(sounds, std::vector<std::string>{});
}

}  // namespace
}  // namespace vorn::test
