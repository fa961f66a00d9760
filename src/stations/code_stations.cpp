#include "stations/code_stations.h"

#include "audio/audio_system.h"
#include "gfx/graphics.h"
#include "stations/station_kit.h"

#include <algorithm>

namespace vorn {

namespace {

// The first key (in index order) under the pointer, or -1.
int keyUnder(const Rect* keys, int count, const InputState& in) {
    for (int i = 0; i < count; ++i) {
        if (contains(keys[i], in.mouseX, in.mouseY)) {
            return i;
        }
    }
    return -1;
}

}  // namespace

// ---------------------------------------------------------------- Keypad

void KeypadLevel::setup(const LevelDef& def, Rng& rng, const Rect& area) {
    Level::setup(def, rng, area);
    const int cx = area.x + area.w / 2;
    for (int r = 0; r < 3; ++r) {
        for (int c = 0; c < 3; ++c) {
            keys[3 * r + c] = Rect{cx - 117 + 82 * c, area.y + 20 + 76 * r, 70, 64};
        }
    }
    std::int32_t deck[9] = {0, 1, 2, 3, 4, 5, 6, 7, 8};
    shuffle(rng, deck);
    length = 4;
    std::copy(deck, deck + length, sequence);
    std::sort(sequence, sequence + length);
    progress = 0;
}

bool KeypadLevel::isLit(std::int32_t key) const {
    return std::find(sequence, sequence + length, key) != sequence + length;
}

LevelResult KeypadLevel::update(double /*dt*/, const InputState& in, AudioSystem& audio) {
    if (!in.mousePressed) {
        return LevelResult::Running;
    }
    const int key = keyUnder(keys, 9, in);
    if (key < 0) {
        return LevelResult::Running;
    }
    // Pressed keys stay lit, so pressing one again looks harmless; it is out
    // of order like any other and fails the same way.
    if (!isLit(key) || key != sequence[progress]) {
        audio.playFail();
        return LevelResult::Failed;
    }
    audio.playClick();
    ++progress;
    if (progress == length) {
        audio.playPass();
        return LevelResult::Solved;
    }
    return LevelResult::Running;
}

void KeypadLevel::render(Graphics& g) {
    // No labels and no hint of progress: the pad gives nothing away beyond
    // which keys are lit.
    for (int i = 0; i < 9; ++i) {
        const Rect& k = keys[i];
        const bool lit = isLit(i);
        g.roundRect(k, 6, lit ? rgb(169, 130, 45) : palette::unlitKey, true);
        g.rect({k.x + 4, k.y + 4, k.w - 8, k.h - 8}, lit ? palette::casingBeige : rgb(151, 139, 109),
               true);
    }
}

// ---------------------------------------------------------------- LiarKeypad

std::int32_t LiarKeypadLevel::shownDigit(std::int32_t key) { return key == 9 ? 0 : key + 1; }

std::int32_t LiarKeypadLevel::typedDigit(std::int32_t key) { return (shownDigit(key) + 1) % 10; }

void LiarKeypadLevel::setup(const LevelDef& def, Rng& rng, const Rect& area) {
    Level::setup(def, rng, area);
    for (std::int32_t& digit : code) {
        digit = uniformInt(rng, 0, 9);
    }
    progress = 0;
    const int cx = area.x + area.w / 2;
    for (int k = 0; k < 9; ++k) {
        keys[k] = Rect{cx - 140 + 98 * (k % 3), area.y + 90 + 78 * (k / 3), 84, 64};
    }
    keys[9] = Rect{cx - 42, area.y + 324, 84, 64};
}

LevelResult LiarKeypadLevel::update(double /*dt*/, const InputState& in, AudioSystem& audio) {
    if (!in.mousePressed) {
        return LevelResult::Running;
    }
    const int key = keyUnder(keys, 10, in);
    if (key < 0) {
        return LevelResult::Running;
    }
    if (typedDigit(key) != code[progress]) {
        audio.playFail();
        return LevelResult::Failed;
    }
    audio.playClick();
    ++progress;
    if (progress == 3) {
        audio.playPass();
        return LevelResult::Solved;
    }
    return LevelResult::Running;
}

void LiarKeypadLevel::render(Graphics& g) {
    const int cx = playArea.x + playArea.w / 2;
    // The code is shown honestly; it is the keys that lie.
    char line[48];
    Graphics::formatInto(line, sizeof line, "ENTER CODE:  %d %d %d", code[0], code[1], code[2]);
    g.text(line, cx, playArea.y + 40, TextSize::Large, palette::gold, true, true);
    char label[16];
    for (int k = 0; k < 10; ++k) {
        const Rect& r = keys[k];
        g.roundRect(r, 6, palette::oldBrass, true);
        Graphics::formatInto(label, sizeof label, "%d", shownDigit(k));
        g.text(label, r.x + r.w / 2, r.y + r.h / 2, TextSize::Large, palette::ink, true, true);
    }
    for (int i = 0; i < 3; ++i) {
        g.circle(cx - 20 + 20 * i, playArea.y + 74, 6,
                 progress > i ? palette::terminalGreen : palette::soot, true);
    }
    instructionLine(g, playArea, "THE KEYS LIE \xE2\x80\x94 EACH TYPES ONE MORE THAN IT SHOWS");
}

}  // namespace vorn
