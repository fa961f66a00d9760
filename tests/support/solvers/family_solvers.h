#pragma once
// Each station family's solvers, one file per family beside its stations'
// tests. Every function returns the solver for a type string of its family,
// or null for a type it does not know; makeSolver asks them in turn.

#include "support/human_hand.h"

#include <memory>
#include <string>

namespace vorn::test {

std::unique_ptr<Solver> makeTimingSolver(const std::string& type);
std::unique_ptr<Solver> makeAimSolver(const std::string& type);
std::unique_ptr<Solver> makeMemorySolver(const std::string& type);
std::unique_ptr<Solver> makeGridSolver(const std::string& type);
std::unique_ptr<Solver> makePanelSolver(const std::string& type);
std::unique_ptr<Solver> makeDialSolver(const std::string& type);
std::unique_ptr<Solver> makeCodeSolver(const std::string& type);
// Also the odd-tile solver for any type no family claims.
std::unique_ptr<Solver> makePaperworkSolver(const std::string& type);

// A click on (x, y) in the shape a solver returns it: the hand goes there,
// presses, and lets go on the first frame it sees its own press. Solvers that
// click one thing after another call it with their current target.
Intent clickAt(const Hand& hand, int x, int y);

}  // namespace vorn::test
