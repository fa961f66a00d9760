#include "support/startup_faults.h"

#include "support/temp_dir.h"

#include <SDL_image.h>
#include <SDL_mixer.h>
#include <SDL_ttf.h>

#if defined(__linux__)
#include <dlfcn.h>
#endif

namespace vorn::test {

namespace {

StartupFaults* active = nullptr;

}  // namespace

StartupFaults::StartupFaults() { active = this; }

StartupFaults::~StartupFaults() { active = nullptr; }

bool StartupFaults::available() {
#if defined(__linux__)
    return true;
#else
    return false;
#endif
}

void StartupFaults::record(const std::filesystem::path& save, const std::filesystem::path& log,
                           SDL_Texture* texture) {
    recording = true;
    saveFile = save;
    logFile = log;
    logo = texture;
}

void StartupFaults::note(const std::string& call) {
    if (!recording) {
        return;
    }
    std::error_code ec;
    const bool saved = std::filesystem::exists(saveFile, ec);
    const bool ended = readTextFile(logFile).find("INFO  session end") != std::string::npos;
    const std::string entry =
        call + " save=" + (saved ? "written" : "absent") + " log=" + (ended ? "ended" : "open");
    if (calls.empty() || calls.back() != entry) {
        calls.push_back(entry);
    }
}

}  // namespace vorn::test

#if defined(__linux__)

namespace {

// SDL's own definition of a function, found after ours in the search order.
template <typename Function>
Function sdlsOwn(const char* name) {
    return reinterpret_cast<Function>(dlsym(RTLD_NEXT, name));
}

void note(const char* call) {
    if (vorn::test::active != nullptr) {
        vorn::test::active->note(call);
    }
}

}  // namespace

extern "C" {

SDL_Window* SDL_CreateWindow(const char* title, int x, int y, int w, int h, Uint32 flags) {
    static const auto real = sdlsOwn<SDL_Window* (*)(const char*, int, int, int, int, Uint32)>("SDL_CreateWindow");
    if (vorn::test::active != nullptr) {
        const auto where = [](int at) {
            return at == static_cast<int>(SDL_WINDOWPOS_CENTERED) ? std::string("centred") : std::to_string(at);
        };
        vorn::test::active->made.push_back("window '" + std::string(title) + "' at " + where(x) + "," + where(y) +
                                           " " + std::to_string(w) + "x" + std::to_string(h) +
                                           " flags=" + std::to_string(flags));
        if (vorn::test::active->refuseWindow) {
            SDL_SetError("refused by the test");
            return nullptr;
        }
    }
    return real(title, x, y, w, h, flags);
}

int SDL_SetWindowFullscreen(SDL_Window* window, Uint32 flags) {
    static const auto real = sdlsOwn<int (*)(SDL_Window*, Uint32)>("SDL_SetWindowFullscreen");
    if (vorn::test::active != nullptr) {
        vorn::test::active->made.push_back("fullscreen flags=" + std::to_string(flags));
    }
    return real(window, flags);
}

SDL_Renderer* SDL_CreateRenderer(SDL_Window* window, int index, Uint32 flags) {
    static const auto real = sdlsOwn<SDL_Renderer* (*)(SDL_Window*, int, Uint32)>("SDL_CreateRenderer");
    if (vorn::test::active != nullptr) {
        vorn::test::active->rendererFlags.push_back(flags);
        vorn::test::active->made.push_back("renderer flags=" + std::to_string(flags));
        if (vorn::test::active->refuseRenderer) {
            SDL_SetError("refused by the test");
            return nullptr;
        }
    }
    return real(window, index, flags);
}

void SDL_DestroyTexture(SDL_Texture* texture) {
    static const auto real = sdlsOwn<void (*)(SDL_Texture*)>("SDL_DestroyTexture");
    if (vorn::test::active != nullptr) {
        note(texture != nullptr && texture == vorn::test::active->logo ? "SDL_DestroyTexture(logo)"
                                                                       : "SDL_DestroyTexture");
    }
    real(texture);
}

void SDL_DestroyRenderer(SDL_Renderer* renderer) {
    static const auto real = sdlsOwn<void (*)(SDL_Renderer*)>("SDL_DestroyRenderer");
    note("SDL_DestroyRenderer");
    real(renderer);
}

void SDL_DestroyWindow(SDL_Window* window) {
    static const auto real = sdlsOwn<void (*)(SDL_Window*)>("SDL_DestroyWindow");
    note("SDL_DestroyWindow");
    real(window);
}

void Mix_CloseAudio(void) {
    static const auto real = sdlsOwn<void (*)(void)>("Mix_CloseAudio");
    note("Mix_CloseAudio");
    real();
}

void TTF_Quit(void) {
    static const auto real = sdlsOwn<void (*)(void)>("TTF_Quit");
    note("TTF_Quit");
    real();
}

void IMG_Quit(void) {
    static const auto real = sdlsOwn<void (*)(void)>("IMG_Quit");
    note("IMG_Quit");
    real();
}

void SDL_Quit(void) {
    static const auto real = sdlsOwn<void (*)(void)>("SDL_Quit");
    note("SDL_Quit");
    real();
}

}  // extern "C"

#endif
