// The renderer can lose what its target textures hold (Direct3D on a resize)
// or its whole device: the canvas and the scaled copies, or every texture,
// are then made again, driven here through real SDL events, and the next
// frame is the same picture as before.

#include "support/canvas_app.h"
#include "support/test_platform.h"

#include <gtest/gtest.h>

#include <vector>

namespace vorn::test {
namespace {

std::vector<Color> frame(CanvasApp& canvasApp) {
    canvasApp.show(GameScreen::title, 1.0);
    SDL_RenderFlush(canvasApp.app.graphics.renderer);
    return grab(canvasApp.canvas);
}

class RenderReset : public ::testing::Test {
protected:
    void SetUp() override {
        ASSERT_EQ(SDL_InitSubSystem(SDL_INIT_EVENTS), 0);
        SDL_FlushEvents(SDL_FIRSTEVENT, SDL_LASTEVENT);
        canvasApp.app.assetsPath = (gameFolder() / "assets").u8string();
    }
    void TearDown() override {
        SDL_FlushEvents(SDL_FIRSTEVENT, SDL_LASTEVENT);
        SDL_QuitSubSystem(SDL_INIT_EVENTS);
    }
    void push(Uint32 type) {
        SDL_Event event{};
        event.type = type;
        ASSERT_EQ(SDL_PushEvent(&event), 1);
        canvasApp.app.processEvents();
    }
    CanvasApp canvasApp;
};

// What a lost canvas amounts to: the texture gone, drawing back on the output.
void dropCanvas(Graphics& graphics) {
    SDL_SetRenderTarget(graphics.renderer, nullptr);
    SDL_DestroyTexture(graphics.canvas);
    graphics.canvas = nullptr;
}

TEST_F(RenderReset, LostTargetsMakeTheCanvasAndTheCopiesAgainAndTheFrameIsUnchanged) {
    Graphics& graphics = canvasApp.app.graphics;
    ProceduralArt& art = canvasApp.app.art;
    const std::vector<Color> before = frame(canvasApp);
    dropCanvas(graphics);
    art.releaseScaledCopies();   // what the lost targets amount to
    ASSERT_EQ(art.scaledCopy(art.casing, {181, 20, 1004, 632}), nullptr);
    push(SDL_RENDER_TARGETS_RESET);
    ASSERT_NE(graphics.canvas, nullptr);
    EXPECT_EQ(SDL_GetRenderTarget(graphics.renderer), graphics.canvas);
    EXPECT_NE(art.scaledCopy(art.casing, {181, 20, 1004, 632}), nullptr);
    EXPECT_NE(art.scaledCopy(art.roomOverlay, {0, 0, 1366, 768}), nullptr);
    EXPECT_TRUE(frame(canvasApp) == before);
    EXPECT_EQ(SDL_GetRenderTarget(graphics.renderer), graphics.canvas);
}

TEST_F(RenderReset, ALostDeviceMakesTheCanvasEveryTextureAndTheLogoAgain) {
    Graphics& graphics = canvasApp.app.graphics;
    ProceduralArt& art = canvasApp.app.art;
    const std::vector<Color> before = frame(canvasApp);
    // A device reset leaves handles to textures that are no longer there;
    // here they are dropped by hand and must come back from the event.
    dropCanvas(graphics);
    art.release();
    SDL_DestroyTexture(canvasApp.app.studioLogo);
    canvasApp.app.studioLogo = nullptr;
    push(SDL_RENDER_DEVICE_RESET);
    ASSERT_NE(graphics.canvas, nullptr);
    EXPECT_EQ(SDL_GetRenderTarget(graphics.renderer), graphics.canvas);
    EXPECT_NE(art.wallTile, nullptr);
    EXPECT_NE(art.greenScreen, nullptr);
    EXPECT_NE(art.scaledCopy(art.greenScreen, {247, 78, 872, 612}), nullptr);
    EXPECT_NE(canvasApp.app.studioLogo, nullptr);
    EXPECT_EQ(canvasApp.app.studioLogoW, 1024);
    EXPECT_TRUE(frame(canvasApp) == before);
    EXPECT_EQ(SDL_GetRenderTarget(graphics.renderer), graphics.canvas);
}

// A size change sets the window's logical size again and drawing goes on
// into the canvas, one to one.
TEST_F(RenderReset, ASizeChangeKeepsDrawingIntoTheCanvas) {
    Graphics& graphics = canvasApp.app.graphics;
    const std::vector<Color> before = frame(canvasApp);
    SDL_Event event{};
    event.type = SDL_WINDOWEVENT;
    event.window.event = SDL_WINDOWEVENT_SIZE_CHANGED;
    event.window.data1 = kCanvasWidth;
    event.window.data2 = kCanvasHeight;
    ASSERT_EQ(SDL_PushEvent(&event), 1);
    canvasApp.app.processEvents();
    ASSERT_NE(graphics.canvas, nullptr);
    EXPECT_EQ(SDL_GetRenderTarget(graphics.renderer), graphics.canvas);
    float scaleX = 0.0f;
    float scaleY = 0.0f;
    SDL_RenderGetScale(graphics.renderer, &scaleX, &scaleY);
    EXPECT_EQ(scaleX, 1.0f);
    EXPECT_EQ(scaleY, 1.0f);
    EXPECT_TRUE(frame(canvasApp) == before);
}

}  // namespace
}  // namespace vorn::test
