// The sound device: opening it (or failing to, and running silent), closing
// it, the volumes set when it opens, what the game asks of it, and the FLAC
// decoder the mixer is built with.

#include "audio_system_fixtures.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cstring>

namespace vorn::test {
namespace {

namespace fs = std::filesystem;

TEST_F(NoAudioDevice, OpenAudioFailsWithOneLineAndRunsSilent) {
    EXPECT_FALSE(audio.openAudio());
    EXPECT_FALSE(audio.initialised);
    const auto lines = log.lines();
    const auto failures = std::count_if(lines.begin(), lines.end(), [](const std::string& line) {
        return startsWith(line, "Audio: Mix_OpenAudio failed (") &&
               endsWith(line, ") \xE2\x80\x94 running silent.");
    });
    EXPECT_EQ(failures, 1);
    for (const std::string& line : lines) {
        EXPECT_EQ(line.find("initialised OK"), std::string::npos) << line;
    }
}

TEST_F(AudioDevice, OpenAudioReportsBothDecodersAndOpensStereo44100) {
    audio.closeAudio();
    log.clear();
    ASSERT_TRUE(audio.openAudio());
    EXPECT_EQ(log.lines(), std::vector<std::string>{"Audio: initialised OK (MP3=yes OGG=yes)."});
    int frequency = 0;
    Uint16 format = 0;
    int channels = 0;
    ASSERT_NE(Mix_QuerySpec(&frequency, &format, &channels), 0);
    EXPECT_EQ(frequency, 44100);
    EXPECT_EQ(format, AUDIO_S16LSB);
    EXPECT_EQ(channels, 2);
    EXPECT_EQ(Mix_AllocateChannels(-1), 16);
}

TEST_F(AudioDevice, CloseAudioReleasesEverythingAndIsHarmlessTwice) {
    TempDir dir("audio_close");
    for (const char* name : {"tick.wav", "tock.wav", "siren.wav", "pass.wav", "fail.wav", "click.wav"}) {
        dir.write(name, wavBytes(0.2));
    }
    dir.write("music/vorn-title.wav", wavBytes());
    audio.loadEffects(dir.str());
    audio.playTitleMusic(utf8(dir.path() / "music"));
    ASSERT_NE(audio.currentMusic, nullptr);

    audio.closeAudio();
    EXPECT_FALSE(audio.initialised);
    EXPECT_EQ(audio.currentMusic, nullptr);
    for (Mix_Chunk* chunk : {audio.tick, audio.tock, audio.siren, audio.pass, audio.fail, audio.click}) {
        EXPECT_EQ(chunk, nullptr);
    }
    EXPECT_EQ(Mix_QuerySpec(nullptr, nullptr, nullptr), 0);

    audio.closeAudio();
    EXPECT_FALSE(audio.initialised);
    audio.playTick();
    EXPECT_FALSE(audio.tickToggle);
}

// Full volume for the music and for every one of the sixteen channels, set
// once when the device opens, and asked for in that order.
TEST_F(AudioDevice, OpensWithTheMusicAndEveryChannelAtFullVolume) {
    EXPECT_EQ(Mix_VolumeMusic(-1), 128);
    for (int channel = 0; channel < 16; ++channel) {
        EXPECT_EQ(Mix_Volume(channel, -1), 128) << "channel " << channel;
    }
    audio.closeAudio();
    std::vector<std::string> requests;
    audio.requestLog = &requests;
    ASSERT_TRUE(audio.openAudio());
    EXPECT_EQ(requests, (std::vector<std::string>{"volume music=128", "volume channels=128"}));
    audio.requestLog = nullptr;
}

// The sting and every gameplay track are played once; only the title tune
// loops, for as long as the title terminal shows.
TEST_F(AudioDevice, TheStingAndEveryTrackPlayOnceAndTheTitleLoops) {
    TempDir dir("audio_loops");
    const fs::path sting = dir.write("zembrilux-sting.wav", wavBytes(0.2));
    dir.write("music/vorn-title.wav", wavBytes(0.2));
    dir.write("music/a.wav", wavBytes(0.2));
    std::vector<std::string> requests;
    audio.requestLog = &requests;

    audio.playSting(utf8(sting));
    EXPECT_TRUE(audio.isMusicPlaying());
    audio.playTitleMusic(utf8(dir.path() / "music"));
    EXPECT_TRUE(audio.isMusicPlaying());
    audio.buildPlaylist(utf8(dir.path() / "music"), 5u);
    EXPECT_TRUE(audio.isMusicPlaying());
    audio.stopMusic();
    EXPECT_EQ(requests, (std::vector<std::string>{"music sting loops=1", "music title loops=-1",
                                                  "music track loops=1", "music stop"}));
    audio.requestLog = nullptr;
}

// The effects say which they are, one request per call.
TEST_F(AudioDevice, EachEffectIsOneRequestOfItsOwnName) {
    std::vector<std::string> requests;
    audio.requestLog = &requests;
    audio.playTick();
    audio.playTick();
    audio.playSiren();
    audio.playPass();
    audio.playFail();
    audio.playClick();
    EXPECT_EQ(requests, (std::vector<std::string>{"tick", "tick", "siren", "pass", "fail", "click"}));
    audio.requestLog = nullptr;
}

// FLAC is lossless, so the mixer the game is built with must give back every
// sample written, both as a chunk and as a music stream of the right length.
TEST_F(AudioDevice, AFlacTrackDecodesToExactlyItsSamples) {
    std::vector<std::int16_t> samples;
    for (int i = 0; i < 22050; ++i) {   // half a second of two different ramps
        samples.push_back(static_cast<std::int16_t>((i * 37) % 4000 - 2000));
        samples.push_back(static_cast<std::int16_t>(1500 - (i * 11) % 3000));
    }
    TempDir dir("audio_flac");
    const std::string file = utf8(dir.write("music/shift-04.flac", test::flacBytes(samples)));

    Mix_Chunk* chunk = Mix_LoadWAV(file.c_str());
    ASSERT_NE(chunk, nullptr) << SDL_GetError();
    ASSERT_EQ(chunk->alen, samples.size() * 2);
    std::vector<std::int16_t> decoded(samples.size());
    std::memcpy(decoded.data(), chunk->abuf, chunk->alen);
    EXPECT_EQ(decoded, samples);
    Mix_FreeChunk(chunk);

    Mix_Music* music = Mix_LoadMUS(file.c_str());
    ASSERT_NE(music, nullptr) << SDL_GetError();
    EXPECT_EQ(Mix_GetMusicType(music), MUS_FLAC);
    EXPECT_NEAR(Mix_MusicDuration(music), 0.5, 1e-6);
    Mix_FreeMusic(music);
}

}  // namespace
}  // namespace vorn::test
