#pragma once
// Small pieces several station families share, such as the click-one-box
// rule that the exam and the odd-tile station both play by.

#include "audio/audio_system.h"
#include "stations/level.h"

#include <cstdint>

namespace vorn {

// On a press, the first box (in index order) under the pointer decides: the
// answer box passes, any other fails. No press, or no box: still running.
LevelResult pickOne(const Rect* boxes, std::int32_t count, std::int32_t answer,
                    const InputState& in, AudioSystem& audio);

}  // namespace vorn
