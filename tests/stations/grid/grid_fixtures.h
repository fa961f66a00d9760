#pragma once
// What the grid family's tests share: the colours only these boards use,
// written out once as plain numbers (the rest are in station_ink.h), and the
// way their tests write down the sounds a move asked for.

#include "gfx/color.h"
#include "support/station_ink.h"

#include <string>
#include <vector>

namespace vorn::test {

using Sounds = std::vector<std::string>;

namespace grid_ink {

// Amber: the maze walls' outlines, the pipe segments, the AMB wire. The
// same amber as the header's line of orders.
constexpr Color amber = station_ink::headerInstruction;
constexpr Color litRim = rgb(59, 190, 117);        // round a lit lamp
constexpr Color darkGlass = rgb(24, 30, 22);       // an unlit lamp's face, a path tile's outline
constexpr Color labelCream = rgb(242, 232, 207);   // the words beside the wire plugs
// The rest of the wire palette, by the words it goes by.
constexpr Color purple = rgb(220, 120, 220);
constexpr Color cyan = rgb(120, 220, 200);
constexpr Color white = rgb(240, 240, 240);
constexpr Color brown = rgb(180, 120, 60);

}  // namespace grid_ink
}  // namespace vorn::test
