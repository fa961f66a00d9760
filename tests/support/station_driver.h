#pragma once
// The one way the tests drive a station outside the run. A station is made
// (by the factory from a record's type, or given), laid out with a seeded
// engine in the play area, and fed real SDL events folded into its input by
// the game's own event pump code, one frame at a time at a fixed frame time.
// Its audio system is never opened: every sound the station asks for is
// logged, and every frame is held to the rule that pass comes right before
// Solved and fail right before Failed. Once the station gives its verdict it
// is not asked again, as in the run.
//
// Unit tests press, release, drag, hold and idle through it; the automatic
// player's solvers play through it with a human hand (play, unsolvedRuns).

#include "app/game_types.h"
#include "audio/audio_system.h"
#include "base/input_state.h"
#include "data/level_catalogue.h"
#include "stations/level.h"
#include "support/human_hand.h"

#include <SDL.h>

#include <cstdint>
#include <initializer_list>
#include <memory>
#include <string>
#include <utility>
#include <vector>

namespace vorn::test {

// The shipped catalogue's record for a type string (phase filled in from its
// number). Fails the calling test when the type is not shipped.
LevelDef shippedRecord(const std::string& type);

// A record made up for a test: the type and number given, the phase its
// number falls in, a base time of 30 s.
LevelDef madeUpRecord(const std::string& type, std::int32_t number);

// The run's clock for a record: base time x difficulty multiplier x 0.45,
// with overtime's fixed 0.7 in place of the difficulty's.
double clockFor(const LevelDef& def, Difficulty d);

class StationDriver {
public:
    // Every frame the driver runs lasts this long unless a test says otherwise.
    static constexpr double kFrame = 1.0 / 60.0;

    // The factory's station for the record's type.
    StationDriver(const LevelDef& def, std::uint32_t seed, Rect area = kPlayArea);
    // The station given, laid out from the record.
    StationDriver(std::unique_ptr<Level> station, const LevelDef& def, std::uint32_t seed,
                  Rect area = kPlayArea);
    ~StationDriver();
    StationDriver(const StationDriver&) = delete;
    StationDriver& operator=(const StationDriver&) = delete;

    // One frame of dt: clears the input's edges, folds the pushed events
    // into it as the event pump does, then updates the station (not again
    // after a verdict). Returns the verdict so far.
    LevelResult frame(double dt = kFrame);
    // Frames with nothing new: the pointer and the button stay as they are.
    LevelResult idle(int frames = 1);
    // Idle frames until at least `seconds` have passed, or a verdict.
    LevelResult holdFor(double seconds);

    // One frame each.
    LevelResult moveTo(int x, int y);
    LevelResult press(int x, int y);
    LevelResult release();             // where the pointer is
    LevelResult release(int x, int y); // moved there first, in the same frame
    LevelResult key(SDL_Keycode key);
    // A press, and a release on the spot on the next frame if still running.
    LevelResult click(int x, int y);
    LevelResult clickCentre(const Rect& r);
    // Clicks each spot in turn and names the first one the station noticed
    // (it gave a verdict or asked for a sound) as "x,y"; "" when every click
    // went by unheard and the station still runs.
    std::string clicksNoticed(std::initializer_list<std::pair<int, int>> spots);
    // Press at the start, `steps` frames of motion in equal steps to the end
    // (the last one exactly on it), release there; stops at a verdict.
    LevelResult drag(int fromX, int fromY, int toX, int toY, int steps = 8);

    // The sounds asked for since the log held `from` requests.
    std::vector<std::string> soundsSince(std::size_t from) const;
    // The sounds asked for on the last frame.
    std::vector<std::string> heard() const;
    // The last verdict sound asked for (pass and fail share one channel and
    // cut each other, so only the last one is still heard).
    bool lastSoundWasFail() const;
    bool lastSoundWasPass() const;

    struct Outcome {
        LevelResult result = LevelResult::Running;   // Running: the clock ran out
        double time = 0.0;                           // station time used
        int frames = 0;
    };
    // Plays with the solver through a human hand until a verdict or until
    // `clock` seconds have passed. The hand starts where a seed puts it: in a
    // shift the pointer is wherever the last station or the menu left it.
    Outcome play(Solver& solver, double clock, double dt = kFrame, Limits limits = {});
    // Puts the hand where play would start it, for tests that move it themselves.
    void placeHand();

    LevelDef def;
    Rng rng;
    std::uint32_t seed;
    InputState input;
    std::vector<std::string> sounds;   // every sound request, in order
    AudioSystem audio;                 // never opened; logs into `sounds`
    std::unique_ptr<Level> station;
    HumanHand hand;
    LevelResult verdict = LevelResult::Running;
    double elapsed = 0.0;              // station time, over the frames it was asked
    int frames = 0;                    // frames run, verdict or not

private:
    std::size_t soundsBeforeLastFrame = 0;
};

// The same driver with the station's own type in view: `level` is the
// station, for tests that read its layout and state.
template <typename T>
class Driver : public StationDriver {
public:
    // A record holding only the number, as a test that needs nothing else sets it.
    explicit Driver(std::uint32_t seed = 5489, std::int32_t number = 11, Rect area = kPlayArea)
        : Driver(seed, numbered(number), area) {}
    Driver(std::uint32_t seed, const LevelDef& def, Rect area = kPlayArea)
        : StationDriver(std::make_unique<T>(), def, seed, area), level(static_cast<T&>(*station)) {}

    T& level;

private:
    static LevelDef numbered(std::int32_t number) {
        LevelDef def;
        def.number = number;
        return def;
    }
};

// Plays the shipped record of `type` with its solver on every difficulty for
// `seeds` seeds (1..seeds) and reports every run that was not solved in time,
// one line each; empty when all were.
std::string unsolvedRuns(const std::string& type, int seeds = 20, double dt = StationDriver::kFrame,
                         Limits limits = {});

}  // namespace vorn::test
