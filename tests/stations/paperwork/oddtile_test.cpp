// The odd tile ("oddtile", and the station the factory makes for any type
// it does not know): six blank tiles in two rows of three, one a shade
// lighter. The lighter one passes; any other fires the player. Covers the
// layout and the one draw that picks the odd tile, the verdicts and their
// sounds, presses between the tiles or without a fresh press (they do
// nothing), and how the odd tile is told apart: by its shade alone.
//
// Positions, worked once: tile i is 150 x 110 at x 683 - 249 + 174 (i % 3)
// (434, 608, 782) and y 190 + 20 + 134 (i / 3) (210, 344).

#include "stations/paperwork/paperwork_fixtures.h"
#include "support/draws_by_hand.h"

#include <gtest/gtest.h>

#include <cstdint>
#include <utility>

namespace vorn::test::paperwork {
namespace {

TEST(GenericStation, SixTilesInTwoRowsOfThreeAroundTheCentre) {
    Driver<GenericLevel> d;
    EXPECT_EQ(d.level.count, 6);
    for (int i = 0; i < 6; ++i) {
        EXPECT_EQ(d.level.boxes[i].x, kPlayCentreX - 249 + 174 * (i % 3)) << i;
        EXPECT_EQ(d.level.boxes[i].y, kPlayTop + 20 + 134 * (i / 3)) << i;
        EXPECT_EQ(d.level.boxes[i].w, 150) << i;
        EXPECT_EQ(d.level.boxes[i].h, 110) << i;
    }
}

TEST(GenericStation, TheOddTileIsAUniformDrawOfZeroToFive) {
    for (std::uint32_t seed : {1u, 2u, 3u, 5489u}) {
        Driver<GenericLevel> d(seed);
        Rng ref(seed);
        EXPECT_EQ(d.level.answer, uniformBelowByHand(ref, 6)) << seed;
        EXPECT_EQ(d.rng, ref) << seed;
    }
    // Seed 5489: 3499211612 x 6 >> 32 = 4, the middle of the second row.
    EXPECT_EQ(Driver<GenericLevel>().level.answer, 4);
}

TEST(GenericStation, TheOddTilePassesWithThePassSoundAloneEvenOnItsCorner) {
    Driver<GenericLevel> d;
    const Rect& odd = d.level.boxes[4];
    EXPECT_EQ(d.click(odd.x, odd.y), LevelResult::Solved);
    EXPECT_EQ(d.sounds, Sounds{"pass"});
}

TEST(GenericStation, EveryOtherTileFailsWithTheFailSoundAlone) {
    for (int i : {0, 1, 2, 3, 5}) {
        Driver<GenericLevel> d;
        EXPECT_EQ(d.clickCentre(d.level.boxes[i]), LevelResult::Failed) << i;
        EXPECT_EQ(d.sounds, Sounds{"fail"}) << i;
    }
    Driver<GenericLevel> d;
    const Rect& plain = d.level.boxes[5];
    EXPECT_EQ(d.click(plain.x + plain.w - 1, plain.y + plain.h - 1), LevelResult::Failed);
}

TEST(GenericStation, ClicksBetweenTilesMakeNoSound) {
    // The gaps between tiles, their right, left and bottom edges.
    Driver<GenericLevel> d;
    const Rect& first = d.level.boxes[0];
    const Rect& last = d.level.boxes[5];
    EXPECT_EQ(d.clicksNoticed({{first.x + first.w, first.y + 50}, {first.x + 173, first.y + 50},
                               {last.x + last.w, first.y + 50}, {first.x + 66, first.y + first.h},
                               {first.x + 66, first.y + 133}, {first.x - 1, first.y + 50},
                               {kPlayCentreX, last.y + last.h}}), "");
}

TEST(GenericStation, PointingAtTheOddTileWithoutPressingDoesNothing) {
    Driver<GenericLevel> d;
    const Rect& odd = d.level.boxes[4];
    EXPECT_EQ(d.moveTo(odd.x + 5, odd.y + 5), LevelResult::Running);
    EXPECT_EQ(d.idle(3), LevelResult::Running);
    EXPECT_EQ(d.sounds, Sounds{});
}

TEST(GenericStation, OnlyAPressCountsNotAButtonHeldOverATile) {
    Driver<GenericLevel> d;
    slideOntoWithoutPressing(d, centreX(d.level.boxes[4]), centreY(d.level.boxes[4]));   // the odd one
    slideOntoWithoutPressing(d, centreX(d.level.boxes[0]), centreY(d.level.boxes[0]));
}

// ---------------------------------------------------------------------------
// What the tiles show

TEST(GenericStation, TheOddTileIsToldOnlyByItsShade) {
    // Every tile is a rim 6 pixels wide, rounded by 8, round a plain face:
    // bolt brass round dark ink, but the odd tile (4 for seed 5489) a lighter
    // brass round the green of a screen. No tile carries a word or a mark.
    Driver<GenericLevel> d;
    const Shot shot(d.level);
    for (int i = 0; i < 6; ++i) {
        const Rect& b = d.level.boxes[i];
        const bool odd = i == 4;
        const Color rim = odd ? paper_ink::oddTileRim : station_ink::boltBrass;
        const Color face = odd ? station_ink::greenScreen : station_ink::ink;
        EXPECT_EQ(shot.at(b.x + 3, b.y + b.h / 2), rim) << i;
        EXPECT_EQ(shot.at(b.x + 5, b.y + b.h / 2), rim) << i;
        EXPECT_EQ(shot.at(b.x + b.w / 2, b.y + b.h - 6), rim) << i;
        EXPECT_EQ(shot.at(b.x, b.y), station_ink::black) << i;
        EXPECT_EQ(pixelsOtherThan(shot.canvas, Rect{b.x + 6, b.y + 6, b.w - 12, b.h - 12}, face), 0) << i;
    }
}

TEST(GenericStation, NothingIsDrawnBesideTheTiles) {
    Driver<GenericLevel> d;
    const Shot shot(d.level);
    int outside = 0;
    for (int y = kPlayTop; y < kPlayBottom; ++y) {
        for (int x = kPlayLeft; x < kPlayRight; ++x) {
            bool onTile = false;
            for (const Rect& b : d.level.boxes) {
                onTile = onTile || contains(plateReach(b), x, y);
            }
            outside += !onTile && shot.at(x, y) != station_ink::black ? 1 : 0;
        }
    }
    EXPECT_EQ(outside, 0);
}

}  // namespace
}  // namespace vorn::test::paperwork
