#include "data/file_paths.h"

#include <system_error>

#ifdef _WIN32
#ifndef WIN32_LEAN_AND_MEAN
#define WIN32_LEAN_AND_MEAN
#endif
#ifndef NOMINMAX
#define NOMINMAX
#endif
#include <io.h>
#include <windows.h>
#else
#include <fcntl.h>
#include <unistd.h>
#endif

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

bool writeFileDurably(const std::string& path, const std::string& text) {
    std::FILE* file = openFile(path, "w");
    if (file == nullptr) {
        return false;
    }
    bool ok = std::fwrite(text.data(), 1, text.size(), file) == text.size();
    ok = std::fflush(file) == 0 && ok;
#ifdef _WIN32
    ok = ok && _commit(_fileno(file)) == 0;
#else
    ok = ok && ::fsync(::fileno(file)) == 0;
#endif
    ok = std::fclose(file) == 0 && ok;
    return ok;
}

bool replaceFile(const std::string& from, const std::string& to) {
#ifdef _WIN32
    return MoveFileExW(std::filesystem::u8path(from).c_str(), std::filesystem::u8path(to).c_str(),
                       MOVEFILE_REPLACE_EXISTING | MOVEFILE_WRITE_THROUGH) != 0;
#else
    if (std::rename(from.c_str(), to.c_str()) != 0) {
        return false;
    }
    // The new name itself is only safe once the folder has reached the disk.
    const std::string folder = pathString(std::filesystem::u8path(to).parent_path());
    const int fd = ::open(folder.empty() ? "." : folder.c_str(), O_RDONLY | O_DIRECTORY);
    if (fd >= 0) {
        ::fsync(fd);
        ::close(fd);
    }
    return true;
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
