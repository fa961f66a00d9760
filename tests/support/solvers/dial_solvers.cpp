#include "stations/dial_stations.h"
#include "support/solvers/family_solvers.h"

#include <cmath>

namespace vorn::test {

namespace {

// Grab the knob left of the hub and drag right until the needle points at
// the middle of the green band. Every pixel of drag turns the knob by a fixed
// amount, so the player aims for the spot where the needle will meet the
// band's middle, and lets the hand get there at its own pace.
class DialSolver final : public Solver {
public:
    Intent decide(const Level& station, const Hand& hand, double /*t*/) override {
        const auto& level = dynamic_cast<const DialLevel&>(station);
        const int grabX = level.centerX - 100;
        const int grabY = level.centerY;
        if (!level.grabbed) {
            if (hand.down) {
                return stayPut(hand);
            }
            return Intent{grabX, grabY, true};
        }
        const int goal =
            level.lastX + static_cast<int>(std::lround((level.target - level.value) / 0.0025));
        return Intent{goal, grabY, true};
    }
};

// Step towards the next number the short way round, one click at a time,
// watching where the pointer lands. Resting on the next number does not count,
// so from there the dial goes one step away and comes back.
class ComboSolver final : public Solver {
public:
    Intent decide(const Level& station, const Hand& hand, double /*t*/) override {
        const auto& level = dynamic_cast<const ComboLevel&>(station);
        if (level.stage >= 3) {
            return stayPut(hand);
        }
        const int ahead = ((level.code[level.stage] - level.position) % 12 + 12) % 12;
        const bool clockwise = ahead <= 6;  // also when already there: away, then back
        const int y = clockwise ? level.centerY - 60 : level.centerY + 60;
        return clickAt(hand, level.centerX, y);
    }
};

// Click each slider's track right at its ghost mark: the knob jumps to the
// pointer, so one click per slider does it.
class CalibrateSolver final : public Solver {
public:
    Intent decide(const Level& station, const Hand& hand, double /*t*/) override {
        const auto& level = dynamic_cast<const CalibrateLevel&>(station);
        for (int i = 0; i < 3; ++i) {
            if (std::fabs(level.value[i] - level.target[i]) > 0.04) {
                const Rect& t = level.tracks[i];
                const int y = t.y + static_cast<int>(std::lround((1.0 - level.target[i]) * t.h));
                return clickAt(hand, t.x + t.w / 2, y);
            }
        }
        return stayPut(hand);
    }
};

// Ignore the readout and watch the beam: while its right end rides high the
// beam wants more weight.
class ScaleSolver final : public Solver {
public:
    Intent decide(const Level& station, const Hand& hand, double /*t*/) override {
        const auto& level = dynamic_cast<const ScaleLevel&>(station);
        // The right end's drop as the beam is drawn.
        const int drop = static_cast<int>(std::sin((level.weight - level.target) * 0.02) * 120);
        const Rect& b = drop < 0 ? level.addButton : level.removeButton;
        return clickCentre(hand, b);
    }
};

}  // namespace

std::unique_ptr<Solver> makeDialSolver(const std::string& type) {
    if (type == "dial") {
        return std::make_unique<DialSolver>();
    }
    if (type == "combo") {
        return std::make_unique<ComboSolver>();
    }
    if (type == "calibrate") {
        return std::make_unique<CalibrateSolver>();
    }
    if (type == "scale") {
        return std::make_unique<ScaleSolver>();
    }
    return nullptr;
}

}  // namespace vorn::test
