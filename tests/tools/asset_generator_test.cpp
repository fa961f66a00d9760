#include "audio/audio_system.h"

#include <SDL.h>
#include <SDL_image.h>
#include <SDL_mixer.h>
#include <gtest/gtest.h>

#include <cstdint>
#include <cstdlib>
#include <filesystem>
#include <string>

// The sounds and pictures the build generates into the game folder: present,
// loadable by the same libraries the game uses, and of the sizes the screens
// and the mixer expect.

namespace vorn {
namespace {

namespace fs = std::filesystem;

const fs::path kGameDir = fs::u8path(VORN_GAME_DIR);

class GeneratedAssetsAudio : public ::testing::Test {
protected:
    void SetUp() override {
        setenv("SDL_AUDIODRIVER", "dummy", 1);
        ASSERT_EQ(SDL_Init(SDL_INIT_AUDIO), 0) << SDL_GetError();
        ASSERT_EQ(Mix_OpenAudio(44100, AUDIO_S16LSB, 2, 2048), 0) << SDL_GetError();
    }
    void TearDown() override {
        Mix_CloseAudio();
        SDL_Quit();
    }
};

// Seconds of a chunk as the mixer holds it: 44.1 kHz, 16-bit stereo.
double chunkSeconds(const Mix_Chunk* chunk) { return chunk->alen / (44100.0 * 4.0); }

TEST_F(GeneratedAssetsAudio, EffectsAreShortAndLoad) {
    for (const char* name : {"tick.wav", "tock.wav", "siren.wav", "pass.wav", "fail.wav", "click.wav"}) {
        const fs::path file = kGameDir / "assets" / "audio" / name;
        Mix_Chunk* chunk = Mix_LoadWAV(file.u8string().c_str());
        ASSERT_NE(chunk, nullptr) << file << ": " << SDL_GetError();
        EXPECT_GT(chunkSeconds(chunk), 0.01) << name;
        EXPECT_LT(chunkSeconds(chunk), 1.0) << name;
        Mix_FreeChunk(chunk);
    }
}

TEST_F(GeneratedAssetsAudio, StingIsAThreeToFourSecondWav) {
    const fs::path file = kGameDir / "assets" / "audio" / "zembrilux-sting.wav";
    Mix_Chunk* chunk = Mix_LoadWAV(file.u8string().c_str());
    ASSERT_NE(chunk, nullptr) << SDL_GetError();
    EXPECT_GE(chunkSeconds(chunk), 3.0);
    EXPECT_LE(chunkSeconds(chunk), 4.5);
    Mix_FreeChunk(chunk);
}

TEST_F(GeneratedAssetsAudio, MusicLoadsWithTheIntendedLengths) {
    const fs::path music = kGameDir / "data" / "music";
    Mix_Music* title = Mix_LoadMUS((music / "vorn-title.wav").u8string().c_str());
    ASSERT_NE(title, nullptr) << SDL_GetError();
    EXPECT_GE(Mix_MusicDuration(title), 20.0);
    EXPECT_LE(Mix_MusicDuration(title), 30.0);
    Mix_FreeMusic(title);

    for (const char* name : {"shift-01.wav", "shift-02.wav", "shift-03.wav"}) {
        Mix_Music* track = Mix_LoadMUS((music / name).u8string().c_str());
        ASSERT_NE(track, nullptr) << name << ": " << SDL_GetError();
        EXPECT_GE(Mix_MusicDuration(track), 30.0) << name;
        EXPECT_LE(Mix_MusicDuration(track), 45.0) << name;
        Mix_FreeMusic(track);
    }
}

TEST_F(GeneratedAssetsAudio, TheGameFindsTitleStingAndAllEffects) {
    SDL_Quit();   // the AudioSystem opens the device itself
    AudioSystem audio;
    ASSERT_TRUE(audio.openAudio());
    audio.loadEffects((kGameDir / "assets" / "audio").u8string());
    for (Mix_Chunk* chunk : {audio.tick, audio.tock, audio.siren, audio.pass, audio.fail, audio.click}) {
        EXPECT_NE(chunk, nullptr);
    }
    audio.playSting((kGameDir / "assets" / "audio" / "zembrilux-sting.mp3").u8string());
    EXPECT_TRUE(audio.isMusicPlaying());
    audio.playTitleMusic((kGameDir / "data" / "music").u8string());
    EXPECT_TRUE(audio.isMusicPlaying());
    audio.buildPlaylist((kGameDir / "data" / "music").u8string(), 1);
    EXPECT_TRUE(audio.isMusicPlaying());
    audio.closeAudio();
}

// An image as it loads, converted once to RGBA so pixels can be read.
class Image {
public:
    explicit Image(const fs::path& file) {
        if (SDL_Surface* loaded = IMG_Load(file.u8string().c_str())) {
            surface = SDL_ConvertSurfaceFormat(loaded, SDL_PIXELFORMAT_RGBA32, 0);
            SDL_FreeSurface(loaded);
        }
    }
    ~Image() { SDL_FreeSurface(surface); }
    Image(const Image&) = delete;
    Image& operator=(const Image&) = delete;

    std::uint8_t alphaAt(int x, int y) const {
        const auto* row = static_cast<const std::uint8_t*>(surface->pixels) + std::ptrdiff_t{y} * surface->pitch;
        return row[x * 4 + 3];
    }

    SDL_Surface* surface = nullptr;
};

TEST(GeneratedAssetsImages, IconIsASquareWithTransparentCorners) {
    const Image icon(kGameDir / "assets" / "images" / "app_icon.png");
    ASSERT_NE(icon.surface, nullptr) << SDL_GetError();
    EXPECT_EQ(icon.surface->w, 128);
    EXPECT_EQ(icon.surface->h, 128);
    EXPECT_EQ(icon.alphaAt(0, 0), 0);
    EXPECT_EQ(icon.alphaAt(64, 64), 255);
}

TEST(GeneratedAssetsImages, StudioLogoIsAWideWordmarkOnTransparency) {
    const Image logo(kGameDir / "assets" / "images" / "studio_logo.png");
    ASSERT_NE(logo.surface, nullptr) << SDL_GetError();
    EXPECT_EQ(logo.surface->w, 1024);
    EXPECT_EQ(logo.surface->h, 256);
    EXPECT_EQ(logo.alphaAt(0, 0), 0);
    EXPECT_EQ(logo.alphaAt(1023, 255), 0);
    // Across the middle of the letters, a good share of the row is solid ink.
    int solid = 0;
    for (int x = 0; x < 1024; ++x) {
        solid += logo.alphaAt(x, 110) == 255 ? 1 : 0;
    }
    EXPECT_GT(solid, 100);
}

}  // namespace
}  // namespace vorn
