// libFuzzer target for the save-file loader. Its one documented strictness is
// that a number key without digits, or with a number too large for 32 bits,
// lets the standard conversion error escape; any other exception, a crash, a
// hang or a sanitizer report is a failure.

#include "data/save_data.h"

#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <sstream>
#include <stdexcept>
#include <string>

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    std::istringstream in(std::string(reinterpret_cast<const char*>(data), size));
    vorn::SaveData save;
    try {
        vorn::loadSaveFrom(save, in);
    } catch (const std::invalid_argument& e) {
        const std::string what = e.what();
        if (what != "stol" && what != "stoi") {
            std::abort();
        }
        return 0;
    } catch (const std::out_of_range& e) {
        const std::string what = e.what();
        if (what != "stol" && what != "stoi" && what != "stol argument out of range") {
            std::abort();
        }
        return 0;
    }
    if (save.lastDifficulty < 0 || save.lastDifficulty > 3) {
        std::abort();
    }
    return 0;
}
