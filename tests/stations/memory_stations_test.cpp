// The memory family: Simon, anti-Simon, the shutdown switches, the site walk,
// the filing cabinet and the telegraph key.

#include "audio/audio_system.h"
#include "data/level_catalogue.h"
#include "stations/level_factory.h"
#include "stations/memory_stations.h"
#include "support/draws_by_hand.h"
#include "support/software_canvas.h"
#include "support/solvers/family_solvers.h"
#include "support/station_bench.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <vector>

namespace vorn {
namespace {

// The play area every station gets: {263, 190, 840, 430}, centre x 683.
constexpr int kCx = 683;

LevelDef recordNumbered(int number) {
    LevelDef def;
    def.number = number;
    return def;
}

// Drives a station directly, one update per call, with a silent audio system.
struct Desk {
    AudioSystem silent;   // never opened: every sound is a no-op
    InputState in;

    LevelResult idle(Level& level, double dt) {
        in.clearEdges();
        return level.update(dt, in, silent);
    }
    LevelResult press(Level& level, int x, int y, double dt = 0.016) {
        in.clearEdges();
        in.mouseX = x;
        in.mouseY = y;
        in.mouseDown = true;
        in.mousePressed = true;
        return level.update(dt, in, silent);
    }
    LevelResult hold(Level& level, double dt) { return idle(level, dt); }
    LevelResult release(Level& level, double dt = 0.016) {
        in.clearEdges();
        in.mouseDown = false;
        in.mouseReleased = true;
        return level.update(dt, in, silent);
    }
    LevelResult click(Level& level, int x, int y) {
        const LevelResult r = press(level, x, y);
        if (r != LevelResult::Running) {
            return r;
        }
        return release(level);
    }
    LevelResult clickRect(Level& level, const Rect& r) {
        return click(level, r.x + r.w / 2, r.y + r.h / 2);
    }
};

// Pixels of exactly colour c inside r: enough to tell a text was drawn.
int countColour(const test::SoftwareCanvas& canvas, const Rect& r, Color c) {
    int n = 0;
    for (int y = r.y; y < r.y + r.h; ++y) {
        for (int x = r.x; x < r.x + r.w; ++x) {
            n += canvas.pixel(x, y) == c ? 1 : 0;
        }
    }
    return n;
}

// The instruction line's band along the bottom of the play area.
constexpr Rect kInstructionBand{263, 604, 840, 22};
constexpr Color kInstructionColour = rgb(178, 119, 32);

TEST(MemoryFamily, EachTypeStringMakesItsStation) {
    EXPECT_NE(dynamic_cast<SimonLevel*>(createLevel("simon").get()), nullptr);
    EXPECT_NE(dynamic_cast<AntiSimonLevel*>(createLevel("antisimon").get()), nullptr);
    EXPECT_NE(dynamic_cast<SequenceLevel*>(createLevel("sequence").get()), nullptr);
    EXPECT_NE(dynamic_cast<RecallLevel*>(createLevel("recall").get()), nullptr);
    EXPECT_NE(dynamic_cast<MemoryLevel*>(createLevel("memory").get()), nullptr);
    EXPECT_NE(dynamic_cast<MorseLevel*>(createLevel("morse").get()), nullptr);
}

// ---------------------------------------------------------------- Simon

struct Simon : ::testing::Test {
    SimonLevel level;
    Rng rng{2024};
    Desk desk;

    void start(int number) { level.setup(recordNumbered(number), rng, kPlayArea); }
    // Lets the show run out in 0.05 s frames.
    void watch() {
        for (int i = 0; i < 400 && level.showing; ++i) {
            ASSERT_EQ(desk.idle(level, 0.05), LevelResult::Running);
        }
        ASSERT_FALSE(level.showing);
    }
    LevelResult pressPad(int p) { return desk.clickRect(level, level.pads[p]); }
};

TEST_F(Simon, FourPadsInASquareAroundTheCentre) {
    start(12);
    EXPECT_EQ(level.pads[0].x, kCx - 160);
    EXPECT_EQ(level.pads[0].y, 260);
    EXPECT_EQ(level.pads[1].x, kCx + 10);
    EXPECT_EQ(level.pads[1].y, 260);
    EXPECT_EQ(level.pads[2].x, kCx - 160);
    EXPECT_EQ(level.pads[2].y, 430);
    EXPECT_EQ(level.pads[3].x, kCx + 10);
    EXPECT_EQ(level.pads[3].y, 430);
    EXPECT_EQ(level.pads[3].w, 150);
    EXPECT_EQ(level.pads[3].h, 150);
}

TEST_F(Simon, StartsWithOnePadFromOneRawDrawAndShows) {
    start(12);
    Rng ref(2024);
    ASSERT_EQ(level.sequence.size(), 1u);
    EXPECT_EQ(level.sequence[0], static_cast<int>(ref() & 3u));
    EXPECT_EQ(rng, ref);
    EXPECT_TRUE(level.showing);
    EXPECT_EQ(level.litPad, -1);
    EXPECT_EQ(level.inputIndex, 0);
    EXPECT_EQ(level.rng, &rng);
}

TEST_F(Simon, SequencesGrowToFourBelowStationFortyAndToFiveFrom) {
    start(39);
    EXPECT_EQ(level.maxLength, 4);
    SimonLevel late;
    Rng other(1);
    late.setup(recordNumbered(40), other, kPlayArea);
    EXPECT_EQ(late.maxLength, 5);
}

TEST_F(Simon, EachPadLightsForAThirdOfASecondOfItsSlot) {
    start(12);
    const int first = level.sequence[0];
    desk.idle(level, 0.1);
    EXPECT_EQ(level.litPad, first);
    desk.idle(level, 0.2);   // 0.3 s
    EXPECT_EQ(level.litPad, first);
    desk.idle(level, 0.05);  // 0.35 s: dark for the rest of the slot
    EXPECT_EQ(level.litPad, -1);
    EXPECT_TRUE(level.showing);
    desk.idle(level, 0.25);  // 0.6 s: past the one slot of a one-pad sequence
    EXPECT_FALSE(level.showing);
    EXPECT_EQ(level.litPad, -1);
}

TEST_F(Simon, WithMaximumFourThePlayerRepeatsLengthsOneToFour) {
    start(12);
    Rng ref(2024);
    std::vector<int> expected{static_cast<int>(ref() & 3u)};
    std::vector<std::size_t> lengths;
    LevelResult r = LevelResult::Running;
    while (r == LevelResult::Running) {
        watch();
        lengths.push_back(level.sequence.size());
        EXPECT_EQ(level.sequence, expected);
        for (std::size_t i = 0; i < level.sequence.size() && r == LevelResult::Running; ++i) {
            r = pressPad(level.sequence[i]);
        }
        // Every round but the last adds a pad drawn from the run's engine.
        expected.push_back(static_cast<int>(ref() & 3u));
    }
    EXPECT_EQ(r, LevelResult::Solved);
    EXPECT_EQ(lengths, (std::vector<std::size_t>{1, 2, 3, 4}));
    EXPECT_EQ(rng, test::engineAfter(2024, 4));
}

TEST_F(Simon, AWrongPadAtAnyStepFires) {
    for (int round = 1; round <= 4; ++round) {
        for (int step = 0; step < round; ++step) {
            SimonLevel fresh;
            Rng engine(77);
            fresh.setup(recordNumbered(12), engine, kPlayArea);
            LevelResult r = LevelResult::Running;
            for (int played = 1; played <= round; ++played) {
                for (int i = 0; i < 400 && fresh.showing; ++i) {
                    desk.idle(fresh, 0.05);
                }
                const int upTo = played < round ? played : step;
                for (int i = 0; i < upTo; ++i) {
                    ASSERT_EQ(desk.clickRect(fresh, fresh.pads[fresh.sequence[i]]),
                              LevelResult::Running);
                }
            }
            const int wrong = (fresh.sequence[step] + 1) % 4;
            r = desk.clickRect(fresh, fresh.pads[wrong]);
            EXPECT_EQ(r, LevelResult::Failed) << "round " << round << " step " << step;
        }
    }
}

TEST_F(Simon, PressingDuringTheShowDoesNothing) {
    start(12);
    desk.idle(level, 0.4);   // dark part of the slot
    const int right = level.sequence[0];
    EXPECT_EQ(pressPad(right), LevelResult::Running);
    EXPECT_EQ(pressPad((right + 1) % 4), LevelResult::Running);
    EXPECT_TRUE(level.showing);
    EXPECT_EQ(level.inputIndex, 0);
    EXPECT_EQ(level.litPad, -1);
    EXPECT_EQ(level.sequence.size(), 1u);
    watch();
    EXPECT_EQ(level.inputIndex, 0);
}

TEST_F(Simon, PressesOffThePadsDoNothing) {
    start(12);
    watch();
    EXPECT_EQ(desk.click(level, kCx, 400), LevelResult::Running);   // the gutter between pads
    EXPECT_EQ(desk.click(level, 300, 300), LevelResult::Running);
    EXPECT_EQ(level.inputIndex, 0);
    EXPECT_EQ(level.litPad, -1);
}

TEST_F(Simon, APressLightsThePadPressed) {
    start(12);
    watch();
    const int p = level.sequence[0];
    pressPad(p);
    EXPECT_EQ(level.litPad, p);
}

TEST_F(Simon, RestingAndLitPadColours) {
    start(12);
    level.showing = false;
    level.litPad = 2;
    test::SoftwareCanvas canvas;
    canvas.graphics.clear(palette::black);
    level.render(canvas.graphics);
    auto inside = [&](int p) { return canvas.pixel(level.pads[p].x + 20, level.pads[p].y + 75); };
    EXPECT_EQ(inside(0), rgb(120, 40, 40));
    EXPECT_EQ(inside(1), rgb(40, 90, 50));
    EXPECT_EQ(inside(2), rgb(255, 216, 107));
    EXPECT_EQ(inside(3), rgb(40, 60, 100));
    level.litPad = 0;
    level.render(canvas.graphics);
    EXPECT_EQ(inside(0), rgb(255, 58, 42));
    EXPECT_EQ(inside(2), rgb(90, 80, 30));
    level.litPad = 1;
    level.render(canvas.graphics);
    EXPECT_EQ(inside(1), rgb(70, 224, 138));
    level.litPad = 3;
    level.render(canvas.graphics);
    EXPECT_EQ(inside(3), rgb(120, 160, 255));
}

TEST_F(Simon, StatusAboveThePadsAndInstructionBelow) {
    start(12);
    test::SoftwareCanvas canvas;
    canvas.useGameFonts();
    canvas.graphics.clear(palette::black);
    level.render(canvas.graphics);
    EXPECT_GT(countColour(canvas, Rect{kCx - 120, 212, 240, 24}, palette::gold), 20);
    EXPECT_GT(countColour(canvas, kInstructionBand, kInstructionColour), 20);
}

// ------------------------------------------------------------ AntiSimon

struct AntiSimon : ::testing::Test {
    AntiSimonLevel level;
    Rng rng{99};
    Desk desk;

    void SetUp() override { level.setup(recordNumbered(14), rng, kPlayArea); }
    LevelResult pressPad(int p) {
        const Rect& r = level.pads[p];
        return desk.press(level, r.x + 5, r.y + 5, 0.0);
    }
};

TEST_F(AntiSimon, SetupLaysTheFourPadsAndDrawsTheFirstFlash) {
    Rng ref(99);
    EXPECT_EQ(level.flashingPad, static_cast<int>(ref() & 3u));
    EXPECT_EQ(rng, ref);
    EXPECT_EQ(level.pads[1].x, kCx + 10);
    EXPECT_EQ(level.pads[2].y, 430);
    EXPECT_EQ(level.flashTimer, 0.0);
    EXPECT_EQ(level.rng, &rng);
    for (const bool d : level.done) {
        EXPECT_FALSE(d);
    }
}

TEST_F(AntiSimon, TheFlashMovesOnlyOnceItsTimerExceedsNineTenths) {
    Rng ref(99);
    ref();
    desk.idle(level, 0.9);
    EXPECT_EQ(level.flashTimer, 0.9);
    EXPECT_EQ(rng, ref);   // exactly 0.9 is not past it: no draw yet
    desk.idle(level, 0.01);
    EXPECT_EQ(level.flashTimer, 0.0);
    EXPECT_EQ(level.flashingPad, static_cast<int>(ref() & 3u));
    EXPECT_EQ(rng, ref);
}

TEST_F(AntiSimon, ClickingTheFlashingPadFires) {
    EXPECT_EQ(pressPad(level.flashingPad), LevelResult::Failed);
}

TEST_F(AntiSimon, TheSamePadClickedTwiceCountsOnce) {
    const int f = level.flashingPad;
    const int a = (f + 1) % 4;
    const int b = (f + 2) % 4;
    EXPECT_EQ(pressPad(a), LevelResult::Running);
    EXPECT_EQ(pressPad(a), LevelResult::Running);
    EXPECT_EQ(pressPad(b), LevelResult::Running);
    EXPECT_EQ(std::count(std::begin(level.done), std::end(level.done), true), 2);
}

TEST_F(AntiSimon, ThreeDistinctSafePadsSolveEvenIfTheFourthWasNeverFlashing) {
    level.flashingPad = 3;
    EXPECT_EQ(pressPad(0), LevelResult::Running);
    EXPECT_EQ(pressPad(1), LevelResult::Running);
    level.flashingPad = 1;   // the flash lands on a pad already ticked off
    EXPECT_EQ(pressPad(2), LevelResult::Solved);
    EXPECT_FALSE(level.done[3]);
}

TEST_F(AntiSimon, APadAlreadyTickedOffIsDeadlyWhenItFlashes) {
    level.flashingPad = 3;
    ASSERT_EQ(pressPad(0), LevelResult::Running);
    level.flashingPad = 0;
    EXPECT_EQ(pressPad(0), LevelResult::Failed);
}

TEST_F(AntiSimon, PressesOffThePadsDoNothing) {
    EXPECT_EQ(desk.press(level, kCx, 250, 0.0), LevelResult::Running);
    EXPECT_EQ(std::count(std::begin(level.done), std::end(level.done), true), 0);
}

TEST_F(AntiSimon, FlashingRedDoneGreenOthersBrass) {
    level.flashingPad = 1;
    level.done[2] = true;
    test::SoftwareCanvas canvas;
    canvas.graphics.clear(palette::black);
    level.render(canvas.graphics);
    auto corner = [&](int p) { return canvas.pixel(level.pads[p].x + 15, level.pads[p].y + 15); };
    EXPECT_EQ(corner(1), rgb(255, 58, 42));
    EXPECT_EQ(corner(2), rgb(35, 112, 69));
    EXPECT_EQ(corner(0), rgb(109, 84, 29));
    EXPECT_EQ(corner(3), rgb(109, 84, 29));
}

TEST_F(AntiSimon, LabelsInInkOnTheFlashingAndDonePadsOnly) {
    level.flashingPad = 1;
    level.done[2] = true;
    test::SoftwareCanvas canvas;
    canvas.useGameFonts();
    canvas.graphics.clear(palette::black);
    level.render(canvas.graphics);
    auto middle = [&](int p) {
        const Rect& r = level.pads[p];
        return Rect{r.x + 30, r.y + 60, 90, 30};
    };
    EXPECT_GT(countColour(canvas, middle(1), palette::ink), 10);
    EXPECT_GT(countColour(canvas, middle(2), palette::ink), 10);
    EXPECT_EQ(countColour(canvas, middle(0), palette::ink), 0);
    EXPECT_GT(countColour(canvas, kInstructionBand, kInstructionColour), 20);
}

// ------------------------------------------------------------- Sequence

struct Sequence : ::testing::Test {
    SequenceLevel level;
    Rng rng{5};
    Desk desk;

    void SetUp() override { level.setup(recordNumbered(11), rng, kPlayArea); }
    LevelResult throwSwitch(int i) { return desk.clickRect(level, level.switches[i]); }
};

TEST_F(Sequence, ThreeSwitchesAQuarterApartAndNoDraws) {
    // q = 210; x = 263 - 30 + (i + 1) * 210; y = 190 + 215 - 60.
    EXPECT_EQ(level.switchCount, 3);
    EXPECT_EQ(level.nextExpected, 2);
    EXPECT_EQ(level.switches[0].x, 443);
    EXPECT_EQ(level.switches[1].x, 653);
    EXPECT_EQ(level.switches[2].x, 863);
    EXPECT_EQ(level.switches[2].y, 345);
    EXPECT_EQ(level.switches[2].w, 60);
    EXPECT_EQ(level.switches[2].h, 120);
    EXPECT_EQ(rng, Rng(5));
}

TEST_F(Sequence, RightMiddleLeftSolves) {
    EXPECT_EQ(throwSwitch(2), LevelResult::Running);
    EXPECT_EQ(throwSwitch(1), LevelResult::Running);
    EXPECT_EQ(throwSwitch(0), LevelResult::Solved);
    EXPECT_TRUE(level.pressed[0] && level.pressed[1] && level.pressed[2]);
}

TEST_F(Sequence, TheLeftmostSwitchFirstFiresAtOnce) {
    EXPECT_EQ(desk.press(level, level.switches[0].x, level.switches[0].y), LevelResult::Failed);
}

TEST_F(Sequence, TheMiddleSwitchFirstFires) {
    EXPECT_EQ(throwSwitch(1), LevelResult::Failed);
}

TEST_F(Sequence, ThrowingTheRightSwitchTwiceFires) {
    ASSERT_EQ(throwSwitch(2), LevelResult::Running);
    EXPECT_EQ(throwSwitch(2), LevelResult::Failed);
}

TEST_F(Sequence, PressesBesideTheSwitchesDoNothing) {
    const Rect& s = level.switches[0];
    EXPECT_EQ(desk.press(level, s.x + s.w, s.y), LevelResult::Running);   // half-open edge
    EXPECT_EQ(desk.press(level, s.x, s.y + s.h), LevelResult::Running);
    EXPECT_EQ(level.nextExpected, 2);
}

TEST_F(Sequence, LeversStartUpInOrangeAndDropGreenWhenThrown) {
    ASSERT_EQ(throwSwitch(2), LevelResult::Running);
    test::SoftwareCanvas canvas;
    canvas.graphics.clear(palette::black);
    level.render(canvas.graphics);
    const Rect& up = level.switches[0];
    const Rect& down = level.switches[2];
    // Lever up: {x + 12, y + 10, 36, 40}; thrown: {x + 12, y + h - 50, 36, 40}.
    EXPECT_EQ(canvas.pixel(up.x + 30, up.y + 30), rgb(255, 170, 46));
    EXPECT_EQ(canvas.pixel(up.x + 30, up.y + up.h - 30), rgb(99, 77, 26));
    EXPECT_EQ(canvas.pixel(down.x + 30, down.y + down.h - 30), rgb(70, 224, 138));
    EXPECT_EQ(canvas.pixel(down.x + 30, down.y + 30), rgb(99, 77, 26));
    EXPECT_EQ(canvas.pixel(up.x + 5, up.y + 60), rgb(99, 77, 26));
}

// --------------------------------------------------------------- Recall

struct Recall : ::testing::Test {
    RecallLevel level;
    Rng rng{31};
    Desk desk;

    void start(int number) { level.setup(recordNumbered(number), rng, kPlayArea); }
    void watch() {
        for (int i = 0; i < 400 && level.showing; ++i) {
            ASSERT_EQ(desk.idle(level, 0.05), LevelResult::Running);
        }
        ASSERT_FALSE(level.showing);
    }
};

TEST_F(Recall, SpotsAreUniformDrawsXThenY) {
    start(12);
    Rng ref(31);
    ASSERT_EQ(level.spotCount, 4);
    for (int i = 0; i < 4; ++i) {
        const int x = uniformInt(ref, 343, 1023);
        const int y = uniformInt(ref, 270, 540);
        EXPECT_EQ(level.spots[i].x, x) << i;
        EXPECT_EQ(level.spots[i].y, y) << i;
    }
    EXPECT_EQ(rng, ref);
    EXPECT_TRUE(level.showing);
    EXPECT_EQ(level.index, 0);
}

TEST_F(Recall, FiveSpotsFromStationForty) {
    start(40);
    EXPECT_EQ(level.spotCount, 5);
    Rng ref(31);
    ref.discard(10);
    EXPECT_EQ(rng, ref);
}

TEST_F(Recall, EachSpotHasEightTenthsOfASecond) {
    start(12);
    desk.idle(level, 0.75);
    EXPECT_EQ(level.index, 0);
    desk.idle(level, 0.1);
    EXPECT_EQ(level.index, 1);
    desk.idle(level, 2.3);   // 3.15 s
    EXPECT_EQ(level.index, 3);
    EXPECT_TRUE(level.showing);
    desk.idle(level, 0.1);   // 3.25 s: past four spots
    EXPECT_FALSE(level.showing);
    EXPECT_EQ(level.index, 0);
}

TEST_F(Recall, APressDuringTheShowIsIgnored) {
    start(12);
    desk.idle(level, 0.1);
    EXPECT_EQ(desk.click(level, level.spots[0].x, level.spots[0].y), LevelResult::Running);
    EXPECT_EQ(desk.click(level, 270, 200), LevelResult::Running);
    EXPECT_TRUE(level.showing);
    watch();
    EXPECT_EQ(level.index, 0);
}

TEST_F(Recall, ClickingTheSpotsInOrderSolves) {
    start(12);
    watch();
    LevelResult r = LevelResult::Running;
    for (int i = 0; i < level.spotCount; ++i) {
        EXPECT_EQ(r, LevelResult::Running);
        r = desk.click(level, level.spots[i].x + 39, level.spots[i].y);
    }
    EXPECT_EQ(r, LevelResult::Solved);
}

TEST_F(Recall, APressFortyPixelsFromTheSpotFails) {
    start(12);
    watch();
    EXPECT_EQ(desk.press(level, level.spots[0].x + 40, level.spots[0].y), LevelResult::Failed);
}

TEST_F(Recall, AFortyPixelDiagonalFailsToo) {
    start(12);
    watch();
    // 24 across and 32 down is exactly 40.
    EXPECT_EQ(desk.press(level, level.spots[0].x + 24, level.spots[0].y + 32), LevelResult::Failed);
}

TEST_F(Recall, JustUnderFortyPixelsCounts) {
    start(12);
    watch();
    EXPECT_EQ(desk.press(level, level.spots[0].x, level.spots[0].y - 39), LevelResult::Running);
    EXPECT_EQ(level.index, 1);
}

TEST_F(Recall, TheShowDrawsEarlierSpotsSmallAndTheCurrentOneLarge) {
    start(12);
    desk.idle(level, 1.7);   // the third spot is up
    ASSERT_EQ(level.index, 2);
    test::SoftwareCanvas canvas;
    canvas.useGameFonts();
    canvas.graphics.clear(palette::black);
    level.render(canvas.graphics);
    const auto& s = level.spots;
    // Seed 31 spreads the spots far enough apart for these probes.
    for (int i = 0; i < 4; ++i) {
        for (int j = i + 1; j < 4; ++j) {
            ASSERT_GT(distance(s[i].x, s[i].y, s[j].x, s[j].y), 80.0) << i << " " << j;
        }
    }
    EXPECT_EQ(canvas.pixel(s[0].x, s[0].y), rgb(102, 68, 18));
    EXPECT_EQ(canvas.pixel(s[0].x + 10, s[0].y), rgb(102, 68, 18));
    EXPECT_EQ(canvas.pixel(s[0].x + 20, s[0].y), palette::black);
    EXPECT_EQ(canvas.pixel(s[1].x, s[1].y + 8), rgb(102, 68, 18));
    EXPECT_EQ(canvas.pixel(s[2].x, s[2].y + 28), rgb(255, 216, 107));
    EXPECT_EQ(canvas.pixel(s[2].x - 28, s[2].y), rgb(255, 216, 107));
    EXPECT_GT(countColour(canvas, Rect{s[2].x - 15, s[2].y - 15, 30, 30}, palette::ink), 10);
    EXPECT_EQ(canvas.pixel(s[3].x, s[3].y), palette::black);
    EXPECT_GT(countColour(canvas, Rect{kCx - 120, 210, 240, 22}, palette::terminalGreen), 20);
    EXPECT_GT(countColour(canvas, kInstructionBand, kInstructionColour), 20);
}

TEST_F(Recall, TheAnswerShowsNoSpotsOnlyThePrompt) {
    start(12);
    watch();
    test::SoftwareCanvas canvas;
    canvas.useGameFonts();
    canvas.graphics.clear(palette::black);
    level.render(canvas.graphics);
    for (int i = 0; i < level.spotCount; ++i) {
        EXPECT_EQ(canvas.pixel(level.spots[i].x, level.spots[i].y), palette::black) << i;
    }
    EXPECT_GT(countColour(canvas, Rect{kCx - 120, 210, 240, 22}, palette::gold), 20);
    EXPECT_EQ(countColour(canvas, Rect{kCx - 120, 210, 240, 22}, palette::terminalGreen), 0);
}

// --------------------------------------------------------------- Memory

// The deal of positions 0..n-1 after the shuffle rule.
std::vector<int> shuffled(Rng& ref, std::vector<int> items) {
    for (std::size_t i = 1; i < items.size(); ++i) {
        const auto j = static_cast<std::size_t>(uniformInt(ref, 0, static_cast<int>(i)));
        std::swap(items[i], items[j]);
    }
    return items;
}

std::vector<int> dealOf(const MemoryLevel& level) {
    return std::vector<int>(level.dealOrder, level.dealOrder + level.cardCount);
}

struct Memory : ::testing::Test {
    MemoryLevel level;
    Rng rng{4242};
    Desk desk;

    void start(int number) { level.setup(recordNumbered(number), rng, kPlayArea); }
    LevelResult turn(int pos) { return desk.clickRect(level, level.cards[pos]); }
    // The position that holds card c right now.
    int whereIs(int c) const {
        for (int pos = 0; pos < level.cardCount; ++pos) {
            if (level.dealOrder[pos] == c) {
                return pos;
            }
        }
        return -1;
    }
};

TEST_F(Memory, TenCardsInFiveColumnsBelowStationTwentyFour) {
    start(23);
    EXPECT_EQ(level.columns, 5);
    EXPECT_EQ(level.placementColumns, 5);
    EXPECT_EQ(level.cardCount, 10);
    EXPECT_EQ(level.rows, 2);
    // x0 = 263 + (840 - 480 + 12) / 2 = 449; y0 = 220.
    EXPECT_EQ(level.cards[0].x, 449);
    EXPECT_EQ(level.cards[0].y, 220);
    EXPECT_EQ(level.cards[4].x, 449 + 4 * 96);
    EXPECT_EQ(level.cards[5].x, 449);
    EXPECT_EQ(level.cards[5].y, 316);
    EXPECT_EQ(level.cards[9].w, 84);
    EXPECT_EQ(level.cards[9].h, 84);
    for (int c = 0; c < 10; ++c) {
        EXPECT_EQ(level.pairValue[c], c / 2);
    }
}

TEST_F(Memory, TwelveCardsInSixColumnsFromStationTwentyFour) {
    start(24);
    EXPECT_EQ(level.columns, 6);
    EXPECT_EQ(level.cardCount, 12);
    // x0 = 263 + (840 - 576 + 12) / 2 = 401.
    EXPECT_EQ(level.cards[0].x, 401);
    EXPECT_EQ(level.cards[6].y, 316);
    EXPECT_EQ(level.cards[11].x, 401 + 5 * 96);
}

TEST_F(Memory, TheDealIsTheShuffleRuleOverTheRunEngine) {
    start(23);
    Rng ref(4242);
    EXPECT_EQ(dealOf(level), shuffled(ref, {0, 1, 2, 3, 4, 5, 6, 7, 8, 9}));
    EXPECT_EQ(rng, ref);
    EXPECT_EQ(level.rng, &rng);
    EXPECT_EQ(level.firstPick, -1);
    EXPECT_FALSE(level.peeked);
}

TEST_F(Memory, TheFirstFlipReshufflesEveryOtherFaceDownCardOnce) {
    start(23);
    Rng ref(4242);
    std::vector<int> deal = shuffled(ref, {0, 1, 2, 3, 4, 5, 6, 7, 8, 9});
    const int turned = deal[3];
    ASSERT_EQ(turn(3), LevelResult::Running);
    // The turned card stays at position 3; the other nine are dealt anew.
    std::vector<int> positions;
    std::vector<int> rest;
    for (int pos = 0; pos < 10; ++pos) {
        if (pos != 3) {
            positions.push_back(pos);
            rest.push_back(deal[static_cast<std::size_t>(pos)]);
        }
    }
    rest = shuffled(ref, rest);
    for (std::size_t i = 0; i < positions.size(); ++i) {
        deal[static_cast<std::size_t>(positions[i])] = rest[i];
    }
    EXPECT_EQ(dealOf(level), deal);
    EXPECT_EQ(level.dealOrder[3], turned);
    EXPECT_TRUE(level.revealed[turned]);
    EXPECT_TRUE(level.peeked);
    EXPECT_EQ(rng, ref);
    // The second flip does not shuffle again.
    const std::vector<int> before = dealOf(level);
    turn(0);
    EXPECT_EQ(dealOf(level), before);
    EXPECT_EQ(rng, ref);
}

TEST_F(Memory, TheSecondCardIsWhateverTheReshuffleDealtUnderThePointer) {
    int changed = 0;
    for (std::uint32_t seed = 1; seed <= 20; ++seed) {
        MemoryLevel fresh;
        Rng engine(seed);
        fresh.setup(recordNumbered(23), engine, kPlayArea);
        const int before = fresh.dealOrder[7];
        desk.clickRect(fresh, fresh.cards[2]);
        const int dealt = fresh.dealOrder[7];
        desk.clickRect(fresh, fresh.cards[7]);
        EXPECT_TRUE(fresh.revealed[dealt]) << seed;
        if (dealt != before) {
            ++changed;
            EXPECT_FALSE(fresh.revealed[before]) << seed;
        }
    }
    // The shuffle sometimes puts the card back; most seeds it does not.
    EXPECT_GE(changed, 10);
}

TEST_F(Memory, ARevealedCardCannotBePickedAgain) {
    start(23);
    ASSERT_EQ(turn(4), LevelResult::Running);
    const int c = level.dealOrder[4];
    const Rng after = rng;
    EXPECT_EQ(turn(4), LevelResult::Running);
    EXPECT_EQ(level.firstPick, c);
    EXPECT_EQ(level.mismatchTimer, 0.0);
    EXPECT_EQ(std::count(level.revealed, level.revealed + 10, true), 1);
    EXPECT_EQ(rng, after);
}

TEST_F(Memory, AMatchingPairStaysMatched) {
    start(23);
    turn(0);
    const int c = level.dealOrder[0];
    const int partner = whereIs(c ^ 1);
    EXPECT_EQ(turn(partner), LevelResult::Running);
    EXPECT_TRUE(level.matched[c]);
    EXPECT_TRUE(level.matched[c ^ 1]);
    EXPECT_EQ(level.firstPick, -1);
    EXPECT_EQ(level.mismatchTimer, 0.0);
}

TEST_F(Memory, AWrongPairStaysUpSixTenthsWhileClicksAreLostThenTurnsBack) {
    start(23);
    turn(0);
    const int c = level.dealOrder[0];
    int wrong = 1;
    while (level.dealOrder[wrong] == (c ^ 1)) {
        ++wrong;
    }
    const int d = level.dealOrder[wrong];
    const Rect& w = level.cards[wrong];
    EXPECT_EQ(desk.press(level, w.x + 5, w.y + 5), LevelResult::Running);
    EXPECT_EQ(level.mismatchTimer, 0.6);
    desk.release(level);
    desk.idle(level, 0.25);
    const int third = whereIs(c ^ 1);
    EXPECT_EQ(turn(third), LevelResult::Running);   // lost: the wrong pair is still up
    EXPECT_FALSE(level.revealed[c ^ 1]);
    EXPECT_TRUE(level.revealed[c] && level.revealed[d]);
    desk.idle(level, 0.4);
    EXPECT_FALSE(level.revealed[c]);
    EXPECT_FALSE(level.revealed[d]);
    EXPECT_EQ(level.firstPick, -1);
}

TEST_F(Memory, AllPairsMatchedSolvesAndNothingFails) {
    start(23);
    turn(0);
    LevelResult r = LevelResult::Running;
    // Turn each card's partner, then any face-down card and its partner.
    r = turn(whereIs(level.dealOrder[0] ^ 1));
    for (int c = 0; c < 10 && r == LevelResult::Running; c += 2) {
        if (level.matched[c]) {
            continue;
        }
        EXPECT_EQ(turn(whereIs(c)), LevelResult::Running);
        r = turn(whereIs(c + 1));
    }
    EXPECT_EQ(r, LevelResult::Solved);
}

TEST_F(Memory, MatchedRevealedAndFaceDownCards) {
    start(23);
    const int m = level.dealOrder[0];
    const int up = level.dealOrder[1];
    level.matched[m] = true;
    level.revealed[up] = true;
    test::SoftwareCanvas canvas;
    canvas.useGameFonts();
    canvas.graphics.clear(palette::black);
    level.render(canvas.graphics);
    const Rect& a = level.cards[0];
    const Rect& b = level.cards[1];
    const Rect& c = level.cards[2];
    EXPECT_EQ(canvas.pixel(a.x + 42, a.y + 42), rgb(17, 56, 34));
    EXPECT_EQ(canvas.pixel(b.x + 6, b.y + 42), rgb(216, 183, 90));
    EXPECT_GT(countColour(canvas, Rect{b.x + 27, b.y + 22, 30, 40}, palette::ink), 10);
    EXPECT_EQ(canvas.pixel(c.x + 4, c.y + 42), rgb(99, 77, 26));
    EXPECT_EQ(canvas.pixel(c.x + 8, c.y + 42), rgb(20, 20, 20));
    EXPECT_EQ(canvas.pixel(c.x + 75, c.y + 75), rgb(20, 20, 20));
    EXPECT_EQ(canvas.pixel(c.x + 76, c.y + 42), rgb(99, 77, 26));
    EXPECT_GT(countColour(canvas, kInstructionBand, kInstructionColour), 20);
}

// ---------------------------------------------------------------- Morse

struct Morse : ::testing::Test {
    MorseLevel level;
    Rng rng{8};
    Desk desk;

    void SetUp() override { level.setup(recordNumbered(21), rng, kPlayArea); }
    void watch() {
        for (int i = 0; i < 400 && level.showing; ++i) {
            ASSERT_EQ(desk.idle(level, 0.05), LevelResult::Running);
        }
        ASSERT_FALSE(level.showing);
    }
    // A press on the key held for `seconds` in one frame, then released.
    LevelResult keyFor(double seconds) {
        const LevelResult r = desk.press(level, level.key.x + 10, level.key.y + 10, seconds);
        if (r != LevelResult::Running) {
            return r;
        }
        return desk.release(level);
    }
};

TEST_F(Morse, FourSymbolsFromTheLowBitOfFourRawDraws) {
    Rng ref(8);
    for (int i = 0; i < 4; ++i) {
        EXPECT_EQ(level.symbols[i], static_cast<int>(ref() & 1u)) << i;
    }
    EXPECT_EQ(rng, ref);
    EXPECT_EQ(level.symbolCount, 4);
    // Key {683 - 70, 190 + 215 + 10, 140, 80}; lamp {683 - 30, 230, 60, 60}.
    EXPECT_EQ(level.key.x, 613);
    EXPECT_EQ(level.key.y, 415);
    EXPECT_EQ(level.key.w, 140);
    EXPECT_EQ(level.key.h, 80);
    EXPECT_EQ(level.lamp.x, 653);
    EXPECT_EQ(level.lamp.y, 230);
    EXPECT_TRUE(level.showing);
    EXPECT_FALSE(level.lampOn);
}

TEST_F(Morse, LongBurnsSixTenthsShortTwoTenthsEachInANineTenthSlot) {
    level.symbols[0] = 1;
    level.symbols[1] = 0;
    desk.idle(level, 0.05);
    EXPECT_TRUE(level.lampOn);
    desk.idle(level, 0.5);   // 0.55
    EXPECT_TRUE(level.lampOn);
    desk.idle(level, 0.1);   // 0.65
    EXPECT_FALSE(level.lampOn);
    desk.idle(level, 0.3);   // 0.95: the second slot
    EXPECT_EQ(level.shownIndex, 1);
    desk.idle(level, 0.1);   // 1.05
    EXPECT_TRUE(level.lampOn);
    desk.idle(level, 0.1);   // 1.15
    EXPECT_FALSE(level.lampOn);
}

TEST_F(Morse, TheShowEndsJustAfterFourSlots) {
    int frames = 0;
    while (level.showing && frames < 1000) {
        desk.idle(level, 0.01);
        ++frames;
    }
    EXPECT_FALSE(level.lampOn);
    EXPECT_EQ(level.shownIndex, 4);
    EXPECT_GE(frames, 360);
    EXPECT_LE(frames, 362);
}

TEST_F(Morse, PressesDuringTheShowAreIgnored) {
    desk.idle(level, 0.1);
    EXPECT_EQ(keyFor(0.5), LevelResult::Running);
    EXPECT_EQ(keyFor(0.05), LevelResult::Running);
    EXPECT_EQ(level.inputIndex, 0);
    EXPECT_FALSE(level.pressing);
}

TEST_F(Morse, APressOfExactlyThirtyFiveHundredthsIsShort) {
    watch();
    level.symbols[0] = 0;
    EXPECT_EQ(keyFor(0.35), LevelResult::Running);
    EXPECT_EQ(level.inputIndex, 1);
    level.symbols[1] = 1;
    EXPECT_EQ(keyFor(0.35), LevelResult::Failed);
}

TEST_F(Morse, APressPastThirtyFiveHundredthsIsLong) {
    watch();
    level.symbols[0] = 1;
    EXPECT_EQ(keyFor(0.36), LevelResult::Running);
    EXPECT_EQ(level.inputIndex, 1);
    level.symbols[1] = 0;
    EXPECT_EQ(keyFor(0.36), LevelResult::Failed);
}

TEST_F(Morse, HeldFramesAddUpIncludingThePressFrame) {
    watch();
    level.symbols[0] = 1;
    desk.press(level, level.key.x + 5, level.key.y + 5, 0.125);
    desk.hold(level, 0.125);
    desk.hold(level, 0.125);
    EXPECT_EQ(level.pressTime, 0.375);
    EXPECT_TRUE(level.pressing);
    EXPECT_EQ(desk.release(level, 0.5), LevelResult::Running);   // the release frame adds nothing
    EXPECT_EQ(level.inputIndex, 1);
}

TEST_F(Morse, APressStartingOutsideTheKeyIsIgnoredEvenIfReleasedOverIt) {
    watch();
    desk.press(level, level.key.x - 1, level.key.y + 10, 0.1);
    EXPECT_FALSE(level.pressing);
    desk.in.mouseX = level.key.x + 20;   // slides onto the key
    desk.hold(level, 0.1);
    EXPECT_EQ(desk.release(level), LevelResult::Running);
    EXPECT_EQ(level.inputIndex, 0);
    EXPECT_FALSE(level.pressing);
}

TEST_F(Morse, KeyingAllFourSolves) {
    watch();
    LevelResult r = LevelResult::Running;
    for (int i = 0; i < 4; ++i) {
        EXPECT_EQ(r, LevelResult::Running);
        r = keyFor(level.symbols[i] == 1 ? 0.6 : 0.1);
    }
    EXPECT_EQ(r, LevelResult::Solved);
}

TEST_F(Morse, LampKeyAndStatusColours) {
    test::SoftwareCanvas canvas;
    canvas.useGameFonts();
    canvas.graphics.clear(palette::black);
    level.lampOn = true;
    level.render(canvas.graphics);
    EXPECT_EQ(canvas.pixel(683, 260), rgb(255, 216, 107));
    EXPECT_EQ(canvas.pixel(683, 260 + 26), rgb(255, 216, 107));
    EXPECT_EQ(canvas.pixel(level.key.x + 70, level.key.y + 10), rgb(119, 92, 31));
    EXPECT_GT(countColour(canvas, Rect{level.key.x, level.key.y + 30, 140, 20}, palette::ink), 10);
    EXPECT_GT(countColour(canvas, Rect{kCx - 60, 320, 120, 22}, palette::terminalGreen), 10);
    EXPECT_GT(countColour(canvas, kInstructionBand, kInstructionColour), 20);
    level.lampOn = false;
    level.pressing = true;
    level.render(canvas.graphics);
    EXPECT_EQ(canvas.pixel(683, 260), rgb(30, 30, 30));
    EXPECT_EQ(canvas.pixel(level.key.x + 70, level.key.y + 10), rgb(35, 112, 69));
}

}  // namespace
}  // namespace vorn

// ------------------------------------------------- the automatic player

namespace vorn::test {
namespace {

TEST(MemorySolvers, SimonIsClearedOnEveryDifficulty) { EXPECT_EQ(unsolvedRuns("simon"), ""); }
TEST(MemorySolvers, AntiSimonIsClearedOnEveryDifficulty) {
    EXPECT_EQ(unsolvedRuns("antisimon"), "");
}
TEST(MemorySolvers, SequenceIsClearedOnEveryDifficulty) {
    EXPECT_EQ(unsolvedRuns("sequence"), "");
}
TEST(MemorySolvers, RecallIsClearedOnEveryDifficulty) { EXPECT_EQ(unsolvedRuns("recall"), ""); }
TEST(MemorySolvers, MemoryIsClearedOnEveryDifficulty) { EXPECT_EQ(unsolvedRuns("memory"), ""); }
TEST(MemorySolvers, MorseIsClearedOnEveryDifficulty) { EXPECT_EQ(unsolvedRuns("morse"), ""); }

// The solver plays from what it saw lit, not from the station's hidden
// sequence: with every flash hidden from it, it has nothing to repeat.
TEST(MemorySolvers, TheSimonSolverWorksFromTheFlashesItSaw) {
    StationBench bench(shippedRecord("simon"), 3);
    auto& level = dynamic_cast<SimonLevel&>(*bench.station);
    std::unique_ptr<Solver> solver = makeSolver("simon");
    // Blind the player: the station never lights a pad while showing.
    struct Blind final : Solver {
        Solver* inner;
        SimonLevel* level;
        Intent decide(const Level& s, const Hand& hand, double t) override {
            if (level->showing) {
                level->litPad = -1;
            }
            return inner->decide(s, hand, t);
        }
    } blind;
    blind.inner = solver.get();
    blind.level = &level;
    const StationBench::Outcome out = bench.play(blind, 30.0);
    EXPECT_EQ(out.result, LevelResult::Running);
    EXPECT_EQ(level.sequence.size(), 1u);
}

// Waits for the answer phase, then clicks a point.
struct ClickWhenReady final : Solver {
    bool (*ready)(const Level&) = nullptr;
    int x = 0;
    int y = 0;
    Intent decide(const Level& s, const Hand& hand, double) override {
        if (ready != nullptr && !ready(s)) {
            return Intent{x, y, false};
        }
        return clickAt(hand, x, y);
    }
};

TEST(MemoryBench, SimonFiresWithTheFailSoundOnTheWrongPad) {
    StationBench bench(shippedRecord("simon"), 11);
    const auto& level = dynamic_cast<const SimonLevel&>(*bench.station);
    const Rect& wrong = level.pads[(level.sequence[0] + 2) % 4];
    ClickWhenReady solver;
    solver.ready = [](const Level& s) { return !dynamic_cast<const SimonLevel&>(s).showing; };
    solver.x = wrong.x + 75;
    solver.y = wrong.y + 75;
    EXPECT_EQ(bench.play(solver, 10.0).result, LevelResult::Failed);
    EXPECT_TRUE(bench.lastSoundWasFail());
}

TEST(MemoryBench, AntiSimonFiresWithTheFailSoundOnTheFlashingPad) {
    StationBench bench(shippedRecord("antisimon"), 11);
    const auto& level = dynamic_cast<const AntiSimonLevel&>(*bench.station);
    // The flash holds still for its first 0.9 s: long enough to reach it.
    const Rect& flashing = level.pads[level.flashingPad];
    ClickWhenReady solver;
    solver.x = flashing.x + 75;
    solver.y = flashing.y + 75;
    EXPECT_EQ(bench.play(solver, 10.0).result, LevelResult::Failed);
    EXPECT_TRUE(bench.lastSoundWasFail());
}

TEST(MemoryBench, SequenceFiresWithTheFailSoundOnTheLeftSwitchFirst) {
    StationBench bench(shippedRecord("sequence"), 11);
    const auto& level = dynamic_cast<const SequenceLevel&>(*bench.station);
    ClickWhenReady solver;
    solver.x = level.switches[0].x + 30;
    solver.y = level.switches[0].y + 60;
    EXPECT_EQ(bench.play(solver, 10.0).result, LevelResult::Failed);
    EXPECT_TRUE(bench.lastSoundWasFail());
}

TEST(MemoryBench, RecallFiresWithTheFailSoundOnTheSecondSpotFirst) {
    StationBench bench(shippedRecord("recall"), 11);
    const auto& level = dynamic_cast<const RecallLevel&>(*bench.station);
    ASSERT_GE(distance(level.spots[0].x, level.spots[0].y, level.spots[1].x, level.spots[1].y),
              40.0);
    ClickWhenReady solver;
    solver.ready = [](const Level& s) { return !dynamic_cast<const RecallLevel&>(s).showing; };
    solver.x = level.spots[1].x;
    solver.y = level.spots[1].y;
    EXPECT_EQ(bench.play(solver, 10.0).result, LevelResult::Failed);
    EXPECT_TRUE(bench.lastSoundWasFail());
}

TEST(MemoryBench, MorseFiresWithTheFailSoundOnTheWrongLength) {
    StationBench bench(shippedRecord("morse"), 11);
    // Key the opposite of the first symbol: a tap for a long one, a long
    // hold for a short one.
    struct Opposite final : Solver {
        double downSince = -1.0;
        Intent decide(const Level& s, const Hand& hand, double t) override {
            const auto& m = dynamic_cast<const MorseLevel&>(s);
            const Intent over{m.key.x + 70, m.key.y + 20, false};
            if (m.showing) {
                return over;
            }
            if (hand.down && downSince < 0.0) {
                downSince = t;
            }
            const double want = m.symbols[0] == 1 ? 0.0 : 0.6;
            if (!hand.down && downSince < 0.0) {
                return Intent{over.x, over.y, true};
            }
            return Intent{over.x, over.y, t - downSince < want};
        }
    } opposite;
    EXPECT_EQ(bench.play(opposite, 20.0).result, LevelResult::Failed);
    EXPECT_TRUE(bench.lastSoundWasFail());
}

TEST(MemoryBench, TheCabinetNeverFiresOnAWrongPair) {
    StationBench bench(shippedRecord("memory"), 11);
    // Click every card in position order, twice over: lots of wrong pairs.
    struct Sweep final : Solver {
        int pos = 0;
        bool wasDown = false;
        Intent decide(const Level& s, const Hand& hand, double) override {
            const auto& m = dynamic_cast<const MemoryLevel&>(s);
            if (wasDown && !hand.down) {
                pos = (pos + 1) % m.cardCount;
            }
            wasDown = hand.down;
            const Rect& r = m.cards[pos];
            return clickAt(hand, r.x + 42, r.y + 42);
        }
    } sweep;
    const StationBench::Outcome out = bench.play(sweep, 8.0);
    EXPECT_NE(out.result, LevelResult::Failed);
    EXPECT_FALSE(bench.lastSoundWasFail());
}

}  // namespace
}  // namespace vorn::test
