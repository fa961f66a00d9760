#include "support/canvas_app.h"

#include "gfx/procedural_art.h"

#include <SDL_ttf.h>

#include <string>

namespace vorn::test {

namespace {

// A few stacked alpha blends each round by up to one step.
constexpr int kBlendTolerance = 4;

}  // namespace

std::vector<Color> grab(const SoftwareCanvas& canvas) {
    std::vector<Color> pixels;
    pixels.reserve(static_cast<std::size_t>(kCanvasWidth) * kCanvasHeight);
    for (int y = 0; y < kCanvasHeight; ++y) {
        for (int x = 0; x < kCanvasWidth; ++x) {
            pixels.push_back(canvas.pixel(x, y));
        }
    }
    return pixels;
}

CanvasApp::CanvasApp(CanvasAppOptions options) {
    app.graphics.attach(canvas.graphics.renderer);
    // As in the game: every frame is drawn into the canvas texture and
    // present copies it onto the surface, here one to one.
    app.graphics.makeCanvas();
    if (options.fonts) {
        if (!canvas.startedTtf) {
            canvas.startedTtf = TTF_Init() == 0;
        }
        app.graphics.loadFonts(VORN_GAME_DIR "/assets/fonts");
    }
    if (options.textures) {
        app.art.build(app.graphics.renderer);
    }
    if (options.logo) {
        app.studioLogo = app.graphics.loadTexture(VORN_GAME_DIR "/assets/images/studio_logo.png",
                                                  &app.studioLogoW, &app.studioLogoH);
    }
}

CanvasApp::~CanvasApp() {
    app.station.reset();
    app.art.release();
    if (app.studioLogo != nullptr) {
        SDL_DestroyTexture(app.studioLogo);
        app.studioLogo = nullptr;
    }
    // The renderer belongs to the canvas: close the fonts here and let the
    // canvas destroy the renderer after.
    app.graphics.renderer = nullptr;
    app.graphics.shutdown();
}

void CanvasApp::show(GameScreen screen, double screenTime) {
    app.screen = screen;
    app.screenTime = screenTime;
    app.render();
}

PixelLens::PixelLens(const std::function<void(Graphics&)>& layer) {
    {
        SoftwareCanvas black;
        black.fill(rgb(0, 0, 0));
        layer(black.graphics);
        overBlack = grab(black);
    }
    SoftwareCanvas white;
    white.fill(rgb(255, 255, 255));
    layer(white.graphics);
    overWhite = grab(white);
}

Color PixelLens::through(Color c, int x, int y) const {
    const std::size_t i = static_cast<std::size_t>(y) * kCanvasWidth + static_cast<std::size_t>(x);
    const auto channel = [&](int value, int low, int high) {
        // value * (high - low) / 255 + low: the layer's gain and its own light.
        return static_cast<int>(std::lround(value * (high - low) / 255.0 + low));
    };
    return rgb(channel(red(c), red(overBlack[i]), red(overWhite[i])),
               channel(green(c), green(overBlack[i]), green(overWhite[i])),
               channel(blue(c), blue(overBlack[i]), blue(overWhite[i])), alpha(c));
}

const PixelLens& glassLens() {
    static const PixelLens lens([](Graphics& g) { g.monitorOverlay(); });
    return lens;
}

const PixelLens& roomLens() {
    static const PixelLens lens([](Graphics& g) {
        ProceduralArt art;
        art.build(g.renderer);
        g.blitCentered(art.roomOverlay, kCanvasWidth / 2, kCanvasHeight / 2, kCanvasWidth,
                       kCanvasHeight);
        art.release();
    });
    return lens;
}

bool shows(const SoftwareCanvas& canvas, int x, int y, Color c, Seen seen) {
    const Color expected = seen == Seen::throughGlass ? glassLens().through(c, x, y) : c;
    return near(opaque(canvas.pixel(x, y)), opaque(expected), kBlendTolerance);
}

namespace {

// Every pixel of the area against the scratch picture.
::testing::AssertionResult samePixels(const SoftwareCanvas& canvas, const SoftwareCanvas& scratch,
                                      const Rect& area, const std::string& said) {
    int differing = 0;
    int firstX = -1;
    int firstY = -1;
    for (int y = area.y; y < area.y + area.h; ++y) {
        for (int x = area.x; x < area.x + area.w; ++x) {
            if (canvas.pixel(x, y) != scratch.pixel(x, y)) {
                if (differing++ == 0) {
                    firstX = x;
                    firstY = y;
                }
            }
        }
    }
    if (differing > 0) {
        return ::testing::AssertionFailure()
               << said << ": " << differing << " pixels of the area differ, the first at ("
               << firstX << ", " << firstY << ") shows " << std::hex << canvas.pixel(firstX, firstY)
               << " instead of " << scratch.pixel(firstX, firstY);
    }
    return ::testing::AssertionSuccess();
}

}  // namespace

::testing::AssertionResult showsTexts(const SoftwareCanvas& canvas, const Rect& area,
                                      const std::vector<TextCall>& calls, Color background,
                                      Seen seen) {
    SoftwareCanvas scratch;
    scratch.useGameFonts();
    scratch.fill(background);
    std::string said;
    for (const TextCall& call : calls) {
        if (scratch.graphics.text(call.s, call.x, call.y, call.size, call.c, call.centreX,
                                  call.centreY) == 0) {
            return ::testing::AssertionFailure() << "\"" << call.s << "\" draws nothing on its own";
        }
        said += said.empty() ? "\"" : " + \"";
        said += call.s;
        said += "\"";
    }
    if (seen == Seen::throughGlass) {
        scratch.graphics.monitorOverlay();
    }
    return samePixels(canvas, scratch, area, said);
}

::testing::AssertionResult showsInkOf(const SoftwareCanvas& canvas, const Rect& area,
                                      const TextCall& call) {
    // The scratch ground is the ink's complement, so no pixel of it, nor any
    // blend of a glyph's edge into it, is taken for the ink itself.
    SoftwareCanvas scratch;
    scratch.useGameFonts();
    scratch.fill(opaque(~call.c));
    if (scratch.graphics.text(call.s, call.x, call.y, call.size, call.c, call.centreX, call.centreY) ==
        0) {
        return ::testing::AssertionFailure() << "\"" << call.s << "\" draws nothing on its own";
    }
    int solid = 0;
    int differing = 0;
    int firstX = -1;
    int firstY = -1;
    for (int y = area.y; y < area.y + area.h; ++y) {
        for (int x = area.x; x < area.x + area.w; ++x) {
            const bool expected = scratch.pixel(x, y) == call.c;
            solid += expected ? 1 : 0;
            if ((canvas.pixel(x, y) == call.c) != expected && differing++ == 0) {
                firstX = x;
                firstY = y;
            }
        }
    }
    if (solid == 0) {
        return ::testing::AssertionFailure() << "\"" << call.s << "\" has no solid pixel in the area";
    }
    if (differing > 0) {
        return ::testing::AssertionFailure()
               << "\"" << call.s << "\": " << differing << " of the area's pixels disagree on its ink, the first at ("
               << firstX << ", " << firstY << ") showing " << std::hex << canvas.pixel(firstX, firstY);
    }
    return ::testing::AssertionSuccess();
}

::testing::AssertionResult showsOnly(const SoftwareCanvas& canvas, const Rect& area, Color c, Seen seen) {
    SoftwareCanvas scratch;
    scratch.fill(c);
    if (seen == Seen::throughGlass) {
        scratch.graphics.monitorOverlay();
    }
    return samePixels(canvas, scratch, area, "the empty area");
}

::testing::AssertionResult showsText(const SoftwareCanvas& canvas, const Rect& area,
                                     const TextCall& call, Color background, Seen seen) {
    return showsTexts(canvas, area, {call}, background, seen);
}

}  // namespace vorn::test
