#include "support/test_platform.h"

#include <cstdlib>

namespace vorn::test {

namespace fs = std::filesystem;

void setEnvironment(const char* name, const char* value) {
#ifdef _WIN32
    // An empty value removes the variable on Windows.
    _putenv_s(name, value != nullptr ? value : "");
#else
    if (value != nullptr) {
        ::setenv(name, value, 1);
    } else {
        ::unsetenv(name);
    }
#endif
}

ScopedEnvironment::ScopedEnvironment(const char* name, const char* value) : name(name) {
    if (const char* old = std::getenv(name)) {
        previous = old;
    }
    setEnvironment(name, value);
}

ScopedEnvironment::~ScopedEnvironment() {
    setEnvironment(name.c_str(), previous ? previous->c_str() : nullptr);
}

void shareFolder(const fs::path& source, const fs::path& place) {
    if constexpr (kWindows) {
        fs::copy(source, place, fs::copy_options::recursive);
    } else {
        fs::create_directory_symlink(source, place);
    }
}

fs::path gameFolder() { return fs::u8path(VORN_GAME_DIR); }

fs::path gameExecutable() { return gameFolder() / VORN_GAME_EXE; }

}  // namespace vorn::test
