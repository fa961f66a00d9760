#include "support/game_process.h"

#include <csignal>
#include <cstdlib>

#include <sys/wait.h>
#include <unistd.h>

namespace vorn::test {

GameProcess::GameProcess(const std::filesystem::path& executable,
                         const std::filesystem::path& workingDir,
                         std::vector<std::pair<std::string, std::string>> environment,
                         std::vector<std::string> arguments) {
    int fds[2];
    if (::pipe(fds) != 0) {
        return;
    }
    pid = ::fork();
    if (pid == 0) {
        ::dup2(fds[1], STDOUT_FILENO);
        ::dup2(fds[1], STDERR_FILENO);
        ::close(fds[0]);
        ::close(fds[1]);
        for (const auto& [name, value] : environment) {
            ::setenv(name.c_str(), value.c_str(), 1);
        }
        if (::chdir(workingDir.c_str()) != 0) {
            ::_exit(126);
        }
        std::string program = executable.string();
        std::vector<char*> argv{program.data()};
        for (std::string& argument : arguments) {
            argv.push_back(argument.data());
        }
        argv.push_back(nullptr);
        ::execv(program.c_str(), argv.data());
        ::_exit(127);
    }
    ::close(fds[1]);
    outputFd = fds[0];
}

GameProcess::~GameProcess() {
    if (pid > 0 && !exited) {
        ::kill(pid, SIGKILL);
        waitForExit();
    }
    if (outputFd >= 0) {
        ::close(outputFd);
    }
}

bool GameProcess::readMore() {
    char buffer[4096];
    const ssize_t n = ::read(outputFd, buffer, sizeof buffer);
    if (n <= 0) {
        return false;
    }
    captured.append(buffer, static_cast<std::size_t>(n));
    return true;
}

bool GameProcess::waitForOutput(const std::string& text) {
    while (captured.find(text) == std::string::npos) {
        if (outputFd < 0 || !readMore()) {
            return false;
        }
    }
    return true;
}

void GameProcess::terminate() {
    if (pid > 0 && !exited) {
        ::kill(pid, SIGTERM);
    }
}

int GameProcess::waitForExit() {
    if (pid <= 0) {
        return -1;
    }
    if (!exited) {
        // Drain the output first so a chatty child never blocks on a full pipe.
        while (outputFd >= 0 && readMore()) {
        }
        int status = 0;
        ::waitpid(pid, &status, 0);
        exited = true;
        exitCode = WIFEXITED(status) ? WEXITSTATUS(status) : 128 + WTERMSIG(status);
    }
    return exitCode;
}

}  // namespace vorn::test
