#include "support/solvers/family_solvers.h"

namespace vorn::test {

Intent clickAt(const Hand& hand, int x, int y) {
    return Intent{x, y, !hand.down};
}

Intent clickCentre(const Hand& hand, const Rect& r) {
    return clickAt(hand, centreX(r), centreY(r));
}

std::unique_ptr<Solver> makeSolver(const std::string& type) {
    using Maker = std::unique_ptr<Solver> (*)(const std::string&);
    const Maker families[] = {makeTimingSolver, makeAimSolver,  makeMemorySolver,
                              makeGridSolver,   makePanelSolver, makeDialSolver,
                              makeCodeSolver};
    for (const Maker make : families) {
        if (std::unique_ptr<Solver> solver = make(type)) {
            return solver;
        }
    }
    return makePaperworkSolver(type);
}

}  // namespace vorn::test
