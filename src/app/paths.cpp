#include "app/paths.h"

#include <filesystem>

namespace vorn {

std::string resolveBasePath(const char* sdlBasePath) {
    if (sdlBasePath == nullptr || sdlBasePath[0] == '\0') {
        return ".";
    }
    const std::string executableDir = sdlBasePath;
    if (pathExists(pathString(std::filesystem::u8path(executableDir) / "data"))) {
        return executableDir;
    }
    if (pathExists(pathString(std::filesystem::path(".") / "data"))) {
        return ".";
    }
    return executableDir;
}

}  // namespace vorn
