// The safety exam ("quiz"): four answer boxes under a heading; every
// labelled answer is wrong and fires the player, the box left blank passes.
// Covers the layout and the one draw that picks the blank box, the verdicts
// and their sounds, presses beside the boxes or without a fresh press (they
// do nothing), and what the exam shows: the heading, the labels A, B and C
// in order on the labelled boxes, the blank box bare, the note at the foot.
//
// Positions, worked once: box i is {263 + 60, 190 + 70 + 62 i, 840 - 120,
// 46}, so the boxes run down from y 260 in steps of 62 and end at 492.

#include "stations/paperwork/paperwork_fixtures.h"
#include "support/draws_by_hand.h"

#include <gtest/gtest.h>

#include <cstdint>
#include <utility>

namespace vorn::test::paperwork {
namespace {

// Inside a box, clear of its rounded corners.
Rect faceOf(const Rect& b) { return Rect{b.x + 6, b.y, b.w - 12, b.h}; }

TEST(QuizStation, FourBoxesAndTheBlankOneIsOneDrawModuloFour) {
    for (std::uint32_t seed : {1u, 2u, 3u, 4u, 5489u}) {
        Driver<QuizLevel> d(seed);
        EXPECT_EQ(d.level.answer, static_cast<int>(engineAfter(seed, 0)() % 4u)) << seed;
        EXPECT_EQ(d.rng, engineAfter(seed, 1)) << seed;
    }
    Driver<QuizLevel> d;
    EXPECT_EQ(d.level.count, 4);
    for (int i = 0; i < 4; ++i) {
        EXPECT_EQ(d.level.boxes[i].x, kPlayLeft + 60) << i;
        EXPECT_EQ(d.level.boxes[i].y, kPlayTop + 70 + 62 * i) << i;
        EXPECT_EQ(d.level.boxes[i].w, 720) << i;
        EXPECT_EQ(d.level.boxes[i].h, 46) << i;
    }
}

TEST(QuizStation, TheBlankBoxPassesWithThePassSoundAlone) {
    Driver<QuizLevel> d(3);
    EXPECT_EQ(d.clickCentre(d.level.boxes[d.level.answer]), LevelResult::Solved);
    EXPECT_EQ(d.sounds, Sounds{"pass"});
}

TEST(QuizStation, EachLabelledBoxFailsWithTheFailSoundAlone) {
    for (int wrong : {0, 1, 3}) {
        Driver<QuizLevel> d(3);   // 2365658986 % 4 = 2: the third box is blank
        ASSERT_EQ(d.level.answer, 2);
        EXPECT_EQ(d.clickCentre(d.level.boxes[wrong]), LevelResult::Failed) << wrong;
        EXPECT_EQ(d.sounds, Sounds{"fail"}) << wrong;
    }
}

TEST(QuizStation, ClicksBesideTheBoxesMakeNoSound) {
    // The gaps between boxes, their right, left and bottom edges, the
    // heading and the floor under the last box.
    Driver<QuizLevel> d(3);
    const Rect& first = d.level.boxes[0];
    const Rect& last = d.level.boxes[3];
    EXPECT_EQ(d.clicksNoticed({{first.x + 177, first.y + first.h}, {first.x + 177, first.y + 61},
                               {first.x + first.w, first.y + 10}, {first.x - 1, first.y + 10},
                               {kPlayCentreX, kPlayTop + 34}, {kPlayCentreX, last.y + last.h},
                               {kPlayCentreX, kPlayBottom - 20}}), "");
}

TEST(QuizStation, OnlyAPressCountsNotAButtonHeldOverABox) {
    Driver<QuizLevel> d(3);
    slideOntoWithoutPressing(d, centreX(d.level.boxes[2]), centreY(d.level.boxes[2]));   // the blank one
    slideOntoWithoutPressing(d, centreX(d.level.boxes[0]), centreY(d.level.boxes[0]));
}

// ---------------------------------------------------------------------------
// What the exam shows

// The labels fill the labelled boxes top to bottom in order; the blank box
// is bronze all over, so the answer key's "D) Both A and C" is never written.
TEST(QuizStation, LabelsAreAThenBThenCAndTheBlankBoxIsBare) {
    const char* const labels[] = {"A) Always", "B) Never", "C) Only on Tuesdays"};
    for (std::uint32_t seed : {1u, 2u, 3u, 4u, 5u, 6u}) {
        Driver<QuizLevel> d(seed);
        const Shot shot(d.level);
        int next = 0;
        for (int i = 0; i < 4; ++i) {
            const Rect& b = d.level.boxes[i];
            if (i == d.level.answer) {
                EXPECT_EQ(pixelsOtherThan(shot.canvas, faceOf(b), station_ink::bronze), 0)
                    << "seed " << seed << " box " << i;
                continue;
            }
            EXPECT_EQ(shot.unlikeText(faceOf(b), station_ink::bronze, labels[next], b.x + 16, b.y + 12,
                                      TextSize::Normal, station_ink::ink, false, false),
                      0)
                << "seed " << seed << " box " << i;
            ++next;
        }
    }
}

TEST(QuizStation, TheBoxesAreBronzeWithCornersRoundedBySix) {
    Driver<QuizLevel> d;
    const Shot shot(d.level);
    for (const Rect& b : d.level.boxes) {
        EXPECT_EQ(shot.at(b.x + 2, b.y + b.h / 2), station_ink::bronze);
        EXPECT_EQ(shot.at(b.x + b.w - 1, b.y + b.h / 2), station_ink::bronze);
        EXPECT_EQ(shot.at(b.x, b.y), station_ink::black);
        EXPECT_EQ(shot.at(b.x + b.w, b.y + b.h / 2), station_ink::black);
    }
}

TEST(QuizStation, TheHeadingAsksForTheCorrectAnswerInGold) {
    Driver<QuizLevel> d;
    const Shot shot(d.level);
    const Rect aboveBoxes{kPlayLeft, kPlayTop, kPlayArea.w, d.level.boxes[0].y - kPlayTop};
    EXPECT_EQ(shot.unlikeText(aboveBoxes, station_ink::black, "SAFETY EXAM: SELECT THE CORRECT ANSWER",
                              kPlayCentreX, kPlayTop + 34, TextSize::Normal, station_ink::gold, true, false),
              0);
}

TEST(QuizStation, TheNoteAtTheFootSaysEveryAnswerIsWrong) {
    Driver<QuizLevel> d;
    const Shot shot(d.level);
    const Rect& last = d.level.boxes[3];
    const int underBoxes = last.y + last.h + 1;
    const Rect belowBoxes{kPlayLeft, underBoxes, kPlayArea.w, kPlayBottom - underBoxes};
    EXPECT_EQ(playAreaNoteUnlike(shot.canvas, belowBoxes, "EVERY ANSWER IS WRONG"),
              0);
}

// ---------------------------------------------------------------------------
// Played by a hand

TEST(QuizStation, AHandThatClicksALabelledAnswerIsFired) {
    StationDriver d(shippedRecord("quiz"), 4);
    const auto& level = dynamic_cast<const QuizLevel&>(*d.station);
    Clicker labelled = clickerOn(level.boxes[(level.answer + 3) % 4]);
    EXPECT_EQ(d.play(labelled, 10.0).result, LevelResult::Failed);
    EXPECT_TRUE(d.lastSoundWasFail());
}

}  // namespace
}  // namespace vorn::test::paperwork
