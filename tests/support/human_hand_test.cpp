// The automatic player's hand must be no better than a person: late by a
// reaction time, bounded in speed, pressing only where it has arrived.

#include "app/application.h"
#include "support/human_hand.h"

#include <gtest/gtest.h>

#include <SDL.h>

namespace vorn::test {
namespace {

struct HandFixture : ::testing::Test {
    void SetUp() override {
        ASSERT_EQ(SDL_Init(SDL_INIT_EVENTS), 0);
        SDL_FlushEvents(SDL_FIRSTEVENT, SDL_LASTEVENT);
        hand.reset(100, 100);
    }
    void TearDown() override { SDL_Quit(); }

    // One frame: the hand acts, and its events are folded into the input.
    void frame(const Intent& intent) {
        hand.act(intent, 1.0 / 60.0);
        in.clearEdges();
        SDL_Event e;
        while (SDL_PollEvent(&e) != 0) {
            applyInputEvent(e, in);
        }
    }

    HumanHand hand{Limits{0.15, 2400.0, 0.05}};
    InputState in;
};

TEST_F(HandFixture, WaitsAReactionTimeBeforeMoving) {
    const Intent target{500, 100, false};
    for (int i = 0; i < 9; ++i) {
        frame(target);
        EXPECT_EQ(hand.hand.x, 100) << "frame " << i;
    }
    frame(target);
    EXPECT_EQ(hand.hand.x, 140);   // 2400 px/s for one 60th of a second
    EXPECT_EQ(in.mouseX, 140);
}

TEST_F(HandFixture, NeverMovesFasterThanItsLimit) {
    const Intent target{1300, 700, false};
    int lastX = 100;
    int lastY = 100;
    for (int i = 0; i < 120; ++i) {
        frame(target);
        const int dx = hand.hand.x - lastX;
        const int dy = hand.hand.y - lastY;
        EXPECT_LE(dx * dx + dy * dy, 41 * 41);
        lastX = hand.hand.x;
        lastY = hand.hand.y;
    }
    EXPECT_EQ(hand.hand.x, 1300);
    EXPECT_EQ(hand.hand.y, 700);
}

TEST_F(HandFixture, PressesOnlyOnceThePointerHasArrived) {
    const Intent target{300, 100, true};
    bool pressedAway = false;
    int presses = 0;
    for (int i = 0; i < 30; ++i) {
        frame(target);
        if (in.mousePressed) {
            ++presses;
            pressedAway = pressedAway || in.mouseX != 300;
        }
    }
    EXPECT_EQ(presses, 1);
    EXPECT_FALSE(pressedAway);
    EXPECT_TRUE(in.mouseDown);
}

TEST_F(HandFixture, WaitsAfterAReleaseBeforePressingAgain) {
    // Down, up, down on three consecutive frames: the hand presses and
    // releases at once, but the second press waits out the minimum gap
    // (three 60th-second frames for 0.05 s).
    const Intent downHere{100, 100, true};
    const Intent upHere{100, 100, false};
    int pressFrames[2] = {-1, -1};
    int releaseFrame = -1;
    int presses = 0;
    for (int i = 0; i < 30; ++i) {
        frame(i == 0 || i >= 2 ? downHere : upHere);
        if (in.mousePressed && presses < 2) {
            pressFrames[presses++] = i;
        }
        if (in.mouseReleased) {
            releaseFrame = i;
        }
    }
    ASSERT_EQ(presses, 2);
    EXPECT_EQ(pressFrames[0], 9);
    EXPECT_EQ(releaseFrame, 10);
    EXPECT_EQ(pressFrames[1], 13);
}

}  // namespace
}  // namespace vorn::test

#include "support/software_canvas.h"

namespace vorn::test {
namespace {

TEST(SoftwareCanvasFonts, TwoCanvasesWithFontsCanComeAndGoInAnyOrder) {
    SoftwareCanvas outer;
    outer.useGameFonts();
    {
        SoftwareCanvas inner;
        inner.useGameFonts();
        inner.graphics.text("INNER", 100, 100, TextSize::Normal, rgb(255, 255, 255), false, false);
    }
    // The outer canvas's fonts survive the inner one's shutdown.
    outer.fill(rgb(0, 0, 0));
    outer.graphics.text("OUTER", 100, 100, TextSize::Huge, rgb(255, 255, 255), false, false);
    int lit = 0;
    for (int y = 100; y < 160; ++y) {
        for (int x = 100; x < 300; ++x) {
            lit += red(outer.pixel(x, y)) > 128 ? 1 : 0;
        }
    }
    EXPECT_GT(lit, 200);
}

}  // namespace
}  // namespace vorn::test
