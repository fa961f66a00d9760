// Draws every screen of the game headlessly and saves each as a PNG, for the
// README and for reviewing the art without starting the game. It draws with
// the game's own Application::render through SDL's software renderer onto a
// 1366 x 768 surface, with the fonts, logo and catalogue of a built game
// folder, and a fixed seed so the pictures only change when the drawing does.
//
//   screen_gallery [--out DIR] [--game DIR] [--full-size] [--station TYPE NUMBER]...
//
// Without --station it writes the whole set; with one or more, only those
// station screens (the catalogue's record of that number, played as TYPE).
// Pictures are saved at half size unless --full-size is given: the painted
// grain and scan lines make full-size PNGs about a megabyte each, too heavy
// to keep beside the README.

#include "app/application.h"
#include "app/game_types.h"
#include "data/level_catalogue.h"

#include <SDL.h>
#include <SDL_image.h>
#include <SDL_ttf.h>

#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <numeric>
#include <string>
#include <vector>

namespace {

namespace fs = std::filesystem;
using namespace vorn;

// A fixed seed (the employee number on every footer), so a station lays
// itself out the same way each time the gallery is drawn.
constexpr std::uint32_t kGallerySeed = 49;

struct StationShot {
    std::string type;
    int number;
};

struct Options {
    fs::path out = "docs/gallery";
    fs::path game = VORN_GAME_DIR;
    std::vector<StationShot> stations;
    bool fullSize = false;
};

bool parse(int argc, char** argv, Options& options) {
    for (int i = 1; i < argc; ++i) {
        const std::string arg = argv[i];
        if (arg == "--out" && i + 1 < argc) {
            options.out = fs::u8path(argv[++i]);
        } else if (arg == "--game" && i + 1 < argc) {
            options.game = fs::u8path(argv[++i]);
        } else if (arg == "--full-size") {
            options.fullSize = true;
        } else if (arg == "--station" && i + 2 < argc) {
            const std::string type = argv[++i];
            const int number = std::atoi(argv[++i]);
            if (number <= 0) {
                return false;
            }
            options.stations.push_back({type, number});
        } else {
            return false;
        }
    }
    return true;
}

// The canvas at half its size, each pixel the average of a 2 x 2 block, so
// the scan lines turn into an even dimming instead of moire.
SDL_Surface* halfSize(SDL_Surface* canvas) {
    SDL_Surface* small = SDL_CreateRGBSurfaceWithFormat(0, canvas->w / 2, canvas->h / 2, 24,
                                                        SDL_PIXELFORMAT_RGB24);
    if (small == nullptr) {
        return nullptr;
    }
    const auto* src = static_cast<const Uint8*>(canvas->pixels);
    auto* dst = static_cast<Uint8*>(small->pixels);
    for (int y = 0; y < small->h; ++y) {
        for (int x = 0; x < small->w; ++x) {
            for (int channel = 0; channel < 3; ++channel) {
                // RGBA32 keeps red, green, blue, alpha in this byte order.
                int sum = 0;
                for (int dy = 0; dy < 2; ++dy) {
                    for (int dx = 0; dx < 2; ++dx) {
                        sum += src[(2 * y + dy) * canvas->pitch + (2 * x + dx) * 4 + channel];
                    }
                }
                dst[y * small->pitch + x * 3 + channel] = static_cast<Uint8>((sum + 2) / 4);
            }
        }
    }
    return small;
}

// The game drawn into a plain surface instead of a window.
class Studio {
public:
    explicit Studio(const Options& options) : out(options.out), fullSize(options.fullSize) {
        surface = SDL_CreateRGBSurfaceWithFormat(0, kCanvasWidth, kCanvasHeight, 32,
                                                 SDL_PIXELFORMAT_RGBA32);
        SDL_Renderer* renderer = surface != nullptr ? SDL_CreateSoftwareRenderer(surface) : nullptr;
        if (renderer == nullptr) {
            std::fprintf(stderr, "screen_gallery: no software renderer: %s\n", SDL_GetError());
            return;
        }
        app.graphics.attach(renderer);
        app.graphics.loadFonts((options.game / "assets" / "fonts").u8string());
        app.art.build(renderer);
        const std::string logo = (options.game / "assets" / "images" / "studio_logo.png").u8string();
        app.studioLogo = app.graphics.loadTexture(logo, &app.studioLogoW, &app.studioLogoH);
        loadLevels(app.levels, (options.game / "data" / "levels" / "levels.json").u8string());
        app.stationOrder.resize(app.levels.size());
        std::iota(app.stationOrder.begin(), app.stationOrder.end(), 0);
        ready = true;
    }

    ~Studio() {
        app.station.reset();
        app.art.release();
        if (app.studioLogo != nullptr) {
            SDL_DestroyTexture(app.studioLogo);
            app.studioLogo = nullptr;
        }
        app.graphics.shutdown();
        SDL_FreeSurface(surface);
    }
    Studio(const Studio&) = delete;
    Studio& operator=(const Studio&) = delete;

    // Draws the application's current screen and writes it as out/name.png,
    // without an alpha channel (the canvas is opaque, and the files smaller).
    bool shoot(const char* name) {
        app.render();
        SDL_Surface* opaque = fullSize ? SDL_ConvertSurfaceFormat(surface, SDL_PIXELFORMAT_RGB24, 0)
                                       : halfSize(surface);
        if (opaque == nullptr) {
            std::fprintf(stderr, "screen_gallery: %s: %s\n", name, SDL_GetError());
            return false;
        }
        const std::string file = (out / (std::string(name) + ".png")).u8string();
        const bool saved = IMG_SavePNG(opaque, file.c_str()) == 0;
        SDL_FreeSurface(opaque);
        if (!saved) {
            std::fprintf(stderr, "screen_gallery: cannot write %s: %s\n", file.c_str(), SDL_GetError());
            return false;
        }
        std::printf("%s\n", file.c_str());
        return true;
    }

    void show(GameScreen screen, double screenTime) {
        app.screen = screen;
        app.screenTime = screenTime;
    }

    // The station screen of the catalogue record with this number, played as
    // the given type, as it looks the moment its clock starts.
    bool station(const StationShot& shot) {
        std::size_t index = 0;
        while (index < app.levels.size() && app.levels[index].number != shot.number) {
            ++index;
        }
        if (index == app.levels.size()) {
            LevelDef def;
            def.number = shot.number;
            def.id = shot.type;
            def.name = shot.type;
            def.phase = phaseForNumber(shot.number);
            app.levels.push_back(def);
            app.stationOrder.push_back(static_cast<std::int32_t>(index));
        }
        app.levels[index].type = shot.type;
        app.difficulty = Difficulty::medium;
        app.rng.seed(kGallerySeed);
        app.startStation(static_cast<std::int32_t>(index));
        char name[96];
        std::snprintf(name, sizeof name, "station-%02d-%s", shot.number, shot.type.c_str());
        return shoot(name);
    }

    Application app;
    SDL_Surface* surface = nullptr;
    fs::path out;
    bool fullSize = false;
    bool ready = false;
};

bool wholeGallery(Studio& studio) {
    Application& app = studio.app;
    bool ok = true;

    app.splashRevealed = true;
    app.splashRevealAt = 1.5;
    studio.show(GameScreen::splash, 3.0);   // well past the logo's fade-in
    ok &= studio.shoot("splash");

    const char* const cards[] = {"shift-probation", "shift-starts", "shift-overtime"};
    for (int phase = 0; phase < 3; ++phase) {
        app.shiftCardPhase = phase;
        studio.show(GameScreen::shiftCard, 1.5);   // between the fades
        ok &= studio.shoot(cards[phase]);
    }

    app.save.timesFired = 7;
    app.save.clockInCards = 0;
    app.menuIndex = 1;
    studio.show(GameScreen::title, 1.0);
    ok &= studio.shoot("title");
    app.save.clockInCards = 2;
    app.menuIndex = 0;
    ok &= studio.shoot("title-continue");

    // Every station of the shipped catalogue, each in its own frame.
    std::vector<StationShot> shots;
    for (const LevelDef& def : app.levels) {
        shots.push_back({def.type, def.number});
    }
    for (const StationShot& shot : shots) {
        ok &= studio.station(shot);
    }

    app.save.timesFired = 8;
    app.difficulty = Difficulty::medium;
    studio.show(GameScreen::fired, 1.0);
    ok &= studio.shoot("fired");
    app.difficulty = Difficulty::vorn;
    ok &= studio.shoot("fired-vorn");

    app.difficulty = Difficulty::easy;
    app.cardAwarded = true;
    studio.show(GameScreen::victory, 1.0);
    ok &= studio.shoot("victory-card");
    app.difficulty = Difficulty::medium;
    app.cardAwarded = false;
    ok &= studio.shoot("victory-no-card");
    app.difficulty = Difficulty::vorn;
    ok &= studio.shoot("victory-vorn");
    return ok;
}

}  // namespace

int main(int argc, char** argv) {
    Options options;
    if (!parse(argc, argv, options)) {
        std::fprintf(stderr,
                     "usage: screen_gallery [--out DIR] [--game DIR] [--station TYPE NUMBER]...\n");
        return 2;
    }
    std::error_code error;
    fs::create_directories(options.out, error);
    if (error) {
        std::fprintf(stderr, "screen_gallery: cannot create %s\n", options.out.u8string().c_str());
        return 1;
    }
    if (TTF_Init() != 0) {
        std::fprintf(stderr, "screen_gallery: no fonts: %s\n", SDL_GetError());
    }
    IMG_Init(IMG_INIT_PNG);

    bool ok = false;
    {
        Studio studio(options);
        if (studio.ready) {
            if (options.stations.empty()) {
                ok = wholeGallery(studio);
            } else {
                ok = true;
                for (const StationShot& shot : options.stations) {
                    ok &= studio.station(shot);
                }
            }
        }
    }

    IMG_Quit();
    TTF_Quit();
    SDL_Quit();
    return ok ? 0 : 1;
}
