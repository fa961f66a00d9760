#pragma once
// One station on its own, outside the run: made by the factory from a
// catalogue record, laid out with a seeded engine in the run's play area, fed
// real SDL events through the game's own input folding, and updated with
// fixed frame times. Its audio system is never opened: every request the
// station makes of it is logged, and every frame is held to the rule that
// pass comes right before Solved and fail right before Failed. This is where
// each station's solver proves it can clear the station within its clock.

#include "app/game_types.h"
#include "base/input_state.h"
#include "audio/audio_system.h"
#include "data/level_catalogue.h"
#include "stations/level.h"
#include "support/human_hand.h"

#include <cstdint>
#include <memory>
#include <string>
#include <vector>

namespace vorn::test {

// The shipped catalogue's record for a type string (phase filled in from its
// number). Fails the calling test when the type is not shipped.
LevelDef shippedRecord(const std::string& type);

// The run's clock for a record: base time x difficulty multiplier x 0.45,
// with overtime's fixed 0.7 in place of the difficulty's.
double clockFor(const LevelDef& def, Difficulty d);

class StationBench {
public:
    StationBench(const LevelDef& def, std::uint32_t seed);
    ~StationBench();
    StationBench(const StationBench&) = delete;
    StationBench& operator=(const StationBench&) = delete;

    // One frame: folds the pushed events into the input as the game's event
    // pump does, then updates the station (not again after a verdict).
    LevelResult frame(double dt);

    struct Outcome {
        LevelResult result = LevelResult::Running;   // Running: the clock ran out
        double time = 0.0;                           // station time used
        int frames = 0;
    };
    // Plays with the solver through a human hand until a verdict or until
    // `clock` seconds have passed.
    Outcome play(Solver& solver, double clock, double dt = 1.0 / 60.0, Limits limits = {});

    // The last verdict sound asked for (pass and fail share one channel and
    // cut each other, so only the last one is still heard).
    bool lastSoundWasFail() const;
    bool lastSoundWasPass() const;

    LevelDef def;
    Rng rng;
    InputState input;
    std::vector<std::string> sounds;   // every sound request, in order
    AudioSystem audio;                 // never opened; logs into `sounds`
    std::unique_ptr<Level> station;
    HumanHand hand;
    LevelResult verdict = LevelResult::Running;
    double elapsed = 0.0;
};

// Plays the shipped record of `type` with its solver on every difficulty for
// `seeds` seeds (1..seeds) and reports every run that was not solved in time,
// one line each; empty when all were.
std::string unsolvedRuns(const std::string& type, int seeds = 20, double dt = 1.0 / 60.0,
                         Limits limits = {});

}  // namespace vorn::test
