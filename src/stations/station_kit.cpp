#include "stations/station_kit.h"

#include "gfx/graphics.h"

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

int sidewaysDrag(const InputState& in, bool pressInReach, bool& grabbed, int& lastX) {
    if (in.mousePressed && pressInReach) {
        grabbed = true;
        lastX = in.mouseX;
    }
    if (!in.mouseDown) {
        grabbed = false;
    }
    if (!grabbed) {
        return 0;
    }
    const int dx = in.mouseX - lastX;
    lastX = in.mouseX;
    return dx;
}

LevelResult acceptMove(AudioSystem& audio, bool finished) {
    audio.playClick();
    if (!finished) {
        return LevelResult::Running;
    }
    audio.playPass();
    return LevelResult::Solved;
}

void instructionLine(Graphics& g, const Rect& area, const char* text, int fromBottom) {
    g.text(text, area.x + area.w / 2, area.y + area.h - fromBottom, TextSize::Small,
           palette::playAreaNote, true, false);
}

void twoToneDisc(Graphics& g, int cx, int cy, int r, Color c) {
    g.circle(cx, cy, r, scaled(c, 0.4), true);
    g.circle(cx, cy, r - 6, c, true);
}

}  // namespace vorn
