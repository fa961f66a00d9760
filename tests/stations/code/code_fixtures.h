#pragma once
// What the code family's tests share: the door pad's key colours, written
// out once as plain numbers (the rest are in station_ink.h), and a pad on
// its own with a key press that notes what the player heard.

#include "gfx/color.h"
#include "support/station_driver.h"
#include "support/station_ink.h"

#include <gtest/gtest.h>

#include <cstdint>
#include <string>
#include <vector>

namespace vorn::test {

using Sounds = std::vector<std::string>;

namespace code_ink {

// A door-pad key is a rim round a face: brass round cream when lit,
// darker round dull grey when not.
constexpr Color litRim = rgb(169, 130, 45);
constexpr Color litFace = station_ink::casingBeige;
constexpr Color dullRim = station_ink::unlitKey;
constexpr Color dullFace = rgb(151, 139, 109);

}  // namespace code_ink

// One pad of type T laid out from seed 77. Every click is a press and a
// release through real events; `heard` keeps the sounds of the last one.
template <typename T>
struct PadFixture : ::testing::Test {
    Driver<T> d{77};
    T& pad = d.level;
    Sounds heard;

    LevelResult clickAt(int x, int y) {
        const std::size_t before = d.sounds.size();
        const LevelResult r = d.click(x, y);
        heard = d.soundsSince(before);
        return r;
    }
    LevelResult pressKey(int key) {
        const Rect& k = pad.keys[key];
        return clickAt(k.x + k.w / 2, k.y + k.h / 2);
    }
};

}  // namespace vorn::test
