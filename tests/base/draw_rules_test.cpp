// The run's draw rules, pinned to the standard MT19937 sequence (seed 5489
// starts 3499211612, 581869302, 3890346734, 3586334585, ...), so a seed gives
// the same layouts on every platform.

#include "base/draw_rules.h"

#include <gtest/gtest.h>

#include <climits>
#include <vector>

namespace vorn {
namespace {

TEST(DrawRules, RawDrawIsTheEnginesNextOutput) {
    Rng rng(5489);
    EXPECT_EQ(rawDraw(rng), 3499211612u);
    EXPECT_EQ(rawDraw(rng), 581869302u);
}

TEST(DrawRules, UniformIntTakesTheHighWordOfDrawTimesRange) {
    Rng rng(5489);
    // 3499211612 x 6 = 4 x 2^32 + 3815400488: accepted at once.
    EXPECT_EQ(uniformInt(rng, 0, 5), 4);
    Rng next(5489);
    next.discard(1);
    EXPECT_EQ(rng, next);
}

TEST(DrawRules, UniformIntOffsetsByTheLowerBound) {
    Rng rng(5489);
    EXPECT_EQ(uniformInt(rng, 10, 15), 14);
}

TEST(DrawRules, UniformIntRejectsBiasedProductsAndDrawsAgain) {
    // Range 0xC0000000: the threshold is 2^30, and 3499211612 x 0xC0000000
    // has a low word of 0, so it is rejected; 581869302 is accepted.
    Rng rng(5489);
    EXPECT_EQ(uniformInt(rng, INT32_MIN, 0x3FFFFFFF), INT32_MIN + 436401976);
    Rng afterTwo(5489);
    afterTwo.discard(2);
    EXPECT_EQ(rng, afterTwo);
}

TEST(DrawRules, FullRangeUsesExactlyOneDrawAndNeverRejects) {
    for (std::uint32_t seed : {1u, 5489u, 0xDEADBEEFu}) {
        Rng rng(seed);
        Rng reference(seed);
        const std::uint32_t raw = rawDraw(reference);
        EXPECT_EQ(uniformInt(rng, INT32_MIN, INT32_MAX),
                  static_cast<std::int32_t>(0x80000000u + raw));
        EXPECT_EQ(rng, reference);
    }
}

TEST(DrawRules, DegenerateRangeStillDrawsOnce) {
    Rng rng(5489);
    EXPECT_EQ(uniformInt(rng, 7, 7), 7);
    Rng next(5489);
    next.discard(1);
    EXPECT_EQ(rng, next);
}

TEST(DrawRules, UniformRealCombinesTwoDrawsFirstAThenB) {
    Rng rng(5489);
    const double expected = (581869302.0 * 2097152.0 + static_cast<double>(3499211612u >> 11)) /
                            9007199254740992.0;
    EXPECT_DOUBLE_EQ(uniformReal(rng), expected);
    EXPECT_NEAR(expected, 0.13547700429678045, 1e-15);
    Rng other(5489);
    EXPECT_DOUBLE_EQ(uniformReal(other, 2.0, 4.0), 2.0 + 2.0 * expected);
}

TEST(DrawRules, ShuffleSwapsEachIndexWithAnEarlierOrItself) {
    Rng rng(5489);
    std::vector<int> items{0, 1, 2, 3};
    shuffle(rng, items);
    EXPECT_EQ(items, (std::vector<int>{2, 1, 0, 3}));
    Rng next(5489);
    next.discard(3);
    EXPECT_EQ(rng, next);
}

TEST(DrawRules, ShuffleOfFewerThanTwoDrawsNothing) {
    Rng rng(5489);
    std::vector<int> one{9};
    std::vector<int> none;
    shuffle(rng, one);
    shuffle(rng, none);
    EXPECT_EQ(rng, Rng(5489));
    EXPECT_EQ(one, std::vector<int>{9});
}

TEST(DrawRules, ArrayShuffleMatchesVectorShuffle) {
    Rng a(42);
    Rng b(42);
    int array[5] = {0, 1, 2, 3, 4};
    std::vector<int> vec{0, 1, 2, 3, 4};
    shuffle(a, array);
    shuffle(b, vec);
    EXPECT_EQ(std::vector<int>(array, array + 5), vec);
}

}  // namespace
}  // namespace vorn
