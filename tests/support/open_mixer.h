#pragma once
// A test with the mixer open as the game opens it (44.1 kHz, 16-bit, stereo)
// on SDL's dummy audio driver, so decoded sounds and music come out exactly
// as the game's chunks do, and nothing is heard.

#include "support/test_platform.h"

#include <SDL.h>
#include <SDL_mixer.h>
#include <gtest/gtest.h>

namespace vorn::test {

class OpenMixerTest : public ::testing::Test {
protected:
    void SetUp() override {
        ASSERT_EQ(SDL_Init(SDL_INIT_AUDIO), 0) << SDL_GetError();
        ASSERT_EQ(Mix_OpenAudio(44100, AUDIO_S16LSB, 2, 2048), 0) << SDL_GetError();
    }
    void TearDown() override {
        Mix_CloseAudio();
        SDL_Quit();
    }

    ScopedEnvironment driver{"SDL_AUDIODRIVER", "dummy"};
};

}  // namespace vorn::test
