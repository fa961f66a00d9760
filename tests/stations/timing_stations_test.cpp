// The timing and reflex stations: the big button, the hold bar, the two-hand
// grip, the waiting period, the dash ring and the orbit.

#include "audio/audio_system.h"
#include "data/level_catalogue.h"
#include "stations/level_factory.h"
#include "stations/timing_stations.h"
#include "support/draws_by_hand.h"
#include "support/software_canvas.h"
#include "support/solvers/family_solvers.h"
#include "support/station_driver.h"
#include "support/station_desk.h"
#include "support/station_sounds.h"
#include "support/text_probe.h"
#include "support/timing_pictures.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <functional>
#include <memory>
#include <string>
#include <utility>
#include <vector>

namespace vorn {
namespace {

constexpr double kPi = 3.14159265358979323846;

// Feeds a station one frame at a time with the pointer and button given; the
// press and release edges follow from the previous frame, as the event pump
// makes them. The audio device is never opened: every sound asked for is
// logged, and every frame is held to its verdict sound (pass right before
// Solved, fail right before Failed, no pass while running).
struct Pointer {
    InputState in;
    std::vector<std::string> sounds;
    AudioSystem silent;

    Pointer() { silent.requestLog = &sounds; }
    Pointer(const Pointer&) = delete;
    Pointer& operator=(const Pointer&) = delete;

    LevelResult step(Level& level, double dt, int x, int y, bool down) {
        in.clearEdges();
        in.mousePressed = down && !in.mouseDown;
        in.mouseReleased = !down && in.mouseDown;
        in.mouseDown = down;
        in.mouseX = x;
        in.mouseY = y;
        const std::size_t before = sounds.size();
        const LevelResult r = level.update(dt, in, silent);
        EXPECT_TRUE(test::soundsFitVerdict(r, sounds, before));
        return r;
    }
    // A press and nothing else: the button goes down on this frame.
    LevelResult press(Level& level, double dt, int x, int y) {
        in.mouseDown = false;
        return step(level, dt, x, y, true);
    }
};

LevelDef record(const char* type, std::int32_t number) {
    LevelDef def;
    def.number = number;
    def.id = "test";
    def.name = "TEST";
    def.type = type;
    def.phase = phaseForNumber(number);
    def.baseTime = 30;
    return def;
}

// Sets a station up in the run's play area from a record of its own.
template <typename T>
T& lay(T& level, const char* type, std::int32_t number, Rng& rng) {
    level.setup(record(type, number), rng, kPlayArea);
    return level;
}

// A freshly laid-out station, for a one-line look at its state.
template <typename T>
std::unique_ptr<T> made(const char* type, std::int32_t number, Rng& rng) {
    auto level = std::make_unique<T>();
    lay(*level, type, number, rng);
    return level;
}

// ------------------------------------------------------------------ factory

TEST(TimingFamily, TheFactoryMakesEachTimingStationFromItsTypeString) {
    EXPECT_NE(dynamic_cast<ButtonLevel*>(createLevel("button").get()), nullptr);
    EXPECT_NE(dynamic_cast<HoldLevel*>(createLevel("hold").get()), nullptr);
    EXPECT_NE(dynamic_cast<TwoHandLevel*>(createLevel("twohand").get()), nullptr);
    EXPECT_NE(dynamic_cast<PatienceLevel*>(createLevel("patience").get()), nullptr);
    EXPECT_NE(dynamic_cast<TimingLevel*>(createLevel("timing").get()), nullptr);
    EXPECT_NE(dynamic_cast<OrbitLevel*>(createLevel("orbit").get()), nullptr);
    EXPECT_EQ(dynamic_cast<ButtonLevel*>(createLevel("Button").get()), nullptr);
    EXPECT_EQ(dynamic_cast<OrbitLevel*>(createLevel("orbit ").get()), nullptr);
}

TEST(TimingFamily, ConstructorsZeroEverythingButTheirPresets) {
    const HoldLevel hold;
    EXPECT_EQ(hold.requiredTime, 2.0);
    EXPECT_EQ(hold.heldTime, 0.0);
    EXPECT_FALSE(hold.holding);
    const TimingLevel timing;
    EXPECT_EQ(timing.angularSpeed, 2.6);
    EXPECT_EQ(timing.tolerance, 0.5);
    EXPECT_EQ(timing.angle, 0.0);
    const OrbitLevel orbit;
    EXPECT_EQ(orbit.orbitRadius, 130);
    EXPECT_EQ(orbit.orbRadius, 24);
    EXPECT_EQ(orbit.angularSpeed, 2.2);
    const ButtonLevel button;
    EXPECT_EQ(button.flashTimer, 0.0);
    EXPECT_EQ(button.target.w, 0);
    const TwoHandLevel twohand;
    EXPECT_EQ(twohand.charge, 0.0);
    EXPECT_EQ(twohand.direction, 0);
    const PatienceLevel patience;
    EXPECT_EQ(patience.wait, 0.0);
    EXPECT_FALSE(patience.ready);
}

// ------------------------------------------------------------------- button

TEST(ButtonStation, TheBigButtonSitsMidAreaAndThePlateIsDrawnYThenX) {
    Rng rng(5489);
    ButtonLevel level;
    lay(level, "button", 1, rng);
    // cx = 263 + 420 = 683, cy = 190 + 215 = 405.
    EXPECT_EQ(level.bigButton.x, 593);
    EXPECT_EQ(level.bigButton.y, 315);
    EXPECT_EQ(level.bigButton.w, 180);
    EXPECT_EQ(level.bigButton.h, 180);
    // y in [210, 570] takes the first draw: 3499211612 x 361 >> 32 = 294;
    // x in [293, 1033] the second: 581869302 x 741 >> 32 = 100.
    EXPECT_EQ(level.target.y, 504);
    EXPECT_EQ(level.target.x, 393);
    EXPECT_EQ(level.target.w, 38);
    EXPECT_EQ(level.target.h, 24);
    EXPECT_EQ(level.flashTimer, 0.0);
    EXPECT_EQ(rng, test::engineAfter(5489, 2));
}

TEST(ButtonStation, AnotherSeedPlacesThePlateElsewhere) {
    Rng rng(2024);
    ButtonLevel level;
    lay(level, "button", 1, rng);
    EXPECT_EQ(level.target.y, 422);
    EXPECT_EQ(level.target.x, 854);
    EXPECT_EQ(rng, test::engineAfter(2024, 2));
}

TEST(ButtonStation, PressingThePlatePasses) {
    Rng rng(5489);
    ButtonLevel level;
    lay(level, "button", 1, rng);
    Pointer p;
    EXPECT_EQ(p.press(level, 0.016, level.target.x, level.target.y), LevelResult::Solved);
}

TEST(ButtonStation, ThePlateCountsOnlyOnAPressAndOnlyInsideIt) {
    Rng rng(5489);
    ButtonLevel level;
    lay(level, "button", 1, rng);
    const Rect& t = level.target;
    Pointer p;
    // Half-open: the right and bottom edges are outside.
    EXPECT_EQ(p.press(level, 0.016, t.x + t.w, t.y), LevelResult::Running);
    EXPECT_EQ(p.press(level, 0.016, t.x, t.y + t.h), LevelResult::Running);
    // Held down and dragged onto the plate: no press this frame.
    EXPECT_EQ(p.step(level, 0.016, t.x + 5, t.y + 5, true), LevelResult::Running);
    EXPECT_EQ(p.press(level, 0.016, t.x + t.w - 1, t.y + t.h - 1), LevelResult::Solved);
}

TEST(ButtonStation, TheBigButtonNeverSolvesAndFlashesForTenCallsWhateverTheFrameRate) {
    for (const double dt : {0.001, 0.016, 0.05}) {
        Rng rng(5489);
        ButtonLevel level;
        lay(level, "button", 1, rng);
        Pointer p;
        EXPECT_EQ(p.press(level, dt, 683, 405), LevelResult::Running);
        // Set to 0.15 and stepped once already on the press call.
        EXPECT_NEAR(level.flashTimer, 0.134, 1e-12);
        for (int call = 2; call <= 9; ++call) {
            EXPECT_EQ(p.step(level, dt, 683, 405, true), LevelResult::Running);
            EXPECT_GT(level.flashTimer, 0.0) << "dt " << dt << " call " << call;
        }
        EXPECT_EQ(p.step(level, dt, 683, 405, false), LevelResult::Running);
        EXPECT_LE(level.flashTimer, 0.0) << "dt " << dt;
        // Once dark again it stays put.
        const double settled = level.flashTimer;
        p.step(level, dt, 683, 405, false);
        EXPECT_EQ(level.flashTimer, settled);
    }
}

TEST(ButtonStation, NoPressAnywhereOffThePlateEverFails) {
    Rng rng(7);
    ButtonLevel level;
    lay(level, "button", 1, rng);
    Pointer p;
    for (int y = 0; y < 768; y += 6) {
        for (int x = 0; x < 1366; x += 6) {
            if (contains(level.target, x, y)) {
                continue;
            }
            ASSERT_EQ(p.press(level, 0.016, x, y), LevelResult::Running) << x << "," << y;
        }
    }
    EXPECT_EQ(p.sounds, std::vector<std::string>{});
}

TEST(ButtonStation, ThePlateLandsWhereTheTwoDrawsSayForAnySeed) {
    for (std::uint32_t seed = 1; seed <= 60; ++seed) {
        Rng rng(seed);
        ButtonLevel level;
        lay(level, "button", 1, rng);
        // y in [210, 570] first (361 values), then x in [293, 1033] (741 values).
        Rng byHand(seed);
        const int y = 210 + test::uniformBelowByHand(byHand, 361);
        const int x = 293 + test::uniformBelowByHand(byHand, 741);
        EXPECT_EQ(level.target.y, y) << "seed " << seed;
        EXPECT_EQ(level.target.x, x) << "seed " << seed;
        EXPECT_EQ(rng, byHand) << "seed " << seed;
    }
}

TEST(ButtonStation, PressingThePlatePlaysThePassSoundAndNothingElse) {
    test::Desk<ButtonLevel> desk(5489, 1);
    EXPECT_EQ(desk.press(393 + 19, 504 + 12), LevelResult::Solved);   // the plate at (393, 504)
    EXPECT_EQ(desk.sounds, (std::vector<std::string>{"pass"}));
}

TEST(ButtonStation, PressesOffThePlateMakeNoSoundAtAll) {
    test::Desk<ButtonLevel> desk(5489, 1);
    // The big button's middle and corners, both sides of the plate, the floor;
    // each pressed, held a frame and let go.
    const std::vector<std::pair<int, int>> spots{{683, 405}, {593, 315}, {772, 494}, {392, 515},
                                                 {431, 515}, {410, 503}, {410, 528}, {300, 200},
                                                 {1100, 600}};
    for (const auto& [x, y] : spots) {
        EXPECT_EQ(desk.press(x, y), LevelResult::Running) << x << "," << y;
        EXPECT_EQ(desk.step(0.016), LevelResult::Running);
        EXPECT_EQ(desk.release(x, y), LevelResult::Running);
    }
    EXPECT_EQ(desk.sounds, std::vector<std::string>{});
}

TEST(ButtonStation, APlateLyingOnTheBigButtonStillWins) {
    test::Desk<ButtonLevel> desk(5489, 1);
    // Some seeds put the plate over the big button; the plate is asked first.
    desk.level.target.x = 660;
    desk.level.target.y = 440;
    EXPECT_EQ(desk.press(670, 450), LevelResult::Solved);
    EXPECT_EQ(desk.sounds, (std::vector<std::string>{"pass"}));
}

TEST(ButtonStation, TheBigButtonSaysPressInInkWhetherLitOrDark) {
    for (const bool pressed : {false, true}) {
        Rng rng(5489);
        ButtonLevel level;
        lay(level, "button", 1, rng);
        if (pressed) {
            Pointer p;
            p.press(level, 0.016, 683, 405);
        }
        test::SoftwareCanvas canvas;
        canvas.useGameFonts();
        canvas.fill(rgb(0, 0, 0));
        level.render(canvas.graphics);
        // The face is a flat disc of radius 78 round (683, 405): a 100 x 40
        // box at its middle holds the word and nothing else.
        const Color face = pressed ? rgb(153, 34, 25) : rgb(255, 58, 42);
        EXPECT_EQ(test::pixelsUnlikeText(canvas, Rect{633, 385, 100, 40}, face, "PRESS", 683, 405,
                                         TextSize::Large, rgb(20, 20, 20), true, true),
                  0)
            << (pressed ? "dark" : "lit");
    }
}

// The button station as seed 5489 must show it: the shadow disc, the face
// over it, the word, then the brass plate at (393, 504) with its ink strip.
void paintButton(Graphics& g, Color face, Color shadow) {
    g.circle(683, 405, 88, shadow, true);
    g.circle(683, 405, 78, face, true);
    g.text("PRESS", 683, 405, TextSize::Large, rgb(20, 20, 20), true, true);
    g.roundRect(Rect{393, 504, 38, 24}, 4, rgb(199, 154, 53), true);
    g.rect(Rect{397, 508, 12, 16}, rgb(20, 20, 20), true);
}

TEST(ButtonStation, DrawsTheRedButtonOnItsShadowAndTheBrassPlate) {
    Rng rng(5489);
    ButtonLevel level;
    lay(level, "button", 1, rng);
    // The shadow is the face at half strength: (127, 29, 21).
    EXPECT_TRUE(test::samePicture([&](Graphics& g) { level.render(g); },
                                  [](Graphics& g) {
                                      paintButton(g, rgb(255, 58, 42), rgb(127, 29, 21));
                                  }));
}

TEST(ButtonStation, APressedButtonDrawsDarkOnADarkerShadow) {
    Rng rng(5489);
    ButtonLevel level;
    lay(level, "button", 1, rng);
    Pointer p;
    p.press(level, 0.016, 683, 405);
    EXPECT_TRUE(test::samePicture([&](Graphics& g) { level.render(g); },
                                  [](Graphics& g) {
                                      paintButton(g, rgb(153, 34, 25), rgb(76, 17, 12));
                                  }));
}

TEST(ButtonStation, TheFlashShowsOnThePressCallAndEightMoreThenTheButtonIsRedAgain) {
    for (const double dt : {0.002, 0.05}) {
        Rng rng(5489);
        ButtonLevel level;
        lay(level, "button", 1, rng);
        Pointer p;
        test::SoftwareCanvas canvas;
        // 0.15 less 0.016 a call: still above zero after 9 calls (0.006),
        // spent on the 10th.
        for (int call = 1; call <= 10; ++call) {
            if (call == 1) {
                p.press(level, dt, 683, 405);
            } else {
                p.step(level, dt, 683, 405, call < 5);
            }
            canvas.fill(rgb(0, 0, 0));
            level.render(canvas.graphics);
            const Color face = call < 10 ? rgb(153, 34, 25) : rgb(255, 58, 42);
            EXPECT_EQ(canvas.pixel(683, 460), face) << "dt " << dt << ", call " << call;
        }
    }
}

// --------------------------------------------------------------------- hold

struct HoldStation : ::testing::Test {
    Rng rng{99};
    HoldLevel level;
    Pointer p;

    void SetUp() override { lay(level, "hold", 2, rng); }
};

TEST_F(HoldStation, TheBarStandsMidAreaAndNothingIsDrawnFromTheEngine) {
    EXPECT_EQ(level.bar.x, 633);
    EXPECT_EQ(level.bar.y, 220);
    EXPECT_EQ(level.bar.w, 100);
    EXPECT_EQ(level.bar.h, 360);
    EXPECT_EQ(level.requiredTime, 2.0);
    EXPECT_EQ(rng, Rng(99));
}

TEST_F(HoldStation, HoldingTwoSecondsFromAPressInsideTheBarPasses) {
    // Sixteenths of a second add up exactly: the 32nd frame makes 2.0.
    EXPECT_EQ(p.step(level, 0.0625, 683, 400, true), LevelResult::Running);   // the press counts
    EXPECT_TRUE(level.holding);
    EXPECT_EQ(level.heldTime, 0.0625);
    for (int i = 0; i < 30; ++i) {
        ASSERT_EQ(p.step(level, 0.0625, 683, 400, true), LevelResult::Running) << i;
    }
    EXPECT_EQ(p.step(level, 0.0625, 683, 400, true), LevelResult::Solved);
}

TEST_F(HoldStation, ReleasingAtOneNinetyNineSecondsFires) {
    p.step(level, 0.01, 683, 400, true);
    for (int i = 0; i < 198; ++i) {
        ASSERT_EQ(p.step(level, 0.01, 683, 400, true), LevelResult::Running);
    }
    EXPECT_NEAR(level.heldTime, 1.99, 1e-9);
    EXPECT_EQ(p.step(level, 0.01, 683, 400, false), LevelResult::Failed);
}

TEST_F(HoldStation, APressThatStartsOutsideTheBarNeverBeginsTheHold) {
    EXPECT_EQ(p.step(level, 0.05, 600, 400, true), LevelResult::Running);
    // Dragged into the bar and held there for three seconds: still nothing.
    for (int i = 0; i < 60; ++i) {
        ASSERT_EQ(p.step(level, 0.05, 683, 400, true), LevelResult::Running);
    }
    EXPECT_FALSE(level.holding);
    EXPECT_EQ(level.heldTime, 0.0);
    // And letting go of a hold that never began is no offence.
    EXPECT_EQ(p.step(level, 0.05, 683, 400, false), LevelResult::Running);
}

TEST_F(HoldStation, AHoldStartedInsideTheBarMayDriftOutside) {
    p.step(level, 0.125, 633, 220, true);   // the bar's top-left pixel
    for (int i = 0; i < 14; ++i) {
        ASSERT_EQ(p.step(level, 0.125, 100, 700, true), LevelResult::Running);
    }
    EXPECT_EQ(p.step(level, 0.125, 100, 700, true), LevelResult::Solved);
}

TEST_F(HoldStation, TheBarsRightAndBottomEdgesAreOutsideIt) {
    // The bar covers x 633..732 and y 220..579.
    for (const auto& [x, y] : std::vector<std::pair<int, int>>{{733, 400}, {683, 580}, {632, 400},
                                                               {683, 219}}) {
        EXPECT_EQ(p.step(level, 0.1, x, y, true), LevelResult::Running);
        EXPECT_FALSE(level.holding) << x << "," << y;
        EXPECT_EQ(p.step(level, 0.1, x, y, false), LevelResult::Running);
    }
    p.step(level, 0.1, 732, 579, true);
    EXPECT_TRUE(level.holding);
}

TEST_F(HoldStation, TheHoldIsSilentUntilThePassOnItsLastFrame) {
    test::Desk<HoldLevel> desk(99, 2);
    EXPECT_EQ(desk.press(683, 400, 0.0625), LevelResult::Running);
    for (int i = 0; i < 30; ++i) {
        ASSERT_EQ(desk.step(0.0625), LevelResult::Running) << i;
    }
    EXPECT_EQ(desk.sounds, std::vector<std::string>{});
    EXPECT_EQ(desk.step(0.0625), LevelResult::Solved);
    EXPECT_EQ(desk.sounds, (std::vector<std::string>{"pass"}));
}

TEST_F(HoldStation, LettingGoEarlyPlaysTheFailSoundAlone) {
    test::Desk<HoldLevel> desk(99, 2);
    desk.press(683, 400, 0.5);
    desk.step(0.5);
    desk.pointAt(100, 700);   // wandered off, still held
    desk.step(0.5);
    EXPECT_EQ(desk.sounds, std::vector<std::string>{});
    EXPECT_EQ(desk.release(100, 700), LevelResult::Failed);
    EXPECT_EQ(desk.sounds, (std::vector<std::string>{"fail"}));
}

TEST_F(HoldStation, APressOutsideTheBarAndItsReleaseMakeNoSound) {
    test::Desk<HoldLevel> desk(99, 2);
    EXPECT_EQ(desk.press(600, 400), LevelResult::Running);
    desk.pointAt(683, 400);   // dragged in
    EXPECT_EQ(desk.step(0.5), LevelResult::Running);
    EXPECT_EQ(desk.release(683, 400), LevelResult::Running);
    EXPECT_EQ(desk.click(683, 170), LevelResult::Running);   // above the bar
    EXPECT_EQ(desk.sounds, std::vector<std::string>{});
}

// The hold bar as it must look: the frame, the green fill `fill` px high
// standing 8 px above the frame's foot, and the orange word over the top.
void paintHold(Graphics& g, int fill, const char* word) {
    g.roundRect(Rect{633, 220, 100, 360}, 8, rgb(99, 77, 26), true);
    g.rect(Rect{641, 572 - fill, 84, fill}, rgb(70, 224, 138), true);
    g.text(word, 683, 214, TextSize::Normal, rgb(255, 170, 46), true, false);
}

TEST_F(HoldStation, BeforeTheHoldTheBarIsEmptyAndSaysPressAndHold) {
    EXPECT_TRUE(test::samePicture([&](Graphics& g) { level.render(g); },
                                  [](Graphics& g) { paintHold(g, 0, "PRESS & HOLD"); }));
}

TEST_F(HoldStation, APressOutsideTheBarLeavesItAskingToPressAndHold) {
    p.step(level, 0.5, 600, 400, true);
    p.step(level, 0.5, 683, 400, true);
    EXPECT_TRUE(test::samePicture([&](Graphics& g) { level.render(g); },
                                  [](Graphics& g) { paintHold(g, 0, "PRESS & HOLD"); }));
}

TEST_F(HoldStation, WhileHeldTheBarSaysHoldAndFillsFromTheBottom) {
    p.step(level, 0.25, 683, 400, true);
    p.step(level, 0.25, 683, 400, true);
    // Half a second of two: trunc(344 x 0.5 / 2) = 86 px.
    EXPECT_TRUE(test::samePicture([&](Graphics& g) { level.render(g); },
                                  [](Graphics& g) { paintHold(g, 86, "HOLD!"); }));
    p.step(level, 0.5, 100, 700, true);   // drifted off: still held
    EXPECT_TRUE(test::samePicture([&](Graphics& g) { level.render(g); },
                                  [](Graphics& g) { paintHold(g, 172, "HOLD!"); }));
}

TEST_F(HoldStation, TheFillIsTruncatedNotRounded) {
    p.step(level, 1.3, 683, 400, true);
    // 344 x 1.3 / 2 = 223.6 -> 223 px.
    EXPECT_TRUE(test::samePicture([&](Graphics& g) { level.render(g); },
                                  [](Graphics& g) { paintHold(g, 223, "HOLD!"); }));
}

// ------------------------------------------------------------------ twohand

TEST(TwoHandStation, TheGripSitsLeftAndTheTargetStartsMidwayAcrossTheTop) {
    Rng rng(3);
    TwoHandLevel slow;
    lay(slow, "twohand", 11, rng);
    EXPECT_EQ(slow.grip.x, 293);
    EXPECT_EQ(slow.grip.y, 345);
    EXPECT_EQ(slow.grip.w, 120);
    EXPECT_EQ(slow.grip.h, 120);
    EXPECT_EQ(slow.targetX, 683.0);
    EXPECT_EQ(slow.targetY, 270.0);
    EXPECT_EQ(slow.targetSpeed, 150.0);
    EXPECT_EQ(slow.direction, 1);
    EXPECT_EQ(slow.targetRadius, 26);
    EXPECT_EQ(slow.charge, 0.0);
    EXPECT_EQ(slow.dwell, 0.0);
    EXPECT_EQ(made<TwoHandLevel>("twohand", 21, rng)->targetSpeed, 150.0);
    EXPECT_EQ(made<TwoHandLevel>("twohand", 22, rng)->targetSpeed, 240.0);
    EXPECT_EQ(rng, Rng(3));
}

TEST(TwoHandStation, TheTargetPacesBetweenItsEndsAndTurnsThere) {
    Rng rng(3);
    TwoHandLevel level;
    lay(level, "twohand", 11, rng);
    Pointer p;
    p.step(level, 0.5, 0, 0, false);
    EXPECT_EQ(level.targetX, 758.0);
    // 683 + 150 x 2.6 = 1073 passes the right end at 1063.
    for (int i = 0; i < 4; ++i) {
        p.step(level, 0.5, 0, 0, false);
    }
    p.step(level, 0.1, 0, 0, false);
    EXPECT_EQ(level.targetX, 1063.0);
    EXPECT_EQ(level.direction, -1);
    p.step(level, 1.0, 0, 0, false);
    EXPECT_EQ(level.targetX, 913.0);
    // A long step past the left end stops at 423 and turns right again.
    p.step(level, 4.0, 0, 0, false);
    EXPECT_EQ(level.targetX, 423.0);
    EXPECT_EQ(level.direction, 1);
}

TEST(TwoHandStation, TheGripChargesWhileHeldAndDrainsOtherwise) {
    Rng rng(3);
    TwoHandLevel level;
    lay(level, "twohand", 11, rng);
    Pointer p;
    p.step(level, 0.25, 353, 405, true);
    EXPECT_EQ(level.charge, 0.5);
    p.step(level, 0.1, 353, 405, false);   // let go in the grip
    EXPECT_NEAR(level.charge, 0.2, 1e-12);
    p.step(level, 0.5, 353, 405, true);
    EXPECT_EQ(level.charge, 1.0);   // capped
    p.step(level, 0.1, 500, 405, true);   // held, but outside
    EXPECT_NEAR(level.charge, 0.7, 1e-12);
    p.step(level, 1.0, 500, 405, true);
    EXPECT_EQ(level.charge, 0.0);   // floored
}

TEST(TwoHandStation, ChargeAndReachAreJudgedOnTheSameFramesPointer) {
    Rng rng(3);
    TwoHandLevel level;
    lay(level, "twohand", 11, rng);
    Pointer p;
    for (int i = 0; i < 40; ++i) {
        p.step(level, 0.016, 353, 405, true);
    }
    ASSERT_EQ(level.charge, 1.0);
    // The pointer lands on the target: that same frame has already drained
    // the grip, so the full charge of a moment ago does not count.
    const int tx = static_cast<int>(level.targetX + 150 * 0.016);
    EXPECT_EQ(p.step(level, 0.016, tx, 270, true), LevelResult::Running);
    EXPECT_NEAR(level.charge, 1.0 - 3 * 0.016, 1e-12);
    EXPECT_EQ(level.dwell, 0.0);
}

TEST(TwoHandStation, WhereTheTargetCanBeReachedFromTheGripAQuarterSecondOnItPasses) {
    // A cramped area puts the target's path through the grip: both ends of
    // the path fold to x 160, 11 px right of the grip's edge at x 149.
    Rng rng(3);
    TwoHandLevel level;
    level.setup(record("twohand", 11), rng, Rect{0, 0, 200, 200});
    Pointer p;
    LevelResult r = LevelResult::Running;
    int frames = 0;
    while (r == LevelResult::Running && frames < 200) {
        r = p.step(level, 1.0 / 64, 149, 80, true);
        ++frames;
    }
    EXPECT_EQ(r, LevelResult::Solved);
    // The 32nd frame fills the grip and already counts on the target; the
    // dwell passes 0.25 s = 16/64 on its 17th frame.
    EXPECT_EQ(frames, 48);
}

TEST(TwoHandStation, LeavingTheTargetResetsTheDwell) {
    Rng rng(3);
    TwoHandLevel level;
    level.setup(record("twohand", 11), rng, Rect{0, 0, 200, 200});
    Pointer p;
    for (int i = 0; i < 60; ++i) {
        p.step(level, 0.01, 149, 80, true);
    }
    EXPECT_GT(level.dwell, 0.0);
    p.step(level, 0.01, 40, 150, true);   // still in the grip, off the target
    EXPECT_EQ(level.dwell, 0.0);
    EXPECT_EQ(level.charge, 1.0);
}

// One pointer, planned frame by frame: where it is and whether it is held.
struct Move {
    int x = 0;
    int y = 0;
    bool down = false;
};
using Plan = std::function<Move(const TwoHandLevel&, int frame, double dt)>;

std::vector<Plan> oneHandedPlans() {
    std::vector<Plan> plans;
    // The grip's corner nearest the target's path, and its centre.
    const int cornerX = 412;
    const int cornerY = 345;
    const int midX = 353;
    const int midY = 405;

    // Parked on a grid of points over the grip, held the whole time.
    for (int y = 345; y < 465; y += 17) {
        for (int x = 293; x < 413; x += 17) {
            plans.push_back([x, y](const TwoHandLevel&, int, double) { return Move{x, y, true}; });
        }
    }
    plans.push_back([=](const TwoHandLevel&, int, double) { return Move{cornerX, cornerY, true}; });
    // In the grip, on the edge pixel nearest the target wherever it is.
    plans.push_back([](const TwoHandLevel& l, int, double) {
        const int x = std::min(412, std::max(293, static_cast<int>(l.targetX)));
        return Move{x, 345, true};
    });
    // Clicking away in the grip: pressed for some frames, released for others.
    for (const int held : {1, 3, 10}) {
        for (const int rest : {1, 2}) {
            for (const bool corner : {false, true}) {
                plans.push_back([=](const TwoHandLevel&, int f, double) {
                    return Move{corner ? cornerX : midX, corner ? cornerY : midY,
                                f % (held + rest) < held};
                });
            }
        }
    }
    // Charge fully, then jump onto the target in one frame (faster than any
    // hand), stay on it held or let go for a while, and come back.
    for (const int stay : {1, 2, 5, 1 << 20}) {
        for (const bool holdOn : {true, false}) {
            plans.push_back([=, chasing = std::make_shared<int>(-1)](const TwoHandLevel& l, int f,
                                                                     double) {
                if (*chasing < 0 && l.charge >= 1.0) {
                    *chasing = f;
                }
                if (*chasing >= 0 && f - *chasing < stay) {
                    return Move{static_cast<int>(std::lround(l.targetX)),
                                static_cast<int>(l.targetY), holdOn};
                }
                if (*chasing >= 0 && l.charge <= 0.0) {
                    *chasing = -1;
                }
                return Move{cornerX, cornerY, true};
            });
        }
    }
    // Flicking between the grip and the target, a frames in one, b on the other.
    for (const auto& ab : std::vector<std::pair<int, int>>{
             {1, 1}, {2, 1}, {3, 1}, {5, 1}, {10, 1}, {1, 2}, {20, 3}, {40, 1}}) {
        plans.push_back([ab](const TwoHandLevel& l, int f, double) {
            if (f % (ab.first + ab.second) < ab.first) {
                return Move{412, 345, true};
            }
            return Move{static_cast<int>(l.targetX), static_cast<int>(l.targetY), true};
        });
    }
    // Held-down sweeps from the grip's corner to the target and back, at
    // speeds from a slow drag to four times a flick.
    for (const double speed : {600.0, 1200.0, 2400.0, 4800.0, 9600.0}) {
        plans.push_back([=, pos = std::make_shared<std::pair<double, double>>(412.0, 345.0),
                         out = std::make_shared<bool>(true)](const TwoHandLevel& l, int, double dt) {
            const double gx = *out ? l.targetX : 412.0;
            const double gy = *out ? l.targetY : 345.0;
            const double dx = gx - pos->first;
            const double dy = gy - pos->second;
            const double d = std::sqrt(dx * dx + dy * dy);
            const double reach = speed * dt;
            if (d <= reach) {
                *pos = {gx, gy};
                *out = !*out;
            } else {
                pos->first += dx / d * reach;
                pos->second += dy / d * reach;
            }
            return Move{static_cast<int>(pos->first), static_cast<int>(pos->second), true};
        });
    }
    // Sweeping the whole area row by row, held, across the target's path.
    for (const int rowStep : {7, 19}) {
        plans.push_back([rowStep](const TwoHandLevel&, int f, double) {
            const int x = 263 + (f * 23) % 840;
            const int y = 190 + ((f * 23) / 840 * rowStep) % 430;
            return Move{x, y, true};
        });
    }
    // Riding on the target itself, held and not.
    for (const bool held : {true, false}) {
        plans.push_back([held](const TwoHandLevel& l, int, double) {
            return Move{static_cast<int>(l.targetX), static_cast<int>(l.targetY), held};
        });
    }
    return plans;
}

TEST(TwoHandStation, NoOnePointerPlayEverSolvesItAndNoneFailsIt) {
    const std::vector<Plan> plans = oneHandedPlans();
    bool sawFullCharge = false;
    bool sawOnTargetNearlyCharged = false;
    int runs = 0;
    const std::vector<int> frameTimes{5, 16, 50};   // ms: 200 Hz, 60 Hz and the clamp
    for (const std::int32_t number : {11, 22}) {
        for (const int ms : frameTimes) {
            const double dt = ms / 1000.0;
            // Some plans remember what they did: fresh ones for every frame time.
            const std::vector<Plan> fresh = oneHandedPlans();
            for (std::size_t i = 0; i < fresh.size(); ++i) {
                const Plan& plan = fresh[i];
                Rng rng(1);
                TwoHandLevel level;
                lay(level, "twohand", number, rng);
                Pointer p;
                ++runs;
                const int frames = static_cast<int>(5.0 / dt);
                for (int f = 0; f < frames; ++f) {
                    const Move m = plan(level, f, dt);
                    const LevelResult r = p.step(level, dt, m.x, m.y, m.down);
                    ASSERT_EQ(r, LevelResult::Running)
                        << "number " << number << ", " << ms << " ms, plan " << i << ", frame " << f;
                    ASSERT_EQ(level.dwell, 0.0)
                        << "number " << number << ", " << ms << " ms, plan " << i << ", frame " << f;
                    sawFullCharge = sawFullCharge || level.charge >= 1.0;
                    const double dx = m.x - level.targetX;
                    const double dy = m.y - level.targetY;
                    if (m.down && dx * dx + dy * dy < 26 * 26 && level.charge > 0.8) {
                        sawOnTargetNearlyCharged = true;
                    }
                }
                ASSERT_EQ(p.sounds, std::vector<std::string>{}) << "plan " << i;
            }
        }
    }
    EXPECT_EQ(runs, 2 * static_cast<int>(frameTimes.size() * plans.size()));
    // The search did get close: full charges, and the pointer on the target
    // with the grip still more than four-fifths charged.
    EXPECT_TRUE(sawFullCharge);
    EXPECT_TRUE(sawOnTargetNearlyCharged);
}

TEST(TwoHandStation, ACatchMakesThePassSoundOnItsLastFrameAndNothingBefore) {
    // The cramped area again: the grip's edge at x 149 is 11 px from the
    // target parked at x 160.
    test::Desk<TwoHandLevel> desk(3, 11, Rect{0, 0, 200, 200});
    desk.press(149, 80, 1.0 / 64);
    for (int frame = 2; frame < 48; ++frame) {
        ASSERT_EQ(desk.step(1.0 / 64), LevelResult::Running) << frame;
    }
    EXPECT_EQ(desk.sounds, std::vector<std::string>{});
    EXPECT_EQ(desk.step(1.0 / 64), LevelResult::Solved);
    EXPECT_EQ(desk.sounds, (std::vector<std::string>{"pass"}));
}

TEST(TwoHandStation, TheTargetReachesLessThanTwentySixPixels) {
    // Target parked at (160, 80); the grip spans x 30..149 and y 40..159.
    test::Desk<TwoHandLevel> desk(3, 11, Rect{0, 0, 200, 200});
    desk.press(134, 80, 0.05);   // exactly 26 px from the target
    for (int i = 0; i < 60; ++i) {
        ASSERT_EQ(desk.step(0.05), LevelResult::Running);
        ASSERT_EQ(desk.level.dwell, 0.0) << i;
    }
    ASSERT_EQ(desk.level.charge, 1.0);
    desk.pointAt(135, 80);   // 25 px: on it
    EXPECT_EQ(desk.step(0.125), LevelResult::Running);
    EXPECT_EQ(desk.level.dwell, 0.125);
    EXPECT_EQ(desk.step(0.125), LevelResult::Running);   // 0.25 is not past a quarter second
    EXPECT_EQ(desk.step(0.125), LevelResult::Solved);
    EXPECT_EQ(desk.sounds, (std::vector<std::string>{"pass"}));
}

TEST(TwoHandStation, TheGripSaysHoldInInkWhetherIdleOrCharging) {
    for (const double charge : {0.0, 0.3}) {
        Rng rng(3);
        TwoHandLevel level;
        lay(level, "twohand", 11, rng);
        level.charge = charge;
        test::SoftwareCanvas canvas;
        canvas.useGameFonts();
        canvas.fill(rgb(0, 0, 0));
        level.render(canvas.graphics);
        // The grip is flat from x 293 to 412 and y 345 to 464 but for its
        // corners and the charge bar at y 447: the box round (353, 395) is
        // the word's alone.
        const Color grip = charge > 0.0 ? rgb(35, 112, 69) : rgb(109, 84, 29);
        EXPECT_EQ(test::pixelsUnlikeText(canvas, Rect{303, 378, 100, 34}, grip, "HOLD", 353, 395,
                                         TextSize::Normal, rgb(20, 20, 20), true, true),
                  0)
            << charge;
    }
}

TEST(TwoHandStation, ItsInstructionSitsEighteenPixelsAboveTheFoot) {
    Rng rng(3);
    TwoHandLevel level;
    lay(level, "twohand", 11, rng);
    test::SoftwareCanvas canvas;
    canvas.useGameFonts();
    canvas.fill(rgb(0, 0, 0));
    level.render(canvas.graphics);
    // Nothing else of the station comes below y 500.
    EXPECT_EQ(test::pixelsUnlikeText(canvas, Rect{0, 500, 1366, 268}, rgb(0, 0, 0),
                                     "HOLD, THEN CATCH THE TARGET", 683, 602, TextSize::Small,
                                     rgb(178, 119, 32), true, false),
              0);
}

// The two-hand station as it must look: the grip plate, its word, the charge
// bar `barWidth` px long, the target (a 26 px disc at 40% under a 20 px one)
// at (x, 270), and the instruction line.
void paintTwoHand(Graphics& g, Color grip, int barWidth, int x, Color rim, Color target) {
    g.roundRect(Rect{293, 345, 120, 120}, 10, grip, true);
    g.text("HOLD", 353, 395, TextSize::Normal, rgb(20, 20, 20), true, true);
    g.rect(Rect{303, 447, barWidth, 8}, rgb(70, 224, 138), true);
    g.circle(x, 270, 26, rim, true);
    g.circle(x, 270, 20, target, true);
    g.text("HOLD, THEN CATCH THE TARGET", 683, 602, TextSize::Small, rgb(178, 119, 32), true,
           false);
}

TEST(TwoHandStation, IdleTheGripIsBrassAndTheTargetOrange) {
    Rng rng(3);
    TwoHandLevel level;
    lay(level, "twohand", 11, rng);
    // Orange at 40%: (102, 68, 18).
    EXPECT_TRUE(test::samePicture([&](Graphics& g) { level.render(g); },
                                  [](Graphics& g) {
                                      paintTwoHand(g, rgb(109, 84, 29), 0, 683,
                                                   rgb(102, 68, 18), rgb(255, 170, 46));
                                  }));
}

TEST(TwoHandStation, AChargingGripTurnsGreenAndGrowsItsBar) {
    Rng rng(3);
    TwoHandLevel level;
    lay(level, "twohand", 11, rng);
    level.charge = 0.57;       // 100 x 0.57 is 56.99... in doubles: the bar is 56 px
    level.targetX = 700.9;     // drawn at 700, truncated
    EXPECT_TRUE(test::samePicture([&](Graphics& g) { level.render(g); },
                                  [](Graphics& g) {
                                      paintTwoHand(g, rgb(35, 112, 69), 56, 700,
                                                   rgb(102, 68, 18), rgb(255, 170, 46));
                                  }));
}

TEST(TwoHandStation, AFullGripLightsTheTargetGreen) {
    Rng rng(3);
    TwoHandLevel level;
    lay(level, "twohand", 11, rng);
    level.charge = 1.0;
    // Green at 40%: (28, 89, 55).
    EXPECT_TRUE(test::samePicture([&](Graphics& g) { level.render(g); },
                                  [](Graphics& g) {
                                      paintTwoHand(g, rgb(35, 112, 69), 100, 683,
                                                   rgb(28, 89, 55), rgb(70, 224, 138));
                                  }));
}

// ----------------------------------------------------------------- patience

TEST(PatienceStation, TheWaitIsOneRawDrawModuloAHundred) {
    Rng rng(5489);
    PatienceLevel level;
    lay(level, "patience", 3, rng);
    // 3499211612 mod 100 = 12: 0.12 x 1.5 + 2.6.
    EXPECT_DOUBLE_EQ(level.wait, 2.78);
    EXPECT_EQ(rng, test::engineAfter(5489, 1));
    EXPECT_EQ(level.button.x, 593);
    EXPECT_EQ(level.button.y, 445);
    EXPECT_EQ(level.button.w, 180);
    EXPECT_EQ(level.button.h, 60);
    EXPECT_FALSE(level.ready);
    EXPECT_EQ(level.elapsed, 0.0);

    Rng other(3);   // 2365658986 mod 100 = 86
    EXPECT_DOUBLE_EQ(made<PatienceLevel>("patience", 3, other)->wait, 3.89);
}

TEST(PatienceStation, AClickAtTwoPointFiveNineSecondsFiresWhateverTheWait) {
    for (std::uint32_t seed = 1; seed <= 40; ++seed) {
        Rng rng(seed);
        PatienceLevel level;
        lay(level, "patience", 3, rng);
        ASSERT_GE(level.wait, 2.6);
        ASSERT_LE(level.wait, 4.085 + 1e-9);
        Pointer p;
        for (int i = 0; i < 258; ++i) {
            ASSERT_EQ(p.step(level, 0.01, 683, 475, false), LevelResult::Running);
        }
        EXPECT_EQ(p.press(level, 0.01, 683, 475), LevelResult::Failed) << "seed " << seed;
    }
}

TEST(PatienceStation, AnEarlyClickFarFromTheButtonFiresToo) {
    Rng rng(5489);
    PatienceLevel level;
    lay(level, "patience", 3, rng);
    Pointer p;
    EXPECT_EQ(p.press(level, 0.01, 5, 5), LevelResult::Failed);
}

TEST(PatienceStation, OnceTheBarIsFullGoPassesAndClicksElsewhereDoNothing) {
    Rng rng(5489);
    PatienceLevel level;
    lay(level, "patience", 3, rng);
    Pointer p;
    for (int i = 0; i < 277; ++i) {
        p.step(level, 0.01, 683, 475, false);
    }
    EXPECT_FALSE(level.ready);
    p.step(level, 0.02, 683, 475, false);
    EXPECT_TRUE(level.ready);
    EXPECT_EQ(p.press(level, 0.01, 592, 475), LevelResult::Running);   // left of GO
    EXPECT_EQ(p.press(level, 0.01, 683, 505), LevelResult::Running);   // below it
    EXPECT_EQ(p.press(level, 0.01, 100, 100), LevelResult::Running);
    EXPECT_TRUE(level.ready);
    EXPECT_EQ(p.press(level, 0.01, 593, 445), LevelResult::Solved);
}

TEST(PatienceStation, TheWaitFollowsTheFirstRawDrawForAnySeed) {
    for (std::uint32_t seed = 1; seed <= 60; ++seed) {
        Rng rng(seed);
        PatienceLevel level;
        lay(level, "patience", 3, rng);
        Rng byHand(seed);
        const double wait = static_cast<double>(byHand() % 100) / 100.0 * 1.5 + 2.6;
        EXPECT_DOUBLE_EQ(level.wait, wait) << "seed " << seed;
        EXPECT_EQ(rng, byHand) << "seed " << seed;
    }
}

TEST(PatienceStation, AnEarlyClickPlaysTheFailSoundAlone) {
    test::Desk<PatienceLevel> desk(5489, 3);
    desk.step(1.0);
    EXPECT_EQ(desk.press(683, 475), LevelResult::Failed);
    EXPECT_EQ(desk.sounds, (std::vector<std::string>{"fail"}));
}

TEST(PatienceStation, WaitingIsSilentAndSoAreReadyClicksBesideGo) {
    test::Desk<PatienceLevel> desk(5489, 3);   // waits 2.78 s
    for (int i = 0; i < 100; ++i) {
        ASSERT_EQ(desk.step(0.05), LevelResult::Running);
    }
    ASSERT_TRUE(desk.level.ready);
    // GO covers x 593..772, y 445..504.
    for (const auto& [x, y] : std::vector<std::pair<int, int>>{{592, 475}, {773, 475}, {683, 444},
                                                               {683, 505}, {100, 100}}) {
        EXPECT_EQ(desk.click(x, y), LevelResult::Running) << x << "," << y;
    }
    EXPECT_EQ(desk.sounds, std::vector<std::string>{});
    EXPECT_EQ(desk.press(772, 504), LevelResult::Solved);
    EXPECT_EQ(desk.sounds, (std::vector<std::string>{"pass"}));
}

TEST(PatienceStation, TheBarIsFullOnTheFrameTheWaitIsReached) {
    {
        test::Desk<PatienceLevel> desk(5489, 3);
        // The click lands in the very update that brings the time to the wait.
        EXPECT_EQ(desk.press(683, 475, desk.level.wait), LevelResult::Solved);
    }
    {
        test::Desk<PatienceLevel> desk(5489, 3);
        EXPECT_EQ(desk.press(683, 475, std::nextafter(desk.level.wait, 0.0)), LevelResult::Failed);
        EXPECT_FALSE(desk.level.ready);
    }
}

// The waiting room as it must look: the status line, the dark track with
// `fill` px of it lit, the GO plate with its word, and the instruction line.
void paintPatience(Graphics& g, bool ready, int fill) {
    if (ready) {
        g.text("GO \xE2\x80\x94 NOW CLICK", 683, 250, TextSize::Large, rgb(70, 224, 138), true,
               true);
    } else {
        g.text("WAIT...", 683, 250, TextSize::Large, rgb(255, 58, 42), true, true);
    }
    g.rect(Rect{343, 310, 680, 22}, rgb(30, 30, 30), true);
    g.rect(Rect{343, 310, fill, 22}, ready ? rgb(70, 224, 138) : rgb(255, 170, 46), true);
    g.roundRect(Rect{593, 445, 180, 60}, 10, ready ? rgb(35, 112, 69) : rgb(79, 61, 21), true);
    g.text("GO", 683, 475, TextSize::Large, rgb(20, 20, 20), true, true);
    g.text("DO NOT CLICK UNTIL THE BAR IS FULL", 683, 604, TextSize::Small, rgb(178, 119, 32), true,
           false);
}

TEST(PatienceStation, WhileWaitingTheBarFillsOrangeUnderARedWait) {
    Rng rng(5489);
    PatienceLevel level;
    lay(level, "patience", 3, rng);   // waits 2.78 s
    Pointer p;
    p.step(level, 1.0, 0, 0, false);
    // 680 x 1 / 2.78 = 244.6: 244 px lit.
    EXPECT_TRUE(test::samePicture([&](Graphics& g) { level.render(g); },
                                  [](Graphics& g) { paintPatience(g, false, 244); }));
}

TEST(PatienceStation, OnceReadyTheBarStaysFullAndEverythingTurnsGreen) {
    Rng rng(5489);
    PatienceLevel level;
    lay(level, "patience", 3, rng);
    Pointer p;
    p.step(level, 2.0, 0, 0, false);
    p.step(level, 1.5, 0, 0, false);   // 3.5 s, past the wait: never past the track
    EXPECT_TRUE(test::samePicture([&](Graphics& g) { level.render(g); },
                                  [](Graphics& g) { paintPatience(g, true, 680); }));
}

TEST(PatienceStation, GoIsWrittenInInkOnItsPlateBeforeAndAfter) {
    for (const bool ready : {false, true}) {
        Rng rng(5489);
        PatienceLevel level;
        lay(level, "patience", 3, rng);
        Pointer p;
        p.step(level, ready ? 3.0 : 1.0, 0, 0, false);
        test::SoftwareCanvas canvas;
        canvas.useGameFonts();
        canvas.fill(rgb(0, 0, 0));
        level.render(canvas.graphics);
        // The plate is flat from x 603 to 762 over its full height.
        const Color plate = ready ? rgb(35, 112, 69) : rgb(79, 61, 21);
        EXPECT_EQ(test::pixelsUnlikeText(canvas, Rect{613, 447, 140, 56}, plate, "GO", 683, 475,
                                         TextSize::Large, rgb(20, 20, 20), true, true),
                  0)
            << (ready ? "ready" : "waiting");
    }
}

TEST(PatienceStation, ItsInstructionSitsSixteenPixelsAboveTheFoot) {
    Rng rng(5489);
    PatienceLevel level;
    lay(level, "patience", 3, rng);
    test::SoftwareCanvas canvas;
    canvas.useGameFonts();
    canvas.fill(rgb(0, 0, 0));
    level.render(canvas.graphics);
    // The GO plate ends at y 505; below it there is only the instruction.
    EXPECT_EQ(test::pixelsUnlikeText(canvas, Rect{0, 510, 1366, 258}, rgb(0, 0, 0),
                                     "DO NOT CLICK UNTIL THE BAR IS FULL", 683, 604, TextSize::Small,
                                     rgb(178, 119, 32), true, false),
              0);
}

// The status line's band, y 190..309, holds nothing but the status text: the
// station's band must match the text drawn alone, pixel for pixel.
std::vector<Color> statusBand(const test::SoftwareCanvas& canvas) {
    std::vector<Color> band;
    for (int y = 190; y < 310; ++y) {
        for (int x = 263; x < 1103; ++x) {
            band.push_back(canvas.pixel(x, y));
        }
    }
    return band;
}

void expectStatusLine(PatienceLevel& level, const char* text, Color c) {
    test::SoftwareCanvas canvas;
    canvas.useGameFonts();
    canvas.graphics.clear(rgb(0, 0, 0));
    level.render(canvas.graphics);
    const std::vector<Color> drawn = statusBand(canvas);
    canvas.graphics.clear(rgb(0, 0, 0));
    ASSERT_GT(canvas.graphics.text(text, 683, 250, TextSize::Large, c, true, true), 0);
    const std::vector<Color> expected = statusBand(canvas);
    const auto inked = std::count_if(expected.begin(), expected.end(),
                                     [](Color px) { return px != rgb(0, 0, 0); });
    EXPECT_GT(inked, 100);
    EXPECT_TRUE(drawn == expected) << text;
}

TEST(PatienceStation, TheStatusSaysWaitInRedThenGoWithAnEmDashInGreen) {
    Rng rng(5489);
    PatienceLevel level;
    lay(level, "patience", 3, rng);
    expectStatusLine(level, "WAIT...", rgb(255, 58, 42));
    level.elapsed = level.wait;
    level.ready = true;
    expectStatusLine(level, "GO \xE2\x80\x94 NOW CLICK", rgb(70, 224, 138));
}

// ------------------------------------------------------------------- timing

struct TimingStation : ::testing::Test {
    Rng rng{11};
    TimingLevel level;
    Pointer p;

    void SetUp() override { lay(level, "timing", 4, rng); }
    static constexpr int dashX = 683;
    static constexpr int dashY = 584;
};

TEST_F(TimingStation, TheRingAndDashAreLaidOutWithoutDraws) {
    EXPECT_EQ(level.centerX, 683);
    EXPECT_EQ(level.centerY, 395);
    EXPECT_EQ(level.ringRadius, 90);
    EXPECT_EQ(level.angle, 0.0);
    EXPECT_EQ(level.angularSpeed, 2.6);
    EXPECT_EQ(level.tolerance, 0.5);
    EXPECT_EQ(level.button.x, 593);
    EXPECT_EQ(level.button.y, 562);
    EXPECT_EQ(level.button.w, 180);
    EXPECT_EQ(level.button.h, 44);
    EXPECT_EQ(rng, Rng(11));
}

TEST_F(TimingStation, DashWithTheGapAtTheTopPasses) {
    level.angle = 1.5 * kPi - 0.3;
    EXPECT_EQ(p.press(level, 0.1, dashX, dashY), LevelResult::Solved);   // 0.04 short of the top
}

TEST_F(TimingStation, DashWithTheGapElsewhereFires) {
    level.angle = 0.5 * kPi;   // the bottom
    EXPECT_EQ(p.press(level, 0.0, dashX, dashY), LevelResult::Failed);
}

// How far the station judges an angle to be from the top.
double offTop(double angle) {
    return std::fabs(std::atan2(std::sin(angle + kPi / 2), std::cos(angle + kPi / 2)));
}

TEST_F(TimingStation, DashExactlyHalfARadianFromTheTopFires) {
    // Half a radian either side of the top, written one turn down so that the
    // sum with pi/2 lands on 0.5 exactly; within the first turn no double does.
    for (const double edge : {0.5 - kPi / 2, -0.5 - kPi / 2}) {
        ASSERT_EQ(offTop(edge), 0.5);
        TimingLevel atEdge;
        lay(atEdge, "timing", 4, rng);
        atEdge.angle = edge;
        EXPECT_EQ(p.press(atEdge, 0.0, dashX, dashY), LevelResult::Failed) << edge;
        // A hair closer to the top passes.
        TimingLevel closer;
        lay(closer, "timing", 4, rng);
        closer.angle = edge + (edge > -kPi / 2 ? -1e-9 : 1e-9);
        EXPECT_EQ(p.press(closer, 0.0, dashX, dashY), LevelResult::Solved) << edge;
    }
}

TEST_F(TimingStation, OnlyAPressOnDashCounts) {
    level.angle = 1.5 * kPi;
    EXPECT_EQ(p.press(level, 0.0, 683, 300), LevelResult::Running);   // on the ring
    EXPECT_EQ(p.press(level, 0.0, 773, 584), LevelResult::Running);   // right of DASH
    EXPECT_EQ(p.press(level, 0.0, 683, 606), LevelResult::Running);   // below it
    EXPECT_EQ(p.step(level, 0.0, dashX, dashY, true), LevelResult::Running);   // held, no press
    level.angle = 0.5 * kPi;
    EXPECT_EQ(p.press(level, 0.0, 100, 700), LevelResult::Running);   // nowhere, gap wrong
    EXPECT_EQ(p.step(level, 0.0, dashX, dashY, false), LevelResult::Running);
}

TEST_F(TimingStation, TheAngleWrapsOneTurnPerCallOnly) {
    level.angle = 2 * kPi - 0.01;
    p.step(level, 0.05, 0, 0, false);
    EXPECT_NEAR(level.angle, 0.12, 1e-12);
    // A huge step leaves the angle above 2 pi after its single wrap ...
    level.angle = 0.0;
    const double turns = 2 * kPi + 1.5 * kPi;   // lands on the top, one turn up
    p.step(level, (turns + 2 * kPi) / 2.6, 0, 0, false);
    EXPECT_NEAR(level.angle, turns, 1e-9);
    EXPECT_GT(level.angle, 2 * kPi);
}

TEST_F(TimingStation, AnAngleStillAboveTwoPiIsJudgedByWhereItPoints) {
    // ... and DASH still reads it correctly: the top, one turn up.
    level.angle = 0.0;
    EXPECT_EQ(p.press(level, (4 * kPi + 1.5 * kPi) / 2.6, dashX, dashY), LevelResult::Solved);
    EXPECT_GT(level.angle, 2 * kPi);

    TimingLevel bottom;

    lay(bottom, "timing", 4, rng);
    EXPECT_EQ(p.press(bottom, (4 * kPi + 0.5 * kPi) / 2.6, dashX, dashY), LevelResult::Failed);
}

TEST_F(TimingStation, DashPlaysThePassOrTheFailSoundAndNothingElse) {
    {
        test::Desk<TimingLevel> desk(11, 4);
        desk.level.angle = 1.5 * kPi;
        EXPECT_EQ(desk.press(dashX, dashY, 0.0), LevelResult::Solved);
        EXPECT_EQ(desk.sounds, (std::vector<std::string>{"pass"}));
    }
    {
        test::Desk<TimingLevel> desk(11, 4);
        desk.level.angle = 0.0;
        EXPECT_EQ(desk.press(dashX, dashY, 0.0), LevelResult::Failed);
        EXPECT_EQ(desk.sounds, (std::vector<std::string>{"fail"}));
    }
}

TEST_F(TimingStation, PressesOffDashAreSilentWhereverTheGapIs) {
    test::Desk<TimingLevel> desk(11, 4);
    // DASH covers x 593..772 and y 562..605; the ring, the marker, DASH's
    // four sides just outside it, and the floor.
    const std::vector<std::pair<int, int>> spots{{683, 305}, {683, 285}, {592, 584}, {773, 584},
                                                 {683, 561}, {683, 606}, {100, 700}};
    for (int turn = 0; turn < 12; ++turn) {
        for (const auto& [x, y] : spots) {
            ASSERT_EQ(desk.click(x, y), LevelResult::Running) << x << "," << y;
        }
        desk.step(0.2);
    }
    EXPECT_EQ(desk.sounds, std::vector<std::string>{});
}

TEST_F(TimingStation, DashIsWrittenInInkOnItsPlate) {
    test::SoftwareCanvas canvas;
    canvas.useGameFonts();
    canvas.fill(rgb(0, 0, 0));
    level.render(canvas.graphics);
    // The plate is flat from x 601 to 764 over its full height, 562..605.
    EXPECT_EQ(test::pixelsUnlikeText(canvas, Rect{613, 564, 140, 40}, rgb(229, 194, 96), "DASH", 683,
                                     584, TextSize::Normal, rgb(20, 20, 20), true, true),
              0);
}

TEST_F(TimingStation, ItsInstructionSitsBelowDash) {
    test::SoftwareCanvas canvas;
    canvas.useGameFonts();
    canvas.fill(rgb(0, 0, 0));
    level.render(canvas.graphics);
    // DASH's rounded foot reaches y 606; from 607 down there is only the line.
    EXPECT_EQ(test::pixelsUnlikeText(canvas, Rect{0, 607, 1366, 161}, rgb(0, 0, 0),
                                     "DASH WHEN THE GAP REACHES THE TOP", 683, 604, TextSize::Small,
                                     rgb(178, 119, 32), true, false),
              0);
}

// The dash ring as it must look with the gap at `gap` radians: a red dot of
// radius 7 every 0.12 rad from 0 round the ring of 90 about (683, 395), but
// none within half a radian of the gap; the green marker over the top; the
// DASH plate and its word; the instruction line.
void paintTiming(Graphics& g, double gap) {
    for (double a = 0.0; a < 2 * kPi; a += 0.12) {
        if (std::fabs(std::atan2(std::sin(a - gap), std::cos(a - gap))) < 0.5) {
            continue;
        }
        g.circle(683 + static_cast<int>(std::cos(a) * 90), 395 + static_cast<int>(std::sin(a) * 90),
                 7, rgb(255, 58, 42), true);
    }
    g.circle(683, 285, 6, rgb(70, 224, 138), true);
    g.roundRect(Rect{593, 562, 180, 44}, 8, rgb(229, 194, 96), true);
    g.text("DASH", 683, 584, TextSize::Normal, rgb(20, 20, 20), true, true);
    g.text("DASH WHEN THE GAP REACHES THE TOP", 683, 604, TextSize::Small, rgb(178, 119, 32), true,
           false);
}

TEST_F(TimingStation, TheRingStartsWithItsGapOnTheRight) {
    EXPECT_TRUE(test::samePicture([&](Graphics& g) { level.render(g); },
                                  [](Graphics& g) { paintTiming(g, 0.0); }));
}

TEST_F(TimingStation, TheGapTurnsWithTheAngle) {
    p.step(level, 1.0, 0, 0, false);   // 2.6 rad on: lower left
    EXPECT_TRUE(test::samePicture([&](Graphics& g) { level.render(g); },
                                  [](Graphics& g) { paintTiming(g, 2.6); }));
    level.angle = 1.5 * kPi;   // at the top, under the marker
    EXPECT_TRUE(test::samePicture([&](Graphics& g) { level.render(g); },
                                  [](Graphics& g) { paintTiming(g, 1.5 * kPi); }));
}

TEST_F(TimingStation, TheGapLeavesOutNineDotsOfFiftyThree) {
    // Dots are drawn at 0, 0.12, ... 6.24: 53 places. Round the angle 0 the
    // gap swallows 0 to 0.48 and 5.88 to 6.24, nine of them; the 44 left
    // are each a filled disc of radius 7.
    test::SoftwareCanvas canvas;
    canvas.fill(rgb(0, 0, 0));
    level.render(canvas.graphics);
    int dots = 0;
    for (double a = 0.0; a < 2 * kPi; a += 0.12) {
        const int x = 683 + static_cast<int>(std::cos(a) * 90);
        const int y = 395 + static_cast<int>(std::sin(a) * 90);
        dots += canvas.pixel(x, y) == rgb(255, 58, 42) ? 1 : 0;
    }
    EXPECT_EQ(dots, 44);
}

// -------------------------------------------------------------------- orbit

struct OrbitStation : ::testing::Test {
    Rng rng{12};
    OrbitLevel level;
    Pointer p;

    void SetUp() override { lay(level, "orbit", 33, rng); }
};

TEST_F(OrbitStation, TheOrbitCirclesTheAreaCentreWithoutDraws) {
    EXPECT_EQ(level.centerX, 683);
    EXPECT_EQ(level.centerY, 405);
    EXPECT_EQ(level.orbitRadius, 130);
    EXPECT_EQ(level.orbRadius, 24);
    EXPECT_EQ(level.angle, 0.0);
    EXPECT_EQ(level.angularSpeed, 2.2);
    EXPECT_EQ(made<OrbitLevel>("orbit", 39, rng)->angularSpeed, 2.2);
    EXPECT_EQ(made<OrbitLevel>("orbit", 40, rng)->angularSpeed, 3.2);
    EXPECT_EQ(rng, Rng(12));
}

TEST_F(OrbitStation, ClickingTheOrbInTheTopZonePasses) {
    level.angle = 1.5 * kPi - 0.1;
    // After 0.05 s the orb is 0.01 rad past the top, at (684, 276).
    EXPECT_EQ(p.press(level, 0.05, 690, 280), LevelResult::Solved);
}

TEST_F(OrbitStation, ClickingTheOrbFarFromTheTopFires) {
    // At angle 0 the orb is at (813, 405), a quarter turn from the top.
    EXPECT_EQ(p.press(level, 0.0, 813, 405), LevelResult::Failed);
}

TEST_F(OrbitStation, ClickingTheOrbJustOutsideTheZoneFires) {
    level.angle = 1.5 * kPi - 0.55;
    const int ox = 683 + static_cast<int>(std::cos(level.angle) * 130);
    const int oy = 405 + static_cast<int>(std::sin(level.angle) * 130);
    EXPECT_EQ(p.press(level, 0.0, ox, oy), LevelResult::Failed);
}

TEST_F(OrbitStation, AClickOnTheZoneWhileTheOrbIsElsewhereDoesNothing) {
    EXPECT_EQ(p.press(level, 0.0, 683, 275), LevelResult::Running);
    // A miss by the orb's radius is a miss: 24 px from its centre.
    EXPECT_EQ(p.press(level, 0.0, 813 - 24, 405), LevelResult::Running);
    EXPECT_EQ(p.press(level, 0.0, 813, 405 + 24), LevelResult::Running);
    EXPECT_EQ(p.step(level, 0.0, 813, 405, true), LevelResult::Running);   // held over it, no press
}

TEST_F(OrbitStation, TheAngleWrapsOnceAndIsStillJudgedByWhereItPoints) {
    level.angle = 2 * kPi - 0.01;
    p.step(level, 0.05, 0, 0, false);
    EXPECT_NEAR(level.angle, 0.1, 1e-12);
    level.angle = 0.0;
    // One turn and three quarters in one call: still above 2 pi, at the top.
    EXPECT_EQ(p.press(level, (4 * kPi + 1.5 * kPi) / 2.2, 683, 275), LevelResult::Solved);
    EXPECT_GT(level.angle, 2 * kPi);
}

TEST_F(OrbitStation, CatchingTheOrbPlaysThePassOrTheFailSoundAndNothingElse) {
    {
        test::Desk<OrbitLevel> desk(12, 33);
        desk.level.angle = 1.5 * kPi;   // the orb at (683, 275), in the zone
        EXPECT_EQ(desk.press(683, 275, 0.0), LevelResult::Solved);
        EXPECT_EQ(desk.sounds, (std::vector<std::string>{"pass"}));
    }
    {
        test::Desk<OrbitLevel> desk(12, 33);   // the orb at (813, 405)
        EXPECT_EQ(desk.press(813, 405, 0.0), LevelResult::Failed);
        EXPECT_EQ(desk.sounds, (std::vector<std::string>{"fail"}));
    }
}

TEST_F(OrbitStation, ClicksThatMissTheOrbAreSilent) {
    test::Desk<OrbitLevel> desk(12, 33);   // the orb held at (813, 405)
    // The empty zone, the centre, the orbit's far side, and a hair outside
    // the orb at (813, 405) on each side.
    const std::vector<std::pair<int, int>> spots{{683, 275}, {683, 405}, {553, 405}, {789, 405},
                                                 {837, 405}, {813, 381}, {813, 429}};
    for (const auto& [x, y] : spots) {
        ASSERT_EQ(desk.press(x, y, 0.0), LevelResult::Running) << x << "," << y;
        ASSERT_EQ(desk.release(x, y, 0.0), LevelResult::Running);
    }
    EXPECT_EQ(desk.sounds, std::vector<std::string>{});
}

TEST_F(OrbitStation, TheOrbitRunsFasterFromStationForty) {
    test::Desk<OrbitLevel> slow(12, 39);
    test::Desk<OrbitLevel> fast(12, 40);
    slow.step(0.5);
    fast.step(0.5);
    EXPECT_DOUBLE_EQ(slow.level.angle, 1.1);
    EXPECT_DOUBLE_EQ(fast.level.angle, 1.6);
}

TEST_F(OrbitStation, ItsInstructionSitsSixteenPixelsAboveTheFoot) {
    test::SoftwareCanvas canvas;
    canvas.useGameFonts();
    canvas.fill(rgb(0, 0, 0));
    level.render(canvas.graphics);
    // The orbit's lowest point is y 535.
    EXPECT_EQ(test::pixelsUnlikeText(canvas, Rect{0, 540, 1366, 228}, rgb(0, 0, 0),
                                     "CLICK THE ORB AS IT CROSSES THE TOP ZONE", 683, 604,
                                     TextSize::Small, rgb(178, 119, 32), true, false),
              0);
}

// The orbit as it must look with the orb at (x, y): the grey ring outline of
// radius 130 round (683, 405), the green zone of radius 32 at its top, the
// gold orb of radius 24 over both, and the instruction line.
void paintOrbit(Graphics& g, int x, int y) {
    g.circle(683, 405, 130, rgb(32, 32, 32), false);
    g.circle(683, 275, 32, rgb(21, 67, 41), true);
    g.circle(x, y, 24, rgb(255, 216, 107), true);
    g.text("CLICK THE ORB AS IT CROSSES THE TOP ZONE", 683, 604, TextSize::Small, rgb(178, 119, 32),
           true, false);
}

TEST_F(OrbitStation, TheOrbStartsOnTheRightOfItsOrbit) {
    EXPECT_TRUE(test::samePicture([&](Graphics& g) { level.render(g); },
                                  [](Graphics& g) { paintOrbit(g, 813, 405); }));
}

TEST_F(OrbitStation, TheOrbIsDrawnOverTheZoneAsItCrosses) {
    level.angle = 1.5 * kPi;
    EXPECT_TRUE(test::samePicture([&](Graphics& g) { level.render(g); },
                                  [](Graphics& g) { paintOrbit(g, 683, 275); }));
}

TEST_F(OrbitStation, TheOrbsPlaceIsTruncatedTowardTheCentre) {
    level.angle = 2.5;
    // cos 2.5 x 130 = -104.15 and sin 2.5 x 130 = 77.80: (579, 482).
    EXPECT_TRUE(test::samePicture([&](Graphics& g) { level.render(g); },
                                  [](Graphics& g) { paintOrbit(g, 579, 482); }));
}

}  // namespace
}  // namespace vorn

// ------------------------------------------------------------------ solvers

namespace vorn::test {
namespace {

TEST(ButtonSolver, ClearsTheButtonOnEveryDifficulty) { EXPECT_EQ(unsolvedRuns("button"), ""); }

TEST(HoldSolver, ClearsTheHoldOnEveryDifficulty) { EXPECT_EQ(unsolvedRuns("hold"), ""); }

TEST(PatienceSolver, ClearsTheWaitingPeriodOnEveryDifficulty) {
    EXPECT_EQ(unsolvedRuns("patience"), "");
}

TEST(TimingSolver, ClearsTheDashRingOnEveryDifficulty) { EXPECT_EQ(unsolvedRuns("timing"), ""); }

TEST(TimingSolver, ClearsTheDashRingAtThirtyAndAHundredFortyFourFrames) {
    EXPECT_EQ(unsolvedRuns("timing", 5, 1.0 / 30.0), "");
    EXPECT_EQ(unsolvedRuns("timing", 5, 1.0 / 144.0), "");
}

TEST(OrbitSolver, ClearsTheOrbitOnEveryDifficulty) { EXPECT_EQ(unsolvedRuns("orbit"), ""); }

TEST(OrbitSolver, ClearsTheOrbitAtThirtyAndAHundredFortyFourFrames) {
    EXPECT_EQ(unsolvedRuns("orbit", 5, 1.0 / 30.0), "");
    EXPECT_EQ(unsolvedRuns("orbit", 5, 1.0 / 144.0), "");
}

// The obvious wrong moves, played by hand through real events.
template <typename Decide>
struct Scripted final : Solver {
    explicit Scripted(Decide d) : decideFn(d) {}
    Intent decide(const Level& station, const Hand& hand, double t) override {
        return decideFn(station, hand, t);
    }
    Decide decideFn;
};
template <typename Decide>
Scripted<Decide> scripted(Decide d) {
    return Scripted<Decide>(d);
}

TEST(ButtonSolver, PressingTheBigButtonOnlyRunsOutTheClock) {
    StationDriver bench(shippedRecord("button"), 4);
    auto presser = scripted([](const Level&, const Hand& hand, double) {
        return clickAt(hand, 683, 405);
    });
    EXPECT_EQ(bench.play(presser, 5.0).result, LevelResult::Running);
    EXPECT_EQ(bench.sounds, std::vector<std::string>{});
}

TEST(HoldSolver, AClickOnTheBarFiresWithTheFailSound) {
    StationDriver bench(shippedRecord("hold"), 4);
    auto clicker = scripted([](const Level&, const Hand& hand, double) {
        return clickAt(hand, 683, 400);
    });
    EXPECT_EQ(bench.play(clicker, 5.0).result, LevelResult::Failed);
    EXPECT_EQ(bench.sounds, (std::vector<std::string>{"fail"}));
}

TEST(PatienceSolver, ClickingGoStraightAwayFiresWithTheFailSound) {
    StationDriver bench(shippedRecord("patience"), 4);
    auto eager = scripted([](const Level&, const Hand& hand, double) {
        return clickAt(hand, 683, 475);
    });
    const StationDriver::Outcome out = bench.play(eager, 5.0);
    EXPECT_EQ(out.result, LevelResult::Failed);
    EXPECT_LT(out.time, 1.0);
    EXPECT_EQ(bench.sounds, (std::vector<std::string>{"fail"}));
}

TEST(TimingSolver, DashingStraightAwayFiresWithTheFailSound) {
    StationDriver bench(shippedRecord("timing"), 4);
    auto eager = scripted([](const Level&, const Hand& hand, double) {
        return clickAt(hand, 683, 584);
    });
    const StationDriver::Outcome out = bench.play(eager, 5.0);
    EXPECT_EQ(out.result, LevelResult::Failed);
    EXPECT_LT(out.time, 1.0);
    EXPECT_EQ(bench.sounds, (std::vector<std::string>{"fail"}));
}

TEST(OrbitSolver, GrabbingTheOrbAtTheSideFiresWithTheFailSound) {
    StationDriver bench(shippedRecord("orbit"), 4);
    bench.frame(0.016);
    const auto& orbit = dynamic_cast<const OrbitLevel&>(*bench.station);
    // Where the orb will be on the next frame.
    const double a = orbit.angle + orbit.angularSpeed * 0.016;
    const int x = orbit.centerX + static_cast<int>(std::cos(a) * orbit.orbitRadius);
    const int y = orbit.centerY + static_cast<int>(std::sin(a) * orbit.orbitRadius);
    pushMotion(x, y);
    pushButton(true, x, y);
    EXPECT_EQ(bench.frame(0.016), LevelResult::Failed);
    EXPECT_EQ(bench.sounds, (std::vector<std::string>{"fail"}));
}

// Twohand ships in no catalogue: these records are its two speeds.
LevelDef twoHandRecord(std::int32_t number) {
    LevelDef def;
    def.number = number;
    def.id = "twohand";
    def.name = "TWO-HAND CONTROL";
    def.type = "twohand";
    def.phase = phaseForNumber(number);
    def.baseTime = 30;
    return def;
}

TEST(TwoHandSolver, TheBestOneHandedTryRunsOutTheClockInSilence) {
    for (const std::int32_t number : {11, 22}) {
        for (const double dt : {1.0 / 144.0, 1.0 / 60.0, 1.0 / 20.0}) {
            StationDriver bench(twoHandRecord(number), 9);
            std::unique_ptr<Solver> solver = makeSolver("twohand");
            const StationDriver::Outcome out = bench.play(*solver, 20.0, dt);
            EXPECT_EQ(out.result, LevelResult::Running) << number << " at " << dt;
            EXPECT_NEAR(out.time, 20.0, 2 * dt);
            EXPECT_EQ(bench.sounds, std::vector<std::string>{}) << number << " at " << dt;
        }
    }
}

TEST(TimingSolvers, EveryTimingTypeHasItsOwnSolverAndNoOtherTypeDoes) {
    for (const char* type : {"button", "hold", "twohand", "patience", "timing", "orbit"}) {
        EXPECT_NE(makeTimingSolver(type), nullptr) << type;
    }
    EXPECT_EQ(makeTimingSolver("whack"), nullptr);
    EXPECT_EQ(makeTimingSolver(""), nullptr);
}

}  // namespace
}  // namespace vorn::test
