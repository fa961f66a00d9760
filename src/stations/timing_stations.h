#pragma once
// Timing and reflex stations: they test when, where and for how long the
// player clicks. Each one has an obvious move that is wrong (the big button,
// the early click, the late release, the click away from the top) and the
// rule that wins is always on screen for anyone who looks before acting.
// None of them clicks back at the player: they only pass or fail.

#include "stations/level.h"

#include <cstdint>

namespace vorn {

// The big red button is bait: only the small brass plate, placed at random,
// ends the station. Pressing the big one just makes it flash.
class ButtonLevel final : public Level {
public:
    void setup(const LevelDef& def, Rng& rng, const Rect& area) override;
    LevelResult update(double dt, const InputState& in, AudioSystem& audio) override;
    void render(Graphics& g) override;

    Rect bigButton{};
    Rect target{};
    double flashTimer = 0.0;   // stepped by a fixed 16 ms per update, not by dt
};

// Press inside the bar and keep the button down for two seconds. Letting go
// early is quitting; once the hold has begun the pointer may wander off.
class HoldLevel final : public Level {
public:
    void setup(const LevelDef& def, Rng& rng, const Rect& area) override;
    LevelResult update(double dt, const InputState& in, AudioSystem& audio) override;
    void render(Graphics& g) override;

    Rect bar{};
    double requiredTime = 2.0;
    double heldTime = 0.0;
    bool holding = false;
};

// Charge the grip and, while it is charged, rest the pointer on the moving
// target. The grip only charges while the pointer is in it, and the target
// never comes near the grip: a one-handed employee cannot do both at once.
class TwoHandLevel final : public Level {
public:
    void setup(const LevelDef& def, Rng& rng, const Rect& area) override;
    LevelResult update(double dt, const InputState& in, AudioSystem& audio) override;
    void render(Graphics& g) override;

    Rect grip{};
    double targetSpeed = 0.0;   // px/s
    double targetX = 0.0;
    double targetY = 0.0;
    double charge = 0.0;        // 0..1
    double dwell = 0.0;         // seconds on the target while charged
    std::int32_t direction = 0; // +1 right, -1 left
    std::int32_t targetRadius = 0;
};

// A bar fills over a few seconds; any click before it is full, anywhere at
// all, fires the player. Only then does the GO button mean anything.
class PatienceLevel final : public Level {
public:
    void setup(const LevelDef& def, Rng& rng, const Rect& area) override;
    LevelResult update(double dt, const InputState& in, AudioSystem& audio) override;
    void render(Graphics& g) override;

    double elapsed = 0.0;
    double wait = 0.0;
    bool ready = false;
    Rect button{};
};

// A ring of dots with a gap that turns; press DASH while the gap is at the
// top. A press of DASH anywhere else on the turn fires the player.
class TimingLevel final : public Level {
public:
    void setup(const LevelDef& def, Rng& rng, const Rect& area) override;
    LevelResult update(double dt, const InputState& in, AudioSystem& audio) override;
    void render(Graphics& g) override;

    std::int32_t centerX = 0;
    std::int32_t centerY = 0;
    std::int32_t ringRadius = 0;
    double angle = 0.0;          // radians, screen y down: -pi/2 is the top
    double angularSpeed = 2.6;   // rad/s
    double tolerance = 0.5;      // rad either side of the top
    Rect button{};
};

// An orb circles; click it while it passes the zone at the top. Clicking the
// orb anywhere else fires the player; clicking the empty zone costs nothing.
class OrbitLevel final : public Level {
public:
    void setup(const LevelDef& def, Rng& rng, const Rect& area) override;
    LevelResult update(double dt, const InputState& in, AudioSystem& audio) override;
    void render(Graphics& g) override;

    std::int32_t centerX = 0;
    std::int32_t centerY = 0;
    std::int32_t orbitRadius = 130;
    std::int32_t orbRadius = 24;
    double angle = 0.0;          // radians, screen y down: -pi/2 is the top
    double angularSpeed = 2.2;   // rad/s
};

}  // namespace vorn
