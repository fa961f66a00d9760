// The pest-control station ("whack"): green pop-ups to swat before they duck
// away, red ones never to touch. Pop-ups are drawn from the run's own engine
// while the station is played, so these tests also pin how many draws a
// stretch of play costs. Seed 5489's first raw outputs are 3499211612,
// 581869302, 3890346734, 3586334585, 545404204, 4161255391.
//
// Most tests put pop-ups on the board by hand, with the next spawn pushed a
// minute off so the engine adds none of its own.

#include "stations/aim_stations.h"
#include "support/draws_by_hand.h"
#include "aim_fixtures.h"

#include <gtest/gtest.h>

namespace vorn::test {
namespace {

using Whack = Driver<WhackLevel>;

WhackLevel::Slot green(int x, int y, double life = 1.0) { return WhackLevel::Slot{true, false, x, y, 30, life}; }
WhackLevel::Slot red(int x, int y, double life = 1.0) { return WhackLevel::Slot{true, true, x, y, 30, life}; }

// No pop-up of the engine's own for a minute.
void quiet(Whack& d) { d.level.spawnTimer = 60.0; }

// Where the hand-placed pop-ups stand: left of the middle and right of it.
constexpr int kLeftX = kPlayCentreX - 183;    // 500
constexpr int kRightX = kPlayCentreX + 117;   // 800
constexpr int kRowY = kPlayCentreY - 5;       // 400

TEST(WhackStation, SixGreensToSwatBeforeStationFortyAndEightFromThereOn) {
    EXPECT_EQ(Whack(5489, 39).level.goal, 6);
    EXPECT_EQ(Whack(5489, 40).level.goal, 8);
    EXPECT_EQ(Whack(5489, 41).level.goal, 8);
}

TEST(WhackStation, SetUpAgainAfterPlayTheBoardIsClearAndNothingIsDrawn) {
    // A retry builds on a fresh board whatever the last attempt left behind.
    Whack d;
    d.level.slots[2] = green(kLeftX, kRowY, 0.01);   // gets away on the first frame
    d.level.hits = 5;
    d.idle(3);
    ASSERT_EQ(d.level.strikes, 1);
    ASSERT_TRUE(d.level.slots[0].active);
    const Rng before = d.rng;
    d.level.setup(d.def, d.rng, kPlayArea);
    EXPECT_EQ(d.rng, before);
    EXPECT_EQ(d.level.rng, &d.rng);
    EXPECT_EQ(d.level.hits, 0);
    EXPECT_EQ(d.level.strikes, 0);
    EXPECT_EQ(d.level.spawnTimer, 0.0);
    for (const WhackLevel::Slot& s : d.level.slots) {
        EXPECT_FALSE(s.active);
        EXPECT_EQ(s.life, 0.0);
    }
}

TEST(WhackStation, FirstFrameSpawnsFromTheRunsEngineColourThenXThenY) {
    Whack d;
    EXPECT_EQ(d.idle(), LevelResult::Running);
    // 3499211612 mod 100 = 12 (red); x in [313, 1053] from 581869302 is 413;
    // y in [250, 570] from 3890346734 is 540.
    const WhackLevel::Slot& s = d.level.slots[0];
    EXPECT_TRUE(s.active);
    EXPECT_TRUE(s.red);
    EXPECT_EQ(s.x, 413);
    EXPECT_EQ(s.y, 540);
    EXPECT_EQ(s.radius, 30);
    EXPECT_DOUBLE_EQ(s.life, 1.1 - StationDriver::kFrame);
    EXPECT_DOUBLE_EQ(d.level.spawnTimer, 0.55);
    EXPECT_FALSE(d.level.slots[1].active);
    EXPECT_EQ(d.rng, engineAfter(5489, 3));
    EXPECT_EQ(d.sounds, Sounds{});
}

// Seed 242 opens with 2940705934 (mod 100 = 34), seed 14 with 2207369835
// (mod 100 = 35): the last red and the first green of the odds.
TEST(WhackStation, APopUpIsRedWhenTheDrawModHundredIsBelowThirtyFive) {
    for (const std::uint32_t seed : {242u, 14u}) {
        Whack d(seed);
        d.idle();
        // Colour, then x 50 px in from the sides, then y 60 px under the top
        // and 50 above the foot.
        Rng byHand(seed);
        const bool isRed = byHand() % 100 < 35;
        const int x = kPlayLeft + 50 + uniformBelowByHand(byHand, (kPlayRight - 50) - (kPlayLeft + 50) + 1);
        const int y = kPlayTop + 60 + uniformBelowByHand(byHand, (kPlayBottom - 50) - (kPlayTop + 60) + 1);
        const WhackLevel::Slot& s = d.level.slots[0];
        EXPECT_EQ(s.red, seed == 242u) << seed;
        EXPECT_EQ(s.red, isRed) << seed;
        EXPECT_EQ(s.x, x) << seed;
        EXPECT_EQ(s.y, y) << seed;
        EXPECT_EQ(d.rng, byHand) << seed;
    }
}

TEST(WhackStation, SpawnsTakeTheFirstFreeSlotWithTheSameThreeDraws) {
    Whack d;
    d.idle();
    d.level.spawnTimer = 0.0;
    d.idle();
    // 3586334585 mod 100 = 85 (green) at (407, 561).
    const WhackLevel::Slot& s = d.level.slots[1];
    EXPECT_TRUE(s.active);
    EXPECT_FALSE(s.red);
    EXPECT_EQ(s.x, 407);
    EXPECT_EQ(s.y, 561);
    EXPECT_EQ(d.rng, engineAfter(5489, 6));
}

TEST(WhackStation, ASpawnComesWhenTheTimerReachesZeroExactly) {
    Whack d;
    d.level.spawnTimer = 2 * StationDriver::kFrame;
    d.idle();   // a frame left: nothing yet
    EXPECT_FALSE(d.level.slots[0].active);
    EXPECT_EQ(d.rng, Rng(5489));
    EXPECT_EQ(d.level.spawnTimer, StationDriver::kFrame);
    d.idle();   // exactly zero
    EXPECT_TRUE(d.level.slots[0].active);
    EXPECT_EQ(d.level.spawnTimer, 0.55);
    EXPECT_EQ(d.rng, engineAfter(5489, 3));
}

TEST(WhackStation, DrawsDuringPlayFollowTheSpawnBeat) {
    // Eighth-second frames land on the beat exactly: a pop-up every fifth
    // frame (0.625 s), each one gone after nine; three draws each, so the
    // count follows play time.
    Whack d;
    d.frame(0.125);
    EXPECT_EQ(d.rng, engineAfter(5489, 3));
    for (int i = 0; i < 4; ++i) d.frame(0.125);
    EXPECT_EQ(d.rng, engineAfter(5489, 3));
    d.frame(0.125);
    EXPECT_EQ(d.rng, engineAfter(5489, 6));
    for (int i = 0; i < 5; ++i) d.frame(0.125);
    EXPECT_EQ(d.rng, engineAfter(5489, 9));
    EXPECT_EQ(d.frame(0.125), LevelResult::Running);
    EXPECT_EQ(d.rng, engineAfter(5489, 9));
}

TEST(WhackStation, AFullBoardSpawnsNothingAndDrawsNothing) {
    Whack d;
    for (int i = 0; i < 6; ++i) {
        d.level.slots[i] = red(kPlayLeft + 87 + 100 * i, kPlayTop + 110);
    }
    d.idle();
    EXPECT_EQ(d.rng, Rng(5489));
    EXPECT_DOUBLE_EQ(d.level.spawnTimer, 0.55);
    EXPECT_EQ(d.level.slots[0].x, kPlayLeft + 87);
}

TEST(WhackStation, APopUpDucksAwayTheFrameItsLifeRunsOut) {
    Whack d;
    quiet(d);
    d.level.slots[0] = red(kLeftX, kRowY, 2 * StationDriver::kFrame);
    d.idle();
    EXPECT_TRUE(d.level.slots[0].active);
    d.idle();   // exactly zero: gone
    EXPECT_FALSE(d.level.slots[0].active);
}

TEST(WhackStation, TheThirdGreenThatGetsAwayFiresEvenOneSwatShort) {
    Whack d;
    quiet(d);
    d.level.hits = d.level.goal - 1;
    d.level.strikes = 2;
    d.level.slots[2] = green(kLeftX, kRowY, 0.01);
    // The swat on the escaping green comes too late: expiry is checked first.
    EXPECT_EQ(d.press(kLeftX, kRowY), LevelResult::Failed);
    EXPECT_EQ(d.level.strikes, 3);
    EXPECT_EQ(d.level.hits, d.level.goal - 1);
    EXPECT_EQ(d.sounds, Sounds{"fail"});
}

TEST(WhackStation, AGreenThatGetsAwayIsASilentStrike) {
    Whack d;
    quiet(d);
    d.level.slots[0] = green(kLeftX, kRowY, 0.01);
    EXPECT_EQ(d.idle(), LevelResult::Running);
    EXPECT_FALSE(d.level.slots[0].active);
    EXPECT_EQ(d.level.strikes, 1);
    EXPECT_EQ(d.sounds, Sounds{});
}

TEST(WhackStation, TwoGreensGettingAwayAreNotYetTheEnd) {
    Whack d;
    quiet(d);
    d.level.strikes = 1;
    d.level.slots[0] = green(kLeftX, kRowY, 0.01);
    EXPECT_EQ(d.idle(), LevelResult::Running);
    EXPECT_EQ(d.level.strikes, 2);
}

TEST(WhackStation, ARedThatTimesOutCostsNothing) {
    Whack d;
    quiet(d);
    d.level.strikes = 2;
    d.level.slots[0] = red(kLeftX, kRowY, 0.01);
    EXPECT_EQ(d.idle(), LevelResult::Running);
    EXPECT_FALSE(d.level.slots[0].active);
    EXPECT_EQ(d.level.strikes, 2);
    EXPECT_EQ(d.sounds, Sounds{});
}

TEST(WhackStation, ASwatOnAGreenClicksOnce) {
    Whack d;
    quiet(d);
    d.level.slots[2] = green(kLeftX, kRowY);
    EXPECT_EQ(d.press(kLeftX + 10, kRowY + 10), LevelResult::Running);
    EXPECT_EQ(d.level.hits, 1);
    EXPECT_FALSE(d.level.slots[2].active);
    EXPECT_EQ(d.sounds, Sounds{"click"});
}

TEST(WhackStation, OneSwatOnTwoOverlappingGreensCountsTwo) {
    Whack d;
    quiet(d);
    d.level.slots[0] = green(kLeftX, kRowY);
    d.level.slots[3] = green(kLeftX + 20, kRowY);
    EXPECT_EQ(d.press(kLeftX + 10, kRowY), LevelResult::Running);
    EXPECT_EQ(d.level.hits, 2);
    EXPECT_FALSE(d.level.slots[0].active);
    EXPECT_FALSE(d.level.slots[3].active);
    EXPECT_EQ(d.sounds, (Sounds{"click", "click"}));
}

TEST(WhackStation, TheSwatThatReachesTheGoalSolves) {
    Whack d;
    quiet(d);
    d.level.hits = 4;
    d.level.slots[0] = green(kLeftX, kRowY);
    d.level.slots[1] = green(kLeftX + 15, kRowY + 10);
    EXPECT_EQ(d.press(kLeftX + 8, kRowY + 5), LevelResult::Solved);
    EXPECT_EQ(d.level.hits, 6);
    EXPECT_EQ(d.sounds, (Sounds{"click", "click", "pass"}));
}

TEST(WhackStation, OneSwatShortOfTheGoalKeepsRunning) {
    Whack d(5489, 40);   // eight to swat
    quiet(d);
    d.level.hits = 6;
    d.level.slots[0] = green(kLeftX, kRowY);
    EXPECT_EQ(d.press(kLeftX, kRowY), LevelResult::Running);
    EXPECT_EQ(d.level.hits, 7);
    EXPECT_EQ(d.sounds, Sounds{"click"});
}

TEST(WhackStation, TouchingARedFiresAtOnce) {
    Whack d;
    quiet(d);
    d.level.slots[1] = red(kRightX, kRowY);
    EXPECT_EQ(d.press(kRightX + 29, kRowY), LevelResult::Failed);
    EXPECT_EQ(d.sounds, Sounds{"fail"});
}

TEST(WhackStation, ASwatWalksTheSlotsInOrderUntilARed) {
    // A green in an earlier slot is counted (and clicks) before the red
    // under the same swat fires; a red first ends it before the green.
    Whack greenFirst;
    quiet(greenFirst);
    greenFirst.level.slots[0] = green(kLeftX, kRowY);
    greenFirst.level.slots[1] = red(kLeftX + 10, kRowY);
    EXPECT_EQ(greenFirst.press(kLeftX + 5, kRowY), LevelResult::Failed);
    EXPECT_EQ(greenFirst.level.hits, 1);
    EXPECT_EQ(greenFirst.sounds, (Sounds{"click", "fail"}));

    Whack redFirst;
    quiet(redFirst);
    redFirst.level.slots[0] = red(kLeftX, kRowY);
    redFirst.level.slots[1] = green(kLeftX + 10, kRowY);
    EXPECT_EQ(redFirst.press(kLeftX + 5, kRowY), LevelResult::Failed);
    EXPECT_EQ(redFirst.level.hits, 0);
    EXPECT_EQ(redFirst.sounds, Sounds{"fail"});
}

TEST(WhackStation, AButtonHeldDownOverAGreenIsNoSwat) {
    Whack d;
    quiet(d);
    d.level.slots[0] = green(kLeftX, kRowY);
    d.press(kRightX, kRowY);   // pressed on an empty patch, and held
    EXPECT_EQ(d.moveTo(kLeftX, kRowY), LevelResult::Running);
    EXPECT_EQ(d.level.hits, 0);
    EXPECT_TRUE(d.level.slots[0].active);
    EXPECT_EQ(d.sounds, Sounds{});
}

TEST(WhackStation, ASwatExactlyOneRadiusAwayMissesSilently) {
    Whack d;
    quiet(d);
    d.level.slots[1] = red(kRightX, kRowY);
    d.level.slots[2] = green(kLeftX, kRowY);
    EXPECT_EQ(d.click(kRightX, kRowY + 30), LevelResult::Running);        // 30 px under the red
    EXPECT_EQ(d.click(kLeftX - 18, kRowY - 24), LevelResult::Running);    // 18, 24: 30 px off the green
    EXPECT_EQ(d.level.hits, 0);
    EXPECT_EQ(d.sounds, Sounds{});
    EXPECT_EQ(d.click(kLeftX - 18, kRowY - 23), LevelResult::Running);    // a hair inside
    EXPECT_EQ(d.level.hits, 1);
    EXPECT_EQ(d.sounds, Sounds{"click"});
}

TEST(WhackStation, PopUpsComingAndGoingMakeNoSound) {
    // Two and a half seconds of seed 5489 left alone: a red comes and goes
    // (12), a green gets away (85), another red comes and goes (29).
    Whack d;
    EXPECT_EQ(d.holdFor(2.5), LevelResult::Running);
    EXPECT_EQ(d.level.strikes, 1);
    EXPECT_EQ(d.sounds, Sounds{});
}

// ---------------------------------------------------------------------------
// What the player sees: two-tone discs under a gold tally

// The tally: normal size, gold, centred 30 px under the top of the play
// area; the band above the pop-ups holds nothing else.
constexpr Rect kTallyBand{kPlayLeft, kPlayTop + 6, kPlayArea.w, 48};

int tallyUnlike(const SoftwareCanvas& canvas, const char* text) {
    return pixelsUnlikeText(canvas, kTallyBand, station_ink::black, text, kPlayCentreX, kPlayTop + 30,
                            TextSize::Normal, station_ink::gold, true, true);
}

TEST(WhackLook, PopUpsAreTwoToneDiscsUnderTheTally) {
    Whack d;
    d.level.hits = 2;
    d.level.strikes = 1;
    d.level.slots[0] = green(kLeftX, kRowY);
    d.level.slots[4] = red(kRightX, kRowY + 50);
    Canvas canvas;
    d.level.render(canvas.graphics);

    // A face of radius 24 on a rim 6 px wide, radius 30.
    EXPECT_EQ(canvas.pixel(kLeftX, kRowY), station_ink::terminalGreen);
    EXPECT_EQ(canvas.pixel(kLeftX + 23, kRowY), station_ink::terminalGreen);
    EXPECT_EQ(canvas.pixel(kLeftX + 25, kRowY), aim_ink::greenRim);
    EXPECT_EQ(canvas.pixel(kLeftX + 29, kRowY), aim_ink::greenRim);
    EXPECT_EQ(canvas.pixel(kLeftX, kRowY - 27), aim_ink::greenRim);
    EXPECT_EQ(canvas.pixel(kLeftX + 32, kRowY), station_ink::black);
    EXPECT_EQ(canvas.pixel(kRightX, kRowY + 50), station_ink::alarmRed);
    EXPECT_EQ(canvas.pixel(kRightX - 27, kRowY + 50), aim_ink::redRim);
    EXPECT_EQ(canvas.pixel(kRightX, kRowY + 50 + 32), station_ink::black);
    EXPECT_EQ(tallyUnlike(canvas, "GREEN 2/6   strikes 1/3"), 0);
    EXPECT_EQ(playAreaNoteUnlike(canvas, kPlayAreaNoteBand, "HIT GREEN, NEVER RED"), 0);
    EXPECT_EQ(strayPixels(canvas, station_ink::black,
                          {discBox(kLeftX, kRowY, 30), discBox(kRightX, kRowY + 50, 30), kTallyBand,
                           kPlayAreaNoteBand}),
              0);
}

TEST(WhackLook, AnEmptyBoardShowsOnlyTheTallyAndTheOrders) {
    Whack d(5489, 40);
    Canvas canvas;
    d.level.render(canvas.graphics);
    EXPECT_EQ(tallyUnlike(canvas, "GREEN 0/8   strikes 0/3"), 0);
    EXPECT_EQ(playAreaNoteUnlike(canvas, kPlayAreaNoteBand, "HIT GREEN, NEVER RED"), 0);
    EXPECT_EQ(strayPixels(canvas, station_ink::black, {kTallyBand, kPlayAreaNoteBand}), 0);
}

TEST(WhackLook, TheTallyCountsSwatsAgainstTheGoalAndStrikesAgainstThree) {
    Whack d;
    quiet(d);
    d.level.slots[0] = green(kLeftX, kRowY);
    d.level.slots[1] = green(kRightX, kRowY, 0.01);
    d.press(kLeftX, kRowY);   // one swatted, one got away
    Canvas canvas;
    d.level.render(canvas.graphics);
    EXPECT_EQ(tallyUnlike(canvas, "GREEN 1/6   strikes 1/3"), 0);

    Whack late(5489, 40);
    late.level.hits = 7;
    late.level.strikes = 2;
    Canvas nearly;
    late.level.render(nearly.graphics);
    EXPECT_EQ(tallyUnlike(nearly, "GREEN 7/8   strikes 2/3"), 0);
}

// ---------------------------------------------------------------------------
// The automatic player, and the obvious wrong moves

TEST(WhackSolver, ClearsTheShippedStationOnEveryDifficulty) {
    EXPECT_EQ(unsolvedRuns("whack"), "");
}

TEST(WhackSolver, ASolvedRunClicksOncePerGreenThenPasses) {
    // The shipped pest control is station 40: eight greens.
    EXPECT_EQ(soundsOfASolvedRun("whack", 5489), clicksThenPass(8));
    EXPECT_EQ(soundsOfASolvedRun("whack", 7), clicksThenPass(8));
}

TEST(WhackStation, SwattingARedFiresWithTheFailSound) {
    StationDriver d(shippedRecord("whack"), 5489);   // the first pop-up is red
    auto wrong = careless<WhackLevel>([](const WhackLevel& level, int& x, int& y) {
        for (const WhackLevel::Slot& s : level.slots) {
            if (s.active && s.red) {
                x = s.x;
                y = s.y;
                return true;
            }
        }
        return false;
    });
    EXPECT_EQ(d.play(wrong, 10.0).result, LevelResult::Failed);
    EXPECT_EQ(d.sounds, Sounds{"fail"});
    EXPECT_LT(dynamic_cast<const WhackLevel&>(*d.station).strikes, 3);
}

TEST(WhackStation, LettingGreensGoFiresWithTheFailSound) {
    StationDriver d(shippedRecord("whack"), 5489);
    auto idle = careless<WhackLevel>([](const WhackLevel&, int&, int&) { return false; });
    EXPECT_EQ(d.play(idle, 20.0).result, LevelResult::Failed);
    EXPECT_EQ(d.sounds, Sounds{"fail"});
    EXPECT_EQ(dynamic_cast<const WhackLevel&>(*d.station).strikes, 3);
}

}  // namespace
}  // namespace vorn::test
