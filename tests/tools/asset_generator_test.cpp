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

// Alpha of one pixel of a 32-bit surface.
std::uint8_t alphaAt(SDL_Surface* surface, int x, int y) {
    SDL_Surface* rgba = SDL_ConvertSurfaceFormat(surface, SDL_PIXELFORMAT_RGBA32, 0);
    const auto* row = static_cast<const std::uint8_t*>(rgba->pixels) + static_cast<std::ptrdiff_t>(y) * rgba->pitch;
    const std::uint8_t alpha = row[x * 4 + 3];
    SDL_FreeSurface(rgba);
    return alpha;
}

TEST(GeneratedAssetsImages, IconIsASquareWithTransparentCorners) {
    SDL_Surface* icon = IMG_Load((kGameDir / "assets" / "images" / "app_icon.png").u8string().c_str());
    ASSERT_NE(icon, nullptr) << SDL_GetError();
    EXPECT_EQ(icon->w, 128);
    EXPECT_EQ(icon->h, 128);
    EXPECT_EQ(alphaAt(icon, 0, 0), 0);
    EXPECT_EQ(alphaAt(icon, 64, 64), 255);
    SDL_FreeSurface(icon);
}

TEST(GeneratedAssetsImages, StudioLogoIsAWideWordmarkOnTransparency) {
    SDL_Surface* logo = IMG_Load((kGameDir / "assets" / "images" / "studio_logo.png").u8string().c_str());
    ASSERT_NE(logo, nullptr) << SDL_GetError();
    EXPECT_EQ(logo->w, 1024);
    EXPECT_EQ(logo->h, 256);
    EXPECT_EQ(alphaAt(logo, 0, 0), 0);
    EXPECT_EQ(alphaAt(logo, 1023, 255), 0);
    // Some pixel of the letters' band is solid.
    int solid = 0;
    for (int x = 0; x < 1024; x += 4) {
        solid += alphaAt(logo, x, 110) == 255 ? 1 : 0;
    }
    EXPECT_GT(solid, 20);
    SDL_FreeSurface(logo);
}

}  // namespace
}  // namespace vorn
