#include "log/diagnostics.h"

#include "log/session_log.h"
#include "support/temp_dir.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <sstream>
#include <string>
#include <vector>

namespace vorn {
namespace {

namespace fs = std::filesystem;
using test::TempDir;

std::string utf8(const fs::path& path) { return path.u8string(); }

// An install folder laid out as the game finds it beside the executable.
struct Install {
    explicit Install(const std::string& name) : dir(name) {}

    fs::path assets() const { return dir.path() / "assets"; }
    fs::path music() const { return dir.path() / "data" / "music"; }
    // The game joins folder and file name part by part, so the expected path
    // is joined the same way: with a backslash between the parts on Windows.
    std::string file(const std::string& relative) const {
        return utf8(dir.path() / fs::u8path(relative).make_preferred());
    }
    void add(const std::string& relative) const { dir.write(relative, "x"); }

    DiagnosticsInput input() const {
        DiagnosticsInput in;
        in.assetsPath = utf8(assets());
        in.musicPath = utf8(music());
        in.audioOpen = true;
        in.levelCount = 39;
        in.timesFired = 3;
        in.clockInCards = 0;
        in.lastDifficulty = 1;
        return in;
    }

    TempDir dir;
};

// Every asset the report looks for, and no music at all.
void addEveryAsset(const Install& install) {
    for (const char* file : {"assets/fonts/game.ttf", "assets/fonts/display.ttf", "assets/images/studio_logo.png",
                             "assets/images/app_icon.png", "assets/images/app_icon.ico",
                             "assets/audio/zembrilux-sting.wav", "assets/audio/tick.wav", "assets/audio/tock.wav",
                             "assets/audio/siren.wav", "assets/audio/pass.wav", "assets/audio/fail.wav",
                             "assets/audio/click.wav"}) {
        install.add(file);
    }
}

// Runs the report into a fresh session log and returns the messages of the
// diagnostics section, without their time stamps.
std::vector<std::string> report(const DiagnosticsInput& input) {
    TempDir logDir("diag_log");
    const fs::path logFile = logDir.path() / "log.txt";
    openLog(utf8(logFile), "test");
    writeDiagnostics(input);
    closeLog();

    std::istringstream text(test::readTextFile(logFile));
    std::vector<std::string> rows;
    bool inSection = false;
    for (std::string line; std::getline(text, line);) {
        if (line.find("] ---- diagnostics ----") != std::string::npos) {
            inSection = true;
            continue;
        }
        const std::string marker = "] INFO  ";
        const std::size_t at = line.find(marker);
        if (inSection && at != std::string::npos && line.substr(at + marker.size()) != "session end") {
            rows.push_back(line.substr(at + marker.size()));
        }
    }
    return rows;
}

std::string findRow(const std::vector<std::string>& rows, const std::string& prefix) {
    for (const std::string& row : rows) {
        if (row.compare(0, prefix.size(), prefix) == 0) {
            return row;
        }
    }
    return "(no row starting with '" + prefix + "')";
}

const std::string kDash = "\xE2\x80\x94";

TEST(Diagnostics, FreshInstallWithoutMusicReportsEveryRowInOrder) {
    Install install("diag_fresh");
    addEveryAsset(install);

    const std::vector<std::string> expected{
        "DIAG: audio device      [ OK ]",
        "DIAG: font (game)        [ OK ]  " + install.file("assets/fonts/game.ttf"),
        "DIAG: font (display)     [ OK ]  " + install.file("assets/fonts/display.ttf"),
        "DIAG: studio logo        [ OK ]  " + install.file("assets/images/studio_logo.png"),
        "DIAG: app icon (png)     [ OK ]  " + install.file("assets/images/app_icon.png"),
        "DIAG: app icon (ico)     [ OK ]  " + install.file("assets/images/app_icon.ico"),
        "DIAG: intro sting       [ OK ] (ogg=0 mp3=0 wav=1)",
        "DIAG: sfx (.wav)        [ OK ] (6/6 present)",
        "DIAG: title music       [none] -> title screen is silent by design  (vorn-title.{ogg,mp3,wav})",
        "DIAG: playlist tracks   [none] -> gameplay music silent by design  (0 in data/music)",
        "DIAG: levels loaded     [ OK ]  (39 stations)",
        "DIAG: save: timesFired=3 clockInCards=0 hasContinue=no lastDiff=MEDIUM",
        "DIAG: --- end of startup diagnostics ---",
    };
    EXPECT_EQ(report(install.input()), expected);
}

TEST(Diagnostics, TheShippedGameFolderHasEveryRowPresent) {
    // The build's own game folder: every asset, the title tune and at least
    // three gameplay tracks, so no row may say MISS, part or none.
    const fs::path game = fs::u8path(VORN_GAME_DIR);
    DiagnosticsInput in;
    in.assetsPath = utf8(game / "assets");
    in.musicPath = utf8(game / "data" / "music");
    in.audioOpen = true;
    in.levelCount = 38;
    in.timesFired = 0;
    in.clockInCards = 1;
    in.lastDifficulty = 3;
    const std::vector<std::string> rows = report(in);
    ASSERT_EQ(rows.size(), 13u);
    const std::vector<std::string> expected{
        "DIAG: audio device      [ OK ]",
        "DIAG: font (game)        [ OK ]  " + utf8(game / "assets" / "fonts" / "game.ttf"),
        "DIAG: font (display)     [ OK ]  " + utf8(game / "assets" / "fonts" / "display.ttf"),
        "DIAG: studio logo        [ OK ]  " + utf8(game / "assets" / "images" / "studio_logo.png"),
        "DIAG: app icon (png)     [ OK ]  " + utf8(game / "assets" / "images" / "app_icon.png"),
        "DIAG: app icon (ico)     [ OK ]  " + utf8(game / "assets" / "images" / "app_icon.ico"),
        "DIAG: intro sting       [ OK ] (ogg=0 mp3=0 wav=1)",
        "DIAG: sfx (.wav)        [ OK ] (6/6 present)",
        "DIAG: title music       [ OK ]  (vorn-title.{ogg,mp3,wav})",
        "DIAG: playlist tracks   [ OK ]  (3 in data/music)",
        "DIAG: levels loaded     [ OK ]  (38 stations)",
        "DIAG: save: timesFired=0 clockInCards=1 hasContinue=yes lastDiff=VORN",
        "DIAG: --- end of startup diagnostics ---",
    };
    EXPECT_EQ(rows, expected);
}

TEST(Diagnostics, ClosedAudioDeviceIsAFail) {
    Install install("diag_no_audio");
    DiagnosticsInput in = install.input();
    in.audioOpen = false;
    EXPECT_EQ(report(in).at(0), "DIAG: audio device      [FAIL] (no sound this session)");
}

TEST(Diagnostics, MissingFilesAreMissOrNoneByHowMuchTheyMatter) {
    Install install("diag_missing");
    const std::vector<std::string> rows = report(install.input());
    ASSERT_GE(rows.size(), 6u);
    EXPECT_EQ(rows[1], "DIAG: font (game)        [MISS]  " + install.file("assets/fonts/game.ttf"));
    EXPECT_EQ(rows[2], "DIAG: font (display)     [none]  " + install.file("assets/fonts/display.ttf"));
    EXPECT_EQ(rows[3], "DIAG: studio logo        [MISS]  " + install.file("assets/images/studio_logo.png"));
    EXPECT_EQ(rows[4], "DIAG: app icon (png)     [MISS]  " + install.file("assets/images/app_icon.png"));
    EXPECT_EQ(rows[5], "DIAG: app icon (ico)     [none]  " + install.file("assets/images/app_icon.ico"));
}

TEST(Diagnostics, FiveOfSixEffectsArePart) {
    Install install("diag_five_effects");
    for (const char* name : {"tick", "tock", "siren", "pass", "click"}) {
        install.add(std::string("assets/audio/") + name + ".wav");
    }
    EXPECT_EQ(findRow(report(install.input()), "DIAG: sfx"), "DIAG: sfx (.wav)        [part] (5/6 present)");
}

TEST(Diagnostics, NoEffectsAtAllIsStillPartWithZero) {
    Install install("diag_no_effects");
    EXPECT_EQ(findRow(report(install.input()), "DIAG: sfx"), "DIAG: sfx (.wav)        [part] (0/6 present)");
}

TEST(Diagnostics, OnlyAFlacStingCountsAsMissingWithAWarningLine) {
    Install install("diag_flac_sting");
    install.add("assets/audio/zembrilux-sting.flac");
    const std::vector<std::string> rows = report(install.input());
    ASSERT_GE(rows.size(), 9u);
    EXPECT_EQ(rows[6], "DIAG: intro sting       [MISS] (ogg=0 mp3=0 wav=0)");
    EXPECT_EQ(rows[7], "DIAG:   -> no zembrilux-sting.* in assets/audio " + kDash + " intro will be silent.");
    EXPECT_EQ(rows[8], "DIAG: sfx (.wav)        [part] (0/6 present)");
}

TEST(Diagnostics, StingRowFlagsEachFormatFound) {
    Install install("diag_sting_formats");
    install.add("assets/audio/zembrilux-sting.ogg");
    install.add("assets/audio/zembrilux-sting.mp3");
    const std::vector<std::string> rows = report(install.input());
    ASSERT_GE(rows.size(), 8u);
    EXPECT_EQ(rows[6], "DIAG: intro sting       [ OK ] (ogg=1 mp3=1 wav=0)");
    EXPECT_EQ(rows[7], "DIAG: sfx (.wav)        [part] (0/6 present)");
}

TEST(Diagnostics, OggTitleAloneIsTitleMusicButNoPlaylist) {
    Install install("diag_ogg_title");
    install.add("data/music/vorn-title.ogg");
    const std::vector<std::string> rows = report(install.input());
    EXPECT_EQ(findRow(rows, "DIAG: title music"), "DIAG: title music       [ OK ]  (vorn-title.{ogg,mp3,wav})");
    EXPECT_EQ(findRow(rows, "DIAG: playlist tracks"),
              "DIAG: playlist tracks   [none] -> gameplay music silent by design  (0 in data/music)");
}

TEST(Diagnostics, PlaylistCountLeavesOutEveryTitleFile) {
    Install install("diag_playlist");
    for (const char* name : {"vorn-title.mp3", "vorn-title.wav", "VORN-TITLE.OGG", "a.OGG", "b.flac", "c.Mp3",
                             "notes.txt", "cover.png", "vorn-title.flac"}) {
        install.add(std::string("data/music/") + name);
    }
    install.add("data/music/folder.ogg/inside.ogg");
    const std::vector<std::string> rows = report(install.input());
    EXPECT_EQ(findRow(rows, "DIAG: title music"), "DIAG: title music       [ OK ]  (vorn-title.{ogg,mp3,wav})");
    // a.OGG, b.flac, c.Mp3 and the .flac title, which is no title here.
    EXPECT_EQ(findRow(rows, "DIAG: playlist tracks"), "DIAG: playlist tracks   [ OK ]  (4 in data/music)");
}

TEST(Diagnostics, EmptyCatalogueIsAMiss) {
    Install install("diag_no_levels");
    DiagnosticsInput in = install.input();
    in.levelCount = 0;
    EXPECT_EQ(findRow(report(in), "DIAG: levels"), "DIAG: levels loaded     [MISS]  (0 stations)");
}

TEST(Diagnostics, SaveRowShowsContinueAndDifficultyName) {
    Install install("diag_save");
    DiagnosticsInput in = install.input();
    in.timesFired = 12;
    in.clockInCards = 2;
    in.lastDifficulty = 1;
    EXPECT_EQ(findRow(report(in), "DIAG: save:"),
              "DIAG: save: timesFired=12 clockInCards=2 hasContinue=yes lastDiff=MEDIUM");
}

TEST(Diagnostics, EveryDifficultyHasItsNameAndOthersAreUnknown) {
    Install install("diag_difficulties");
    const std::vector<std::pair<int, std::string>> names{{0, "EASY"}, {1, "MEDIUM"}, {2, "HARD"},
                                                         {3, "VORN"}, {4, "?"},      {-1, "?"}};
    for (const auto& [value, name] : names) {
        DiagnosticsInput in = install.input();
        in.lastDifficulty = value;
        EXPECT_EQ(findRow(report(in), "DIAG: save:"),
                  "DIAG: save: timesFired=3 clockInCards=0 hasContinue=no lastDiff=" + name);
    }
}

TEST(Diagnostics, RowsAreEchoedOnStandardError) {
    Install install("diag_echo");
    DiagnosticsInput in = install.input();
    in.audioOpen = false;
    testing::internal::CaptureStderr();
    writeDiagnostics(in);   // log closed: standard error is the only place it goes
    const std::string echoed = testing::internal::GetCapturedStderr();
    EXPECT_NE(echoed.find("DIAG: audio device      [FAIL] (no sound this session)\n"), std::string::npos);
    EXPECT_NE(echoed.find("DIAG: --- end of startup diagnostics ---\n"), std::string::npos);
}

TEST(Diagnostics, PathExistsSeesFilesAndFolders) {
    TempDir dir("diag_path_exists");
    const fs::path file = dir.write("some file.txt", "x");
    EXPECT_TRUE(pathExists(utf8(file)));
    EXPECT_TRUE(pathExists(dir.str()));
    EXPECT_FALSE(pathExists(utf8(dir.path() / "absent.txt")));
}

TEST(Diagnostics, PathExistsIsFalseWhenTheStatusCannotBeRead) {
    TempDir dir("diag_path_unreadable");
    const fs::path file = dir.write("plain.txt", "x");
    // Each of these makes the status call itself fail rather than report
    // "not found"; none may throw.
    EXPECT_FALSE(pathExists(utf8(file / "child")));
    EXPECT_FALSE(pathExists(utf8(dir.path() / std::string(5000, 'n'))));
    EXPECT_FALSE(pathExists(""));
}

}  // namespace
}  // namespace vorn
