// The gallery tool run as the gallery script runs it: one PNG per screen from
// the built game folder, half size unless asked otherwise, or only the
// stations named on the command line.

#include "data/level_catalogue.h"
#include "support/game_process.h"
#include "support/temp_dir.h"

#include <SDL.h>
#include <SDL_image.h>
#include <gtest/gtest.h>

#include <filesystem>
#include <cstdio>
#include <set>
#include <vector>
#include <string>

namespace vorn::test {
namespace {

namespace fs = std::filesystem;

int runGallery(const TempDir& dir, std::vector<std::string> arguments) {
    GameProcess tool(fs::u8path(VORN_SCREEN_GALLERY), dir.path(), {}, std::move(arguments));
    return tool.waitForExit();
}

std::set<std::string> pngsIn(const fs::path& folder) {
    std::set<std::string> names;
    for (const auto& entry : fs::directory_iterator(folder)) {
        names.insert(entry.path().filename().string());
    }
    return names;
}

// The size of a saved picture, and the colour of one of its pixels.
struct Picture {
    explicit Picture(const fs::path& file) {
        if (SDL_Surface* loaded = IMG_Load(file.u8string().c_str())) {
            surface = SDL_ConvertSurfaceFormat(loaded, SDL_PIXELFORMAT_RGBA32, 0);
            SDL_FreeSurface(loaded);
        }
    }
    ~Picture() { SDL_FreeSurface(surface); }
    Picture(const Picture&) = delete;
    Picture& operator=(const Picture&) = delete;

    SDL_Color at(int x, int y) const {
        const auto* p = static_cast<const Uint8*>(surface->pixels) + y * surface->pitch + x * 4;
        return {p[0], p[1], p[2], p[3]};
    }

    SDL_Surface* surface = nullptr;
};

TEST(ScreenGallery, WritesEveryScreenAtHalfSize) {
    const TempDir dir("gallery_all");
    ASSERT_EQ(runGallery(dir, {"--out", "pictures"}), 0);
    std::set<std::string> expected = {
        "splash.png",     "shift-probation.png", "shift-starts.png",    "shift-overtime.png",
        "title.png",      "title-continue.png",  "fired.png",           "fired-vorn.png",
        "victory-card.png", "victory-no-card.png", "victory-vorn.png"};
    // And one picture for every station of the shipped catalogue.
    std::vector<LevelDef> levels;
    ASSERT_TRUE(loadLevels(levels, VORN_GAME_DIR "/data/levels/levels.json"));
    for (const LevelDef& def : levels) {
        char name[64];
        std::snprintf(name, sizeof name, "station-%02d-%s.png", def.number, def.type.c_str());
        expected.insert(name);
    }
    ASSERT_EQ(expected.size(), 11u + 38u);
    EXPECT_EQ(pngsIn(dir.path() / "pictures"), expected);
    for (const std::string& name : expected) {
        const Picture picture(dir.path() / "pictures" / name);
        ASSERT_NE(picture.surface, nullptr) << name;
        EXPECT_EQ(picture.surface->w, 683) << name;
        EXPECT_EQ(picture.surface->h, 384) << name;
    }
}

TEST(ScreenGallery, StationOptionDrawsOnlyThatStationAtFullSizeWhenAsked) {
    const TempDir dir("gallery_station");
    ASSERT_EQ(runGallery(dir, {"--out", "pictures", "--full-size", "--station", "button", "12"}), 0);
    EXPECT_EQ(pngsIn(dir.path() / "pictures"), std::set<std::string>{"station-12-button.png"});
    const Picture picture(dir.path() / "pictures" / "station-12-button.png");
    ASSERT_NE(picture.surface, nullptr);
    EXPECT_EQ(picture.surface->w, 1366);
    EXPECT_EQ(picture.surface->h, 768);
    // The game's own frame: the glass recess beside the screen, and the
    // badge of the station header.
    const SDL_Color recess = picture.at(241, 384);
    EXPECT_EQ(recess.r, 18);
    EXPECT_EQ(recess.g, 18);
    EXPECT_EQ(recess.b, 20);
    const SDL_Color badge = picture.at(400, 152);
    EXPECT_EQ(badge.r, 74);
    EXPECT_EQ(badge.g, 18);
    EXPECT_EQ(badge.b, 18);
}

TEST(ScreenGallery, UnknownOptionsPrintTheUsageAndFail) {
    const TempDir dir("gallery_usage");
    GameProcess tool(fs::u8path(VORN_SCREEN_GALLERY), dir.path(), {}, {"--station", "button"});
    EXPECT_EQ(tool.waitForExit(), 2);
    EXPECT_NE(tool.output().find("usage: screen_gallery"), std::string::npos);
}

}  // namespace
}  // namespace vorn::test
