// The paperwork family: for now the generic odd-tile station.

#include "audio/audio_system.h"
#include "data/level_catalogue.h"
#include "stations/paperwork_stations.h"
#include "support/software_canvas.h"
#include "support/solvers/family_solvers.h"
#include "support/station_bench.h"

#include <gtest/gtest.h>

namespace vorn {
namespace {

struct GenericStation : ::testing::Test {
    GenericLevel level;
    Rng rng{5489};
    AudioSystem silent;   // never opened: every sound is a no-op
    InputState in;

    void SetUp() override { level.setup(LevelDef{}, rng, kPlayArea); }

    LevelResult clickAt(int x, int y) {
        in.mouseX = x;
        in.mouseY = y;
        in.mousePressed = true;
        return level.update(0.016, in, silent);
    }
};

TEST_F(GenericStation, SixTilesInTwoRowsOfThreeAroundTheCentre) {
    // cx = 263 + 420 = 683.
    EXPECT_EQ(level.count, 6);
    EXPECT_EQ(level.boxes[0].x, 434);
    EXPECT_EQ(level.boxes[0].y, 210);
    EXPECT_EQ(level.boxes[2].x, 782);
    EXPECT_EQ(level.boxes[5].x, 782);
    EXPECT_EQ(level.boxes[5].y, 344);
    EXPECT_EQ(level.boxes[4].w, 150);
    EXPECT_EQ(level.boxes[4].h, 110);
}

TEST_F(GenericStation, TheOddTileIsAUniformDrawOfZeroToFive) {
    // Seed 5489's first output times 6 has the high word 4.
    EXPECT_EQ(level.answer, 4);
    EXPECT_EQ(rng, [] { Rng r(5489); r.discard(1); return r; }());
}

TEST_F(GenericStation, ClickingTheOddTilePasses) {
    const Rect& b = level.boxes[level.answer];
    EXPECT_EQ(clickAt(b.x, b.y), LevelResult::Solved);
}

TEST_F(GenericStation, ClickingAnyOtherTileFails) {
    const Rect& b = level.boxes[(level.answer + 1) % 6];
    EXPECT_EQ(clickAt(b.x + b.w - 1, b.y + b.h - 1), LevelResult::Failed);
}

TEST_F(GenericStation, ClicksBetweenTilesAndPointerMovesDoNothing) {
    const Rect& b = level.boxes[0];
    EXPECT_EQ(clickAt(b.x + b.w, b.y), LevelResult::Running);   // half-open edge
    in.mousePressed = false;
    in.mouseX = level.boxes[level.answer].x + 5;
    in.mouseY = level.boxes[level.answer].y + 5;
    EXPECT_EQ(level.update(0.016, in, silent), LevelResult::Running);
}

TEST_F(GenericStation, TheOddTileIsToldOnlyByItsShade) {
    test::SoftwareCanvas canvas;
    canvas.graphics.clear(rgb(0, 0, 0));
    level.render(canvas.graphics);
    const Rect& odd = level.boxes[level.answer];
    const Rect& plain = level.boxes[(level.answer + 1) % 6];
    EXPECT_EQ(canvas.pixel(odd.x + 3, odd.y + odd.h / 2), rgb(189, 146, 50));
    EXPECT_EQ(canvas.pixel(odd.x + odd.w / 2, odd.y + odd.h / 2), rgb(16, 36, 15));
    EXPECT_EQ(canvas.pixel(plain.x + 3, plain.y + plain.h / 2), rgb(159, 123, 42));
    EXPECT_EQ(canvas.pixel(plain.x + plain.w / 2, plain.y + plain.h / 2), rgb(20, 20, 20));
}

}  // namespace
}  // namespace vorn

namespace vorn::test {
namespace {

TEST(GenericSolver, ClearsTheOddTileStationOnEveryDifficulty) {
    EXPECT_EQ(unsolvedRuns("oddtile"), "");
}

TEST(GenericSolver, ClickingAPlainTileFailsWithTheFailSound) {
    StationBench bench(shippedRecord("oddtile"), 7);
    const auto& level = dynamic_cast<const GenericLevel&>(*bench.station);
    const Rect& b = level.boxes[(level.answer + 3) % 6];
    struct Wrong final : Solver {
        Rect box;
        Intent decide(const Level&, const Hand& hand, double) override {
            return clickAt(hand, box.x + 10, box.y + 10);
        }
    } wrong;
    wrong.box = b;
    EXPECT_EQ(bench.play(wrong, 10.0).result, LevelResult::Failed);
    EXPECT_TRUE(bench.lastSoundWasFail());
}

}  // namespace
}  // namespace vorn::test
