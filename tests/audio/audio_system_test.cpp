#include "audio/audio_system.h"

#include "support/flac_file.h"
#include "support/temp_dir.h"
#include "support/test_platform.h"

#include <SDL.h>
#include <SDL_mixer.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <cstdint>
#include <cstdlib>
#include <cstring>
#include <filesystem>
#include <mutex>
#include <random>
#include <string>
#include <type_traits>
#include <vector>

namespace vorn {
namespace {

namespace fs = std::filesystem;
using test::TempDir;
using test::ScopedEnvironment;
using test::setEnvironment;

static_assert(!std::is_copy_constructible_v<AudioSystem>, "one AudioSystem owns the device");
static_assert(!std::is_copy_assignable_v<AudioSystem>, "one AudioSystem owns the device");

const std::string kDash = "\xE2\x80\x94";

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

void putLe(std::string& bytes, std::uint32_t value, int size) {
    for (int i = 0; i < size; ++i) {
        bytes.push_back(static_cast<char>((value >> (8 * i)) & 0xFFu));
    }
}

// A real, loadable WAV: two seconds of a quiet tone, long enough that it is
// still playing when the test looks, without the test ever waiting.
std::string wavBytes(double seconds = 2.0) {
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

const std::string kGarbage = "this is a text file wearing an audio file's name\n";

std::string utf8(const fs::path& path) { return path.u8string(); }

bool startsWith(const std::string& text, const std::string& prefix) {
    return text.compare(0, prefix.size(), prefix) == 0;
}
bool endsWith(const std::string& text, const std::string& suffix) {
    return text.size() >= suffix.size() && text.compare(text.size() - suffix.size(), suffix.size(), suffix) == 0;
}

std::vector<std::string> sorted(std::vector<std::string> items) {
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

// ---- opening and closing -----------------------------------------------------

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

// ---- effects ---------------------------------------------------------------

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

// ---- sting and title ---------------------------------------------------------

TEST_F(AudioDevice, StingOnlyAsWavPlaysWithoutDidntLoadLines) {
    TempDir dir("audio_sting_wav");
    const fs::path wav = dir.write("zembrilux-sting.wav", wavBytes());

    audio.playSting(utf8(dir.path() / "zembrilux-sting.mp3"));
    EXPECT_EQ(log.lines(), std::vector<std::string>{"Audio: sting playing '" + utf8(wav) + "'."});
    EXPECT_TRUE(audio.isMusicPlaying());
    EXPECT_NE(audio.currentMusic, nullptr);
}

TEST_F(AudioDevice, StingTriesItsOwnFormatThenOggMp3WavFlac) {
    TempDir dir("audio_sting_order");
    const fs::path flac = dir.write("zembrilux-sting.flac", kGarbage);
    const fs::path ogg = dir.write("zembrilux-sting.ogg", kGarbage);
    const fs::path mp3 = dir.write("zembrilux-sting.mp3", kGarbage);
    const fs::path wav = dir.write("zembrilux-sting.wav", wavBytes());

    audio.playSting(utf8(flac));
    const auto lines = log.lines();
    ASSERT_EQ(lines.size(), 4u);
    const std::string tail = ") " + kDash + " trying another format.";
    for (std::size_t i = 0; i < 3; ++i) {
        const fs::path& expected = i == 0 ? flac : i == 1 ? ogg : mp3;
        EXPECT_TRUE(startsWith(lines[i], "Audio: sting '" + utf8(expected) + "' didn't load (")) << lines[i];
        EXPECT_TRUE(endsWith(lines[i], tail)) << lines[i];
    }
    EXPECT_EQ(lines[3], "Audio: sting playing '" + utf8(wav) + "'.");
    EXPECT_TRUE(audio.isMusicPlaying());
}

TEST_F(AudioDevice, NoStingFoundLogsOneLineAndStaysQuiet) {
    TempDir dir("audio_no_sting");
    const std::string given = utf8(dir.path() / "zembrilux-sting.mp3");

    audio.playSting(given);
    EXPECT_EQ(log.lines(),
              std::vector<std::string>{"Audio: no playable sting found near '" + given + "' " + kDash +
                                       " intro is silent."});
    EXPECT_FALSE(audio.isMusicPlaying());
    EXPECT_EQ(audio.currentMusic, nullptr);
}

TEST_F(AudioDevice, TitleMusicPlaysTheFirstFormatThatLoads) {
    TempDir dir("audio_title");
    const fs::path ogg = dir.write("vorn-title.ogg", kGarbage);
    const fs::path wav = dir.write("vorn-title.wav", wavBytes());

    audio.playTitleMusic(dir.str());
    const auto lines = log.lines();
    ASSERT_EQ(lines.size(), 2u);
    EXPECT_TRUE(startsWith(lines[0], "Audio: title '" + utf8(ogg) + "' didn't load (")) << lines[0];
    EXPECT_TRUE(endsWith(lines[0], ") " + kDash + " trying another format.")) << lines[0];
    EXPECT_EQ(lines[1], "Audio: title music playing '" + utf8(wav) + "'.");
    EXPECT_TRUE(audio.isMusicPlaying());
}

TEST_F(AudioDevice, NoTitleMusicNamesThreeFormatsInItsLine) {
    TempDir dir("audio_no_title");
    audio.playTitleMusic(dir.str());
    EXPECT_EQ(log.lines(), std::vector<std::string>{"Audio: no vorn-title.{ogg,mp3,wav} found in '" + dir.str() +
                                                    "' " + kDash + " title is silent."});
    EXPECT_FALSE(audio.isMusicPlaying());
}

TEST_F(AudioDevice, TitleMusicStopsThePlaylist) {
    TempDir dir("audio_title_stops_playlist");
    dir.write("track.wav", wavBytes());
    dir.write("vorn-title.wav", wavBytes());
    audio.buildPlaylist(dir.str(), 7);
    ASSERT_TRUE(audio.playlistActive);

    audio.playTitleMusic(dir.str());
    EXPECT_FALSE(audio.playlistActive);
    EXPECT_TRUE(audio.isMusicPlaying());
}

TEST_F(AudioDevice, StopMusicHaltsFreesAndEndsThePlaylist) {
    TempDir dir("audio_stop");
    dir.write("track.wav", wavBytes());
    audio.buildPlaylist(dir.str(), 7);
    ASSERT_TRUE(audio.isMusicPlaying());

    audio.stopMusic();
    EXPECT_FALSE(audio.isMusicPlaying());
    EXPECT_EQ(audio.currentMusic, nullptr);
    EXPECT_FALSE(audio.playlistActive);
}

// ---- playlist ----------------------------------------------------------------

TEST_F(NoAudioDevice, BuildPlaylistLogsNothingAndScansNothing) {
    ASSERT_FALSE(audio.openAudio());
    TempDir dir("audio_playlist_no_device");
    dir.write("a.ogg", kGarbage);
    log.clear();

    audio.buildPlaylist(dir.str(), 1);
    audio.buildPlaylist(utf8(dir.path() / "no-such-folder"), 1);
    EXPECT_TRUE(audio.playlist.empty());
    EXPECT_FALSE(audio.playlistActive);
    EXPECT_TRUE(log.lines().empty());
}

TEST_F(AudioDevice, PlaylistKeepsPlayableFilesButNotTheMp3Title) {
    TempDir dir("audio_playlist_filter");
    const fs::path track = dir.write("Track.MP3", kGarbage);
    const fs::path ogg = dir.write("b.ogg", kGarbage);
    dir.write("notes.txt", kGarbage);
    dir.write("vorn-title.mp3", kGarbage);

    audio.buildPlaylist(dir.str(), 1);
    EXPECT_EQ(sorted(audio.playlist), sorted({utf8(track), utf8(ogg)}));
}

TEST_F(AudioDevice, AnOggTitleIsAlsoAGameplayTrack) {
    TempDir dir("audio_playlist_ogg_title");
    const fs::path track = dir.write("Track.MP3", kGarbage);
    const fs::path ogg = dir.write("b.ogg", kGarbage);
    dir.write("notes.txt", kGarbage);
    dir.write("vorn-title.mp3", kGarbage);
    const fs::path title = dir.write("vorn-title.ogg", kGarbage);

    audio.buildPlaylist(dir.str(), 1);
    EXPECT_EQ(sorted(audio.playlist), sorted({utf8(track), utf8(ogg), utf8(title)}));
}

TEST_F(AudioDevice, PlaylistAcceptsExtensionsInAnyCase) {
    TempDir dir("audio_playlist_case");
    std::vector<std::string> expected;
    for (const char* name : {"A.OGG", "b.Wav", "c.FLAC", "d.mP3"}) {
        expected.push_back(utf8(dir.write(name, kGarbage)));
    }
    dir.write("e.aac", kGarbage);
    dir.write("f", kGarbage);
    dir.write("g.ogg.txt", kGarbage);
    dir.write("VORN-TITLE.MP3", kGarbage);
    dir.write("folder.ogg/inner.ogg", kGarbage);   // neither a folder nor what is inside it

    audio.buildPlaylist(dir.str(), 1);
    EXPECT_EQ(sorted(audio.playlist), sorted(expected));
}

// The order a run must hear: file names in byte order, then shuffled by the
// run's seed with its own MT19937 and Lemire's multiply-and-reject draw.
// Written out independently of the game's draw rules.
std::vector<std::string> expectedOrder(std::vector<std::string> paths, std::uint32_t seed) {
    std::sort(paths.begin(), paths.end());
    std::mt19937 engine(seed);
    for (std::size_t i = 1; i < paths.size(); ++i) {
        const auto range = static_cast<std::uint32_t>(i + 1);
        std::uint64_t product = static_cast<std::uint64_t>(static_cast<std::uint32_t>(engine())) * range;
        const std::uint32_t threshold = static_cast<std::uint32_t>(0u - range) % range;
        while (static_cast<std::uint32_t>(product) < threshold) {
            product = static_cast<std::uint64_t>(static_cast<std::uint32_t>(engine())) * range;
        }
        std::swap(paths[i], paths[static_cast<std::size_t>(product >> 32)]);
    }
    return paths;
}

std::vector<std::string> writeTracks(const TempDir& dir) {
    std::vector<std::string> paths;
    for (const char* name : {"shift-b.ogg", "Shift-A.wav", "alpha.mp3", "zulu.flac", "Mike.ogg", "echo.wav",
                             "delta.mp3", "Bravo.ogg", "kilo.wav"}) {
        paths.push_back(utf8(dir.write(name, kGarbage)));
    }
    return paths;
}

TEST_F(AudioDevice, PlaylistIsSortedThenShuffledByTheSeed) {
    TempDir dir("audio_playlist_order");
    const std::vector<std::string> paths = writeTracks(dir);

    audio.buildPlaylist(dir.str(), 20240611u);
    EXPECT_EQ(audio.playlist, expectedOrder(paths, 20240611u));
    audio.buildPlaylist(dir.str(), 3u);
    EXPECT_EQ(audio.playlist, expectedOrder(paths, 3u));
}

TEST_F(AudioDevice, SameSeedSameFolderSameOrder) {
    TempDir dir("audio_playlist_same_seed");
    writeTracks(dir);

    audio.buildPlaylist(dir.str(), 99u);
    const std::vector<std::string> first = audio.playlist;
    audio.buildPlaylist(dir.str(), 12345u);
    const std::vector<std::string> other = audio.playlist;
    audio.buildPlaylist(dir.str(), 99u);
    EXPECT_EQ(audio.playlist, first);
    EXPECT_NE(other, first);
}

TEST_F(AudioDevice, PlaylistStartsItsFirstTrack) {
    TempDir dir("audio_playlist_start");
    const fs::path only = dir.write("only.wav", wavBytes());

    audio.buildPlaylist(dir.str(), 5u);
    EXPECT_EQ(audio.playlist, std::vector<std::string>{utf8(only)});
    EXPECT_TRUE(audio.playlistActive);
    EXPECT_EQ(audio.trackIndex, 0u);
    EXPECT_TRUE(audio.isMusicPlaying());
    EXPECT_TRUE(log.lines().empty());
}

TEST_F(AudioDevice, UpdatePlaylistLeavesAPlayingTrackAlone) {
    TempDir dir("audio_playlist_update_playing");
    dir.write("a.wav", wavBytes());
    dir.write("b.wav", wavBytes());
    audio.buildPlaylist(dir.str(), 5u);
    Mix_Music* playing = audio.currentMusic;
    ASSERT_TRUE(audio.isMusicPlaying());

    audio.updatePlaylist();
    EXPECT_EQ(audio.trackIndex, 0u);
    EXPECT_EQ(audio.currentMusic, playing);
}

TEST_F(AudioDevice, EmptyOrMissingMusicFolderIsSilentByDesign) {
    TempDir dir("audio_playlist_empty");
    dir.write("readme.txt", kGarbage);
    const std::string line = "Audio: no in-game tracks found " + kDash + " gameplay is silent.";

    audio.buildPlaylist(dir.str(), 1);
    audio.buildPlaylist(utf8(dir.path() / "missing"), 1);
    audio.buildPlaylist(utf8(dir.path() / "readme.txt"), 1);
    EXPECT_EQ(log.lines(), (std::vector<std::string>{line, line, line}));
    EXPECT_FALSE(audio.playlistActive);
    EXPECT_FALSE(audio.isMusicPlaying());
}

TEST_F(AudioDevice, BrokenTrackIsReportedAndSkippedOnTheNextUpdate) {
    TempDir dir("audio_playlist_broken");
    dir.write("a.ogg", kGarbage);
    dir.write("b.ogg", kGarbage);

    audio.buildPlaylist(dir.str(), 1);
    ASSERT_EQ(audio.playlist.size(), 2u);
    EXPECT_TRUE(audio.playlistActive);
    EXPECT_EQ(audio.trackIndex, 0u);
    auto lines = log.lines();
    ASSERT_EQ(lines.size(), 1u);
    EXPECT_TRUE(startsWith(lines[0], "Audio: failed to load track '" + audio.playlist[0] + "' (")) << lines[0];
    EXPECT_TRUE(endsWith(lines[0], ").")) << lines[0];

    audio.updatePlaylist();
    EXPECT_EQ(audio.trackIndex, 1u);
    lines = log.lines();
    ASSERT_EQ(lines.size(), 2u);
    EXPECT_TRUE(startsWith(lines[1], "Audio: failed to load track '" + audio.playlist[1] + "' (")) << lines[1];

    audio.updatePlaylist();   // wraps round, same order for ever
    EXPECT_EQ(audio.trackIndex, 0u);
    EXPECT_TRUE(audio.playlistActive);
}

TEST_F(AudioDevice, PlayTrackTakesTheIndexModuloThePlaylist) {
    TempDir dir("audio_play_track");
    dir.write("a.wav", wavBytes());
    dir.write("b.wav", wavBytes());
    audio.buildPlaylist(dir.str(), 1);

    audio.playTrack(5);
    EXPECT_EQ(audio.trackIndex, 1u);
    EXPECT_TRUE(audio.isMusicPlaying());
    EXPECT_TRUE(log.lines().empty());
}

TEST_F(AudioDevice, UpdatePlaylistDoesNothingOnceTheTitleTookOver) {
    TempDir dir("audio_update_after_title");
    dir.write("a.ogg", kGarbage);
    dir.write("b.ogg", kGarbage);
    audio.buildPlaylist(dir.str(), 1);
    audio.stopMusic();

    audio.updatePlaylist();
    EXPECT_EQ(audio.trackIndex, 0u);
    EXPECT_EQ(log.lines().size(), 1u);   // only the first track's load failure
}

}  // namespace
}  // namespace vorn
