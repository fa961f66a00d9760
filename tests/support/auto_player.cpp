#include "support/auto_player.h"

#include "app/difficulty.h"
#include "support/play_area.h"

#include <algorithm>
#include <cstring>

namespace vorn::test {

namespace {

// The title's rows: x 533..833, y 350 + 46 i .. 388 + 46 i; aim at the middle.
Intent menuRowCentre(int i, bool down) { return Intent{kCanvasCentreX, 369 + 46 * i, down}; }

}  // namespace

AutoPlayer::AutoPlayer(Application& application, double frameTime, Limits limits)
    : app(application), dt(frameTime), hand(limits) {
    solverFor = [](const Level& station) { return makeSolver(station.type); };
    hand.reset(app.input.mouseX, app.input.mouseY);
    aim = Intent{hand.hand.x, hand.hand.y, false};
}

void AutoPlayer::frame() {
    Intent intent = aim;
    if (app.screen == GameScreen::station && app.station) {
        if (app.station.get() != solving) {
            // A person stops clicking once the station in front of them is
            // gone; nothing meant for the last one lands on the next.
            hand.interrupt();
            solving = app.station.get();
            solver = solverFor(*app.station);
            stationTime = 0.0;
        }
        intent = solver->decide(*app.station, hand.hand, stationTime);
        stationTime += dt;
    } else {
        if (solving != nullptr) {
            hand.interrupt();
        }
        solving = nullptr;
        solver.reset();
    }
    hand.act(intent, dt);
    if (++frameCount % drawEvery == 0) {
        app.step(dt);
    } else {
        app.processEvents();
        app.update(std::min(dt, kMaxFrameTime));
    }
}

bool AutoPlayer::playUntil(const std::function<bool()>& done, double seconds) {
    for (double t = 0.0; t < seconds; t += dt) {
        if (done()) {
            return true;
        }
        frame();
    }
    return done();
}

bool AutoPlayer::choose(const char* label) {
    if (app.screen != GameScreen::title) {
        return false;
    }
    MenuItem items[6];
    const int n = titleMenu(app.save, items);
    int row = -1;
    for (int i = 0; i < n; ++i) {
        if (std::strcmp(items[i].label, label) == 0) {
            row = i;
        }
    }
    if (row < 0) {
        return false;
    }
    // Point at the row, press once there, and let go on the next frame.
    aim = menuRowCentre(row, true);
    const bool left = playUntil([this] { return app.screen != GameScreen::title || hand.hand.down; }, 5.0);
    aim = menuRowCentre(row, false);
    frame();
    return left;
}

GameScreen AutoPlayer::playShift(Difficulty d, double seconds) {
    char label[32];
    std::snprintf(label, sizeof label, "NEW: %s", difficultyName(d));
    if (!choose(label)) {
        return app.screen;
    }
    playUntil([this] {
        return app.screen == GameScreen::fired || app.screen == GameScreen::victory ||
               app.screen == GameScreen::title || !app.running;
    }, seconds);
    return app.screen;
}

}  // namespace vorn::test
