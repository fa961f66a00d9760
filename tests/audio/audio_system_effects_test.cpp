// The sound effects: each loaded from its file or left silent, each on its
// own channel, the verdict channel where fail cuts pass, the clock's tick and
// tock taking turns, and every call quiet when there is no device.

#include "audio_system_fixtures.h"

#include <gtest/gtest.h>

namespace vorn::test {
namespace {

TEST_F(AudioDevice, LoadEffectsLeavesMissingFilesSilent) {
    TempDir dir("audio_some_effects");
    dir.write("tick.wav", wavBytes());
    dir.write("siren.wav", wavBytes());
    dir.write("click.wav", wavBytes());
    audio.loadEffects(dir.str());
    EXPECT_NE(audio.tick, nullptr);
    EXPECT_EQ(audio.tock, nullptr);
    EXPECT_NE(audio.siren, nullptr);
    EXPECT_EQ(audio.pass, nullptr);
    EXPECT_EQ(audio.fail, nullptr);
    EXPECT_NE(audio.click, nullptr);
    EXPECT_TRUE(log.lines().empty());

    audio.playPass();
    EXPECT_EQ(Mix_Playing(3), 0);
}

TEST_F(AudioDevice, EachEffectPlaysOnItsOwnChannel) {
    TempDir dir("audio_channels");
    for (const char* name : {"tick.wav", "tock.wav", "siren.wav", "pass.wav", "fail.wav", "click.wav"}) {
        dir.write(name, wavBytes());
    }
    audio.loadEffects(dir.str());

    audio.playSiren();
    EXPECT_EQ(Mix_GetChunk(2), audio.siren);
    EXPECT_EQ(Mix_Playing(2), 1);

    audio.playPass();
    EXPECT_EQ(Mix_GetChunk(3), audio.pass);
    EXPECT_EQ(Mix_Playing(3), 1);

    audio.playClick();
    EXPECT_EQ(Mix_GetChunk(4), audio.click);
    EXPECT_EQ(Mix_Playing(4), 1);

    EXPECT_EQ(Mix_Playing(0), 0);
    EXPECT_EQ(Mix_Playing(1), 0);
    EXPECT_EQ(Mix_Playing(-1), 3);
}

TEST_F(AudioDevice, FailCutsPassOnTheVerdictChannel) {
    TempDir dir("audio_verdict");
    dir.write("pass.wav", wavBytes());
    dir.write("fail.wav", wavBytes());
    audio.loadEffects(dir.str());

    audio.playPass();
    audio.playFail();
    EXPECT_EQ(Mix_GetChunk(3), audio.fail);
    EXPECT_EQ(Mix_Playing(-1), 1);
}

TEST_F(AudioDevice, TickAndTockAlternateOnChannelOne) {
    TempDir dir("audio_ticktock");
    dir.write("tick.wav", wavBytes());
    dir.write("tock.wav", wavBytes());
    audio.loadEffects(dir.str());

    audio.playTick();
    EXPECT_EQ(Mix_GetChunk(1), audio.tick);
    EXPECT_TRUE(audio.tickToggle);
    audio.playTick();
    EXPECT_EQ(Mix_GetChunk(1), audio.tock);
    EXPECT_FALSE(audio.tickToggle);
    audio.playTick();
    EXPECT_EQ(Mix_GetChunk(1), audio.tick);
    // Successive ticks cut each other rather than overlapping.
    EXPECT_EQ(Mix_Playing(-1), 1);
}

TEST_F(AudioDevice, OnlyTockPresentEveryTickPlaysTock) {
    TempDir dir("audio_only_tock");
    dir.write("tock.wav", wavBytes());
    audio.loadEffects(dir.str());
    ASSERT_EQ(audio.tick, nullptr);

    for (int i = 0; i < 3; ++i) {
        Mix_HaltChannel(1);
        audio.playTick();
        EXPECT_EQ(Mix_GetChunk(1), audio.tock) << "tick " << i;
        EXPECT_EQ(Mix_Playing(1), 1) << "tick " << i;
    }
}

TEST_F(AudioDevice, OnlyTickPresentEveryTickPlaysTick) {
    TempDir dir("audio_only_tick");
    dir.write("tick.wav", wavBytes());
    audio.loadEffects(dir.str());

    for (int i = 0; i < 3; ++i) {
        Mix_HaltChannel(1);
        audio.playTick();
        EXPECT_EQ(Mix_GetChunk(1), audio.tick) << "tick " << i;
        EXPECT_EQ(Mix_Playing(1), 1) << "tick " << i;
    }
}

TEST_F(AudioDevice, NeitherTickNorTockPlaysNothingButStillFlips) {
    TempDir dir("audio_no_ticks");
    audio.loadEffects(dir.str());

    audio.playTick();
    EXPECT_TRUE(audio.tickToggle);
    audio.playTick();
    EXPECT_FALSE(audio.tickToggle);
    EXPECT_EQ(Mix_Playing(-1), 0);
}

// The mixer itself is open here, so only the AudioSystem's own "not
// initialised" test can keep these calls silent.
TEST_F(NoAudioDevice, EffectCallsAreSilent) {
    ASSERT_FALSE(audio.openAudio());
    setEnvironment("SDL_AUDIODRIVER", "dummy");   // put back by the fixture
    ASSERT_EQ(Mix_OpenAudio(44100, AUDIO_S16LSB, 2, 2048), 0) << SDL_GetError();
    TempDir dir("audio_silent_effects");
    const std::string sound = utf8(dir.write("sound.wav", wavBytes()));
    Mix_Chunk** slots[] = {&audio.tick, &audio.tock, &audio.siren, &audio.pass, &audio.fail, &audio.click};
    for (Mix_Chunk** slot : slots) {
        *slot = Mix_LoadWAV(sound.c_str());
        ASSERT_NE(*slot, nullptr);
    }

    audio.playTick();
    audio.playSiren();
    audio.playPass();
    audio.playFail();
    audio.playClick();
    EXPECT_EQ(Mix_Playing(-1), 0);
    EXPECT_FALSE(audio.tickToggle);   // flips only while the device is open

    for (Mix_Chunk** slot : slots) {
        Mix_FreeChunk(*slot);
        *slot = nullptr;
    }
    Mix_CloseAudio();
}

TEST_F(NoAudioDevice, MusicCallsAreSilentAndSayNothing) {
    ASSERT_FALSE(audio.openAudio());
    setEnvironment("SDL_AUDIODRIVER", "dummy");   // put back by the fixture
    ASSERT_EQ(Mix_OpenAudio(44100, AUDIO_S16LSB, 2, 2048), 0) << SDL_GetError();
    TempDir dir("audio_silent_music");
    dir.write("vorn-title.wav", wavBytes());
    const std::string sting = utf8(dir.write("zembrilux-sting.wav", wavBytes()));
    log.clear();

    audio.playSting(sting);
    audio.playTitleMusic(dir.str());
    EXPECT_EQ(Mix_PlayingMusic(), 0);
    EXPECT_FALSE(audio.isMusicPlaying());
    EXPECT_TRUE(log.lines().empty());
    Mix_CloseAudio();
}

// Without a device nothing is heard, but what the game asked for is still
// seen, and no volume is set.
TEST_F(NoAudioDevice, RequestsAreSeenEvenWithoutADevice) {
    std::vector<std::string> requests;
    audio.requestLog = &requests;
    ASSERT_FALSE(audio.openAudio());
    audio.playClick();
    audio.playTitleMusic("no-such-folder");
    EXPECT_EQ(requests, (std::vector<std::string>{"click", "music title loops=-1"}));
    audio.requestLog = nullptr;
}

}  // namespace
}  // namespace vorn::test
