#pragma once
// What the paperwork family's tests share: the colours only these stations
// draw, a station's picture on a black canvas with the game's fonts, the
// check that a button held down over a spot counts for nothing without a
// fresh press there, and a player who clicks one place over and over (the
// obvious wrong move each of these stations offers).

#include "stations/paperwork_stations.h"
#include "support/play_area.h"
#include "support/software_canvas.h"
#include "support/solvers/family_solvers.h"
#include "support/station_driver.h"
#include "support/station_ink.h"
#include "support/text_probe.h"

#include <gtest/gtest.h>

#include <cstddef>
#include <string>
#include <vector>

namespace vorn::test::paperwork {

using Sounds = std::vector<std::string>;

// The family's own colours, written out once.
namespace paper_ink {
// The odd tile's rim, a shade lighter than the others' bolt brass.
constexpr Color oddTileRim = rgb(189, 146, 50);
// The stamp pads: alarm red and terminal green, each channel x 0.6 and
// truncated: (255, 58, 42) -> (153, 34, 25), (70, 224, 138) -> (42, 134, 82).
constexpr Color rejectedPad = rgb(153, 34, 25);
constexpr Color approvedPad = rgb(42, 134, 82);
// The settings page's warning and the reading test's hint share the orange
// of the header's orders.
constexpr Color warningOrange = station_ink::headerInstruction;
// The reading test's four colours by index: RED, GREEN, AMBER, BLUE.
constexpr Color stroop[4] = {station_ink::alarmRed, station_ink::terminalGreen, station_ink::gold,
                             station_ink::signalBlue};
}  // namespace paper_ink

// Where no station of the family has anything: a press here does nothing,
// so a button that goes down here is down without a press anywhere else.
constexpr int kEmptyCornerX = kPlayLeft + 2;
constexpr int kEmptyCornerY = kPlayTop + 2;

// Where a filled rounded plate may paint: its corners' outermost dots reach
// one pixel past its right and bottom edges.
inline Rect plateReach(const Rect& r) { return Rect{r.x, r.y, r.w + 1, r.h + 1}; }

// A station drawn once on black, with the game's fonts.
struct Shot {
    explicit Shot(Level& station) {
        renderOnBlack(canvas, station);
    }
    Color at(int x, int y) const { return canvas.pixel(x, y); }
    // Pixels of `region` unlike the text alone drawn over `background`: 0
    // when exactly that text, in that colour, size and place, is all there is.
    int unlikeText(const Rect& region, Color background, const char* text, int x, int y, TextSize size,
                   Color color, bool centerX, bool centerY) const {
        return pixelsUnlikeText(canvas, region, background, text, x, y, size, color, centerX, centerY);
    }
    SoftwareCanvas canvas;
};

// The button goes down in the empty corner, slides onto (x, y), stays there
// a few frames and is let go there: only a fresh press counts, so nothing may
// happen and nothing may sound.
inline void slideOntoWithoutPressing(StationDriver& d, int x, int y) {
    const std::size_t before = d.sounds.size();
    EXPECT_EQ(d.press(kEmptyCornerX, kEmptyCornerY), LevelResult::Running);
    EXPECT_EQ(d.moveTo(x, y), LevelResult::Running) << x << "," << y;
    EXPECT_EQ(d.idle(3), LevelResult::Running) << x << "," << y;
    EXPECT_EQ(d.release(), LevelResult::Running) << x << "," << y;
    EXPECT_EQ(d.soundsSince(before), Sounds{}) << x << "," << y;
}

// A player who clicks one fixed place, over and over.
struct Clicker final : Solver {
    Clicker(int x, int y) : x(x), y(y) {}
    Intent decide(const Level&, const Hand& hand, double) override { return clickAt(hand, x, y); }
    int x;
    int y;
};

inline Clicker clickerOn(const Rect& r) { return Clicker(r.x + r.w / 2, r.y + r.h / 2); }

}  // namespace vorn::test::paperwork
