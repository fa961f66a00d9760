#pragma once
// What each difficulty changes: how long the clocks run, how likely a shift
// ends with a clock-in card, and whether the last three seconds sound the
// siren. Any value outside the four is shown as "?" and plays like HARD
// without its card chance.

#include "app/game_types.h"

namespace vorn {

const char* difficultyName(Difficulty d);
double timeMultiplier(Difficulty d);
double clockInChance(Difficulty d);
bool sirenInLastSeconds(Difficulty d);

}  // namespace vorn
