// The shipped fonts must hold every character the game draws: printable
// ASCII and the em dash that several instruction lines use.

#include <SDL_ttf.h>
#include <gtest/gtest.h>

#include <string>

namespace vorn::test {
namespace {

void expectFullCoverage(const std::string& file) {
    ASSERT_EQ(TTF_Init(), 0);
    TTF_Font* font = TTF_OpenFont(file.c_str(), 20);
    ASSERT_NE(font, nullptr) << file;
    for (Uint32 ch = 0x20; ch < 0x7F; ++ch) {
        EXPECT_NE(TTF_GlyphIsProvided32(font, ch), 0) << file << " lacks U+" << std::hex << ch;
    }
    EXPECT_NE(TTF_GlyphIsProvided32(font, 0x2014), 0) << file << " lacks the em dash";
    TTF_CloseFont(font);
    TTF_Quit();
}

TEST(ShippedFonts, GameFontCoversEveryCharacterTheGameDraws) {
    expectFullCoverage(VORN_GAME_DIR "/assets/fonts/game.ttf");
}

TEST(ShippedFonts, DisplayFontCoversEveryCharacterTheGameDraws) {
    expectFullCoverage(VORN_GAME_DIR "/assets/fonts/display.ttf");
}

TEST(ShippedFonts, EachFontShipsWithItsLicence) {
    for (const char* kind : {"game", "display"}) {
        const std::string licence = std::string(VORN_GAME_DIR "/assets/fonts/") + kind +
                                    ".ttf.LICENSE.txt";
        SDL_RWops* file = SDL_RWFromFile(licence.c_str(), "rb");
        ASSERT_NE(file, nullptr) << licence;
        EXPECT_GT(SDL_RWsize(file), 100) << licence;
        SDL_RWclose(file);
    }
}

}  // namespace
}  // namespace vorn::test
