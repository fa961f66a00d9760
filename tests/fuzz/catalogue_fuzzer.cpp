// libFuzzer target for the catalogue scanner: any bytes at all must come back
// as a list of records (maybe empty) without a crash, a hang or a sanitizer
// report, and every record must have its phase filled in.

#include "data/level_catalogue.h"

#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <string>
#include <vector>

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const std::string text(reinterpret_cast<const char*>(data), size);
    std::vector<vorn::LevelDef> levels;
    const bool ok = vorn::loadLevelsFromText(levels, text);
    if (ok != !levels.empty()) {
        std::abort();
    }
    for (const vorn::LevelDef& def : levels) {
        if (def.phase != vorn::phaseForNumber(def.number)) {
            std::abort();
        }
    }
    return 0;
}
