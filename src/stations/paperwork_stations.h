#pragma once
// Paperwork and trick stations: they test reading rather than reflexes, and
// each one offers an obvious move that is wrong. The agreement fires whoever
// agrees to it, the settings page fires whoever enables what it forbids, the
// exam's only right answer is the box with nothing written in it, the reading
// test prints its colour word in another ink, the stamp that passes is
// REJECTED, and the conveyor's buttons push the knob the other way. The
// generic station is here too: six tiles, one a shade lighter, and the
// fallback for any catalogue type the factory does not know.

#include "gfx/color.h"
#include "stations/level.h"

#include <cstdint>

namespace vorn {

// A scrolling agreement. "I AGREE" is the bait and fires the player; the way
// out is one green line that scrolls by with the small print.
class EulaLevel final : public Level {
public:
    void setup(const LevelDef& def, Rng& rng, const Rect& area) override;
    LevelResult update(double dt, const InputState& in, AudioSystem& audio) override;
    void render(Graphics& g) override;

    // The small print loops: 18 lines 22 pixels apart.
    static constexpr int kLinePitch = 22;
    static constexpr int kLoopLength = 18 * kLinePitch;

    double scroll = 0.0;         // pixels scrolled, wrapping at the loop length
    double speed = 0.0;          // pixels a second
    std::int32_t lineCount = 18;
    std::int32_t exitLine = 0;   // the one clickable line, 6..13
    std::int32_t viewHeight = 0;
    Rect agreeButton{};
};

// A settings page with one tempting toggle. Proceeding with it enabled fires
// the player; leaving it off (or flipping it back) passes.
class SettingsLevel final : public Level {
public:
    void setup(const LevelDef& def, Rng& rng, const Rect& area) override;
    LevelResult update(double dt, const InputState& in, AudioSystem& audio) override;
    void render(Graphics& g) override;

    Rect toggle{};
    Rect proceedButton{};
    bool enabled = false;
};

// A safety exam of four boxes. Every labelled answer is wrong: the right one
// is the box left blank. Its leading fields match GenericLevel's, and both
// play by the same click-one-box rule.
class QuizLevel final : public Level {
public:
    void setup(const LevelDef& def, Rng& rng, const Rect& area) override;
    LevelResult update(double dt, const InputState& in, AudioSystem& audio) override;
    void render(Graphics& g) override;

    std::int32_t count = 4;
    std::int32_t answer = 0;   // the blank box
    Rect boxes[4]{};
};

// A colour word printed in another colour's ink. The swatch that passes is
// the one the word names; the ink's swatch is the one the eye goes to.
class StroopLevel final : public Level {
public:
    void setup(const LevelDef& def, Rng& rng, const Rect& area) override;
    LevelResult update(double dt, const InputState& in, AudioSystem& audio) override;
    void render(Graphics& g) override;

    std::int32_t word = 0;   // colour index the word names, 0..3
    std::int32_t ink = 0;    // colour index it is printed in, never the word's
    Rect swatches[4]{};
    std::int32_t swatchColors[4]{0, 1, 2, 3};
};

// Two stamp pads for a known fraud's application. The friendly green
// APPROVED fires the player; REJECTED passes. The pads swap sides at random.
class StampLevel final : public Level {
public:
    void setup(const LevelDef& def, Rng& rng, const Rect& area) override;
    LevelResult update(double dt, const InputState& in, AudioSystem& audio) override;
    void render(Graphics& g) override;

    Rect leftPad{};
    Rect rightPad{};
    bool swapped = false;   // set: the left pad is REJECTED

    const Rect& rejectedPad() const { return swapped ? leftPad : rightPad; }
    const Rect& approvedPad() const { return swapped ? rightPad : leftPad; }
};

// A conveyor knob to put on a mark with two buttons that are wired backwards.
// It cannot be failed, only run out of time on.
class ReverseLevel final : public Level {
public:
    void setup(const LevelDef& def, Rng& rng, const Rect& area) override;
    LevelResult update(double dt, const InputState& in, AudioSystem& audio) override;
    void render(Graphics& g) override;

    double position = 0.5;   // 0 at the track's left end, 1 at its right
    double target = 0.0;     // 0.12 or 0.88
    Rect leftButton{};
    Rect rightButton{};
    Rect track{};
};

// Six blank tiles, one a shade lighter; the catalogue says to pick that one.
class GenericLevel final : public Level {
public:
    void setup(const LevelDef& def, Rng& rng, const Rect& area) override;
    LevelResult update(double dt, const InputState& in, AudioSystem& audio) override;
    void render(Graphics& g) override;

    std::int32_t count = 6;
    std::int32_t answer = 0;   // the odd tile
    Rect boxes[6]{};
};

// The four colours of the reading test, by colour index.
Color stroopColor(std::int32_t index);
const char* stroopWord(std::int32_t index);

}  // namespace vorn
