#pragma once
// The office and the monitor that every screen but the splash and the shift
// cards is shown on: a dim wall with a bolted rail above and a hazard strip
// below, and in front of it a beige CRT terminal with its keyboard block,
// neck, chin controls and a glass that glows green (or red, for bad news).
// Every painted texture may be missing; each piece then falls back to a flat
// fill of its own colour, so the terminal still reads as a terminal.

#include "gfx/color.h"
#include "gfx/geometry.h"

#include <SDL.h>

namespace vorn {

class Graphics;
class ProceduralArt;

// The room's flat wall colour when the wall texture is missing.
constexpr Color kFlatWall = rgb(42, 37, 25);
// The glass recess around the screen.
constexpr Color kGlassRecess = rgb(18, 18, 20);
// The casing's outline, and the ink of its maker's plate and knob centres
// (the plastic itself and its lightest face are in the palette).
constexpr Color kCasingOutline = rgb(170, 162, 142);
constexpr Color kPlateInk = rgb(120, 114, 98);

constexpr Rect kTopRail{0, 0, 1366, 40};
constexpr Rect kBottomStrip{0, 742, 1366, 26};
constexpr Rect kKeyboardBlock{533, 730, 300, 20};
constexpr Rect kCasing{181, 20, 1004, 632};
constexpr Rect kGlassRecessRect{237, 68, 892, 632};
// The bolts sit on the rail's centre line, 90 px apart from x 30.
constexpr int kBoltY = 20;
constexpr int kFirstBoltX = 30;
constexpr int kBoltStep = 90;
constexpr int kBoltRadius = 4;

// Copies a texture over exactly the given rectangle (nothing when null),
// from its scaled copy for that rectangle when the art has one.
void stretchInto(Graphics& g, const ProceduralArt& art, SDL_Texture* tex, const Rect& r);

// The wall, the rail with its bolts, the hazard strip and the darkening
// towards the corners, in that order; the wall and the darkening leave out
// whatever lies inside `hidden` (when not null), which the caller paints
// over, opaque, before anything drawn there could show.
void drawRoom(Graphics& g, const ProceduralArt& art, const Rect* hidden = nullptr);

// The room with the monitor in front of it. The screen colour picks the
// glass: red when its red byte beats its green byte, green otherwise; it is
// also the flat glass when the glass texture is missing.
void drawTerminal(Graphics& g, const ProceduralArt& art, Color screenColor);

}  // namespace vorn
