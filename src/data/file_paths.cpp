#include "data/file_paths.h"

#include <system_error>

namespace vorn {

std::string pathString(const std::filesystem::path& path) { return path.u8string(); }

std::FILE* openFile(const std::string& path, const char* mode) {
#ifdef _WIN32
    const std::wstring wideMode = std::filesystem::u8path(mode).wstring();
    return _wfopen(std::filesystem::u8path(path).c_str(), wideMode.c_str());
#else
    return std::fopen(path.c_str(), mode);
#endif
}

bool pathExists(const std::string& path) {
    std::error_code ec;
    return std::filesystem::exists(std::filesystem::u8path(path), ec);
}

std::string lowerAscii(std::string text) {
    for (char& c : text) {
        if (c >= 'A' && c <= 'Z') {
            c = static_cast<char>(c - 'A' + 'a');
        }
    }
    return text;
}

}  // namespace vorn
