#pragma once
// The sounds a station asked for, read from the audio system's request log,
// and the rule every station keeps: the pass sound is its last request
// before it reports Solved, the fail sound its last before Failed; pass is
// never asked for while it keeps running; and the clock's tick, tock and
// siren are never a station's to play.

#include "stations/level.h"

#include <gtest/gtest.h>

#include <cstddef>
#include <string>
#include <vector>

namespace vorn::test {

// The requests made from position `from` of the log on.
std::vector<std::string> soundsFrom(const std::vector<std::string>& log, std::size_t from);

// Whether the requests one update made (log[from..]) fit the verdict it gave.
::testing::AssertionResult soundsFitVerdict(LevelResult verdict, const std::vector<std::string>& log,
                                            std::size_t from);

}  // namespace vorn::test
