// The run: one attempt at a whole shift. Every catalogue station is dealt in
// an order drawn for the run (probation first, then the shift, then
// overtime), each against its own clock; a failed station or an empty clock
// fires the player, and clearing the last one ends in victory.

#include "app/application.h"

#include "app/difficulty.h"
#include "log/session_log.h"
#include "stations/level_factory.h"

#include <chrono>
#include <cmath>

namespace vorn {

namespace {

const char* const kShiftCardNames[] = {"PROBATION", "SHIFT STARTS", "OVERTIME"};

// Every station runs on 0.45 of its scaled base time, although the LEVEL: log
// line has always printed the factor as x0.9; the line's text stays as it is.
constexpr double kClockFactor = 0.45;
// Overtime is harsh whatever the difficulty.
constexpr double kOvertimeMultiplier = 0.7;

}  // namespace

double randomUnit(Rng& rng) { return uniformReal(rng); }

std::uint32_t steadyClockSeed() {
    const auto now = std::chrono::duration_cast<std::chrono::nanoseconds>(
                         std::chrono::steady_clock::now().time_since_epoch())
                         .count();
    return static_cast<std::uint32_t>(now);
}

void Application::startRun(Difficulty d) { startRunWithSeed(d, seedSource()); }

void Application::startRunWithSeed(Difficulty d, std::uint32_t seed) {
    difficulty = d;
    runSeed = seed;
    rng.seed(runSeed);

    // The phases go by station number alone, and every station is used in
    // every run whatever the difficulty.
    std::vector<std::int32_t> probation;
    std::vector<std::int32_t> shift;
    std::vector<std::int32_t> overtime;
    for (std::size_t i = 0; i < levels.size(); ++i) {
        const std::int32_t number = levels[i].number;
        const auto index = static_cast<std::int32_t>(i);
        if (number <= 10) {
            probation.push_back(index);
        } else if (number >= 31 && number <= 33) {
            overtime.push_back(index);
        } else {
            shift.push_back(index);
        }
    }
    shuffle(rng, probation);
    shuffle(rng, shift);
    shuffle(rng, overtime);

    stationOrder = probation;
    stationOrder.insert(stationOrder.end(), shift.begin(), shift.end());
    stationOrder.insert(stationOrder.end(), overtime.begin(), overtime.end());
    probationCount = shiftStart = static_cast<std::int32_t>(probation.size());
    overtimeStart = static_cast<std::int32_t>(probation.size() + shift.size());
    stationIndex = 0;

    audio.buildPlaylist(musicPath, runSeed);

    if (stationOrder.empty()) {
        enterTitle();
        return;
    }
    logInfo("RUN: start difficulty=%s seed=%u levels=%zu (probation=%zu shift=%zu overtime=%zu)",
            difficultyName(difficulty), runSeed, stationOrder.size(), probation.size(),
            shift.size(), overtime.size());
    shiftCardPhase = 0;
    screen = GameScreen::shiftCard;
    screenTime = 0.0;
    logInfo("SHIFTCARD: phase=%d ('%s')", 0, kShiftCardNames[0]);
}

void Application::startStation(std::int32_t index) {
    stationIndex = index;
    const LevelDef& def = levels[static_cast<std::size_t>(stationOrder[static_cast<std::size_t>(index)])];
    station = createLevel(def.type);
    station->setup(def, rng, kPlayArea);

    const double m = def.phase == "overtime" ? kOvertimeMultiplier : timeMultiplier(difficulty);
    const double t = def.baseTime * m * kClockFactor;
    timeTotal = timeLeft = t;
    shownSeconds = static_cast<std::int32_t>(t);
    timerRunning = true;
    logInfo("LEVEL: %d/%zu station %02d '%s' type=%s time=%.1fs (base=%d x%.2f x0.9)", index + 1,
            stationOrder.size(), def.number, def.name.c_str(), def.type.c_str(), t, def.baseTime,
            m);
    screen = GameScreen::station;
    screenTime = 0.0;
    timeWarning = false;
}

void Application::updateStation(double dt) {
    bool timeUp = false;
    secondTicked = false;
    if (timerRunning && timeLeft > 0.0) {
        timeLeft -= dt;
        if (timeLeft < 0.0) {
            timeLeft = 0.0;
        }
        // A tick for every whole second crossed. The start count is taken by
        // truncation, so a 10.8 s clock stays quiet through 10.0 and ticks
        // first at 9.0.
        const auto s = static_cast<std::int32_t>(std::ceil(timeLeft));
        secondTicked = s < shownSeconds;
        if (secondTicked) {
            shownSeconds = s;
            audio.playTick();
        }
        if (timeLeft <= 0.0) {
            timerRunning = false;
            timeUp = true;
        }
    }

    timeWarning = std::ceil(timeLeft) <= 3.0 && timeLeft > 0.0;
    if (timeWarning && secondTicked && sirenInLastSeconds(difficulty)) {
        audio.playSiren();
    }

    if (timeUp) {
        fired();
        return;
    }
    const LevelResult verdict = station->update(dt, input, audio);
    if (verdict == LevelResult::Failed) {
        fired();
    } else if (verdict == LevelResult::Solved) {
        stationPassed();
    }
}

void Application::stationPassed() {
    const std::int32_t next = stationIndex + 1;
    if (next >= static_cast<std::int32_t>(stationOrder.size())) {
        screen = GameScreen::victory;
        screenTime = 0.0;
        const double chance = clockInChance(difficulty);
        const double roll = randomUnit(rng);
        cardAwarded = roll < chance;
        if (cardAwarded) {
            save.clockInCards += 1;
        }
        writeSave(save);
        audio.playPass();
        logInfo("VICTORY: difficulty=%s clockInChance=%.2f awarded=%s totalCards=%d",
                difficultyName(difficulty), chance, cardAwarded ? "YES" : "no", save.clockInCards);
    } else if (next == shiftStart) {
        shiftCardPhase = 1;
        screen = GameScreen::shiftCard;
        screenTime = 0.0;
        logInfo("SHIFTCARD: phase=%d ('%s')", 1, kShiftCardNames[1]);
    } else if (next == overtimeStart) {
        shiftCardPhase = 2;
        screen = GameScreen::shiftCard;
        screenTime = 0.0;
        logInfo("SHIFTCARD: phase=%d ('%s')", 2, kShiftCardNames[2]);
    } else {
        startStation(next);
    }
}

void Application::fired() {
    save.timesFired += 1;
    screen = GameScreen::fired;
    screenTime = 0.0;
    writeSave(save);
    audio.playFail();
    const LevelDef& def = levels[static_cast<std::size_t>(stationOrder[static_cast<std::size_t>(stationIndex)])];
    logInfo("FIRED: at station %02d '%s' (%d/%zu) timeLeft=%.1fs timesFired=%ld", def.number,
            def.name.c_str(), stationIndex + 1, stationOrder.size(), timeLeft,
            static_cast<long>(save.timesFired));
}

}  // namespace vorn
