#pragma once
// Canvas geometry shared by the screens and the stations: integer rectangles
// with the layout of SDL_Rect, half-open hit tests, and distances.

#include <cmath>
#include <cstdint>

namespace vorn {

struct Rect {
    std::int32_t x = 0;
    std::int32_t y = 0;
    std::int32_t w = 0;
    std::int32_t h = 0;
};

// Half-open: the left and top edges are inside, the right and bottom are not.
constexpr bool contains(const Rect& r, int px, int py) {
    return px >= r.x && px < r.x + r.w && py >= r.y && py < r.y + r.h;
}

inline double distance(double x1, double y1, double x2, double y2) {
    return std::sqrt((x2 - x1) * (x2 - x1) + (y2 - y1) * (y2 - y1));
}

}  // namespace vorn
