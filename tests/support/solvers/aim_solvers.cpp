#include "support/solvers/family_solvers.h"

namespace vorn::test {

std::unique_ptr<Solver> makeAimSolver(const std::string& /*type*/) {
    return nullptr;
}

}  // namespace vorn::test
