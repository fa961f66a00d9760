// The paperwork family: the agreement, the settings page, the exam, the
// reading test, the stamps, the backwards conveyor and the odd tile.

#include "audio/audio_system.h"
#include "data/level_catalogue.h"
#include "stations/level_factory.h"
#include "stations/paperwork_stations.h"
#include "support/draws_by_hand.h"
#include "support/software_canvas.h"
#include "support/solvers/family_solvers.h"
#include "support/station_driver.h"
#include "support/station_desk.h"
#include "support/station_sounds.h"
#include "support/text_probe.h"
#include "support/timing_pictures.h"

#include <gtest/gtest.h>

#include <SDL_mixer.h>

#include <cmath>
#include <cstdint>
#include <string>
#include <utility>
#include <vector>

namespace vorn {
namespace {

// One station on the desk of the test kit: set up in the game's play area
// with a seeded engine and a station number, driven by hand-filled input, with
// every sound it asks for logged and every step held to its verdict sound.
template <typename T>
using Desk = test::Desk<T>;

// A press on the spot, with no time passing (the agreement's text stays put).
template <typename T>
LevelResult pressAt(Desk<T>& d, int x, int y) {
    return d.press(x, y, 0.0);
}
template <typename T>
LevelResult pressCentre(Desk<T>& d, const Rect& r) {
    return d.press(r.x + r.w / 2, r.y + r.h / 2, 0.0);
}

using Sounds = std::vector<std::string>;

// Holds the button down over a spot for a few frames without the press edge
// (the button went down elsewhere, earlier) and lets go there: only a press
// counts, so nothing may happen and nothing may sound.
template <typename T>
void holdWithoutPressing(Desk<T>& d, int x, int y) {
    d.pointAt(x, y);
    for (int i = 0; i < 3; ++i) {
        d.in.mouseDown = true;
        EXPECT_EQ(d.step(0.0), LevelResult::Running) << x << "," << y;
    }
    EXPECT_EQ(d.release(x, y, 0.0), LevelResult::Running) << x << "," << y;
    EXPECT_EQ(d.sounds, Sounds{}) << x << "," << y;
}

// The raw outputs a fresh engine of this seed gives, in order.
std::uint32_t nthRaw(std::uint32_t seed, int n) {
    Rng ref(seed);
    ref.discard(static_cast<unsigned long long>(n));
    return static_cast<std::uint32_t>(ref());
}

// A canvas with the station drawn on black.
struct Drawn {
    template <typename T>
    explicit Drawn(T& level, bool fonts = false) {
        if (fonts) {
            canvas.useGameFonts();
        }
        canvas.fill(rgb(0, 0, 0));
        level.render(canvas.graphics);
    }
    Color at(int x, int y) const { return canvas.pixel(x, y); }
    test::SoftwareCanvas canvas;
};

constexpr int kCx = 683;   // 263 + 840 / 2
constexpr int kTop = 190;  // the play area's top edge

TEST(PaperworkFactory, EachTypeStringMakesItsOwnStation) {
    EXPECT_NE(dynamic_cast<EulaLevel*>(createLevel("eula").get()), nullptr);
    EXPECT_NE(dynamic_cast<SettingsLevel*>(createLevel("settings").get()), nullptr);
    EXPECT_NE(dynamic_cast<QuizLevel*>(createLevel("quiz").get()), nullptr);
    EXPECT_NE(dynamic_cast<StroopLevel*>(createLevel("stroop").get()), nullptr);
    EXPECT_NE(dynamic_cast<StampLevel*>(createLevel("stamp").get()), nullptr);
    EXPECT_NE(dynamic_cast<ReverseLevel*>(createLevel("reverse").get()), nullptr);
    EXPECT_NE(dynamic_cast<GenericLevel*>(createLevel("Quiz").get()), nullptr);
    EXPECT_NE(dynamic_cast<GenericLevel*>(createLevel("oddtile").get()), nullptr);
}

TEST(PaperworkDefaults, ConstructorsSetTheFamilysOwnDefaults) {
    EXPECT_EQ(EulaLevel{}.lineCount, 18);
    EXPECT_FALSE(SettingsLevel{}.enabled);
    EXPECT_EQ(QuizLevel{}.count, 4);
    EXPECT_EQ(GenericLevel{}.count, 6);
    EXPECT_DOUBLE_EQ(ReverseLevel{}.position, 0.5);
}

// ---------------------------------------------------------------------------
// The agreement

TEST(EulaStation, LayoutAndTheExitLineIsThreeLowBitsOfOneDrawPlusSix) {
    for (std::uint32_t seed : {1u, 2u, 3u, 77u, 5489u}) {
        Desk<EulaLevel> d(seed);
        EXPECT_EQ(d.level.exitLine, static_cast<int>(nthRaw(seed, 0) & 7u) + 6) << seed;
        EXPECT_EQ(d.rng, test::engineAfter(seed, 1)) << seed;
    }
    Desk<EulaLevel> d;
    EXPECT_DOUBLE_EQ(d.level.scroll, 0.0);
    EXPECT_EQ(d.level.lineCount, 18);
    EXPECT_EQ(d.level.viewHeight, 340);
    EXPECT_EQ(d.level.agreeButton.x, kCx - 90);
    EXPECT_EQ(d.level.agreeButton.y, 190 + 430 - 54);
    EXPECT_EQ(d.level.agreeButton.w, 180);
    EXPECT_EQ(d.level.agreeButton.h, 40);
}

TEST(EulaStation, StationsNumberedTwentyFiveOrMoreScrollAtFortyTwoInsteadOfTwentySix) {
    Desk<EulaLevel> early(1, 24);
    Desk<EulaLevel> late(1, 25);
    EXPECT_DOUBLE_EQ(early.level.speed, 26.0);
    EXPECT_DOUBLE_EQ(late.level.speed, 42.0);
    early.step(1.0);
    late.step(1.0);
    EXPECT_DOUBLE_EQ(early.level.scroll, 26.0);
    EXPECT_DOUBLE_EQ(late.level.scroll, 42.0);
}

TEST(EulaStation, ScrollWrapsAroundOnceItPassesTheWholeText) {
    Desk<EulaLevel> d(1, 25);
    d.level.scroll = 395.0;
    d.step(0.05);   // 395 + 2.1 = 397.1, one loop of 396 later
    EXPECT_NEAR(d.level.scroll, 1.1, 1e-9);
    d.level.scroll = 395.0;
    d.step(0.0);
    EXPECT_DOUBLE_EQ(d.level.scroll, 395.0);
}

// Scrolls so the exit line sits at playArea.y + offset, wrapping if needed.
void placeExitLine(EulaLevel& level, int offset) {
    level.exitLine = 6;   // 132 pixels into the text
    double s = 22.0 * 6 + 30 - offset;
    if (s < 0) {
        s += 396;
    }
    level.scroll = s;
}

TEST(EulaStation, TheExitLinePassesInsideTheBandBetweenThirtyAndThirtyPlusViewHeight) {
    for (int offset : {31, 150, 316, 360}) {
        Desk<EulaLevel> d;
        placeExitLine(d.level, offset);
        EXPECT_EQ(pressAt(d, 263 + 100, kTop + offset + 5), LevelResult::Solved) << offset;
    }
}

TEST(EulaStation, AClickOnTheLineDrawnAtTheVeryTopDoesNothing) {
    for (int offset : {20, 25, 30}) {
        Desk<EulaLevel> d;
        placeExitLine(d.level, offset);
        // Drawn there, underlined and all...
        Drawn shot(d.level);
        EXPECT_EQ(shot.at(263 + 200, kTop + offset + 18), rgb(49, 156, 96)) << offset;
        // ...and deaf to the click.
        EXPECT_EQ(pressAt(d, 263 + 100, kTop + offset + 5), LevelResult::Running) << offset;
    }
    Desk<EulaLevel> d;
    placeExitLine(d.level, 370);   // just below the band
    EXPECT_EQ(pressAt(d, 263 + 100, kTop + 375), LevelResult::Running);
}

TEST(EulaStation, TheExitLineAnswersOnlyInItsOwnStrip) {
    Desk<EulaLevel> d;
    placeExitLine(d.level, 150);
    const int ly = kTop + 150;
    EXPECT_EQ(pressAt(d, 263 + 29, ly + 5), LevelResult::Running);
    EXPECT_EQ(pressAt(d, 263 + 390, ly + 5), LevelResult::Running);
    EXPECT_EQ(pressAt(d, 263 + 100, ly - 3), LevelResult::Running);
    EXPECT_EQ(pressAt(d, 263 + 100, ly + 20), LevelResult::Running);
    EXPECT_EQ(pressAt(d, 263 + 389, ly + 19), LevelResult::Solved);
    Desk<EulaLevel> e;
    placeExitLine(e.level, 150);
    EXPECT_EQ(pressAt(e, 263 + 30, ly - 2), LevelResult::Solved);
}

TEST(EulaStation, AgreeingFails) {
    Desk<EulaLevel> d;
    EXPECT_EQ(pressCentre(d, d.level.agreeButton), LevelResult::Failed);
}

TEST(EulaStation, DrawsTheExitLineUnderlinedTheOthersSkippedOutsideTheBoxAndTheButton) {
    Desk<EulaLevel> d;
    placeExitLine(d.level, 200);
    Drawn shot(d.level);
    // The underline runs from x + 30 to x + 360, 18 pixels below the line.
    EXPECT_EQ(shot.at(263 + 31, kTop + 218), rgb(49, 156, 96));
    EXPECT_EQ(shot.at(263 + 359, kTop + 218), rgb(49, 156, 96));
    EXPECT_EQ(shot.at(263 + 365, kTop + 218), rgb(0, 0, 0));
    const Rect& b = d.level.agreeButton;
    EXPECT_EQ(shot.at(b.x + 8, b.y + b.h / 2), rgb(229, 194, 96));
    EXPECT_EQ(shot.at(b.x + b.w - 8, b.y + 10), rgb(229, 194, 96));

    // A line that has scrolled past the foot of the box is not drawn at all.
    Desk<EulaLevel> gone;
    placeExitLine(gone.level, 365);
    Drawn none(gone.level);
    EXPECT_EQ(none.at(263 + 200, kTop + 365 + 18), rgb(0, 0, 0));
}

TEST(EulaStation, TextIsDrawnOnlyInsideTheBox) {
    Desk<EulaLevel> d;
    // Line 0 would sit right on the top edge; it is skipped, not drawn there.
    d.level.scroll = 30.0;
    Drawn shot(d.level, true);
    auto inkIn = [&](int y0, int y1) {
        int n = 0;
        for (int y = y0; y < y1; ++y) {
            for (int x = 263; x < 263 + 840; ++x) {
                n += shot.at(x, y) != rgb(0, 0, 0) ? 1 : 0;
            }
        }
        return n;
    };
    EXPECT_EQ(inkIn(kTop, kTop + 20), 0);
    EXPECT_GT(inkIn(kTop + 20, kTop + 60), 0);
}

TEST(EulaStation, TheTextScrollsOnTheClickFrameBeforeTheClickIsJudged) {
    // The way out at 221 answers a click that lands at once; a click whose
    // frame first scrolls it one pixel up, onto the deaf edge at 220, does not.
    Desk<EulaLevel> now;
    placeExitLine(now.level, 31);
    EXPECT_EQ(pressAt(now, 263 + 100, kTop + 36), LevelResult::Solved);
    Desk<EulaLevel> late;
    placeExitLine(late.level, 31);
    EXPECT_EQ(late.press(263 + 100, kTop + 36, 1.0 / 26.0), LevelResult::Running);
    EXPECT_EQ(late.sounds, Sounds{});
}

TEST(EulaStation, OnlyAPressCountsNotAButtonHeldOverTheWayOutOrTheButton) {
    Desk<EulaLevel> d;
    placeExitLine(d.level, 150);
    holdWithoutPressing(d, 263 + 100, kTop + 155);
    holdWithoutPressing(d, 683, 586);
}

TEST(EulaStation, AScrollOfExactlyOneLoopIsNotYetWrapped) {
    Desk<EulaLevel> d;
    d.level.scroll = 396.0;
    d.step(0.0);
    EXPECT_DOUBLE_EQ(d.level.scroll, 396.0);
    d.step(1.0 / 26.0);   // one pixel more, and it wraps to 1
    EXPECT_NEAR(d.level.scroll, 1.0, 1e-9);
}

TEST(EulaStation, TheExitLineAnswersUpToOnePixelAboveTheFootOfItsBand) {
    // The band ends at 220 + 340 = 560; a line at 559 still answers, even
    // though it is drawn only down to 550.
    Desk<EulaLevel> d;
    placeExitLine(d.level, 369);
    EXPECT_EQ(pressAt(d, 263 + 100, kTop + 369 + 5), LevelResult::Solved);
    EXPECT_EQ(d.sounds, Sounds{"pass"});
}

TEST(EulaStation, AgreeingPlaysTheFailSoundAlone) {
    Desk<EulaLevel> d;
    EXPECT_EQ(pressCentre(d, d.level.agreeButton), LevelResult::Failed);
    EXPECT_EQ(d.sounds, Sounds{"fail"});
}

TEST(EulaStation, TheAgreeButtonsRightAndBottomEdgesAreOutsideIt) {
    // The button is {593, 566, 180, 40}.
    Desk<EulaLevel> d;
    EXPECT_EQ(pressAt(d, 773, 580), LevelResult::Running);
    EXPECT_EQ(pressAt(d, 683, 606), LevelResult::Running);
    EXPECT_EQ(pressAt(d, 592, 580), LevelResult::Running);
    EXPECT_EQ(d.sounds, Sounds{});
    EXPECT_EQ(pressAt(d, 593, 566), LevelResult::Failed);
    EXPECT_EQ(d.soundsSince(0), Sounds{"fail"});
}

TEST(EulaStation, TheExitLinePlaysThePassSoundAlone) {
    Desk<EulaLevel> d;
    placeExitLine(d.level, 150);
    EXPECT_EQ(pressAt(d, 263 + 100, kTop + 155), LevelResult::Solved);
    EXPECT_EQ(d.sounds, Sounds{"pass"});
}

TEST(EulaStation, ScrollingAndClicksOnTheSmallPrintMakeNoSoundAtAll) {
    Desk<EulaLevel> d;
    for (int i = 0; i < 300; ++i) {
        EXPECT_EQ(d.step(0.05), LevelResult::Running);
    }
    placeExitLine(d.level, 150);
    // Beside the line, on an ordinary line, on the deaf line at the top, and
    // on the empty floor beside the button.
    EXPECT_EQ(pressAt(d, 263 + 395, kTop + 155), LevelResult::Running);
    EXPECT_EQ(pressAt(d, 263 + 100, kTop + 100), LevelResult::Running);
    EXPECT_EQ(pressAt(d, 300, 590), LevelResult::Running);
    placeExitLine(d.level, 25);
    EXPECT_EQ(pressAt(d, 263 + 100, kTop + 30), LevelResult::Running);
    EXPECT_EQ(d.sounds, Sounds{});
}

// The agreement's lines and button, drawn longhand: the small print at
// x = 263 + 30 = 293, the way out in green with its underline out to
// 263 + 360 = 623, and the amber button {593, 566, 180, 40}.
void smallPrint(Graphics& g, int y) {
    g.text("the party of the first part shall hereby...", 293, y, TextSize::Small,
           rgb(121, 116, 103), false, false);
}
void wayOut(Graphics& g, int y) {
    g.text("> by clicking HERE you may leave <", 293, y, TextSize::Small, rgb(70, 224, 138), false,
           false);
    g.line(293, y + 18, 623, y + 18, rgb(49, 156, 96), 1);
}
void agreeButton(Graphics& g) {
    g.roundRect(Rect{593, 566, 180, 40}, 8, rgb(229, 194, 96), true);
    g.text("I AGREE", 683, 586, TextSize::Normal, rgb(20, 20, 20), true, true);
}

TEST(EulaStation, SeedFiveFourEightNineShowsSixteenLinesWithTheWayOutEleventh) {
    // Seed 5489's first output, 3499211612, ends in binary ...100: the exit
    // line is 4 + 6 = 10. Unscrolled, line i sits at 220 + 22 i; the box runs
    // from 210 to 550 inclusive, so lines 0..15 show (the last at 550) and
    // 16 and 17 (572, 594, and 396 lower still) do not.
    Desk<EulaLevel> d;
    ASSERT_EQ(d.level.exitLine, 10);
    EXPECT_TRUE(test::samePicture([&](Graphics& g) { d.level.render(g); },
                                  [](Graphics& g) {
                                      for (int i = 0; i < 16; ++i) {
                                          if (i == 10) {
                                              wayOut(g, 220 + 22 * i);
                                          } else {
                                              smallPrint(g, 220 + 22 * i);
                                          }
                                      }
                                      agreeButton(g);
                                  }));
}

TEST(EulaStation, LinesScrolledAboveTheBoxComeBackAtItsFootOrNotAtAll) {
    // Scrolled by 100, line i sits at 120 + 22 i. Lines 0 and 1 (120, 142)
    // come back 396 lower at 516 and 538; lines 2 to 4 land at 560, 582 and
    // 604 that way, past the foot at 550, and are skipped; lines 5 to 17 show
    // from 230 on, the way out (10) at 340.
    Desk<EulaLevel> d;
    d.level.scroll = 100.0;
    EXPECT_TRUE(test::samePicture([&](Graphics& g) { d.level.render(g); },
                                  [](Graphics& g) {
                                      for (int i = 0; i < 18; ++i) {
                                          int y = 120 + 22 * i;
                                          if (i < 2) {
                                              y += 396;
                                          } else if (i < 5) {
                                              continue;
                                          }
                                          if (i == 10) {
                                              wayOut(g, y);
                                          } else {
                                              smallPrint(g, y);
                                          }
                                      }
                                      agreeButton(g);
                                  }));
}

TEST(EulaStation, ALineOnTheVeryTopEdgeOfTheBoxIsStillDrawn) {
    // Scrolled by 10, line 0 sits exactly on the top edge (210) and shows;
    // line 16 at 562 (and 958) does not.
    Desk<EulaLevel> d;
    d.level.scroll = 10.0;
    EXPECT_TRUE(test::samePicture([&](Graphics& g) { d.level.render(g); },
                                  [](Graphics& g) {
                                      for (int i = 0; i < 16; ++i) {
                                          if (i == 10) {
                                              wayOut(g, 210 + 22 * i);
                                          } else {
                                              smallPrint(g, 210 + 22 * i);
                                          }
                                      }
                                      agreeButton(g);
                                  }));
}

// ---------------------------------------------------------------------------
// The settings page

TEST(SettingsStation, LayoutStartsDisabledAndDrawsNothing) {
    Desk<SettingsLevel> d(11);
    EXPECT_FALSE(d.level.enabled);
    EXPECT_EQ(d.level.toggle.x, kCx - 160);
    EXPECT_EQ(d.level.toggle.y, kTop + 60);
    EXPECT_EQ(d.level.toggle.w, 70);
    EXPECT_EQ(d.level.toggle.h, 36);
    EXPECT_EQ(d.level.proceedButton.x, kCx - 90);
    EXPECT_EQ(d.level.proceedButton.y, kTop + 430 - 70);
    EXPECT_EQ(d.level.proceedButton.w, 180);
    EXPECT_EQ(d.level.proceedButton.h, 48);
    EXPECT_EQ(d.rng, Rng(11));
}

TEST(SettingsStation, ProceedingWithTheToggleLeftOffPasses) {
    Desk<SettingsLevel> d;
    EXPECT_EQ(pressCentre(d, d.level.proceedButton), LevelResult::Solved);
}

TEST(SettingsStation, FlippingTheToggleTwiceAndThenProceedingPasses) {
    Desk<SettingsLevel> d;
    EXPECT_EQ(pressCentre(d, d.level.toggle), LevelResult::Running);
    EXPECT_TRUE(d.level.enabled);
    EXPECT_EQ(pressCentre(d, d.level.toggle), LevelResult::Running);
    EXPECT_FALSE(d.level.enabled);
    EXPECT_EQ(pressCentre(d, d.level.proceedButton), LevelResult::Solved);
}

TEST(SettingsStation, ProceedingWithTheToggleEnabledFails) {
    Desk<SettingsLevel> d;
    pressCentre(d, d.level.toggle);
    EXPECT_EQ(pressCentre(d, d.level.proceedButton), LevelResult::Failed);
}

TEST(SettingsStation, TheToggleShowsItsStateByColourAndKnob) {
    Desk<SettingsLevel> d;
    const Rect& t = d.level.toggle;
    const Color knob = rgb(216, 199, 156);
    {
        Drawn off(d.level);
        EXPECT_EQ(off.at(t.x + 18, t.y + 18), knob);
        EXPECT_EQ(off.at(t.x + t.w - 18, t.y + 18), rgb(99, 77, 26));
        const Rect& p = d.level.proceedButton;
        EXPECT_EQ(off.at(p.x + 6, p.y + p.h / 2), rgb(199, 154, 53));
    }
    pressCentre(d, t);
    Drawn on(d.level);
    EXPECT_EQ(on.at(t.x + t.w - 18, t.y + 18), knob);
    EXPECT_EQ(on.at(t.x + 18, t.y + 18), rgb(70, 224, 138));
}

TEST(SettingsStation, TheToggleClicksEachTimeAndProceedingAfterTwoFlipsPassesAlone) {
    Desk<SettingsLevel> d;
    EXPECT_EQ(pressCentre(d, d.level.toggle), LevelResult::Running);
    EXPECT_EQ(d.sounds, Sounds{"click"});
    EXPECT_EQ(pressCentre(d, d.level.toggle), LevelResult::Running);
    EXPECT_EQ(d.soundsSince(1), Sounds{"click"});
    EXPECT_EQ(pressCentre(d, d.level.proceedButton), LevelResult::Solved);
    EXPECT_EQ(d.soundsSince(2), Sounds{"pass"});
}

TEST(SettingsStation, OnlyAPressCountsNotAButtonHeldOverTheToggleOrProceed) {
    Desk<SettingsLevel> d;
    holdWithoutPressing(d, 558, 268);
    EXPECT_FALSE(d.level.enabled);
    holdWithoutPressing(d, 683, 574);
}

TEST(SettingsStation, ProceedingWithTheToggleLeftOffPlaysThePassSoundAlone) {
    Desk<SettingsLevel> d;
    EXPECT_EQ(pressCentre(d, d.level.proceedButton), LevelResult::Solved);
    EXPECT_EQ(d.sounds, Sounds{"pass"});
}

TEST(SettingsStation, ProceedingWithTheToggleOnPlaysTheFailSoundAlone) {
    Desk<SettingsLevel> d;
    pressCentre(d, d.level.toggle);
    EXPECT_EQ(pressCentre(d, d.level.proceedButton), LevelResult::Failed);
    EXPECT_EQ(d.soundsSince(1), Sounds{"fail"});
}

TEST(SettingsStation, ClicksOffTheToggleAndTheButtonChangeNothingAndMakeNoSound) {
    // Toggle {523, 250, 70, 36}, button {593, 550, 180, 48}: their right and
    // bottom edges are outside them, and so is the label above the toggle.
    Desk<SettingsLevel> d;
    for (const auto& [x, y] : std::vector<std::pair<int, int>>{
             {593, 260}, {540, 286}, {530, 230}, {773, 560}, {683, 598}, {592, 570}, {683, 400}}) {
        EXPECT_EQ(pressAt(d, x, y), LevelResult::Running) << x << "," << y;
        d.release(x, y, 0.0);
    }
    EXPECT_FALSE(d.level.enabled);
    EXPECT_EQ(d.sounds, Sounds{});
    // Moving over the toggle and letting go there flips nothing either.
    d.pointAt(540, 260);
    EXPECT_EQ(d.step(0.016), LevelResult::Running);
    EXPECT_EQ(d.release(540, 260), LevelResult::Running);
    EXPECT_FALSE(d.level.enabled);
    EXPECT_EQ(d.sounds, Sounds{});
}

// The settings page drawn longhand: the warning over the toggle at
// (cx - 160, 250 - 30), the toggle's pill and knob, the brass PROCEED button.
void paintSettings(Graphics& g, bool on) {
    g.text("DO NOT ENABLE EXIT", 523, 220, TextSize::Normal, rgb(255, 170, 46), false, false);
    g.roundRect(Rect{523, 250, 70, 36}, 18, on ? rgb(70, 224, 138) : rgb(99, 77, 26), true);
    g.circle(on ? 575 : 541, 268, 14, rgb(216, 199, 156), true);
    g.roundRect(Rect{593, 550, 180, 48}, 8, rgb(199, 154, 53), true);
    g.text("PROCEED", 683, 574, TextSize::Normal, rgb(20, 20, 20), true, true);
}

TEST(SettingsStation, OffTheKnobSitsLeftOnADarkPill) {
    Desk<SettingsLevel> d;
    EXPECT_TRUE(test::samePicture([&](Graphics& g) { d.level.render(g); },
                                  [](Graphics& g) { paintSettings(g, false); }));
}

TEST(SettingsStation, OnTheKnobSitsRightOnAGreenPill) {
    Desk<SettingsLevel> d;
    pressCentre(d, d.level.toggle);
    EXPECT_TRUE(test::samePicture([&](Graphics& g) { d.level.render(g); },
                                  [](Graphics& g) { paintSettings(g, true); }));
}

// ---------------------------------------------------------------------------
// The safety exam

TEST(QuizStation, FourBoxesAndTheAnswerIsOneDrawModuloFour) {
    for (std::uint32_t seed : {1u, 2u, 3u, 4u, 5489u}) {
        Desk<QuizLevel> d(seed);
        EXPECT_EQ(d.level.answer, static_cast<int>(nthRaw(seed, 0) % 4u)) << seed;
        EXPECT_EQ(d.rng, test::engineAfter(seed, 1)) << seed;
    }
    Desk<QuizLevel> d;
    EXPECT_EQ(d.level.count, 4);
    EXPECT_EQ(d.level.boxes[0].x, 263 + 60);
    EXPECT_EQ(d.level.boxes[0].y, kTop + 70);
    EXPECT_EQ(d.level.boxes[3].y, kTop + 70 + 186);
    EXPECT_EQ(d.level.boxes[3].w, 720);
    EXPECT_EQ(d.level.boxes[3].h, 46);
}

TEST(QuizStation, TheEmptyBoxPasses) {
    Desk<QuizLevel> d(3);
    EXPECT_EQ(pressCentre(d, d.level.boxes[d.level.answer]), LevelResult::Solved);
}

TEST(QuizStation, ALabelledBoxFailsAndAClickBetweenBoxesDoesNothing) {
    Desk<QuizLevel> d(3);
    const Rect& b = d.level.boxes[0];
    EXPECT_EQ(pressAt(d, b.x + 5, b.y + b.h), LevelResult::Running);   // the gap below box 0
    EXPECT_EQ(pressCentre(d, d.level.boxes[(d.level.answer + 1) % 4]), LevelResult::Failed);
}

// The exam drawn, box by box, against a box drawn by hand with only the
// label it should carry: A, B and C in order over the labelled boxes, and
// nothing at all (so never "D) Both A and C") on the blank one.
TEST(QuizStation, LabelsAreAThenBThenCAndTheEmptyBoxIsBlank) {
    const char* const labels[] = {"A) Always", "B) Never", "C) Only on Tuesdays"};
    test::SoftwareCanvas canvas;   // one canvas: fonts live as long as it does
    canvas.useGameFonts();
    for (std::uint32_t seed : {1u, 2u, 3u, 4u, 5u, 6u}) {
        Desk<QuizLevel> d(seed);
        canvas.fill(rgb(0, 0, 0));
        d.level.render(canvas.graphics);
        std::vector<Color> shot;
        for (const Rect& b : d.level.boxes) {
            for (int y = b.y; y < b.y + b.h; ++y) {
                for (int x = b.x; x < b.x + b.w; ++x) {
                    shot.push_back(canvas.pixel(x, y));
                }
            }
        }
        // The blank box really is blank, whatever the labels are.
        const Rect& blank = d.level.boxes[d.level.answer];
        EXPECT_EQ(canvas.pixel(blank.x + 40, blank.y + 22), rgb(109, 84, 29));

        canvas.fill(rgb(0, 0, 0));
        int next = 0;
        for (int i = 0; i < 4; ++i) {
            const Rect& b = d.level.boxes[i];
            canvas.graphics.roundRect(b, 6, rgb(109, 84, 29), true);
            if (i != d.level.answer) {
                canvas.graphics.text(labels[next++], b.x + 16, b.y + 12, TextSize::Normal,
                                     rgb(20, 20, 20), false, false);
            }
        }
        std::size_t k = 0;
        for (int i = 0; i < 4; ++i) {
            const Rect& b = d.level.boxes[i];
            int differing = 0;
            for (int y = b.y; y < b.y + b.h; ++y) {
                for (int x = b.x; x < b.x + b.w; ++x) {
                    differing += shot[k++] != canvas.pixel(x, y) ? 1 : 0;
                }
            }
            EXPECT_EQ(differing, 0) << "seed " << seed << " box " << i;
        }
    }
}

TEST(QuizStation, TheBlankBoxPlaysThePassSoundAlone) {
    Desk<QuizLevel> d(3);
    EXPECT_EQ(pressCentre(d, d.level.boxes[d.level.answer]), LevelResult::Solved);
    EXPECT_EQ(d.sounds, Sounds{"pass"});
}

TEST(QuizStation, OnlyAPressCountsNotAButtonHeldOverABox) {
    Desk<QuizLevel> d(3);
    holdWithoutPressing(d, 683, 260 + 124 + 23);   // the blank box 2
    holdWithoutPressing(d, 683, 260 + 23);         // box 0
}

TEST(QuizStation, EachLabelledBoxPlaysTheFailSoundAlone) {
    for (int wrong = 0; wrong < 4; ++wrong) {
        Desk<QuizLevel> d(3);   // the blank box is 2
        if (wrong == 2) {
            continue;
        }
        EXPECT_EQ(pressCentre(d, d.level.boxes[wrong]), LevelResult::Failed) << wrong;
        EXPECT_EQ(d.sounds, Sounds{"fail"}) << wrong;
    }
}

TEST(QuizStation, ClicksBesideTheBoxesMakeNoSound) {
    // Boxes {323, 260 + 62 i, 720, 46}: the gaps, the right and bottom edges,
    // the heading and the floor.
    Desk<QuizLevel> d(3);
    for (const auto& [x, y] : std::vector<std::pair<int, int>>{
             {500, 306}, {500, 321}, {1043, 270}, {322, 270}, {683, 224}, {683, 492}, {683, 600}}) {
        EXPECT_EQ(pressAt(d, x, y), LevelResult::Running) << x << "," << y;
    }
    EXPECT_EQ(d.sounds, Sounds{});
}

// The exam drawn longhand: heading, four brown boxes with the labels A, B, C
// in order on every box but the blank one, the amber line of orders.
void paintQuiz(Graphics& g, int blank) {
    g.text("SAFETY EXAM: SELECT THE CORRECT ANSWER", 683, 224, TextSize::Normal, rgb(255, 216, 107),
           true, false);
    const char* const labels[] = {"A) Always", "B) Never", "C) Only on Tuesdays"};
    int next = 0;
    for (int i = 0; i < 4; ++i) {
        g.roundRect(Rect{323, 260 + 62 * i, 720, 46}, 6, rgb(109, 84, 29), true);
        if (i != blank) {
            g.text(labels[next++], 339, 272 + 62 * i, TextSize::Normal, rgb(20, 20, 20), false, false);
        }
    }
    g.text("EVERY ANSWER IS WRONG", 683, 604, TextSize::Small, rgb(178, 119, 32), true, false);
}

TEST(QuizStation, SeedFiveFourEightNineLeavesTheFirstBoxBlank) {
    // 3499211612 % 4 = 0.
    Desk<QuizLevel> d;
    EXPECT_TRUE(test::samePicture([&](Graphics& g) { d.level.render(g); },
                                  [](Graphics& g) { paintQuiz(g, 0); }));
}

TEST(QuizStation, SeedThreeLeavesTheThirdBoxBlankAndLabelsTheLastC) {
    // Seed 3's first output 2365658986 % 4 = 2.
    Desk<QuizLevel> d(3);
    EXPECT_TRUE(test::samePicture([&](Graphics& g) { d.level.render(g); },
                                  [](Graphics& g) { paintQuiz(g, 2); }));
}

// ---------------------------------------------------------------------------
// The reading test

TEST(StroopStation, WordThenInkThenASwatchShuffleFromTheFront) {
    for (std::uint32_t seed : {1u, 2u, 3u, 9u, 5489u}) {
        Desk<StroopLevel> d(seed);
        Rng ref(seed);
        const int word = static_cast<int>(ref() & 3u);
        int ink = static_cast<int>(ref() & 3u);
        if (ink == word) {
            ink = (ink + 1) & 3;
        }
        EXPECT_EQ(d.level.word, word) << seed;
        EXPECT_EQ(d.level.ink, ink) << seed;
        // Three swaps, each with one multiply-and-shift draw (no seed here
        // lands in the tiny rejection zone).
        int colors[4] = {0, 1, 2, 3};
        for (int k = 1; k < 4; ++k) {
            const std::uint64_t p = static_cast<std::uint64_t>(ref()) * static_cast<std::uint64_t>(k + 1);
            ASSERT_GE(static_cast<std::uint32_t>(p), static_cast<std::uint32_t>(k + 1));
            std::swap(colors[k], colors[static_cast<int>(p >> 32)]);
        }
        for (int i = 0; i < 4; ++i) {
            EXPECT_EQ(d.level.swatchColors[i], colors[i]) << seed << " swatch " << i;
        }
        EXPECT_EQ(d.rng, ref) << seed;
    }
    Desk<StroopLevel> d;
    const int xs[] = {kCx - 256, kCx - 122, kCx + 12, kCx + 146};
    for (int i = 0; i < 4; ++i) {
        EXPECT_EQ(d.level.swatches[i].x, xs[i]);
        EXPECT_EQ(d.level.swatches[i].y, kTop + 215);
        EXPECT_EQ(d.level.swatches[i].w, 110);
        EXPECT_EQ(d.level.swatches[i].h, 110);
    }
}

TEST(StroopStation, TheInkNeverMatchesTheWord) {
    int bumped = 0;
    for (std::uint32_t seed = 1; seed <= 400; ++seed) {
        Desk<StroopLevel> d(seed);
        EXPECT_NE(d.level.ink, d.level.word) << seed;
        const int first = static_cast<int>(nthRaw(seed, 0) & 3u);
        const int second = static_cast<int>(nthRaw(seed, 1) & 3u);
        if (first == second) {
            ++bumped;
            EXPECT_EQ(d.level.ink, (second + 1) & 3) << seed;
        }
    }
    EXPECT_GT(bumped, 0);   // the collision case was really exercised
}

int swatchOf(const StroopLevel& level, int color) {
    for (int i = 0; i < 4; ++i) {
        if (level.swatchColors[i] == color) {
            return i;
        }
    }
    return -1;
}

TEST(StroopStation, TheWordsSwatchPassesAndTheInksSwatchFails) {
    Desk<StroopLevel> pass(21);
    EXPECT_EQ(pressCentre(pass, pass.level.swatches[swatchOf(pass.level, pass.level.word)]),
              LevelResult::Solved);
    Desk<StroopLevel> fail(21);
    EXPECT_EQ(pressCentre(fail, fail.level.swatches[swatchOf(fail.level, fail.level.ink)]),
              LevelResult::Failed);
    Desk<StroopLevel> miss(21);
    EXPECT_EQ(pressAt(miss, kCx, kTop + 200), LevelResult::Running);
}

TEST(StroopStation, TheWordWearsTheInkAndTheSwatchesTheirColours) {
    const Color colours[] = {rgb(255, 58, 42), rgb(70, 224, 138), rgb(255, 216, 107),
                             rgb(120, 160, 255)};
    for (std::uint32_t seed : {1u, 2u, 3u}) {
        Desk<StroopLevel> d(seed);
        Drawn shot(d.level, true);
        for (int i = 0; i < 4; ++i) {
            const Rect& s = d.level.swatches[i];
            EXPECT_EQ(shot.at(s.x + 55, s.y + 55), colours[d.level.swatchColors[i]]);
        }
        int inkPixels = 0;
        int wordPixels = 0;
        for (int y = kTop; y < kTop + 110; ++y) {
            for (int x = kCx - 200; x < kCx + 200; ++x) {
                inkPixels += shot.at(x, y) == colours[d.level.ink] ? 1 : 0;
                wordPixels += shot.at(x, y) == colours[d.level.word] ? 1 : 0;
            }
        }
        EXPECT_GT(inkPixels, 200) << seed;
        EXPECT_EQ(wordPixels, 0) << seed;
    }
}

TEST(StroopStation, TheWordsSwatchPlaysThePassSoundAlone) {
    // Seed 5489: the word is RED (3499211612 & 3 = 0) and RED is on the last
    // swatch (the colours run 3, 1, 2, 0).
    Desk<StroopLevel> d;
    EXPECT_EQ(pressAt(d, 829 + 55, 405 + 55), LevelResult::Solved);
    EXPECT_EQ(d.sounds, Sounds{"pass"});
}

TEST(StroopStation, TheInksSwatchAndEveryOtherPlayTheFailSoundAlone) {
    // The ink is AMBER (581869302 & 3 = 2), on the third swatch; BLUE and
    // GREEN sit on the first two.
    for (int swatch = 0; swatch < 3; ++swatch) {
        Desk<StroopLevel> d;
        EXPECT_EQ(pressAt(d, 427 + 134 * swatch + 55, 460), LevelResult::Failed) << swatch;
        EXPECT_EQ(d.sounds, Sounds{"fail"}) << swatch;
    }
}

TEST(StroopStation, OnlyAPressCountsNotAButtonHeldOverASwatch) {
    Desk<StroopLevel> d;
    holdWithoutPressing(d, 884, 460);   // RED, the word's
    holdWithoutPressing(d, 750, 460);   // AMBER, the ink's
}

TEST(StroopStation, ClicksBesideTheSwatchesMakeNoSound) {
    // Swatches at x 427, 561, 695, 829 and y 405, 110 square: the gaps
    // between them, their bottom edge, the word itself and the hint.
    Desk<StroopLevel> d;
    for (const auto& [x, y] : std::vector<std::pair<int, int>>{
             {537, 450}, {560, 450}, {939, 450}, {426, 450}, {884, 515}, {884, 404}, {683, 250},
             {683, 310}}) {
        EXPECT_EQ(pressAt(d, x, y), LevelResult::Running) << x << "," << y;
    }
    EXPECT_EQ(d.sounds, Sounds{});
}

// The reading test drawn longhand: the word at (683, 250) in Giant letters,
// the hint under it, four swatches, the line of orders.
void paintStroop(Graphics& g, const char* word, Color ink, const Color (&swatch)[4]) {
    g.text(word, 683, 250, TextSize::Giant, ink, true, true);
    g.text("click the swatch of this WORD (ignore its colour)", 683, 310, TextSize::Small,
           rgb(255, 170, 46), true, true);
    const int xs[] = {427, 561, 695, 829};
    for (int i = 0; i < 4; ++i) {
        g.roundRect(Rect{xs[i], 405, 110, 110}, 10, swatch[i], true);
    }
    g.text("MEANING, NOT INK", 683, 604, TextSize::Small, rgb(178, 119, 32), true, false);
}

constexpr Color kRed = rgb(255, 58, 42);
constexpr Color kGreen = rgb(70, 224, 138);
constexpr Color kAmber = rgb(255, 216, 107);
constexpr Color kBlue = rgb(120, 160, 255);

TEST(StroopStation, SeedFiveFourEightNineSaysRedInAmberInk) {
    // Word 3499211612 & 3 = 0 (RED), ink 581869302 & 3 = 2 (AMBER). The
    // shuffle: 3890346734 x 2 >> 32 = 1 (no swap), 3586334585 x 3 >> 32 = 2
    // (no swap), 545404204 x 4 >> 32 = 0 (swap 3 and 0): 3, 1, 2, 0.
    Desk<StroopLevel> d;
    const Color swatches[4] = {kBlue, kGreen, kAmber, kRed};
    EXPECT_TRUE(test::samePicture([&](Graphics& g) { d.level.render(g); },
                                  [&](Graphics& g) { paintStroop(g, "RED", kAmber, swatches); }));
}

TEST(StroopStation, SeedFourBumpsTheInkOffTheWordToBlue) {
    // Seed 4: word 4153361530 & 3 = 2 (AMBER); the ink draw 3868139694 & 3
    // is 2 as well, so it moves on to 3 (BLUE). The shuffle: 2350344631 x 2
    // >> 32 = 1, 741720773 x 3 >> 32 = 0 (swap 2 and 0), 4177647489 x 4 >> 32
    // = 3: 2, 1, 0, 3.
    Desk<StroopLevel> d(4);
    const Color swatches[4] = {kAmber, kGreen, kRed, kBlue};
    EXPECT_TRUE(test::samePicture([&](Graphics& g) { d.level.render(g); },
                                  [&](Graphics& g) { paintStroop(g, "AMBER", kBlue, swatches); }));
}

// ---------------------------------------------------------------------------
// The stamp pads

// The first seed whose first draw has its top bit as asked.
std::uint32_t seedWithTopBit(bool set) {
    std::uint32_t seed = 1;
    while (((nthRaw(seed, 0) >> 31) != 0u) != set) {
        ++seed;
    }
    return seed;
}

TEST(StampStation, TheTopBitOfOneDrawSwapsThePads) {
    for (bool set : {false, true}) {
        const std::uint32_t seed = seedWithTopBit(set);
        Desk<StampLevel> d(seed);
        EXPECT_EQ(d.level.swapped, set);
        EXPECT_EQ(d.rng, test::engineAfter(seed, 1));
        EXPECT_EQ(d.level.leftPad.x, 263 + 210 - 90);
        EXPECT_EQ(d.level.rightPad.x, 263 + 630 - 90);
        EXPECT_EQ(d.level.leftPad.y, kTop + 215 - 70);
        EXPECT_EQ(d.level.rightPad.y, kTop + 215 - 70);
        EXPECT_EQ(d.level.rightPad.w, 180);
        EXPECT_EQ(d.level.rightPad.h, 140);
    }
}

TEST(StampStation, RejectedPassesApprovedFailsOnEitherSide) {
    for (bool set : {false, true}) {
        Desk<StampLevel> pass(seedWithTopBit(set));
        const Rect& rejected = set ? pass.level.leftPad : pass.level.rightPad;
        EXPECT_EQ(pressAt(pass, kCx, kTop + 215), LevelResult::Running);   // between the pads
        EXPECT_EQ(pressCentre(pass, rejected), LevelResult::Solved);
        Desk<StampLevel> fail(seedWithTopBit(set));
        const Rect& approved = set ? fail.level.rightPad : fail.level.leftPad;
        EXPECT_EQ(pressCentre(fail, approved), LevelResult::Failed);
    }
}

TEST(StampStation, RejectedIsDarkRedAndApprovedDarkGreen) {
    for (bool set : {false, true}) {
        Desk<StampLevel> d(seedWithTopBit(set));
        Drawn shot(d.level);
        const Rect& l = d.level.leftPad;
        const Rect& r = d.level.rightPad;
        const Color redPad = rgb(153, 34, 25);
        const Color greenPad = rgb(42, 134, 82);
        EXPECT_EQ(shot.at(l.x + 10, l.y + 10), set ? redPad : greenPad);
        EXPECT_EQ(shot.at(r.x + 10, r.y + 10), set ? greenPad : redPad);
    }
}

TEST(StampStation, RejectedPlaysThePassSoundAloneAndApprovedTheFailSoundAlone) {
    for (bool set : {false, true}) {
        Desk<StampLevel> pass(seedWithTopBit(set));
        pressCentre(pass, set ? pass.level.leftPad : pass.level.rightPad);
        EXPECT_EQ(pass.sounds, Sounds{"pass"}) << set;
        Desk<StampLevel> fail(seedWithTopBit(set));
        pressCentre(fail, set ? fail.level.rightPad : fail.level.leftPad);
        EXPECT_EQ(fail.sounds, Sounds{"fail"}) << set;
    }
}

TEST(StampStation, OnlyAPressCountsNotAButtonHeldOverAPad) {
    Desk<StampLevel> d;
    holdWithoutPressing(d, 473, 405);
    holdWithoutPressing(d, 893, 405);
}

TEST(StampStation, ClicksBesideThePadsMakeNoSound) {
    // Pads {383, 335, 180, 140} and {803, 335, 180, 140}.
    Desk<StampLevel> d;
    for (const auto& [x, y] : std::vector<std::pair<int, int>>{
             {683, 405}, {563, 405}, {983, 405}, {473, 475}, {893, 334}, {382, 400}}) {
        EXPECT_EQ(pressAt(d, x, y), LevelResult::Running) << x << "," << y;
    }
    EXPECT_EQ(d.sounds, Sounds{});
}

// Both pads drawn longhand: the REJECTED pad in red x 0.6 = (153, 34, 25),
// the APPROVED pad in green x 0.6 = (42, 134, 82), each word at its centre.
void paintStamps(Graphics& g, bool leftRejected) {
    const int rejectedX = leftRejected ? 383 : 803;
    const int approvedX = leftRejected ? 803 : 383;
    g.roundRect(Rect{rejectedX, 335, 180, 140}, 8, rgb(153, 34, 25), true);
    g.roundRect(Rect{approvedX, 335, 180, 140}, 8, rgb(42, 134, 82), true);
    g.text("REJECTED", rejectedX + 90, 405, TextSize::Normal, rgb(20, 20, 20), true, true);
    g.text("APPROVED", approvedX + 90, 405, TextSize::Normal, rgb(20, 20, 20), true, true);
}

TEST(StampStation, SeedFiveFourEightNinePutsRejectedOnTheLeft) {
    // 3499211612 has its top bit set: swapped.
    Desk<StampLevel> d;
    EXPECT_TRUE(test::samePicture([&](Graphics& g) { d.level.render(g); },
                                  [](Graphics& g) { paintStamps(g, true); }));
}

TEST(StampStation, SeedOnePutsRejectedOnTheRight) {
    // Seed 1's first output 1791095845 is below 2^31: not swapped.
    Desk<StampLevel> d(1);
    EXPECT_TRUE(test::samePicture([&](Graphics& g) { d.level.render(g); },
                                  [](Graphics& g) { paintStamps(g, false); }));
}

// ---------------------------------------------------------------------------
// The backwards conveyor

TEST(ReverseStation, TheMarkIsOneDrawsLowBitAndTheLayoutIsFixed) {
    for (std::uint32_t seed : {1u, 2u, 3u, 4u, 5489u}) {
        Desk<ReverseLevel> d(seed);
        EXPECT_DOUBLE_EQ(d.level.target, (nthRaw(seed, 0) & 1u) == 1u ? 0.12 : 0.88) << seed;
        EXPECT_EQ(d.rng, test::engineAfter(seed, 1)) << seed;
    }
    Desk<ReverseLevel> d;
    EXPECT_DOUBLE_EQ(d.level.position, 0.5);
    EXPECT_EQ(d.level.leftButton.x, kCx - 170);
    EXPECT_EQ(d.level.rightButton.x, kCx + 30);
    EXPECT_EQ(d.level.rightButton.y, kTop + 430 - 60);
    EXPECT_EQ(d.level.rightButton.w, 140);
    EXPECT_EQ(d.level.rightButton.h, 44);
    EXPECT_EQ(d.level.track.x, 263 + 60);
    EXPECT_EQ(d.level.track.y, kTop + 215 - 10);
    EXPECT_EQ(d.level.track.w, 720);
    EXPECT_EQ(d.level.track.h, 20);
}

TEST(ReverseStation, FivePressesOfLeftReachNinetyHundredthsAndPassForTheRightMark) {
    Desk<ReverseLevel> d;
    d.level.target = 0.88;
    for (int i = 0; i < 4; ++i) {
        EXPECT_EQ(pressCentre(d, d.level.leftButton), LevelResult::Running);
    }
    EXPECT_NEAR(d.level.position, 0.82, 1e-9);
    EXPECT_EQ(pressCentre(d, d.level.leftButton), LevelResult::Solved);
    EXPECT_NEAR(d.level.position, 0.90, 1e-9);
}

TEST(ReverseStation, FivePressesOfRightReachTenHundredthsAndPassForTheLeftMark) {
    Desk<ReverseLevel> d;
    d.level.target = 0.12;
    for (int i = 0; i < 4; ++i) {
        EXPECT_EQ(pressCentre(d, d.level.rightButton), LevelResult::Running);
    }
    EXPECT_EQ(pressCentre(d, d.level.rightButton), LevelResult::Solved);
    EXPECT_NEAR(d.level.position, 0.10, 1e-9);
}

TEST(ReverseStation, AtTheEndsTheKnobClampsAndLaterStepsFallOnOtherValues) {
    Desk<ReverseLevel> d;
    d.level.target = 0.88;
    for (int i = 0; i < 6; ++i) {
        pressCentre(d, d.level.rightButton);
    }
    EXPECT_NEAR(d.level.position, 0.02, 1e-9);
    pressCentre(d, d.level.rightButton);
    EXPECT_DOUBLE_EQ(d.level.position, 0.0);
    // From 0 the steps land on 0.08, 0.16, ... and reach 0.88 itself.
    for (int i = 1; i <= 10; ++i) {
        EXPECT_EQ(pressCentre(d, d.level.leftButton), LevelResult::Running) << i;
        EXPECT_NEAR(d.level.position, 0.08 * i, 1e-9);
    }
    EXPECT_EQ(pressCentre(d, d.level.leftButton), LevelResult::Solved);
    EXPECT_NEAR(d.level.position, 0.88, 1e-9);

    Desk<ReverseLevel> up;
    up.level.target = 0.12;
    for (int i = 0; i < 7; ++i) {
        pressCentre(up, up.level.leftButton);
    }
    EXPECT_DOUBLE_EQ(up.level.position, 1.0);
    pressCentre(up, up.level.rightButton);
    EXPECT_NEAR(up.level.position, 0.92, 1e-9);
}

TEST(ReverseStation, TheButtonThatPointsAtTheMarkMovesTheKnobAwayAndNeverFails) {
    Desk<ReverseLevel> d;
    d.level.target = 0.88;   // the mark is on the right
    for (int i = 0; i < 12; ++i) {
        EXPECT_EQ(pressCentre(d, d.level.rightButton), LevelResult::Running);
    }
    EXPECT_DOUBLE_EQ(d.level.position, 0.0);
    EXPECT_EQ(pressAt(d, kCx, kTop + 20), LevelResult::Running);
    EXPECT_DOUBLE_EQ(d.level.position, 0.0);
}

TEST(ReverseStation, DrawsTrackMarkKnobAndButtons) {
    Desk<ReverseLevel> d;
    d.level.target = 0.12;
    d.level.position = 0.75;
    Drawn shot(d.level);
    const Rect& t = d.level.track;
    const int markX = t.x - 4 + static_cast<int>(720 * 0.12);   // 405
    EXPECT_EQ(shot.at(markX + 4, t.y - 6), rgb(70, 224, 138));
    EXPECT_EQ(shot.at(markX + 4, t.y + t.h + 6), rgb(70, 224, 138));
    EXPECT_EQ(shot.at(t.x + 540, t.y + 10), rgb(255, 58, 42));      // knob at 323 + 540
    EXPECT_EQ(shot.at(t.x + 540 + 17, t.y + 10), rgb(30, 30, 30));  // track beyond it
    EXPECT_EQ(shot.at(t.x + 300, t.y + 10), rgb(30, 30, 30));
    const Rect& l = d.level.leftButton;
    EXPECT_EQ(shot.at(l.x + 6, l.y + 6), rgb(139, 107, 37));
    const Rect& r = d.level.rightButton;
    EXPECT_EQ(shot.at(r.x + r.w - 6, r.y + r.h - 6), rgb(139, 107, 37));
}

TEST(ReverseStation, EachButtonPressClicksAndTheLastOneAlsoPasses) {
    Desk<ReverseLevel> d;   // seed 5489: the mark at 0.88
    for (int i = 0; i < 4; ++i) {
        EXPECT_EQ(pressCentre(d, d.level.leftButton), LevelResult::Running);
        EXPECT_EQ(d.soundsSince(static_cast<std::size_t>(i)), Sounds{"click"}) << i;
    }
    EXPECT_EQ(pressCentre(d, d.level.rightButton), LevelResult::Running);
    EXPECT_EQ(d.soundsSince(4), Sounds{"click"});
    EXPECT_EQ(pressCentre(d, d.level.leftButton), LevelResult::Running);
    EXPECT_EQ(pressCentre(d, d.level.leftButton), LevelResult::Solved);
    EXPECT_EQ(d.soundsSince(6), (Sounds{"click", "pass"}));
}

TEST(ReverseStation, OnlyAPressCountsNotAButtonHeldOverAButton) {
    Desk<ReverseLevel> d;
    holdWithoutPressing(d, 583, 582);
    holdWithoutPressing(d, 783, 582);
    EXPECT_DOUBLE_EQ(d.level.position, 0.5);
}

TEST(ReverseStation, APressAgainstTheClampStillClicks) {
    Desk<ReverseLevel> d;
    d.level.position = 0.0;
    EXPECT_EQ(pressCentre(d, d.level.rightButton), LevelResult::Running);
    EXPECT_DOUBLE_EQ(d.level.position, 0.0);
    EXPECT_EQ(d.sounds, Sounds{"click"});
}

TEST(ReverseStation, PressesOffTheButtonsMakeNoSoundAndDoNotMoveTheKnob) {
    // Buttons {513, 560, 140, 44} and {713, 560, 140, 44}: the gap between
    // them, their right and bottom edges, the track and the knob itself.
    Desk<ReverseLevel> d;
    for (const auto& [x, y] : std::vector<std::pair<int, int>>{
             {683, 580}, {653, 580}, {853, 580}, {583, 604}, {512, 580}, {683, 405}, {950, 405}}) {
        EXPECT_EQ(pressAt(d, x, y), LevelResult::Running) << x << "," << y;
    }
    EXPECT_DOUBLE_EQ(d.level.position, 0.5);
    EXPECT_EQ(d.sounds, Sounds{});
}

TEST(ReverseStation, AnyPressWithTheKnobOnTheMarkPassesEvenOffTheButtons) {
    Desk<ReverseLevel> d;
    d.level.position = 0.9;   // 0.02 from the mark at 0.88
    EXPECT_EQ(d.step(0.016), LevelResult::Running);   // no press: nothing checked
    EXPECT_EQ(pressAt(d, 683, 300), LevelResult::Solved);
    EXPECT_EQ(d.sounds, Sounds{"pass"});
}

TEST(ReverseStation, FourHundredthsFromTheMarkIsNotCloseEnough) {
    Desk<ReverseLevel> d;
    d.level.position = 0.76;   // one press of "<< LEFT" makes 0.84, 0.04 short
    EXPECT_EQ(pressCentre(d, d.level.leftButton), LevelResult::Running);
    EXPECT_NEAR(d.level.position, 0.84, 1e-9);
    EXPECT_EQ(d.sounds, Sounds{"click"});
}

// The conveyor drawn longhand: the dark track {323, 395, 720, 20}, the green
// mark 8 wide and 36 tall, the red knob on the track's middle line, the two
// brass buttons with their lying labels, the line of orders.
void paintReverse(Graphics& g, int markX, int knobX) {
    g.roundRect(Rect{323, 395, 720, 20}, 6, rgb(30, 30, 30), true);
    g.rect(Rect{markX, 387, 8, 36}, rgb(70, 224, 138), true);
    g.circle(knobX, 405, 14, rgb(255, 58, 42), true);
    g.roundRect(Rect{513, 560, 140, 44}, 8, rgb(139, 107, 37), true);
    g.roundRect(Rect{713, 560, 140, 44}, 8, rgb(139, 107, 37), true);
    g.text("<< LEFT", 583, 582, TextSize::Normal, rgb(20, 20, 20), true, true);
    g.text("RIGHT >>", 783, 582, TextSize::Normal, rgb(20, 20, 20), true, true);
    g.text("CONTROLS ARE INVERTED", 683, 604, TextSize::Small, rgb(178, 119, 32), true, false);
}

TEST(ReverseStation, SeedFiveFourEightNinePutsTheMarkRightOfACentredKnob) {
    // 3499211612 is even: the mark at 0.88, x = 323 - 4 + 633 (720 x 0.88 =
    // 633.6, truncated) = 952; the knob at 323 + 360 = 683.
    Desk<ReverseLevel> d;
    EXPECT_TRUE(test::samePicture([&](Graphics& g) { d.level.render(g); },
                                  [](Graphics& g) { paintReverse(g, 952, 683); }));
}

TEST(ReverseStation, SeedOnePutsTheMarkLeftAndRightMovesTheKnobLeft) {
    // 1791095845 is odd: the mark at 0.12, x = 319 + 86 (86.4) = 405. One
    // press of "RIGHT >>" takes the knob to 0.42: 323 + 302 (302.4) = 625.
    Desk<ReverseLevel> d(1);
    pressCentre(d, d.level.rightButton);
    EXPECT_TRUE(test::samePicture([&](Graphics& g) { d.level.render(g); },
                                  [](Graphics& g) { paintReverse(g, 405, 625); }));
}

// ---------------------------------------------------------------------------
// The odd tile

struct GenericStation : ::testing::Test {
    GenericLevel level;
    Rng rng{5489};
    AudioSystem silent;   // never opened: every sound is a no-op
    InputState in;

    void SetUp() override { level.setup(LevelDef{}, rng, kPlayArea); }

    LevelResult clickAt(int x, int y) {
        in.mouseX = x;
        in.mouseY = y;
        in.mousePressed = true;
        return level.update(0.016, in, silent);
    }
};

TEST_F(GenericStation, SixTilesInTwoRowsOfThreeAroundTheCentre) {
    // cx = 263 + 420 = 683.
    EXPECT_EQ(level.count, 6);
    EXPECT_EQ(level.boxes[0].x, 434);
    EXPECT_EQ(level.boxes[0].y, 210);
    EXPECT_EQ(level.boxes[2].x, 782);
    EXPECT_EQ(level.boxes[5].x, 782);
    EXPECT_EQ(level.boxes[5].y, 344);
    EXPECT_EQ(level.boxes[4].w, 150);
    EXPECT_EQ(level.boxes[4].h, 110);
}

TEST_F(GenericStation, TheOddTileIsAUniformDrawOfZeroToFive) {
    // Seed 5489's first output times 6 has the high word 4.
    EXPECT_EQ(level.answer, 4);
    EXPECT_EQ(rng, [] { Rng r(5489); r.discard(1); return r; }());
}

TEST_F(GenericStation, ClickingTheOddTilePasses) {
    const Rect& b = level.boxes[level.answer];
    EXPECT_EQ(clickAt(b.x, b.y), LevelResult::Solved);
}

TEST_F(GenericStation, ClickingAnyOtherTileFails) {
    const Rect& b = level.boxes[(level.answer + 1) % 6];
    EXPECT_EQ(clickAt(b.x + b.w - 1, b.y + b.h - 1), LevelResult::Failed);
}

TEST_F(GenericStation, ClicksBetweenTilesAndPointerMovesDoNothing) {
    const Rect& b = level.boxes[0];
    EXPECT_EQ(clickAt(b.x + b.w, b.y), LevelResult::Running);   // half-open edge
    in.mousePressed = false;
    in.mouseX = level.boxes[level.answer].x + 5;
    in.mouseY = level.boxes[level.answer].y + 5;
    EXPECT_EQ(level.update(0.016, in, silent), LevelResult::Running);
}

TEST_F(GenericStation, TheOddTileIsToldOnlyByItsShade) {
    test::SoftwareCanvas canvas;
    canvas.graphics.clear(rgb(0, 0, 0));
    level.render(canvas.graphics);
    const Rect& odd = level.boxes[level.answer];
    const Rect& plain = level.boxes[(level.answer + 1) % 6];
    EXPECT_EQ(canvas.pixel(odd.x + 3, odd.y + odd.h / 2), rgb(189, 146, 50));
    EXPECT_EQ(canvas.pixel(odd.x + odd.w / 2, odd.y + odd.h / 2), rgb(16, 36, 15));
    EXPECT_EQ(canvas.pixel(plain.x + 3, plain.y + plain.h / 2), rgb(159, 123, 42));
    EXPECT_EQ(canvas.pixel(plain.x + plain.w / 2, plain.y + plain.h / 2), rgb(20, 20, 20));
}

TEST_F(GenericStation, TheOddTilePlaysThePassSoundAlone) {
    Desk<GenericLevel> d;
    EXPECT_EQ(pressAt(d, 608 + 75, 344 + 55), LevelResult::Solved);   // tile 4
    EXPECT_EQ(d.sounds, Sounds{"pass"});
}

TEST_F(GenericStation, EveryOtherTilePlaysTheFailSoundAlone) {
    for (int i : {0, 1, 2, 3, 5}) {
        Desk<GenericLevel> d;
        EXPECT_EQ(pressAt(d, 434 + 174 * (i % 3) + 75, 210 + 134 * (i / 3) + 55), LevelResult::Failed)
            << i;
        EXPECT_EQ(d.sounds, Sounds{"fail"}) << i;
    }
}

TEST_F(GenericStation, OnlyAPressCountsNotAButtonHeldOverATile) {
    Desk<GenericLevel> d;
    holdWithoutPressing(d, 683, 399);   // the odd tile 4
    holdWithoutPressing(d, 509, 265);   // tile 0
}

TEST_F(GenericStation, ClicksBetweenTilesMakeNoSound) {
    Desk<GenericLevel> d;
    for (const auto& [x, y] : std::vector<std::pair<int, int>>{
             {584, 260}, {607, 260}, {932, 260}, {500, 320}, {500, 343}, {683, 454}, {433, 260}}) {
        EXPECT_EQ(pressAt(d, x, y), LevelResult::Running) << x << "," << y;
    }
    EXPECT_EQ(d.sounds, Sounds{});
}

TEST_F(GenericStation, SeedFiveFourEightNineShadesTheMiddleTileOfTheSecondRow) {
    // 3499211612 x 6 >> 32 = 4: tile 4, at (434 + 174, 210 + 134).
    EXPECT_TRUE(test::samePicture([&](Graphics& g) { level.render(g); },
                                  [](Graphics& g) {
                                      for (int i = 0; i < 6; ++i) {
                                          const Rect tile{434 + 174 * (i % 3), 210 + 134 * (i / 3),
                                                          150, 110};
                                          const bool odd = i == 4;
                                          g.roundRect(tile, 8,
                                                      odd ? rgb(189, 146, 50) : rgb(159, 123, 42),
                                                      true);
                                          g.rect(Rect{tile.x + 6, tile.y + 6, 138, 98},
                                                 odd ? rgb(16, 36, 15) : rgb(20, 20, 20), true);
                                      }
                                  }));
}

}  // namespace
}  // namespace vorn

namespace vorn::test {
namespace {

// A player who clicks one fixed place, over and over: the obvious wrong move.
struct Clicker final : Solver {
    Clicker(int x, int y) : x(x), y(y) {}
    Intent decide(const Level&, const Hand& hand, double) override { return clickAt(hand, x, y); }
    int x;
    int y;
};

Clicker centreOf(const Rect& r) { return Clicker(r.x + r.w / 2, r.y + r.h / 2); }

bool clickSounded(const StationDriver& bench) {
    return !bench.sounds.empty() && bench.sounds.back() == "click";
}

TEST(PaperworkSolvers, ClearTheAgreementOnEveryDifficulty) {
    EXPECT_EQ(unsolvedRuns("eula"), "");
}

TEST(PaperworkSolvers, ClearTheSettingsPageOnEveryDifficulty) {
    EXPECT_EQ(unsolvedRuns("settings"), "");
}

TEST(PaperworkSolvers, ClearTheExamOnEveryDifficulty) {
    EXPECT_EQ(unsolvedRuns("quiz"), "");
}

TEST(PaperworkSolvers, ClearTheReadingTestOnEveryDifficulty) {
    EXPECT_EQ(unsolvedRuns("stroop"), "");
}

TEST(PaperworkSolvers, ClearTheStampsOnEveryDifficulty) {
    EXPECT_EQ(unsolvedRuns("stamp"), "");
}

TEST(PaperworkSolvers, ClearTheBackwardsConveyorOnEveryDifficulty) {
    EXPECT_EQ(unsolvedRuns("reverse"), "");
}

TEST(GenericSolver, ClearsTheOddTileStationOnEveryDifficulty) {
    EXPECT_EQ(unsolvedRuns("oddtile"), "");
}

TEST(GenericSolver, IsTheFallbackForAnyTypeNoFamilyClaims) {
    LevelDef def = shippedRecord("oddtile");
    def.type = "photocopier";
    StationDriver bench(def, 3);
    auto solver = makeSolver("photocopier");
    EXPECT_EQ(bench.play(*solver, 10.0).result, LevelResult::Solved);
}

TEST(EulaBench, AgreeingFailsWithTheFailSound) {
    StationDriver bench(shippedRecord("eula"), 4);
    Clicker agree = centreOf(dynamic_cast<const EulaLevel&>(*bench.station).agreeButton);
    EXPECT_EQ(bench.play(agree, 10.0).result, LevelResult::Failed);
    EXPECT_TRUE(bench.lastSoundWasFail());
}

TEST(EulaBench, TheExitLinePassesWithThePassSound) {
    StationDriver bench(shippedRecord("eula"), 4);
    auto solver = makeSolver("eula");
    EXPECT_EQ(bench.play(*solver, 10.0).result, LevelResult::Solved);
    EXPECT_TRUE(bench.lastSoundWasPass());
}

TEST(SettingsBench, EnablingTheToggleClicksAndThenProceedingFailsWithTheFailSound) {
    StationDriver bench(shippedRecord("settings"), 4);
    const auto& level = dynamic_cast<const SettingsLevel&>(*bench.station);
    Clicker toggle = centreOf(level.toggle);
    while (!level.enabled && bench.elapsed < 2.0) {
        bench.hand.act(toggle.decide(level, bench.hand.hand, bench.elapsed), 1.0 / 60);
        bench.frame(1.0 / 60);
    }
    ASSERT_TRUE(level.enabled);
    EXPECT_TRUE(clickSounded(bench));
    Clicker proceed = centreOf(level.proceedButton);
    EXPECT_EQ(bench.play(proceed, 10.0).result, LevelResult::Failed);
    EXPECT_TRUE(bench.lastSoundWasFail());
}

TEST(QuizBench, ALabelledAnswerFailsWithTheFailSound) {
    StationDriver bench(shippedRecord("quiz"), 4);
    const auto& level = dynamic_cast<const QuizLevel&>(*bench.station);
    Clicker labelled = centreOf(level.boxes[(level.answer + 3) % 4]);
    EXPECT_EQ(bench.play(labelled, 10.0).result, LevelResult::Failed);
    EXPECT_TRUE(bench.lastSoundWasFail());
}

TEST(StroopBench, TheInkColoursSwatchFailsWithTheFailSound) {
    StationDriver bench(shippedRecord("stroop"), 4);
    const auto& level = dynamic_cast<const StroopLevel&>(*bench.station);
    int inkSwatch = 0;
    while (level.swatchColors[inkSwatch] != level.ink) {
        ++inkSwatch;
    }
    Clicker byInk = centreOf(level.swatches[inkSwatch]);
    EXPECT_EQ(bench.play(byInk, 10.0).result, LevelResult::Failed);
    EXPECT_TRUE(bench.lastSoundWasFail());
}

TEST(StampBench, TheApprovedPadFailsWithTheFailSound) {
    StationDriver bench(shippedRecord("stamp"), 4);
    Clicker approve = centreOf(dynamic_cast<const StampLevel&>(*bench.station).approvedPad());
    EXPECT_EQ(bench.play(approve, 10.0).result, LevelResult::Failed);
    EXPECT_TRUE(bench.lastSoundWasFail());
}

TEST(ReverseBench, PressingTowardsTheMarkOnlyClicksAndRunsTheClockOut) {
    StationDriver bench(shippedRecord("reverse"), 4);
    const auto& level = dynamic_cast<const ReverseLevel&>(*bench.station);
    Clicker towards = centreOf(level.target > 0.5 ? level.rightButton : level.leftButton);
    EXPECT_EQ(bench.play(towards, 5.0).result, LevelResult::Running);
    EXPECT_DOUBLE_EQ(level.position, level.target > 0.5 ? 0.0 : 1.0);
    EXPECT_FALSE(bench.lastSoundWasFail());
    EXPECT_FALSE(bench.lastSoundWasPass());
}

}  // namespace
}  // namespace vorn::test
