// Build-time tool: writes the game's own sounds and pictures into the game
// folder. Nothing here is linked into the game; the build runs it once and
// again only when this code changes. Usage:
//   vorn_asset_generator <game folder> [display font]
#define SDL_MAIN_HANDLED

#include "asset_images.h"
#include "asset_sounds.h"

#include <cstdio>
#include <filesystem>
#include <string>
#include <system_error>

int main(int argc, char** argv) {
    if (argc < 2) {
        std::fprintf(stderr, "usage: %s <game folder> [display font]\n", argv[0]);
        return 2;
    }
    namespace fs = std::filesystem;
    const fs::path gameDir = fs::u8path(argv[1]);
    const std::string fontPath = argc > 2 ? argv[2] : "";

    for (const char* folder : {"assets/audio", "assets/images", "data/music"}) {
        std::error_code ec;
        fs::create_directories(gameDir / folder, ec);
        if (ec) {
            std::fprintf(stderr, "asset generator: cannot create %s: %s\n", (gameDir / folder).u8string().c_str(),
                         ec.message().c_str());
            return 1;
        }
    }

    std::string error;
    if (!vorn::tools::writeSounds(gameDir, error) || !vorn::tools::writeImages(gameDir, fontPath, error)) {
        std::fprintf(stderr, "asset generator: %s\n", error.c_str());
        return 1;
    }
    return 0;
}
