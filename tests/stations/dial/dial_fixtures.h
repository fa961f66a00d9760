#pragma once
// What the dial-family tests share: the one colour only these stations wear
// (the rest are in support/station_ink.h), where a point along a dial lands,
// and a look at one frame of a station on a black canvas with the game's
// fonts.

#include "gfx/color.h"
#include "stations/level.h"
#include "support/software_canvas.h"
#include "support/station_ink.h"

#include <cmath>

namespace vorn::test {

namespace dial_ink {

constexpr Color dullNumber = rgb(153, 102, 27);   // the lock's numbers the pointer is not on

}  // namespace dial_ink

namespace dial {

// Dials read like a clock face: a fraction f of a turn sits at 2 pi f - pi / 2,
// clockwise from twelve (screen y grows downwards), and a point `r` pixels
// out along it is truncated to whole pixels.
inline int alongX(int cx, int r, double f) {
    constexpr double kPi = 3.14159265358979323846;
    return cx + static_cast<int>(std::cos(2 * kPi * f - kPi / 2) * r);
}
inline int alongY(int cy, int r, double f) {
    constexpr double kPi = 3.14159265358979323846;
    return cy + static_cast<int>(std::sin(2 * kPi * f - kPi / 2) * r);
}

}  // namespace dial

}  // namespace vorn::test
