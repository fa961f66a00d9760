#include "stations/code_stations.h"
#include "support/solvers/family_solvers.h"

namespace vorn::test {

namespace {

// The pad shows nothing once a key is pressed, so the player keeps count:
// lit keys in reading order, one press each.
class KeypadSolver final : public Solver {
public:
    Intent decide(const Level& station, const Hand& hand, double /*t*/) override {
        const auto& level = dynamic_cast<const KeypadLevel&>(station);
        if (firstLook) {
            // A button still held from the last station is no key press.
            firstLook = false;
            wasDown = hand.down;
        }
        if (hand.down) {
            if (!wasDown) {
                ++pressed;
            }
            wasDown = true;
            return stayPut(hand);
        }
        wasDown = false;
        int seen = 0;
        for (int key = 0; key < 9; ++key) {
            if (level.isLit(key) && seen++ == pressed) {
                const Rect& k = level.keys[key];
                return clickCentre(hand, k);
            }
        }
        return stayPut(hand);
    }

private:
    int pressed = 0;
    bool wasDown = false;
    bool firstLook = true;
};

// Read the next code digit off the header (the dots say which one is next)
// and press the key labelled one less, the 9 standing in for a 0.
class LiarKeypadSolver final : public Solver {
public:
    Intent decide(const Level& station, const Hand& hand, double /*t*/) override {
        const auto& level = dynamic_cast<const LiarKeypadLevel&>(station);
        if (level.progress >= 3) {
            return stayPut(hand);
        }
        const int label = (level.code[level.progress] + 9) % 10;
        for (int key = 0; key < 10; ++key) {
            if (LiarKeypadLevel::shownDigit(key) == label) {
                const Rect& k = level.keys[key];
                return clickCentre(hand, k);
            }
        }
        return stayPut(hand);
    }
};

}  // namespace

std::unique_ptr<Solver> makeCodeSolver(const std::string& type) {
    if (type == "keypad") {
        return std::make_unique<KeypadSolver>();
    }
    if (type == "liarkeypad") {
        return std::make_unique<LiarKeypadSolver>();
    }
    return nullptr;
}

}  // namespace vorn::test
