#include "asset_images.h"

#include "byte_files.h"

#include <SDL.h>
#include <SDL_image.h>
#include <SDL_ttf.h>

#include <algorithm>
#include <array>
#include <cmath>
#include <cstdint>
#include <fstream>
#include <iterator>
#include <vector>

namespace vorn::tools {

namespace {

namespace fs = std::filesystem;

// Index of pixel (x, y) in a row-major image `width` pixels wide.
std::size_t cell(int x, int y, int width) {
    return static_cast<std::size_t>(y) * static_cast<std::size_t>(width) + static_cast<std::size_t>(x);
}
std::size_t cellCount(int width, int height) { return cell(0, height, width); }

struct Rgb {
    double r, g, b;
};

Rgb mix(Rgb a, Rgb b, double t) {
    return {a.r + (b.r - a.r) * t, a.g + (b.g - a.g) * t, a.b + (b.b - a.b) * t};
}

// A floating-point RGBA canvas with premultiplied alpha, so shapes can be
// layered with the plain "over" rule and still leave clean, transparent
// edges where nothing is painted.
class Canvas {
public:
    Canvas(int width, int height) : w(width), h(height), pixels(cellCount(width, height) * 4, 0.0) {}

    // Lays `colour` over pixel (x, y) with the given coverage (0..1).
    void over(int x, int y, Rgb colour, double coverage) {
        if (x < 0 || y < 0 || x >= w || y >= h || coverage <= 0.0) {
            return;
        }
        const double a = std::min(1.0, coverage);
        double* p = &pixels[cell(x, y, w) * 4];
        p[0] = colour.r / 255.0 * a + p[0] * (1.0 - a);
        p[1] = colour.g / 255.0 * a + p[1] * (1.0 - a);
        p[2] = colour.b / 255.0 * a + p[2] * (1.0 - a);
        p[3] = a + p[3] * (1.0 - a);
    }

    // Darkens what is already there, keeping its coverage (scanlines).
    void shade(int x, int y, double factor) {
        double* p = &pixels[cell(x, y, w) * 4];
        p[0] *= factor;
        p[1] *= factor;
        p[2] *= factor;
    }

    bool savePng(const fs::path& path, std::string& error) const {
        SDL_Surface* surface = SDL_CreateRGBSurfaceWithFormat(0, w, h, 32, SDL_PIXELFORMAT_RGBA32);
        if (surface == nullptr) {
            error = std::string("cannot create surface: ") + SDL_GetError();
            return false;
        }
        for (int y = 0; y < h; ++y) {
            auto* row = static_cast<std::uint8_t*>(surface->pixels) + std::ptrdiff_t{y} * surface->pitch;
            for (int x = 0; x < w; ++x) {
                const double* p = &pixels[cell(x, y, w) * 4];
                const double a = p[3];
                const auto channel = [a](double premultiplied) {
                    const double straight = a > 0.0 ? premultiplied / a : 0.0;
                    return static_cast<std::uint8_t>(std::lround(std::clamp(straight, 0.0, 1.0) * 255.0));
                };
                row[x * 4 + 0] = channel(p[0]);
                row[x * 4 + 1] = channel(p[1]);
                row[x * 4 + 2] = channel(p[2]);
                row[x * 4 + 3] = static_cast<std::uint8_t>(std::lround(std::clamp(a, 0.0, 1.0) * 255.0));
            }
        }
        const bool ok = IMG_SavePNG(surface, path.u8string().c_str()) == 0;
        if (!ok) {
            error = "cannot write " + path.u8string() + ": " + SDL_GetError();
        }
        SDL_FreeSurface(surface);
        return ok;
    }

    int w;
    int h;

private:
    std::vector<double> pixels;
};

// Coverage of a pixel whose centre lies `distance` outside a shape's edge
// (negative inside): a one-pixel ramp, which is all the anti-aliasing needed.
double coverage(double distance) { return std::clamp(0.5 - distance, 0.0, 1.0); }

// Signed distance from (px, py) to a rounded rectangle.
double roundRectDistance(double px, double py, double x0, double y0, double x1, double y1, double radius) {
    const double cx = (x0 + x1) / 2.0;
    const double cy = (y0 + y1) / 2.0;
    const double qx = std::abs(px - cx) - ((x1 - x0) / 2.0 - radius);
    const double qy = std::abs(py - cy) - ((y1 - y0) / 2.0 - radius);
    const double outside = std::hypot(std::max(qx, 0.0), std::max(qy, 0.0));
    return outside + std::min(std::max(qx, qy), 0.0) - radius;
}

double segmentDistance(double px, double py, double ax, double ay, double bx, double by) {
    const double dx = bx - ax;
    const double dy = by - ay;
    const double t = std::clamp(((px - ax) * dx + (py - ay) * dy) / (dx * dx + dy * dy), 0.0, 1.0);
    return std::hypot(px - (ax + t * dx), py - (ay + t * dy));
}

// ---- the icon -------------------------------------------------------------

// A brass-cased terminal with a glowing green prompt: the game's whole mood
// at 128 pixels.
bool writeIcon(const fs::path& path, std::string& error) {
    constexpr int kSize = 128;
    Canvas canvas(kSize, kSize);
    const Rgb brassTop{226, 188, 100};
    const Rgb brassBottom{136, 94, 38};
    const Rgb brassRim{84, 56, 20};
    const Rgb screenDeep{8, 26, 16};
    const Rgb screenGlow{22, 66, 38};
    const Rgb phosphor{110, 255, 150};

    const std::array<std::array<double, 2>, 4> rivets{{{15, 15}, {113, 15}, {15, 113}, {113, 113}}};
    for (int y = 0; y < kSize; ++y) {
        for (int x = 0; x < kSize; ++x) {
            const double px = x + 0.5;
            const double py = y + 0.5;
            // Casing: a dark rim, then the brass face lit from above.
            const double caseDistance = roundRectDistance(px, py, 4, 4, 124, 124, 22);
            canvas.over(x, y, brassRim, coverage(caseDistance));
            Rgb brass = mix(brassTop, brassBottom, py / kSize);
            if (py > 9 && py < 12) {
                brass = mix(brass, Rgb{255, 240, 190}, 0.5);   // the top bevel catching the light
            }
            canvas.over(x, y, brass, coverage(caseDistance + 3.0));

            for (const auto& r : rivets) {
                const double d = std::hypot(px - r[0], py - r[1]) - 4.0;
                canvas.over(x, y, brassRim, coverage(d));
                const double glint = std::hypot(px - r[0] + 1.2, py - r[1] + 1.2) - 1.5;
                canvas.over(x, y, Rgb{250, 220, 150}, 0.8 * coverage(glint));
            }

            // The screen: dark phosphor glass, brighter in the middle.
            const double screenDistance = roundRectDistance(px, py, 22, 24, 106, 104, 12);
            const double fromCentre = std::hypot(px - 64.0, py - 64.0) / 60.0;
            canvas.over(x, y, mix(screenGlow, screenDeep, std::min(1.0, fromCentre)), coverage(screenDistance));
            if (screenDistance < 0.0) {
                // The prompt "> _", with a soft halo under the strokes.
                const double chevron = std::min(segmentDistance(px, py, 40, 46, 60, 64),
                                                segmentDistance(px, py, 60, 64, 40, 82));
                const double cursor = roundRectDistance(px, py, 68, 78, 90, 85, 1.5);
                const double glyph = std::min(chevron - 3.5, cursor);
                canvas.over(x, y, phosphor, 0.35 * std::clamp(1.0 - glyph / 7.0, 0.0, 1.0));
                canvas.over(x, y, phosphor, coverage(glyph));
                if (y % 2 == 1) {
                    canvas.shade(x, y, 0.82);
                }
            }
        }
    }
    return canvas.savePng(path, error);
}

// ---- the studio wordmark --------------------------------------------------

// An alpha mask of the word, from the font when there is one.
struct Mask {
    int w = 0;
    int h = 0;
    std::vector<double> alpha;
    double at(int x, int y) const {
        if (x < 0 || y < 0 || x >= w || y >= h) {
            return 0.0;
        }
        return alpha[cell(x, y, w)];
    }
};

constexpr const char* kStudioName = "ZEMBRILUX";
constexpr int kLogoW = 1024;
constexpr int kLogoH = 256;
constexpr int kTextWidth = 900;

bool fontMask(const std::string& fontPath, Mask& mask) {
    if (fontPath.empty() || TTF_Init() != 0) {
        return false;
    }
    bool ok = false;
    // Measure at a reference size, then open at the size that makes the
    // word just as wide as the space it is given.
    if (TTF_Font* probe = TTF_OpenFont(fontPath.c_str(), 100)) {
        int width = 0;
        int height = 0;
        TTF_SizeUTF8(probe, kStudioName, &width, &height);
        TTF_CloseFont(probe);
        const int size = width > 0 ? 100 * kTextWidth / width : 0;
        TTF_Font* font = size > 0 ? TTF_OpenFont(fontPath.c_str(), size) : nullptr;
        if (font != nullptr) {
            const SDL_Color white{255, 255, 255, 255};
            if (SDL_Surface* text = TTF_RenderUTF8_Blended(font, kStudioName, white)) {
                if (SDL_Surface* rgba = SDL_ConvertSurfaceFormat(text, SDL_PIXELFORMAT_RGBA32, 0)) {
                    mask.w = rgba->w;
                    mask.h = rgba->h;
                    mask.alpha.assign(cellCount(mask.w, mask.h), 0.0);
                    for (int y = 0; y < mask.h; ++y) {
                        const auto* row = static_cast<const std::uint8_t*>(rgba->pixels) + std::ptrdiff_t{y} * rgba->pitch;
                        for (int x = 0; x < mask.w; ++x) {
                            mask.alpha[cell(x, y, mask.w)] = row[x * 4 + 3] / 255.0;
                        }
                    }
                    ok = true;
                    SDL_FreeSurface(rgba);
                }
                SDL_FreeSurface(text);
            }
            TTF_CloseFont(font);
        }
    }
    TTF_Quit();
    return ok;
}

// Without a font the name is built from chunky 5x7 block letters, which
// suit a company whose machines still run green-screen terminals.
Mask blockMask() {
    static constexpr std::array<std::array<const char*, 7>, 9> kGlyphs{{
        {"#####", "    #", "   # ", "  #  ", " #   ", "#    ", "#####"},   // Z
        {"#####", "#    ", "#    ", "#### ", "#    ", "#    ", "#####"},   // E
        {"#   #", "## ##", "# # #", "# # #", "#   #", "#   #", "#   #"},   // M
        {"#### ", "#   #", "#   #", "#### ", "#   #", "#   #", "#### "},   // B
        {"#### ", "#   #", "#   #", "#### ", "# #  ", "#  # ", "#   #"},   // R
        {"#####", "  #  ", "  #  ", "  #  ", "  #  ", "  #  ", "#####"},   // I
        {"#    ", "#    ", "#    ", "#    ", "#    ", "#    ", "#####"},   // L
        {"#   #", "#   #", "#   #", "#   #", "#   #", "#   #", " ### "},   // U
        {"#   #", "#   #", " # # ", "  #  ", " # # ", "#   #", "#   #"},   // X
    }};
    constexpr int kColumns = 9 * 6 - 1;
    constexpr int kCell = kTextWidth / kColumns;
    Mask mask;
    mask.w = kColumns * kCell;
    mask.h = 7 * kCell;
    mask.alpha.assign(cellCount(mask.w, mask.h), 0.0);
    for (std::size_t letter = 0; letter < kGlyphs.size(); ++letter) {
        for (int row = 0; row < 7; ++row) {
            for (int col = 0; col < 5; ++col) {
                if (kGlyphs[letter][static_cast<std::size_t>(row)][col] != '#') {
                    continue;
                }
                const int x0 = (static_cast<int>(letter) * 6 + col) * kCell;
                for (int y = row * kCell; y < (row + 1) * kCell; ++y) {
                    for (int x = x0; x < x0 + kCell; ++x) {
                        mask.alpha[cell(x, y, mask.w)] = 1.0;
                    }
                }
            }
        }
    }
    return mask;
}

// Grows a mask by `radius` pixels (a square max filter, one axis at a time):
// the dark outline that keeps the gold letters readable on any background.
Mask dilate(const Mask& source, int radius) {
    Mask wide;
    wide.w = source.w + 2 * radius;
    wide.h = source.h + 2 * radius;
    std::vector<double> rows(cellCount(wide.w, source.h), 0.0);
    for (int y = 0; y < source.h; ++y) {
        for (int x = 0; x < wide.w; ++x) {
            double best = 0.0;
            for (int k = -radius; k <= radius; ++k) {
                best = std::max(best, source.at(x - radius + k, y));
            }
            rows[cell(x, y, wide.w)] = best;
        }
    }
    wide.alpha.assign(cellCount(wide.w, wide.h), 0.0);
    for (int y = 0; y < wide.h; ++y) {
        for (int x = 0; x < wide.w; ++x) {
            double best = 0.0;
            for (int k = -radius; k <= radius; ++k) {
                const int sy = y - radius + k;
                if (sy >= 0 && sy < source.h) {
                    best = std::max(best, rows[cell(x, sy, wide.w)]);
                }
            }
            wide.alpha[cell(x, y, wide.w)] = best;
        }
    }
    return wide;
}

bool writeStudioLogo(const fs::path& path, const std::string& fontPath, std::string& error) {
    Mask word;
    if (!fontMask(fontPath, word)) {
        word = blockMask();
    }
    constexpr int kOutline = 5;
    const Mask outline = dilate(word, kOutline);

    // Rows that really hold ink, so the gold gradient spans the letters
    // themselves rather than the font's line height.
    int inkTop = word.h;
    int inkBottom = 0;
    for (int y = 0; y < word.h; ++y) {
        for (int x = 0; x < word.w; ++x) {
            if (word.at(x, y) > 0.0) {
                inkTop = std::min(inkTop, y);
                inkBottom = std::max(inkBottom, y);
                break;
            }
        }
    }
    if (inkTop > inkBottom) {
        inkTop = 0;
        inkBottom = word.h - 1;
    }

    Canvas canvas(kLogoW, kLogoH);
    const int left = (kLogoW - word.w) / 2;
    const int inkHeight = inkBottom - inkTop + 1;
    const int top = (kLogoH - 30 - inkHeight) / 2 - inkTop;   // leaves room for the rule below
    const Rgb shadow{0, 0, 0};
    const Rgb bronze{56, 34, 10};
    const Rgb goldTop{255, 228, 140};
    const Rgb goldBottom{192, 124, 36};

    for (int y = 0; y < outline.h; ++y) {
        for (int x = 0; x < outline.w; ++x) {
            canvas.over(left - kOutline + x + 6, top - kOutline + y + 7, shadow, 0.4 * outline.at(x, y));
        }
    }
    for (int y = 0; y < outline.h; ++y) {
        for (int x = 0; x < outline.w; ++x) {
            canvas.over(left - kOutline + x, top - kOutline + y, bronze, outline.at(x, y));
        }
    }
    for (int y = 0; y < word.h; ++y) {
        const double t = std::clamp(static_cast<double>(y - inkTop) / inkHeight, 0.0, 1.0);
        Rgb gold = mix(goldTop, goldBottom, t);
        if (t > 0.46 && t < 0.52) {
            gold = mix(gold, Rgb{255, 246, 210}, 0.6);   // a polished band across the middle
        }
        for (int x = 0; x < word.w; ++x) {
            canvas.over(left + x, top + y, gold, word.at(x, y));
        }
    }

    // A rule under the name that fades out at both ends, with a diamond at
    // its centre.
    const int ruleY = top + inkBottom + kOutline + 16;
    for (int x = 40; x < kLogoW - 40; ++x) {
        const double fromCentre = std::abs(x - kLogoW / 2.0) / (kLogoW / 2.0 - 40.0);
        const double fade = std::clamp(1.0 - fromCentre, 0.0, 1.0);
        for (int y = ruleY; y < ruleY + 3; ++y) {
            canvas.over(x, y, goldBottom, fade);
        }
    }
    for (int y = ruleY - 10; y < ruleY + 13; ++y) {
        for (int x = kLogoW / 2 - 12; x < kLogoW / 2 + 12; ++x) {
            const double d = std::abs(x + 0.5 - kLogoW / 2.0) + std::abs(y + 0.5 - (ruleY + 1.5)) - 10.0;
            canvas.over(x, y, bronze, coverage(d));
            canvas.over(x, y, goldTop, coverage(d + 3.0));
        }
    }
    return canvas.savePng(path, error);
}

// Windows wants its icon as .ico; since Vista an .ico may simply wrap a PNG,
// so the same picture is carried over byte for byte: a six-byte header, one
// sixteen-byte directory entry, then the PNG.
bool writeIco(const fs::path& png, const fs::path& ico, int size, std::string& error) {
    std::ifstream in(png, std::ios::binary);
    const std::vector<char> image((std::istreambuf_iterator<char>(in)), std::istreambuf_iterator<char>());
    if (image.empty()) {
        error = "cannot read " + png.u8string();
        return false;
    }
    std::vector<char> bytes;
    const auto put = [&bytes](std::uint32_t value, int count) { putLe(bytes, value, count); };
    put(0, 2);   // reserved
    put(1, 2);   // an icon, not a cursor
    put(1, 2);   // one image
    put(static_cast<std::uint32_t>(size & 0xFF), 1);   // 0 would mean 256
    put(static_cast<std::uint32_t>(size & 0xFF), 1);
    put(0, 1);    // no palette
    put(0, 1);    // reserved
    put(1, 2);    // colour planes
    put(32, 2);   // bits per pixel
    put(static_cast<std::uint32_t>(image.size()), 4);
    put(6 + 16, 4);   // the PNG follows the directory
    bytes.insert(bytes.end(), image.begin(), image.end());
    return writeBytes(ico, bytes, error);
}

}  // namespace

bool writeImages(const fs::path& gameDir, const std::string& fontPath, std::string& error) {
    const fs::path images = gameDir / "assets" / "images";
    IMG_Init(IMG_INIT_PNG);
    const bool ok = writeIcon(images / "app_icon.png", error) &&
                    writeIco(images / "app_icon.png", images / "app_icon.ico", 128, error) &&
                    writeStudioLogo(images / "studio_logo.png", fontPath, error);
    IMG_Quit();
    return ok;
}

}  // namespace vorn::tools
