#include "support/text_probe.h"

#include "support/play_area.h"

namespace vorn::test {

int pixelsUnlikeText(const SoftwareCanvas& canvas, const Rect& region, Color background,
                     const char* text, int x, int y, TextSize size, Color color, bool centerX,
                     bool centerY) {
    // The reference canvas takes its own hold on the font library and lets
    // go of it again, so the canvas under test keeps its fonts.
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

int playAreaNoteUnlike(const SoftwareCanvas& canvas, const Rect& band, const char* words, int fromBottom,
                       Color background) {
    return pixelsUnlikeText(canvas, band, background, words, kPlayCentreX, kPlayBottom - fromBottom,
                            TextSize::Small, station_ink::playAreaNote, true, false);
}

}  // namespace vorn::test
