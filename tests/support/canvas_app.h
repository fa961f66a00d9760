#pragma once
// The real Application drawing into a 1366 x 768 software canvas instead of a
// window, for reading back exact pixels of whole screens. Nothing else of the
// application is started: no window, no sound, no save, no catalogue; a test
// sets the fields a screen reads and calls app.render(). The painted textures
// are built on the canvas's own renderer (or left out, to see the flat
// fallbacks), and the shipped fonts and studio logo come from the built game
// folder.
//
// PixelLens answers "what does this colour look like here once the glass
// overlay (or the room's darkening) is laid over it": every such layer only
// blends black or white over what is below, so it is affine in each channel
// at each pixel, and two runs of the layer, over black and over white, pin it
// down.

#include "app/application.h"
#include "support/software_canvas.h"

#include <gtest/gtest.h>

#include <functional>
#include <vector>

namespace vorn::test {

struct CanvasAppOptions {
    bool textures = true;   // paint the procedural textures
    bool fonts = true;      // the shipped game and display fonts
    bool logo = true;       // the studio logo of the game folder
};

class CanvasApp {
public:
    explicit CanvasApp(CanvasAppOptions options = {});
    ~CanvasApp();
    CanvasApp(const CanvasApp&) = delete;
    CanvasApp& operator=(const CanvasApp&) = delete;

    // Sets the screen and its clock, then draws one frame.
    void show(GameScreen screen, double screenTime = 1.0);
    Color pixel(int x, int y) const { return canvas.pixel(x, y); }

    SoftwareCanvas canvas;
    Application app;
};

// Every pixel of the canvas, row by row.
std::vector<Color> grab(const SoftwareCanvas& canvas);

class PixelLens {
public:
    // Runs the layer once over black and once over white on fresh canvases.
    explicit PixelLens(const std::function<void(Graphics&)>& layer);

    // The colour c as it comes out from under the layer at (x, y).
    Color through(Color c, int x, int y) const;

private:
    std::vector<Color> overBlack;
    std::vector<Color> overWhite;
};

// The monitor's glass overlay, and the room's darkening towards the corners.
const PixelLens& glassLens();
const PixelLens& roomLens();

// Whether a probe expects its colour as drawn, or as it shows under the glass
// overlay of the terminal screens.
enum class Seen { direct, throughGlass };

// True when the pixel shows colour c (within the rounding of a few stacked
// blends).
bool shows(const SoftwareCanvas& canvas, int x, int y, Color c, Seen seen = Seen::throughGlass);

// One call of Graphics::text, as a screen makes it.
struct TextCall {
    const char* s;
    int x;
    int y;
    TextSize size;
    Color c;
    bool centreX;
    bool centreY;
};

// Whether the area shows exactly the pixels that the call would put there
// over a flat background: the call is drawn alone with the shipped fonts on a
// scratch canvas filled with `background` (and, seen through the glass, laid
// under the same glass overlay), and every pixel of the area must match. A
// different word or digit, size, colour or position fails, and so does
// anything else drawn in the area. The area must hold only the text on that
// flat colour: show screens with the painted textures left out.
::testing::AssertionResult showsText(const SoftwareCanvas& canvas, const Rect& area,
                                     const TextCall& call, Color background,
                                     Seen seen = Seen::throughGlass);

// The same for lines set so close together that no area holds one alone
// (the title's stacked logo, a card's heading over its subtitle): all of the
// calls are drawn, in order, on the one scratch canvas.
::testing::AssertionResult showsTexts(const SoftwareCanvas& canvas, const Rect& area,
                                      const std::vector<TextCall>& calls, Color background,
                                      Seen seen = Seen::throughGlass);

// Where text stands on a shaded ground rather than a flat colour (the maker's
// plate across the chin's faces): the pixels of the area in exactly the
// call's colour must be exactly the solid pixels of the call drawn alone. A
// different word, size or position fails, and so does anything else in that
// colour inside the area; what the ground looks like is left to other checks.
::testing::AssertionResult showsInkOf(const SoftwareCanvas& canvas, const Rect& area,
                                      const TextCall& call);

// Whether every pixel of the area shows the one colour c: an empty stretch of
// glass or wall.
::testing::AssertionResult showsOnly(const SoftwareCanvas& canvas, const Rect& area, Color c,
                                     Seen seen = Seen::throughGlass);

}  // namespace vorn::test
