// The two-hand station: charge the grip on the left, then rest the pointer
// on the target pacing along the top while the grip is still full. One
// pointer cannot do both, which is the joke. Covers the layout, the target's
// pacing, the grip's charge and drain, the quarter second on the target
// (shown in a cramped area where grip and target touch), a search of
// one-pointer plays that must never catch it, what the player sees, and the
// automatic player giving up in silence.

#include "stations/timing/timing_fixtures.h"
#include "stations/timing_stations.h"
#include "support/play_area.h"
#include "support/solvers/family_solvers.h"
#include "support/station_driver.h"
#include "support/station_ink.h"
#include "support/text_probe.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <functional>
#include <memory>
#include <string>
#include <utility>
#include <vector>

namespace vorn::test {
namespace {

using Sounds = std::vector<std::string>;

// Seed 3, station 11 (the slower target) in the run's play area.
struct TwoHandDesk : Driver<TwoHandLevel> {
    TwoHandDesk() : Driver<TwoHandLevel>(3, 11) {}
    int gripX() const { return level.grip.x + level.grip.w / 2; }
    int gripY() const { return level.grip.y + level.grip.h / 2; }
};

// A 200 px square area squeezes the target's path to one point, x 160 (both
// its ends fold there), 11 px right of the grip's last column at x 149: the
// one layout where a single pointer reaches both. The target sits at y 80;
// the grip spans x 30..149 and y 40..159.
constexpr Rect kCramped{0, 0, 200, 200};

// Frames until the target turns at an end of its path.
int framesToTurn(TwoHandDesk& d) {
    const int was = d.level.direction;
    int frames = 0;
    while (d.level.direction == was && frames < 1000) {
        d.idle();
        ++frames;
    }
    return frames;
}

// ------------------------------------------------------------------ layout

TEST(TwoHandStation, TheGripSitsLeftAndTheTargetStartsMidwayAcrossTheTop) {
    TwoHandDesk d;
    EXPECT_EQ(d.level.grip.x, kPlayLeft + 30);
    EXPECT_EQ(d.level.grip.y, kPlayCentreY - 60);
    EXPECT_EQ(d.level.grip.w, 120);
    EXPECT_EQ(d.level.grip.h, 120);
    EXPECT_EQ(d.level.targetX, kPlayCentreX);
    EXPECT_EQ(d.level.targetY, kPlayTop + 80);
    EXPECT_EQ(d.level.targetSpeed, 150.0);
    EXPECT_EQ(d.level.direction, 1);
    EXPECT_EQ(d.level.targetRadius, 26);
    EXPECT_EQ(d.level.charge, 0.0);
    EXPECT_EQ(d.level.dwell, 0.0);
    EXPECT_EQ(d.rng, Rng(3));
    EXPECT_EQ(Driver<TwoHandLevel>(3, 21).level.targetSpeed, 150.0);
    EXPECT_EQ(Driver<TwoHandLevel>(3, 22).level.targetSpeed, 240.0);
}

// ------------------------------------------------------------------- rules

TEST(TwoHandStation, TheTargetPacesBetweenItsEndsAndTurnsThere) {
    TwoHandDesk d;
    // 150 px/s is 2.5 px a frame.
    d.idle(30);
    EXPECT_NEAR(d.level.targetX, kPlayCentreX + 75.0, 1e-9);
    // The right end is 40 px in from the area's edge, x 1063: 380 px from
    // the start is 152 frames; the 153rd would pass it, stops there and turns.
    EXPECT_EQ(framesToTurn(d), 153 - 30);
    EXPECT_EQ(d.level.targetX, kPlayRight - 40.0);
    EXPECT_EQ(d.level.direction, -1);
    d.idle(60);
    EXPECT_NEAR(d.level.targetX, kPlayRight - 40.0 - 150.0, 1e-9);
    // The left end is 160 px in, x 423: 640 px from the right end is 256
    // frames, turning on the 257th.
    EXPECT_EQ(framesToTurn(d), 257 - 60);
    EXPECT_EQ(d.level.targetX, kPlayLeft + 160.0);
    EXPECT_EQ(d.level.direction, 1);
}

TEST(TwoHandStation, TheGripChargesWhileHeldAndDrainsOtherwise) {
    TwoHandDesk d;
    // Two full charges a second while held, three drains while not.
    d.press(d.gripX(), d.gripY());
    d.idle(14);
    EXPECT_NEAR(d.level.charge, 0.5, 1e-12);
    d.release();   // let go in the grip
    EXPECT_NEAR(d.level.charge, 0.45, 1e-12);
    d.press(d.gripX(), d.gripY());
    d.holdFor(1.0);
    EXPECT_EQ(d.level.charge, 1.0);   // capped
    d.moveTo(d.level.grip.x + d.level.grip.w, d.gripY());   // held, but just outside
    EXPECT_NEAR(d.level.charge, 0.95, 1e-12);
    d.holdFor(1.0);
    EXPECT_EQ(d.level.charge, 0.0);   // floored
}

TEST(TwoHandStation, ChargeAndReachAreJudgedOnTheSameFramesPointer) {
    TwoHandDesk d;
    d.press(d.gripX(), d.gripY());
    d.holdFor(0.6);
    ASSERT_EQ(d.level.charge, 1.0);
    // The pointer lands where the target is on the next frame: that same
    // frame has already drained the grip, so the full charge of a moment
    // ago does not count.
    const int x = static_cast<int>(d.level.targetX + d.level.direction * 2.5);
    EXPECT_EQ(d.moveTo(x, static_cast<int>(d.level.targetY)), LevelResult::Running);
    EXPECT_NEAR(d.level.charge, 0.95, 1e-12);
    EXPECT_EQ(d.level.dwell, 0.0);
}

TEST(TwoHandStation, WhereGripAndTargetTouchMoreThanAQuarterSecondOnItPasses) {
    Driver<TwoHandLevel> d(3, 11, kCramped);
    // Frames of 1/64 s add up exactly. The 32nd fills the grip and already
    // counts on the target; the dwell passes 0.25 s = 16/64 on its 17th
    // frame, the 48th in all.
    const double dt = 1.0 / 64;
    LevelResult r = pressOnFrame(d, 149, 80, dt);
    while (r == LevelResult::Running && d.frames < 200) {
        r = d.frame(dt);
        if (r == LevelResult::Running) {
            ASSERT_EQ(d.sounds, Sounds{}) << "frame " << d.frames;
        }
    }
    EXPECT_EQ(r, LevelResult::Solved);
    EXPECT_EQ(d.frames, 48);
    EXPECT_EQ(d.sounds, Sounds{"pass"});
}

TEST(TwoHandStation, TheTargetReachesLessThanTwentySixPixels) {
    Driver<TwoHandLevel> d(3, 11, kCramped);
    d.press(134, 80);   // exactly 26 px left of the target at (160, 80)
    for (int i = 0; i < 60; ++i) {
        ASSERT_EQ(d.idle(), LevelResult::Running);
        ASSERT_EQ(d.level.dwell, 0.0) << i;
    }
    ASSERT_EQ(d.level.charge, 1.0);
    // 25 px: on it. Eighths of a second, so the quarter is exact.
    EXPECT_EQ(moveOnFrame(d, 135, 80, 0.125), LevelResult::Running);
    EXPECT_EQ(d.level.dwell, 0.125);
    EXPECT_EQ(d.frame(0.125), LevelResult::Running);   // 0.25 is not past a quarter second
    EXPECT_EQ(d.frame(0.125), LevelResult::Solved);
    EXPECT_EQ(d.sounds, Sounds{"pass"});
}

TEST(TwoHandStation, LeavingTheTargetResetsTheDwell) {
    Driver<TwoHandLevel> d(3, 11, kCramped);
    d.press(149, 80);
    d.idle(34);   // full on frame 31, then four frames on the target
    EXPECT_GT(d.level.dwell, 0.0);
    d.moveTo(40, 150);   // still in the grip, off the target
    EXPECT_EQ(d.level.dwell, 0.0);
    EXPECT_EQ(d.level.charge, 1.0);
}

// ------------------------------------------------------ one-pointer search

// One pointer, planned frame by frame: where it is and whether it is held.
struct Move {
    int x = 0;
    int y = 0;
    bool down = false;
};
using Plan = std::function<Move(const TwoHandLevel&, int frame, double dt)>;

// One frame of a plan, as real events: the pointer moved, and the button
// pressed or let go where the plan changes it.
LevelResult follow(StationDriver& d, const Move& m, double dt) {
    pushMotion(m.x, m.y);
    if (m.down != d.input.mouseDown) {
        pushButton(m.down, m.x, m.y);
    }
    return d.frame(dt);
}

std::vector<Plan> oneHandedPlans(const Rect& grip) {
    std::vector<Plan> plans;
    // The grip's corner nearest the target's path, and its centre.
    const int cornerX = grip.x + grip.w - 1;
    const int cornerY = grip.y;
    const int midX = grip.x + grip.w / 2;
    const int midY = grip.y + grip.h / 2;

    // Parked on a grid of points over the grip, held the whole time.
    for (int y = grip.y; y < grip.y + grip.h; y += 17) {
        for (int x = grip.x; x < grip.x + grip.w; x += 17) {
            plans.push_back([x, y](const TwoHandLevel&, int, double) { return Move{x, y, true}; });
        }
    }
    plans.push_back([=](const TwoHandLevel&, int, double) { return Move{cornerX, cornerY, true}; });
    // In the grip, on the edge pixel nearest the target wherever it is.
    plans.push_back([=](const TwoHandLevel& l, int, double) {
        const int x = std::min(cornerX, std::max(grip.x, static_cast<int>(l.targetX)));
        return Move{x, cornerY, true};
    });
    // Clicking away in the grip: pressed for some frames, released for others.
    for (const int held : {1, 3, 10}) {
        for (const int rest : {1, 2}) {
            for (const bool corner : {false, true}) {
                plans.push_back([=](const TwoHandLevel&, int f, double) {
                    return Move{corner ? cornerX : midX, corner ? cornerY : midY,
                                f % (held + rest) < held};
                });
            }
        }
    }
    // Charge fully, then jump onto the target in one frame (faster than any
    // hand), stay on it held or let go for a while, and come back.
    for (const int stay : {1, 2, 5, 1 << 20}) {
        for (const bool holdOn : {true, false}) {
            plans.push_back([=, chasing = std::make_shared<int>(-1)](const TwoHandLevel& l, int f,
                                                                     double) {
                if (*chasing < 0 && l.charge >= 1.0) {
                    *chasing = f;
                }
                if (*chasing >= 0 && f - *chasing < stay) {
                    return Move{static_cast<int>(std::lround(l.targetX)),
                                static_cast<int>(l.targetY), holdOn};
                }
                if (*chasing >= 0 && l.charge <= 0.0) {
                    *chasing = -1;
                }
                return Move{cornerX, cornerY, true};
            });
        }
    }
    // Flicking between the grip and the target, a frames in one, b on the other.
    for (const auto& ab : std::vector<std::pair<int, int>>{
             {1, 1}, {2, 1}, {3, 1}, {5, 1}, {10, 1}, {1, 2}, {20, 3}, {40, 1}}) {
        plans.push_back([=](const TwoHandLevel& l, int f, double) {
            if (f % (ab.first + ab.second) < ab.first) {
                return Move{cornerX, cornerY, true};
            }
            return Move{static_cast<int>(l.targetX), static_cast<int>(l.targetY), true};
        });
    }
    // Held-down sweeps from the grip's corner to the target and back, at
    // speeds from a slow drag to four times a flick.
    for (const double speed : {600.0, 1200.0, 2400.0, 4800.0, 9600.0}) {
        plans.push_back([=, pos = std::make_shared<std::pair<double, double>>(cornerX, cornerY),
                         out = std::make_shared<bool>(true)](const TwoHandLevel& l, int, double dt) {
            const double gx = *out ? l.targetX : cornerX;
            const double gy = *out ? l.targetY : cornerY;
            const double dx = gx - pos->first;
            const double dy = gy - pos->second;
            const double dist = std::sqrt(dx * dx + dy * dy);
            const double reach = speed * dt;
            if (dist <= reach) {
                *pos = {gx, gy};
                *out = !*out;
            } else {
                pos->first += dx / dist * reach;
                pos->second += dy / dist * reach;
            }
            return Move{static_cast<int>(pos->first), static_cast<int>(pos->second), true};
        });
    }
    // Sweeping the whole area row by row, held, across the target's path.
    for (const int rowStep : {7, 19}) {
        plans.push_back([rowStep](const TwoHandLevel&, int f, double) {
            const int x = kPlayLeft + (f * 23) % kPlayArea.w;
            const int y = kPlayTop + ((f * 23) / kPlayArea.w * rowStep) % kPlayArea.h;
            return Move{x, y, true};
        });
    }
    // Riding on the target itself, held and not.
    for (const bool held : {true, false}) {
        plans.push_back([held](const TwoHandLevel& l, int, double) {
            return Move{static_cast<int>(l.targetX), static_cast<int>(l.targetY), held};
        });
    }
    return plans;
}

TEST(TwoHandStation, NoOnePointerPlayEverSolvesItAndNoneFailsIt) {
    bool sawFullCharge = false;
    bool sawOnTargetNearlyCharged = false;
    int runs = 0;
    std::size_t planCount = 0;
    const std::vector<int> frameTimes{5, 16, 50};   // ms: 200 Hz, 60 Hz and the clamp
    for (const std::int32_t number : {11, 22}) {
        for (const int ms : frameTimes) {
            const double dt = ms / 1000.0;
            // Some plans remember what they did: fresh ones for every frame time.
            const std::vector<Plan> plans = oneHandedPlans(Driver<TwoHandLevel>(1, number).level.grip);
            planCount = plans.size();
            for (std::size_t i = 0; i < plans.size(); ++i) {
                Driver<TwoHandLevel> d(1, number);
                ++runs;
                const int frames = static_cast<int>(5.0 / dt);
                for (int f = 0; f < frames; ++f) {
                    const Move m = plans[i](d.level, f, dt);
                    ASSERT_EQ(follow(d, m, dt), LevelResult::Running)
                        << "number " << number << ", " << ms << " ms, plan " << i << ", frame " << f;
                    ASSERT_EQ(d.level.dwell, 0.0)
                        << "number " << number << ", " << ms << " ms, plan " << i << ", frame " << f;
                    sawFullCharge = sawFullCharge || d.level.charge >= 1.0;
                    const double dx = m.x - d.level.targetX;
                    const double dy = m.y - d.level.targetY;
                    const int r = d.level.targetRadius;
                    if (m.down && dx * dx + dy * dy < r * r && d.level.charge > 0.8) {
                        sawOnTargetNearlyCharged = true;
                    }
                }
                ASSERT_EQ(d.sounds, Sounds{}) << "plan " << i;
            }
        }
    }
    EXPECT_EQ(runs, 2 * static_cast<int>(frameTimes.size() * planCount));
    // The search did get close: full charges, and the pointer on the target
    // with the grip still more than four-fifths charged.
    EXPECT_TRUE(sawFullCharge);
    EXPECT_TRUE(sawOnTargetNearlyCharged);
}

// ---------------------------------------------------------------- pictures

// The word on the grip, 10 px above its middle: the grip is flat but for
// its rounded corners and the charge bar 18 px from its foot, so a 100 x 34
// box round the word holds the word alone.
int pixelsUnlikeGripWord(const TwoHandDesk& d, const Picture& picture, Color plate) {
    const Rect& g = d.level.grip;
    return pixelsUnlikeText(picture.canvas, Rect{g.x + 10, g.y + 33, 100, 34}, plate, "HOLD",
                            d.gripX(), d.gripY() - 10, TextSize::Normal, station_ink::ink, true, true);
}

// The charge bar: 8 px high, 18 px above the grip's foot, starting 10 px in
// from its left and `width` px long, green on the grip's plate.
void expectChargeBar(const TwoHandDesk& d, const Picture& picture, int width, Color plate) {
    const Rect& g = d.level.grip;
    const int left = g.x + 10;
    const int top = g.y + g.h - 18;
    EXPECT_EQ(picture.at(left - 1, top + 4), plate);
    EXPECT_EQ(picture.at(left, top - 1), plate);
    EXPECT_EQ(picture.at(left, top + 8), plate);
    if (width == 0) {
        // Even empty, the bar shows as one green column: the renderer
        // draws a rectangle of no width as a line.
        EXPECT_EQ(picture.at(left, top + 4), station_ink::terminalGreen);
        EXPECT_EQ(picture.at(left + 1, top + 4), plate);
        return;
    }
    EXPECT_EQ(picture.at(left, top), station_ink::terminalGreen);
    EXPECT_EQ(picture.at(left + width - 1, top + 7), station_ink::terminalGreen);
    EXPECT_EQ(picture.at(left + width, top + 4), plate) << "right of the bar";
}

// The target: a disc of 20 px in its colour on one of 26 px in its rim
// colour, centred at (x, y). (A disc's very top and bottom rows, a single
// dot each, are not drawn.)
void expectTarget(const Picture& picture, int x, int y, Color colour, Color rim) {
    EXPECT_EQ(picture.at(x, y), colour);
    EXPECT_EQ(picture.at(x + 20, y), colour);
    EXPECT_EQ(picture.at(x - 21, y), rim);
    EXPECT_EQ(picture.at(x + 26, y), rim);
    EXPECT_EQ(picture.at(x - 26, y), rim);
    EXPECT_EQ(picture.at(x, y - 25), rim);
    EXPECT_EQ(picture.at(x + 27, y), station_ink::black);
    EXPECT_EQ(picture.at(x - 27, y), station_ink::black);
}

TEST(TwoHandStation, IdleTheGripIsBrassAndTheTargetOrange) {
    TwoHandDesk d;
    const Picture picture(d.level);
    EXPECT_EQ(pixelsUnlikeGripWord(d, picture, station_ink::bronze), 0);
    EXPECT_EQ(picture.at(d.level.grip.x + 5, d.gripY()), station_ink::bronze);
    expectChargeBar(d, picture, 0, station_ink::bronze);
    expectTarget(picture, kPlayCentreX, kPlayTop + 80, timing_ink::orange, timing_ink::orangeRim);
    // Nothing else but the instruction line at the foot.
    EXPECT_EQ(paintedOutside(picture, {plateReach(d.level.grip), Rect{kPlayCentreX - 26, kPlayTop + 54, 53, 53},
                                       Rect{0, kPlayBottom - 18, kCanvasWidth, 30}}),
              0);
}

TEST(TwoHandStation, AChargingGripTurnsGreenAndGrowsItsBar) {
    TwoHandDesk d;
    d.press(d.gripX(), d.gripY());
    d.idle(16);
    // 17 frames held: 17/30 charged, a bar of 100 x 0.567 = 56 px (not 57).
    // The target is 17 x 2.5 = 42.5 px on, drawn at x 725 (not 726).
    const Picture picture(d.level);
    EXPECT_EQ(pixelsUnlikeGripWord(d, picture, station_ink::darkGreen), 0);
    expectChargeBar(d, picture, 56, station_ink::darkGreen);
    expectTarget(picture, kPlayCentreX + 42, kPlayTop + 80, timing_ink::orange, timing_ink::orangeRim);
}

TEST(TwoHandStation, AFullGripLightsTheTargetGreen) {
    TwoHandDesk d;
    d.press(d.gripX(), d.gripY());
    d.holdFor(0.6);
    ASSERT_EQ(d.level.charge, 1.0);
    const Picture picture(d.level);
    expectChargeBar(d, picture, 100, station_ink::darkGreen);
    expectTarget(picture, static_cast<int>(d.level.targetX), kPlayTop + 80,
                 station_ink::terminalGreen, timing_ink::greenRim);
}

TEST(TwoHandStation, ItsInstructionSitsEighteenPixelsAboveTheFoot) {
    TwoHandDesk d;
    const Picture picture(d.level);
    // Nothing else of the station comes below y 500.
    EXPECT_EQ(playAreaNoteUnlike(picture.canvas, Rect{0, 500, kCanvasWidth, kCanvasHeight - 500}, "HOLD, THEN CATCH THE TARGET", 18),
              0);
}

// ----------------------------------------------------------------- solvers

TEST(TwoHandSolver, TheBestOneHandedTryRunsOutTheClockInSilence) {
    // Twohand ships in no catalogue: these records are its two speeds.
    for (const std::int32_t number : {11, 22}) {
        for (const double dt : {1.0 / 144.0, StationDriver::kFrame, 1.0 / 20.0}) {
            Driver<TwoHandLevel> d(9, madeUpRecord("twohand", number));
            std::unique_ptr<Solver> solver = makeSolver("twohand");
            const StationDriver::Outcome out = d.play(*solver, 20.0, dt);
            EXPECT_EQ(out.result, LevelResult::Running) << number << " at " << dt;
            EXPECT_NEAR(out.time, 20.0, 2 * dt);
            EXPECT_EQ(d.sounds, Sounds{}) << number << " at " << dt;
        }
    }
}

}  // namespace
}  // namespace vorn::test
