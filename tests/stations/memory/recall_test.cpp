// The site walk: spots light up one after another and vanish, and the player
// clicks where they were, in order, with nothing left on screen to aim at.
// Covers where the spots fall for a seed, the pace of the show (frame by
// frame at sixty frames a second), how near a click must land, the sounds,
// and what is drawn during the show and the answer.

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

// Seed 31's spots lie far enough apart for probes around each one.
constexpr std::uint32_t kSeed = 31;

// The title or the prompt, alone above the spots' band, centred 30 px below
// the top of the play area.
::testing::AssertionResult showsHeading(const test::SoftwareCanvas& canvas, const char* text,
                                        Color colour) {
    const Rect strip{kPlayLeft, kPlayTop + 10, kPlayArea.w, 34};
    return memory::showsText(canvas, strip, ink::black, text, kPlayCentreX, kPlayTop + 30,
                             TextSize::Normal, colour, true, true);
}

void expectSpotsApart(const RecallLevel& level) {
    const auto& s = level.spots;
    for (int i = 0; i < level.spotCount; ++i) {
        for (int j = i + 1; j < level.spotCount; ++j) {
            ASSERT_GT(distance(s[i].x, s[i].y, s[j].x, s[j].y), 80.0) << i << " " << j;
        }
    }
}

TEST(RecallStation, SpotsAreUniformDrawsXThenY) {
    Driver<RecallLevel> d(kSeed, 12);
    Rng ref(kSeed);
    ASSERT_EQ(d.level.spotCount, 4);
    for (int i = 0; i < 4; ++i) {
        // x in [263 + 80, 1103 - 80]: 681 values; y in [190 + 80, 620 - 80]: 271 values.
        const int x = 343 + test::uniformBelowByHand(ref, 681);
        const int y = 270 + test::uniformBelowByHand(ref, 271);
        EXPECT_EQ(d.level.spots[i].x, x) << i;
        EXPECT_EQ(d.level.spots[i].y, y) << i;
    }
    EXPECT_EQ(d.rng, ref);
    EXPECT_EQ(d.rng, test::engineAfter(kSeed, 8));   // no draw of this seed is rejected
    EXPECT_TRUE(d.level.showing);
    EXPECT_EQ(d.level.index, 0);
}

TEST(RecallStation, FiveSpotsFromStationForty) {
    Driver<RecallLevel> d(kSeed, 40);
    EXPECT_EQ(d.level.spotCount, 5);
    Rng ref(kSeed);
    for (int i = 0; i < 5; ++i) {
        EXPECT_EQ(d.level.spots[i].x, 343 + test::uniformBelowByHand(ref, 681)) << i;
        EXPECT_EQ(d.level.spots[i].y, 270 + test::uniformBelowByHand(ref, 271)) << i;
    }
    EXPECT_EQ(d.rng, ref);
}

TEST(RecallStation, FourSpotsBelowStationForty) {
    Driver<RecallLevel> d(kSeed, 39);
    EXPECT_EQ(d.level.spotCount, 4);
    EXPECT_EQ(d.rng, test::engineAfter(kSeed, 8));
}

// This test is about where the edges fall, to the hundredth: it steps the
// clock in frames of its own length, 5 ms either side of each edge.
TEST(RecallStation, EachSpotHasEightTenthsOfASecond) {
    Driver<RecallLevel> d(kSeed, 12);
    d.frame(0.795);
    EXPECT_EQ(d.level.index, 0);
    d.frame(0.01);    // 0.805 s
    EXPECT_EQ(d.level.index, 1);
    d.frame(2.39);    // 3.195 s
    EXPECT_EQ(d.level.index, 3);
    EXPECT_TRUE(d.level.showing);
    d.frame(0.01);    // 3.205 s: past four spots
    EXPECT_FALSE(d.level.showing);
    EXPECT_EQ(d.level.index, 0);
    EXPECT_EQ(d.sounds, Sounds{});
}

TEST(RecallStation, AtSixtyFramesASecondTheShowOfFourSpotsTakes192Frames) {
    Driver<RecallLevel> d(kSeed, 12);
    // 0.8 s is 48 frames and 3.2 s is 192; those frames sit right on the
    // edges, so the frames either side of them are asked.
    d.idle(47);   // 0.783 s
    EXPECT_EQ(d.level.index, 0);
    d.idle(2);    // 0.817 s
    EXPECT_EQ(d.level.index, 1);
    d.idle(142);  // 3.183 s
    EXPECT_TRUE(d.level.showing);
    d.idle(2);    // 3.217 s
    EXPECT_FALSE(d.level.showing);
}

TEST(RecallStation, APressDuringTheShowIsIgnored) {
    Driver<RecallLevel> d(kSeed, 12);
    d.idle(6);
    EXPECT_EQ(d.click(d.level.spots[0].x, d.level.spots[0].y), LevelResult::Running);
    EXPECT_EQ(d.click(kPlayLeft + 7, kPlayTop + 10), LevelResult::Running);   // far from every spot
    EXPECT_TRUE(d.level.showing);
    EXPECT_EQ(d.sounds, Sounds{});
    memory::watchTheShow(d);
    EXPECT_EQ(d.level.index, 0);
}

TEST(RecallStation, ClickingTheSpotsInOrderSolves) {
    Driver<RecallLevel> d(kSeed, 12);
    memory::watchTheShow(d);
    LevelResult r = LevelResult::Running;
    for (int i = 0; i < d.level.spotCount; ++i) {
        EXPECT_EQ(r, LevelResult::Running);
        r = d.click(d.level.spots[i].x + 39, d.level.spots[i].y);
    }
    EXPECT_EQ(r, LevelResult::Solved);
}

TEST(RecallStation, EachSpotFoundClicksAndTheLastThenPasses) {
    Driver<RecallLevel> d(kSeed, 12);
    memory::watchTheShow(d);
    for (int i = 0; i < 4; ++i) {
        const std::size_t before = d.sounds.size();
        const LevelResult r = d.click(d.level.spots[i].x, d.level.spots[i].y);
        EXPECT_EQ(r, i < 3 ? LevelResult::Running : LevelResult::Solved) << i;
        EXPECT_EQ(d.soundsSince(before), i < 3 ? Sounds{"click"} : (Sounds{"click", "pass"})) << i;
    }
}

TEST(RecallStation, APressFortyPixelsFromTheSpotFails) {
    Driver<RecallLevel> d(kSeed, 12);
    memory::watchTheShow(d);
    EXPECT_EQ(d.press(d.level.spots[0].x + 40, d.level.spots[0].y), LevelResult::Failed);
    EXPECT_EQ(d.sounds, Sounds{"fail"});
}

TEST(RecallStation, AFortyPixelDiagonalFailsToo) {
    Driver<RecallLevel> d(kSeed, 12);
    memory::watchTheShow(d);
    // 24 across and 32 down is exactly 40.
    EXPECT_EQ(d.press(d.level.spots[0].x + 24, d.level.spots[0].y + 32), LevelResult::Failed);
}

TEST(RecallStation, JustUnderFortyPixelsCounts) {
    Driver<RecallLevel> d(kSeed, 12);
    memory::watchTheShow(d);
    EXPECT_EQ(d.press(d.level.spots[0].x, d.level.spots[0].y - 39), LevelResult::Running);
    EXPECT_EQ(d.level.index, 1);
    EXPECT_EQ(d.sounds, Sounds{"click"});
}

TEST(RecallStation, TheNextSpotOutOfOrderFails) {
    Driver<RecallLevel> d(kSeed, 12);
    memory::watchTheShow(d);
    const auto& s = d.level.spots;
    ASSERT_GE(distance(s[0].x, s[0].y, s[1].x, s[1].y), 40.0);
    EXPECT_EQ(d.press(s[1].x, s[1].y), LevelResult::Failed);
    EXPECT_EQ(d.sounds, Sounds{"fail"});
}

TEST(RecallStation, TheShowDrawsEarlierSpotsSmallAndTheCurrentOneLarge) {
    Driver<RecallLevel> d(kSeed, 12);
    d.holdFor(1.7);   // the third spot is up
    ASSERT_EQ(d.level.index, 2);
    expectSpotsApart(d.level);
    memory::Picture shot(d.level);
    const auto& s = d.level.spots;
    const test::SoftwareCanvas& canvas = shot.canvas;
    // Spots already shown: radius 14 in brown; the one up now: radius 34 in gold.
    EXPECT_EQ(canvas.pixel(s[0].x, s[0].y), ink::holeBrown);
    EXPECT_EQ(canvas.pixel(s[0].x + 14, s[0].y), ink::holeBrown);
    EXPECT_EQ(canvas.pixel(s[0].x + 15, s[0].y), ink::black);
    EXPECT_EQ(canvas.pixel(s[1].x, s[1].y - 13), ink::holeBrown);
    EXPECT_EQ(canvas.pixel(s[1].x, s[1].y - 15), ink::black);
    EXPECT_EQ(canvas.pixel(s[2].x, s[2].y + 33), ink::gold);
    EXPECT_EQ(canvas.pixel(s[2].x, s[2].y + 35), ink::black);
    EXPECT_EQ(canvas.pixel(s[2].x - 34, s[2].y), ink::gold);
    EXPECT_EQ(canvas.pixel(s[3].x, s[3].y), ink::black);   // not shown yet
}

TEST(RecallStation, TheCurrentSpotCarriesItsNumberFromOne) {
    Driver<RecallLevel> d(kSeed, 12);
    d.holdFor(1.7);   // the third spot is up
    ASSERT_EQ(d.level.index, 2);
    expectSpotsApart(d.level);
    memory::Picture shot(d.level);
    const auto& s = d.level.spots[2];
    EXPECT_TRUE(memory::showsText(shot.canvas, Rect{s.x - 24, s.y - 24, 48, 48}, ink::gold, "3",
                                  s.x, s.y, TextSize::Large, ink::ink, true, true));
    // The earlier spots carry no number.
    const auto& e = d.level.spots[0];
    EXPECT_EQ(test::pixelsOtherThan(shot.canvas, Rect{e.x - 9, e.y - 9, 18, 18}, ink::holeBrown), 0);
}

TEST(RecallStation, TheFirstSpotIsNumberedOne) {
    Driver<RecallLevel> d(kSeed, 12);
    d.idle(6);
    memory::Picture shot(d.level);
    const auto& s = d.level.spots[0];
    EXPECT_TRUE(memory::showsText(shot.canvas, Rect{s.x - 24, s.y - 24, 48, 48}, ink::gold, "1",
                                  s.x, s.y, TextSize::Large, ink::ink, true, true));
}

TEST(RecallStation, TheShowIsTitledMemoriseTheOrder) {
    Driver<RecallLevel> d(kSeed, 12);
    d.idle(6);
    memory::Picture shot(d.level);
    EXPECT_TRUE(showsHeading(shot.canvas, "MEMORISE THE ORDER", ink::terminalGreen));
    EXPECT_EQ(test::playAreaNoteUnlike(shot.canvas, test::kPlayAreaNoteBand,
                                 "REPEAT THE FLASHES IN ORDER, FROM MEMORY"), 0);
}

TEST(RecallStation, TheAnswerShowsNoSpotsOnlyThePrompt) {
    Driver<RecallLevel> d(kSeed, 12);
    memory::watchTheShow(d);
    memory::Picture shot(d.level);
    for (int i = 0; i < d.level.spotCount; ++i) {
        const auto& s = d.level.spots[i];
        EXPECT_EQ(test::pixelsOtherThan(shot.canvas, Rect{s.x - 35, s.y - 35, 71, 71}, ink::black), 0) << i;
    }
    EXPECT_TRUE(showsHeading(shot.canvas, "CLICK SPOT 1 / 4", ink::gold));
    EXPECT_EQ(test::playAreaNoteUnlike(shot.canvas, test::kPlayAreaNoteBand,
                                 "REPEAT THE FLASHES IN ORDER, FROM MEMORY"), 0);
}

TEST(RecallStation, ThePromptCountsTheSpotsFound) {
    Driver<RecallLevel> d(kSeed, 12);
    memory::watchTheShow(d);
    ASSERT_EQ(d.click(d.level.spots[0].x, d.level.spots[0].y), LevelResult::Running);
    ASSERT_EQ(d.click(d.level.spots[1].x, d.level.spots[1].y), LevelResult::Running);
    memory::Picture shot(d.level);
    EXPECT_TRUE(showsHeading(shot.canvas, "CLICK SPOT 3 / 4", ink::gold));
}

TEST(RecallStation, ThePromptCountsFiveSpotsFromStationForty) {
    Driver<RecallLevel> d(kSeed, 40);
    memory::watchTheShow(d);
    memory::Picture shot(d.level);
    EXPECT_TRUE(showsHeading(shot.canvas, "CLICK SPOT 1 / 5", ink::gold));
}

// Played by a hand, as in the run: the second spot where the first belongs.
TEST(RecallStation, AHandOnTheSecondSpotFirstIsFiredWithTheFailSound) {
    test::StationDriver bench(test::shippedRecord("recall"), 11);
    const auto& level = dynamic_cast<const RecallLevel&>(*bench.station);
    ASSERT_GE(distance(level.spots[0].x, level.spots[0].y, level.spots[1].x, level.spots[1].y),
              40.0);
    memory::ClickWhenReady hand;
    hand.ready = [](const Level& s) { return !dynamic_cast<const RecallLevel&>(s).showing; };
    hand.x = level.spots[1].x;
    hand.y = level.spots[1].y;
    EXPECT_EQ(bench.play(hand, 10.0).result, LevelResult::Failed);
    EXPECT_TRUE(bench.lastSoundWasFail());
}

}  // namespace
}  // namespace vorn
