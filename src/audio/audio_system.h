#pragma once
// The one way the game makes sound: six short effects on fixed mixer channels
// (the clock's tick and tock, the last-seconds siren, pass, fail and the UI
// click) and a single music stream that is, depending on the screen, the
// studio sting, the looping title tune or the shuffled gameplay playlist. It
// is a thin layer over SDL_mixer whose one rule is that sound never stops the
// game: with no device every call is a silent no-op, a missing file just
// leaves a gap, and each problem is reported once through SDL_Log.

#include <SDL_mixer.h>

#include <cstddef>
#include <cstdint>
#include <string>
#include <vector>

namespace vorn {

class AudioSystem {
public:
    AudioSystem() = default;
    ~AudioSystem();
    AudioSystem(const AudioSystem&) = delete;
    AudioSystem& operator=(const AudioSystem&) = delete;

    // Opens the device (44.1 kHz stereo); true when sound is available.
    bool openAudio();
    // Loads the six effects from the audio folder; absent files stay null.
    void loadEffects(const std::string& audioFolder);
    // Releases music, effects and the device. Safe to call again.
    void closeAudio();

    void playTick();   // alternates tick and tock on every call
    void playSiren();
    void playPass();
    void playFail();
    void playClick();

    // Plays the sting once, trying the given file's own format first, then
    // .ogg, .mp3, .wav and .flac beside it.
    void playSting(const std::string& path);
    // Loops "vorn-title" (.ogg, .mp3, .wav or .flac) from the music folder.
    void playTitleMusic(const std::string& musicFolder);
    // Collects the gameplay tracks of the music folder, shuffles them with
    // the run's seed and starts the first.
    void buildPlaylist(const std::string& musicFolder, std::uint32_t seed);
    // Loads and plays playlist entry index (modulo the playlist size).
    void playTrack(std::size_t index);
    // Once per frame during play: starts the next track when one has ended.
    void updatePlaylist();
    bool isMusicPlaying() const;
    void stopMusic();

    bool initialised = false;
    Mix_Music* currentMusic = nullptr;
    bool playlistActive = false;
    std::vector<std::string> playlist;   // full paths, in play order
    std::size_t trackIndex = 0;
    Mix_Chunk* tick = nullptr;
    Mix_Chunk* tock = nullptr;
    Mix_Chunk* siren = nullptr;
    Mix_Chunk* pass = nullptr;
    Mix_Chunk* fail = nullptr;
    Mix_Chunk* click = nullptr;
    bool tickToggle = false;   // set: the next clock tick is a tock

    // When set, every request made of the audio system is appended here in
    // order, whether or not a device is open: "tick", "siren", "pass",
    // "fail", "click" for the effects; "music sting loops=1" and the like
    // for music, with the loop count handed to the mixer, and "music stop";
    // "volume music=128"
    // and "volume channels=128" when the device opens. Tests listen here;
    // the game leaves it null and records nothing.
    std::vector<std::string>* requestLog = nullptr;

private:
    void note(const char* request) const;
    void noteMusic(const char* stream, int loops) const;

    // Halts and frees whatever stream is loaded; every new music start
    // begins here so the sting, the title and the playlist never overlap.
    void releaseMusic();
    // Tries the candidates in order, skipping absent files silently; true
    // once one plays. `name` and `playingName` are how the log calls the
    // stream ("sting"/"sting", "title"/"title music").
    bool playFirstOf(const std::vector<std::string>& candidates, const char* name,
                     const char* playingName, int loops);
};

}  // namespace vorn
