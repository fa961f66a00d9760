#pragma once
// One station outside the run, driven by a hand-filled input and an audio
// system that is never opened but logs every sound asked of it. Every step
// clears the input's edges as a frame does, and holds the station to its
// verdict sounds (pass right before Solved, fail right before Failed). For
// the station's own rules; the bench (station_driver.h) is for real events
// and the solvers.

#include "audio/audio_system.h"
#include "data/level_catalogue.h"
#include "stations/level.h"
#include "support/station_sounds.h"

#include <cstdint>
#include <string>
#include <vector>

namespace vorn::test {

template <typename T>
struct Desk {
    T level;
    Rng rng;
    std::vector<std::string> sounds;   // every sound request, in order
    AudioSystem silent;
    InputState in;

    explicit Desk(std::uint32_t seed = 5489, std::int32_t number = 11, Rect area = kPlayArea)
        : rng(seed) {
        silent.requestLog = &sounds;
        LevelDef def;
        def.number = number;
        level.setup(def, rng, area);
    }

    void pointAt(int x, int y) {
        in.mouseX = x;
        in.mouseY = y;
    }
    LevelResult step(double dt) {
        const std::size_t before = sounds.size();
        const LevelResult r = level.update(dt, in, silent);
        EXPECT_TRUE(soundsFitVerdict(r, sounds, before));
        in.clearEdges();
        return r;
    }
    // The sounds asked for since the log held `from` requests.
    std::vector<std::string> soundsSince(std::size_t from) const { return soundsFrom(sounds, from); }
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
