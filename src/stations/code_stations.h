#pragma once
// Code-entry stations: keypads where one wrong key fires the player on the
// spot. The door pad has no labels at all, only four lit keys and an order
// the catalogue states; the petty-cash safe shows its code openly and then
// types something other than what each key says.

#include "stations/level.h"

#include <cstdint>

namespace vorn {

// A blank 3 x 3 pad with four keys lit: press them in reading order, once each.
class KeypadLevel final : public Level {
public:
    void setup(const LevelDef& def, Rng& rng, const Rect& area) override;
    LevelResult update(double dt, const InputState& in, AudioSystem& audio) override;
    void render(Graphics& g) override;

    bool isLit(std::int32_t key) const;

    Rect keys[9]{};              // reading order: row by row, left to right
    std::int32_t sequence[9]{};  // the lit keys, ascending; only the first `length` count
    std::int32_t length = 4;
    std::int32_t progress = 0;  // lit keys pressed correctly so far
};

// A ten-key pad under an openly printed three-digit code. Every key types one
// more than its label (the 9 wraps round to 0), so the honest key is always
// the wrong one.
class LiarKeypadLevel final : public Level {
public:
    void setup(const LevelDef& def, Rng& rng, const Rect& area) override;
    LevelResult update(double dt, const InputState& in, AudioSystem& audio) override;
    void render(Graphics& g) override;

    // What a key says on its face, and what it really types.
    static std::int32_t shownDigit(std::int32_t key);
    static std::int32_t typedDigit(std::int32_t key);

    std::int32_t code[3]{};
    std::int32_t progress = 0;  // digits entered correctly, 0..3
    Rect keys[10]{};
};

}  // namespace vorn
