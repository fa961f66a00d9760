// Measures what a frame costs without a GPU: the game's own update, render
// and present on SDL's software renderer drawing into a window (SDL's dummy
// video driver, whose window surface has the RGB888 format of a desktop) at
// the sizes players' screens have, 1366 x 768 up to 3840 x 2160, for every
// screen and every station type of the shipped catalogue on a fixed seed. For
// each it prints the median and 99th-percentile CPU time of a frame and its
// ratio to a bare clear + present measured in the same window; then per size
// the heaviest frame against the heaviest at 1366 x 768; then start-up to the
// first presented frame, step by step; then the resident memory after
// start-up and after a long run of frames.
//
//   frame_bench [--game DIR] [--frames N] [--long-frames N] [--size WxH]
//
// --size measures that one size besides 1366 x 768, which is always measured
// first: every other size is told as a multiple of it.
//
// scripts/bench.sh builds it in Release and runs it. It is a measurement,
// never a test: nothing here passes or fails.

#include "app/application.h"
#include "app/game_types.h"
#include "data/level_catalogue.h"

#include <SDL.h>
#include <SDL_image.h>
#include <SDL_ttf.h>

#include <algorithm>
#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <ctime>
#include <filesystem>
#include <fstream>
#include <functional>
#include <string>
#include <utility>
#include <vector>

namespace {

namespace fs = std::filesystem;
using namespace vorn;

constexpr std::uint32_t kBenchSeed = 49;

struct Options {
    fs::path game = VORN_GAME_DIR;
    int frames = 300;
    long longFrames = 100000;
    // Window sizes, the canvas's own first.
    std::vector<std::pair<int, int>> sizes{{1366, 768}, {1920, 1080}, {2560, 1440}, {3840, 2160}};
};

bool parse(int argc, char** argv, Options& options) {
    for (int i = 1; i < argc; ++i) {
        const std::string arg = argv[i];
        if (arg == "--game" && i + 1 < argc) {
            options.game = fs::u8path(argv[++i]);
        } else if (arg == "--frames" && i + 1 < argc) {
            options.frames = std::max(1, std::atoi(argv[++i]));
        } else if (arg == "--long-frames" && i + 1 < argc) {
            options.longFrames = std::max(0L, std::atol(argv[++i]));
        } else if (arg == "--size" && i + 1 < argc) {
            int w = 0;
            int h = 0;
            if (std::sscanf(argv[++i], "%dx%d", &w, &h) != 2 || w <= 0 || h <= 0) {
                return false;
            }
            options.sizes = {{kCanvasWidth, kCanvasHeight}};
            if (w != kCanvasWidth || h != kCanvasHeight) {
                options.sizes.emplace_back(w, h);
            }
        } else {
            return false;
        }
    }
    return true;
}

// CPU time of this process in seconds (the renderer draws on this thread).
double cpuSeconds() { return static_cast<double>(std::clock()) / CLOCKS_PER_SEC; }

double wallSeconds() {
    return std::chrono::duration<double>(std::chrono::steady_clock::now().time_since_epoch()).count();
}

// Resident memory in MB, from the kernel's own account (Linux).
double residentMegabytes() {
    std::ifstream status("/proc/self/status");
    std::string key;
    while (status >> key) {
        if (key == "VmRSS:") {
            double kb = 0;
            status >> kb;
            return kb / 1024.0;
        }
        std::getline(status, key);
    }
    return -1.0;
}

struct Timing {
    double median = 0.0;   // ms
    double p99 = 0.0;      // ms
};

Timing timeFrames(int frames, const std::function<void()>& frame) {
    frame();   // warm: fonts opened, caches of the libraries filled
    std::vector<double> ms;
    ms.reserve(static_cast<std::size_t>(frames));
    for (int i = 0; i < frames; ++i) {
        const double start = cpuSeconds();
        frame();
        ms.push_back((cpuSeconds() - start) * 1000.0);
    }
    std::sort(ms.begin(), ms.end());
    Timing t;
    t.median = ms[ms.size() / 2];
    t.p99 = ms[std::min(ms.size() - 1, ms.size() * 99 / 100)];
    return t;
}

// The game drawing into a real (dummy) window of the given size through the
// software renderer, with everything a frame reads loaded.
class Bench {
public:
    Bench(const Options& options, int width, int height) : options(options) {
        window = SDL_CreateWindow("The Vorn Co.", 0, 0, width, height, 0);
        SDL_Renderer* renderer =
            window != nullptr ? SDL_CreateRenderer(window, -1, SDL_RENDERER_SOFTWARE) : nullptr;
        if (renderer == nullptr) {
            std::fprintf(stderr, "frame_bench: no software renderer: %s\n", SDL_GetError());
            return;
        }
        SDL_SetRenderDrawBlendMode(renderer, SDL_BLENDMODE_BLEND);
        app.window = window;
        app.graphics.attach(renderer);
        app.graphics.makeCanvas();
        app.graphics.loadFonts((options.game / "assets" / "fonts").u8string());
        app.art.build(renderer);
        const std::string logo = (options.game / "assets" / "images" / "studio_logo.png").u8string();
        app.studioLogo = app.graphics.loadTexture(logo, &app.studioLogoW, &app.studioLogoH);
        loadLevels(app.levels, (options.game / "data" / "levels" / "levels.json").u8string());
        SDL_Surface* surface = SDL_GetWindowSurface(window);
        format = surface != nullptr ? SDL_GetPixelFormatName(surface->format->format) : "?";
        ready = true;
    }

    ~Bench() {
        app.station.reset();
        app.art.release();
        if (app.studioLogo != nullptr) {
            SDL_DestroyTexture(app.studioLogo);
        }
        app.graphics.shutdown();
        if (window != nullptr) {
            SDL_DestroyWindow(window);
        }
    }
    Bench(const Bench&) = delete;
    Bench& operator=(const Bench&) = delete;

    // One frame of a screen held where it is: its state is put back before
    // each frame, so every frame draws the same picture.
    void screenFrame(GameScreen screen, double screenTime) {
        app.screen = screen;
        app.screenTime = screenTime;
        app.update(1.0 / 60.0);
        app.render();
    }

    void stationFrame(double timeLeft) {
        app.screen = GameScreen::station;
        app.timeLeft = timeLeft;
        app.timerRunning = true;
        app.update(1.0 / 60.0);
        app.render();
    }

    void startStation(std::size_t index) {
        app.stationOrder.resize(app.levels.size());
        for (std::size_t i = 0; i < app.levels.size(); ++i) {
            app.stationOrder[i] = static_cast<std::int32_t>(i);
        }
        app.difficulty = Difficulty::easy;
        app.rng.seed(kBenchSeed);
        app.startStation(static_cast<std::int32_t>(index));
    }

    const Options& options;
    Application app;
    SDL_Window* window = nullptr;
    const char* format = "?";
    bool ready = false;
};

struct Row {
    std::string name;
    Timing t;
};

void printRow(const Row& row, double bare) {
    std::printf("  %-28s %8.2f ms %8.2f ms %8.1f x\n", row.name.c_str(), row.t.median, row.t.p99,
                row.t.median / bare);
}

std::vector<Row> measureScreens(Bench& bench, int frames) {
    Application& app = bench.app;
    std::vector<Row> rows;
    const auto screen = [&](const char* name, GameScreen s, double t) {
        rows.push_back({name, timeFrames(frames, [&] { bench.screenFrame(s, t); })});
    };
    app.splashRevealed = true;
    app.splashRevealAt = 1.0;
    screen("splash", GameScreen::splash, 1.2);   // the logo fading in
    const char* const cards[] = {"shift card PROBATION", "shift card SHIFT STARTS", "shift card OVERTIME"};
    for (int phase = 0; phase < 3; ++phase) {
        app.shiftCardPhase = phase;
        screen(cards[phase], GameScreen::shiftCard, 1.5);
    }
    app.save.timesFired = 7;
    app.save.clockInCards = 0;
    screen("title", GameScreen::title, 1.0);
    app.save.clockInCards = 2;
    screen("title with CONTINUE", GameScreen::title, 1.0);
    app.difficulty = Difficulty::medium;
    screen("fired", GameScreen::fired, 1.0);
    app.difficulty = Difficulty::vorn;
    screen("fired (VORN)", GameScreen::fired, 1.0);
    app.difficulty = Difficulty::easy;
    app.cardAwarded = true;
    screen("victory with a card", GameScreen::victory, 1.0);
    app.difficulty = Difficulty::medium;
    app.cardAwarded = false;
    screen("victory without a card", GameScreen::victory, 1.0);
    app.difficulty = Difficulty::vorn;
    screen("victory (VORN)", GameScreen::victory, 1.0);
    return rows;
}

std::vector<Row> measureStations(Bench& bench, int frames) {
    std::vector<Row> rows;
    std::vector<std::string> seen;
    for (std::size_t i = 0; i < bench.app.levels.size(); ++i) {
        const LevelDef& def = bench.app.levels[i];
        if (std::find(seen.begin(), seen.end(), def.type) != seen.end()) {
            continue;
        }
        seen.push_back(def.type);
        bench.startStation(i);
        const double clock = bench.app.timeTotal;
        rows.push_back({"station " + def.type, timeFrames(frames, [&] { bench.stationFrame(clock); })});
    }
    return rows;
}

// The real start-up, as main runs it, up to the first presented frame.
void measureStartUp(const Options& options) {
    const fs::path folder = fs::temp_directory_path() / "vorn_bench_startup";
    std::error_code ec;
    fs::remove_all(folder, ec);
    fs::create_directories(folder / "data", ec);
    fs::copy(options.game / "data" / "levels", folder / "data" / "levels", fs::copy_options::recursive, ec);
    fs::copy(options.game / "data" / "music", folder / "data" / "music", fs::copy_options::recursive, ec);
    fs::create_directory_symlink(fs::absolute(options.game / "assets"), folder / "assets", ec);
    const fs::path previous = fs::current_path();
    fs::current_path(folder);

    const double start = wallSeconds();
    double initDone = 0.0;
    double firstFrame = 0.0;
    std::vector<std::pair<const char*, double>> steps;
    {
        Application app;
        const bool ok = app.init();
        initDone = wallSeconds();
        if (ok) {
            app.step(1.0 / 60.0);
        }
        firstFrame = wallSeconds();
        steps = app.startupSteps;
        app.shutdown();
    }
    fs::current_path(previous);
    fs::remove_all(folder, ec);

    std::printf("\nstart-up to the first presented frame: %.1f ms (init %.1f ms, first frame %.1f ms)\n",
                (firstFrame - start) * 1000.0, (initDone - start) * 1000.0, (firstFrame - initDone) * 1000.0);
    for (const auto& [name, seconds] : steps) {
        std::printf("  %-28s %8.1f ms\n", name, seconds * 1000.0);
    }
}

}  // namespace

int main(int argc, char** argv) {
    Options options;
    if (!parse(argc, argv, options)) {
        std::fprintf(stderr, "usage: frame_bench [--game DIR] [--frames N] [--long-frames N] [--size WxH]\n");
        return 2;
    }
    // The start-up is measured first, on a fresh process, as a player meets it.
    measureStartUp(options);
    std::fflush(stdout);

    if (SDL_Init(SDL_INIT_VIDEO) != 0) {
        std::fprintf(stderr, "frame_bench: SDL_Init: %s\n", SDL_GetError());
        return 1;
    }
    TTF_Init();
    IMG_Init(IMG_INIT_PNG);
    int status = 0;
    struct Heaviest {
        int w;
        int h;
        Row row;
        double bare;
    };
    std::vector<Heaviest> heaviest;
    for (const auto& [width, height] : options.sizes) {
        Bench bench(options, width, height);
        if (!bench.ready) {
            status = 1;
            break;
        }
        const bool canvasSize = width == kCanvasWidth && height == kCanvasHeight;
        const double rssStart = residentMegabytes();
        // The least a frame can be: the canvas cleared and presented.
        Graphics& graphics = bench.app.graphics;
        const Timing bare = timeFrames(options.frames, [&] {
            graphics.clear(palette::black);
            graphics.present();
        });
        std::printf("\nframes: update + render + present, CPU time, %d frames each, software renderer,\n"
                    "%dx%d window surface %s\n",
                    options.frames, width, height, bench.format);
        std::printf("  %-28s %11s %11s %10s\n", "", "median", "99th pct", "vs bare");
        printRow({"bare clear + present", bare}, bare.median);
        std::vector<Row> rows = measureScreens(bench, options.frames);
        const std::vector<Row> stations = measureStations(bench, options.frames);
        rows.insert(rows.end(), stations.begin(), stations.end());
        for (const Row& row : rows) {
            printRow(row, bare.median);
        }
        heaviest.push_back({width, height,
                            *std::max_element(rows.begin(), rows.end(),
                                              [](const Row& a, const Row& b) {
                                                  return a.t.median < b.t.median;
                                              }),
                            bare.median});
        std::fflush(stdout);
        if (!canvasSize) {
            continue;
        }

        // The tables above drew every screen and station: fonts, glyph
        // caches and the allocator have settled. Growth from here on is
        // what a long session would see.
        const double rssWarm = residentMegabytes();

        // A long stretch of play-like frames: every station in turn, a few
        // hundred frames each, to see whether memory creeps.
        long done = 0;
        std::size_t index = 0;
        while (done < options.longFrames && !bench.app.levels.empty()) {
            bench.startStation(index % bench.app.levels.size());
            const double clock = bench.app.timeTotal;
            for (int i = 0; i < 250 && done < options.longFrames; ++i, ++done) {
                bench.stationFrame(clock);
            }
            ++index;
        }
        std::printf("\nresident memory: %.1f MB after start-up, %.1f MB after one pass over every screen "
                    "and station, %.1f MB after %ld more frames\n",
                    rssStart, rssWarm, residentMegabytes(), done);
        std::fflush(stdout);
    }
    if (status == 0 && !heaviest.empty()) {
        // The first size is always the canvas's own.
        const Heaviest& base = heaviest.front();
        std::printf("\n");
        for (const Heaviest& size : heaviest) {
            std::printf("size %dx%d: heaviest %s %.2f ms = %.2f x the 1366x768 heaviest\n", size.w,
                        size.h, size.row.name.c_str(), size.row.t.median,
                        size.row.t.median / base.row.t.median);
        }
        std::printf("heaviest frame: %s %.2f ms = %.0f x bare frame\n", base.row.name.c_str(),
                    base.row.t.median, base.row.t.median / base.bare);
    }
    IMG_Quit();
    TTF_Quit();
    SDL_Quit();
    return status;
}
