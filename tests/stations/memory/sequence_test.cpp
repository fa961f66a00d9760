// The shutdown switches: three unlabelled switches that must be thrown right,
// middle, left; reading habit says left first, and that fires the player.
// Covers where the switches stand, the one order accepted and its sounds,
// presses beside them, and the levers' colours with nothing else drawn.

#include "stations/memory_stations.h"
#include "memory_fixtures.h"

#include <gtest/gtest.h>

#include <cstdint>
#include <string>
#include <vector>

namespace vorn {
namespace {

using test::Driver;
namespace ink = test::station_ink;
namespace memory = test::memory;
using Sounds = std::vector<std::string>;

constexpr std::uint32_t kSeed = 5;

LevelResult throwSwitch(Driver<SequenceLevel>& d, int i) {
    return d.clickCentre(d.level.switches[i]);
}

TEST(SequenceStation, ThreeSwitchesAQuarterApartAndNoDraws) {
    Driver<SequenceLevel> d(kSeed, 11);
    EXPECT_EQ(d.level.switchCount, 3);
    EXPECT_EQ(d.level.nextExpected, 2);
    // A quarter of the 840 px area is 210; x = 263 - 30 + (i + 1) x 210, so
    // each 60 px switch is centred on a quarter mark.
    EXPECT_EQ(d.level.switches[0].x, 443);
    EXPECT_EQ(d.level.switches[1].x, 653);
    EXPECT_EQ(d.level.switches[2].x, 863);
    for (const Rect& s : d.level.switches) {
        EXPECT_EQ(s.y, 345);   // 190 + 430 / 2 - 60: centred on the area's middle
        EXPECT_EQ(s.w, 60);
        EXPECT_EQ(s.h, 120);
    }
    EXPECT_EQ(d.rng, Rng(kSeed));
}

TEST(SequenceStation, RightMiddleLeftSolves) {
    Driver<SequenceLevel> d(kSeed, 11);
    EXPECT_EQ(throwSwitch(d, 2), LevelResult::Running);
    EXPECT_EQ(throwSwitch(d, 1), LevelResult::Running);
    EXPECT_EQ(throwSwitch(d, 0), LevelResult::Solved);
    EXPECT_TRUE(d.level.pressed[0] && d.level.pressed[1] && d.level.pressed[2]);
}

TEST(SequenceStation, EachThrowClicksAndTheLastThenPasses) {
    Driver<SequenceLevel> d(kSeed, 11);
    EXPECT_EQ(throwSwitch(d, 2), LevelResult::Running);
    EXPECT_EQ(d.soundsSince(0), Sounds{"click"});
    EXPECT_EQ(throwSwitch(d, 1), LevelResult::Running);
    EXPECT_EQ(d.soundsSince(1), Sounds{"click"});
    EXPECT_EQ(throwSwitch(d, 0), LevelResult::Solved);
    EXPECT_EQ(d.soundsSince(2), (Sounds{"click", "pass"}));
}

TEST(SequenceStation, TheLeftmostSwitchFirstFiresAtOnce) {
    Driver<SequenceLevel> d(kSeed, 11);
    EXPECT_EQ(d.press(d.level.switches[0].x, d.level.switches[0].y), LevelResult::Failed);
    EXPECT_EQ(d.sounds, Sounds{"fail"});
    EXPECT_FALSE(d.level.pressed[0]);
}

TEST(SequenceStation, TheMiddleSwitchFirstFires) {
    Driver<SequenceLevel> d(kSeed, 11);
    EXPECT_EQ(throwSwitch(d, 1), LevelResult::Failed);
    EXPECT_EQ(d.sounds, Sounds{"fail"});
}

TEST(SequenceStation, ThrowingTheRightSwitchTwiceFires) {
    Driver<SequenceLevel> d(kSeed, 11);
    ASSERT_EQ(throwSwitch(d, 2), LevelResult::Running);
    EXPECT_EQ(throwSwitch(d, 2), LevelResult::Failed);
    EXPECT_EQ(d.soundsSince(1), Sounds{"fail"});
}

TEST(SequenceStation, PressesBesideTheSwitchesDoNothing) {
    Driver<SequenceLevel> d(kSeed, 11);
    const Rect& s = d.level.switches[2];
    EXPECT_EQ(d.click(s.x + s.w, s.y), LevelResult::Running);   // half-open edge
    EXPECT_EQ(d.click(s.x, s.y + s.h), LevelResult::Running);
    EXPECT_EQ(d.click(s.x - 1, s.y), LevelResult::Running);
    EXPECT_EQ(d.click(s.x, s.y - 1), LevelResult::Running);
    EXPECT_EQ(d.level.nextExpected, 2);
    EXPECT_EQ(d.sounds, Sounds{});
    // Its corner pixel is on it.
    EXPECT_EQ(d.click(s.x, s.y), LevelResult::Running);
    EXPECT_EQ(d.level.nextExpected, 1);
}

TEST(SequenceStation, LeversStartUpInOrangeAndDropGreenWhenThrown) {
    Driver<SequenceLevel> d(kSeed, 11);
    ASSERT_EQ(throwSwitch(d, 2), LevelResult::Running);
    test::SoftwareCanvas canvas;
    canvas.fill(ink::black);
    d.level.render(canvas.graphics);
    const Rect& up = d.level.switches[0];
    const Rect& down = d.level.switches[2];
    // On a 60 x 120 switch the 36 x 40 lever sits 12 px in from either side,
    // 10 px below the top while up and 10 px above the bottom once thrown.
    EXPECT_EQ(canvas.pixel(up.x + 30, up.y + 30), memory::leverUp);
    EXPECT_EQ(canvas.pixel(up.x + 30, up.y + 10), memory::leverUp);
    EXPECT_EQ(canvas.pixel(up.x + 12, up.y + 30), memory::leverUp);
    EXPECT_EQ(canvas.pixel(up.x + 30, up.y + 49), memory::leverUp);
    EXPECT_EQ(canvas.pixel(up.x + 11, up.y + 30), ink::darkBrass);
    EXPECT_EQ(canvas.pixel(up.x + 30, up.y + 9), ink::darkBrass);
    EXPECT_EQ(canvas.pixel(up.x + 30, up.y + 51), ink::darkBrass);
    EXPECT_EQ(canvas.pixel(up.x + 30, up.y + up.h - 30), ink::darkBrass);
    EXPECT_EQ(canvas.pixel(down.x + 30, down.y + down.h - 30), ink::terminalGreen);
    EXPECT_EQ(canvas.pixel(down.x + 30, down.y + down.h - 49), ink::terminalGreen);
    EXPECT_EQ(canvas.pixel(down.x + 30, down.y + down.h - 51), ink::darkBrass);
    EXPECT_EQ(canvas.pixel(down.x + 30, down.y + 30), ink::darkBrass);
    EXPECT_EQ(canvas.pixel(up.x + 5, up.y + 60), ink::darkBrass);
}

TEST(SequenceStation, NothingButTheSwitchesIsDrawn) {
    // No labels and no instruction line: the order is only in the catalogue's words.
    Driver<SequenceLevel> d(kSeed, 11);
    memory::Picture shot(d.level);
    const Rect area = kPlayArea;
    int stray = 0;
    for (int y = area.y; y < area.y + area.h; ++y) {
        for (int x = area.x; x < area.x + area.w; ++x) {
            bool onSwitch = false;
            for (const Rect& s : d.level.switches) {
                // A filled rounded rectangle reaches one pixel past its right and bottom edges.
                onSwitch = onSwitch || (x >= s.x && x <= s.x + s.w && y >= s.y && y <= s.y + s.h);
            }
            stray += !onSwitch && shot.canvas.pixel(x, y) != ink::black ? 1 : 0;
        }
    }
    EXPECT_EQ(stray, 0);
}

// Played by a hand, as in the run: left first, as a reader would.
TEST(SequenceStation, AHandOnTheLeftSwitchFirstIsFiredWithTheFailSound) {
    test::StationDriver bench(test::shippedRecord("sequence"), 11);
    const auto& level = dynamic_cast<const SequenceLevel&>(*bench.station);
    memory::ClickWhenReady hand;
    hand.x = test::centreX(level.switches[0]);
    hand.y = test::centreY(level.switches[0]);
    EXPECT_EQ(bench.play(hand, 10.0).result, LevelResult::Failed);
    EXPECT_TRUE(bench.lastSoundWasFail());
}

}  // namespace
}  // namespace vorn
