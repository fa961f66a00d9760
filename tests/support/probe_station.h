#pragma once
// A station for testing the run itself: it answers whatever verdict the test
// sets and counts how often the run asked it.

#include "stations/level.h"

namespace vorn::test {

class ProbeStation final : public Level {
public:
    LevelResult update(double, const InputState&, AudioSystem&) override {
        ++updates;
        return verdict;
    }
    void render(Graphics&) override { ++renders; }

    LevelResult verdict = LevelResult::Running;
    int updates = 0;
    int renders = 0;
};

}  // namespace vorn::test
