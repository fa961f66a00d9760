// The frame clock and the event pump, driven by real SDL events through the
// started application.

#include "support/headless_app.h"
#include "support/play_area.h"

#include <gtest/gtest.h>

#include <functional>

namespace vorn::test {
namespace {

class MainLoop : public ::testing::Test {
protected:
    HeadlessApp headless{"main_loop"};
    Application& app = headless.app;
    InputDriver driver{headless.app};

    void SetUp() override { ASSERT_TRUE(headless.started); }
};

TEST_F(MainLoop, PressAndReleaseInOneFrameSetBothEdgesAndLeaveButtonUp) {
    driver.press(400, 300);
    driver.release(400, 300);
    app.processEvents();
    EXPECT_TRUE(app.input.mousePressed);
    EXPECT_TRUE(app.input.mouseReleased);
    EXPECT_FALSE(app.input.mouseDown);
}

TEST_F(MainLoop, HeldButtonPersistsWhileEdgesClearNextFrame) {
    driver.press(10, 20);
    app.processEvents();
    EXPECT_TRUE(app.input.mouseDown);
    EXPECT_TRUE(app.input.mousePressed);
    app.processEvents();
    EXPECT_TRUE(app.input.mouseDown);
    EXPECT_FALSE(app.input.mousePressed);
    EXPECT_EQ(app.input.mouseX, 10);
    EXPECT_EQ(app.input.mouseY, 20);
}

TEST_F(MainLoop, ButtonPressMovesPointerButReleaseDoesNot) {
    driver.moveTo(100, 120);
    driver.press(300, 320);
    app.processEvents();
    EXPECT_EQ(app.input.mouseX, 300);
    EXPECT_EQ(app.input.mouseY, 320);
    driver.release(900, 700);
    app.processEvents();
    EXPECT_EQ(app.input.mouseX, 300);
    EXPECT_EQ(app.input.mouseY, 320);
    EXPECT_TRUE(app.input.mouseReleased);
}

TEST_F(MainLoop, MotionUpdatesPointer) {
    driver.moveTo(1365, 767);
    app.processEvents();
    EXPECT_EQ(app.input.mouseX, 1365);
    EXPECT_EQ(app.input.mouseY, 767);
}

TEST_F(MainLoop, OtherMouseButtonsAreIgnored) {
    driver.pressButton(SDL_BUTTON_RIGHT, 50, 60);
    app.processEvents();
    EXPECT_FALSE(app.input.mouseDown);
    EXPECT_FALSE(app.input.mousePressed);
    EXPECT_NE(app.input.mouseX, 50);
}

TEST_F(MainLoop, AutoRepeatSetsTheEdgeOnEveryRepeatEvent) {
    driver.key(SDLK_DOWN);
    app.processEvents();
    EXPECT_TRUE(app.input.down);
    for (int i = 0; i < 3; ++i) {
        driver.key(SDLK_DOWN, true);
        app.processEvents();
        EXPECT_TRUE(app.input.down) << "repeat " << i;
    }
    app.processEvents();
    EXPECT_FALSE(app.input.down);
}

struct KeyCase {
    SDL_Keycode key;
    bool InputState::*edge;
};

TEST_F(MainLoop, LettersAndArrowsAndConfirmKeysAreInterchangeable) {
    const KeyCase cases[] = {
        {SDLK_w, &InputState::up},          {SDLK_UP, &InputState::up},
        {SDLK_s, &InputState::down},        {SDLK_DOWN, &InputState::down},
        {SDLK_a, &InputState::left},        {SDLK_LEFT, &InputState::left},
        {SDLK_d, &InputState::right},       {SDLK_RIGHT, &InputState::right},
        {SDLK_RETURN, &InputState::confirm}, {SDLK_SPACE, &InputState::confirm},
        {SDLK_KP_ENTER, &InputState::confirm}, {SDLK_ESCAPE, &InputState::escape},
    };
    for (const KeyCase& c : cases) {
        driver.key(c.key);
        app.processEvents();
        EXPECT_TRUE(app.input.*c.edge) << SDL_GetKeyName(c.key);
        EXPECT_TRUE(app.input.anyKey) << SDL_GetKeyName(c.key);
        int edges = app.input.up + app.input.down + app.input.left + app.input.right +
                    app.input.confirm + app.input.escape;
        EXPECT_EQ(edges, 1) << SDL_GetKeyName(c.key);
    }
}

TEST_F(MainLoop, AnyOtherKeySetsOnlyAnyKey) {
    driver.key(SDLK_q);
    app.processEvents();
    EXPECT_TRUE(app.input.anyKey);
    EXPECT_FALSE(app.input.up || app.input.down || app.input.left || app.input.right ||
                 app.input.confirm || app.input.escape);
}

TEST_F(MainLoop, AStallAdvancesTheGameByAtMostFiftyMilliseconds) {
    const double before = app.screenTime;
    app.step(2.0);
    EXPECT_DOUBLE_EQ(app.screenTime - before, 0.05);
}

TEST_F(MainLoop, ShortFramesAdvanceByTheirRealLength) {
    const double before = app.screenTime;
    app.step(0.02);
    EXPECT_DOUBLE_EQ(app.screenTime - before, 0.02);
}

TEST_F(MainLoop, QuitStopsTheLoopAfterFinishingTheFrame) {
    const double before = app.screenTime;
    driver.quit();
    app.step(0.01);
    EXPECT_FALSE(app.running);
    EXPECT_DOUBLE_EQ(app.screenTime - before, 0.01);
}

TEST_F(MainLoop, RunReturnsOnceQuitArrives) {
    driver.quit();
    app.run();
    EXPECT_FALSE(app.running);
}

// The logical size belongs to the window; between frames the canvas texture
// is the renderer's target, so the window's values are read with the window
// made the target for a moment.
void onTheWindow(Graphics& graphics, const std::function<void(SDL_Renderer*)>& look) {
    SDL_SetRenderTarget(graphics.renderer, nullptr);
    look(graphics.renderer);
    SDL_SetRenderTarget(graphics.renderer, graphics.canvas);
}

TEST_F(MainLoop, ResizeKeepsTheCanvasLogicalSize) {
    onTheWindow(app.graphics, [](SDL_Renderer* r) { SDL_RenderSetLogicalSize(r, 640, 480); });
    SDL_Event event{};
    event.type = SDL_WINDOWEVENT;
    event.window.event = SDL_WINDOWEVENT_RESIZED;
    event.window.data1 = 800;
    event.window.data2 = 600;
    SDL_PushEvent(&event);
    app.processEvents();
    int w = 0;
    int h = 0;
    SDL_bool integerScale = SDL_TRUE;
    onTheWindow(app.graphics, [&](SDL_Renderer* r) {
        SDL_RenderGetLogicalSize(r, &w, &h);
        integerScale = SDL_RenderGetIntegerScale(r);
    });
    EXPECT_EQ(w, 1366);
    EXPECT_EQ(h, 768);
    EXPECT_EQ(integerScale, SDL_FALSE);
}

TEST_F(MainLoop, ScaledWindowEventsArriveInCanvasPixels) {
    // With the window's own ID, SDL maps window coordinates through the
    // letter-boxed logical size, so the game always sees canvas pixels.
    int outW = 0;
    int outH = 0;
    float scaleX = 0;
    float scaleY = 0;
    SDL_Rect viewport;
    onTheWindow(app.graphics, [&](SDL_Renderer* r) {
        SDL_GetRendererOutputSize(r, &outW, &outH);
        SDL_RenderGetScale(r, &scaleX, &scaleY);
        SDL_RenderGetViewport(r, &viewport);
    });
    SDL_Event event{};
    event.type = SDL_MOUSEMOTION;
    event.motion.windowID = SDL_GetWindowID(app.window);
    event.motion.x = static_cast<int>((kCanvasCentreX + viewport.x) * scaleX);
    event.motion.y = static_cast<int>((kCanvasCentreY + viewport.y) * scaleY);
    SDL_PushEvent(&event);
    app.processEvents();
    EXPECT_NEAR(app.input.mouseX, kCanvasCentreX, 2) << outW << "x" << outH;
    EXPECT_NEAR(app.input.mouseY, kCanvasCentreY, 2);
}

}  // namespace
}  // namespace vorn::test
