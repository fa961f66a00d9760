// Random hands on every station: thousands of frames of pointer motion
// anywhere on the canvas, presses, releases and keys, at frame times from
// 1 ms to 50 ms, across many seeds, under the sanitizers. No station may
// crash, break the verdict-sound rule (the driver holds every frame to it),
// or fail to draw.

#include "support/human_hand.h"
#include "support/software_canvas.h"
#include "support/station_driver.h"

#include <gtest/gtest.h>

#include <SDL.h>

#include <random>
#include <string>

namespace vorn::test {
namespace {

class StationSoak : public ::testing::TestWithParam<const char*> {};

void pushRandomEvent(std::mt19937& hands) {
    const std::uint32_t roll = hands() % 100;
    const int x = static_cast<int>(hands() % kCanvasWidth);
    const int y = static_cast<int>(hands() % kCanvasHeight);
    if (roll < 55) {
        pushMotion(x, y);
    } else if (roll < 70) {
        pushButton(true, x, y);
    } else if (roll < 85) {
        pushButton(false, x, y);
    } else {
        static const SDL_Keycode keys[] = {SDLK_UP, SDLK_DOWN, SDLK_LEFT, SDLK_RIGHT, SDLK_RETURN,
                                           SDLK_SPACE, SDLK_ESCAPE, SDLK_a, SDLK_q, SDLK_7};
        SDL_Event event{};
        event.type = SDL_KEYDOWN;
        event.key.state = SDL_PRESSED;
        event.key.keysym.sym = keys[hands() % 10];
        SDL_PushEvent(&event);
    }
}

TEST_P(StationSoak, RandomInputNeverBreaksTheStation) {
    const std::string type = GetParam();
    SoftwareCanvas canvas;
    canvas.useGameFonts();
    std::mt19937 hands(0xC0FFEEu);
    int frames = 0;
    int verdicts = 0;
    // Fresh stations until enough frames have been played: stations that
    // fire on any stray click end most episodes within a few frames.
    const int numbers[] = {5, 22, 40};
    for (std::uint32_t seed = 1; frames < 3000 && seed <= 2000; ++seed) {
        {
            // The driver folds the pushed events in as the run's event pump does.
            StationDriver bench(madeUpRecord(type, numbers[seed % 3]), seed);
            for (int i = 0; i < 160; ++i) {
                const int events = static_cast<int>(hands() % 4);
                for (int e = 0; e < events; ++e) {
                    pushRandomEvent(hands);
                }
                // This test is about odd frame times: each frame draws its own.
                const LevelResult result = bench.frame((1 + hands() % 50) / 1000.0);
                bench.station->render(canvas.graphics);
                ++frames;
                if (::testing::Test::HasFailure()) {
                    FAIL() << type << " broke the verdict-sound rule, seed " << seed << ", frame " << i;
                }
                if (result != LevelResult::Running) {
                    ++verdicts;
                    break;
                }
            }
        }
    }
    EXPECT_GE(frames, 3000);
    RecordProperty("verdicts", verdicts);
}

INSTANTIATE_TEST_SUITE_P(
    EveryType, StationSoak,
    ::testing::Values("button", "hold", "twohand", "patience", "timing", "orbit", "whack", "doubleclick",
                      "precision", "decoy", "greased", "hotcold", "simon", "antisimon", "sequence", "recall",
                      "memory", "morse", "lightsout", "maze", "pipes", "wires", "switches", "fusebox", "valve",
                      "gauntlet", "dial", "combo", "calibrate", "scale", "keypad", "liarkeypad", "eula",
                      "settings", "quiz", "stroop", "stamp", "reverse", "no-such-station"),
    [](const ::testing::TestParamInfo<const char*>& info) {
        std::string name;
        for (const char* c = info.param; *c != '\0'; ++c) {
            name += (*c == '-') ? '_' : *c;
        }
        return name;
    });

}  // namespace
}  // namespace vorn::test
