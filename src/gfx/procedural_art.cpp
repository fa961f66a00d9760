#include "gfx/procedural_art.h"

#include "gfx/graphics.h"
#include "gfx/terminal.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <initializer_list>
#include <random>

namespace vorn {

namespace {

// The wall's own choices, picked by eye. Blotches and stains are sampled down
// the tile at 9/16 of their frequency across it, the tile's own aspect, so they
// come out round instead of squashed into dashes by the 16:9 tile. The final
// grain reads the 24-cell grid at 0.9 per pixel and so repeats every 27 pixels
// or so: at 8 it is a plaster roughness, much above that the repeat shows as a
// lattice.
constexpr float kBlotchAcross = 40.0f;
constexpr float kBlotchDown = 22.5f;
constexpr float kStainAcross = 8.0f;
constexpr float kStainDown = 4.5f;
constexpr float kWallGrain = 8.0f;

constexpr int kGlassWidth = 768;
constexpr int kGlassHeight = 576;
constexpr int kStripeSize = 64;
constexpr int kOverlayWidth = 256;
constexpr int kOverlayHeight = 144;
constexpr int kCasingSize = 256;

// Truncates towards zero and clamps to a channel. Clamping first in float
// gives the same result and never converts an out-of-range value.
int toChannel(float v) {
    if (!(v > 0.0f)) {
        return 0;
    }
    if (v >= 255.0f) {
        return 255;
    }
    return static_cast<int>(v);
}

// The taps of every pixel along one axis, for a coordinate that depends on
// that pixel position alone.
template <class Coordinate>
std::vector<NoiseTap> tapsAlong(int count, int cells, Coordinate coordinate) {
    std::vector<NoiseTap> taps(static_cast<std::size_t>(std::max(count, 0)));
    for (int p = 0; p < count; ++p) {
        taps[static_cast<std::size_t>(p)] = noiseTap(coordinate(p), cells);
    }
    return taps;
}

// Position over size as a fraction, in single precision like everything here.
float fraction(int p, int size) { return static_cast<float>(p) / static_cast<float>(size); }

// A fractal value of three octaves, each twice the frequency and half the
// weight of the one before; the taps hold one vector per octave.
struct Octaves3 {
    std::array<std::vector<NoiseTap>, 3> columns;
    std::array<std::vector<NoiseTap>, 3> rows;

    float value(const NoiseGrid& grid, int x, int y) const {
        const auto xi = static_cast<std::size_t>(x);
        const auto yi = static_cast<std::size_t>(y);
        return 0.5f * grid.blend(columns[0][xi], rows[0][yi]) +
               0.25f * grid.blend(columns[1][xi], rows[1][yi]) +
               0.125f * grid.blend(columns[2][xi], rows[2][yi]);
    }
};

// Three octaves sampled at m (across u + shiftX, down v + shiftY) for m = 1, 2, 4.
Octaves3 octaves3(const NoiseGrid& grid, int w, int h, float across, float shiftX, float down,
                  float shiftY) {
    Octaves3 o;
    for (std::size_t k = 0; k < 3; ++k) {
        const float m = static_cast<float>(1 << k);
        o.columns[k] = tapsAlong(w, grid.columns,
                                 [&](int x) { return m * (across * fraction(x, w) + shiftX); });
        o.rows[k] = tapsAlong(h, grid.rows,
                              [&](int y) { return m * (down * fraction(y, h) + shiftY); });
    }
    return o;
}

}  // namespace

PixelBuffer::PixelBuffer(int w, int h)
    : width(std::max(w, 0)),
      height(std::max(h, 0)),
      pixels(static_cast<std::size_t>(width) * static_cast<std::size_t>(height), palette::black) {}

float smoothstep(float f) { return (3.0f - 2.0f * f) * (f * f); }

int wrapIndex(int i, int n) {
    const int r = i % n;
    return r < 0 ? r + n : r;
}

NoiseTap noiseTap(float u, int n) {
    const float cell = std::floor(u);
    const int i = static_cast<int>(cell);
    return NoiseTap{wrapIndex(i, n), wrapIndex(i + 1, n), smoothstep(u - cell)};
}

NoiseGrid::NoiseGrid(int columnCount, int rowCount, std::uint32_t seed)
    : columns(std::max(columnCount, 1)), rows(std::max(rowCount, 1)) {
    // The grid's own engine: the run's draws are never disturbed, and the
    // same seed always paints the same picture.
    std::mt19937 engine(seed);
    values.resize(static_cast<std::size_t>(columns) * static_cast<std::size_t>(rows));
    for (float& v : values) {
        v = static_cast<float>(engine() >> 8) * (1.0f / 16777216.0f);
    }
}

float NoiseGrid::value(int i, int j) const {
    const auto row = static_cast<std::size_t>(wrapIndex(j, rows));
    const auto column = static_cast<std::size_t>(wrapIndex(i, columns));
    return values[row * static_cast<std::size_t>(columns) + column];
}

float NoiseGrid::sample(float u, float v) const {
    return blend(noiseTap(u, columns), noiseTap(v, rows));
}

float NoiseGrid::blend(const NoiseTap& column, const NoiseTap& row) const {
    const std::size_t top = static_cast<std::size_t>(row.lo) * static_cast<std::size_t>(columns);
    const std::size_t bottom = static_cast<std::size_t>(row.hi) * static_cast<std::size_t>(columns);
    const auto lo = static_cast<std::size_t>(column.lo);
    const auto hi = static_cast<std::size_t>(column.hi);
    const float upper = values[top + lo] + (values[top + hi] - values[top + lo]) * column.weight;
    const float lower =
        values[bottom + lo] + (values[bottom + hi] - values[bottom + lo]) * column.weight;
    return upper + (lower - upper) * row.weight;
}

Color lerpColor(Color c0, Color c1, float t) {
    const auto mix = [t](int a, int b) {
        return toChannel(static_cast<float>(a) + static_cast<float>(b - a) * t);
    };
    return rgb(mix(red(c0), red(c1)), mix(green(c0), green(c1)), mix(blue(c0), blue(c1)),
               mix(alpha(c0), alpha(c1)));
}

Color offsetChannels(Color c, float offset) {
    return rgb(toChannel(static_cast<float>(red(c)) + offset),
               toChannel(static_cast<float>(green(c)) + offset),
               toChannel(static_cast<float>(blue(c)) + offset), alpha(c));
}

PixelBuffer paintGrain(const GrainRecipe& recipe) {
    PixelBuffer out(recipe.width, recipe.height);
    const NoiseGrid grid(recipe.columns, recipe.rows, recipe.seed);
    const auto columns = tapsAlong(out.width, grid.columns,
                                   [&](int x) { return static_cast<float>(x) * recipe.fx; });
    const auto rows = tapsAlong(out.height, grid.rows,
                                [&](int y) { return static_cast<float>(y) * recipe.fy; });
    for (int y = 0; y < out.height; ++y) {
        const float t = recipe.gradient * static_cast<float>(y) / static_cast<float>(out.height);
        const Color base = lerpColor(recipe.top, recipe.bottom, t);
        for (int x = 0; x < out.width; ++x) {
            const float n =
                grid.blend(columns[static_cast<std::size_t>(x)], rows[static_cast<std::size_t>(y)]);
            out.at(x, y) = offsetChannels(base, (n - 0.5f) * recipe.amplitude);
        }
    }
    return out;
}

PixelBuffer paintMonitor(Color centre, Color edge) {
    const int w = kGlassWidth;
    const int h = kGlassHeight;
    PixelBuffer out(w, h);
    const NoiseGrid grid(96, 96, static_cast<std::uint32_t>(green(centre) + 7));

    // The phosphor triads: each column lifts its own primary and dims the other
    // two, and the glass tint is folded into the same factor so a channel is
    // scaled once. The red glass is the one whose centre is redder than green.
    const bool redGlass = green(centre) < red(centre);
    const std::array<float, 3> tint = redGlass ? std::array<float, 3>{1.2f, 0.75f, 0.7f}
                                               : std::array<float, 3>{0.8f, 1.15f, 0.85f};
    std::array<std::array<float, 3>, 3> gain{};
    for (std::size_t phase = 0; phase < 3; ++phase) {
        for (std::size_t ch = 0; ch < 3; ++ch) {
            gain[phase][ch] = (phase == ch ? 1.25f : 0.7f) * tint[ch];
        }
    }

    std::vector<float> nx2(static_cast<std::size_t>(w));
    std::vector<float> ny2(static_cast<std::size_t>(h));
    for (int x = 0; x < w; ++x) {
        const float nx = static_cast<float>(x - w / 2) / static_cast<float>(w / 2);
        nx2[static_cast<std::size_t>(x)] = nx * nx;
    }
    for (int y = 0; y < h; ++y) {
        const float ny = static_cast<float>(y - h / 2) / static_cast<float>(h / 2);
        ny2[static_cast<std::size_t>(y)] = ny * ny;
    }
    const auto columns =
        tapsAlong(w, grid.columns, [](int x) { return 0.9f * static_cast<float>(x); });
    const auto rows = tapsAlong(h, grid.rows, [](int y) { return 0.9f * static_cast<float>(y); });

    for (int y = 0; y < h; ++y) {
        const auto yi = static_cast<std::size_t>(y);
        const bool scanline = (y & 2) != 0;
        for (int x = 0; x < w; ++x) {
            const auto xi = static_cast<std::size_t>(x);
            const float r2 = nx2[xi] + ny2[yi];
            const float t = std::max(1.0f - 0.55f * (r2 * r2), 0.0f);
            const Color base = lerpColor(edge, centre, t);
            const float k = 1.0f + 0.18f * (1.0f - std::min(1.1f * r2, 1.0f));
            const float grain = (grid.blend(columns[xi], rows[yi]) - 0.5f) * 12.0f;
            const auto& triad = gain[xi % 3];
            const std::array<int, 3> source{red(base), green(base), blue(base)};
            std::array<int, 3> c{};
            for (std::size_t ch = 0; ch < 3; ++ch) {
                int v = toChannel(static_cast<float>(source[ch]) * k);
                v = toChannel(static_cast<float>(v) * triad[ch]);
                if (scanline) {
                    v = toChannel(static_cast<float>(v) * 0.55f);
                }
                c[ch] = toChannel(static_cast<float>(v) + grain);
            }
            out.at(x, y) = rgb(c[0], c[1], c[2], alpha(centre));
        }
    }
    return out;
}

PixelBuffer paintStripes() {
    PixelBuffer out(kStripeSize, kStripeSize);
    for (int y = 0; y < out.height; ++y) {
        for (int x = 0; x < out.width; ++x) {
            const bool amber = ((x + y) / 14) % 2 == 1;
            // The red channel is nibbled by (x * y) mod 7 so the paint looks
            // worn rather than printed.
            const int r = std::clamp((amber ? 210 : 26) - (x * y) % 7, 0, 255);
            out.at(x, y) = amber ? rgb(r, 140, 28) : rgb(r, 18, 8);
        }
    }
    return out;
}

PixelBuffer paintRoomOverlay() {
    PixelBuffer out(kOverlayWidth, kOverlayHeight);
    // Normalised so the corners sit at distance 1: 21568 = 128² + 72².
    const float corner = std::sqrt(21568.0f);
    for (int y = 0; y < out.height; ++y) {
        for (int x = 0; x < out.width; ++x) {
            const auto dx = static_cast<float>(x - 128);
            const auto dy = static_cast<float>(y - 72);
            const float d = std::sqrt(dx * dx + dy * dy) / corner;
            out.at(x, y) = rgb(0, 0, 0, toChannel(0.85f * (d * d) * 255.0f));
        }
    }
    return out;
}

PixelBuffer paintCasing() {
    const int w = kCasingSize;
    const int h = kCasingSize;
    PixelBuffer out(w, h);
    const NoiseGrid grid(64, 64, 303);
    const std::array<float, 3> scales{4.0f, 8.0f, 16.0f};
    std::array<std::vector<NoiseTap>, 3> columns;
    std::array<std::vector<NoiseTap>, 3> rows;
    for (std::size_t k = 0; k < 3; ++k) {
        const float s = scales[k];
        columns[k] = tapsAlong(w, grid.columns, [&](int x) { return s * fraction(x, w); });
        rows[k] = tapsAlong(h, grid.rows, [&](int y) { return s * fraction(y, h); });
    }
    for (int y = 0; y < h; ++y) {
        const auto yi = static_cast<std::size_t>(y);
        const Color base = lerpColor(rgb(225, 219, 201), rgb(198, 191, 170),
                                     0.6f * static_cast<float>(y) / static_cast<float>(h));
        for (int x = 0; x < w; ++x) {
            const auto xi = static_cast<std::size_t>(x);
            const float f = 0.5f * grid.blend(columns[0][xi], rows[0][yi]) +
                            0.25f * grid.blend(columns[1][xi], rows[1][yi]) +
                            0.125f * grid.blend(columns[2][xi], rows[2][yi]);
            out.at(x, y) = offsetChannels(base, (f - 0.5f) * 8.0f);
        }
    }
    return out;
}

PixelBuffer paintWall() {
    const int w = kWallTileWidth;
    const int h = kWallTileHeight;
    PixelBuffer out(w, h);
    const NoiseGrid coarse(24, 24, 1337);
    const NoiseGrid fine(64, 64, 99);

    // The plaster's colour: four octaves from 5 to 40 cycles across the tile.
    const std::array<float, 4> plasterScales{5.0f, 10.0f, 20.0f, 40.0f};
    std::array<std::vector<NoiseTap>, 4> plasterColumns;
    std::array<std::vector<NoiseTap>, 4> plasterRows;
    for (std::size_t k = 0; k < 4; ++k) {
        const float s = plasterScales[k];
        plasterColumns[k] =
            tapsAlong(w, coarse.columns, [&](int x) { return s * fraction(x, w); });
        plasterRows[k] = tapsAlong(h, coarse.rows, [&](int y) { return s * fraction(y, h); });
    }
    // Blotches are small and many; stains are few and wide, read from another
    // corner of the same grid so they do not line up with the blotches.
    const Octaves3 blotches = octaves3(fine, w, h, kBlotchAcross, 0.0f, kBlotchDown, 0.0f);
    const Octaves3 stains = octaves3(fine, w, h, kStainAcross, 10.0f, kStainDown, 5.0f);
    const auto grainColumns =
        tapsAlong(w, coarse.columns, [](int x) { return 0.9f * static_cast<float>(x); });
    const auto grainRows =
        tapsAlong(h, coarse.rows, [](int y) { return 0.9f * static_cast<float>(y); });

    for (int y = 0; y < h; ++y) {
        const auto yi = static_cast<std::size_t>(y);
        for (int x = 0; x < w; ++x) {
            const auto xi = static_cast<std::size_t>(x);
            const float f1 = 0.5f * coarse.blend(plasterColumns[0][xi], plasterRows[0][yi]) +
                             0.25f * coarse.blend(plasterColumns[1][xi], plasterRows[1][yi]) +
                             0.125f * coarse.blend(plasterColumns[2][xi], plasterRows[2][yi]) +
                             0.0625f * coarse.blend(plasterColumns[3][xi], plasterRows[3][yi]);
            Color c = lerpColor(rgb(30, 21, 14), rgb(56, 40, 26), f1);
            const float f2 = blotches.value(fine, x, y);
            if (f2 < 0.34f) {
                c = lerpColor(c, rgb(20, 12, 8), (0.34f - f2) * 1.3f);
            }
            const float f3 = stains.value(fine, x, y);
            if (f3 < 0.3f) {
                c = lerpColor(c, rgb(14, 9, 6), 0.3f - f3);
            }
            const float grain = coarse.blend(grainColumns[xi], grainRows[yi]);
            out.at(x, y) = offsetChannels(c, (grain - 0.5f) * kWallGrain);
        }
    }
    return out;
}

SDL_Texture* uploadTexture(SDL_Renderer* renderer, const PixelBuffer& pixels) {
    if (renderer == nullptr || pixels.width == 0 || pixels.height == 0) {
        return nullptr;
    }
    SDL_Texture* texture = SDL_CreateTexture(renderer, SDL_PIXELFORMAT_ABGR8888,
                                             SDL_TEXTUREACCESS_STATIC, pixels.width, pixels.height);
    if (texture == nullptr) {
        return nullptr;
    }
    // A texture whose pixels never arrived would show garbage; better the
    // flat fill the screens draw for a missing one.
    if (SDL_UpdateTexture(texture, nullptr, pixels.pixels.data(), pixels.width * 4) != 0) {
        SDL_DestroyTexture(texture);
        return nullptr;
    }
    const bool opaque = std::all_of(pixels.pixels.begin(), pixels.pixels.end(),
                                    [](Color c) { return alpha(c) == 255; });
    SDL_SetTextureBlendMode(texture, opaque ? SDL_BLENDMODE_NONE : SDL_BLENDMODE_BLEND);
    return texture;
}

bool ProceduralArt::build(SDL_Renderer* renderer) {
    if (renderer == nullptr) {
        // Nothing could be uploaded: spare the painting.
        release();
        return false;
    }
    const bool complete = buildWith(
        [renderer](const PixelBuffer& pixels) { return uploadTexture(renderer, pixels); });
    makeScaledCopies(renderer);
    return complete;
}

namespace {

// The source stretched over the whole of a new target texture of the given
// size, by the renderer's own scaling, with its blending off so the copy
// holds exactly the pixels a stretched copy would lay down; the copy then
// gets the source's blend mode. An opaque copy takes the format of the
// canvas it is drawn onto, so a frame copies it unconverted; a see-through
// one keeps the source's, whose blend the pinned frames were drawn with.
// Null when the renderer cannot do it.
SDL_Texture* stretchedCopy(SDL_Renderer* renderer, SDL_Texture* source, int w, int h) {
    Uint32 format = 0;
    SDL_BlendMode mode = SDL_BLENDMODE_NONE;
    SDL_Texture* previous = SDL_GetRenderTarget(renderer);
    if (SDL_QueryTexture(source, &format, nullptr, nullptr, nullptr) != 0 ||
        SDL_GetTextureBlendMode(source, &mode) != 0 ||
        (mode == SDL_BLENDMODE_NONE && previous != nullptr &&
         SDL_QueryTexture(previous, &format, nullptr, nullptr, nullptr) != 0)) {
        return nullptr;
    }
    SDL_Texture* copy = SDL_CreateTexture(renderer, format, SDL_TEXTUREACCESS_TARGET, w, h);
    if (copy == nullptr) {
        return nullptr;
    }
    // Unblended over the whole copy, so no clear is needed first.
    bool drawn = SDL_SetRenderTarget(renderer, copy) == 0;
    if (drawn) {
        SDL_SetTextureBlendMode(source, SDL_BLENDMODE_NONE);
        drawn = SDL_RenderCopy(renderer, source, nullptr, nullptr) == 0;
        SDL_SetTextureBlendMode(source, mode);
        SDL_SetRenderTarget(renderer, previous);
    }
    if (!drawn) {
        SDL_DestroyTexture(copy);
        return nullptr;
    }
    SDL_SetTextureBlendMode(copy, mode);
    return copy;
}

}  // namespace

void ProceduralArt::makeScaledCopies(SDL_Renderer* renderer) {
    releaseScaledCopies();
    if (renderer == nullptr || SDL_RenderTargetSupported(renderer) != SDL_TRUE) {
        return;
    }
    const std::array<ScaledCopy, 8> wanted{{
        {wallTile, {0, 0, wallTileWidth, wallTileHeight}, nullptr},
        {casing, kCasing, nullptr},
        {casing, kKeyboardBlock, nullptr},
        {greenScreen, kMonitorGlass, nullptr},
        {redScreen, kMonitorGlass, nullptr},
        {topRail, kTopRail, nullptr},
        {bottomStrip, kBottomStrip, nullptr},
        {roomOverlay, {0, 0, kCanvasWidth, kCanvasHeight}, nullptr},
    }};
    for (std::size_t i = 0; i < wanted.size(); ++i) {
        scaledCopies[i] = wanted[i];
        if (wanted[i].source != nullptr) {
            scaledCopies[i].copy =
                stretchedCopy(renderer, wanted[i].source, wanted[i].rect.w, wanted[i].rect.h);
        }
    }
}

void ProceduralArt::releaseScaledCopies() {
    for (ScaledCopy& entry : scaledCopies) {
        if (entry.copy != nullptr) {
            SDL_DestroyTexture(entry.copy);
        }
        entry = ScaledCopy{};
    }
}

SDL_Texture* ProceduralArt::scaledCopy(SDL_Texture* source, const Rect& r) const {
    // Only the size matters: the wall's one tile copy serves every tile.
    for (const ScaledCopy& entry : scaledCopies) {
        if (entry.source == source && entry.source != nullptr && entry.rect.w == r.w &&
            entry.rect.h == r.h) {
            return entry.copy;
        }
    }
    return nullptr;
}

bool ProceduralArt::buildWith(const Uploader& upload) {
    release();
    struct Step {
        SDL_Texture* ProceduralArt::*slot;
        PixelBuffer (*paint)();
    };
    const std::array<Step, 9> steps{{
        {&ProceduralArt::wallTile, paintWall},
        {&ProceduralArt::parchment, [] { return paintGrain(kParchmentGrain); }},
        {&ProceduralArt::casing, paintCasing},
        {&ProceduralArt::topRail, [] { return paintGrain(kTopRailGrain); }},
        {&ProceduralArt::brass, [] { return paintGrain(kBrassGrain); }},
        {&ProceduralArt::greenScreen,
         [] { return paintMonitor(kGreenGlassCentre, kGreenGlassEdge); }},
        {&ProceduralArt::redScreen, [] { return paintMonitor(kRedGlassCentre, kRedGlassEdge); }},
        {&ProceduralArt::bottomStrip, paintStripes},
        {&ProceduralArt::roomOverlay, paintRoomOverlay},
    }};
    bool complete = true;
    for (const Step& step : steps) {
        // The buffer is a temporary: it is gone as soon as its upload returns.
        SDL_Texture* texture = upload ? upload(step.paint()) : nullptr;
        this->*step.slot = texture;
        complete = complete && texture != nullptr;
    }
    return complete;
}

void ProceduralArt::release() {
    releaseScaledCopies();
    for (SDL_Texture** slot : {&wallTile, &parchment, &casing, &topRail, &greenScreen, &redScreen,
                               &bottomStrip, &brass, &roomOverlay}) {
        if (*slot != nullptr) {
            SDL_DestroyTexture(*slot);
            *slot = nullptr;
        }
    }
}

SDL_Texture* ProceduralArt::screenFor(Color screenColor) const {
    return red(screenColor) > green(screenColor) ? redScreen : greenScreen;
}

}  // namespace vorn
