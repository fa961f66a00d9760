#include "support/temp_dir.h"

#include <fstream>
#include <sstream>

#include <unistd.h>

namespace vorn::test {

TempDir::TempDir(const std::string& name) {
    // The name is UTF-8, so tests can ask for folders in any script.
    root = std::filesystem::temp_directory_path() /
           std::filesystem::u8path("vorn_" + name + "_" + std::to_string(::getpid()));
    std::filesystem::remove_all(root);
    std::filesystem::create_directories(root);
}

TempDir::~TempDir() {
    std::error_code ignored;
    std::filesystem::remove_all(root, ignored);
}

std::filesystem::path TempDir::write(const std::string& relative, const std::string& content) const {
    const std::filesystem::path file = root / relative;
    std::filesystem::create_directories(file.parent_path());
    std::ofstream out(file, std::ios::binary);
    out << content;
    return file;
}

ScopedWorkingDirectory::ScopedWorkingDirectory(const std::filesystem::path& dir)
    : previous(std::filesystem::current_path()) {
    std::filesystem::current_path(dir);
}

ScopedWorkingDirectory::~ScopedWorkingDirectory() {
    std::error_code ignored;
    std::filesystem::current_path(previous, ignored);
}

std::string readFile(const std::filesystem::path& path) {
    std::ifstream in(path, std::ios::binary);
    std::ostringstream text;
    text << in.rdbuf();
    return text.str();
}

std::string readTextFile(const std::filesystem::path& path) {
    std::ifstream in(path);
    std::ostringstream text;
    text << in.rdbuf();
    return text.str();
}

}  // namespace vorn::test
