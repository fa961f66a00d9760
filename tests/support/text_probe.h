#pragma once
// Checking a station's text by its pixels: the expected string is drawn with
// the same fonts on a second canvas over the same plain background, and the
// two canvases are compared over a region that holds only that text. A
// different string, size, colour or position shows up as differing pixels.

#include "gfx/graphics.h"
#include "support/play_area.h"
#include "support/software_canvas.h"
#include "support/station_ink.h"

namespace vorn::test {

// How many pixels of `region` differ between `canvas` and a fresh canvas
// filled with `background` on which only the given text was drawn; -1 when
// the expected text itself drew nothing (no font), so a test cannot pass
// by comparing two empty pictures.
int pixelsUnlikeText(const SoftwareCanvas& canvas, const Rect& region, Color background,
                     const char* text, int x, int y, TextSize size, Color color, bool centerX,
                     bool centerY);

// Where a station's note stands when nothing else is drawn near the foot of
// the play area: its last 24 rows and the 6 under it, which the tails of
// letters like Q and J reach.
constexpr Rect kPlayAreaNoteBand = playAreaRows(kPlayBottom - 24, kPlayBottom + 6);

// A station's own note at the foot of its play area, the one line every
// station shows in the same way: `words` in small type and the note colour,
// centred across the play area with its top `fromBottom` pixels above the
// area's foot. Returns how many pixels of `band` (which must hold only the
// note on `background`) differ from that, or -1 without a font.
int playAreaNoteUnlike(const SoftwareCanvas& canvas, const Rect& band, const char* words,
                       int fromBottom = 16, Color background = station_ink::black);

}  // namespace vorn::test
