#pragma once
// Where a station stands on the canvas, named once for every station test:
// the canvas's own middle and the edges and middle of the play area the run
// lays every station out in.

#include "gfx/graphics.h"
#include "stations/level.h"

namespace vorn::test {

constexpr int kCanvasCentreX = kCanvasWidth / 2;                 // 683
constexpr int kCanvasCentreY = kCanvasHeight / 2;                // 384

constexpr int kPlayLeft = kPlayArea.x;                           // 263
constexpr int kPlayTop = kPlayArea.y;                            // 190
constexpr int kPlayRight = kPlayArea.x + kPlayArea.w;            // 1103, one past the last column
constexpr int kPlayBottom = kPlayArea.y + kPlayArea.h;           // 620, one past the last row
constexpr int kPlayCentreX = kPlayArea.x + kPlayArea.w / 2;      // 683
constexpr int kPlayCentreY = kPlayArea.y + kPlayArea.h / 2;      // 405

static_assert(kPlayCentreX == kCanvasCentreX, "the play area sits in the middle of the canvas");

// The play area's full width from row `top` down to (not including) `bottom`.
constexpr Rect playAreaRows(int top, int bottom) { return Rect{kPlayLeft, top, kPlayArea.w, bottom - top}; }

}  // namespace vorn::test
