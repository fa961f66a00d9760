#pragma once
// The room's wall, the rails, the monitor casing and glass are painted in code
// once at start-up rather than shipped as images. Each painter is a pure
// function that fills a plain pixel buffer, so a picture can be checked pixel
// by pixel without a renderer; ProceduralArt then uploads the buffers as
// static textures and keeps them until shutdown. All randomness comes from
// noise grids that own their own seeded engines and never touch the run's, so
// the office looks exactly the same on every start. A texture that could not
// be created stays null and the screens draw a flat fill in its place.

#include "gfx/color.h"
#include "gfx/geometry.h"

#include <SDL.h>

#include <array>
#include <cstddef>
#include <cstdint>
#include <functional>
#include <vector>

namespace vorn {

// Width x height colours, row-major, each in the same packed layout as
// SDL_PIXELFORMAT_ABGR8888 (red in the lowest byte), so a buffer uploads as is.
// A fresh buffer is opaque black.
struct PixelBuffer {
    PixelBuffer(int w, int h);

    Color at(int x, int y) const { return pixels[index(x, y)]; }
    Color& at(int x, int y) { return pixels[index(x, y)]; }
    std::size_t index(int x, int y) const {
        return static_cast<std::size_t>(y) * static_cast<std::size_t>(width) +
               static_cast<std::size_t>(x);
    }

    int width = 0;
    int height = 0;
    std::vector<Color> pixels;
};

// One axis of a noise lookup: the two neighbouring grid indices (already
// wrapped) and the smoothstep weight of the second. Both axes of a painter's
// lookups depend on only one pixel coordinate each, so painters work the taps
// out once per column and once per row instead of once per pixel.
struct NoiseTap {
    int lo = 0;
    int hi = 0;
    float weight = 0.0f;
};

// (3 - 2f) f²: eases the blend between grid values so the noise has no creases.
float smoothstep(float f);
// i modulo n into 0..n-1, also for negative i: the grids tile endlessly both ways.
int wrapIndex(int i, int n);
// The tap for coordinate u on an axis of n cells.
NoiseTap noiseTap(float u, int n);

// A grid of values in [0, 1) from its own Mersenne Twister, sampled with
// smooth bilinear interpolation and wrapping at its edges.
class NoiseGrid {
public:
    NoiseGrid(int columns, int rows, std::uint32_t seed);

    // The grid value at column i, row j; both wrap.
    float value(int i, int j) const;
    // The value at (u, v) in grid cells: columns follow u, rows follow v.
    float sample(float u, float v) const;
    // The same lookup from taps worked out in advance.
    float blend(const NoiseTap& column, const NoiseTap& row) const;

    int columns = 0;
    int rows = 0;
    std::vector<float> values;
};

// Per channel (alpha included) c0 + (c1 - c0) t in single precision,
// truncated and clamped to 0..255.
Color lerpColor(Color c0, Color c1, float t);
// Adds the same amount to red, green and blue, each clamped to 0..255;
// alpha is kept.
Color offsetChannels(Color c, float offset);

// A streaked material: a vertical gradient with long horizontal grain, the
// grid squeezed across and stretched down so the streaks run sideways.
struct GrainRecipe {
    int width;
    int height;
    Color top;
    Color bottom;
    float gradient;   // how far down the gradient the bottom row gets
    int columns;
    int rows;
    std::uint32_t seed;
    float fx;
    float fy;
    float amplitude;
};

constexpr GrainRecipe kParchmentGrain{256, 256, rgb(236, 224, 190), rgb(150, 132, 92), 0.85f,
                                      256, 8, 7, 0.5f, 6.0f, 22.0f};
constexpr GrainRecipe kTopRailGrain{256, 256, rgb(60, 56, 48), rgb(26, 24, 20), 1.0f,
                                    128, 16, 21, 0.7f, 5.0f, 26.0f};
constexpr GrainRecipe kBrassGrain{64, 64, rgb(232, 186, 86), rgb(120, 86, 24), 1.0f,
                                  96, 16, 55, 0.6f, 7.0f, 30.0f};

constexpr int kWallTileWidth = 512;
constexpr int kWallTileHeight = 288;

constexpr Color kGreenGlassCentre = rgb(26, 54, 28);
constexpr Color kGreenGlassEdge = rgb(4, 12, 6);
constexpr Color kRedGlassCentre = rgb(54, 18, 16);
constexpr Color kRedGlassEdge = rgb(12, 3, 3);

PixelBuffer paintGrain(const GrainRecipe& recipe);
// A 768 x 576 CRT glass: bright centre fading to the edge, an RGB aperture
// mask, the glass tint, dark scan lines and a little grain.
PixelBuffer paintMonitor(Color centre, Color edge);
// 64 x 64 amber and black hazard stripes with a speckled red channel.
PixelBuffer paintStripes();
// 256 x 144 black that darkens towards the corners, stretched over the room.
PixelBuffer paintRoomOverlay();
// 256 x 256 light beige plastic with a faint mottle.
PixelBuffer paintCasing();
// 512 x 288 dark brown mottled wall with darker blotches and stains.
PixelBuffer paintWall();

// Creates a static ABGR8888 texture from the buffer; null when the renderer
// cannot make one. A buffer with any see-through pixel is copied with alpha
// blending; a wholly opaque one without (blending an opaque pixel gives that
// pixel, so the picture is the same and the copy is cheaper).
SDL_Texture* uploadTexture(SDL_Renderer* renderer, const PixelBuffer& pixels);

// The painted textures, built once after the renderer exists and released
// before it is destroyed (the renderer frees its textures with it, so this set
// has no destructor of its own that could free them a second time).
class ProceduralArt {
public:
    using Uploader = std::function<SDL_Texture*(const PixelBuffer&)>;

    ProceduralArt() = default;
    ProceduralArt(const ProceduralArt&) = delete;
    ProceduralArt& operator=(const ProceduralArt&) = delete;

    // Paints and uploads every texture and makes their scaled copies; true
    // when all nine were created. Any earlier set is released first.
    bool build(SDL_Renderer* renderer);
    // (Re)makes the copies of the textures the room and terminal draw, each
    // stretched once to the size it covers on the canvas, so a frame copies
    // them pixel for pixel. Again when the renderer loses its targets'
    // contents; without render targets the textures are stretched every frame.
    void makeScaledCopies(SDL_Renderer* renderer);
    void releaseScaledCopies();
    // The copy of `source` made for a rectangle of r's size, or null.
    SDL_Texture* scaledCopy(SDL_Texture* source, const Rect& r) const;
    // The same, with the upload step supplied by the caller. Textures are
    // painted in a fixed order and each buffer is dropped as soon as it is
    // uploaded, so only one is ever held at a time.
    bool buildWith(const Uploader& upload);
    // Destroys every texture (copies included) and leaves the handles null;
    // safe to repeat.
    void release();

    // The glass for a requested screen colour: red when its red byte beats its
    // green byte, green otherwise.
    SDL_Texture* screenFor(Color screenColor) const;

    SDL_Texture* wallTile = nullptr;
    SDL_Texture* parchment = nullptr;     // no screen draws it yet
    SDL_Texture* casing = nullptr;
    SDL_Texture* topRail = nullptr;
    SDL_Texture* greenScreen = nullptr;
    SDL_Texture* redScreen = nullptr;
    SDL_Texture* bottomStrip = nullptr;
    SDL_Texture* brass = nullptr;         // no screen draws it yet
    SDL_Texture* roomOverlay = nullptr;
    // The tiling step; fixed, so a wall drawn after a failed build can never
    // loop with a zero step.
    int wallTileWidth = kWallTileWidth;
    int wallTileHeight = kWallTileHeight;

    struct ScaledCopy {
        SDL_Texture* source = nullptr;
        Rect rect{};
        SDL_Texture* copy = nullptr;
    };
    // The wall tile, the casing twice (monitor and keyboard block), both
    // glasses, the rail, the strip and the room's darkening.
    std::array<ScaledCopy, 8> scaledCopies{};
};

}  // namespace vorn
