// The lost-property station ("hotcold"): a hidden spot of radius 46 found
// only by the glow of the play area, which warms as the pointer nears it
// (heat 1 on the spot, 0 half the play area's diagonal away). A press on the
// spot passes; a miss in the cold (heat under 0.5) fires you; a warm miss
// only clicks. Seed 5489 hides the spot at (891, 314).

#include "stations/aim_stations.h"
#include "support/draws_by_hand.h"
#include "aim_fixtures.h"

#include <gtest/gtest.h>

#include <cmath>

namespace vorn::test {
namespace {

using HotCold = Driver<HotColdLevel>;

TEST(HotColdStation, TheSpotIsTwoUniformDrawsAcrossFirst) {
    HotCold d;
    EXPECT_EQ(d.level.spotX, 891);   // [353, 1013] from 3499211612
    EXPECT_EQ(d.level.spotY, 314);   // [280, 530] from 581869302
    EXPECT_EQ(d.level.spotRadius, 46);
    EXPECT_EQ(d.level.heat, 0.0);
    EXPECT_EQ(d.rng, engineAfter(5489, 2));
}

TEST(HotColdStation, TheSpotFollowsTheDrawRulesForOtherSeedsToo) {
    // 90 px in from every edge of the play area.
    for (const std::uint32_t seed : {1u, 42u, 777u}) {
        HotCold d(seed);
        Rng byHand(seed);
        const int x = kPlayLeft + 90 + uniformBelowByHand(byHand, (kPlayRight - 90) - (kPlayLeft + 90) + 1);
        const int y = kPlayTop + 90 + uniformBelowByHand(byHand, (kPlayBottom - 90) - (kPlayTop + 90) + 1);
        EXPECT_EQ(d.level.spotX, x) << seed;
        EXPECT_EQ(d.level.spotY, y) << seed;
        EXPECT_EQ(d.rng, byHand) << seed;
    }
}

TEST(HotColdStation, HeatFallsWithDistanceOverHalfTheDiagonal) {
    HotCold d;
    d.moveTo(d.level.spotX + 30, d.level.spotY + 40);   // 50 px off
    EXPECT_DOUBLE_EQ(d.level.heat, 1.0 - 50.0 / (std::hypot(840.0, 430.0) * 0.5));
    d.moveTo(kPlayLeft, kPlayBottom);   // 699 px off, past 472: stone cold
    EXPECT_EQ(d.level.heat, 0.0);
    EXPECT_EQ(d.sounds, Sounds{});
}

TEST(HotColdStation, HeatIsWhereThePointerIsNotHowLongItStayed) {
    HotCold d;
    d.moveTo(d.level.spotX + 30, d.level.spotY + 40);
    const double heat = d.level.heat;
    d.idle(60);
    EXPECT_EQ(d.level.heat, heat);
}

TEST(HotColdStation, APressOnTheSpotSolves) {
    HotCold d;
    EXPECT_EQ(d.press(d.level.spotX - 46, d.level.spotY), LevelResult::Solved);
    EXPECT_EQ(d.sounds, Sounds{"pass"});
}

TEST(HotColdStation, AMissInTheColdFires) {
    HotCold d;
    EXPECT_EQ(d.press(d.level.spotX - 300, d.level.spotY), LevelResult::Failed);
    EXPECT_EQ(d.sounds, Sounds{"fail"});
}

TEST(HotColdStation, AWarmMissOnlyClicks) {
    HotCold d;
    EXPECT_EQ(d.click(d.level.spotX - 47, d.level.spotY), LevelResult::Running);
    EXPECT_EQ(d.sounds, Sounds{"click"});
    EXPECT_EQ(d.click(d.level.spotX - 200, d.level.spotY), LevelResult::Running);
    EXPECT_EQ(d.sounds, (Sounds{"click", "click"}));
}

TEST(HotColdStation, MovingWithTheButtonHeldDecidesNothing) {
    HotCold d;
    d.press(d.level.spotX - 100, d.level.spotY);   // a warm miss, and held
    EXPECT_EQ(d.moveTo(d.level.spotX, d.level.spotY), LevelResult::Running);   // over the spot
    EXPECT_EQ(d.moveTo(kPlayLeft, kPlayBottom - 1), LevelResult::Running);     // into the cold
    EXPECT_EQ(d.sounds, Sounds{"click"});
}

TEST(HotColdStation, AMissExactlyAtHalfHeatOnlyClicks) {
    // A 600 x 800 area has a 1000 px diagonal: 250 px off is heat 0.5 exactly.
    HotCold d(5489, 11, Rect{0, 0, 600, 800});
    d.level.spotX = 300;
    d.level.spotY = 400;
    EXPECT_EQ(d.click(300 + 150, 400 + 200), LevelResult::Running);
    EXPECT_EQ(d.level.heat, 0.5);
    EXPECT_EQ(d.sounds, Sounds{"click"});
    EXPECT_EQ(d.press(300 + 251, 400), LevelResult::Failed);
    EXPECT_EQ(d.sounds, (Sounds{"click", "fail"}));
}

// ---------------------------------------------------------------------------
// What the player sees: a translucent glow over the whole play area, brighter
// as it warms, and a word for how warm, over the station's green glass

// The glow at a heat h is (trunc(20 + 200 h), trunc(60 + 80 h), 30) at
// alpha trunc(60 + 120 h), laid over the glass; what shows is each channel
// mixed by the alpha, to within rounding.
struct Glow {
    int r, g, b, a;
};

bool glowShows(const SoftwareCanvas& canvas, int x, int y, Glow glow) {
    const Color glass = station_ink::greenScreen;
    const double a = glow.a / 255.0;
    const auto mix = [a](int over, int under) { return static_cast<int>(std::lround(over * a + under * (1 - a))); };
    const Color expected = rgb(mix(glow.r, red(glass)), mix(glow.g, green(glass)), mix(glow.b, blue(glass)));
    return near(opaque(canvas.pixel(x, y)), expected, 2);
}

TEST(HotColdLook, TheGlowWarmsAndTheWordFollowsTheHeat) {
    struct Look {
        double heat;
        Glow glow;
        const char* word;
        Color colour;
    };
    // Each step of the word at its threshold and a hundredth past it.
    const Look looks[] = {
        {0.2, {60, 76, 30, 84}, "COLD", aim_ink::coolWord},
        {0.21, {62, 76, 30, 85}, "COOL", aim_ink::coolWord},
        {0.4, {100, 92, 30, 108}, "COOL", aim_ink::coolWord},
        {0.41, {102, 92, 30, 109}, "WARM", aim_ink::coolWord},
        {0.6, {140, 108, 30, 132}, "WARM", aim_ink::coolWord},
        {0.61, {142, 108, 30, 133}, "HOT", station_ink::alarmRed},
        {0.85, {190, 128, 30, 162}, "HOT", station_ink::alarmRed},
        {0.86, {192, 128, 30, 163}, "BURNING", station_ink::alarmRed},
    };
    for (const Look& look : looks) {
        HotCold d;
        d.level.heat = look.heat;
        Canvas canvas(station_ink::greenScreen);
        d.level.render(canvas.graphics);
        // The glow fills the play area to its last row and column.
        EXPECT_TRUE(glowShows(canvas, kPlayLeft + 37, kPlayTop + 110, look.glow)) << look.heat;
        EXPECT_TRUE(glowShows(canvas, kPlayLeft, kPlayTop, look.glow)) << look.heat;
        EXPECT_TRUE(glowShows(canvas, kPlayRight - 1, kPlayBottom - 1, look.glow)) << look.heat;
        // The word, large and centred 40 px under the top, alone on the glow.
        const Color onGlow = canvas.pixel(kPlayLeft + 37, kPlayTop + 110);
        EXPECT_EQ(pixelsUnlikeText(canvas, {kPlayLeft, kPlayTop + 10, kPlayArea.w, 60}, onGlow, look.word,
                                   kPlayCentreX, kPlayTop + 40, TextSize::Large, look.colour, true, true),
                  0)
            << look.heat;
        // The orders on the glow; the tails that reach past the play area sit on the glass.
        EXPECT_EQ(playAreaNoteUnlike(canvas, playAreaRows(kPlayBottom - 24, kPlayBottom),
                                     "FIND THE HIDDEN SPOT BY THE GLOW", 16, onGlow),
                  0)
            << look.heat;
        // The glass shows through outside the play area.
        EXPECT_EQ(canvas.pixel(kPlayLeft - 1, kPlayTop + 110), station_ink::greenScreen);
        EXPECT_EQ(canvas.pixel(kPlayLeft + 37, kPlayTop - 1), station_ink::greenScreen);
        EXPECT_EQ(canvas.pixel(kPlayRight, kPlayTop + 110), station_ink::greenScreen);
        EXPECT_EQ(canvas.pixel(kPlayLeft + 37, kPlayBottom), station_ink::greenScreen);
        // Nothing else: between the word and the orders the glow is even.
        EXPECT_EQ(strayPixels(canvas, onGlow,
                              {Rect{0, 0, kCanvasWidth, kPlayTop}, Rect{0, 0, kPlayLeft, kCanvasHeight},
                               Rect{kPlayRight, 0, kCanvasWidth - kPlayRight, kCanvasHeight},
                               Rect{0, kPlayBottom, kCanvasWidth, kCanvasHeight - kPlayBottom},
                               Rect{kPlayLeft, kPlayTop + 10, kPlayArea.w, 60}, kPlayAreaNoteBand}),
                  0)
            << look.heat;
    }
}

TEST(HotColdLook, AQuarterWarmGlowBlendsOverTheGlass) {
    // Heat 0.25: (70, 80, 30) at alpha 90, over the glass (16, 36, 15).
    HotCold d;
    d.level.heat = 0.25;
    Canvas canvas(station_ink::greenScreen);
    d.level.render(canvas.graphics);
    EXPECT_TRUE(glowShows(canvas, kPlayLeft + 37, kPlayTop + 110, Glow{70, 80, 30, 90}))
        << std::hex << canvas.pixel(kPlayLeft + 37, kPlayTop + 110);
    EXPECT_TRUE(glowShows(canvas, kPlayRight - 1, kPlayBottom - 1, Glow{70, 80, 30, 90}));
}

// ---------------------------------------------------------------------------
// The automatic player, and the obvious wrong move

TEST(HotColdSolver, ClearsTheShippedStationOnEveryDifficulty) {
    EXPECT_EQ(unsolvedRuns("hotcold"), "");
}

TEST(HotColdSolver, ASolvedRunOnlyClicksOnWarmMissesThenPasses) {
    for (const std::uint32_t seed : {5489u, 7u}) {
        const Sounds sounds = soundsOfASolvedRun("hotcold", seed);
        ASSERT_GE(sounds.size(), 1u) << seed;
        EXPECT_EQ(sounds, clicksThenPass(sounds.size() - 1)) << seed;
    }
}

TEST(HotColdStation, ClickingInTheColdFiresWithTheFailSound) {
    StationDriver d(shippedRecord("hotcold"), 5489);
    auto wrong = careless<HotColdLevel>([](const HotColdLevel& level, int& x, int& y) {
        const Rect& p = level.playArea;
        // The corner farthest from the spot.
        x = level.spotX < centreX(p) ? p.x + p.w - 5 : p.x + 5;
        y = level.spotY < centreY(p) ? p.y + p.h - 5 : p.y + 5;
        return true;
    });
    EXPECT_EQ(d.play(wrong, 10.0).result, LevelResult::Failed);
    EXPECT_EQ(d.sounds, Sounds{"fail"});
}

}  // namespace
}  // namespace vorn::test
