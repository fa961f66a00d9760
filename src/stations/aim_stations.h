#pragma once
// Aim and pointer stations: they test where the pointer goes and how it gets
// there. Pop-ups to swat and pop-ups to leave alone, a lit desk to sign off
// twice, a drifting dot inside a ring that must not be touched, a button that
// runs from a hasty hand, a greased slider that slides home on its own, and a
// hidden spot found only by the glow. Whack and DoubleClick keep drawing from
// the run's engine while they are played, so how long the player takes
// changes every station after them.

#include "stations/level.h"

#include <cstdint>

namespace vorn {

// Greens must be swatted before they vanish; a red one touched once fires you.
class WhackLevel final : public Level {
public:
    void setup(const LevelDef& def, Rng& rng, const Rect& area) override;
    LevelResult update(double dt, const InputState& in, AudioSystem& audio) override;
    void render(Graphics& g) override;

    struct Slot {
        bool active = false;
        bool red = false;
        std::int32_t x = 0;
        std::int32_t y = 0;
        std::int32_t radius = 30;
        double life = 0.0;   // seconds until it ducks away again
    };

    Slot slots[6]{};
    std::int32_t goal = 0;      // six greens, eight late in the shift
    std::int32_t hits = 0;
    std::int32_t strikes = 0;      // greens that got away
    double spawnTimer = 0.0;
    Rng* rng = nullptr;            // the run's engine: pop-ups are drawn during play

private:
    void spawn();
};

// One of eight desks is lit and wants two clicks in quick succession; the
// light wanders off every 1.4 s and a click on a dark desk fires you.
class DoubleClickLevel final : public Level {
public:
    void setup(const LevelDef& def, Rng& rng, const Rect& area) override;
    LevelResult update(double dt, const InputState& in, AudioSystem& audio) override;
    void render(Graphics& g) override;

    Rect cells[8]{};
    std::int32_t columns = 4;
    std::int32_t rows = 2;
    std::int32_t cellCount = 8;
    std::int32_t litCell = 0;
    std::int32_t armedCell = -1;   // the lit desk after its first click
    double litTimer = 0.0;
    double armedTime = -1.0;       // station clock at the first click
    double clock = 0.0;            // stands still on the frames of a click on a desk
    Rng* rng = nullptr;            // the run's engine: the light is drawn during play
};

// A tiny dot drifts and bounces inside a ring: the dot passes, the ring fires.
class PrecisionLevel final : public Level {
public:
    void setup(const LevelDef& def, Rng& rng, const Rect& area) override;
    LevelResult update(double dt, const InputState& in, AudioSystem& audio) override;
    void render(Graphics& g) override;

    double x = 0.0;
    double y = 0.0;
    double vx = 0.0;   // px/s
    double vy = 0.0;
    std::int32_t dotRadius = 9;
    std::int32_t ringRadius = 44;
};

// A button that shies away from a fast pointer; only a calm approach catches it.
class DecoyLevel final : public Level {
public:
    void setup(const LevelDef& def, Rng& rng, const Rect& area) override;
    LevelResult update(double dt, const InputState& in, AudioSystem& audio) override;
    void render(Graphics& g) override;

    double x = 0.0;
    double y = 0.0;
    double radius = 34.0;
    double lastX = 0.0;   // the pointer one frame ago, for its speed
    double lastY = 0.0;
    double calm = 0.0;    // 0..1; it can be caught from 0.9 on
};

// A slider whose knob slides back to the middle unless it is held on the mark.
class GreasedLevel final : public Level {
public:
    void setup(const LevelDef& def, Rng& rng, const Rect& area) override;
    LevelResult update(double dt, const InputState& in, AudioSystem& audio) override;
    void render(Graphics& g) override;

    double value = 0.0;   // knob position along the track, 0..1
    double mark = 0.0;
    double dwell = 0.0;   // seconds the knob has sat on the mark
    bool dragging = false;
    Rect track{};
};

// An invisible spot; the play area glows warmer as the pointer nears it.
class HotColdLevel final : public Level {
public:
    void setup(const LevelDef& def, Rng& rng, const Rect& area) override;
    LevelResult update(double dt, const InputState& in, AudioSystem& audio) override;
    void render(Graphics& g) override;

    std::int32_t spotX = 0;
    std::int32_t spotY = 0;
    std::int32_t spotRadius = 46;
    double heat = 0.0;   // 0..1
};

}  // namespace vorn
