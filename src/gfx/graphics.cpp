#include "gfx/graphics.h"

#include "data/file_paths.h"

#include <SDL_image.h>

#include <algorithm>
#include <cmath>
#include <cstdarg>
#include <cstdio>
#include <filesystem>
#include <initializer_list>
#include <string_view>

namespace vorn {

namespace {

constexpr double kPi = 3.14159265358979323846;

// The shipped font first; failing that, the first fallback found on this
// system; failing that, no font at all (text then draws nothing).
std::string lookUpFont(const std::string& folder, const char* name,
                       std::initializer_list<const char*> fallbacks) {
    const std::string own = pathString(std::filesystem::u8path(folder) / name);
    if (pathExists(own)) {
        return own;
    }
    for (const char* candidate : fallbacks) {
        if (pathExists(candidate)) {
            return candidate;
        }
    }
    return std::string();
}

}  // namespace

int pointSize(TextSize size) {
    switch (size) {
        case TextSize::Tiny: return 11;
        case TextSize::Small: return 16;
        case TextSize::Normal: return 20;
        case TextSize::Large: return 30;
        case TextSize::Huge: return 52;
        case TextSize::Giant: return 96;
    }
    return 20;
}

bool usesDisplayFont(TextSize size) {
    return size == TextSize::Large || size == TextSize::Huge || size == TextSize::Giant;
}

std::size_t TextSizeHash::operator()(TextSize size) const {
    const auto key = static_cast<std::uint32_t>(size);
    std::uint32_t hash = 2166136261u;
    for (int i = 0; i < 4; ++i) {
        hash ^= (key >> (8 * i)) & 255u;
        hash *= 16777619u;
    }
    return hash;
}

bool Graphics::init(SDL_Window* window) {
    SDL_Renderer* created =
        SDL_CreateRenderer(window, -1, SDL_RENDERER_ACCELERATED | SDL_RENDERER_PRESENTVSYNC);
    if (created == nullptr) {
        created = SDL_CreateRenderer(window, -1, SDL_RENDERER_SOFTWARE);
    }
    if (created == nullptr) {
        return false;
    }
    attach(created);
    makeCanvas();
    return true;
}

void Graphics::attach(SDL_Renderer* existing) {
    renderer = existing;
    SDL_SetRenderDrawBlendMode(renderer, SDL_BLENDMODE_BLEND);
    blending = true;
    // The largest corner (radius 46) has about 1,700 dots a quarter.
    points.reserve(8192);
    SDL_SetHint("SDL_RENDER_SCALE_QUALITY", "1");
    resetLogicalSize();
}

bool Graphics::loadFonts(const std::string& folder) {
    gameFontPath = lookUpFont(folder, "game.ttf",
                              {"C:/Windows/Fonts/consola.ttf",
                               "/usr/share/fonts/truetype/dejavu/DejaVuSansMono.ttf",
                               "/usr/share/fonts/truetype/dejavu/DejaVuSans-Bold.ttf"});
    displayFontPath = lookUpFont(folder, "display.ttf",
                                 {"C:/Windows/Fonts/arialbd.ttf",
                                  "/usr/share/fonts/truetype/dejavu/DejaVuSans-Bold.ttf"});
    if (displayFontPath.empty()) {
        displayFontPath = gameFontPath;
    }
    if (gameFontPath.empty()) {
        gameFontPath = displayFontPath;
    }
    fontPath = gameFontPath;
    return !gameFontPath.empty();
}

bool Graphics::makeCanvas() {
    SDL_SetRenderTarget(renderer, nullptr);
    SDL_DestroyTexture(canvas);   // none yet is fine
    // The window's own (32-bit) format: drawn with the blits the window was,
    // copied to it as it is, smoothly when scaled. Tests' canvases: RGBA32.
    SDL_Window* window = SDL_RenderGetWindow(renderer);
    Uint32 format = window != nullptr ? SDL_GetWindowPixelFormat(window)
                                      : static_cast<Uint32>(SDL_PIXELFORMAT_RGBA32);
    if (SDL_BYTESPERPIXEL(format) != 4 || SDL_ISPIXELFORMAT_FOURCC(format)) {
        format = SDL_PIXELFORMAT_RGBA32;
    }
    canvas = SDL_RenderTargetSupported(renderer) == SDL_TRUE
                 ? SDL_CreateTexture(renderer, format, SDL_TEXTUREACCESS_TARGET, kCanvasWidth,
                                     kCanvasHeight)
                 : nullptr;
    if (canvas != nullptr && (SDL_SetTextureBlendMode(canvas, SDL_BLENDMODE_NONE) != 0 ||
                              SDL_SetTextureScaleMode(canvas, SDL_ScaleModeLinear) != 0 ||
                              SDL_SetRenderTarget(renderer, canvas) != 0)) {
        SDL_DestroyTexture(canvas);
        canvas = nullptr;
    }
    return canvas != nullptr;
}

void Graphics::resetLogicalSize() {
    // Any scale factor, letter-boxed: the canvas keeps its shape on every
    // display. The size belongs to the window, so it is set on the window.
    SDL_SetRenderTarget(renderer, nullptr);
    SDL_RenderSetLogicalSize(renderer, kCanvasWidth, kCanvasHeight);
    SDL_RenderSetIntegerScale(renderer, SDL_FALSE);
    SDL_SetRenderTarget(renderer, canvas);
}

void Graphics::shutdown() {
    for (auto& entry : fontCache) {
        if (entry.second != nullptr) {
            TTF_CloseFont(entry.second);
        }
    }
    fontCache.clear();
    canvas = nullptr;   // the renderer takes its textures with it
    if (renderer != nullptr) {
        // Window first: SDL, dropping a live target itself, leaks a command.
        SDL_SetRenderTarget(renderer, nullptr);
        SDL_DestroyRenderer(renderer);
        renderer = nullptr;
    }
}

void Graphics::setColor(Color c) {
    SDL_SetRenderDrawColor(renderer, static_cast<Uint8>(red(c)), static_cast<Uint8>(green(c)),
                           static_cast<Uint8>(blue(c)), static_cast<Uint8>(alpha(c)));
}

void Graphics::setFillColor(Color c) {
    setColor(c);
    useBlending(alpha(c) != 255);
}

void Graphics::useBlending(bool on) {
    if (on != blending) {
        SDL_SetRenderDrawBlendMode(renderer, on ? SDL_BLENDMODE_BLEND : SDL_BLENDMODE_NONE);
        blending = on;
    }
}

void Graphics::clear(Color c) {
    setColor(c);
    SDL_RenderClear(renderer);
}

void Graphics::present() {
    // A black letter box, and the canvas in the logical viewport in one copy.
    if (canvas != nullptr) {
        SDL_SetRenderTarget(renderer, nullptr);
        SDL_SetRenderDrawColor(renderer, 0, 0, 0, 255);
        SDL_RenderClear(renderer);
        SDL_RenderCopy(renderer, canvas, nullptr, nullptr);
    }
    SDL_RenderPresent(renderer);
    SDL_SetRenderTarget(renderer, canvas);
}

void Graphics::rect(const Rect& r, Color c, bool filled) {
    const SDL_Rect sr{r.x, r.y, r.w, r.h};
    if (filled) {
        setFillColor(c);
        SDL_RenderFillRect(renderer, &sr);
    } else {
        setColor(c);
        useBlending(true);
        SDL_RenderDrawRect(renderer, &sr);
    }
}

void Graphics::roundRect(const Rect& r, int radius, Color c, bool filled) {
    if (radius <= 0) {
        rect(r, c, filled);
        return;
    }
    const int rr = std::min(std::min(r.w, r.h) / 2, radius);
    if (!filled) {
        setColor(c);
        useBlending(true);
        // Straight edges only. The bottom and right edges sit at y + h and
        // x + w, one pixel further out than a plain rectangle's outline; the
        // panels are laid out around that, so it stays.
        SDL_RenderDrawLine(renderer, r.x + rr, r.y, r.x + r.w - rr, r.y);
        SDL_RenderDrawLine(renderer, r.x + rr, r.y + r.h, r.x + r.w - rr, r.y + r.h);
        SDL_RenderDrawLine(renderer, r.x, r.y + rr, r.x, r.y + r.h - rr);
        SDL_RenderDrawLine(renderer, r.x + r.w, r.y + rr, r.x + r.w, r.y + r.h - rr);
        return;
    }
    setFillColor(c);
    const SDL_Rect middle{r.x + rr, r.y, r.w - 2 * rr, r.h};
    const SDL_Rect leftSide{r.x, r.y + rr, rr, r.h - 2 * rr};
    const SDL_Rect rightSide{r.x + r.w - rr, r.y + rr, rr, r.h - 2 * rr};
    SDL_RenderFillRect(renderer, &middle);
    SDL_RenderFillRect(renderer, &leftSide);
    SDL_RenderFillRect(renderer, &rightSide);
    // The corners: every dot within the radius, the four corners' dots in
    // turn for each offset, all sent in one call.
    points.clear();
    for (int dy = 0; dy <= rr; ++dy) {
        for (int dx = 0; dx <= rr; ++dx) {
            if (dx * dx + dy * dy > rr * rr) {
                continue;
            }
            points.push_back({r.x + rr - dx, r.y + rr - dy});
            points.push_back({r.x + r.w - rr + dx, r.y + rr - dy});
            points.push_back({r.x + rr - dx, r.y + r.h - rr + dy});
            points.push_back({r.x + r.w - rr + dx, r.y + r.h - rr + dy});
        }
    }
    SDL_RenderDrawPoints(renderer, points.data(), static_cast<int>(points.size()));
}

void Graphics::line(int x1, int y1, int x2, int y2, Color c, int thickness) {
    setColor(c);
    useBlending(true);
    if (thickness <= 1) {
        SDL_RenderDrawLine(renderer, x1, y1, x2, y2);
        return;
    }
    const double dx = x2 - x1;
    const double dy = y2 - y1;
    const double len = std::sqrt(dx * dx + dy * dy);
    if (len < 0.001) {
        SDL_RenderDrawLine(renderer, x1, y1, x2, y2);
        return;
    }
    const double nx = -dy / len;
    const double ny = dx / len;
    // Parallel offsets from -t/2 to t/2: an even thickness gets one line more.
    for (int k = -(thickness / 2); k <= thickness / 2; ++k) {
        SDL_RenderDrawLine(renderer, static_cast<int>(x1 + k * nx), static_cast<int>(y1 + k * ny),
                           static_cast<int>(x2 + k * nx), static_cast<int>(y2 + k * ny));
    }
}

void Graphics::circle(int cx, int cy, int r, Color c, bool filled) {
    // Made of lines, so always blended.
    setColor(c);
    useBlending(true);
    if (filled) {
        for (int dy = -r; dy <= r; ++dy) {
            const int half = static_cast<int>(std::sqrt(static_cast<double>(r * r - dy * dy)));
            SDL_RenderDrawLine(renderer, cx - half, cy + dy, cx + half, cy + dy);
        }
        return;
    }
    int px = cx + r;
    int py = cy;
    for (int i = 1; i <= 90; ++i) {
        const double a = i * 2.0 * kPi / 90.0;
        const int x = cx + static_cast<int>(std::cos(a) * r);
        const int y = cy + static_cast<int>(std::sin(a) * r);
        SDL_RenderDrawLine(renderer, px, py, x, y);
        px = x;
        py = y;
    }
}

void Graphics::arc(int cx, int cy, int r, double a0, double a1, int thickness, Color c) {
    setFillColor(c);
    // A band of dots rather than a stroke: 121 samples along the angle,
    // one dot per radius offset, sent in one call.
    points.clear();
    for (int i = 0; i <= 120; ++i) {
        const double a = a0 + (a1 - a0) * i / 120.0;
        const double ca = std::cos(a);
        const double sa = std::sin(a);
        for (int k = -(thickness / 2); k <= thickness / 2; ++k) {
            points.push_back({cx + static_cast<int>(ca * (r + k)), cy + static_cast<int>(sa * (r + k))});
        }
    }
    SDL_RenderDrawPoints(renderer, points.data(), static_cast<int>(points.size()));
}

void Graphics::blitCentered(SDL_Texture* tex, int cx, int cy, int w, int h) {
    if (tex == nullptr) {
        return;
    }
    const SDL_Rect dst{cx - w / 2, cy - h / 2, w, h};
    SDL_RenderCopy(renderer, tex, nullptr, &dst);
}

SDL_Texture* Graphics::loadTexture(const std::string& path, int* outW, int* outH) {
    SDL_Surface* surface = IMG_Load(path.c_str());
    if (surface == nullptr) {
        return nullptr;
    }
    if (outW != nullptr) {
        *outW = surface->w;
    }
    if (outH != nullptr) {
        *outH = surface->h;
    }
    SDL_Texture* texture = SDL_CreateTextureFromSurface(renderer, surface);
    SDL_FreeSurface(surface);
    return texture;
}

TTF_Font* Graphics::fontFor(TextSize size) {
    const auto found = fontCache.find(size);
    if (found != fontCache.end()) {
        return found->second;
    }
    const std::string& path = usesDisplayFont(size) ? displayFontPath : gameFontPath;
    TTF_Font* font = nullptr;
    if (!path.empty() && TTF_WasInit() != 0) {
        font = TTF_OpenFont(path.c_str(), pointSize(size));
    }
    // A font that failed to open is remembered as null and never retried.
    fontCache.emplace(size, font);
    return font;
}

int Graphics::text(const char* s, int x, int y, TextSize size, Color c, bool centerX, bool centerY) {
    TTF_Font* font = fontFor(size);
    if (font == nullptr || s == nullptr || s[0] == '\0') {
        return 0;
    }
    const SDL_Color color{static_cast<Uint8>(red(c)), static_cast<Uint8>(green(c)),
                          static_cast<Uint8>(blue(c)), static_cast<Uint8>(alpha(c))};
    SDL_Surface* surface = TTF_RenderUTF8_Blended(font, s, color);
    if (surface == nullptr) {
        return 0;
    }
    SDL_Texture* texture = SDL_CreateTextureFromSurface(renderer, surface);
    const int w = surface->w;
    const int h = surface->h;
    SDL_FreeSurface(surface);
    if (texture == nullptr) {
        return 0;
    }
    if (centerX) {
        x -= w / 2;
    }
    if (centerY) {
        y -= h / 2;
    }
    const SDL_Rect dst{x, y, w, h};
    SDL_RenderCopy(renderer, texture, nullptr, &dst);
    SDL_DestroyTexture(texture);
    return w;
}

int Graphics::textWidth(const char* s, TextSize size) {
    const std::string_view view = s == nullptr ? std::string_view() : std::string_view(s);
    TTF_Font* font = fontFor(size);
    if (font == nullptr) {
        // Without a font the layouts still need a width: half the point size per byte.
        return pointSize(size) * static_cast<int>(view.size()) / 2;
    }
    int w = 0;
    int h = 0;
    if (TTF_SizeUTF8(font, s, &w, &h) != 0) {
        return 0;
    }
    return w;
}

int Graphics::formatInto(char* buffer, std::size_t size, const char* format, ...) {
    va_list args;
    va_start(args, format);
    const int written = std::vsnprintf(buffer, size, format, args);
    va_end(args);
    return written < 0 ? -1 : written;
}

void Graphics::monitorOverlay() {
    clip(&kMonitorGlass);

    // Scan lines every third row.
    for (int y = 78; y < 690; y += 3) {
        rect({247, y, 872, 1}, rgb(0, 0, 0, 46), true);
    }
    // The glass darkens towards its sides...
    for (int i = 0; i < 90; ++i) {
        const int a = static_cast<int>((1.0 - i / 90.0) * 70.0);
        rect({247 + i, 78, 1, 612}, rgb(0, 0, 0, a), true);
        rect({1118 - i, 78, 1, 612}, rgb(0, 0, 0, a), true);
    }
    // ...and towards its top and bottom.
    for (int i = 0; i < 70; ++i) {
        const int a = static_cast<int>((1.0 - i / 70.0) * 70.0);
        rect({247, 78 + i, 872, 1}, rgb(0, 0, 0, a), true);
        rect({247, 689 - i, 872, 1}, rgb(0, 0, 0, a), true);
    }
    // A faint band of glare near the top.
    for (int y = 96; y <= 135; ++y) {
        rect({287, y, 792, 1}, rgb(255, 255, 255, 10), true);
    }
    clip(nullptr);
}

void Graphics::clip(const Rect* r) {
    const SDL_Rect sr = r != nullptr ? SDL_Rect{r->x, r->y, r->w, r->h} : SDL_Rect{};
    SDL_RenderSetClipRect(renderer, r != nullptr ? &sr : nullptr);
}

}  // namespace vorn
