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
constexpr Color instruction = rgb(178, 119, 32);     // a station's own line of orders
// The monitor's plastic, also the studio name on a splash without its logo.
constexpr Color casingBeige = rgb(216, 199, 156);
}  // namespace palette

}  // namespace vorn
