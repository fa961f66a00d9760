#include "support/human_hand.h"

#include <cmath>

namespace vorn::test {

void pushMotion(int x, int y) {
    SDL_Event event{};
    event.type = SDL_MOUSEMOTION;
    event.motion.x = x;
    event.motion.y = y;
    SDL_PushEvent(&event);
}

void pushButton(bool down, int x, int y) {
    SDL_Event event{};
    event.type = down ? SDL_MOUSEBUTTONDOWN : SDL_MOUSEBUTTONUP;
    event.button.button = SDL_BUTTON_LEFT;
    event.button.state = down ? SDL_PRESSED : SDL_RELEASED;
    event.button.clicks = 1;
    event.button.x = x;
    event.button.y = y;
    SDL_PushEvent(&event);
}

void HumanHand::reset(int x, int y) {
    hand = Hand{x, y, false};
    exactX = x;
    exactY = y;
    pending.clear();
    haveCurrent = false;
    lastRelease = -1.0;
    now = 0.0;
}

void HumanHand::interrupt() {
    pending.clear();
    current = Intent{hand.x, hand.y, false};
    haveCurrent = true;
}

void HumanHand::act(const Intent& intent, double dt) {
    pending.push_back(Pending{now, intent});
    // The newest intent that is at least a reaction time old is the one the
    // hand carries out; until the first one ripens the hand rests.
    while (!pending.empty() && pending.front().at <= now - limits.reaction + 1e-9) {
        current = pending.front().intent;
        haveCurrent = true;
        pending.pop_front();
    }
    now += dt;
    if (!haveCurrent) {
        return;
    }

    const double dx = current.x - exactX;
    const double dy = current.y - exactY;
    const double dist = std::sqrt(dx * dx + dy * dy);
    const double reach = limits.maxSpeed * dt;
    if (dist <= reach) {
        exactX = current.x;
        exactY = current.y;
    } else {
        exactX += dx / dist * reach;
        exactY += dy / dist * reach;
    }
    const int nx = static_cast<int>(std::lround(exactX));
    const int ny = static_cast<int>(std::lround(exactY));
    if (nx != hand.x || ny != hand.y) {
        hand.x = nx;
        hand.y = ny;
        pushMotion(nx, ny);
    }

    const bool arrived = hand.x == current.x && hand.y == current.y;
    if (current.down && !hand.down && arrived && now - lastRelease >= limits.minGap - 1e-9) {
        hand.down = true;
        pushButton(true, hand.x, hand.y);
    } else if (!current.down && hand.down) {
        hand.down = false;
        lastRelease = now;
        pushButton(false, hand.x, hand.y);
    }
}

}  // namespace vorn::test
