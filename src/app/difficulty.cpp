#include "app/difficulty.h"

namespace vorn {

namespace {

struct DifficultyRow {
    const char* name;
    double multiplier;
    double chance;
    bool siren;
};

constexpr DifficultyRow kRows[] = {
    {"EASY", 1.6, 1.0, true},
    {"MEDIUM", 1.2, 0.3, true},
    {"HARD", 1.0, 0.12, false},
    {"VORN", 0.7, 0.0, false},
};
constexpr DifficultyRow kUnknown{"?", 1.0, 0.0, false};

const DifficultyRow& row(Difficulty d) {
    const auto i = static_cast<int>(d);
    return (i >= 0 && i < 4) ? kRows[i] : kUnknown;
}

}  // namespace

const char* difficultyName(Difficulty d) { return row(d).name; }
double timeMultiplier(Difficulty d) { return row(d).multiplier; }
double clockInChance(Difficulty d) { return row(d).chance; }
bool sirenInLastSeconds(Difficulty d) { return row(d).siren; }

}  // namespace vorn
