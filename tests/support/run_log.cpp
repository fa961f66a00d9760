#include "support/run_log.h"

#include <sstream>

namespace vorn::test {

// The messages of the log's run lines, time stamps stripped, in order.
std::vector<std::string> runLines(const std::string& log) {
    std::vector<std::string> lines;
    std::istringstream in(log);
    const std::string marker = "] INFO  ";
    for (std::string line; std::getline(in, line);) {
        const std::size_t at = line.find(marker);
        if (at == std::string::npos) {
            continue;
        }
        const std::string message = line.substr(at + marker.size());
        for (const char* tag : {"RUN:", "SHIFTCARD:", "LEVEL:", "VICTORY:", "FIRED:"}) {
            if (message.rfind(tag, 0) == 0) {
                lines.push_back(message);
            }
        }
    }
    return lines;
}

}  // namespace vorn::test
