#pragma once
// The real Application started headless (dummy video and audio drivers) in a
// scratch game folder, plus an input driver that feeds it real SDL events and
// steps its frames with fixed frame times, so tests play the game exactly as
// the main loop does, minus the wall clock.

#include "app/application.h"
#include "support/temp_dir.h"

#include <SDL.h>

#include <functional>
#include <string>
#include <vector>

namespace vorn::test {

struct GameFolderOptions {
    bool shipAssets = true;      // link the built game's assets/ into the folder
    bool shipCatalogue = true;   // copy the shipped levels.json into data/levels
    std::string catalogue;       // when set, written as data/levels/levels.json instead
    std::function<void(const TempDir&)> prepare;   // runs before the game starts
    // When set, every request made of the game's audio system is logged here
    // from before init on, so the device's volumes and the sting are seen too.
    std::vector<std::string>* sounds = nullptr;
};

// A catalogue of the given records, each written as {"n":..,"id":..,"type":..,"base_time":..}.
struct CatalogueEntry {
    int number;
    const char* type;
    int baseTime;
};
std::string catalogueOf(std::initializer_list<CatalogueEntry> entries);

// A scratch copy of a player's game folder, made the working directory so the
// base folder resolves to "." (the test executable's own folder has no data).
class ScratchGameFolder {
public:
    explicit ScratchGameFolder(const std::string& name, GameFolderOptions options = {});

    std::string logText() const;

    TempDir dir;
    ScopedWorkingDirectory cwd;
};

class HeadlessApp {
public:
    explicit HeadlessApp(const std::string& name, GameFolderOptions options = {});
    ~HeadlessApp();
    HeadlessApp(const HeadlessApp&) = delete;
    HeadlessApp& operator=(const HeadlessApp&) = delete;

    ScratchGameFolder folder;
    Application app;
    bool started = false;
};

// Pushes real SDL events (window ID 0, so coordinates arrive as canvas
// pixels) and steps the application's frames.
class InputDriver {
public:
    explicit InputDriver(Application& app) : app(app) {}

    void moveTo(int x, int y);
    void press(int x, int y);
    void release(int x, int y);
    void pressButton(Uint8 button, int x, int y);
    void key(SDL_Keycode key, bool repeat = false);
    void quit();

    // One frame: events, update(dt), render, exactly as the main loop runs it.
    void frame(double dt = 1.0 / 60.0);
    void frames(int count, double dt = 1.0 / 60.0);
    // Moves, presses and releases in one frame each.
    void click(int x, int y, double dt = 1.0 / 60.0);

private:
    Application& app;
};

}  // namespace vorn::test
