#pragma once
// The stations' colours written out as plain numbers, once, for every
// station test. The game keeps its own names for them in its palette; a test
// that borrowed those would follow any change made to them, so a green
// turned grey would still pass. Here a thrown switch is (35, 112, 69)
// whatever the game calls it. A colour only one family draws is named in
// that family's own test header.

#include "gfx/color.h"

namespace vorn::test::station_ink {

constexpr Color black = rgb(0, 0, 0);
constexpr Color white = rgb(255, 255, 255);
constexpr Color ink = rgb(20, 20, 20);                 // dark text on bright plates
constexpr Color gold = rgb(255, 216, 107);
constexpr Color brass = rgb(199, 154, 53);
constexpr Color terminalGreen = rgb(70, 224, 138);
constexpr Color dimGreen = rgb(42, 134, 82);
constexpr Color alarmRed = rgb(255, 58, 42);
constexpr Color greenScreen = rgb(16, 36, 15);
constexpr Color casingBeige = rgb(216, 199, 156);
constexpr Color orange = rgb(255, 170, 46);           // levers still up, gauge levels, knobs off their marks
// The header's instruction line over the play area (the catalogue's words),
// in the same orange.
constexpr Color headerInstruction = orange;
// A station's own note at the foot of its play area.
constexpr Color playAreaNote = rgb(178, 119, 32);

constexpr Color darkBrass = rgb(99, 77, 26);          // rims, plates, unlit cells
constexpr Color charcoal = rgb(30, 30, 30);           // empty tracks and sockets
constexpr Color darkGreen = rgb(35, 112, 69);         // a thrown switch, a ready grip
constexpr Color paleGold = rgb(229, 194, 96);         // plates and buttons to press
constexpr Color bronze = rgb(109, 84, 29);            // idle grips and keys
constexpr Color oldBrass = rgb(119, 92, 31);          // fuse holders, idle keys
constexpr Color signalBlue = rgb(120, 160, 255);
constexpr Color unlitKey = rgb(89, 69, 23);
constexpr Color soot = rgb(28, 28, 28);               // empty tiles and dots
constexpr Color litBrass = rgb(216, 183, 90);
constexpr Color liveRed = rgb(178, 40, 29);
constexpr Color castBrass = rgb(139, 107, 37);
constexpr Color greyedOut = rgb(121, 116, 103);
constexpr Color faultRed = rgb(204, 46, 33);
constexpr Color deepGreen = rgb(17, 56, 34);
constexpr Color softGreen = rgb(56, 179, 110);
constexpr Color midGreen = rgb(49, 156, 96);
constexpr Color boltBrass = rgb(159, 123, 42);
constexpr Color flashRed = rgb(153, 34, 25);       // the big button pressed too soon
constexpr Color lockedRed = rgb(102, 23, 16);
constexpr Color holeBrown = rgb(102, 68, 18);

}  // namespace vorn::test::station_ink
