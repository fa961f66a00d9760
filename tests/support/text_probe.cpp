#include "support/text_probe.h"

#include <SDL_ttf.h>

namespace vorn::test {

int pixelsUnlikeText(const SoftwareCanvas& canvas, const Rect& region, Color background,
                     const char* text, int x, int y, TextSize size, Color color, bool centerX,
                     bool centerY) {
    // A canvas ends the font library when it goes, and the canvas under test
    // still needs it: take one more hold on it for the reference to let go of.
    TTF_Init();
    SoftwareCanvas expected;
    expected.useGameFonts();
    expected.fill(background);
    if (expected.graphics.text(text, x, y, size, color, centerX, centerY) == 0) {
        return -1;
    }
    int differing = 0;
    for (int py = region.y; py < region.y + region.h; ++py) {
        for (int px = region.x; px < region.x + region.w; ++px) {
            differing += canvas.pixel(px, py) != expected.pixel(px, py) ? 1 : 0;
        }
    }
    return differing;
}

}  // namespace vorn::test
