// The button station: a big red PRESS button in the middle of the play area
// that only flashes, and a small brass plate placed at random that ends the
// station. Covers where the two stand, that only a press on the plate
// counts, the flash (ten frames, whatever their length), what the player
// sees of both, and the automatic player.

#include "stations/timing_stations.h"
#include "support/draws_by_hand.h"
#include "support/play_area.h"
#include "support/solvers/family_solvers.h"
#include "support/station_driver.h"
#include "support/station_ink.h"
#include "support/text_probe.h"
#include "stations/timing/timing_fixtures.h"

#include <gtest/gtest.h>

#include <string>
#include <utility>
#include <vector>

namespace vorn::test {
namespace {

using Sounds = std::vector<std::string>;

// Seed 5489 and station 1 unless a test says otherwise: the plate at
// (393, 504), well clear of the big button.
struct ButtonDesk : Driver<ButtonLevel> {
    ButtonDesk() : Driver<ButtonLevel>(5489, 1) {}
    int buttonX() const { return level.bigButton.x + level.bigButton.w / 2; }
    int buttonY() const { return level.bigButton.y + level.bigButton.h / 2; }
};

// ------------------------------------------------------------------ layout

TEST(ButtonStation, TheBigButtonSitsMidAreaAndThePlateIsDrawnYThenX) {
    ButtonDesk d;
    // A 180 px square round the play area's middle, (683, 405).
    EXPECT_EQ(d.level.bigButton.x, kPlayCentreX - 90);
    EXPECT_EQ(d.level.bigButton.y, kPlayCentreY - 90);
    EXPECT_EQ(d.level.bigButton.w, 180);
    EXPECT_EQ(d.level.bigButton.h, 180);
    // y in [210, 570] takes the first draw: 3499211612 x 361 >> 32 = 294;
    // x in [293, 1033] the second: 581869302 x 741 >> 32 = 100.
    EXPECT_EQ(d.level.target.y, 504);
    EXPECT_EQ(d.level.target.x, 393);
    EXPECT_EQ(d.level.target.w, 38);
    EXPECT_EQ(d.level.target.h, 24);
    EXPECT_EQ(d.level.flashTimer, 0.0);
    EXPECT_EQ(d.rng, engineAfter(5489, 2));
}

TEST(ButtonStation, AnotherSeedPlacesThePlateElsewhere) {
    Driver<ButtonLevel> d(2024, 1);
    EXPECT_EQ(d.level.target.y, 422);
    EXPECT_EQ(d.level.target.x, 854);
    EXPECT_EQ(d.rng, engineAfter(2024, 2));
}

TEST(ButtonStation, ThePlateLandsWhereTheTwoDrawsSayForAnySeed) {
    for (std::uint32_t seed = 1; seed <= 60; ++seed) {
        Driver<ButtonLevel> d(seed, 1);
        // y in [kPlayTop + 20, kPlayBottom - 50] first (361 values), then x
        // in [kPlayLeft + 30, kPlayRight - 70] (741 values).
        Rng byHand(seed);
        const int y = kPlayTop + 20 + uniformBelowByHand(byHand, 361);
        const int x = kPlayLeft + 30 + uniformBelowByHand(byHand, 741);
        EXPECT_EQ(d.level.target.y, y) << "seed " << seed;
        EXPECT_EQ(d.level.target.x, x) << "seed " << seed;
        EXPECT_EQ(d.rng, byHand) << "seed " << seed;
    }
}

// ------------------------------------------------------------------- rules

TEST(ButtonStation, PressingThePlatePassesWithThePassSoundAlone) {
    ButtonDesk d;
    EXPECT_EQ(d.press(d.level.target.x, d.level.target.y), LevelResult::Solved);
    EXPECT_EQ(d.sounds, Sounds{"pass"});
}

TEST(ButtonStation, ThePlateCountsOnlyOnAPressAndOnlyInsideIt) {
    ButtonDesk d;
    const Rect& t = d.level.target;
    // Half-open: the right and bottom edges are outside.
    EXPECT_EQ(d.click(t.x + t.w, t.y), LevelResult::Running);
    EXPECT_EQ(d.click(t.x, t.y + t.h), LevelResult::Running);
    // Pressed beside it and dragged onto it: no press lands on the plate.
    EXPECT_EQ(d.press(t.x - 5, t.y + 5), LevelResult::Running);
    EXPECT_EQ(d.moveTo(t.x + 5, t.y + 5), LevelResult::Running);
    EXPECT_EQ(d.idle(), LevelResult::Running);
    EXPECT_EQ(d.release(), LevelResult::Running);
    EXPECT_EQ(d.press(t.x + t.w - 1, t.y + t.h - 1), LevelResult::Solved);
}

TEST(ButtonStation, PressesOffThePlateMakeNoSoundAtAll) {
    ButtonDesk d;
    const Rect& b = d.level.bigButton;
    const Rect& t = d.level.target;
    // The big button's middle and corners, each side of the plate, the floor;
    // each pressed, held a frame and let go.
    const std::vector<std::pair<int, int>> spots{
        {d.buttonX(), d.buttonY()}, {b.x, b.y},          {b.x + b.w - 1, b.y + b.h - 1},
        {t.x - 1, t.y + 11},        {t.x + t.w, t.y + 11}, {t.x + 17, t.y - 1},
        {t.x + 17, t.y + t.h},      {kPlayLeft + 37, kPlayTop + 10}, {kPlayRight - 3, kPlayBottom - 20}};
    for (const auto& [x, y] : spots) {
        EXPECT_EQ(d.press(x, y), LevelResult::Running) << x << "," << y;
        EXPECT_EQ(d.idle(), LevelResult::Running);
        EXPECT_EQ(d.release(), LevelResult::Running);
    }
    EXPECT_EQ(d.sounds, Sounds{});
}

TEST(ButtonStation, NoClickAnywhereOffThePlateEverFails) {
    Driver<ButtonLevel> d(7, 1);
    for (int y = 0; y < kCanvasHeight; y += 6) {
        for (int x = 0; x < kCanvasWidth; x += 6) {
            if (contains(d.level.target, x, y)) {
                continue;
            }
            ASSERT_EQ(d.click(x, y), LevelResult::Running) << x << "," << y;
        }
    }
    EXPECT_EQ(d.sounds, Sounds{});
}

TEST(ButtonStation, APlateLyingOnTheBigButtonStillWins) {
    ButtonDesk d;
    // Some seeds put the plate over the big button; the plate is asked first.
    d.level.target.x = d.buttonX() - 23;
    d.level.target.y = d.buttonY() + 35;
    EXPECT_EQ(d.press(d.level.target.x + 10, d.level.target.y + 10), LevelResult::Solved);
    EXPECT_EQ(d.sounds, Sounds{"pass"});
}

TEST(ButtonStation, TheBigButtonFlashesForTenFrames) {
    ButtonDesk d;
    // Set to 0.15 on the press and 0.016 off every frame, that one included:
    // still above zero after 9 frames (0.006), spent on the 10th.
    for (int frame = 1; frame <= 10; ++frame) {
        if (frame == 1) {
            d.press(d.buttonX(), d.buttonY());
        } else if (frame == 5) {
            d.release();
        } else {
            d.idle();
        }
        const Picture picture(d.level);
        const Color face = frame < 10 ? station_ink::flashRed : station_ink::alarmRed;
        EXPECT_EQ(picture.at(d.buttonX(), d.buttonY() + 55), face) << "frame " << frame;
    }
}

TEST(ButtonStation, TheFlashCountsFramesWhateverTheirLength) {
    for (const double dt : {0.001, 0.05}) {
        ButtonDesk d;
        EXPECT_EQ(d.press(d.buttonX(), d.buttonY()), LevelResult::Running);
        EXPECT_NEAR(d.level.flashTimer, 0.134, 1e-12);
        for (int frame = 2; frame <= 9; ++frame) {
            EXPECT_EQ(d.frame(dt), LevelResult::Running);
            EXPECT_GT(d.level.flashTimer, 0.0) << "dt " << dt << " frame " << frame;
        }
        EXPECT_EQ(d.frame(dt), LevelResult::Running);
        EXPECT_LE(d.level.flashTimer, 0.0) << "dt " << dt;
        // Once dark again it stays put.
        const double settled = d.level.flashTimer;
        d.frame(dt);
        EXPECT_EQ(d.level.flashTimer, settled);
    }
}

// ---------------------------------------------------------------- pictures

TEST(ButtonStation, TheBigButtonSaysPressInInkWhetherLitOrDark) {
    for (const bool pressed : {false, true}) {
        ButtonDesk d;
        if (pressed) {
            d.press(d.buttonX(), d.buttonY());
        }
        const Picture picture(d.level);
        // The face is a flat disc of radius 78: a 100 x 40 box at its middle
        // holds the word and nothing else.
        const Color face = pressed ? station_ink::flashRed : station_ink::alarmRed;
        EXPECT_EQ(pixelsUnlikeText(picture.canvas, Rect{d.buttonX() - 50, d.buttonY() - 20, 100, 40},
                                   face, "PRESS", d.buttonX(), d.buttonY(), TextSize::Large,
                                   station_ink::ink, true, true),
                  0)
            << (pressed ? "dark" : "lit");
    }
}

// The face (radius 78) on its shadow (radius 88), probed along the row
// through the middle and below the word.
void expectFaceOnShadow(const ButtonDesk& d, const Picture& picture, Color face, Color shadow) {
    const int x = d.buttonX();
    const int y = d.buttonY();
    EXPECT_EQ(picture.at(x, y + 55), face);
    EXPECT_EQ(picture.at(x - 78, y), face);
    EXPECT_EQ(picture.at(x + 78, y), face);
    EXPECT_EQ(picture.at(x + 79, y), shadow);
    EXPECT_EQ(picture.at(x - 83, y), shadow);
    EXPECT_EQ(picture.at(x, y + 87), shadow);
    EXPECT_EQ(picture.at(x + 89, y), station_ink::black);
    EXPECT_EQ(picture.at(x, y - 89), station_ink::black);
}

// The brass plate with its ink strip down the left: 12 px wide, 4 px in
// from the plate's left, top and bottom.
void expectBrassPlate(const ButtonDesk& d, const Picture& picture) {
    const Rect& t = d.level.target;
    EXPECT_EQ(picture.at(t.x + 25, t.y + 12), station_ink::brass);
    EXPECT_EQ(picture.at(t.x + 3, t.y + 12), station_ink::brass);
    EXPECT_EQ(picture.at(t.x + 4, t.y + 4), station_ink::ink);
    EXPECT_EQ(picture.at(t.x + 15, t.y + t.h - 5), station_ink::ink);
    EXPECT_EQ(picture.at(t.x + 16, t.y + 12), station_ink::brass);
    EXPECT_EQ(picture.at(t.x + 10, t.y + t.h - 4), station_ink::brass);
    EXPECT_EQ(picture.at(t.x + t.w, t.y + 12), station_ink::black);
    EXPECT_EQ(picture.at(t.x + 19, t.y + t.h), station_ink::black);
}

TEST(ButtonStation, DrawsTheRedButtonOnItsShadowAndTheBrassPlate) {
    ButtonDesk d;
    const Picture picture(d.level);
    expectFaceOnShadow(d, picture, station_ink::alarmRed, timing_ink::alarmRedShadow);
    expectBrassPlate(d, picture);
    EXPECT_EQ(paintedOutside(picture, {d.level.bigButton, plateReach(d.level.target)}), 0);
}

TEST(ButtonStation, APressedButtonDrawsDarkOnADarkerShadow) {
    ButtonDesk d;
    d.press(d.buttonX(), d.buttonY());
    const Picture picture(d.level);
    expectFaceOnShadow(d, picture, station_ink::flashRed, timing_ink::flashRedShadow);
    expectBrassPlate(d, picture);
    EXPECT_EQ(paintedOutside(picture, {d.level.bigButton, plateReach(d.level.target)}), 0);
}

// ----------------------------------------------------------------- solvers

TEST(ButtonSolver, ClearsTheButtonOnEveryDifficulty) { EXPECT_EQ(unsolvedRuns("button"), ""); }

TEST(ButtonSolver, PressingTheBigButtonOnlyRunsOutTheClock) {
    Driver<ButtonLevel> d(4, shippedRecord("button"));
    bool flashed = false;
    auto presser = scripted([&flashed](const Level& station, const Hand& hand, double) {
        const auto& button = static_cast<const ButtonLevel&>(station);
        flashed = flashed || button.flashTimer > 0.0;
        return clickCentre(hand, button.bigButton);
    });
    EXPECT_EQ(d.play(presser, 5.0).result, LevelResult::Running);
    EXPECT_TRUE(flashed);   // the presses did land on the big button
    EXPECT_EQ(d.sounds, Sounds{});
}

}  // namespace
}  // namespace vorn::test
