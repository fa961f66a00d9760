// The orbit station: a gold orb circles the play area's middle; click it
// while it passes the green zone at the top. Catching it anywhere else fires
// the player; a click that misses it costs nothing. Covers the layout and
// the faster orbit from station forty, the zone's half-radian edge, the
// angle's wrap, the sounds, where the orb is drawn, and the automatic
// player.

#include "stations/timing/timing_fixtures.h"
#include "stations/timing_stations.h"
#include "support/play_area.h"
#include "support/solvers/family_solvers.h"
#include "support/station_driver.h"
#include "support/station_ink.h"
#include "support/text_probe.h"

#include <gtest/gtest.h>

#include <cmath>
#include <string>
#include <utility>
#include <vector>

namespace vorn::test {
namespace {

using Sounds = std::vector<std::string>;

// Seed 12, station 33: the orbit of 130 px round (683, 405), the orb
// starting on its right at (813, 405).
struct OrbitDesk : Driver<OrbitLevel> {
    explicit OrbitDesk(std::int32_t number = 33) : Driver<OrbitLevel>(12, number) {}
    // The middle of the zone at the top of the orbit.
    int zoneX() const { return level.centerX; }
    int zoneY() const { return level.centerY - level.orbitRadius; }
    // The orb stops circling, so a click judges the angle the test set.
    void holdOrbAt(double angle) {
        level.angularSpeed = 0.0;
        level.angle = angle;
    }
};

// Where the orb stands at an angle: on the orbit, each coordinate truncated
// toward the centre, as the player sees it and as clicks are judged.
std::pair<int, int> orbAt(const OrbitLevel& level, double angle) {
    return {level.centerX + static_cast<int>(std::cos(angle) * level.orbitRadius),
            level.centerY + static_cast<int>(std::sin(angle) * level.orbitRadius)};
}

// ------------------------------------------------------------------ layout

TEST(OrbitStation, TheOrbitCirclesTheAreaCentreWithoutDraws) {
    OrbitDesk d;
    EXPECT_EQ(d.level.centerX, kPlayCentreX);
    EXPECT_EQ(d.level.centerY, kPlayCentreY);
    EXPECT_EQ(d.level.orbitRadius, 130);
    EXPECT_EQ(d.level.orbRadius, 24);
    EXPECT_EQ(d.level.angle, 0.0);
    EXPECT_EQ(d.level.angularSpeed, 2.2);
    EXPECT_EQ(OrbitDesk(39).level.angularSpeed, 2.2);
    EXPECT_EQ(OrbitDesk(40).level.angularSpeed, 3.2);
    EXPECT_EQ(d.rng, Rng(12));
}

TEST(OrbitStation, TheOrbitRunsFasterFromStationForty) {
    OrbitDesk slow(39);
    OrbitDesk fast(40);
    slow.idle(30);
    fast.idle(30);
    // Half a second: 2.2 x 0.5 and 3.2 x 0.5.
    EXPECT_NEAR(slow.level.angle, 1.1, 1e-9);
    EXPECT_NEAR(fast.level.angle, 1.6, 1e-9);
}

// ------------------------------------------------------------------- rules

TEST(OrbitStation, ClickingTheOrbInTheTopZonePassesWithThePassSound) {
    OrbitDesk d;
    // 0.1 rad short of the top, and the frame turns it 2.2/60 = 0.037 on:
    // the orb at (675, 276), 8 px from the zone's middle.
    d.level.angle = 1.5 * kPi - 0.1;
    EXPECT_EQ(d.press(d.zoneX(), d.zoneY()), LevelResult::Solved);
    EXPECT_EQ(d.sounds, Sounds{"pass"});
}

TEST(OrbitStation, ClickingTheOrbFarFromTheTopFiresWithTheFailSound) {
    OrbitDesk d;
    // A quarter turn from the top; after the frame the orb is at (812, 409).
    EXPECT_EQ(d.press(d.level.centerX + d.level.orbitRadius, d.level.centerY), LevelResult::Failed);
    EXPECT_EQ(d.sounds, Sounds{"fail"});
}

TEST(OrbitStation, TheZoneReachesHalfARadianEitherSideOfTheTop) {
    for (const double off : {-0.45, 0.45}) {
        OrbitDesk d;
        d.holdOrbAt(1.5 * kPi + off);
        const auto [x, y] = orbAt(d.level, d.level.angle);
        EXPECT_EQ(d.press(x, y), LevelResult::Solved) << off;
    }
    for (const double off : {-0.55, 0.55}) {
        OrbitDesk d;
        d.holdOrbAt(1.5 * kPi + off);
        const auto [x, y] = orbAt(d.level, d.level.angle);
        EXPECT_EQ(d.press(x, y), LevelResult::Failed) << off;
    }
}

TEST(OrbitStation, ClicksThatMissTheOrbAreSilent) {
    OrbitDesk d;
    d.holdOrbAt(0.0);   // the orb at (813, 405)
    const int orbX = d.level.centerX + d.level.orbitRadius;
    const int orbY = d.level.centerY;
    const int r = d.level.orbRadius;
    // The empty zone, the centre, the orbit's far side, and the orb's radius
    // away from its middle on each side (a miss: the orb reaches less).
    const std::vector<std::pair<int, int>> spots{
        {d.zoneX(), d.zoneY()}, {d.level.centerX, d.level.centerY},
        {d.level.centerX - d.level.orbitRadius, orbY},
        {orbX - r, orbY}, {orbX + r, orbY}, {orbX, orbY - r}, {orbX, orbY + r}};
    for (const auto& [x, y] : spots) {
        ASSERT_EQ(d.click(x, y), LevelResult::Running) << x << "," << y;
    }
    // Pressed beside the orb and dragged onto it: no press lands on it.
    EXPECT_EQ(d.press(orbX - r - 5, orbY), LevelResult::Running);
    EXPECT_EQ(d.moveTo(orbX, orbY), LevelResult::Running);
    EXPECT_EQ(d.release(), LevelResult::Running);
    EXPECT_EQ(d.sounds, Sounds{});
}

TEST(OrbitStation, TheAngleWrapsOnceAndIsStillJudgedByWhereItPoints) {
    OrbitDesk d;
    d.level.angle = 2 * kPi - 0.01;
    d.idle();
    EXPECT_NEAR(d.level.angle, 2.2 / 60 - 0.01, 1e-12);
    // A stalled frame of one turn and three quarters, the click landing on
    // it: the angle stays above 2 pi, pointing at the top.
    d.level.angle = 0.0;
    EXPECT_EQ(pressOnFrame(d, d.zoneX(), d.zoneY(), (4 * kPi + 1.5 * kPi) / 2.2), LevelResult::Solved);
    EXPECT_GT(d.level.angle, 2 * kPi);
}

// ---------------------------------------------------------------- pictures

TEST(OrbitStation, TheOrbStartsOnTheRightOfItsOrbit) {
    OrbitDesk d;
    const Picture picture(d.level);
    const int orbX = d.level.centerX + d.level.orbitRadius;
    const int orbY = d.level.centerY;
    // The gold orb, radius 24, over the ring's right-hand point.
    EXPECT_EQ(picture.at(orbX, orbY), station_ink::gold);
    EXPECT_EQ(picture.at(orbX + 24, orbY), station_ink::gold);
    EXPECT_EQ(picture.at(orbX + 25, orbY), station_ink::black);
    // The thin grey ring: its left-hand point.
    EXPECT_EQ(picture.at(d.level.centerX - d.level.orbitRadius, orbY), timing_ink::orbitGrey);
    EXPECT_EQ(picture.at(d.level.centerX, orbY), station_ink::black);
    // The green zone, radius 32, over the ring's top.
    EXPECT_EQ(picture.at(d.zoneX(), d.zoneY()), timing_ink::zoneGreen);
    EXPECT_EQ(picture.at(d.zoneX() + 32, d.zoneY()), timing_ink::zoneGreen);
    EXPECT_EQ(picture.at(d.zoneX() + 33, d.zoneY()), station_ink::black);
    // Nothing else but the instruction line: the orbit with the zone on top
    // and the orb reaching 24 px past it.
    const Rect orbit{d.level.centerX - 155, d.zoneY() - 33, 311, 130 + 33 + 155 + 1};
    EXPECT_EQ(paintedOutside(picture, {orbit, Rect{0, kPlayBottom - 16, kCanvasWidth, 30}}), 0);
}

TEST(OrbitStation, TheOrbIsDrawnOverTheZoneAsItCrosses) {
    OrbitDesk d;
    d.level.angle = 1.5 * kPi;
    const Picture picture(d.level);
    EXPECT_EQ(picture.at(d.zoneX(), d.zoneY()), station_ink::gold);
    EXPECT_EQ(picture.at(d.zoneX() + 24, d.zoneY()), station_ink::gold);
    EXPECT_EQ(picture.at(d.zoneX() + 28, d.zoneY()), timing_ink::zoneGreen);
    EXPECT_EQ(picture.at(d.zoneX(), d.zoneY() - 28), timing_ink::zoneGreen);
}

TEST(OrbitStation, TheOrbsPlaceIsTruncatedTowardTheCentre) {
    OrbitDesk d;
    d.level.angle = 2.5;
    // cos 2.5 x 130 = -104.15 and sin 2.5 x 130 = 77.80: (579, 482), where
    // rounding would give y 483 and flooring x 578. The orb's middle row
    // spans 24 px either side; its top and bottom rows drawn are 23 px away.
    const Picture picture(d.level);
    EXPECT_EQ(picture.at(579 - 24, 482), station_ink::gold);
    EXPECT_EQ(picture.at(579 - 25, 482), station_ink::black);
    EXPECT_EQ(picture.at(579 + 24, 482), station_ink::gold);
    EXPECT_EQ(picture.at(579 + 25, 482), station_ink::black);
    EXPECT_EQ(picture.at(579, 482 - 23), station_ink::gold);
    EXPECT_EQ(picture.at(579, 482 + 23), station_ink::gold);
    EXPECT_EQ(picture.at(579, 482 + 24), station_ink::black);
}

TEST(OrbitStation, ItsInstructionSitsSixteenPixelsAboveTheFoot) {
    OrbitDesk d;
    const Picture picture(d.level);
    // The orbit's lowest point is y 535.
    const int below = d.level.centerY + d.level.orbitRadius + 5;
    EXPECT_EQ(playAreaNoteUnlike(picture.canvas, Rect{0, below, kCanvasWidth, kCanvasHeight - below}, "CLICK THE ORB AS IT CROSSES THE TOP ZONE"),
              0);
}

// ----------------------------------------------------------------- solvers

TEST(OrbitSolver, ClearsTheOrbitOnEveryDifficulty) { EXPECT_EQ(unsolvedRuns("orbit"), ""); }

TEST(OrbitSolver, ClearsTheOrbitAtThirtyAndAHundredFortyFourFrames) {
    EXPECT_EQ(unsolvedRuns("orbit", 5, 1.0 / 30.0), "");
    EXPECT_EQ(unsolvedRuns("orbit", 5, 1.0 / 144.0), "");
}

TEST(OrbitSolver, GrabbingTheOrbAtTheSideFiresWithTheFailSound) {
    Driver<OrbitLevel> d(4, shippedRecord("orbit"));
    d.idle();
    // Where the orb will be on the next frame.
    const auto [x, y] = orbAt(d.level, d.level.angle + d.level.angularSpeed * StationDriver::kFrame);
    EXPECT_EQ(d.press(x, y), LevelResult::Failed);
    EXPECT_EQ(d.sounds, Sounds{"fail"});
}

}  // namespace
}  // namespace vorn::test
