// The grid family's solvers. Each looks at the board as drawn (which lamps
// are dark, which tiles are bright, which segments stand upright, which
// sockets sit in which row) and clicks one thing at a time, reading the
// board again after every click the way a player checks their work.

#include "stations/grid_stations.h"
#include "support/solvers/family_solvers.h"

#include <cstdlib>
#include <deque>

namespace vorn::test {

namespace {

// Lighting panel: the presses that light everything, worked out the way a
// puzzle fan would, by trying every set of cells (a press twice over is no
// press at all, so each cell is pressed at most once). A panel that is
// already all lit still needs a click: press the centre, then undo it.
class LightsOutSolver final : public Solver {
public:
    Intent decide(const Level& station, const Hand& hand, double /*t*/) override {
        const auto& level = dynamic_cast<const LightsOutLevel&>(station);
        unsigned dark = 0;
        for (int i = 0; i < 9; ++i) {
            dark |= level.lit[i] ? 0u : 1u << i;
        }
        const int cell = dark == 0 ? 4 : firstPress(dark);
        return clickCentre(hand, level.cells[cell]);
    }

private:
    // The cells a press at i toggles, as a bit mask.
    static unsigned reach(int i) {
        const int row = i / 3;
        const int column = i % 3;
        unsigned m = 1u << i;
        m |= column > 0 ? 1u << (i - 1) : 0u;
        m |= column < 2 ? 1u << (i + 1) : 0u;
        m |= row > 0 ? 1u << (i - 3) : 0u;
        m |= row < 2 ? 1u << (i + 3) : 0u;
        return m;
    }

    // The lowest cell of the fewest presses that toggle exactly `dark`.
    static int firstPress(unsigned dark) {
        int best = -1;
        int bestCount = 10;
        for (unsigned set = 1; set < 512; ++set) {
            unsigned effect = 0;
            int count = 0;
            for (int i = 0; i < 9; ++i) {
                if ((set >> i) & 1u) {
                    effect ^= reach(i);
                    ++count;
                }
            }
            if (effect == dark && count < bestCount) {
                bestCount = count;
                for (best = 0; ((set >> best) & 1u) == 0; ++best) {
                }
            }
        }
        return best < 0 ? 4 : best;
    }
};

// Fire exit: the dark tiles are the floor. Step to the neighbouring dark tile
// on the shortest way to any dark tile of the last column.
class MazeSolver final : public Solver {
public:
    Intent decide(const Level& station, const Hand& hand, double /*t*/) override {
        const auto& level = dynamic_cast<const MazeLevel&>(station);
        const int next = nextStep(level);
        if (next < 0) {
            return stayPut(hand);
        }
        return clickCentre(hand, level.cellRect(next / 7, next % 7));
    }

private:
    // Breadth-first from the player over dark tiles; the first tile of the way.
    static int nextStep(const MazeLevel& m) {
        int cameFrom[35];
        for (int& c : cameFrom) {
            c = -2;
        }
        const int start = m.playerRow * 7 + m.playerColumn;
        cameFrom[start] = -1;
        std::deque<int> queue{start};
        while (!queue.empty()) {
            const int here = queue.front();
            queue.pop_front();
            if (here % 7 == m.columns - 1) {
                int step = here;
                while (cameFrom[step] != start && cameFrom[step] >= 0) {
                    step = cameFrom[step];
                }
                return step == start ? -1 : step;
            }
            static constexpr int kMoves[4][2] = {{0, 1}, {1, 0}, {-1, 0}, {0, -1}};
            for (const auto& mv : kMoves) {
                const int r = here / 7 + mv[0];
                const int c = here % 7 + mv[1];
                if (r < 0 || r >= m.rows || c < 0 || c >= m.columns || m.wall[r][c] ||
                    cameFrom[r * 7 + c] != -2) {
                    continue;
                }
                cameFrom[r * 7 + c] = here;
                queue.push_back(r * 7 + c);
            }
        }
        return -1;
    }
};

// Plumbing: IN and OUT point at the middle row, but its centre will not
// turn, so straighten whichever of the top and bottom rows is nearer done,
// one upright segment at a time. If a row is level already, any other
// segment's turn finishes the job.
class PipesSolver final : public Solver {
public:
    Intent decide(const Level& station, const Hand& hand, double /*t*/) override {
        const auto& level = dynamic_cast<const PipesLevel&>(station);
        auto upright = [&](int row) {
            int n = 0;
            for (int c = 0; c < level.columns; ++c) {
                n += level.rotation[row][c] % 2;
            }
            return n;
        };
        const int row = upright(2) < upright(0) ? 2 : 0;
        for (int c = 0; c < level.columns; ++c) {
            if (level.rotation[row][c] % 2 != 0) {
                return clickCentre(hand, level.cellRect(row, c));
            }
        }
        return clickCentre(hand, level.cellRect(1, 0));
    }
};

// Patch panel: ignore colours and labels; drag each left plug to the socket
// in the same row, top to bottom, letting go only once over the socket.
class WiresSolver final : public Solver {
public:
    Intent decide(const Level& station, const Hand& hand, double /*t*/) override {
        const auto& level = dynamic_cast<const WiresLevel&>(station);
        int wire = 0;
        while (wire < level.wireCount && level.connected[wire]) {
            ++wire;
        }
        if (wire == level.wireCount) {
            return stayPut(hand);
        }
        if (level.dragging == wire && hand.down) {
            const Rect& socket = level.rightPlugs[wire];
            const int x = centreX(socket);
            const int y = centreY(socket);
            const bool over = std::abs(hand.x - x) <= 2 && std::abs(hand.y - y) <= 2;
            return Intent{x, y, !over};
        }
        return clickCentre(hand, level.leftPlugs[wire]);
    }
};

}  // namespace

std::unique_ptr<Solver> makeGridSolver(const std::string& type) {
    if (type == "lightsout") {
        return std::make_unique<LightsOutSolver>();
    }
    if (type == "maze") {
        return std::make_unique<MazeSolver>();
    }
    if (type == "pipes") {
        return std::make_unique<PipesSolver>();
    }
    if (type == "wires") {
        return std::make_unique<WiresSolver>();
    }
    return nullptr;
}

}  // namespace vorn::test
