// The run: station order and phases, clocks, verdicts, firing and victory,
// driven through the started application with explicit seeds.

#include "support/headless_app.h"
#include "stations/paperwork_stations.h"
#include "support/draws_by_hand.h"
#include "support/probe_station.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>

namespace vorn::test {
namespace {

GameFolderOptions withCatalogue(std::string text) {
    GameFolderOptions options;
    options.catalogue = std::move(text);
    return options;
}

class Run : public ::testing::Test {
protected:
    void start(const std::string& name, std::initializer_list<CatalogueEntry> entries) {
        headless = std::make_unique<HeadlessApp>(name, withCatalogue(catalogueOf(entries)));
        ASSERT_TRUE(headless->started);
    }
    Application& app() { return headless->app; }
    std::string log() const { return headless->folder.logText(); }
    // Replaces the running station with a probe that answers as told.
    ProbeStation& probe() {
        auto owned = std::make_unique<ProbeStation>();
        ProbeStation& ref = *owned;
        app().station = std::move(owned);
        return ref;
    }
    void frames(int n, double dt) {
        for (int i = 0; i < n; ++i) {
            app().update(dt);
        }
    }
    int numberAt(int position) {
        return app().levels[static_cast<std::size_t>(app().stationOrder[static_cast<std::size_t>(position)])].number;
    }

    std::unique_ptr<HeadlessApp> headless;
};

TEST_F(Run, GroupsByNumberAndDealsProbationShiftThenOvertime) {
    start("run_groups", {{31, "a", 20}, {12, "a", 20}, {3, "a", 20}, {40, "a", 20}, {10, "a", 20},
                         {33, "a", 20}, {11, "a", 20}});
    app().startRunWithSeed(Difficulty::medium, 42);
    ASSERT_EQ(app().stationOrder.size(), 7u);
    EXPECT_EQ(app().probationCount, 2);
    EXPECT_EQ(app().shiftStart, 2);
    EXPECT_EQ(app().overtimeStart, 5);
    for (int i = 0; i < 2; ++i) EXPECT_LE(numberAt(i), 10);
    for (int i = 2; i < 5; ++i) EXPECT_TRUE(numberAt(i) >= 11 && !(numberAt(i) >= 31 && numberAt(i) <= 33));
    for (int i = 5; i < 7; ++i) EXPECT_TRUE(numberAt(i) >= 31 && numberAt(i) <= 33);
    EXPECT_EQ(app().screen, GameScreen::shiftCard);
    EXPECT_EQ(app().shiftCardPhase, 0);
    EXPECT_NE(log().find("INFO  RUN: start difficulty=MEDIUM seed=42 levels=7 (probation=2 shift=3 overtime=2)"),
              std::string::npos);
    EXPECT_NE(log().find("INFO  SHIFTCARD: phase=0 ('PROBATION')"), std::string::npos);
}

TEST_F(Run, SameSeedDealsTheSameOrderAndLayouts) {
    start("run_same_seed", {{1, "a", 20}, {2, "b", 20}, {3, "c", 20}, {4, "d", 20}, {12, "e", 20},
                            {13, "f", 20}, {14, "g", 20}});
    std::vector<int> answers[2];
    std::vector<std::int32_t> orders[2];
    for (int attempt = 0; attempt < 2; ++attempt) {
        app().startRunWithSeed(Difficulty::hard, 1234);
        orders[attempt] = app().stationOrder;
        for (int i = 0; i < 7; ++i) {
            app().startStation(i);
            answers[attempt].push_back(dynamic_cast<GenericLevel&>(*app().station).answer);
        }
    }
    EXPECT_EQ(orders[0], orders[1]);
    EXPECT_EQ(answers[0], answers[1]);
    app().startRunWithSeed(Difficulty::hard, 1235);
    EXPECT_NE(app().stationOrder, orders[0]);
}

// The shipped catalogue dealt for seed 2026. The numbers below were worked out
// once with an MT19937 written separately from its published definition (and
// checked against its published 10000th output for seed 5489), shuffling
// probation, then the shift, then overtime with the multiply-and-reject draw.
// Both builds, native and Windows, must deal exactly this order.
TEST_F(Run, TheShippedCatalogueDealsThisOrderForSeed2026) {
    headless = std::make_unique<HeadlessApp>("run_pinned");
    ASSERT_TRUE(headless->started);
    ASSERT_EQ(app().levels.size(), 38u);
    app().startRunWithSeed(Difficulty::medium, 2026);
    const std::vector<int> expected{8,  4,  3,  1,  10, 6,  9,  2,  7,  5,  20, 34, 18,
                                    23, 16, 27, 17, 14, 24, 28, 40, 15, 13, 21, 42, 12,
                                    29, 30, 35, 41, 11, 25, 26, 22, 19, 32, 33, 31};
    std::vector<int> dealt;
    for (int i = 0; i < static_cast<int>(app().stationOrder.size()); ++i) {
        dealt.push_back(numberAt(i));
    }
    EXPECT_EQ(dealt, expected);
    // 9 + 24 + 2 swaps, none of whose draws was rejected: 35 raw draws spent.
    EXPECT_EQ(app().rng, engineAfter(2026, 35));
}

// The same deal worked out longhand in the test for several seeds: group by
// number in file order, then shuffle each group with draws made by hand.
TEST_F(Run, EverySeedDealsTheGroupsShuffledByTheLonghandRule) {
    headless = std::make_unique<HeadlessApp>("run_longhand");
    ASSERT_TRUE(headless->started);
    for (std::uint32_t seed : {1u, 11u, 2026u, 4000000000u}) {
        std::vector<int> groups[3];
        for (const LevelDef& def : app().levels) {
            const int n = def.number;
            groups[n <= 10 ? 0 : (n >= 31 && n <= 33 ? 2 : 1)].push_back(n);
        }
        Rng byHand(seed);
        std::vector<int> expected;
        for (std::vector<int>& group : groups) {
            for (std::size_t i = 1; i < group.size(); ++i) {
                const auto j = static_cast<std::size_t>(
                    uniformBelowByHand(byHand, static_cast<std::uint32_t>(i + 1)));
                std::swap(group[i], group[j]);
            }
            expected.insert(expected.end(), group.begin(), group.end());
        }
        app().startRunWithSeed(Difficulty::hard, seed);
        std::vector<int> dealt;
        for (int i = 0; i < static_cast<int>(app().stationOrder.size()); ++i) {
            dealt.push_back(numberAt(i));
        }
        EXPECT_EQ(dealt, expected) << "seed " << seed;
        EXPECT_EQ(app().rng, byHand) << "seed " << seed;
    }
}

TEST_F(Run, EmptyCatalogueGoesStraightBackToTheTitle) {
    headless = std::make_unique<HeadlessApp>("run_empty", GameFolderOptions{true, false, "", {}});
    ASSERT_TRUE(headless->started);
    EXPECT_TRUE(app().levels.empty());
    app().startRunWithSeed(Difficulty::easy, 7);
    EXPECT_EQ(app().screen, GameScreen::title);
    EXPECT_EQ(log().find("SHIFTCARD:"), std::string::npos);
}

TEST_F(Run, ShiftCardWaitsThreeSecondsThenStartsTheFirstStation) {
    start("run_card_wait", {{1, "a", 20}, {2, "a", 20}});
    app().startRunWithSeed(Difficulty::medium, 5);
    // 1/32 s frames add up exactly: 95 of them are 2.97 s, 96 are 3.0 s.
    frames(95, 1.0 / 32);
    EXPECT_EQ(app().screen, GameScreen::shiftCard);
    frames(1, 1.0 / 32);
    EXPECT_EQ(app().screen, GameScreen::station);
    EXPECT_EQ(app().stationIndex, 0);
    EXPECT_DOUBLE_EQ(app().screenTime, 0.0);
}

TEST_F(Run, WithoutProbationTheFirstCardStartsAShiftStationAndOvertimeCardFollows) {
    start("run_no_probation", {{12, "a", 20}, {32, "a", 20}});
    app().startRunWithSeed(Difficulty::medium, 5);
    EXPECT_EQ(app().shiftCardPhase, 0);
    frames(96, 1.0 / 32);
    ASSERT_EQ(app().screen, GameScreen::station);
    EXPECT_EQ(numberAt(app().stationIndex), 12);
    probe().verdict = LevelResult::Solved;
    app().update(0.016);
    EXPECT_EQ(app().screen, GameScreen::shiftCard);
    EXPECT_EQ(app().shiftCardPhase, 2);
    EXPECT_NE(log().find("SHIFTCARD: phase=2 ('OVERTIME')"), std::string::npos);
}

TEST_F(Run, WithoutShiftStationsTheShiftCardOpensOvertimeAndNoOvertimeCardShows) {
    start("run_no_shift", {{1, "a", 20}, {31, "a", 20}, {33, "a", 20}});
    app().startRunWithSeed(Difficulty::medium, 5);
    frames(96, 1.0 / 32);
    probe().verdict = LevelResult::Solved;
    app().update(0.016);
    ASSERT_EQ(app().screen, GameScreen::shiftCard);
    EXPECT_EQ(app().shiftCardPhase, 1);
    frames(96, 1.0 / 32);
    ASSERT_EQ(app().screen, GameScreen::station);
    EXPECT_EQ(app().stationIndex, 1);
    EXPECT_GE(numberAt(1), 31);
    probe().verdict = LevelResult::Solved;
    app().update(0.016);
    EXPECT_EQ(app().screen, GameScreen::station);
    EXPECT_EQ(app().stationIndex, 2);
    EXPECT_EQ(log().find("OVERTIME"), std::string::npos);
}

TEST_F(Run, ClockIsBaseTimeTimesMultiplierTimesPointFourFive) {
    start("run_clock", {{1, "a", 20}, {31, "a", 20}});
    app().startRunWithSeed(Difficulty::medium, 5);
    const int regular = numberAt(0) == 1 ? 0 : 1;
    app().startStation(regular);
    EXPECT_NEAR(app().timeLeft, 10.8, 1e-9);
    EXPECT_EQ(app().shownSeconds, 10);
    EXPECT_TRUE(app().timerRunning);
    EXPECT_NE(log().find("LEVEL: " + std::to_string(regular + 1) +
                         "/2 station 01 'STATION 1' type=a time=10.8s (base=20 x1.20 x0.9)"),
              std::string::npos)
        << log();
    for (Difficulty d : {Difficulty::easy, Difficulty::medium, Difficulty::hard, Difficulty::vorn}) {
        app().startRunWithSeed(d, 5);
        app().startStation(1 - regular);
        EXPECT_NEAR(app().timeLeft, 6.3, 1e-9);
    }
    app().startRunWithSeed(Difficulty::easy, 5);
    app().startStation(regular);
    EXPECT_NEAR(app().timeLeft, 20 * 1.6 * 0.45, 1e-9);
    app().startRunWithSeed(Difficulty::vorn, 5);
    app().startStation(regular);
    EXPECT_NEAR(app().timeLeft, 20 * 0.7 * 0.45, 1e-9);
}

TEST_F(Run, TicksOncePerWholeSecondCrossedCountedFromTheTruncatedStart) {
    start("run_ticks", {{1, "a", 20}});
    app().startRunWithSeed(Difficulty::medium, 5);
    app().startStation(0);
    probe();
    // 10.8 s: passing 10.0 is silent, the first tick is at 9.0.
    int ticks = 0;
    double firstTickAt = -1;
    for (int i = 0; i < 40; ++i) {
        app().update(0.05);
        if (app().secondTicked) {
            ++ticks;
            if (firstTickAt < 0) firstTickAt = app().timeLeft;
        }
    }
    // 40 frames of 0.05 s: 10.8 -> 8.8, crossing 9.0 only.
    EXPECT_EQ(ticks, 1);
    EXPECT_NEAR(firstTickAt, 9.0, 1e-9);
    EXPECT_EQ(app().shownSeconds, 9);
}

TEST_F(Run, EveryTickFlipsTheTickTockToggle) {
    start("run_ticktock", {{1, "a", 20}});
    app().startRunWithSeed(Difficulty::hard, 5);
    app().startStation(0);
    probe();
    const bool before = app().audio.tickToggle;
    frames(20, 0.05);   // 9.0 -> 8.0: one tick at 8.0
    ASSERT_TRUE(app().audio.initialised);   // the dummy audio driver opens
    EXPECT_NE(app().audio.tickToggle, before);
    EXPECT_EQ(app().shownSeconds, 8);
}

TEST_F(Run, WarningIsSetWithThreeSecondsLeftAndClearsAtZero) {
    start("run_warning", {{1, "a", 20}});
    app().startRunWithSeed(Difficulty::medium, 5);
    app().startStation(0);
    probe();
    app().timeLeft = 3.05;
    app().update(0.04);   // 3.01 left: ceil 4
    EXPECT_FALSE(app().timeWarning);
    app().update(0.01);   // 3.00 left
    EXPECT_TRUE(app().timeWarning);
    app().update(2.95);
    EXPECT_TRUE(app().timeWarning);
    app().update(0.05);
    EXPECT_FALSE(app().timeWarning);
    EXPECT_EQ(app().screen, GameScreen::fired);
}

TEST_F(Run, AnEmptyClockFiresWithoutAskingTheStation) {
    start("run_time_up", {{1, "a", 20}});
    app().startRunWithSeed(Difficulty::medium, 5);
    app().startStation(0);
    ProbeStation& station = probe();
    app().timeLeft = 0.03;
    app().update(0.05);
    EXPECT_EQ(station.updates, 0);
    EXPECT_EQ(app().screen, GameScreen::fired);
    EXPECT_DOUBLE_EQ(app().timeLeft, 0.0);
    EXPECT_FALSE(app().timerRunning);
    EXPECT_EQ(app().save.timesFired, 1);
    EXPECT_NE(log().find("FIRED: at station 01 'STATION 1' (1/1) timeLeft=0.0s timesFired=1"),
              std::string::npos)
        << log();
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

TEST_F(Run, AnyOtherVerdictKeepsPlaying) {
    start("run_other_verdict", {{1, "a", 20}});
    app().startRunWithSeed(Difficulty::medium, 5);
    app().startStation(0);
    ProbeStation& station = probe();
    station.verdict = static_cast<LevelResult>(3);
    app().update(0.05);
    app().update(0.05);
    EXPECT_EQ(app().screen, GameScreen::station);
    EXPECT_EQ(station.updates, 2);
}

TEST_F(Run, SolvedMovesToTheNextStation) {
    start("run_next", {{1, "a", 20}, {2, "a", 20}});
    app().startRunWithSeed(Difficulty::medium, 5);
    app().startStation(0);
    probe().verdict = LevelResult::Solved;
    app().update(0.05);
    EXPECT_EQ(app().screen, GameScreen::station);
    EXPECT_EQ(app().stationIndex, 1);
    EXPECT_NEAR(app().timeLeft, 10.8, 1e-9);
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

TEST_F(Run, VictoryOnVornNeverAwardsACard) {
    start("run_victory_vorn", {{1, "a", 20}});
    for (std::uint32_t seed = 1; seed <= 20; ++seed) {
        app().startRunWithSeed(Difficulty::vorn, seed);
        app().startStation(0);
        probe().verdict = LevelResult::Solved;
        app().update(0.05);
        ASSERT_EQ(app().screen, GameScreen::victory);
        EXPECT_FALSE(app().cardAwarded);
    }
    EXPECT_EQ(app().save.clockInCards, 0);
    EXPECT_NE(log().find("VICTORY: difficulty=VORN clockInChance=0.00 awarded=no totalCards=0"),
              std::string::npos);
}

TEST_F(Run, VictoryCardFollowsTheRollAgainstTheChance) {
    start("run_victory_roll", {{1, "a", 20}});
    app().startRunWithSeed(Difficulty::medium, 5);
    app().startStation(0);
    Rng copy = app().rng;
    const double roll = uniformReal(copy);
    probe().verdict = LevelResult::Solved;
    app().update(0.05);
    EXPECT_EQ(app().cardAwarded, roll < 0.3);
}

}  // namespace
}  // namespace vorn::test
