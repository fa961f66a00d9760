// Simon: four pads light up in a sequence that grows by one pad a round, and
// the player plays each round back. Covers where the pads lie, the timing of
// the show (frame by frame at sixty frames a second), the rounds and their
// sounds, presses that change nothing, the pads' colours and the status line.

#include "stations/memory_stations.h"
#include "support/draws_by_hand.h"
#include "memory_fixtures.h"

#include <gtest/gtest.h>

#include <cstdint>
#include <string>
#include <vector>

namespace vorn {
namespace {

using test::Driver;
using test::kPlayCentreX;
using test::kPlayLeft;
using test::kPlayTop;
namespace ink = test::station_ink;
namespace memory = test::memory;
using Sounds = std::vector<std::string>;

// Seed 2024 at an early station: four rounds.
constexpr std::uint32_t kSeed = 2024;

LevelResult pressPad(Driver<SimonLevel>& d, int p) { return d.clickCentre(d.level.pads[p]); }

// Plays the round on show back without a mistake.
LevelResult repeatRound(Driver<SimonLevel>& d) {
    LevelResult r = LevelResult::Running;
    const std::vector<int> round = d.level.sequence;
    for (std::size_t i = 0; i < round.size() && r == LevelResult::Running; ++i) {
        r = pressPad(d, round[i]);
    }
    return r;
}

// The status line sits alone above the pads, gold, centred 34 px below the
// top of the play area.
::testing::AssertionResult showsStatus(const test::SoftwareCanvas& canvas, const char* text) {
    const Rect strip{kPlayLeft, kPlayTop + 5, kPlayArea.w, 60};
    return memory::showsText(canvas, strip, ink::black, text, kPlayCentreX, kPlayTop + 34,
                             TextSize::Normal, ink::gold, true, true);
}

TEST(SimonStation, FourPadsInASquareAroundTheCentre) {
    Driver<SimonLevel> d(kSeed, 12);
    // 150 px pads with a 20 px gutter, 70 px and 240 px below the area's top.
    EXPECT_EQ(d.level.pads[0].x, kPlayCentreX - 160);
    EXPECT_EQ(d.level.pads[0].y, kPlayTop + 70);
    EXPECT_EQ(d.level.pads[1].x, kPlayCentreX + 10);
    EXPECT_EQ(d.level.pads[1].y, kPlayTop + 70);
    EXPECT_EQ(d.level.pads[2].x, kPlayCentreX - 160);
    EXPECT_EQ(d.level.pads[2].y, kPlayTop + 240);
    EXPECT_EQ(d.level.pads[3].x, kPlayCentreX + 10);
    EXPECT_EQ(d.level.pads[3].y, kPlayTop + 240);
    for (const Rect& pad : d.level.pads) {
        EXPECT_EQ(pad.w, 150);
        EXPECT_EQ(pad.h, 150);
    }
}

TEST(SimonStation, StartsWithOnePadFromOneRawDrawAndShows) {
    Driver<SimonLevel> d(kSeed, 12);
    Rng ref(kSeed);
    ASSERT_EQ(d.level.sequence.size(), 1u);
    EXPECT_EQ(d.level.sequence[0], static_cast<int>(ref() & 3u));   // the low two bits
    EXPECT_EQ(d.rng, test::engineAfter(kSeed, 1));
    EXPECT_TRUE(d.level.showing);
    EXPECT_EQ(d.level.litPad, -1);
    EXPECT_EQ(d.level.inputIndex, 0);
    EXPECT_EQ(d.level.rng, &d.rng);
}

TEST(SimonStation, SequencesGrowToFourBelowStationFortyAndToFiveFrom) {
    Driver<SimonLevel> early(kSeed, 39);
    EXPECT_EQ(early.level.maxLength, 4);
    Driver<SimonLevel> late(1, 40);
    EXPECT_EQ(late.level.maxLength, 5);
}

// The next two tests are about where an edge of the show falls, to the
// hundredth: they step the clock in frames of their own length, 5 ms either
// side of the edge.
TEST(SimonStation, EachPadLightsForTheFirstThirtyThreeHundredthsOfItsSlot) {
    Driver<SimonLevel> d(kSeed, 12);
    const int first = d.level.sequence[0];
    d.frame(0.1);
    EXPECT_EQ(d.level.litPad, first);
    d.frame(0.225);   // 0.325 s
    EXPECT_EQ(d.level.litPad, first);
    d.frame(0.01);    // 0.335 s: dark for the rest of the slot
    EXPECT_EQ(d.level.litPad, -1);
    EXPECT_TRUE(d.level.showing);
}

TEST(SimonStation, TheShowOfOnePadEndsWithItsFiftyFiveHundredthsSlot) {
    Driver<SimonLevel> d(kSeed, 12);
    d.frame(0.545);
    EXPECT_TRUE(d.level.showing);
    d.frame(0.01);   // 0.555 s
    EXPECT_FALSE(d.level.showing);
    EXPECT_EQ(d.level.litPad, -1);
    EXPECT_EQ(d.level.inputIndex, 0);
}

TEST(SimonStation, AtSixtyFramesASecondAPadIsLitForTwentyFramesOfItsThirtyThree) {
    Driver<SimonLevel> d(kSeed, 12);
    const int first = d.level.sequence[0];
    // 0.33 s is 19.8 frames: lit through frame 19 (0.317 s), dark from frame 20 (0.333 s).
    d.idle(19);
    EXPECT_EQ(d.level.litPad, first);
    d.idle();
    EXPECT_EQ(d.level.litPad, -1);
    // The 0.55 s slot is 33 frames; frame 33 sits right on its edge, so the
    // frames either side of it are asked.
    d.idle(12);   // frame 32, 0.533 s
    EXPECT_TRUE(d.level.showing);
    d.idle(2);    // frame 34, 0.567 s
    EXPECT_FALSE(d.level.showing);
}

TEST(SimonStation, TheSamePadTwiceInARowFlashesTwice) {
    Driver<SimonLevel> d(kSeed, 12);
    d.level.sequence = {2, 2};
    d.idle(32);   // 0.533 s: the dark gap at the end of the first slot
    EXPECT_EQ(d.level.litPad, -1);
    d.idle(2);    // 0.567 s: the second slot lights it again
    EXPECT_EQ(d.level.litPad, 2);
    d.idle(31);   // 1.083 s: still in the second slot
    EXPECT_TRUE(d.level.showing);
    d.idle(2);    // 1.117 s: past two slots of 0.55 s
    EXPECT_FALSE(d.level.showing);
}

TEST(SimonStation, TheShowPlaysNoSound) {
    Driver<SimonLevel> d(kSeed, 12);
    memory::watchTheShow(d);
    EXPECT_EQ(d.sounds, Sounds{});
}

TEST(SimonStation, WithMaximumFourThePlayerRepeatsLengthsOneToFour) {
    Driver<SimonLevel> d(kSeed, 12);
    Rng ref(kSeed);
    std::vector<int> expected{static_cast<int>(ref() & 3u)};
    std::vector<std::size_t> lengths;
    LevelResult r = LevelResult::Running;
    while (r == LevelResult::Running && lengths.size() < 10) {
        memory::watchTheShow(d);
        lengths.push_back(d.level.sequence.size());
        EXPECT_EQ(d.level.sequence, expected);
        r = repeatRound(d);
        // Every round but the last adds a pad drawn from the run's engine.
        expected.push_back(static_cast<int>(ref() & 3u));
    }
    EXPECT_EQ(r, LevelResult::Solved);
    EXPECT_EQ(lengths, (std::vector<std::size_t>{1, 2, 3, 4}));
    EXPECT_EQ(d.rng, test::engineAfter(kSeed, 4));
}

TEST(SimonStation, FromStationFortyTheLastRoundIsFivePadsLong) {
    Driver<SimonLevel> d(kSeed, 40);
    LevelResult r = LevelResult::Running;
    int rounds = 0;
    while (r == LevelResult::Running && rounds < 10) {
        memory::watchTheShow(d);
        ++rounds;
        r = repeatRound(d);
    }
    EXPECT_EQ(r, LevelResult::Solved);
    EXPECT_EQ(rounds, 5);
    EXPECT_EQ(d.rng, test::engineAfter(kSeed, 5));
}

TEST(SimonStation, EveryAcceptedPressClicksAndTheLastOneThenPasses) {
    Driver<SimonLevel> d(kSeed, 12);
    for (int round = 1; round <= 4; ++round) {
        memory::watchTheShow(d);
        for (int i = 0; i < round; ++i) {
            const std::size_t before = d.sounds.size();
            const LevelResult r = pressPad(d, d.level.sequence[static_cast<std::size_t>(i)]);
            const bool last = round == 4 && i == 3;
            EXPECT_EQ(d.soundsSince(before), last ? (Sounds{"click", "pass"}) : Sounds{"click"})
                << "round " << round << " press " << i;
            EXPECT_EQ(r, last ? LevelResult::Solved : LevelResult::Running);
        }
    }
    // 1 + 2 + 3 + 4 clicks, then the pass.
    EXPECT_EQ(d.sounds.size(), 11u);
}

TEST(SimonStation, AWrongPadAtAnyStepFires) {
    for (int round = 1; round <= 4; ++round) {
        for (int step = 0; step < round; ++step) {
            Driver<SimonLevel> d(77, 12);
            // Play the earlier rounds whole, then this one up to the step.
            for (int played = 1; played <= round; ++played) {
                memory::watchTheShow(d);
                const int upTo = played < round ? played : step;
                for (int i = 0; i < upTo; ++i) {
                    ASSERT_EQ(pressPad(d, d.level.sequence[static_cast<std::size_t>(i)]),
                              LevelResult::Running);
                }
            }
            ASSERT_EQ(static_cast<int>(d.level.sequence.size()), round);
            const int wrong = (d.level.sequence[static_cast<std::size_t>(step)] + 1) % 4;
            const std::size_t before = d.sounds.size();
            EXPECT_EQ(pressPad(d, wrong), LevelResult::Failed)
                << "round " << round << " step " << step;
            EXPECT_EQ(d.soundsSince(before), Sounds{"fail"});
        }
    }
}

TEST(SimonStation, PressingDuringTheShowDoesNothing) {
    Driver<SimonLevel> d(kSeed, 12);
    const int right = d.level.sequence[0];
    d.idle(6);     // 0.1 s: the pad is lit
    EXPECT_EQ(pressPad(d, right), LevelResult::Running);
    d.idle(12);    // frame 20, 0.333 s: the dark part of the slot
    EXPECT_EQ(pressPad(d, right), LevelResult::Running);
    EXPECT_EQ(pressPad(d, (right + 1) % 4), LevelResult::Running);   // frame 24, 0.4 s
    EXPECT_TRUE(d.level.showing);
    EXPECT_EQ(d.level.inputIndex, 0);
    EXPECT_EQ(d.level.litPad, -1);
    EXPECT_EQ(d.level.sequence.size(), 1u);
    EXPECT_EQ(d.sounds, Sounds{});
    memory::watchTheShow(d);
    // Still the first press of the round is asked for.
    EXPECT_EQ(pressPad(d, right), LevelResult::Running);
    EXPECT_EQ(d.level.sequence.size(), 2u);
}

TEST(SimonStation, PressesOffThePadsDoNothing) {
    Driver<SimonLevel> d(kSeed, 12);
    memory::watchTheShow(d);
    const Rect& topLeft = d.level.pads[0];
    const int beside = topLeft.y + 40;
    EXPECT_EQ(d.click(kPlayCentreX, kPlayTop + 210), LevelResult::Running);   // the gutter
    EXPECT_EQ(d.click(topLeft.x + topLeft.w, beside), LevelResult::Running);  // just right of it
    EXPECT_EQ(d.click(kPlayLeft + 37, beside), LevelResult::Running);         // far left
    EXPECT_EQ(d.level.inputIndex, 0);
    EXPECT_EQ(d.level.litPad, -1);
    EXPECT_EQ(d.sounds, Sounds{});
}

TEST(SimonStation, APressLightsThePadPressed) {
    Driver<SimonLevel> d(kSeed, 12);
    memory::watchTheShow(d);
    const int p = d.level.sequence[0];
    const Rect& pad = d.level.pads[p];
    d.press(pad.x + 75, pad.y + 75);
    EXPECT_EQ(d.level.litPad, p);
}

TEST(SimonStation, AFullyRepeatedRoundShowsTheWholeLongerSequenceFromTheTop) {
    Driver<SimonLevel> d(kSeed, 12);
    memory::watchTheShow(d);
    const int first = d.level.sequence[0];
    ASSERT_GE(d.level.showTimer, 0.55);   // where the first show left it
    ASSERT_EQ(d.press(d.level.pads[first].x + 5, d.level.pads[first].y + 5), LevelResult::Running);
    EXPECT_TRUE(d.level.showing);
    EXPECT_EQ(d.level.showTimer, 0.0);
    ASSERT_EQ(d.level.sequence.size(), 2u);
    d.idle(6);   // 0.1 s into the new show: its first pad is lit
    EXPECT_EQ(d.level.litPad, first);
}

TEST(SimonStation, RestingAndLitPadColours) {
    Driver<SimonLevel> d(kSeed, 12);
    d.level.showing = false;
    d.level.litPad = 2;
    test::SoftwareCanvas canvas;
    canvas.fill(ink::black);
    d.level.render(canvas.graphics);
    const auto inside = [&](int p) {
        return canvas.pixel(d.level.pads[p].x + 20, d.level.pads[p].y + 75);
    };
    EXPECT_EQ(inside(0), memory::simonRedResting);
    EXPECT_EQ(inside(1), memory::simonGreenResting);
    EXPECT_EQ(inside(2), ink::gold);
    EXPECT_EQ(inside(3), memory::simonBlueResting);
    d.level.litPad = 0;
    d.level.render(canvas.graphics);
    EXPECT_EQ(inside(0), ink::alarmRed);
    EXPECT_EQ(inside(2), memory::simonGoldResting);
    d.level.litPad = 1;
    d.level.render(canvas.graphics);
    EXPECT_EQ(inside(1), ink::terminalGreen);
    d.level.litPad = 3;
    d.level.render(canvas.graphics);
    EXPECT_EQ(inside(3), ink::signalBlue);
}

TEST(SimonStation, PadsAreRoundedWithRadiusTen) {
    Driver<SimonLevel> d(kSeed, 12);
    test::SoftwareCanvas canvas;
    canvas.fill(ink::black);
    d.level.render(canvas.graphics);
    const Rect& pad = d.level.pads[0];
    EXPECT_EQ(canvas.pixel(pad.x, pad.y), ink::black);   // the corner is cut
    EXPECT_EQ(canvas.pixel(pad.x + 2, pad.y + 2), ink::black);
    EXPECT_EQ(canvas.pixel(pad.x + 3, pad.y + 3), memory::simonRedResting);
    EXPECT_EQ(canvas.pixel(pad.x + 10, pad.y), memory::simonRedResting);
}

TEST(SimonStation, TheStatusSaysWatchWhileTheRoundIsShown) {
    Driver<SimonLevel> d(kSeed, 12);
    memory::Picture shot(d.level);
    EXPECT_TRUE(showsStatus(shot.canvas, "WATCH  len 1/4"));
    EXPECT_EQ(test::playAreaNoteUnlike(shot.canvas, test::kPlayAreaNoteBand, "REPEAT THE SEQUENCE"), 0);
}

TEST(SimonStation, TheStatusSaysRepeatOnceTheShowIsOver) {
    Driver<SimonLevel> d(kSeed, 12);
    memory::watchTheShow(d);
    memory::Picture shot(d.level);
    EXPECT_TRUE(showsStatus(shot.canvas, "REPEAT  len 1/4"));
    EXPECT_EQ(test::playAreaNoteUnlike(shot.canvas, test::kPlayAreaNoteBand, "REPEAT THE SEQUENCE"), 0);
}

TEST(SimonStation, TheStatusCountsTheNewLengthWhenTheNextRoundIsShown) {
    Driver<SimonLevel> d(kSeed, 12);
    memory::watchTheShow(d);
    ASSERT_EQ(repeatRound(d), LevelResult::Running);
    {
        memory::Picture shot(d.level);
        EXPECT_TRUE(showsStatus(shot.canvas, "WATCH  len 2/4"));
    }
    memory::watchTheShow(d);
    memory::Picture shot(d.level);
    EXPECT_TRUE(showsStatus(shot.canvas, "REPEAT  len 2/4"));
}

TEST(SimonStation, TheStatusShowsAMaximumOfFiveFromStationForty) {
    Driver<SimonLevel> d(kSeed, 40);
    memory::Picture shot(d.level);
    EXPECT_TRUE(showsStatus(shot.canvas, "WATCH  len 1/5"));
}

// Played by a hand, as in the run: the wrong pad once the show is over.
TEST(SimonStation, AHandOnTheWrongPadIsFiredWithTheFailSound) {
    test::StationDriver bench(test::shippedRecord("simon"), 11);
    const auto& level = dynamic_cast<const SimonLevel&>(*bench.station);
    const Rect& wrong = level.pads[(level.sequence[0] + 2) % 4];
    memory::ClickWhenReady hand;
    hand.ready = [](const Level& s) { return !dynamic_cast<const SimonLevel&>(s).showing; };
    hand.x = test::centreX(wrong);
    hand.y = test::centreY(wrong);
    EXPECT_EQ(bench.play(hand, 10.0).result, LevelResult::Failed);
    EXPECT_TRUE(bench.lastSoundWasFail());
}

}  // namespace
}  // namespace vorn
