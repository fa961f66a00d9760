#include "stations/panel_stations.h"

#include "audio/audio_system.h"
#include "gfx/graphics.h"
#include "stations/station_kit.h"

#include <algorithm>
#include <cmath>

namespace vorn {

namespace {

constexpr double kPi = 3.14159265358979323846;

// The panel hardware's two workhorse metals, named for the parts they paint.
constexpr Color kHousing = palette::darkBrass;  // switch plates, gauge rim
constexpr Color kFuseBody = palette::oldBrass;  // fuse holders, the idle switch

// A status or instruction line: Small, centred across the play area, its top
// `fromBottom` pixels above the play area's bottom edge.
void panelLine(Graphics& g, const Rect& area, int fromBottom, const char* text, Color c) {
    g.text(text, area.x + area.w / 2, area.y + area.h - fromBottom, TextSize::Small, c, true, false);
}

// Four spokes through (cx, cy), reaching `reach` pixels each way, turned by
// `degrees`: the wheel's only visible sign of how far it has been turned.
void spokes(Graphics& g, int cx, int cy, int reach, double degrees, Color c, int thickness) {
    for (int k = 0; k < 4; ++k) {
        const double a = k * kPi / 4 + degrees * kPi / 180;
        const int dx = static_cast<int>(std::cos(a) * reach);
        const int dy = static_cast<int>(std::sin(a) * reach);
        g.line(cx - dx, cy - dy, cx + dx, cy + dy, c, thickness);
    }
}

// One frame of a hand wheel, grabbed by a press near the hub. Only sideways
// motion counts: right turns it clockwise and drains the gauge, left fills it.
void turnWheel(const InputState& in, int cx, int cy, double grabRange, bool& grabbed, int& lastX,
               double& angle, double& fill) {
    const bool inReach = distance(in.mouseX, in.mouseY, cx, cy) < grabRange;
    const int dx = sidewaysDrag(in, inReach, grabbed, lastX);
    angle += 0.6 * dx;
    fill = std::clamp(fill - 0.0016 * dx, 0.0, 1.0);
}

constexpr double kFullEnough = 0.985;   // the gauge's target mark

}  // namespace

// ---------------------------------------------------------------- Switches

void SwitchesLevel::setup(const LevelDef& def, Rng& rng, const Rect& area) {
    Level::setup(def, rng, area);
    count = 6;
    const int spacing = area.w / 7;
    for (int i = 0; i < count; ++i) {
        rects[i] = Rect{area.x - 26 + (i + 1) * spacing, area.y - 50 + area.h / 2, 52, 100};
    }
    for (int i = 0; i < count; ++i) {
        up[i] = (rawDraw(rng) >> 31) != 0;
    }
}

LevelResult SwitchesLevel::update(double /*dt*/, const InputState& in, AudioSystem& audio) {
    if (in.mousePressed) {
        for (int i = 0; i < count; ++i) {
            if (contains(rects[i], in.mouseX, in.mouseY)) {
                up[i] = !up[i];
                audio.playClick();
            }
        }
    }
    // Checked every frame, clicked or not: a row dealt all down is already safe.
    for (int i = 0; i < count; ++i) {
        if (up[i]) {
            return LevelResult::Running;
        }
    }
    audio.playPass();
    return LevelResult::Solved;
}

void SwitchesLevel::render(Graphics& g) {
    // No line of its own: the catalogue's instruction in the header is all
    // the player gets.
    for (int i = 0; i < count; ++i) {
        const Rect& r = rects[i];
        g.roundRect(r, 6, kHousing, true);
        g.rect({r.x + 4, r.y + 4, r.w - 8, r.h - 8}, palette::ink, true);
        const int leverY = up[i] ? r.y + 8 : r.y + r.h - 42;
        g.roundRect({r.x + 8, leverY, r.w - 16, 34}, 4, up[i] ? palette::orange : palette::terminalGreen, true);
    }
}

// ----------------------------------------------------------------- Fusebox

void FuseboxLevel::setup(const LevelDef& def, Rng& rng, const Rect& area) {
    Level::setup(def, rng, area);
    const int cx = area.x + area.w / 2;
    master = Rect{cx - 60, area.y + 20, 120, 56};
    fuseCount = 5;
    for (int i = 0; i < fuseCount; ++i) {
        fuses[i] = Rect{cx - 215 + 90 * i, area.y + 120, 70, 90};
    }
    blown = static_cast<std::int32_t>(rawDraw(rng) % 5);
    live = true;
    replaced = false;
}

LevelResult FuseboxLevel::update(double /*dt*/, const InputState& in, AudioSystem& audio) {
    if (!in.mousePressed) {
        return LevelResult::Running;
    }
    if (contains(master, in.mouseX, in.mouseY)) {
        live = !live;
        audio.playClick();
        // Power back on over a fresh fuse is the only finish; power on over
        // the old blown one is just the master switch clicking.
        if (live && replaced) {
            audio.playPass();
            return LevelResult::Solved;
        }
        return LevelResult::Running;
    }
    for (int i = 0; i < fuseCount; ++i) {
        if (!contains(fuses[i], in.mouseX, in.mouseY)) {
            continue;
        }
        if (i != blown) {
            audio.playClick();   // a good fuse is harmless, live or not
            return LevelResult::Running;
        }
        if (live) {
            audio.playFail();   // bare hands in a live box
            return LevelResult::Failed;
        }
        replaced = true;
        audio.playClick();
        return LevelResult::Running;
    }
    return LevelResult::Running;
}

void FuseboxLevel::render(Graphics& g) {
    g.roundRect(master, 8, live ? palette::liveRed : palette::dimGreen, true);
    g.text(live ? "MASTER: LIVE" : "MASTER: OFF", master.x + master.w / 2, master.y + master.h / 2,
           TextSize::Small, palette::ink, true, true);

    for (int i = 0; i < fuseCount; ++i) {
        const Rect& f = fuses[i];
        const bool isBlown = i == blown;
        g.roundRect(f, 6, kFuseBody, true);
        const Color core = !isBlown ? palette::ink : replaced ? palette::terminalGreen : rgb(127, 29, 21);
        g.rect({f.x + 8, f.y + 8, f.w - 16, f.h - 16}, core, true);
        if (isBlown && !replaced) {
            g.text("X", f.x + f.w / 2, f.y + f.h / 2, TextSize::Large, palette::alarmRed, true, true);
        }
    }

    if (live) {
        panelLine(g, playArea, 18, "(LIVE - do not touch fuses)", palette::faultRed);
    } else {
        panelLine(g, playArea, 18, "(safe to swap)", palette::softGreen);
    }
}

// ------------------------------------------------------------------- Valve

void ValveLevel::setup(const LevelDef& def, Rng& rng, const Rect& area) {
    Level::setup(def, rng, area);
    cx = area.x + (2 * area.w) / 3;
    cy = area.y + area.h / 2;
    radius = 86;
    fill = 0.15;
    angle = 0.0;
    grabbed = false;
    lastX = 0;
    emptied = false;
}

LevelResult ValveLevel::update(double /*dt*/, const InputState& in, AudioSystem& audio) {
    // The grab ring reaches a little past the rim, so a hurried press counts.
    turnWheel(in, cx, cy, radius + 20, grabbed, lastX, angle, fill);
    if (fill >= kFullEnough) {
        audio.playPass();
        return LevelResult::Solved;
    }
    if (fill <= 0.0) {
        emptied = true;   // a dry gauge is no offence; the clock is the penalty
    }
    return LevelResult::Running;
}

void ValveLevel::render(Graphics& g) {
    const int gx = playArea.x + playArea.w / 4;
    const int gy = cy;
    g.circle(gx, gy, 70, kHousing, true);
    g.circle(gx, gy, 62, palette::ink, true);
    const int h = static_cast<int>(fill * 110);
    g.rect({gx - 18, gy - h + 55, 36, h}, palette::orange, true);
    g.line(gx - 30, gy - 50, gx + 30, gy - 50, palette::terminalGreen, 3);
    g.text("TARGET", gx + 36, gy - 58, TextSize::Small, palette::terminalGreen, false, false);
    g.text("FILL", gx, gy + 64, TextSize::Small, palette::orange, true, false);

    g.circle(cx, cy, radius, palette::bronze, true);
    g.circle(cx, cy, radius - 16, palette::greenScreen, true);
    spokes(g, cx, cy, radius, angle, palette::brass, 12);
    g.circle(cx, cy, 22, palette::brass, true);

    // The label points right, but dragging right drains the gauge: the label
    // is the lie.
    g.text("OPEN >", cx + radius + 8, cy - radius, TextSize::Normal, palette::alarmRed, false, false);
}

// ---------------------------------------------------------------- Gauntlet

void GauntletLevel::setup(const LevelDef& def, Rng& rng, const Rect& area) {
    Level::setup(def, rng, area);
    const int midY = area.y + area.h / 2;
    switchRect = Rect{area.x + 60, midY - 30, 80, 60};
    valveX = area.x + area.w / 2;
    valveY = midY;
    dashRect = Rect{area.x + area.w - 180, midY - 25, 130, 50};
    stage = 0;
    fill = 0.15;
    angle = 0.0;
    lastX = 0;
    grabbed = false;
}

LevelResult GauntletLevel::update(double /*dt*/, const InputState& in, AudioSystem& audio) {
    switch (stage) {
    case 0:
        if (in.mousePressed) {
            if (contains(switchRect, in.mouseX, in.mouseY)) {
                audio.playClick();
                stage = 1;
            } else if (contains(dashRect, in.mouseX, in.mouseY)) {
                audio.playFail();   // the checklist is not optional
                return LevelResult::Failed;
            }
        }
        return LevelResult::Running;
    case 1:
        // An early dash now is only ignored: the switch has been thrown.
        turnWheel(in, valveX, valveY, 100.0, grabbed, lastX, angle, fill);
        if (fill >= kFullEnough) {
            audio.playClick();
            stage = 2;
        }
        return LevelResult::Running;
    default:
        if (in.mousePressed && contains(dashRect, in.mouseX, in.mouseY)) {
            audio.playPass();
            return LevelResult::Solved;
        }
        return LevelResult::Running;
    }
}

void GauntletLevel::render(Graphics& g) {
    const Rect& s = switchRect;
    g.roundRect(s, 6, stage >= 1 ? palette::darkGreen : kFuseBody, true);
    g.text("1", s.x + s.w / 2, s.y + s.h / 2, TextSize::Large, palette::ink, true, true);

    const Color stageColor = stage == 2   ? palette::terminalGreen
                             : stage == 1 ? palette::orange
                                          : kFuseBody;
    const Color dimmed = rgb(red(stageColor) / 2, green(stageColor) / 2, blue(stageColor) / 2);
    g.circle(valveX, valveY, 70, dimmed, true);
    spokes(g, valveX, valveY, 70, angle, stageColor, 9);
    g.text("2", valveX, valveY, TextSize::Large, palette::ink, true, true);

    const Rect& d = dashRect;
    const bool ready = stage == 2;
    g.roundRect(d, 8, ready ? palette::paleGold : palette::charcoal, true);
    g.text("3 DASH", d.x + d.w / 2, d.y + d.h / 2, TextSize::Normal, ready ? palette::ink : palette::greyedOut,
           true, true);

    const char* line = stage == 0   ? "SWITCH, then VALVE (left), then DASH - in order"
                       : stage == 1 ? "now turn the VALVE LEFT to fill"
                                    : "now DASH!";
    panelLine(g, playArea, 16, line, palette::amber);
}

}  // namespace vorn
