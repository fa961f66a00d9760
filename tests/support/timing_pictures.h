#pragma once
// Whole pictures of the timing stations, compared pixel for pixel. The
// station draws itself on one canvas; on a second one the test draws what the
// station ought to show, step by step with literal coordinates and colours
// (circles, plates, words), over the same background and with the same fonts.
// Any changed word, colour, size or place, a draw left out, an extra draw or
// two draws swapped where they overlap shows up as differing pixels.

#include "gfx/graphics.h"
#include "support/software_canvas.h"

#include <SDL.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <functional>

namespace vorn::test {

using Painter = std::function<void(Graphics&)>;

// Whether `drawn` and `expected` paint the same pixels over all of `region`
// (the whole canvas by default), each on a fresh canvas filled with
// `background`. Fails, naming how many pixels differ and where, when they do
// not; also fails when the expected picture leaves the region blank, so that
// two empty pictures never agree by accident. The background is taken as
// opaque.
inline ::testing::AssertionResult samePicture(const Painter& drawn, const Painter& expected,
                                              Color background = rgb(0, 0, 0),
                                              Rect region = Rect{0, 0, 1366, 768}) {
    SoftwareCanvas actual;
    actual.useGameFonts();
    actual.fill(background);
    drawn(actual.graphics);

    SoftwareCanvas wanted;
    wanted.useGameFonts();
    wanted.fill(background);
    expected(wanted.graphics);

    // Both surfaces share one pixel format: their raw words compare directly.
    const auto word = [](const SoftwareCanvas& c, int x, int y) {
        Uint32 value = 0;
        SDL_memcpy(&value, static_cast<const Uint8*>(c.surface->pixels) + y * c.surface->pitch + x * 4,
                   4);
        return value;
    };
    const Uint32 blank = SDL_MapRGBA(wanted.surface->format, static_cast<Uint8>(red(background)),
                                     static_cast<Uint8>(green(background)),
                                     static_cast<Uint8>(blue(background)), 255);
    int differing = 0;
    int painted = 0;
    int left = region.x + region.w;
    int right = -1;
    int top = region.y + region.h;
    int bottom = -1;
    for (int y = region.y; y < region.y + region.h; ++y) {
        for (int x = region.x; x < region.x + region.w; ++x) {
            const Uint32 want = word(wanted, x, y);
            painted += want != blank ? 1 : 0;
            if (word(actual, x, y) != want) {
                ++differing;
                left = std::min(left, x);
                right = std::max(right, x);
                top = std::min(top, y);
                bottom = std::max(bottom, y);
            }
        }
    }
    if (painted == 0) {
        return ::testing::AssertionFailure() << "the expected picture paints nothing in the region";
    }
    if (differing > 0) {
        return ::testing::AssertionFailure()
               << differing << " pixels differ, within x " << left << ".." << right << ", y " << top
               << ".." << bottom;
    }
    return ::testing::AssertionSuccess();
}

}  // namespace vorn::test
