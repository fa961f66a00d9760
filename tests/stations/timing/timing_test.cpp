// The timing station (the dash ring): a ring of red dots with a gap turning
// at 2.6 rad/s; press DASH while the gap is within half a radian of the
// top. DASH at any other moment fires the player; a press anywhere else is
// ignored. Covers the layout, the half-radian edge, the angle's wrap, the
// sounds, which dots the gap leaves out, and the automatic player.

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

// Seed 11, station 4: the ring round (683, 395), DASH at x 593..772, y 562..605.
struct TimingDesk : Driver<TimingLevel> {
    TimingDesk() : Driver<TimingLevel>(11, 4) {}
    int dashX() const { return level.button.x + level.button.w / 2; }
    int dashY() const { return level.button.y + level.button.h / 2; }
    // The ring stops turning, so a press judges the angle the test set.
    void holdRingAt(double angle) {
        level.angularSpeed = 0.0;
        level.angle = angle;
    }
};

// ------------------------------------------------------------------ layout

TEST(TimingStation, TheRingAndDashAreLaidOutWithoutDraws) {
    TimingDesk d;
    EXPECT_EQ(d.level.centerX, kPlayCentreX);
    EXPECT_EQ(d.level.centerY, kPlayCentreY - 10);
    EXPECT_EQ(d.level.ringRadius, 90);
    EXPECT_EQ(d.level.angle, 0.0);
    EXPECT_EQ(d.level.angularSpeed, 2.6);
    EXPECT_EQ(d.level.tolerance, 0.5);
    // DASH: 180 x 44, centred, its top 58 px above the area's foot.
    EXPECT_EQ(d.level.button.x, kPlayCentreX - 90);
    EXPECT_EQ(d.level.button.y, kPlayBottom - 58);
    EXPECT_EQ(d.level.button.w, 180);
    EXPECT_EQ(d.level.button.h, 44);
    EXPECT_EQ(d.rng, Rng(11));
}

// ------------------------------------------------------------------- rules

TEST(TimingStation, DashWithTheGapNearTheTopPassesWithThePassSound) {
    TimingDesk d;
    // 0.3 rad short of the top, and the frame turns it 2.6/60 = 0.043 nearer.
    d.level.angle = 1.5 * kPi - 0.3;
    EXPECT_EQ(d.press(d.dashX(), d.dashY()), LevelResult::Solved);
    EXPECT_EQ(d.sounds, Sounds{"pass"});
}

TEST(TimingStation, DashWithTheGapElsewhereFiresWithTheFailSound) {
    for (const double gap : {0.0, 0.5 * kPi, kPi}) {   // right, bottom, left
        TimingDesk d;
        d.level.angle = gap;
        EXPECT_EQ(d.press(d.dashX(), d.dashY()), LevelResult::Failed) << gap;
        EXPECT_EQ(d.sounds, Sounds{"fail"});
    }
}

TEST(TimingStation, DashExactlyHalfARadianFromTheTopFires) {
    // How far the station must judge an angle to be from the top, worked out
    // the long way round through atan2.
    const auto offTop = [](double a) {
        return std::fabs(std::atan2(std::sin(a + kPi / 2), std::cos(a + kPi / 2)));
    };
    // Half a radian either side of the top, written one turn down so that the
    // sum with pi/2 lands on 0.5 exactly; within the first turn no double does.
    for (const double edge : {0.5 - kPi / 2, -0.5 - kPi / 2}) {
        ASSERT_EQ(offTop(edge), 0.5);
        TimingDesk atEdge;
        atEdge.holdRingAt(edge);
        EXPECT_EQ(atEdge.press(atEdge.dashX(), atEdge.dashY()), LevelResult::Failed) << edge;
        // A hair closer to the top passes.
        TimingDesk closer;
        closer.holdRingAt(edge + (edge > -kPi / 2 ? -1e-9 : 1e-9));
        EXPECT_EQ(closer.press(closer.dashX(), closer.dashY()), LevelResult::Solved) << edge;
    }
}

TEST(TimingStation, OnlyAPressOnDashCounts) {
    TimingDesk d;
    const Rect& dash = d.level.button;
    d.holdRingAt(1.5 * kPi);   // the gap at the top
    EXPECT_EQ(d.click(d.level.centerX, d.level.centerY - d.level.ringRadius), LevelResult::Running);
    EXPECT_EQ(d.click(dash.x + dash.w, d.dashY()), LevelResult::Running);   // right of DASH
    EXPECT_EQ(d.click(d.dashX(), dash.y + dash.h), LevelResult::Running);   // below it
    // Pressed beside DASH and dragged onto it: no press lands on DASH.
    EXPECT_EQ(d.press(dash.x - 1, d.dashY()), LevelResult::Running);
    EXPECT_EQ(d.moveTo(d.dashX(), d.dashY()), LevelResult::Running);
    EXPECT_EQ(d.release(), LevelResult::Running);
    d.holdRingAt(0.5 * kPi);   // the gap at the bottom: a stray click is still nothing
    EXPECT_EQ(d.click(kPlayLeft / 2, kPlayBottom + 40), LevelResult::Running);
    EXPECT_EQ(d.sounds, Sounds{});
}

TEST(TimingStation, PressesOffDashAreSilentWhereverTheGapIs) {
    TimingDesk d;
    const Rect& dash = d.level.button;
    // The ring's top, the green marker over it, DASH's four sides just
    // outside it, and the floor.
    const std::vector<std::pair<int, int>> spots{
        {d.level.centerX, d.level.centerY - 90}, {d.level.centerX, d.level.centerY - 110},
        {dash.x - 1, d.dashY()},                  {dash.x + dash.w, d.dashY()},
        {d.dashX(), dash.y - 1},                  {d.dashX(), dash.y + dash.h},
        {kPlayLeft / 2, kPlayBottom + 40}};
    for (int turn = 0; turn < 12; ++turn) {
        for (const auto& [x, y] : spots) {
            ASSERT_EQ(d.click(x, y), LevelResult::Running) << x << "," << y;
        }
        d.idle(12);
    }
    EXPECT_EQ(d.sounds, Sounds{});
}

TEST(TimingStation, TheAngleWrapsOneTurnPerFrameOnly) {
    TimingDesk d;
    d.level.angle = 2 * kPi - 0.01;
    d.idle();
    EXPECT_NEAR(d.level.angle, 2.6 / 60 - 0.01, 1e-12);
    // A stalled frame long enough for nearly two turns leaves the angle
    // above 2 pi after its single wrap.
    d.level.angle = 0.0;
    const double turns = 2 * kPi + 1.5 * kPi;   // the top, one turn up
    d.frame((turns + 2 * kPi) / 2.6);
    EXPECT_NEAR(d.level.angle, turns, 1e-9);
    EXPECT_GT(d.level.angle, 2 * kPi);
}

TEST(TimingStation, AnAngleStillAboveTwoPiIsJudgedByWhereItPoints) {
    // A press landing on such a stalled frame: the top, one turn up, passes ...
    TimingDesk top;
    EXPECT_EQ(pressOnFrame(top, top.dashX(), top.dashY(), (4 * kPi + 1.5 * kPi) / 2.6),
              LevelResult::Solved);
    EXPECT_GT(top.level.angle, 2 * kPi);
    // ... and the bottom, one turn up, fires.
    TimingDesk bottom;
    EXPECT_EQ(pressOnFrame(bottom, bottom.dashX(), bottom.dashY(), (4 * kPi + 0.5 * kPi) / 2.6),
              LevelResult::Failed);
}

// ---------------------------------------------------------------- pictures

// Where the ring's dots stand: one every 0.12 rad from angle 0 (the right),
// 53 places up to 6.24 rad, each a red disc of radius 7 on the ring of 90.
std::pair<int, int> dotCentre(const TimingDesk& d, int place) {
    const double a = 0.12 * place;
    return {d.level.centerX + static_cast<int>(std::cos(a) * 90),
            d.level.centerY + static_cast<int>(std::sin(a) * 90)};
}

// The places whose centre is not red: the gap.
std::vector<int> dotsMissing(const TimingDesk& d, const Picture& picture) {
    std::vector<int> missing;
    for (int k = 0; k < 53; ++k) {
        const auto [x, y] = dotCentre(d, k);
        if (picture.at(x, y) != station_ink::alarmRed) {
            missing.push_back(k);
        }
    }
    return missing;
}

TEST(TimingStation, EachDotIsARedDiscOfSevenPixels) {
    TimingDesk d;
    const Picture picture(d.level);
    // Place 13 (1.56 rad) is the ring's lowest dot, at (683, 484); its
    // neighbours stand 9 and 11 px to either side, so the column through
    // it is its own. A disc's single-dot top and bottom rows are not drawn:
    // it reaches 6 px up and down.
    const auto [x, y] = dotCentre(d, 13);
    EXPECT_EQ(picture.at(x, y + 6), station_ink::alarmRed);
    EXPECT_EQ(picture.at(x, y - 6), station_ink::alarmRed);
    EXPECT_EQ(picture.at(x, y + 7), station_ink::black);
    EXPECT_EQ(picture.at(x, y - 7), station_ink::black);
}

TEST(TimingStation, TheRingStartsWithItsGapOnTheRight) {
    TimingDesk d;
    // Half a radian either side of 0: 0 to 0.48 (places 0..4) and 5.88 to
    // 6.24 (places 49..52); 0.60 and 5.76 are 0.52 away and drawn.
    EXPECT_EQ(dotsMissing(d, Picture(d.level)), (std::vector<int>{0, 1, 2, 3, 4, 49, 50, 51, 52}));
}

TEST(TimingStation, TheGapTurnsWithTheAngle) {
    TimingDesk d;
    d.idle(60);   // one second: 2.6 rad on, lower left
    // Within half a radian of 2.6: 2.16 (place 18) to 3.00 (place 25).
    EXPECT_EQ(dotsMissing(d, Picture(d.level)),
              (std::vector<int>{18, 19, 20, 21, 22, 23, 24, 25}));
    // At the top, under the marker: 4.32 (place 36) to 5.16 (place 43).
    d.level.angle = 1.5 * kPi;
    EXPECT_EQ(dotsMissing(d, Picture(d.level)),
              (std::vector<int>{36, 37, 38, 39, 40, 41, 42, 43}));
}

TEST(TimingStation, TheMarkerAndDashSitUnderTheRing) {
    TimingDesk d;
    const Picture picture(d.level);
    // The green marker, radius 6, 110 px above the ring's centre.
    const int markerY = d.level.centerY - 110;
    EXPECT_EQ(picture.at(d.level.centerX, markerY), station_ink::terminalGreen);
    EXPECT_EQ(picture.at(d.level.centerX + 6, markerY), station_ink::terminalGreen);
    EXPECT_EQ(picture.at(d.level.centerX + 7, markerY), station_ink::black);
    EXPECT_EQ(picture.at(d.level.button.x + 10, d.dashY()), station_ink::paleGold);
    // Nothing else: the ring with its marker, DASH, the instruction line.
    const Rect ring{d.level.centerX - 98, d.level.centerY - 117, 197, 215};
    EXPECT_EQ(paintedOutside(picture, {ring, plateReach(d.level.button), Rect{0, kPlayBottom - 16, kCanvasWidth, 30}}),
              0);
}

TEST(TimingStation, DashIsWrittenInInkOnItsPlate) {
    TimingDesk d;
    const Picture picture(d.level);
    // The plate is flat from 8 px in on each side over its full height.
    const Rect& dash = d.level.button;
    EXPECT_EQ(pixelsUnlikeText(picture.canvas, Rect{dash.x + 20, dash.y + 2, 140, 40},
                               station_ink::paleGold, "DASH", d.dashX(), dash.y + 22,
                               TextSize::Normal, station_ink::ink, true, true),
              0);
}

TEST(TimingStation, ItsInstructionSitsBelowDash) {
    TimingDesk d;
    const Picture picture(d.level);
    // DASH's foot is y 605; from 607 down there is only the line.
    const int below = d.level.button.y + d.level.button.h + 1;
    EXPECT_EQ(playAreaNoteUnlike(picture.canvas, Rect{0, below, kCanvasWidth, kCanvasHeight - below}, "DASH WHEN THE GAP REACHES THE TOP"),
              0);
}

// ----------------------------------------------------------------- solvers

TEST(TimingSolver, ClearsTheDashRingOnEveryDifficulty) { EXPECT_EQ(unsolvedRuns("timing"), ""); }

TEST(TimingSolver, ClearsTheDashRingAtThirtyAndAHundredFortyFourFrames) {
    EXPECT_EQ(unsolvedRuns("timing", 5, 1.0 / 30.0), "");
    EXPECT_EQ(unsolvedRuns("timing", 5, 1.0 / 144.0), "");
}

TEST(TimingSolver, DashingStraightAwayFiresWithTheFailSound) {
    Driver<TimingLevel> d(4, shippedRecord("timing"));
    auto eager = scripted([](const Level& station, const Hand& hand, double) {
        return clickCentre(hand, static_cast<const TimingLevel&>(station).button);
    });
    const StationDriver::Outcome out = d.play(eager, 5.0);
    EXPECT_EQ(out.result, LevelResult::Failed);
    EXPECT_LT(out.time, 1.0);
    EXPECT_EQ(d.sounds, Sounds{"fail"});
}

}  // namespace
}  // namespace vorn::test
