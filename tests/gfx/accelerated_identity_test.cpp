// The same drawing on the accelerated renderer (OpenGL here, in a real X
// window of a virtual display), read back with SDL_RenderReadPixels: the
// terminal drawn from the scaled copies and drawn by stretching the textures
// every frame agree to within the GPU filter's rounding, and copies made
// again after the renderer lost its targets give the same bytes. Run by tests/window/accelerated_test.sh under
// Xvfb; anywhere else (the dummy driver has no accelerated renderer) it is
// skipped with its reason.

#include "gfx/graphics.h"
#include "gfx/procedural_art.h"
#include "gfx/terminal.h"
#include "support/test_platform.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <string>
#include <vector>

namespace vorn::test {
namespace {

class AcceleratedRenderer : public ::testing::Test {
protected:
    void SetUp() override {
        const char* wanted = std::getenv("VORN_ACCELERATED_WINDOW");
        if (wanted == nullptr || std::string(wanted) != "1") {
            GTEST_SKIP() << "needs a real display; run by tests/window/accelerated_test.sh";
        }
        ASSERT_EQ(SDL_InitSubSystem(SDL_INIT_VIDEO), 0) << SDL_GetError();
        started = true;
        window = SDL_CreateWindow("The Vorn Co.", 0, 0, kCanvasWidth, kCanvasHeight, SDL_WINDOW_SHOWN);
        ASSERT_NE(window, nullptr) << SDL_GetError();
        SDL_Renderer* renderer = SDL_CreateRenderer(window, -1, SDL_RENDERER_ACCELERATED);
        if (renderer == nullptr) {
            GTEST_SKIP() << "no accelerated renderer on this display: " << SDL_GetError();
        }
        graphics.attach(renderer);
        SDL_RendererInfo info;
        SDL_GetRendererInfo(renderer, &info);
        std::printf("accelerated renderer: %s\n", info.name);
        ASSERT_TRUE(art.build(renderer));
    }
    void TearDown() override {
        art.release();
        graphics.shutdown();
        if (window != nullptr) {
            SDL_DestroyWindow(window);
        }
        if (started) {
            SDL_QuitSubSystem(SDL_INIT_VIDEO);
        }
    }
    std::vector<Uint32> frame(Color glass) {
        graphics.clear(rgb(0, 0, 0));
        drawTerminal(graphics, art, glass);
        graphics.monitorOverlay();
        std::vector<Uint32> pixels(static_cast<std::size_t>(kCanvasWidth) * kCanvasHeight);
        EXPECT_EQ(SDL_RenderReadPixels(graphics.renderer, nullptr, SDL_PIXELFORMAT_ARGB8888,
                                       pixels.data(), kCanvasWidth * 4),
                  0)
            << SDL_GetError();
        graphics.present();
        return pixels;
    }
    struct Difference {
        int count = 0;
        int maxStep = 0;
    };
    static Difference compare(const std::vector<Uint32>& a, const std::vector<Uint32>& b) {
        int count = 0;
        int maxStep = 0;
        int left = kCanvasWidth, right = -1, top = kCanvasHeight, bottom = -1;
        for (std::size_t i = 0; i < a.size(); ++i) {
            if (a[i] == b[i]) {
                continue;
            }
            ++count;
            const int x = static_cast<int>(i % kCanvasWidth);
            const int y = static_cast<int>(i / kCanvasWidth);
            left = std::min(left, x);
            right = std::max(right, x);
            top = std::min(top, y);
            bottom = std::max(bottom, y);
            for (int shift = 0; shift < 24; shift += 8) {
                maxStep = std::max(maxStep, std::abs(static_cast<int>((a[i] >> shift) & 255u) -
                                                     static_cast<int>((b[i] >> shift) & 255u)));
            }
        }
        if (count > 0) {
            std::printf("%d pixels differ, by up to %d, within x %d..%d y %d..%d\n", count, maxStep,
                        left, right, top, bottom);
        }
        return {count, maxStep};
    }
    static int differing(const std::vector<Uint32>& a, const std::vector<Uint32>& b) {
        return compare(a, b).count;
    }

    bool started = false;
    SDL_Window* window = nullptr;
    Graphics graphics;
    ProceduralArt art;
};

// Here the GPU's own bilinear filter does the stretching, once into the copy
// or every frame onto the window. Its texture coordinates are worked out
// across a different viewport each way, and Mesa's filter rounds a few
// hundred of the glass's pixels (of a million) one step apart: that much is
// allowed, no more. (The software renderer gives the same bytes both ways.)
TEST_F(AcceleratedRenderer, TheCopiesDrawTheSamePixelsAsStretchingEveryFrame) {
    for (const Color glass : {rgb(0, 200, 0), rgb(200, 0, 0)}) {
        const std::vector<Uint32> fast = frame(glass);
        art.releaseScaledCopies();
        const std::vector<Uint32> slow = frame(glass);
        const Difference difference = compare(fast, slow);
        EXPECT_LE(difference.maxStep, 1);
        EXPECT_LE(difference.count, kCanvasWidth * kCanvasHeight / 1000);
        art.makeScaledCopies(graphics.renderer);
        ASSERT_NE(art.scaledCopy(art.casing, {181, 20, 1004, 632}), nullptr);
    }
}

TEST_F(AcceleratedRenderer, CopiesMadeAgainDrawTheSamePicture) {
    const std::vector<Uint32> first = frame(rgb(0, 200, 0));
    art.makeScaledCopies(graphics.renderer);
    EXPECT_EQ(differing(first, frame(rgb(0, 200, 0))), 0);
    art.build(graphics.renderer);
    EXPECT_EQ(differing(first, frame(rgb(0, 200, 0))), 0);
}

}  // namespace
}  // namespace vorn::test
