#pragma once
// What every test of the AudioSystem shares: an open device on SDL's dummy
// driver (`AudioDevice`) or none at all (`NoAudioDevice`), the SDL log lines
// caught while a test runs, and small real sound files written on the spot.

#include "audio/audio_system.h"

#include "support/flac_file.h"
#include "support/temp_dir.h"
#include "support/test_platform.h"

#include <SDL.h>
#include <SDL_mixer.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <cstdint>
#include <filesystem>
#include <mutex>
#include <string>
#include <type_traits>
#include <vector>

namespace vorn::test {

static_assert(!std::is_copy_constructible_v<AudioSystem>, "one AudioSystem owns the device");
static_assert(!std::is_copy_assignable_v<AudioSystem>, "one AudioSystem owns the device");

inline const std::string kDash = "\xE2\x80\x94";

// Collects every SDL_Log line while alive. SDL may call the output function
// from its own threads, hence the lock.
class LogCapture {
public:
    LogCapture() {
        SDL_LogGetOutputFunction(&previous, &previousData);
        SDL_LogSetOutputFunction(&LogCapture::record, this);
    }
    ~LogCapture() { SDL_LogSetOutputFunction(previous, previousData); }
    LogCapture(const LogCapture&) = delete;
    LogCapture& operator=(const LogCapture&) = delete;

    std::vector<std::string> lines() {
        std::lock_guard<std::mutex> lock(mutex);
        return captured;
    }
    void clear() {
        std::lock_guard<std::mutex> lock(mutex);
        captured.clear();
    }

private:
    static void record(void* self, int /*category*/, SDL_LogPriority /*priority*/, const char* message) {
        auto* capture = static_cast<LogCapture*>(self);
        std::lock_guard<std::mutex> lock(capture->mutex);
        capture->captured.emplace_back(message);
    }

    SDL_LogOutputFunction previous = nullptr;
    void* previousData = nullptr;
    std::mutex mutex;
    std::vector<std::string> captured;
};

inline void putLe(std::string& bytes, std::uint32_t value, int size) {
    for (int i = 0; i < size; ++i) {
        bytes.push_back(static_cast<char>((value >> (8 * i)) & 0xFFu));
    }
}

// A real, loadable WAV: two seconds of a quiet tone, long enough that it is
// still playing when the test looks, without the test ever waiting.
inline std::string wavBytes(double seconds = 2.0) {
    const std::uint32_t rate = 22050;
    const auto frames = static_cast<std::uint32_t>(seconds * rate);
    std::string bytes = "RIFF";
    putLe(bytes, 36 + frames * 2, 4);
    bytes += "WAVEfmt ";
    putLe(bytes, 16, 4);
    putLe(bytes, 1, 2);
    putLe(bytes, 1, 2);
    putLe(bytes, rate, 4);
    putLe(bytes, rate * 2, 4);
    putLe(bytes, 2, 2);
    putLe(bytes, 16, 2);
    bytes += "data";
    putLe(bytes, frames * 2, 4);
    for (std::uint32_t i = 0; i < frames; ++i) {
        putLe(bytes, static_cast<std::uint16_t>((i / 25) % 2 == 0 ? 800 : -800), 2);
    }
    return bytes;
}

inline const std::string kGarbage = "this is a text file wearing an audio file's name\n";

inline std::string utf8(const std::filesystem::path& path) { return path.u8string(); }

inline bool startsWith(const std::string& text, const std::string& prefix) {
    return text.compare(0, prefix.size(), prefix) == 0;
}
inline bool endsWith(const std::string& text, const std::string& suffix) {
    return text.size() >= suffix.size() && text.compare(text.size() - suffix.size(), suffix.size(), suffix) == 0;
}

inline std::vector<std::string> sorted(std::vector<std::string> items) {
    std::sort(items.begin(), items.end());
    return items;
}

// An open device on SDL's dummy driver, which plays in real time.
class AudioDevice : public ::testing::Test {
protected:
    void SetUp() override {
        ASSERT_EQ(SDL_Init(SDL_INIT_AUDIO), 0) << SDL_GetError();
        ASSERT_TRUE(audio.openAudio());
        log.clear();
    }
    void TearDown() override {
        audio.closeAudio();
        SDL_Quit();
    }

    ScopedEnvironment driver{"SDL_AUDIODRIVER", "dummy"};
    LogCapture log;
    AudioSystem audio;
};

// No device: the driver named does not exist, so Mix_OpenAudio fails.
class NoAudioDevice : public ::testing::Test {
protected:
    void TearDown() override {
        audio.closeAudio();
        SDL_Quit();
    }

    ScopedEnvironment driver{"SDL_AUDIODRIVER", "vorn-no-such-driver"};
    LogCapture log;
    AudioSystem audio;
};

}  // namespace vorn::test
