#include "support/game_install.h"

#include "support/test_platform.h"

namespace vorn::test {

namespace fs = std::filesystem;

GameInstall::GameInstall(const std::string& name, InstallOptions options) : dir(name) {
    const fs::path game = gameFolder();
    fs::copy_file(gameExecutable(), executable());
    fs::create_directories(data());
    if (options.catalogue) {
        fs::copy(game / "data" / "levels", data() / "levels");
    }
    if (options.music) {
        fs::copy(game / "data" / "music", data() / "music");
    }
    fs::create_directories(dir.path() / "assets");
    const std::pair<bool, const char*> parts[] = {
        {options.fonts, "fonts"}, {options.images, "images"}, {options.audio, "audio"}};
    for (const auto& [wanted, part] : parts) {
        if (wanted) {
            shareFolder(game / "assets" / part, dir.path() / "assets" / part);
        }
    }
}

fs::path GameInstall::executable() const { return dir.path() / gameExecutable().filename(); }

}  // namespace vorn::test
