#pragma once
// Makes a station from its catalogue type string. The comparison is exact and
// case-sensitive; anything the table does not name (an empty string, a typo,
// a station from a newer catalogue) becomes the fallback GenericLevel, so
// every catalogue entry is playable.

#include "stations/level.h"

#include <memory>
#include <string>

namespace vorn {

std::unique_ptr<Level> createLevel(const std::string& type);

}  // namespace vorn
