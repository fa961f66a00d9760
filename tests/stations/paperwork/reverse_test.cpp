// The backwards conveyor ("reverse"): a knob on a track, a green mark near
// one end, and two buttons wired the wrong way round ("<< LEFT" pushes the
// knob right). Each press clicks and moves the knob 0.08 of the track; with
// the knob within 0.04 of the mark the station passes. It cannot be failed,
// only run out of time on. Covers the mark's draw and the layout, the steps,
// the clamps at the ends, the window round the mark, the sounds, presses
// off the buttons or without a fresh press, and what the conveyor shows.
//
// Positions, worked once: the track is {263 + 60, 405 - 10, 720, 20}; a
// spot p along it is x 323 + 720 p, truncated. The buttons are 140 x 44 at
// y 620 - 60 = 560, from x 683 - 170 = 513 and 683 + 30 = 713.

#include "stations/paperwork/paperwork_fixtures.h"
#include "support/draws_by_hand.h"

#include <gtest/gtest.h>

#include <cstdint>
#include <utility>

namespace vorn::test::paperwork {
namespace {

TEST(ReverseStation, TheMarkIsOneDrawsLowBitAndTheLayoutIsFixed) {
    for (std::uint32_t seed : {1u, 2u, 3u, 4u, 5489u}) {
        Driver<ReverseLevel> d(seed);
        EXPECT_DOUBLE_EQ(d.level.target, (engineAfter(seed, 0)() & 1u) == 1u ? 0.12 : 0.88) << seed;
        EXPECT_EQ(d.rng, engineAfter(seed, 1)) << seed;
    }
    Driver<ReverseLevel> d;
    EXPECT_DOUBLE_EQ(d.level.position, 0.5);
    EXPECT_EQ(d.level.leftButton.x, kPlayCentreX - 170);
    EXPECT_EQ(d.level.rightButton.x, kPlayCentreX + 30);
    for (const Rect* b : {&d.level.leftButton, &d.level.rightButton}) {
        EXPECT_EQ(b->y, kPlayBottom - 60);
        EXPECT_EQ(b->w, 140);
        EXPECT_EQ(b->h, 44);
    }
    EXPECT_EQ(d.level.track.x, kPlayLeft + 60);
    EXPECT_EQ(d.level.track.y, kPlayCentreY - 10);
    EXPECT_EQ(d.level.track.w, 720);
    EXPECT_EQ(d.level.track.h, 20);
}

TEST(ReverseStation, FivePressesOfLeftReachNinetyHundredthsAndPassForTheRightMark) {
    Driver<ReverseLevel> d;
    d.level.target = 0.88;
    for (int i = 0; i < 4; ++i) {
        EXPECT_EQ(d.clickCentre(d.level.leftButton), LevelResult::Running);
    }
    EXPECT_NEAR(d.level.position, 0.82, 1e-9);
    EXPECT_EQ(d.clickCentre(d.level.leftButton), LevelResult::Solved);
    EXPECT_NEAR(d.level.position, 0.90, 1e-9);
}

TEST(ReverseStation, FivePressesOfRightReachTenHundredthsAndPassForTheLeftMark) {
    Driver<ReverseLevel> d;
    d.level.target = 0.12;
    for (int i = 0; i < 4; ++i) {
        EXPECT_EQ(d.clickCentre(d.level.rightButton), LevelResult::Running);
    }
    EXPECT_EQ(d.clickCentre(d.level.rightButton), LevelResult::Solved);
    EXPECT_NEAR(d.level.position, 0.10, 1e-9);
}

TEST(ReverseStation, AtTheEndsTheKnobClampsAndLaterStepsFallOnOtherValues) {
    Driver<ReverseLevel> d;
    d.level.target = 0.88;
    for (int i = 0; i < 6; ++i) {
        d.clickCentre(d.level.rightButton);
    }
    EXPECT_NEAR(d.level.position, 0.02, 1e-9);
    d.clickCentre(d.level.rightButton);
    EXPECT_DOUBLE_EQ(d.level.position, 0.0);
    // From 0 the steps land on 0.08, 0.16, ... and reach 0.88 itself.
    for (int i = 1; i <= 10; ++i) {
        EXPECT_EQ(d.clickCentre(d.level.leftButton), LevelResult::Running) << i;
        EXPECT_NEAR(d.level.position, 0.08 * i, 1e-9);
    }
    EXPECT_EQ(d.clickCentre(d.level.leftButton), LevelResult::Solved);
    EXPECT_NEAR(d.level.position, 0.88, 1e-9);

    Driver<ReverseLevel> up;
    up.level.target = 0.12;
    for (int i = 0; i < 7; ++i) {
        up.clickCentre(up.level.leftButton);
    }
    EXPECT_DOUBLE_EQ(up.level.position, 1.0);
    up.clickCentre(up.level.rightButton);
    EXPECT_NEAR(up.level.position, 0.92, 1e-9);
}

TEST(ReverseStation, TheButtonThatPointsAtTheMarkMovesTheKnobAwayAndNeverFails) {
    Driver<ReverseLevel> d;
    d.level.target = 0.88;   // the mark is on the right
    for (int i = 0; i < 12; ++i) {
        EXPECT_EQ(d.clickCentre(d.level.rightButton), LevelResult::Running);
    }
    EXPECT_DOUBLE_EQ(d.level.position, 0.0);
    EXPECT_EQ(d.click(kPlayCentreX, kPlayTop + 20), LevelResult::Running);
    EXPECT_DOUBLE_EQ(d.level.position, 0.0);
}

TEST(ReverseStation, EachButtonPressClicksAndTheLastOneAlsoPasses) {
    Driver<ReverseLevel> d;   // seed 5489: 3499211612 is even, the mark at 0.88
    for (int i = 0; i < 4; ++i) {
        EXPECT_EQ(d.clickCentre(d.level.leftButton), LevelResult::Running);
        EXPECT_EQ(d.soundsSince(static_cast<std::size_t>(i)), Sounds{"click"}) << i;
    }
    EXPECT_EQ(d.clickCentre(d.level.rightButton), LevelResult::Running);
    EXPECT_EQ(d.soundsSince(4), Sounds{"click"});
    EXPECT_EQ(d.clickCentre(d.level.leftButton), LevelResult::Running);
    EXPECT_EQ(d.clickCentre(d.level.leftButton), LevelResult::Solved);
    EXPECT_EQ(d.soundsSince(6), (Sounds{"click", "pass"}));
}

TEST(ReverseStation, APressAgainstTheClampStillClicks) {
    Driver<ReverseLevel> d;
    d.level.position = 0.0;
    EXPECT_EQ(d.clickCentre(d.level.rightButton), LevelResult::Running);
    EXPECT_DOUBLE_EQ(d.level.position, 0.0);
    EXPECT_EQ(d.sounds, Sounds{"click"});
}

TEST(ReverseStation, PressesOffTheButtonsMakeNoSoundAndDoNotMoveTheKnob) {
    // The gap between the buttons, their right, left and bottom edges, the
    // knob itself and the track.
    Driver<ReverseLevel> d;
    const Rect& l = d.level.leftButton;
    const Rect& r = d.level.rightButton;
    EXPECT_EQ(d.clicksNoticed({{kPlayCentreX, l.y + 20}, {l.x + l.w, l.y + 20}, {r.x + r.w, r.y + 20},
                               {l.x + 70, l.y + l.h}, {l.x - 1, l.y + 20}, {kPlayCentreX, kPlayCentreY},
                               {kPlayCentreX + 267, kPlayCentreY}}), "");
    EXPECT_DOUBLE_EQ(d.level.position, 0.5);
}

TEST(ReverseStation, OnlyAPressCountsNotAButtonHeldOverAButton) {
    Driver<ReverseLevel> d;
    slideOntoWithoutPressing(d, centreX(d.level.leftButton), centreY(d.level.leftButton));
    slideOntoWithoutPressing(d, centreX(d.level.rightButton), centreY(d.level.rightButton));
    EXPECT_DOUBLE_EQ(d.level.position, 0.5);
}

TEST(ReverseStation, AnyPressWithTheKnobOnTheMarkPassesEvenOffTheButtons) {
    Driver<ReverseLevel> d;
    d.level.position = 0.9;   // 0.02 from the mark at 0.88
    EXPECT_EQ(d.idle(), LevelResult::Running);   // no press: nothing is checked
    EXPECT_EQ(d.click(kPlayCentreX, kPlayTop + 110), LevelResult::Solved);
    EXPECT_EQ(d.sounds, Sounds{"pass"});
}

TEST(ReverseStation, FourHundredthsFromTheMarkIsNotCloseEnough) {
    Driver<ReverseLevel> d;
    d.level.position = 0.76;   // one press of "<< LEFT" makes 0.84, 0.04 short of 0.88
    EXPECT_EQ(d.clickCentre(d.level.leftButton), LevelResult::Running);
    EXPECT_NEAR(d.level.position, 0.84, 1e-9);
    EXPECT_EQ(d.sounds, Sounds{"click"});
}

// ---------------------------------------------------------------------------
// What the conveyor shows

TEST(ReverseStation, Seed5489PutsTheMarkRightOfACentredKnob) {
    // The mark at 0.88: x = 323 - 4 + 633 (720 x 0.88 = 633.6, truncated)
    // = 952, 8 wide, from 8 above the track to 8 below it. The knob at
    // 323 + 360 = 683, radius 14, on the track's middle line.
    Driver<ReverseLevel> d;
    const Shot shot(d.level);
    const Rect& t = d.level.track;
    EXPECT_EQ(shot.at(952, t.y - 8), station_ink::terminalGreen);
    EXPECT_EQ(shot.at(959, t.y + t.h + 7), station_ink::terminalGreen);
    EXPECT_EQ(shot.at(951, t.y - 8), station_ink::black);
    EXPECT_EQ(shot.at(960, t.y - 8), station_ink::black);
    EXPECT_EQ(shot.at(955, t.y - 9), station_ink::black);
    EXPECT_EQ(shot.at(955, t.y + t.h + 8), station_ink::black);
    EXPECT_EQ(shot.at(kPlayCentreX, kPlayCentreY), station_ink::alarmRed);
    EXPECT_EQ(shot.at(kPlayCentreX + 13, kPlayCentreY), station_ink::alarmRed);
    EXPECT_EQ(shot.at(kPlayCentreX, kPlayCentreY - 13), station_ink::alarmRed);
    EXPECT_EQ(shot.at(kPlayCentreX + 15, kPlayCentreY), station_ink::charcoal);
}

TEST(ReverseStation, TheTrackIsCharcoalWithCornersRoundedBySix) {
    Driver<ReverseLevel> d;
    const Shot shot(d.level);
    const Rect& t = d.level.track;
    EXPECT_EQ(shot.at(t.x + 300, t.y + 1), station_ink::charcoal);
    EXPECT_EQ(shot.at(t.x + 1, t.y + t.h / 2), station_ink::charcoal);
    EXPECT_EQ(shot.at(t.x + t.w - 2, t.y + t.h / 2), station_ink::charcoal);
    EXPECT_EQ(shot.at(t.x, t.y), station_ink::black);
    EXPECT_EQ(shot.at(t.x + t.w, t.y + t.h / 2), station_ink::black);
}

TEST(ReverseStation, PressingRightMovesTheDrawnKnobLeft) {
    // Seed 1 (1791095845 is odd) puts the mark at 0.12: x = 319 + 86 (86.4)
    // = 405. One press of "RIGHT >>" takes the knob from 683 to 0.42 of the
    // track: 323 + 302 (302.4) = 625.
    Driver<ReverseLevel> d(1);
    const Shot before(d.level);
    EXPECT_EQ(before.at(kPlayCentreX, kPlayCentreY), station_ink::alarmRed);
    EXPECT_EQ(before.at(625, kPlayCentreY), station_ink::charcoal);
    EXPECT_EQ(before.at(405, kPlayCentreY - 17), station_ink::terminalGreen);
    d.clickCentre(d.level.rightButton);
    const Shot after(d.level);
    EXPECT_EQ(after.at(625, kPlayCentreY), station_ink::alarmRed);
    EXPECT_EQ(after.at(625 - 13, kPlayCentreY), station_ink::alarmRed);
    EXPECT_EQ(after.at(kPlayCentreX, kPlayCentreY), station_ink::charcoal);
    EXPECT_EQ(after.at(405, kPlayCentreY - 17), station_ink::terminalGreen);   // the mark stays
}

// A cast brass button, rounded by 8, its word in dark ink 22 pixels down.
void expectButton(const Shot& shot, const Rect& b, const char* word) {
    EXPECT_EQ(shot.at(b.x + 6, b.y + 6), station_ink::castBrass) << word;
    EXPECT_EQ(shot.at(b.x + b.w - 6, b.y + b.h - 6), station_ink::castBrass) << word;
    EXPECT_EQ(shot.at(b.x, b.y), station_ink::black) << word;
    EXPECT_EQ(shot.unlikeText(Rect{b.x + 8, b.y, b.w - 16, b.h}, station_ink::castBrass, word, b.x + b.w / 2,
                              b.y + 22, TextSize::Normal, station_ink::ink, true, true),
              0)
        << word;
}

TEST(ReverseStation, TheButtonsSayLeftAndRightThoughTheyPushTheOtherWay) {
    Driver<ReverseLevel> d;
    const Shot shot(d.level);
    expectButton(shot, d.level.leftButton, "<< LEFT");
    expectButton(shot, d.level.rightButton, "RIGHT >>");
}

TEST(ReverseStation, TheNoteAtTheFootSaysTheControlsAreInverted) {
    Driver<ReverseLevel> d;
    const Shot shot(d.level);
    const int underButtons = d.level.leftButton.y + d.level.leftButton.h + 1;
    EXPECT_EQ(playAreaNoteUnlike(shot.canvas, playAreaRows(underButtons, kPlayBottom),
                                 "CONTROLS ARE INVERTED"),
              0);
}

// ---------------------------------------------------------------------------
// Played by a hand

TEST(ReverseStation, AHandThatPressesTowardsTheMarkOnlyClicksAndRunsTheClockOut) {
    StationDriver d(shippedRecord("reverse"), 4);
    const auto& level = dynamic_cast<const ReverseLevel&>(*d.station);
    Clicker towards = clickerOn(level.target > 0.5 ? level.rightButton : level.leftButton);
    EXPECT_EQ(d.play(towards, 5.0).result, LevelResult::Running);
    EXPECT_DOUBLE_EQ(level.position, level.target > 0.5 ? 0.0 : 1.0);
    EXPECT_FALSE(d.lastSoundWasFail());
    EXPECT_FALSE(d.lastSoundWasPass());
}

}  // namespace
}  // namespace vorn::test::paperwork
