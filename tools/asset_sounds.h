#pragma once
// The game's sounds, synthesised from scratch at build time: the six effects
// and the studio sting for assets/audio, and the title tune and gameplay
// tracks for data/music. Everything is computed from fixed numbers and a
// fixed-seed noise source, so every build writes the same bytes.

#include <filesystem>
#include <string>

namespace vorn::tools {

// Writes every sound under the game folder (whose assets/audio and data/music
// folders must exist). On failure returns false with `error` set.
bool writeSounds(const std::filesystem::path& gameDir, std::string& error);

}  // namespace vorn::tools
