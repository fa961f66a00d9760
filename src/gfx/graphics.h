#pragma once
// The drawing kit: the one object every screen and station draws through. It
// wraps the SDL renderer on a fixed 1366 x 768 logical canvas and offers a
// handful of primitives (rectangles, rounded rectangles, thick lines, circles,
// arcs, centred images) and text in six fixed sizes from two fonts. Nothing is
// cached between frames except the opened fonts: every string is rasterised
// anew each time it is drawn, which keeps the screens free of stale text.
// Every frame is drawn into one 1366 x 768 texture, pixel for pixel, and
// present lays it into the window in one scaled, letter-boxed copy (drawing
// at the window's scale cost five times more at 1920 x 1080 and lost lines).

#include "gfx/color.h"
#include "gfx/geometry.h"
#include "log/printf_format.h"

#include <SDL.h>
#include <SDL_ttf.h>

#include <cstddef>
#include <cstdint>
#include <string>
#include <unordered_map>
#include <vector>

namespace vorn {

constexpr int kCanvasWidth = 1366;
constexpr int kCanvasHeight = 768;

enum class TextSize : std::int32_t {
    Tiny = 0,    // 11 pt, game font
    Small = 1,   // 16 pt, game font
    Normal = 2,  // 20 pt, game font
    Large = 3,   // 30 pt, display font
    Huge = 4,    // 52 pt, display font
    Giant = 5,   // 96 pt, display font
};

// Point size of a text size; anything outside the six sizes reads as Normal.
int pointSize(TextSize size);
// Sizes Large, Huge and Giant use the display font, everything else the game font.
bool usesDisplayFont(TextSize size);

// FNV-1a over the four bytes of the key: the font cache's hash.
struct TextSizeHash {
    std::size_t operator()(TextSize size) const;
};

class Graphics {
public:
    Graphics() = default;
    Graphics(const Graphics&) = delete;
    Graphics& operator=(const Graphics&) = delete;

    // Creates the renderer (accelerated with vsync, else software) and the canvas.
    bool init(SDL_Window* window);
    // Takes over a renderer made elsewhere (tests draw into a software canvas),
    // as init does, drawing straight into its output until makeCanvas.
    void attach(SDL_Renderer* existing);
    // (Re)makes the canvas and draws into it; false, drawing straight into the
    // output, without render targets. Again after lost targets or device.
    bool makeCanvas();
    // Finds the game and display fonts; they are opened lazily by fontFor.
    bool loadFonts(const std::string& folder);
    void resetLogicalSize();
    void shutdown();

    void clear(Color c);
    void present();
    void rect(const Rect& r, Color c, bool filled);
    void roundRect(const Rect& r, int radius, Color c, bool filled);
    void line(int x1, int y1, int x2, int y2, Color c, int thickness);
    void circle(int cx, int cy, int r, Color c, bool filled);
    void arc(int cx, int cy, int r, double a0, double a1, int thickness, Color c);
    void blitCentered(SDL_Texture* tex, int cx, int cy, int w, int h);
    SDL_Texture* loadTexture(const std::string& path, int* outW = nullptr, int* outH = nullptr);

    int text(const char* s, int x, int y, TextSize size, Color c, bool centerX, bool centerY);
    int text(const std::string& s, int x, int y, TextSize size, Color c, bool centerX, bool centerY) {
        return text(s.c_str(), x, y, size, c, centerX, centerY);
    }
    int textWidth(const char* s, TextSize size);
    int textWidth(const std::string& s, TextSize size) { return textWidth(s.c_str(), size); }
    TTF_Font* fontFor(TextSize size);

    static int formatInto(char* buffer, std::size_t size, const char* format, ...)
        VORN_PRINTF_FORMAT(3);

    // Limits every draw to the rectangle (canvas pixels), or not at all when
    // null; a clipped draw puts down exactly its whole pixels that fall inside.
    void clip(const Rect* r);

    // The glass effects laid over the terminal screens just before present:
    // scan lines, darkened edges and a faint glare, clipped to the glass.
    void monitorOverlay();

    SDL_Renderer* renderer = nullptr;
    // What every frame is drawn into; null while drawing straight to the output.
    SDL_Texture* canvas = nullptr;
    std::unordered_map<TextSize, TTF_Font*, TextSizeHash> fontCache;
    std::string fontPath;
    std::string gameFontPath;
    std::string displayFontPath;

private:
    void setColor(Color c);
    // The colour for fills and points. Blending an opaque colour gives that
    // very colour, so those skip the per-pixel blend; lines always blend,
    // because SDL steps blended and plain lines along different pixels.
    void setFillColor(Color c);
    void useBlending(bool on);

    bool blending = true;
    // Round corners and arcs gather their dots here and send them in one
    // call; the buffer keeps its capacity, so a frame allocates nothing.
    std::vector<SDL_Point> points;
};

// The monitor glass every terminal screen is drawn on.
constexpr Rect kMonitorGlass{247, 78, 872, 612};

}  // namespace vorn
