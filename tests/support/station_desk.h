#pragma once
// One station outside the run, driven by a hand-filled input and a silent
// audio system (never opened, so every sound is a no-op). Every step clears
// the input's edges as a frame does. For the station's own rules; the bench
// (station_bench.h) is for real events, real sounds and the solvers.

#include "audio/audio_system.h"
#include "data/level_catalogue.h"
#include "stations/level.h"

#include <cstdint>

namespace vorn::test {

template <typename T>
struct Desk {
    T level;
    Rng rng;
    AudioSystem silent;
    InputState in;

    explicit Desk(std::uint32_t seed = 5489, std::int32_t number = 11, Rect area = kPlayArea)
        : rng(seed) {
        LevelDef def;
        def.number = number;
        level.setup(def, rng, area);
    }

    void pointAt(int x, int y) {
        in.mouseX = x;
        in.mouseY = y;
    }
    LevelResult step(double dt) {
        const LevelResult r = level.update(dt, in, silent);
        in.clearEdges();
        return r;
    }
    LevelResult press(int x, int y, double dt = 0.016) {
        pointAt(x, y);
        in.mousePressed = true;
        in.mouseDown = true;
        return step(dt);
    }
    LevelResult release(int x, int y, double dt = 0.016) {
        pointAt(x, y);
        in.mouseReleased = true;
        in.mouseDown = false;
        return step(dt);
    }
    // A press and, if the station is still running, a release on the spot.
    LevelResult click(int x, int y) {
        const LevelResult r = press(x, y);
        return r == LevelResult::Running ? release(x, y) : r;
    }
    LevelResult clickCentre(const Rect& r) { return click(r.x + r.w / 2, r.y + r.h / 2); }
};

}  // namespace vorn::test
