// The agreement ("eula"): eighteen lines of small print scroll up through a
// box and loop; I AGREE fires the player, and the way out is the one green
// line, which answers a click only while it is inside its band. Covers the
// layout and the seed's draw, the scroll speed and its wrap, where the way
// out answers and where it is deaf, the sounds, and what the box shows.
//
// Positions, worked once: the play area's top is 190 and its left 263. Line
// i starts at 190 + 30 + 22 i - scroll; a line that starts above the box's
// top (190 + 20 = 210) is drawn one loop (18 x 22 = 396 pixels) lower, and
// only lines starting from 210 to 210 + 340 = 550, both included, are drawn. The way out answers only while its line
// is below 220 and above 560, from x 293 to 652, from 2 pixels above the
// line to 19 below it.

#include "stations/paperwork/paperwork_fixtures.h"
#include "support/draws_by_hand.h"

#include <gtest/gtest.h>

#include <cstdint>
#include <tuple>
#include <utility>

namespace vorn::test::paperwork {
namespace {

constexpr const char* kSmallPrint = "the party of the first part shall hereby...";
constexpr const char* kWayOut = "> by clicking HERE you may leave <";
constexpr int kTextX = kPlayLeft + 30;   // where every line starts
// A line of small print fills 22 rows from its y, its descenders included,
// right down to where the next line starts.
constexpr int kLineDepth = 22;

// Puts the way out on line 6 (30 + 6 x 22 = 162 pixels below the play
// area's top, unscrolled) and scrolls the text so it is drawn `offset`
// pixels below the top.
void scrollWayOutTo(EulaLevel& level, double offset) {
    level.exitLine = 6;
    double scroll = 162.0 - offset;
    if (scroll < 0.0) {
        scroll += EulaLevel::kLoopLength;
    }
    level.scroll = scroll;
}

// The same, a frame early: the frame that carries the next press first
// scrolls the text on by speed / 60, then judges the press with the line
// half a pixel under `offset`, which the game truncates to `offset`.
void wayOutNextFrameAt(EulaLevel& level, int offset) {
    scrollWayOutTo(level, offset + 0.5 + level.speed * StationDriver::kFrame);
}

// The strip a line's text is checked in, left of the button's column: its
// first 18 rows, clear of the underline.
Rect lineStrip(const EulaLevel& level, int y) {
    return Rect{kPlayLeft, y, level.agreeButton.x - kPlayLeft, 18};
}

void expectSmallPrintAt(const Shot& shot, const EulaLevel& level, int y) {
    EXPECT_EQ(shot.unlikeText(lineStrip(level, y), station_ink::black, kSmallPrint, kTextX, y,
                              TextSize::Small, station_ink::greyedOut, false, false),
              0)
        << "small print at " << y;
}

void expectWayOutAt(const Shot& shot, const EulaLevel& level, int y) {
    EXPECT_EQ(shot.unlikeText(lineStrip(level, y), station_ink::black, kWayOut, kTextX, y,
                              TextSize::Small, station_ink::terminalGreen, false, false),
              0)
        << "way out at " << y;
}

// Nothing at all drawn in rows y0..y1 - 1 left of the button.
void expectNoTextIn(const Shot& shot, const EulaLevel& level, int y0, int y1) {
    const Rect left{kPlayLeft, y0, level.agreeButton.x - kPlayLeft, y1 - y0};
    EXPECT_EQ(pixelsOtherThan(shot.canvas, left, station_ink::black), 0) << "rows " << y0 << ".." << y1 - 1;
}

TEST(EulaStation, TheWayOutIsThreeLowBitsOfOneDrawPlusSixAndTheButtonSitsAtTheFoot) {
    for (std::uint32_t seed : {1u, 2u, 3u, 77u, 5489u}) {
        Driver<EulaLevel> d(seed);
        EXPECT_EQ(d.level.exitLine, static_cast<int>(engineAfter(seed, 0)() & 7u) + 6) << seed;
        EXPECT_EQ(d.rng, engineAfter(seed, 1)) << seed;
    }
    Driver<EulaLevel> d;
    EXPECT_DOUBLE_EQ(d.level.scroll, 0.0);
    EXPECT_EQ(d.level.lineCount, 18);
    EXPECT_EQ(d.level.viewHeight, 340);   // the play area's 430 less 90
    EXPECT_EQ(d.level.agreeButton.x, kPlayCentreX - 90);
    EXPECT_EQ(d.level.agreeButton.y, kPlayBottom - 54);
    EXPECT_EQ(d.level.agreeButton.w, 180);
    EXPECT_EQ(d.level.agreeButton.h, 40);
}

TEST(EulaStation, FromStationTwentyFiveTheSmallPrintScrollsAtFortyTwoInsteadOfTwentySix) {
    Driver<EulaLevel> early(1, 24);
    Driver<EulaLevel> late(1, 25);
    EXPECT_DOUBLE_EQ(early.level.speed, 26.0);
    EXPECT_DOUBLE_EQ(late.level.speed, 42.0);
    early.holdFor(1.0);
    late.holdFor(1.0);
    EXPECT_NEAR(early.level.scroll, 26.0, 1e-9);
    EXPECT_NEAR(late.level.scroll, 42.0, 1e-9);
}

TEST(EulaStation, TheScrollWrapsOnlyOncePastOneWholeLoop) {
    // At 42 pixels a second a frame scrolls 0.7: from 395.8 to 396.5, which
    // is 0.5 into the next loop.
    Driver<EulaLevel> d(1, 25);
    d.level.scroll = 395.8;
    d.idle();
    EXPECT_NEAR(d.level.scroll, 0.5, 1e-9);
    // A frame that ends exactly on 396 is not wrapped yet.
    Driver<EulaLevel> exact(1, 25);
    const double start = 396.0 - exact.level.speed * StationDriver::kFrame;
    ASSERT_EQ(start + exact.level.speed * StationDriver::kFrame, 396.0);
    exact.level.scroll = start;
    exact.idle();
    EXPECT_EQ(exact.level.scroll, 396.0);
}

TEST(EulaStation, TheWayOutPassesWithThePassSoundAnywhereInsideItsBand) {
    for (int offset : {31, 150, 316, 360, 369}) {
        Driver<EulaLevel> d;
        wayOutNextFrameAt(d.level, offset);
        EXPECT_EQ(d.press(kPlayLeft + 100, kPlayTop + offset + 5), LevelResult::Solved) << offset;
        EXPECT_EQ(d.sounds, Sounds{"pass"}) << offset;
    }
}

TEST(EulaStation, TheWayOutDrawnAtTheVeryTopOfTheBoxIsDeafToAClick) {
    // Drawn at 210 to 220, underlined and all, but its band starts below 220.
    for (int offset : {20, 25, 30}) {
        Driver<EulaLevel> d;
        scrollWayOutTo(d.level, offset);
        const Shot shot(d.level);
        EXPECT_EQ(shot.at(kPlayLeft + 200, kPlayTop + offset + 18), station_ink::midGreen) << offset;
        wayOutNextFrameAt(d.level, offset);
        EXPECT_EQ(d.click(kPlayLeft + 100, kPlayTop + offset + 5), LevelResult::Running) << offset;
        EXPECT_EQ(d.sounds, Sounds{}) << offset;
    }
    // Just past the foot of the band (560) it is deaf too.
    Driver<EulaLevel> d;
    wayOutNextFrameAt(d.level, 370);
    EXPECT_EQ(d.click(kPlayLeft + 100, kPlayTop + 375), LevelResult::Running);
}

TEST(EulaStation, TheWayOutAnswersOnlyInItsOwnStrip) {
    // Line at 340: it answers from x 293 to 652 and from y 338 to 359.
    const int ly = kPlayTop + 150;
    Driver<EulaLevel> d;
    for (const auto& [x, y] : {std::pair{kPlayLeft + 29, ly + 5}, std::pair{kPlayLeft + 390, ly + 5},
                               std::pair{kPlayLeft + 100, ly - 3}, std::pair{kPlayLeft + 100, ly + 20}}) {
        wayOutNextFrameAt(d.level, 150);
        EXPECT_EQ(d.click(x, y), LevelResult::Running) << x << "," << y;
    }
    EXPECT_EQ(d.sounds, Sounds{});
    wayOutNextFrameAt(d.level, 150);
    EXPECT_EQ(d.click(kPlayLeft + 389, ly + 19), LevelResult::Solved);
    Driver<EulaLevel> corner;
    wayOutNextFrameAt(corner.level, 150);
    EXPECT_EQ(corner.click(kPlayLeft + 30, ly - 2), LevelResult::Solved);
}

TEST(EulaStation, TheTextScrollsOnTheClickFrameBeforeTheClickIsJudged) {
    // The way out drawn at 221 answers a click if it is still there once the
    // click's frame has scrolled it; from exactly 221 that frame moves it
    // 0.43 pixels up, onto the deaf 220, and the click goes unheard.
    Driver<EulaLevel> late;
    scrollWayOutTo(late.level, 31);
    EXPECT_EQ(late.click(kPlayLeft + 100, kPlayTop + 36), LevelResult::Running);
    EXPECT_EQ(late.sounds, Sounds{});
    Driver<EulaLevel> inTime;
    wayOutNextFrameAt(inTime.level, 31);
    EXPECT_EQ(inTime.click(kPlayLeft + 100, kPlayTop + 36), LevelResult::Solved);
}

TEST(EulaStation, AgreeingFailsWithTheFailSoundAlone) {
    Driver<EulaLevel> d;
    EXPECT_EQ(d.clickCentre(d.level.agreeButton), LevelResult::Failed);
    EXPECT_EQ(d.sounds, Sounds{"fail"});
}

TEST(EulaStation, TheAgreeButtonsRightAndBottomEdgesAreOutsideIt) {
    Driver<EulaLevel> d;
    const Rect& b = d.level.agreeButton;
    EXPECT_EQ(d.click(b.x + b.w, b.y + 14), LevelResult::Running);
    EXPECT_EQ(d.click(b.x + b.w / 2, b.y + b.h), LevelResult::Running);
    EXPECT_EQ(d.click(b.x - 1, b.y + 14), LevelResult::Running);
    EXPECT_EQ(d.sounds, Sounds{});
    EXPECT_EQ(d.click(b.x, b.y), LevelResult::Failed);
    EXPECT_EQ(d.sounds, Sounds{"fail"});
}

TEST(EulaStation, OnlyAPressCountsNotAButtonHeldOverTheWayOutOrTheButton) {
    Driver<EulaLevel> d;
    scrollWayOutTo(d.level, 150);
    slideOntoWithoutPressing(d, kPlayLeft + 100, kPlayTop + 155);
    slideOntoWithoutPressing(d, centreX(d.level.agreeButton), centreY(d.level.agreeButton));
}

TEST(EulaStation, ScrollingAndClicksOnTheSmallPrintMakeNoSound) {
    Driver<EulaLevel> d;
    EXPECT_EQ(d.holdFor(15.0), LevelResult::Running);   // round the loop and then some
    // Beside the way out, on an ordinary line, on the floor beside the
    // button, and on the way out while it is deaf at the top.
    for (const auto& [x, y, offset] : {std::tuple{kPlayLeft + 395, kPlayTop + 155, 150},
                                       std::tuple{kPlayLeft + 100, kPlayTop + 100, 150},
                                       std::tuple{kPlayLeft + 37, kPlayBottom - 30, 150},
                                       std::tuple{kPlayLeft + 100, kPlayTop + 30, 25}}) {
        wayOutNextFrameAt(d.level, offset);
        EXPECT_EQ(d.click(x, y), LevelResult::Running) << x << "," << y;
    }
    EXPECT_EQ(d.sounds, Sounds{});
}

// ---------------------------------------------------------------------------
// What the box shows

TEST(EulaStation, UnscrolledSeed5489ShowsSixteenLinesWithTheWayOutEleventh) {
    // Seed 5489's first draw, 3499211612, ends in binary ...100: the way out
    // is line 4 + 6 = 10. Line i sits at 220 + 22 i: lines 0 to 15 show, the
    // last on the box's foot at 550, and line 16 at 572 does not.
    Driver<EulaLevel> d;
    ASSERT_EQ(d.level.exitLine, 10);
    const Shot shot(d.level);
    for (int i = 0; i < 16; ++i) {
        if (i == 10) {
            expectWayOutAt(shot, d.level, 220 + 22 * i);
        } else {
            expectSmallPrintAt(shot, d.level, 220 + 22 * i);
        }
    }
    expectNoTextIn(shot, d.level, 550 + kLineDepth, kPlayBottom);
}

TEST(EulaStation, TheWayOutIsUnderlinedFromItsStartToThreeHundredAndThirtyPixelsOn) {
    // At 440 (line 10, unscrolled), the underline 18 lower, x 293 to 623.
    Driver<EulaLevel> d;
    const Shot shot(d.level);
    EXPECT_EQ(shot.at(kTextX, 458), station_ink::midGreen);
    EXPECT_EQ(shot.at(kTextX + 330, 458), station_ink::midGreen);
    EXPECT_EQ(shot.at(kTextX - 1, 458), station_ink::black);
    EXPECT_EQ(shot.at(kTextX + 335, 458), station_ink::black);
    // Ordinary lines have none.
    EXPECT_EQ(shot.at(kTextX + 330, 436), station_ink::black);
}

TEST(EulaStation, LinesScrolledAboveTheBoxComeBackAtItsFootOrNotAtAll) {
    // Scrolled by 100, line i sits at 120 + 22 i. Lines 0 and 1 (120, 142)
    // come back 396 lower at 516 and 538; lines 2 to 4 would come back at
    // 560, 582 and 604, past the foot, and are not drawn; lines 5 to 17 show
    // from 230 on, the way out (10) at 340.
    Driver<EulaLevel> d;
    d.level.scroll = 100.0;
    const Shot shot(d.level);
    expectNoTextIn(shot, d.level, kPlayTop, 230);
    for (int i = 5; i < 18; ++i) {
        if (i == 10) {
            expectWayOutAt(shot, d.level, 120 + 22 * i);
        } else {
            expectSmallPrintAt(shot, d.level, 120 + 22 * i);
        }
    }
    expectSmallPrintAt(shot, d.level, 516);
    expectSmallPrintAt(shot, d.level, 538);
    expectNoTextIn(shot, d.level, 538 + kLineDepth, kPlayBottom);
}

TEST(EulaStation, ALineOnTheBoxsTopEdgeIsDrawnAndOneJustAboveItIsNot) {
    // Scrolled by 10, line 0 sits exactly on the top edge (210) and shows;
    // line 16 at 562 does not.
    Driver<EulaLevel> d;
    d.level.scroll = 10.0;
    const Shot onEdge(d.level);
    expectNoTextIn(onEdge, d.level, kPlayTop, 210);
    expectSmallPrintAt(onEdge, d.level, 210);
    expectSmallPrintAt(onEdge, d.level, 540);
    expectNoTextIn(onEdge, d.level, 540 + kLineDepth, kPlayBottom);
    // Scrolled by 30, line 0 sits at 190, above the box, and would come back
    // at 586, below it: it is drawn nowhere. Line 1 is the first, at 212.
    d.level.scroll = 30.0;
    const Shot above(d.level);
    expectNoTextIn(above, d.level, kPlayTop, 212);
    expectSmallPrintAt(above, d.level, 212);
    expectNoTextIn(above, d.level, 542 + kLineDepth, kPlayBottom);
}

TEST(EulaStation, TheButtonIsAPaleGoldPlateThatSaysIAgree) {
    Driver<EulaLevel> d;
    const Shot shot(d.level);
    const Rect& b = d.level.agreeButton;
    EXPECT_EQ(shot.at(b.x + 8, b.y + b.h / 2), station_ink::paleGold);
    EXPECT_EQ(shot.at(b.x + b.w - 8, b.y + 10), station_ink::paleGold);
    // Rounded by 8: its very corner is left bare.
    EXPECT_EQ(shot.at(b.x, b.y), station_ink::black);
    EXPECT_EQ(shot.unlikeText(Rect{b.x + 8, b.y, b.w - 16, b.h}, station_ink::paleGold, "I AGREE",
                              b.x + b.w / 2, b.y + b.h / 2, TextSize::Normal, station_ink::ink, true, true),
              0);
}

// ---------------------------------------------------------------------------
// Played by a hand

TEST(EulaStation, AHandThatClicksIAgreeIsFired) {
    StationDriver d(shippedRecord("eula"), 4);
    Clicker agree = clickerOn(dynamic_cast<const EulaLevel&>(*d.station).agreeButton);
    EXPECT_EQ(d.play(agree, 10.0).result, LevelResult::Failed);
    EXPECT_TRUE(d.lastSoundWasFail());
}

}  // namespace
}  // namespace vorn::test::paperwork
