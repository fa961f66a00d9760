#include "support/game_process.h"

#ifdef _WIN32
#include <windows.h>

#include <algorithm>
#include <cwctype>
#include <map>
#else
#include <csignal>
#include <cstdlib>

#include <sys/wait.h>
#include <unistd.h>
#endif

namespace vorn::test {

#ifdef _WIN32

namespace {

std::wstring wide(const std::string& utf8) { return std::filesystem::u8path(utf8).wstring(); }

// Case-blind order of variable names, as Windows keeps its environment.
struct NameLess {
    bool operator()(const std::wstring& a, const std::wstring& b) const {
        return std::lexicographical_compare(a.begin(), a.end(), b.begin(), b.end(),
                                            [](wchar_t x, wchar_t y) {
                                                return std::towupper(x) < std::towupper(y);
                                            });
    }
};

// This process's environment with the given variables set, as the block
// CreateProcessW takes: NAME=VALUE strings, each ended by a zero, then a zero.
std::wstring environmentBlock(const std::vector<std::pair<std::string, std::string>>& changes) {
    std::map<std::wstring, std::wstring, NameLess> variables;
    if (wchar_t* block = GetEnvironmentStringsW()) {
        for (const wchar_t* entry = block; *entry != L'\0'; entry += std::wcslen(entry) + 1) {
            const std::wstring text = entry;
            const std::size_t eq = text.find(L'=', 1);   // "=C:" style names start with '='
            if (eq != std::wstring::npos) {
                variables[text.substr(0, eq)] = text.substr(eq + 1);
            }
        }
        FreeEnvironmentStringsW(block);
    }
    for (const auto& [name, value] : changes) {
        variables[wide(name)] = wide(value);
    }
    std::wstring out;
    for (const auto& [name, value] : variables) {
        out += name + L'=' + value;
        out += L'\0';
    }
    out += L'\0';
    return out;
}

std::wstring quoted(const std::wstring& argument) {
    std::wstring out = L"\"";
    for (wchar_t c : argument) {
        if (c == L'"') {
            out += L'\\';
        }
        out += c;
    }
    return out + L"\"";
}

}  // namespace

struct GameProcess::Native {
    PROCESS_INFORMATION info{};
    HANDLE output = nullptr;
};

GameProcess::GameProcess(const std::filesystem::path& executable,
                         const std::filesystem::path& workingDir,
                         std::vector<std::pair<std::string, std::string>> environment,
                         std::vector<std::string> arguments)
    : native(std::make_unique<Native>()) {
    SECURITY_ATTRIBUTES inherit{sizeof(SECURITY_ATTRIBUTES), nullptr, TRUE};
    HANDLE readEnd = nullptr;
    HANDLE writeEnd = nullptr;
    if (!CreatePipe(&readEnd, &writeEnd, &inherit, 0)) {
        return;
    }
    SetHandleInformation(readEnd, HANDLE_FLAG_INHERIT, 0);

    std::wstring commandLine = quoted(executable.wstring());
    for (const std::string& argument : arguments) {
        commandLine += L' ' + quoted(wide(argument));
    }
    std::wstring block = environmentBlock(environment);
    STARTUPINFOW startup{};
    startup.cb = sizeof startup;
    startup.dwFlags = STARTF_USESTDHANDLES;
    startup.hStdInput = GetStdHandle(STD_INPUT_HANDLE);
    startup.hStdOutput = writeEnd;
    startup.hStdError = writeEnd;
    const std::wstring program = executable.wstring();
    const std::wstring folder = workingDir.wstring();
    const BOOL ok = CreateProcessW(program.c_str(), commandLine.data(), nullptr, nullptr, TRUE,
                                   CREATE_UNICODE_ENVIRONMENT, block.data(), folder.c_str(),
                                   &startup, &native->info);
    CloseHandle(writeEnd);
    if (!ok) {
        CloseHandle(readEnd);
        native->info = PROCESS_INFORMATION{};
        return;
    }
    native->output = readEnd;
}

GameProcess::~GameProcess() {
    if (native->info.hProcess != nullptr) {
        if (!exited) {
            kill();
            waitForExit();
        }
        CloseHandle(native->info.hThread);
        CloseHandle(native->info.hProcess);
    }
    if (native->output != nullptr) {
        CloseHandle(native->output);
    }
}

bool GameProcess::started() const { return native->info.hProcess != nullptr; }

bool GameProcess::readMore() {
    if (native->output == nullptr) {
        return false;
    }
    char buffer[4096];
    DWORD n = 0;
    if (!ReadFile(native->output, buffer, sizeof buffer, &n, nullptr) || n == 0) {
        return false;
    }
    captured.append(buffer, n);
    return true;
}

bool GameProcess::requestStop() { return false; }

void GameProcess::kill() {
    if (started() && !exited) {
        TerminateProcess(native->info.hProcess, 137);
    }
}

int GameProcess::waitForExit() {
    if (!started()) {
        return -1;
    }
    if (!exited) {
        // Drain the output first so a chatty child never blocks on a full pipe.
        while (readMore()) {
        }
        WaitForSingleObject(native->info.hProcess, INFINITE);
        DWORD code = 0;
        GetExitCodeProcess(native->info.hProcess, &code);
        exited = true;
        exitCode = static_cast<int>(code);
    }
    return exitCode;
}

#else

struct GameProcess::Native {
    pid_t pid = -1;
    int output = -1;
};

GameProcess::GameProcess(const std::filesystem::path& executable,
                         const std::filesystem::path& workingDir,
                         std::vector<std::pair<std::string, std::string>> environment,
                         std::vector<std::string> arguments)
    : native(std::make_unique<Native>()) {
    int fds[2];
    if (::pipe(fds) != 0) {
        return;
    }
    const pid_t pid = ::fork();
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
    if (pid < 0) {
        ::close(fds[0]);
        return;
    }
    native->pid = pid;
    native->output = fds[0];
}

GameProcess::~GameProcess() {
    if (started() && !exited) {
        kill();
        waitForExit();
    }
    if (native->output >= 0) {
        ::close(native->output);
    }
}

bool GameProcess::started() const { return native->pid > 0; }

bool GameProcess::readMore() {
    if (native->output < 0) {
        return false;
    }
    char buffer[4096];
    const ssize_t n = ::read(native->output, buffer, sizeof buffer);
    if (n <= 0) {
        return false;
    }
    captured.append(buffer, static_cast<std::size_t>(n));
    return true;
}

bool GameProcess::requestStop() {
    if (started() && !exited) {
        ::kill(native->pid, SIGTERM);
    }
    return true;
}

void GameProcess::kill() {
    if (started() && !exited) {
        ::kill(native->pid, SIGKILL);
    }
}

int GameProcess::waitForExit() {
    if (!started()) {
        return -1;
    }
    if (!exited) {
        // Drain the output first so a chatty child never blocks on a full pipe.
        while (readMore()) {
        }
        int status = 0;
        ::waitpid(native->pid, &status, 0);
        exited = true;
        exitCode = WIFEXITED(status) ? WEXITSTATUS(status) : 128 + WTERMSIG(status);
    }
    return exitCode;
}

#endif

bool GameProcess::waitForOutput(const std::string& text) {
    while (captured.find(text) == std::string::npos) {
        if (!readMore()) {
            return false;
        }
    }
    return true;
}

}  // namespace vorn::test
