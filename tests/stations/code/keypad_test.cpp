// The door pad ("keypad"): nine blank keys, four of them lit, pressed in
// reading order, once each; any other key fires the player. The lit keys a
// seed gives are worked out longhand with the run's draw rules, and the pad
// is looked at key by key.

#include "stations/code/code_fixtures.h"
#include "stations/code_stations.h"
#include "support/board_probe.h"
#include "support/draws_by_hand.h"
#include "support/play_area.h"
#include "support/station_driver.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <set>
#include <utility>
#include <vector>

namespace vorn::test {
namespace {

using KeypadStation = PadFixture<KeypadLevel>;

// The lit keys a seed gives, worked out by hand: shuffle 0..8 from the front,
// keep four, sort.
std::vector<int> litKeysByHand(Rng& ref) {
    int deck[9] = {0, 1, 2, 3, 4, 5, 6, 7, 8};
    for (std::uint32_t k = 1; k < 9; ++k) {
        std::swap(deck[k], deck[uniformBelowByHand(ref, k + 1)]);
    }
    std::vector<int> lit(deck, deck + 4);
    std::sort(lit.begin(), lit.end());
    return lit;
}

int firstUnlitKey(const KeypadLevel& pad) {
    int key = 0;
    while (pad.isLit(key)) {
        ++key;
    }
    return key;
}

TEST_F(KeypadStation, NineKeysInThreeRowsAroundTheCentre) {
    // Keys of 70 x 64, 82 apart across and 76 down: the middle column's
    // starts 35 left of the centre, so the first 117 left of it.
    for (int r = 0; r < 3; ++r) {
        for (int c = 0; c < 3; ++c) {
            const Rect& k = pad.keys[3 * r + c];
            EXPECT_EQ(k.x, kPlayCentreX - 117 + 82 * c);
            EXPECT_EQ(k.y, kPlayTop + 20 + 76 * r);
            EXPECT_EQ(k.w, 70);
            EXPECT_EQ(k.h, 64);
        }
    }
}

TEST_F(KeypadStation, LitKeysAreTheFirstFourOfAShuffleSortedAscending) {
    Rng ref(77);
    const std::vector<int> lit = litKeysByHand(ref);
    EXPECT_EQ(pad.length, 4);
    EXPECT_EQ(std::vector<int>(pad.sequence, pad.sequence + 4), lit);
    EXPECT_EQ(d.rng, ref);
    EXPECT_EQ(pad.progress, 0);
}

TEST_F(KeypadStation, TheLitSetIsAlwaysFourDistinctKeys) {
    for (std::uint32_t seed = 1; seed <= 300; ++seed) {
        Driver<KeypadLevel> other(seed);
        std::set<int> lit;
        for (int k = 0; k < 9; ++k) {
            if (other.level.isLit(k)) {
                lit.insert(k);
            }
        }
        EXPECT_EQ(lit.size(), 4u) << "seed " << seed;
        EXPECT_TRUE(std::is_sorted(other.level.sequence, other.level.sequence + 4))
            << "seed " << seed;
    }
}

TEST_F(KeypadStation, LitKeysInReadingOrderPass) {
    for (int i = 0; i < 3; ++i) {
        EXPECT_EQ(pressKey(pad.sequence[i]), LevelResult::Running) << i;
        EXPECT_EQ(heard, Sounds{"click"}) << i;
    }
    EXPECT_EQ(pad.progress, 3);
    EXPECT_EQ(pressKey(pad.sequence[3]), LevelResult::Solved);
    EXPECT_EQ(heard, (Sounds{"click", "pass"}));
}

TEST_F(KeypadStation, PressingAnUnlitKeyFails) {
    EXPECT_EQ(pressKey(firstUnlitKey(pad)), LevelResult::Failed);
    EXPECT_EQ(d.sounds, Sounds{"fail"});
}

TEST_F(KeypadStation, EveryUnlitKeyFailsEvenAfterAGoodStart) {
    for (int key = 0; key < 9; ++key) {
        if (pad.isLit(key)) {
            continue;
        }
        Driver<KeypadLevel> fresh(77);
        const Rect& first = fresh.level.keys[fresh.level.sequence[0]];
        ASSERT_EQ(fresh.clickCentre(first), LevelResult::Running);
        const std::size_t before = fresh.sounds.size();
        EXPECT_EQ(fresh.clickCentre(fresh.level.keys[key]), LevelResult::Failed) << key;
        EXPECT_EQ(fresh.soundsSince(before), Sounds{"fail"}) << key;
    }
}

TEST_F(KeypadStation, PressingTheSecondLowestLitKeyFirstFails) {
    EXPECT_EQ(pressKey(pad.sequence[1]), LevelResult::Failed);
    EXPECT_EQ(d.sounds, Sounds{"fail"});
}

TEST_F(KeypadStation, PressingALitKeyASecondTimeFails) {
    pressKey(pad.sequence[0]);
    EXPECT_EQ(pressKey(pad.sequence[0]), LevelResult::Failed);
    EXPECT_EQ(d.sounds, (Sounds{"click", "fail"}));
}

TEST_F(KeypadStation, GapsBetweenKeysAndMovesWithoutAPressAreIgnored) {
    const Rect& k = pad.keys[0];
    EXPECT_EQ(clickAt(k.x + k.w, k.y + 5), LevelResult::Running);   // the gap right of key 0
    EXPECT_EQ(clickAt(k.x + 5, k.y + k.h), LevelResult::Running);   // the gap below it
    // Pressed in the gap and carried onto the key, held there: no press.
    EXPECT_EQ(d.press(k.x + 5, k.y + k.h), LevelResult::Running);
    EXPECT_EQ(d.moveTo(k.x + 5, k.y + 5), LevelResult::Running);
    EXPECT_EQ(d.idle(10), LevelResult::Running);
    EXPECT_EQ(d.release(), LevelResult::Running);
    EXPECT_EQ(pad.progress, 0);
    EXPECT_EQ(d.sounds, Sounds{});
}

// Every key as the player sees it: a rim with corners of radius 6 round a
// face inset by 4 (62 x 56). Lit keys, the pressed ones included, are brass
// round cream; the others darker round dull grey.
TEST_F(KeypadStation, LitKeysAreBrightUnlitDullAndPressedKeysStayLit) {
    pad.length = 4;
    const int lit[4] = {0, 4, 5, 8};
    std::copy(std::begin(lit), std::end(lit), pad.sequence);
    pad.progress = 2;
    StationPicture p(pad);
    for (int i = 0; i < 9; ++i) {
        const Rect& k = pad.keys[i];
        const bool on = std::find(std::begin(lit), std::end(lit), i) != std::end(lit);
        const Color rim = on ? code_ink::litRim : code_ink::dullRim;
        const Color face = on ? code_ink::litFace : code_ink::dullFace;
        const int midX = k.x + k.w / 2;
        const int midY = k.y + k.h / 2;
        EXPECT_EQ(p.at(midX, midY), face) << "key " << i;
        EXPECT_EQ(bareAlongTopRow(p, k, rim), 6) << "key " << i;
        EXPECT_EQ(p.at(k.x, midY), rim) << "key " << i;
        EXPECT_EQ(p.at(k.x + 3, midY), rim) << "key " << i;
        EXPECT_EQ(p.at(k.x + 4, midY), face) << "key " << i;
        EXPECT_EQ(p.at(k.x + k.w - 5, k.y + k.h - 5), face) << "key " << i;
        EXPECT_EQ(p.at(k.x + k.w - 4, midY), rim) << "key " << i;
        EXPECT_EQ(p.at(k.x + k.w - 1, midY), rim) << "key " << i;
        EXPECT_EQ(p.at(midX, k.y + 3), rim) << "key " << i;
        EXPECT_EQ(p.at(midX, k.y + 4), face) << "key " << i;
        EXPECT_EQ(p.at(midX, k.y + k.h - 4), rim) << "key " << i;
        EXPECT_EQ(p.at(k.x - 1, midY), station_ink::black) << "key " << i;
        EXPECT_EQ(p.at(k.x + k.w, midY), station_ink::black) << "key " << i;
        EXPECT_EQ(p.at(midX, k.y + k.h), station_ink::black) << "key " << i;
    }
}

// The pad gives nothing away beyond which keys are lit: no labels, no
// progress, no line of orders. Over the whole play area, everything off the
// keys is black (a rounded corner's outermost dots sit one pixel past a
// key's right and bottom edges, so that pixel is left out).
TEST_F(KeypadStation, NothingButTheKeysIsDrawn) {
    pad.progress = 3;
    StationPicture p(pad);
    int inked = 0;
    for (int y = kPlayTop; y < kPlayBottom; ++y) {
        for (int x = kPlayLeft; x < kPlayRight; ++x) {
            const bool onAKey =
                std::any_of(std::begin(pad.keys), std::end(pad.keys), [&](const Rect& k) {
                    return contains(Rect{k.x, k.y, k.w + 1, k.h + 1}, x, y);
                });
            inked += !onAKey && p.at(x, y) != station_ink::black ? 1 : 0;
        }
    }
    EXPECT_EQ(inked, 0);
}

TEST_F(KeypadStation, TheAutomaticPlayerClearsItOnEveryDifficulty) {
    EXPECT_EQ(unsolvedRuns("keypad"), "");
}

}  // namespace
}  // namespace vorn::test
