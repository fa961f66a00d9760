#pragma once
// What the aim stations' tests share: the colours only these stations draw,
// a blank canvas to draw a station on, the station's line of orders read by
// its glyphs, a count of anything drawn where a station has nothing to show,
// and the automatic player's runs and a careless player's wrong moves.

#include "stations/level.h"
#include "support/human_hand.h"
#include "support/play_area.h"
#include "support/software_canvas.h"
#include "support/solvers/family_solvers.h"
#include "support/station_driver.h"
#include "support/station_ink.h"
#include "support/text_probe.h"

#include <gtest/gtest.h>

#include <cstddef>
#include <initializer_list>
#include <memory>
#include <string>
#include <vector>

namespace vorn::test {

using Sounds = std::vector<std::string>;

// The aim stations' own colours, as plain numbers.
namespace aim_ink {

// A two-tone disc's rim is its face at 40%, truncated: green (70, 224, 138)
// gives (28, 89, 55), red (255, 58, 42) gives (102, 23, 16), the dark red
// of other stations too.
constexpr Color greenRim = rgb(28, 89, 55);
constexpr Color redRim = station_ink::lockedRed;
// The ring round the precision dot: a dark red outline over a darker one.
constexpr Color ringOuter = rgb(89, 20, 14);
constexpr Color ringInner = rgb(63, 14, 10);
// The glow's word while it is cold to warm: the header's orange.
constexpr Color coolWord = station_ink::headerInstruction;
// The shy button warms from red as it calms: (255, trunc(58 + 112 calm),
// trunc(42 + 4 calm)), its rim that at 40%, truncated.
constexpr Color shyHalfCalm = rgb(255, 114, 44);       // calm 0.5: 58 + 56, 42 + 2
constexpr Color shyHalfCalmRim = rgb(102, 45, 17);     // 102, trunc(45.6), trunc(17.6)
constexpr Color shyNearlyCalm = rgb(255, 157, 45);     // calm 0.89: trunc(157.68), trunc(45.56)
constexpr Color shyNearlyCalmRim = rgb(102, 62, 18);   // 102, trunc(62.8), 18

}  // namespace aim_ink

// A blank canvas with the game's fonts.
struct Canvas : SoftwareCanvas {
    explicit Canvas(Color background = station_ink::black) {
        useGameFonts();
        fill(background);
    }
};

// How many pixels outside the given boxes are not the background: anything
// a station drew where it has nothing to show.
inline int strayPixels(const SoftwareCanvas& canvas, Color background, std::initializer_list<Rect> shown) {
    int stray = 0;
    for (int y = 0; y < canvas.surface->h; ++y) {
        for (int x = 0; x < canvas.surface->w; ++x) {
            bool inside = false;
            for (const Rect& r : shown) {
                inside = inside || contains(r, x, y);
            }
            stray += !inside && canvas.pixel(x, y) != background ? 1 : 0;
        }
    }
    return stray;
}

// A rounded plate's box: its corner arcs reach a pixel past its right and
// bottom edges.
constexpr Rect roundedBox(const Rect& r) { return Rect{r.x, r.y, r.w + 1, r.h + 1}; }

// The square a disc of radius r round (x, y) fits in, with a pixel to spare.
constexpr Rect discBox(int x, int y, int r) { return Rect{x - r - 1, y - r - 1, 2 * r + 3, 2 * r + 3}; }

// What a solved run of the shipped record sounds like on medium.
inline Sounds soundsOfASolvedRun(const std::string& type, std::uint32_t seed) {
    StationDriver d(shippedRecord(type), seed);
    const std::unique_ptr<Solver> solver = makeAimSolver(type);
    const StationDriver::Outcome out = d.play(*solver, clockFor(d.def, Difficulty::medium));
    EXPECT_EQ(out.result, LevelResult::Solved) << type;
    return d.sounds;
}

// The accepted steps' clicks, then the pass as the very last request.
inline Sounds clicksThenPass(std::size_t clicks) {
    Sounds sounds(clicks, "click");
    sounds.push_back("pass");
    return sounds;
}

// Clicks whatever `pick` points at, as a careless player would; hands off
// while it points at nothing.
template <typename T, typename Pick>
struct Careless final : Solver {
    Pick pick;
    explicit Careless(Pick p) : pick(p) {}
    Intent decide(const Level& station, const Hand& hand, double) override {
        int x = hand.x;
        int y = hand.y;
        if (!pick(dynamic_cast<const T&>(station), x, y)) {
            return stayPut(hand);
        }
        return clickAt(hand, x, y);
    }
};

template <typename T, typename Pick>
Careless<T, Pick> careless(Pick p) {
    return Careless<T, Pick>(p);
}

}  // namespace vorn::test
