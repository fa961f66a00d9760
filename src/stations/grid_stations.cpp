#include "stations/grid_stations.h"

#include "audio/audio_system.h"
#include "gfx/graphics.h"
#include "stations/station_kit.h"

#include <algorithm>
#include <cstdlib>
#include <iterator>

namespace vorn {

namespace {

// r() % n: one raw output of the run's engine, reduced.
std::int32_t rawBelow(Rng& rng, std::uint32_t n) { return static_cast<std::int32_t>(rawDraw(rng) % n); }

// r() & 1: the low bit of one raw output.
bool rawBit(Rng& rng) { return (rawDraw(rng) & 1u) != 0; }

// A tile of the maze or pipe board: square cells from the board's top left.
Rect tileAt(int originX, int originY, int cell, int row, int column) {
    return Rect{originX + cell * column, originY + cell * row, cell, cell};
}

// The tile a fresh press landed on, searched row by row. The boards take a
// click only well inside a tile, 2 pixels in from every edge, so a click on
// the seam between two tiles hits neither. False with no press or no tile.
bool pressedTile(const InputState& in, int originX, int originY, int cell, int rows, int columns,
                 int& row, int& column) {
    if (!in.mousePressed) {
        return false;
    }
    for (row = 0; row < rows; ++row) {
        for (column = 0; column < columns; ++column) {
            const Rect t = tileAt(originX, originY, cell, row, column);
            if (contains(Rect{t.x + 2, t.y + 2, t.w - 4, t.h - 4}, in.mouseX, in.mouseY)) {
                return true;
            }
        }
    }
    return false;
}

// The tile face the maze and the pipes both paint: the cell less 2 pixels
// all round, with corners of radius 4.
void tileFace(Graphics& g, const Rect& cell, Color c) {
    g.roundRect(Rect{cell.x + 2, cell.y + 2, cell.w - 4, cell.h - 4}, 4, c, true);
}

}  // namespace

// ------------------------------------------------------------- LightsOut

void LightsOutLevel::setup(const LevelDef& def, Rng& rng, const Rect& area) {
    Level::setup(def, rng, area);
    n = 3;
    const int cx = area.x + area.w / 2;
    for (int row = 0; row < 3; ++row) {
        for (int column = 0; column < 3; ++column) {
            cells[row * 3 + column] =
                Rect{cx - 181 + 126 * column, area.y + 54 + 126 * row, 110, 110};
        }
    }
    std::fill(std::begin(lit), std::end(lit), true);
    // Scrambled by real presses from the solved panel, so it can always be
    // solved again; the presses may undo one another.
    const int presses = rawBelow(rng, 3) + 4;
    for (int k = 0; k < presses; ++k) {
        const std::int32_t row = rawBelow(rng, 3);
        const std::int32_t column = rawBelow(rng, 3);
        press(row, column);
    }
}

void LightsOutLevel::press(std::int32_t row, std::int32_t column) {
    static constexpr int kSteps[5][2] = {{0, 0}, {0, -1}, {0, 1}, {-1, 0}, {1, 0}};
    for (const auto& step : kSteps) {
        const int r = row + step[0];
        const int c = column + step[1];
        if (r >= 0 && r < n && c >= 0 && c < n) {
            lit[r * n + c] = !lit[r * n + c];
        }
    }
}

bool LightsOutLevel::allLit() const {
    return std::all_of(std::begin(lit), std::begin(lit) + n * n, [](bool on) { return on; });
}

LevelResult LightsOutLevel::update(double /*dt*/, const InputState& in, AudioSystem& audio) {
    if (!in.mousePressed) {
        return LevelResult::Running;
    }
    for (int i = 0; i < n * n; ++i) {
        if (!contains(cells[i], in.mouseX, in.mouseY)) {
            continue;
        }
        press(i / n, i % n);
        // Judged only after a click: a scramble that cancelled itself out
        // still waits for the player to touch the panel.
        return acceptMove(audio, allLit());
    }
    return LevelResult::Running;
}

void LightsOutLevel::render(Graphics& g) {
    for (int i = 0; i < n * n; ++i) {
        const Rect& c = cells[i];
        g.roundRect(c, 8, lit[i] ? rgb(59, 190, 117) : palette::charcoal, true);
        g.rect(Rect{c.x + 8, c.y + 8, c.w - 16, c.h - 16},
               lit[i] ? palette::terminalGreen : rgb(24, 30, 22), true);
    }
    instructionLine(g, playArea, "TURN EVERY CELL ON \xE2\x80\x94 CLICKS AFFECT NEIGHBOURS");
}

// ------------------------------------------------------------------ Maze

void MazeLevel::setup(const LevelDef& def, Rng& rng, const Rect& area) {
    Level::setup(def, rng, area);
    columns = 7;
    rows = 5;
    cell = std::min((area.h - 80) / rows, (area.w - 40) / columns);
    originX = area.x + (area.w - columns * cell) / 2;
    originY = area.y + 30;
    for (auto& line : wall) {
        std::fill(std::begin(line), std::end(line), true);
    }
    // The path runs left to right a column at a time, sometimes taking one
    // step up or down inside a column. A step off the top or bottom edge is
    // held at the edge, so the same tile may be opened twice.
    int row = rawBelow(rng, static_cast<std::uint32_t>(rows));
    startRow = row;
    for (int c = 0; c < columns; ++c) {
        wall[row][c] = false;
        if (c == columns - 1) {
            break;
        }
        if (rawBit(rng)) {
            const bool down = rawBit(rng);
            row = std::clamp(row + (down ? 1 : -1), 0, rows - 1);
            wall[row][c] = false;
        }
    }
    exitRow = row;
    playerRow = startRow;
    playerColumn = 0;
}

Rect MazeLevel::cellRect(std::int32_t row, std::int32_t column) const {
    return tileAt(originX, originY, cell, row, column);
}

LevelResult MazeLevel::update(double /*dt*/, const InputState& in, AudioSystem& audio) {
    int row = 0;
    int column = 0;
    if (!pressedTile(in, originX, originY, cell, rows, columns, row, column)) {
        return LevelResult::Running;
    }
    // Only a neighbour of the player counts; anything else, a wall included,
    // is a click on the floor plan and costs nothing.
    if (std::abs(row - playerRow) + std::abs(column - playerColumn) != 1) {
        return LevelResult::Running;
    }
    if (wall[row][column]) {
        audio.playFail();
        return LevelResult::Failed;
    }
    playerRow = row;
    playerColumn = column;
    return acceptMove(audio, playerColumn == columns - 1);
}

void MazeLevel::render(Graphics& g) {
    // The walls are the bright tiles, on purpose: the safe way is the dark one.
    for (int row = 0; row < rows; ++row) {
        for (int column = 0; column < columns; ++column) {
            const Rect c = cellRect(row, column);
            const bool isWall = wall[row][column];
            tileFace(g, c, isWall ? palette::paleGold : palette::soot);
            g.rect(Rect{c.x + 5, c.y + 5, cell - 10, cell - 10},
                   isWall ? palette::orange : rgb(24, 30, 22), false);
        }
    }
    tileFace(g, cellRect(exitRow, columns - 1), palette::darkGreen);
    const Rect p = cellRect(playerRow, playerColumn);
    g.circle(p.x + 2 + (cell - 4) / 2, p.y + 2 + (cell - 4) / 2, (cell - 4) / 3,
             palette::alarmRed, true);
    instructionLine(g, playArea, "FOLLOW THE DARK PATH", 18);
}

// ----------------------------------------------------------------- Pipes

void PipesLevel::setup(const LevelDef& def, Rng& rng, const Rect& area) {
    Level::setup(def, rng, area);
    columns = 5;
    rows = 3;
    cell = std::min((area.h - 90) / rows, (area.w - 40) / columns);
    originX = area.x + (area.w - columns * cell) / 2;
    originY = area.y + 30;
    for (int row = 0; row < rows; ++row) {
        for (int column = 0; column < columns; ++column) {
            rotation[row][column] = static_cast<std::int32_t>(rawDraw(rng) & 3u);
            locked[row][column] = false;
        }
    }
    // The middle row is the one IN and OUT point at, and its centre segment
    // stands upright for good.
    rotation[1][2] = 1;
    locked[1][2] = true;
}

bool PipesLevel::solved() const {
    for (int row = 0; row < rows; row += 2) {
        bool level = true;
        for (int column = 0; column < columns; ++column) {
            level = level && rotation[row][column] % 2 == 0;
        }
        if (level) {
            return true;
        }
    }
    return false;
}

Rect PipesLevel::cellRect(std::int32_t row, std::int32_t column) const {
    return tileAt(originX, originY, cell, row, column);
}

LevelResult PipesLevel::update(double /*dt*/, const InputState& in, AudioSystem& audio) {
    int row = 0;
    int column = 0;
    if (!pressedTile(in, originX, originY, cell, rows, columns, row, column)) {
        return LevelResult::Running;
    }
    if (locked[row][column]) {
        // A buzz and nothing more: the locked segment costs time only.
        audio.playFail();
        return LevelResult::Running;
    }
    rotation[row][column] = (rotation[row][column] + 1) % 4;
    return acceptMove(audio, solved());
}

void PipesLevel::render(Graphics& g) {
    const bool done = solved();
    const Color segment = done ? palette::terminalGreen : palette::orange;
    const int h = (cell - 4) / 2 - 2;
    for (int row = 0; row < rows; ++row) {
        for (int column = 0; column < columns; ++column) {
            const Rect c = cellRect(row, column);
            tileFace(g, c, locked[row][column] ? rgb(102, 23, 16) : palette::unlitKey);
            if (rotation[row][column] % 2 == 0) {
                g.rect(Rect{c.x + 6, c.y + h, cell - 12, 8}, segment, true);
            } else {
                g.rect(Rect{c.x + h, c.y + 6, 8, cell - 12}, segment, true);
            }
        }
    }
    g.text("IN", originX - 26, originY + cell, TextSize::Small, palette::terminalGreen, false,
           false);
    g.text("OUT", originX + columns * cell + 4, originY + cell, TextSize::Small,
           palette::terminalGreen, false, false);
    instructionLine(g, playArea, "ONE SEGMENT IS LOCKED - ROUTE AROUND IT");
}

// ----------------------------------------------------------------- Wires

const WiresLevel::Shade WiresLevel::kPalette[8] = {
    {palette::alarmRed, "RED"},    {palette::terminalGreen, "GRN"}, {palette::orange, "AMB"},
    {palette::signalBlue, "BLU"},  {rgb(220, 120, 220), "PUR"},     {rgb(120, 220, 200), "CYN"},
    {rgb(240, 240, 240), "WHT"},   {rgb(180, 120, 60), "BRN"},
};

void WiresLevel::setup(const LevelDef& def, Rng& rng, const Rect& area) {
    Level::setup(def, rng, area);
    wireCount = 4;
    std::int32_t order[8] = {0, 1, 2, 3, 4, 5, 6, 7};
    // Only the four colours in use are shuffled, by the run's shuffle rule.
    for (int k = 1; k < wireCount; ++k) {
        std::swap(order[k], order[uniformInt(rng, 0, k)]);
    }
    for (int i = 0; i < wireCount; ++i) {
        leftPlugs[i] = Rect{area.x + 72, area.y + 42 + 64 * i, 36, 36};
        rightPlugs[i] = Rect{area.x + area.w - 108, area.y + 42 + 64 * i, 36, 36};
        leftColour[i] = i;
        rightColour[i] = order[i];
        connected[i] = false;
    }
    dragging = -1;
}

LevelResult WiresLevel::update(double /*dt*/, const InputState& in, AudioSystem& audio) {
    if (in.mousePressed) {
        for (int i = 0; i < wireCount; ++i) {
            if (contains(leftPlugs[i], in.mouseX, in.mouseY) && !connected[i]) {
                dragging = i;
            }
        }
    }
    if (!in.mouseReleased || dragging < 0) {
        return LevelResult::Running;
    }
    const int wire = dragging;
    dragging = -1;
    for (int i = 0; i < wireCount; ++i) {
        if (!contains(rightPlugs[i], in.mouseX, in.mouseY)) {
            continue;
        }
        // Position decides, never colour: wire i belongs in row i.
        if (i != wire) {
            audio.playFail();
            return LevelResult::Failed;
        }
        connected[wire] = true;
        return acceptMove(audio, std::all_of(std::begin(connected),
                                             std::begin(connected) + wireCount,
                                             [](bool c) { return c; }));
    }
    return LevelResult::Running;   // dropped in the open: put back, no harm done
}

void WiresLevel::render(Graphics& g) {
    constexpr Color kLabel = rgb(242, 232, 207);
    for (int i = 0; i < wireCount; ++i) {
        // Each label names the colour after the plug's own, round the cycle.
        const Rect& left = leftPlugs[i];
        g.roundRect(left, 6, kPalette[leftColour[i]].colour, true);
        g.text(kPalette[(leftColour[i] + 1) % wireCount].label, left.x - 44, left.y + 8,
               TextSize::Small, kLabel, false, false);
        const Rect& right = rightPlugs[i];
        g.roundRect(right, 6, kPalette[rightColour[i]].colour, true);
        g.text(kPalette[(rightColour[i] + 1) % wireCount].label, right.x + 40, right.y + 8,
               TextSize::Small, kLabel, false, false);
        if (connected[i]) {
            g.line(left.x + 36, left.y + 18, right.x, right.y + 18, palette::terminalGreen, 4);
        }
    }
    instructionLine(g, playArea, "MATCH BY POSITION", 20);
}

}  // namespace vorn
