#pragma once
// The player's progress between starts of the game: whether the splash and
// intro were seen, how often the player was fired, the clock-in cards earned
// and the difficulty last picked. It lives in a small key=value text file
// ("vornco_save.txt" in the data folder) that is loaded once at start-up and
// rewritten whole whenever something worth keeping happens. A missing file
// is simply a new player, so the header line tells the user it may be
// deleted.

#include <cstdint>
#include <istream>
#include <ostream>
#include <string>

namespace vorn {

struct SaveData {
    std::string path;                  // set by loadSave, used by writeSave
    bool splashSeen = false;
    bool introSeen = false;            // kept and written back; the game never sets it
    std::int32_t timesFired = 0;
    std::int32_t clockInCards = 0;     // a positive count offers CONTINUE on the title
    std::int32_t lastDifficulty = 1;   // Difficulty value, MEDIUM for a new player
};

// Remembers the path, then reads the file if it opens; a missing or
// unreadable file leaves the other fields as they are and is not reported.
// A number key with no digits, or one that does not fit in 32 bits, throws
// the standard conversion error (std::invalid_argument / std::out_of_range).
void loadSave(SaveData& save, const std::string& path);

// The line reader behind loadSave, for any stream: updates only the fields
// whose keys it meets.
void loadSaveFrom(SaveData& save, std::istream& in);

// Rewrites the file at save.path whole and at once: written beside it as
// "<name>.tmp", flushed to disk, then renamed over it. Nothing happens when
// the path is empty; when any step fails the old file is left untouched and
// nothing is reported.
void writeSave(const SaveData& save);

// The six lines of the file, header first, as writeSave writes them.
void writeSaveTo(const SaveData& save, std::ostream& out);

// The text without leading and trailing blanks, tabs, carriage returns and
// line feeds.
std::string trim(const std::string& text);

}  // namespace vorn
