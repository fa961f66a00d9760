// Anti-Simon: the flashing pad is the one not to touch, and the flash moves
// every 0.9 s, onto any pad. Three different safe pads end the station.
// Covers the board and the first flash, the beat of the flash and the draws
// behind it, the presses and their sounds, and the pads' colours and words.

#include "stations/memory_stations.h"
#include "support/draws_by_hand.h"
#include "memory_fixtures.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cstdint>
#include <iterator>
#include <string>
#include <vector>

namespace vorn {
namespace {

using test::Driver;
using test::kPlayCentreX;
using test::kPlayTop;
namespace ink = test::station_ink;
namespace memory = test::memory;
using Sounds = std::vector<std::string>;

constexpr std::uint32_t kSeed = 99;

// A click near the pad's top-left corner, clear of the rounding.
LevelResult pressPad(Driver<AntiSimonLevel>& d, int p) {
    const Rect& r = d.level.pads[p];
    return d.click(r.x + 5, r.y + 5);
}

int padsTickedOff(const AntiSimonLevel& level) {
    return static_cast<int>(std::count(std::begin(level.done), std::end(level.done), true));
}

// The inside of a pad, clear of its rounded corners.
Rect padInside(const Rect& pad) { return Rect{pad.x + 12, pad.y + 12, pad.w - 24, pad.h - 24}; }

TEST(AntiSimonStation, SetupLaysTheFourPadsAndDrawsTheFirstFlash) {
    Driver<AntiSimonLevel> d(kSeed, 14);
    Rng ref(kSeed);
    EXPECT_EQ(d.level.flashingPad, static_cast<int>(ref() & 3u));
    EXPECT_EQ(d.rng, test::engineAfter(kSeed, 1));
    // Simon's board: 150 px pads with a 20 px gutter, 70 px below the area's top.
    EXPECT_EQ(d.level.pads[0].x, kPlayCentreX - 160);
    EXPECT_EQ(d.level.pads[0].y, kPlayTop + 70);
    EXPECT_EQ(d.level.pads[1].x, kPlayCentreX + 10);
    EXPECT_EQ(d.level.pads[2].y, kPlayTop + 240);
    EXPECT_EQ(d.level.pads[3].x, kPlayCentreX + 10);
    EXPECT_EQ(d.level.pads[3].w, 150);
    EXPECT_EQ(d.level.pads[3].h, 150);
    EXPECT_EQ(d.level.flashTimer, 0.0);
    EXPECT_EQ(d.level.rng, &d.rng);
    EXPECT_EQ(padsTickedOff(d.level), 0);
}

// This test's point is the edge itself, so it runs frames of its own length.
TEST(AntiSimonStation, TheFlashMovesOnlyOnceItsTimerExceedsNineTenths) {
    Driver<AntiSimonLevel> d(kSeed, 14);
    Rng ref(kSeed);
    ref();
    d.frame(0.9);
    EXPECT_EQ(d.level.flashTimer, 0.9);
    EXPECT_EQ(d.rng, ref);   // exactly 0.9 is not past it: no draw yet
    d.frame(0.01);
    EXPECT_EQ(d.level.flashTimer, 0.0);
    EXPECT_EQ(d.level.flashingPad, static_cast<int>(ref() & 3u));
    EXPECT_EQ(d.rng, ref);
}

TEST(AntiSimonStation, EverySecondTheFlashMovesOnceWithOneRawDrawAndNoSound) {
    Driver<AntiSimonLevel> d(kSeed, 14);
    Rng ref(kSeed);
    ref();
    // The beat is 54 or 55 frames, so each second of play holds one move.
    for (int beat = 0; beat < 6; ++beat) {
        d.holdFor(1.0);
        EXPECT_EQ(d.level.flashingPad, static_cast<int>(ref() & 3u)) << beat;
        EXPECT_EQ(d.rng, ref) << beat;
    }
    EXPECT_EQ(d.rng, test::engineAfter(kSeed, 7));
    EXPECT_EQ(d.sounds, Sounds{});
}

TEST(AntiSimonStation, ClickingTheFlashingPadFiresWithOnlyTheFailSound) {
    Driver<AntiSimonLevel> d(kSeed, 14);
    EXPECT_EQ(pressPad(d, d.level.flashingPad), LevelResult::Failed);
    EXPECT_EQ(d.sounds, Sounds{"fail"});
}

TEST(AntiSimonStation, ASafePadClicks) {
    Driver<AntiSimonLevel> d(kSeed, 14);
    EXPECT_EQ(pressPad(d, (d.level.flashingPad + 1) % 4), LevelResult::Running);
    EXPECT_EQ(d.sounds, Sounds{"click"});
}

TEST(AntiSimonStation, TheSamePadClickedTwiceCountsOnceAndClicksOnce) {
    Driver<AntiSimonLevel> d(kSeed, 14);
    const int f = d.level.flashingPad;
    const int a = (f + 1) % 4;
    const int b = (f + 2) % 4;
    EXPECT_EQ(pressPad(d, a), LevelResult::Running);
    const std::size_t before = d.sounds.size();
    EXPECT_EQ(pressPad(d, a), LevelResult::Running);
    EXPECT_EQ(d.soundsSince(before), Sounds{});
    EXPECT_EQ(pressPad(d, b), LevelResult::Running);
    EXPECT_EQ(padsTickedOff(d.level), 2);
    EXPECT_EQ(d.sounds, (Sounds{"click", "click"}));
}

TEST(AntiSimonStation, ThreeDistinctSafePadsSolveEvenIfTheFourthWasNeverFlashing) {
    Driver<AntiSimonLevel> d(kSeed, 14);
    d.level.flashingPad = 3;
    EXPECT_EQ(pressPad(d, 0), LevelResult::Running);
    EXPECT_EQ(pressPad(d, 1), LevelResult::Running);
    d.level.flashingPad = 1;   // the flash lands on a pad already ticked off
    const std::size_t before = d.sounds.size();
    EXPECT_EQ(pressPad(d, 2), LevelResult::Solved);
    EXPECT_EQ(d.soundsSince(before), (Sounds{"click", "pass"}));
    EXPECT_FALSE(d.level.done[3]);
}

TEST(AntiSimonStation, APadAlreadyTickedOffIsDeadlyWhenItFlashes) {
    Driver<AntiSimonLevel> d(kSeed, 14);
    d.level.flashingPad = 3;
    ASSERT_EQ(pressPad(d, 0), LevelResult::Running);
    d.level.flashingPad = 0;
    const std::size_t before = d.sounds.size();
    EXPECT_EQ(pressPad(d, 0), LevelResult::Failed);
    EXPECT_EQ(d.soundsSince(before), Sounds{"fail"});
}

TEST(AntiSimonStation, PressesOffThePadsDoNothing) {
    Driver<AntiSimonLevel> d(kSeed, 14);
    EXPECT_EQ(d.click(kPlayCentreX, kPlayTop + 60), LevelResult::Running);    // above the pads
    EXPECT_EQ(d.click(kPlayCentreX, kPlayTop + 210), LevelResult::Running);   // the gutter
    EXPECT_EQ(padsTickedOff(d.level), 0);
    EXPECT_EQ(d.sounds, Sounds{});
}

TEST(AntiSimonStation, FlashingRedDoneGreenOthersBronze) {
    Driver<AntiSimonLevel> d(kSeed, 14);
    d.level.flashingPad = 1;
    d.level.done[2] = true;
    test::SoftwareCanvas canvas;
    canvas.fill(ink::black);
    d.level.render(canvas.graphics);
    const auto corner = [&](int p) {
        return canvas.pixel(d.level.pads[p].x + 15, d.level.pads[p].y + 15);
    };
    EXPECT_EQ(corner(1), ink::alarmRed);
    EXPECT_EQ(corner(2), ink::darkGreen);
    EXPECT_EQ(corner(0), ink::bronze);
    EXPECT_EQ(corner(3), ink::bronze);
}

TEST(AntiSimonStation, TheFlashingPadSaysAvoidAndADonePadSaysOk) {
    Driver<AntiSimonLevel> d(kSeed, 14);
    d.level.flashingPad = 1;
    d.level.done[2] = true;
    memory::Picture shot(d.level);
    const Rect& flashing = d.level.pads[1];
    const Rect& done = d.level.pads[2];
    EXPECT_TRUE(memory::showsText(shot.canvas, padInside(flashing), ink::alarmRed, "AVOID",
                                  flashing.x + 75, flashing.y + 75, TextSize::Normal, ink::ink,
                                  true, true));
    EXPECT_TRUE(memory::showsText(shot.canvas, padInside(done), ink::darkGreen, "OK", done.x + 75,
                                  done.y + 75, TextSize::Normal, ink::ink, true, true));
    EXPECT_EQ(test::pixelsOtherThan(shot.canvas, padInside(d.level.pads[0]), ink::bronze), 0);
    EXPECT_EQ(test::pixelsOtherThan(shot.canvas, padInside(d.level.pads[3]), ink::bronze), 0);
    EXPECT_EQ(test::playAreaNoteUnlike(shot.canvas, test::kPlayAreaNoteBand,
                                 "CLICK ALL PADS EXCEPT THE FLASHING ONE"), 0);
}

TEST(AntiSimonStation, ADonePadThatFlashesSaysAvoid) {
    Driver<AntiSimonLevel> d(kSeed, 14);
    d.level.done[0] = true;
    d.level.flashingPad = 0;
    memory::Picture shot(d.level);
    const Rect& pad = d.level.pads[0];
    EXPECT_TRUE(memory::showsText(shot.canvas, padInside(pad), ink::alarmRed, "AVOID", pad.x + 75,
                                  pad.y + 75, TextSize::Normal, ink::ink, true, true));
}

// Played by a hand, as in the run: the flash holds still for its first 0.9 s,
// long enough to reach it.
TEST(AntiSimonStation, AHandOnTheFlashingPadIsFiredWithTheFailSound) {
    test::StationDriver bench(test::shippedRecord("antisimon"), 11);
    const auto& level = dynamic_cast<const AntiSimonLevel&>(*bench.station);
    const Rect& flashing = level.pads[level.flashingPad];
    memory::ClickWhenReady hand;
    hand.x = test::centreX(flashing);
    hand.y = test::centreY(flashing);
    EXPECT_EQ(bench.play(hand, 10.0).result, LevelResult::Failed);
    EXPECT_TRUE(bench.lastSoundWasFail());
}

}  // namespace
}  // namespace vorn
