// The telegraph: a lamp blinks four symbols, short or long, and the player
// keys them back. Only a press held past 0.35 s is long, and only a press
// that starts on the key counts. Covers the symbols and the layout, the
// lamp's burns and slots (frame by frame at sixty frames a second), keying
// and its sounds, and the lamp, the key and the words the player reads.

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
using test::StationDriver;
namespace ink = test::station_ink;
namespace memory = test::memory;
using Sounds = std::vector<std::string>;

constexpr std::uint32_t kSeed = 8;

// A tap and a long press as a player keys them: six frames (0.1 s) and
// thirty-six (0.6 s), well clear of the 0.35 s line.
constexpr int kTap = 6;
constexpr int kLong = 36;

// The key held down for `frames` frames (the press frame among them), then let go.
LevelResult keyFor(Driver<MorseLevel>& d, int frames) {
    LevelResult r = d.press(d.level.key.x + 10, d.level.key.y + 10);
    if (frames > 1 && r == LevelResult::Running) {
        r = d.idle(frames - 1);
    }
    return r == LevelResult::Running ? d.release() : r;
}

int framesFor(int symbol) { return symbol == 1 ? kLong : kTap; }

// "WATCH" or the symbol count: small, green, centred across the area with
// its top 90 px below the lamp's, alone between the lamp and the key.
::testing::AssertionResult showsStatus(const test::SoftwareCanvas& canvas, const MorseLevel& level,
                                       const char* text) {
    const Rect strip{kPlayLeft, level.lamp.y + 70, kPlayArea.w, 60};
    return memory::showsText(canvas, strip, ink::black, text, kPlayCentreX, level.lamp.y + 90,
                             TextSize::Small, ink::terminalGreen, true, false);
}

// The key's label: centred on the key, and wider than it, so it is checked in
// three parts: over the key and over the black on either side of it.
::testing::AssertionResult showsKeyLabel(const test::SoftwareCanvas& canvas,
                                         const MorseLevel& level, Color keyColour) {
    const Rect& k = level.key;
    const char* label = "KEY (tap=short, hold=long)";
    const int x = k.x + k.w / 2;
    const int y = k.y + k.h / 2;
    const ::testing::AssertionResult on = memory::showsText(
        canvas, Rect{k.x, k.y + 15, k.w, 50}, keyColour, label, x, y, TextSize::Small, ink::ink,
        true, true);
    if (!on) {
        return on;
    }
    const ::testing::AssertionResult left = memory::showsText(
        canvas, Rect{k.x - 160, k.y + 15, 160, 50}, ink::black, label, x, y, TextSize::Small,
        ink::ink, true, true);
    if (!left) {
        return left;
    }
    return memory::showsText(canvas, Rect{k.x + k.w, k.y + 15, 160, 50}, ink::black, label, x, y,
                             TextSize::Small, ink::ink, true, true);
}

TEST(MorseStation, FourSymbolsFromTheLowBitOfFourRawDraws) {
    Driver<MorseLevel> d(kSeed, 21);
    Rng ref(kSeed);
    for (int i = 0; i < 4; ++i) {
        EXPECT_EQ(d.level.symbols[i], static_cast<int>(ref() & 1u)) << i;
    }
    EXPECT_EQ(d.rng, test::engineAfter(kSeed, 4));
    EXPECT_EQ(d.level.symbolCount, 4);
    // Key {683 - 70, 190 + 215 + 10, 140, 80}; lamp {683 - 30, 190 + 40, 60, 60}.
    EXPECT_EQ(d.level.key.x, 613);
    EXPECT_EQ(d.level.key.y, 415);
    EXPECT_EQ(d.level.key.w, 140);
    EXPECT_EQ(d.level.key.h, 80);
    EXPECT_EQ(d.level.lamp.x, 653);
    EXPECT_EQ(d.level.lamp.y, 230);
    EXPECT_EQ(d.level.lamp.w, 60);
    EXPECT_EQ(d.level.lamp.h, 60);
    EXPECT_TRUE(d.level.showing);
    EXPECT_FALSE(d.level.lampOn);
    EXPECT_FALSE(d.level.pressing);
    EXPECT_EQ(d.level.inputIndex, 0);
    EXPECT_EQ(d.level.shownIndex, 0);
}

// The next four tests are about where the edges of the show fall, to the
// hundredth: they step the clock in frames of their own length, 5 ms either
// side of each edge.
TEST(MorseStation, ALongSymbolBurnsSixTenths) {
    Driver<MorseLevel> d(kSeed, 21);
    d.level.symbols[0] = 1;
    d.frame(0.005);
    EXPECT_TRUE(d.level.lampOn);
    d.frame(0.59);   // 0.595 s
    EXPECT_TRUE(d.level.lampOn);
    d.frame(0.01);   // 0.605 s
    EXPECT_FALSE(d.level.lampOn);
}

TEST(MorseStation, AShortSymbolBurnsTwoTenths) {
    Driver<MorseLevel> d(kSeed, 21);
    d.level.symbols[0] = 0;
    d.frame(0.005);
    EXPECT_TRUE(d.level.lampOn);
    d.frame(0.19);   // 0.195 s
    EXPECT_TRUE(d.level.lampOn);
    d.frame(0.01);   // 0.205 s
    EXPECT_FALSE(d.level.lampOn);
}

TEST(MorseStation, EachSymbolHasANineTenthSlot) {
    Driver<MorseLevel> d(kSeed, 21);
    d.level.symbols[0] = 1;
    d.level.symbols[1] = 0;
    d.frame(0.895);
    EXPECT_EQ(d.level.shownIndex, 0);
    EXPECT_FALSE(d.level.lampOn);
    d.frame(0.01);   // 0.905 s: the second slot
    EXPECT_EQ(d.level.shownIndex, 1);
    d.frame(0.1);    // 1.005 s
    EXPECT_TRUE(d.level.lampOn);
    d.frame(0.09);   // 1.095 s
    EXPECT_TRUE(d.level.lampOn);
    d.frame(0.01);   // 1.105 s
    EXPECT_FALSE(d.level.lampOn);
}

TEST(MorseStation, TheShowEndsJustAfterFourSlots) {
    Driver<MorseLevel> d(kSeed, 21);
    // The shown symbol moves on by at most one slot a frame, so the show is
    // stepped in half seconds up to 3.5 s.
    for (int i = 0; i < 7; ++i) {
        d.frame(0.5);
    }
    d.frame(0.095);   // 3.595 s
    EXPECT_TRUE(d.level.showing);
    EXPECT_EQ(d.level.shownIndex, 3);
    d.frame(0.01);    // 3.605 s
    EXPECT_FALSE(d.level.showing);
    EXPECT_FALSE(d.level.lampOn);
    EXPECT_EQ(d.level.shownIndex, 4);
    EXPECT_EQ(d.sounds, Sounds{});
}

TEST(MorseStation, AtSixtyFramesASecondTheLongBurnAndItsSlotEndOnTheirFrames) {
    Driver<MorseLevel> d(kSeed, 21);
    d.level.symbols[0] = 1;
    d.level.symbols[1] = 0;
    // 0.6 s is 36 frames and 0.9 s is 54, each right on its edge, so the
    // frames either side are asked.
    d.idle();
    EXPECT_TRUE(d.level.lampOn);
    d.idle(34);   // frame 35, 0.583 s
    EXPECT_TRUE(d.level.lampOn);
    d.idle(2);    // frame 37, 0.617 s
    EXPECT_FALSE(d.level.lampOn);
    d.idle(16);   // frame 53, 0.883 s
    EXPECT_EQ(d.level.shownIndex, 0);
    d.idle(2);    // frame 55, 0.917 s: the short symbol's slot, lit at once
    EXPECT_EQ(d.level.shownIndex, 1);
    EXPECT_TRUE(d.level.lampOn);
}

TEST(MorseStation, PressesDuringTheShowAreIgnored) {
    Driver<MorseLevel> d(kSeed, 21);
    d.idle(6);
    EXPECT_EQ(keyFor(d, kLong), LevelResult::Running);
    EXPECT_EQ(keyFor(d, 3), LevelResult::Running);
    EXPECT_EQ(d.level.inputIndex, 0);
    EXPECT_FALSE(d.level.pressing);
    EXPECT_EQ(d.sounds, Sounds{});
}

// Twenty-one frames of 1/60 s add up to 0.35 s to the last bit: exactly on
// the line, which still keys a short.
TEST(MorseStation, APressOfExactlyThirtyFiveHundredthsIsShort) {
    Driver<MorseLevel> d(kSeed, 21);
    memory::watchTheShow(d);
    d.level.symbols[0] = 0;
    d.press(d.level.key.x + 10, d.level.key.y + 10);
    d.idle(20);
    ASSERT_EQ(d.level.pressTime, 0.35);
    EXPECT_EQ(d.release(), LevelResult::Running);
    EXPECT_EQ(d.level.inputIndex, 1);
    d.level.symbols[1] = 1;
    EXPECT_EQ(keyFor(d, 21), LevelResult::Failed);
}

TEST(MorseStation, APressPastThirtyFiveHundredthsIsLong) {
    Driver<MorseLevel> d(kSeed, 21);
    memory::watchTheShow(d);
    d.level.symbols[0] = 1;
    EXPECT_EQ(keyFor(d, 22), LevelResult::Running);   // 0.367 s
    EXPECT_EQ(d.level.inputIndex, 1);
    d.level.symbols[1] = 0;
    EXPECT_EQ(keyFor(d, 22), LevelResult::Failed);
}

TEST(MorseStation, HeldFramesAddUpIncludingThePressFrame) {
    Driver<MorseLevel> d(kSeed, 21);
    memory::watchTheShow(d);
    d.level.symbols[0] = 0;
    d.press(d.level.key.x + 5, d.level.key.y + 5);
    d.idle(2);
    EXPECT_DOUBLE_EQ(d.level.pressTime, 3 * StationDriver::kFrame);
    EXPECT_TRUE(d.level.pressing);
    const double held = d.level.pressTime;
    EXPECT_EQ(d.release(), LevelResult::Running);   // three frames key a short
    EXPECT_EQ(d.level.pressTime, held);             // the release frame adds nothing
    EXPECT_EQ(d.level.inputIndex, 1);
}

TEST(MorseStation, TheKeyClicksOnTheReleaseOfARightSymbolOnly) {
    Driver<MorseLevel> d(kSeed, 21);
    memory::watchTheShow(d);
    d.level.symbols[0] = 0;
    EXPECT_EQ(d.press(d.level.key.x + 5, d.level.key.y + 5), LevelResult::Running);
    EXPECT_EQ(d.sounds, Sounds{});
    EXPECT_EQ(d.release(), LevelResult::Running);
    EXPECT_EQ(d.sounds, Sounds{"click"});
}

TEST(MorseStation, TheWrongLengthFiresWithOnlyTheFailSound) {
    Driver<MorseLevel> d(kSeed, 21);
    memory::watchTheShow(d);
    d.level.symbols[0] = 0;
    EXPECT_EQ(keyFor(d, kLong), LevelResult::Failed);
    EXPECT_EQ(d.sounds, Sounds{"fail"});
}

TEST(MorseStation, APressStartingOutsideTheKeyIsIgnoredEvenIfReleasedOverIt) {
    Driver<MorseLevel> d(kSeed, 21);
    memory::watchTheShow(d);
    const Rect& k = d.level.key;
    d.press(k.x - 1, k.y + 10);
    EXPECT_FALSE(d.level.pressing);
    d.moveTo(k.x + 20, k.y + 10);   // slides onto the key
    d.idle(6);
    EXPECT_EQ(d.release(), LevelResult::Running);
    EXPECT_EQ(d.level.inputIndex, 0);
    EXPECT_FALSE(d.level.pressing);
    EXPECT_EQ(d.sounds, Sounds{});
}

TEST(MorseStation, KeyingAllFourSolvesWithFourClicksThenThePass) {
    Driver<MorseLevel> d(kSeed, 21);
    memory::watchTheShow(d);
    LevelResult r = LevelResult::Running;
    for (int i = 0; i < 4; ++i) {
        EXPECT_EQ(r, LevelResult::Running);
        r = keyFor(d, framesFor(d.level.symbols[i]));
    }
    EXPECT_EQ(r, LevelResult::Solved);
    EXPECT_EQ(d.sounds, (Sounds{"click", "click", "click", "click", "pass"}));
}

TEST(MorseStation, LampAndKeyColours) {
    Driver<MorseLevel> d(kSeed, 21);
    test::SoftwareCanvas canvas;
    canvas.fill(ink::black);
    d.level.lampOn = true;
    d.level.render(canvas.graphics);
    // The lamp: a disc of radius 28 about the middle of its 60 px square.
    const int lx = d.level.lamp.x + 30;
    const int ly = d.level.lamp.y + 30;
    const Rect& k = d.level.key;
    EXPECT_EQ(canvas.pixel(lx, ly), ink::gold);
    EXPECT_EQ(canvas.pixel(lx, ly + 27), ink::gold);
    EXPECT_EQ(canvas.pixel(lx, ly + 29), ink::black);
    EXPECT_EQ(canvas.pixel(lx - 28, ly), ink::gold);
    EXPECT_EQ(canvas.pixel(k.x + 70, k.y + 10), ink::oldBrass);
    EXPECT_EQ(canvas.pixel(k.x + 3, k.y + 3), ink::oldBrass);
    EXPECT_EQ(canvas.pixel(k.x + 2, k.y + 2), ink::black);   // radius 10
    d.level.lampOn = false;
    d.level.pressing = true;
    d.level.render(canvas.graphics);
    EXPECT_EQ(canvas.pixel(lx, ly), ink::charcoal);
    EXPECT_EQ(canvas.pixel(k.x + 70, k.y + 10), ink::darkGreen);
}

TEST(MorseStation, TheStatusSaysWatchDuringTheShow) {
    Driver<MorseLevel> d(kSeed, 21);
    memory::Picture shot(d.level);
    EXPECT_TRUE(showsStatus(shot.canvas, d.level, "WATCH"));
    EXPECT_TRUE(showsKeyLabel(shot.canvas, d.level, ink::oldBrass));
    EXPECT_EQ(test::playAreaNoteUnlike(shot.canvas, test::kPlayAreaNoteBand, "MIRROR THE LAMP'S BLINKS"), 0);
}

TEST(MorseStation, TheStatusCountsTheSymbolAskedFor) {
    Driver<MorseLevel> d(kSeed, 21);
    memory::watchTheShow(d);
    {
        memory::Picture shot(d.level);
        EXPECT_TRUE(showsStatus(shot.canvas, d.level, "SYMBOL 1 / 4"));
        EXPECT_EQ(test::playAreaNoteUnlike(shot.canvas, test::kPlayAreaNoteBand,
                                               "MIRROR THE LAMP'S BLINKS"),
                  0);
    }
    ASSERT_EQ(keyFor(d, framesFor(d.level.symbols[0])), LevelResult::Running);
    ASSERT_EQ(keyFor(d, framesFor(d.level.symbols[1])), LevelResult::Running);
    memory::Picture shot(d.level);
    EXPECT_TRUE(showsStatus(shot.canvas, d.level, "SYMBOL 3 / 4"));
}

TEST(MorseStation, TheKeyKeepsItsLabelWhilePressed) {
    Driver<MorseLevel> d(kSeed, 21);
    memory::watchTheShow(d);
    d.press(d.level.key.x + 5, d.level.key.y + 5);
    ASSERT_TRUE(d.level.pressing);
    memory::Picture shot(d.level);
    EXPECT_TRUE(showsKeyLabel(shot.canvas, d.level, ink::darkGreen));
}

// Played by a hand, as in the run: a tap for a long first symbol, a long
// hold for a short one.
TEST(MorseStation, AHandKeyingTheWrongLengthIsFiredWithTheFailSound) {
    StationDriver bench(test::shippedRecord("morse"), 11);
    struct Opposite final : test::Solver {
        double downSince = -1.0;
        test::Intent decide(const Level& s, const test::Hand& hand, double t) override {
            const auto& m = dynamic_cast<const MorseLevel&>(s);
            const test::Intent over{m.key.x + 70, m.key.y + 20, false};
            if (m.showing) {
                return over;
            }
            if (hand.down && downSince < 0.0) {
                downSince = t;
            }
            const double want = m.symbols[0] == 1 ? 0.0 : 0.6;
            if (!hand.down && downSince < 0.0) {
                return test::Intent{over.x, over.y, true};
            }
            return test::Intent{over.x, over.y, t - downSince < want};
        }
    } opposite;
    EXPECT_EQ(bench.play(opposite, 20.0).result, LevelResult::Failed);
    EXPECT_TRUE(bench.lastSoundWasFail());
}

}  // namespace
}  // namespace vorn
