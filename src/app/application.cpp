// Start-up and shutdown. The order of init is the order in which the pieces
// depend on each other; shutdown walks it backwards and is safe after a
// start-up that stopped half-way.

#include "app/application.h"

#include "app/paths.h"
#include "log/diagnostics.h"
#include "log/session_log.h"

#include <SDL_image.h>
#include <SDL_ttf.h>

#include <filesystem>

namespace vorn {

std::string Application::dataPath(const std::string& name) const {
    return pathString(std::filesystem::u8path(basePath) / "data" / std::filesystem::u8path(name));
}

bool Application::init() {
    startupSteps.clear();
    Uint64 stepStart = SDL_GetPerformanceCounter();
    const auto stepDone = [&](const char* name) {
        const Uint64 now = SDL_GetPerformanceCounter();
        startupSteps.emplace_back(name, static_cast<double>(now - stepStart) /
                                            static_cast<double>(SDL_GetPerformanceFrequency()));
        stepStart = now;
    };
    if (SDL_Init(SDL_INIT_TIMER | SDL_INIT_AUDIO | SDL_INIT_VIDEO) != 0) {
        SDL_Log("SDL_Init failed: %s", SDL_GetError());
        return false;
    }
    stepDone("SDL_Init");

    char* sdlBase = SDL_GetBasePath();
    basePath = resolveBasePath(sdlBase);
    if (sdlBase != nullptr) {
        SDL_free(sdlBase);
    }
    musicPath = dataPath("music");
    assetsPath = pathString(std::filesystem::u8path(basePath) / "assets");
    const auto assets = std::filesystem::u8path(assetsPath);

    std::error_code ignored;
    std::filesystem::create_directories(std::filesystem::u8path(basePath) / "data", ignored);

    openLog(pathString(std::filesystem::u8path(basePath) / "data" / "vornco_log.txt"), kBuild);
    logSection("startup environment");
    logInfo("Game: %s build %s", kGameName, kBuild);
    logInfo("Paths: base='%s'", basePath.c_str());
    logInfo("Paths: music='%s'", musicPath.c_str());
    logInfo("Paths: assets='%s'", assetsPath.c_str());
    SDL_version linked;
    SDL_GetVersion(&linked);
    logInfo("SDL: linked %d.%d.%d, platform '%s', %d logical CPUs, %d MB RAM", linked.major,
            linked.minor, linked.patch, SDL_GetPlatform(), SDL_GetCPUCount(), SDL_GetSystemRAM());
    const char* videoDriver = SDL_GetCurrentVideoDriver();
    logInfo("SDL: video driver '%s'", videoDriver != nullptr ? videoDriver : "(none)");

    stepDone("paths and log");

    IMG_Init(IMG_INIT_PNG);
    if (TTF_Init() != 0) {
        SDL_Log("TTF_Init failed: %s", SDL_GetError());
    }

    stepDone("image and font libraries");

    window = SDL_CreateWindow(kGameName, SDL_WINDOWPOS_CENTERED, SDL_WINDOWPOS_CENTERED,
                              kCanvasWidth, kCanvasHeight, SDL_WINDOW_SHOWN);
    if (window == nullptr) {
        SDL_Log("CreateWindow failed: %s", SDL_GetError());
        return false;
    }
    SDL_ShowCursor(SDL_ENABLE);

    const std::string iconPath = pathString(assets / "images" / "app_icon.png");
    if (SDL_Surface* icon = IMG_Load(iconPath.c_str())) {
        SDL_SetWindowIcon(window, icon);
        SDL_FreeSurface(icon);
        logInfo("Window icon set from '%s'.", iconPath.c_str());
    } else {
        logInfo("DIAG: window icon not loaded from '%s' (%s).", iconPath.c_str(), SDL_GetError());
    }

    stepDone("window and icon");

    if (!graphics.init(window)) {
        SDL_Log("Renderer init failed");
        return false;
    }

    stepDone("renderer");

    // The window opens at the canvas size and only then goes desktop full
    // screen, so systems without a window manager still get a real window.
    SDL_SetWindowFullscreen(window, SDL_WINDOW_FULLSCREEN_DESKTOP);
    graphics.resetLogicalSize();
    // The window's output, asked while the window rather than the canvas is
    // the target.
    int outputW = 0;
    int outputH = 0;
    SDL_SetRenderTarget(graphics.renderer, nullptr);
    SDL_GetRendererOutputSize(graphics.renderer, &outputW, &outputH);
    SDL_SetRenderTarget(graphics.renderer, graphics.canvas);
    SDL_Log("Display: renderer output %dx%d (logical %dx%d)", outputW, outputH, kCanvasWidth,
            kCanvasHeight);

    stepDone("full screen");

    // Painted once, here, so nothing is painted per frame.
    art.build(graphics.renderer);
    stepDone("painted textures");

    SDL_Log("Paths: base='%s' music='%s' assets='%s'", basePath.c_str(), musicPath.c_str(),
            assetsPath.c_str());

    graphics.loadFonts(pathString(assets / "fonts"));
    stepDone("fonts");

    audio.openAudio();
    audio.loadEffects(pathString(assets / "audio"));
    stepDone("audio");

    loadSave(save, pathString(std::filesystem::u8path(basePath) / "data" / "vornco_save.txt"));

    stepDone("save");

    const std::string catalogue = dataPath("levels/levels.json");
    if (!loadLevels(levels, catalogue)) {
        SDL_Log("Levels failed to load from %s", catalogue.c_str());
    }

    stepDone("catalogue");

    const std::string logoPath = pathString(assets / "images" / "studio_logo.png");
    studioLogo = graphics.loadTexture(logoPath, &studioLogoW, &studioLogoH);
    if (studioLogo == nullptr) {
        logInfo("DIAG: studio logo not loaded from '%s' (splash/intro will show text).",
                logoPath.c_str());
    }

    stepDone("studio logo");

    DiagnosticsInput report;
    report.assetsPath = assetsPath;
    report.musicPath = musicPath;
    report.audioOpen = audio.initialised;
    report.levelCount = levels.size();
    report.timesFired = save.timesFired;
    report.clockInCards = save.clockInCards;
    report.lastDifficulty = save.lastDifficulty;
    writeDiagnostics(report);

    difficulty = static_cast<Difficulty>(save.lastDifficulty);
    enterSplash();
    stepDone("diagnostics and splash");
    return true;
}

void Application::reloadTextures() {
    if (studioLogo != nullptr) {
        SDL_DestroyTexture(studioLogo);
        studioLogo = nullptr;
    }
    art.build(graphics.renderer);
    const std::string logoPath =
        pathString(std::filesystem::u8path(assetsPath) / "images" / "studio_logo.png");
    studioLogo = graphics.loadTexture(logoPath, &studioLogoW, &studioLogoH);
    logInfo("Renderer: device reset; textures made again.");
}

void Application::shutdown() {
    if (studioLogo != nullptr) {
        SDL_DestroyTexture(studioLogo);
        studioLogo = nullptr;
    }
    art.release();
    // Progress is always saved on the way out.
    writeSave(save);
    audio.closeAudio();
    graphics.shutdown();
    if (window != nullptr) {
        SDL_DestroyWindow(window);
        window = nullptr;
    }
    TTF_Quit();
    IMG_Quit();
    SDL_Quit();
    closeLog();
}

}  // namespace vorn
