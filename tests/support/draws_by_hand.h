#pragma once
// The run's draw rules worked out longhand from raw engine outputs, so a
// station test can say which numbers a seed must give without leaning on the
// very functions the stations use.

#include "base/draw_rules.h"

#include <cstdint>

namespace vorn::test {

// A fresh engine of this seed with its first `draws` outputs spent: where
// the engine must stand once a station has made that many raw draws.
inline Rng engineAfter(std::uint32_t seed, unsigned long long draws) {
    Rng r(seed);
    r.discard(draws);
    return r;
}

// A uniform integer in [0, n - 1]: the high word of raw x n, drawing again
// while the low word falls below 2^32 mod n.
inline std::int32_t uniformBelowByHand(Rng& rng, std::uint32_t n) {
    const std::uint32_t reject = static_cast<std::uint32_t>((std::uint64_t{1} << 32) % n);
    std::uint64_t p = static_cast<std::uint64_t>(rng()) * n;
    while (static_cast<std::uint32_t>(p) < reject) {
        p = static_cast<std::uint64_t>(rng()) * n;
    }
    return static_cast<std::int32_t>(p >> 32);
}

// A uniform real in [0, 1): draw a, then b; (b x 2^21 + (a >> 11)) / 2^53.
inline double uniformRealByHand(Rng& rng) {
    const std::uint64_t a = rng();
    const std::uint64_t b = rng();
    return static_cast<double>(b * (std::uint64_t{1} << 21) + (a >> 11)) / 9007199254740992.0;
}

}  // namespace vorn::test
