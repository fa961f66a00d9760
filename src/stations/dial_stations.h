#pragma once
// Dials, sliders and a balance: the stations where the hand has to stop in
// the right place. Each one shows the player a true picture and then lies
// about how much of it counts: the dial's green band is wider than what it
// accepts, the combination lock counts a number only when the dial arrives on
// it, the sliders only pass all together, and the scale's readout is off by a
// hidden amount. None of them can fire the player; only the clock can.

#include "stations/level.h"

#include <cstdint>

namespace vorn {

// Turn a knob by dragging sideways until the needle sits in the green band.
// Going too far snaps the knob back to zero with the fail buzzer.
class DialLevel final : public Level {
public:
    void setup(const LevelDef& def, Rng& rng, const Rect& area) override;
    LevelResult update(double dt, const InputState& in, AudioSystem& audio) override;
    void render(Graphics& g) override;

    std::int32_t centerX = 0;
    std::int32_t centerY = 0;
    std::int32_t radius = 0;
    double target = 0.0;  // middle of the accepted band, as a fraction of a turn
    double value = 0.0;   // the knob's turn, never below 0
    bool grabbed = false;
    std::int32_t lastX = 0;
};

// A combination lock stepped one number per click: the top half turns it
// clockwise, the bottom half back. The code is printed right above it.
class ComboLevel final : public Level {
public:
    void setup(const LevelDef& def, Rng& rng, const Rect& area) override;
    LevelResult update(double dt, const InputState& in, AudioSystem& audio) override;
    void render(Graphics& g) override;

    std::int32_t code[3]{};
    std::int32_t position = 0;  // the number under the pointer, 0..11
    std::int32_t stage = 0;     // code numbers landed so far
    std::int32_t centerX = 0;
    std::int32_t centerY = 0;
    std::int32_t radius = 0;
};

// Three vertical sliders, each with a faint ghost mark; all three must sit on
// their marks at once.
class CalibrateLevel final : public Level {
public:
    void setup(const LevelDef& def, Rng& rng, const Rect& area) override;
    LevelResult update(double dt, const InputState& in, AudioSystem& audio) override;
    void render(Graphics& g) override;

    double target[3]{};
    double value[3]{};  // 0 at the bottom of a track, 1 at the top
    Rect tracks[3]{};
    std::int32_t active = -1;  // the slider being dragged, -1 for none
};

// A beam balance loaded in steps of five. The readout under it adds a hidden
// offset, so only the beam itself tells the truth.
class ScaleLevel final : public Level {
public:
    void setup(const LevelDef& def, Rng& rng, const Rect& area) override;
    LevelResult update(double dt, const InputState& in, AudioSystem& audio) override;
    void render(Graphics& g) override;

    std::int32_t target = 0;         // the weight that levels the beam
    std::int32_t weight = 0;         // on the beam now, never below 0
    std::int32_t readoutOffset = 0;  // added to the weight in the shown number
    Rect addButton{};
    Rect removeButton{};
};

}  // namespace vorn
