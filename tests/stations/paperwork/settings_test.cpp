// The settings page ("settings"): one toggle under DO NOT ENABLE EXIT and a
// PROCEED button. Proceeding with the toggle off passes, with it on fires the
// player; the toggle clicks each time it flips. Covers the layout (which
// takes no draw from the run's engine), the verdicts and their sounds, what
// a press off the controls or a held button does (nothing), and how the page
// shows the toggle's state.
//
// Positions, worked once: the play area's centre is x 683, its top 190 and
// its bottom 620, so the toggle is {523, 250, 70, 36} and PROCEED
// {593, 550, 180, 48}. The toggle's knob sits 18 pixels in from either end.

#include "stations/paperwork/paperwork_fixtures.h"

#include <gtest/gtest.h>

#include <utility>

namespace vorn::test::paperwork {
namespace {

TEST(SettingsStation, LayoutStartsDisabledAndTakesNoDraw) {
    Driver<SettingsLevel> d(11);
    EXPECT_FALSE(d.level.enabled);
    EXPECT_EQ(d.level.toggle.x, kPlayCentreX - 160);
    EXPECT_EQ(d.level.toggle.y, kPlayTop + 60);
    EXPECT_EQ(d.level.toggle.w, 70);
    EXPECT_EQ(d.level.toggle.h, 36);
    EXPECT_EQ(d.level.proceedButton.x, kPlayCentreX - 90);
    EXPECT_EQ(d.level.proceedButton.y, kPlayBottom - 70);
    EXPECT_EQ(d.level.proceedButton.w, 180);
    EXPECT_EQ(d.level.proceedButton.h, 48);
    EXPECT_EQ(d.rng, Rng(11));
}

TEST(SettingsStation, ProceedingWithTheToggleLeftOffPassesWithThePassSoundAlone) {
    Driver<SettingsLevel> d;
    EXPECT_EQ(d.clickCentre(d.level.proceedButton), LevelResult::Solved);
    EXPECT_EQ(d.sounds, Sounds{"pass"});
}

TEST(SettingsStation, TheToggleClicksEachFlipAndProceedingAfterTwoFlipsPasses) {
    Driver<SettingsLevel> d;
    EXPECT_EQ(d.clickCentre(d.level.toggle), LevelResult::Running);
    EXPECT_TRUE(d.level.enabled);
    EXPECT_EQ(d.sounds, Sounds{"click"});
    EXPECT_EQ(d.clickCentre(d.level.toggle), LevelResult::Running);
    EXPECT_FALSE(d.level.enabled);
    EXPECT_EQ(d.soundsSince(1), Sounds{"click"});
    EXPECT_EQ(d.clickCentre(d.level.proceedButton), LevelResult::Solved);
    EXPECT_EQ(d.soundsSince(2), Sounds{"pass"});
}

TEST(SettingsStation, ProceedingWithTheToggleOnFailsWithTheFailSoundAlone) {
    Driver<SettingsLevel> d;
    d.clickCentre(d.level.toggle);
    EXPECT_EQ(d.clickCentre(d.level.proceedButton), LevelResult::Failed);
    EXPECT_EQ(d.soundsSince(1), Sounds{"fail"});
}

TEST(SettingsStation, OnlyAPressCountsNotAButtonHeldOverTheToggleOrProceed) {
    Driver<SettingsLevel> d;
    slideOntoWithoutPressing(d, centreX(d.level.toggle), centreY(d.level.toggle));
    EXPECT_FALSE(d.level.enabled);
    slideOntoWithoutPressing(d, centreX(d.level.proceedButton), centreY(d.level.proceedButton));
}

TEST(SettingsStation, ClicksOffTheToggleAndTheButtonChangeNothingAndMakeNoSound) {
    // The right and bottom edges of both are outside them, and so is the
    // warning over the toggle.
    Driver<SettingsLevel> d;
    const Rect& t = d.level.toggle;
    const Rect& p = d.level.proceedButton;
    EXPECT_EQ(d.clicksNoticed({{t.x + t.w, t.y + 10}, {t.x + 17, t.y + t.h}, {t.x + 7, t.y - 20},
                               {p.x + p.w, p.y + 10}, {p.x + p.w / 2, p.y + p.h}, {p.x - 1, p.y + 20},
                               {kPlayCentreX, kPlayCentreY}}), "");
    EXPECT_FALSE(d.level.enabled);
}

// ---------------------------------------------------------------------------
// What the page shows

TEST(SettingsStation, OffTheKnobSitsLeftOnADarkBrassPill) {
    Driver<SettingsLevel> d;
    const Rect& t = d.level.toggle;
    const Shot shot(d.level);
    EXPECT_EQ(shot.at(t.x + 18, t.y + 18), station_ink::casingBeige);
    // The knob is a disc of radius 14 on the pill's middle line.
    EXPECT_EQ(shot.at(t.x + 18 + 13, t.y + 18), station_ink::casingBeige);
    EXPECT_EQ(shot.at(t.x + 18, t.y + 18 - 13), station_ink::casingBeige);
    EXPECT_EQ(shot.at(t.x + 18, t.y + 18 + 13), station_ink::casingBeige);
    EXPECT_EQ(shot.at(t.x + 18 + 15, t.y + 18), station_ink::darkBrass);
    EXPECT_EQ(shot.at(t.x + t.w - 18, t.y + 18), station_ink::darkBrass);
    EXPECT_EQ(shot.at(t.x, t.y), station_ink::black);   // a pill: its corners are bare
}

TEST(SettingsStation, OnTheKnobSitsRightOnAGreenPill) {
    Driver<SettingsLevel> d;
    d.clickCentre(d.level.toggle);
    const Rect& t = d.level.toggle;
    const Shot shot(d.level);
    EXPECT_EQ(shot.at(t.x + t.w - 18, t.y + 18), station_ink::casingBeige);
    EXPECT_EQ(shot.at(t.x + t.w - 18 - 13, t.y + 18), station_ink::casingBeige);
    EXPECT_EQ(shot.at(t.x + t.w - 18, t.y + 18 - 13), station_ink::casingBeige);
    EXPECT_EQ(shot.at(t.x + t.w - 18, t.y + 18 + 13), station_ink::casingBeige);
    EXPECT_EQ(shot.at(t.x + t.w - 18 - 15, t.y + 18), station_ink::terminalGreen);
    EXPECT_EQ(shot.at(t.x + 18, t.y + 18), station_ink::terminalGreen);
}

TEST(SettingsStation, FlippingTheToggleRedrawsTheToggleAndNothingElse) {
    Driver<SettingsLevel> d;
    const Shot off(d.level);
    d.clickCentre(d.level.toggle);
    const Shot on(d.level);
    const Rect& t = d.level.toggle;
    int inside = 0;
    int outside = 0;
    for (int y = 0; y < kCanvasHeight; ++y) {
        for (int x = 0; x < kCanvasWidth; ++x) {
            if (off.at(x, y) != on.at(x, y)) {
                (contains(plateReach(t), x, y) ? inside : outside) += 1;
            }
        }
    }
    EXPECT_GT(inside, 0);
    EXPECT_EQ(outside, 0);
}

TEST(SettingsStation, TheWarningSitsOverTheToggleInOrange) {
    Driver<SettingsLevel> d;
    const Rect& t = d.level.toggle;
    const Shot shot(d.level);
    const Rect aboveToggle{kPlayLeft, kPlayTop, kPlayArea.w, t.y - kPlayTop};
    EXPECT_EQ(shot.unlikeText(aboveToggle, station_ink::black, "DO NOT ENABLE EXIT", t.x, t.y - 30,
                              TextSize::Normal, paper_ink::warningOrange, false, false),
              0);
}

TEST(SettingsStation, ProceedIsABrassButtonThatSaysSo) {
    Driver<SettingsLevel> d;
    const Rect& p = d.level.proceedButton;
    const Shot shot(d.level);
    EXPECT_EQ(shot.at(p.x + 6, p.y + p.h / 2), station_ink::brass);
    EXPECT_EQ(shot.at(p.x, p.y), station_ink::black);   // rounded by 8
    EXPECT_EQ(shot.unlikeText(Rect{p.x + 8, p.y, p.w - 16, p.h}, station_ink::brass, "PROCEED",
                              p.x + p.w / 2, p.y + p.h / 2, TextSize::Normal, station_ink::ink, true, true),
              0);
    // Nothing else on the page: from under the toggle down to the button it is bare.
    const int underToggle = d.level.toggle.y + d.level.toggle.h + 1;
    EXPECT_EQ(pixelsOtherThan(shot.canvas, playAreaRows(underToggle, p.y), station_ink::black), 0);
}

// ---------------------------------------------------------------------------
// Played by a hand

TEST(SettingsStation, AHandThatEnablesTheToggleHearsAClickAndIsFiredOnProceeding) {
    StationDriver d(shippedRecord("settings"), 4);
    const auto& level = dynamic_cast<const SettingsLevel&>(*d.station);
    Clicker toggle = clickerOn(level.toggle);
    while (!level.enabled && d.elapsed < 2.0) {
        d.play(toggle, StationDriver::kFrame);
    }
    ASSERT_TRUE(level.enabled);
    EXPECT_EQ(d.heard(), Sounds{"click"});
    Clicker proceed = clickerOn(level.proceedButton);
    EXPECT_EQ(d.play(proceed, 10.0).result, LevelResult::Failed);
    EXPECT_TRUE(d.lastSoundWasFail());
}

}  // namespace
}  // namespace vorn::test::paperwork
