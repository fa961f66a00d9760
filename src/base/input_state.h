#pragma once
// One frame's input, filled by the event pump and read by the screens and
// every station. The pointer and the held button persist across frames; the
// edge fields are cleared at the start of every frame.

#include <cstdint>

namespace vorn {

struct InputState {
    std::int32_t mouseX = 0;   // canvas pixels, 0..1365
    std::int32_t mouseY = 0;   // canvas pixels, 0..767
    bool mouseDown = false;    // left button held
    bool mousePressed = false; // left button went down this frame
    bool mouseReleased = false;
    bool up = false;           // W or Up
    bool down = false;         // S or Down
    bool left = false;         // A or Left
    bool right = false;        // D or Right
    bool confirm = false;      // Enter, Space or keypad Enter
    bool escape = false;
    bool anyKey = false;

    void clearEdges() {
        mousePressed = mouseReleased = false;
        up = down = left = right = confirm = escape = anyKey = false;
    }
};

}  // namespace vorn
