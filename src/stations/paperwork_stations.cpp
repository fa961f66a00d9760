#include "stations/paperwork_stations.h"

#include "audio/audio_system.h"
#include "gfx/graphics.h"
#include "stations/station_kit.h"

#include <algorithm>
#include <cmath>

namespace vorn {

namespace {

// The pads are inked in a darker cut of the alarm red and terminal green:
// each channel times 0.6, in float, truncated.
constexpr Color dimmed(Color c) {
    return rgb(static_cast<int>(static_cast<float>(red(c)) * 0.6f),
               static_cast<int>(static_cast<float>(green(c)) * 0.6f),
               static_cast<int>(static_cast<float>(blue(c)) * 0.6f));
}

}  // namespace

Color stroopColor(std::int32_t index) {
    switch (index & 3) {
        case 0: return palette::alarmRed;
        case 1: return palette::terminalGreen;
        case 2: return palette::gold;
        default: return palette::signalBlue;
    }
}

const char* stroopWord(std::int32_t index) {
    static const char* const kWords[4] = {"RED", "GREEN", "AMBER", "BLUE"};
    return kWords[index & 3];
}

// ---------------------------------------------------------------------------
// The agreement

void EulaLevel::setup(const LevelDef& def, Rng& rng, const Rect& area) {
    Level::setup(def, rng, area);
    const int cx = area.x + area.w / 2;
    scroll = 0.0;
    // Late in the shift the small print runs faster.
    speed = number < 25 ? 26.0 : 42.0;
    lineCount = 18;
    exitLine = static_cast<std::int32_t>(rawDraw(rng) & 7u) + 6;
    viewHeight = area.h - 90;
    agreeButton = Rect{cx - 90, area.y + area.h - 54, 180, 40};
}

LevelResult EulaLevel::update(double dt, const InputState& in, AudioSystem& audio) {
    scroll += dt * speed;
    if (scroll > kLoopLength) {
        scroll -= kLoopLength;
    }
    if (!in.mousePressed) {
        return LevelResult::Running;
    }
    if (contains(agreeButton, in.mouseX, in.mouseY)) {
        audio.playFail();
        return LevelResult::Failed;
    }
    // The way out only answers while it sits between the top margin and the
    // foot of the text box: its band starts ten pixels lower than the band it
    // is drawn in, so the line can be seen at the very top and still ignore
    // the click.
    int ly = static_cast<int>(kLinePitch * exitLine + playArea.y + 30 - scroll);
    if (ly < playArea.y + 20) {
        ly += kLoopLength;
    }
    const int bandTop = playArea.y + 30;
    if (ly > bandTop && ly < bandTop + viewHeight && in.mouseX >= playArea.x + 30 &&
        in.mouseX < playArea.x + 390 && in.mouseY >= ly - 2 && in.mouseY < ly + 20) {
        audio.playPass();
        return LevelResult::Solved;
    }
    return LevelResult::Running;
}

void EulaLevel::render(Graphics& g) {
    const int top = playArea.y + 20;
    const int bottom = top + viewHeight;
    for (int i = 0; i < lineCount; ++i) {
        int y = static_cast<int>(playArea.y + 30 + kLinePitch * i - scroll);
        if (y < top || y > bottom) {
            y += kLoopLength;
            if (y < top || y > bottom) {
                continue;
            }
        }
        if (i == exitLine) {
            g.text("> by clicking HERE you may leave <", playArea.x + 30, y, TextSize::Small,
                   palette::terminalGreen, false, false);
            g.line(playArea.x + 30, y + 18, playArea.x + 360, y + 18, palette::midGreen, 1);
        } else {
            g.text("the party of the first part shall hereby...", playArea.x + 30, y, TextSize::Small,
                   palette::greyedOut, false, false);
        }
    }
    g.roundRect(agreeButton, 8, palette::paleGold, true);
    g.text("I AGREE", agreeButton.x + agreeButton.w / 2, agreeButton.y + agreeButton.h / 2,
           TextSize::Normal, palette::ink, true, true);
}

// ---------------------------------------------------------------------------
// The settings page

void SettingsLevel::setup(const LevelDef& def, Rng& rng, const Rect& area) {
    Level::setup(def, rng, area);
    const int cx = area.x + area.w / 2;
    toggle = Rect{cx - 160, area.y + 60, 70, 36};
    proceedButton = Rect{cx - 90, area.y + area.h - 70, 180, 48};
    enabled = false;
}

LevelResult SettingsLevel::update(double /*dt*/, const InputState& in, AudioSystem& audio) {
    if (!in.mousePressed) {
        return LevelResult::Running;
    }
    if (contains(toggle, in.mouseX, in.mouseY)) {
        enabled = !enabled;
        audio.playClick();
        return LevelResult::Running;
    }
    if (contains(proceedButton, in.mouseX, in.mouseY)) {
        // The page said not to; the page meant it.
        if (enabled) {
            audio.playFail();
            return LevelResult::Failed;
        }
        audio.playPass();
        return LevelResult::Solved;
    }
    return LevelResult::Running;
}

void SettingsLevel::render(Graphics& g) {
    g.text("DO NOT ENABLE EXIT", toggle.x, toggle.y - 30, TextSize::Normal, palette::orange, false, false);
    g.roundRect(toggle, 18, enabled ? palette::terminalGreen : palette::darkBrass, true);
    const int knobX = enabled ? toggle.x + toggle.w - 18 : toggle.x + 18;
    g.circle(knobX, toggle.y + 18, 14, palette::casingBeige, true);
    g.roundRect(proceedButton, 8, palette::brass, true);
    g.text("PROCEED", proceedButton.x + proceedButton.w / 2, proceedButton.y + proceedButton.h / 2,
           TextSize::Normal, palette::ink, true, true);
}

// ---------------------------------------------------------------------------
// The safety exam

void QuizLevel::setup(const LevelDef& def, Rng& rng, const Rect& area) {
    Level::setup(def, rng, area);
    count = 4;
    for (int i = 0; i < 4; ++i) {
        boxes[i] = Rect{area.x + 60, area.y + 70 + 62 * i, area.w - 120, 46};
    }
    answer = static_cast<std::int32_t>(rawDraw(rng) % 4u);
}

LevelResult QuizLevel::update(double /*dt*/, const InputState& in, AudioSystem& audio) {
    return pickOne(boxes, count, answer, in, audio);
}

void QuizLevel::render(Graphics& g) {
    const int cx = playArea.x + playArea.w / 2;
    g.text("SAFETY EXAM: SELECT THE CORRECT ANSWER", cx, playArea.y + 34, TextSize::Normal,
           palette::gold, true, false);
    // The labels fill the other boxes in order and run out before the blank
    // one: "D) Both A and C" exists only in the exam's answer key.
    static const char* const kLabels[3] = {"A) Always", "B) Never", "C) Only on Tuesdays"};
    int label = 0;
    for (int i = 0; i < count; ++i) {
        const Rect& b = boxes[i];
        g.roundRect(b, 6, palette::bronze, true);
        if (i != answer && label < 3) {
            g.text(kLabels[label], b.x + 16, b.y + 12, TextSize::Normal, palette::ink, false, false);
            ++label;
        }
    }
    instructionLine(g, playArea, "EVERY ANSWER IS WRONG");
}

// ---------------------------------------------------------------------------
// The reading test

void StroopLevel::setup(const LevelDef& def, Rng& rng, const Rect& area) {
    Level::setup(def, rng, area);
    const int cx = area.x + area.w / 2;
    word = static_cast<std::int32_t>(rawDraw(rng) & 3u);
    ink = static_cast<std::int32_t>(rawDraw(rng) & 3u);
    // A word in its own colour would be no test at all: bump the ink along.
    if (ink == word) {
        ink = (ink + 1) & 3;
    }
    const int left[4] = {cx - 256, cx - 122, cx + 12, cx + 146};
    for (int i = 0; i < 4; ++i) {
        swatches[i] = Rect{left[i], area.y + area.h / 2, 110, 110};
        swatchColors[i] = i;
    }
    shuffle(rng, swatchColors);
}

LevelResult StroopLevel::update(double /*dt*/, const InputState& in, AudioSystem& audio) {
    if (!in.mousePressed) {
        return LevelResult::Running;
    }
    for (int i = 0; i < 4; ++i) {
        if (contains(swatches[i], in.mouseX, in.mouseY)) {
            if (swatchColors[i] == word) {
                audio.playPass();
                return LevelResult::Solved;
            }
            audio.playFail();
            return LevelResult::Failed;
        }
    }
    return LevelResult::Running;
}

void StroopLevel::render(Graphics& g) {
    const int cx = playArea.x + playArea.w / 2;
    g.text(stroopWord(word), cx, playArea.y + 60, TextSize::Giant, stroopColor(ink), true, true);
    g.text("click the swatch of this WORD (ignore its colour)", cx, playArea.y + 120,
           TextSize::Small, palette::orange, true, true);
    for (int i = 0; i < 4; ++i) {
        g.roundRect(swatches[i], 10, stroopColor(swatchColors[i]), true);
    }
    instructionLine(g, playArea, "MEANING, NOT INK");
}

// ---------------------------------------------------------------------------
// The stamp pads

void StampLevel::setup(const LevelDef& def, Rng& rng, const Rect& area) {
    Level::setup(def, rng, area);
    swapped = (rawDraw(rng) >> 31) != 0u;
    const int y = area.y + area.h / 2 - 70;
    leftPad = Rect{area.x + area.w / 4 - 90, y, 180, 140};
    rightPad = Rect{area.x + (3 * area.w) / 4 - 90, y, 180, 140};
}

LevelResult StampLevel::update(double /*dt*/, const InputState& in, AudioSystem& audio) {
    if (!in.mousePressed) {
        return LevelResult::Running;
    }
    if (contains(rejectedPad(), in.mouseX, in.mouseY)) {
        audio.playPass();
        return LevelResult::Solved;
    }
    if (contains(approvedPad(), in.mouseX, in.mouseY)) {
        audio.playFail();
        return LevelResult::Failed;
    }
    return LevelResult::Running;
}

void StampLevel::render(Graphics& g) {
    // No rule of its own on screen: the catalogue tells the player the
    // applicant is a fraud, and the green pad still looks like the right one.
    const Rect& rejected = rejectedPad();
    const Rect& approved = approvedPad();
    g.roundRect(rejected, 8, dimmed(palette::alarmRed), true);
    g.roundRect(approved, 8, dimmed(palette::terminalGreen), true);
    g.text("REJECTED", rejected.x + rejected.w / 2, rejected.y + rejected.h / 2, TextSize::Normal,
           palette::ink, true, true);
    g.text("APPROVED", approved.x + approved.w / 2, approved.y + approved.h / 2, TextSize::Normal,
           palette::ink, true, true);
}

// ---------------------------------------------------------------------------
// The backwards conveyor

void ReverseLevel::setup(const LevelDef& def, Rng& rng, const Rect& area) {
    Level::setup(def, rng, area);
    const int cx = area.x + area.w / 2;
    position = 0.5;
    target = (rawDraw(rng) & 1u) == 1u ? 0.12 : 0.88;
    leftButton = Rect{cx - 170, area.y + area.h - 60, 140, 44};
    rightButton = Rect{cx + 30, area.y + area.h - 60, 140, 44};
    track = Rect{area.x + 60, area.y + area.h / 2 - 10, area.w - 120, 20};
}

LevelResult ReverseLevel::update(double /*dt*/, const InputState& in, AudioSystem& audio) {
    if (!in.mousePressed) {
        return LevelResult::Running;
    }
    // Wired backwards on purpose: "<< LEFT" pushes the knob right.
    if (contains(leftButton, in.mouseX, in.mouseY)) {
        position = std::min(position + 0.08, 1.0);
        audio.playClick();
    } else if (contains(rightButton, in.mouseX, in.mouseY)) {
        position = std::max(position - 0.08, 0.0);
        audio.playClick();
    }
    if (std::fabs(position - target) < 0.04) {
        audio.playPass();
        return LevelResult::Solved;
    }
    return LevelResult::Running;
}

void ReverseLevel::render(Graphics& g) {
    g.roundRect(track, 6, palette::charcoal, true);
    g.rect({track.x - 4 + static_cast<int>(track.w * target), track.y - 8, 8, track.h + 16},
           palette::terminalGreen, true);
    g.circle(track.x + static_cast<int>(track.w * position), track.y + track.h / 2, 14,
             palette::alarmRed, true);
    g.roundRect(leftButton, 8, palette::castBrass, true);
    g.roundRect(rightButton, 8, palette::castBrass, true);
    g.text("<< LEFT", leftButton.x + leftButton.w / 2, leftButton.y + 22, TextSize::Normal, palette::ink,
           true, true);
    g.text("RIGHT >>", rightButton.x + rightButton.w / 2, rightButton.y + 22, TextSize::Normal, palette::ink,
           true, true);
    instructionLine(g, playArea, "CONTROLS ARE INVERTED");
}

// ---------------------------------------------------------------------------
// The odd tile

void GenericLevel::setup(const LevelDef& def, Rng& rng, const Rect& area) {
    Level::setup(def, rng, area);
    const int cx = area.x + area.w / 2;
    count = 6;
    for (int i = 0; i < 6; ++i) {
        boxes[i] = Rect{cx - 249 + 174 * (i % 3), area.y + 20 + 134 * (i / 3), 150, 110};
    }
    answer = uniformInt(rng, 0, 5);
}

LevelResult GenericLevel::update(double /*dt*/, const InputState& in, AudioSystem& audio) {
    return pickOne(boxes, count, answer, in, audio);
}

void GenericLevel::render(Graphics& g) {
    // No text at all: the odd tile is told only by its shade.
    for (int i = 0; i < count; ++i) {
        const Rect& b = boxes[i];
        const bool odd = i == answer;
        g.roundRect(b, 8, odd ? rgb(189, 146, 50) : palette::boltBrass, true);
        g.rect({b.x + 6, b.y + 6, b.w - 12, b.h - 12}, odd ? palette::greenScreen : palette::ink, true);
    }
}

}  // namespace vorn
