#include "audio/audio_system.h"

#include "data/file_paths.h"
#include "base/draw_rules.h"

#include <SDL.h>

#include <algorithm>
#include <filesystem>
#include <system_error>

namespace vorn {

namespace fs = std::filesystem;

namespace {

// Fixed channels: a new sound on a channel cuts the previous one there, which
// is what makes successive ticks, and pass against fail, cut each other
// instead of piling up. Channel 0 and 5..15 stay free.
constexpr int kTickChannel = 1;
constexpr int kSirenChannel = 2;
constexpr int kVerdictChannel = 3;
constexpr int kClickChannel = 4;
constexpr int kMixChannels = 16;

// How often Mix_PlayMusic plays each stream: the sting and every gameplay
// track once, the title tune for ever.
constexpr int kStingLoops = 1;
constexpr int kTitleLoops = -1;
constexpr int kTrackLoops = 1;
constexpr int kVolume = MIX_MAX_VOLUME;

// A gameplay track is any mp3/ogg/wav/flac file except the MP3 title tune.
// Only that one form is kept out on purpose: a title shipped as .ogg is also
// heard during play.
bool isGameplayTrack(const std::string& fileName) {
    const std::string lower = lowerAscii(fileName);
    if (lower == "vorn-title.mp3") {
        return false;
    }
    const std::size_t dot = lower.rfind('.');
    if (dot == std::string::npos) {
        return false;
    }
    const std::string ext = lower.substr(dot + 1);
    return ext == "mp3" || ext == "ogg" || ext == "wav" || ext == "flac";
}

void play(bool open, Mix_Chunk* chunk, int channel) {
    if (!open || chunk == nullptr) {
        return;
    }
    Mix_PlayChannel(channel, chunk, 0);
}

void freeChunk(Mix_Chunk*& chunk) {
    if (chunk != nullptr) {
        Mix_FreeChunk(chunk);
        chunk = nullptr;
    }
}

}  // namespace

AudioSystem::~AudioSystem() { closeAudio(); }

void AudioSystem::note(const char* request) const {
    if (requestLog != nullptr) {
        requestLog->emplace_back(request);
    }
}

void AudioSystem::noteMusic(const char* stream, int loops) const {
    if (requestLog != nullptr) {
        requestLog->push_back(std::string("music ") + stream + " loops=" + std::to_string(loops));
    }
}

bool AudioSystem::openAudio() {
    if (initialised) {
        return true;
    }
    // Mix_Init may report more decoders than asked for, so only the two we
    // need are checked. A missing one is worth one line now; the loaders
    // report the files that then fail.
    const int wanted = MIX_INIT_MP3 | MIX_INIT_OGG;
    const int got = Mix_Init(wanted);
    const bool hasMp3 = (got & MIX_INIT_MP3) == MIX_INIT_MP3;
    const bool hasOgg = (got & MIX_INIT_OGG) == MIX_INIT_OGG;
    if (!hasMp3) {
        SDL_Log("Audio: MP3 decoder NOT available (Mix_Init=%d, %s). .mp3 files will be silent.", got,
                SDL_GetError());
    }
    if (!hasOgg) {
        SDL_Log("Audio: OGG decoder not available (%s).", SDL_GetError());
    }

    if (Mix_OpenAudio(44100, AUDIO_S16LSB, 2, 2048) != 0) {
        // No sound card is not a reason to stop anyone working a shift.
        SDL_Log("Audio: Mix_OpenAudio failed (%s) \xE2\x80\x94 running silent.", SDL_GetError());
        return false;
    }
    Mix_AllocateChannels(kMixChannels);
    // Full volume, set once: nothing in the game ever changes it.
    Mix_VolumeMusic(kVolume);
    Mix_Volume(-1, kVolume);
    if (requestLog != nullptr) {
        requestLog->push_back("volume music=" + std::to_string(kVolume));
        requestLog->push_back("volume channels=" + std::to_string(kVolume));
    }
    initialised = true;
    SDL_Log("Audio: initialised OK (MP3=%s OGG=%s).", hasMp3 ? "yes" : "no", hasOgg ? "yes" : "no");
    return true;
}

void AudioSystem::loadEffects(const std::string& audioFolder) {
    if (!initialised) {
        return;
    }
    const fs::path folder = fs::u8path(audioFolder);
    // Nothing is logged here: the start-up diagnostics count the files, and
    // a missing effect is simply a silent one.
    const auto load = [&folder](const char* name) -> Mix_Chunk* {
        const fs::path file = folder / name;
        std::error_code ec;
        if (!fs::exists(file, ec)) {
            return nullptr;
        }
        return Mix_LoadWAV(pathString(file).c_str());
    };
    tick = load("tick.wav");
    tock = load("tock.wav");
    siren = load("siren.wav");
    pass = load("pass.wav");
    fail = load("fail.wav");
    click = load("click.wav");
}

void AudioSystem::closeAudio() {
    if (!initialised) {
        return;
    }
    releaseMusic();
    freeChunk(tick);
    freeChunk(tock);
    freeChunk(siren);
    freeChunk(pass);
    freeChunk(fail);
    freeChunk(click);
    Mix_CloseAudio();
    Mix_Quit();
    initialised = false;
}

void AudioSystem::playTick() {
    note("tick");
    if (!initialised) {
        return;
    }
    // The clock alternates tick and tock; with only one of the two on disk
    // it keeps ticking with that one rather than skipping every other second.
    Mix_Chunk* chosen = tickToggle ? tock : tick;
    if (chosen == nullptr) {
        chosen = tick != nullptr ? tick : tock;
    }
    play(initialised, chosen, kTickChannel);
    tickToggle = !tickToggle;
}

void AudioSystem::playSiren() {
    note("siren");
    play(initialised, siren, kSirenChannel);
}

void AudioSystem::playPass() {
    note("pass");
    play(initialised, pass, kVerdictChannel);
}

void AudioSystem::playFail() {
    note("fail");
    play(initialised, fail, kVerdictChannel);
}

void AudioSystem::playClick() {
    note("click");
    play(initialised, click, kClickChannel);
}

void AudioSystem::releaseMusic() {
    Mix_HaltMusic();
    if (currentMusic != nullptr) {
        Mix_FreeMusic(currentMusic);
        currentMusic = nullptr;
    }
    playlistActive = false;
}

bool AudioSystem::playFirstOf(const std::vector<std::string>& candidates, const char* name,
                              const char* playingName, int loops) {
    for (const std::string& candidate : candidates) {
        // Absent formats are the normal case (one format ships), so they are
        // skipped without a word; only a file that is there but will not
        // load or play is worth a line.
        if (!fs::exists(fs::u8path(candidate))) {
            continue;
        }
        currentMusic = Mix_LoadMUS(candidate.c_str());
        if (currentMusic == nullptr) {
            SDL_Log("Audio: %s '%s' didn't load (%s) \xE2\x80\x94 trying another format.", name,
                    candidate.c_str(), SDL_GetError());
            continue;
        }
        if (Mix_PlayMusic(currentMusic, loops) != 0) {
            SDL_Log("Audio: Mix_PlayMusic(%s) failed (%s).", name, SDL_GetError());
            Mix_FreeMusic(currentMusic);
            currentMusic = nullptr;
            continue;
        }
        SDL_Log("Audio: %s playing '%s'.", playingName, candidate.c_str());
        return true;
    }
    return false;
}

void AudioSystem::playSting(const std::string& path) {
    noteMusic("sting", kStingLoops);
    if (!initialised) {
        return;
    }
    releaseMusic();
    // The file's own format first, then its sister formats beside it; a
    // format met twice (the own one again) is not tried twice.
    const fs::path given = fs::u8path(path);
    std::vector<std::string> candidates;
    for (const char* ext : {"", ".ogg", ".mp3", ".wav", ".flac"}) {
        fs::path candidate = given;
        if (ext[0] != '\0') {
            candidate.replace_extension(ext);
        }
        const std::string text = pathString(candidate);
        if (std::find(candidates.begin(), candidates.end(), text) == candidates.end()) {
            candidates.push_back(text);
        }
    }
    if (!playFirstOf(candidates, "sting", "sting", kStingLoops)) {
        SDL_Log("Audio: no playable sting found near '%s' \xE2\x80\x94 intro is silent.", path.c_str());
    }
}

void AudioSystem::playTitleMusic(const std::string& musicFolder) {
    noteMusic("title", kTitleLoops);
    if (!initialised) {
        return;
    }
    releaseMusic();
    const fs::path folder = fs::u8path(musicFolder);
    std::vector<std::string> candidates;
    for (const char* ext : {".ogg", ".mp3", ".wav", ".flac"}) {
        candidates.push_back(pathString(folder / (std::string("vorn-title") + ext)));
    }
    if (!playFirstOf(candidates, "title", "title music", kTitleLoops)) {
        // The line names three formats although .flac is tried as well; it
        // stays word for word so searches through old logs keep matching.
        SDL_Log("Audio: no vorn-title.{ogg,mp3,wav} found in '%s' \xE2\x80\x94 title is silent.",
                musicFolder.c_str());
    }
}

void AudioSystem::buildPlaylist(const std::string& musicFolder, std::uint32_t seed) {
    if (!initialised) {
        return;
    }
    releaseMusic();
    playlist.clear();
    trackIndex = 0;

    const fs::path folder = fs::u8path(musicFolder);
    std::error_code ec;
    if (fs::is_directory(folder, ec)) {
        // A folder that cannot be listed just ends the list early: the run
        // goes on with whatever tracks were found, or in silence.
        fs::directory_iterator it(folder, ec);
        for (; !ec && it != fs::directory_iterator(); it.increment(ec)) {
            std::error_code statusError;
            if (!it->is_regular_file(statusError) ||
                !isGameplayTrack(pathString(it->path().filename()))) {
                continue;
            }
            playlist.push_back(pathString(it->path()));
        }
    }
    if (playlist.empty()) {
        SDL_Log("Audio: no in-game tracks found \xE2\x80\x94 gameplay is silent.");
        return;
    }

    // Directory order differs between file systems; sorting first makes the
    // seed alone decide the order, so a replayed run hears the same tracks.
    std::sort(playlist.begin(), playlist.end());
    Rng engine(seed);
    shuffle(engine, playlist);
    playlistActive = true;
    playTrack(0);
}

void AudioSystem::playTrack(std::size_t index) {
    noteMusic("track", kTrackLoops);
    if (!initialised || playlist.empty()) {
        return;
    }
    if (currentMusic != nullptr) {
        Mix_FreeMusic(currentMusic);
        currentMusic = nullptr;
    }
    trackIndex = index % playlist.size();
    const std::string& path = playlist[trackIndex];
    currentMusic = Mix_LoadMUS(path.c_str());
    if (currentMusic == nullptr) {
        // playlistActive stays set, so the next frame's updatePlaylist moves
        // on: a broken file costs one frame of silence, not the whole run.
        SDL_Log("Audio: failed to load track '%s' (%s).", path.c_str(), SDL_GetError());
        return;
    }
    Mix_PlayMusic(currentMusic, kTrackLoops);
}

void AudioSystem::updatePlaylist() {
    if (initialised && playlistActive && !playlist.empty() && Mix_PlayingMusic() == 0) {
        playTrack(trackIndex + 1);
    }
}

bool AudioSystem::isMusicPlaying() const { return initialised && Mix_PlayingMusic() != 0; }

void AudioSystem::stopMusic() {
    note("music stop");
    if (!initialised) {
        playlistActive = false;
        return;
    }
    releaseMusic();
}

}  // namespace vorn
