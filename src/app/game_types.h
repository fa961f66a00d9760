#pragma once
// The small enums the whole application core shares: which top-level screen
// is showing, and how hard the current run is.

#include <cstdint>

namespace vorn {

enum class GameScreen : std::int32_t {
    splash = 0,
    intro = 1,   // reserved: nothing enters it, and if set it hands over to the title
    title = 2,
    shiftCard = 3,
    station = 4,
    fired = 5,
    victory = 6,
};

enum class Difficulty : std::int32_t {
    easy = 0,
    medium = 1,   // a new player's default
    hard = 2,
    vorn = 3,
};

}  // namespace vorn
