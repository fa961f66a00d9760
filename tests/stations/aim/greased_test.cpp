// The greased slider: a knob on a track across the play area, and a green
// mark near one end (one parity draw picks which). Held, the knob follows the
// pointer a tenth of the way each frame (6 a second); let go, it slides home
// to the middle a fiftieth of the way each frame (1.2 a second). Kept within
// 0.03 of the mark for more than 0.7 s it passes. It never fires anyone.
// The track is 680 px long, so the knob at v stands 680 v px along it.

#include "stations/aim_stations.h"
#include "support/draws_by_hand.h"
#include "aim_fixtures.h"

#include <gtest/gtest.h>

namespace vorn::test {
namespace {

using Greased = Driver<GreasedLevel>;

constexpr double kFrame = StationDriver::kFrame;

TEST(GreasedStation, TheMarkIsOneParityDrawAndTheTrackSpansThePlayArea) {
    Greased even(5489);   // 3499211612 is even: the right-hand mark
    EXPECT_EQ(even.level.mark, 0.85);
    EXPECT_EQ(even.rng, engineAfter(5489, 1));
    Greased odd(1);       // 1791095845 is odd
    EXPECT_EQ(odd.level.mark, 0.15);
    EXPECT_EQ(odd.rng, engineAfter(1, 1));
    EXPECT_EQ(even.level.value, 0.5);
    EXPECT_EQ(even.level.dwell, 0.0);
    EXPECT_FALSE(even.level.dragging);
    // 80 px in from either side (263 + 80, 840 - 160), 24 px tall round the
    // middle of the play area (405 - 12).
    EXPECT_EQ(even.level.track.x, 343);
    EXPECT_EQ(even.level.track.y, 393);
    EXPECT_EQ(even.level.track.w, 680);
    EXPECT_EQ(even.level.track.h, 24);
}

TEST(GreasedStation, APressOnTheTrackDragsTheKnobTowardThePointer) {
    Greased d;
    const Rect& t = d.level.track;
    d.press(t.x + t.w, kPlayCentreY);   // the right edge is outside the track
    EXPECT_FALSE(d.level.dragging);
    d.release();
    d.press(t.x + 612, kPlayCentreY);   // 0.9 of the way along
    EXPECT_TRUE(d.level.dragging);
    EXPECT_DOUBLE_EQ(d.level.value, 0.5 + (0.9 - 0.5) * 0.1);
    // While held, the pointer may leave the track.
    const double before = d.level.value;
    d.moveTo(t.x + t.w, kPlayTop + 10);
    EXPECT_DOUBLE_EQ(d.level.value, before + (1.0 - before) * 0.1);
    EXPECT_EQ(d.sounds, Sounds{});
}

TEST(GreasedStation, APressJustAboveOrBelowTheTrackDoesNotGrabIt) {
    Greased d;
    const Rect& t = d.level.track;
    d.press(kPlayCentreX, t.y - 1);
    EXPECT_FALSE(d.level.dragging);
    d.release();
    d.press(kPlayCentreX, t.y + t.h);
    EXPECT_FALSE(d.level.dragging);
    d.release();
    d.press(t.x, t.y + t.h - 1);
    EXPECT_TRUE(d.level.dragging);
}

TEST(GreasedStation, AKnobDraggedPastTheEndsStopsAtThem) {
    Greased d;
    const Rect& t = d.level.track;
    d.press(kPlayCentreX, kPlayCentreY);
    d.moveTo(t.x + t.w + 200, kPlayCentreY);   // 1.29 of the way
    d.holdFor(1.0);
    EXPECT_EQ(d.level.value, 1.0);
    d.moveTo(t.x - 200, kPlayCentreY);         // -0.29 of the way
    d.holdFor(1.0);
    EXPECT_EQ(d.level.value, 0.0);
}

TEST(GreasedStation, LettingGoOffTheTrackStopsTheDrag) {
    Greased d;
    const Rect& t = d.level.track;
    d.press(kPlayCentreX, kPlayCentreY);
    d.moveTo(t.x + 204, kPlayCentreY);   // 0.3 along, well clear of either mark
    d.idle(30);
    ASSERT_TRUE(d.level.dragging);
    const double before = d.level.value;
    d.release(kPlayCentreX, kPlayTop + 10);
    EXPECT_FALSE(d.level.dragging);
    EXPECT_DOUBLE_EQ(d.level.value, before + (0.5 - before) * 0.02);
}

TEST(GreasedStation, LettingGoLetsTheKnobSlideHomeAndResetsTheDwell) {
    Greased d;   // mark 0.85
    d.level.value = 0.86;
    d.level.dwell = 0.5;
    d.idle();   // 0.8528: still within 0.03 of the mark
    EXPECT_DOUBLE_EQ(d.level.value, 0.86 + (0.5 - 0.86) * 0.02);
    EXPECT_DOUBLE_EQ(d.level.dwell, 0.5 + kFrame);
    d.idle(4);   // 0.8454, 0.8388, 0.8321, 0.8254: still in the band
    EXPECT_GT(d.level.value, 0.85 - 0.03);
    EXPECT_NEAR(d.level.dwell, 0.5 + 5 * kFrame, 1e-12);
    d.idle();    // 0.8189: the first frame out of the band wipes the dwell
    EXPECT_LT(d.level.value, 0.85 - 0.03);
    EXPECT_EQ(d.level.dwell, 0.0);
    EXPECT_EQ(d.sounds, Sounds{});
}

TEST(GreasedStation, TheBandAroundTheMarkIsStrictlyNarrowerThanThreeHundredths) {
    // Zero-length frames leave the knob where it is: only the band decides.
    Greased inside(1);   // mark 0.15
    inside.level.value = 0.15 + 0.029;
    inside.level.dwell = 0.5;
    inside.frame(0.0);
    EXPECT_EQ(inside.level.dwell, 0.5);

    Greased edge(1);
    edge.level.value = 0.15 + 0.03;   // exactly 0.03 off
    ASSERT_EQ(edge.level.value - 0.15, 0.03);
    edge.level.dwell = 0.5;
    edge.frame(0.0);
    EXPECT_EQ(edge.level.dwell, 0.0);

    Greased below(1);
    below.level.value = 0.15 - 0.029;
    below.level.dwell = 0.5;
    below.frame(0.0);
    EXPECT_EQ(below.level.dwell, 0.5);
}

TEST(GreasedStation, HeldOnTheMarkForSevenTenthsItSolves) {
    // Eighth- and sixteenth-second frames add up exactly.
    Greased d;
    const Rect& t = d.level.track;
    d.press(t.x + 578, kPlayCentreY);   // held on the mark, 0.85 along
    d.level.value = 0.85;               // with the knob already there
    d.level.dwell = 0.0;
    for (int i = 0; i < 5; ++i) {
        EXPECT_EQ(d.frame(0.125), LevelResult::Running) << i;
    }
    EXPECT_EQ(d.frame(0.0625), LevelResult::Running);   // 0.6875 s
    EXPECT_EQ(d.frame(0.0625), LevelResult::Solved);    // 0.75 s
    EXPECT_EQ(d.sounds, Sounds{"pass"});
}

TEST(GreasedStation, ExactlySevenTenthsOnTheMarkIsNotYetEnough) {
    Greased d;
    const Rect& t = d.level.track;
    d.press(t.x + 578, kPlayCentreY);   // held on the mark, 0.85 along
    d.level.value = 0.85;
    d.level.dwell = 0.7 - 0.0625;
    EXPECT_EQ(d.frame(0.0625), LevelResult::Running);
    EXPECT_EQ(d.level.dwell, 0.7);
    EXPECT_EQ(d.frame(1.0 / 1024), LevelResult::Solved);
    EXPECT_EQ(d.sounds, Sounds{"pass"});
}

TEST(GreasedStation, PressedOnTheMarkAndHeldItSolvesWithinASecondAndAHalf) {
    // The knob takes some 24 frames to reach the band, then sits 0.7 s.
    Greased d;
    const Rect& t = d.level.track;
    d.press(t.x + 578, kPlayCentreY);
    EXPECT_EQ(d.holdFor(1.5), LevelResult::Solved);
    EXPECT_GT(d.elapsed, 0.7 + 20 * kFrame);
    EXPECT_EQ(d.sounds, Sounds{"pass"});
}

TEST(GreasedStation, ItNeverFires) {
    Greased d;
    for (int i = 0; i < 50; ++i) {
        EXPECT_EQ(d.click(kPlayLeft + 7 + 17 * i, kPlayTop + 10 + 8 * i), LevelResult::Running);
    }
    EXPECT_EQ(d.sounds, Sounds{});
}

// ---------------------------------------------------------------------------
// What the player sees: a dark track, a green mark bar, a red knob that turns
// green on the mark, with a green bar over it filling as the dwell grows

// Everything the slider may draw on, for a knob at `knobX`.
int strayAround(const Canvas& canvas, const GreasedLevel& level, int markX, int knobX) {
    return strayPixels(canvas, station_ink::black,
                       {roundedBox(level.track), Rect{markX, level.track.y - 10, 8, 44}, discBox(knobX, kPlayCentreY, 16),
                        Rect{knobX - 30, level.track.y - 30, 60, 6}, kPlayAreaNoteBand});
}

TEST(GreasedLook, TrackMarkAndRedKnobBeforeTheDwell) {
    Greased d;   // mark 0.85: the bar 578 - 4 px along, at x 917..924, y 383..426
    const Rect& t = d.level.track;
    Canvas canvas;
    d.level.render(canvas.graphics);
    EXPECT_EQ(canvas.pixel(t.x + 57, kPlayCentreY), station_ink::charcoal);
    // Rounded by 6: the top edge is bare 4 px in and filled from 6 px in.
    EXPECT_EQ(canvas.pixel(t.x + 4, t.y), station_ink::black);
    EXPECT_EQ(canvas.pixel(t.x + 6, t.y), station_ink::charcoal);
    EXPECT_EQ(canvas.pixel(920, 383), station_ink::terminalGreen);
    EXPECT_EQ(canvas.pixel(920, 426), station_ink::terminalGreen);
    EXPECT_EQ(canvas.pixel(917, 386), station_ink::terminalGreen);
    EXPECT_EQ(canvas.pixel(924, 400), station_ink::terminalGreen);
    EXPECT_EQ(canvas.pixel(916, 386), station_ink::black);
    EXPECT_EQ(canvas.pixel(925, 386), station_ink::black);
    EXPECT_EQ(canvas.pixel(920, 382), station_ink::black);
    EXPECT_EQ(canvas.pixel(920, 427), station_ink::black);
    // The knob at 0.5 is in the middle, red while there is no dwell, with no bar.
    EXPECT_EQ(canvas.pixel(kPlayCentreX, kPlayCentreY), station_ink::alarmRed);
    EXPECT_EQ(canvas.pixel(kPlayCentreX + 15, kPlayCentreY), station_ink::alarmRed);
    EXPECT_EQ(canvas.pixel(kPlayCentreX, kPlayCentreY - 15), station_ink::alarmRed);
    EXPECT_EQ(canvas.pixel(kPlayCentreX, kPlayCentreY - 18), station_ink::black);
    EXPECT_EQ(canvas.pixel(kPlayCentreX - 20, t.y - 28), station_ink::black);
    EXPECT_EQ(playAreaNoteUnlike(canvas, kPlayAreaNoteBand,
                                 "DRAG TO THE MARK AND HOLD \xE2\x80\x94 IT'S GREASED"), 0);
    EXPECT_EQ(strayAround(canvas, d.level, 917, kPlayCentreX), 0);
}

TEST(GreasedLook, WithDwellTheKnobIsGreenUnderAGrowingBar) {
    // Half the dwell (0.35 of 0.7): a 30 px bar from 30 px left of the knob,
    // 30 px above the track; the knob a quarter along, 170 px.
    Greased d;
    d.level.dwell = 0.35;
    d.level.value = 0.25;
    const Rect& t = d.level.track;
    const int knobX = t.x + 170;
    Canvas canvas;
    d.level.render(canvas.graphics);
    EXPECT_EQ(canvas.pixel(knobX, kPlayCentreY), station_ink::terminalGreen);
    EXPECT_EQ(canvas.pixel(knobX - 30, t.y - 30), station_ink::terminalGreen);
    EXPECT_EQ(canvas.pixel(knobX - 1, t.y - 25), station_ink::terminalGreen);
    EXPECT_EQ(canvas.pixel(knobX, t.y - 28), station_ink::black);
    EXPECT_EQ(canvas.pixel(knobX - 31, t.y - 28), station_ink::black);
    EXPECT_EQ(canvas.pixel(knobX - 15, t.y - 31), station_ink::black);
    EXPECT_EQ(canvas.pixel(knobX - 15, t.y - 24), station_ink::black);
    EXPECT_EQ(playAreaNoteUnlike(canvas, kPlayAreaNoteBand,
                                 "DRAG TO THE MARK AND HOLD \xE2\x80\x94 IT'S GREASED"), 0);
    EXPECT_EQ(strayAround(canvas, d.level, 917, knobX), 0);
}

TEST(GreasedLook, TheDwellBarGrowsToSixtyPixels) {
    // Mark 0.15 (102 px along); the knob on it at 343 + 102 = 445, so the bar
    // starts at 415.
    Greased d(1);
    d.level.value = 0.15;
    const int barLeft = d.level.track.x + 102 - 30;
    const int barY = d.level.track.y - 28;
    struct Step {
        double dwell;
        int width;
    };
    const Step steps[] = {{0.63, 54}, {0.7, 60}};   // 0.9 and all of 60 px
    for (const Step& s : steps) {
        d.level.dwell = s.dwell;
        Canvas canvas;
        d.level.render(canvas.graphics);
        EXPECT_EQ(canvas.pixel(barLeft + s.width - 1, barY), station_ink::terminalGreen) << s.dwell;
        EXPECT_EQ(canvas.pixel(barLeft + s.width, barY), station_ink::black) << s.dwell;
        EXPECT_EQ(strayAround(canvas, d.level, d.level.track.x + 102 - 4, barLeft + 30), 0);
    }
}

// ---------------------------------------------------------------------------
// The automatic player, and the obvious wrong move

TEST(GreasedSolver, ClearsTheShippedStationOnEveryDifficulty) {
    EXPECT_EQ(unsolvedRuns("greased"), "");
}

TEST(GreasedSolver, ASolvedRunOnlyPasses) {
    EXPECT_EQ(soundsOfASolvedRun("greased", 5489), clicksThenPass(0));
}

TEST(GreasedStation, LettingGoOfTheKnobOnTheMarkNeverSolves) {
    StationDriver d(shippedRecord("greased"), 5489);
    // One quick click on the mark, then hands off: the knob slides home.
    struct Flick final : Solver {
        bool pressed = false;
        Intent decide(const Level& station, const Hand& hand, double) override {
            const auto& level = dynamic_cast<const GreasedLevel&>(station);
            const Rect& tr = level.track;
            pressed = pressed || hand.down;
            return Intent{tr.x + static_cast<int>(tr.w * level.mark), centreY(tr), !pressed};
        }
    } flick;
    EXPECT_EQ(d.play(flick, 8.0).result, LevelResult::Running);
    EXPECT_EQ(d.sounds, Sounds{});
}

}  // namespace
}  // namespace vorn::test
