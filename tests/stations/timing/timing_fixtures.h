#pragma once
// What the timing stations' tests share: the colours only this family draws,
// a station drawn on a black canvas to probe, a press landing on a frame of a
// chosen length (for the tests whose point is a frame time), and a scripted
// player for the obvious wrong moves.

#include "stations/level.h"
#include "support/human_hand.h"
#include "support/software_canvas.h"
#include "support/station_driver.h"
#include "support/station_ink.h"

#include <initializer_list>
#include <utility>

namespace vorn::test {

constexpr double kPi = 3.14159265358979323846;

namespace timing_ink {

// Colours a faded disc gets: the game draws a rim or shadow as its colour
// scaled down, channel by channel, truncated.
constexpr Color alarmRedShadow = rgb(127, 29, 21);    // (255, 58, 42) at half strength
constexpr Color flashRedShadow = rgb(76, 17, 12);     // (153, 34, 25) at half strength
constexpr Color orangeRim = rgb(102, 68, 18);         // (255, 170, 46) at 40%
constexpr Color greenRim = rgb(28, 89, 55);           // (70, 224, 138) at 40%

// The orange of the hold bar's word, the charging target and the waiting
// bar: the same orange as the header's instruction line.
constexpr Color orange = station_ink::headerInstruction;
constexpr Color waitingPlate = rgb(79, 61, 21);       // GO before the bar is full
constexpr Color orbitGrey = rgb(32, 32, 32);          // the orbit's thin ring
constexpr Color zoneGreen = rgb(21, 67, 41);          // the orbit's catching zone

}  // namespace timing_ink

// A station as the player sees it this frame: drawn with the game's fonts
// on a black canvas.
struct Picture {
    explicit Picture(Level& station) {
        renderOnBlack(canvas, station);
    }
    Color at(int x, int y) const { return canvas.pixel(x, y); }

    SoftwareCanvas canvas;
};

// How many pixels two pictures disagree on.
inline int pixelsDiffering(const Picture& a, const Picture& b) {
    int differing = 0;
    for (int y = 0; y < kCanvasHeight; ++y) {
        for (int x = 0; x < kCanvasWidth; ++x) {
            differing += a.at(x, y) != b.at(x, y) ? 1 : 0;
        }
    }
    return differing;
}

// How many pixels of the picture are not black outside all of `kept`: a
// draw the station should not make shows up here.
inline int paintedOutside(const Picture& picture, std::initializer_list<Rect> kept) {
    int painted = 0;
    for (int y = 0; y < kCanvasHeight; ++y) {
        for (int x = 0; x < kCanvasWidth; ++x) {
            bool inside = false;
            for (const Rect& r : kept) {
                inside = inside || contains(r, x, y);
            }
            painted += !inside && picture.at(x, y) != station_ink::black ? 1 : 0;
        }
    }
    return painted;
}

// What a round-cornered plate covers on screen: its corner dots reach one
// pixel past its right and bottom edges.
constexpr Rect plateReach(const Rect& r) { return Rect{r.x, r.y, r.w + 1, r.h + 1}; }

// A press at (x, y) that arrives on a frame of `dt` rather than the usual
// sixtieth: the same real events the driver's press sends. Only for tests
// whose point is a frame's length (a stall, an exact binary step).
inline LevelResult pressOnFrame(StationDriver& d, int x, int y, double dt) {
    pushMotion(x, y);
    pushButton(true, x, y);
    return d.frame(dt);
}

// The pointer moved to (x, y) on a frame of `dt`, the button as it was.
inline LevelResult moveOnFrame(StationDriver& d, int x, int y, double dt) {
    pushMotion(x, y);
    return d.frame(dt);
}

// A solver that plays one fixed wrong move, for the tests that show what the
// obvious move costs.
template <typename Decide>
struct Scripted final : Solver {
    explicit Scripted(Decide d) : decideFn(std::move(d)) {}
    Intent decide(const Level& station, const Hand& hand, double t) override {
        return decideFn(station, hand, t);
    }
    Decide decideFn;
};
template <typename Decide>
Scripted<Decide> scripted(Decide d) {
    return Scripted<Decide>(std::move(d));
}

}  // namespace vorn::test
