#pragma once
// The start-up checklist written into the session log: whether the sound
// device opened and, for every file the game can use, whether it is on disk.
// It looks at the disk itself rather than asking the loaders, so a player's
// log says at a glance why a font, a sound or the music is missing. It never
// changes anything and never stops the game.

#include "data/file_paths.h"

#include <cstddef>
#include <string>

namespace vorn {

// What the report needs to know about the running game. The Application
// fills it in, so this module needs nothing of the game's own types.
struct DiagnosticsInput {
    std::string assetsPath;          // the "assets" folder beside the game
    std::string musicPath;           // the "data/music" folder
    bool audioOpen = false;          // AudioSystem::initialised
    std::size_t levelCount = 0;      // stations in the loaded catalogue
    long timesFired = 0;
    int clockInCards = 0;
    int lastDifficulty = 1;          // 0 EASY .. 3 VORN, anything else unknown
};

// Writes the "diagnostics" section through logSection and logInfo, so each
// row reaches the log file and standard error.
void writeDiagnostics(const DiagnosticsInput& input);

}  // namespace vorn
