#include "gfx/terminal.h"

#include "gfx/graphics.h"
#include "gfx/procedural_art.h"

#include <algorithm>

namespace vorn {

namespace {

constexpr Color kKeyboardShadow = rgb(0, 0, 0, 90);
constexpr Color kCasingShadow = rgb(0, 0, 0, 110);
constexpr Color kScreenRim = rgb(0, 0, 0, 170);
constexpr Color kNeckLight = palette::casingLight;
constexpr Color kNeckDark = rgb(214, 207, 188);
constexpr Color kKnobFace = rgb(214, 207, 188);
constexpr Color kLampHousing = rgb(40, 30, 20);

// The rows of a filled rounded rectangle between its corners, across its
// whole width: every pixel there is certainly painted.
Rect solidBand(const Rect& r, int radius) {
    const int rr = std::min(std::min(r.w, r.h) / 2, radius);
    return {r.x, r.y + rr, r.w, r.h - 2 * rr};
}

// The outer face of the bezel and its band: whatever is drawn inside that
// band before the face is painted over by it, opaque, a moment later.
constexpr Rect kOuterFace{189, 28, 988, 712};
constexpr int kOuterFaceRadius = 26;

// Makes the draw once for each piece of the canvas around `hidden` (above,
// below, left and right of it), clipped to that piece, so it lands everywhere
// but inside `hidden`, each pixel once. Used only where an opaque fill covers
// `hidden` before anything else is drawn there to be seen, so the picture is
// the same while far fewer pixels are touched. Without a canvas the draw is
// at the window's scale, where the pieces' edges could overlap: made whole.
template <typename Draw>
void drawAround(Graphics& g, const Rect& hidden, Draw draw) {
    if (g.canvas == nullptr) {
        draw();
        return;
    }
    const int bottom = hidden.y + hidden.h;
    const int right = hidden.x + hidden.w;
    const Rect pieces[] = {
        {0, 0, kCanvasWidth, hidden.y},
        {0, bottom, kCanvasWidth, kCanvasHeight - bottom},
        {0, hidden.y, hidden.x, hidden.h},
        {right, hidden.y, kCanvasWidth - right, hidden.h},
    };
    for (const Rect& piece : pieces) {
        if (piece.w > 0 && piece.h > 0) {
            g.clip(&piece);
            draw();
        }
    }
    g.clip(nullptr);
}

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
    drawAround(g, solidBand(kOuterFace, kOuterFaceRadius),
               [&] { g.roundRect({193, 36, 1004, 632}, 46, kCasingShadow, true); });
    if (art.casing != nullptr) {
        stretchInto(g, art, art.casing, kCasing);
    } else {
        g.roundRect(kCasing, 46, palette::casingBeige, true);
    }
    g.roundRect(kCasing, 46, kCasingOutline, false);
    g.rect({211, 28, 944, 4}, palette::casingLight, true);
}

// Ten nested faces step in and darken towards the glass, which gives the
// bezel its depth. The outer face is taller than the casing: it is the chin
// the controls sit on, and it deliberately covers the casing's highlight bar.
// Each face is drawn around the band of the next one (the last around the
// glass recess's), which paints over it at once.
Rect faceRect(int i) {
    const double t = i / 10.0;
    return {189 + static_cast<int>(46.0 * t), 28 + static_cast<int>(40.0 * t),
            988 - static_cast<int>(92.0 * t), 712 - static_cast<int>(80.0 * t)};
}
int faceRadius(int i) { return 26 - static_cast<int>(12.0 * (i / 10.0)); }

void drawFrontFace(Graphics& g) {
    for (int i = 0; i < 10; ++i) {
        const double t = i / 10.0;
        const Rect face = faceRect(i);
        const Color colour =
            rgb(static_cast<int>(232.0 - 112.0 * t), static_cast<int>(226.0 - 112.0 * t),
                static_cast<int>(208.0 - 110.0 * t));
        const Rect covered =
            i < 9 ? solidBand(faceRect(i + 1), faceRadius(i + 1)) : solidBand(kGlassRecessRect, 16);
        drawAround(g, covered, [&] { g.roundRect(face, faceRadius(i), colour, true); });
    }
}

void drawScreen(Graphics& g, const ProceduralArt& art, Color screenColor) {
    if (SDL_Texture* glass = art.screenFor(screenColor)) {
        // The opaque glass covers its whole rectangle next.
        drawAround(g, kMonitorGlass, [&] { g.roundRect(kGlassRecessRect, 16, kGlassRecess, true); });
        stretchInto(g, art, glass, kMonitorGlass);
    } else {
        g.roundRect(kGlassRecessRect, 16, kGlassRecess, true);
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
    g.roundRect({1049, 708, 40, 24}, 4, palette::casingLight, true);
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

void drawRoom(Graphics& g, const ProceduralArt& art, const Rect* hidden) {
    // Only copies made at their drawn size are clipped: a clipped stretch
    // could round its source differently.
    const auto copyAround = [&](SDL_Texture* tex, const Rect& r) {
        if (hidden != nullptr && art.scaledCopy(tex, r) != nullptr) {
            drawAround(g, *hidden, [&] { stretchInto(g, art, tex, r); });
        } else {
            stretchInto(g, art, tex, r);
        }
    };
    if (art.wallTile != nullptr) {
        for (int y = 0; y < kCanvasHeight; y += art.wallTileHeight) {
            for (int x = 0; x < kCanvasWidth; x += art.wallTileWidth) {
                copyAround(art.wallTile, {x, y, art.wallTileWidth, art.wallTileHeight});
            }
        }
    } else {
        g.rect({0, 0, kCanvasWidth, kCanvasHeight}, kFlatWall, true);
    }
    // The bolts belong to the rail: a room without its rail has none.
    if (art.topRail != nullptr) {
        stretchInto(g, art, art.topRail, kTopRail);
        for (int x = kFirstBoltX; x < kCanvasWidth; x += kBoltStep) {
            g.circle(x, kBoltY, kBoltRadius, palette::boltBrass, true);
        }
    }
    if (art.bottomStrip != nullptr) {
        stretchInto(g, art, art.bottomStrip, kBottomStrip);
    }
    // Last, so the rail and the strip fade into the corners with the wall.
    if (art.roomOverlay != nullptr) {
        copyAround(art.roomOverlay, {0, 0, kCanvasWidth, kCanvasHeight});
    }
}

void drawTerminal(Graphics& g, const ProceduralArt& art, Color screenColor) {
    // The monitor's outer face will cover most of the room.
    const Rect hidden = solidBand(kOuterFace, kOuterFaceRadius);
    drawRoom(g, art, &hidden);
    drawKeyboardBlock(g, art);
    drawNeck(g);
    drawFloorShadow(g);
    drawCasing(g, art);
    drawFrontFace(g);
    drawScreen(g, art, screenColor);
    drawControls(g);
}

}  // namespace vorn
