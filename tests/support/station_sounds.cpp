#include "support/station_sounds.h"

#include <algorithm>

namespace vorn::test {

std::vector<std::string> soundsFrom(const std::vector<std::string>& log, std::size_t from) {
    return std::vector<std::string>(log.begin() + static_cast<std::ptrdiff_t>(std::min(from, log.size())),
                                    log.end());
}

::testing::AssertionResult soundsFitVerdict(LevelResult verdict, const std::vector<std::string>& log,
                                            std::size_t from) {
    const std::vector<std::string> step = soundsFrom(log, from);
    std::string heard;
    for (const std::string& s : step) {
        heard += (heard.empty() ? "" : ", ") + s;
    }
    const auto failure = [&](const char* why) {
        return ::testing::AssertionFailure()
               << why << " (verdict " << static_cast<int>(verdict) << ", sounds: [" << heard << "])";
    };
    for (const std::string& s : step) {
        if (s == "tick" || s == "siren") {
            return failure("a station played the clock's sound");
        }
    }
    if (verdict == LevelResult::Solved && (step.empty() || step.back() != "pass")) {
        return failure("Solved without the pass sound right before it");
    }
    if (verdict == LevelResult::Failed && (step.empty() || step.back() != "fail")) {
        return failure("Failed without the fail sound right before it");
    }
    if (verdict != LevelResult::Solved && std::find(step.begin(), step.end(), "pass") != step.end()) {
        return failure("the pass sound without Solved");
    }
    return ::testing::AssertionSuccess();
}

}  // namespace vorn::test
