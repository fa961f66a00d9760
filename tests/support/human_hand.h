#pragma once
// The automatic player's hand. A solver looks at a station and says where the
// pointer should be and whether the button should be held; the hand carries
// that out the way a person at a mouse would, and no better: it acts on what
// the solver decided a reaction time ago, moves the pointer no faster than a
// quick flick, presses only once the pointer has arrived, and cannot press
// again straight after letting go. Everything it does reaches the game as
// real SDL events.

#include "stations/level.h"
#include "support/play_area.h"

#include <SDL.h>

#include <deque>
#include <memory>
#include <string>

namespace vorn::test {

// What the player's hand is doing right now, as the solver sees it.
struct Hand {
    int x = kCanvasCentreX;
    int y = kCanvasCentreY;
    bool down = false;
};

// What the solver wants: the pointer at (x, y), the button held or not. A
// click is a down intent followed, on a later frame, by an up intent.
struct Intent {
    int x = kCanvasCentreX;
    int y = kCanvasCentreY;
    bool down = false;
};

// A person's limits.
struct Limits {
    double reaction = 0.15;    // seconds between seeing something and acting on it
    double maxSpeed = 2400.0;  // pointer travel in canvas pixels per second
    double minGap = 0.05;      // seconds from a release to the next press
};

// Plays one station: given the station as the player last saw it, the hand,
// and the seconds since the station appeared, decides what to do. Solvers
// read the station's public state; a fresh solver is made for every station.
class Solver {
public:
    virtual ~Solver() = default;
    virtual Intent decide(const Level& station, const Hand& hand, double t) = 0;
};

// The solver for a station type string (the generic one for an unknown type),
// never null. Each station family adds its solvers in tests/support/solvers/.
std::unique_ptr<Solver> makeSolver(const std::string& type);

class HumanHand {
public:
    explicit HumanHand(Limits limits = {}) : limits(limits) {}

    // Puts the pointer at (x, y), button up, and forgets pending intents.
    void reset(int x, int y);
    // Records the solver's intent for this frame, then pushes the SDL events
    // (motion, press, release) that the intent from a reaction time ago asks
    // for, and advances the hand's clock by dt.
    void act(const Intent& intent, double dt);
    // What was seen has gone (a station ended): intents still on their way
    // are dropped, and the hand lets go where it is rather than finish them.
    void interrupt();

    Limits limits;
    Hand hand;
    double now = 0.0;

private:
    struct Pending {
        double at;
        Intent intent;
    };
    std::deque<Pending> pending;
    Intent current{};
    bool haveCurrent = false;
    double lastRelease = -1.0;
    double exactX = kCanvasCentreX;
    double exactY = kCanvasCentreY;
};

// Real SDL events with window ID 0, so coordinates arrive as canvas pixels.
void pushMotion(int x, int y);
void pushButton(bool down, int x, int y);

}  // namespace vorn::test
