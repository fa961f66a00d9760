#pragma once
// A player's copy of the built game in a scratch folder (the executable,
// data/ with the catalogue and music, assets/), for the tests that start the
// real executable: it writes its log and save there, never into the build.
// Pieces can be left out or replaced to make the surroundings hostile.

#include "support/temp_dir.h"

#include <filesystem>
#include <string>

namespace vorn::test {

struct InstallOptions {
    bool catalogue = true;   // data/levels/levels.json from the build
    bool music = true;       // data/music from the build
    bool fonts = true;       // assets/fonts
    bool images = true;      // assets/images
    bool audio = true;       // assets/audio
};

class GameInstall {
public:
    explicit GameInstall(const std::string& name, InstallOptions options = {});

    std::filesystem::path executable() const;
    std::filesystem::path data() const { return dir.path() / "data"; }
    std::string logText() const { return readTextFile(data() / "vornco_log.txt"); }

    TempDir dir;
};

}  // namespace vorn::test
