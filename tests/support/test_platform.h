#pragma once
// The few places where the test kit differs between the native build and the
// Windows build (which runs under Wine): the process environment, sharing a
// folder with a scratch copy of the game, and the tests that need tools only
// the build machine has. Everything else in the suite is the same code on
// both targets.

#include <gtest/gtest.h>

#include <filesystem>
#include <optional>
#include <string>

namespace vorn::test {

#ifdef _WIN32
inline constexpr bool kWindows = true;
#else
inline constexpr bool kWindows = false;
#endif

// Sets an environment variable of this process, or removes it when value is
// null. SDL reads the same environment.
void setEnvironment(const char* name, const char* value);

// Sets (or removes) a variable for the life of the scope, then puts back
// whatever was there before, so a test leaves no trace in the next one.
class ScopedEnvironment {
public:
    ScopedEnvironment(const char* name, const char* value);
    ~ScopedEnvironment();
    ScopedEnvironment(const ScopedEnvironment&) = delete;
    ScopedEnvironment& operator=(const ScopedEnvironment&) = delete;

private:
    std::string name;
    std::optional<std::string> previous;
};

// Makes `place` show the folder `source`: a symbolic link natively, a copy on
// Windows (MinGW's library cannot make directory links).
void shareFolder(const std::filesystem::path& source, const std::filesystem::path& place);

// The separator the file-system library puts between the parts it joins: the
// game builds every path by joining, so its paths show this one.
#ifdef _WIN32
inline constexpr const char* kSep = "\\";
#else
inline constexpr const char* kSep = "/";
#endif

// The built game's folder and its executable ("vornco" or "vornco.exe").
std::filesystem::path gameFolder();
std::filesystem::path gameExecutable();

}  // namespace vorn::test

// Skips the rest of a test on Windows, saying why; for the few tests that
// need a program of the build machine (python3, the native asset generator)
// or a POSIX signal.
#define VORN_NATIVE_ONLY(reason)                                  \
    do {                                                          \
        if (::vorn::test::kWindows) {                             \
            GTEST_SKIP() << "native build only: " << (reason);    \
        }                                                         \
    } while (false)
