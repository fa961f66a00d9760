#pragma once
// The station catalogue: the list of every station a run can deal, read
// once at start-up from "levels/levels.json" in the data folder. The reader
// is a small hand-written scanner for just the JSON the catalogue uses, and
// it is forgiving on purpose: a record with a missing or odd field takes a
// default, a record without a number or id is dropped, and only a file that
// cannot be read or holds no "levels" array counts as a failure.

#include <cstddef>
#include <cstdint>
#include <string>
#include <vector>

namespace vorn {

struct LevelDef {
    std::int32_t number = 0;     // "n": 1-based station number
    std::string id;              // "id"
    std::string name;            // "name": display name
    std::string type;            // "type": picks the station class
    std::string phase;           // never read: follows from number
    std::int32_t baseTime = 15;  // "base_time": seconds before the run scales them
    std::string instruction;     // "instruction": the line shown to the player
    std::string trick;           // "trick": what makes the station a trick
};

// Appends the records of the file at path to levels (never clears it) and
// gives every record its phase. True when levels is non-empty afterwards.
bool loadLevels(std::vector<LevelDef>& levels, const std::string& path);

// The same scan over catalogue text already in memory.
bool loadLevelsFromText(std::vector<LevelDef>& levels, const std::string& text);

// The phase a station number belongs to: "probation" (up to 10),
// "fullshift" (11-20), "graveyard" (21-30), "overtime" (31-33) or
// "extended" (34 and up).
std::string phaseForNumber(std::int32_t number);

// The whole file as bytes, with ok telling whether it could be opened (an
// empty string when not).
std::string readWholeFile(const std::string& path, bool& ok);

// Field readers over the text of one record object, from its '{' to its
// matching '}'. The first occurrence of the quoted key anywhere in the
// object counts, nested or not.
std::int32_t jsonIntField(const std::string& object, const std::string& key, std::int32_t fallback);
std::string jsonStringField(const std::string& object, const std::string& key);

// Reads one quoted string starting at text[pos] and returns it unescaped;
// pos is advanced past what was read. Not at a quote: empty, pos unchanged.
std::string jsonStringLiteral(const std::string& text, std::size_t& pos);

}  // namespace vorn
