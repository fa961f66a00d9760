#pragma once
// Checking a station's text by its pixels: the expected string is drawn with
// the same fonts on a second canvas over the same plain background, and the
// two canvases are compared over a region that holds only that text. A
// different string, size, colour or position shows up as differing pixels.

#include "gfx/graphics.h"
#include "support/software_canvas.h"

namespace vorn::test {

// How many pixels of `region` differ between `canvas` and a fresh canvas
// filled with `background` on which only the given text was drawn; -1 when
// the expected text itself drew nothing (no font), so a test cannot pass
// by comparing two empty pictures.
int pixelsUnlikeText(const SoftwareCanvas& canvas, const Rect& region, Color background,
                     const char* text, int x, int y, TextSize size, Color color, bool centerX,
                     bool centerY);

}  // namespace vorn::test
