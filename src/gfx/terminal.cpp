#include "gfx/terminal.h"

#include "gfx/graphics.h"
#include "gfx/procedural_art.h"

#include <algorithm>

namespace vorn {

namespace {

constexpr Color kKeyboardShadow = rgb(0, 0, 0, 90);
constexpr Color kCasingShadow = rgb(0, 0, 0, 110);
constexpr Color kScreenRim = rgb(0, 0, 0, 170);
constexpr Color kNeckLight = rgb(232, 226, 208);
constexpr Color kNeckDark = rgb(214, 207, 188);
constexpr Color kKnobFace = rgb(214, 207, 188);
constexpr Color kLampHousing = rgb(40, 30, 20);

// The keyboard block in front of the monitor: a soft shadow, the plastic,
// and a darker rim.
void drawKeyboardBlock(Graphics& g, const ProceduralArt& art) {
    g.roundRect({539, 736, 300, 20}, 6, kKeyboardShadow, true);
    if (art.casing != nullptr) {
        stretchInto(g, art, art.casing, kKeyboardBlock);
    } else {
        g.roundRect(kKeyboardBlock, 6, palette::casingBeige, true);
    }
    g.roundRect(kKeyboardBlock, 6, kCasingOutline, false);
}

// The neck narrows by a quarter towards the bottom, lit on its upper half.
void drawNeck(Graphics& g) {
    for (int i = 0; i < 28; ++i) {
        const int w = static_cast<int>((1.0 - i / 28.0 * 0.25) * 220.0);
        g.rect({683 - w / 2, 694 + i, w, 2}, i < 14 ? kNeckLight : kNeckDark, true);
    }
}

// The foot's shadow widens and darkens as it comes down towards the desk.
void drawFloorShadow(Graphics& g) {
    for (int y = 642; y <= 701; ++y) {
        const double t = (y - 642) / 60.0;
        const int w = static_cast<int>(t * 60.0 + 150.0);
        const double f = std::min(1.0, std::max(0.0, t * 0.5));
        g.rect({683 - w / 2, y, w, 1},
               rgb(static_cast<int>(214.0 - 44.0 * f), static_cast<int>(207.0 - 45.0 * f),
                   static_cast<int>(188.0 - 46.0 * f)),
               true);
    }
}

void drawCasing(Graphics& g, const ProceduralArt& art) {
    g.roundRect({193, 36, 1004, 632}, 46, kCasingShadow, true);
    if (art.casing != nullptr) {
        stretchInto(g, art, art.casing, kCasing);
    } else {
        g.roundRect(kCasing, 46, palette::casingBeige, true);
    }
    g.roundRect(kCasing, 46, kCasingOutline, false);
    g.rect({211, 28, 944, 4}, kCasingHighlight, true);
}

// Ten nested faces step in and darken towards the glass, which gives the
// bezel its depth. The outer face is taller than the casing: it is the chin
// the controls sit on, and it deliberately covers the casing's highlight bar.
void drawFrontFace(Graphics& g) {
    for (int i = 0; i < 10; ++i) {
        const double t = i / 10.0;
        const Rect face{189 + static_cast<int>(46.0 * t), 28 + static_cast<int>(40.0 * t),
                        988 - static_cast<int>(92.0 * t), 712 - static_cast<int>(80.0 * t)};
        g.roundRect(face, 26 - static_cast<int>(12.0 * t),
                    rgb(static_cast<int>(232.0 - 112.0 * t), static_cast<int>(226.0 - 112.0 * t),
                        static_cast<int>(208.0 - 110.0 * t)),
                    true);
    }
}

void drawScreen(Graphics& g, const ProceduralArt& art, Color screenColor) {
    g.roundRect(kGlassRecessRect, 16, kGlassRecess, true);
    if (SDL_Texture* glass = art.screenFor(screenColor)) {
        stretchInto(g, art, glass, kMonitorGlass);
    } else {
        g.roundRect(kMonitorGlass, 14, screenColor, true);
    }
    g.roundRect(kMonitorGlass, 14, kScreenRim, false);
}

// Two knobs, the power lamp, the small badge and the maker's plate, all on
// the chin's centre line.
void drawControls(Graphics& g) {
    constexpr int kChinY = 720;
    for (int x : {283, 325}) {
        g.circle(x, kChinY, 15, kCasingOutline, true);
        g.circle(x, kChinY, 13, kKnobFace, true);
        g.circle(x, kChinY, 5, kPlateInk, true);
    }
    g.circle(397, kChinY, 5, kLampHousing, true);
    g.circle(397, kChinY, 3, palette::alarmRed, true);
    g.roundRect({1049, 708, 40, 24}, 4, kCasingHighlight, true);
    g.roundRect({1049, 708, 40, 24}, 4, kPlateInk, false);
    g.text("VORN CO. Mk.IV", 683, kChinY, TextSize::Small, kPlateInk, true, true);
}

}  // namespace

void stretchInto(Graphics& g, const ProceduralArt& art, SDL_Texture* tex, const Rect& r) {
    // Centre minus half the size lands back on r.x and r.y for any size, so
    // the centred copy covers exactly the rectangle.
    SDL_Texture* copy = art.scaledCopy(tex, r);
    g.blitCentered(copy != nullptr ? copy : tex, r.x + r.w / 2, r.y + r.h / 2, r.w, r.h);
}

void drawRoom(Graphics& g, const ProceduralArt& art) {
    if (art.wallTile != nullptr) {
        for (int y = 0; y < kCanvasHeight; y += art.wallTileHeight) {
            for (int x = 0; x < kCanvasWidth; x += art.wallTileWidth) {
                stretchInto(g, art, art.wallTile, {x, y, art.wallTileWidth, art.wallTileHeight});
            }
        }
    } else {
        g.rect({0, 0, kCanvasWidth, kCanvasHeight}, kFlatWall, true);
    }
    // The bolts belong to the rail: a room without its rail has none.
    if (art.topRail != nullptr) {
        stretchInto(g, art, art.topRail, kTopRail);
        for (int x = kFirstBoltX; x < kCanvasWidth; x += kBoltStep) {
            g.circle(x, kBoltY, kBoltRadius, kBoltColor, true);
        }
    }
    if (art.bottomStrip != nullptr) {
        stretchInto(g, art, art.bottomStrip, kBottomStrip);
    }
    // Last, so the rail and the strip fade into the corners with the wall.
    if (art.roomOverlay != nullptr) {
        stretchInto(g, art, art.roomOverlay, {0, 0, kCanvasWidth, kCanvasHeight});
    }
}

void drawTerminal(Graphics& g, const ProceduralArt& art, Color screenColor) {
    drawRoom(g, art);
    drawKeyboardBlock(g, art);
    drawNeck(g);
    drawFloorShadow(g);
    drawCasing(g, art);
    drawFrontFace(g);
    drawScreen(g, art, screenColor);
    drawControls(g);
}

}  // namespace vorn
