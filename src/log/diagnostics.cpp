#include "log/diagnostics.h"

#include "log/session_log.h"

#include <filesystem>
#include <system_error>

namespace vorn {

namespace fs = std::filesystem;

namespace {

constexpr const char* kOk = "[ OK ]";
constexpr const char* kMiss = "[MISS]";
constexpr const char* kNone = "[none]";
constexpr const char* kPart = "[part]";

// One row of the common shape: label, status word, the exact path tested,
// so the player can compare it with what is really on disk.
void fileRow(const char* label, const fs::path& file, const char* missingWord) {
    const std::string path = pathString(file);
    logInfo("DIAG: %-18s %-7s %s", label, pathExists(path) ? kOk : missingWord, path.c_str());
}

// Tracks as the report counts them. All three title files are left out here,
// while the real playlist keeps a .ogg or .wav title as a gameplay track, so
// the two numbers may differ; the row is about what was meant to ship.
int countPlaylistTracks(const fs::path& folder) {
    std::error_code ec;
    if (!fs::is_directory(folder, ec)) {
        return 0;
    }
    int count = 0;
    for (const fs::directory_entry& entry : fs::directory_iterator(folder)) {
        if (!entry.is_regular_file()) {
            continue;
        }
        const std::string name = lowerAscii(pathString(entry.path().filename()));
        if (name == "vorn-title.mp3" || name == "vorn-title.ogg" || name == "vorn-title.wav") {
            continue;
        }
        const std::string ext = lowerAscii(pathString(entry.path().extension()));
        if (ext == ".mp3" || ext == ".ogg" || ext == ".wav" || ext == ".flac") {
            ++count;
        }
    }
    return count;
}

const char* difficultyName(int difficulty) {
    switch (difficulty) {
        case 0: return "EASY";
        case 1: return "MEDIUM";
        case 2: return "HARD";
        case 3: return "VORN";
        default: return "?";
    }
}

}  // namespace

void writeDiagnostics(const DiagnosticsInput& input) {
    const fs::path assets = fs::u8path(input.assetsPath);
    const fs::path fonts = assets / "fonts";
    const fs::path images = assets / "images";
    const fs::path audio = assets / "audio";
    const fs::path music = fs::u8path(input.musicPath);

    logSection("diagnostics");
    logInfo("DIAG: audio device      %s", input.audioOpen ? kOk : "[FAIL] (no sound this session)");

    fileRow("font (game)", fonts / "game.ttf", kMiss);
    fileRow("font (display)", fonts / "display.ttf", kNone);
    fileRow("studio logo", images / "studio_logo.png", kMiss);
    fileRow("app icon (png)", images / "app_icon.png", kMiss);
    fileRow("app icon (ico)", images / "app_icon.ico", kNone);

    // The sting player also tries .flac, but the three formats the game is
    // shipped in are what this row is meant to confirm.
    const bool stingOgg = pathExists(pathString(audio / "zembrilux-sting.ogg"));
    const bool stingMp3 = pathExists(pathString(audio / "zembrilux-sting.mp3"));
    const bool stingWav = pathExists(pathString(audio / "zembrilux-sting.wav"));
    const bool anySting = stingOgg || stingMp3 || stingWav;
    logInfo("DIAG: intro sting       %s (ogg=%d mp3=%d wav=%d)", anySting ? kOk : kMiss,
            stingOgg ? 1 : 0, stingMp3 ? 1 : 0, stingWav ? 1 : 0);
    if (!anySting) {
        logInfo("DIAG:   -> no zembrilux-sting.* in assets/audio \xE2\x80\x94 intro will be silent.");
    }

    int effects = 0;
    for (const char* name : {"tick", "tock", "siren", "pass", "fail", "click"}) {
        if (pathExists(pathString(audio / (std::string(name) + ".wav")))) {
            ++effects;
        }
    }
    // "[part]" even at zero: the set is incomplete either way, and the count
    // says how badly.
    logInfo("DIAG: sfx (.wav)        %s (%d/6 present)", effects == 6 ? kOk : kPart, effects);

    const bool title = pathExists(pathString(music / "vorn-title.ogg")) ||
                       pathExists(pathString(music / "vorn-title.mp3")) ||
                       pathExists(pathString(music / "vorn-title.wav"));
    logInfo("DIAG: title music       %s  (vorn-title.{ogg,mp3,wav})",
            title ? kOk : "[none] -> title screen is silent by design");

    const int tracks = countPlaylistTracks(music);
    logInfo("DIAG: playlist tracks   %s  (%d in data/music)",
            tracks > 0 ? kOk : "[none] -> gameplay music silent by design", tracks);

    logInfo("DIAG: levels loaded     %s  (%zu stations)", input.levelCount > 0 ? kOk : kMiss,
            input.levelCount);
    logInfo("DIAG: save: timesFired=%ld clockInCards=%d hasContinue=%s lastDiff=%s", input.timesFired,
            input.clockInCards, input.clockInCards > 0 ? "yes" : "no",
            difficultyName(input.lastDifficulty));
    logInfo("DIAG: --- end of startup diagnostics ---");
}

}  // namespace vorn
