// The station clock: its length by difficulty and phase, the tick of every
// whole second, the warning of the last three, the siren on the kinder
// difficulties, and the empty clock that fires the player.

#include "run_fixtures.h"

#include <gtest/gtest.h>

namespace vorn::test {
namespace {

TEST_F(BareRun, ClockIsBaseTimeTimesMultiplierTimesPointFourFive) {
    catalogue({{1, "a", 20}, {31, "a", 20}});
    app.startRunWithSeed(Difficulty::medium, 5);
    const int regular = numberAt(0) == 1 ? 0 : 1;
    app.startStation(regular);
    EXPECT_NEAR(app.timeLeft, 10.8, 1e-9);
    EXPECT_EQ(app.shownSeconds, 10);
    EXPECT_TRUE(app.timerRunning);
    EXPECT_NE(log().find("LEVEL: " + std::to_string(regular + 1) +
                         "/2 station 01 'STATION 1' type=a time=10.8s (base=20 x1.20 x0.9)"),
              std::string::npos)
        << log();
    for (Difficulty d : {Difficulty::easy, Difficulty::medium, Difficulty::hard, Difficulty::vorn}) {
        app.startRunWithSeed(d, 5);
        app.startStation(1 - regular);
        EXPECT_NEAR(app.timeLeft, 6.3, 1e-9);
    }
    app.startRunWithSeed(Difficulty::easy, 5);
    app.startStation(regular);
    EXPECT_NEAR(app.timeLeft, 20 * 1.6 * 0.45, 1e-9);
    app.startRunWithSeed(Difficulty::vorn, 5);
    app.startStation(regular);
    EXPECT_NEAR(app.timeLeft, 20 * 0.7 * 0.45, 1e-9);
}

TEST_F(BareRun, TicksOncePerWholeSecondCrossedCountedFromTheTruncatedStart) {
    catalogue({{1, "a", 20}});
    app.startRunWithSeed(Difficulty::medium, 5);
    app.startStation(0);
    probe();
    // 10.8 s: passing 10.0 is silent, the first tick is at 9.0.
    int ticks = 0;
    double firstTickAt = -1;
    for (int i = 0; i < 40; ++i) {
        app.update(0.05);
        if (app.secondTicked) {
            ++ticks;
            if (firstTickAt < 0) firstTickAt = app.timeLeft;
        }
    }
    // 40 frames of 0.05 s: 10.8 -> 8.8, crossing 9.0 only.
    EXPECT_EQ(ticks, 1);
    EXPECT_NEAR(firstTickAt, 9.0, 1e-9);
    EXPECT_EQ(app.shownSeconds, 9);
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

TEST_F(BareRun, WarningIsSetWithThreeSecondsLeftAndClearsAtZero) {
    catalogue({{1, "a", 20}});
    app.startRunWithSeed(Difficulty::medium, 5);
    app.startStation(0);
    probe();
    app.timeLeft = 3.05;
    app.update(0.04);   // 3.01 left: ceil 4
    EXPECT_FALSE(app.timeWarning);
    app.update(0.01);   // 3.00 left
    EXPECT_TRUE(app.timeWarning);
    app.update(2.95);
    EXPECT_TRUE(app.timeWarning);
    app.update(0.05);
    EXPECT_FALSE(app.timeWarning);
    EXPECT_EQ(app.screen, GameScreen::fired);
}

TEST_F(BareRun, AnEmptyClockFiresWithoutAskingTheStation) {
    catalogue({{1, "a", 20}});
    app.startRunWithSeed(Difficulty::medium, 5);
    app.startStation(0);
    ProbeStation& station = probe();
    app.timeLeft = 0.03;
    app.update(0.05);
    EXPECT_EQ(station.updates, 0);
    EXPECT_EQ(app.screen, GameScreen::fired);
    EXPECT_DOUBLE_EQ(app.timeLeft, 0.0);
    EXPECT_FALSE(app.timerRunning);
    EXPECT_EQ(app.save.timesFired, 1);
    EXPECT_NE(log().find("FIRED: at station 01 'STATION 1' (1/1) timeLeft=0.0s timesFired=1"),
              std::string::npos)
        << log();
}

// Every sound the clock makes from the start of a station to its empty end,
// in 50 ms frames with a station that never answers, and the time left after
// each frame that ticked.
struct ClockSounds {
    std::vector<std::string> sounds;
    std::vector<double> tickedAt;
};

class RunClock : public BareRun {
protected:
    ClockSounds wholeClock(Difficulty d, int number) {
        ClockSounds out;
        catalogue({{number, "a", 20}});
        app.startRunWithSeed(d, 5);
        app.startStation(0);
        probe();
        for (int frame = 0; frame < 1000 && app.screen == GameScreen::station; ++frame) {
            const std::size_t before = sounds.size();
            app.update(0.05);
            if (sounds.size() > before && sounds[before] == "tick") {
                out.tickedAt.push_back(app.timeLeft);
            }
        }
        out.sounds = sounds;
        return out;
    }
    // Ticks at `from` - 1 down to 0 seconds, the three before zero with the
    // siren when `siren`, then the fail of the empty clock.
    static std::vector<std::string> expectedSounds(int from, bool siren) {
        std::vector<std::string> out;
        for (int second = from - 1; second >= 0; --second) {
            out.push_back("tick");
            if (siren && second >= 1 && second <= 3) {
                out.push_back("siren");
            }
        }
        out.push_back("fail");
        return out;
    }
    // Each tick came in the very frame that reached its whole second.
    static void expectTicksAtEverySecondFrom(const std::vector<double>& tickedAt, int from) {
        ASSERT_EQ(tickedAt.size(), static_cast<std::size_t>(from));
        for (int k = 0; k < from; ++k) {
            const double second = from - 1 - k;
            EXPECT_LE(tickedAt[static_cast<std::size_t>(k)], second + 1e-9) << "tick " << k;
            EXPECT_GT(tickedAt[static_cast<std::size_t>(k)], second - 0.05 - 1e-9) << "tick " << k;
        }
    }
};

// MEDIUM: 20 x 1.2 x 0.45 = 10.8 s, shown as 10. Passing 10.0 is silent; the
// ticks come at 9, 8, ... 0, and the siren joins the ticks at 3, 2 and 1.
TEST_F(RunClock, MediumTicksEveryWholeSecondAndSoundsTheSirenInTheLastThree) {
    const ClockSounds heard = wholeClock(Difficulty::medium, 1);
    EXPECT_EQ(heard.sounds, expectedSounds(10, true));
    expectTicksAtEverySecondFrom(heard.tickedAt, 10);
}

// EASY: 20 x 1.6 x 0.45 = 14.4 s, shown as 14.
TEST_F(RunClock, EasyTicksEveryWholeSecondAndSoundsTheSirenInTheLastThree) {
    const ClockSounds heard = wholeClock(Difficulty::easy, 1);
    EXPECT_EQ(heard.sounds, expectedSounds(14, true));
    expectTicksAtEverySecondFrom(heard.tickedAt, 14);
}

// HARD: 20 x 1.0 x 0.45 = 9.0 s. Ticks, but no siren.
TEST_F(RunClock, HardTicksEveryWholeSecondWithoutASiren) {
    const ClockSounds heard = wholeClock(Difficulty::hard, 1);
    EXPECT_EQ(heard.sounds, expectedSounds(9, false));
    expectTicksAtEverySecondFrom(heard.tickedAt, 9);
}

// VORN: 20 x 0.7 x 0.45 = 6.3 s, shown as 6. Ticks, but no siren.
TEST_F(RunClock, VornTicksEveryWholeSecondWithoutASiren) {
    const ClockSounds heard = wholeClock(Difficulty::vorn, 1);
    EXPECT_EQ(heard.sounds, expectedSounds(6, false));
    expectTicksAtEverySecondFrom(heard.tickedAt, 6);
}

// Overtime runs 6.3 s on every difficulty, but whether the siren sounds
// goes by the difficulty chosen, not by the phase.
TEST_F(RunClock, AnOvertimeStationOnMediumStillSoundsTheSiren) {
    const ClockSounds heard = wholeClock(Difficulty::medium, 31);
    EXPECT_EQ(heard.sounds, expectedSounds(6, true));
}

TEST_F(RunClock, AnOvertimeStationOnHardStaysWithoutASiren) {
    const ClockSounds heard = wholeClock(Difficulty::hard, 32);
    EXPECT_EQ(heard.sounds, expectedSounds(6, false));
}

}  // namespace
}  // namespace vorn::test
