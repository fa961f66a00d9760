#include "support/station_driver.h"

#include "app/application.h"
#include "app/difficulty.h"
#include "stations/level_factory.h"
#include "support/station_sounds.h"

#include <gtest/gtest.h>

#include <SDL.h>

#include <cstdio>
#include <random>
#include <utility>
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

LevelDef madeUpRecord(const std::string& type, std::int32_t number) {
    LevelDef def;
    def.number = number;
    def.id = "test";
    def.name = "TEST";
    def.type = type;
    def.phase = phaseForNumber(number);
    def.baseTime = 30;
    return def;
}

StationDriver::StationDriver(const LevelDef& record, std::uint32_t seed, Rect area)
    : StationDriver(createLevel(record.type), record, seed, area) {}

StationDriver::StationDriver(std::unique_ptr<Level> made, const LevelDef& record, std::uint32_t seed,
                             Rect area)
    : def(record), rng(seed), seed(seed), station(std::move(made)) {
    audio.requestLog = &sounds;
    // The event queue for the driver's SDL events, held for its life (SDL
    // counts the holds, so drivers nest and leave nothing behind).
    SDL_InitSubSystem(SDL_INIT_EVENTS);
    SDL_FlushEvents(SDL_FIRSTEVENT, SDL_LASTEVENT);
    station->setup(def, rng, area);
}

StationDriver::~StationDriver() {
    SDL_FlushEvents(SDL_FIRSTEVENT, SDL_LASTEVENT);
    SDL_QuitSubSystem(SDL_INIT_EVENTS);
}

LevelResult StationDriver::frame(double dt) {
    input.clearEdges();
    SDL_Event event;
    while (SDL_PollEvent(&event) != 0) {
        applyInputEvent(event, input);
    }
    ++frames;
    soundsBeforeLastFrame = sounds.size();
    if (verdict != LevelResult::Running) {
        return verdict;
    }
    elapsed += dt;
    const LevelResult r = station->update(dt, input, audio);
    EXPECT_TRUE(soundsFitVerdict(r, sounds, soundsBeforeLastFrame)) << def.type;
    if (r == LevelResult::Solved || r == LevelResult::Failed) {
        verdict = r;
    }
    return verdict;
}

LevelResult StationDriver::idle(int count) {
    LevelResult r = verdict;
    for (int i = 0; i < count; ++i) {
        r = frame();
    }
    return r;
}

LevelResult StationDriver::holdFor(double seconds) {
    // A hair under the whole seconds, so sixty frames of 1/60 s make one
    // second although their sum falls short of 1.0 in binary.
    const double until = elapsed + seconds - 1e-9;
    LevelResult r = verdict;
    while (elapsed < until && r == LevelResult::Running) {
        r = frame();
    }
    return r;
}

LevelResult StationDriver::moveTo(int x, int y) {
    pushMotion(x, y);
    return frame();
}

LevelResult StationDriver::press(int x, int y) {
    pushMotion(x, y);
    pushButton(true, x, y);
    return frame();
}

LevelResult StationDriver::release() {
    pushButton(false, input.mouseX, input.mouseY);
    return frame();
}

LevelResult StationDriver::release(int x, int y) {
    pushMotion(x, y);
    pushButton(false, x, y);
    return frame();
}

LevelResult StationDriver::key(SDL_Keycode sym) {
    SDL_Event event{};
    event.type = SDL_KEYDOWN;
    event.key.state = SDL_PRESSED;
    event.key.keysym.sym = sym;
    event.key.keysym.scancode = SDL_GetScancodeFromKey(sym);
    SDL_PushEvent(&event);
    return frame();
}

LevelResult StationDriver::click(int x, int y) {
    const LevelResult r = press(x, y);
    return r == LevelResult::Running ? release() : r;
}

LevelResult StationDriver::clickCentre(const Rect& r) { return click(r.x + r.w / 2, r.y + r.h / 2); }

std::string StationDriver::clicksNoticed(std::initializer_list<std::pair<int, int>> spots) {
    for (const auto& [x, y] : spots) {
        const std::size_t before = sounds.size();
        if (click(x, y) != LevelResult::Running || sounds.size() != before) {
            return std::to_string(x) + "," + std::to_string(y);
        }
    }
    return "";
}

LevelResult StationDriver::drag(int fromX, int fromY, int toX, int toY, int steps) {
    LevelResult r = press(fromX, fromY);
    for (int i = 1; i <= steps && r == LevelResult::Running; ++i) {
        r = moveTo(fromX + (toX - fromX) * i / steps, fromY + (toY - fromY) * i / steps);
    }
    return r == LevelResult::Running ? release() : r;
}

std::vector<std::string> StationDriver::soundsSince(std::size_t from) const {
    return soundsFrom(sounds, from);
}

std::vector<std::string> StationDriver::heard() const { return soundsFrom(sounds, soundsBeforeLastFrame); }

void StationDriver::placeHand() {
    std::mt19937 place(seed ^ 0x9E3779B9u);
    const int x = 40 + static_cast<int>(place() % 1286u);
    const int y = 40 + static_cast<int>(place() % 688u);
    hand.reset(x, y);
    pushMotion(x, y);
}

StationDriver::Outcome StationDriver::play(Solver& solver, double clock, double dt, Limits limits) {
    if (frames == 0) {
        placeHand();
    }
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

bool StationDriver::lastSoundWasFail() const {
    const std::string* last = lastVerdictSound(sounds);
    return last != nullptr && *last == "fail";
}

bool StationDriver::lastSoundWasPass() const {
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
            StationDriver bench(def, static_cast<std::uint32_t>(seed));
            std::unique_ptr<Solver> solver = makeSolver(type);
            const StationDriver::Outcome out = bench.play(*solver, clock, dt, limits);
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
