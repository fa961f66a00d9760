#pragma once
// A control panel's whole picture checked against the same picture drawn by
// hand. The test lists, primitive by primitive and with literal numbers,
// what the panel must show (plates, levers, gauges, dials, every word and
// number in its place, size and colour), draws that list on a second canvas
// over the same plain background, and the two canvases must agree on every
// pixel of the region. A moved, recoloured, resized, missing, extra or
// reordered draw anywhere in the region shows up as differing pixels.

#include "gfx/graphics.h"
#include "support/software_canvas.h"

#include <SDL.h>
#include <gtest/gtest.h>

#include <functional>

namespace vorn::test {

inline ::testing::AssertionResult looksDrawnByHand(const SoftwareCanvas& canvas, Color background,
                                                   const std::function<void(Graphics&)>& byHand,
                                                   const Rect& region = Rect{0, 0, 1366, 768}) {
    SoftwareCanvas expected;
    expected.useGameFonts();
    expected.fill(background);
    byHand(expected.graphics);
    // Both canvases hold the same RGBA32 surface: compare their words
    // directly, a whole screen being a million pixels.
    const SDL_Surface* got = canvas.surface;
    const SDL_Surface* want = expected.surface;
    const Uint32 plain = SDL_MapRGBA(want->format, static_cast<Uint8>(red(background)),
                                     static_cast<Uint8>(green(background)),
                                     static_cast<Uint8>(blue(background)), 255);
    int differing = 0;
    int drawn = 0;
    int firstX = -1;
    int firstY = -1;
    for (int y = region.y; y < region.y + region.h; ++y) {
        const auto* gotRow = reinterpret_cast<const Uint32*>(static_cast<const Uint8*>(got->pixels) +
                                                             y * got->pitch);
        const auto* wantRow = reinterpret_cast<const Uint32*>(
            static_cast<const Uint8*>(want->pixels) + y * want->pitch);
        for (int x = region.x; x < region.x + region.w; ++x) {
            drawn += wantRow[x] != plain ? 1 : 0;
            if (gotRow[x] != wantRow[x]) {
                if (differing == 0) {
                    firstX = x;
                    firstY = y;
                }
                ++differing;
            }
        }
    }
    // Two empty pictures agree on everything and prove nothing.
    if (drawn == 0) {
        return ::testing::AssertionFailure() << "the hand-drawn picture is empty";
    }
    if (differing != 0) {
        return ::testing::AssertionFailure()
               << differing << " pixels differ, the first at (" << firstX << ", " << firstY
               << "): drawn " << std::hex << canvas.pixel(firstX, firstY) << ", by hand "
               << expected.pixel(firstX, firstY);
    }
    return ::testing::AssertionSuccess();
}

}  // namespace vorn::test
