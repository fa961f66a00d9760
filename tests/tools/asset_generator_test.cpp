#include "audio/audio_system.h"
#include "support/temp_dir.h"
#include "support/open_mixer.h"
#include "support/test_platform.h"

#include <SDL.h>
#include <SDL_image.h>
#include <SDL_mixer.h>
#include <gtest/gtest.h>

#include <cstdint>
#include <algorithm>
#include <cmath>
#include <iterator>
#include <fstream>
#include <cstdlib>
#include <filesystem>
#include <string>
#include <vector>

// The sounds and pictures the build generates into the game folder: present,
// loadable by the same libraries the game uses, and of the sizes the screens
// and the mixer expect.

namespace vorn {
namespace {

namespace fs = std::filesystem;

const fs::path kGameDir = fs::u8path(VORN_GAME_DIR);

class GeneratedAssetsAudio : public test::OpenMixerTest {};

// Seconds of a chunk as the mixer holds it: 44.1 kHz, 16-bit stereo.
double chunkSeconds(const Mix_Chunk* chunk) { return chunk->alen / (44100.0 * 4.0); }

TEST_F(GeneratedAssetsAudio, EffectsAreShortAndLoad) {
    for (const char* name : {"tick.wav", "tock.wav", "siren.wav", "pass.wav", "fail.wav", "click.wav"}) {
        const fs::path file = kGameDir / "assets" / "audio" / name;
        Mix_Chunk* chunk = Mix_LoadWAV(file.u8string().c_str());
        ASSERT_NE(chunk, nullptr) << file << ": " << SDL_GetError();
        EXPECT_GT(chunkSeconds(chunk), 0.01) << name;
        EXPECT_LT(chunkSeconds(chunk), 2.0) << name;
        Mix_FreeChunk(chunk);
    }
}

TEST_F(GeneratedAssetsAudio, StingIsATwoToFourSecondWav) {
    const fs::path file = kGameDir / "assets" / "audio" / "zembrilux-sting.wav";
    Mix_Chunk* chunk = Mix_LoadWAV(file.u8string().c_str());
    ASSERT_NE(chunk, nullptr) << SDL_GetError();
    EXPECT_GE(chunkSeconds(chunk), 2.0);
    EXPECT_LE(chunkSeconds(chunk), 4.0);
    Mix_FreeChunk(chunk);
}

TEST_F(GeneratedAssetsAudio, TitleIsAnMp3AndTheGameplayTracksAreOgg) {
    // The .mp3 form keeps the title out of the gameplay playlist.
    const fs::path music = kGameDir / "data" / "music";
    Mix_Music* title = Mix_LoadMUS((music / "vorn-title.mp3").u8string().c_str());
    ASSERT_NE(title, nullptr) << SDL_GetError();
    EXPECT_EQ(Mix_GetMusicType(title), MUS_MP3);
    EXPECT_GE(Mix_MusicDuration(title), 30.0);
    EXPECT_LE(Mix_MusicDuration(title), 90.0);
    Mix_FreeMusic(title);

    int tracks = 0;
    for (const auto& entry : fs::directory_iterator(music)) {
        const std::string name = entry.path().filename().u8string();
        if (name == "vorn-title.mp3") {
            continue;
        }
        ++tracks;
        EXPECT_EQ(entry.path().extension(), ".ogg") << name;
        Mix_Music* track = Mix_LoadMUS(entry.path().u8string().c_str());
        ASSERT_NE(track, nullptr) << name << ": " << SDL_GetError();
        EXPECT_EQ(Mix_GetMusicType(track), MUS_OGG) << name;
        EXPECT_GE(Mix_MusicDuration(track), 90.0) << name;
        EXPECT_LE(Mix_MusicDuration(track), 150.0) << name;
        Mix_FreeMusic(track);
    }
    EXPECT_GE(tracks, 3);
}

// One effect's left channel as the mixer holds it (a mono file is doubled to
// stereo), as floats.
std::vector<double> effectSamples(const char* name) {
    std::vector<double> out;
    Mix_Chunk* chunk = Mix_LoadWAV((kGameDir / "assets" / "audio" / name).u8string().c_str());
    if (chunk == nullptr) {
        ADD_FAILURE() << name << ": " << SDL_GetError();
        return out;
    }
    const auto* samples = reinterpret_cast<const std::int16_t*>(chunk->abuf);
    for (std::size_t i = 0; i + 1 < chunk->alen / 2; i += 2) {
        out.push_back(samples[i] / 32768.0);
    }
    Mix_FreeChunk(chunk);
    return out;
}

double energy(const std::vector<double>& x) {
    double sum = 0.0;
    for (double v : x) {
        sum += v * v;
    }
    return sum;
}

// The share of a sound's energy under about 250 Hz: what is left after two
// one-pole low-passes at 250 Hz (a 1 kHz tone keeps about 6 % of its energy).
double lowShare(const std::vector<double>& x) {
    const double a = 1.0 - std::exp(-2.0 * 3.14159265358979 * 250.0 / 44100.0);
    double y1 = 0.0;
    double y2 = 0.0;
    std::vector<double> low;
    for (double v : x) {
        y1 += a * (v - y1);
        y2 += a * (y1 - y2);
        low.push_back(y2);
    }
    return energy(low) / energy(x);
}

TEST_F(GeneratedAssetsAudio, TickAndTockAreKnocksWithABody) {
    for (const char* name : {"tick.wav", "tock.wav"}) {
        const std::vector<double> x = effectSamples(name);
        EXPECT_GE(x.size() / 44100.0, 0.15) << name;
        EXPECT_LE(x.size() / 44100.0, 0.30) << name;
        // The body: a good share of the energy in the low thump (a bare
        // knock of 1.25 kHz partials keeps well under 1 % through these
        // filters).
        EXPECT_GT(lowShare(x), 0.15) << name;
    }
}

TEST_F(GeneratedAssetsAudio, TheClickCarriesOverTheMusic) {
    // The click used to hold an energy of -38.3 dB (sum of squares over one
    // second of full scale); it is now about 6 dB above that.
    const std::vector<double> x = effectSamples("click.wav");
    EXPECT_GT(10.0 * std::log10(energy(x) / 44100.0), -38.3 + 5.0);
    EXPECT_LT(x.size() / 44100.0, 0.06);   // still a click
}

TEST_F(GeneratedAssetsAudio, ThePassChimeHasALowNoteAndATail) {
    const std::vector<double> x = effectSamples("pass.wav");
    ASSERT_GE(x.size() / 44100.0, 1.3);
    EXPECT_GT(lowShare(x), 0.15);
    // Still ringing a second in: the 300 ms from 1.0 s above -50 dBFS.
    const std::vector<double> tail(x.begin() + 44100, x.begin() + 44100 + 13230);
    EXPECT_GT(10.0 * std::log10(energy(tail) / 13230.0), -50.0);
}

// Loudness of a decoded sound in the mixer's 16-bit format: root mean
// square and the largest sample, both as fractions of full scale.
struct Level16 {
    double rms = 0.0;
    double peak = 0.0;
};

Level16 levelOf(const Mix_Chunk* chunk) {
    const auto* samples = reinterpret_cast<const std::int16_t*>(chunk->abuf);
    const std::size_t count = chunk->alen / 2;
    double sum = 0.0;
    double peak = 0.0;
    for (std::size_t i = 0; i < count; ++i) {
        const double v = samples[i] / 32768.0;
        sum += v * v;
        peak = std::max(peak, std::abs(v));
    }
    return Level16{count > 0 ? std::sqrt(sum / static_cast<double>(count)) : 0.0, peak};
}

TEST_F(GeneratedAssetsAudio, EverySoundIsAudibleAndNoneClips) {
    const fs::path audio = kGameDir / "assets" / "audio";
    const fs::path music = kGameDir / "data" / "music";
    for (const fs::path& file :
         {audio / "tick.wav", audio / "tock.wav", audio / "siren.wav", audio / "pass.wav", audio / "fail.wav",
          audio / "click.wav", audio / "zembrilux-sting.wav", music / "vorn-title.mp3", music / "shift-01.ogg",
          music / "shift-02.ogg", music / "shift-03.ogg"}) {
        // The mixer decodes Ogg and MP3 into a chunk as readily as WAV.
        Mix_Chunk* chunk = Mix_LoadWAV(file.u8string().c_str());
        ASSERT_NE(chunk, nullptr) << file << ": " << SDL_GetError();
        const Level16 level = levelOf(chunk);
        EXPECT_GT(level.rms, 0.02) << file;     // not silent
        EXPECT_LT(level.peak, 0.995) << file;   // headroom left: no clipping
        Mix_FreeChunk(chunk);
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

TEST(GeneratedAssetsImages, TheWindowsIconWrapsTheSamePicture) {
    std::ifstream ico(kGameDir / "assets" / "images" / "app_icon.ico", std::ios::binary);
    const std::string bytes((std::istreambuf_iterator<char>(ico)), std::istreambuf_iterator<char>());
    std::ifstream png(kGameDir / "assets" / "images" / "app_icon.png", std::ios::binary);
    const std::string image((std::istreambuf_iterator<char>(png)), std::istreambuf_iterator<char>());
    ASSERT_EQ(bytes.size(), 22 + image.size());
    EXPECT_EQ(bytes.substr(0, 6), std::string("\0\0\1\0\1\0", 6));   // an icon with one image
    EXPECT_EQ(static_cast<unsigned char>(bytes[6]), 128u);
    EXPECT_EQ(bytes.substr(22), image);
}

std::string fileBytes(const fs::path& file) {
    std::ifstream in(file, std::ios::binary);
    return std::string((std::istreambuf_iterator<char>(in)), std::istreambuf_iterator<char>());
}

TEST(GeneratedAssets, TwoGeneratorRunsWriteIdenticalBytes) {
    VORN_NATIVE_ONLY("the asset generator is a program of the build machine");
    const test::TempDir base("assets");
    const fs::path first = base.path() / "one";
    const fs::path second = base.path() / "two";
    for (const fs::path& dir : {first, second}) {
        const std::string command = std::string("\"") + VORN_ASSET_GENERATOR + "\" \"" + dir.u8string() + "\" \"" +
                                    VORN_DISPLAY_FONT_FILE + "\"";
        ASSERT_EQ(std::system(command.c_str()), 0) << command;
    }
    int files = 0;
    for (const auto& entry : fs::recursive_directory_iterator(first)) {
        if (!entry.is_regular_file()) {
            continue;
        }
        ++files;
        const fs::path twin = second / fs::relative(entry.path(), first);
        EXPECT_EQ(fileBytes(entry.path()), fileBytes(twin)) << twin;
        // And the build's own copy is the same again.
        EXPECT_EQ(fileBytes(entry.path()), fileBytes(kGameDir / fs::relative(entry.path(), first)))
            << fs::relative(entry.path(), first);
    }
    EXPECT_EQ(files, 14);
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
