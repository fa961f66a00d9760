#include "stations/paperwork_stations.h"
#include "support/play_area.h"
#include "support/solvers/family_solvers.h"

#include <cmath>

namespace vorn::test {

namespace {

// Where the hand waits when there is nothing to click yet: the middle of the
// text, away from the agree button.
constexpr int kRestX = kPlayCentreX;
constexpr int kRestY = 300;

// The agreement: ignore I AGREE, find the green line and click it while it
// is inside the text box. The line keeps moving, so aim where it will be
// when the click lands: a reaction time and a frame from now.
class EulaSolver final : public Solver {
public:
    Intent decide(const Level& station, const Hand& hand, double /*t*/) override {
        const auto& level = dynamic_cast<const EulaLevel&>(station);
        const Rect& area = level.playArea;
        const int top = area.y + 20;
        const int bottom = top + level.viewHeight;
        // Where the green line is drawn now; not on screen, nothing to aim at.
        int y = static_cast<int>(area.y + 30 + EulaLevel::kLinePitch * level.exitLine - level.scroll);
        if (y < top || y > bottom) {
            y += EulaLevel::kLoopLength;
        }
        if (y < top || y > bottom) {
            return Intent{kRestX, kRestY, false};
        }
        const double lead = 0.15 + 1.0 / 60.0;
        const int ahead = y - static_cast<int>(std::ceil(level.speed * lead));
        // Stay well inside the band where the line answers; a line too close
        // to the top is left to come round again.
        if (ahead < area.y + 40 || ahead > area.y + 20 + level.viewHeight) {
            return Intent{kRestX, kRestY, false};
        }
        return clickAt(hand, area.x + 150, ahead + 9);
    }
};

// The settings page: leave the toggle alone and proceed.
class SettingsSolver final : public Solver {
public:
    Intent decide(const Level& station, const Hand& hand, double /*t*/) override {
        const auto& level = dynamic_cast<const SettingsLevel&>(station);
        const Rect& b = level.enabled ? level.toggle : level.proceedButton;
        return clickCentre(hand, b);
    }
};

// The exam: the box with no answer written in it.
class QuizSolver final : public Solver {
public:
    Intent decide(const Level& station, const Hand& hand, double /*t*/) override {
        const auto& level = dynamic_cast<const QuizLevel&>(station);
        const Rect& b = level.boxes[level.answer];
        return clickCentre(hand, b);
    }
};

// The reading test: read the word, click the swatch of the colour it names.
class StroopSolver final : public Solver {
public:
    Intent decide(const Level& station, const Hand& hand, double /*t*/) override {
        const auto& level = dynamic_cast<const StroopLevel&>(station);
        for (int i = 0; i < 4; ++i) {
            if (level.swatchColors[i] == level.word) {
                const Rect& b = level.swatches[i];
                return clickCentre(hand, b);
            }
        }
        return stayPut(hand);
    }
};

// The stamps: a known fraud gets REJECTED, whichever side it is on.
class StampSolver final : public Solver {
public:
    Intent decide(const Level& station, const Hand& hand, double /*t*/) override {
        const auto& level = dynamic_cast<const StampLevel&>(station);
        const Rect& b = level.rejectedPad();
        return clickCentre(hand, b);
    }
};

// The conveyor: the knob has to go towards the mark, so press the button
// that points away from it, once per step, until the knob sits on the mark.
class ReverseSolver final : public Solver {
public:
    Intent decide(const Level& station, const Hand& hand, double /*t*/) override {
        const auto& level = dynamic_cast<const ReverseLevel&>(station);
        const Rect& b = level.position < level.target ? level.leftButton : level.rightButton;
        return clickCentre(hand, b);
    }
};

// The odd tile is the lighter one: look, then click it.
class GenericSolver final : public Solver {
public:
    Intent decide(const Level& station, const Hand& hand, double /*t*/) override {
        const auto& level = dynamic_cast<const GenericLevel&>(station);
        const Rect& b = level.boxes[level.answer];
        return clickCentre(hand, b);
    }
};

}  // namespace

std::unique_ptr<Solver> makePaperworkSolver(const std::string& type) {
    if (type == "eula") {
        return std::make_unique<EulaSolver>();
    }
    if (type == "settings") {
        return std::make_unique<SettingsSolver>();
    }
    if (type == "quiz") {
        return std::make_unique<QuizSolver>();
    }
    if (type == "stroop") {
        return std::make_unique<StroopSolver>();
    }
    if (type == "stamp") {
        return std::make_unique<StampSolver>();
    }
    if (type == "reverse") {
        return std::make_unique<ReverseSolver>();
    }
    return std::make_unique<GenericSolver>();
}

}  // namespace vorn::test
