#pragma once
// The run's random engine and the four ways the game draws from it. Every
// draw of a run goes through these, in a fixed order, so a seed reproduces
// every station layout exactly. The algorithms are written out here rather
// than taken from <random>'s distributions, whose algorithms differ between
// standard libraries.

#include <cstdint>
#include <random>
#include <utility>
#include <vector>

namespace vorn {

using Rng = std::mt19937;

// The next 32-bit output of the engine.
inline std::uint32_t rawDraw(Rng& rng) { return static_cast<std::uint32_t>(rng()); }

// Uniform integer in [a, b], both inclusive (a <= b), by multiply-and-reject:
// one draw in nearly every case, and exactly one over the full int32 range.
std::int32_t uniformInt(Rng& rng, std::int32_t a, std::int32_t b);

// Uniform real in [0, 1) from two draws, first a then b: 53 bits of b and a.
double uniformReal(Rng& rng);
// Uniform real in [lo, hi).
double uniformReal(Rng& rng, double lo, double hi);

// Shuffles in place: for i = 1 .. n-1, swap element i with a uniform j in [0, i].
template <typename T>
void shuffle(Rng& rng, std::vector<T>& items) {
    for (std::size_t i = 1; i < items.size(); ++i) {
        const auto j = static_cast<std::size_t>(uniformInt(rng, 0, static_cast<std::int32_t>(i)));
        std::swap(items[i], items[j]);
    }
}

template <typename T, std::size_t N>
void shuffle(Rng& rng, T (&items)[N]) {
    for (std::size_t i = 1; i < N; ++i) {
        const auto j = static_cast<std::size_t>(uniformInt(rng, 0, static_cast<std::int32_t>(i)));
        std::swap(items[i], items[j]);
    }
}

}  // namespace vorn
