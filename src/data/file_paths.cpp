#include "data/file_paths.h"

#include <system_error>

namespace vorn {

std::string pathString(const std::filesystem::path& path) { return path.u8string(); }

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
