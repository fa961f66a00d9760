// The game on screens of other sizes than its canvas: the software renderer
// drawing into a (dummy) window of the player's size, driven through real SDL
// events addressed to that window. The canvas is drawn one to one and laid
// into the window in one linear-filtered, letter-boxed copy; SDL maps the
// pointer back into canvas pixels.

#include "app/application.h"
#include "data/level_catalogue.h"
#include "stations/timing_stations.h"
#include "support/play_area.h"
#include "support/software_canvas.h"

#include <SDL_ttf.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <string>
#include <vector>

namespace vorn::test {
namespace {

// Where a canvas point lands on an output of w x h: the canvas is scaled by
// the smaller of the two ratios and centred, the rest is the letter box.
struct Letterbox {
    Letterbox(int w, int h) {
        scale = std::min(static_cast<double>(w) / kCanvasWidth, static_cast<double>(h) / kCanvasHeight);
        left = (w - kCanvasWidth * scale) / 2.0;
        top = (h - kCanvasHeight * scale) / 2.0;
    }
    int x(double canvasX) const { return static_cast<int>(left + (canvasX + 0.5) * scale); }
    int y(double canvasY) const { return static_cast<int>(top + (canvasY + 0.5) * scale); }
    double scale = 1.0;
    double left = 0.0;
    double top = 0.0;
};

// The application drawing into a window of the given size, as the game sets
// it up: renderer, logical size, canvas texture, painted textures, fonts.
class WindowApp {
public:
    WindowApp(int w, int h, bool withCanvas = true) : width(w), height(h) {
        started = SDL_InitSubSystem(SDL_INIT_VIDEO) == 0;
        window = SDL_CreateWindow("The Vorn Co.", 0, 0, w, h, 0);
        SDL_Renderer* renderer =
            window != nullptr ? SDL_CreateRenderer(window, -1, SDL_RENDERER_SOFTWARE) : nullptr;
        if (renderer == nullptr) {
            return;
        }
        app.window = window;
        app.graphics.attach(renderer);
        if (withCanvas) {
            app.graphics.makeCanvas();
        }
        ttf = TTF_Init() == 0;
        app.graphics.loadFonts(VORN_GAME_DIR "/assets/fonts");
        app.art.build(renderer);
        ready = true;
    }
    ~WindowApp() {
        app.station.reset();
        app.art.release();
        app.graphics.shutdown();
        if (window != nullptr) {
            SDL_DestroyWindow(window);
        }
        if (ttf) {
            TTF_Quit();
        }
        SDL_FlushEvents(SDL_FIRSTEVENT, SDL_LASTEVENT);
        if (started) {
            SDL_QuitSubSystem(SDL_INIT_VIDEO);
        }
    }
    WindowApp(const WindowApp&) = delete;
    WindowApp& operator=(const WindowApp&) = delete;

    // A left click at an output pixel, as the window system reports it.
    void clickAtOutput(int x, int y) {
        for (const Uint32 type : {SDL_MOUSEBUTTONDOWN, SDL_MOUSEBUTTONUP}) {
            SDL_Event event{};
            event.type = type;
            event.button.windowID = SDL_GetWindowID(window);
            event.button.button = SDL_BUTTON_LEFT;
            event.button.state = type == SDL_MOUSEBUTTONDOWN ? SDL_PRESSED : SDL_RELEASED;
            event.button.clicks = 1;
            event.button.x = x;
            event.button.y = y;
            ASSERT_EQ(SDL_PushEvent(&event), 1);
        }
        app.processEvents();
    }
    // The colour at an output pixel of the presented frame.
    Color pixel(int x, int y) const {
        SDL_Surface* surface = SDL_GetWindowSurface(window);
        const auto* row = static_cast<const Uint8*>(surface->pixels) + y * surface->pitch;
        Uint32 value = 0;
        SDL_memcpy(&value, row + x * 4, 4);
        Uint8 r = 0, g = 0, b = 0;
        SDL_GetRGB(value, surface->format, &r, &g, &b);
        return rgb(r, g, b);
    }
    // The canvas texture as it was last drawn, read back from the renderer
    // in the given format, row after row.
    std::vector<Uint32> canvasPixels(Uint32 format) const {
        std::vector<Uint32> pixels(static_cast<std::size_t>(kCanvasWidth) * kCanvasHeight);
        SDL_Renderer* renderer = app.graphics.renderer;
        SDL_SetRenderTarget(renderer, app.graphics.canvas);
        if (SDL_RenderReadPixels(renderer, nullptr, format, pixels.data(),
                                 kCanvasWidth * 4) != 0) {
            ADD_FAILURE() << "canvas not read: " << SDL_GetError();
        }
        return pixels;
    }
    void show(GameScreen screen) {
        app.screen = screen;
        app.screenTime = 1.0;
        app.render();
    }

    int width;
    int height;
    Application app;
    SDL_Window* window = nullptr;
    bool started = false;
    bool ttf = false;
    bool ready = false;
};

struct OutputSize {
    int w;
    int h;
};

std::string sizeName(const ::testing::TestParamInfo<OutputSize>& info) {
    return std::to_string(info.param.w) + "x" + std::to_string(info.param.h);
}

class Output : public ::testing::TestWithParam<OutputSize> {};

// The button station's brass plate, clicked where it shows on the screen.
TEST_P(Output, AClickWhereTheTargetShowsSolvesTheStation) {
    WindowApp shot(GetParam().w, GetParam().h);
    ASSERT_TRUE(shot.ready) << SDL_GetError();
    LevelDef def;
    def.number = 1;
    def.name = "PRESS";
    def.type = "button";
    def.baseTime = 10;
    shot.app.levels = {def};
    shot.app.stationOrder = {0};
    shot.app.difficulty = Difficulty::easy;
    shot.app.rng.seed(25);
    shot.app.startStation(0);
    shot.show(GameScreen::station);
    const Rect target = static_cast<const ButtonLevel&>(*shot.app.station).target;
    const Letterbox box(GetParam().w, GetParam().h);
    const int cx = target.x + target.w / 2;
    const int cy = target.y + target.h / 2;
    shot.clickAtOutput(box.x(cx), box.y(cy));
    // SDL hands the click over in canvas pixels, within a pixel of the centre.
    EXPECT_NEAR(shot.app.input.mouseX, cx, 1);
    EXPECT_NEAR(shot.app.input.mouseY, cy, 1);
    shot.app.update(1.0 / 60.0);
    EXPECT_EQ(shot.app.screen, GameScreen::victory);
}

// The picture on the output is the whole canvas, scaled by the linear filter
// in one piece: the canvas, read back and copied here by a renderer of its
// own onto a surface of the output's size with the same logical size, gives
// every output pixel, the letter box's black included.
TEST_P(Output, TheFrameIsTheCanvasScaledInOneCopy) {
    const int w = GetParam().w;
    const int h = GetParam().h;
    WindowApp shot(w, h);
    ASSERT_TRUE(shot.ready) << SDL_GetError();
    shot.show(GameScreen::title);
    const std::vector<Uint32> canvas = shot.canvasPixels(SDL_PIXELFORMAT_RGB888);

    SDL_Surface* expected = SDL_CreateRGBSurfaceWithFormat(0, w, h, 32, SDL_PIXELFORMAT_RGB888);
    ASSERT_NE(expected, nullptr);
    SDL_Renderer* renderer = SDL_CreateSoftwareRenderer(expected);
    ASSERT_NE(renderer, nullptr);
    SDL_RenderSetLogicalSize(renderer, kCanvasWidth, kCanvasHeight);
    SDL_Texture* frame = SDL_CreateTexture(renderer, SDL_PIXELFORMAT_RGB888, SDL_TEXTUREACCESS_STATIC,
                                           kCanvasWidth, kCanvasHeight);
    ASSERT_NE(frame, nullptr);
    SDL_UpdateTexture(frame, nullptr, canvas.data(), kCanvasWidth * 4);
    SDL_SetTextureBlendMode(frame, SDL_BLENDMODE_NONE);
    SDL_SetTextureScaleMode(frame, SDL_ScaleModeLinear);
    SDL_SetRenderDrawColor(renderer, 0, 0, 0, 255);
    SDL_RenderClear(renderer);
    SDL_RenderCopy(renderer, frame, nullptr, nullptr);
    SDL_RenderFlush(renderer);

    int differing = 0;
    for (int y = 0; y < h; ++y) {
        const auto* row = static_cast<const Uint8*>(expected->pixels) + y * expected->pitch;
        for (int x = 0; x < w; ++x) {
            Uint32 value = 0;
            SDL_memcpy(&value, row + x * 4, 4);
            Uint8 r = 0, g = 0, b = 0;
            SDL_GetRGB(value, expected->format, &r, &g, &b);
            differing += shot.pixel(x, y) != rgb(r, g, b) ? 1 : 0;
        }
    }
    EXPECT_EQ(differing, 0);
    SDL_DestroyRenderer(renderer);
    SDL_FreeSurface(expected);
}

INSTANTIATE_TEST_SUITE_P(PlayersScreens, Output,
                         ::testing::Values(OutputSize{1280, 720}, OutputSize{1920, 1080},
                                           OutputSize{2560, 1440}),
                         sizeName);

// At 1280 x 720 a one-pixel line covers less than a pixel of the output.
// The title rows' right edges (x 833) still show: their column is lit with
// the outline's green well above the glass on either side of it.
TEST(Letterbox, TheTitleRowsRightEdgesShowAt1280x720) {
    WindowApp shot(1280, 720);
    ASSERT_TRUE(shot.ready) << SDL_GetError();
    shot.app.menuIndex = 0;
    shot.show(GameScreen::title);
    const Letterbox box(1280, 720);
    const int edge = static_cast<int>(833 * box.scale);   // 780
    for (int i = 1; i < 5; ++i) {
        const int y = box.y(350 + 46 * i + 19);
        const int glass = std::max(green(shot.pixel(edge - 4, y)), green(shot.pixel(edge + 5, y)));
        const int lit = std::max(green(shot.pixel(edge, y)), green(shot.pixel(edge + 1, y)));
        EXPECT_GE(lit, glass + 20) << "row " << i << " at output y " << y;
    }
}

// The 1366 x 768 output is the canvas itself, byte for byte.
TEST(Letterbox, TheCanvasSizedOutputIsTheCanvasItself) {
    WindowApp shot(kCanvasWidth, kCanvasHeight);
    ASSERT_TRUE(shot.ready) << SDL_GetError();
    for (const GameScreen screen : {GameScreen::title, GameScreen::fired, GameScreen::shiftCard}) {
        shot.show(screen);
        const std::vector<Uint32> canvas = shot.canvasPixels(SDL_PIXELFORMAT_RGBA32);
        int differing = 0;
        for (int y = 0; y < kCanvasHeight; ++y) {
            for (int x = 0; x < kCanvasWidth; ++x) {
                const Uint32 p = canvas[static_cast<std::size_t>(y) * kCanvasWidth + x];
                // RGBA32 keeps red in the first byte, as the Color layout does.
                differing += opaque(p) != shot.pixel(x, y) ? 1 : 0;
            }
        }
        EXPECT_EQ(differing, 0) << "screen " << static_cast<int>(screen);
    }
}

// On a 1366 x 768 window the game shows exactly what it showed when it drew
// straight into the window, every screen.
TEST(Letterbox, TheCanvasShowsWhatDrawingStraightIntoTheWindowShowed) {
    WindowApp straight(kCanvasWidth, kCanvasHeight, false);
    WindowApp shot(kCanvasWidth, kCanvasHeight);
    ASSERT_TRUE(straight.ready && shot.ready) << SDL_GetError();
    ASSERT_EQ(straight.app.graphics.canvas, nullptr);
    ASSERT_NE(shot.app.graphics.canvas, nullptr);
    for (const GameScreen screen : {GameScreen::title, GameScreen::fired, GameScreen::victory,
                                    GameScreen::shiftCard}) {
        straight.show(screen);
        shot.show(screen);
        int differing = 0;
        for (int y = 0; y < kCanvasHeight; ++y) {
            for (int x = 0; x < kCanvasWidth; ++x) {
                differing += straight.pixel(x, y) != shot.pixel(x, y) ? 1 : 0;
            }
        }
        EXPECT_EQ(differing, 0) << "screen " << static_cast<int>(screen);
    }
}

// A size change sets the window's logical size again (here one SDL itself
// did not see: the event names no window), and drawing goes on into the
// canvas at scale 1.
TEST(Letterbox, ASizeChangeSetsTheWindowsLogicalSizeAgain) {
    WindowApp shot(1920, 1080);
    ASSERT_TRUE(shot.ready) << SDL_GetError();
    SDL_Renderer* renderer = shot.app.graphics.renderer;
    SDL_SetRenderTarget(renderer, nullptr);
    SDL_RenderSetLogicalSize(renderer, 640, 480);
    SDL_SetRenderTarget(renderer, shot.app.graphics.canvas);
    SDL_Event event{};
    event.type = SDL_WINDOWEVENT;
    event.window.event = SDL_WINDOWEVENT_SIZE_CHANGED;
    event.window.data1 = 1920;
    event.window.data2 = 1080;
    ASSERT_EQ(SDL_PushEvent(&event), 1);
    shot.app.processEvents();
    EXPECT_EQ(SDL_GetRenderTarget(renderer), shot.app.graphics.canvas);
    SDL_SetRenderTarget(renderer, nullptr);
    int w = 0;
    int h = 0;
    SDL_RenderGetLogicalSize(renderer, &w, &h);
    EXPECT_EQ(w, 1366);
    EXPECT_EQ(h, 768);
}

// On a screen of another shape the canvas keeps its own and the rest is a
// black letter box; a click there lands outside the canvas and picks nothing,
// although it lines up with a menu row.
TEST(Letterbox, AClickInTheLetterBoxReachesNoButton) {
    for (const OutputSize size : {OutputSize{1920, 1200}, OutputSize{2560, 1080}}) {
        WindowApp shot(size.w, size.h);
        ASSERT_TRUE(shot.ready) << SDL_GetError();
        shot.app.screen = GameScreen::title;
        shot.app.menuIndex = 1;
        shot.show(GameScreen::title);
        const Letterbox box(size.w, size.h);
        // The middle of the bar above (16:10) or to the left (ultra-wide),
        // level with the first menu row's label or straight above it.
        const int x = box.left >= 2.0 ? static_cast<int>(box.left / 2) : box.x(kCanvasCentreX);
        const int y = box.top >= 2.0 ? static_cast<int>(box.top / 2) : box.y(369);
        EXPECT_EQ(shot.pixel(x, y), rgb(0, 0, 0)) << size.w << "x" << size.h;
        shot.clickAtOutput(x, y);
        EXPECT_TRUE(shot.app.input.mouseX < 0 || shot.app.input.mouseY < 0)
            << shot.app.input.mouseX << ", " << shot.app.input.mouseY;
        shot.app.update(1.0 / 60.0);
        EXPECT_EQ(shot.app.screen, GameScreen::title);
        EXPECT_EQ(shot.app.menuIndex, 1);
        EXPECT_TRUE(shot.app.stationOrder.empty());
    }
}

}  // namespace
}  // namespace vorn::test
