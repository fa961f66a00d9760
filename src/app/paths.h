#pragma once
// Where the game finds its folders. A player's copy keeps "data" and "assets"
// beside the executable; when the executable's folder has no "data" but the
// working directory does (running a freshly built binary from a source tree),
// the working directory wins.

#include "data/file_paths.h"

#include <string>

namespace vorn {

// Picks the base folder from what SDL_GetBasePath returned (null or empty
// allowed): the executable's folder if it has "data", else "." if that has
// "data", else the executable's folder anyway (and "." without one).
std::string resolveBasePath(const char* sdlBasePath);

}  // namespace vorn
