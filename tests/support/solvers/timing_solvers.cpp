#include "stations/timing_stations.h"
#include "support/solvers/family_solvers.h"

#include <cmath>

namespace vorn::test {

namespace {

constexpr double kPi = 3.14159265358979323846;

// How long after a decision the station sees the hand act on it: a reaction
// time, plus the frame in which the press is folded in. A person learns the
// rhythm of the screen; the solver learns it from the gaps between its looks.
class Rhythm {
public:
    void look(double t) {
        if (seen) {
            frame = t - last;
        }
        last = t;
        seen = true;
    }
    double lead() const { return Limits{}.reaction + frame; }
    double frame = 1.0 / 60.0;

private:
    double last = 0.0;
    bool seen = false;
};

// Signed distance of an angle from the top of its circle, in (-pi, pi]:
// negative while the angle is still on its way up to the top.
double fromTop(double angle) {
    return std::atan2(std::sin(angle + kPi / 2.0), std::cos(angle + kPi / 2.0));
}

// Waits with the pointer parked on (x, y) until the moving thing is predicted
// to reach the top just as the press lands, then presses once and keeps the
// button down. A press is only committed once the hand is already there.
class TopOfTheTurn {
public:
    Intent decide(const Hand& hand, int x, int y, double angle, double speed, double t) {
        rhythm.look(t);
        if (!pressing && hand.x == x && hand.y == y && !hand.down) {
            const double step = speed * rhythm.frame;
            const double e = fromTop(angle + speed * rhythm.lead());
            // The first look whose prediction has reached the top, give or
            // take half a frame, commits the press.
            if (e >= -step / 2.0 && e < 0.25) {
                pressing = true;
            }
        }
        return Intent{x, y, pressing};
    }

private:
    Rhythm rhythm;
    bool pressing = false;
};

// The brass plate is the button that works: look for it and click it.
class ButtonSolver final : public Solver {
public:
    Intent decide(const Level& station, const Hand& hand, double /*t*/) override {
        const auto& level = dynamic_cast<const ButtonLevel&>(station);
        const Rect& plate = level.target;
        return clickCentre(hand, plate);
    }
};

// Press in the middle of the bar and keep holding until it passes.
class HoldSolver final : public Solver {
public:
    Intent decide(const Level& station, const Hand& /*hand*/, double /*t*/) override {
        const auto& level = dynamic_cast<const HoldLevel&>(station);
        return Intent{level.bar.x + level.bar.w / 2, level.bar.y + level.bar.h / 2, true};
    }
};

// Wait over GO without touching the button; click only once the screen says
// so. Reacting to the signal costs a reaction time, which the clock allows;
// anticipating the bar would risk the sack for a quarter of a second.
class PatienceSolver final : public Solver {
public:
    Intent decide(const Level& station, const Hand& hand, double /*t*/) override {
        const auto& level = dynamic_cast<const PatienceLevel&>(station);
        const int x = level.button.x + level.button.w / 2;
        const int y = level.button.y + level.button.h / 2;
        if (!level.ready) {
            return Intent{x, y, false};
        }
        return clickAt(hand, x, y);
    }
};

// Rest on DASH and press so that the press lands as the gap meets the top.
class TimingSolver final : public Solver {
public:
    Intent decide(const Level& station, const Hand& hand, double t) override {
        const auto& level = dynamic_cast<const TimingLevel&>(station);
        const int x = level.button.x + level.button.w / 2;
        const int y = level.button.y + level.button.h / 2;
        return turn.decide(hand, x, y, level.angle, level.angularSpeed, t);
    }

private:
    TopOfTheTurn turn;
};

// Rest in the top zone and click as the orb arrives under the pointer.
class OrbitSolver final : public Solver {
public:
    Intent decide(const Level& station, const Hand& hand, double t) override {
        const auto& level = dynamic_cast<const OrbitLevel&>(station);
        return turn.decide(hand, level.centerX, level.centerY - level.orbitRadius, level.angle,
                           level.angularSpeed, t);
    }

private:
    TopOfTheTurn turn;
};

// A person's best try with one hand: hold the grip until it is charged, then
// dash to where the target will be and hold on it; when the charge has
// drained, go back to the grip. It never works, which is the point.
class TwoHandSolver final : public Solver {
public:
    Intent decide(const Level& station, const Hand& /*hand*/, double t) override {
        const auto& level = dynamic_cast<const TwoHandLevel&>(station);
        rhythm.look(t);
        if (level.charge >= 1.0) {
            chasing = true;
        } else if (level.charge <= 0.0) {
            chasing = false;
        }
        if (!chasing) {
            return Intent{level.grip.x + level.grip.w / 2, level.grip.y + level.grip.h / 2, true};
        }
        const double ahead = level.targetX + level.direction * level.targetSpeed * rhythm.lead();
        return Intent{static_cast<int>(ahead), static_cast<int>(level.targetY), true};
    }

private:
    Rhythm rhythm;
    bool chasing = false;
};

}  // namespace

std::unique_ptr<Solver> makeTimingSolver(const std::string& type) {
    if (type == "button") {
        return std::make_unique<ButtonSolver>();
    }
    if (type == "hold") {
        return std::make_unique<HoldSolver>();
    }
    if (type == "twohand") {
        return std::make_unique<TwoHandSolver>();
    }
    if (type == "patience") {
        return std::make_unique<PatienceSolver>();
    }
    if (type == "timing") {
        return std::make_unique<TimingSolver>();
    }
    if (type == "orbit") {
        return std::make_unique<OrbitSolver>();
    }
    return nullptr;
}

}  // namespace vorn::test
