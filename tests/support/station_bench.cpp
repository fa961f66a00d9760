#include "support/station_bench.h"

#include "app/application.h"
#include "app/difficulty.h"
#include "stations/level_factory.h"
#include "support/station_sounds.h"

#include <gtest/gtest.h>

#include <SDL.h>

#include <cstdio>
#include <random>
#include <vector>

namespace vorn::test {

LevelDef shippedRecord(const std::string& type) {
    std::vector<LevelDef> levels;
    const std::string path = std::string(VORN_GAME_DIR) + "/data/levels/levels.json";
    loadLevels(levels, path);
    for (const LevelDef& def : levels) {
        if (def.type == type) {
            return def;
        }
    }
    ADD_FAILURE() << "the shipped catalogue has no station of type \"" << type << "\"";
    LevelDef def;
    def.type = type;
    def.number = 11;
    def.phase = phaseForNumber(11);
    return def;
}

double clockFor(const LevelDef& def, Difficulty d) {
    const double m = def.phase == "overtime" ? 0.7 : timeMultiplier(d);
    return def.baseTime * m * 0.45;
}

StationBench::StationBench(const LevelDef& record, std::uint32_t seed) : def(record), rng(seed) {
    audio.requestLog = &sounds;
    // The event queue for the hand's SDL events, held for the bench's life
    // (SDL counts the holds, so benches nest and leave nothing behind).
    SDL_InitSubSystem(SDL_INIT_EVENTS);
    SDL_FlushEvents(SDL_FIRSTEVENT, SDL_LASTEVENT);
    // In a shift the pointer is wherever the last station or the menu left
    // it, so each seed starts the hand somewhere else on the canvas.
    std::mt19937 place(seed ^ 0x9E3779B9u);
    const int x = 40 + static_cast<int>(place() % 1286u);
    const int y = 40 + static_cast<int>(place() % 688u);
    hand.reset(x, y);
    pushMotion(x, y);
    station = createLevel(def.type);
    station->setup(def, rng, kPlayArea);
}

StationBench::~StationBench() {
    SDL_FlushEvents(SDL_FIRSTEVENT, SDL_LASTEVENT);
    SDL_QuitSubSystem(SDL_INIT_EVENTS);
}

LevelResult StationBench::frame(double dt) {
    input.clearEdges();
    SDL_Event event;
    while (SDL_PollEvent(&event) != 0) {
        applyInputEvent(event, input);
    }
    if (verdict != LevelResult::Running) {
        return verdict;
    }
    elapsed += dt;
    const std::size_t before = sounds.size();
    const LevelResult r = station->update(dt, input, audio);
    EXPECT_TRUE(soundsFitVerdict(r, sounds, before)) << def.type;
    if (r == LevelResult::Solved || r == LevelResult::Failed) {
        verdict = r;
    }
    return verdict;
}

StationBench::Outcome StationBench::play(Solver& solver, double clock, double dt, Limits limits) {
    hand.limits = limits;
    Outcome out;
    // The run's clock counts down by the same frame times; a frame that
    // empties it fires the player before the station is asked again.
    double left = clock;
    while (left > 0.0) {
        hand.act(solver.decide(*station, hand.hand, elapsed), dt);
        out.result = frame(dt);
        ++out.frames;
        out.time = elapsed;
        if (out.result != LevelResult::Running) {
            return out;
        }
        left -= dt;
    }
    out.result = LevelResult::Running;
    return out;
}

namespace {

const std::string* lastVerdictSound(const std::vector<std::string>& sounds) {
    for (auto it = sounds.rbegin(); it != sounds.rend(); ++it) {
        if (*it == "pass" || *it == "fail") {
            return &*it;
        }
    }
    return nullptr;
}

}  // namespace

bool StationBench::lastSoundWasFail() const {
    const std::string* last = lastVerdictSound(sounds);
    return last != nullptr && *last == "fail";
}

bool StationBench::lastSoundWasPass() const {
    const std::string* last = lastVerdictSound(sounds);
    return last != nullptr && *last == "pass";
}

std::string unsolvedRuns(const std::string& type, int seeds, double dt, Limits limits) {
    const LevelDef def = shippedRecord(type);
    std::string report;
    const Difficulty all[] = {Difficulty::easy, Difficulty::medium, Difficulty::hard,
                              Difficulty::vorn};
    for (const Difficulty d : all) {
        const double clock = clockFor(def, d);
        for (int seed = 1; seed <= seeds; ++seed) {
            StationBench bench(def, static_cast<std::uint32_t>(seed));
            std::unique_ptr<Solver> solver = makeSolver(type);
            const StationBench::Outcome out = bench.play(*solver, clock, dt, limits);
            if (out.result != LevelResult::Solved) {
                char line[160];
                std::snprintf(line, sizeof line, "%s %s seed %d: %s after %.2f s of %.2f s\n",
                              type.c_str(), difficultyName(d), seed,
                              out.result == LevelResult::Failed ? "failed" : "clock ran out",
                              out.time, clock);
                report += line;
            }
        }
    }
    return report;
}

}  // namespace vorn::test
