#pragma once
// Starts the real game executable (or one of our tools) as a child process
// with its standard error (and output) captured, so tests can wait for a
// line, stop it and read its exit code, without sleeping. The one place where
// starting a process differs between POSIX and Windows.

#include <filesystem>
#include <memory>
#include <string>
#include <utility>
#include <vector>

namespace vorn::test {

class GameProcess {
public:
    GameProcess(const std::filesystem::path& executable, const std::filesystem::path& workingDir,
                std::vector<std::pair<std::string, std::string>> environment = {},
                std::vector<std::string> arguments = {});
    ~GameProcess();
    GameProcess(const GameProcess&) = delete;
    GameProcess& operator=(const GameProcess&) = delete;

    // Whether the program was started at all.
    bool started() const;
    // Reads the child's output until it contains `text`; false at end of output.
    bool waitForOutput(const std::string& text);
    // Asks the program to end, as the system asks a console program: SIGTERM
    // natively. Windows has no such request for a program without a console
    // window of its own, so there it returns false and does nothing.
    bool requestStop();
    // Ends the program at once, as a crash or a task manager would.
    void kill();
    // The exit code, or 128 + the signal number when a signal ended it.
    int waitForExit();
    const std::string& output() const { return captured; }

private:
    bool readMore();

    struct Native;
    std::unique_ptr<Native> native;
    bool exited = false;
    int exitCode = -1;
    std::string captured;
};

}  // namespace vorn::test
