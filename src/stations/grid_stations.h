#pragma once
// Grid and routing stations: a small board of cells or a row of sockets.
// The lighting panel and the plumbing cannot fire anyone, they only eat the
// clock; the fire-exit walk and the patch panel fire on the first wrong step
// or the first wrong socket. None of them looks at the frame time: every
// change comes from a click or a drop. Each board is dealt from raw engine
// outputs at setup, in a fixed order, so a seed deals it again exactly.

#include "gfx/color.h"
#include "stations/level.h"

#include <cstdint>

namespace vorn {

// A 3 x 3 panel of lamps, all to be lit. A click toggles the lamp and its four
// neighbours. The panel starts from all lit and is scrambled by 4 to 6 random
// presses, which may cancel out; even then a click is needed to finish.
class LightsOutLevel final : public Level {
public:
    void setup(const LevelDef& def, Rng& rng, const Rect& area) override;
    LevelResult update(double dt, const InputState& in, AudioSystem& audio) override;
    void render(Graphics& g) override;

    // Inverts (row, column) and its orthogonal neighbours inside the panel.
    void press(std::int32_t row, std::int32_t column);
    bool allLit() const;

    std::int32_t n = 3;
    Rect cells[9]{};   // row-major
    bool lit[9]{};     // row-major; true: the lamp is on
};

// Seven columns of tiles, five rows. The bright tiles are walls and the dark
// ones the way out: the player steps from tile to neighbouring tile, from the
// start in the first column to any tile of the last. Stepping on a wall
// fires; a click that is not a neighbour of the player is ignored.
class MazeLevel final : public Level {
public:
    void setup(const LevelDef& def, Rng& rng, const Rect& area) override;
    LevelResult update(double dt, const InputState& in, AudioSystem& audio) override;
    void render(Graphics& g) override;

    // The tile (row, column) on screen.
    Rect cellRect(std::int32_t row, std::int32_t column) const;

    std::int32_t columns = 7;
    std::int32_t rows = 5;
    std::int32_t cell = 0;
    std::int32_t originX = 0;
    std::int32_t originY = 0;
    bool wall[5][7]{};   // [row][column]; true: wall, false: open path
    std::int32_t startRow = 0;
    std::int32_t exitRow = 0;
    std::int32_t playerColumn = 0;
    std::int32_t playerRow = 0;
};

// Five columns of pipe segments in three rows; each click turns a segment a
// quarter. IN and OUT sit at the middle row, but its centre segment is locked
// upright, so the run has to be made along the top or the bottom row.
class PipesLevel final : public Level {
public:
    void setup(const LevelDef& def, Rng& rng, const Rect& area) override;
    LevelResult update(double dt, const InputState& in, AudioSystem& audio) override;
    void render(Graphics& g) override;

    // True when row 0, row 2, row 4 ... (below the row count) is all level
    // segments. The middle row, with its locked segment, is never asked.
    bool solved() const;
    Rect cellRect(std::int32_t row, std::int32_t column) const;

    std::int32_t columns = 5;
    std::int32_t rows = 3;
    std::int32_t cell = 0;
    std::int32_t originX = 0;
    std::int32_t originY = 0;
    std::int32_t rotation[3][5]{};   // [row][column], 0..3: even lies level, odd stands upright
    bool locked[3][5]{};
};

// Four wires dragged from the left sockets to the right ones. Each wire goes
// to the socket in its own row; the right sockets' colours are shuffled and
// every label names the next colour round, so reading either is a trap.
class WiresLevel final : public Level {
public:
    struct Shade {
        Color colour;
        const char* label;
    };
    // The wire palette, by colour index.
    static const Shade kPalette[8];

    void setup(const LevelDef& def, Rng& rng, const Rect& area) override;
    LevelResult update(double dt, const InputState& in, AudioSystem& audio) override;
    void render(Graphics& g) override;

    std::int32_t wireCount = 4;
    Rect leftPlugs[4]{};
    Rect rightPlugs[4]{};
    std::int32_t leftColour[4]{};    // palette indices
    std::int32_t rightColour[4]{};
    bool connected[4]{};
    std::int32_t dragging = -1;      // the left plug in hand, -1 for none
};

}  // namespace vorn
