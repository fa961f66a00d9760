#pragma once
// A station: one mini-game of the shift. The run creates one through the
// factory, hands it its catalogue record, the run's random engine and the
// play area, then updates and draws it every frame until it answers Solved
// or Failed (or the clock runs out). Stations are plain state: their fields
// are public so the tests and the automatic player can read them directly.

#include "base/input_state.h"
#include "gfx/geometry.h"
#include "base/draw_rules.h"

#include <cstdint>
#include <string>

namespace vorn {

class AudioSystem;
class Graphics;
struct LevelDef;

// A station's verdict for one frame. Any value other than Solved or Failed
// counts as Running.
enum class LevelResult : std::int32_t {
    Running = 0,
    Solved = 1,
    Failed = 2,
};

class Level {
public:
    Level() = default;
    virtual ~Level() = default;
    Level(const Level&) = delete;
    Level& operator=(const Level&) = delete;

    // Copies the catalogue fields and the play area; every station calls this
    // first, then lays itself out and makes its random draws.
    virtual void setup(const LevelDef& def, Rng& rng, const Rect& area);
    virtual LevelResult update(double dt, const InputState& in, AudioSystem& audio) = 0;
    virtual void render(Graphics& g) = 0;

    std::int32_t number = 0;
    std::string id;
    std::string name;
    std::string type;
    std::string phase;
    std::int32_t baseTime = 15;
    std::string instruction;
    std::string trick;
    Rect playArea{84, 210, 856, 360};   // a fallback: the run always passes its own
};

// The play area the run hands every station: inside the monitor glass,
// between the station header and footer.
constexpr Rect kPlayArea{263, 170 + 20, 840, 600 - 170};

}  // namespace vorn
