#pragma once
// Paperwork and trick stations: they test reading rather than reflexes, and
// each offers an obvious move that is wrong. For now the family holds the
// generic station, the fallback for any catalogue type the factory does not
// know: six tiles, one a shade lighter, and the catalogue says which to pick.

#include "stations/level.h"

#include <cstdint>

namespace vorn {

class GenericLevel final : public Level {
public:
    void setup(const LevelDef& def, Rng& rng, const Rect& area) override;
    LevelResult update(double dt, const InputState& in, AudioSystem& audio) override;
    void render(Graphics& g) override;

    std::int32_t count = 6;
    std::int32_t answer = 0;   // the odd tile
    Rect boxes[6]{};
};

}  // namespace vorn
