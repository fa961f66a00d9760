#pragma once
// What each difficulty means to a player, written out here rather than read
// from the game: its name, how much longer or shorter the clocks run, and the
// chance of a clock-in card at the end of the shift.

#include "app/game_types.h"

namespace vorn::test {

struct Terms {
    const char* name;
    double multiplier;
    double chance;
};

inline Terms termsOf(Difficulty d) {
    switch (d) {
        case Difficulty::easy: return {"EASY", 1.6, 1.0};
        case Difficulty::medium: return {"MEDIUM", 1.2, 0.3};
        case Difficulty::hard: return {"HARD", 1.0, 0.12};
        case Difficulty::vorn: return {"VORN", 0.7, 0.0};
    }
    return {"?", 1.0, 0.0};
}

}  // namespace vorn::test
