#include "data/save_data.h"

#include "data/file_paths.h"

#include <cstdint>
#include <filesystem>
#include <fstream>
#include <limits>
#include <sstream>
#include <stdexcept>
#include <system_error>

namespace vorn {

namespace {

// Only an exact "1" or "true" counts: the game writes 1 and 0, and "true" is
// accepted for hand edits. Anything else, "TRUE" and "yes" included, is false.
bool flagValue(const std::string& value) { return value == "1" || value == "true"; }

// timesFired goes through a string-to-long conversion. On the Windows build
// long is 32 bits, so the conversion itself refuses a number that would not
// fit the field; where long is wider the same refusal is made here, so the
// save file behaves alike on every platform.
std::int32_t timesFiredValue(const std::string& value) {
    const long number = std::stol(value);
    if constexpr (sizeof(long) > sizeof(std::int32_t)) {
        if (number < std::numeric_limits<std::int32_t>::min() ||
            number > std::numeric_limits<std::int32_t>::max()) {
            throw std::out_of_range("stol argument out of range");
        }
    }
    return static_cast<std::int32_t>(number);
}

}  // namespace

std::string trim(const std::string& text) {
    const char* const blanks = " \t\r\n";
    const std::size_t first = text.find_first_not_of(blanks);
    if (first == std::string::npos) {
        return std::string();
    }
    const std::size_t last = text.find_last_not_of(blanks);
    return text.substr(first, last - first + 1);
}

void loadSaveFrom(SaveData& save, std::istream& in) {
    // Some editors (Notepad among them, for years) start a UTF-8 file with a
    // byte-order mark; a player who edits the save by hand must not lose the
    // first line to it.
    static const char kByteOrderMark[] = "\xEF\xBB\xBF";
    for (int i = 0; i < 3 && in.peek() == static_cast<unsigned char>(kByteOrderMark[i]); ++i) {
        in.get();
    }
    std::string raw;
    while (std::getline(in, raw)) {
        // Trimming also drops the carriage return of a file saved with
        // Windows line ends, so both kinds of file read the same.
        const std::string line = trim(raw);
        if (line.empty() || line[0] == '#') {
            continue;
        }
        const std::size_t eq = line.find('=');
        if (eq == std::string::npos) {
            continue;
        }
        // Split at the first '=' only: everything after it is the value.
        const std::string key = trim(line.substr(0, eq));
        const std::string value = trim(line.substr(eq + 1));

        // The number conversions are deliberately not guarded: a number key
        // with no digits at all ends start-up with the standard error rather
        // than quietly resetting a player's record. Keys are read in file
        // order, so a key that occurs twice takes its last value and a
        // hand-edited file can override a line without deleting it.
        if (key == "splashSeen") {
            save.splashSeen = flagValue(value);
        } else if (key == "introSeen") {
            save.introSeen = flagValue(value);
        } else if (key == "timesFired") {
            save.timesFired = timesFiredValue(value);
        } else if (key == "clockInCards") {
            save.clockInCards = std::stoi(value);
        } else if (key == "lastDifficulty") {
            // A difficulty the game does not have is ignored, keeping
            // whatever was there before.
            const int difficulty = std::stoi(value);
            if (difficulty >= 0 && difficulty <= 3) {
                save.lastDifficulty = difficulty;
            }
        }
    }
}

void loadSave(SaveData& save, const std::string& path) {
    save.path = path;
    std::ifstream in(std::filesystem::u8path(path));
    if (!in) {
        return;   // no file yet: a new player, with the defaults
    }
    loadSaveFrom(save, in);
}

void writeSaveTo(const SaveData& save, std::ostream& out) {
    out << "# The Vorn Co. save file. Auto-generated; safe to delete.\n";
    out << "splashSeen=" << (save.splashSeen ? 1 : 0) << '\n';
    out << "introSeen=" << (save.introSeen ? 1 : 0) << '\n';
    out << "timesFired=" << save.timesFired << '\n';
    out << "clockInCards=" << save.clockInCards << '\n';
    out << "lastDifficulty=" << save.lastDifficulty << '\n';
}

void writeSave(const SaveData& save) {
    if (save.path.empty()) {
        return;
    }
    // Never rewritten in place: the new text goes to a file of its own beside
    // the save, reaches the disk, and only then takes the save's name, in one
    // step. A kill, a power cut or a full disk at any moment leaves the old
    // save or the new one, whole. When any step fails the old one stays as
    // it was and, as always, the game runs on with its in-memory values.
    std::ostringstream text;
    writeSaveTo(save, text);
    const std::string temporary = save.path + ".tmp";
    if (!writeFileDurably(temporary, text.str()) || !replaceFile(temporary, save.path)) {
        // Only a file of ours is cleared away, never whatever else has the name.
        const std::filesystem::path left = std::filesystem::u8path(temporary);
        std::error_code ignored;
        if (std::filesystem::is_regular_file(left, ignored)) {
            std::filesystem::remove(left, ignored);
        }
    }
}

}  // namespace vorn
