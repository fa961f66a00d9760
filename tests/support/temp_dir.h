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
    std::string str() const { return root.string(); }
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

std::string readFile(const std::filesystem::path& path);

}  // namespace vorn::test
