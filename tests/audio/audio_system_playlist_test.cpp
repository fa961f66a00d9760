// The gameplay playlist: which files of the music folder it takes, the
// order a run hears them in (sorted, then shuffled by the run's seed), and
// how it moves on from a track that ends or will not load.

#include "audio_system_fixtures.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cstdint>
#include <random>

namespace vorn::test {
namespace {

namespace fs = std::filesystem;

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
}  // namespace vorn::test
