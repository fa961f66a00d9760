// The fuse box ("fusebox"): a master switch over five fuses, one blown. Only
// the electrician's order passes (master off, swap the fuse, master on), and
// touching the blown fuse while the box is live fires the player. Its
// sounds, what it draws in each state, and its solver.

#include "stations/panel/panel_fixtures.h"
#include "stations/panel_stations.h"
#include "support/draws_by_hand.h"
#include "support/play_area.h"
#include "support/station_driver.h"
#include "support/station_ink.h"
#include "support/text_probe.h"

#include <gtest/gtest.h>

#include <cstdint>
#include <string>
#include <vector>

namespace vorn::test {
namespace {

using Sounds = std::vector<std::string>;

TEST(FuseboxStation, MasterAboveFiveFusesAtANinetyPixelPitch) {
    Driver<FuseboxLevel> d;
    // Centred on x 683: the master 120 wide from 623, the fuses from
    // 683 - 215 = 468 every 90, all below the play area's top (190).
    EXPECT_EQ(d.level.master.x, 623);
    EXPECT_EQ(d.level.master.y, 210);
    EXPECT_EQ(d.level.master.w, 120);
    EXPECT_EQ(d.level.master.h, 56);
    EXPECT_EQ(d.level.fuseCount, 5);
    const int xs[5] = {468, 558, 648, 738, 828};
    for (int i = 0; i < 5; ++i) {
        EXPECT_EQ(d.level.fuses[i].x, xs[i]) << i;
        EXPECT_EQ(d.level.fuses[i].y, 310) << i;
        EXPECT_EQ(d.level.fuses[i].w, 70) << i;
        EXPECT_EQ(d.level.fuses[i].h, 90) << i;
    }
    EXPECT_TRUE(d.level.live);
    EXPECT_FALSE(d.level.replaced);
}

TEST(FuseboxStation, TheBlownFuseIsOneDrawModuloFive) {
    Driver<FuseboxLevel> d(5489);
    EXPECT_EQ(d.level.blown, 2);   // 3499211612 % 5
    EXPECT_EQ(d.rng, engineAfter(5489, 1));
    for (std::uint32_t seed = 1; seed <= 40; ++seed) {
        Driver<FuseboxLevel> q(seed);
        Rng ref(seed);
        EXPECT_EQ(q.level.blown, static_cast<std::int32_t>(ref() % 5)) << seed;
        EXPECT_EQ(q.rng, ref) << seed;
    }
}

TEST(FuseboxStation, MasterOffAndOnWithoutTheFuseIsNeverAPass) {
    Driver<FuseboxLevel> d(5489);
    for (int round = 0; round < 3; ++round) {
        EXPECT_EQ(d.clickCentre(d.level.master), LevelResult::Running);
        EXPECT_FALSE(d.level.live);
        EXPECT_EQ(d.clickCentre(d.level.master), LevelResult::Running);
        EXPECT_TRUE(d.level.live);
    }
}

TEST(FuseboxStation, MasterOffBlownFuseMasterOnPasses) {
    Driver<FuseboxLevel> d(5489);
    EXPECT_EQ(d.clickCentre(d.level.master), LevelResult::Running);
    EXPECT_EQ(d.clickCentre(d.level.fuses[d.level.blown]), LevelResult::Running);
    EXPECT_TRUE(d.level.replaced);
    EXPECT_EQ(d.press(d.level.master.x, d.level.master.y), LevelResult::Solved);
    EXPECT_TRUE(d.level.live);
}

TEST(FuseboxStation, ReplacingTheFuseAndLeavingThePowerOffDoesNotSolve) {
    Driver<FuseboxLevel> d(5489);
    d.clickCentre(d.level.master);
    d.clickCentre(d.level.fuses[d.level.blown]);
    EXPECT_EQ(d.idle(30), LevelResult::Running);
    // Clicking the new fuse again, or a good one, changes nothing either.
    EXPECT_EQ(d.clickCentre(d.level.fuses[d.level.blown]), LevelResult::Running);
    EXPECT_EQ(d.clickCentre(d.level.fuses[(d.level.blown + 1) % 5]), LevelResult::Running);
    EXPECT_FALSE(d.level.live);
    EXPECT_TRUE(d.level.replaced);
}

TEST(FuseboxStation, EveryStepOfTheElectriciansOrderClicksAndTheLastAlsoPasses) {
    Driver<FuseboxLevel> d(5489);   // blown fuse 2
    const Rect& master = d.level.master;
    const Rect& blown = d.level.fuses[2];
    EXPECT_EQ(d.press(master.x + master.w / 2, master.y + master.h / 2), LevelResult::Running);   // off
    EXPECT_EQ(d.heard(), (Sounds{"click"}));
    EXPECT_FALSE(d.level.live);
    EXPECT_EQ(d.release(), LevelResult::Running);
    EXPECT_EQ(d.heard(), Sounds{});
    EXPECT_EQ(d.press(blown.x + blown.w / 2, blown.y + blown.h / 2), LevelResult::Running);   // swapped
    EXPECT_EQ(d.heard(), (Sounds{"click"}));
    EXPECT_TRUE(d.level.replaced);
    d.release();
    EXPECT_EQ(d.press(master.x + master.w / 2, master.y + master.h / 2), LevelResult::Solved);   // on again
    EXPECT_EQ(d.heard(), (Sounds{"click", "pass"}));
}

TEST(FuseboxStation, GoodFusesOnlyClickLiveOrOff) {
    Driver<FuseboxLevel> d(5489);   // fuses 0, 1, 3 and 4 are good
    for (const bool live : {true, false}) {
        for (const int i : {0, 1, 3, 4}) {
            const Rect& f = d.level.fuses[i];
            EXPECT_EQ(d.press(f.x + f.w / 2, f.y + f.h / 2), LevelResult::Running) << i;
            EXPECT_EQ(d.heard(), (Sounds{"click"})) << i;
            d.release();
            EXPECT_EQ(d.level.live, live);
            EXPECT_FALSE(d.level.replaced);
        }
        d.clickCentre(d.level.master);
    }
}

TEST(FuseboxStation, TheBlownFuseUnderPowerFailsWithOnlyTheFailSound) {
    Driver<FuseboxLevel> d(11);   // blown fuse 1: 774252441 % 5
    ASSERT_EQ(d.level.blown, 1);
    EXPECT_EQ(d.press(d.level.fuses[1].x, d.level.fuses[1].y), LevelResult::Failed);   // its top-left corner
    EXPECT_EQ(d.sounds, (Sounds{"fail"}));
}

TEST(FuseboxStation, TheMasterClicksEachWayAndTheNewFuseClicksAgainWhenTouched) {
    Driver<FuseboxLevel> d(5489);
    const Rect& m = d.level.master;
    EXPECT_EQ(d.click(m.x, m.y), LevelResult::Running);                     // off, at one corner
    EXPECT_EQ(d.click(m.x + m.w - 1, m.y + m.h - 1), LevelResult::Running);   // on, at the opposite one
    EXPECT_EQ(d.sounds, (Sounds{"click", "click"}));
    EXPECT_TRUE(d.level.live);
    d.clickCentre(m);
    d.clickCentre(d.level.fuses[2]);
    const std::size_t n = d.sounds.size();
    EXPECT_EQ(d.clickCentre(d.level.fuses[2]), LevelResult::Running);
    EXPECT_EQ(d.soundsSince(n), (Sounds{"click"}));
    EXPECT_TRUE(d.level.replaced);
}

TEST(FuseboxStation, ClicksOffTheHardwareAndFramesWithoutAClickAreSilent) {
    Driver<FuseboxLevel> d(5489);
    const Rect& m = d.level.master;
    const Rect* f = d.level.fuses;
    // Beside the master, between fuses 0 and 1, below the blown fuse 2.
    EXPECT_EQ(d.click(m.x + m.w, m.y + m.h / 2), LevelResult::Running);
    EXPECT_EQ(d.click(f[0].x + f[0].w + 10, f[0].y + 45), LevelResult::Running);
    EXPECT_EQ(d.click(f[2].x + 35, f[2].y + f[2].h), LevelResult::Running);
    // A press off the hardware held over the blown fuse and let go there,
    // while live: no press ever landed on it.
    EXPECT_EQ(d.press(f[2].x + 35, f[2].y + f[2].h + 20), LevelResult::Running);
    EXPECT_EQ(d.moveTo(f[2].x + 35, f[2].y + 45), LevelResult::Running);
    EXPECT_EQ(d.release(), LevelResult::Running);
    EXPECT_EQ(d.sounds, Sounds{});
    EXPECT_TRUE(d.level.live);
    EXPECT_FALSE(d.level.replaced);
}

// ------------------------------------------------------------------- Look

// The master plate inside its rounded corners: only its colour and its word.
Rect plateInside(const FuseboxLevel& level) {
    const Rect& m = level.master;
    return Rect{m.x + 8, m.y + 8, m.w - 16, m.h - 16};
}

void expectMasterReads(const SoftwareCanvas& canvas, const FuseboxLevel& level, Color plate, const char* word) {
    const Rect& m = level.master;
    EXPECT_EQ(pixelsUnlikeText(canvas, plateInside(level), plate, word, m.x + m.w / 2, m.y + m.h / 2,
                               TextSize::Small, station_ink::ink, true, true),
              0)
        << word;
}

// Each fuse holder with its core: a dark core for a good fuse; for the blown
// one a red core with an X until it is swapped, then a green core.
void expectFusesDrawn(const SoftwareCanvas& canvas, const FuseboxLevel& level) {
    for (int i = 0; i < level.fuseCount; ++i) {
        const Rect& f = level.fuses[i];
        const Rect core{f.x + 8, f.y + 8, f.w - 16, f.h - 16};
        EXPECT_EQ(canvas.pixel(f.x + 3, f.y + f.h / 2), station_ink::oldBrass) << "holder " << i;
        EXPECT_EQ(canvas.pixel(f.x + f.w / 2, f.y + 3), station_ink::oldBrass) << "holder " << i;
        if (i != level.blown) {
            EXPECT_EQ(pixelsOtherThan(canvas, core, station_ink::ink), 0) << "fuse " << i;
        } else if (level.replaced) {
            EXPECT_EQ(pixelsOtherThan(canvas, core, station_ink::terminalGreen), 0) << "fuse " << i;
        } else {
            EXPECT_EQ(pixelsUnlikeText(canvas, core, panel_ink::blownCore, "X", f.x + f.w / 2, f.y + f.h / 2,
                                       TextSize::Large, station_ink::alarmRed, true, true),
                      0)
                << "fuse " << i;
        }
    }
}

// The status line, 18 pixels above the play area's bottom edge.
void expectStatusReads(const SoftwareCanvas& canvas, const char* words, Color c) {
    const Rect band{kPlayLeft, kPlayBottom - 21, kPlayArea.w, 23};
    EXPECT_EQ(pixelsUnlikeText(canvas, band, station_ink::black, words, kPlayCentreX, kPlayBottom - 18,
                               TextSize::Small, c, true, false),
              0)
        << words;
}

TEST(FuseboxLook, ALiveBoxShowsTheBlownFuseAndTheWarning) {
    for (const std::uint32_t seed : {5489u, 1u, 11u, 2u}) {   // blown 2, 0, 1, 3
        Driver<FuseboxLevel> d(seed);
        SoftwareCanvas canvas;
        renderOnBlack(canvas, d.level);
        SCOPED_TRACE(seed);
        expectMasterReads(canvas, d.level, station_ink::liveRed, "MASTER: LIVE");
        expectFusesDrawn(canvas, d.level);
        expectStatusReads(canvas, "(LIVE - do not touch fuses)", station_ink::faultRed);
    }
}

TEST(FuseboxLook, TheMasterShowsLiveThenOffAsItIsThrown) {
    Driver<FuseboxLevel> d(5489);
    {
        SoftwareCanvas canvas;
        renderOnBlack(canvas, d.level);
        expectMasterReads(canvas, d.level, station_ink::liveRed, "MASTER: LIVE");
    }
    d.clickCentre(d.level.master);
    SoftwareCanvas canvas;
    renderOnBlack(canvas, d.level);
    expectMasterReads(canvas, d.level, station_ink::dimGreen, "MASTER: OFF");
}

TEST(FuseboxLook, AnOffBoxReadsSafeBeforeAndAfterTheSwap) {
    Driver<FuseboxLevel> d(5489);
    d.clickCentre(d.level.master);
    {
        SoftwareCanvas canvas;
        renderOnBlack(canvas, d.level);
        expectFusesDrawn(canvas, d.level);
        expectStatusReads(canvas, "(safe to swap)", station_ink::softGreen);
    }
    d.clickCentre(d.level.fuses[d.level.blown]);
    ASSERT_TRUE(d.level.replaced);
    SoftwareCanvas canvas;
    renderOnBlack(canvas, d.level);
    expectMasterReads(canvas, d.level, station_ink::dimGreen, "MASTER: OFF");
    expectFusesDrawn(canvas, d.level);
    expectStatusReads(canvas, "(safe to swap)", station_ink::softGreen);
}

TEST(FuseboxSolver, ClearsTheFuseboxOnEveryDifficulty) { EXPECT_EQ(unsolvedRuns("fusebox"), ""); }

}  // namespace
}  // namespace vorn::test
