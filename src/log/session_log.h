#pragma once
// The session log: one plain-text file per install ("vornco_log.txt" in the
// data folder) that every run appends a banner and its lines to. The game's
// own lines go through logInfo (also echoed to standard error); everything
// sent with SDL_Log is routed into the same file by sdlOutput. One mutex
// serialises every write, because SDL may log from its own threads.

#include "log/printf_format.h"

#include <SDL.h>

#include <string>

namespace vorn {

void openLog(const std::string& path, const std::string& build);
void logInfo(const char* format, ...) VORN_PRINTF_FORMAT(1);
void logSection(const char* title);
void sdlOutput(void* userdata, int category, SDL_LogPriority priority, const char* message);
void closeLog();

}  // namespace vorn
