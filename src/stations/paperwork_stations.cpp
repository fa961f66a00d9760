#include "stations/paperwork_stations.h"

#include "gfx/graphics.h"
#include "stations/station_kit.h"

namespace vorn {

void GenericLevel::setup(const LevelDef& def, Rng& rng, const Rect& area) {
    Level::setup(def, rng, area);
    const int cx = area.x + area.w / 2;
    count = 6;
    for (int i = 0; i < 6; ++i) {
        boxes[i] = Rect{cx - 249 + 174 * (i % 3), area.y + 20 + 134 * (i / 3), 150, 110};
    }
    answer = uniformInt(rng, 0, 5);
}

LevelResult GenericLevel::update(double /*dt*/, const InputState& in, AudioSystem& audio) {
    return pickOne(boxes, count, answer, in, audio);
}

void GenericLevel::render(Graphics& g) {
    // No text at all: the odd tile is told only by its shade.
    for (int i = 0; i < count; ++i) {
        const Rect& b = boxes[i];
        const bool odd = i == answer;
        g.roundRect(b, 8, odd ? rgb(189, 146, 50) : rgb(159, 123, 42), true);
        g.rect({b.x + 6, b.y + 6, b.w - 12, b.h - 12}, odd ? rgb(16, 36, 15) : rgb(20, 20, 20), true);
    }
}

}  // namespace vorn
