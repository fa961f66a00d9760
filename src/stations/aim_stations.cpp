#include "stations/aim_stations.h"

#include "audio/audio_system.h"
#include "gfx/graphics.h"
#include "stations/station_kit.h"

#include <algorithm>
#include <cmath>

namespace vorn {

namespace {

double hypotOf(int dx, int dy) {
    return std::hypot(static_cast<double>(dx), static_cast<double>(dy));
}

}  // namespace

// ---------------------------------------------------------------------------
// Whack

void WhackLevel::setup(const LevelDef& def, Rng& engine, const Rect& area) {
    Level::setup(def, engine, area);
    // Late in the shift the pests breed: two more greens to swat.
    goal = number < 40 ? 6 : 8;
    hits = 0;
    strikes = 0;
    for (Slot& s : slots) {
        s = Slot{};
    }
    spawnTimer = 0.0;
    rng = &engine;
}

void WhackLevel::spawn() {
    for (Slot& s : slots) {
        if (s.active) {
            continue;
        }
        const Rect& p = playArea;
        s.active = true;
        s.red = rawDraw(*rng) % 100 < 35;
        s.x = uniformInt(*rng, p.x + 50, p.x + p.w - 50);
        s.y = uniformInt(*rng, p.y + 60, p.y + p.h - 50);
        s.life = 1.1;
        s.radius = 30;
        return;
    }
    // A full board draws nothing: the run's engine is left exactly where it was.
}

LevelResult WhackLevel::update(double dt, const InputState& in, AudioSystem& audio) {
    spawnTimer -= dt;
    if (spawnTimer <= 0.0) {
        spawn();
        spawnTimer = 0.55;
    }

    for (Slot& s : slots) {
        if (!s.active) {
            continue;
        }
        s.life -= dt;
        if (s.life <= 0.0) {
            s.active = false;
            // Management leaving on its own costs nothing; a green that got away does.
            if (!s.red) {
                ++strikes;
            }
        }
    }
    // The third escape fires you even one swat short of the goal.
    if (strikes >= 3) {
        audio.playFail();
        return LevelResult::Failed;
    }

    if (!in.mousePressed) {
        return LevelResult::Running;
    }
    // One swat lands on everything under it, so two overlapping greens both
    // count, and a red anywhere under it is the end.
    for (Slot& s : slots) {
        if (!s.active || hypotOf(in.mouseX - s.x, in.mouseY - s.y) >= s.radius) {
            continue;
        }
        if (s.red) {
            audio.playFail();
            return LevelResult::Failed;
        }
        s.active = false;
        ++hits;
        audio.playClick();
        if (hits >= goal) {
            audio.playPass();
            return LevelResult::Solved;
        }
    }
    return LevelResult::Running;
}

void WhackLevel::render(Graphics& g) {
    for (const Slot& s : slots) {
        if (s.active) {
            twoToneDisc(g, s.x, s.y, s.radius, s.red ? palette::alarmRed : palette::terminalGreen);
        }
    }
    char status[40];
    Graphics::formatInto(status, sizeof status, "GREEN %d/%d   strikes %d/3", hits, goal, strikes);
    g.text(status, playArea.x + playArea.w / 2, playArea.y + 30, TextSize::Normal, palette::gold,
           true, true);
    instructionLine(g, playArea, "HIT GREEN, NEVER RED");
}

// ---------------------------------------------------------------------------
// DoubleClick

void DoubleClickLevel::setup(const LevelDef& def, Rng& engine, const Rect& area) {
    Level::setup(def, engine, area);
    const int cx = area.x + area.w / 2;
    const int lefts[4] = {cx - 267, cx - 129, cx + 9, cx + 147};
    const int tops[2] = {area.y + 70, area.y + 198};
    columns = 4;
    rows = 2;
    cellCount = 8;
    for (int i = 0; i < cellCount; ++i) {
        cells[i] = Rect{lefts[i % columns], tops[i / columns], 120, 110};
    }
    litCell = static_cast<std::int32_t>(rawDraw(engine) & 7u);
    armedCell = -1;
    litTimer = 0.0;
    armedTime = -1.0;
    clock = 0.0;
    rng = &engine;
}

LevelResult DoubleClickLevel::update(double dt, const InputState& in, AudioSystem& audio) {
    // The light wanders off on its own beat, and takes the first click with it.
    litTimer += dt;
    if (litTimer > 1.4) {
        litTimer = 0.0;
        litCell = static_cast<std::int32_t>(rawDraw(*rng) % 8u);
        armedCell = -1;
    }

    if (!in.mousePressed) {
        clock += dt;
        return LevelResult::Running;
    }
    int hit = -1;
    for (int i = 0; i < cellCount; ++i) {
        if (contains(cells[i], in.mouseX, in.mouseY)) {
            hit = i;
            break;
        }
    }
    if (hit < 0) {
        clock += dt;
        return LevelResult::Running;
    }
    // From here on the clock does not move this frame: a click on a desk is
    // timed against the clock as it stood, which shaves a frame off every
    // double click. The desks have always been a little generous.
    if (hit != litCell) {
        audio.playFail();
        return LevelResult::Failed;
    }
    if (hit == armedCell && clock - armedTime < 0.4) {
        audio.playPass();
        return LevelResult::Solved;
    }
    armedCell = hit;
    armedTime = clock;
    audio.playClick();
    return LevelResult::Running;
}

void DoubleClickLevel::render(Graphics& g) {
    for (int i = 0; i < cellCount; ++i) {
        const bool lit = i == litCell;
        g.roundRect(cells[i], 8, lit ? palette::litBrass : palette::darkBrass, true);
    }
    if (litCell >= 0 && litCell < cellCount) {
        const Rect& c = cells[litCell];
        g.text("x2", c.x + c.w / 2, c.y + c.h / 2, TextSize::Large, palette::ink, true, true);
    }
    instructionLine(g, playArea, "DOUBLE-CLICK THE LIT CELL \xE2\x80\x94 FAST");
}

// ---------------------------------------------------------------------------
// Precision

void PrecisionLevel::setup(const LevelDef& def, Rng& engine, const Rect& area) {
    Level::setup(def, engine, area);
    x = area.x + area.w * 0.5;
    y = area.y + area.h * 0.5;
    vx = static_cast<double>(rawDraw(engine) & 1u) * 80.0 - 40.0;
    vy = static_cast<double>(rawDraw(engine) & 1u) * 64.0 - 32.0;
    dotRadius = 9;
    ringRadius = 44;
}

LevelResult PrecisionLevel::update(double dt, const InputState& in, AudioSystem& audio) {
    x += vx * dt;
    y += vy * dt;
    // Bounce by turning round, never by clamping: a fast frame can leave the
    // ring a little past the wall for a frame or two.
    const Rect& p = playArea;
    if (x < p.x + ringRadius || x > p.x + p.w - ringRadius) {
        vx = -vx;
    }
    if (y < p.y + ringRadius || y > p.y + p.h - ringRadius) {
        vy = -vy;
    }

    if (!in.mousePressed) {
        return LevelResult::Running;
    }
    const double d = std::hypot(in.mouseX - x, in.mouseY - y);
    if (d <= dotRadius) {
        audio.playPass();
        return LevelResult::Solved;
    }
    // The ring is the packaging: touching it is the mistake. Outside it, nothing.
    if (d <= ringRadius) {
        audio.playFail();
        return LevelResult::Failed;
    }
    return LevelResult::Running;
}

void PrecisionLevel::render(Graphics& g) {
    const int cx = static_cast<int>(x);
    const int cy = static_cast<int>(y);
    g.circle(cx, cy, ringRadius, rgb(89, 20, 14), false);
    g.circle(cx, cy, ringRadius - 1, rgb(63, 14, 10), false);
    g.circle(cx, cy, dotRadius, palette::terminalGreen, true);
    instructionLine(g, playArea, "HIT THE TINY GREEN DOT \xE2\x80\x94 NOT THE RING");
}

// ---------------------------------------------------------------------------
// Decoy

void DecoyLevel::setup(const LevelDef& def, Rng& engine, const Rect& area) {
    Level::setup(def, engine, area);
    x = area.x + area.w * 0.5;
    y = area.y + area.h * 0.5;
    radius = 34.0;
    lastX = area.x;
    lastY = area.y;
    calm = 0.0;
}

LevelResult DecoyLevel::update(double dt, const InputState& in, AudioSystem& audio) {
    const double px = in.mouseX;
    const double py = in.mouseY;
    // Speed is judged frame to frame: a hand that stops dead is calm at once.
    const double speed = distance(px, py, lastX, lastY) / std::max(dt, 0.001);
    lastX = px;
    lastY = py;
    const double d = distance(x, y, px, py);

    if (d < 130.0 && speed < 140.0) {
        calm = std::min(1.0, calm + 1.6 * dt);
    } else {
        calm = std::max(0.0, calm - 2.0 * dt);
    }

    // Only a fast approach scares it; a slow hand nearby does not, and once it
    // trusts you (calm 0.9) even a quick grab is allowed.
    if (d < 120.0 && speed > 220.0 && calm < 0.9) {
        x += (x - px) / std::max(d, 1.0) * 260.0 * dt;
        y += (y - py) / std::max(d, 1.0) * 260.0 * dt;
        const Rect& p = playArea;
        x = std::max(std::min(x, p.x + p.w - radius), p.x + radius);
        y = std::max(std::min(y, p.y + p.h - radius), p.y + radius);
    }

    if (in.mousePressed && d < radius) {
        if (calm >= 0.9) {
            audio.playPass();
            return LevelResult::Solved;
        }
        // Grabbed before it trusted you: that counts as harassment.
        audio.playFail();
        return LevelResult::Failed;
    }
    return LevelResult::Running;
}

void DecoyLevel::render(Graphics& g) {
    const Color c = calm >= 0.9 ? palette::terminalGreen
                                : rgb(255, static_cast<int>(58 + 112 * calm),
                                      static_cast<int>(42 + 4 * calm));
    const int cx = static_cast<int>(x);
    const int cy = static_cast<int>(y);
    twoToneDisc(g, cx, cy, static_cast<int>(radius), c);
    g.text("CATCH", cx, cy, TextSize::Small, palette::ink, true, true);
    instructionLine(g, playArea, "APPROACH SLOWLY \xE2\x80\x94 IT FLEES THE HASTY");
}

// ---------------------------------------------------------------------------
// Greased

void GreasedLevel::setup(const LevelDef& def, Rng& engine, const Rect& area) {
    Level::setup(def, engine, area);
    value = 0.5;
    mark = (rawDraw(engine) & 1u) == 1u ? 0.15 : 0.85;
    dwell = 0.0;
    dragging = false;
    track = Rect{area.x + 80, area.y + area.h / 2 - 12, area.w - 160, 24};
}

LevelResult GreasedLevel::update(double dt, const InputState& in, AudioSystem& audio) {
    if (in.mousePressed && contains(track, in.mouseX, in.mouseY)) {
        dragging = true;
    }
    if (!in.mouseDown) {
        dragging = false;
    }

    if (dragging) {
        const double wanted = (in.mouseX - track.x) / static_cast<double>(track.w);
        value += (wanted - value) * std::min(1.0, 6.0 * dt);
    } else {
        // The grease: let go anywhere and the knob slides home to the middle.
        value += (0.5 - value) * std::min(1.0, 1.2 * dt);
    }
    value = std::clamp(value, 0.0, 1.0);

    if (std::fabs(value - mark) < 0.03) {
        dwell += dt;
        if (dwell > 0.7) {
            audio.playPass();
            return LevelResult::Solved;
        }
    } else {
        dwell = 0.0;
    }
    return LevelResult::Running;
}

void GreasedLevel::render(Graphics& g) {
    g.roundRect(track, 6, palette::charcoal, true);
    g.rect({track.x - 4 + static_cast<int>(track.w * mark), track.y - 10, 8, track.h + 20},
           palette::terminalGreen, true);
    const int knobX = track.x + static_cast<int>(track.w * value);
    g.circle(knobX, track.y + track.h / 2, 16,
             dwell > 0.0 ? palette::terminalGreen : palette::alarmRed, true);
    if (dwell > 0.0) {
        g.rect({knobX - 30, track.y - 30, static_cast<int>(dwell / 0.7 * 60), 6},
               palette::terminalGreen, true);
    }
    instructionLine(g, playArea, "DRAG TO THE MARK AND HOLD \xE2\x80\x94 IT'S GREASED");
}

// ---------------------------------------------------------------------------
// HotCold

void HotColdLevel::setup(const LevelDef& def, Rng& engine, const Rect& area) {
    Level::setup(def, engine, area);
    spotX = uniformInt(engine, area.x + 90, area.x + area.w - 90);
    spotY = uniformInt(engine, area.y + 90, area.y + area.h - 90);
    spotRadius = 46;
    heat = 0.0;
}

LevelResult HotColdLevel::update(double /*dt*/, const InputState& in, AudioSystem& audio) {
    // Heat is where the pointer is now, not how long it has been there.
    const double d = hypotOf(in.mouseX - spotX, in.mouseY - spotY);
    heat = 1.0 - std::min(1.0, d / (hypotOf(playArea.w, playArea.h) * 0.5));
    if (!in.mousePressed) {
        return LevelResult::Running;
    }
    if (d <= spotRadius) {
        audio.playPass();
        return LevelResult::Solved;
    }
    // Guessing in the cold is what gets you fired; a warm miss is just a miss.
    if (heat < 0.5) {
        audio.playFail();
        return LevelResult::Failed;
    }
    audio.playClick();
    return LevelResult::Running;
}

void HotColdLevel::render(Graphics& g) {
    // The glow is translucent: the glass shows through it, brighter as it warms.
    g.rect(playArea,
           rgb(static_cast<int>(20 + 200 * heat), static_cast<int>(60 + 80 * heat), 30,
               static_cast<int>(60 + 120 * heat)),
           true);
    const char* word = heat > 0.85  ? "BURNING"
                       : heat > 0.6 ? "HOT"
                       : heat > 0.4 ? "WARM"
                       : heat > 0.2 ? "COOL"
                                    : "COLD";
    g.text(word, playArea.x + playArea.w / 2, playArea.y + 40, TextSize::Large,
           heat > 0.6 ? palette::alarmRed : palette::orange, true, true);
    instructionLine(g, playArea, "FIND THE HIDDEN SPOT BY THE GLOW");
}

}  // namespace vorn
