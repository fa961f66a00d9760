// The petty-cash safe ("liarkeypad"): a three-digit code printed openly over
// ten keys that each type one more than they show, so the honest key is
// always the wrong one. The code a seed gives is worked out longhand with
// the run's draw rules; the safe is looked at word by word and dot by dot.

#include "stations/code/code_fixtures.h"
#include "stations/code_stations.h"
#include "support/board_probe.h"
#include "support/draws_by_hand.h"
#include "support/play_area.h"
#include "support/station_driver.h"
#include "support/text_probe.h"

#include <gtest/gtest.h>

namespace vorn::test {
namespace {

using LiarKeypadStation = PadFixture<LiarKeypadLevel>;

// The three progress dots sit 20 apart round the play area's middle, 74
// below its top.
constexpr int kDotsY = kPlayTop + 74;

void setCode(LiarKeypadLevel& pad, int a, int b, int c) {
    pad.code[0] = a;
    pad.code[1] = b;
    pad.code[2] = c;
}

TEST_F(LiarKeypadStation, CodeIsThreeUniformDigits) {
    Rng ref(77);
    for (int i = 0; i < 3; ++i) {
        EXPECT_EQ(pad.code[i], uniformBelowByHand(ref, 10)) << i;
    }
    EXPECT_EQ(d.rng, ref);
    EXPECT_EQ(pad.progress, 0);
}

TEST_F(LiarKeypadStation, NineKeysInABlockAndTheZeroAloneBelowTheMiddle) {
    // Keys of 84 x 64, 98 apart across and 78 down: the middle column's
    // starts 42 left of the centre, so the first 140 left of it.
    for (int k = 0; k < 9; ++k) {
        EXPECT_EQ(pad.keys[k].x, kPlayCentreX - 140 + 98 * (k % 3)) << k;
        EXPECT_EQ(pad.keys[k].y, kPlayTop + 90 + 78 * (k / 3)) << k;
        EXPECT_EQ(pad.keys[k].w, 84);
        EXPECT_EQ(pad.keys[k].h, 64);
    }
    // The zero under the middle column, a row below the block (90 + 3 x 78).
    EXPECT_EQ(pad.keys[9].x, kPlayCentreX - 42);
    EXPECT_EQ(pad.keys[9].y, kPlayTop + 324);
    EXPECT_EQ(pad.keys[9].w, 84);
    EXPECT_EQ(pad.keys[9].h, 64);
}

TEST_F(LiarKeypadStation, TheZeroKeyTakesPressesOnlyWithinItsEightyFourPixels) {
    pad.code[0] = 1;   // what the key labelled 0 types
    const Rect& zero = pad.keys[9];
    EXPECT_EQ(clickAt(zero.x + 84, zero.y + 6), LevelResult::Running);
    EXPECT_EQ(clickAt(zero.x - 1, zero.y + 6), LevelResult::Running);
    EXPECT_EQ(clickAt(zero.x + 19, zero.y + 64), LevelResult::Running);
    EXPECT_EQ(pad.progress, 0);
    EXPECT_EQ(d.sounds, Sounds{});
    EXPECT_EQ(clickAt(zero.x + 83, zero.y + 63), LevelResult::Running);
    EXPECT_EQ(pad.progress, 1);
}

TEST_F(LiarKeypadStation, EveryKeyTypesOneMoreThanItShowsAndNineTypesZero) {
    for (int k = 0; k < 10; ++k) {
        EXPECT_EQ(LiarKeypadLevel::typedDigit(k), (LiarKeypadLevel::shownDigit(k) + 1) % 10);
    }
    EXPECT_EQ(LiarKeypadLevel::shownDigit(0), 1);
    EXPECT_EQ(LiarKeypadLevel::shownDigit(8), 9);
    EXPECT_EQ(LiarKeypadLevel::typedDigit(8), 0);
    EXPECT_EQ(LiarKeypadLevel::shownDigit(9), 0);
    EXPECT_EQ(LiarKeypadLevel::typedDigit(9), 1);
}

TEST_F(LiarKeypadStation, ForTheCodeZeroZeroZeroTheNineIsPressedThreeTimes) {
    setCode(pad, 0, 0, 0);
    EXPECT_EQ(pressKey(8), LevelResult::Running);   // labelled 9
    EXPECT_EQ(heard, Sounds{"click"});
    EXPECT_EQ(pressKey(8), LevelResult::Running);
    EXPECT_EQ(heard, Sounds{"click"});
    EXPECT_EQ(pad.progress, 2);
    EXPECT_EQ(pressKey(8), LevelResult::Solved);
    EXPECT_EQ(heard, (Sounds{"click", "pass"}));
}

TEST_F(LiarKeypadStation, ACodeDigitOneIsTypedWithTheKeyLabelledZero) {
    pad.code[0] = 1;
    EXPECT_EQ(pressKey(9), LevelResult::Running);
    EXPECT_EQ(pad.progress, 1);
    EXPECT_EQ(d.sounds, Sounds{"click"});
}

TEST_F(LiarKeypadStation, TheKeyShowingTheDigitAlwaysFails) {
    for (int digit = 0; digit <= 9; ++digit) {
        Driver<LiarKeypadLevel> safe(5);
        safe.level.code[0] = digit;
        const int honest = digit == 0 ? 9 : digit - 1;
        ASSERT_EQ(LiarKeypadLevel::shownDigit(honest), digit);
        const Rect& k = safe.level.keys[honest];
        EXPECT_EQ(safe.click(k.x + 10, k.y + 10), LevelResult::Failed) << digit;
        EXPECT_EQ(safe.sounds, Sounds{"fail"}) << digit;
    }
}

TEST_F(LiarKeypadStation, AWrongKeyLaterInTheCodeStillFails) {
    setCode(pad, 5, 5, 7);
    EXPECT_EQ(pressKey(3), LevelResult::Running);   // labelled 4, types 5
    EXPECT_EQ(pressKey(3), LevelResult::Running);
    EXPECT_EQ(pressKey(3), LevelResult::Failed);
    EXPECT_EQ(d.sounds, (Sounds{"click", "click", "fail"}));
}

TEST_F(LiarKeypadStation, ClicksOffTheKeysAreIgnored) {
    const Rect& k = pad.keys[9];
    EXPECT_EQ(clickAt(k.x - 1, k.y + 5), LevelResult::Running);
    EXPECT_EQ(clickAt(kPlayCentreX, kPlayTop + 60), LevelResult::Running);
    EXPECT_EQ(pad.progress, 0);
    EXPECT_EQ(d.sounds, Sounds{});
}

// The code is shown honestly: large and gold, centred on the play area 40
// below its top, two blanks after the colon.
TEST_F(LiarKeypadStation, TheHeaderShowsTheTrueCode) {
    setCode(pad, 3, 0, 8);
    StationPicture p(pad);
    const Rect header{kPlayLeft, kPlayTop + 15, kPlayRight - kPlayLeft, 48};
    EXPECT_EQ(pixelsUnlikeText(p, header, station_ink::black, "ENTER CODE:  3 0 8", kPlayCentreX,
                               kPlayTop + 40, TextSize::Large, station_ink::gold, true, true),
              0);
}

// Every key's face, exactly: key k of the block shows k + 1, the lone key
// shows 0, each digit large and near-black, centred on its key, on a brass
// plate with corners of radius 6.
TEST_F(LiarKeypadStation, EveryKeyShowsOneLessThanItTypes) {
    StationPicture p(pad);
    const char* const shown[10] = {"1", "2", "3", "4", "5", "6", "7", "8", "9", "0"};
    for (int k = 0; k < 10; ++k) {
        const Rect& r = pad.keys[k];
        EXPECT_EQ(bareAlongTopRow(p, r, station_ink::oldBrass), 6) << "key " << k;
        EXPECT_EQ(p.at(r.x + 8, r.y + 8), station_ink::oldBrass) << "key " << k;
        EXPECT_EQ(p.at(r.x + r.w - 4, r.y + r.h - 4), station_ink::oldBrass) << "key " << k;
        EXPECT_EQ(p.at(r.x - 1, r.y + 32), station_ink::black) << "key " << k;
        EXPECT_EQ(pixelsUnlikeText(p, Rect{r.x + 6, r.y, 72, 64}, station_ink::oldBrass, shown[k],
                                   r.x + r.w / 2, r.y + r.h / 2, TextSize::Large, station_ink::ink,
                                   true, true),
                  0)
            << "key " << k;
    }
}

// Three dots of radius 6 count the digits typed: green for each one in,
// soot for the rest, black between them.
TEST_F(LiarKeypadStation, TheDotsCountTheDigitsIn) {
    pad.progress = 1;
    StationPicture p(pad);
    const int x[3] = {kPlayCentreX - 20, kPlayCentreX, kPlayCentreX + 20};
    const Color want[3] = {station_ink::terminalGreen, station_ink::soot, station_ink::soot};
    for (int i = 0; i < 3; ++i) {
        // The middle row reaches 6 to either side and one further is black.
        // Up and down the rows narrow to a single point at 6, which the
        // renderer leaves out, so there the dot ends at 5.
        EXPECT_EQ(p.at(x[i], kDotsY), want[i]) << "dot " << i;
        EXPECT_EQ(p.at(x[i] - 6, kDotsY), want[i]) << "dot " << i;
        EXPECT_EQ(p.at(x[i] + 6, kDotsY), want[i]) << "dot " << i;
        EXPECT_EQ(p.at(x[i], kDotsY - 5), want[i]) << "dot " << i;
        EXPECT_EQ(p.at(x[i], kDotsY + 5), want[i]) << "dot " << i;
        EXPECT_EQ(p.at(x[i] - 7, kDotsY), station_ink::black) << "dot " << i;
        EXPECT_EQ(p.at(x[i] + 7, kDotsY), station_ink::black) << "dot " << i;
        EXPECT_EQ(p.at(x[i], kDotsY - 6), station_ink::black) << "dot " << i;
        EXPECT_EQ(p.at(x[i], kDotsY + 6), station_ink::black) << "dot " << i;
    }
    // Two digits in, the second dot turns green too.
    pad.progress = 2;
    StationPicture later(pad);
    EXPECT_EQ(later.at(x[1], kDotsY), station_ink::terminalGreen);
    EXPECT_EQ(later.at(x[2], kDotsY), station_ink::soot);
}

TEST_F(LiarKeypadStation, TheLineOfOrdersSaysTheKeysLie) {
    StationPicture p(pad);
    EXPECT_EQ(playAreaNoteUnlike(p, playAreaRows(pad.keys[9].y + pad.keys[9].h + 1, kPlayBottom + 40),
                                 "THE KEYS LIE \xE2\x80\x94 EACH TYPES ONE MORE THAN IT SHOWS", 16), 0);
}

TEST_F(LiarKeypadStation, TheAutomaticPlayerClearsItOnEveryDifficulty) {
    EXPECT_EQ(unsolvedRuns("liarkeypad"), "");
}

}  // namespace
}  // namespace vorn::test
