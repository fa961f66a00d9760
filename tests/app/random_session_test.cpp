// A long random session of the whole game under the sanitizers: random
// motion, presses, releases and keys at 1-50 ms frame times through the
// splash, the title, runs, the fired notice and, now and then, a shift won by
// the automatic player for the victory notice; then the window is closed.
// Nothing may crash, and the log and the save file must come out well formed.

#include "support/auto_player.h"
#include "support/headless_app.h"

#include <gtest/gtest.h>

#include <SDL.h>

#include <algorithm>
#include <random>
#include <regex>
#include <sstream>
#include <string>

namespace vorn::test {
namespace {

std::uint32_t sessionSeed() { return 777u; }

void randomEvent(std::mt19937& hands, const Application& app) {
    const std::uint32_t roll = hands() % 100;
    const int x = static_cast<int>(hands() % 1366);
    const int y = static_cast<int>(hands() % 768);
    if (roll < 55) {
        pushMotion(x, y);
    } else if (roll < 72) {
        // Not on the title's last rows, where QUIT would end the session early.
        if (app.screen != GameScreen::title || y < 526) {
            pushButton(true, x, y);
        }
    } else if (roll < 88) {
        pushButton(false, x, y);
    } else {
        static const SDL_Keycode keys[] = {SDLK_UP, SDLK_DOWN, SDLK_RETURN, SDLK_SPACE,
                                           SDLK_ESCAPE, SDLK_w, SDLK_s, SDLK_x};
        SDL_Keycode key = keys[hands() % 8];
        // Enter on the title picks the highlighted row, which may be QUIT.
        if (app.screen == GameScreen::title && (key == SDLK_RETURN || key == SDLK_SPACE)) {
            key = SDLK_x;
        }
        SDL_Event event{};
        event.type = SDL_KEYDOWN;
        event.key.state = SDL_PRESSED;
        event.key.keysym.sym = key;
        SDL_PushEvent(&event);
    }
}

TEST(RandomSession, ALongSessionOfRandomInputEndsWithAWellFormedLogAndSave) {
    GameFolderOptions options;
    options.catalogue = catalogueOf({{1, "button", 20}, {2, "odd", 18}, {11, "quiz", 20},
                                     {12, "stamp", 18}, {31, "settings", 18}});
    HeadlessApp headless("random_session", options);
    ASSERT_TRUE(headless.started);
    Application& app = headless.app;
    app.seedSource = sessionSeed;
    std::mt19937 hands(4242u);
    int victories = 0;
    int firings = 0;
    bool wasFired = false;
    int nextShift = 1500;
    for (int frame = 0; frame < 6000 && app.running; ++frame) {
        if (frame >= nextShift && app.screen == GameScreen::title) {
            nextShift = frame + 2000;
            // Now and then a proper shift, for the victory notice.
            AutoPlayer player(app);
            player.drawEvery = 6;
            if (player.playShift(Difficulty::easy, 120.0) == GameScreen::victory) {
                ++victories;
            }
            continue;
        }
        const int events = static_cast<int>(hands() % 4);
        for (int e = 0; e < events; ++e) {
            randomEvent(hands, app);
        }
        const double dt = (1 + hands() % 50) / 1000.0;
        // Every eighth frame is drawn; the rest only read input and update.
        if (frame % 8 == 0) {
            app.step(dt);
        } else {
            app.processEvents();
            app.update(std::min(dt, kMaxFrameTime));
        }
        const bool fired = app.screen == GameScreen::fired;
        firings += fired && !wasFired ? 1 : 0;
        wasFired = fired;
    }
    ASSERT_TRUE(app.running) << "the session ended before the close request";
    EXPECT_GT(firings, 0);
    EXPECT_GT(victories, 0);
    // The window's close button.
    InputDriver(app).quit();
    app.step(0.016);
    EXPECT_FALSE(app.running);
    app.shutdown();

    // Every line of the log is a banner line or a time-stamped message.
    const std::string log = headless.folder.logText();
    const std::regex stamped(R"(^\[\d\d:\d\d:\d\d\] (INFO |WARN |ERROR|DEBUG|VERB |CRIT )? ?.*$)");
    std::istringstream lines(log);
    int count = 0;
    std::string last;
    for (std::string line; std::getline(lines, line);) {
        ++count;
        const bool banner = line.empty() || line == std::string(66, '=') || line.rfind(" The Vorn Co.", 0) == 0;
        EXPECT_TRUE(banner || std::regex_match(line, stamped)) << "line " << count << ": " << line;
        last = line;
    }
    EXPECT_GT(count, 20);
    EXPECT_NE(last.find("session end"), std::string::npos) << last;

    // The save file: the header and the five keys, each once, as digits.
    std::istringstream save(readTextFile(headless.folder.dir.path() / "data" / "vornco_save.txt"));
    std::string header;
    std::getline(save, header);
    EXPECT_EQ(header.rfind("#", 0), 0u) << header;
    const std::regex key(R"(^(splashSeen|introSeen|timesFired|clockInCards|lastDifficulty)=-?\d+$)");
    int keys = 0;
    for (std::string line; std::getline(save, line);) {
        EXPECT_TRUE(std::regex_match(line, key)) << line;
        ++keys;
    }
    EXPECT_EQ(keys, 5);
}

}  // namespace
}  // namespace vorn::test
