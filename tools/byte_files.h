#pragma once
// Little helpers the asset generator's writers share: little-endian fields
// for the WAV and ICO headers, and writing a finished byte buffer to disk.

#include <cstdint>
#include <filesystem>
#include <fstream>
#include <string>
#include <vector>

namespace vorn::tools {

inline void putLe(std::vector<char>& bytes, std::uint32_t value, int size) {
    for (int i = 0; i < size; ++i) {
        bytes.push_back(static_cast<char>((value >> (8 * i)) & 0xFFu));
    }
}

// False, with `error` set, when the file cannot be written whole.
inline bool writeBytes(const std::filesystem::path& path, const std::vector<char>& bytes, std::string& error) {
    std::ofstream out(path, std::ios::binary | std::ios::trunc);
    out.write(bytes.data(), static_cast<std::streamsize>(bytes.size()));
    if (!out) {
        error = "cannot write " + path.u8string();
        return false;
    }
    return true;
}

}  // namespace vorn::tools
