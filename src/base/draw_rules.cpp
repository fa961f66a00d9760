#include "base/draw_rules.h"

namespace vorn {

std::int32_t uniformInt(Rng& rng, std::int32_t a, std::int32_t b) {
    const std::uint32_t range = static_cast<std::uint32_t>(b) - static_cast<std::uint32_t>(a);
    if (range == 0xFFFFFFFFu) {
        return static_cast<std::int32_t>(static_cast<std::uint32_t>(a) + rawDraw(rng));
    }
    const std::uint64_t n = static_cast<std::uint64_t>(range) + 1;
    std::uint64_t product = static_cast<std::uint64_t>(rawDraw(rng)) * n;
    if (static_cast<std::uint32_t>(product) < n) {
        // Reject the few low products that would bias the result.
        const std::uint64_t threshold = ((std::uint64_t{1} << 32) - n) % n;
        while (static_cast<std::uint32_t>(product) < threshold) {
            product = static_cast<std::uint64_t>(rawDraw(rng)) * n;
        }
    }
    return static_cast<std::int32_t>(static_cast<std::uint32_t>(a) +
                                     static_cast<std::uint32_t>(product >> 32));
}

double uniformReal(Rng& rng) {
    const std::uint64_t first = rawDraw(rng);
    const std::uint64_t second = rawDraw(rng);
    return static_cast<double>((second << 21) | (first >> 11)) / 9007199254740992.0;
}

double uniformReal(Rng& rng, double lo, double hi) { return lo + (hi - lo) * uniformReal(rng); }

}  // namespace vorn
