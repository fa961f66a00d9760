#include "stations/level.h"

#include "data/level_catalogue.h"

namespace vorn {

void Level::setup(const LevelDef& def, Rng& /*rng*/, const Rect& area) {
    number = def.number;
    id = def.id;
    name = def.name;
    type = def.type;
    phase = def.phase;
    baseTime = def.baseTime;
    instruction = def.instruction;
    trick = def.trick;
    playArea = area;
}

}  // namespace vorn
