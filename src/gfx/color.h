#pragma once
// Colours are packed 32-bit values, red in the lowest byte and alpha in the
// top one (0xAABBGGRR), so a colour can be written as one hex literal and
// handed around by value. The named palette below holds every colour that
// more than one file uses; a colour used in one place stays there.

#include <cstdint>

namespace vorn {

using Color = std::uint32_t;

constexpr Color rgb(int r, int g, int b, int a = 255) {
    return static_cast<Color>(r & 255) | (static_cast<Color>(g & 255) << 8) |
           (static_cast<Color>(b & 255) << 16) | (static_cast<Color>(a & 255) << 24);
}

constexpr int red(Color c) { return static_cast<int>(c & 255u); }
constexpr int green(Color c) { return static_cast<int>((c >> 8) & 255u); }
constexpr int blue(Color c) { return static_cast<int>((c >> 16) & 255u); }
constexpr int alpha(Color c) { return static_cast<int>((c >> 24) & 255u); }

// The same colour darkened (or lit) by a factor on red, green and blue, each
// truncated; alpha is kept. Shadows and rims are drawn this way.
constexpr Color scaled(Color c, double f) {
    return rgb(static_cast<int>(red(c) * f), static_cast<int>(green(c) * f),
               static_cast<int>(blue(c) * f), alpha(c));
}

namespace palette {
constexpr Color black = rgb(0, 0, 0);
constexpr Color white = rgb(255, 255, 255);
constexpr Color gold = rgb(255, 216, 107);           // gold text
constexpr Color brass = rgb(199, 154, 53);           // brass outline
constexpr Color terminalGreen = rgb(70, 224, 138);
constexpr Color dimGreen = rgb(42, 134, 82);
constexpr Color alarmRed = rgb(255, 58, 42);
constexpr Color amber = rgb(204, 136, 36);
constexpr Color darkPanel = rgb(24, 54, 22);
constexpr Color greenScreen = rgb(16, 36, 15);
constexpr Color redScreen = rgb(30, 6, 6);
constexpr Color ink = rgb(20, 20, 20);               // dark text on bright plates
constexpr Color orange = rgb(255, 170, 46);
// The monitor's plastic, also the studio name on a splash without its logo.
constexpr Color casingBeige = rgb(216, 199, 156);
// The casing's lightest face: its top edge, the maker's plate, the neck's
// lit side.
constexpr Color casingLight = rgb(232, 226, 208);

// The two lines of orders. The header's line over the play area (the words
// the catalogue gives a station) is the same orange as `orange`; a station's
// own small note at the foot of its play area is a duller orange, so it reads
// as an aside.
constexpr Color headerInstruction = orange;
constexpr Color playAreaNote = rgb(178, 119, 32);

// The station hardware's metals, darkest first.
constexpr Color unlitKey = rgb(89, 69, 23);          // a key or tile that is not lit
constexpr Color darkBrass = rgb(99, 77, 26);         // plates, rims, housings, unlit cells
constexpr Color bronze = rgb(109, 84, 29);           // grips, pads, boxes, the valve wheel
constexpr Color oldBrass = rgb(119, 92, 31);         // fuse holders, slots, keys at rest
constexpr Color castBrass = rgb(139, 107, 37);       // pivots and push buttons
constexpr Color boltBrass = rgb(159, 123, 42);       // the rail's bolts, plain tiles
constexpr Color litBrass = rgb(216, 183, 90);        // a lit cell, a card turned face up
constexpr Color paleGold = rgb(229, 194, 96);        // a bright button ready to press, walls

// Near-black fills: tracks, empty tiles and lamps that are off.
constexpr Color soot = rgb(28, 28, 28);
constexpr Color charcoal = rgb(30, 30, 30);

// Greens for what is right, thrown or safe.
constexpr Color deepGreen = rgb(17, 56, 34);         // a highlighted row, a pair matched
constexpr Color darkGreen = rgb(35, 112, 69);        // a switch thrown, a key held, the way out
constexpr Color midGreen = rgb(49, 156, 96);         // a thin rule, a quiet prompt
constexpr Color softGreen = rgb(56, 179, 110);       // quiet good news in small type

// Reds for danger and faults, short of the full alarm.
constexpr Color liveRed = rgb(178, 40, 29);          // a live master switch, a readout's label
constexpr Color faultRed = rgb(204, 46, 33);         // a warning in words

constexpr Color signalBlue = rgb(120, 160, 255);     // the blue among the signal colours
constexpr Color greyedOut = rgb(121, 116, 103);      // text that does not count, a button not ready
}  // namespace palette

}  // namespace vorn
