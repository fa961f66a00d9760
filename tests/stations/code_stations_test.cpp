// The code-entry stations: the unlabelled door pad and the petty-cash safe
// whose keys lie.

#include "audio/audio_system.h"
#include "data/level_catalogue.h"
#include "stations/code_stations.h"
#include "stations/level_factory.h"
#include "support/draws_by_hand.h"
#include "support/software_canvas.h"
#include "support/solvers/family_solvers.h"
#include "support/station_bench.h"
#include "support/text_probe.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <set>
#include <utility>
#include <vector>

namespace vorn {
namespace {

constexpr Color kInstruction = rgb(178, 119, 32);

template <typename T>
struct Pad : ::testing::Test {
    T level;
    Rng rng{77};
    AudioSystem silent;
    InputState in;

    void SetUp() override { level.setup(LevelDef{}, rng, kPlayArea); }

    LevelResult pressAt(int x, int y) {
        in.mouseX = x;
        in.mouseY = y;
        in.mouseDown = true;
        in.mousePressed = true;
        return level.update(1.0 / 60, in, silent);
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
    EXPECT_EQ(pressKey(level.sequence[0]), LevelResult::Running);
    EXPECT_EQ(pressKey(level.sequence[1]), LevelResult::Running);
    EXPECT_EQ(pressKey(level.sequence[2]), LevelResult::Running);
    EXPECT_EQ(level.progress, 3);
    EXPECT_EQ(pressKey(level.sequence[3]), LevelResult::Solved);
}

TEST_F(KeypadStation, PressingAnUnlitKeyFails) {
    int unlit = 0;
    while (level.isLit(unlit)) {
        ++unlit;
    }
    EXPECT_EQ(pressKey(unlit), LevelResult::Failed);
}

TEST_F(KeypadStation, PressingTheSecondLowestLitKeyFirstFails) {
    EXPECT_EQ(pressKey(level.sequence[1]), LevelResult::Failed);
}

TEST_F(KeypadStation, PressingALitKeyASecondTimeFails) {
    pressKey(level.sequence[0]);
    EXPECT_EQ(pressKey(level.sequence[0]), LevelResult::Failed);
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
    EXPECT_EQ(pressKey(8), LevelResult::Running);
    EXPECT_EQ(level.progress, 2);
    EXPECT_EQ(pressKey(8), LevelResult::Solved);
}

TEST_F(LiarKeypadStation, ACodeDigitOneIsTypedWithTheKeyLabelledZero) {
    level.code[0] = 1;
    EXPECT_EQ(pressKey(9), LevelResult::Running);
    EXPECT_EQ(level.progress, 1);
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
        EXPECT_EQ(pad.update(1.0 / 60, press, silent), LevelResult::Failed) << digit;
    }
}

TEST_F(LiarKeypadStation, AWrongKeyLaterInTheCodeStillFails) {
    level.code[0] = 5;
    level.code[1] = 5;
    level.code[2] = 7;
    EXPECT_EQ(pressKey(3), LevelResult::Running);  // labelled 4, types 5
    EXPECT_EQ(pressKey(3), LevelResult::Running);
    EXPECT_EQ(pressKey(3), LevelResult::Failed);
}

TEST_F(LiarKeypadStation, ClicksOffTheKeysAreIgnored) {
    const Rect& k = level.keys[9];
    EXPECT_EQ(pressAt(k.x - 1, k.y + 5), LevelResult::Running);
    EXPECT_EQ(pressAt(683, 250), LevelResult::Running);
    EXPECT_EQ(level.progress, 0);
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
    StationBench bench(shippedRecord("keypad"), 4);
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
    StationBench bench(shippedRecord("keypad"), 9);
    const auto& level = dynamic_cast<const KeypadLevel&>(*bench.station);
    KeyPresser wrong;
    wrong.keys = {level.keys[level.sequence[0]], level.keys[level.sequence[2]]};
    const StationBench::Outcome out = bench.play(wrong, 10.0);
    EXPECT_EQ(out.result, LevelResult::Failed);
    EXPECT_EQ(level.progress, 1);
    EXPECT_TRUE(bench.lastSoundWasFail());
}

TEST(LiarKeypadSolver, TypingTheCodeAsLabelledFailsWithTheFailSound) {
    StationBench bench(shippedRecord("liarkeypad"), 6);
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
    StationBench bench(shippedRecord("liarkeypad"), 6);
    std::unique_ptr<Solver> solver = makeSolver("liarkeypad");
    EXPECT_EQ(bench.play(*solver, 30.0).result, LevelResult::Solved);
    EXPECT_TRUE(bench.lastSoundWasPass());
}

}  // namespace
}  // namespace vorn::test
