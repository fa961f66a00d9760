#include "data/level_catalogue.h"

#include <filesystem>
#include <fstream>
#include <sstream>
#include <utility>

namespace vorn {

namespace {

// Finds "key" (quotes included, so "n" never matches "name") and the first
// ':' after it; returns the position just past that colon, or npos when the
// field is missing.
std::size_t valueStart(const std::string& object, const std::string& key) {
    const std::string pattern = "\"" + key + "\"";
    const std::size_t at = object.find(pattern);
    if (at == std::string::npos) {
        return std::string::npos;
    }
    const std::size_t end = at + pattern.size();
    if (end >= object.size()) {
        return std::string::npos;
    }
    const std::size_t colon = object.find(':', end);
    if (colon == std::string::npos) {
        return std::string::npos;
    }
    return colon + 1;
}

bool isJsonSpace(char c) {
    return c == ' ' || c == '\t' || c == '\n' || c == '\v' || c == '\f' || c == '\r';
}

LevelDef readRecord(const std::string& object) {
    LevelDef def;
    def.number = jsonIntField(object, "n", 0);
    def.id = jsonStringField(object, "id");
    def.name = jsonStringField(object, "name");
    def.type = jsonStringField(object, "type");
    def.baseTime = jsonIntField(object, "base_time", 15);
    def.instruction = jsonStringField(object, "instruction");
    def.trick = jsonStringField(object, "trick");
    return def;
}

}  // namespace

std::string phaseForNumber(std::int32_t number) {
    // Graveyard sits before overtime on purpose: overtime is the short,
    // last stretch of three stations, and the run checks for it by name.
    if (number <= 10) return "probation";
    if (number <= 20) return "fullshift";
    if (number <= 30) return "graveyard";
    if (number <= 33) return "overtime";
    return "extended";
}

std::string readWholeFile(const std::string& path, bool& ok) {
    std::ifstream in(std::filesystem::u8path(path), std::ios::binary);
    if (!in) {
        ok = false;
        return std::string();
    }
    ok = true;
    // One read of the whole file: a catalogue grown huge (or a hostile one)
    // must not cost a loop turn per byte at start-up.
    std::ostringstream text;
    text << in.rdbuf();
    return text.str();
}

std::int32_t jsonIntField(const std::string& object, const std::string& key, std::int32_t fallback) {
    std::size_t i = valueStart(object, key);
    if (i == std::string::npos) {
        return fallback;
    }
    while (i < object.size() && isJsonSpace(object[i])) {
        ++i;
    }
    bool negative = false;
    if (i < object.size() && (object[i] == '-' || object[i] == '+')) {
        negative = object[i] == '-';
        ++i;
    }
    // Digits until the first non-digit, so 12.9 reads as 12 and 1e3 as 1.
    // The sum wraps around in unsigned 32-bit arithmetic instead of
    // overflowing: an absurd number gives an absurd time, not a crash.
    std::uint32_t value = 0;
    bool anyDigit = false;
    while (i < object.size() && object[i] >= '0' && object[i] <= '9') {
        value = value * 10u + static_cast<std::uint32_t>(object[i] - '0');
        anyDigit = true;
        ++i;
    }
    if (!anyDigit) {
        return fallback;   // a quoted number, null, true or a lone sign
    }
    if (negative) {
        value = 0u - value;
    }
    return static_cast<std::int32_t>(value);
}

std::string jsonStringField(const std::string& object, const std::string& key) {
    const std::size_t start = valueStart(object, key);
    if (start == std::string::npos) {
        return std::string();
    }
    // The value is whatever quoted text comes next. When it is not a string
    // at all (null, a number) that is usually the next key; the catalogue
    // never does this, so nothing is gained by checking.
    std::size_t quote = object.find('"', start);
    if (quote == std::string::npos) {
        return std::string();
    }
    return jsonStringLiteral(object, quote);
}

std::string jsonStringLiteral(const std::string& text, std::size_t& pos) {
    if (pos >= text.size() || text[pos] != '"') {
        return std::string();
    }
    ++pos;
    std::string out;
    while (pos < text.size()) {
        const char c = text[pos++];
        if (c == '"') {
            return out;
        }
        if (c != '\\') {
            out += c;
            continue;
        }
        if (pos >= text.size()) {
            out += '\\';   // a backslash as the very last byte stays itself
            break;
        }
        const char escape = text[pos++];
        switch (escape) {
            case 'n': out += '\n'; break;
            case 't': out += '\t'; break;
            case 'u':
                // The catalogue's texts are plain ASCII or raw UTF-8; a
                // \u escape is not worth decoding and shows as one '?'.
                out += '?';
                if (text.size() - pos >= 4) {
                    pos += 4;
                }
                break;
            default:
                // Quote, slash and backslash stand for themselves; so does
                // any other letter (r, b, f...), without its backslash.
                out += escape;
                break;
        }
    }
    // Out of text before the closing quote: keep what was read.
    return out;
}

bool loadLevelsFromText(std::vector<LevelDef>& levels, const std::string& text) {
    if (text.size() < 8) {
        return false;
    }
    const std::size_t key = text.find("\"levels\"");
    if (key == std::string::npos) {
        return false;
    }
    const std::size_t bracket = text.find('[', key);
    if (bracket == std::string::npos) {
        return false;
    }

    // Records are cut out by raw brace counting. The walk knows nothing of
    // strings: a brace inside a text moves the count like any other, which
    // the catalogue avoids. Brackets only matter at depth 0, where one ends
    // the array.
    std::int32_t depth = 0;
    std::size_t objectStart = std::string::npos;
    for (std::size_t i = bracket + 1; i < text.size(); ++i) {
        const char c = text[i];
        if (c == ']' && depth == 0) {
            break;
        }
        if (c == '{') {
            if (depth == 0) {
                objectStart = i;
            }
            ++depth;
        } else if (c == '}') {
            --depth;
            if (depth == 0 && objectStart != std::string::npos) {
                LevelDef def = readRecord(text.substr(objectStart, i - objectStart + 1));
                // Without a number or an id a record cannot be placed in a
                // run; it is dropped silently, like any other odd record.
                if (def.number >= 1 && !def.id.empty()) {
                    levels.push_back(std::move(def));
                }
                objectStart = std::string::npos;
            }
        }
    }

    for (LevelDef& def : levels) {
        def.phase = phaseForNumber(def.number);
    }
    return !levels.empty();
}

bool loadLevels(std::vector<LevelDef>& levels, const std::string& path) {
    bool ok = false;
    const std::string text = readWholeFile(path, ok);
    if (!ok) {
        return false;
    }
    return loadLevelsFromText(levels, text);
}

}  // namespace vorn
