#pragma once
// What the memory family's tests share: the colours only these stations
// draw, a picture of a station on a black canvas, the check that a strip of
// that picture holds exactly one string, the wait through a station's show,
// and a hand that clicks one point once the answer phase has begun.

#include "stations/level.h"
#include "support/human_hand.h"
#include "support/play_area.h"
#include "support/software_canvas.h"
#include "support/solvers/family_solvers.h"
#include "support/station_driver.h"
#include "support/station_ink.h"
#include "support/text_probe.h"

#include <gtest/gtest.h>

// In a namespace of its own: another family's helpers of the same names
// must not meet these in the one test program.
namespace vorn::test::memory {

// Simon's four pads at rest, dimmed versions of the colours they light in
// (alarm red, terminal green, gold and signal blue).
constexpr Color simonRedResting = rgb(120, 40, 40);
constexpr Color simonGreenResting = rgb(40, 90, 50);
constexpr Color simonGoldResting = rgb(90, 80, 30);
constexpr Color simonBlueResting = rgb(40, 60, 100);

// A shutdown switch's lever while it is still up: the same orange as the
// header's instruction line.
constexpr Color leverUp = station_ink::headerInstruction;

// A station drawn on a canvas with the game's fonts, cleared to black first.
struct Picture {
    SoftwareCanvas canvas;

    explicit Picture(Level& station) {
        renderOnBlack(canvas, station);
    }
};

// `region` (flat `background` apart from the text) holds exactly this text,
// drawn at (x, y) in this size and colour with these centring flags, glyph
// for glyph. The region must show some ink, so a region that misses the
// text cannot pass by comparing two blank pictures.
inline ::testing::AssertionResult showsText(const SoftwareCanvas& canvas, const Rect& region,
                                            Color background, const char* text, int x, int y,
                                            TextSize size, Color colour, bool centerX,
                                            bool centerY) {
    if (pixelsOtherThan(canvas, region, background) == 0) {
        return ::testing::AssertionFailure() << "nothing is drawn where \"" << text << "\" belongs";
    }
    const int unlike =
        pixelsUnlikeText(canvas, region, background, text, x, y, size, colour, centerX, centerY);
    if (unlike != 0) {
        return ::testing::AssertionFailure()
               << unlike << " pixels differ from \"" << text << "\" (-1: no font)";
    }
    return ::testing::AssertionSuccess();
}

// Idle frames until the station's show is over (Simon, the site walk and the
// telegraph all show first and ignore the mouse meanwhile). Twenty seconds is
// far more than any of their shows lasts.
template <typename T>
void watchTheShow(Driver<T>& d) {
    for (int i = 0; i < 20 * 60 && d.level.showing; ++i) {
        ASSERT_EQ(d.idle(), LevelResult::Running);
    }
    ASSERT_FALSE(d.level.showing);
}

// A hand that waits over (x, y) until `ready` says the station takes answers
// (at once when it is null), then clicks there.
struct ClickWhenReady final : Solver {
    bool (*ready)(const Level&) = nullptr;
    int x = 0;
    int y = 0;
    Intent decide(const Level& s, const Hand& hand, double) override {
        if (ready != nullptr && !ready(s)) {
            return Intent{x, y, false};
        }
        return clickAt(hand, x, y);
    }
};

}  // namespace vorn::test::memory
