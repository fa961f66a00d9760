// Keeps the tests independent of one another when the test program runs them
// all in one process, in any order. Before each test it notes the process's
// shared state; after it, it checks that the test left none of it changed
// (SDL, SDL_ttf and the mixer shut down again, the working directory and the
// environment as they were) and reports any test that did, by name, which
// fails the run. SDL's log output is put back to SDL's own after every test:
// the game's log routes it into its file and, by design, silences it again
// on closing, which every test that starts the game goes through.

#include <SDL.h>
#include <SDL_mixer.h>
#include <SDL_ttf.h>
#include <gtest/gtest.h>

#include <cstdlib>
#include <filesystem>
#include <string>
#include <system_error>
#include <vector>

namespace vorn::test {
namespace {

// The variables a test may change to steer SDL or the game.
const char* const kWatchedVariables[] = {"SDL_VIDEODRIVER", "SDL_AUDIODRIVER", "SDL_RENDER_DRIVER"};

struct SharedState {
    Uint32 sdl = 0;
    int ttf = 0;
    bool mixer = false;
    std::string cwd;
    std::vector<std::string> variables;

    static SharedState now() {
        SharedState s;
        s.sdl = SDL_WasInit(0);
        s.ttf = TTF_WasInit();
        int frequency = 0;
        Uint16 format = 0;
        int channels = 0;
        s.mixer = Mix_QuerySpec(&frequency, &format, &channels) != 0;
        std::error_code ec;
        s.cwd = std::filesystem::current_path(ec).u8string();
        for (const char* name : kWatchedVariables) {
            const char* value = std::getenv(name);
            s.variables.push_back(value != nullptr ? std::string("=") + value : "(unset)");
        }
        return s;
    }

    // What differs from `before`, in words; empty when nothing does.
    std::string changesSince(const SharedState& before) const {
        std::string out;
        const auto say = [&out](const std::string& what) { out += (out.empty() ? "" : "; ") + what; };
        if (sdl != before.sdl) say("SDL left initialised (subsystems " + std::to_string(sdl) + ")");
        if (ttf != before.ttf) say("SDL_ttf left initialised " + std::to_string(ttf) + " times");
        if (mixer != before.mixer) say("the audio device left open");
        if (cwd != before.cwd) say("working directory left at " + cwd);
        for (std::size_t i = 0; i < variables.size(); ++i) {
            if (variables[i] != before.variables[i]) {
                say(std::string(kWatchedVariables[i]) + " changed to " + variables[i]);
            }
        }
        return out;
    }
};

class Hygiene : public ::testing::EmptyTestEventListener {
public:
    Hygiene() { SDL_LogGetOutputFunction(&sdlOutput, &sdlUserdata); }

    void OnTestStart(const ::testing::TestInfo&) override { before = SharedState::now(); }

    void OnTestEnd(const ::testing::TestInfo& info) override {
        SDL_LogSetOutputFunction(sdlOutput, sdlUserdata);
        SDL_LogResetPriorities();
        const std::string changes = SharedState::now().changesSince(before);
        if (!changes.empty()) {
            offenders.push_back(std::string(info.test_suite_name()) + "." + info.name() + ": " + changes);
        }
    }

    std::vector<std::string> offenders;

private:
    SDL_LogOutputFunction sdlOutput = nullptr;
    void* sdlUserdata = nullptr;
    SharedState before;
};

class HygieneEnvironment : public ::testing::Environment {
public:
    void SetUp() override {
        hygiene = new Hygiene;   // the listener list owns it from here
        ::testing::UnitTest::GetInstance()->listeners().Append(hygiene);
    }
    void TearDown() override {
        for (const std::string& offender : hygiene->offenders) {
            ADD_FAILURE() << "a test changed what later tests share: " << offender;
        }
    }

private:
    Hygiene* hygiene = nullptr;
};

const auto* const kRegistered = ::testing::AddGlobalTestEnvironment(new HygieneEnvironment);

}  // namespace
}  // namespace vorn::test
