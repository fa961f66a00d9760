#pragma once
// Whole boards checked pixel for pixel. The grid and keypad tests paint, on a
// second canvas, what a board must look like, call by call with the numbers
// worked out by hand (tile at 438 + 70 c, rim of radius 8, label at x 291...),
// and compare it with what the station drew over a region. Any changed
// colour, radius, inset, size, order of drawing or word shows up as
// differing pixels, and the first of them is named.

#include "gfx/graphics.h"
#include "support/software_canvas.h"

#include <gtest/gtest.h>

#include <cstdio>

namespace vorn::test {

// A canvas on black with the game's fonts, for a station or its picture.
struct BlackCanvas : SoftwareCanvas {
    BlackCanvas() {
        useGameFonts();
        graphics.clear(rgb(0, 0, 0));
    }
};

// Whether `region` of `drawn` equals `expected` pixel for pixel. Fails too
// when the expected picture is blank there, so two empty pictures never agree.
inline ::testing::AssertionResult sameRegion(const SoftwareCanvas& drawn,
                                             const SoftwareCanvas& expected, const Rect& region) {
    int differing = 0;
    int inked = 0;
    int firstX = -1;
    int firstY = -1;
    for (int y = region.y; y < region.y + region.h; ++y) {
        for (int x = region.x; x < region.x + region.w; ++x) {
            const Color want = expected.pixel(x, y);
            inked += (want & 0x00FFFFFFu) != 0 ? 1 : 0;
            if (drawn.pixel(x, y) != want) {
                if (differing++ == 0) {
                    firstX = x;
                    firstY = y;
                }
            }
        }
    }
    if (inked == 0) {
        return ::testing::AssertionFailure() << "the expected picture is blank there";
    }
    if (differing == 0) {
        return ::testing::AssertionSuccess();
    }
    char colours[64];
    std::snprintf(colours, sizeof colours, "drawn 0x%08X, expected 0x%08X",
                  static_cast<unsigned>(drawn.pixel(firstX, firstY)),
                  static_cast<unsigned>(expected.pixel(firstX, firstY)));
    return ::testing::AssertionFailure() << differing << " pixels differ, the first at (" << firstX
                                         << ", " << firstY << "): " << colours;
}

}  // namespace vorn::test
