#pragma once
// The game's two pictures, painted at build time: the window icon (a brass
// terminal with a green prompt) and the studio wordmark for the splash.

#include <filesystem>
#include <string>

namespace vorn::tools {

// Writes assets/images/app_icon.png and studio_logo.png under the game
// folder. The wordmark is set in the TrueType font at `fontPath` when it
// opens, and in block letters drawn here otherwise. On failure returns false
// with `error` set.
bool writeImages(const std::filesystem::path& gameDir, const std::string& fontPath,
                 std::string& error);

}  // namespace vorn::tools
