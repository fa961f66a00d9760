#pragma once
// Small pieces several station families share, such as the click-one-box
// rule that the exam and the odd-tile station both play by, and the drawing
// steps many stations repeat: their own instruction line and the two-tone
// disc of targets and orbs.

#include "audio/audio_system.h"
#include "gfx/color.h"
#include "stations/level.h"

#include <cstdint>

namespace vorn {

class Graphics;

// On a press, the first box (in index order) under the pointer decides: the
// answer box passes, any other fails. No press, or no box: still running.
LevelResult pickOne(const Rect* boxes, std::int32_t count, std::int32_t answer,
                    const InputState& in, AudioSystem& audio);

// A knob or wheel worked by sideways drags: a press within reach grabs it,
// and it stays grabbed, wherever the pointer wanders, until the button comes
// up. Returns the pointer's sideways motion since the last frame while it
// is held (0 on the frame it is grabbed), and 0 when it is not.
int sidewaysDrag(const InputState& in, bool pressInReach, bool& grabbed, int& lastX);

// A move the station accepts: the click, and when that move finished the
// station, the pass sound with the Solved verdict; otherwise still running.
LevelResult acceptMove(AudioSystem& audio, bool finished);

// A station's own line of orders, small and amber, centred at the foot of its
// play area (`fromBottom` pixels above the bottom edge; 16 for nearly all).
void instructionLine(Graphics& g, const Rect& area, const char* text, int fromBottom = 16);

// A disc of radius r in c on a rim of the same colour at 40%: a filled circle
// of radius r in the dark rim colour, then one of radius r - 6 in c.
void twoToneDisc(Graphics& g, int cx, int cy, int r, Color c);

}  // namespace vorn
