// A frame is drawn from the application's fields with literals and fixed
// stack buffers: once the fonts are open, render allocates nothing of its own.

#include "app/difficulty.h"
#include "stations/level_factory.h"
#include "support/allocation_counter.h"
#include "support/canvas_app.h"

#include <gtest/gtest.h>

namespace vorn::test {
namespace {

void expectNoAllocationsOnTheSecondFrame(CanvasApp& shot, GameScreen screen) {
    shot.show(screen, 1.0);   // opens the fonts this screen needs
    const AllocationCounter counter;
    shot.show(screen, 1.1);
    EXPECT_EQ(counter.count(), 0) << "screen " << static_cast<int>(screen);
}

TEST(RenderAllocation, NoScreenAllocatesPerFrame) {
    CanvasApp shot;
    shot.app.save.clockInCards = 1;
    shot.app.save.timesFired = 3;
    shot.app.splashRevealed = true;
    shot.app.stationOrder = {0, 1, 2};
    shot.app.timeLeft = 2.5;
    LevelDef def;
    def.number = 4;
    def.name = "A NAME LONG ENOUGH TO LIVE ON THE HEAP";
    def.instruction = "AN INSTRUCTION LONG ENOUGH TO LIVE ON THE HEAP";
    shot.app.station = createLevel("no-such-type");
    shot.app.station->setup(def, shot.app.rng, kPlayArea);
    for (Difficulty d : {Difficulty::medium, Difficulty::vorn}) {
        shot.app.difficulty = d;
        for (GameScreen screen : {GameScreen::splash, GameScreen::intro, GameScreen::title,
                                  GameScreen::shiftCard, GameScreen::station, GameScreen::fired,
                                  GameScreen::victory}) {
            expectNoAllocationsOnTheSecondFrame(shot, screen);
        }
    }
}

TEST(RenderAllocation, TheCounterSeesAStringBeingMade) {
    const AllocationCounter counter;
    const std::string heap(100, 'x');
    EXPECT_GE(counter.count(), 1);
    EXPECT_EQ(heap.size(), 100u);
}

}  // namespace
}  // namespace vorn::test
