// The aim and pointer stations: whack, double-click, precision, decoy,
// greased and hot-cold. Seed 5489's first outputs are 3499211612, 581869302,
// 3890346734, 3586334585, 545404204, 4161255391, 3922919429.
//
// Pictures are checked whole: the station draws on one canvas, and the same
// frame is drawn longhand on another from the list of what the station must
// show (shapes, colours, words, in order), and every pixel must agree. The
// words are also checked on their own by their glyphs, so a wrong word fails
// where it is drawn and not only somewhere in the frame.

#include "audio/audio_system.h"
#include "data/level_catalogue.h"
#include "stations/aim_stations.h"
#include "stations/level_factory.h"
#include "support/draws_by_hand.h"
#include "support/software_canvas.h"
#include "support/solvers/family_solvers.h"
#include "support/station_driver.h"
#include "support/station_desk.h"
#include "support/text_probe.h"

#include <gtest/gtest.h>

#include <cmath>
#include <cstdint>
#include <cstring>
#include <memory>
#include <string>
#include <vector>

namespace vorn {
namespace {

using test::Desk;
using Sounds = std::vector<std::string>;

constexpr Color kGreen = rgb(70, 224, 138);
constexpr Color kRed = rgb(255, 58, 42);
constexpr Color kOrange = rgb(255, 170, 46);
constexpr Color kGold = rgb(255, 216, 107);
constexpr Color kInk = rgb(20, 20, 20);
constexpr Color kAmber = rgb(178, 119, 32);   // every station's line of orders
constexpr Color kBlack = rgb(0, 0, 0);
constexpr Color kGlass = rgb(16, 36, 15);
// Two-tone rims: the colour at 40%, truncated.
constexpr Color kGreenRim = rgb(28, 89, 55);
constexpr Color kRedRim = rgb(102, 23, 16);

// A blank canvas with the game's fonts.
struct Canvas : test::SoftwareCanvas {
    explicit Canvas(Color background = kBlack) {
        useGameFonts();
        fill(background);
    }
};

// How many pixels of the whole canvas differ between two canvases.
int pixelsApart(const test::SoftwareCanvas& a, const test::SoftwareCanvas& b) {
    int differing = 0;
    for (int y = 0; y < a.surface->h; ++y) {
        const auto* rowA = static_cast<const std::uint8_t*>(a.surface->pixels) + y * a.surface->pitch;
        const auto* rowB = static_cast<const std::uint8_t*>(b.surface->pixels) + y * b.surface->pitch;
        if (std::memcmp(rowA, rowB, 4 * static_cast<std::size_t>(a.surface->w)) == 0) {
            continue;
        }
        for (int x = 0; x < a.surface->w; ++x) {
            differing += std::memcmp(rowA + 4 * x, rowB + 4 * x, 4) != 0 ? 1 : 0;
        }
    }
    return differing;
}

// The line of orders: small, amber, centred across the play area 16 px above
// its foot. The band holds nothing else.
int ordersUnlike(const test::SoftwareCanvas& canvas, const char* text, Color background = kBlack) {
    return test::pixelsUnlikeText(canvas, {263, 596, 840, 24}, background, text, 683, 604,
                                  TextSize::Small, kAmber, true, false);
}
void drawOrders(Graphics& g, const char* text) {
    g.text(text, 683, 604, TextSize::Small, kAmber, true, false);
}

// ---------------------------------------------------------------------------
// Factory

TEST(AimFactory, EachTypeStringMakesItsStation) {
    EXPECT_NE(dynamic_cast<WhackLevel*>(createLevel("whack").get()), nullptr);
    EXPECT_NE(dynamic_cast<DoubleClickLevel*>(createLevel("doubleclick").get()), nullptr);
    EXPECT_NE(dynamic_cast<PrecisionLevel*>(createLevel("precision").get()), nullptr);
    EXPECT_NE(dynamic_cast<DecoyLevel*>(createLevel("decoy").get()), nullptr);
    EXPECT_NE(dynamic_cast<GreasedLevel*>(createLevel("greased").get()), nullptr);
    EXPECT_NE(dynamic_cast<HotColdLevel*>(createLevel("hotcold").get()), nullptr);
    EXPECT_EQ(dynamic_cast<WhackLevel*>(createLevel("Whack").get()), nullptr);
}

TEST(AimFactory, ConstructorDefaults) {
    WhackLevel whack;
    EXPECT_EQ(whack.slots[5].radius, 30);
    EXPECT_FALSE(whack.slots[0].active);
    EXPECT_EQ(whack.rng, nullptr);
    DoubleClickLevel dc;
    EXPECT_EQ(dc.columns, 4);
    EXPECT_EQ(dc.rows, 2);
    EXPECT_EQ(dc.cellCount, 8);
    EXPECT_EQ(dc.armedCell, -1);
    EXPECT_EQ(dc.armedTime, -1.0);
    PrecisionLevel precision;
    EXPECT_EQ(precision.dotRadius, 9);
    EXPECT_EQ(precision.ringRadius, 44);
    DecoyLevel decoy;
    EXPECT_EQ(decoy.radius, 34.0);
    EXPECT_EQ(HotColdLevel{}.spotRadius, 46);
}

// ---------------------------------------------------------------------------
// Whack

using WhackDesk = Desk<WhackLevel>;

// The tally: normal size, gold, centred on (683, 220); the band above the
// pop-ups holds nothing else.
int tallyUnlike(const test::SoftwareCanvas& canvas, const char* text) {
    return test::pixelsUnlikeText(canvas, {263, 196, 840, 48}, kBlack, text, 683, 220,
                                  TextSize::Normal, kGold, true, true);
}

TEST(WhackStation, SixGreensToSwatBeforeStationFortyAndEightFromThereOn) {
    EXPECT_EQ(WhackDesk(5489, 39).level.goal, 6);
    EXPECT_EQ(WhackDesk(5489, 40).level.goal, 8);
    EXPECT_EQ(WhackDesk(5489, 41).level.goal, 8);
}

TEST(WhackStation, SetupClearsTheBoardDrawsNothingAndKeepsTheRunsEngine) {
    // A retry builds on a fresh board whatever the last attempt left behind.
    WhackLevel level;
    level.hits = 5;
    level.strikes = 2;
    level.spawnTimer = 0.3;
    level.slots[2] = WhackLevel::Slot{true, true, 400, 300, 30, 0.5};
    Rng rng(5489);
    LevelDef def;
    def.number = 11;
    level.setup(def, rng, kPlayArea);
    EXPECT_EQ(rng, Rng(5489));
    EXPECT_EQ(level.rng, &rng);
    EXPECT_EQ(level.hits, 0);
    EXPECT_EQ(level.strikes, 0);
    EXPECT_EQ(level.spawnTimer, 0.0);
    for (const WhackLevel::Slot& s : level.slots) {
        EXPECT_FALSE(s.active);
        EXPECT_EQ(s.life, 0.0);
    }
}

TEST(WhackStation, FirstFrameSpawnsFromTheRunsEngineColourThenXThenY) {
    WhackDesk desk;
    EXPECT_EQ(desk.step(0.016), LevelResult::Running);
    // 3499211612 mod 100 = 12 (red); x in [313, 1053] from 581869302 is 413;
    // y in [250, 570] from 3890346734 is 540.
    const WhackLevel::Slot& s = desk.level.slots[0];
    EXPECT_TRUE(s.active);
    EXPECT_TRUE(s.red);
    EXPECT_EQ(s.x, 413);
    EXPECT_EQ(s.y, 540);
    EXPECT_EQ(s.radius, 30);
    EXPECT_DOUBLE_EQ(s.life, 1.1 - 0.016);
    EXPECT_DOUBLE_EQ(desk.level.spawnTimer, 0.55);
    EXPECT_FALSE(desk.level.slots[1].active);
    EXPECT_EQ(desk.rng, test::engineAfter(5489, 3));
    EXPECT_EQ(desk.sounds, Sounds{});
}

// Seed 242 opens with 2940705934 (mod 100 = 34), seed 14 with 2207369835
// (mod 100 = 35): the last red and the first green of the odds.
TEST(WhackStation, APopUpIsRedWhenTheDrawModHundredIsBelowThirtyFive) {
    for (const std::uint32_t seed : {242u, 14u}) {
        WhackDesk desk(seed);
        desk.step(0.016);
        Rng byHand(seed);
        const bool red = byHand() % 100 < 35;
        const int x = 313 + test::uniformBelowByHand(byHand, 1053 - 313 + 1);
        const int y = 250 + test::uniformBelowByHand(byHand, 570 - 250 + 1);
        const WhackLevel::Slot& s = desk.level.slots[0];
        EXPECT_EQ(s.red, seed == 242u) << seed;
        EXPECT_EQ(s.red, red) << seed;
        EXPECT_EQ(s.x, x) << seed;
        EXPECT_EQ(s.y, y) << seed;
        EXPECT_EQ(desk.rng, byHand) << seed;
    }
}

TEST(WhackStation, SpawnsTakeTheFirstFreeSlotWithTheSameThreeDraws) {
    WhackDesk desk;
    desk.step(0.016);
    desk.level.spawnTimer = 0.0;
    desk.step(0.016);
    // 3586334585 mod 100 = 85 (green) at (407, 561).
    const WhackLevel::Slot& s = desk.level.slots[1];
    EXPECT_TRUE(s.active);
    EXPECT_FALSE(s.red);
    EXPECT_EQ(s.x, 407);
    EXPECT_EQ(s.y, 561);
    EXPECT_EQ(desk.rng, test::engineAfter(5489, 6));
}

TEST(WhackStation, ASpawnComesWhenTheTimerReachesZeroExactly) {
    WhackDesk desk;
    desk.level.spawnTimer = 0.25;
    desk.step(0.125);   // 0.125 left: nothing yet
    EXPECT_FALSE(desk.level.slots[0].active);
    EXPECT_EQ(desk.rng, Rng(5489));
    EXPECT_EQ(desk.level.spawnTimer, 0.125);
    desk.step(0.125);   // exactly zero
    EXPECT_TRUE(desk.level.slots[0].active);
    EXPECT_EQ(desk.level.spawnTimer, 0.55);
    EXPECT_EQ(desk.rng, test::engineAfter(5489, 3));
}

TEST(WhackStation, DrawsDuringPlayFollowTheSpawnBeat) {
    // Eighth-second frames: a pop-up every fifth frame (0.625 s), each one
    // gone after nine; three draws each, so the count follows play time.
    WhackDesk desk;
    desk.step(0.125);
    EXPECT_EQ(desk.rng, test::engineAfter(5489, 3));
    for (int i = 0; i < 4; ++i) desk.step(0.125);
    EXPECT_EQ(desk.rng, test::engineAfter(5489, 3));
    desk.step(0.125);
    EXPECT_EQ(desk.rng, test::engineAfter(5489, 6));
    for (int i = 0; i < 5; ++i) desk.step(0.125);
    EXPECT_EQ(desk.rng, test::engineAfter(5489, 9));
    EXPECT_EQ(desk.step(0.125), LevelResult::Running);
    EXPECT_EQ(desk.rng, test::engineAfter(5489, 9));
}

TEST(WhackStation, AFullBoardSpawnsNothingAndDrawsNothing) {
    WhackDesk desk;
    for (int i = 0; i < 6; ++i) {
        desk.level.slots[i] = WhackLevel::Slot{true, true, 350 + 100 * i, 300, 30, 1.0};
    }
    desk.step(0.016);
    EXPECT_EQ(desk.rng, Rng(5489));
    EXPECT_DOUBLE_EQ(desk.level.spawnTimer, 0.55);
    EXPECT_EQ(desk.level.slots[0].x, 350);
}

TEST(WhackStation, APopUpStaysOneLifeOfOnePointOneSeconds) {
    WhackDesk desk;
    desk.step(0.0);   // the first pop-up, with its full life
    EXPECT_EQ(desk.level.slots[0].life, 1.1);
    desk.level.spawnTimer = 5.0;
    desk.level.slots[0].life = 0.25;
    desk.step(0.125);
    EXPECT_TRUE(desk.level.slots[0].active);
    desk.step(0.125);   // exactly zero: gone
    EXPECT_FALSE(desk.level.slots[0].active);
}

TEST(WhackStation, TheThirdGreenThatGetsAwayFiresEvenOneSwatShort) {
    WhackDesk desk;
    desk.level.spawnTimer = 1.0;
    desk.level.hits = desk.level.goal - 1;
    desk.level.strikes = 2;
    desk.level.slots[2] = WhackLevel::Slot{true, false, 500, 400, 30, 0.01};
    // The swat on the escaping green comes too late: expiry is checked first.
    EXPECT_EQ(desk.press(500, 400), LevelResult::Failed);
    EXPECT_EQ(desk.level.strikes, 3);
    EXPECT_EQ(desk.level.hits, desk.level.goal - 1);
    EXPECT_EQ(desk.sounds, Sounds{"fail"});
}

TEST(WhackStation, AGreenThatGetsAwayIsASilentStrike) {
    WhackDesk desk;
    desk.level.spawnTimer = 1.0;
    desk.level.slots[0] = WhackLevel::Slot{true, false, 500, 400, 30, 0.01};
    EXPECT_EQ(desk.step(0.016), LevelResult::Running);
    EXPECT_FALSE(desk.level.slots[0].active);
    EXPECT_EQ(desk.level.strikes, 1);
    EXPECT_EQ(desk.sounds, Sounds{});
}

TEST(WhackStation, TwoGreensGettingAwayAreNotYetTheEnd) {
    WhackDesk desk;
    desk.level.spawnTimer = 1.0;
    desk.level.strikes = 1;
    desk.level.slots[0] = WhackLevel::Slot{true, false, 500, 400, 30, 0.01};
    EXPECT_EQ(desk.step(0.016), LevelResult::Running);
    EXPECT_EQ(desk.level.strikes, 2);
}

TEST(WhackStation, ARedThatTimesOutCostsNothing) {
    WhackDesk desk;
    desk.level.spawnTimer = 1.0;
    desk.level.strikes = 2;
    desk.level.slots[0] = WhackLevel::Slot{true, true, 500, 400, 30, 0.01};
    EXPECT_EQ(desk.step(0.016), LevelResult::Running);
    EXPECT_FALSE(desk.level.slots[0].active);
    EXPECT_EQ(desk.level.strikes, 2);
    EXPECT_EQ(desk.sounds, Sounds{});
}

TEST(WhackStation, ASwatOnAGreenClicksOnce) {
    WhackDesk desk;
    desk.level.spawnTimer = 1.0;
    desk.level.slots[2] = WhackLevel::Slot{true, false, 500, 400, 30, 1.0};
    EXPECT_EQ(desk.press(510, 410), LevelResult::Running);
    EXPECT_EQ(desk.level.hits, 1);
    EXPECT_FALSE(desk.level.slots[2].active);
    EXPECT_EQ(desk.sounds, Sounds{"click"});
}

TEST(WhackStation, OneSwatOnTwoOverlappingGreensCountsTwo) {
    WhackDesk desk;
    desk.level.spawnTimer = 1.0;
    desk.level.slots[0] = WhackLevel::Slot{true, false, 500, 400, 30, 1.0};
    desk.level.slots[3] = WhackLevel::Slot{true, false, 520, 400, 30, 1.0};
    EXPECT_EQ(desk.press(510, 400), LevelResult::Running);
    EXPECT_EQ(desk.level.hits, 2);
    EXPECT_FALSE(desk.level.slots[0].active);
    EXPECT_FALSE(desk.level.slots[3].active);
    EXPECT_EQ(desk.sounds, (Sounds{"click", "click"}));
}

TEST(WhackStation, TheSwatThatReachesTheGoalSolves) {
    WhackDesk desk;
    desk.level.spawnTimer = 1.0;
    desk.level.hits = 4;
    desk.level.slots[0] = WhackLevel::Slot{true, false, 500, 400, 30, 1.0};
    desk.level.slots[1] = WhackLevel::Slot{true, false, 515, 410, 30, 1.0};
    EXPECT_EQ(desk.press(508, 405), LevelResult::Solved);
    EXPECT_EQ(desk.level.hits, 6);
    EXPECT_EQ(desk.sounds, (Sounds{"click", "click", "pass"}));
}

TEST(WhackStation, OneSwatShortOfTheGoalKeepsRunning) {
    WhackDesk desk(5489, 40);   // eight to swat
    desk.level.spawnTimer = 1.0;
    desk.level.hits = 6;
    desk.level.slots[0] = WhackLevel::Slot{true, false, 500, 400, 30, 1.0};
    EXPECT_EQ(desk.press(500, 400), LevelResult::Running);
    EXPECT_EQ(desk.level.hits, 7);
    EXPECT_EQ(desk.sounds, Sounds{"click"});
}

TEST(WhackStation, TouchingARedFiresAtOnce) {
    WhackDesk desk;
    desk.level.spawnTimer = 1.0;
    desk.level.slots[1] = WhackLevel::Slot{true, true, 700, 300, 30, 1.0};
    EXPECT_EQ(desk.press(700 + 29, 300), LevelResult::Failed);
    EXPECT_EQ(desk.sounds, Sounds{"fail"});
}

TEST(WhackStation, ASwatWalksTheSlotsInOrderUntilARed) {
    // A green in an earlier slot is counted (and clicks) before the red
    // under the same swat fires; a red first ends it before the green.
    WhackDesk greenFirst;
    greenFirst.level.spawnTimer = 1.0;
    greenFirst.level.slots[0] = WhackLevel::Slot{true, false, 500, 400, 30, 1.0};
    greenFirst.level.slots[1] = WhackLevel::Slot{true, true, 510, 400, 30, 1.0};
    EXPECT_EQ(greenFirst.press(505, 400), LevelResult::Failed);
    EXPECT_EQ(greenFirst.level.hits, 1);
    EXPECT_EQ(greenFirst.sounds, (Sounds{"click", "fail"}));

    WhackDesk redFirst;
    redFirst.level.spawnTimer = 1.0;
    redFirst.level.slots[0] = WhackLevel::Slot{true, true, 500, 400, 30, 1.0};
    redFirst.level.slots[1] = WhackLevel::Slot{true, false, 510, 400, 30, 1.0};
    EXPECT_EQ(redFirst.press(505, 400), LevelResult::Failed);
    EXPECT_EQ(redFirst.level.hits, 0);
    EXPECT_EQ(redFirst.sounds, Sounds{"fail"});
}

TEST(WhackStation, AButtonHeldDownOverAGreenIsNoSwat) {
    WhackDesk desk;
    desk.level.spawnTimer = 1.0;
    desk.level.slots[0] = WhackLevel::Slot{true, false, 500, 400, 30, 1.0};
    desk.pointAt(500, 400);
    desk.in.mouseDown = true;   // pressed on an earlier frame
    EXPECT_EQ(desk.step(0.016), LevelResult::Running);
    EXPECT_EQ(desk.level.hits, 0);
    EXPECT_TRUE(desk.level.slots[0].active);
    EXPECT_EQ(desk.sounds, Sounds{});
}

TEST(WhackStation, ASwatExactlyOneRadiusAwayMissesSilently) {
    WhackDesk desk;
    desk.level.spawnTimer = 1.0;
    desk.level.slots[1] = WhackLevel::Slot{true, true, 700, 300, 30, 1.0};
    desk.level.slots[2] = WhackLevel::Slot{true, false, 400, 300, 30, 1.0};
    EXPECT_EQ(desk.press(700, 330), LevelResult::Running);   // 30 px under the red
    EXPECT_EQ(desk.press(382, 276), LevelResult::Running);   // 18, 24: 30 px off the green
    EXPECT_EQ(desk.level.hits, 0);
    EXPECT_EQ(desk.sounds, Sounds{});
    EXPECT_EQ(desk.press(382, 277), LevelResult::Running);
    EXPECT_EQ(desk.level.hits, 1);
    EXPECT_EQ(desk.sounds, Sounds{"click"});
}

TEST(WhackStation, PopUpsComingAndGoingMakeNoSound) {
    // Two and a half seconds of seed 5489: a red comes and goes, then a
    // green that gets away.
    WhackDesk desk;
    for (int i = 0; i < 50; ++i) {
        ASSERT_EQ(desk.step(0.05), LevelResult::Running);
    }
    EXPECT_EQ(desk.level.strikes, 1);
    EXPECT_EQ(desk.sounds, Sounds{});
}

TEST(WhackStation, PopUpsAreTwoToneDiscsUnderTheTally) {
    Canvas canvas;
    WhackDesk desk;
    desk.level.hits = 2;
    desk.level.strikes = 1;
    desk.level.slots[0] = WhackLevel::Slot{true, false, 500, 400, 30, 1.0};
    desk.level.slots[4] = WhackLevel::Slot{true, true, 800, 450, 30, 1.0};
    desk.level.render(canvas.graphics);

    Canvas expected;
    Graphics& g = expected.graphics;
    g.circle(500, 400, 30, kGreenRim, true);
    g.circle(500, 400, 24, kGreen, true);
    g.circle(800, 450, 30, kRedRim, true);
    g.circle(800, 450, 24, kRed, true);
    g.text("GREEN 2/6   strikes 1/3", 683, 220, TextSize::Normal, kGold, true, true);
    drawOrders(g, "HIT GREEN, NEVER RED");
    EXPECT_EQ(pixelsApart(canvas, expected), 0);
    EXPECT_EQ(canvas.pixel(500, 400), kGreen);
    EXPECT_EQ(canvas.pixel(527, 400), kGreenRim);
    EXPECT_EQ(canvas.pixel(773, 450), kRedRim);
    EXPECT_EQ(tallyUnlike(canvas, "GREEN 2/6   strikes 1/3"), 0);
    EXPECT_EQ(ordersUnlike(canvas, "HIT GREEN, NEVER RED"), 0);
}

TEST(WhackStation, TheTallyCountsSwatsAgainstTheGoalAndStrikesAgainstThree) {
    WhackDesk desk;
    desk.level.spawnTimer = 5.0;
    desk.level.slots[0] = WhackLevel::Slot{true, false, 500, 400, 30, 1.0};
    desk.level.slots[1] = WhackLevel::Slot{true, false, 800, 400, 30, 0.01};
    desk.press(500, 400);   // one swatted, one got away
    Canvas canvas;
    desk.level.render(canvas.graphics);
    EXPECT_EQ(tallyUnlike(canvas, "GREEN 1/6   strikes 1/3"), 0);

    WhackDesk late(5489, 40);
    Canvas fresh;
    late.level.render(fresh.graphics);
    EXPECT_EQ(tallyUnlike(fresh, "GREEN 0/8   strikes 0/3"), 0);
    EXPECT_EQ(ordersUnlike(fresh, "HIT GREEN, NEVER RED"), 0);

    late.level.hits = 7;
    late.level.strikes = 2;
    Canvas nearly;
    late.level.render(nearly.graphics);
    EXPECT_EQ(tallyUnlike(nearly, "GREEN 7/8   strikes 2/3"), 0);
}

// ---------------------------------------------------------------------------
// DoubleClick

using ClickDesk = Desk<DoubleClickLevel>;

// cx = 683: column lefts 416, 554, 692, 830; row tops 260 and 388.
constexpr int kDeskLeft[4] = {416, 554, 692, 830};
constexpr int kDeskTop[2] = {260, 388};

TEST(DoubleClickStation, EightCellsInTwoRowsAroundTheCentre) {
    ClickDesk desk;
    for (int i = 0; i < 8; ++i) {
        const Rect& c = desk.level.cells[i];
        EXPECT_EQ(c.x, kDeskLeft[i % 4]) << i;
        EXPECT_EQ(c.y, kDeskTop[i / 4]) << i;
        EXPECT_EQ(c.w, 120) << i;
        EXPECT_EQ(c.h, 110) << i;
    }
}

TEST(DoubleClickStation, TheLitCellIsTheFirstDrawAndSeven) {
    ClickDesk desk;
    EXPECT_EQ(desk.level.litCell, 4);   // 3499211612 & 7
    EXPECT_EQ(desk.level.armedCell, -1);
    EXPECT_EQ(desk.level.armedTime, -1.0);
    EXPECT_EQ(desk.level.litTimer, 0.0);
    EXPECT_EQ(desk.level.clock, 0.0);
    EXPECT_EQ(desk.level.rng, &desk.rng);
    EXPECT_EQ(desk.rng, test::engineAfter(5489, 1));
    ClickDesk other(42);   // 1608637542 & 7 = 6
    EXPECT_EQ(other.level.litCell, 6);
}

TEST(DoubleClickStation, TheLightMovesEveryOnePointFourSecondsWithOneDraw) {
    ClickDesk desk;
    // Eighth-second frames: 1.375 s after eleven, 1.5 s after twelve.
    for (int i = 0; i < 11; ++i) desk.step(0.125);
    EXPECT_EQ(desk.rng, test::engineAfter(5489, 1));
    desk.step(0.125);
    EXPECT_EQ(desk.level.litCell, 6);   // 581869302 mod 8
    EXPECT_EQ(desk.rng, test::engineAfter(5489, 2));
    for (int i = 0; i < 12; ++i) desk.step(0.125);
    EXPECT_EQ(desk.rng, test::engineAfter(5489, 3));
    EXPECT_EQ(desk.sounds, Sounds{});
}

TEST(DoubleClickStation, TheLightStaysAtExactlyOnePointFourAndMovesJustPastIt) {
    ClickDesk desk;
    desk.level.litTimer = 1.4;
    desk.level.armedCell = 4;
    desk.step(0.0);
    EXPECT_EQ(desk.level.litCell, 4);
    EXPECT_EQ(desk.level.armedCell, 4);
    EXPECT_EQ(desk.rng, test::engineAfter(5489, 1));
    desk.step(1.0 / 1024);
    EXPECT_EQ(desk.level.litCell, 6);
    EXPECT_EQ(desk.level.armedCell, -1);
    EXPECT_EQ(desk.level.litTimer, 0.0);
    EXPECT_EQ(desk.rng, test::engineAfter(5489, 2));
}

TEST(DoubleClickStation, TheFirstClickOnTheLitCellArmsItWithAClick) {
    ClickDesk desk;
    const Rect& c = desk.level.cells[4];
    desk.step(0.25);
    EXPECT_EQ(desk.press(c.x, c.y), LevelResult::Running);
    EXPECT_EQ(desk.level.armedCell, 4);
    EXPECT_EQ(desk.level.armedTime, 0.25);
    EXPECT_EQ(desk.sounds, Sounds{"click"});
}

TEST(DoubleClickStation, TwoClicksOnTheLitCellJustUnderFourTenthsApartSolve) {
    ClickDesk desk;
    const Rect& c = desk.level.cells[desk.level.litCell];
    EXPECT_EQ(desk.press(c.x + 5, c.y + 5), LevelResult::Running);
    EXPECT_EQ(desk.level.armedCell, desk.level.litCell);
    for (int i = 0; i < 38; ++i) desk.step(0.01);
    const std::size_t before = desk.sounds.size();
    EXPECT_EQ(desk.press(c.x + 5, c.y + 5, 0.01), LevelResult::Solved);   // 0.39 s later
    EXPECT_EQ(desk.soundsSince(before), Sounds{"pass"});
    EXPECT_EQ(desk.sounds, (Sounds{"click", "pass"}));
}

TEST(DoubleClickStation, TwoClicksJustOverFourTenthsApartOnlyReArm) {
    ClickDesk desk;
    const Rect& c = desk.level.cells[desk.level.litCell];
    desk.press(c.x + 5, c.y + 5, 0.005);
    for (int i = 0; i < 81; ++i) desk.step(0.005);
    EXPECT_EQ(desk.press(c.x + 5, c.y + 5, 0.005), LevelResult::Running);   // 0.41 s later
    EXPECT_EQ(desk.level.armedCell, desk.level.litCell);
    EXPECT_DOUBLE_EQ(desk.level.armedTime, desk.level.clock);
    EXPECT_EQ(desk.sounds, (Sounds{"click", "click"}));
}

TEST(DoubleClickStation, ClicksExactlyFourTenthsApartOnlyReArm) {
    ClickDesk desk;
    const Rect& c = desk.level.cells[4];
    desk.level.armedCell = 4;
    desk.level.armedTime = 0.0;
    desk.level.clock = 0.4;
    EXPECT_EQ(desk.press(c.x + 5, c.y + 5), LevelResult::Running);
    EXPECT_EQ(desk.level.armedTime, 0.4);
    EXPECT_EQ(desk.sounds, Sounds{"click"});
}

TEST(DoubleClickStation, TheClockStandsStillOnTheFramesOfAClickOnACell) {
    ClickDesk desk;
    const Rect& c = desk.level.cells[desk.level.litCell];
    desk.step(0.1);
    EXPECT_DOUBLE_EQ(desk.level.clock, 0.1);
    desk.press(c.x + 5, c.y + 5, 0.1);
    EXPECT_DOUBLE_EQ(desk.level.clock, 0.1);
    EXPECT_DOUBLE_EQ(desk.level.armedTime, 0.1);
    desk.press(100, 100, 0.1);   // nowhere near a desk: the clock runs
    EXPECT_DOUBLE_EQ(desk.level.clock, 0.2);
}

TEST(DoubleClickStation, ClickFramesDoNotCountTowardsTheGap) {
    // 0.395 s between the clicks on the station clock, 0.405 s of real time:
    // the second click's own frame is not counted, so this still solves.
    ClickDesk desk;
    const Rect& c = desk.level.cells[desk.level.litCell];
    desk.press(c.x + 5, c.y + 5, 0.005);
    for (int i = 0; i < 79; ++i) desk.step(0.005);
    EXPECT_EQ(desk.press(c.x + 5, c.y + 5, 0.01), LevelResult::Solved);
}

TEST(DoubleClickStation, AClickOnADarkCellFires) {
    ClickDesk desk;
    const Rect& dark = desk.level.cells[(desk.level.litCell + 1) % 8];
    EXPECT_EQ(desk.press(dark.x + dark.w - 1, dark.y + dark.h - 1), LevelResult::Failed);
    EXPECT_EQ(desk.sounds, Sounds{"fail"});
}

TEST(DoubleClickStation, AClickOnADarkCellFiresEvenWithTheLitCellArmed) {
    ClickDesk desk;
    const Rect& lit = desk.level.cells[4];
    const Rect& dark = desk.level.cells[0];
    desk.press(lit.x + 5, lit.y + 5);
    EXPECT_EQ(desk.press(dark.x + 5, dark.y + 5), LevelResult::Failed);
    EXPECT_EQ(desk.sounds, (Sounds{"click", "fail"}));
}

TEST(DoubleClickStation, AButtonHeldDownOnTheLitCellIsNoClick) {
    ClickDesk desk;
    const Rect& lit = desk.level.cells[4];
    desk.pointAt(lit.x + 5, lit.y + 5);
    desk.in.mouseDown = true;
    EXPECT_EQ(desk.step(0.016), LevelResult::Running);
    EXPECT_EQ(desk.level.armedCell, -1);
    EXPECT_DOUBLE_EQ(desk.level.clock, 0.016);
    EXPECT_EQ(desk.sounds, Sounds{});
}

TEST(DoubleClickStation, AClickInTheGapBetweenCellsDoesNothing) {
    ClickDesk desk;
    const Rect& lit = desk.level.cells[desk.level.litCell];
    // The lit cell's right edge is outside it (half-open); the next desk starts 18 px on.
    EXPECT_EQ(desk.press(lit.x + lit.w, lit.y + 5), LevelResult::Running);
    EXPECT_EQ(desk.press(lit.x + 5, lit.y + lit.h), LevelResult::Running);
    EXPECT_EQ(desk.press(lit.x - 1, lit.y + 5), LevelResult::Running);
    EXPECT_EQ(desk.level.armedCell, -1);
    EXPECT_DOUBLE_EQ(desk.level.clock, 0.048);
    EXPECT_EQ(desk.sounds, Sounds{});
}

TEST(DoubleClickStation, ADoubleClickThatStraddlesAMoveOnlyArmsTheNewCell) {
    Desk<DoubleClickLevel> desk(5489);
    // Seed 5489 lights cell 4 and then cell 6.
    const Rect& first = desk.level.cells[4];
    const Rect& second = desk.level.cells[6];
    for (int i = 0; i < 10; ++i) desk.step(0.125);   // 1.25 s
    desk.press(first.x + 5, first.y + 5, 0.125);     // 1.375 s: arms cell 4
    EXPECT_EQ(desk.level.armedCell, 4);
    desk.step(0.125);   // 1.5 s: the light moves to cell 6, disarmed
    EXPECT_EQ(desk.level.litCell, 6);
    EXPECT_EQ(desk.level.armedCell, -1);
    // The old cell is dark now; the new cell takes a first click only.
    EXPECT_EQ(desk.press(second.x + 5, second.y + 5, 0.01), LevelResult::Running);
    EXPECT_EQ(desk.level.armedCell, 6);
    EXPECT_EQ(desk.sounds, (Sounds{"click", "click"}));
}

// The desks longhand: brass for the lit one with its "x2", dark brass for
// the rest, rounded by 8.
void drawDesks(Graphics& g, int lit) {
    for (int i = 0; i < 8; ++i) {
        g.roundRect({kDeskLeft[i % 4], kDeskTop[i / 4], 120, 110}, 8,
                    i == lit ? rgb(216, 183, 90) : rgb(99, 77, 26), true);
    }
    g.text("x2", kDeskLeft[lit % 4] + 60, kDeskTop[lit / 4] + 55, TextSize::Large, kInk, true,
           true);
    drawOrders(g, "DOUBLE-CLICK THE LIT CELL \xE2\x80\x94 FAST");
}

TEST(DoubleClickStation, TheLitCellIsBrassWithItsX2) {
    for (const int lit : {4, 3}) {
        ClickDesk desk;
        desk.level.litCell = lit;
        Canvas canvas;
        desk.level.render(canvas.graphics);
        Canvas expected;
        drawDesks(expected.graphics, lit);
        EXPECT_EQ(pixelsApart(canvas, expected), 0) << lit;

        const Rect& c = desk.level.cells[lit];
        EXPECT_EQ(test::pixelsUnlikeText(canvas, {c.x + 10, c.y + 10, 100, 90}, rgb(216, 183, 90),
                                         "x2", c.x + 60, c.y + 55, TextSize::Large, kInk, true, true),
                  0)
            << lit;
        EXPECT_EQ(canvas.pixel(c.x + 1, c.y + 1), kBlack);   // rounded corner
        EXPECT_EQ(canvas.pixel(c.x + 8, c.y), rgb(216, 183, 90));
        EXPECT_EQ(ordersUnlike(canvas, "DOUBLE-CLICK THE LIT CELL \xE2\x80\x94 FAST"), 0);
    }
}

// ---------------------------------------------------------------------------
// Precision

using PrecisionDesk = Desk<PrecisionLevel>;

TEST(PrecisionStation, TheDotStartsInTheMiddleWithTwoParityDrawsXFirst) {
    // Seed 42: 1608637542 is even (vx -40), 3421126067 odd (vy +32).
    PrecisionDesk desk(42);
    EXPECT_EQ(desk.level.x, 683.0);
    EXPECT_EQ(desk.level.y, 405.0);
    EXPECT_EQ(desk.level.vx, -40.0);
    EXPECT_EQ(desk.level.vy, 32.0);
    EXPECT_EQ(desk.rng, test::engineAfter(42, 2));
    PrecisionDesk other(1);   // both odd
    EXPECT_EQ(other.level.vx, 40.0);
    EXPECT_EQ(other.level.vy, 32.0);
    // Seed 5489: 3499211612 even, 581869302 even.
    PrecisionDesk both(5489);
    EXPECT_EQ(both.level.vx, -40.0);
    EXPECT_EQ(both.level.vy, -32.0);
}

TEST(PrecisionStation, TheDotDriftsAndTurnsAtTheWallsWithoutClamping) {
    PrecisionDesk desk(1);
    desk.level.x = 263 + 840 - 44 - 0.1;   // 0.1 px short of the right wall
    desk.level.y = 405.0;
    desk.step(0.01);
    EXPECT_DOUBLE_EQ(desk.level.x, 263 + 840 - 44 - 0.1 + 0.4);
    EXPECT_EQ(desk.level.vx, -40.0);
    EXPECT_DOUBLE_EQ(desk.level.y, 405.32);
    EXPECT_EQ(desk.level.vy, 32.0);
}

// Frames of 1/128 s move the dot 0.3125 px across and 0.25 px up or down, so
// it lands exactly on each wall line (44 px in from the play area's edges:
// x 307 and 1059, y 234 and 576) and turns only once past it.
struct Wall {
    double x, y, vx, vy;
    bool across;   // which velocity should turn
};

TEST(PrecisionStation, TheDotTurnsOnlyOncePastEachWallLine) {
    const Wall walls[] = {
        {1059.0 - 0.3125, 405.0, 40.0, 32.0, true},    // right
        {307.0 + 0.3125, 405.0, -40.0, 32.0, true},    // left
        {683.0, 576.0 - 0.25, 40.0, 32.0, false},      // bottom
        {683.0, 234.0 + 0.25, 40.0, -32.0, false},     // top
    };
    for (const Wall& w : walls) {
        PrecisionDesk desk;
        desk.level.x = w.x;
        desk.level.y = w.y;
        desk.level.vx = w.vx;
        desk.level.vy = w.vy;
        desk.step(1.0 / 128);   // on the line: no turn
        EXPECT_EQ(desk.level.vx, w.vx) << w.x << "," << w.y;
        EXPECT_EQ(desk.level.vy, w.vy) << w.x << "," << w.y;
        desk.step(1.0 / 128);   // past it: turns, without being put back
        EXPECT_EQ(desk.level.vx, w.across ? -w.vx : w.vx) << w.x << "," << w.y;
        EXPECT_EQ(desk.level.vy, w.across ? w.vy : -w.vy) << w.x << "," << w.y;
        EXPECT_EQ(desk.level.x, w.x + 2 * w.vx / 128);
        EXPECT_EQ(desk.level.y, w.y + 2 * w.vy / 128);
    }
}

struct PrecisionPress : ::testing::Test {
    PrecisionDesk desk;
    void SetUp() override {
        desk.level.vx = 0.0;
        desk.level.vy = 0.0;
    }
};

TEST_F(PrecisionPress, APressExactlyNinePixelsOffSolves) {
    EXPECT_EQ(desk.press(683 + 9, 405), LevelResult::Solved);
    EXPECT_EQ(desk.sounds, Sounds{"pass"});
}

TEST_F(PrecisionPress, APressExactlyFortyFourPixelsOffFires) {
    EXPECT_EQ(desk.press(683, 405 - 44), LevelResult::Failed);
    EXPECT_EQ(desk.sounds, Sounds{"fail"});
}

TEST_F(PrecisionPress, APressJustOutsideTheRingIsIgnored) {
    desk.level.x = 683.0 - 0.01;
    EXPECT_EQ(desk.press(683 + 44, 405), LevelResult::Running);   // 44.01 px
    EXPECT_EQ(desk.sounds, Sounds{});
    EXPECT_EQ(desk.press(683 + 10, 405), LevelResult::Failed);    // 10.01 px: on the ring
}

TEST_F(PrecisionPress, HoveringOverTheDotWithoutAPressDoesNothing) {
    desk.pointAt(683, 405);
    desk.in.mouseDown = true;   // held from before: no press this frame
    EXPECT_EQ(desk.step(0.016), LevelResult::Running);
    EXPECT_EQ(desk.sounds, Sounds{});
}

TEST(PrecisionStation, ARingAroundATinyGreenDot) {
    Canvas canvas;
    PrecisionDesk desk;
    desk.level.x = 500.7;
    desk.level.y = 300.2;
    desk.level.render(canvas.graphics);

    Canvas expected;
    Graphics& g = expected.graphics;
    g.circle(500, 300, 44, rgb(89, 20, 14), false);
    g.circle(500, 300, 43, rgb(63, 14, 10), false);
    g.circle(500, 300, 9, kGreen, true);
    drawOrders(g, "HIT THE TINY GREEN DOT \xE2\x80\x94 NOT THE RING");
    EXPECT_EQ(pixelsApart(canvas, expected), 0);

    EXPECT_EQ(canvas.pixel(500, 300), kGreen);
    EXPECT_EQ(canvas.pixel(500 + 8, 300), kGreen);
    EXPECT_EQ(canvas.pixel(500 + 20, 300), kBlack);
    EXPECT_EQ(canvas.pixel(500 + 44, 300), rgb(89, 20, 14));
    EXPECT_EQ(canvas.pixel(500 - 44, 300), rgb(89, 20, 14));
    EXPECT_EQ(canvas.pixel(500 + 43, 300), rgb(63, 14, 10));
    EXPECT_EQ(canvas.pixel(500 + 46, 300), kBlack);
    EXPECT_EQ(ordersUnlike(canvas, "HIT THE TINY GREEN DOT \xE2\x80\x94 NOT THE RING"), 0);
}

// ---------------------------------------------------------------------------
// Decoy

using DecoyDesk = Desk<DecoyLevel>;

// A hand resting at (x, y) since the last frame.
void restAt(DecoyDesk& desk, int x, int y) {
    desk.level.lastX = x;
    desk.level.lastY = y;
    desk.pointAt(x, y);
}

// A hand that has just come `moved` px from the left to (x, y).
void arriveAt(DecoyDesk& desk, int x, int y, int moved) {
    desk.level.lastX = x - moved;
    desk.level.lastY = y;
    desk.pointAt(x, y);
}

TEST(DecoyStation, TheButtonWaitsInTheMiddleAndNothingIsDrawn) {
    DecoyDesk desk;
    EXPECT_EQ(desk.level.x, 683.0);
    EXPECT_EQ(desk.level.y, 405.0);
    EXPECT_EQ(desk.level.radius, 34.0);
    EXPECT_EQ(desk.level.lastX, 263.0);
    EXPECT_EQ(desk.level.lastY, 190.0);
    EXPECT_EQ(desk.level.calm, 0.0);
    EXPECT_EQ(desk.rng, Rng(5489));
}

TEST(DecoyStation, RushingAtTheButtonMakesItFleeAndDrainsCalm) {
    DecoyDesk desk;
    desk.pointAt(383, 405);
    desk.step(0.02);
    desk.level.calm = 0.5;
    // 200 px in one 0.02 s frame (10000 px/s), ending 100 px left of it.
    desk.pointAt(583, 405);
    EXPECT_EQ(desk.step(0.02), LevelResult::Running);
    EXPECT_DOUBLE_EQ(desk.level.x, 683.0 + 260.0 * 0.02);
    EXPECT_DOUBLE_EQ(desk.level.y, 405.0);
    EXPECT_DOUBLE_EQ(desk.level.calm, 0.5 - 2.0 * 0.02);
    EXPECT_EQ(desk.sounds, Sounds{});
}

TEST(DecoyStation, ItFleesAFastHandJustInsideOneHundredTwenty) {
    DecoyDesk desk;
    arriveAt(desk, 683 - 119, 405, 20);   // 400 px/s, 119 px off
    desk.step(0.05);
    EXPECT_DOUBLE_EQ(desk.level.x, 683.0 + 260.0 * 0.05);
}

TEST(DecoyStation, AHandAtExactlyTwoHundredTwentyDoesNotScareIt) {
    DecoyDesk near220;
    near220.level.calm = 0.5;
    arriveAt(near220, 583, 405, 11);   // 11 px in 0.05 s: 220 px/s
    near220.step(0.05);
    EXPECT_EQ(near220.level.x, 683.0);
    EXPECT_DOUBLE_EQ(near220.level.calm, 0.4);   // not calm either

    DecoyDesk over220;
    arriveAt(over220, 583, 405, 12);   // 240 px/s
    over220.step(0.05);
    EXPECT_DOUBLE_EQ(over220.level.x, 683.0 + 260.0 * 0.05);
}

TEST(DecoyStation, ASlowHandNearbyCalmsItAndItStays) {
    DecoyDesk desk;
    desk.level.lastX = 583;
    desk.level.lastY = 405;
    desk.pointAt(584, 405);   // 50 px/s
    desk.step(0.02);
    EXPECT_DOUBLE_EQ(desk.level.calm, 1.6 * 0.02);
    EXPECT_EQ(desk.level.x, 683.0);
}

TEST(DecoyStation, OnlyAHandSlowerThanOneHundredFortyCalmsIt) {
    DecoyDesk slow;
    slow.level.calm = 0.5;
    arriveAt(slow, 600, 405, 6);   // 120 px/s
    slow.step(0.05);
    EXPECT_DOUBLE_EQ(slow.level.calm, 0.5 + 1.6 * 0.05);

    DecoyDesk at140;
    at140.level.calm = 0.5;
    arriveAt(at140, 600, 405, 7);   // 140 px/s
    at140.step(0.05);
    EXPECT_DOUBLE_EQ(at140.level.calm, 0.5 - 2.0 * 0.05);
}

TEST(DecoyStation, OnlyAHandNearerThanOneHundredThirtyCalmsIt) {
    DecoyDesk near;
    restAt(near, 683 - 129, 405);
    near.step(0.05);
    EXPECT_DOUBLE_EQ(near.level.calm, 1.6 * 0.05);

    DecoyDesk at130;
    at130.level.calm = 0.5;
    restAt(at130, 683, 405 + 130);
    at130.step(0.05);
    EXPECT_DOUBLE_EQ(at130.level.calm, 0.5 - 2.0 * 0.05);
}

TEST(DecoyStation, CalmStaysBetweenZeroAndOne) {
    DecoyDesk calm;
    calm.level.calm = 0.99;
    restAt(calm, 683, 405);
    calm.step(0.05);
    EXPECT_EQ(calm.level.calm, 1.0);

    DecoyDesk edgy;
    edgy.level.calm = 0.05;
    restAt(edgy, 300, 300);
    edgy.step(0.05);
    EXPECT_EQ(edgy.level.calm, 0.0);
}

TEST(DecoyStation, AMiddlingSpeedNeitherCalmsNorScaresIt) {
    DecoyDesk desk;
    desk.level.lastX = 583;
    desk.level.lastY = 405;
    desk.level.calm = 0.5;
    desk.pointAt(587, 405);   // 200 px/s
    desk.step(0.02);
    EXPECT_DOUBLE_EQ(desk.level.calm, 0.5 - 0.04);
    EXPECT_EQ(desk.level.x, 683.0);
}

TEST(DecoyStation, AFastHandFurtherOffDoesNotScareIt) {
    DecoyDesk desk;
    desk.pointAt(383, 405);
    desk.step(0.02);
    desk.pointAt(563, 405);   // 120 px away
    desk.step(0.02);
    EXPECT_EQ(desk.level.x, 683.0);
}

TEST(DecoyStation, OnceItTrustsYouEvenAFastHandDoesNotScareIt) {
    DecoyDesk desk;
    desk.pointAt(383, 405);
    desk.step(0.02);
    desk.level.calm = 1.0;
    desk.pointAt(623, 405);
    desk.step(0.02);
    EXPECT_EQ(desk.level.x, 683.0);
    EXPECT_DOUBLE_EQ(desk.level.calm, 0.96);
}

// 2 px in 1/128 s is 256 px/s: fast enough to scare it and drain calm by
// exactly 1/64, which leaves 0.9 + 1/64 at 0.9 on the nose.
TEST(DecoyStation, AtExactlyNineTenthsCalmItNoLongerFlees) {
    DecoyDesk desk;
    desk.level.calm = 0.9 + 1.0 / 64;
    arriveAt(desk, 583, 405, 2);
    desk.step(1.0 / 128);
    EXPECT_EQ(desk.level.calm, 0.9);
    EXPECT_EQ(desk.level.x, 683.0);
}

TEST(DecoyStation, AtExactlyNineTenthsCalmAPressCatchesIt) {
    DecoyDesk desk;
    desk.level.calm = 0.9 + 1.0 / 64;
    arriveAt(desk, 683 + 20, 405, 2);
    desk.in.mousePressed = true;
    desk.in.mouseDown = true;
    EXPECT_EQ(desk.step(1.0 / 128), LevelResult::Solved);
    EXPECT_EQ(desk.sounds, Sounds{"pass"});
}

TEST(DecoyStation, FleeingStopsAtTheEdgeOfThePlayArea) {
    DecoyDesk desk;
    desk.level.x = 263 + 840 - 34 - 1;
    desk.pointAt(900, 405);
    desk.step(0.05);
    desk.pointAt(1003, 405);
    desk.step(0.05);
    EXPECT_EQ(desk.level.x, 263.0 + 840.0 - 34.0);
    desk.level.y = 190 + 34 + 2;
    desk.pointAt(1069, 250);
    desk.step(0.05);
    desk.step(0.05);
    EXPECT_EQ(desk.level.y, 190.0 + 34.0);
}

TEST(DecoyStation, FleeingStopsAtTheLeftAndBottomEdgesToo) {
    DecoyDesk desk;
    desk.level.x = 263 + 34 + 1;
    desk.level.y = 190 + 430 - 34 - 1;
    arriveAt(desk, 263 + 34 + 60, 190 + 430 - 34 - 60, 40);
    desk.step(0.05);
    EXPECT_EQ(desk.level.x, 263.0 + 34.0);
    EXPECT_EQ(desk.level.y, 190.0 + 430.0 - 34.0);
}

TEST(DecoyStation, APressOnItBeforeItTurnsGreenFires) {
    DecoyDesk desk;
    restAt(desk, 683 + 33, 405);
    desk.level.calm = 0.86;   // 0.892 after this calm frame
    EXPECT_EQ(desk.press(683 + 33, 405, 0.02), LevelResult::Failed);
    EXPECT_EQ(desk.sounds, Sounds{"fail"});
}

TEST(DecoyStation, GrabbingItBeforeItTrustsYouFiresEvenFromAStandstill) {
    DecoyDesk desk;
    desk.pointAt(683, 405);
    desk.step(0.02);   // the first frame's leap from the corner
    EXPECT_EQ(desk.level.x, 683.0);
    EXPECT_EQ(desk.press(683, 405, 0.02), LevelResult::Failed);
    EXPECT_EQ(desk.sounds, Sounds{"fail"});
}

TEST(DecoyStation, APressOnItOnceGreenCatchesIt) {
    DecoyDesk desk;
    restAt(desk, 683 + 33, 405);
    desk.level.calm = 0.87;   // 0.902 after this calm frame
    EXPECT_EQ(desk.press(683 + 33, 405, 0.02), LevelResult::Solved);
    EXPECT_EQ(desk.sounds, Sounds{"pass"});
}

TEST(DecoyStation, APressThatMissesDoesNothing) {
    DecoyDesk desk;
    restAt(desk, 683 + 34, 405);
    desk.level.calm = 1.0;
    EXPECT_EQ(desk.press(683 + 34, 405, 0.02), LevelResult::Running);
    restAt(desk, 683 + 34, 405);
    desk.level.calm = 0.0;
    EXPECT_EQ(desk.press(683 + 34, 405, 0.02), LevelResult::Running);
    EXPECT_EQ(desk.sounds, Sounds{});
}

// The button longhand: a two-tone disc of radius 34 (rim at 40%, face inside
// 28) with CATCH in ink on its face, and the line of orders.
void drawShyButton(Graphics& g, int x, int y, Color rim, Color face) {
    g.circle(x, y, 34, rim, true);
    g.circle(x, y, 28, face, true);
    g.text("CATCH", x, y, TextSize::Small, kInk, true, true);
    drawOrders(g, "APPROACH SLOWLY \xE2\x80\x94 IT FLEES THE HASTY");
}

TEST(DecoyStation, ItWarmsFromRedTowardOrangeAndTurnsGreenWhenCalm) {
    struct Look {
        double calm;
        Color rim, face;
    };
    // (255, trunc(58 + 112 calm), trunc(42 + 4 calm)) until 0.9, then green.
    const Look looks[] = {
        {0.0, kRedRim, kRed},
        {0.5, rgb(102, 45, 17), rgb(255, 114, 44)},
        {0.89, rgb(102, 62, 18), rgb(255, 157, 45)},
        {0.9, kGreenRim, kGreen},
    };
    for (const Look& look : looks) {
        Canvas canvas;
        DecoyDesk desk;
        desk.level.calm = look.calm;
        desk.level.x = 500.9;
        desk.level.y = 300.6;
        desk.level.render(canvas.graphics);
        Canvas expected;
        drawShyButton(expected.graphics, 500, 300, look.rim, look.face);
        EXPECT_EQ(pixelsApart(canvas, expected), 0) << look.calm;
        EXPECT_EQ(canvas.pixel(500, 300 - 22), look.face) << look.calm;
        EXPECT_EQ(canvas.pixel(500, 300 - 31), look.rim) << look.calm;
        EXPECT_EQ(canvas.pixel(500, 300 - 35), kBlack) << look.calm;
        // The word on the face, which is flat inside 19 px of the centre.
        EXPECT_EQ(test::pixelsUnlikeText(canvas, {481, 281, 38, 38}, look.face, "CATCH", 500, 300,
                                         TextSize::Small, kInk, true, true),
                  0)
            << look.calm;
        EXPECT_EQ(ordersUnlike(canvas, "APPROACH SLOWLY \xE2\x80\x94 IT FLEES THE HASTY"), 0);
    }
}

// ---------------------------------------------------------------------------
// Greased

using GreasedDesk = Desk<GreasedLevel>;

TEST(GreasedStation, TheMarkIsOneParityDrawAndTheTrackSpansThePlayArea) {
    GreasedDesk even(5489);   // 3499211612 is even: the right-hand mark
    EXPECT_EQ(even.level.mark, 0.85);
    EXPECT_EQ(even.rng, test::engineAfter(5489, 1));
    GreasedDesk odd(1);       // 1791095845 is odd
    EXPECT_EQ(odd.level.mark, 0.15);
    EXPECT_EQ(odd.rng, test::engineAfter(1, 1));
    EXPECT_EQ(even.level.value, 0.5);
    EXPECT_EQ(even.level.dwell, 0.0);
    EXPECT_FALSE(even.level.dragging);
    EXPECT_EQ(even.level.track.x, 343);
    EXPECT_EQ(even.level.track.y, 393);
    EXPECT_EQ(even.level.track.w, 680);
    EXPECT_EQ(even.level.track.h, 24);
}

TEST(GreasedStation, APressOnTheTrackDragsTheKnobTowardThePointer) {
    GreasedDesk desk;
    desk.press(343 + 680, 405, 0.1);   // the right edge is outside the track
    EXPECT_FALSE(desk.level.dragging);
    desk.in.mouseDown = false;
    desk.step(0.1);
    desk.press(343 + 612, 405, 0.1);   // 0.9 of the way along
    EXPECT_TRUE(desk.level.dragging);
    EXPECT_DOUBLE_EQ(desk.level.value, 0.5 + (0.9 - 0.5) * 0.6);
    // While held, the pointer may leave the track.
    desk.pointAt(343 + 680, 100);
    desk.step(0.5);
    EXPECT_DOUBLE_EQ(desk.level.value, 1.0);
    EXPECT_EQ(desk.sounds, Sounds{});
}

TEST(GreasedStation, APressJustAboveOrBelowTheTrackDoesNotGrabIt) {
    GreasedDesk desk;
    desk.press(600, 392, 0.1);
    EXPECT_FALSE(desk.level.dragging);
    desk.in.mouseDown = false;
    desk.press(600, 393 + 24, 0.1);
    EXPECT_FALSE(desk.level.dragging);
    desk.in.mouseDown = false;
    desk.press(343, 393 + 23, 0.1);
    EXPECT_TRUE(desk.level.dragging);
}

TEST(GreasedStation, AKnobDraggedPastTheEndsStopsAtThem) {
    GreasedDesk desk;
    desk.press(600, 405, 0.0);
    desk.pointAt(343 + 680 + 200, 405);   // 1.29 of the way
    desk.step(0.5);
    EXPECT_EQ(desk.level.value, 1.0);
    desk.pointAt(343 - 200, 405);          // -0.29 of the way
    desk.step(0.5);
    EXPECT_EQ(desk.level.value, 0.0);
}

TEST(GreasedStation, LettingGoOffTheTrackStopsTheDrag) {
    GreasedDesk desk;
    desk.press(600, 405, 0.0);
    EXPECT_TRUE(desk.level.dragging);
    desk.level.value = 0.9;
    desk.release(900, 100, 0.1);
    EXPECT_FALSE(desk.level.dragging);
    EXPECT_DOUBLE_EQ(desk.level.value, 0.9 + (0.5 - 0.9) * 0.12);
}

TEST(GreasedStation, LettingGoLetsTheKnobSlideHomeAndResetsTheDwell) {
    GreasedDesk desk;   // mark 0.85
    desk.level.value = 0.86;
    desk.level.dwell = 0.5;
    desk.step(0.01);   // 0.85568: still within 0.03 of the mark after sliding
    EXPECT_DOUBLE_EQ(desk.level.value, 0.86 + (0.5 - 0.86) * 0.012);
    EXPECT_DOUBLE_EQ(desk.level.dwell, 0.51);
    // 0.813...: the first frame out of the band wipes the dwell.
    const double before = desk.level.value;
    EXPECT_EQ(desk.step(0.1), LevelResult::Running);
    EXPECT_DOUBLE_EQ(desk.level.value, before + (0.5 - before) * 0.12);
    EXPECT_EQ(desk.level.dwell, 0.0);
    EXPECT_EQ(desk.sounds, Sounds{});
}

TEST(GreasedStation, TheBandAroundTheMarkIsStrictlyNarrowerThanThreeHundredths) {
    // Zero-length frames leave the knob where it is: only the band decides.
    GreasedDesk inside(1);   // mark 0.15
    inside.level.value = 0.15 + 0.029;
    inside.level.dwell = 0.5;
    inside.step(0.0);
    EXPECT_EQ(inside.level.dwell, 0.5);

    GreasedDesk edge(1);
    edge.level.value = 0.15 + 0.03;   // exactly 0.03 off
    ASSERT_EQ(edge.level.value - 0.15, 0.03);
    edge.level.dwell = 0.5;
    edge.step(0.0);
    EXPECT_EQ(edge.level.dwell, 0.0);

    GreasedDesk below(1);
    below.level.value = 0.15 - 0.029;
    below.level.dwell = 0.5;
    below.step(0.0);
    EXPECT_EQ(below.level.dwell, 0.5);
}

TEST(GreasedStation, HeldOnTheMarkForSevenTenthsItSolves) {
    GreasedDesk desk;
    desk.press(343 + 578, 405, 0.01);   // 0.85 along
    desk.level.value = 0.85;
    desk.level.dwell = 0.0;
    for (int i = 0; i < 5; ++i) {
        EXPECT_EQ(desk.step(0.125), LevelResult::Running) << i;
    }
    EXPECT_EQ(desk.step(0.0625), LevelResult::Running);   // 0.6875 s
    EXPECT_EQ(desk.step(0.0625), LevelResult::Solved);    // 0.75 s
    EXPECT_EQ(desk.sounds, Sounds{"pass"});
}

TEST(GreasedStation, ExactlySevenTenthsOnTheMarkIsNotYetEnough) {
    GreasedDesk desk;
    desk.press(343 + 578, 405, 0.0);   // held on the mark, 0.85 along
    desk.level.value = 0.85;
    desk.level.dwell = 0.7 - 0.0625;
    EXPECT_EQ(desk.step(0.0625), LevelResult::Running);
    EXPECT_EQ(desk.level.dwell, 0.7);
    EXPECT_EQ(desk.step(1.0 / 1024), LevelResult::Solved);
    EXPECT_EQ(desk.sounds, Sounds{"pass"});
}

TEST(GreasedStation, ItNeverFires) {
    GreasedDesk desk;
    for (int i = 0; i < 50; ++i) {
        EXPECT_EQ(desk.press(270 + 17 * i, 200 + 8 * i, 0.05), LevelResult::Running);
    }
    EXPECT_EQ(desk.sounds, Sounds{});
}

// The slider longhand: the track, the mark bar at 680 x mark, the knob at
// 680 x value, and the dwell bar while there is dwell.
void drawSlider(Graphics& g, int markX, int knobX, Color knob, int barWidth) {
    g.roundRect({343, 393, 680, 24}, 6, rgb(30, 30, 30), true);
    g.rect({markX, 383, 8, 44}, kGreen, true);
    g.circle(knobX, 405, 16, knob, true);
    if (barWidth >= 0) {
        g.rect({knobX - 30, 363, barWidth, 6}, kGreen, true);
    }
    drawOrders(g, "DRAG TO THE MARK AND HOLD \xE2\x80\x94 IT'S GREASED");
}

TEST(GreasedStation, TrackMarkAndKnobTurnGreenOnTheMark) {
    GreasedDesk desk;   // mark 0.85: the bar at x 917..924, y 383..426
    Canvas canvas;
    desk.level.render(canvas.graphics);
    Canvas expected;
    drawSlider(expected.graphics, 917, 683, kRed, -1);
    EXPECT_EQ(pixelsApart(canvas, expected), 0);
    EXPECT_EQ(canvas.pixel(400, 405), rgb(30, 30, 30));
    EXPECT_EQ(canvas.pixel(920, 386), kGreen);
    EXPECT_EQ(canvas.pixel(916, 386), kBlack);
    EXPECT_EQ(canvas.pixel(683, 405), kRed);          // knob at 0.5, no dwell
    EXPECT_EQ(canvas.pixel(660, 365), kBlack);        // no progress bar
    EXPECT_EQ(ordersUnlike(canvas, "DRAG TO THE MARK AND HOLD \xE2\x80\x94 IT'S GREASED"), 0);

    // Half the dwell: a 30 px bar; the knob 0.25 along is at 343 + 170.
    desk.level.dwell = 0.35;
    desk.level.value = 0.25;
    Canvas dwelling;
    desk.level.render(dwelling.graphics);
    Canvas dwellingExpected;
    drawSlider(dwellingExpected.graphics, 917, 513, kGreen, 30);
    EXPECT_EQ(pixelsApart(dwelling, dwellingExpected), 0);
    EXPECT_EQ(dwelling.pixel(513, 405), kGreen);
    EXPECT_EQ(dwelling.pixel(483, 363), kGreen);      // bar {483, 363, 30, 6}
    EXPECT_EQ(dwelling.pixel(512, 368), kGreen);
    EXPECT_EQ(dwelling.pixel(513, 365), kBlack);
}

TEST(GreasedStation, TheDwellBarGrowsToSixtyPixels) {
    GreasedDesk desk(1);   // mark 0.15: the bar at 343 - 4 + 102
    desk.level.value = 0.15;
    desk.level.dwell = 0.63;   // 54 px of 60
    Canvas canvas;
    desk.level.render(canvas.graphics);
    Canvas expected;
    drawSlider(expected.graphics, 441, 445, kGreen, 54);
    EXPECT_EQ(pixelsApart(canvas, expected), 0);
}

// ---------------------------------------------------------------------------
// HotCold

using HotColdDesk = Desk<HotColdLevel>;

TEST(HotColdStation, TheSpotIsTwoUniformDrawsXFirst) {
    HotColdDesk desk;
    EXPECT_EQ(desk.level.spotX, 891);   // [353, 1013] from 3499211612
    EXPECT_EQ(desk.level.spotY, 314);   // [280, 530] from 581869302
    EXPECT_EQ(desk.level.spotRadius, 46);
    EXPECT_EQ(desk.level.heat, 0.0);
    EXPECT_EQ(desk.rng, test::engineAfter(5489, 2));
}

TEST(HotColdStation, TheSpotFollowsTheDrawRulesForOtherSeedsToo) {
    for (const std::uint32_t seed : {1u, 42u, 777u}) {
        HotColdDesk desk(seed);
        Rng byHand(seed);
        const int x = 353 + test::uniformBelowByHand(byHand, 1013 - 353 + 1);
        const int y = 280 + test::uniformBelowByHand(byHand, 530 - 280 + 1);
        EXPECT_EQ(desk.level.spotX, x) << seed;
        EXPECT_EQ(desk.level.spotY, y) << seed;
        EXPECT_EQ(desk.rng, byHand) << seed;
    }
}

TEST(HotColdStation, HeatFallsWithDistanceOverHalfTheDiagonal) {
    HotColdDesk desk;
    desk.pointAt(891 + 30, 314 + 40);
    desk.step(0.0);
    EXPECT_DOUBLE_EQ(desk.level.heat, 1.0 - 50.0 / (std::hypot(840.0, 430.0) * 0.5));
    desk.pointAt(263, 620);
    desk.step(0.5);   // dt does not matter
    EXPECT_EQ(desk.level.heat, 0.0);
    EXPECT_EQ(desk.sounds, Sounds{});
}

TEST(HotColdStation, APressOnTheSpotSolves) {
    HotColdDesk desk;
    EXPECT_EQ(desk.press(891 - 46, 314), LevelResult::Solved);
    EXPECT_EQ(desk.sounds, Sounds{"pass"});
}

TEST(HotColdStation, AMissInTheColdFires) {
    HotColdDesk desk;
    EXPECT_EQ(desk.press(891 - 300, 314), LevelResult::Failed);
    EXPECT_EQ(desk.sounds, Sounds{"fail"});
}

TEST(HotColdStation, AWarmMissOnlyClicks) {
    HotColdDesk desk;
    EXPECT_EQ(desk.press(891 - 47, 314), LevelResult::Running);
    EXPECT_EQ(desk.sounds, Sounds{"click"});
    EXPECT_EQ(desk.press(891 - 200, 314), LevelResult::Running);
    EXPECT_EQ(desk.sounds, (Sounds{"click", "click"}));
}

TEST(HotColdStation, HoveringWithTheButtonHeldDecidesNothing) {
    HotColdDesk desk;
    desk.in.mouseDown = true;
    desk.pointAt(891, 314);   // on the spot
    EXPECT_EQ(desk.step(0.016), LevelResult::Running);
    desk.pointAt(263, 620);   // in the cold
    EXPECT_EQ(desk.step(0.016), LevelResult::Running);
    EXPECT_EQ(desk.sounds, Sounds{});
}

TEST(HotColdStation, AMissExactlyAtHalfHeatOnlyClicks) {
    // A 600 x 800 area has a 1000 px diagonal: 250 px off is heat 0.5 exactly.
    HotColdDesk desk(5489, 11, Rect{0, 0, 600, 800});
    desk.level.spotX = 300;
    desk.level.spotY = 400;
    EXPECT_EQ(desk.press(300 + 150, 400 + 200), LevelResult::Running);
    EXPECT_EQ(desk.level.heat, 0.5);
    EXPECT_EQ(desk.sounds, Sounds{"click"});
    EXPECT_EQ(desk.press(300 + 251, 400), LevelResult::Failed);
    EXPECT_EQ(desk.sounds, (Sounds{"click", "fail"}));
}

// The glow longhand: the play area in (trunc(20 + 200 h), trunc(60 + 80 h),
// 30) at alpha trunc(60 + 120 h), the word, and the line of orders.
void drawGlow(Graphics& g, Color glow, const char* word, Color wordColour) {
    g.rect({263, 190, 840, 430}, glow, true);
    g.text(word, 683, 230, TextSize::Large, wordColour, true, true);
    drawOrders(g, "FIND THE HIDDEN SPOT BY THE GLOW");
}

TEST(HotColdStation, TheGlowIsTranslucentAndTheWordFollowsTheHeat) {
    struct Look {
        double heat;
        Color glow;
        const char* word;
        Color colour;
    };
    // Each step of the word at its threshold and a hundredth past it.
    const Look looks[] = {
        {0.2, rgb(60, 76, 30, 84), "COLD", kOrange},
        {0.21, rgb(62, 76, 30, 85), "COOL", kOrange},
        {0.4, rgb(100, 92, 30, 108), "COOL", kOrange},
        {0.41, rgb(102, 92, 30, 109), "WARM", kOrange},
        {0.6, rgb(140, 108, 30, 132), "WARM", kOrange},
        {0.61, rgb(142, 108, 30, 133), "HOT", kRed},
        {0.85, rgb(190, 128, 30, 162), "HOT", kRed},
        {0.86, rgb(192, 128, 30, 163), "BURNING", kRed},
    };
    Canvas canvas;
    Canvas expected;
    for (const Look& look : looks) {
        canvas.fill(kGlass);
        HotColdDesk desk;
        desk.level.heat = look.heat;
        desk.level.render(canvas.graphics);
        expected.fill(kGlass);
        drawGlow(expected.graphics, look.glow, look.word, look.colour);
        EXPECT_EQ(pixelsApart(canvas, expected), 0) << look.heat;

        // Each word alone, on the glow it sits on.
        const Color glowOnGlass = expected.pixel(300, 300);
        const bool newWord = &look == looks || std::strcmp(look.word, (&look - 1)->word) != 0;
        EXPECT_TRUE(!newWord || test::pixelsUnlikeText(canvas, {263, 200, 840, 60}, glowOnGlass, look.word, 683,
                                         230, TextSize::Large, look.colour, true, true) == 0)
            << look.heat;
        if (&look == looks) {
            EXPECT_EQ(ordersUnlike(canvas, "FIND THE HIDDEN SPOT BY THE GLOW", glowOnGlass), 0);
        }
        // The glass shows through outside the play area.
        EXPECT_EQ(canvas.pixel(262, 300), kGlass);
        EXPECT_EQ(canvas.pixel(300, 189), kGlass);
    }
}

TEST(HotColdStation, TheGlowBlendsOverTheGlass) {
    Canvas canvas(kGlass);
    HotColdDesk desk;
    desk.level.heat = 0.25;   // (70, 80, 30) at alpha 90
    desk.level.render(canvas.graphics);
    const double a = 90.0 / 255.0;
    const Color blended = rgb(static_cast<int>(std::lround(70 * a + 16 * (1 - a))),
                              static_cast<int>(std::lround(80 * a + 36 * (1 - a))),
                              static_cast<int>(std::lround(30 * a + 15 * (1 - a))));
    EXPECT_TRUE(test::near(test::opaque(canvas.pixel(300, 300)), blended, 2))
        << std::hex << canvas.pixel(300, 300);
    EXPECT_TRUE(test::near(test::opaque(canvas.pixel(1102, 619)), blended, 2));
    EXPECT_EQ(canvas.pixel(1103, 300), kGlass);
    EXPECT_EQ(canvas.pixel(300, 620), kGlass);
}

}  // namespace
}  // namespace vorn

// ---------------------------------------------------------------------------
// The automatic player, and the obvious wrong moves

namespace vorn::test {
namespace {

TEST(AimSolvers, ClearWhackOnEveryDifficulty) {
    EXPECT_EQ(unsolvedRuns("whack"), "");
}

TEST(AimSolvers, ClearDoubleClickOnEveryDifficulty) {
    EXPECT_EQ(unsolvedRuns("doubleclick"), "");
}

TEST(AimSolvers, ClearPrecisionOnEveryDifficulty) {
    EXPECT_EQ(unsolvedRuns("precision"), "");
}

TEST(AimSolvers, ClearDecoyOnEveryDifficulty) {
    EXPECT_EQ(unsolvedRuns("decoy"), "");
}

TEST(AimSolvers, ClearGreasedOnEveryDifficulty) {
    EXPECT_EQ(unsolvedRuns("greased"), "");
}

TEST(AimSolvers, ClearHotColdOnEveryDifficulty) {
    EXPECT_EQ(unsolvedRuns("hotcold"), "");
}

// What a solved run sounds like: the accepted steps' clicks, then the pass
// as the very last request, and nothing else.
std::vector<std::string> soundsOfASolvedRun(const std::string& type, std::uint32_t seed) {
    StationDriver bench(shippedRecord(type), seed);
    const std::unique_ptr<Solver> solver = makeAimSolver(type);
    const StationDriver::Outcome out =
        bench.play(*solver, clockFor(bench.def, Difficulty::medium));
    EXPECT_EQ(out.result, LevelResult::Solved) << type;
    return bench.sounds;
}

std::vector<std::string> clicksThenPass(std::size_t clicks) {
    std::vector<std::string> sounds(clicks, "click");
    sounds.push_back("pass");
    return sounds;
}

TEST(AimSolvers, ASolvedWhackRunClicksOncePerGreenThenPasses) {
    // The shipped pest control is station 40: eight greens.
    EXPECT_EQ(soundsOfASolvedRun("whack", 5489), clicksThenPass(8));
    EXPECT_EQ(soundsOfASolvedRun("whack", 7), clicksThenPass(8));
}

TEST(AimSolvers, ASolvedDoubleClickRunClicksToArmThenPasses) {
    for (const std::uint32_t seed : {5489u, 7u}) {
        const std::vector<std::string> sounds = soundsOfASolvedRun("doubleclick", seed);
        ASSERT_GE(sounds.size(), 2u) << seed;
        EXPECT_EQ(sounds, clicksThenPass(sounds.size() - 1)) << seed;
    }
}

TEST(AimSolvers, ASolvedHotColdRunOnlyClicksOnWarmMissesThenPasses) {
    for (const std::uint32_t seed : {5489u, 7u}) {
        const std::vector<std::string> sounds = soundsOfASolvedRun("hotcold", seed);
        ASSERT_GE(sounds.size(), 1u) << seed;
        EXPECT_EQ(sounds, clicksThenPass(sounds.size() - 1)) << seed;
    }
}

TEST(AimSolvers, SolvedPrecisionDecoyAndGreasedRunsOnlyPass) {
    for (const char* type : {"precision", "decoy", "greased"}) {
        EXPECT_EQ(soundsOfASolvedRun(type, 5489), clicksThenPass(0)) << type;
    }
}

// Clicks whatever `pick` points at, as a careless player would.
template <typename T, typename Pick>
struct Careless final : Solver {
    Pick pick;
    explicit Careless(Pick p) : pick(p) {}
    Intent decide(const Level& station, const Hand& hand, double) override {
        int x = hand.x;
        int y = hand.y;
        if (!pick(dynamic_cast<const T&>(station), x, y)) {
            return Intent{hand.x, hand.y, false};
        }
        return clickAt(hand, x, y);
    }
};

template <typename T, typename Pick>
Careless<T, Pick> careless(Pick p) {
    return Careless<T, Pick>(p);
}

TEST(AimWrongMoves, SwattingARedFiresWithTheFailSound) {
    StationDriver bench(shippedRecord("whack"), 5489);   // the first pop-up is red
    auto wrong = careless<WhackLevel>([](const WhackLevel& level, int& x, int& y) {
        for (const WhackLevel::Slot& s : level.slots) {
            if (s.active && s.red) {
                x = s.x;
                y = s.y;
                return true;
            }
        }
        return false;
    });
    EXPECT_EQ(bench.play(wrong, 10.0).result, LevelResult::Failed);
    EXPECT_EQ(bench.sounds, std::vector<std::string>{"fail"});
    EXPECT_LT(dynamic_cast<const WhackLevel&>(*bench.station).strikes, 3);
}

TEST(AimWrongMoves, LettingGreensGoFiresWithTheFailSound) {
    StationDriver bench(shippedRecord("whack"), 5489);
    auto idle = careless<WhackLevel>([](const WhackLevel&, int&, int&) { return false; });
    const StationDriver::Outcome out = bench.play(idle, 20.0);
    EXPECT_EQ(out.result, LevelResult::Failed);
    EXPECT_EQ(bench.sounds, std::vector<std::string>{"fail"});
    EXPECT_EQ(dynamic_cast<const WhackLevel&>(*bench.station).strikes, 3);
}

TEST(AimWrongMoves, ClickingADarkDeskFiresWithTheFailSound) {
    StationDriver bench(shippedRecord("doubleclick"), 5489);
    auto wrong = careless<DoubleClickLevel>([](const DoubleClickLevel& level, int& x, int& y) {
        const Rect& c = level.cells[(level.litCell + 4) % 8];
        x = c.x + c.w / 2;
        y = c.y + c.h / 2;
        return true;
    });
    EXPECT_EQ(bench.play(wrong, 10.0).result, LevelResult::Failed);
    EXPECT_EQ(bench.sounds, std::vector<std::string>{"fail"});
}

TEST(AimWrongMoves, ClickingTheRingFiresWithTheFailSound) {
    StationDriver bench(shippedRecord("precision"), 5489);
    auto wrong = careless<PrecisionLevel>([](const PrecisionLevel& level, int& x, int& y) {
        x = static_cast<int>(level.x) + 30;
        y = static_cast<int>(level.y);
        return true;
    });
    EXPECT_EQ(bench.play(wrong, 10.0).result, LevelResult::Failed);
    EXPECT_EQ(bench.sounds, std::vector<std::string>{"fail"});
}

TEST(AimWrongMoves, GrabbingTheShyButtonFiresWithTheFailSound) {
    StationDriver bench(shippedRecord("decoy"), 5489);
    auto wrong = careless<DecoyLevel>([](const DecoyLevel& level, int& x, int& y) {
        x = static_cast<int>(level.x);
        y = static_cast<int>(level.y);
        return true;
    });
    EXPECT_EQ(bench.play(wrong, 10.0).result, LevelResult::Failed);
    EXPECT_EQ(bench.sounds, std::vector<std::string>{"fail"});
}

TEST(AimWrongMoves, ClickingInTheColdFiresWithTheFailSound) {
    StationDriver bench(shippedRecord("hotcold"), 5489);
    auto wrong = careless<HotColdLevel>([](const HotColdLevel& level, int& x, int& y) {
        const Rect& p = level.playArea;
        // The corner farthest from the spot.
        x = level.spotX < p.x + p.w / 2 ? p.x + p.w - 5 : p.x + 5;
        y = level.spotY < p.y + p.h / 2 ? p.y + p.h - 5 : p.y + 5;
        return true;
    });
    EXPECT_EQ(bench.play(wrong, 10.0).result, LevelResult::Failed);
    EXPECT_EQ(bench.sounds, std::vector<std::string>{"fail"});
}

TEST(AimWrongMoves, LettingGoOfTheGreasedKnobOnTheMarkNeverSolves) {
    StationDriver bench(shippedRecord("greased"), 5489);
    // One quick click on the mark, then hands off: the knob slides home.
    struct Flick final : Solver {
        bool pressed = false;
        Intent decide(const Level& station, const Hand& hand, double) override {
            const auto& level = dynamic_cast<const GreasedLevel&>(station);
            const Rect& tr = level.track;
            pressed = pressed || hand.down;
            return Intent{tr.x + static_cast<int>(tr.w * level.mark), tr.y + tr.h / 2,
                          !pressed};
        }
    } flick;
    const StationDriver::Outcome out = bench.play(flick, 8.0);
    EXPECT_EQ(out.result, LevelResult::Running);
    EXPECT_EQ(bench.sounds, std::vector<std::string>{});
}

}  // namespace
}  // namespace vorn::test
