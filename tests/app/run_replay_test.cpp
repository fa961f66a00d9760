// One seed played twice over the whole shipped catalogue: every station must
// set up, draw and answer the same both times and leave the engine alike.

#include "support/canvas_app.h"
#include "support/screen_palette.h"
#include "support/test_platform.h"

#include <gtest/gtest.h>

#include <cstring>

namespace vorn::test {
namespace {

// Catches what the run echoes on standard error for the life of the scope, so
// the test output stays readable and the lines can be read back once.
class QuietConsole {
public:
    QuietConsole() { testing::internal::CaptureStderr(); }
    ~QuietConsole() {
        if (!taken) {
            testing::internal::GetCapturedStderr();
        }
    }
    QuietConsole(const QuietConsole&) = delete;
    QuietConsole& operator=(const QuietConsole&) = delete;
    std::string text() {
        taken = true;
        return testing::internal::GetCapturedStderr();
    }

private:
    bool taken = false;
};

// Two runs of one seed over the whole shipped catalogue, side by side: every
// station must come out of its setup drawing exactly the same picture, draw
// the same again after the same few frames of input, and leave the engine
// at the same place. Anything a station lays out from something other than
// the run's engine (a clock, an address, memory it never set) shows here.
class RunReplay : public ::testing::Test {
protected:
    static CanvasAppOptions plain() {
        CanvasAppOptions options;
        options.textures = false;   // the flat fallbacks draw faster
        options.logo = false;
        return options;
    }
    // Where the two pictures first differ, or empty when they are the same.
    std::string firstDifference() const {
        const SDL_Surface* a = first.canvas.surface;
        const SDL_Surface* b = second.canvas.surface;
        const auto bytes = static_cast<std::size_t>(a->pitch) * static_cast<std::size_t>(a->h);
        if (std::memcmp(a->pixels, b->pixels, bytes) == 0) {
            return std::string();
        }
        for (int y = 0; y < kCanvasHeight; ++y) {
            for (int x = 0; x < kCanvasWidth; ++x) {
                if (first.pixel(x, y) != second.pixel(x, y)) {
                    return "pixel " + std::to_string(x) + "," + std::to_string(y);
                }
            }
        }
        return "padding";
    }
    // The station alone on black: the frame around it is the screens' business
    // and only slows a test that draws 38 stations four times.
    void bothRender() {
        for (CanvasApp* c : {&first, &second}) {
            c->app.graphics.clear(screen_ink::black);
            if (c->app.screen == GameScreen::station) {
                c->app.station->render(c->app.graphics);
            }
        }
    }
    void bothUpdate(const InputState& input) {
        for (CanvasApp* c : {&first, &second}) {
            c->app.input = input;
            c->app.update(1.0 / 60);
        }
    }

    CanvasApp first{plain()};
    CanvasApp second{plain()};
};

TEST_F(RunReplay, TheSameSeedTwiceGivesEveryShippedStationTheSamePicturesAndEngine) {
    const std::string catalogue = (gameFolder() / "data" / "levels" / "levels.json").u8string();
    for (CanvasApp* c : {&first, &second}) {
        ASSERT_TRUE(loadLevels(c->app.levels, catalogue));
    }
    ASSERT_EQ(first.app.levels.size(), 38u);
    // The run's own log lines only echo on the console here; keep it quiet.
    QuietConsole console;
    first.app.startRunWithSeed(Difficulty::medium, 20260611u);
    second.app.startRunWithSeed(Difficulty::medium, 20260611u);
    ASSERT_EQ(first.app.stationOrder, second.app.stationOrder);
    ASSERT_EQ(first.app.rng, second.app.rng);

    // Pointer moves and arrow keys only: a scripted press could fire the
    // player, and then the pictures would be of the notice.
    InputState moveIn;
    moveIn.mouseX = 420;
    moveIn.mouseY = 300;
    InputState right = moveIn;
    right.right = right.anyKey = true;
    InputState down = moveIn;
    down.down = down.anyKey = true;
    InputState rest = moveIn;

    for (int i = 0; i < 38; ++i) {
        first.app.startStation(i);
        second.app.startStation(i);
        const std::string where = "station " + std::to_string(first.app.station->number) + " (" +
                                  first.app.station->type + ")";
        EXPECT_EQ(first.app.rng, second.app.rng) << where << " after its setup";
        bothRender();
        EXPECT_EQ(firstDifference(), "") << where << " right after its setup";
        for (const InputState& input : {moveIn, right, down, rest}) {
            bothUpdate(input);
        }
        bothRender();
        EXPECT_EQ(firstDifference(), "") << where << " after four frames";
        EXPECT_EQ(first.app.rng, second.app.rng) << where << " after four frames";
        EXPECT_EQ(first.app.screen, second.app.screen) << where;
    }
}

}  // namespace
}  // namespace vorn::test
