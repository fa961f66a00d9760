#pragma once
// Control-panel stations: levers, fuses and a hand wheel, the hardware of the
// plant floor. Each looks like honest machinery and each hides one rule the
// player learns the hard way: the levers may already be safe, the fuse box
// bites while it is live, the valve's own label points the wrong way, and
// the start-up checklist fires anyone who dashes before the switch.

#include "stations/level.h"

#include <cstdint>

namespace vorn {

// A row of six breaker levers, each up (amber) or down (green) at random.
// Every lever down passes, and the test runs every frame, so a row that
// starts all down passes before the player touches anything.
class SwitchesLevel final : public Level {
public:
    void setup(const LevelDef& def, Rng& rng, const Rect& area) override;
    LevelResult update(double dt, const InputState& in, AudioSystem& audio) override;
    void render(Graphics& g) override;

    std::int32_t count = 6;
    bool up[6]{};
    Rect rects[6]{};
};

// Five fuses, one blown, under a master switch that starts LIVE. The only
// way through is the electrician's: master off, swap the fuse, master on.
// Touching the blown fuse under power fires the player.
class FuseboxLevel final : public Level {
public:
    void setup(const LevelDef& def, Rng& rng, const Rect& area) override;
    LevelResult update(double dt, const InputState& in, AudioSystem& audio) override;
    void render(Graphics& g) override;

    Rect master{};
    std::int32_t fuseCount = 5;
    Rect fuses[5]{};
    std::int32_t blown = 0;
    bool live = true;        // the master switch: power on
    bool replaced = false;   // the blown fuse has been swapped
};

// A hand wheel beside a pressure gauge. Grab the wheel and drag sideways to
// turn it; the gauge must reach its target mark. The wheel is labelled
// "OPEN >", but dragging right drains the gauge: the label is the lie.
class ValveLevel final : public Level {
public:
    void setup(const LevelDef& def, Rng& rng, const Rect& area) override;
    LevelResult update(double dt, const InputState& in, AudioSystem& audio) override;
    void render(Graphics& g) override;

    std::int32_t cx = 0;
    std::int32_t cy = 0;
    std::int32_t radius = 86;
    bool grabbed = false;
    std::int32_t lastX = 0;   // pointer x at the previous frame of the drag
    double fill = 0.15;       // the gauge, 0..1
    double angle = 0.0;       // the wheel's turn in degrees, unbounded
    bool emptied = false;     // the gauge once ran dry; nobody checks
};

// The start-up checklist: switch 1, valve 2 (which fills by dragging left,
// like the other valve), then the dash button 3. Dashing before the switch
// fires the player; once the switch is thrown, an early dash is only ignored.
class GauntletLevel final : public Level {
public:
    void setup(const LevelDef& def, Rng& rng, const Rect& area) override;
    LevelResult update(double dt, const InputState& in, AudioSystem& audio) override;
    void render(Graphics& g) override;

    std::int32_t stage = 0;   // 0 switch, 1 valve, 2 dash
    Rect switchRect{};
    Rect dashRect{};
    std::int32_t valveX = 0;
    std::int32_t valveY = 0;
    double angle = 0.0;   // degrees
    double fill = 0.15;   // 0..1
    std::int32_t lastX = 0;
    bool grabbed = false;
};

}  // namespace vorn
