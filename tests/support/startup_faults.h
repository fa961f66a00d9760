#pragma once
// Start-up failures that SDL's dummy drivers never give, made to order, and a
// record of what shutdown takes down and in which order. While a
// StartupFaults is alive, the window or the renderer can be refused (with the
// error text "refused by the test"), every renderer asked for is noted with
// its flags, and, once `record` is called, each shutdown call (a texture
// destroyed, the audio device closed, the renderer and the window destroyed,
// SDL_ttf, SDL_image and SDL quit) is written down as it happens together
// with what the disk showed at that moment: whether the save file was there
// yet and whether the log had ended. The window, the renderers and the switch
// to full screen are noted as they are asked for, refused or not.
//
// The seam: natively the test program defines those SDL functions itself,
// and a definition in the program comes before the one in SDL's shared
// library, so the game's own calls land here first and are passed on to SDL
// untouched unless a fault is asked for. Nothing in the game changes. On
// Windows SDL is linked in statically and there is no such seam: `available`
// is false there and the tests that need it skip.

#include <SDL.h>

#include <filesystem>
#include <string>
#include <vector>

namespace vorn::test {

class StartupFaults {
public:
    StartupFaults();
    ~StartupFaults();
    StartupFaults(const StartupFaults&) = delete;
    StartupFaults& operator=(const StartupFaults&) = delete;

    static bool available();

    // From now on, write down every shutdown call as
    // "<call> save=<absent|written> log=<open|ended>", the texture `logo` as
    // "SDL_DestroyTexture(logo)"; a call repeated in a row is written once.
    void record(const std::filesystem::path& saveFile, const std::filesystem::path& logFile,
                SDL_Texture* logo = nullptr);
    // Called by the stand-ins: notes one call while recording.
    void note(const std::string& call);

    bool refuseWindow = false;
    bool refuseRenderer = false;
    std::vector<Uint32> rendererFlags;
    // The window and renderer as they were asked for, in order:
    // "window 'The Vorn Co.' at centred,centred 1366x768 flags=4",
    // "renderer flags=6", "fullscreen flags=4097".
    std::vector<std::string> made;
    std::vector<std::string> calls;

private:
    bool recording = false;
    std::filesystem::path saveFile;
    std::filesystem::path logFile;

public:
    SDL_Texture* logo = nullptr;
};

}  // namespace vorn::test
