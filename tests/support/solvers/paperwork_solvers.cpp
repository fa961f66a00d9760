#include "stations/paperwork_stations.h"
#include "support/solvers/family_solvers.h"

namespace vorn::test {

namespace {

// The odd tile is the lighter one: look, then click it.
class GenericSolver final : public Solver {
public:
    Intent decide(const Level& station, const Hand& hand, double /*t*/) override {
        const auto& level = dynamic_cast<const GenericLevel&>(station);
        const Rect& b = level.boxes[level.answer];
        return clickAt(hand, b.x + b.w / 2, b.y + b.h / 2);
    }
};

}  // namespace

std::unique_ptr<Solver> makePaperworkSolver(const std::string& /*type*/) {
    return std::make_unique<GenericSolver>();
}

}  // namespace vorn::test
