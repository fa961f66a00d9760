// The timing and reflex stations: the big button, the hold bar, the two-hand
// grip, the waiting period, the dash ring and the orbit.

#include "audio/audio_system.h"
#include "data/level_catalogue.h"
#include "stations/level_factory.h"
#include "stations/timing_stations.h"
#include "support/draws_by_hand.h"
#include "support/software_canvas.h"
#include "support/solvers/family_solvers.h"
#include "support/station_bench.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <functional>
#include <memory>
#include <string>
#include <utility>
#include <vector>

namespace vorn {
namespace {

constexpr double kPi = 3.14159265358979323846;

// Feeds a station one frame at a time with the pointer and button given; the
// press and release edges follow from the previous frame, as the event pump
// makes them. The audio device is never opened, so sounds are no-ops.
struct Pointer {
    InputState in;
    AudioSystem silent;

    LevelResult step(Level& level, double dt, int x, int y, bool down) {
        in.clearEdges();
        in.mousePressed = down && !in.mouseDown;
        in.mouseReleased = !down && in.mouseDown;
        in.mouseDown = down;
        in.mouseX = x;
        in.mouseY = y;
        return level.update(dt, in, silent);
    }
    // A press and nothing else: the button goes down on this frame.
    LevelResult press(Level& level, double dt, int x, int y) {
        in.mouseDown = false;
        return step(level, dt, x, y, true);
    }
};

LevelDef record(const char* type, std::int32_t number) {
    LevelDef def;
    def.number = number;
    def.id = "test";
    def.name = "TEST";
    def.type = type;
    def.phase = phaseForNumber(number);
    def.baseTime = 30;
    return def;
}

// Sets a station up in the run's play area from a record of its own.
template <typename T>
T& lay(T& level, const char* type, std::int32_t number, Rng& rng) {
    level.setup(record(type, number), rng, kPlayArea);
    return level;
}

// A freshly laid-out station, for a one-line look at its state.
template <typename T>
std::unique_ptr<T> made(const char* type, std::int32_t number, Rng& rng) {
    auto level = std::make_unique<T>();
    lay(*level, type, number, rng);
    return level;
}

// ------------------------------------------------------------------ factory

TEST(TimingFamily, TheFactoryMakesEachTimingStationFromItsTypeString) {
    EXPECT_NE(dynamic_cast<ButtonLevel*>(createLevel("button").get()), nullptr);
    EXPECT_NE(dynamic_cast<HoldLevel*>(createLevel("hold").get()), nullptr);
    EXPECT_NE(dynamic_cast<TwoHandLevel*>(createLevel("twohand").get()), nullptr);
    EXPECT_NE(dynamic_cast<PatienceLevel*>(createLevel("patience").get()), nullptr);
    EXPECT_NE(dynamic_cast<TimingLevel*>(createLevel("timing").get()), nullptr);
    EXPECT_NE(dynamic_cast<OrbitLevel*>(createLevel("orbit").get()), nullptr);
    EXPECT_EQ(dynamic_cast<ButtonLevel*>(createLevel("Button").get()), nullptr);
    EXPECT_EQ(dynamic_cast<OrbitLevel*>(createLevel("orbit ").get()), nullptr);
}

TEST(TimingFamily, ConstructorsZeroEverythingButTheirPresets) {
    const HoldLevel hold;
    EXPECT_EQ(hold.requiredTime, 2.0);
    EXPECT_EQ(hold.heldTime, 0.0);
    EXPECT_FALSE(hold.holding);
    const TimingLevel timing;
    EXPECT_EQ(timing.angularSpeed, 2.6);
    EXPECT_EQ(timing.tolerance, 0.5);
    EXPECT_EQ(timing.angle, 0.0);
    const OrbitLevel orbit;
    EXPECT_EQ(orbit.orbitRadius, 130);
    EXPECT_EQ(orbit.orbRadius, 24);
    EXPECT_EQ(orbit.angularSpeed, 2.2);
    const ButtonLevel button;
    EXPECT_EQ(button.flashTimer, 0.0);
    EXPECT_EQ(button.target.w, 0);
    const TwoHandLevel twohand;
    EXPECT_EQ(twohand.charge, 0.0);
    EXPECT_EQ(twohand.direction, 0);
    const PatienceLevel patience;
    EXPECT_EQ(patience.wait, 0.0);
    EXPECT_FALSE(patience.ready);
}

// ------------------------------------------------------------------- button

TEST(ButtonStation, TheBigButtonSitsMidAreaAndThePlateIsDrawnYThenX) {
    Rng rng(5489);
    ButtonLevel level;
    lay(level, "button", 1, rng);
    // cx = 263 + 420 = 683, cy = 190 + 215 = 405.
    EXPECT_EQ(level.bigButton.x, 593);
    EXPECT_EQ(level.bigButton.y, 315);
    EXPECT_EQ(level.bigButton.w, 180);
    EXPECT_EQ(level.bigButton.h, 180);
    // y in [210, 570] takes the first draw: 3499211612 x 361 >> 32 = 294;
    // x in [293, 1033] the second: 581869302 x 741 >> 32 = 100.
    EXPECT_EQ(level.target.y, 504);
    EXPECT_EQ(level.target.x, 393);
    EXPECT_EQ(level.target.w, 38);
    EXPECT_EQ(level.target.h, 24);
    EXPECT_EQ(level.flashTimer, 0.0);
    EXPECT_EQ(rng, test::engineAfter(5489, 2));
}

TEST(ButtonStation, AnotherSeedPlacesThePlateElsewhere) {
    Rng rng(2024);
    ButtonLevel level;
    lay(level, "button", 1, rng);
    EXPECT_EQ(level.target.y, 422);
    EXPECT_EQ(level.target.x, 854);
    EXPECT_EQ(rng, test::engineAfter(2024, 2));
}

TEST(ButtonStation, PressingThePlatePasses) {
    Rng rng(5489);
    ButtonLevel level;
    lay(level, "button", 1, rng);
    Pointer p;
    EXPECT_EQ(p.press(level, 0.016, level.target.x, level.target.y), LevelResult::Solved);
}

TEST(ButtonStation, ThePlateCountsOnlyOnAPressAndOnlyInsideIt) {
    Rng rng(5489);
    ButtonLevel level;
    lay(level, "button", 1, rng);
    const Rect& t = level.target;
    Pointer p;
    // Half-open: the right and bottom edges are outside.
    EXPECT_EQ(p.press(level, 0.016, t.x + t.w, t.y), LevelResult::Running);
    EXPECT_EQ(p.press(level, 0.016, t.x, t.y + t.h), LevelResult::Running);
    // Held down and dragged onto the plate: no press this frame.
    EXPECT_EQ(p.step(level, 0.016, t.x + 5, t.y + 5, true), LevelResult::Running);
    EXPECT_EQ(p.press(level, 0.016, t.x + t.w - 1, t.y + t.h - 1), LevelResult::Solved);
}

TEST(ButtonStation, TheBigButtonNeverSolvesAndFlashesForTenCallsWhateverTheFrameRate) {
    for (const double dt : {0.001, 0.016, 0.05}) {
        Rng rng(5489);
        ButtonLevel level;
        lay(level, "button", 1, rng);
        Pointer p;
        EXPECT_EQ(p.press(level, dt, 683, 405), LevelResult::Running);
        // Set to 0.15 and stepped once already on the press call.
        EXPECT_NEAR(level.flashTimer, 0.134, 1e-12);
        for (int call = 2; call <= 9; ++call) {
            EXPECT_EQ(p.step(level, dt, 683, 405, true), LevelResult::Running);
            EXPECT_GT(level.flashTimer, 0.0) << "dt " << dt << " call " << call;
        }
        EXPECT_EQ(p.step(level, dt, 683, 405, false), LevelResult::Running);
        EXPECT_LE(level.flashTimer, 0.0) << "dt " << dt;
        // Once dark again it stays put.
        const double settled = level.flashTimer;
        p.step(level, dt, 683, 405, false);
        EXPECT_EQ(level.flashTimer, settled);
    }
}

TEST(ButtonStation, NoPressAnywhereOffThePlateEverFails) {
    Rng rng(7);
    ButtonLevel level;
    lay(level, "button", 1, rng);
    Pointer p;
    for (int y = 0; y < 768; y += 6) {
        for (int x = 0; x < 1366; x += 6) {
            if (contains(level.target, x, y)) {
                continue;
            }
            ASSERT_EQ(p.press(level, 0.016, x, y), LevelResult::Running) << x << "," << y;
        }
    }
}

TEST(ButtonStation, DrawsTheRedButtonOnItsShadowAndTheBrassPlate) {
    Rng rng(5489);
    ButtonLevel level;
    lay(level, "button", 1, rng);
    test::SoftwareCanvas canvas;
    canvas.graphics.clear(rgb(0, 0, 0));
    level.render(canvas.graphics);
    EXPECT_EQ(canvas.pixel(683 + 83, 405), rgb(127, 29, 21));   // shadow ring, 78..88
    EXPECT_EQ(canvas.pixel(683, 405 + 55), rgb(255, 58, 42));   // face, below the label
    EXPECT_EQ(canvas.pixel(683 + 95, 405), rgb(0, 0, 0));
    EXPECT_EQ(canvas.pixel(393 + 30, 504 + 12), rgb(199, 154, 53));   // plate
    EXPECT_EQ(canvas.pixel(393 + 9, 504 + 12), rgb(20, 20, 20));      // its ink strip
    EXPECT_EQ(canvas.pixel(393 + 17, 504 + 12), rgb(199, 154, 53));
}

TEST(ButtonStation, APressedButtonDrawsDarkUntilTheFlashRunsOut) {
    Rng rng(5489);
    ButtonLevel level;
    lay(level, "button", 1, rng);
    Pointer p;
    p.press(level, 0.016, 683, 405);
    test::SoftwareCanvas canvas;
    canvas.graphics.clear(rgb(0, 0, 0));
    level.render(canvas.graphics);
    EXPECT_EQ(canvas.pixel(683, 405 + 55), rgb(153, 34, 25));
    EXPECT_EQ(canvas.pixel(683 + 83, 405), rgb(76, 17, 12));
}

// --------------------------------------------------------------------- hold

struct HoldStation : ::testing::Test {
    Rng rng{99};
    HoldLevel level;
    Pointer p;

    void SetUp() override { lay(level, "hold", 2, rng); }
};

TEST_F(HoldStation, TheBarStandsMidAreaAndNothingIsDrawnFromTheEngine) {
    EXPECT_EQ(level.bar.x, 633);
    EXPECT_EQ(level.bar.y, 220);
    EXPECT_EQ(level.bar.w, 100);
    EXPECT_EQ(level.bar.h, 360);
    EXPECT_EQ(level.requiredTime, 2.0);
    EXPECT_EQ(rng, Rng(99));
}

TEST_F(HoldStation, HoldingTwoSecondsFromAPressInsideTheBarPasses) {
    // Sixteenths of a second add up exactly: the 32nd frame makes 2.0.
    EXPECT_EQ(p.step(level, 0.0625, 683, 400, true), LevelResult::Running);   // the press counts
    EXPECT_TRUE(level.holding);
    EXPECT_EQ(level.heldTime, 0.0625);
    for (int i = 0; i < 30; ++i) {
        ASSERT_EQ(p.step(level, 0.0625, 683, 400, true), LevelResult::Running) << i;
    }
    EXPECT_EQ(p.step(level, 0.0625, 683, 400, true), LevelResult::Solved);
}

TEST_F(HoldStation, ReleasingAtOneNinetyNineSecondsFires) {
    p.step(level, 0.01, 683, 400, true);
    for (int i = 0; i < 198; ++i) {
        ASSERT_EQ(p.step(level, 0.01, 683, 400, true), LevelResult::Running);
    }
    EXPECT_NEAR(level.heldTime, 1.99, 1e-9);
    EXPECT_EQ(p.step(level, 0.01, 683, 400, false), LevelResult::Failed);
}

TEST_F(HoldStation, APressThatStartsOutsideTheBarNeverBeginsTheHold) {
    EXPECT_EQ(p.step(level, 0.05, 600, 400, true), LevelResult::Running);
    // Dragged into the bar and held there for three seconds: still nothing.
    for (int i = 0; i < 60; ++i) {
        ASSERT_EQ(p.step(level, 0.05, 683, 400, true), LevelResult::Running);
    }
    EXPECT_FALSE(level.holding);
    EXPECT_EQ(level.heldTime, 0.0);
    // And letting go of a hold that never began is no offence.
    EXPECT_EQ(p.step(level, 0.05, 683, 400, false), LevelResult::Running);
}

TEST_F(HoldStation, AHoldStartedInsideTheBarMayDriftOutside) {
    p.step(level, 0.125, 633, 220, true);   // the bar's top-left pixel
    for (int i = 0; i < 14; ++i) {
        ASSERT_EQ(p.step(level, 0.125, 100, 700, true), LevelResult::Running);
    }
    EXPECT_EQ(p.step(level, 0.125, 100, 700, true), LevelResult::Solved);
}

TEST_F(HoldStation, TheFillRisesFromTheBottomWithTheHeldTime) {
    level.heldTime = 1.0;
    level.holding = true;
    test::SoftwareCanvas canvas;
    canvas.graphics.clear(rgb(0, 0, 0));
    level.render(canvas.graphics);
    // f = trunc(344 x 1 / 2) = 172: green from y 400 to 571.
    EXPECT_EQ(canvas.pixel(683, 300), rgb(99, 77, 26));
    EXPECT_EQ(canvas.pixel(683, 399), rgb(99, 77, 26));
    EXPECT_EQ(canvas.pixel(683, 400), rgb(70, 224, 138));
    EXPECT_EQ(canvas.pixel(683, 571), rgb(70, 224, 138));
    EXPECT_EQ(canvas.pixel(683, 574), rgb(99, 77, 26));
    EXPECT_EQ(canvas.pixel(637, 500), rgb(99, 77, 26));   // the frame beside the fill
}

// ------------------------------------------------------------------ twohand

TEST(TwoHandStation, TheGripSitsLeftAndTheTargetStartsMidwayAcrossTheTop) {
    Rng rng(3);
    TwoHandLevel slow;
    lay(slow, "twohand", 11, rng);
    EXPECT_EQ(slow.grip.x, 293);
    EXPECT_EQ(slow.grip.y, 345);
    EXPECT_EQ(slow.grip.w, 120);
    EXPECT_EQ(slow.grip.h, 120);
    EXPECT_EQ(slow.targetX, 683.0);
    EXPECT_EQ(slow.targetY, 270.0);
    EXPECT_EQ(slow.targetSpeed, 150.0);
    EXPECT_EQ(slow.direction, 1);
    EXPECT_EQ(slow.targetRadius, 26);
    EXPECT_EQ(slow.charge, 0.0);
    EXPECT_EQ(slow.dwell, 0.0);
    EXPECT_EQ(made<TwoHandLevel>("twohand", 21, rng)->targetSpeed, 150.0);
    EXPECT_EQ(made<TwoHandLevel>("twohand", 22, rng)->targetSpeed, 240.0);
    EXPECT_EQ(rng, Rng(3));
}

TEST(TwoHandStation, TheTargetPacesBetweenItsEndsAndTurnsThere) {
    Rng rng(3);
    TwoHandLevel level;
    lay(level, "twohand", 11, rng);
    Pointer p;
    p.step(level, 0.5, 0, 0, false);
    EXPECT_EQ(level.targetX, 758.0);
    // 683 + 150 x 2.6 = 1073 passes the right end at 1063.
    for (int i = 0; i < 4; ++i) {
        p.step(level, 0.5, 0, 0, false);
    }
    p.step(level, 0.1, 0, 0, false);
    EXPECT_EQ(level.targetX, 1063.0);
    EXPECT_EQ(level.direction, -1);
    p.step(level, 1.0, 0, 0, false);
    EXPECT_EQ(level.targetX, 913.0);
    // A long step past the left end stops at 423 and turns right again.
    p.step(level, 4.0, 0, 0, false);
    EXPECT_EQ(level.targetX, 423.0);
    EXPECT_EQ(level.direction, 1);
}

TEST(TwoHandStation, TheGripChargesWhileHeldAndDrainsOtherwise) {
    Rng rng(3);
    TwoHandLevel level;
    lay(level, "twohand", 11, rng);
    Pointer p;
    p.step(level, 0.25, 353, 405, true);
    EXPECT_EQ(level.charge, 0.5);
    p.step(level, 0.1, 353, 405, false);   // let go in the grip
    EXPECT_NEAR(level.charge, 0.2, 1e-12);
    p.step(level, 0.5, 353, 405, true);
    EXPECT_EQ(level.charge, 1.0);   // capped
    p.step(level, 0.1, 500, 405, true);   // held, but outside
    EXPECT_NEAR(level.charge, 0.7, 1e-12);
    p.step(level, 1.0, 500, 405, true);
    EXPECT_EQ(level.charge, 0.0);   // floored
}

TEST(TwoHandStation, ChargeAndReachAreJudgedOnTheSameFramesPointer) {
    Rng rng(3);
    TwoHandLevel level;
    lay(level, "twohand", 11, rng);
    Pointer p;
    for (int i = 0; i < 40; ++i) {
        p.step(level, 0.016, 353, 405, true);
    }
    ASSERT_EQ(level.charge, 1.0);
    // The pointer lands on the target: that same frame has already drained
    // the grip, so the full charge of a moment ago does not count.
    const int tx = static_cast<int>(level.targetX + 150 * 0.016);
    EXPECT_EQ(p.step(level, 0.016, tx, 270, true), LevelResult::Running);
    EXPECT_NEAR(level.charge, 1.0 - 3 * 0.016, 1e-12);
    EXPECT_EQ(level.dwell, 0.0);
}

TEST(TwoHandStation, WhereTheTargetCanBeReachedFromTheGripAQuarterSecondOnItPasses) {
    // A cramped area puts the target's path through the grip: both ends of
    // the path fold to x 160, 11 px right of the grip's edge at x 149.
    Rng rng(3);
    TwoHandLevel level;
    level.setup(record("twohand", 11), rng, Rect{0, 0, 200, 200});
    Pointer p;
    LevelResult r = LevelResult::Running;
    int frames = 0;
    while (r == LevelResult::Running && frames < 200) {
        r = p.step(level, 1.0 / 64, 149, 80, true);
        ++frames;
    }
    EXPECT_EQ(r, LevelResult::Solved);
    // The 32nd frame fills the grip and already counts on the target; the
    // dwell passes 0.25 s = 16/64 on its 17th frame.
    EXPECT_EQ(frames, 48);
}

TEST(TwoHandStation, LeavingTheTargetResetsTheDwell) {
    Rng rng(3);
    TwoHandLevel level;
    level.setup(record("twohand", 11), rng, Rect{0, 0, 200, 200});
    Pointer p;
    for (int i = 0; i < 60; ++i) {
        p.step(level, 0.01, 149, 80, true);
    }
    EXPECT_GT(level.dwell, 0.0);
    p.step(level, 0.01, 40, 150, true);   // still in the grip, off the target
    EXPECT_EQ(level.dwell, 0.0);
    EXPECT_EQ(level.charge, 1.0);
}

// One pointer, planned frame by frame: where it is and whether it is held.
struct Move {
    int x = 0;
    int y = 0;
    bool down = false;
};
using Plan = std::function<Move(const TwoHandLevel&, int frame, double dt)>;

std::vector<Plan> oneHandedPlans() {
    std::vector<Plan> plans;
    // The grip's corner nearest the target's path, and its centre.
    const int cornerX = 412;
    const int cornerY = 345;
    const int midX = 353;
    const int midY = 405;

    // Parked on a grid of points over the grip, held the whole time.
    for (int y = 345; y < 465; y += 17) {
        for (int x = 293; x < 413; x += 17) {
            plans.push_back([x, y](const TwoHandLevel&, int, double) { return Move{x, y, true}; });
        }
    }
    plans.push_back([=](const TwoHandLevel&, int, double) { return Move{cornerX, cornerY, true}; });
    // In the grip, on the edge pixel nearest the target wherever it is.
    plans.push_back([](const TwoHandLevel& l, int, double) {
        const int x = std::min(412, std::max(293, static_cast<int>(l.targetX)));
        return Move{x, 345, true};
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
        plans.push_back([ab](const TwoHandLevel& l, int f, double) {
            if (f % (ab.first + ab.second) < ab.first) {
                return Move{412, 345, true};
            }
            return Move{static_cast<int>(l.targetX), static_cast<int>(l.targetY), true};
        });
    }
    // Held-down sweeps from the grip's corner to the target and back, at
    // speeds from a slow drag to four times a flick.
    for (const double speed : {600.0, 1200.0, 2400.0, 4800.0, 9600.0}) {
        plans.push_back([=, pos = std::make_shared<std::pair<double, double>>(412.0, 345.0),
                         out = std::make_shared<bool>(true)](const TwoHandLevel& l, int, double dt) {
            const double gx = *out ? l.targetX : 412.0;
            const double gy = *out ? l.targetY : 345.0;
            const double dx = gx - pos->first;
            const double dy = gy - pos->second;
            const double d = std::sqrt(dx * dx + dy * dy);
            const double reach = speed * dt;
            if (d <= reach) {
                *pos = {gx, gy};
                *out = !*out;
            } else {
                pos->first += dx / d * reach;
                pos->second += dy / d * reach;
            }
            return Move{static_cast<int>(pos->first), static_cast<int>(pos->second), true};
        });
    }
    // Sweeping the whole area row by row, held, across the target's path.
    for (const int rowStep : {7, 19}) {
        plans.push_back([rowStep](const TwoHandLevel&, int f, double) {
            const int x = 263 + (f * 23) % 840;
            const int y = 190 + ((f * 23) / 840 * rowStep) % 430;
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
    const std::vector<Plan> plans = oneHandedPlans();
    bool sawFullCharge = false;
    bool sawOnTargetNearlyCharged = false;
    int runs = 0;
    for (const std::int32_t number : {11, 22}) {
        for (int ms = 1; ms <= 50; ++ms) {
            const double dt = ms / 1000.0;
            // Some plans remember what they did: fresh ones for every frame time.
            const std::vector<Plan> fresh = oneHandedPlans();
            for (std::size_t i = 0; i < fresh.size(); ++i) {
                const Plan& plan = fresh[i];
                Rng rng(1);
                TwoHandLevel level;
                lay(level, "twohand", number, rng);
                Pointer p;
                ++runs;
                const int frames = static_cast<int>(10.0 / dt);
                for (int f = 0; f < frames; ++f) {
                    const Move m = plan(level, f, dt);
                    const LevelResult r = p.step(level, dt, m.x, m.y, m.down);
                    ASSERT_EQ(r, LevelResult::Running)
                        << "number " << number << ", " << ms << " ms, plan " << i << ", frame " << f;
                    ASSERT_EQ(level.dwell, 0.0)
                        << "number " << number << ", " << ms << " ms, plan " << i << ", frame " << f;
                    sawFullCharge = sawFullCharge || level.charge >= 1.0;
                    const double dx = m.x - level.targetX;
                    const double dy = m.y - level.targetY;
                    if (m.down && dx * dx + dy * dy < 26 * 26 && level.charge > 0.8) {
                        sawOnTargetNearlyCharged = true;
                    }
                }
            }
        }
    }
    EXPECT_EQ(runs, 2 * 50 * static_cast<int>(plans.size()));
    // The search did get close: full charges, and the pointer on the target
    // with the grip still more than four-fifths charged.
    EXPECT_TRUE(sawFullCharge);
    EXPECT_TRUE(sawOnTargetNearlyCharged);
}

TEST(TwoHandStation, DrawsTheGripItsChargeAndTheOrangeTarget) {
    Rng rng(3);
    TwoHandLevel level;
    lay(level, "twohand", 11, rng);
    test::SoftwareCanvas canvas;
    canvas.graphics.clear(rgb(0, 0, 0));
    level.render(canvas.graphics);
    EXPECT_EQ(canvas.pixel(298, 430), rgb(109, 84, 29));   // idle grip
    EXPECT_EQ(canvas.pixel(310, 450), rgb(109, 84, 29));   // no charge bar yet
    EXPECT_EQ(canvas.pixel(683, 270), rgb(255, 170, 46));  // target core, r 20
    EXPECT_EQ(canvas.pixel(683 + 23, 270), rgb(102, 68, 18));   // its rim, r 26
    EXPECT_EQ(canvas.pixel(683 + 28, 270), rgb(0, 0, 0));
}

TEST(TwoHandStation, AChargingGripTurnsGreenAndAFullOneLightsTheTarget) {
    Rng rng(3);
    TwoHandLevel level;
    lay(level, "twohand", 11, rng);
    level.charge = 0.5;
    test::SoftwareCanvas canvas;
    canvas.graphics.clear(rgb(0, 0, 0));
    level.render(canvas.graphics);
    EXPECT_EQ(canvas.pixel(298, 430), rgb(35, 112, 69));
    // The bar from x 303, 50 px wide at half charge, y 447..454.
    EXPECT_EQ(canvas.pixel(303, 450), rgb(70, 224, 138));
    EXPECT_EQ(canvas.pixel(352, 450), rgb(70, 224, 138));
    EXPECT_EQ(canvas.pixel(353, 450), rgb(35, 112, 69));
    EXPECT_EQ(canvas.pixel(683, 270), rgb(255, 170, 46));

    level.charge = 1.0;
    canvas.graphics.clear(rgb(0, 0, 0));
    level.render(canvas.graphics);
    EXPECT_EQ(canvas.pixel(683, 270), rgb(70, 224, 138));
    EXPECT_EQ(canvas.pixel(683 + 23, 270), rgb(28, 89, 55));
    EXPECT_EQ(canvas.pixel(402, 450), rgb(70, 224, 138));
}

// ----------------------------------------------------------------- patience

TEST(PatienceStation, TheWaitIsOneRawDrawModuloAHundred) {
    Rng rng(5489);
    PatienceLevel level;
    lay(level, "patience", 3, rng);
    // 3499211612 mod 100 = 12: 0.12 x 1.5 + 2.6.
    EXPECT_DOUBLE_EQ(level.wait, 2.78);
    EXPECT_EQ(rng, test::engineAfter(5489, 1));
    EXPECT_EQ(level.button.x, 593);
    EXPECT_EQ(level.button.y, 445);
    EXPECT_EQ(level.button.w, 180);
    EXPECT_EQ(level.button.h, 60);
    EXPECT_FALSE(level.ready);
    EXPECT_EQ(level.elapsed, 0.0);

    Rng other(3);   // 2365658986 mod 100 = 86
    EXPECT_DOUBLE_EQ(made<PatienceLevel>("patience", 3, other)->wait, 3.89);
}

TEST(PatienceStation, AClickAtTwoPointFiveNineSecondsFiresWhateverTheWait) {
    for (std::uint32_t seed = 1; seed <= 40; ++seed) {
        Rng rng(seed);
        PatienceLevel level;
        lay(level, "patience", 3, rng);
        ASSERT_GE(level.wait, 2.6);
        ASSERT_LE(level.wait, 4.085 + 1e-9);
        Pointer p;
        for (int i = 0; i < 258; ++i) {
            ASSERT_EQ(p.step(level, 0.01, 683, 475, false), LevelResult::Running);
        }
        EXPECT_EQ(p.press(level, 0.01, 683, 475), LevelResult::Failed) << "seed " << seed;
    }
}

TEST(PatienceStation, AnEarlyClickFarFromTheButtonFiresToo) {
    Rng rng(5489);
    PatienceLevel level;
    lay(level, "patience", 3, rng);
    Pointer p;
    EXPECT_EQ(p.press(level, 0.01, 5, 5), LevelResult::Failed);
}

TEST(PatienceStation, OnceTheBarIsFullGoPassesAndClicksElsewhereDoNothing) {
    Rng rng(5489);
    PatienceLevel level;
    lay(level, "patience", 3, rng);
    Pointer p;
    for (int i = 0; i < 277; ++i) {
        p.step(level, 0.01, 683, 475, false);
    }
    EXPECT_FALSE(level.ready);
    p.step(level, 0.02, 683, 475, false);
    EXPECT_TRUE(level.ready);
    EXPECT_EQ(p.press(level, 0.01, 592, 475), LevelResult::Running);   // left of GO
    EXPECT_EQ(p.press(level, 0.01, 683, 505), LevelResult::Running);   // below it
    EXPECT_EQ(p.press(level, 0.01, 100, 100), LevelResult::Running);
    EXPECT_TRUE(level.ready);
    EXPECT_EQ(p.press(level, 0.01, 593, 445), LevelResult::Solved);
}

TEST(PatienceStation, TheBarFillsOrangeThenTurnsGreen) {
    Rng rng(5489);
    PatienceLevel level;
    lay(level, "patience", 3, rng);
    level.elapsed = level.wait / 2;
    test::SoftwareCanvas canvas;
    canvas.graphics.clear(rgb(0, 0, 0));
    level.render(canvas.graphics);
    // Track {343, 310, 680, 22}; half full is 340 px.
    EXPECT_EQ(canvas.pixel(343, 320), rgb(255, 170, 46));
    EXPECT_EQ(canvas.pixel(682, 320), rgb(255, 170, 46));
    EXPECT_EQ(canvas.pixel(683, 320), rgb(30, 30, 30));
    EXPECT_EQ(canvas.pixel(1022, 331), rgb(30, 30, 30));
    EXPECT_EQ(canvas.pixel(598, 475), rgb(79, 61, 21));   // GO, not yet lit

    level.elapsed = level.wait + 3.0;
    level.ready = true;
    canvas.graphics.clear(rgb(0, 0, 0));
    level.render(canvas.graphics);
    EXPECT_EQ(canvas.pixel(1022, 320), rgb(70, 224, 138));
    EXPECT_EQ(canvas.pixel(1023, 320), rgb(0, 0, 0));   // never past the track
    EXPECT_EQ(canvas.pixel(598, 475), rgb(35, 112, 69));
}

// The status line's band, y 190..309, holds nothing but the status text: the
// station's band must match the text drawn alone, pixel for pixel.
std::vector<Color> statusBand(const test::SoftwareCanvas& canvas) {
    std::vector<Color> band;
    for (int y = 190; y < 310; ++y) {
        for (int x = 263; x < 1103; ++x) {
            band.push_back(canvas.pixel(x, y));
        }
    }
    return band;
}

void expectStatusLine(PatienceLevel& level, const char* text, Color c) {
    test::SoftwareCanvas canvas;
    canvas.useGameFonts();
    canvas.graphics.clear(rgb(0, 0, 0));
    level.render(canvas.graphics);
    const std::vector<Color> drawn = statusBand(canvas);
    canvas.graphics.clear(rgb(0, 0, 0));
    ASSERT_GT(canvas.graphics.text(text, 683, 250, TextSize::Large, c, true, true), 0);
    const std::vector<Color> expected = statusBand(canvas);
    const auto inked = std::count_if(expected.begin(), expected.end(),
                                     [](Color px) { return px != rgb(0, 0, 0); });
    EXPECT_GT(inked, 100);
    EXPECT_TRUE(drawn == expected) << text;
}

TEST(PatienceStation, TheStatusSaysWaitInRedThenGoWithAnEmDashInGreen) {
    Rng rng(5489);
    PatienceLevel level;
    lay(level, "patience", 3, rng);
    expectStatusLine(level, "WAIT...", rgb(255, 58, 42));
    level.elapsed = level.wait;
    level.ready = true;
    expectStatusLine(level, "GO \xE2\x80\x94 NOW CLICK", rgb(70, 224, 138));
}

// ------------------------------------------------------------------- timing

struct TimingStation : ::testing::Test {
    Rng rng{11};
    TimingLevel level;
    Pointer p;

    void SetUp() override { lay(level, "timing", 4, rng); }
    static constexpr int dashX = 683;
    static constexpr int dashY = 584;
};

TEST_F(TimingStation, TheRingAndDashAreLaidOutWithoutDraws) {
    EXPECT_EQ(level.centerX, 683);
    EXPECT_EQ(level.centerY, 395);
    EXPECT_EQ(level.ringRadius, 90);
    EXPECT_EQ(level.angle, 0.0);
    EXPECT_EQ(level.angularSpeed, 2.6);
    EXPECT_EQ(level.tolerance, 0.5);
    EXPECT_EQ(level.button.x, 593);
    EXPECT_EQ(level.button.y, 562);
    EXPECT_EQ(level.button.w, 180);
    EXPECT_EQ(level.button.h, 44);
    EXPECT_EQ(rng, Rng(11));
}

TEST_F(TimingStation, DashWithTheGapAtTheTopPasses) {
    level.angle = 1.5 * kPi - 0.3;
    EXPECT_EQ(p.press(level, 0.1, dashX, dashY), LevelResult::Solved);   // 0.04 short of the top
}

TEST_F(TimingStation, DashWithTheGapElsewhereFires) {
    level.angle = 0.5 * kPi;   // the bottom
    EXPECT_EQ(p.press(level, 0.0, dashX, dashY), LevelResult::Failed);
}

// How far the station judges an angle to be from the top.
double offTop(double angle) {
    return std::fabs(std::atan2(std::sin(angle + kPi / 2), std::cos(angle + kPi / 2)));
}

TEST_F(TimingStation, DashExactlyHalfARadianFromTheTopFires) {
    // Half a radian either side of the top, written one turn down so that the
    // sum with pi/2 lands on 0.5 exactly; within the first turn no double does.
    for (const double edge : {0.5 - kPi / 2, -0.5 - kPi / 2}) {
        ASSERT_EQ(offTop(edge), 0.5);
        TimingLevel atEdge;
        lay(atEdge, "timing", 4, rng);
        atEdge.angle = edge;
        EXPECT_EQ(p.press(atEdge, 0.0, dashX, dashY), LevelResult::Failed) << edge;
        // A hair closer to the top passes.
        TimingLevel closer;
        lay(closer, "timing", 4, rng);
        closer.angle = edge + (edge > -kPi / 2 ? -1e-9 : 1e-9);
        EXPECT_EQ(p.press(closer, 0.0, dashX, dashY), LevelResult::Solved) << edge;
    }
}

TEST_F(TimingStation, OnlyAPressOnDashCounts) {
    level.angle = 1.5 * kPi;
    EXPECT_EQ(p.press(level, 0.0, 683, 300), LevelResult::Running);   // on the ring
    EXPECT_EQ(p.press(level, 0.0, 773, 584), LevelResult::Running);   // right of DASH
    EXPECT_EQ(p.press(level, 0.0, 683, 606), LevelResult::Running);   // below it
    EXPECT_EQ(p.step(level, 0.0, dashX, dashY, true), LevelResult::Running);   // held, no press
    level.angle = 0.5 * kPi;
    EXPECT_EQ(p.press(level, 0.0, 100, 700), LevelResult::Running);   // nowhere, gap wrong
    EXPECT_EQ(p.step(level, 0.0, dashX, dashY, false), LevelResult::Running);
}

TEST_F(TimingStation, TheAngleWrapsOneTurnPerCallOnly) {
    level.angle = 2 * kPi - 0.01;
    p.step(level, 0.05, 0, 0, false);
    EXPECT_NEAR(level.angle, 0.12, 1e-12);
    // A huge step leaves the angle above 2 pi after its single wrap ...
    level.angle = 0.0;
    const double turns = 2 * kPi + 1.5 * kPi;   // lands on the top, one turn up
    p.step(level, (turns + 2 * kPi) / 2.6, 0, 0, false);
    EXPECT_NEAR(level.angle, turns, 1e-9);
    EXPECT_GT(level.angle, 2 * kPi);
}

TEST_F(TimingStation, AnAngleStillAboveTwoPiIsJudgedByWhereItPoints) {
    // ... and DASH still reads it correctly: the top, one turn up.
    level.angle = 0.0;
    EXPECT_EQ(p.press(level, (4 * kPi + 1.5 * kPi) / 2.6, dashX, dashY), LevelResult::Solved);
    EXPECT_GT(level.angle, 2 * kPi);

    TimingLevel bottom;

    lay(bottom, "timing", 4, rng);
    EXPECT_EQ(p.press(bottom, (4 * kPi + 0.5 * kPi) / 2.6, dashX, dashY), LevelResult::Failed);
}

TEST_F(TimingStation, TheRingLeavesOutTheDotsAroundTheAngle) {
    test::SoftwareCanvas canvas;
    canvas.graphics.clear(rgb(0, 0, 0));
    level.render(canvas.graphics);
    EXPECT_EQ(canvas.pixel(773, 395), rgb(0, 0, 0));        // a = 0: in the gap
    EXPECT_EQ(canvas.pixel(594, 396), rgb(255, 58, 42));    // a = 3.12, the far side
    EXPECT_EQ(canvas.pixel(683, 484), rgb(255, 58, 42));    // a = 1.56, the bottom
    EXPECT_EQ(canvas.pixel(681, 306), rgb(255, 58, 42));    // a = 4.68, the top
    EXPECT_EQ(canvas.pixel(683, 285), rgb(70, 224, 138));   // the marker above the ring
    EXPECT_EQ(canvas.pixel(598, 575), rgb(229, 194, 96));   // DASH

    level.angle = 1.5 * kPi;
    canvas.graphics.clear(rgb(0, 0, 0));
    level.render(canvas.graphics);
    EXPECT_EQ(canvas.pixel(681, 306), rgb(0, 0, 0));
    EXPECT_EQ(canvas.pixel(773, 395), rgb(255, 58, 42));
    EXPECT_EQ(canvas.pixel(683, 285), rgb(70, 224, 138));
}

// -------------------------------------------------------------------- orbit

struct OrbitStation : ::testing::Test {
    Rng rng{12};
    OrbitLevel level;
    Pointer p;

    void SetUp() override { lay(level, "orbit", 33, rng); }
};

TEST_F(OrbitStation, TheOrbitCirclesTheAreaCentreWithoutDraws) {
    EXPECT_EQ(level.centerX, 683);
    EXPECT_EQ(level.centerY, 405);
    EXPECT_EQ(level.orbitRadius, 130);
    EXPECT_EQ(level.orbRadius, 24);
    EXPECT_EQ(level.angle, 0.0);
    EXPECT_EQ(level.angularSpeed, 2.2);
    EXPECT_EQ(made<OrbitLevel>("orbit", 39, rng)->angularSpeed, 2.2);
    EXPECT_EQ(made<OrbitLevel>("orbit", 40, rng)->angularSpeed, 3.2);
    EXPECT_EQ(rng, Rng(12));
}

TEST_F(OrbitStation, ClickingTheOrbInTheTopZonePasses) {
    level.angle = 1.5 * kPi - 0.1;
    // After 0.05 s the orb is 0.01 rad past the top, at (684, 276).
    EXPECT_EQ(p.press(level, 0.05, 690, 280), LevelResult::Solved);
}

TEST_F(OrbitStation, ClickingTheOrbFarFromTheTopFires) {
    // At angle 0 the orb is at (813, 405), a quarter turn from the top.
    EXPECT_EQ(p.press(level, 0.0, 813, 405), LevelResult::Failed);
}

TEST_F(OrbitStation, ClickingTheOrbJustOutsideTheZoneFires) {
    level.angle = 1.5 * kPi - 0.55;
    const int ox = 683 + static_cast<int>(std::cos(level.angle) * 130);
    const int oy = 405 + static_cast<int>(std::sin(level.angle) * 130);
    EXPECT_EQ(p.press(level, 0.0, ox, oy), LevelResult::Failed);
}

TEST_F(OrbitStation, AClickOnTheZoneWhileTheOrbIsElsewhereDoesNothing) {
    EXPECT_EQ(p.press(level, 0.0, 683, 275), LevelResult::Running);
    // A miss by the orb's radius is a miss: 24 px from its centre.
    EXPECT_EQ(p.press(level, 0.0, 813 - 24, 405), LevelResult::Running);
    EXPECT_EQ(p.press(level, 0.0, 813, 405 + 24), LevelResult::Running);
    EXPECT_EQ(p.step(level, 0.0, 813, 405, true), LevelResult::Running);   // held over it, no press
}

TEST_F(OrbitStation, TheAngleWrapsOnceAndIsStillJudgedByWhereItPoints) {
    level.angle = 2 * kPi - 0.01;
    p.step(level, 0.05, 0, 0, false);
    EXPECT_NEAR(level.angle, 0.1, 1e-12);
    level.angle = 0.0;
    // One turn and three quarters in one call: still above 2 pi, at the top.
    EXPECT_EQ(p.press(level, (4 * kPi + 1.5 * kPi) / 2.2, 683, 275), LevelResult::Solved);
    EXPECT_GT(level.angle, 2 * kPi);
}

TEST_F(OrbitStation, DrawsTheOrbitTheZoneAndTheGoldOrb) {
    test::SoftwareCanvas canvas;
    canvas.graphics.clear(rgb(0, 0, 0));
    level.render(canvas.graphics);
    EXPECT_EQ(canvas.pixel(813, 405), rgb(255, 216, 107));   // the orb at angle 0
    EXPECT_EQ(canvas.pixel(813 + 20, 405), rgb(255, 216, 107));
    EXPECT_EQ(canvas.pixel(683, 275), rgb(21, 67, 41));      // the zone at the top
    EXPECT_EQ(canvas.pixel(683 + 30, 275), rgb(21, 67, 41));
    EXPECT_EQ(canvas.pixel(683 + 34, 275), rgb(0, 0, 0));
    EXPECT_EQ(canvas.pixel(553, 405), rgb(32, 32, 32));      // the orbit's far left
    EXPECT_EQ(canvas.pixel(683, 405), rgb(0, 0, 0));         // nothing at the centre
}

}  // namespace
}  // namespace vorn

// ------------------------------------------------------------------ solvers

namespace vorn::test {
namespace {

TEST(ButtonSolver, ClearsTheButtonOnEveryDifficulty) { EXPECT_EQ(unsolvedRuns("button"), ""); }

TEST(HoldSolver, ClearsTheHoldOnEveryDifficulty) { EXPECT_EQ(unsolvedRuns("hold"), ""); }

TEST(PatienceSolver, ClearsTheWaitingPeriodOnEveryDifficulty) {
    EXPECT_EQ(unsolvedRuns("patience"), "");
}

TEST(TimingSolver, ClearsTheDashRingOnEveryDifficulty) { EXPECT_EQ(unsolvedRuns("timing"), ""); }

TEST(TimingSolver, ClearsTheDashRingAtThirtyAndAHundredFortyFourFrames) {
    EXPECT_EQ(unsolvedRuns("timing", 5, 1.0 / 30.0), "");
    EXPECT_EQ(unsolvedRuns("timing", 5, 1.0 / 144.0), "");
}

TEST(OrbitSolver, ClearsTheOrbitOnEveryDifficulty) { EXPECT_EQ(unsolvedRuns("orbit"), ""); }

TEST(OrbitSolver, ClearsTheOrbitAtThirtyAndAHundredFortyFourFrames) {
    EXPECT_EQ(unsolvedRuns("orbit", 5, 1.0 / 30.0), "");
    EXPECT_EQ(unsolvedRuns("orbit", 5, 1.0 / 144.0), "");
}

// The obvious wrong moves, played by hand through real events.
template <typename Decide>
struct Scripted final : Solver {
    explicit Scripted(Decide d) : decideFn(d) {}
    Intent decide(const Level& station, const Hand& hand, double t) override {
        return decideFn(station, hand, t);
    }
    Decide decideFn;
};
template <typename Decide>
Scripted<Decide> scripted(Decide d) {
    return Scripted<Decide>(d);
}

TEST(ButtonSolver, PressingTheBigButtonOnlyRunsOutTheClock) {
    StationBench bench(shippedRecord("button"), 4);
    auto presser = scripted([](const Level&, const Hand& hand, double) {
        return clickAt(hand, 683, 405);
    });
    EXPECT_EQ(bench.play(presser, 5.0).result, LevelResult::Running);
    EXPECT_FALSE(bench.lastSoundWasFail());
    EXPECT_FALSE(bench.lastSoundWasPass());
}

TEST(HoldSolver, AClickOnTheBarFiresWithTheFailSound) {
    StationBench bench(shippedRecord("hold"), 4);
    auto clicker = scripted([](const Level&, const Hand& hand, double) {
        return clickAt(hand, 683, 400);
    });
    EXPECT_EQ(bench.play(clicker, 5.0).result, LevelResult::Failed);
    EXPECT_TRUE(bench.lastSoundWasFail());
}

TEST(PatienceSolver, ClickingGoStraightAwayFiresWithTheFailSound) {
    StationBench bench(shippedRecord("patience"), 4);
    auto eager = scripted([](const Level&, const Hand& hand, double) {
        return clickAt(hand, 683, 475);
    });
    const StationBench::Outcome out = bench.play(eager, 5.0);
    EXPECT_EQ(out.result, LevelResult::Failed);
    EXPECT_LT(out.time, 1.0);
    EXPECT_TRUE(bench.lastSoundWasFail());
}

TEST(TimingSolver, DashingStraightAwayFiresWithTheFailSound) {
    StationBench bench(shippedRecord("timing"), 4);
    auto eager = scripted([](const Level&, const Hand& hand, double) {
        return clickAt(hand, 683, 584);
    });
    const StationBench::Outcome out = bench.play(eager, 5.0);
    EXPECT_EQ(out.result, LevelResult::Failed);
    EXPECT_LT(out.time, 1.0);
    EXPECT_TRUE(bench.lastSoundWasFail());
}

TEST(OrbitSolver, GrabbingTheOrbAtTheSideFiresWithTheFailSound) {
    StationBench bench(shippedRecord("orbit"), 4);
    bench.frame(0.016);
    const auto& orbit = dynamic_cast<const OrbitLevel&>(*bench.station);
    // Where the orb will be on the next frame.
    const double a = orbit.angle + orbit.angularSpeed * 0.016;
    const int x = orbit.centerX + static_cast<int>(std::cos(a) * orbit.orbitRadius);
    const int y = orbit.centerY + static_cast<int>(std::sin(a) * orbit.orbitRadius);
    pushMotion(x, y);
    pushButton(true, x, y);
    EXPECT_EQ(bench.frame(0.016), LevelResult::Failed);
    EXPECT_TRUE(bench.lastSoundWasFail());
}

// Twohand ships in no catalogue: these records are its two speeds.
LevelDef twoHandRecord(std::int32_t number) {
    LevelDef def;
    def.number = number;
    def.id = "twohand";
    def.name = "TWO-HAND CONTROL";
    def.type = "twohand";
    def.phase = phaseForNumber(number);
    def.baseTime = 30;
    return def;
}

TEST(TwoHandSolver, TheBestOneHandedTryRunsOutTheClockInSilence) {
    for (const std::int32_t number : {11, 22}) {
        for (const double dt : {1.0 / 144.0, 1.0 / 60.0, 1.0 / 20.0}) {
            StationBench bench(twoHandRecord(number), 9);
            std::unique_ptr<Solver> solver = makeSolver("twohand");
            const StationBench::Outcome out = bench.play(*solver, 20.0, dt);
            EXPECT_EQ(out.result, LevelResult::Running) << number << " at " << dt;
            EXPECT_NEAR(out.time, 20.0, 2 * dt);
            EXPECT_FALSE(bench.lastSoundWasFail());
            EXPECT_FALSE(bench.lastSoundWasPass());
        }
    }
}

TEST(TimingSolvers, EveryTimingTypeHasItsOwnSolverAndNoOtherTypeDoes) {
    for (const char* type : {"button", "hold", "twohand", "patience", "timing", "orbit"}) {
        EXPECT_NE(makeTimingSolver(type), nullptr) << type;
    }
    EXPECT_EQ(makeTimingSolver("whack"), nullptr);
    EXPECT_EQ(makeTimingSolver(""), nullptr);
}

}  // namespace
}  // namespace vorn::test
