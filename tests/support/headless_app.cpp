#include "support/headless_app.h"

#include "support/test_platform.h"

#include <filesystem>

namespace vorn::test {

ScratchGameFolder::ScratchGameFolder(const std::string& name, GameFolderOptions options)
    : dir(name), cwd(dir.path()) {
    namespace fs = std::filesystem;
    const fs::path game = gameFolder();
    fs::create_directories(dir.path() / "data" / "music");
    if (options.shipAssets) {
        shareFolder(game / "assets", dir.path() / "assets");
    }
    if (!options.catalogue.empty()) {
        dir.write("data/levels/levels.json", options.catalogue);
    } else if (options.shipCatalogue && fs::exists(game / "data" / "levels" / "levels.json")) {
        fs::create_directories(dir.path() / "data" / "levels");
        fs::copy_file(game / "data" / "levels" / "levels.json",
                      dir.path() / "data" / "levels" / "levels.json");
    }
    if (options.prepare) {
        options.prepare(dir);
    }
}

std::string catalogueOf(std::initializer_list<CatalogueEntry> entries) {
    std::string text = "{\"levels\": [\n";
    bool first = true;
    for (const CatalogueEntry& e : entries) {
        if (!first) {
            text += ",\n";
        }
        first = false;
        const std::string n = std::to_string(e.number);
        text += "{\"n\": " + n + ", \"id\": \"s" + n + "\", \"name\": \"STATION " + n +
                "\", \"type\": \"" + e.type + "\", \"base_time\": " + std::to_string(e.baseTime) +
                "}";
    }
    return text + "\n]}\n";
}

std::string ScratchGameFolder::logText() const {
    return readTextFile(dir.path() / "data" / "vornco_log.txt");
}

HeadlessApp::HeadlessApp(const std::string& name, GameFolderOptions options)
    : folder(name, options) {
    app.audio.requestLog = options.sounds;
    started = app.init();
}

HeadlessApp::~HeadlessApp() { app.shutdown(); }

void InputDriver::moveTo(int x, int y) {
    SDL_Event event{};
    event.type = SDL_MOUSEMOTION;
    event.motion.x = x;
    event.motion.y = y;
    SDL_PushEvent(&event);
}

void InputDriver::pressButton(Uint8 button, int x, int y) {
    SDL_Event event{};
    event.type = SDL_MOUSEBUTTONDOWN;
    event.button.button = button;
    event.button.state = SDL_PRESSED;
    event.button.clicks = 1;
    event.button.x = x;
    event.button.y = y;
    SDL_PushEvent(&event);
}

void InputDriver::press(int x, int y) { pressButton(SDL_BUTTON_LEFT, x, y); }

void InputDriver::release(int x, int y) {
    SDL_Event event{};
    event.type = SDL_MOUSEBUTTONUP;
    event.button.button = SDL_BUTTON_LEFT;
    event.button.state = SDL_RELEASED;
    event.button.x = x;
    event.button.y = y;
    SDL_PushEvent(&event);
}

void InputDriver::key(SDL_Keycode keycode, bool repeat) {
    SDL_Event event{};
    event.type = SDL_KEYDOWN;
    event.key.state = SDL_PRESSED;
    event.key.repeat = repeat ? 1 : 0;
    event.key.keysym.sym = keycode;
    event.key.keysym.scancode = SDL_GetScancodeFromKey(keycode);
    SDL_PushEvent(&event);
}

void InputDriver::quit() {
    SDL_Event event{};
    event.type = SDL_QUIT;
    SDL_PushEvent(&event);
}

void InputDriver::frame(double dt) { app.step(dt); }

void InputDriver::frames(int count, double dt) {
    for (int i = 0; i < count; ++i) {
        frame(dt);
    }
}

void InputDriver::click(int x, int y, double dt) {
    moveTo(x, y);
    frame(dt);
    press(x, y);
    frame(dt);
    release(x, y);
    frame(dt);
}

}  // namespace vorn::test
