#pragma once
// The automatic player: plays the real Application as a person would, through
// the same human hand the station bench uses (late, bounded in speed, real
// SDL events), one fixed frame time at a time. It picks title menu rows with
// the pointer, sits through the shift cards, and hands every station to its
// type's solver, made fresh whenever a new station appears.

#include "app/application.h"
#include "support/human_hand.h"

#include <functional>
#include <memory>
#include <string>

namespace vorn::test {

class AutoPlayer {
public:
    explicit AutoPlayer(Application& app, double dt = 1.0 / 60.0, Limits limits = {});

    // One frame of play: decide, push the hand's events, step the game.
    void frame();
    // Frames until `done` holds or `seconds` of game time have passed; true
    // when `done` held.
    bool playUntil(const std::function<bool()>& done, double seconds);
    // On the title: points at the row labelled `label` and clicks it. False
    // when the menu has no such row or the click did not take.
    bool choose(const char* label);
    // From the title: chooses "NEW: <difficulty>" and plays until the run
    // ends (fired, victory) or `seconds` pass. Returns the final screen.
    GameScreen playShift(Difficulty d, double seconds = 600.0);

    // Makes the solver for each new station; by default makeSolver(type).
    std::function<std::unique_ptr<Solver>(const Level&)> solverFor;

    Application& app;
    double dt;
    // Draw every n-th frame only (1: every frame, as the main loop does).
    // Long proofs of play draw now and then; the screens have tests of
    // their own, and drawing every frame of a whole shift costs minutes.
    int drawEvery = 1;
    long frameCount = 0;
    HumanHand hand;
    std::unique_ptr<Solver> solver;
    const Level* solving = nullptr;   // the station the solver was made for
    double stationTime = 0.0;
    Intent aim{};                      // where the hand goes off the station screen
};

}  // namespace vorn::test
