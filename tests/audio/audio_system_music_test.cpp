// The sting and the title tune: the formats each is looked for in, the one
// that loads and plays, the lines logged when none does, and how the title
// tune and stopping the music end the gameplay playlist.

#include "audio_system_fixtures.h"

#include <gtest/gtest.h>

namespace vorn::test {
namespace {

namespace fs = std::filesystem;

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

}  // namespace
}  // namespace vorn::test
