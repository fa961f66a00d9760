#pragma once
// What each top-level screen puts on the canvas: the studio splash, the shift
// cards between phases, the employment terminal with its menu, the frame
// around a station (header, footer and clock), and the fired and victory
// notices. The pieces only draw: the application decides which screen shows
// and hands in the values it reads, and lays the glass overlay over the
// terminal screens afterwards. Every string is drawn straight from a literal
// or a fixed stack buffer, so a frame allocates nothing of its own.

#include "gfx/color.h"
#include "gfx/geometry.h"

#include <SDL.h>

#include <cstdint>

namespace vorn {

class Graphics;
class ProceduralArt;

// The station screen's footer band and the badge behind the company's name.
constexpr Color kFooterBand = rgb(22, 50, 21);
constexpr Color kBadgeRed = rgb(74, 18, 18);

constexpr Rect kHeaderBand{263, 94, 840, 76};
constexpr Rect kBadge{273, 102, 150, 60};
constexpr Rect kFooterBandRect{267, 626, 832, 50};
constexpr int kClockX = 1059;
constexpr int kClockY = 651;

// A title menu row as the terminal shows it; `alarm` paints the label red.
struct MenuRowView {
    const char* label;
    bool alarm;
};

// The title menu row i: 46 px apart from y 350.
constexpr Rect titleMenuRow(int i) { return Rect{533, 350 + 46 * i, 300, 38}; }

// Black, then once revealed the logo fading in over 0.4 s, always 956 px wide,
// or the studio's name when there is no logo.
void drawSplash(Graphics& g, SDL_Texture* logo, int logoW, int logoH, bool revealed,
                double sinceReveal);

// How bright a shift card is t seconds in: up over 0.4 s, held, and down over
// the last 0.4 s of its three seconds.
double shiftCardFade(double t);
// The card of phase 0 (PROBATION), 1 (SHIFT STARTS) or 2 (OVERTIME).
void drawShiftCard(Graphics& g, std::int32_t phase, double t);

// The employment terminal: header, logo lines, the menu with one row lit,
// the footer counts and the build.
void drawTitleTerminal(Graphics& g, const ProceduralArt& art, const MenuRowView* rows, int count,
                       int highlighted, long timesFired, int clockInCards, const char* build);

// The station screen's pieces, drawn around the station's own picture.
void drawStationHeader(Graphics& g, const char* title, const char* instruction);
void drawStationFooter(Graphics& g, const char* modeName, bool vornMode, int stationNumber,
                       int stationCount);
// The clock blinks red and gold in its last three seconds, except on VORN.
void drawClock(Graphics& g, double timeLeft, double screenTime, bool vornMode);
// The colour of the clock's digits.
Color clockColor(double timeLeft, double screenTime, bool vornMode);

void drawFiredNotice(Graphics& g, const ProceduralArt& art, bool vornMode, long timesFired);
void drawVictoryNotice(Graphics& g, const ProceduralArt& art, bool vornMode, bool cardAwarded);

}  // namespace vorn
