// The patience station: a bar fills over a wait of 2.6 to 4.085 seconds,
// and any click before it is full, anywhere at all, fires the player. Once
// it is full only GO passes, and clicks beside it cost nothing. Covers the
// wait drawn from the engine, the frame the bar fills on, the sounds, what
// the player sees while waiting and once ready, and the automatic player.

#include "stations/timing/timing_fixtures.h"
#include "stations/timing_stations.h"
#include "support/draws_by_hand.h"
#include "support/play_area.h"
#include "support/solvers/family_solvers.h"
#include "support/station_driver.h"
#include "support/station_ink.h"
#include "support/text_probe.h"

#include <gtest/gtest.h>

#include <cmath>
#include <string>
#include <utility>
#include <vector>

namespace vorn::test {
namespace {

using Sounds = std::vector<std::string>;

// Seed 5489, station 3: a wait of 2.78 s.
struct PatienceDesk : Driver<PatienceLevel> {
    explicit PatienceDesk(std::uint32_t seed = 5489) : Driver<PatienceLevel>(seed, 3) {}
    int goX() const { return level.button.x + level.button.w / 2; }
    int goY() const { return level.button.y + level.button.h / 2; }
};

// The track the bar fills: 80 px in from each side of the play area, 120 px
// below its top, 22 px high.
constexpr Rect kTrack{kPlayLeft + 80, kPlayTop + 120, kPlayArea.w - 160, 22};

// ------------------------------------------------------------------ layout

TEST(PatienceStation, TheWaitIsOneRawDrawModuloAHundred) {
    PatienceDesk d;
    // 3499211612 mod 100 = 12: 0.12 x 1.5 + 2.6.
    EXPECT_DOUBLE_EQ(d.level.wait, 2.78);
    EXPECT_EQ(d.rng, engineAfter(5489, 1));
    // GO: 180 x 60, centred, its top 40 px below the area's middle.
    EXPECT_EQ(d.level.button.x, kPlayCentreX - 90);
    EXPECT_EQ(d.level.button.y, kPlayCentreY + 40);
    EXPECT_EQ(d.level.button.w, 180);
    EXPECT_EQ(d.level.button.h, 60);
    EXPECT_FALSE(d.level.ready);
    EXPECT_EQ(d.level.elapsed, 0.0);

    // 2365658986 mod 100 = 86: 0.86 x 1.5 + 2.6.
    EXPECT_DOUBLE_EQ(PatienceDesk(3).level.wait, 3.89);
}

TEST(PatienceStation, TheWaitFollowsTheFirstRawDrawForAnySeed) {
    for (std::uint32_t seed = 1; seed <= 60; ++seed) {
        PatienceDesk d(seed);
        Rng byHand(seed);
        const double wait = static_cast<double>(byHand() % 100) / 100.0 * 1.5 + 2.6;
        EXPECT_DOUBLE_EQ(d.level.wait, wait) << "seed " << seed;
        EXPECT_EQ(d.rng, byHand) << "seed " << seed;
    }
}

// ------------------------------------------------------------------- rules

TEST(PatienceStation, AClickOnGoAtTwoPointFiveEightSecondsFiresWhateverTheWait) {
    for (std::uint32_t seed = 1; seed <= 40; ++seed) {
        PatienceDesk d(seed);
        ASSERT_GE(d.level.wait, 2.6);
        ASSERT_LE(d.level.wait, 4.085 + 1e-9);
        // 154 quiet frames, then a press on the 155th: 155/60 = 2.583 s.
        ASSERT_EQ(d.idle(154), LevelResult::Running);
        EXPECT_EQ(d.press(d.goX(), d.goY()), LevelResult::Failed) << "seed " << seed;
        EXPECT_EQ(d.sounds, Sounds{"fail"});
    }
}

TEST(PatienceStation, AnEarlyClickFarFromTheButtonFiresWithTheFailSoundAlone) {
    PatienceDesk d;
    d.holdFor(1.0);
    EXPECT_EQ(d.press(5, 5), LevelResult::Failed);
    EXPECT_EQ(d.sounds, Sounds{"fail"});
}

TEST(PatienceStation, OnceTheBarIsFullGoPassesAndClicksBesideItAreSilent) {
    PatienceDesk d;
    // 2.78 s x 60 = 166.8: full on frame 167.
    d.idle(166);
    EXPECT_FALSE(d.level.ready);
    d.idle();
    ASSERT_TRUE(d.level.ready);
    const Rect& go = d.level.button;
    const std::vector<std::pair<int, int>> beside{{go.x - 1, d.goY()},    {go.x + go.w, d.goY()},
                                                  {d.goX(), go.y - 1},    {d.goX(), go.y + go.h},
                                                  {kPlayLeft, kPlayTop}};
    for (const auto& [x, y] : beside) {
        EXPECT_EQ(d.click(x, y), LevelResult::Running) << x << "," << y;
    }
    EXPECT_TRUE(d.level.ready);
    EXPECT_EQ(d.sounds, Sounds{});
    EXPECT_EQ(d.press(go.x + go.w - 1, go.y + go.h - 1), LevelResult::Solved);
    EXPECT_EQ(d.sounds, Sounds{"pass"});
}

TEST(PatienceStation, TheBarIsFullOnTheFrameTheWaitIsReached) {
    // One long frame of exactly the wait, the click landing on it.
    {
        PatienceDesk d;
        EXPECT_EQ(pressOnFrame(d, d.goX(), d.goY(), d.level.wait), LevelResult::Solved);
    }
    {
        PatienceDesk d;
        EXPECT_EQ(pressOnFrame(d, d.goX(), d.goY(), std::nextafter(d.level.wait, 0.0)),
                  LevelResult::Failed);
        EXPECT_FALSE(d.level.ready);
    }
}

// ---------------------------------------------------------------- pictures

// The status line stands alone in the top 120 px of the play area, its
// middle 60 px below the top.
int pixelsUnlikeStatus(const Picture& picture, const char* text, Color colour) {
    return pixelsUnlikeText(picture.canvas, Rect{kPlayLeft, kPlayTop, kPlayArea.w, 120},
                            station_ink::black, text, kPlayCentreX, kPlayTop + 60, TextSize::Large,
                            colour, true, true);
}

// GO in ink on its plate: the plate is flat from 10 px in on each side.
int pixelsUnlikeGo(const PatienceDesk& d, const Picture& picture, Color plate) {
    const Rect& go = d.level.button;
    return pixelsUnlikeText(picture.canvas, Rect{go.x + 20, go.y + 2, go.w - 40, go.h - 4}, plate,
                            "GO", d.goX(), d.goY(), TextSize::Large, station_ink::ink, true, true);
}

TEST(PatienceStation, WhileWaitingTheBarFillsOrangeUnderARedWait) {
    PatienceDesk d;
    d.holdFor(1.0);
    // 680 px x 1 s / 2.78 s = 244.6: 244 px lit.
    const Picture picture(d.level);
    EXPECT_EQ(pixelsUnlikeStatus(picture, "WAIT...", station_ink::alarmRed), 0);
    EXPECT_EQ(picture.at(kTrack.x, kTrack.y), timing_ink::orange);
    EXPECT_EQ(picture.at(kTrack.x + 243, kTrack.y + kTrack.h - 1), timing_ink::orange);
    EXPECT_EQ(picture.at(kTrack.x + 244, kTrack.y), station_ink::charcoal);
    EXPECT_EQ(picture.at(kTrack.x + kTrack.w - 1, kTrack.y + kTrack.h - 1), station_ink::charcoal);
    EXPECT_EQ(picture.at(kTrack.x - 1, kTrack.y), station_ink::black);
    EXPECT_EQ(picture.at(kTrack.x + 100, kTrack.y + kTrack.h), station_ink::black);
    EXPECT_EQ(picture.at(d.level.button.x + 5, d.goY()), timing_ink::waitingPlate);
    EXPECT_EQ(pixelsUnlikeGo(d, picture, timing_ink::waitingPlate), 0);
}

TEST(PatienceStation, OnceReadyTheBarStaysFullAndEverythingTurnsGreen) {
    PatienceDesk d;
    d.holdFor(3.5);   // past the wait: the bar never runs past the track
    const Picture picture(d.level);
    EXPECT_EQ(pixelsUnlikeStatus(picture, "GO \xE2\x80\x94 NOW CLICK", station_ink::terminalGreen), 0);
    EXPECT_EQ(picture.at(kTrack.x, kTrack.y), station_ink::terminalGreen);
    EXPECT_EQ(picture.at(kTrack.x + kTrack.w - 1, kTrack.y + kTrack.h - 1), station_ink::terminalGreen);
    EXPECT_EQ(picture.at(kTrack.x + kTrack.w, kTrack.y), station_ink::black);
    EXPECT_EQ(picture.at(d.level.button.x + 5, d.goY()), station_ink::darkGreen);
    EXPECT_EQ(pixelsUnlikeGo(d, picture, station_ink::darkGreen), 0);
}

TEST(PatienceStation, NothingIsDrawnButTheStatusTheTrackGoAndTheInstruction) {
    PatienceDesk d;
    const Picture picture(d.level);
    EXPECT_EQ(paintedOutside(picture, {Rect{kPlayLeft, kPlayTop, kPlayArea.w, 120}, kTrack,
                                       plateReach(d.level.button), Rect{0, kPlayBottom - 16, kCanvasWidth, 30}}),
              0);
}

TEST(PatienceStation, ItsInstructionSitsSixteenPixelsAboveTheFoot) {
    PatienceDesk d;
    const Picture picture(d.level);
    // GO ends at y 505; below it there is only the instruction.
    EXPECT_EQ(playAreaNoteUnlike(picture.canvas, Rect{0, 510, kCanvasWidth, kCanvasHeight - 510}, "DO NOT CLICK UNTIL THE BAR IS FULL"),
              0);
}

// ----------------------------------------------------------------- solvers

TEST(PatienceSolver, ClearsTheWaitingPeriodOnEveryDifficulty) {
    EXPECT_EQ(unsolvedRuns("patience"), "");
}

TEST(PatienceSolver, ClickingGoStraightAwayFiresWithTheFailSound) {
    Driver<PatienceLevel> d(4, shippedRecord("patience"));
    auto eager = scripted([](const Level& station, const Hand& hand, double) {
        return clickCentre(hand, static_cast<const PatienceLevel&>(station).button);
    });
    const StationDriver::Outcome out = d.play(eager, 5.0);
    EXPECT_EQ(out.result, LevelResult::Failed);
    EXPECT_LT(out.time, 1.0);
    EXPECT_EQ(d.sounds, Sounds{"fail"});
}

}  // namespace
}  // namespace vorn::test
