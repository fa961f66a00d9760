// Start-up and shutdown: where the game finds its folders, which failures stop
// the start and which only degrade it, and the exit codes of the real
// executable.

#include "app/paths.h"
#include "support/game_process.h"
#include "support/headless_app.h"
#include "support/startup_faults.h"
#include "support/test_platform.h"

#include <SDL_image.h>
#include <SDL_ttf.h>
#include <gtest/gtest.h>

#include <cstdlib>
#include <filesystem>
#include <algorithm>
#include <sstream>

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

// The messages of the log file without their time stamps, in order.
std::vector<std::string> logMessages(const std::string& log) {
    std::vector<std::string> messages;
    std::istringstream in(log);
    for (std::string line; std::getline(in, line);) {
        if (line.size() > 11 && line[0] == '[' && line[9] == ']') {
            messages.push_back(line.substr(11));
        }
    }
    return messages;
}

int countOf(const std::vector<std::string>& messages, const std::string& message) {
    return static_cast<int>(std::count(messages.begin(), messages.end(), message));
}

TEST(Startup, MissingFontsIconLogoAndCatalogueDoNotStopTheStart) {
    GameFolderOptions bare;
    bare.shipAssets = false;
    bare.shipCatalogue = false;
    HeadlessApp headless("bare_start", bare);
    ASSERT_TRUE(headless.started);
    EXPECT_EQ(headless.app.basePath, ".");
    const std::string assets = std::string(".") + kSep + "assets";
    EXPECT_EQ(headless.app.assetsPath, assets);
    EXPECT_EQ(headless.app.musicPath, std::string(".") + kSep + "data" + kSep + "music");
    const std::string log = headless.folder.logText();
    const std::string icon = assets + kSep + "images" + kSep + "app_icon.png";
    EXPECT_NE(log.find("DIAG: window icon not loaded from '" + icon + "' ("), std::string::npos)
        << log;
    EXPECT_EQ(headless.app.screen, GameScreen::splash);
}

// A player's assets with some files taken out: the folders are shared with
// the built game, the images folder is made anew with only the files named.
void assetsWithImages(const TempDir& dir, std::initializer_list<const char*> images) {
    const fs::path game = gameFolder() / "assets";
    fs::create_directories(dir.path() / "assets" / "images");
    shareFolder(game / "fonts", dir.path() / "assets" / "fonts");
    shareFolder(game / "audio", dir.path() / "assets" / "audio");
    for (const char* image : images) {
        fs::copy_file(game / "images" / image, dir.path() / "assets" / "images" / image);
    }
}

TEST(Startup, AMissingStudioLogoIsLoggedAndTheStartGoesOnWithoutIt) {
    GameFolderOptions noLogo;
    noLogo.shipAssets = false;
    noLogo.prepare = [](const TempDir& dir) { assetsWithImages(dir, {"app_icon.png", "app_icon.ico"}); };
    HeadlessApp headless("no_logo", noLogo);
    ASSERT_TRUE(headless.started);
    EXPECT_EQ(headless.app.studioLogo, nullptr);
    EXPECT_EQ(headless.app.studioLogoW, 0);
    EXPECT_EQ(headless.app.studioLogoH, 0);
    const std::string logo = std::string(".") + kSep + "assets" + kSep + "images" + kSep + "studio_logo.png";
    const std::vector<std::string> messages = logMessages(headless.folder.logText());
    EXPECT_EQ(countOf(messages, "INFO  DIAG: studio logo not loaded from '" + logo +
                                    "' (splash/intro will show text)."),
              1)
        << headless.folder.logText();
    EXPECT_EQ(countOf(messages, "INFO  DIAG: studio logo        [MISS]  " + logo), 1);
    // Nothing else went missing.
    EXPECT_EQ(countOf(messages, "INFO  DIAG: font (game)        [ OK ]  ." + std::string(kSep) + "assets" +
                                    kSep + "fonts" + kSep + "game.ttf"),
              1);
    EXPECT_EQ(headless.app.screen, GameScreen::splash);
}

TEST(Startup, AMissingCatalogueIsLoggedWithItsPathAndTheStartGoesOnWithNoStations) {
    GameFolderOptions noCatalogue;
    noCatalogue.shipCatalogue = false;
    HeadlessApp headless("no_catalogue", noCatalogue);
    ASSERT_TRUE(headless.started);
    EXPECT_TRUE(headless.app.levels.empty());
    const std::string path = std::string(".") + kSep + "data" + kSep + "levels/levels.json";
    const std::vector<std::string> messages = logMessages(headless.folder.logText());
    EXPECT_EQ(countOf(messages, "INFO  Levels failed to load from " + path), 1) << headless.folder.logText();
    EXPECT_EQ(countOf(messages, "INFO  DIAG: levels loaded     [MISS]  (0 stations)"), 1);
    EXPECT_EQ(headless.app.screen, GameScreen::splash);
}

TEST(Startup, ACatalogueWithoutALevelsArrayIsLoggedTheSameWay) {
    GameFolderOptions oddCatalogue;
    oddCatalogue.catalogue = "{\"stations\": [{\"n\": 1, \"id\": \"a\"}]}";
    HeadlessApp headless("odd_catalogue", oddCatalogue);
    ASSERT_TRUE(headless.started);
    EXPECT_TRUE(headless.app.levels.empty());
    const std::string path = std::string(".") + kSep + "data" + kSep + "levels/levels.json";
    const std::vector<std::string> messages = logMessages(headless.folder.logText());
    EXPECT_EQ(countOf(messages, "INFO  Levels failed to load from " + path), 1) << headless.folder.logText();
}

// A returning player: the save is read at start-up, the difficulty of the
// next run is the one last picked, the report says so, and the splash is
// shown all the same.
TEST(Startup, ASavedGameSetsTheDifficultyAndIsReported) {
    GameFolderOptions returning;
    returning.shipAssets = false;
    returning.catalogue = catalogueOf({{1, "a", 20}});
    returning.prepare = [](const TempDir& dir) {
        dir.write("data/vornco_save.txt",
                  "splashSeen=1\ntimesFired=4\nclockInCards=2\nlastDifficulty=3\n");
    };
    HeadlessApp headless("returning", returning);
    ASSERT_TRUE(headless.started);
    Application& app = headless.app;
    EXPECT_EQ(app.difficulty, Difficulty::vorn);
    EXPECT_EQ(app.save.timesFired, 4);
    EXPECT_EQ(app.screen, GameScreen::splash);
    const std::vector<std::string> messages = logMessages(headless.folder.logText());
    EXPECT_EQ(countOf(messages, "INFO  DIAG: save: timesFired=4 clockInCards=2 hasContinue=yes lastDiff=VORN"), 1);

    // CONTINUE, the first row now, starts a run at that difficulty.
    InputDriver driver(app);
    driver.key(SDLK_SPACE);
    driver.frame();
    ASSERT_EQ(app.screen, GameScreen::title);
    driver.key(SDLK_RETURN);
    driver.frame();
    ASSERT_EQ(app.screen, GameScreen::shiftCard);
    EXPECT_EQ(app.difficulty, Difficulty::vorn);
    EXPECT_EQ(app.save.clockInCards, 2);
    EXPECT_NE(headless.folder.logText().find("INFO  RUN: start difficulty=VORN "), std::string::npos);
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

// SDL's own console output is written on Windows straight to the Win32
// standard-error handle, which GoogleTest's capture does not see.
constexpr bool kSdlConsoleIsCaptured = !kWindows;

TEST(Startup, SdlThatCannotStartFailsInitBeforeAnyFolderOrLogIsTouched) {
    TempDir empty("no_sdl");
    ScopedWorkingDirectory inside(empty.path());
    ScopedEnvironment noVideo("SDL_VIDEODRIVER", "no-such-driver");
    Application app;
    testing::internal::CaptureStderr();
    const bool started = app.init();
    const std::string console = testing::internal::GetCapturedStderr();
    EXPECT_FALSE(started);
    if (kSdlConsoleIsCaptured) {
        EXPECT_NE(console.find("SDL_Init failed: "), std::string::npos) << console;
    }
    app.shutdown();
    EXPECT_EQ(SDL_WasInit(0), 0u);
    EXPECT_TRUE(app.basePath.empty());
    EXPECT_FALSE(fs::exists(empty.path() / "data"));
}

// The expected shutdown record: each call, with the save file as it stood
// and the log still open.
std::vector<std::string> shutdownCalls(std::initializer_list<const char*> calls, const char* save) {
    std::vector<std::string> out;
    for (const char* call : calls) {
        out.push_back(std::string(call) + " save=" + save + " log=open");
    }
    return out;
}

// The log's lines after `message`, which must be there exactly once.
std::vector<std::string> messagesAfter(const std::string& log, const std::string& message) {
    const std::vector<std::string> messages = logMessages(log);
    const auto at = std::find(messages.begin(), messages.end(), message);
    if (at == messages.end() || std::count(messages.begin(), messages.end(), message) != 1) {
        return {"(" + message + " is not there once)"};
    }
    return std::vector<std::string>(at + 1, messages.end());
}

TEST(StartupFailure, AWindowThatWillNotOpenStopsInitAndShutdownStillRunsInFull) {
    if (!StartupFaults::available()) {
        GTEST_SKIP() << "no way to refuse the window where SDL is linked in statically";
    }
    ScratchGameFolder folder("no_window");
    const fs::path saveFile = folder.dir.path() / "data" / "vornco_save.txt";
    const fs::path logFile = folder.dir.path() / "data" / "vornco_log.txt";
    StartupFaults faults;
    faults.refuseWindow = true;
    Application app;
    EXPECT_FALSE(app.init());
    EXPECT_EQ(app.window, nullptr);
    EXPECT_TRUE(faults.rendererFlags.empty());
    faults.record(saveFile, logFile);
    app.shutdown();
    // Nothing of the window, renderer, audio or textures was made; the three
    // libraries are shut down in order, and only then does the log end.
    EXPECT_EQ(faults.calls, shutdownCalls({"TTF_Quit", "IMG_Quit", "SDL_Quit"}, "absent"));
    EXPECT_EQ(messagesAfter(folder.logText(), "INFO  CreateWindow failed: refused by the test"),
              std::vector<std::string>{"INFO  session end"})
        << folder.logText();
    EXPECT_EQ(SDL_WasInit(0), 0u);
    EXPECT_EQ(TTF_WasInit(), 0);
    EXPECT_EQ(IMG_Init(0), 0);
    // Start-up stopped before the save was read, so there is nothing to write.
    EXPECT_FALSE(fs::exists(saveFile));
}

TEST(StartupFailure, ARendererThatWillNotCreateStopsInitAndShutdownStillRunsInFull) {
    if (!StartupFaults::available()) {
        GTEST_SKIP() << "no way to refuse the renderer where SDL is linked in statically";
    }
    ScratchGameFolder folder("no_renderer");
    const fs::path saveFile = folder.dir.path() / "data" / "vornco_save.txt";
    const fs::path logFile = folder.dir.path() / "data" / "vornco_log.txt";
    StartupFaults faults;
    faults.refuseRenderer = true;
    Application app;
    EXPECT_FALSE(app.init());
    // Both attempts: accelerated with vsync, then software.
    EXPECT_EQ(faults.rendererFlags,
              (std::vector<Uint32>{SDL_RENDERER_ACCELERATED | SDL_RENDERER_PRESENTVSYNC, SDL_RENDERER_SOFTWARE}));
    EXPECT_NE(app.window, nullptr);
    EXPECT_EQ(app.graphics.renderer, nullptr);
    faults.record(saveFile, logFile);
    app.shutdown();
    EXPECT_EQ(faults.calls,
              shutdownCalls({"SDL_DestroyWindow", "TTF_Quit", "IMG_Quit", "SDL_Quit"}, "absent"));
    EXPECT_EQ(app.window, nullptr);
    const std::string icon = std::string(".") + kSep + "assets" + kSep + "images" + kSep + "app_icon.png";
    EXPECT_EQ(messagesAfter(folder.logText(), "INFO  Window icon set from '" + icon + "'."),
              (std::vector<std::string>{"INFO  Renderer init failed", "INFO  session end"}))
        << folder.logText();
    EXPECT_EQ(SDL_WasInit(0), 0u);
    EXPECT_EQ(TTF_WasInit(), 0);
    EXPECT_FALSE(fs::exists(saveFile));
}

// The window opens at the canvas size, centred and shown, and goes desktop
// full screen only once a renderer exists (the dummy driver has no
// accelerated one, so the software one is the second asked for).
TEST(StartupFailure, TheWindowOpensAtTheCanvasSizeAndGoesFullScreenAfterTheRenderer) {
    if (!StartupFaults::available()) {
        GTEST_SKIP() << "no way to watch SDL's calls where SDL is linked in statically";
    }
    ScratchGameFolder folder("window_made");
    StartupFaults faults;
    Application app;
    ASSERT_TRUE(app.init());
    EXPECT_EQ(faults.made, (std::vector<std::string>{
                               "window 'The Vorn Co.' at centred,centred 1366x768 flags=4",
                               "renderer flags=6", "renderer flags=1", "fullscreen flags=4097"}));
    app.shutdown();
}

// After a normal start, shutdown takes everything down in reverse: the logo,
// the painted textures, then the save is written, then the audio device, the
// renderer and the window close, the libraries quit, and the log ends last.
TEST(StartupFailure, ShutdownAfterANormalStartRunsInItsOrder) {
    if (!StartupFaults::available()) {
        GTEST_SKIP() << "no way to watch SDL's calls where SDL is linked in statically";
    }
    ScratchGameFolder folder("shutdown_order");
    const fs::path saveFile = folder.dir.path() / "data" / "vornco_save.txt";
    const fs::path logFile = folder.dir.path() / "data" / "vornco_log.txt";
    StartupFaults faults;
    Application app;
    ASSERT_TRUE(app.init());
    ASSERT_NE(app.studioLogo, nullptr);
    ASSERT_TRUE(app.audio.initialised);
    ASSERT_FALSE(fs::exists(saveFile));
    faults.record(saveFile, logFile, app.studioLogo);
    app.shutdown();
    std::vector<std::string> expected = shutdownCalls({"SDL_DestroyTexture(logo)", "SDL_DestroyTexture"}, "absent");
    for (const std::string& call : shutdownCalls({"Mix_CloseAudio", "SDL_DestroyRenderer", "SDL_DestroyWindow",
                                                  "TTF_Quit", "IMG_Quit", "SDL_Quit"},
                                                 "written")) {
        expected.push_back(call);
    }
    EXPECT_EQ(faults.calls, expected);
    const std::vector<std::string> messages = logMessages(folder.logText());
    ASSERT_FALSE(messages.empty());
    EXPECT_EQ(messages.back(), "INFO  session end");
    EXPECT_EQ(app.studioLogo, nullptr);
    EXPECT_EQ(app.window, nullptr);
    EXPECT_EQ(SDL_WasInit(0), 0u);
}

// Shutdown after no start at all has nothing to take down: no save is
// written (no path was ever read), no log is opened, and SDL stays down.
TEST(Startup, ShutdownWithoutInitTouchesNothing) {
    TempDir empty("shutdown_only");
    ScopedWorkingDirectory inside(empty.path());
    Application app;
    app.shutdown();
    app.shutdown();
    EXPECT_EQ(app.window, nullptr);
    EXPECT_EQ(SDL_WasInit(0), 0u);
    EXPECT_TRUE(fs::is_empty(empty.path()));
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

// No font anywhere: neither the game's own nor any system fallback. The
// fallbacks are fixed system paths, so the game is started in a mount
// namespace of its own (unshare) in which an empty folder is laid over the
// DejaVu fonts; nothing outside that one process sees the change. The splash
// then draws the studio name as text with no font at all (the logo is left
// out too), and the game must run on and leave normally.
TEST(GameExecutable, StartsAndRunsWithNoFontAnywhere) {
    VORN_NATIVE_ONLY("hiding the system fonts needs a mount namespace");
    const fs::path unshare = "/usr/bin/unshare";
    if (!fs::exists(unshare) || GameProcess(unshare, fs::current_path(), {}, {"-m", "true"}).waitForExit() != 0) {
        GTEST_SKIP() << "this machine cannot make a mount namespace";
    }
    TempDir install("no_fonts_install");
    fs::copy_file(gameExecutable(), install.path() / gameExecutable().filename());
    fs::create_directories(install.path() / "data");
    fs::copy(gameFolder() / "data" / "levels", install.path() / "data" / "levels");
    fs::create_directories(install.path() / "assets" / "images");
    shareFolder(gameFolder() / "assets" / "audio", install.path() / "assets" / "audio");
    fs::copy_file(gameFolder() / "assets" / "images" / "app_icon.png",
                  install.path() / "assets" / "images" / "app_icon.png");

    const std::string script =
        "d=/usr/share/fonts/truetype/dejavu; "
        "if [ -d $d ]; then mount -t tmpfs none $d || exit 90; fi; "
        "for f in $d/DejaVuSansMono.ttf $d/DejaVuSans-Bold.ttf C:/Windows/Fonts/consola.ttf "
        "C:/Windows/Fonts/arialbd.ttf; do [ -e $f ] && exit 91; done; "
        "echo 'no font reachable'; exec ./" + gameExecutable().filename().string();
    GameProcess game(unshare, install.path(), {}, {"-m", "sh", "-c", script});
    ASSERT_TRUE(game.waitForOutput("DIAG: --- end of startup diagnostics ---")) << game.output();
    EXPECT_NE(game.output().find("no font reachable\n"), std::string::npos) << game.output();
    ASSERT_TRUE(game.requestStop());
    EXPECT_EQ(game.waitForExit(), 0) << game.output();

    // The fonts and the logo are reported missing, with the paths tried.
    const std::string assets = (install.path() / "assets").string();
    const std::vector<std::string> messages = logMessages(readTextFile(install.path() / "data" / "vornco_log.txt"));
    EXPECT_EQ(countOf(messages, "INFO  DIAG: font (game)        [MISS]  " + assets + "/fonts/game.ttf"), 1);
    EXPECT_EQ(countOf(messages, "INFO  DIAG: font (display)     [none]  " + assets + "/fonts/display.ttf"), 1);
    EXPECT_EQ(countOf(messages, "INFO  DIAG: studio logo not loaded from '" + assets +
                                    "/images/studio_logo.png' (splash/intro will show text)."),
              1);
    ASSERT_FALSE(messages.empty());
    EXPECT_EQ(messages.back(), "INFO  session end");
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
