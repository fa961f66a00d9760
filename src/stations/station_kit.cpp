#include "stations/station_kit.h"

namespace vorn {

LevelResult pickOne(const Rect* boxes, std::int32_t count, std::int32_t answer,
                    const InputState& in, AudioSystem& audio) {
    if (!in.mousePressed) {
        return LevelResult::Running;
    }
    for (std::int32_t i = 0; i < count; ++i) {
        if (contains(boxes[i], in.mouseX, in.mouseY)) {
            if (i == answer) {
                audio.playPass();
                return LevelResult::Solved;
            }
            audio.playFail();
            return LevelResult::Failed;
        }
    }
    return LevelResult::Running;
}

}  // namespace vorn
