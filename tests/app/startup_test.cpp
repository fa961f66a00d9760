// Start-up and shutdown: where the game finds its folders, which failures stop
// the start and which only degrade it, and the exit codes of the real
// executable.

#include "app/paths.h"
#include "support/game_process.h"
#include "support/headless_app.h"

#include <SDL_ttf.h>
#include <gtest/gtest.h>

#include <cstdlib>
#include <filesystem>

namespace vorn::test {
namespace {

namespace fs = std::filesystem;

TEST(BaseFolder, ExecutableFolderWinsWhenItHasData) {
    TempDir exe("base_exe");
    TempDir cwd("base_cwd");
    fs::create_directories(exe.path() / "data");
    fs::create_directories(cwd.path() / "data");
    ScopedWorkingDirectory inside(cwd.path());
    const std::string sdlBase = exe.str() + "/";
    EXPECT_EQ(resolveBasePath(sdlBase.c_str()), sdlBase);
}

TEST(BaseFolder, WorkingDirectoryWinsWhenOnlyItHasData) {
    TempDir exe("base_exe");
    TempDir cwd("base_cwd");
    fs::create_directories(cwd.path() / "data");
    ScopedWorkingDirectory inside(cwd.path());
    const std::string sdlBase = exe.str() + "/";
    EXPECT_EQ(resolveBasePath(sdlBase.c_str()), ".");
}

TEST(BaseFolder, ExecutableFolderWhenNeitherHasData) {
    TempDir exe("base_exe");
    TempDir cwd("base_cwd");
    ScopedWorkingDirectory inside(cwd.path());
    const std::string sdlBase = exe.str() + "/";
    EXPECT_EQ(resolveBasePath(sdlBase.c_str()), sdlBase);
}

TEST(BaseFolder, DataMayBeAnyKindOfEntry) {
    TempDir exe("base_exe");
    exe.write("data", "not a folder");
    const std::string sdlBase = exe.str() + "/";
    EXPECT_EQ(resolveBasePath(sdlBase.c_str()), sdlBase);
}

TEST(BaseFolder, NoAnswerFromSdlMeansWorkingDirectory) {
    EXPECT_EQ(resolveBasePath(nullptr), ".");
    EXPECT_EQ(resolveBasePath(""), ".");
}

TEST(Startup, DataPathJoinsBaseDataAndName) {
    Application app;
    app.basePath = "/games/vorn";
    EXPECT_EQ(app.dataPath("levels/levels.json"), "/games/vorn/data/levels/levels.json");
    EXPECT_EQ(app.dataPath("music"), "/games/vorn/data/music");
}

TEST(Startup, MissingFontsIconLogoAndCatalogueDoNotStopTheStart) {
    HeadlessApp headless("bare_start", GameFolderOptions{false, false, "", {}});
    ASSERT_TRUE(headless.started);
    EXPECT_EQ(headless.app.basePath, ".");
    EXPECT_EQ(headless.app.assetsPath, "./assets");
    EXPECT_EQ(headless.app.musicPath, "./data/music");
    const std::string log = headless.folder.logText();
    EXPECT_NE(log.find("DIAG: window icon not loaded from './assets/images/app_icon.png' ("),
              std::string::npos)
        << log;
}

TEST(Startup, WindowIsTitledAndGoesDesktopFullScreenOnTheCanvas) {
    HeadlessApp headless("window");
    ASSERT_TRUE(headless.started);
    SDL_Window* window = headless.app.window;
    EXPECT_STREQ(SDL_GetWindowTitle(window), "The Vorn Co.");
    EXPECT_EQ(SDL_GetWindowFlags(window) & SDL_WINDOW_FULLSCREEN_DESKTOP,
              static_cast<Uint32>(SDL_WINDOW_FULLSCREEN_DESKTOP));
    int logicalW = 0;
    int logicalH = 0;
    SDL_RenderGetLogicalSize(headless.app.graphics.renderer, &logicalW, &logicalH);
    EXPECT_EQ(logicalW, 1366);
    EXPECT_EQ(logicalH, 768);
}

TEST(Startup, ReportsDisplayAndPathsThroughTheLog) {
    HeadlessApp headless("display_line");
    ASSERT_TRUE(headless.started);
    const std::string log = headless.folder.logText();
    EXPECT_NE(log.find("INFO  Display: renderer output "), std::string::npos) << log;
    EXPECT_NE(log.find("(logical 1366x768)"), std::string::npos) << log;
    EXPECT_NE(log.find("INFO  Paths: base='.' music='./data/music' assets='./assets'"),
              std::string::npos)
        << log;
}

TEST(Startup, StartupEnvironmentLinesComeInOrder) {
    HeadlessApp headless("env_lines");
    ASSERT_TRUE(headless.started);
    const std::string log = headless.folder.logText();
    const char* expected[] = {
        "---- startup environment ----", "INFO  Game: The Vorn Co. build v0.01",
        "INFO  Paths: base='.'",          "INFO  Paths: music='./data/music'",
        "INFO  Paths: assets='./assets'", "INFO  SDL: linked ",
        "INFO  SDL: video driver 'dummy'", "INFO  Display: renderer output",
    };
    std::size_t at = 0;
    for (const char* line : expected) {
        const std::size_t found = log.find(line, at);
        ASSERT_NE(found, std::string::npos) << "missing or out of order: " << line << "\n" << log;
        at = found;
    }
}

TEST(Startup, FailedInitStillShutsEverythingDown) {
    ::setenv("SDL_VIDEODRIVER", "no-such-driver", 1);
    Application app;
    EXPECT_FALSE(app.init());
    app.shutdown();
    EXPECT_EQ(SDL_WasInit(0), 0u);
    EXPECT_EQ(TTF_WasInit(), 0);
    EXPECT_EQ(app.window, nullptr);
    EXPECT_EQ(app.graphics.renderer, nullptr);
}

TEST(Startup, ShutdownIsSafeWithoutInit) {
    Application app;
    app.shutdown();
    EXPECT_EQ(app.window, nullptr);
}

TEST(GameExecutable, SigtermEndsANormalSessionWithExitCodeZero) {
    GameProcess game(fs::path(VORN_GAME_DIR) / "vornco", fs::path(VORN_GAME_DIR));
    ASSERT_TRUE(game.waitForOutput("DIAG: --- end of startup diagnostics ---")) << game.output();
    game.terminate();
    EXPECT_EQ(game.waitForExit(), 0) << game.output();
}

TEST(GameExecutable, QuitsWithExitCodeOneWhenSdlCannotStart) {
    GameProcess game(fs::path(VORN_GAME_DIR) / "vornco", fs::path(VORN_GAME_DIR),
                     {{"SDL_VIDEODRIVER", "no-such-driver"}});
    EXPECT_EQ(game.waitForExit(), 1);
    EXPECT_NE(game.output().find("SDL_Init failed: "), std::string::npos) << game.output();
    EXPECT_NE(game.output().find("The Vorn Co. failed to initialise."), std::string::npos)
        << game.output();
}

TEST(GameExecutable, CreatesDataBesideItselfWhenNoFolderHasOne) {
    TempDir install("bare_install");
    TempDir elsewhere("bare_cwd");
    fs::copy_file(fs::path(VORN_GAME_DIR) / "vornco", install.path() / "vornco");
    fs::permissions(install.path() / "vornco", fs::perms::owner_all);
    GameProcess game(install.path() / "vornco", elsewhere.path());
    ASSERT_TRUE(game.waitForOutput("DIAG: --- end of startup diagnostics ---")) << game.output();
    game.terminate();
    EXPECT_EQ(game.waitForExit(), 0) << game.output();
    EXPECT_TRUE(fs::is_directory(install.path() / "data"));
    EXPECT_TRUE(fs::exists(install.path() / "data" / "vornco_log.txt"));
    EXPECT_FALSE(fs::exists(elsewhere.path() / "data"));
}

}  // namespace
}  // namespace vorn::test

namespace vorn::test {
namespace {

TEST(Startup, PaintsTheTexturesOnceTheRendererExistsAndReleasesThemAtShutdown) {
    auto headless = std::make_unique<HeadlessApp>("art_start");
    ASSERT_TRUE(headless->started);
    EXPECT_NE(headless->app.art.wallTile, nullptr);
    EXPECT_NE(headless->app.art.roomOverlay, nullptr);
    headless->app.shutdown();
    EXPECT_EQ(headless->app.art.wallTile, nullptr);
    EXPECT_EQ(headless->app.art.greenScreen, nullptr);
}

}  // namespace
}  // namespace vorn::test
