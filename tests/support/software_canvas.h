#pragma once
// A Graphics that draws into a 1366 x 768 RGBA surface through SDL's software
// renderer, so tests can read exact pixels without a display. (On the dummy
// video driver a window's renderer reads back misaligned; a surface does not.)

#include "gfx/graphics.h"
#include "stations/level.h"

#include <SDL.h>

#include <string>

namespace vorn::test {

class SoftwareCanvas {
public:
    SoftwareCanvas();
    ~SoftwareCanvas();
    SoftwareCanvas(const SoftwareCanvas&) = delete;
    SoftwareCanvas& operator=(const SoftwareCanvas&) = delete;

    // The colour at a canvas pixel, alpha included.
    Color pixel(int x, int y) const;
    // Fills the whole canvas, bypassing Graphics, to set a known background.
    void fill(Color c);
    // Opens the shipped fonts of the built game folder (TTF is started here).
    void useGameFonts();

    SDL_Surface* surface = nullptr;
    Graphics graphics;
    bool startedTtf = false;
};

// A station as a player sees it on this frame, alone: the canvas opens the
// game's fonts, is filled black and the station draws itself on it. Every
// station family's pictures start here.
inline void renderOnBlack(SoftwareCanvas& canvas, Level& station) {
    canvas.useGameFonts();
    canvas.fill(rgb(0, 0, 0));
    station.render(canvas.graphics);
}

// True when two colours differ by at most `tolerance` in every channel
// (blending rounds differently between renderers).
bool near(Color a, Color b, int tolerance);

// True when some pixel of the box is within `tolerance` of colour c in every
// channel: text is anti-aliased, but its solid strokes carry the exact colour.
bool anyPixelNear(const SoftwareCanvas& canvas, const Rect& box, Color c, int tolerance);

// How many pixels of the box are not exactly colour c: 0 when the box is one
// flat colour, as a plate's face or an empty stretch of the play area is.
int pixelsOtherThan(const SoftwareCanvas& canvas, const Rect& box, Color c);

// The colour with full alpha: blending onto the canvas can leave its alpha a
// step or two under 255, which no one ever sees.
constexpr Color opaque(Color c) { return c | 0xFF000000u; }

}  // namespace vorn::test
