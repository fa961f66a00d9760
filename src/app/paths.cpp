#include "app/paths.h"

namespace vorn {

namespace {

bool entryExists(const std::filesystem::path& path) {
    std::error_code ec;
    return std::filesystem::exists(path, ec);
}

}  // namespace

std::string pathString(const std::filesystem::path& path) { return path.u8string(); }

std::string resolveBasePath(const char* sdlBasePath) {
    if (sdlBasePath == nullptr || sdlBasePath[0] == '\0') {
        return ".";
    }
    const std::string executableDir = sdlBasePath;
    if (entryExists(std::filesystem::u8path(executableDir) / "data")) {
        return executableDir;
    }
    if (entryExists(std::filesystem::path(".") / "data")) {
        return ".";
    }
    return executableDir;
}

}  // namespace vorn
