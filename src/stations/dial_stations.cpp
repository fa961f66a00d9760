#include "stations/dial_stations.h"

#include "audio/audio_system.h"
#include "gfx/graphics.h"
#include "stations/station_kit.h"

#include <cmath>
#include <cstdlib>

namespace vorn {

namespace {

constexpr double kPi = 3.14159265358979323846;

// Dials are read like a clock face: a fraction of a turn, clockwise from
// twelve o'clock (screen y grows downwards).
double dialAngle(double fraction) { return 2.0 * kPi * fraction - kPi / 2.0; }

// Where a point at `r` pixels out along a dial fraction lands, truncated the
// way every dial marking is placed.
int dialX(int cx, int r, double fraction) {
    return cx + static_cast<int>(std::cos(dialAngle(fraction)) * r);
}
int dialY(int cy, int r, double fraction) {
    return cy + static_cast<int>(std::sin(dialAngle(fraction)) * r);
}

// A brass rim around a dark well: the face both dials are drawn on.
void dialFace(Graphics& g, int cx, int cy, int outer, int inner) {
    g.circle(cx, cy, outer, palette::darkBrass, true);
    g.circle(cx, cy, inner, palette::ink, true);
}

}  // namespace

// ---------------------------------------------------------------- Dial

void DialLevel::setup(const LevelDef& def, Rng& rng, const Rect& area) {
    Level::setup(def, rng, area);
    centerX = area.x + area.w / 2;
    centerY = area.y + area.h / 2;
    radius = 90;
    target = 0.55 + 0.25 * uniformReal(rng);
    value = 0.0;
    grabbed = false;
    lastX = 0;
}

LevelResult DialLevel::update(double /*dt*/, const InputState& in, AudioSystem& audio) {
    const bool inReach = distance(in.mouseX, in.mouseY, centerX, centerY) < radius + 20;
    const int dx = sidewaysDrag(in, inReach, grabbed, lastX);
    if (grabbed) {
        value += 0.0025 * dx;
        if (value < 0.0) {
            value = 0.0;  // the knob has a stop at zero; winding it back further does nothing
        }
        if (value > target + 0.08) {
            // Overshooting is not a firing offence, but the thermostat sulks
            // and starts again from cold.
            value = 0.0;
            audio.playFail();
            return LevelResult::Running;
        }
    }
    // Only the middle of the green band counts: the paint is generous, the
    // sensor is not.
    if (value >= target - 0.03 && value <= target + 0.03) {
        audio.playPass();
        return LevelResult::Solved;
    }
    return LevelResult::Running;
}

void DialLevel::render(Graphics& g) {
    dialFace(g, centerX, centerY, radius, radius - 12);
    // The band is painted 0.05 either side of the target, wider than the 0.03
    // that is accepted: its edges look safe and are not.
    g.arc(centerX, centerY, radius - 6, dialAngle(target - 0.05), dialAngle(target + 0.05), 10,
          palette::terminalGreen);
    g.line(centerX, centerY, dialX(centerX, radius - 20, value), dialY(centerY, radius - 20, value),
           palette::alarmRed, 5);
    g.circle(centerX, centerY, 12, palette::brass, true);
}

// ---------------------------------------------------------------- Combo

void ComboLevel::setup(const LevelDef& def, Rng& rng, const Rect& area) {
    Level::setup(def, rng, area);
    for (std::int32_t& number : code) {
        number = uniformInt(rng, 0, 11);
    }
    position = 0;
    stage = 0;
    centerX = area.x + area.w / 2;
    centerY = area.y + area.h / 2;
    radius = 120;
}

LevelResult ComboLevel::update(double /*dt*/, const InputState& in, AudioSystem& audio) {
    if (!in.mousePressed || distance(in.mouseX, in.mouseY, centerX, centerY) >= radius + 40) {
        return LevelResult::Running;
    }
    position = in.mouseY < centerY ? (position + 1) % 12 : (position + 11) % 12;
    audio.playClick();
    // A number counts the moment the dial arrives on it, from either side.
    // Resting on it from before does not: a repeated number, or a first
    // number of 0, needs a step away and back.
    if (position == code[stage]) {
        ++stage;
        audio.playClick();
        if (stage == 3) {
            audio.playPass();
            return LevelResult::Solved;
        }
    }
    return LevelResult::Running;
}

void ComboLevel::render(Graphics& g) {
    dialFace(g, centerX, centerY, 120, 112);
    char label[16];
    for (int i = 0; i < 12; ++i) {
        const double f = i / 12.0;
        Graphics::formatInto(label, sizeof label, "%d", i);
        g.text(label, dialX(centerX, 98, f), dialY(centerY, 98, f), TextSize::Small,
               i == position ? palette::terminalGreen : rgb(153, 102, 27), true, true);
    }
    const double pointer = position / 12.0;
    g.line(centerX, centerY, dialX(centerX, 90, pointer), dialY(centerY, 90, pointer),
           palette::alarmRed, 4);
    // The code is no secret; the trick is in what counts as dialling it.
    char header[64];
    Graphics::formatInto(header, sizeof header, "COMBO: %d - %d - %d   (stage %d)", code[0],
                         code[1], code[2], stage + 1);
    g.text(header, playArea.x + playArea.w / 2, playArea.y + 30, TextSize::Normal, palette::gold,
           true, true);
    instructionLine(g, playArea,
                    "CLICK UPPER=CW, LOWER=CCW \xE2\x80\x94 LAND EACH NUMBER IN ORDER");
}

// ---------------------------------------------------------------- Calibrate

void CalibrateLevel::setup(const LevelDef& def, Rng& rng, const Rect& area) {
    Level::setup(def, rng, area);
    for (int i = 0; i < 3; ++i) {
        target[i] = static_cast<double>(rawDraw(rng) % 60) / 100.0 + 0.2;
        value[i] = 0.5;
    }
    const int step = (area.w - 240) / 3;
    for (int i = 0; i < 3; ++i) {
        tracks[i] = Rect{area.x + 120 + i * step, area.y + 60, 40, area.h - 160};
    }
    active = -1;
}

namespace {

bool onMark(double value, double target) { return std::fabs(value - target) <= 0.04; }

}  // namespace

LevelResult CalibrateLevel::update(double /*dt*/, const InputState& in, AudioSystem& audio) {
    if (in.mousePressed) {
        for (int i = 0; i < 3; ++i) {
            if (contains(tracks[i], in.mouseX, in.mouseY)) {
                active = i;
            }
        }
    }
    if (in.mouseReleased) {
        active = -1;
    }
    if (active >= 0) {
        // The slider follows the pointer even past the ends of its track, and
        // stops at the ends.
        const Rect& t = tracks[active];
        const double v = 1.0 - static_cast<double>(in.mouseY - t.y) / t.h;
        value[active] = v < 0.0 ? 0.0 : (v > 1.0 ? 1.0 : v);
    }
    // No order and no holding still: the moment all three read true, it passes.
    // Sliders that start on their marks count from the very first frame.
    if (onMark(value[0], target[0]) && onMark(value[1], target[1]) && onMark(value[2], target[2])) {
        audio.playPass();
        return LevelResult::Solved;
    }
    return LevelResult::Running;
}

void CalibrateLevel::render(Graphics& g) {
    for (int i = 0; i < 3; ++i) {
        const Rect& t = tracks[i];
        g.roundRect(t, 6, palette::charcoal, true);
        const int markY = t.y + static_cast<int>((1.0 - target[i]) * t.h);
        g.line(t.x - 8, markY, t.x + t.w + 8, markY, palette::dimGreen, 2);
        const int knobY = t.y + static_cast<int>((1.0 - value[i]) * t.h);
        g.rect({t.x - 6, knobY - 8, t.w + 12, 16},
               onMark(value[i], target[i]) ? palette::terminalGreen : palette::orange, true);
    }
    instructionLine(g, playArea, "MATCH ALL THREE TO THE GHOST MARKS");
}

// ---------------------------------------------------------------- Scale

void ScaleLevel::setup(const LevelDef& def, Rng& rng, const Rect& area) {
    Level::setup(def, rng, area);
    target = static_cast<std::int32_t>(rawDraw(rng) % 40) + 40;
    weight = static_cast<std::int32_t>(rawDraw(rng) % 20) + 10;
    readoutOffset = static_cast<std::int32_t>(rawDraw(rng) % 20) + 15;
    const int cx = area.x + area.w / 2;
    const int by = area.y + area.h - 60;
    addButton = Rect{cx - 160, by, 120, 40};
    removeButton = Rect{cx + 40, by, 120, 40};
}

LevelResult ScaleLevel::update(double /*dt*/, const InputState& in, AudioSystem& audio) {
    if (!in.mousePressed) {
        return LevelResult::Running;
    }
    if (contains(addButton, in.mouseX, in.mouseY)) {
        weight += 5;
        audio.playClick();
    } else if (contains(removeButton, in.mouseX, in.mouseY)) {
        weight = weight - 5 < 1 ? 0 : weight - 5;
        audio.playClick();
    }
    // The beam is only checked when the player does something: a click
    // anywhere, even on nothing, weighs it.
    if (std::abs(weight - target) <= 2) {
        audio.playPass();
        return LevelResult::Solved;
    }
    return LevelResult::Running;
}

void ScaleLevel::render(Graphics& g) {
    const int cx = playArea.x + playArea.w / 2;
    const int top = playArea.y;
    const double tilt = (weight - target) * 0.02;
    const int dx = static_cast<int>(std::cos(tilt) * 120);
    const int dy = static_cast<int>(std::sin(tilt) * 120);
    g.line(cx - dx, top + 90 - dy, cx + dx, top + 90 + dy, palette::brass, 8);
    g.circle(cx, top + 90, 10, palette::castBrass, true);
    g.circle(cx - dx, top + 120 - dy, 22, palette::darkBrass, true);
    g.circle(cx + dx, top + 120 + dy, 22, palette::darkBrass, true);
    // The readout is always off by the hidden offset: balancing the number
    // instead of the beam is the trap.
    char readout[16];
    Graphics::formatInto(readout, sizeof readout, "%d g", weight + readoutOffset);
    g.text(readout, cx, top + 240, TextSize::Large, palette::alarmRed, true, true);
    g.text("(readout)", cx, top + 272, TextSize::Small, palette::liveRed, true, false);
    const Rect* buttons[2] = {&addButton, &removeButton};
    const char* labels[2] = {"ADD", "REMOVE"};
    for (int i = 0; i < 2; ++i) {
        const Rect& b = *buttons[i];
        g.roundRect(b, 8, palette::castBrass, true);
        g.text(labels[i], b.x + b.w / 2, b.y + 20, TextSize::Normal, palette::ink, true, true);
    }
    instructionLine(g, playArea, "BALANCE THE BEAM - NOT THE NUMBER");
}

}  // namespace vorn
