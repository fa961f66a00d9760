// The stamp pads ("stamp"): a known fraud's application and two pads. The
// friendly green APPROVED fires the player; the red REJECTED passes. One draw
// decides which pad is on which side. Covers that draw and the layout, the
// verdicts and their sounds on either side, presses beside the pads or
// without a fresh press (they do nothing), and what the pads show.
//
// Positions, worked once: both pads are 180 x 140 at y 405 - 70 = 335; the
// left one centred a quarter of the way across the play area (x 263 + 210 -
// 90 = 383), the right one three quarters (x 263 + 630 - 90 = 803).

#include "stations/paperwork/paperwork_fixtures.h"
#include "support/draws_by_hand.h"

#include <gtest/gtest.h>

#include <cstdint>
#include <utility>

namespace vorn::test::paperwork {
namespace {

// The first seed whose first draw has its top bit as asked.
std::uint32_t seedWithTopBit(bool set) {
    std::uint32_t seed = 1;
    while (((engineAfter(seed, 0)() >> 31) != 0u) != set) {
        ++seed;
    }
    return seed;
}

TEST(StampStation, TheTopBitOfOneDrawPutsRejectedOnTheLeft) {
    for (bool set : {false, true}) {
        const std::uint32_t seed = seedWithTopBit(set);
        Driver<StampLevel> d(seed);
        EXPECT_EQ(d.level.swapped, set);
        EXPECT_EQ(d.rng, engineAfter(seed, 1));
        EXPECT_EQ(&d.level.rejectedPad(), set ? &d.level.leftPad : &d.level.rightPad);
    }
    // Seed 5489's first draw, 3499211612, has it set; seed 1's, 1791095845,
    // is below 2^31.
    EXPECT_TRUE(Driver<StampLevel>(5489).level.swapped);
    EXPECT_FALSE(Driver<StampLevel>(1).level.swapped);
}

TEST(StampStation, TwoPadsSideBySideAcrossTheMiddle) {
    Driver<StampLevel> d;
    EXPECT_EQ(d.level.leftPad.x, kPlayLeft + 210 - 90);
    EXPECT_EQ(d.level.rightPad.x, kPlayLeft + 630 - 90);
    for (const Rect* pad : {&d.level.leftPad, &d.level.rightPad}) {
        EXPECT_EQ(pad->y, kPlayCentreY - 70);
        EXPECT_EQ(pad->w, 180);
        EXPECT_EQ(pad->h, 140);
    }
}

TEST(StampStation, RejectedPassesWithThePassSoundAloneOnEitherSide) {
    for (bool set : {false, true}) {
        Driver<StampLevel> d(seedWithTopBit(set));
        EXPECT_EQ(d.clickCentre(set ? d.level.leftPad : d.level.rightPad), LevelResult::Solved) << set;
        EXPECT_EQ(d.sounds, Sounds{"pass"}) << set;
    }
}

TEST(StampStation, ApprovedFailsWithTheFailSoundAloneOnEitherSide) {
    for (bool set : {false, true}) {
        Driver<StampLevel> d(seedWithTopBit(set));
        EXPECT_EQ(d.clickCentre(set ? d.level.rightPad : d.level.leftPad), LevelResult::Failed) << set;
        EXPECT_EQ(d.sounds, Sounds{"fail"}) << set;
    }
}

TEST(StampStation, ClicksBesideThePadsMakeNoSound) {
    // Between the pads, the pads' right, left and bottom edges.
    Driver<StampLevel> d;
    const Rect& l = d.level.leftPad;
    const Rect& r = d.level.rightPad;
    EXPECT_EQ(d.clicksNoticed({{kPlayCentreX, kPlayCentreY}, {l.x + l.w, l.y + 70}, {r.x + r.w, r.y + 70},
                               {l.x + 90, l.y + l.h}, {r.x + 90, r.y - 1}, {l.x - 1, l.y + 65}}), "");
}

TEST(StampStation, OnlyAPressCountsNotAButtonHeldOverAPad) {
    Driver<StampLevel> d;
    slideOntoWithoutPressing(d, centreX(d.level.leftPad), centreY(d.level.leftPad));
    slideOntoWithoutPressing(d, centreX(d.level.rightPad), centreY(d.level.rightPad));
}

// ---------------------------------------------------------------------------
// What the pads show

// A pad of this colour, rounded by 8, with its word in dark ink at its centre.
void expectPad(const Shot& shot, const Rect& pad, Color colour, const char* word) {
    EXPECT_EQ(shot.at(pad.x + 10, pad.y + 10), colour) << word;
    EXPECT_EQ(shot.at(pad.x + pad.w - 1, pad.y + pad.h / 2), colour) << word;
    EXPECT_EQ(shot.at(pad.x, pad.y), station_ink::black) << word;
    EXPECT_EQ(shot.unlikeText(Rect{pad.x + 8, pad.y, pad.w - 16, pad.h}, colour, word, pad.x + pad.w / 2,
                              pad.y + pad.h / 2, TextSize::Normal, station_ink::ink, true, true),
              0)
        << word;
}

TEST(StampStation, Seed5489PutsADarkRedRejectedLeftOfADarkGreenApproved) {
    Driver<StampLevel> d;
    const Shot shot(d.level);
    expectPad(shot, d.level.leftPad, paper_ink::rejectedPad, "REJECTED");
    expectPad(shot, d.level.rightPad, paper_ink::approvedPad, "APPROVED");
}

TEST(StampStation, Seed1PutsApprovedOnTheLeftAndRejectedOnTheRight) {
    Driver<StampLevel> d(1);
    const Shot shot(d.level);
    expectPad(shot, d.level.leftPad, paper_ink::approvedPad, "APPROVED");
    expectPad(shot, d.level.rightPad, paper_ink::rejectedPad, "REJECTED");
}

TEST(StampStation, ThePadsAreAllThereIsNoRuleIsWritten) {
    // The catalogue's orders say the applicant is a fraud; the play area
    // shows nothing but the two pads.
    Driver<StampLevel> d;
    const Shot shot(d.level);
    int outside = 0;
    for (int y = kPlayTop; y < kPlayBottom; ++y) {
        for (int x = kPlayLeft; x < kPlayRight; ++x) {
            const bool onPad = contains(plateReach(d.level.leftPad), x, y) ||
                               contains(plateReach(d.level.rightPad), x, y);
            outside += !onPad && shot.at(x, y) != station_ink::black ? 1 : 0;
        }
    }
    EXPECT_EQ(outside, 0);
}

// ---------------------------------------------------------------------------
// Played by a hand

TEST(StampStation, AHandThatStampsApprovedIsFired) {
    StationDriver d(shippedRecord("stamp"), 4);
    Clicker approve = clickerOn(dynamic_cast<const StampLevel&>(*d.station).approvedPad());
    EXPECT_EQ(d.play(approve, 10.0).result, LevelResult::Failed);
    EXPECT_TRUE(d.lastSoundWasFail());
}

}  // namespace
}  // namespace vorn::test::paperwork
