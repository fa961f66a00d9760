#include "stations/panel_stations.h"
#include "support/solvers/family_solvers.h"

namespace vorn::test {

namespace {

// Amber levers are up: click each one in turn until the row is green.
class SwitchesSolver final : public Solver {
public:
    Intent decide(const Level& station, const Hand& hand, double /*t*/) override {
        const auto& level = dynamic_cast<const SwitchesLevel&>(station);
        for (int i = 0; i < level.count; ++i) {
            if (level.up[i]) {
                const Rect& r = level.rects[i];
                return clickCentre(hand, r);
            }
        }
        return stayPut(hand);
    }
};

// The electrician's order, read off the panel: while the master says LIVE
// and the red X is still there, cut the power; with the power off, swap the
// blown fuse; once it shows green, power back on.
class FuseboxSolver final : public Solver {
public:
    Intent decide(const Level& station, const Hand& hand, double /*t*/) override {
        const auto& level = dynamic_cast<const FuseboxLevel&>(station);
        const Rect& m = level.master;
        if (!level.replaced && !level.live) {
            const Rect& f = level.fuses[level.blown];
            return clickCentre(hand, f);
        }
        return clickCentre(hand, m);
    }
};

// Grab a wheel near its right rim and pull left in one long stroke, past the
// point where the gauge tops out: whoever ignores the label fills the gauge.
// `grabbed` is the wheel answering the press (it turns as the pointer moves).
Intent pullWheelLeft(const Hand& hand, int cx, int cy, bool grabbed) {
    const int grabX = cx + 80;
    if (grabbed && hand.down) {
        return Intent{grabX - 600, cy, true};
    }
    return clickAt(hand, grabX, cy);
}

class ValveSolver final : public Solver {
public:
    Intent decide(const Level& station, const Hand& hand, double /*t*/) override {
        const auto& level = dynamic_cast<const ValveLevel&>(station);
        return pullWheelLeft(hand, level.cx, level.cy, level.grabbed);
    }
};

// The checklist as numbered: switch 1, valve 2 (left), and only once the
// valve has filled and the dash button lights up, dash 3.
class GauntletSolver final : public Solver {
public:
    Intent decide(const Level& station, const Hand& hand, double /*t*/) override {
        const auto& level = dynamic_cast<const GauntletLevel&>(station);
        if (level.stage == 0) {
            const Rect& s = level.switchRect;
            return clickCentre(hand, s);
        }
        if (level.stage == 1) {
            return pullWheelLeft(hand, level.valveX, level.valveY, level.grabbed);
        }
        const Rect& d = level.dashRect;
        return clickCentre(hand, d);
    }
};

}  // namespace

std::unique_ptr<Solver> makePanelSolver(const std::string& type) {
    if (type == "switches") {
        return std::make_unique<SwitchesSolver>();
    }
    if (type == "fusebox") {
        return std::make_unique<FuseboxSolver>();
    }
    if (type == "valve") {
        return std::make_unique<ValveSolver>();
    }
    if (type == "gauntlet") {
        return std::make_unique<GauntletSolver>();
    }
    return nullptr;
}

}  // namespace vorn::test
