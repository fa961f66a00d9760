#pragma once
// Starts the real game executable (or one of our tools) as a child process
// with its standard error (and output) captured, so tests can wait for a
// line, signal it and read its exit code, without sleeping.

#include <sys/types.h>

#include <filesystem>
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

    // Reads the child's output until it contains `text`; false at end of output.
    bool waitForOutput(const std::string& text);
    void terminate();
    // The exit code, or 128 + the signal number when a signal ended it.
    int waitForExit();
    const std::string& output() const { return captured; }

private:
    bool readMore();

    pid_t pid = -1;
    int outputFd = -1;
    bool exited = false;
    int exitCode = -1;
    std::string captured;
};

}  // namespace vorn::test
