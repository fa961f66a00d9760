// The filing cabinet: a pairs game that "tidies up" once, reshuffling every
// face-down card right after the first one is turned. Covers the two cabinet
// sizes, the deal and the tidy-up worked out from the seed by hand, turning
// cards and pairs and their sounds, how long a wrong pair stays up, and how
// matched, turned and face-down cards look.

#include "stations/memory_stations.h"
#include "support/draws_by_hand.h"
#include "memory_fixtures.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cstdint>
#include <string>
#include <utility>
#include <vector>

namespace vorn {
namespace {

using test::Driver;
namespace ink = test::station_ink;
namespace memory = test::memory;
using Sounds = std::vector<std::string>;

constexpr std::uint32_t kSeed = 4242;

// The shuffle rule written out: for i = 1 up to n - 1, swap i with a uniform
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

LevelResult turn(Driver<MemoryLevel>& d, int pos) { return d.clickCentre(d.level.cards[pos]); }

// The position that holds card c right now.
int whereIs(const MemoryLevel& level, int c) {
    for (int pos = 0; pos < level.cardCount; ++pos) {
        if (level.dealOrder[pos] == c) {
            return pos;
        }
    }
    return -1;
}

// A position other than `pos` whose card does not pair with the card there
// (cards 2k and 2k + 1 are a pair).
int notPartnerOf(const MemoryLevel& level, int pos) {
    const int c = level.dealOrder[pos];
    for (int p = 0; p < level.cardCount; ++p) {
        if (p != pos && level.dealOrder[p] != (c ^ 1)) {
            return p;
        }
    }
    return -1;
}

int countOf(const bool* flags, int n) {
    return static_cast<int>(std::count(flags, flags + n, true));
}

// The face of a card, clear of its rounded corners.
Rect cardFace(const Rect& card) { return Rect{card.x + 8, card.y + 8, card.w - 16, card.h - 16}; }

TEST(MemoryStation, TenCardsInFiveColumnsBelowStationTwentyFour) {
    Driver<MemoryLevel> d(kSeed, 23);
    EXPECT_EQ(d.level.columns, 5);
    EXPECT_EQ(d.level.placementColumns, 5);
    EXPECT_EQ(d.level.cardCount, 10);
    EXPECT_EQ(d.level.rows, 2);
    // x0 = 263 + (840 - 480 + 12) / 2 = 449; y0 = 190 + 30; 84 px cards 96 px apart.
    EXPECT_EQ(d.level.cards[0].x, 449);
    EXPECT_EQ(d.level.cards[0].y, 220);
    EXPECT_EQ(d.level.cards[4].x, 449 + 4 * 96);
    EXPECT_EQ(d.level.cards[5].x, 449);
    EXPECT_EQ(d.level.cards[5].y, 316);
    EXPECT_EQ(d.level.cards[9].x, 449 + 4 * 96);
    EXPECT_EQ(d.level.cards[9].w, 84);
    EXPECT_EQ(d.level.cards[9].h, 84);
    for (int c = 0; c < 10; ++c) {
        EXPECT_EQ(d.level.pairValue[c], c / 2);
    }
}

TEST(MemoryStation, TwelveCardsInSixColumnsFromStationTwentyFour) {
    Driver<MemoryLevel> d(kSeed, 24);
    EXPECT_EQ(d.level.columns, 6);
    EXPECT_EQ(d.level.cardCount, 12);
    // x0 = 263 + (840 - 576 + 12) / 2 = 401.
    EXPECT_EQ(d.level.cards[0].x, 401);
    EXPECT_EQ(d.level.cards[5].y, 220);
    EXPECT_EQ(d.level.cards[6].x, 401);
    EXPECT_EQ(d.level.cards[6].y, 316);
    EXPECT_EQ(d.level.cards[11].x, 401 + 5 * 96);
    EXPECT_EQ(d.level.pairValue[11], 5);
    Rng ref(kSeed);
    EXPECT_EQ(dealOf(d.level), shuffledByHand(ref, {0, 1, 2, 3, 4, 5, 6, 7, 8, 9, 10, 11}));
    EXPECT_EQ(d.rng, ref);
}

TEST(MemoryStation, TheDealIsTheShuffleRuleOverTheRunEngine) {
    Driver<MemoryLevel> d(kSeed, 23);
    Rng ref(kSeed);
    EXPECT_EQ(dealOf(d.level), shuffledByHand(ref, {0, 1, 2, 3, 4, 5, 6, 7, 8, 9}));
    EXPECT_EQ(d.rng, ref);
    EXPECT_EQ(d.rng, test::engineAfter(kSeed, 9));   // nine picks, none rejected
    EXPECT_EQ(d.level.rng, &d.rng);
    EXPECT_EQ(d.level.firstPick, -1);
    EXPECT_FALSE(d.level.peeked);
    EXPECT_EQ(countOf(d.level.revealed, 14), 0);
    EXPECT_EQ(countOf(d.level.matched, 14), 0);
}

TEST(MemoryStation, TheFirstFlipReshufflesEveryOtherFaceDownCardOnce) {
    Driver<MemoryLevel> d(kSeed, 23);
    Rng ref(kSeed);
    std::vector<int> deal = shuffledByHand(ref, {0, 1, 2, 3, 4, 5, 6, 7, 8, 9});
    const int turned = deal[3];
    ASSERT_EQ(turn(d, 3), LevelResult::Running);
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
    EXPECT_EQ(dealOf(d.level), deal);
    EXPECT_EQ(d.level.dealOrder[3], turned);
    EXPECT_TRUE(d.level.revealed[turned]);
    EXPECT_TRUE(d.level.peeked);
    EXPECT_EQ(d.rng, ref);
    EXPECT_EQ(d.rng, test::engineAfter(kSeed, 9 + 8));
    // The second flip does not shuffle again.
    const std::vector<int> before = dealOf(d.level);
    turn(d, 0);
    EXPECT_EQ(dealOf(d.level), before);
    EXPECT_EQ(d.rng, ref);
}

TEST(MemoryStation, TheTidyUpOfTheBigCabinetLeavesTheTurnedCardAtTheEnd) {
    Driver<MemoryLevel> d(kSeed, 24);
    Rng ref(kSeed);
    std::vector<int> deal = shuffledByHand(ref, {0, 1, 2, 3, 4, 5, 6, 7, 8, 9, 10, 11});
    ASSERT_EQ(turn(d, 11), LevelResult::Running);
    std::vector<int> rest(deal.begin(), deal.begin() + 11);
    rest = shuffledByHand(ref, rest);
    std::copy(rest.begin(), rest.end(), deal.begin());
    EXPECT_EQ(dealOf(d.level), deal);
    EXPECT_EQ(d.rng, ref);
}

TEST(MemoryStation, TheSecondCardIsWhateverTheReshuffleDealtUnderThePointer) {
    int changed = 0;
    for (std::uint32_t seed = 1; seed <= 20; ++seed) {
        Driver<MemoryLevel> d(seed, 23);
        const int before = d.level.dealOrder[7];
        turn(d, 2);
        const int dealt = d.level.dealOrder[7];
        turn(d, 7);
        EXPECT_TRUE(d.level.revealed[dealt]) << seed;
        if (dealt != before) {
            ++changed;
            EXPECT_FALSE(d.level.revealed[before]) << seed;
        }
    }
    // The shuffle sometimes puts the card back; most seeds it does not.
    EXPECT_GE(changed, 10);
}

TEST(MemoryStation, TurningACardClicks) {
    Driver<MemoryLevel> d(kSeed, 23);
    EXPECT_EQ(turn(d, 4), LevelResult::Running);
    EXPECT_EQ(d.sounds, Sounds{"click"});
    EXPECT_EQ(d.level.firstPick, d.level.dealOrder[4]);
}

TEST(MemoryStation, ARevealedCardCannotBePickedAgain) {
    Driver<MemoryLevel> d(kSeed, 23);
    ASSERT_EQ(turn(d, 4), LevelResult::Running);
    const int c = d.level.dealOrder[4];
    const Rng after = d.rng;
    const std::size_t before = d.sounds.size();
    EXPECT_EQ(turn(d, 4), LevelResult::Running);
    EXPECT_EQ(d.level.firstPick, c);
    EXPECT_EQ(d.level.mismatchTimer, 0.0);
    EXPECT_EQ(countOf(d.level.revealed, 10), 1);
    EXPECT_EQ(d.rng, after);
    EXPECT_EQ(d.soundsSince(before), Sounds{});
}

TEST(MemoryStation, PressesBetweenTheCardsDoNothing) {
    Driver<MemoryLevel> d(kSeed, 23);
    const Rect& a = d.level.cards[0];
    EXPECT_EQ(d.click(a.x + 84, a.y + 40), LevelResult::Running);   // half-open edge
    EXPECT_EQ(d.click(a.x + 40, a.y + 84), LevelResult::Running);
    EXPECT_EQ(d.click(a.x - 1, a.y + 40), LevelResult::Running);
    EXPECT_EQ(countOf(d.level.revealed, 10), 0);
    EXPECT_FALSE(d.level.peeked);
    EXPECT_EQ(d.rng, test::engineAfter(kSeed, 9));
    EXPECT_EQ(d.sounds, Sounds{});
}

TEST(MemoryStation, AMatchingPairClicksTwiceAndStaysMatched) {
    Driver<MemoryLevel> d(kSeed, 23);
    turn(d, 0);
    const int c = d.level.dealOrder[0];
    const int partner = whereIs(d.level, c ^ 1);
    const std::size_t before = d.sounds.size();
    EXPECT_EQ(turn(d, partner), LevelResult::Running);
    EXPECT_EQ(d.soundsSince(before), (Sounds{"click", "click"}));
    EXPECT_TRUE(d.level.matched[c]);
    EXPECT_TRUE(d.level.matched[c ^ 1]);
    EXPECT_EQ(d.level.firstPick, -1);
    EXPECT_EQ(d.level.mismatchTimer, 0.0);
}

TEST(MemoryStation, AMatchedCardCannotBePickedAgain) {
    Driver<MemoryLevel> d(kSeed, 23);
    turn(d, 0);
    turn(d, whereIs(d.level, d.level.dealOrder[0] ^ 1));
    const std::size_t before = d.sounds.size();
    EXPECT_EQ(turn(d, 0), LevelResult::Running);
    EXPECT_EQ(d.level.firstPick, -1);
    EXPECT_EQ(d.soundsSince(before), Sounds{});
}

TEST(MemoryStation, AWrongPairClicksOnceAndStaysUpSixTenths) {
    Driver<MemoryLevel> d(kSeed, 23);
    turn(d, 0);
    const int c = d.level.dealOrder[0];
    const int wrong = notPartnerOf(d.level, 0);
    const int other = d.level.dealOrder[wrong];
    const Rect& w = d.level.cards[wrong];
    const std::size_t before = d.sounds.size();
    EXPECT_EQ(d.press(w.x + 5, w.y + 5), LevelResult::Running);
    EXPECT_EQ(d.soundsSince(before), Sounds{"click"});
    EXPECT_EQ(d.level.mismatchTimer, 0.6);   // the press frame takes nothing off
    // The point is the 0.6 s edge, to the hundredth: frames of the test's
    // own length, 5 ms either side of it.
    d.frame(0.3);
    d.frame(0.295);   // 0.595 s
    EXPECT_TRUE(d.level.revealed[c] && d.level.revealed[other]);
    EXPECT_EQ(d.level.firstPick, c);
    d.frame(0.01);    // 0.605 s: both go down
    EXPECT_FALSE(d.level.revealed[c]);
    EXPECT_FALSE(d.level.revealed[other]);
    EXPECT_EQ(d.level.firstPick, -1);
    EXPECT_EQ(d.soundsSince(before), Sounds{"click"});
}

TEST(MemoryStation, AtSixtyFramesASecondAWrongPairStaysUpThirtySixFrames) {
    Driver<MemoryLevel> d(kSeed, 23);
    turn(d, 0);
    const int c = d.level.dealOrder[0];
    const Rect& wrong = d.level.cards[notPartnerOf(d.level, 0)];
    ASSERT_EQ(d.press(wrong.x + 5, wrong.y + 5), LevelResult::Running);
    ASSERT_GT(d.level.mismatchTimer, 0.0);
    // The 36th frame after the press sits right on the 0.6 s edge, so the
    // frames either side of it are asked.
    d.idle(35);   // 0.583 s
    EXPECT_TRUE(d.level.revealed[c]);
    d.idle(2);    // 0.617 s
    EXPECT_FALSE(d.level.revealed[c]);
}

TEST(MemoryStation, ClicksWhileAWrongPairIsUpAreLost) {
    Driver<MemoryLevel> d(kSeed, 23);
    turn(d, 0);
    const int c = d.level.dealOrder[0];
    ASSERT_EQ(turn(d, notPartnerOf(d.level, 0)), LevelResult::Running);
    const std::size_t before = d.sounds.size();
    const int third = whereIs(d.level, c ^ 1);
    EXPECT_EQ(turn(d, third), LevelResult::Running);
    EXPECT_FALSE(d.level.revealed[c ^ 1]);
    EXPECT_EQ(d.soundsSince(before), Sounds{});
    d.holdFor(0.6);
    EXPECT_FALSE(d.level.revealed[c]);
    // Once they are down the cabinet takes clicks again.
    EXPECT_EQ(turn(d, third), LevelResult::Running);
    EXPECT_TRUE(d.level.revealed[c ^ 1]);
    EXPECT_EQ(d.soundsSince(before), Sounds{"click"});
}

TEST(MemoryStation, AllPairsMatchedSolvesWithClickClickPassAndNothingFails) {
    Driver<MemoryLevel> d(kSeed, 23);
    // Turn each card then its partner, pair by pair, wherever they lie.
    turn(d, 0);
    LevelResult r = turn(d, whereIs(d.level, d.level.dealOrder[0] ^ 1));
    std::size_t before = d.sounds.size();
    for (int c = 0; c < 10 && r == LevelResult::Running; c += 2) {
        if (d.level.matched[c]) {
            continue;
        }
        EXPECT_EQ(turn(d, whereIs(d.level, c)), LevelResult::Running);
        before = d.sounds.size();
        r = turn(d, whereIs(d.level, c + 1));
    }
    EXPECT_EQ(r, LevelResult::Solved);
    EXPECT_EQ(d.soundsSince(before), (Sounds{"click", "click", "pass"}));
    // Ten turns clicked once each, five pairs once more, then the pass.
    EXPECT_EQ(d.sounds.size(), 16u);
    EXPECT_EQ(std::count(d.sounds.begin(), d.sounds.end(), "fail"), 0);
}

TEST(MemoryStation, MatchedRevealedAndFaceDownCards) {
    Driver<MemoryLevel> d(kSeed, 23);
    d.level.matched[d.level.dealOrder[0]] = true;
    d.level.revealed[d.level.dealOrder[1]] = true;
    test::SoftwareCanvas canvas;
    canvas.fill(ink::black);
    d.level.render(canvas.graphics);
    const Rect& gone = d.level.cards[0];
    const Rect& up = d.level.cards[1];
    const Rect& down = d.level.cards[2];
    EXPECT_EQ(canvas.pixel(gone.x + 42, gone.y + 42), ink::deepGreen);
    EXPECT_EQ(canvas.pixel(up.x + 6, up.y + 42), ink::litBrass);
    // Face down: a brass card with a dark panel inset 8 px on every side.
    EXPECT_EQ(canvas.pixel(down.x + 4, down.y + 42), ink::darkBrass);
    EXPECT_EQ(canvas.pixel(down.x + 7, down.y + 42), ink::darkBrass);
    EXPECT_EQ(canvas.pixel(down.x + 8, down.y + 42), ink::ink);
    EXPECT_EQ(canvas.pixel(down.x + 42, down.y + 8), ink::ink);
    EXPECT_EQ(canvas.pixel(down.x + 42, down.y + 7), ink::darkBrass);
    EXPECT_EQ(canvas.pixel(down.x + 75, down.y + 75), ink::ink);
    EXPECT_EQ(canvas.pixel(down.x + 76, down.y + 42), ink::darkBrass);
    EXPECT_EQ(canvas.pixel(down.x + 42, down.y + 76), ink::darkBrass);
    // Radius 8: the very corner is cut.
    EXPECT_EQ(canvas.pixel(down.x, down.y), ink::black);
}

TEST(MemoryStation, ARevealedCardShowsItsPairValuePlusOne) {
    Driver<MemoryLevel> d(kSeed, 23);
    // Cards 0 and 9 are pairs 0 and 4: they read 1 and 5.
    d.level.revealed[0] = true;
    d.level.revealed[9] = true;
    d.level.matched[4] = true;
    memory::Picture shot(d.level);
    const Rect& one = d.level.cards[whereIs(d.level, 0)];
    const Rect& five = d.level.cards[whereIs(d.level, 9)];
    EXPECT_TRUE(memory::showsText(shot.canvas, cardFace(one), ink::litBrass, "1", one.x + 42,
                                  one.y + 42, TextSize::Large, ink::ink, true, true));
    EXPECT_TRUE(memory::showsText(shot.canvas, cardFace(five), ink::litBrass, "5", five.x + 42,
                                  five.y + 42, TextSize::Large, ink::ink, true, true));
    // A matched card is blank green.
    const Rect& gone = d.level.cards[whereIs(d.level, 4)];
    EXPECT_EQ(test::pixelsOtherThan(shot.canvas, cardFace(gone), ink::deepGreen), 0);
    EXPECT_EQ(test::playAreaNoteUnlike(shot.canvas, test::kPlayAreaNoteBand,
                                           "PAIRS RESHUFFLE AFTER THE FIRST FLIP"),
              0);
}

TEST(MemoryStation, TheBigCabinetsLastPairReadsSix) {
    Driver<MemoryLevel> d(kSeed, 24);
    d.level.revealed[10] = true;
    memory::Picture shot(d.level);
    const Rect& r = d.level.cards[whereIs(d.level, 10)];
    EXPECT_TRUE(memory::showsText(shot.canvas, cardFace(r), ink::litBrass, "6", r.x + 42, r.y + 42,
                                  TextSize::Large, ink::ink, true, true));
}

// Played by a hand, as in the run: every card in position order, twice
// over, which turns up many wrong pairs; none of them fires the player.
TEST(MemoryStation, AHandTurningWrongPairsIsNeverFired) {
    test::StationDriver bench(test::shippedRecord("memory"), 11);
    struct Sweep final : test::Solver {
        int pos = 0;
        bool wasDown = false;
        test::Intent decide(const Level& s, const test::Hand& hand, double) override {
            const auto& m = dynamic_cast<const MemoryLevel&>(s);
            if (wasDown && !hand.down) {
                pos = (pos + 1) % m.cardCount;
            }
            wasDown = hand.down;
            return test::clickCentre(hand, m.cards[pos]);
        }
    } sweep;
    const test::StationDriver::Outcome out = bench.play(sweep, 8.0);
    EXPECT_NE(out.result, LevelResult::Failed);
    EXPECT_FALSE(bench.lastSoundWasFail());
}

}  // namespace
}  // namespace vorn
