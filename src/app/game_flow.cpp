// The machine of top-level screens: splash, title terminal, shift cards,
// stations, and the fired and victory notices. update() and render() switch
// on the same screen, side by side in this file, so a new screen is seen in
// both.

#include "app/application.h"

#include "app/difficulty.h"
#include "app/paths.h"

#include <filesystem>

namespace vorn {

namespace {

constexpr std::int32_t kContinueCode = 10;
constexpr std::int32_t kQuitCode = 99;

// How long the splash waits for the sting before revealing the logo anyway,
// how long it lingers once the sting has finished, and its hard limit.
constexpr double kSplashRevealWait = 1.5;
constexpr double kSplashLinger = 1.5;
constexpr double kSplashLongest = 6.0;
constexpr double kShiftCardSeconds = 3.0;
// A click that ended the station must not also dismiss the notice.
constexpr double kNoticeGuard = 0.6;

// The title menu's rows, for the pointer: x from 533 to 833, 46 px apart.
constexpr Rect menuRow(int i) { return Rect{533, 350 + 46 * i, 300, 38}; }

}  // namespace

int titleMenu(const SaveData& save, MenuItem (&items)[6]) {
    int n = 0;
    if (save.clockInCards > 0) {
        items[n++] = {"> CONTINUE", kContinueCode};
    }
    items[n++] = {"NEW: EASY", 0};
    items[n++] = {"NEW: MEDIUM", 1};
    items[n++] = {"NEW: HARD", 2};
    items[n++] = {"NEW: VORN", 3};
    items[n++] = {"QUIT", kQuitCode};
    return n;
}

void Application::enterSplash() {
    screen = GameScreen::splash;
    screenTime = 0.0;
    splashRevealed = false;
    splashRevealAt = 0.0;
    if (!stingStarted) {
        stingStarted = true;
        audio.playSting(pathString(std::filesystem::u8path(assetsPath) / "audio" /
                                   "zembrilux-sting.mp3"));
    }
}

void Application::enterTitle() {
    screen = GameScreen::title;
    screenTime = 0.0;
    menuIndex = 0;
    audio.playTitleMusic(musicPath);
}

void Application::titleUpdate() {
    MenuItem items[6];
    const int n = titleMenu(save, items);
    if (input.down) {
        menuIndex = (menuIndex + 1) % n;
    }
    if (input.up) {
        menuIndex = (menuIndex - 1 + n) % n;
    }
    int chosen = input.confirm ? menuIndex : -1;
    for (int i = 0; i < n; ++i) {
        // A resting pointer keeps its row highlighted, even against the keys.
        if (contains(menuRow(i), input.mouseX, input.mouseY)) {
            menuIndex = i;
            if (input.mousePressed) {
                chosen = i;
            }
        }
    }
    if (chosen < 0 || chosen >= n) {
        return;
    }
    audio.playClick();
    const std::int32_t code = items[chosen].code;
    if (code == kQuitCode) {
        running = false;
    } else if (code == kContinueCode) {
        // Continue spends no card: it starts a run at the current difficulty.
        startRun(difficulty);
    } else {
        difficulty = static_cast<Difficulty>(code);
        save.lastDifficulty = code;
        startRun(difficulty);
    }
}

void Application::update(double dt) {
    screenTime += dt;
    switch (screen) {
        case GameScreen::splash:
            if (input.mousePressed || input.confirm || input.escape || input.anyKey) {
                audio.stopMusic();
                save.splashSeen = true;
                writeSave(save);
                enterTitle();
            } else if (!splashRevealed) {
                if (audio.isMusicPlaying() || screenTime >= kSplashRevealWait) {
                    splashRevealed = true;
                    splashRevealAt = screenTime;
                }
            } else {
                const double e = screenTime - splashRevealAt;
                if ((!audio.isMusicPlaying() && e >= kSplashLinger) || e >= kSplashLongest) {
                    // A sting still playing is cut by the title music.
                    save.splashSeen = true;
                    writeSave(save);
                    enterTitle();
                }
            }
            break;
        case GameScreen::intro:
            enterTitle();
            break;
        case GameScreen::title:
            titleUpdate();
            break;
        case GameScreen::shiftCard:
            if (screenTime >= kShiftCardSeconds) {
                const std::int32_t opening[] = {0, shiftStart, overtimeStart};
                startStation(opening[shiftCardPhase >= 0 && shiftCardPhase <= 2 ? shiftCardPhase : 0]);
            }
            break;
        case GameScreen::station:
            updateStation(dt);
            break;
        case GameScreen::fired:
        case GameScreen::victory:
            if (screenTime > kNoticeGuard && (input.mousePressed || input.confirm || input.anyKey)) {
                enterTitle();
            }
            break;
    }
    if (screen == GameScreen::station || screen == GameScreen::fired ||
        screen == GameScreen::victory) {
        audio.updatePlaylist();
    }
}

void Application::render() {
    graphics.clear(palette::black);
    switch (screen) {
        case GameScreen::splash:
        case GameScreen::intro:
        case GameScreen::title:
        case GameScreen::shiftCard:
        case GameScreen::fired:
        case GameScreen::victory:
            break;
        case GameScreen::station:
            if (station) {
                station->render(graphics);
            }
            break;
    }
    graphics.present();
}

}  // namespace vorn
