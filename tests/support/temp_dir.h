#pragma once
// Scratch folders for tests: a fresh, uniquely named folder that is removed
// again, and a scope that runs in another working directory.

#include <filesystem>
#include <string>

namespace vorn::test {

class TempDir {
public:
    explicit TempDir(const std::string& name);
    ~TempDir();
    TempDir(const TempDir&) = delete;
    TempDir& operator=(const TempDir&) = delete;

    const std::filesystem::path& path() const { return root; }
    std::string str() const { return root.u8string(); }
    // Writes a file below the folder (parents created) and returns its path.
    std::filesystem::path write(const std::string& relative, const std::string& content) const;

private:
    std::filesystem::path root;
};

class ScopedWorkingDirectory {
public:
    explicit ScopedWorkingDirectory(const std::filesystem::path& dir);
    ~ScopedWorkingDirectory();
    ScopedWorkingDirectory(const ScopedWorkingDirectory&) = delete;
    ScopedWorkingDirectory& operator=(const ScopedWorkingDirectory&) = delete;

private:
    std::filesystem::path previous;
};

// A file's bytes, exactly.
std::string readFile(const std::filesystem::path& path);
// A text file as the platform's text mode reads it: the game writes its log
// and save in text mode, so on Windows their lines end in CR LF on disk, and
// this gives them back with bare line feeds on both platforms.
std::string readTextFile(const std::filesystem::path& path);

}  // namespace vorn::test
