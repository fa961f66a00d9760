// The machine of top-level screens: splash, title terminal, shift cards,
// stations, and the fired and victory notices. update() and render() switch
// on the same screen, side by side in this file, so a new screen is seen in
// both.

#include "app/application.h"

#include "app/difficulty.h"
#include "app/paths.h"
#include "gfx/screens.h"
#include "gfx/terminal.h"

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

// The menu exactly as titleUpdate builds it this frame, with NEW: VORN in red.
void drawTitleScreen(Application& app) {
    MenuItem items[6];
    const int n = titleMenu(app.save, items);
    MenuRowView rows[6];
    for (int i = 0; i < n; ++i) {
        rows[i] = {items[i].label, items[i].code == static_cast<std::int32_t>(Difficulty::vorn)};
    }
    drawTitleTerminal(app.graphics, app.art, rows, n, app.menuIndex, app.save.timesFired,
                      app.save.clockInCards, kBuild);
}

// The header first, the station over it, then the footer and the clock, so
// nothing a station draws can hide the time it has left.
void drawStationScreen(Application& app) {
    Graphics& g = app.graphics;
    drawTerminal(g, app.art, palette::greenScreen);

    const Level* station = app.station.get();
    char title[128];
    Graphics::formatInto(title, sizeof title, "STATION %02d : %s",
                         station != nullptr ? station->number : 0,
                         station != nullptr ? station->name.c_str() : "");
    const char* instruction = station != nullptr && !station->instruction.empty()
                                  ? station->instruction.c_str()
                                  : "Solve the station before the clock runs out.";
    drawStationHeader(g, title, instruction);

    if (app.station) {
        app.station->render(g);
    }

    const bool vornMode = app.difficulty == Difficulty::vorn;
    drawStationFooter(g, difficultyName(app.difficulty), vornMode, app.stationIndex + 1,
                      static_cast<int>(app.stationOrder.size()));
    drawClock(g, app.timeLeft, app.screenTime, vornMode);
}

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
        if (contains(titleMenuRow(i), input.mouseX, input.mouseY)) {
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
    // Every screen starts from black; the splash and the shift cards stay on
    // it, the others stand the terminal in its room first.
    graphics.clear(palette::black);
    switch (screen) {
        case GameScreen::splash:
            drawSplash(graphics, studioLogo, studioLogoW, studioLogoH, splashRevealed,
                       screenTime - splashRevealAt);
            break;
        case GameScreen::intro:
            break;
        case GameScreen::title:
            drawTitleScreen(*this);
            break;
        case GameScreen::shiftCard:
            drawShiftCard(graphics, shiftCardPhase, screenTime);
            break;
        case GameScreen::station:
            drawStationScreen(*this);
            break;
        case GameScreen::fired:
            drawFiredNotice(graphics, art, difficulty == Difficulty::vorn, save.timesFired);
            break;
        case GameScreen::victory:
            drawVictoryNotice(graphics, art, difficulty == Difficulty::vorn, cardAwarded);
            break;
    }
    // The glass goes over everything shown on the monitor, the station's own
    // picture included, so the scan lines and the dimmed edges cover it too.
    if (screen == GameScreen::title || screen == GameScreen::station ||
        screen == GameScreen::fired || screen == GameScreen::victory) {
        graphics.monitorOverlay();
    }
    graphics.present();
}

}  // namespace vorn
