#pragma once
// The one object of the program. It owns every subsystem (window, drawing
// kit, sound, save, catalogue, textures, the run and its station), brings them
// up in a fixed order in init, drives the main loop, and takes everything down
// again in reverse in shutdown. Only SDL, the window and the renderer are
// fatal at start-up; every other missing piece is logged and the game runs on
// with text in place of images, or in silence.

#include "app/game_types.h"
#include "base/input_state.h"
#include "audio/audio_system.h"
#include "data/level_catalogue.h"
#include "data/save_data.h"
#include "gfx/graphics.h"
#include "gfx/procedural_art.h"
#include "stations/level.h"

#include <SDL.h>

#include <cstdint>
#include <memory>
#include <random>
#include <string>
#include <utility>
#include <vector>

namespace vorn {

constexpr const char* kGameName = "The Vorn Co.";
constexpr const char* kBuild = "v0.01";

// The low 32 bits of the steady clock in nanoseconds: a new seed every run.
std::uint32_t steadyClockSeed();

class Application {
public:
    Application() = default;
    Application(const Application&) = delete;
    Application& operator=(const Application&) = delete;

    bool init();
    void shutdown();

    // How long each step of the last init took, in seconds, in the order
    // they ran: the benchmark prints it, nothing in the game reads it.
    std::vector<std::pair<const char*, double>> startupSteps;

    // The main loop: runs frames until `running` drops.
    void run();
    // One frame, given the real time since the previous one: events, then the
    // game advanced by at most 0.05 s, then the picture.
    void step(double elapsed);
    void processEvents();
    // After the renderer lost its device: the painted textures and the
    // studio logo made again (the splash would otherwise draw nothing).
    void reloadTextures();
    void update(double dt);
    void render();

    // basePath / "data" / name; name may hold a sub-folder ("levels/levels.json").
    std::string dataPath(const std::string& name) const;

    // Game flow between the top-level screens.
    void enterSplash();
    void enterTitle();
    void titleUpdate();

    // The run: a whole shift of stations against the clock.
    void startRun(Difficulty d);
    void startRunWithSeed(Difficulty d, std::uint32_t seed);
    void startStation(std::int32_t index);
    void updateStation(double dt);
    void stationPassed();
    void fired();

    SDL_Window* window = nullptr;
    Graphics graphics;
    AudioSystem audio;
    SaveData save;
    std::vector<LevelDef> levels;
    ProceduralArt art;
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
    std::int32_t shiftCardPhase = 0;   // 0 PROBATION, 1 SHIFT STARTS, 2 OVERTIME
    std::unique_ptr<Level> station;
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
    // Where a run started from the menu takes its seed: the steady clock's
    // low 32 bits. Tests replay a run by putting a fixed seed here.
    std::uint32_t (*seedSource)() = steadyClockSeed;
};

struct MenuItem {
    const char* label;
    std::int32_t code;   // 10 CONTINUE, 0..3 a new run at that difficulty, 99 QUIT
};

// The title menu as it stands: CONTINUE only while the player holds a card.
// Returns the number of items written (at most six).
int titleMenu(const SaveData& save, MenuItem (&items)[6]);

// Folds one keyboard or mouse event into the frame's input. The event pump
// uses it for everything but quit and window events; the station test bench
// feeds its pushed events through it too, so both read input identically.
void applyInputEvent(const SDL_Event& event, InputState& input);

// A double in [0, 1) from two draws of the run's engine.
double randomUnit(Rng& rng);

// The longest step a single frame may advance the game: a stall (window drag,
// breakpoint, slow disk) slows the game down instead of skipping its timers.
constexpr double kMaxFrameTime = 0.05;

}  // namespace vorn
