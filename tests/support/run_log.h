#pragma once
// Reading a session log back the way the run tests compare it: only the run's
// own lines (RUN, SHIFTCARD, LEVEL, VICTORY, FIRED), time stamps stripped.

#include <string>
#include <vector>

namespace vorn::test {

std::vector<std::string> runLines(const std::string& log);

}  // namespace vorn::test
