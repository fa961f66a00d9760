// The painted textures: the noise underneath them, the painters' pixels (some
// pinned to values worked out by hand from the formulas), and the upload into
// static, alpha-blended ABGR8888 textures on a software renderer.

#include "gfx/procedural_art.h"
#include "gfx/terminal.h"
#include "support/software_canvas.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <random>
#include <vector>

namespace vorn::test {
namespace {

// --- Noise grid ---------------------------------------------------------------

TEST(NoiseGrid, FirstValueIsTheEnginesFirstDrawShiftedDownEightBits) {
    const NoiseGrid grid(256, 8, 7);
    std::mt19937 engine(7);
    EXPECT_EQ(grid.values[0], static_cast<float>(engine() >> 8) / 16777216.0f);
    // mt19937 seeded with 7 first gives 327741615; >> 8 is 1280240; / 2^24.
    EXPECT_EQ(grid.values[0], 0.0763082504272461f);
    EXPECT_EQ(NoiseGrid(24, 24, 1337).values[0], 0.2620246410369873f);
}

TEST(NoiseGrid, ValuesFillRowMajorFromTheirOwnEngine) {
    const NoiseGrid grid(4, 3, 7);
    std::mt19937 engine(7);
    ASSERT_EQ(grid.values.size(), 12u);
    for (int j = 0; j < 3; ++j) {
        for (int i = 0; i < 4; ++i) {
            const float expected = static_cast<float>(engine() >> 8) / 16777216.0f;
            EXPECT_EQ(grid.value(i, j), expected) << i << "," << j;
        }
    }
}

TEST(NoiseGrid, ValuesLieInTheHalfOpenUnitRange) {
    const NoiseGrid grid(96, 96, 61);
    for (float v : grid.values) {
        ASSERT_GE(v, 0.0f);
        ASSERT_LT(v, 1.0f);
    }
}

TEST(NoiseGrid, IndicesWrapAlsoWhenNegative) {
    EXPECT_EQ(wrapIndex(-1, 5), 4);
    EXPECT_EQ(wrapIndex(-5, 5), 0);
    EXPECT_EQ(wrapIndex(-6, 5), 4);
    EXPECT_EQ(wrapIndex(7, 5), 2);
    const NoiseGrid grid(4, 3, 7);
    EXPECT_EQ(grid.value(-1, 0), grid.value(3, 0));
    EXPECT_EQ(grid.value(0, -1), grid.value(0, 2));
    EXPECT_EQ(grid.value(-5, -4), grid.value(3, 2));
    EXPECT_EQ(grid.value(4, 3), grid.value(0, 0));
}

TEST(NoiseGrid, SamplingWrapsForNegativeCoordinates) {
    const NoiseGrid grid(4, 3, 7);
    EXPECT_EQ(grid.sample(-0.5f, -0.25f), grid.sample(3.5f, 2.75f));
    EXPECT_EQ(grid.sample(-4.0f, -3.0f), grid.value(0, 0));
    // Between the last column and the wrapped first one.
    EXPECT_FLOAT_EQ(grid.sample(-0.5f, 0.0f), (grid.value(3, 0) + grid.value(0, 0)) / 2.0f);
}

TEST(NoiseGrid, SmoothstepAtTheEndsAndTheMiddle) {
    EXPECT_EQ(smoothstep(0.0f), 0.0f);
    EXPECT_EQ(smoothstep(0.5f), 0.5f);
    EXPECT_EQ(smoothstep(1.0f), 1.0f);
    EXPECT_EQ(smoothstep(0.25f), 0.15625f);   // (3 - 0.5) * 0.0625
}

TEST(NoiseGrid, SamplesBlendNeighboursWithSmoothstepWeights) {
    const NoiseGrid grid(4, 3, 7);
    const float a = grid.value(0, 0);
    const float b = grid.value(1, 0);
    const float c = grid.value(0, 1);
    EXPECT_EQ(grid.sample(0.0f, 0.0f), a);
    EXPECT_EQ(grid.sample(1.0f, 0.0f), b);
    EXPECT_FLOAT_EQ(grid.sample(0.5f, 0.0f), (a + b) / 2.0f);
    // A quarter of the way across weighs the neighbour 0.15625, not 0.25.
    EXPECT_FLOAT_EQ(grid.sample(0.25f, 0.0f), a + (b - a) * 0.15625f);
    EXPECT_FLOAT_EQ(grid.sample(0.0f, 0.25f), a + (c - a) * 0.15625f);
    EXPECT_EQ(grid.sample(0.25f, 0.0f), 0.0999068096280098f);   // worked out by hand
}

// --- Colour helpers -----------------------------------------------------------

TEST(ProceduralColour, PixelBuffersStartOpaqueBlack) {
    const PixelBuffer buffer(3, 2);
    EXPECT_EQ(buffer.width, 3);
    EXPECT_EQ(buffer.height, 2);
    ASSERT_EQ(buffer.pixels.size(), 6u);
    for (Color c : buffer.pixels) {
        EXPECT_EQ(c, rgb(0, 0, 0, 255));
    }
}

TEST(ProceduralColour, LerpTruncatesAndClampsEveryChannel) {
    EXPECT_EQ(lerpColor(rgb(0, 0, 0, 0), rgb(255, 255, 255, 255), 0.5f), rgb(127, 127, 127, 127));
    EXPECT_EQ(lerpColor(rgb(100, 10, 0), rgb(200, 20, 255), 2.0f), rgb(255, 30, 255));
    EXPECT_EQ(lerpColor(rgb(100, 10, 0), rgb(200, 20, 255), -1.0f), rgb(0, 0, 0));
    EXPECT_EQ(lerpColor(rgb(30, 21, 14), rgb(56, 40, 26), 0.3f), rgb(37, 26, 17));
}

TEST(ProceduralColour, OffsetsClampEachChannelAndKeepAlpha) {
    EXPECT_EQ(offsetChannels(rgb(250, 5, 100, 77), 10.7f), rgb(255, 15, 110, 77));
    EXPECT_EQ(offsetChannels(rgb(250, 5, 100, 77), -10.7f), rgb(239, 0, 89, 77));
}

// --- Painters -----------------------------------------------------------------

struct Painted {
    int width;
    int height;
    PixelBuffer (*paint)();
};

// Every texture of the set, in the order it is built.
const std::vector<Painted>& allPainters() {
    static const std::vector<Painted> painters{
        {512, 288, paintWall},
        {256, 256, [] { return paintGrain(kParchmentGrain); }},
        {256, 256, paintCasing},
        {256, 256, [] { return paintGrain(kTopRailGrain); }},
        {64, 64, [] { return paintGrain(kBrassGrain); }},
        {768, 576, [] { return paintMonitor(kGreenGlassCentre, kGreenGlassEdge); }},
        {768, 576, [] { return paintMonitor(kRedGlassCentre, kRedGlassEdge); }},
        {64, 64, paintStripes},
        {256, 144, paintRoomOverlay},
    };
    return painters;
}

TEST(ProceduralPainters, EveryTextureHasItsSize) {
    for (const Painted& p : allPainters()) {
        const PixelBuffer buffer = p.paint();
        EXPECT_EQ(buffer.width, p.width);
        EXPECT_EQ(buffer.height, p.height);
        EXPECT_EQ(buffer.pixels.size(), static_cast<std::size_t>(p.width * p.height));
    }
}

TEST(ProceduralPainters, PaintingAgainGivesTheSamePixels) {
    std::vector<PixelBuffer> first;
    for (const Painted& p : allPainters()) {
        first.push_back(p.paint());
    }
    for (std::size_t i = 0; i < first.size(); ++i) {
        EXPECT_EQ(allPainters()[i].paint().pixels, first[i].pixels) << "texture " << i;
    }
}

// These values were worked out by hand (with single-precision arithmetic at
// every step) from the painters' formulas; they change only if a formula does.
TEST(ProceduralPainters, PixelsMatchValuesWorkedOutByHand) {
    EXPECT_EQ(paintGrain(kTopRailGrain).at(10, 3), rgb(47, 43, 35));
    EXPECT_EQ(paintGrain(kParchmentGrain).at(100, 200), rgb(169, 153, 115));
    EXPECT_EQ(paintGrain(kBrassGrain).at(20, 40), rgb(155, 116, 40));
    EXPECT_EQ(paintCasing().at(37, 201), rgb(212, 205, 186));
    const PixelBuffer green = paintMonitor(kGreenGlassCentre, kGreenGlassEdge);
    EXPECT_EQ(green.at(400, 300), rgb(15, 88, 17));
    EXPECT_EQ(green.at(401, 302), rgb(8, 26, 17));   // a scan line, on a green phosphor
    EXPECT_EQ(paintMonitor(kRedGlassCentre, kRedGlassEdge).at(383, 289), rgb(56, 15, 19));
    const PixelBuffer wall = paintWall();
    EXPECT_EQ(wall.at(0, 0), rgb(33, 22, 13));     // stained
    EXPECT_EQ(wall.at(17, 13), rgb(35, 23, 16));   // blotched and stained
    EXPECT_EQ(wall.at(300, 200), rgb(44, 31, 21));
    const PixelBuffer stripes = paintStripes();
    EXPECT_EQ(stripes.at(3, 5), rgb(25, 18, 8));      // dark band, 26 - 15 mod 7
    EXPECT_EQ(stripes.at(10, 10), rgb(208, 140, 28));  // amber band, 210 - 100 mod 7
    EXPECT_EQ(stripes.at(20, 10), rgb(22, 18, 8));     // dark again: 30 / 14 = 2
    EXPECT_EQ(stripes.at(63, 63), rgb(210, 140, 28));  // 3969 is a multiple of 7
    const PixelBuffer overlay = paintRoomOverlay();
    EXPECT_EQ(overlay.at(0, 72), rgb(0, 0, 0, 164));
    EXPECT_EQ(overlay.at(128, 0), rgb(0, 0, 0, 52));
    EXPECT_EQ(overlay.at(255, 143), rgb(0, 0, 0, 212));
}

TEST(ProceduralPainters, OverlayIsClearAtTheCentreAndDarkestInTheCorners) {
    const PixelBuffer overlay = paintRoomOverlay();
    EXPECT_EQ(overlay.at(128, 72), rgb(0, 0, 0, 0));
    EXPECT_EQ(alpha(overlay.at(0, 0)), 216);   // 0.85 * 255, truncated
    int darkest = 0;
    for (Color c : overlay.pixels) {
        ASSERT_EQ(c & 0x00FFFFFFu, 0u) << "the overlay is pure black";
        darkest = std::max(darkest, alpha(c));
    }
    EXPECT_EQ(darkest, 216);
}

TEST(ProceduralPainters, StripesRepeatEvery28PixelsAlongTheDiagonal) {
    const PixelBuffer stripes = paintStripes();
    // Green and blue carry the band alone (red is speckled).
    const auto band = [&](int x, int y) { return stripes.at(x, y) & 0xFFFFFF00u; };
    for (int y = 0; y < 64; ++y) {
        for (int x = 0; x < 64; ++x) {
            if (x + 28 < 64) {
                ASSERT_EQ(band(x, y), band(x + 28, y)) << x << "," << y;
            }
            if (y + 28 < 64) {
                ASSERT_EQ(band(x, y), band(x, y + 28)) << x << "," << y;
            }
            if (x + 1 < 64 && y > 0) {
                ASSERT_EQ(band(x, y), band(x + 1, y - 1)) << "constant along the diagonal";
            }
        }
    }
    // Half a period flips the band: amber at 14..27, dark at 0..13 and 28..41.
    EXPECT_EQ(band(13, 0), rgb(0, 18, 8));
    EXPECT_EQ(band(14, 0), rgb(0, 140, 28));
    EXPECT_EQ(band(27, 0), rgb(0, 140, 28));
    EXPECT_EQ(band(28, 0), rgb(0, 18, 8));
}

TEST(ProceduralPainters, StripesRedSpeckleFollowsXTimesYModuloSeven) {
    const PixelBuffer stripes = paintStripes();
    for (int y = 0; y < 64; ++y) {
        for (int x = 0; x < 64; ++x) {
            const Color c = stripes.at(x, y);
            const int base = green(c) == 140 ? 210 : 26;
            ASSERT_EQ(red(c), base - (x * y) % 7) << x << "," << y;
            ASSERT_EQ(alpha(c), 255);
        }
    }
}

TEST(ProceduralPainters, RedGlassIsRedAndGreenGlassIsGreen) {
    const PixelBuffer green = paintMonitor(kGreenGlassCentre, kGreenGlassEdge);
    const PixelBuffer red = paintMonitor(kRedGlassCentre, kRedGlassEdge);
    long greenSum[3] = {0, 0, 0};
    long redSum[3] = {0, 0, 0};
    for (std::size_t i = 0; i < green.pixels.size(); ++i) {
        greenSum[0] += vorn::red(green.pixels[i]);
        greenSum[1] += vorn::green(green.pixels[i]);
        redSum[0] += vorn::red(red.pixels[i]);
        redSum[1] += vorn::green(red.pixels[i]);
    }
    EXPECT_GT(greenSum[1], 2 * greenSum[0]);
    EXPECT_GT(redSum[0], 2 * redSum[1]);
}

// --- The uploaded set -----------------------------------------------------------

std::vector<SDL_Texture* ProceduralArt::*> slotsInBuildOrder() {
    return {&ProceduralArt::wallTile,    &ProceduralArt::parchment, &ProceduralArt::casing,
            &ProceduralArt::topRail,     &ProceduralArt::brass,     &ProceduralArt::greenScreen,
            &ProceduralArt::redScreen,   &ProceduralArt::bottomStrip, &ProceduralArt::roomOverlay};
}

TEST(ProceduralArtSet, PaintsInBuildOrder) {
    ProceduralArt art;
    std::vector<std::vector<Color>> uploaded;
    const bool complete = art.buildWith([&](const PixelBuffer& pixels) -> SDL_Texture* {
        uploaded.push_back(pixels.pixels);
        return nullptr;
    });
    EXPECT_FALSE(complete);
    ASSERT_EQ(uploaded.size(), allPainters().size());
    for (std::size_t i = 0; i < uploaded.size(); ++i) {
        EXPECT_EQ(uploaded[i], allPainters()[i].paint().pixels) << "step " << i;
    }
}

TEST(ProceduralArtSet, EachTextureLandsInItsOwnSlot) {
    SoftwareCanvas canvas;
    SDL_Renderer* renderer = canvas.graphics.renderer;
    ProceduralArt art;
    std::vector<SDL_Texture*> created;
    ASSERT_TRUE(art.buildWith([&](const PixelBuffer& pixels) {
        created.push_back(uploadTexture(renderer, pixels));
        return created.back();
    }));
    const auto slots = slotsInBuildOrder();
    ASSERT_EQ(created.size(), slots.size());
    for (std::size_t i = 0; i < slots.size(); ++i) {
        EXPECT_EQ(art.*slots[i], created[i]) << "step " << i;
    }
    art.release();
}

TEST(ProceduralArtSet, UploadsStaticAbgrTexturesOfTheRightSize) {
    SoftwareCanvas canvas;
    ProceduralArt art;
    ASSERT_TRUE(art.build(canvas.graphics.renderer));
    const auto slots = slotsInBuildOrder();
    for (std::size_t i = 0; i < slots.size(); ++i) {
        SDL_Texture* texture = art.*slots[i];
        ASSERT_NE(texture, nullptr) << "step " << i;
        Uint32 format = 0;
        int access = 0;
        int w = 0;
        int h = 0;
        ASSERT_EQ(SDL_QueryTexture(texture, &format, &access, &w, &h), 0);
        EXPECT_EQ(format, static_cast<Uint32>(SDL_PIXELFORMAT_ABGR8888));
        EXPECT_EQ(access, SDL_TEXTUREACCESS_STATIC);
        EXPECT_EQ(w, allPainters()[i].width);
        EXPECT_EQ(h, allPainters()[i].height);
    }
    EXPECT_EQ(art.wallTileWidth, 512);
    EXPECT_EQ(art.wallTileHeight, 288);
    art.release();
}

TEST(ProceduralArtSet, OnlyTheRoomsDarkeningIsCopiedWithBlending) {
    // Every painter but the room overlay paints opaque pixels only; the
    // overlay is black of varying alpha.
    SoftwareCanvas canvas;
    ProceduralArt art;
    ASSERT_TRUE(art.build(canvas.graphics.renderer));
    const auto slots = slotsInBuildOrder();
    for (std::size_t i = 0; i < slots.size(); ++i) {
        SDL_BlendMode mode = SDL_BLENDMODE_INVALID;
        ASSERT_EQ(SDL_GetTextureBlendMode(art.*slots[i], &mode), 0);
        EXPECT_EQ(mode, i == 8 ? SDL_BLENDMODE_BLEND : SDL_BLENDMODE_NONE) << "step " << i;
    }
    art.release();
}

TEST(ProceduralArtSet, AnyTransparentPixelMakesAnUploadBlend) {
    SoftwareCanvas canvas;
    PixelBuffer buffer(4, 4);   // opaque black
    SDL_Texture* solid = uploadTexture(canvas.graphics.renderer, buffer);
    buffer.at(3, 3) = rgb(0, 0, 0, 254);
    SDL_Texture* seeThrough = uploadTexture(canvas.graphics.renderer, buffer);
    ASSERT_NE(solid, nullptr);
    ASSERT_NE(seeThrough, nullptr);
    SDL_BlendMode mode = SDL_BLENDMODE_INVALID;
    SDL_GetTextureBlendMode(solid, &mode);
    EXPECT_EQ(mode, SDL_BLENDMODE_NONE);
    SDL_GetTextureBlendMode(seeThrough, &mode);
    EXPECT_EQ(mode, SDL_BLENDMODE_BLEND);
    SDL_DestroyTexture(solid);
    SDL_DestroyTexture(seeThrough);
}

TEST(ProceduralArtSet, EveryStretchedPieceGetsACopyOfItsRectanglesSize) {
    SoftwareCanvas canvas;
    ProceduralArt art;
    ASSERT_TRUE(art.build(canvas.graphics.renderer));
    struct Want {
        SDL_Texture* source;
        Rect rect;
    };
    const Want wanted[] = {
        {art.casing, {181, 20, 1004, 632}},     // the monitor's casing
        {art.casing, {533, 730, 300, 20}},      // the keyboard block
        {art.greenScreen, {247, 78, 872, 612}},
        {art.redScreen, {247, 78, 872, 612}},
        {art.topRail, {0, 0, 1366, 40}},
        {art.bottomStrip, {0, 742, 1366, 26}},
        {art.roomOverlay, {0, 0, 1366, 768}},
    };
    for (const Want& want : wanted) {
        SDL_Texture* copy = art.scaledCopy(want.source, want.rect);
        ASSERT_NE(copy, nullptr) << want.rect.w << "x" << want.rect.h;
        int w = 0;
        int h = 0;
        SDL_QueryTexture(copy, nullptr, nullptr, &w, &h);
        EXPECT_EQ(w, want.rect.w);
        EXPECT_EQ(h, want.rect.h);
    }
    // The wall is tiled at its own size: one copy of that size serves every
    // tile. A size nobody draws has none.
    EXPECT_NE(art.scaledCopy(art.wallTile, {0, 0, 512, 288}), nullptr);
    EXPECT_EQ(art.scaledCopy(art.wallTile, {1024, 576, 512, 288}),
              art.scaledCopy(art.wallTile, {0, 0, 512, 288}));
    EXPECT_EQ(art.scaledCopy(art.casing, {181, 20, 1004, 631}), nullptr);
    art.releaseScaledCopies();
    EXPECT_EQ(art.scaledCopy(art.casing, {181, 20, 1004, 632}), nullptr);
    art.release();
}

// The terminal drawn from the scaled copies and drawn by stretching the
// textures every frame: the same bytes, glass green and red.
TEST(ProceduralArtSet, TheCopiesDrawTheSamePixelsAsStretchingEveryFrame) {
    for (const Color glass : {rgb(0, 200, 0), rgb(200, 0, 0)}) {
        SoftwareCanvas fast;
        SoftwareCanvas slow;
        ProceduralArt fastArt;
        ProceduralArt slowArt;
        ASSERT_TRUE(fastArt.build(fast.graphics.renderer));
        ASSERT_TRUE(slowArt.build(slow.graphics.renderer));
        slowArt.releaseScaledCopies();
        drawTerminal(fast.graphics, fastArt, glass);
        drawTerminal(slow.graphics, slowArt, glass);
        SDL_RenderFlush(fast.graphics.renderer);
        SDL_RenderFlush(slow.graphics.renderer);
        int differing = 0;
        for (int y = 0; y < kCanvasHeight; ++y) {
            for (int x = 0; x < kCanvasWidth; ++x) {
                differing += fast.pixel(x, y) != slow.pixel(x, y) ? 1 : 0;
            }
        }
        EXPECT_EQ(differing, 0);
        // And the copies were really used: without them a stretched picture
        // needs the textures themselves.
        EXPECT_NE(fastArt.scaledCopy(fastArt.casing, kCasing), nullptr);
        fastArt.release();
        slowArt.release();
    }
}

TEST(ProceduralArtSet, UploadedPixelsAreThePaintedOnes) {
    SoftwareCanvas canvas;
    canvas.fill(rgb(1, 2, 3));
    ProceduralArt art;
    ASSERT_TRUE(art.build(canvas.graphics.renderer));
    // Copied unblended at 1:1, the texture lands on the canvas byte for byte.
    SDL_SetTextureBlendMode(art.bottomStrip, SDL_BLENDMODE_NONE);
    const SDL_Rect where{100, 200, 64, 64};
    ASSERT_EQ(SDL_RenderCopy(canvas.graphics.renderer, art.bottomStrip, nullptr, &where), 0);
    SDL_RenderFlush(canvas.graphics.renderer);
    const PixelBuffer stripes = paintStripes();
    for (int y = 0; y < 64; ++y) {
        for (int x = 0; x < 64; ++x) {
            ASSERT_EQ(canvas.pixel(100 + x, 200 + y), stripes.at(x, y)) << x << "," << y;
        }
    }
    art.release();
}

TEST(ProceduralArtSet, NullRendererLeavesEveryTextureNull) {
    ProceduralArt art;
    EXPECT_FALSE(art.build(nullptr));
    for (auto slot : slotsInBuildOrder()) {
        EXPECT_EQ(art.*slot, nullptr);
    }
    EXPECT_EQ(uploadTexture(nullptr, paintStripes()), nullptr);
    art.release();
    art.release();
}

TEST(ProceduralArtSet, ReleaseNullsEverythingAndIsHarmlessTwice) {
    SoftwareCanvas canvas;
    ProceduralArt art;
    ASSERT_TRUE(art.build(canvas.graphics.renderer));
    art.release();
    for (auto slot : slotsInBuildOrder()) {
        EXPECT_EQ(art.*slot, nullptr);
    }
    art.release();
    // The tiling step survives, so a wall loop never runs with a zero step.
    EXPECT_EQ(art.wallTileWidth, 512);
    EXPECT_EQ(art.wallTileHeight, 288);
}

TEST(ProceduralArtSet, RebuildingReplacesTheEarlierSet) {
    SoftwareCanvas canvas;
    ProceduralArt art;
    ASSERT_TRUE(art.build(canvas.graphics.renderer));
    ASSERT_TRUE(art.build(canvas.graphics.renderer));
    for (auto slot : slotsInBuildOrder()) {
        EXPECT_NE(art.*slot, nullptr);
    }
    art.release();
}

TEST(ProceduralArtSet, RedScreenColourPicksTheRedGlass) {
    SoftwareCanvas canvas;
    ProceduralArt art;
    ASSERT_TRUE(art.build(canvas.graphics.renderer));
    EXPECT_EQ(art.screenFor(palette::redScreen), art.redScreen);
    EXPECT_EQ(art.screenFor(palette::greenScreen), art.greenScreen);
    EXPECT_EQ(art.screenFor(rgb(40, 40, 40)), art.greenScreen);   // a tie is not red
    art.release();
}

}  // namespace
}  // namespace vorn::test
