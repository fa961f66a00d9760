#include "support/software_canvas.h"

#include <SDL_ttf.h>

#include <cstdlib>

namespace vorn::test {

SoftwareCanvas::SoftwareCanvas() {
    surface = SDL_CreateRGBSurfaceWithFormat(0, kCanvasWidth, kCanvasHeight, 32,
                                             SDL_PIXELFORMAT_RGBA32);
    if (surface == nullptr) {
        std::abort();
    }
    SDL_Renderer* renderer = SDL_CreateSoftwareRenderer(surface);
    if (renderer == nullptr) {
        std::abort();
    }
    graphics.attach(renderer);
}

SoftwareCanvas::~SoftwareCanvas() {
    graphics.shutdown();
    SDL_FreeSurface(surface);
    // SDL_ttf counts its users, so each canvas that started it stops it
    // once: a second canvas going away leaves the first one's fonts alive.
    if (startedTtf) {
        TTF_Quit();
    }
}

Color SoftwareCanvas::pixel(int x, int y) const {
    const auto* row = static_cast<const Uint8*>(surface->pixels) + y * surface->pitch;
    Uint32 value = 0;
    SDL_memcpy(&value, row + x * 4, 4);
    Uint8 r = 0, g = 0, b = 0, a = 0;
    SDL_GetRGBA(value, surface->format, &r, &g, &b, &a);
    return rgb(r, g, b, a);
}

void SoftwareCanvas::fill(Color c) {
    SDL_FillRect(surface, nullptr,
                 SDL_MapRGBA(surface->format, static_cast<Uint8>(red(c)), static_cast<Uint8>(green(c)),
                             static_cast<Uint8>(blue(c)), static_cast<Uint8>(alpha(c))));
}

void SoftwareCanvas::useGameFonts() {
    if (!startedTtf) {
        startedTtf = TTF_Init() == 0;
    }
    graphics.loadFonts(VORN_GAME_DIR "/assets/fonts");
}

bool near(Color a, Color b, int tolerance) {
    return std::abs(red(a) - red(b)) <= tolerance && std::abs(green(a) - green(b)) <= tolerance &&
           std::abs(blue(a) - blue(b)) <= tolerance && std::abs(alpha(a) - alpha(b)) <= tolerance;
}

bool anyPixelNear(const SoftwareCanvas& canvas, const Rect& box, Color c, int tolerance) {
    for (int y = box.y; y < box.y + box.h; ++y) {
        for (int x = box.x; x < box.x + box.w; ++x) {
            if (near(canvas.pixel(x, y), c, tolerance)) {
                return true;
            }
        }
    }
    return false;
}

int pixelsOtherThan(const SoftwareCanvas& canvas, const Rect& box, Color c) {
    int other = 0;
    for (int y = box.y; y < box.y + box.h; ++y) {
        for (int x = box.x; x < box.x + box.w; ++x) {
            other += canvas.pixel(x, y) != c ? 1 : 0;
        }
    }
    return other;
}

}  // namespace vorn::test
