// Start-up and shutdown: where the game finds its folders, which failures stop
// the start and which only degrade it, and the exit codes of the real
// executable.

#include "app/paths.h"
#include "support/game_process.h"
#include "support/headless_app.h"
#include "support/test_platform.h"

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
    // The name is one part of the join, so its own '/' stays as it is.
    EXPECT_EQ(app.dataPath("levels/levels.json"),
              std::string("/games/vorn") + kSep + "data" + kSep + "levels/levels.json");
    EXPECT_EQ(app.dataPath("music"), std::string("/games/vorn") + kSep + "data" + kSep + "music");
}

TEST(Startup, MissingFontsIconLogoAndCatalogueDoNotStopTheStart) {
    HeadlessApp headless("bare_start", GameFolderOptions{false, false, "", {}});
    ASSERT_TRUE(headless.started);
    EXPECT_EQ(headless.app.basePath, ".");
    const std::string assets = std::string(".") + kSep + "assets";
    EXPECT_EQ(headless.app.assetsPath, assets);
    EXPECT_EQ(headless.app.musicPath, std::string(".") + kSep + "data" + kSep + "music");
    const std::string log = headless.folder.logText();
    const std::string icon = assets + kSep + "images" + kSep + "app_icon.png";
    EXPECT_NE(log.find("DIAG: window icon not loaded from '" + icon + "' ("), std::string::npos)
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
    const std::string music = std::string(".") + kSep + "data" + kSep + "music";
    const std::string assets = std::string(".") + kSep + "assets";
    EXPECT_NE(log.find("INFO  Paths: base='.' music='" + music + "' assets='" + assets + "'"),
              std::string::npos)
        << log;
}

TEST(Startup, StartupEnvironmentLinesComeInOrder) {
    HeadlessApp headless("env_lines");
    ASSERT_TRUE(headless.started);
    const std::string log = headless.folder.logText();
    const std::string expected[] = {
        "---- startup environment ----",
        "INFO  Game: The Vorn Co. build v0.01",
        "INFO  Paths: base='.'",
        std::string("INFO  Paths: music='.") + kSep + "data" + kSep + "music'",
        std::string("INFO  Paths: assets='.") + kSep + "assets'",
        "INFO  SDL: linked ",
        "INFO  SDL: video driver 'dummy'",
        "INFO  Display: renderer output",
    };
    std::size_t at = 0;
    for (const std::string& line : expected) {
        const std::size_t found = log.find(line, at);
        ASSERT_NE(found, std::string::npos) << "missing or out of order: " << line << "\n" << log;
        at = found;
    }
}

TEST(Startup, FailedInitStillShutsEverythingDown) {
    ScopedEnvironment noVideo("SDL_VIDEODRIVER", "no-such-driver");
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

// A player's copy of the built game in a scratch folder, so the real
// executable writes its log and save there and never into the build.
struct Install {
    Install() {
        fs::copy_file(gameExecutable(), dir.path() / gameExecutable().filename());
        fs::create_directories(dir.path() / "data");
        fs::copy(gameFolder() / "data" / "levels", dir.path() / "data" / "levels");
        shareFolder(gameFolder() / "assets", dir.path() / "assets");
    }
    fs::path executable() const { return dir.path() / gameExecutable().filename(); }

    TempDir dir{"install"};
};

TEST(GameExecutable, SigtermEndsANormalSessionWithExitCodeZero) {
    VORN_NATIVE_ONLY("Windows sends a console program no SIGTERM; its players close the window, "
                     "which the real-window test plays under Wine");
    Install install;
    GameProcess game(install.executable(), install.dir.path());
    ASSERT_TRUE(game.waitForOutput("DIAG: --- end of startup diagnostics ---")) << game.output();
    ASSERT_TRUE(game.requestStop());
    EXPECT_EQ(game.waitForExit(), 0) << game.output();
    EXPECT_NE(readTextFile(install.dir.path() / "data" / "vornco_log.txt").find("session end"),
              std::string::npos);
}

TEST(GameExecutable, QuitsWithExitCodeOneWhenSdlCannotStart) {
    Install install;
    GameProcess game(install.executable(), install.dir.path(),
                     {{"SDL_VIDEODRIVER", "no-such-driver"}});
    EXPECT_EQ(game.waitForExit(), 1);
    EXPECT_NE(game.output().find("SDL_Init failed: "), std::string::npos) << game.output();
    EXPECT_NE(game.output().find("The Vorn Co. failed to initialise."), std::string::npos)
        << game.output();
}

// Every file the game opens goes through a UTF-8 path, so an install folder
// named in another script, with a space in it, works like any other: the log
// is written there, and the fonts, images, sounds and catalogue are all found.
TEST(GameExecutable, RunsFromAFolderWithANonAsciiNameAndASpace) {
    TempDir parent("unicode_install");
    const fs::path folder = parent.path() / fs::u8path("\u00fcn\u00ef \u03a9mega");
    fs::create_directories(folder / "data");
    fs::copy_file(gameExecutable(), folder / gameExecutable().filename());
    fs::copy(gameFolder() / "data" / "levels", folder / "data" / "levels");
    shareFolder(gameFolder() / "assets", folder / "assets");
    TempDir elsewhere("unicode_cwd");
    GameProcess game(folder / gameExecutable().filename(), elsewhere.path());
    ASSERT_TRUE(game.waitForOutput("DIAG: --- end of startup diagnostics ---")) << game.output();
    game.kill();
    game.waitForExit();

    const std::string log = readTextFile(folder / "data" / "vornco_log.txt");
    for (const char* row : {"DIAG: font (game)        [ OK ]", "DIAG: studio logo        [ OK ]",
                            "DIAG: sfx (.wav)        [ OK ] (6/6 present)",
                            "DIAG: levels loaded     [ OK ]  (38 stations)"}) {
        EXPECT_NE(log.find(row), std::string::npos) << row << "\n" << log;
    }
    EXPECT_NE(log.find("Window icon set from '"), std::string::npos) << log;
}

TEST(GameExecutable, CreatesDataBesideItselfWhenNoFolderHasOne) {
    TempDir install("bare_install");
    TempDir elsewhere("bare_cwd");
    const fs::path executable = install.path() / gameExecutable().filename();
    fs::copy_file(gameExecutable(), executable);
    GameProcess game(executable, elsewhere.path());
    ASSERT_TRUE(game.waitForOutput("DIAG: --- end of startup diagnostics ---")) << game.output();
    // The log is open and written by now: the folder was made before it.
    EXPECT_TRUE(fs::is_directory(install.path() / "data"));
    EXPECT_TRUE(fs::exists(install.path() / "data" / "vornco_log.txt"));
    EXPECT_FALSE(fs::exists(elsewhere.path() / "data"));
    game.kill();
    game.waitForExit();
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
