#pragma once
// The one object of the program. It owns every subsystem (window, drawing
// kit, sound, save, catalogue, textures, the run and its station), brings them
// up in a fixed order in init, drives the main loop, and takes everything down
// again in reverse in shutdown. Only SDL, the window and the renderer are
// fatal at start-up; every other missing piece is logged and the game runs on
// with text in place of images, or in silence.

#include "app/game_types.h"
#include "app/input_state.h"
#include "gfx/graphics.h"

#include <SDL.h>

#include <cstdint>
#include <memory>
#include <random>
#include <string>
#include <vector>

namespace vorn {

constexpr const char* kGameName = "The Vorn Co.";
constexpr const char* kBuild = "v0.01";

class Application {
public:
    Application() = default;
    Application(const Application&) = delete;
    Application& operator=(const Application&) = delete;

    bool init();
    void shutdown();

    // The main loop: runs frames until `running` drops.
    void run();
    // One frame, given the real time since the previous one: events, then the
    // game advanced by at most 0.05 s, then the picture.
    void step(double elapsed);
    void processEvents();
    void update(double dt);
    void render();

    // basePath / "data" / name; name may hold a sub-folder ("levels/levels.json").
    std::string dataPath(const std::string& name) const;

    SDL_Window* window = nullptr;
    Graphics graphics;
    GameScreen screen = GameScreen::splash;
    bool running = true;
    InputState input;
    std::string basePath;
    std::string musicPath;
    std::string assetsPath;
    double screenTime = 0.0;
    SDL_Texture* studioLogo = nullptr;
    std::int32_t studioLogoW = 0;
    std::int32_t studioLogoH = 0;
    bool stingStarted = false;
    bool splashRevealed = false;
    double splashRevealAt = 0.0;
    Difficulty difficulty = Difficulty::medium;
    std::vector<std::int32_t> stationOrder;
    std::int32_t stationIndex = 0;
    std::int32_t probationCount = 0;
    std::int32_t shiftStart = 0;
    std::int32_t overtimeStart = 0;
    std::int32_t shiftCardPhase = 0;
    double timeTotal = 0.0;
    double timeLeft = 0.0;
    std::int32_t shownSeconds = 0;
    bool timerRunning = false;
    bool secondTicked = false;
    std::mt19937 rng;   // default seed 5489 until a run reseeds it
    std::uint32_t runSeed = 0;
    std::int32_t menuIndex = 0;
    bool timeWarning = false;
    bool cardAwarded = false;
};

// The longest step a single frame may advance the game: a stall (window drag,
// breakpoint, slow disk) slows the game down instead of skipping its timers.
constexpr double kMaxFrameTime = 0.05;

}  // namespace vorn
