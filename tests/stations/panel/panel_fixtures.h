#pragma once
// What the control-panel tests share: the few colours only the panel
// hardware wears (the rest are in support/station_ink.h), and a look at one
// frame of a station on a black canvas with the game's fonts.

#include "gfx/color.h"
#include "stations/level.h"
#include "support/software_canvas.h"
#include "support/station_ink.h"

namespace vorn::test {

namespace panel_ink {

constexpr Color orders = rgb(204, 136, 36);        // the checklist's line of orders
constexpr Color blownCore = rgb(127, 29, 21);      // a blown fuse not yet swapped
// The checklist's valve disc is its stage colour at half strength; the
// spokes are the full colour (the third stage's half is station_ink::darkGreen).
constexpr Color halfOldBrass = rgb(59, 46, 15);
constexpr Color halfOrange = rgb(127, 85, 23);

}  // namespace panel_ink

}  // namespace vorn::test
