#include "stations/timing_stations.h"

#include "audio/audio_system.h"
#include "gfx/graphics.h"
#include "stations/station_kit.h"

#include <algorithm>
#include <cmath>

namespace vorn {

namespace {

constexpr double kPi = 3.14159265358979323846;
constexpr double kTwoPi = 2.0 * kPi;

// How far an angle is from the top of its circle (-pi/2), folded into
// [0, pi]. Going through atan2 keeps the answer right whatever turn the angle
// is on, including the frame where it has just crept past 2 pi.
double offTop(double angle) {
    return std::fabs(std::atan2(std::sin(angle + kPi / 2.0), std::cos(angle + kPi / 2.0)));
}

// One full turn is taken off at most once a frame: no frame is long enough
// for the rings to turn twice.
double advance(double angle, double dt, double speed) {
    angle += dt * speed;
    if (angle > kTwoPi) {
        angle -= kTwoPi;
    }
    return angle;
}

}  // namespace

// ---------------------------------------------------------------- button

void ButtonLevel::setup(const LevelDef& def, Rng& rng, const Rect& area) {
    Level::setup(def, rng, area);
    bigButton = Rect{area.x + area.w / 2 - 90, area.y + area.h / 2 - 90, 180, 180};
    target.w = 38;
    target.h = 24;
    target.y = uniformInt(rng, area.y + 20, area.y + area.h - 50);   // y first, then x
    target.x = uniformInt(rng, area.x + 30, area.x + area.w - 70);
    flashTimer = 0.0;
}

LevelResult ButtonLevel::update(double /*dt*/, const InputState& in, AudioSystem& audio) {
    if (in.mousePressed) {
        if (contains(target, in.mouseX, in.mouseY)) {
            audio.playPass();
            return LevelResult::Solved;
        }
        if (contains(bigButton, in.mouseX, in.mouseY)) {
            flashTimer = 0.15;
        }
    }
    // The flash counts update calls, not seconds: about ten of them, however
    // fast or slow the frames come.
    if (flashTimer > 0.0) {
        flashTimer -= 0.016;
    }
    return LevelResult::Running;
}

void ButtonLevel::render(Graphics& g) {
    const Color face = flashTimer > 0.0 ? rgb(153, 34, 25) : palette::alarmRed;
    const int cx = bigButton.x + bigButton.w / 2;
    const int cy = bigButton.y + bigButton.h / 2;
    g.circle(cx, cy, 88, scaled(face, 0.5), true);
    g.circle(cx, cy, 78, face, true);
    g.text("PRESS", cx, cy, TextSize::Large, palette::ink, true, true);

    g.roundRect(target, 4, palette::brass, true);
    g.rect(Rect{target.x + 4, target.y + 4, 12, target.h - 8}, palette::ink, true);
}

// ------------------------------------------------------------------ hold

void HoldLevel::setup(const LevelDef& def, Rng& rng, const Rect& area) {
    Level::setup(def, rng, area);
    bar = Rect{area.x + area.w / 2 - 50, area.y + 30, 100, area.h - 70};
    requiredTime = 2.0;
    heldTime = 0.0;
    holding = false;
}

LevelResult HoldLevel::update(double dt, const InputState& in, AudioSystem& audio) {
    if (in.mouseDown) {
        // The hold has to begin inside the bar; after that the hand may drift.
        if (holding || (in.mousePressed && contains(bar, in.mouseX, in.mouseY))) {
            heldTime += dt;
            holding = true;
            if (heldTime >= requiredTime) {
                audio.playPass();
                return LevelResult::Solved;
            }
        }
        return LevelResult::Running;
    }
    if (holding) {
        // Letting go before the bar is full is quitting.
        audio.playFail();
        return LevelResult::Failed;
    }
    return LevelResult::Running;
}

void HoldLevel::render(Graphics& g) {
    g.roundRect(bar, 8, palette::darkBrass, true);
    const int fill = static_cast<int>((bar.h - 16) * heldTime / requiredTime);
    g.rect(Rect{bar.x + 8, bar.y + bar.h - fill - 8, bar.w - 16, fill}, palette::terminalGreen, true);
    g.text(holding ? "HOLD!" : "PRESS & HOLD", bar.x + bar.w / 2, bar.y - 6, TextSize::Normal,
           palette::orange, true, false);
}

// --------------------------------------------------------------- twohand

void TwoHandLevel::setup(const LevelDef& def, Rng& rng, const Rect& area) {
    Level::setup(def, rng, area);
    grip = Rect{area.x + 30, area.y + area.h / 2 - 60, 120, 120};
    targetSpeed = number < 22 ? 150.0 : 240.0;
    targetX = area.x + area.w / 2;
    targetY = area.y + 80;
    direction = 1;
    targetRadius = 26;
    charge = 0.0;
    dwell = 0.0;
}

LevelResult TwoHandLevel::update(double dt, const InputState& in, AudioSystem& audio) {
    // The target paces the far side of the play area and turns at its ends.
    targetX += direction * targetSpeed * dt;
    const double rightEnd = playArea.x + playArea.w - 40;
    const double leftEnd = playArea.x + 160;
    if (targetX > rightEnd) {
        targetX = rightEnd;
        direction = -1;
    }
    if (targetX < leftEnd) {
        targetX = leftEnd;
        direction = 1;
    }

    // The grip charges only while held, and drains the moment it is let go.
    if (in.mouseDown && contains(grip, in.mouseX, in.mouseY)) {
        charge = std::min(1.0, charge + 2.0 * dt);
    } else {
        charge = std::max(0.0, charge - 3.0 * dt);
    }

    // Full charge and the pointer on the target, in the same frame: this is
    // the trick. One pointer cannot be in the grip and on the target at once,
    // and the target's path never comes within reach of the grip.
    const double dx = in.mouseX - targetX;
    const double dy = in.mouseY - targetY;
    if (charge >= 1.0 && dx * dx + dy * dy < targetRadius * targetRadius) {
        dwell += dt;
        if (dwell > 0.25) {
            audio.playPass();
            return LevelResult::Solved;
        }
        return LevelResult::Running;
    }
    dwell = 0.0;
    return LevelResult::Running;
}

void TwoHandLevel::render(Graphics& g) {
    g.roundRect(grip, 10, charge > 0.0 ? palette::darkGreen : palette::bronze, true);
    g.text("HOLD", grip.x + grip.w / 2, grip.y + grip.h / 2 - 10, TextSize::Normal, palette::ink,
           true, true);
    g.rect(Rect{grip.x + 10, grip.y + grip.h - 18, static_cast<int>((grip.w - 20) * charge), 8},
           palette::terminalGreen, true);

    twoToneDisc(g, static_cast<int>(targetX), static_cast<int>(targetY), targetRadius,
                charge >= 1.0 ? palette::terminalGreen : palette::orange);
    instructionLine(g, playArea, "HOLD, THEN CATCH THE TARGET", 18);
}

// -------------------------------------------------------------- patience

void PatienceLevel::setup(const LevelDef& def, Rng& rng, const Rect& area) {
    Level::setup(def, rng, area);
    elapsed = 0.0;
    // From 2.6 s to 4.085 s in steps of 15 ms: never the same wait twice in
    // a row, so counting under one's breath does not help.
    wait = static_cast<double>(rawDraw(rng) % 100u) / 100.0 * 1.5 + 2.6;
    ready = false;
    button = Rect{area.x + area.w / 2 - 90, area.y + area.h / 2 + 40, 180, 60};
}

LevelResult PatienceLevel::update(double dt, const InputState& in, AudioSystem& audio) {
    elapsed += dt;
    if (elapsed >= wait) {
        ready = true;
    }
    if (in.mousePressed) {
        if (!ready) {
            // Eagerness is a firing offence wherever the click lands.
            audio.playFail();
            return LevelResult::Failed;
        }
        if (contains(button, in.mouseX, in.mouseY)) {
            audio.playPass();
            return LevelResult::Solved;
        }
    }
    return LevelResult::Running;
}

void PatienceLevel::render(Graphics& g) {
    const Rect& p = playArea;
    if (ready) {
        g.text("GO \xE2\x80\x94 NOW CLICK", p.x + p.w / 2, p.y + 60, TextSize::Large,
               palette::terminalGreen, true, true);
    } else {
        g.text("WAIT...", p.x + p.w / 2, p.y + 60, TextSize::Large, palette::alarmRed, true, true);
    }
    g.rect(Rect{p.x + 80, p.y + 120, p.w - 160, 22}, palette::charcoal, true);
    const int fill = static_cast<int>((p.w - 160) * std::min(1.0, elapsed / wait));
    g.rect(Rect{p.x + 80, p.y + 120, fill, 22}, ready ? palette::terminalGreen : palette::orange,
           true);
    g.roundRect(button, 10, ready ? palette::darkGreen : rgb(79, 61, 21), true);
    g.text("GO", button.x + button.w / 2, button.y + button.h / 2, TextSize::Large, palette::ink,
           true, true);
    instructionLine(g, p, "DO NOT CLICK UNTIL THE BAR IS FULL");
}

// ---------------------------------------------------------------- timing

void TimingLevel::setup(const LevelDef& def, Rng& rng, const Rect& area) {
    Level::setup(def, rng, area);
    centerX = area.x + area.w / 2;
    centerY = area.y + area.h / 2 - 10;
    ringRadius = 90;
    angle = 0.0;
    angularSpeed = 2.6;
    tolerance = 0.5;
    button = Rect{area.x + area.w / 2 - 90, area.y + area.h - 58, 180, 44};
}

LevelResult TimingLevel::update(double dt, const InputState& in, AudioSystem& audio) {
    angle = advance(angle, dt, angularSpeed);
    // Only DASH counts; a press anywhere else is ignored.
    if (in.mousePressed && contains(button, in.mouseX, in.mouseY)) {
        if (offTop(angle) < tolerance) {
            audio.playPass();
            return LevelResult::Solved;
        }
        audio.playFail();
        return LevelResult::Failed;
    }
    return LevelResult::Running;
}

void TimingLevel::render(Graphics& g) {
    // The gap is the dots left out around the current angle.
    for (double a = 0.0; a < kTwoPi; a += 0.12) {
        if (std::fabs(std::atan2(std::sin(a - angle), std::cos(a - angle))) < tolerance) {
            continue;
        }
        g.circle(centerX + static_cast<int>(std::cos(a) * ringRadius),
                 centerY + static_cast<int>(std::sin(a) * ringRadius), 7, palette::alarmRed, true);
    }
    g.circle(centerX, centerY - 110, 6, palette::terminalGreen, true);
    g.roundRect(button, 8, palette::paleGold, true);
    g.text("DASH", button.x + button.w / 2, button.y + 22, TextSize::Normal, palette::ink, true, true);
    instructionLine(g, playArea, "DASH WHEN THE GAP REACHES THE TOP");
}

// ----------------------------------------------------------------- orbit

void OrbitLevel::setup(const LevelDef& def, Rng& rng, const Rect& area) {
    Level::setup(def, rng, area);
    centerX = area.x + area.w / 2;
    centerY = area.y + area.h / 2;
    orbitRadius = 130;
    orbRadius = 24;
    angle = 0.0;
    angularSpeed = number < 40 ? 2.2 : 3.2;
}

LevelResult OrbitLevel::update(double dt, const InputState& in, AudioSystem& audio) {
    angle = advance(angle, dt, angularSpeed);
    if (in.mousePressed) {
        const int orbX = centerX + static_cast<int>(std::cos(angle) * orbitRadius);
        const int orbY = centerY + static_cast<int>(std::sin(angle) * orbitRadius);
        // A click that misses the orb costs nothing; one that catches it
        // anywhere but the top zone is a firing offence.
        if (std::hypot(in.mouseX - orbX, in.mouseY - orbY) < orbRadius) {
            if (offTop(angle) < 0.5) {
                audio.playPass();
                return LevelResult::Solved;
            }
            audio.playFail();
            return LevelResult::Failed;
        }
    }
    return LevelResult::Running;
}

void OrbitLevel::render(Graphics& g) {
    g.circle(centerX, centerY, orbitRadius, rgb(32, 32, 32), false);
    g.circle(centerX, centerY - orbitRadius, orbRadius + 8, rgb(21, 67, 41), true);
    g.circle(centerX + static_cast<int>(std::cos(angle) * orbitRadius),
             centerY + static_cast<int>(std::sin(angle) * orbitRadius), orbRadius, palette::gold,
             true);
    instructionLine(g, playArea, "CLICK THE ORB AS IT CROSSES THE TOP ZONE");
}

}  // namespace vorn
