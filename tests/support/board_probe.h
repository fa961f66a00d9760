#pragma once
// Looking at a board the way a player does. The station is drawn alone on a
// black canvas with the game's fonts and read at points of its own layout:
// the colour of a plate, of the gap beside it, of the words in their place.
// Two measures a single point cannot give are worked out here once: how
// round a plate's corners are, and whether the station's line of orders
// reads exactly as it should.

#include "stations/level.h"
#include "support/play_area.h"
#include "support/software_canvas.h"
#include "support/station_ink.h"
#include "support/text_probe.h"

namespace vorn::test {

// A station drawn on black, fonts loaded; `at` reads one pixel.
struct StationPicture : SoftwareCanvas {
    explicit StationPicture(Level& station) {
        renderOnBlack(*this, station);
    }
    Color at(int x, int y) const { return pixel(x, y); }
};

// The pixels of a plate's top row left bare before its colour `c` starts,
// counted from its left edge. A plate filled with corners of radius r is
// only r pixels in along its top row where its corner's quarter disc
// touches that row, so the count is the corner's radius; a square plate
// gives 0.
inline int bareAlongTopRow(const SoftwareCanvas& canvas, const Rect& plate, Color c) {
    int bare = 0;
    while (bare < plate.w && canvas.pixel(plate.x + bare, plate.y) != c) {
        ++bare;
    }
    return bare;
}

// How many pixels differ from small words drawn alone at (x, y) in colour
// `c`, over `region`, which must hold nothing else on the black canvas.
// Anti-aliased edges count, so a different word, colour or place shows.
inline int smallWordsUnlike(const SoftwareCanvas& canvas, const Rect& region, const char* words,
                            int x, int y, Color c, bool centred) {
    return pixelsUnlikeText(canvas, region, station_ink::black, words, x, y, TextSize::Small, c,
                            centred, false);
}

}  // namespace vorn::test
