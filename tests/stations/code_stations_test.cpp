// The code-entry stations: the unlabelled door pad and the petty-cash safe
// whose keys lie.

#include "audio/audio_system.h"
#include "data/level_catalogue.h"
#include "stations/code_stations.h"
#include "stations/level_factory.h"
#include "support/draws_by_hand.h"
#include "support/software_canvas.h"
#include "support/solvers/family_solvers.h"
#include "support/board_scenes.h"
#include "support/station_driver.h"
#include "support/station_sounds.h"
#include "support/text_probe.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <set>
#include <string>
#include <utility>
#include <vector>

namespace vorn {
namespace {

constexpr Color kInstruction = rgb(178, 119, 32);

using Sounds = std::vector<std::string>;

// One pad on its own, seed 77, with an audio system that logs every sound
// asked of it. Each press is held to the verdict rule (pass right before
// Solved, fail right before Failed), and `heard` keeps what it asked for.
template <typename T>
struct Pad : ::testing::Test {
    T level;
    Rng rng{77};
    Sounds sounds;
    AudioSystem silent;
    InputState in;
    Sounds heard;   // the sounds of the last pressAt

    void SetUp() override {
        silent.requestLog = &sounds;
        level.setup(LevelDef{}, rng, kPlayArea);
    }

    LevelResult pressAt(int x, int y) {
        in.mouseX = x;
        in.mouseY = y;
        in.mouseDown = true;
        in.mousePressed = true;
        const std::size_t before = sounds.size();
        const LevelResult r = level.update(1.0 / 60, in, silent);
        EXPECT_TRUE(test::soundsFitVerdict(r, sounds, before));
        heard = test::soundsFrom(sounds, before);
        return r;
    }
    LevelResult pressKey(int key) {
        const Rect& k = level.keys[key];
        return pressAt(k.x + k.w / 2, k.y + k.h / 2);
    }
};

// ---------------------------------------------------------------- Keypad

using KeypadStation = Pad<KeypadLevel>;

// The lit keys a seed gives, worked out by hand: shuffle 0..8 from the front,
// keep four, sort.
std::vector<int> litKeysByHand(Rng& ref) {
    int deck[9] = {0, 1, 2, 3, 4, 5, 6, 7, 8};
    for (std::uint32_t k = 1; k < 9; ++k) {
        std::swap(deck[k], deck[test::uniformBelowByHand(ref, k + 1)]);
    }
    std::vector<int> lit(deck, deck + 4);
    std::sort(lit.begin(), lit.end());
    return lit;
}

TEST_F(KeypadStation, NineKeysInThreeRowsAroundTheCentre) {
    // cx = 683: columns at 566, 648, 730; rows at 210, 286, 362.
    for (int r = 0; r < 3; ++r) {
        for (int c = 0; c < 3; ++c) {
            const Rect& k = level.keys[3 * r + c];
            EXPECT_EQ(k.x, 566 + 82 * c);
            EXPECT_EQ(k.y, 210 + 76 * r);
            EXPECT_EQ(k.w, 70);
            EXPECT_EQ(k.h, 64);
        }
    }
}

TEST_F(KeypadStation, LitKeysAreTheFirstFourOfAShuffleSortedAscending) {
    Rng ref(77);
    const std::vector<int> lit = litKeysByHand(ref);
    EXPECT_EQ(level.length, 4);
    EXPECT_EQ(std::vector<int>(level.sequence, level.sequence + 4), lit);
    EXPECT_EQ(rng, ref);
    EXPECT_EQ(level.progress, 0);
}

TEST_F(KeypadStation, TheLitSetIsAlwaysFourDistinctKeys) {
    for (std::uint32_t seed = 1; seed <= 300; ++seed) {
        KeypadLevel pad;
        Rng r(seed);
        pad.setup(LevelDef{}, r, kPlayArea);
        std::set<int> lit;
        for (int k = 0; k < 9; ++k) {
            if (pad.isLit(k)) {
                lit.insert(k);
            }
        }
        EXPECT_EQ(lit.size(), 4u) << "seed " << seed;
        EXPECT_TRUE(std::is_sorted(pad.sequence, pad.sequence + 4)) << "seed " << seed;
    }
}

TEST_F(KeypadStation, LitKeysInReadingOrderPass) {
    for (int i = 0; i < 3; ++i) {
        EXPECT_EQ(pressKey(level.sequence[i]), LevelResult::Running) << i;
        EXPECT_EQ(heard, Sounds{"click"}) << i;
    }
    EXPECT_EQ(level.progress, 3);
    EXPECT_EQ(pressKey(level.sequence[3]), LevelResult::Solved);
    EXPECT_EQ(heard, (Sounds{"click", "pass"}));
}

TEST_F(KeypadStation, PressingAnUnlitKeyFails) {
    int unlit = 0;
    while (level.isLit(unlit)) {
        ++unlit;
    }
    EXPECT_EQ(pressKey(unlit), LevelResult::Failed);
    EXPECT_EQ(sounds, Sounds{"fail"});
}

TEST_F(KeypadStation, EveryUnlitKeyFailsEvenAfterAGoodStart) {
    ASSERT_EQ(pressKey(level.sequence[0]), LevelResult::Running);
    for (int key = 0; key < 9; ++key) {
        if (!level.isLit(key)) {
            level.progress = 1;
            EXPECT_EQ(pressKey(key), LevelResult::Failed) << key;
            EXPECT_EQ(heard, Sounds{"fail"}) << key;
        }
    }
}

TEST_F(KeypadStation, PressingTheSecondLowestLitKeyFirstFails) {
    EXPECT_EQ(pressKey(level.sequence[1]), LevelResult::Failed);
    EXPECT_EQ(sounds, Sounds{"fail"});
}

TEST_F(KeypadStation, PressingALitKeyASecondTimeFails) {
    pressKey(level.sequence[0]);
    EXPECT_EQ(pressKey(level.sequence[0]), LevelResult::Failed);
    EXPECT_EQ(sounds, (Sounds{"click", "fail"}));
}

TEST_F(KeypadStation, GapsBetweenKeysAndMovesWithoutAPressAreIgnored) {
    const Rect& k = level.keys[0];
    EXPECT_EQ(pressAt(k.x + k.w, k.y + 5), LevelResult::Running);  // the gap right of key 0
    EXPECT_EQ(pressAt(k.x + 5, k.y + k.h), LevelResult::Running);  // the gap below it
    in.mousePressed = false;
    in.mouseX = k.x + 5;
    in.mouseY = k.y + 5;
    EXPECT_EQ(level.update(1.0 / 60, in, silent), LevelResult::Running);
    EXPECT_EQ(level.progress, 0);
    EXPECT_EQ(sounds, Sounds{});
}

TEST_F(KeypadStation, LitKeysAreBrightUnlitDullAndPressedKeysStayLit) {
    level.length = 4;
    level.sequence[0] = 0;
    level.sequence[1] = 4;
    level.sequence[2] = 5;
    level.sequence[3] = 8;
    level.progress = 2;
    test::SoftwareCanvas canvas;
    canvas.fill(rgb(0, 0, 0));
    level.render(canvas.graphics);
    for (int i = 0; i < 9; ++i) {
        const Rect& k = level.keys[i];
        const bool lit = i == 0 || i == 4 || i == 5 || i == 8;
        EXPECT_EQ(canvas.pixel(k.x + 2, k.y + k.h / 2), lit ? rgb(169, 130, 45) : rgb(89, 69, 23))
            << i;
        EXPECT_EQ(canvas.pixel(k.x + k.w / 2, k.y + k.h / 2),
                  lit ? rgb(216, 199, 156) : rgb(151, 139, 109))
            << i;
        EXPECT_EQ(canvas.pixel(k.x + k.w - 5, k.y + k.h - 5),
                  lit ? rgb(216, 199, 156) : rgb(151, 139, 109))
            << i;
    }
    // No instruction line of its own: the bottom of the play area stays dark.
    for (int x = 263; x < 1103; x += 3) {
        EXPECT_EQ(canvas.pixel(x, 612), rgb(0, 0, 0));
    }
}

// The whole pad against a picture painted by hand: key (r, c) at (566 + 82 c,
// 210 + 76 r), 70 x 64, with corners of radius 6, and a face inset by 4
// (62 x 56); brass and cream when lit, dull when not. Nothing else: no
// labels, no progress, no line of orders.
TEST_F(KeypadStation, ThePadMatchesAPicturePaintedKeyByKey) {
    const int lit[4] = {1, 2, 6, 7};
    std::copy(std::begin(lit), std::end(lit), level.sequence);
    level.progress = 3;
    test::BlackCanvas drawn;
    level.render(drawn.graphics);
    test::BlackCanvas want;
    for (int i = 0; i < 9; ++i) {
        const bool on = i == 1 || i == 2 || i == 6 || i == 7;
        const int x = 566 + 82 * (i % 3);
        const int y = 210 + 76 * (i / 3);
        want.graphics.roundRect(Rect{x, y, 70, 64}, 6, on ? rgb(169, 130, 45) : rgb(89, 69, 23),
                                true);
        want.graphics.rect(Rect{x + 4, y + 4, 62, 56}, on ? rgb(216, 199, 156) : rgb(151, 139, 109),
                           true);
    }
    EXPECT_TRUE(test::sameRegion(drawn, want, Rect{263, 190, 840, 450}));
}

// ---------------------------------------------------------------- LiarKeypad

using LiarKeypadStation = Pad<LiarKeypadLevel>;

TEST_F(LiarKeypadStation, CodeIsThreeUniformDigits) {
    Rng ref(77);
    for (int i = 0; i < 3; ++i) {
        EXPECT_EQ(level.code[i], test::uniformBelowByHand(ref, 10)) << i;
    }
    EXPECT_EQ(rng, ref);
    EXPECT_EQ(level.progress, 0);
}

TEST_F(LiarKeypadStation, NineKeysInABlockAndTheZeroAloneBelowTheMiddle) {
    for (int k = 0; k < 9; ++k) {
        EXPECT_EQ(level.keys[k].x, 543 + 98 * (k % 3)) << k;
        EXPECT_EQ(level.keys[k].y, 280 + 78 * (k / 3)) << k;
        EXPECT_EQ(level.keys[k].w, 84);
        EXPECT_EQ(level.keys[k].h, 64);
    }
    EXPECT_EQ(level.keys[9].x, 641);
    EXPECT_EQ(level.keys[9].y, 514);
    EXPECT_EQ(level.keys[9].w, 84);
    EXPECT_EQ(level.keys[9].h, 64);
}

TEST_F(LiarKeypadStation, TheZeroKeyTakesPressesOnlyWithinItsEightyFourPixels) {
    level.code[0] = 1;   // what the key labelled 0 types
    EXPECT_EQ(pressAt(641 + 84, 520), LevelResult::Running);
    EXPECT_EQ(pressAt(641 - 1, 520), LevelResult::Running);
    EXPECT_EQ(pressAt(660, 514 + 64), LevelResult::Running);
    EXPECT_EQ(level.progress, 0);
    EXPECT_EQ(sounds, Sounds{});
    EXPECT_EQ(pressAt(641 + 83, 514 + 63), LevelResult::Running);
    EXPECT_EQ(level.progress, 1);
}

TEST_F(LiarKeypadStation, EveryKeyTypesOneMoreThanItShowsAndNineTypesZero) {
    for (int k = 0; k < 10; ++k) {
        EXPECT_EQ(LiarKeypadLevel::typedDigit(k), (LiarKeypadLevel::shownDigit(k) + 1) % 10);
    }
    EXPECT_EQ(LiarKeypadLevel::shownDigit(0), 1);
    EXPECT_EQ(LiarKeypadLevel::shownDigit(8), 9);
    EXPECT_EQ(LiarKeypadLevel::typedDigit(8), 0);
    EXPECT_EQ(LiarKeypadLevel::shownDigit(9), 0);
    EXPECT_EQ(LiarKeypadLevel::typedDigit(9), 1);
}

TEST_F(LiarKeypadStation, ForTheCodeZeroZeroZeroTheNineIsPressedThreeTimes) {
    level.code[0] = level.code[1] = level.code[2] = 0;
    EXPECT_EQ(pressKey(8), LevelResult::Running);  // labelled 9
    EXPECT_EQ(heard, Sounds{"click"});
    EXPECT_EQ(pressKey(8), LevelResult::Running);
    EXPECT_EQ(heard, Sounds{"click"});
    EXPECT_EQ(level.progress, 2);
    EXPECT_EQ(pressKey(8), LevelResult::Solved);
    EXPECT_EQ(heard, (Sounds{"click", "pass"}));
}

TEST_F(LiarKeypadStation, ACodeDigitOneIsTypedWithTheKeyLabelledZero) {
    level.code[0] = 1;
    EXPECT_EQ(pressKey(9), LevelResult::Running);
    EXPECT_EQ(level.progress, 1);
    EXPECT_EQ(sounds, Sounds{"click"});
}

TEST_F(LiarKeypadStation, TheKeyShowingTheDigitAlwaysFails) {
    for (int digit = 0; digit <= 9; ++digit) {
        LiarKeypadLevel pad;
        Rng r(5);
        pad.setup(LevelDef{}, r, kPlayArea);
        pad.code[0] = digit;
        const int honest = digit == 0 ? 9 : digit - 1;
        ASSERT_EQ(LiarKeypadLevel::shownDigit(honest), digit);
        InputState press;
        press.mouseX = pad.keys[honest].x + 10;
        press.mouseY = pad.keys[honest].y + 10;
        press.mouseDown = press.mousePressed = true;
        const std::size_t before = sounds.size();
        EXPECT_EQ(pad.update(1.0 / 60, press, silent), LevelResult::Failed) << digit;
        EXPECT_EQ(test::soundsFrom(sounds, before), Sounds{"fail"}) << digit;
    }
}

TEST_F(LiarKeypadStation, AWrongKeyLaterInTheCodeStillFails) {
    level.code[0] = 5;
    level.code[1] = 5;
    level.code[2] = 7;
    EXPECT_EQ(pressKey(3), LevelResult::Running);  // labelled 4, types 5
    EXPECT_EQ(pressKey(3), LevelResult::Running);
    EXPECT_EQ(pressKey(3), LevelResult::Failed);
    EXPECT_EQ(sounds, (Sounds{"click", "click", "fail"}));
}

TEST_F(LiarKeypadStation, ClicksOffTheKeysAreIgnored) {
    const Rect& k = level.keys[9];
    EXPECT_EQ(pressAt(k.x - 1, k.y + 5), LevelResult::Running);
    EXPECT_EQ(pressAt(683, 250), LevelResult::Running);
    EXPECT_EQ(level.progress, 0);
    EXPECT_EQ(sounds, Sounds{});
}

TEST_F(LiarKeypadStation, DrawsTheTrueCodeLyingLabelsAndProgressDots) {
    level.code[0] = 3;
    level.code[1] = 0;
    level.code[2] = 8;
    level.progress = 1;
    test::SoftwareCanvas canvas;
    canvas.useGameFonts();
    canvas.fill(rgb(0, 0, 0));
    level.render(canvas.graphics);
    const Color key = rgb(119, 92, 31);
    for (int k = 0; k < 10; ++k) {
        const Rect& r = level.keys[k];
        EXPECT_EQ(canvas.pixel(r.x + 8, r.y + 8), key) << k;
        EXPECT_EQ(canvas.pixel(r.x + r.w - 4, r.y + r.h - 4), key) << k;
    }
    EXPECT_EQ(canvas.pixel(663, 264), rgb(70, 224, 138));  // first digit in
    EXPECT_EQ(canvas.pixel(683, 264), rgb(28, 28, 28));
    EXPECT_EQ(canvas.pixel(703 + 3, 264), rgb(28, 28, 28));
    EXPECT_EQ(canvas.pixel(693, 264), rgb(0, 0, 0));  // between the dots
    EXPECT_EQ(
        test::pixelsUnlikeText(canvas, {263, 205, 840, 48}, rgb(0, 0, 0), "ENTER CODE:  3 0 8", 683,
                               230, TextSize::Large, rgb(255, 216, 107), true, true),
        0);
    // Key 0 says 1, key 9 says 0.
    EXPECT_EQ(test::pixelsUnlikeText(canvas, {555, 292, 60, 40}, key, "1", 585, 312,
                                     TextSize::Large, rgb(20, 20, 20), true, true),
              0);
    EXPECT_EQ(test::pixelsUnlikeText(canvas, {653, 526, 60, 40}, key, "0", 683, 546,
                                     TextSize::Large, rgb(20, 20, 20), true, true),
              0);
    EXPECT_EQ(test::pixelsUnlikeText(canvas, {263, 601, 840, 23}, rgb(0, 0, 0),
                                     "THE KEYS LIE \xE2\x80\x94 EACH TYPES ONE MORE THAN IT SHOWS",
                                     683, 604, TextSize::Small, kInstruction, true, false),
              0);
}

// Every key's face, exactly: key k of the block at (543 + 98 (k mod 3),
// 280 + 78 (k div 3)) shows k + 1, the lone key at (641, 514) shows 0, each
// digit large and near-black, centred on its key (x + 42, y + 32).
TEST_F(LiarKeypadStation, EveryKeyShowsOneLessThanItTypes) {
    test::BlackCanvas canvas;
    level.render(canvas.graphics);
    const char* const shown[10] = {"1", "2", "3", "4", "5", "6", "7", "8", "9", "0"};
    for (int k = 0; k < 10; ++k) {
        const int x = k < 9 ? 543 + 98 * (k % 3) : 641;
        const int y = k < 9 ? 280 + 78 * (k / 3) : 514;
        EXPECT_EQ(test::pixelsUnlikeText(canvas, Rect{x + 6, y, 72, 64}, rgb(119, 92, 31), shown[k],
                                         x + 42, y + 32, TextSize::Large, rgb(20, 20, 20), true,
                                         true),
                  0)
            << "key " << k;
    }
}

// The whole safe against a picture painted by hand, for the code 9 4 1 with
// two digits in: the header centred on (683, 230); the keys with corners of
// radius 6 and their digits; the dots of radius 6 at x 663, 683 and 703 on
// y 264, green for the digits in; the line of orders centred on 683 at 604.
TEST_F(LiarKeypadStation, TheSafeMatchesAPicturePaintedByHand) {
    level.code[0] = 9;
    level.code[1] = 4;
    level.code[2] = 1;
    level.progress = 2;
    test::BlackCanvas drawn;
    level.render(drawn.graphics);
    test::BlackCanvas want;
    Graphics& g = want.graphics;
    g.text("ENTER CODE:  9 4 1", 683, 230, TextSize::Large, rgb(255, 216, 107), true, true);
    const char* const shown[10] = {"1", "2", "3", "4", "5", "6", "7", "8", "9", "0"};
    for (int k = 0; k < 10; ++k) {
        const int x = k < 9 ? 543 + 98 * (k % 3) : 641;
        const int y = k < 9 ? 280 + 78 * (k / 3) : 514;
        g.roundRect(Rect{x, y, 84, 64}, 6, rgb(119, 92, 31), true);
        g.text(shown[k], x + 42, y + 32, TextSize::Large, rgb(20, 20, 20), true, true);
    }
    g.circle(663, 264, 6, rgb(70, 224, 138), true);
    g.circle(683, 264, 6, rgb(70, 224, 138), true);
    g.circle(703, 264, 6, rgb(28, 28, 28), true);
    g.text("THE KEYS LIE \xE2\x80\x94 EACH TYPES ONE MORE THAN IT SHOWS", 683, 604, TextSize::Small,
           rgb(178, 119, 32), true, false);
    EXPECT_TRUE(test::sameRegion(drawn, want, Rect{263, 190, 840, 450}));
}

TEST(CodeFamily, TheFactoryMakesBothPadsFromTheirTypeStrings) {
    EXPECT_NE(dynamic_cast<KeypadLevel*>(createLevel("keypad").get()), nullptr);
    EXPECT_NE(dynamic_cast<LiarKeypadLevel*>(createLevel("liarkeypad").get()), nullptr);
    EXPECT_EQ(dynamic_cast<LiarKeypadLevel*>(createLevel("liarKeypad").get()), nullptr);
}

}  // namespace
}  // namespace vorn

namespace vorn::test {
namespace {

TEST(KeypadSolver, ClearsTheDoorCodeOnEveryDifficulty) { EXPECT_EQ(unsolvedRuns("keypad"), ""); }
TEST(LiarKeypadSolver, ClearsThePettyCashSafeOnEveryDifficulty) {
    EXPECT_EQ(unsolvedRuns("liarkeypad"), "");
}

// Clicks one fixed key after another, whatever the station shows.
struct KeyPresser final : Solver {
    std::vector<Rect> keys;
    std::size_t next = 0;
    bool wasDown = false;
    Intent decide(const Level&, const Hand& hand, double) override {
        if (hand.down && !wasDown) {
            ++next;
        }
        wasDown = hand.down;
        const Rect& k = keys[std::min(next, keys.size() - 1)];
        return clickAt(hand, k.x + k.w / 2, k.y + k.h / 2);
    }
};

TEST(KeypadSolver, PressingAnUnlitKeyFailsWithTheFailSound) {
    StationDriver bench(shippedRecord("keypad"), 4);
    const auto& level = dynamic_cast<const KeypadLevel&>(*bench.station);
    KeyPresser wrong;
    for (int k = 0; k < 9 && wrong.keys.empty(); ++k) {
        if (!level.isLit(k)) {
            wrong.keys.push_back(level.keys[k]);
        }
    }
    EXPECT_EQ(bench.play(wrong, 10.0).result, LevelResult::Failed);
    EXPECT_TRUE(bench.lastSoundWasFail());
}

TEST(KeypadSolver, PressingTheLitKeysOutOfOrderFailsWithTheFailSound) {
    StationDriver bench(shippedRecord("keypad"), 9);
    const auto& level = dynamic_cast<const KeypadLevel&>(*bench.station);
    KeyPresser wrong;
    wrong.keys = {level.keys[level.sequence[0]], level.keys[level.sequence[2]]};
    const StationDriver::Outcome out = bench.play(wrong, 10.0);
    EXPECT_EQ(out.result, LevelResult::Failed);
    EXPECT_EQ(level.progress, 1);
    EXPECT_TRUE(bench.lastSoundWasFail());
}

TEST(LiarKeypadSolver, TypingTheCodeAsLabelledFailsWithTheFailSound) {
    StationDriver bench(shippedRecord("liarkeypad"), 6);
    const auto& level = dynamic_cast<const LiarKeypadLevel&>(*bench.station);
    KeyPresser honest;
    for (int key = 0; key < 10; ++key) {
        if (LiarKeypadLevel::shownDigit(key) == level.code[0]) {
            honest.keys.push_back(level.keys[key]);
        }
    }
    EXPECT_EQ(bench.play(honest, 10.0).result, LevelResult::Failed);
    EXPECT_TRUE(bench.lastSoundWasFail());
}

TEST(LiarKeypadSolver, SolvingPlaysThePassSound) {
    StationDriver bench(shippedRecord("liarkeypad"), 6);
    std::unique_ptr<Solver> solver = makeSolver("liarkeypad");
    EXPECT_EQ(bench.play(*solver, 30.0).result, LevelResult::Solved);
    EXPECT_TRUE(bench.lastSoundWasPass());
}

}  // namespace
}  // namespace vorn::test
