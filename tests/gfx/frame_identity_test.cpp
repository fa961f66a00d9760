// Every pixel of every frame, pinned. Each screen and each station type of
// the shipped catalogue is drawn at several moments (idle, pressed, lit, the
// clock's warning, the fades) for several seeds, and each whole canvas is
// reduced to a 64-bit hash and compared with the hash the same frame had
// when the list was made. Any change to how anything is drawn, however small,
// changes some hash: a change meant to keep the pictures (a faster way to
// draw the same thing) must keep every one.
//
// The list lives in frame_hashes.txt beside this file. After a change that
// is meant to alter the pictures, write it anew with
//   VORN_WRITE_FRAME_HASHES=1 build/sanitize/tests/vorn_tests --gtest_filter='FrameIdentity.*'
// and look at what changed in the gallery before committing the new list.

#include "data/level_catalogue.h"
#include "support/canvas_app.h"
#include "support/temp_dir.h"
#include "support/test_platform.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <fstream>
#include <functional>
#include <map>
#include <numeric>
#include <sstream>
#include <string>
#include <vector>

namespace vorn::test {
namespace {

namespace fs = std::filesystem;

const fs::path kHashFile = fs::u8path(VORN_SOURCE_DIR) / "tests" / "gfx" / "frame_hashes.txt";

// FNV-1a over the canvas's pixels, row by row.
std::uint64_t canvasHash(const SoftwareCanvas& canvas) {
    std::uint64_t h = 14695981039346656037ull;
    const SDL_Surface* s = canvas.surface;
    for (int y = 0; y < s->h; ++y) {
        const auto* row = static_cast<const unsigned char*>(s->pixels) + y * s->pitch;
        for (int i = 0; i < s->w * 4; ++i) {
            h = (h ^ row[i]) * 1099511628211ull;
        }
    }
    return h;
}

// Draws the frames and collects "name hash" pairs in drawing order.
class FrameBook {
public:
    FrameBook() {
        loadLevels(shot.app.levels, std::string(VORN_GAME_DIR) + "/data/levels/levels.json");
        shot.app.stationOrder.resize(shot.app.levels.size());
        std::iota(shot.app.stationOrder.begin(), shot.app.stationOrder.end(), 0);
    }

    void frame(const std::string& name) {
        shot.app.render();
        hashes.emplace_back(name, canvasHash(shot.canvas));
    }

    void screen(const std::string& name, GameScreen s, double t) {
        shot.app.screen = s;
        shot.app.screenTime = t;
        frame(name);
    }

    // One frame of the station: the input as given, then update and render.
    void stationStep(const std::string& name, double dt) {
        shot.app.updateStation(dt);
        frame(name);
        shot.app.input.clearEdges();
    }

    CanvasApp shot;
    std::vector<std::pair<std::string, std::uint64_t>> hashes;
};

void drawScreens(FrameBook& book) {
    Application& app = book.shot.app;
    app.splashRevealed = false;
    book.screen("splash-waiting", GameScreen::splash, 0.3);
    app.splashRevealed = true;
    app.splashRevealAt = 1.0;
    book.screen("splash-fading-in", GameScreen::splash, 1.2);
    book.screen("splash-revealed", GameScreen::splash, 3.0);
    for (int phase = 0; phase < 3; ++phase) {
        app.shiftCardPhase = phase;
        for (double t : {0.2, 1.5, 2.8}) {
            book.screen("card-" + std::to_string(phase) + "-" + std::to_string(static_cast<int>(t * 10)),
                        GameScreen::shiftCard, t);
        }
    }
    app.save.timesFired = 123;
    for (int cards : {0, 2}) {
        app.save.clockInCards = cards;
        for (int row = 0; row < 4; ++row) {
            app.menuIndex = row;
            book.screen("title-cards" + std::to_string(cards) + "-row" + std::to_string(row), GameScreen::title,
                        1.0);
        }
    }
    for (Difficulty d : {Difficulty::medium, Difficulty::vorn}) {
        app.difficulty = d;
        book.screen("fired-" + std::to_string(static_cast<int>(d)), GameScreen::fired, 1.0);
        for (bool card : {false, true}) {
            app.cardAwarded = card;
            book.screen("victory-" + std::to_string(static_cast<int>(d)) + (card ? "-card" : ""),
                        GameScreen::victory, 1.0);
        }
    }
}

void drawStations(FrameBook& book) {
    Application& app = book.shot.app;
    std::vector<std::string> seen;
    for (std::size_t i = 0; i < app.levels.size(); ++i) {
        const std::string type = app.levels[i].type;
        if (std::find(seen.begin(), seen.end(), type) != seen.end()) {
            continue;
        }
        seen.push_back(type);
        for (std::uint32_t seed : {7u, 2026u}) {
            const std::string base = type + "-" + std::to_string(seed);
            app.difficulty = seed == 7u ? Difficulty::easy : Difficulty::vorn;
            app.rng.seed(seed);
            app.startStation(static_cast<std::int32_t>(i));
            app.input = InputState{};
            book.frame(base + "-idle");
            if (seed != 7u) {
                continue;   // a second deal, seen as dealt
            }
            // The pointer held down in the middle of the play area: buttons
            // lit or pressed, knobs grabbed, whatever lies there.
            app.input.mouseX = kPlayArea.x + kPlayArea.w / 2;
            app.input.mouseY = kPlayArea.y + kPlayArea.h / 2;
            app.input.mouseDown = true;
            app.input.mousePressed = true;
            book.stationStep(base + "-pressed", 1.0 / 60.0);
            app.input.mouseX += 40;
            book.stationStep(base + "-dragged", 0.25);
            app.input.mouseDown = false;
            app.input.mouseReleased = true;
            book.stationStep(base + "-released", 0.5);
            // The last seconds of the clock: the warning and its blink.
            if (app.screen == GameScreen::station && app.timerRunning) {
                app.timeLeft = 2.5;
                app.screenTime = 10.1;
                book.stationStep(base + "-warning", 1.0 / 60.0);
            }
        }
    }
}

std::map<std::string, std::uint64_t> storedHashes() {
    std::map<std::string, std::uint64_t> stored;
    std::ifstream in(kHashFile);
    std::string name;
    std::string hex;
    while (in >> name >> hex) {
        stored[name] = std::stoull(hex, nullptr, 16);
    }
    return stored;
}

TEST(FrameIdentity, EveryScreenAndStationDrawsTheSamePixelsAsWhenTheListWasMade) {
    VORN_NATIVE_ONLY("the list was drawn with the native SDL, FreeType and maths libraries; the Windows "
                     "build's own copies may round a few pixels differently");
    FrameBook book;
    ASSERT_EQ(book.shot.app.levels.size(), 38u);
    drawScreens(book);
    drawStations(book);

    if (std::getenv("VORN_WRITE_FRAME_HASHES") != nullptr) {
        std::ofstream out(kHashFile);
        for (const auto& [name, hash] : book.hashes) {
            char line[128];
            std::snprintf(line, sizeof line, "%s %016llx\n", name.c_str(), static_cast<unsigned long long>(hash));
            out << line;
        }
        GTEST_SKIP() << "wrote " << book.hashes.size() << " frame hashes to " << kHashFile;
    }
    const std::map<std::string, std::uint64_t> stored = storedHashes();
    ASSERT_EQ(stored.size(), book.hashes.size()) << "the list and the frames drawn differ in number";
    int changed = 0;
    for (const auto& [name, hash] : book.hashes) {
        const auto it = stored.find(name);
        ASSERT_NE(it, stored.end()) << name << " is not in the list";
        if (it->second != hash) {
            ADD_FAILURE() << name << " draws different pixels";
            ++changed;
        }
    }
    EXPECT_EQ(changed, 0);
}

}  // namespace
}  // namespace vorn::test
