#pragma once
// Memory stations: each one shows the player something and then asks for it
// back, or sets a trap for the memory. Most have two phases, a show that
// ignores the mouse and an answer that punishes the first wrong press. Simon,
// anti-Simon and the filing cabinet keep hold of the run's engine because they
// draw again in the middle of play; everything they draw comes from that one
// engine, so a seed still replays the whole shift.

#include "stations/level.h"

#include <cstdint>
#include <vector>

namespace vorn {

// Watch a growing sequence of pads and play it back. Every round shows the
// whole sequence again from the top, one pad longer, until it is maxLength.
class SimonLevel final : public Level {
public:
    void setup(const LevelDef& def, Rng& rng, const Rect& area) override;
    LevelResult update(double dt, const InputState& in, AudioSystem& audio) override;
    void render(Graphics& g) override;

    std::vector<std::int32_t> sequence;   // pad numbers 0..3
    Rect pads[4]{};                       // top left, top right, bottom left, bottom right
    std::int32_t maxLength = 0;
    std::int32_t inputIndex = 0;
    std::int32_t litPad = -1;             // -1: nothing lit
    bool showing = false;
    double showTimer = 0.0;
    Rng* rng = nullptr;                   // the run's engine: each round adds a pad
};

// The pad that flashes is the one pad not to touch; it moves every 0.9 s,
// possibly onto a pad already ticked off.
class AntiSimonLevel final : public Level {
public:
    void setup(const LevelDef& def, Rng& rng, const Rect& area) override;
    LevelResult update(double dt, const InputState& in, AudioSystem& audio) override;
    void render(Graphics& g) override;

    Rect pads[4]{};
    bool done[4]{};
    std::int32_t flashingPad = 0;
    double flashTimer = 0.0;
    Rng* rng = nullptr;                   // the run's engine: every flash is a fresh draw
};

// Three switches that must be thrown right to left. Reading habits say
// left first; the first switch on the left fires the player.
class SequenceLevel final : public Level {
public:
    void setup(const LevelDef& def, Rng& rng, const Rect& area) override;
    LevelResult update(double dt, const InputState& in, AudioSystem& audio) override;
    void render(Graphics& g) override;

    std::int32_t switchCount = 3;
    std::int32_t nextExpected = 0;
    bool pressed[3]{};
    Rect switches[3]{};
};

// Spots light up one after another and vanish; the player clicks them back
// in the same order with nothing on screen to aim at.
class RecallLevel final : public Level {
public:
    struct Spot {
        std::int32_t x = 0;
        std::int32_t y = 0;
    };

    void setup(const LevelDef& def, Rng& rng, const Rect& area) override;
    LevelResult update(double dt, const InputState& in, AudioSystem& audio) override;
    void render(Graphics& g) override;

    Spot spots[6]{};
    std::int32_t spotCount = 0;
    std::int32_t index = 0;    // while showing: the spot lit; while answering: the spot asked for
    bool showing = false;
    double showTimer = 0.0;
};

// A pairs game. The cabinet "tidies up" once: right after the first card is
// turned, every face-down card is reshuffled, so whatever the player noted
// before that first flip is worthless.
class MemoryLevel final : public Level {
public:
    void setup(const LevelDef& def, Rng& rng, const Rect& area) override;
    LevelResult update(double dt, const InputState& in, AudioSystem& audio) override;
    void render(Graphics& g) override;

    std::int32_t columns = 0;
    std::int32_t cardCount = 0;
    std::int32_t placementColumns = 0;
    std::int32_t rows = 2;
    Rect cards[12]{};               // by position
    std::int32_t pairValue[12]{};   // by card
    std::int32_t dealOrder[12]{};   // by position: the card lying there
    bool revealed[14]{};            // by card
    bool matched[14]{};             // by card
    std::int32_t firstPick = -1;    // a card, -1 for none
    bool peeked = false;            // the first card has been turned (and the deck tidied)
    double mismatchTimer = 0.0;
    Rng* rng = nullptr;             // the run's engine: the tidy-up shuffles during play
};

// A lamp blinks four symbols, short or long; the player keys them back.
// Only a press held past 0.35 s is long, and only a press that starts on
// the key counts at all.
class MorseLevel final : public Level {
public:
    void setup(const LevelDef& def, Rng& rng, const Rect& area) override;
    LevelResult update(double dt, const InputState& in, AudioSystem& audio) override;
    void render(Graphics& g) override;

    std::int32_t symbolCount = 4;
    std::int32_t symbols[4]{};   // 1 long, 0 short
    std::int32_t inputIndex = 0;
    std::int32_t shownIndex = 0;
    Rect key{};
    Rect lamp{};
    double pressTime = 0.0;
    double showTimer = 0.0;
    bool showing = false;
    bool lampOn = false;
    bool pressing = false;
};

}  // namespace vorn
