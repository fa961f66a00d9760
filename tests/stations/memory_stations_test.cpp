// The memory family: Simon, anti-Simon, the shutdown switches, the site walk,
// the filing cabinet and the telegraph key.

#include "audio/audio_system.h"
#include "data/level_catalogue.h"
#include "stations/level_factory.h"
#include "stations/memory_stations.h"
#include "support/draws_by_hand.h"
#include "support/software_canvas.h"
#include "support/solvers/family_solvers.h"
#include "support/station_driver.h"
#include "support/station_sounds.h"
#include "support/text_probe.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cstdint>
#include <string>
#include <vector>

namespace vorn {
namespace {

// The play area every station gets: {263, 190, 840, 430}, centre x 683.
constexpr int kCx = 683;

constexpr Color kBlack = rgb(0, 0, 0);
constexpr Color kInk = rgb(20, 20, 20);
constexpr Color kGreen = rgb(70, 224, 138);
constexpr Color kGold = rgb(255, 216, 107);
constexpr Color kRed = rgb(255, 58, 42);
constexpr Color kInstruction = rgb(178, 119, 32);

using Sounds = std::vector<std::string>;

LevelDef recordNumbered(int number) {
    LevelDef def;
    def.number = number;
    return def;
}

// Drives a station directly, one update per call. Its audio system is never
// opened but logs every request, and every update is held to its verdict:
// pass the last request before Solved, fail the last before Failed, no pass
// while running, no clock sounds.
struct Desk {
    Sounds sounds;
    AudioSystem silent;
    InputState in;

    Desk() { silent.requestLog = &sounds; }
    Desk(const Desk&) = delete;
    Desk& operator=(const Desk&) = delete;

    LevelResult step(Level& level, double dt) {
        const std::size_t before = sounds.size();
        const LevelResult r = level.update(dt, in, silent);
        EXPECT_TRUE(test::soundsFitVerdict(r, sounds, before));
        return r;
    }
    // The requests made since the log held `from` of them.
    Sounds soundsSince(std::size_t from) const { return test::soundsFrom(sounds, from); }

    LevelResult idle(Level& level, double dt) {
        in.clearEdges();
        return step(level, dt);
    }
    LevelResult press(Level& level, int x, int y, double dt = 0.016) {
        in.clearEdges();
        in.mouseX = x;
        in.mouseY = y;
        in.mouseDown = true;
        in.mousePressed = true;
        return step(level, dt);
    }
    LevelResult hold(Level& level, double dt) { return idle(level, dt); }
    LevelResult release(Level& level, double dt = 0.016) {
        in.clearEdges();
        in.mouseDown = false;
        in.mouseReleased = true;
        return step(level, dt);
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

// A canvas with the game's fonts, cleared to black, with the station drawn on it.
struct Picture {
    test::SoftwareCanvas canvas;

    explicit Picture(Level& level) {
        canvas.useGameFonts();
        canvas.fill(kBlack);
        level.render(canvas.graphics);
    }
};

// Pixels of `region` unlike `background`.
int inkIn(const test::SoftwareCanvas& canvas, const Rect& region, Color background) {
    int n = 0;
    for (int y = region.y; y < region.y + region.h; ++y) {
        for (int x = region.x; x < region.x + region.w; ++x) {
            n += canvas.pixel(x, y) != background ? 1 : 0;
        }
    }
    return n;
}

// `region` (flat `background` apart from the text) holds exactly this text,
// drawn at (x, y) in this size and colour with these centring flags, glyph
// for glyph. The region must show some ink, so a region that misses the
// text cannot pass by comparing two blank pictures.
::testing::AssertionResult showsText(const test::SoftwareCanvas& canvas, const Rect& region,
                                     Color background, const char* text, int x, int y,
                                     TextSize size, Color colour, bool centerX, bool centerY) {
    if (inkIn(canvas, region, background) == 0) {
        return ::testing::AssertionFailure() << "nothing is drawn where \"" << text << "\" belongs";
    }
    const int unlike = test::pixelsUnlikeText(canvas, region, background, text, x, y, size, colour,
                                              centerX, centerY);
    if (unlike != 0) {
        return ::testing::AssertionFailure()
               << unlike << " pixels differ from \"" << text << "\" (-1: no font)";
    }
    return ::testing::AssertionSuccess();
}

// The instruction line: small, amber, centred on x 683 at y 190 + 430 - 16,
// alone in the strip along the foot of the play area.
constexpr Rect kInstructionBand{263, 596, 840, 30};

::testing::AssertionResult showsInstruction(const test::SoftwareCanvas& canvas, const char* text) {
    return showsText(canvas, kInstructionBand, kBlack, text, kCx, 604, TextSize::Small,
                     kInstruction, true, false);
}

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
    // Repeats the current round back without a mistake.
    LevelResult repeatRound() {
        LevelResult r = LevelResult::Running;
        const std::vector<int> round = level.sequence;
        for (std::size_t i = 0; i < round.size() && r == LevelResult::Running; ++i) {
            r = pressPad(round[i]);
        }
        return r;
    }
};

// The status line sits alone above the pads, gold, centred on (683, 224).
::testing::AssertionResult simonStatus(const test::SoftwareCanvas& canvas, const char* text) {
    return showsText(canvas, Rect{263, 195, 840, 60}, kBlack, text, kCx, 224, TextSize::Normal,
                     kGold, true, true);
}

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
    for (const Rect& pad : level.pads) {
        EXPECT_EQ(pad.w, 150);
        EXPECT_EQ(pad.h, 150);
    }
}

TEST_F(Simon, StartsWithOnePadFromOneRawDrawAndShows) {
    start(12);
    Rng ref(2024);
    ASSERT_EQ(level.sequence.size(), 1u);
    EXPECT_EQ(level.sequence[0], static_cast<int>(ref() & 3u));
    EXPECT_EQ(rng, test::engineAfter(2024, 1));
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

TEST_F(Simon, EachPadLightsForTheFirstThirtyThreeHundredthsOfItsSlot) {
    start(12);
    const int first = level.sequence[0];
    desk.idle(level, 0.1);
    EXPECT_EQ(level.litPad, first);
    desk.idle(level, 0.225);   // 0.325 s
    EXPECT_EQ(level.litPad, first);
    desk.idle(level, 0.01);    // 0.335 s: dark for the rest of the slot
    EXPECT_EQ(level.litPad, -1);
    EXPECT_TRUE(level.showing);
}

TEST_F(Simon, TheShowOfOnePadEndsWithItsFiftyFiveHundredthsSlot) {
    start(12);
    desk.idle(level, 0.545);
    EXPECT_TRUE(level.showing);
    desk.idle(level, 0.01);   // 0.555 s
    EXPECT_FALSE(level.showing);
    EXPECT_EQ(level.litPad, -1);
    EXPECT_EQ(level.inputIndex, 0);
}

TEST_F(Simon, TheSamePadTwiceInARowFlashesTwice) {
    start(12);
    level.sequence = {2, 2};
    desk.idle(level, 0.545);   // dark gap at the end of the first slot
    EXPECT_EQ(level.litPad, -1);
    desk.idle(level, 0.01);    // 0.555 s: the second slot lights it again
    EXPECT_EQ(level.litPad, 2);
    desk.idle(level, 0.5);     // 1.055 s
    EXPECT_TRUE(level.showing);
    desk.idle(level, 0.05);    // 1.105 s: past two slots
    EXPECT_FALSE(level.showing);
}

TEST_F(Simon, TheShowPlaysNoSound) {
    start(12);
    watch();
    EXPECT_EQ(desk.sounds, Sounds{});
}

TEST_F(Simon, WithMaximumFourThePlayerRepeatsLengthsOneToFour) {
    start(12);
    Rng ref(2024);
    std::vector<int> expected{static_cast<int>(ref() & 3u)};
    std::vector<std::size_t> lengths;
    LevelResult r = LevelResult::Running;
    while (r == LevelResult::Running && lengths.size() < 10) {
        watch();
        lengths.push_back(level.sequence.size());
        EXPECT_EQ(level.sequence, expected);
        r = repeatRound();
        // Every round but the last adds a pad drawn from the run's engine.
        expected.push_back(static_cast<int>(ref() & 3u));
    }
    EXPECT_EQ(r, LevelResult::Solved);
    EXPECT_EQ(lengths, (std::vector<std::size_t>{1, 2, 3, 4}));
    EXPECT_EQ(rng, test::engineAfter(2024, 4));
}

TEST_F(Simon, FromStationFortyTheLastRoundIsFivePadsLong) {
    start(40);
    LevelResult r = LevelResult::Running;
    int rounds = 0;
    while (r == LevelResult::Running && rounds < 10) {
        watch();
        ++rounds;
        r = repeatRound();
    }
    EXPECT_EQ(r, LevelResult::Solved);
    EXPECT_EQ(rounds, 5);
    EXPECT_EQ(rng, test::engineAfter(2024, 5));
}

TEST_F(Simon, EveryAcceptedPressClicksAndTheLastOneThenPasses) {
    start(12);
    LevelResult r = LevelResult::Running;
    for (int round = 1; round <= 4; ++round) {
        watch();
        for (int i = 0; i < round; ++i) {
            const std::size_t before = desk.sounds.size();
            r = pressPad(level.sequence[static_cast<std::size_t>(i)]);
            const bool last = round == 4 && i == 3;
            EXPECT_EQ(desk.soundsSince(before), last ? (Sounds{"click", "pass"}) : Sounds{"click"})
                << "round " << round << " press " << i;
            EXPECT_EQ(r, last ? LevelResult::Solved : LevelResult::Running);
        }
    }
    // 1 + 2 + 3 + 4 clicks, then the pass.
    EXPECT_EQ(desk.sounds.size(), 11u);
}

TEST_F(Simon, AWrongPadAtAnyStepFires) {
    for (int round = 1; round <= 4; ++round) {
        for (int step = 0; step < round; ++step) {
            SimonLevel fresh;
            Rng engine(77);
            fresh.setup(recordNumbered(12), engine, kPlayArea);
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
            ASSERT_EQ(static_cast<int>(fresh.sequence.size()), round);
            const int wrong = (fresh.sequence[step] + 1) % 4;
            const std::size_t before = desk.sounds.size();
            EXPECT_EQ(desk.clickRect(fresh, fresh.pads[wrong]), LevelResult::Failed)
                << "round " << round << " step " << step;
            EXPECT_EQ(desk.soundsSince(before), Sounds{"fail"});
        }
    }
}

TEST_F(Simon, PressingDuringTheShowDoesNothing) {
    start(12);
    const int right = level.sequence[0];
    desk.idle(level, 0.1);   // the pad is lit
    EXPECT_EQ(pressPad(right), LevelResult::Running);
    desk.idle(level, 0.25);  // dark part of the slot
    EXPECT_EQ(pressPad(right), LevelResult::Running);
    EXPECT_EQ(pressPad((right + 1) % 4), LevelResult::Running);
    EXPECT_TRUE(level.showing);
    EXPECT_EQ(level.inputIndex, 0);
    EXPECT_EQ(level.litPad, -1);
    EXPECT_EQ(level.sequence.size(), 1u);
    EXPECT_EQ(desk.sounds, Sounds{});
    watch();
    // Still the first press of the round is asked for.
    EXPECT_EQ(pressPad(right), LevelResult::Running);
    EXPECT_EQ(level.sequence.size(), 2u);
}

TEST_F(Simon, PressesOffThePadsDoNothing) {
    start(12);
    watch();
    EXPECT_EQ(desk.click(level, kCx, 400), LevelResult::Running);   // the gutter between pads
    EXPECT_EQ(desk.click(level, kCx - 160 + 150, 300), LevelResult::Running);   // right of pad 0
    EXPECT_EQ(desk.click(level, 300, 300), LevelResult::Running);
    EXPECT_EQ(level.inputIndex, 0);
    EXPECT_EQ(level.litPad, -1);
    EXPECT_EQ(desk.sounds, Sounds{});
}

TEST_F(Simon, APressLightsThePadPressed) {
    start(12);
    watch();
    const int p = level.sequence[0];
    pressPad(p);
    EXPECT_EQ(level.litPad, p);
}

TEST_F(Simon, AFullyRepeatedRoundShowsTheWholeLongerSequenceFromTheTop) {
    start(12);
    watch();
    const int first = level.sequence[0];
    ASSERT_GT(level.showTimer, 0.55);   // where the first show left it
    ASSERT_EQ(desk.press(level, level.pads[first].x + 5, level.pads[first].y + 5),
              LevelResult::Running);
    EXPECT_TRUE(level.showing);
    EXPECT_EQ(level.showTimer, 0.0);
    ASSERT_EQ(level.sequence.size(), 2u);
    desk.idle(level, 0.1);
    EXPECT_EQ(level.litPad, first);
}

TEST_F(Simon, RestingAndLitPadColours) {
    start(12);
    level.showing = false;
    level.litPad = 2;
    test::SoftwareCanvas canvas;
    canvas.graphics.clear(kBlack);
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

TEST_F(Simon, PadsAreRoundedWithRadiusTen) {
    start(12);
    test::SoftwareCanvas canvas;
    canvas.fill(kBlack);
    level.render(canvas.graphics);
    const Rect& pad = level.pads[0];
    EXPECT_EQ(canvas.pixel(pad.x, pad.y), kBlack);           // the corner is cut
    EXPECT_EQ(canvas.pixel(pad.x + 2, pad.y + 2), kBlack);
    EXPECT_EQ(canvas.pixel(pad.x + 3, pad.y + 3), rgb(120, 40, 40));
    EXPECT_EQ(canvas.pixel(pad.x + 10, pad.y), rgb(120, 40, 40));
}

TEST_F(Simon, TheStatusSaysWatchWhileTheRoundIsShown) {
    start(12);
    Picture shot(level);
    EXPECT_TRUE(simonStatus(shot.canvas, "WATCH  len 1/4"));
    EXPECT_TRUE(showsInstruction(shot.canvas, "REPEAT THE SEQUENCE"));
}

TEST_F(Simon, TheStatusSaysRepeatOnceTheShowIsOver) {
    start(12);
    watch();
    Picture shot(level);
    EXPECT_TRUE(simonStatus(shot.canvas, "REPEAT  len 1/4"));
    EXPECT_TRUE(showsInstruction(shot.canvas, "REPEAT THE SEQUENCE"));
}

TEST_F(Simon, TheStatusCountsTheNewLengthWhenTheNextRoundIsShown) {
    start(12);
    watch();
    ASSERT_EQ(repeatRound(), LevelResult::Running);
    {
        Picture shot(level);
        EXPECT_TRUE(simonStatus(shot.canvas, "WATCH  len 2/4"));
    }
    watch();
    Picture shot(level);
    EXPECT_TRUE(simonStatus(shot.canvas, "REPEAT  len 2/4"));
}

TEST_F(Simon, TheStatusShowsAMaximumOfFiveFromStationForty) {
    start(40);
    Picture shot(level);
    EXPECT_TRUE(simonStatus(shot.canvas, "WATCH  len 1/5"));
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
    EXPECT_EQ(rng, test::engineAfter(99, 1));
    EXPECT_EQ(level.pads[0].x, kCx - 160);
    EXPECT_EQ(level.pads[0].y, 260);
    EXPECT_EQ(level.pads[1].x, kCx + 10);
    EXPECT_EQ(level.pads[2].y, 430);
    EXPECT_EQ(level.pads[3].x, kCx + 10);
    EXPECT_EQ(level.pads[3].w, 150);
    EXPECT_EQ(level.pads[3].h, 150);
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

TEST_F(AntiSimon, EveryMoveOfTheFlashIsOneRawDrawAndSilent) {
    Rng ref(99);
    ref();
    for (int beat = 0; beat < 6; ++beat) {
        desk.idle(level, 0.5);
        desk.idle(level, 0.5);   // 1.0 s: past the beat, the timer starts over
        EXPECT_EQ(level.flashingPad, static_cast<int>(ref() & 3u)) << beat;
    }
    EXPECT_EQ(rng, test::engineAfter(99, 7));
    EXPECT_EQ(desk.sounds, Sounds{});
}

TEST_F(AntiSimon, ClickingTheFlashingPadFiresWithOnlyTheFailSound) {
    EXPECT_EQ(pressPad(level.flashingPad), LevelResult::Failed);
    EXPECT_EQ(desk.sounds, Sounds{"fail"});
}

TEST_F(AntiSimon, ASafePadClicks) {
    EXPECT_EQ(pressPad((level.flashingPad + 1) % 4), LevelResult::Running);
    EXPECT_EQ(desk.sounds, Sounds{"click"});
}

TEST_F(AntiSimon, TheSamePadClickedTwiceCountsOnceAndClicksOnce) {
    const int f = level.flashingPad;
    const int a = (f + 1) % 4;
    const int b = (f + 2) % 4;
    EXPECT_EQ(pressPad(a), LevelResult::Running);
    const std::size_t before = desk.sounds.size();
    EXPECT_EQ(pressPad(a), LevelResult::Running);
    EXPECT_EQ(desk.soundsSince(before), Sounds{});
    EXPECT_EQ(pressPad(b), LevelResult::Running);
    EXPECT_EQ(std::count(std::begin(level.done), std::end(level.done), true), 2);
    EXPECT_EQ(desk.sounds, (Sounds{"click", "click"}));
}

TEST_F(AntiSimon, ThreeDistinctSafePadsSolveEvenIfTheFourthWasNeverFlashing) {
    level.flashingPad = 3;
    EXPECT_EQ(pressPad(0), LevelResult::Running);
    EXPECT_EQ(pressPad(1), LevelResult::Running);
    level.flashingPad = 1;   // the flash lands on a pad already ticked off
    const std::size_t before = desk.sounds.size();
    EXPECT_EQ(pressPad(2), LevelResult::Solved);
    EXPECT_EQ(desk.soundsSince(before), (Sounds{"click", "pass"}));
    EXPECT_FALSE(level.done[3]);
}

TEST_F(AntiSimon, APadAlreadyTickedOffIsDeadlyWhenItFlashes) {
    level.flashingPad = 3;
    ASSERT_EQ(pressPad(0), LevelResult::Running);
    level.flashingPad = 0;
    const std::size_t before = desk.sounds.size();
    EXPECT_EQ(pressPad(0), LevelResult::Failed);
    EXPECT_EQ(desk.soundsSince(before), Sounds{"fail"});
}

TEST_F(AntiSimon, PressesOffThePadsDoNothing) {
    EXPECT_EQ(desk.press(level, kCx, 250, 0.0), LevelResult::Running);   // above the pads
    EXPECT_EQ(desk.press(level, kCx, 400, 0.0), LevelResult::Running);   // the gutter
    EXPECT_EQ(std::count(std::begin(level.done), std::end(level.done), true), 0);
    EXPECT_EQ(desk.sounds, Sounds{});
}

TEST_F(AntiSimon, FlashingRedDoneGreenOthersBrass) {
    level.flashingPad = 1;
    level.done[2] = true;
    test::SoftwareCanvas canvas;
    canvas.graphics.clear(kBlack);
    level.render(canvas.graphics);
    auto corner = [&](int p) { return canvas.pixel(level.pads[p].x + 15, level.pads[p].y + 15); };
    EXPECT_EQ(corner(1), rgb(255, 58, 42));
    EXPECT_EQ(corner(2), rgb(35, 112, 69));
    EXPECT_EQ(corner(0), rgb(109, 84, 29));
    EXPECT_EQ(corner(3), rgb(109, 84, 29));
}

// The inside of a pad, clear of its rounded corners.
Rect padInside(const Rect& pad) { return Rect{pad.x + 12, pad.y + 12, pad.w - 24, pad.h - 24}; }

TEST_F(AntiSimon, TheFlashingPadSaysAvoidAndADonePadSaysOk) {
    level.flashingPad = 1;
    level.done[2] = true;
    Picture shot(level);
    const Rect& flashing = level.pads[1];
    const Rect& done = level.pads[2];
    EXPECT_TRUE(showsText(shot.canvas, padInside(flashing), kRed, "AVOID", flashing.x + 75,
                          flashing.y + 75, TextSize::Normal, kInk, true, true));
    EXPECT_TRUE(showsText(shot.canvas, padInside(done), rgb(35, 112, 69), "OK", done.x + 75,
                          done.y + 75, TextSize::Normal, kInk, true, true));
    EXPECT_EQ(inkIn(shot.canvas, padInside(level.pads[0]), rgb(109, 84, 29)), 0);
    EXPECT_EQ(inkIn(shot.canvas, padInside(level.pads[3]), rgb(109, 84, 29)), 0);
    EXPECT_TRUE(showsInstruction(shot.canvas, "CLICK ALL PADS EXCEPT THE FLASHING ONE"));
}

TEST_F(AntiSimon, ADonePadThatFlashesSaysAvoid) {
    level.done[0] = true;
    level.flashingPad = 0;
    Picture shot(level);
    const Rect& pad = level.pads[0];
    EXPECT_TRUE(showsText(shot.canvas, padInside(pad), kRed, "AVOID", pad.x + 75, pad.y + 75,
                          TextSize::Normal, kInk, true, true));
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
    for (const Rect& s : level.switches) {
        EXPECT_EQ(s.y, 345);
        EXPECT_EQ(s.w, 60);
        EXPECT_EQ(s.h, 120);
    }
    EXPECT_EQ(rng, Rng(5));
}

TEST_F(Sequence, RightMiddleLeftSolves) {
    EXPECT_EQ(throwSwitch(2), LevelResult::Running);
    EXPECT_EQ(throwSwitch(1), LevelResult::Running);
    EXPECT_EQ(throwSwitch(0), LevelResult::Solved);
    EXPECT_TRUE(level.pressed[0] && level.pressed[1] && level.pressed[2]);
}

TEST_F(Sequence, EachThrowClicksAndTheLastThenPasses) {
    EXPECT_EQ(throwSwitch(2), LevelResult::Running);
    EXPECT_EQ(desk.soundsSince(0), Sounds{"click"});
    EXPECT_EQ(throwSwitch(1), LevelResult::Running);
    EXPECT_EQ(desk.soundsSince(1), Sounds{"click"});
    EXPECT_EQ(throwSwitch(0), LevelResult::Solved);
    EXPECT_EQ(desk.soundsSince(2), (Sounds{"click", "pass"}));
}

TEST_F(Sequence, TheLeftmostSwitchFirstFiresAtOnce) {
    EXPECT_EQ(desk.press(level, level.switches[0].x, level.switches[0].y), LevelResult::Failed);
    EXPECT_EQ(desk.sounds, Sounds{"fail"});
    EXPECT_FALSE(level.pressed[0]);
}

TEST_F(Sequence, TheMiddleSwitchFirstFires) {
    EXPECT_EQ(throwSwitch(1), LevelResult::Failed);
    EXPECT_EQ(desk.sounds, Sounds{"fail"});
}

TEST_F(Sequence, ThrowingTheRightSwitchTwiceFires) {
    ASSERT_EQ(throwSwitch(2), LevelResult::Running);
    EXPECT_EQ(throwSwitch(2), LevelResult::Failed);
    EXPECT_EQ(desk.soundsSince(1), Sounds{"fail"});
}

TEST_F(Sequence, PressesBesideTheSwitchesDoNothing) {
    const Rect& s = level.switches[2];
    EXPECT_EQ(desk.press(level, s.x + s.w, s.y), LevelResult::Running);   // half-open edge
    EXPECT_EQ(desk.press(level, s.x, s.y + s.h), LevelResult::Running);
    EXPECT_EQ(desk.press(level, s.x - 1, s.y), LevelResult::Running);
    EXPECT_EQ(desk.press(level, s.x, s.y - 1), LevelResult::Running);
    EXPECT_EQ(level.nextExpected, 2);
    EXPECT_EQ(desk.sounds, Sounds{});
    // Its corner pixel is on it.
    EXPECT_EQ(desk.press(level, s.x, s.y), LevelResult::Running);
    EXPECT_EQ(level.nextExpected, 1);
}

TEST_F(Sequence, LeversStartUpInOrangeAndDropGreenWhenThrown) {
    ASSERT_EQ(throwSwitch(2), LevelResult::Running);
    test::SoftwareCanvas canvas;
    canvas.graphics.clear(kBlack);
    level.render(canvas.graphics);
    const Rect& up = level.switches[0];
    const Rect& down = level.switches[2];
    // Lever up: {x + 12, y + 10, 36, 40}; thrown: {x + 12, y + h - 50, 36, 40}.
    EXPECT_EQ(canvas.pixel(up.x + 30, up.y + 30), rgb(255, 170, 46));
    EXPECT_EQ(canvas.pixel(up.x + 30, up.y + 10), rgb(255, 170, 46));
    EXPECT_EQ(canvas.pixel(up.x + 12, up.y + 30), rgb(255, 170, 46));
    EXPECT_EQ(canvas.pixel(up.x + 30, up.y + 49), rgb(255, 170, 46));
    EXPECT_EQ(canvas.pixel(up.x + 11, up.y + 30), rgb(99, 77, 26));
    EXPECT_EQ(canvas.pixel(up.x + 30, up.y + 9), rgb(99, 77, 26));
    EXPECT_EQ(canvas.pixel(up.x + 30, up.y + 51), rgb(99, 77, 26));
    EXPECT_EQ(canvas.pixel(up.x + 30, up.y + up.h - 30), rgb(99, 77, 26));
    EXPECT_EQ(canvas.pixel(down.x + 30, down.y + down.h - 30), rgb(70, 224, 138));
    EXPECT_EQ(canvas.pixel(down.x + 30, down.y + down.h - 49), rgb(70, 224, 138));
    EXPECT_EQ(canvas.pixel(down.x + 30, down.y + down.h - 51), rgb(99, 77, 26));
    EXPECT_EQ(canvas.pixel(down.x + 30, down.y + 30), rgb(99, 77, 26));
    EXPECT_EQ(canvas.pixel(up.x + 5, up.y + 60), rgb(99, 77, 26));
}

TEST_F(Sequence, NothingButTheSwitchesIsDrawn) {
    // No labels and no instruction line: the order is only in the catalogue's words.
    Picture shot(level);
    const Rect area = kPlayArea;
    int stray = 0;
    for (int y = area.y; y < area.y + area.h; ++y) {
        for (int x = area.x; x < area.x + area.w; ++x) {
            bool onSwitch = false;
            for (const Rect& s : level.switches) {
                // A filled rounded rectangle reaches one pixel past its right and bottom edges.
                onSwitch = onSwitch || (x >= s.x && x <= s.x + s.w && y >= s.y && y <= s.y + s.h);
            }
            stray += !onSwitch && shot.canvas.pixel(x, y) != kBlack ? 1 : 0;
        }
    }
    EXPECT_EQ(stray, 0);
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

// The title or the prompt, alone above the spots' band, centred on (683, 220).
::testing::AssertionResult recallHeading(const test::SoftwareCanvas& canvas, const char* text,
                                         Color colour) {
    return showsText(canvas, Rect{263, 200, 840, 34}, kBlack, text, kCx, 220, TextSize::Normal,
                     colour, true, true);
}

TEST_F(Recall, SpotsAreUniformDrawsXThenY) {
    start(12);
    Rng ref(31);
    ASSERT_EQ(level.spotCount, 4);
    for (int i = 0; i < 4; ++i) {
        // x in [263 + 80, 1103 - 80]: 681 values; y in [190 + 80, 620 - 80]: 271 values.
        const int x = 343 + test::uniformBelowByHand(ref, 681);
        const int y = 270 + test::uniformBelowByHand(ref, 271);
        EXPECT_EQ(level.spots[i].x, x) << i;
        EXPECT_EQ(level.spots[i].y, y) << i;
    }
    EXPECT_EQ(rng, ref);
    EXPECT_EQ(rng, test::engineAfter(31, 8));   // no draw of this seed is rejected
    EXPECT_TRUE(level.showing);
    EXPECT_EQ(level.index, 0);
}

TEST_F(Recall, FiveSpotsFromStationForty) {
    start(40);
    EXPECT_EQ(level.spotCount, 5);
    Rng ref(31);
    for (int i = 0; i < 5; ++i) {
        EXPECT_EQ(level.spots[i].x, 343 + test::uniformBelowByHand(ref, 681)) << i;
        EXPECT_EQ(level.spots[i].y, 270 + test::uniformBelowByHand(ref, 271)) << i;
    }
    EXPECT_EQ(rng, ref);
}

TEST_F(Recall, FourSpotsBelowStationForty) {
    start(39);
    EXPECT_EQ(level.spotCount, 4);
    EXPECT_EQ(rng, test::engineAfter(31, 8));
}

TEST_F(Recall, EachSpotHasEightTenthsOfASecond) {
    start(12);
    desk.idle(level, 0.795);
    EXPECT_EQ(level.index, 0);
    desk.idle(level, 0.01);   // 0.805 s
    EXPECT_EQ(level.index, 1);
    desk.idle(level, 2.39);   // 3.195 s
    EXPECT_EQ(level.index, 3);
    EXPECT_TRUE(level.showing);
    desk.idle(level, 0.01);   // 3.205 s: past four spots
    EXPECT_FALSE(level.showing);
    EXPECT_EQ(level.index, 0);
    EXPECT_EQ(desk.sounds, Sounds{});
}

TEST_F(Recall, APressDuringTheShowIsIgnored) {
    start(12);
    desk.idle(level, 0.1);
    EXPECT_EQ(desk.click(level, level.spots[0].x, level.spots[0].y), LevelResult::Running);
    EXPECT_EQ(desk.click(level, 270, 200), LevelResult::Running);   // far from every spot
    EXPECT_TRUE(level.showing);
    EXPECT_EQ(desk.sounds, Sounds{});
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

TEST_F(Recall, EachSpotFoundClicksAndTheLastThenPasses) {
    start(12);
    watch();
    for (int i = 0; i < 4; ++i) {
        const std::size_t before = desk.sounds.size();
        const LevelResult r = desk.press(level, level.spots[i].x, level.spots[i].y);
        EXPECT_EQ(r, i < 3 ? LevelResult::Running : LevelResult::Solved) << i;
        EXPECT_EQ(desk.soundsSince(before), i < 3 ? Sounds{"click"} : (Sounds{"click", "pass"}))
            << i;
        if (i < 3) {
            desk.release(level);
        }
    }
}

TEST_F(Recall, APressFortyPixelsFromTheSpotFails) {
    start(12);
    watch();
    EXPECT_EQ(desk.press(level, level.spots[0].x + 40, level.spots[0].y), LevelResult::Failed);
    EXPECT_EQ(desk.sounds, Sounds{"fail"});
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
    EXPECT_EQ(desk.sounds, Sounds{"click"});
}

TEST_F(Recall, TheNextSpotOutOfOrderFails) {
    start(12);
    watch();
    const auto& s = level.spots;
    ASSERT_GE(distance(s[0].x, s[0].y, s[1].x, s[1].y), 40.0);
    EXPECT_EQ(desk.press(level, s[1].x, s[1].y), LevelResult::Failed);
    EXPECT_EQ(desk.sounds, Sounds{"fail"});
}

// Seed 31's spots lie far enough apart for probes around each one.
void expectSpotsApart(const RecallLevel& level) {
    const auto& s = level.spots;
    for (int i = 0; i < level.spotCount; ++i) {
        for (int j = i + 1; j < level.spotCount; ++j) {
            ASSERT_GT(distance(s[i].x, s[i].y, s[j].x, s[j].y), 80.0) << i << " " << j;
        }
    }
}

TEST_F(Recall, TheShowDrawsEarlierSpotsSmallAndTheCurrentOneLarge) {
    start(12);
    desk.idle(level, 1.7);   // the third spot is up
    ASSERT_EQ(level.index, 2);
    expectSpotsApart(level);
    Picture shot(level);
    const auto& s = level.spots;
    const test::SoftwareCanvas& canvas = shot.canvas;
    const Color earlier = rgb(102, 68, 18);
    EXPECT_EQ(canvas.pixel(s[0].x, s[0].y), earlier);
    EXPECT_EQ(canvas.pixel(s[0].x + 14, s[0].y), earlier);
    EXPECT_EQ(canvas.pixel(s[0].x + 15, s[0].y), kBlack);
    EXPECT_EQ(canvas.pixel(s[1].x, s[1].y - 13), earlier);
    EXPECT_EQ(canvas.pixel(s[1].x, s[1].y - 15), kBlack);
    EXPECT_EQ(canvas.pixel(s[2].x, s[2].y + 33), kGold);
    EXPECT_EQ(canvas.pixel(s[2].x, s[2].y + 35), kBlack);
    EXPECT_EQ(canvas.pixel(s[2].x - 34, s[2].y), kGold);
    EXPECT_EQ(canvas.pixel(s[3].x, s[3].y), kBlack);
}

TEST_F(Recall, TheCurrentSpotCarriesItsNumberFromOne) {
    start(12);
    desk.idle(level, 1.7);   // the third spot is up
    ASSERT_EQ(level.index, 2);
    expectSpotsApart(level);
    Picture shot(level);
    const auto& s = level.spots[2];
    EXPECT_TRUE(showsText(shot.canvas, Rect{s.x - 24, s.y - 24, 48, 48}, kGold, "3", s.x, s.y,
                          TextSize::Large, kInk, true, true));
    // The earlier spots carry no number.
    const auto& e = level.spots[0];
    EXPECT_EQ(inkIn(shot.canvas, Rect{e.x - 9, e.y - 9, 18, 18}, rgb(102, 68, 18)), 0);
}

TEST_F(Recall, TheFirstSpotIsNumberedOne) {
    start(12);
    desk.idle(level, 0.1);
    Picture shot(level);
    const auto& s = level.spots[0];
    EXPECT_TRUE(showsText(shot.canvas, Rect{s.x - 24, s.y - 24, 48, 48}, kGold, "1", s.x, s.y,
                          TextSize::Large, kInk, true, true));
}

TEST_F(Recall, TheShowIsTitledMemoriseTheOrder) {
    start(12);
    desk.idle(level, 0.1);
    Picture shot(level);
    EXPECT_TRUE(recallHeading(shot.canvas, "MEMORISE THE ORDER", kGreen));
    EXPECT_TRUE(showsInstruction(shot.canvas, "REPEAT THE FLASHES IN ORDER, FROM MEMORY"));
}

TEST_F(Recall, TheAnswerShowsNoSpotsOnlyThePrompt) {
    start(12);
    watch();
    Picture shot(level);
    for (int i = 0; i < level.spotCount; ++i) {
        const auto& s = level.spots[i];
        EXPECT_EQ(inkIn(shot.canvas, Rect{s.x - 35, s.y - 35, 71, 71}, kBlack), 0) << i;
    }
    EXPECT_TRUE(recallHeading(shot.canvas, "CLICK SPOT 1 / 4", kGold));
    EXPECT_TRUE(showsInstruction(shot.canvas, "REPEAT THE FLASHES IN ORDER, FROM MEMORY"));
}

TEST_F(Recall, ThePromptCountsTheSpotsFound) {
    start(12);
    watch();
    ASSERT_EQ(desk.click(level, level.spots[0].x, level.spots[0].y), LevelResult::Running);
    ASSERT_EQ(desk.click(level, level.spots[1].x, level.spots[1].y), LevelResult::Running);
    Picture shot(level);
    EXPECT_TRUE(recallHeading(shot.canvas, "CLICK SPOT 3 / 4", kGold));
}

TEST_F(Recall, ThePromptCountsFiveSpotsFromStationForty) {
    start(40);
    watch();
    Picture shot(level);
    EXPECT_TRUE(recallHeading(shot.canvas, "CLICK SPOT 1 / 5", kGold));
}

// --------------------------------------------------------------- Memory

// Shuffle rule written out: for i = 1 up to n - 1, swap i with a uniform
// pick in [0, i].
std::vector<int> shuffledByHand(Rng& ref, std::vector<int> items) {
    for (std::size_t i = 1; i < items.size(); ++i) {
        const auto j = static_cast<std::size_t>(
            test::uniformBelowByHand(ref, static_cast<std::uint32_t>(i + 1)));
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
    // A position whose card does not pair with the card at `pos`, other than `pos`.
    int notPartnerOf(int pos) const {
        const int c = level.dealOrder[pos];
        for (int p = 0; p < level.cardCount; ++p) {
            if (p != pos && level.dealOrder[p] != (c ^ 1)) {
                return p;
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
    EXPECT_EQ(level.cards[9].x, 449 + 4 * 96);
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
    EXPECT_EQ(level.cards[5].y, 220);
    EXPECT_EQ(level.cards[6].x, 401);
    EXPECT_EQ(level.cards[6].y, 316);
    EXPECT_EQ(level.cards[11].x, 401 + 5 * 96);
    EXPECT_EQ(level.pairValue[11], 5);
    Rng ref(4242);
    EXPECT_EQ(dealOf(level), shuffledByHand(ref, {0, 1, 2, 3, 4, 5, 6, 7, 8, 9, 10, 11}));
    EXPECT_EQ(rng, ref);
}

TEST_F(Memory, TheDealIsTheShuffleRuleOverTheRunEngine) {
    start(23);
    Rng ref(4242);
    EXPECT_EQ(dealOf(level), shuffledByHand(ref, {0, 1, 2, 3, 4, 5, 6, 7, 8, 9}));
    EXPECT_EQ(rng, ref);
    EXPECT_EQ(rng, test::engineAfter(4242, 9));   // nine picks, none rejected
    EXPECT_EQ(level.rng, &rng);
    EXPECT_EQ(level.firstPick, -1);
    EXPECT_FALSE(level.peeked);
    EXPECT_EQ(std::count(level.revealed, level.revealed + 14, true), 0);
    EXPECT_EQ(std::count(level.matched, level.matched + 14, true), 0);
}

TEST_F(Memory, TheFirstFlipReshufflesEveryOtherFaceDownCardOnce) {
    start(23);
    Rng ref(4242);
    std::vector<int> deal = shuffledByHand(ref, {0, 1, 2, 3, 4, 5, 6, 7, 8, 9});
    const int turned = deal[3];
    ASSERT_EQ(turn(3), LevelResult::Running);
    // The turned card stays at position 3; the other nine, listed in position
    // order, are shuffled and dealt back in that order.
    std::vector<int> positions;
    std::vector<int> rest;
    for (int pos = 0; pos < 10; ++pos) {
        if (pos != 3) {
            positions.push_back(pos);
            rest.push_back(deal[static_cast<std::size_t>(pos)]);
        }
    }
    rest = shuffledByHand(ref, rest);
    for (std::size_t i = 0; i < positions.size(); ++i) {
        deal[static_cast<std::size_t>(positions[i])] = rest[i];
    }
    EXPECT_EQ(dealOf(level), deal);
    EXPECT_EQ(level.dealOrder[3], turned);
    EXPECT_TRUE(level.revealed[turned]);
    EXPECT_TRUE(level.peeked);
    EXPECT_EQ(rng, ref);
    EXPECT_EQ(rng, test::engineAfter(4242, 9 + 8));
    // The second flip does not shuffle again.
    const std::vector<int> before = dealOf(level);
    turn(0);
    EXPECT_EQ(dealOf(level), before);
    EXPECT_EQ(rng, ref);
}

TEST_F(Memory, TheTidyUpOfTheBigCabinetLeavesTheTurnedCardAtTheEnd) {
    start(24);
    Rng ref(4242);
    std::vector<int> deal = shuffledByHand(ref, {0, 1, 2, 3, 4, 5, 6, 7, 8, 9, 10, 11});
    ASSERT_EQ(turn(11), LevelResult::Running);
    std::vector<int> rest(deal.begin(), deal.begin() + 11);
    rest = shuffledByHand(ref, rest);
    std::copy(rest.begin(), rest.end(), deal.begin());
    EXPECT_EQ(dealOf(level), deal);
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

TEST_F(Memory, TurningACardClicks) {
    start(23);
    EXPECT_EQ(turn(4), LevelResult::Running);
    EXPECT_EQ(desk.sounds, Sounds{"click"});
    EXPECT_EQ(level.firstPick, level.dealOrder[4]);
}

TEST_F(Memory, ARevealedCardCannotBePickedAgain) {
    start(23);
    ASSERT_EQ(turn(4), LevelResult::Running);
    const int c = level.dealOrder[4];
    const Rng after = rng;
    const std::size_t before = desk.sounds.size();
    EXPECT_EQ(turn(4), LevelResult::Running);
    EXPECT_EQ(level.firstPick, c);
    EXPECT_EQ(level.mismatchTimer, 0.0);
    EXPECT_EQ(std::count(level.revealed, level.revealed + 10, true), 1);
    EXPECT_EQ(rng, after);
    EXPECT_EQ(desk.soundsSince(before), Sounds{});
}

TEST_F(Memory, PressesBetweenTheCardsDoNothing) {
    start(23);
    const Rect& a = level.cards[0];
    EXPECT_EQ(desk.click(level, a.x + 84, a.y + 40), LevelResult::Running);   // half-open edge
    EXPECT_EQ(desk.click(level, a.x + 40, a.y + 84), LevelResult::Running);
    EXPECT_EQ(desk.click(level, a.x - 1, a.y + 40), LevelResult::Running);
    EXPECT_EQ(std::count(level.revealed, level.revealed + 10, true), 0);
    EXPECT_FALSE(level.peeked);
    EXPECT_EQ(rng, test::engineAfter(4242, 9));
    EXPECT_EQ(desk.sounds, Sounds{});
}

TEST_F(Memory, AMatchingPairClicksTwiceAndStaysMatched) {
    start(23);
    turn(0);
    const int c = level.dealOrder[0];
    const int partner = whereIs(c ^ 1);
    const std::size_t before = desk.sounds.size();
    EXPECT_EQ(turn(partner), LevelResult::Running);
    EXPECT_EQ(desk.soundsSince(before), (Sounds{"click", "click"}));
    EXPECT_TRUE(level.matched[c]);
    EXPECT_TRUE(level.matched[c ^ 1]);
    EXPECT_EQ(level.firstPick, -1);
    EXPECT_EQ(level.mismatchTimer, 0.0);
}

TEST_F(Memory, AMatchedCardCannotBePickedAgain) {
    start(23);
    turn(0);
    turn(whereIs(level.dealOrder[0] ^ 1));
    const std::size_t before = desk.sounds.size();
    EXPECT_EQ(turn(0), LevelResult::Running);
    EXPECT_EQ(level.firstPick, -1);
    EXPECT_EQ(desk.soundsSince(before), Sounds{});
}

TEST_F(Memory, AWrongPairClicksOnceAndStaysUpSixTenths) {
    start(23);
    turn(0);
    const int c = level.dealOrder[0];
    const int wrong = notPartnerOf(0);
    const int d = level.dealOrder[wrong];
    const Rect& w = level.cards[wrong];
    const std::size_t before = desk.sounds.size();
    EXPECT_EQ(desk.press(level, w.x + 5, w.y + 5, 0.3), LevelResult::Running);
    EXPECT_EQ(desk.soundsSince(before), Sounds{"click"});
    EXPECT_EQ(level.mismatchTimer, 0.6);   // the press frame takes nothing off
    desk.idle(level, 0.3);
    desk.idle(level, 0.295);               // 0.595 s
    EXPECT_TRUE(level.revealed[c] && level.revealed[d]);
    EXPECT_EQ(level.firstPick, c);
    desk.idle(level, 0.01);                // 0.605 s: both go down
    EXPECT_FALSE(level.revealed[c]);
    EXPECT_FALSE(level.revealed[d]);
    EXPECT_EQ(level.firstPick, -1);
    EXPECT_EQ(desk.soundsSince(before), Sounds{"click"});
}

TEST_F(Memory, ClicksWhileAWrongPairIsUpAreLost) {
    start(23);
    turn(0);
    const int c = level.dealOrder[0];
    const int wrong = notPartnerOf(0);
    ASSERT_EQ(turn(wrong), LevelResult::Running);
    const std::size_t before = desk.sounds.size();
    const int third = whereIs(c ^ 1);
    EXPECT_EQ(turn(third), LevelResult::Running);
    EXPECT_FALSE(level.revealed[c ^ 1]);
    EXPECT_EQ(desk.soundsSince(before), Sounds{});
    desk.idle(level, 0.6);
    EXPECT_FALSE(level.revealed[c]);
    // Once they are down the cabinet takes clicks again.
    EXPECT_EQ(turn(third), LevelResult::Running);
    EXPECT_TRUE(level.revealed[c ^ 1]);
    EXPECT_EQ(desk.soundsSince(before), Sounds{"click"});
}

TEST_F(Memory, AllPairsMatchedSolvesWithClickClickPassAndNothingFails) {
    start(23);
    LevelResult r = LevelResult::Running;
    // Turn each card then its partner, pair by pair, wherever they lie.
    turn(0);
    r = turn(whereIs(level.dealOrder[0] ^ 1));
    std::size_t before = desk.sounds.size();
    for (int c = 0; c < 10 && r == LevelResult::Running; c += 2) {
        if (level.matched[c]) {
            continue;
        }
        EXPECT_EQ(turn(whereIs(c)), LevelResult::Running);
        before = desk.sounds.size();
        r = turn(whereIs(c + 1));
    }
    EXPECT_EQ(r, LevelResult::Solved);
    EXPECT_EQ(desk.soundsSince(before), (Sounds{"click", "click", "pass"}));
    // Ten turns clicked once each, five pairs once more, then the pass.
    EXPECT_EQ(desk.sounds.size(), 16u);
    EXPECT_EQ(std::count(desk.sounds.begin(), desk.sounds.end(), "fail"), 0);
}

TEST_F(Memory, MatchedRevealedAndFaceDownCards) {
    start(23);
    const int m = level.dealOrder[0];
    const int up = level.dealOrder[1];
    level.matched[m] = true;
    level.revealed[up] = true;
    test::SoftwareCanvas canvas;
    canvas.fill(kBlack);
    level.render(canvas.graphics);
    const Rect& a = level.cards[0];
    const Rect& b = level.cards[1];
    const Rect& c = level.cards[2];
    EXPECT_EQ(canvas.pixel(a.x + 42, a.y + 42), rgb(17, 56, 34));
    EXPECT_EQ(canvas.pixel(b.x + 6, b.y + 42), rgb(216, 183, 90));
    EXPECT_EQ(canvas.pixel(c.x + 4, c.y + 42), rgb(99, 77, 26));
    EXPECT_EQ(canvas.pixel(c.x + 7, c.y + 42), rgb(99, 77, 26));
    EXPECT_EQ(canvas.pixel(c.x + 8, c.y + 42), rgb(20, 20, 20));
    EXPECT_EQ(canvas.pixel(c.x + 42, c.y + 8), rgb(20, 20, 20));
    EXPECT_EQ(canvas.pixel(c.x + 42, c.y + 7), rgb(99, 77, 26));
    EXPECT_EQ(canvas.pixel(c.x + 75, c.y + 75), rgb(20, 20, 20));
    EXPECT_EQ(canvas.pixel(c.x + 76, c.y + 42), rgb(99, 77, 26));
    EXPECT_EQ(canvas.pixel(c.x + 42, c.y + 76), rgb(99, 77, 26));
    // Radius 8: the very corner is cut.
    EXPECT_EQ(canvas.pixel(c.x, c.y), kBlack);
}

// The face of a card, clear of its rounded corners.
Rect cardFace(const Rect& card) { return Rect{card.x + 8, card.y + 8, card.w - 16, card.h - 16}; }

TEST_F(Memory, ARevealedCardShowsItsPairValuePlusOne) {
    start(23);
    // Cards 0 and 9 are pairs 0 and 4: they read 1 and 5.
    level.revealed[0] = true;
    level.revealed[9] = true;
    level.matched[4] = true;
    Picture shot(level);
    const Rect& one = level.cards[whereIs(0)];
    const Rect& five = level.cards[whereIs(9)];
    const Color face = rgb(216, 183, 90);
    EXPECT_TRUE(showsText(shot.canvas, cardFace(one), face, "1", one.x + 42, one.y + 42,
                          TextSize::Large, kInk, true, true));
    EXPECT_TRUE(showsText(shot.canvas, cardFace(five), face, "5", five.x + 42, five.y + 42,
                          TextSize::Large, kInk, true, true));
    // A matched card is blank green.
    const Rect& gone = level.cards[whereIs(4)];
    EXPECT_EQ(inkIn(shot.canvas, cardFace(gone), rgb(17, 56, 34)), 0);
    EXPECT_TRUE(showsInstruction(shot.canvas, "PAIRS RESHUFFLE AFTER THE FIRST FLIP"));
}

TEST_F(Memory, TheBigCabinetsLastPairReadsSix) {
    start(24);
    level.revealed[10] = true;
    Picture shot(level);
    const Rect& r = level.cards[whereIs(10)];
    EXPECT_TRUE(showsText(shot.canvas, cardFace(r), rgb(216, 183, 90), "6", r.x + 42, r.y + 42,
                          TextSize::Large, kInk, true, true));
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

// "WATCH" or the symbol count: small, green, centred on x 683 from y 320
// down, alone between the lamp and the key.
::testing::AssertionResult morseStatus(const test::SoftwareCanvas& canvas, const char* text) {
    return showsText(canvas, Rect{263, 300, 840, 60}, kBlack, text, kCx, 320, TextSize::Small,
                     kGreen, true, false);
}

// The key's label: centred on the key, and wider than it, so it is checked in
// three parts: over the key and over the black on either side of it.
::testing::AssertionResult keyLabel(const test::SoftwareCanvas& canvas, const MorseLevel& level,
                                    Color keyColour) {
    const Rect& k = level.key;
    const char* label = "KEY (tap=short, hold=long)";
    const int x = k.x + 70;
    const int y = k.y + 40;
    const ::testing::AssertionResult on = showsText(canvas, Rect{k.x, k.y + 15, 140, 50}, keyColour,
                                                    label, x, y, TextSize::Small, kInk, true, true);
    if (!on) {
        return on;
    }
    const ::testing::AssertionResult left =
        showsText(canvas, Rect{k.x - 160, k.y + 15, 160, 50}, kBlack, label, x, y, TextSize::Small,
                  kInk, true, true);
    if (!left) {
        return left;
    }
    return showsText(canvas, Rect{k.x + 140, k.y + 15, 160, 50}, kBlack, label, x, y,
                     TextSize::Small, kInk, true, true);
}

TEST_F(Morse, FourSymbolsFromTheLowBitOfFourRawDraws) {
    Rng ref(8);
    for (int i = 0; i < 4; ++i) {
        EXPECT_EQ(level.symbols[i], static_cast<int>(ref() & 1u)) << i;
    }
    EXPECT_EQ(rng, test::engineAfter(8, 4));
    EXPECT_EQ(level.symbolCount, 4);
    // Key {683 - 70, 190 + 215 + 10, 140, 80}; lamp {683 - 30, 230, 60, 60}.
    EXPECT_EQ(level.key.x, 613);
    EXPECT_EQ(level.key.y, 415);
    EXPECT_EQ(level.key.w, 140);
    EXPECT_EQ(level.key.h, 80);
    EXPECT_EQ(level.lamp.x, 653);
    EXPECT_EQ(level.lamp.y, 230);
    EXPECT_EQ(level.lamp.w, 60);
    EXPECT_EQ(level.lamp.h, 60);
    EXPECT_TRUE(level.showing);
    EXPECT_FALSE(level.lampOn);
    EXPECT_FALSE(level.pressing);
    EXPECT_EQ(level.inputIndex, 0);
    EXPECT_EQ(level.shownIndex, 0);
}

TEST_F(Morse, ALongSymbolBurnsSixTenths) {
    level.symbols[0] = 1;
    desk.idle(level, 0.005);
    EXPECT_TRUE(level.lampOn);
    desk.idle(level, 0.59);   // 0.595
    EXPECT_TRUE(level.lampOn);
    desk.idle(level, 0.01);   // 0.605
    EXPECT_FALSE(level.lampOn);
}

TEST_F(Morse, AShortSymbolBurnsTwoTenths) {
    level.symbols[0] = 0;
    desk.idle(level, 0.005);
    EXPECT_TRUE(level.lampOn);
    desk.idle(level, 0.19);   // 0.195
    EXPECT_TRUE(level.lampOn);
    desk.idle(level, 0.01);   // 0.205
    EXPECT_FALSE(level.lampOn);
}

TEST_F(Morse, EachSymbolHasANineTenthSlot) {
    level.symbols[0] = 1;
    level.symbols[1] = 0;
    desk.idle(level, 0.895);
    EXPECT_EQ(level.shownIndex, 0);
    EXPECT_FALSE(level.lampOn);
    desk.idle(level, 0.01);   // 0.905: the second slot
    EXPECT_EQ(level.shownIndex, 1);
    desk.idle(level, 0.1);    // 1.005
    EXPECT_TRUE(level.lampOn);
    desk.idle(level, 0.09);   // 1.095
    EXPECT_TRUE(level.lampOn);
    desk.idle(level, 0.01);   // 1.105
    EXPECT_FALSE(level.lampOn);
}

TEST_F(Morse, TheShowEndsJustAfterFourSlots) {
    // The shown index moves on by at most one slot a frame, so the show is
    // stepped in half seconds up to 3.5 s.
    for (int i = 0; i < 7; ++i) {
        desk.idle(level, 0.5);
    }
    desk.idle(level, 0.095);   // 3.595
    EXPECT_TRUE(level.showing);
    EXPECT_EQ(level.shownIndex, 3);
    desk.idle(level, 0.01);    // 3.605
    EXPECT_FALSE(level.showing);
    EXPECT_FALSE(level.lampOn);
    EXPECT_EQ(level.shownIndex, 4);
    EXPECT_EQ(desk.sounds, Sounds{});
}

TEST_F(Morse, PressesDuringTheShowAreIgnored) {
    desk.idle(level, 0.1);
    EXPECT_EQ(keyFor(0.5), LevelResult::Running);
    EXPECT_EQ(keyFor(0.05), LevelResult::Running);
    EXPECT_EQ(level.inputIndex, 0);
    EXPECT_FALSE(level.pressing);
    EXPECT_EQ(desk.sounds, Sounds{});
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

TEST_F(Morse, TheKeyClicksOnTheReleaseOfARightSymbolOnly) {
    watch();
    level.symbols[0] = 0;
    EXPECT_EQ(desk.press(level, level.key.x + 5, level.key.y + 5, 0.1), LevelResult::Running);
    EXPECT_EQ(desk.sounds, Sounds{});
    EXPECT_EQ(desk.release(level), LevelResult::Running);
    EXPECT_EQ(desk.sounds, Sounds{"click"});
}

TEST_F(Morse, TheWrongLengthFiresWithOnlyTheFailSound) {
    watch();
    level.symbols[0] = 0;
    EXPECT_EQ(keyFor(0.5), LevelResult::Failed);
    EXPECT_EQ(desk.sounds, Sounds{"fail"});
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
    EXPECT_EQ(desk.sounds, Sounds{});
}

TEST_F(Morse, KeyingAllFourSolvesWithFourClicksThenThePass) {
    watch();
    LevelResult r = LevelResult::Running;
    for (int i = 0; i < 4; ++i) {
        EXPECT_EQ(r, LevelResult::Running);
        r = keyFor(level.symbols[i] == 1 ? 0.6 : 0.1);
    }
    EXPECT_EQ(r, LevelResult::Solved);
    EXPECT_EQ(desk.sounds, (Sounds{"click", "click", "click", "click", "pass"}));
}

TEST_F(Morse, LampAndKeyColours) {
    test::SoftwareCanvas canvas;
    canvas.fill(kBlack);
    level.lampOn = true;
    level.render(canvas.graphics);
    // Lamp: radius 28 about (683, 260).
    EXPECT_EQ(canvas.pixel(683, 260), kGold);
    EXPECT_EQ(canvas.pixel(683, 260 + 27), kGold);
    EXPECT_EQ(canvas.pixel(683, 260 + 29), kBlack);
    EXPECT_EQ(canvas.pixel(683 - 28, 260), kGold);
    EXPECT_EQ(canvas.pixel(level.key.x + 70, level.key.y + 10), rgb(119, 92, 31));
    EXPECT_EQ(canvas.pixel(level.key.x + 3, level.key.y + 3), rgb(119, 92, 31));
    EXPECT_EQ(canvas.pixel(level.key.x + 2, level.key.y + 2), kBlack);   // radius 10
    level.lampOn = false;
    level.pressing = true;
    level.render(canvas.graphics);
    EXPECT_EQ(canvas.pixel(683, 260), rgb(30, 30, 30));
    EXPECT_EQ(canvas.pixel(level.key.x + 70, level.key.y + 10), rgb(35, 112, 69));
}

TEST_F(Morse, TheStatusSaysWatchDuringTheShow) {
    Picture shot(level);
    EXPECT_TRUE(morseStatus(shot.canvas, "WATCH"));
    EXPECT_TRUE(keyLabel(shot.canvas, level, rgb(119, 92, 31)));
    EXPECT_TRUE(showsInstruction(shot.canvas, "MIRROR THE LAMP'S BLINKS"));
}

TEST_F(Morse, TheStatusCountsTheSymbolAskedFor) {
    watch();
    {
        Picture shot(level);
        EXPECT_TRUE(morseStatus(shot.canvas, "SYMBOL 1 / 4"));
        EXPECT_TRUE(showsInstruction(shot.canvas, "MIRROR THE LAMP'S BLINKS"));
    }
    ASSERT_EQ(keyFor(level.symbols[0] == 1 ? 0.6 : 0.1), LevelResult::Running);
    ASSERT_EQ(keyFor(level.symbols[1] == 1 ? 0.6 : 0.1), LevelResult::Running);
    Picture shot(level);
    EXPECT_TRUE(morseStatus(shot.canvas, "SYMBOL 3 / 4"));
}

TEST_F(Morse, TheKeyKeepsItsLabelWhilePressed) {
    watch();
    desk.press(level, level.key.x + 5, level.key.y + 5, 0.1);
    ASSERT_TRUE(level.pressing);
    Picture shot(level);
    EXPECT_TRUE(keyLabel(shot.canvas, level, rgb(35, 112, 69)));
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
    StationDriver bench(shippedRecord("simon"), 3);
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
    const StationDriver::Outcome out = bench.play(blind, 30.0);
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
    StationDriver bench(shippedRecord("simon"), 11);
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
    StationDriver bench(shippedRecord("antisimon"), 11);
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
    StationDriver bench(shippedRecord("sequence"), 11);
    const auto& level = dynamic_cast<const SequenceLevel&>(*bench.station);
    ClickWhenReady solver;
    solver.x = level.switches[0].x + 30;
    solver.y = level.switches[0].y + 60;
    EXPECT_EQ(bench.play(solver, 10.0).result, LevelResult::Failed);
    EXPECT_TRUE(bench.lastSoundWasFail());
}

TEST(MemoryBench, RecallFiresWithTheFailSoundOnTheSecondSpotFirst) {
    StationDriver bench(shippedRecord("recall"), 11);
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
    StationDriver bench(shippedRecord("morse"), 11);
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
    StationDriver bench(shippedRecord("memory"), 11);
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
    const StationDriver::Outcome out = bench.play(sweep, 8.0);
    EXPECT_NE(out.result, LevelResult::Failed);
    EXPECT_FALSE(bench.lastSoundWasFail());
}

}  // namespace
}  // namespace vorn::test
