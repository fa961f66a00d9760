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
// The same click on the middle of a rectangle: a key, a pad, a tile.
Intent clickCentre(const Hand& hand, const Rect& r);

// Hands off: the pointer stays where it is and the button comes up.
inline Intent stayPut(const Hand& hand) { return Intent{hand.x, hand.y, false}; }

inline int centreX(const Rect& r) { return r.x + r.w / 2; }
inline int centreY(const Rect& r) { return r.y + r.h / 2; }

}  // namespace vorn::test
