// The real executable started in surroundings a player's machine may give
// it: a read-only data folder, a broken catalogue, a hand-edited or broken
// save, no fonts anywhere, no pictures, no sounds, no audio device, a start
// through a link or from another folder. Every case ends in a running game
// that stops normally (or, for a save number too big for its field, in the
// deliberate conversion error), with the right lines in its log and nothing
// of the player's record lost.

#include "support/game_install.h"
#include "support/game_process.h"
#include "support/test_platform.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <random>
#include <regex>
#include <string>

#ifndef _WIN32
#include <unistd.h>
#endif

namespace vorn::test {
namespace {

namespace fs = std::filesystem;

const char* const kStarted = "DIAG: --- end of startup diagnostics ---";

// Ends a started game the way the system asks a program to stop (SIGTERM)
// and expects its normal exit. Windows has no such request for a console
// program, so there the game is killed and only what it did before counts.
void stopNormally(GameProcess& game) {
    if (game.requestStop()) {
        EXPECT_EQ(game.waitForExit(), 0) << game.output();
    } else {
        game.kill();
        game.waitForExit();
    }
}

// Starts the installed game in its own folder, waits for its start-up
// report to end and stops it; returns what it printed.
std::string startAndStop(const GameInstall& install,
                         std::vector<std::pair<std::string, std::string>> environment = {}) {
    GameProcess game(install.executable(), install.dir.path(), std::move(environment));
    EXPECT_TRUE(game.waitForOutput(kStarted)) << game.output();
    stopNormally(game);
    return game.output();
}

bool has(const std::string& text, const std::string& piece) { return text.find(piece) != std::string::npos; }

std::string saveFile(int timesFired) {
    return "# The Vorn Co. save file. Auto-generated; safe to delete.\nsplashSeen=1\nintroSeen=0\n"
           "timesFired=" + std::to_string(timesFired) + "\nclockInCards=2\nlastDifficulty=3\n";
}

TEST(HostileStart, AReadOnlyDataFolderStillPlaysAndSkipsSavingSilently) {
    VORN_NATIVE_ONLY("folder permissions are POSIX ones here");
#ifndef _WIN32
    GameInstall install("hostile_readonly");
    install.dir.write("data/vornco_save.txt", saveFile(9));
    const std::string before = readFile(install.data() / "vornco_save.txt");
    fs::permissions(install.data() / "vornco_save.txt", fs::perms::owner_read | fs::perms::group_read |
                                                            fs::perms::others_read);
    fs::permissions(install.data(), fs::perms::owner_read | fs::perms::owner_exec | fs::perms::group_read |
                                        fs::perms::group_exec | fs::perms::others_read | fs::perms::others_exec);
    // Permissions do not stop root, so as root the game runs without the
    // two powers that override them: it meets the folder's bits as a player
    // without write access does. (Not as another user: that one may not be
    // able to reach the libraries at all, in a container whose root folder
    // is closed to others.)
    fs::path program = install.executable();
    std::vector<std::string> arguments;
    if (::geteuid() == 0) {
        program = "/usr/bin/setpriv";
        arguments = {"--inh-caps=-dac_override,-dac_read_search", "--bounding-set=-dac_override,-dac_read_search",
                     install.executable().string()};
    }
    GameProcess game(program, install.dir.path(), {}, arguments);
    ASSERT_TRUE(game.waitForOutput(kStarted)) << game.output();
    stopNormally(game);
    fs::permissions(install.data(), fs::perms::owner_all, fs::perm_options::add);

    // The log could not be opened and said so on the console; the game
    // read the record, played on, and left the file exactly as it was.
    EXPECT_TRUE(has(game.output(), "Log: could not open '")) << game.output();
    EXPECT_TRUE(has(game.output(), "DIAG: save: timesFired=9 clockInCards=2 hasContinue=yes lastDiff=VORN"))
        << game.output();
    EXPECT_EQ(readFile(install.data() / "vornco_save.txt"), before);
    EXPECT_FALSE(fs::exists(install.data() / "vornco_save.txt.tmp"));
    EXPECT_FALSE(fs::exists(install.data() / "vornco_log.txt"));
#endif
}

TEST(HostileStart, ACatalogueCutHalfWayLoadsWhatIsThereAndPlays) {
    GameInstall install("hostile_cut");
    const fs::path file = install.data() / "levels" / "levels.json";
    const std::string whole = readFile(file);
    install.dir.write("data/levels/levels.json", whole.substr(0, whole.size() / 2));
    startAndStop(install);
    const std::string log = install.logText();
    std::smatch count;
    ASSERT_TRUE(std::regex_search(log, count, std::regex(R"(DIAG: levels loaded     \[ OK \]  \((\d+) stations\))")))
        << log;
    EXPECT_GT(std::stoi(count[1]), 0);
    EXPECT_LT(std::stoi(count[1]), 38);
}

TEST(HostileStart, ACatalogueOfBinaryGarbageIsReportedAndTheTitleHasNothingToPlay) {
    GameInstall install("hostile_garbage");
    std::mt19937 bytes(77);
    std::string garbage;
    for (int i = 0; i < 65536; ++i) {
        garbage += static_cast<char>(bytes() & 0xFF);
    }
    install.dir.write("data/levels/levels.json", garbage);
    startAndStop(install);
    const std::string log = install.logText();
    // The game joins "levels/levels.json" onto its data folder as one part.
    const std::string file = (install.data() / "levels/levels.json").u8string();
    EXPECT_TRUE(has(log, "INFO  Levels failed to load from " + file)) << log;
    EXPECT_TRUE(has(log, "DIAG: levels loaded     [MISS]  (0 stations)")) << log;
}

TEST(HostileStart, FiveMegabytesOfNestedBracesStartWithNoStationsAndNoCrash) {
    // The scanner counts depth instead of recursing, so no depth of nesting
    // can run it out of stack; the file is refused as a catalogue without
    // stations. (How long a start takes is the benchmark's business, not a
    // test's: a busy machine would make a timed test fail at random.)
    GameInstall install("hostile_braces");
    const std::size_t depth = 5 * 1024 * 1024 / 2;
    install.dir.write("data/levels/levels.json",
                      "{\"levels\": [" + std::string(depth, '{') + std::string(depth, '}') + "]}");
    startAndStop(install);
    EXPECT_TRUE(has(install.logText(), "DIAG: levels loaded     [MISS]  (0 stations)")) << install.logText();
}

TEST(HostileStart, AHandEditedSaveWithAByteOrderMarkWindowsLineEndsAndUnknownKeysKeepsEveryValue) {
    GameInstall install("hostile_save_edit");
    install.dir.write("data/vornco_save.txt",
                      "\xEF\xBB\xBFsplashSeen=1\r\ntimesFired=12\r\nclockInCards=2\r\nlastDifficulty=3\r\n"
                      "colour=blue\r\nfutureKey=7\r\n");
    startAndStop(install);
    EXPECT_TRUE(has(install.logText(), "DIAG: save: timesFired=12 clockInCards=2 hasContinue=yes lastDiff=VORN"))
        << install.logText();
    if (!kWindows) {
        // Rewritten at the normal end in the game's own form, nothing lost.
        EXPECT_EQ(readTextFile(install.data() / "vornco_save.txt"), saveFile(12));
    }
}

TEST(HostileStart, ASaveNumberTooBigForItsFieldEndsStartUpWithTheConversionErrorAndKeepsTheFile) {
    GameInstall install("hostile_save_huge");
    const std::string broken = "timesFired=99999999999999999999\nclockInCards=2\n";
    install.dir.write("data/vornco_save.txt", broken);
    GameProcess game(install.executable(), install.dir.path());
    const int code = game.waitForExit();
    EXPECT_NE(code, 0);
    EXPECT_TRUE(has(game.output(), "std::out_of_range")) << game.output();
    EXPECT_FALSE(has(game.output(), kStarted));
    EXPECT_EQ(readFile(install.data() / "vornco_save.txt"), broken);
}

TEST(HostileStart, NoFontAnywhereStillStartsAndPlays) {
    VORN_NATIVE_ONLY("the system's fallback fonts are hidden in a Linux mount namespace");
#ifndef _WIN32
    GameInstall install("hostile_no_fonts", InstallOptions{true, true, false, true, true});
    const fs::path empty = install.dir.path() / "no-fonts";
    fs::create_directories(empty);
    // The fallbacks live in one system folder; hide it behind an empty one,
    // for the game's eyes only.
    const std::string script = "mount --bind '" + empty.string() +
                               "' /usr/share/fonts/truetype/dejavu 2>/dev/null || exit 77; "
                               "[ -z \"$(ls -A /usr/share/fonts/truetype/dejavu)\" ] || exit 78; exec \"$0\"";
    GameProcess game("/usr/bin/unshare", install.dir.path(), {},
                     {"-m", "sh", "-c", script, install.executable().string()});
    if (!game.waitForOutput(kStarted)) {
        const int code = game.waitForExit();
        if (code == 77 || code == 1) {
            GTEST_SKIP() << "this machine does not let the test hide the system fonts: " << game.output();
        }
        FAIL() << "exit " << code << ": " << game.output();
    }
    stopNormally(game);
    const std::string log = install.logText();
    EXPECT_TRUE(has(log, "DIAG: font (game)        [MISS]  ")) << log;
    EXPECT_TRUE(has(log, "DIAG: font (display)     [none]  ")) << log;
    EXPECT_TRUE(has(log, "INFO  session end")) << log;
#endif
}

TEST(HostileStart, NoPicturesAndNoSoundsStillStartAndPlay) {
    GameInstall install("hostile_bare", InstallOptions{true, true, true, false, false});
    startAndStop(install);
    const std::string log = install.logText();
    const std::string images = (install.dir.path() / "assets" / "images").u8string();
    EXPECT_TRUE(has(log, "DIAG: window icon not loaded from '" + images + kSep + "app_icon.png' (")) << log;
    EXPECT_TRUE(has(log, "DIAG: studio logo not loaded from '" + images + kSep +
                             "studio_logo.png' (splash/intro will show text).")) << log;
    EXPECT_TRUE(has(log, "DIAG: sfx (.wav)        [part] (0/6 present)")) << log;
    EXPECT_TRUE(has(log, "DIAG: intro sting       [MISS] (ogg=0 mp3=0 wav=0)")) << log;
}

TEST(HostileStart, AnAudioDeviceThatWillNotOpenRunsSilent) {
    // SDL's file-writing audio driver, told to write where no folder is: the
    // driver is there, but its device cannot be opened, as with a missing
    // sound card.
    GameInstall install("hostile_no_audio");
    startAndStop(install, {{"SDL_AUDIODRIVER", "disk"},
                           {"SDL_DISKAUDIOFILE", (install.dir.path() / "no" / "such" / "file.raw").string()}});
    const std::string log = install.logText();
    EXPECT_TRUE(has(log, "INFO  Audio: Mix_OpenAudio failed (")) << log;
    EXPECT_TRUE(has(log, ") \xE2\x80\x94 running silent.")) << log;
    EXPECT_TRUE(has(log, "DIAG: audio device      [FAIL] (no sound this session)")) << log;
}

TEST(HostileStart, StartedFromAnotherFolderItUsesItsOwn) {
    GameInstall install("hostile_elsewhere");
    TempDir elsewhere("hostile_elsewhere_cwd");
    GameProcess game(install.executable(), elsewhere.path());
    ASSERT_TRUE(game.waitForOutput(kStarted)) << game.output();
    stopNormally(game);
    EXPECT_TRUE(has(install.logText(), "DIAG: levels loaded     [ OK ]  (38 stations)")) << install.logText();
    EXPECT_FALSE(fs::exists(elsewhere.path() / "data"));
}

TEST(HostileStart, StartedThroughALinkItUsesTheFolderOfTheRealProgram) {
    VORN_NATIVE_ONLY("a symbolic link to a program is a POSIX thing here");
    GameInstall install("hostile_link");
    TempDir links("hostile_link_dir");
    TempDir elsewhere("hostile_link_cwd");
    fs::create_symlink(install.executable(), links.path() / "vornco");
    GameProcess game(links.path() / "vornco", elsewhere.path());
    ASSERT_TRUE(game.waitForOutput(kStarted)) << game.output();
    stopNormally(game);
    EXPECT_TRUE(has(install.logText(), "INFO  Paths: base='" + install.dir.path().u8string() + "/'"))
        << install.logText();
    EXPECT_FALSE(fs::exists(links.path() / "data"));
    EXPECT_FALSE(fs::exists(elsewhere.path() / "data"));
}

}  // namespace
}  // namespace vorn::test
