// The patch panel ("wires"): four wires dragged from their plugs on the
// left to the sockets on the right. Position decides, never colour: the
// sockets' colours are shuffled and every label names the next colour
// round, so a player who reads either is fired. The shuffle a seed deals is
// worked out longhand with the run's draw rules.

#include "stations/grid/grid_fixtures.h"
#include "stations/grid_stations.h"
#include "support/board_probe.h"
#include "support/draws_by_hand.h"
#include "support/human_hand.h"
#include "support/play_area.h"
#include "support/solvers/family_solvers.h"
#include "support/station_driver.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <utility>

namespace vorn::test {
namespace {

// The wire palette as it must read, by colour index.
struct Shade {
    Color colour;
    const char* label;
};
constexpr Shade kShades[8] = {
    {station_ink::alarmRed, "RED"},   {station_ink::terminalGreen, "GRN"},
    {grid_ink::amber, "AMB"},         {station_ink::signalBlue, "BLU"},
    {grid_ink::purple, "PUR"},        {grid_ink::cyan, "CYN"},
    {grid_ink::white, "WHT"},         {grid_ink::brown, "BRN"},
};

// The panel on the default seed, with wires dragged plug to socket.
struct WiresStation : ::testing::Test {
    Driver<WiresLevel> d;
    WiresLevel& w = d.level;
    Sounds heard;   // what the last drag asked for, press to release

    // Wire `from` picked up by the middle of its plug and let go over the
    // middle of `to`.
    LevelResult drag(int from, const Rect& to) {
        const std::size_t before = d.sounds.size();
        const Rect& l = w.leftPlugs[from];
        const LevelResult r = d.drag(centreX(l), centreY(l), centreX(to), centreY(to));
        heard = d.soundsSince(before);
        return r;
    }
};

// The first seed from 1 whose panel is as the test needs it.
template <typename Wanted>
std::uint32_t firstSeedWhere(Wanted wanted) {
    std::uint32_t seed = 1;
    while (!wanted(Driver<WiresLevel>(seed).level)) {
        ++seed;
    }
    return seed;
}

// The socket the shuffle put red in.
int redSocket(const WiresLevel& w) {
    return static_cast<int>(std::find(w.rightColour, w.rightColour + 4, 0) - w.rightColour);
}

TEST_F(WiresStation, FourPlugsEachSideSixtyFourApart) {
    EXPECT_EQ(w.wireCount, 4);
    for (int i = 0; i < 4; ++i) {
        const Rect& l = w.leftPlugs[i];
        const Rect& r = w.rightPlugs[i];
        EXPECT_EQ(l.x, kPlayLeft + 72);
        EXPECT_EQ(l.y, kPlayTop + 42 + 64 * i);
        EXPECT_EQ(r.x, kPlayRight - 108);
        EXPECT_EQ(r.y, kPlayTop + 42 + 64 * i);
        EXPECT_EQ(l.w, 36);
        EXPECT_EQ(l.h, 36);
        EXPECT_EQ(r.w, 36);
        EXPECT_EQ(r.h, 36);
        EXPECT_EQ(w.leftColour[i], i);
        EXPECT_FALSE(w.connected[i]);
    }
    EXPECT_EQ(w.dragging, -1);
}

TEST_F(WiresStation, TheRightColoursAreTheFirstFourShuffledByTheRunsRule) {
    bool sawMoved = false;
    for (std::uint32_t seed = 1; seed <= 60; ++seed) {
        Driver<WiresLevel> dealt(seed);
        Rng ref(seed);
        int order[8] = {0, 1, 2, 3, 4, 5, 6, 7};
        for (int k = 1; k <= 3; ++k) {
            const int j = uniformBelowByHand(ref, static_cast<std::uint32_t>(k + 1));
            std::swap(order[k], order[j]);
        }
        for (int i = 0; i < 4; ++i) {
            EXPECT_EQ(dealt.level.rightColour[i], order[i]) << "seed " << seed;
            sawMoved = sawMoved || order[i] != i;
        }
        EXPECT_EQ(dealt.rng, ref) << "seed " << seed;
    }
    EXPECT_TRUE(sawMoved);
}

TEST_F(WiresStation, ThePaletteHoldsItsEightColoursAndWords) {
    for (int i = 0; i < 8; ++i) {
        EXPECT_EQ(WiresLevel::kPalette[i].colour, kShades[i].colour) << i;
        EXPECT_STREQ(WiresLevel::kPalette[i].label, kShades[i].label) << i;
    }
}

TEST_F(WiresStation, AllFourByPositionSolves) {
    for (int i = 0; i < 3; ++i) {
        ASSERT_EQ(drag(i, w.rightPlugs[i]), LevelResult::Running);
        EXPECT_TRUE(w.connected[i]);
        EXPECT_EQ(w.dragging, -1);
        EXPECT_EQ(heard, Sounds{"click"}) << "wire " << i;
    }
    EXPECT_EQ(drag(3, w.rightPlugs[3]), LevelResult::Solved);
    EXPECT_EQ(heard, (Sounds{"click", "pass"}));
}

TEST_F(WiresStation, AWrongSocketFires) {
    EXPECT_EQ(drag(1, w.rightPlugs[2]), LevelResult::Failed);
    EXPECT_EQ(heard, Sounds{"fail"});
}

// A player who matches colours: wire 0 (red) to the red socket, which the
// shuffle put in another row.
TEST_F(WiresStation, TheSocketOfTheWiresOwnColourFires) {
    Driver<WiresLevel> other(firstSeedWhere([](const WiresLevel& w) { return redSocket(w) != 0; }));
    const Rect& l = other.level.leftPlugs[0];
    const Rect& r = other.level.rightPlugs[redSocket(other.level)];
    EXPECT_EQ(other.drag(centreX(l), centreY(l), centreX(r), centreY(r)), LevelResult::Failed);
    EXPECT_EQ(other.sounds, Sounds{"fail"});
}

TEST_F(WiresStation, PickingUpAWireIsSilent) {
    const Rect& l = w.leftPlugs[2];
    EXPECT_EQ(d.press(centreX(l), centreY(l)), LevelResult::Running);
    EXPECT_EQ(w.dragging, 2);
    EXPECT_EQ(d.moveTo(kPlayCentreX, kPlayTop + 110), LevelResult::Running);
    EXPECT_EQ(d.sounds, Sounds{});
}

TEST_F(WiresStation, APlugTakesPressesOnlyInsideItsThirtySixPixels) {
    const Rect& l = w.leftPlugs[1];
    // One past each edge: left, right, above, below.
    const int outside[4][2] = {
        {l.x - 1, l.y + 14}, {l.x + 36, l.y + 14}, {l.x + 15, l.y - 1}, {l.x + 15, l.y + 36}};
    for (const auto& at : outside) {
        d.press(at[0], at[1]);
        EXPECT_EQ(w.dragging, -1) << at[0] << "," << at[1];
        d.release();
    }
    d.press(l.x + 35, l.y + 35);
    EXPECT_EQ(w.dragging, 1);
    d.release(kPlayCentreX, kPlayTop + 110);
    d.press(l.x, l.y);
    EXPECT_EQ(w.dragging, 1);
}

TEST_F(WiresStation, ReleasingOverEmptySpaceOrALeftPlugCancelsWithoutPenalty) {
    EXPECT_EQ(drag(0, Rect{kPlayCentreX, kPlayTop + 110, 1, 1}), LevelResult::Running);
    EXPECT_EQ(w.dragging, -1);
    EXPECT_FALSE(w.connected[0]);
    EXPECT_EQ(drag(0, w.leftPlugs[2]), LevelResult::Running);
    EXPECT_EQ(w.dragging, -1);
    EXPECT_FALSE(w.connected[0]);
    EXPECT_FALSE(w.connected[2]);
    // Without penalty means without a sound, too.
    EXPECT_EQ(d.sounds, Sounds{});
    // Just past a socket's right edge is empty space as well.
    const Rect& r0 = w.rightPlugs[0];
    d.press(centreX(w.leftPlugs[0]), centreY(w.leftPlugs[0]));
    EXPECT_EQ(d.release(r0.x + 36, r0.y + 10), LevelResult::Running);
    EXPECT_FALSE(w.connected[0]);
    EXPECT_EQ(d.sounds, Sounds{});
    // The wire is still in the player's hand to try again.
    EXPECT_EQ(drag(0, w.rightPlugs[0]), LevelResult::Running);
    EXPECT_TRUE(w.connected[0]);
    EXPECT_EQ(heard, Sounds{"click"});
}

TEST_F(WiresStation, AConnectedPlugStartsNoDrag) {
    ASSERT_EQ(drag(0, w.rightPlugs[0]), LevelResult::Running);
    const std::size_t before = d.sounds.size();
    const Rect& l = w.leftPlugs[0];
    d.press(centreX(l), centreY(l));
    EXPECT_EQ(w.dragging, -1);
    // So dropping it on a wrong socket is no drop at all.
    EXPECT_EQ(d.release(centreX(w.rightPlugs[1]), centreY(w.rightPlugs[1])), LevelResult::Running);
    EXPECT_FALSE(w.connected[1]);
    EXPECT_EQ(d.soundsSince(before), Sounds{});
}

TEST_F(WiresStation, ReleasingWithoutADragDoesNothing) {
    const Rect& r = w.rightPlugs[1];
    d.press(kPlayCentreX, kPlayTop + 110);
    EXPECT_EQ(w.dragging, -1);
    EXPECT_EQ(d.release(centreX(r), centreY(r)), LevelResult::Running);
    EXPECT_EQ(d.sounds, Sounds{});
}

TEST_F(WiresStation, APressAndReleaseInOneFrameIsADropOnTheSpot) {
    // Both button events reach the same frame: the wire is picked up and
    // let go over its own plug, which is no socket.
    const Rect& l = w.leftPlugs[1];
    pushMotion(centreX(l), centreY(l));
    pushButton(true, centreX(l), centreY(l));
    pushButton(false, centreX(l), centreY(l));
    EXPECT_EQ(d.frame(), LevelResult::Running);
    EXPECT_EQ(w.dragging, -1);
    EXPECT_FALSE(w.connected[1]);
    EXPECT_EQ(d.sounds, Sounds{});
}

TEST_F(WiresStation, WireZeroGoesToSocketZeroWhateverItsColourAndLabelSay) {
    // A deal in which socket 0 is not red, and its label (naming the colour
    // after its own) does not say red either.
    Driver<WiresLevel> other(firstSeedWhere([](const WiresLevel& w) {
        return w.rightColour[0] != 0 && (w.rightColour[0] + 1) % 4 != 0;
    }));
    const Rect& l = other.level.leftPlugs[0];
    const Rect& r = other.level.rightPlugs[0];
    const int shown = other.level.rightColour[0];
    EXPECT_EQ(other.drag(centreX(l), centreY(l), centreX(r), centreY(r)), LevelResult::Running);
    EXPECT_TRUE(other.level.connected[0]);
    EXPECT_EQ(other.sounds, Sounds{"click"});
    // And the player really sees that socket in another colour.
    StationPicture p(other.level);
    EXPECT_EQ(p.at(centreX(r), centreY(r)), kShades[shown].colour);
    EXPECT_NE(p.at(centreX(r), centreY(r)), station_ink::alarmRed);
}

// Plugs and sockets are plates of 36 with corners of radius 6, each in its
// colour: the left ones red, green, amber, blue from the top, the sockets
// as shuffled.
TEST_F(WiresStation, EachPlugAndSocketShowsItsColour) {
    const int sockets[4] = {2, 0, 3, 1};
    std::copy(std::begin(sockets), std::end(sockets), std::begin(w.rightColour));
    StationPicture p(w);
    for (int i = 0; i < 4; ++i) {
        const Rect& l = w.leftPlugs[i];
        const Rect& r = w.rightPlugs[i];
        const Color left = kShades[i].colour;
        const Color right = kShades[sockets[i]].colour;
        EXPECT_EQ(p.at(centreX(l), centreY(l)), left) << "plug " << i;
        EXPECT_EQ(p.at(l.x, l.y + 18), left) << "plug " << i;
        EXPECT_EQ(p.at(l.x + 35, l.y + 35 - 6), left) << "plug " << i;
        EXPECT_EQ(p.at(l.x - 1, l.y + 18), station_ink::black) << "plug " << i;
        EXPECT_EQ(p.at(l.x + 18, l.y + 37), station_ink::black) << "plug " << i;
        EXPECT_EQ(bareAlongTopRow(p, l, left), 6) << "plug " << i;
        EXPECT_EQ(p.at(centreX(r), centreY(r)), right) << "socket " << i;
        EXPECT_EQ(p.at(r.x + 35, r.y + 18), right) << "socket " << i;
        EXPECT_EQ(p.at(r.x + 37, r.y + 18), station_ink::black) << "socket " << i;
        EXPECT_EQ(bareAlongTopRow(p, r, right), 6) << "socket " << i;
    }
}

// A connected wire is a green line from the right edge of its plug to the
// left edge of its socket, at the plugs' middle (y + 18); a line 4 thick
// is drawn as five rows, y + 16 to y + 20. Unconnected wires show nothing.
TEST_F(WiresStation, AConnectedWireRunsGreenFromPlugToSocket) {
    w.rightColour[0] = 2;
    w.rightColour[1] = 0;
    w.rightColour[2] = 3;
    w.rightColour[3] = 1;
    w.connected[1] = true;
    w.connected[3] = true;
    StationPicture p(w);
    const Color green = station_ink::terminalGreen;
    for (int i = 0; i < 4; ++i) {
        const Rect& l = w.leftPlugs[i];
        const Rect& r = w.rightPlugs[i];
        const int y = l.y + 18;
        if (!w.connected[i]) {
            EXPECT_EQ(p.at(kPlayCentreX, y), station_ink::black) << "wire " << i;
            EXPECT_EQ(p.at(l.x + 36, y), station_ink::black) << "wire " << i;
            continue;
        }
        EXPECT_EQ(p.at(l.x + 35, y), kShades[i].colour) << "wire " << i;
        EXPECT_EQ(p.at(l.x + 36, y), green) << "wire " << i;
        EXPECT_EQ(p.at(l.x + 40, y), green) << "wire " << i;
        EXPECT_EQ(p.at(kPlayCentreX, y), green) << "wire " << i;
        EXPECT_EQ(p.at(r.x, y), green) << "wire " << i;
        EXPECT_EQ(p.at(r.x + 1, y), kShades[w.rightColour[i]].colour) << "wire " << i;
        EXPECT_EQ(p.at(kPlayCentreX, y - 2), green) << "wire " << i;
        EXPECT_EQ(p.at(kPlayCentreX, y + 2), green) << "wire " << i;
        EXPECT_EQ(p.at(kPlayCentreX, y - 3), station_ink::black) << "wire " << i;
        EXPECT_EQ(p.at(kPlayCentreX, y + 3), station_ink::black) << "wire " << i;
    }
    EXPECT_EQ(playAreaNoteUnlike(p, playAreaRows(w.leftPlugs[3].y + 37, kPlayBottom + 40),
                                 "MATCH BY POSITION", 20), 0);
}

// Each label word on its own, exactly: small and cream, 44 left of a plug
// and 40 right of a socket, 8 below its top. Each names the colour after
// the plug's own: red says GRN, green AMB, amber BLU, blue wraps to RED.
TEST_F(WiresStation, TheLabelsReadTheNextColoursWord) {
    const int sockets[4] = {3, 2, 0, 1};
    std::copy(std::begin(sockets), std::end(sockets), std::begin(w.rightColour));
    StationPicture p(w);
    const char* const left[4] = {"GRN", "AMB", "BLU", "RED"};
    const char* const right[4] = {"RED", "BLU", "GRN", "AMB"};
    for (int i = 0; i < 4; ++i) {
        const Rect& l = w.leftPlugs[i];
        const Rect& r = w.rightPlugs[i];
        EXPECT_EQ(smallWordsUnlike(p, Rect{kPlayLeft, l.y, l.x - kPlayLeft, 36}, left[i], l.x - 44,
                                   l.y + 8, grid_ink::labelCream, false),
                  0)
            << left[i];
        EXPECT_EQ(smallWordsUnlike(p, Rect{r.x + 37, r.y, kPlayRight - r.x - 37, 36}, right[i],
                                   r.x + 40, r.y + 8, grid_ink::labelCream, false),
                  0)
            << right[i];
    }
}

TEST_F(WiresStation, TheAutomaticPlayerClearsItOnEveryDifficulty) {
    EXPECT_EQ(unsolvedRuns("wires"), "");
}

}  // namespace
}  // namespace vorn::test
