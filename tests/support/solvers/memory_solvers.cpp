// The memory family's solvers. Each one plays like an attentive person: it
// notes what the station shows while it is shown (a pad while it is lit, a
// card's face while it is up, the lamp while it burns, a spot while it
// glows) and works only from those notes, never from the station's hidden
// state. Clicks are planned a reaction time ahead, as a player who knows
// where the next click goes does not wait to see the last one register.

#include "stations/memory_stations.h"
#include "support/play_area.h"
#include "support/solvers/family_solvers.h"

#include <algorithm>
#include <vector>

namespace vorn::test {

namespace {

constexpr double kReaction = 0.15;   // a person's lag from deciding to acting
constexpr double kSpeed = 2400.0;    // px/s, the quickest flick of the wrist
constexpr double kTap = 0.034;       // a plain click holds the button about two frames
constexpr double kRest = 0.07;       // let go a little longer than the hand's 0.05 s

// Plans clicks: send the pointer to a target, and once it must have arrived
// (judged from where it was sent before, since what the eye sees of the hand
// is a reaction time old), hold the button for a while, then let go.
class Tapper {
public:
    enum class Phase { idle, moving, holding, resting };

    // The first call tells the tapper where the resting hand is.
    void start(const Hand& hand) {
        if (!started) {
            started = true;
            tx = hand.x;
            ty = hand.y;
            maybeAt.assign(1, Point{tx, ty});
        }
    }

    // Sends the pointer to (x, y) for a click held `hold` seconds.
    void aim(int x, int y, double t, double hold) {
        if (phase == Phase::moving && t < readyAt) {
            // Changed course mid-flight: the pointer is somewhere on the
            // path so far, so the arrival is judged from its farthest point.
            maybeAt.push_back(Point{tx, ty});
        } else {
            maybeAt.assign(1, Point{tx, ty});
        }
        double far = 0.0;
        for (const Point& p : maybeAt) {
            far = std::max(far, distance(p.x, p.y, x, y));
        }
        tx = x;
        ty = y;
        holdFor = hold;
        readyAt = t + far / kSpeed + 0.035;
        phase = Phase::moving;
    }

    // One frame of the plan. The press waits for `mayPress` once the pointer
    // has arrived; `pressedNow` tells the caller the button goes down now.
    Intent step(double t, bool mayPress) {
        pressedNow = false;
        switch (phase) {
            case Phase::moving:
                if (t >= readyAt && mayPress) {
                    phase = Phase::holding;
                    until = t + holdFor;
                    pressedNow = true;
                    return Intent{tx, ty, true};
                }
                break;
            case Phase::holding:
                if (t < until - 1e-9) {
                    return Intent{tx, ty, true};
                }
                phase = Phase::resting;
                until = t + kRest;
                break;
            case Phase::resting:
                if (t >= until - 1e-9) {
                    phase = Phase::idle;
                }
                break;
            case Phase::idle:
                break;
        }
        return Intent{tx, ty, false};
    }

    bool idle() const { return phase == Phase::idle; }
    bool moving() const { return phase == Phase::moving; }

    Phase phase = Phase::idle;
    bool pressedNow = false;
    int tx = kCanvasCentreX;
    int ty = kCanvasCentreY;

private:
    struct Point {
        int x;
        int y;
    };
    bool started = false;
    std::vector<Point> maybeAt;
    double readyAt = 0.0;
    double holdFor = kTap;
    double until = 0.0;
};

// Simon: note each flash as it lights, then play the round back. "WATCH"
// says when a round starts, and the status line says how long it is, so the
// first press can be timed to land just after the show ends.
class SimonSolver final : public Solver {
public:
    Intent decide(const Level& station, const Hand& hand, double t) override {
        const auto& s = dynamic_cast<const SimonLevel&>(station);
        tap.start(hand);
        if (s.showing && (first || !wasShowing)) {
            // A new round. A pad still lit now is the player's own last
            // press, not the first flash.
            seen.clear();
            prevLit = -1;
            roundStart = t;
            clicked = 0;
        } else if (s.showing) {
            if (s.litPad >= 0 && s.litPad != prevLit) {
                seen.push_back(s.litPad);
            }
            prevLit = s.litPad;
        }
        first = false;
        wasShowing = s.showing;

        const int length = static_cast<int>(s.sequence.size());   // "len n/m"
        if (tap.idle() && clicked < static_cast<int>(seen.size()) && clicked < length) {
            const Rect& pad = s.pads[seen[static_cast<std::size_t>(clicked)]];
            tap.aim(centreX(pad), centreY(pad), t, kTap);
        }
        // A press during the show is lost; the show ends length x 0.55 s
        // after "WATCH" appeared, and the end frame itself takes no press.
        const bool allSeen = static_cast<int>(seen.size()) >= length;
        const bool mayPress = allSeen && t >= roundStart + length * 0.55 - kReaction + 0.05;
        const Intent intent = tap.step(t, mayPress);
        if (tap.pressedNow) {
            ++clicked;
        }
        return intent;
    }

private:
    Tapper tap;
    bool first = true;
    bool wasShowing = false;
    std::vector<int> seen;
    int prevLit = -1;
    double roundStart = 0.0;
    int clicked = 0;
};

// Anti-Simon: tick off pads that are not flashing, pressing only when the
// flash cannot move before the press lands. The flash moves on a 0.9 s beat
// counted from the station's start and from every move the eye catches (a
// redraw onto the same pad shows nothing, so the beat may drift a little).
class AntiSimonSolver final : public Solver {
public:
    Intent decide(const Level& station, const Hand& hand, double t) override {
        const auto& s = dynamic_cast<const AntiSimonLevel&>(station);
        tap.start(hand);
        if (s.flashingPad != lastFlash) {
            // The station just appeared, or the flash was seen to move.
            lastFlash = s.flashingPad;
            beat = t;
        }
        for (int p = 0; p < 4; ++p) {
            // A press that never registered is forgotten and tried again.
            if (claimed[p] && !s.done[p] && t > claimedAt[p] + 0.3) {
                claimed[p] = false;
            }
        }
        if (tap.idle() || tap.moving()) {
            const bool keep = target >= 0 && !s.done[target] && !claimed[target] &&
                              target != s.flashingPad;
            if (!keep) {
                target = -1;
                for (int p = 0; p < 4 && target < 0; ++p) {
                    if (!s.done[p] && !claimed[p] && p != s.flashingPad) {
                        target = p;
                    }
                }
                if (target >= 0) {
                    tap.aim(centreX(s.pads[target]), centreY(s.pads[target]), t, kTap);
                }
            }
        }
        const bool mayPress = target >= 0 && target != s.flashingPad && quiet(t);
        const Intent intent = tap.step(t, mayPress);
        if (tap.pressedNow) {
            claimed[target] = true;
            claimedAt[target] = t;
            target = -1;
        }
        return intent;
    }

private:
    // True when no move of the flash is due between now and the moment a
    // press decided now reaches the station.
    bool quiet(double t) const {
        const double from = t;
        const double to = t + kReaction + 0.05;
        for (int k = 1; k < 100; ++k) {
            const double early = beat + k * 0.9 - 0.02;
            const double late = beat + k * 0.92 + 0.02;
            if (early > to) {
                break;
            }
            if (late >= from) {
                return false;
            }
        }
        return true;
    }

    Tapper tap;
    int lastFlash = -1;
    double beat = 0.0;
    int target = -1;
    bool claimed[4]{};
    double claimedAt[4]{};
};

// Sequence: right to left, as the instruction says.
class SequenceSolver final : public Solver {
public:
    Intent decide(const Level& station, const Hand& hand, double t) override {
        const auto& s = dynamic_cast<const SequenceLevel&>(station);
        tap.start(hand);
        if (tap.idle() && next >= 0) {
            const Rect& sw = s.switches[next];
            tap.aim(centreX(sw), centreY(sw), t, kTap);
            --next;
        }
        return tap.step(t, true);
    }

private:
    Tapper tap;
    int next = 2;
};

// Recall: note each spot while it glows, wait for the prompt, then click the
// notes back in order. The pointer waits over the first spot meanwhile.
class RecallSolver final : public Solver {
public:
    Intent decide(const Level& station, const Hand& hand, double t) override {
        const auto& s = dynamic_cast<const RecallLevel&>(station);
        tap.start(hand);
        if (s.showing && s.index < s.spotCount && s.index == static_cast<int>(notes.size())) {
            notes.push_back(s.spots[s.index]);
        }
        if (tap.idle() && clicked < static_cast<int>(notes.size())) {
            const RecallLevel::Spot& spot = notes[static_cast<std::size_t>(clicked)];
            tap.aim(spot.x, spot.y, t, kTap);
        }
        const Intent intent = tap.step(t, !s.showing);
        if (tap.pressedNow) {
            ++clicked;
        }
        return intent;
    }

private:
    Tapper tap;
    std::vector<RecallLevel::Spot> notes;
    int clicked = 0;
};

// Morse: time each burn of the lamp (a long one lasts three times a short
// one), then key them back: a long hold well past the limit, a short tap
// well under it.
class MorseSolver final : public Solver {
public:
    Intent decide(const Level& station, const Hand& hand, double t) override {
        const auto& s = dynamic_cast<const MorseLevel&>(station);
        tap.start(hand);
        if (s.showing) {
            if (s.lampOn && !wasOn) {
                onAt = t;
            } else if (!s.lampOn && wasOn) {
                notes.push_back(t - onAt > 0.4);
            }
            wasOn = s.lampOn;
        }
        if (tap.idle() && keyed < static_cast<int>(notes.size())) {
            const bool isLong = notes[static_cast<std::size_t>(keyed)];
            tap.aim(centreX(s.key), centreY(s.key), t, isLong ? 0.55 : 0.1);
        }
        const Intent intent = tap.step(t, !s.showing);
        if (tap.pressedNow) {
            ++keyed;
        }
        return intent;
    }

private:
    Tapper tap;
    std::vector<bool> notes;
    bool wasOn = false;
    double onAt = 0.0;
    int keyed = 0;
};

// Memory: remember every face seen since the first flip (nothing before it
// survives the tidy-up), finish a pair whenever both halves are known, and
// otherwise turn a card never seen. After each click it looks to see what
// turned up; a wrong pair stays up 0.6 s, and the next click is timed to
// land just after the cards go down.
class MemorySolver final : public Solver {
public:
    Intent decide(const Level& station, const Hand& hand, double t) override {
        const auto& s = dynamic_cast<const MemoryLevel&>(station);
        tap.start(hand);
        std::vector<int> up;
        for (int pos = 0; pos < s.cardCount; ++pos) {
            const int c = s.dealOrder[pos];
            if (s.matched[c]) {
                known[pos] = kGone;
            } else if (s.revealed[c]) {
                known[pos] = s.pairValue[c];
                up.push_back(pos);
            }
        }
        if (up.size() >= 2) {
            if (wrongPairSeen < 0.0) {
                wrongPairSeen = t;
            }
        } else {
            wrongPairSeen = -1.0;
        }

        if (!tap.idle() || t < lookAgainAt) {
            return tap.step(t, true);
        }
        // A wrong pair is still up: a click landing before it goes down is lost.
        const bool mayClick = up.size() < 2 || t >= wrongPairSeen + 0.6 - kReaction + 0.05;
        if (!mayClick) {
            return tap.step(t, false);
        }
        if (queued >= 0) {
            click(queued, s, t, true);
            queued = -1;
        } else if (up.size() == 1) {
            const int partner = partnerOf(up[0], s.cardCount);
            click(partner >= 0 ? partner : unseen(s.cardCount), s, t, true);
        } else {
            // Nothing up (or the wrong pair about to go down): a pair known
            // from earlier looks goes in two clicks without looking between.
            int second = -1;
            const int first = knownPair(s.cardCount, second);
            if (first >= 0) {
                click(first, s, t, false);
                queued = second;
            } else {
                click(unseen(s.cardCount), s, t, true);
            }
        }
        return tap.step(t, true);
    }

private:
    static constexpr int kUnknown = -1;
    static constexpr int kGone = -2;

    void click(int pos, const MemoryLevel& s, double t, bool thenLook) {
        if (pos < 0) {
            return;
        }
        const Rect& r = s.cards[pos];
        tap.aim(centreX(r), centreY(r), t, kTap);
        // The result shows a reaction time after the click is decided.
        lookAgainAt = thenLook ? t + kReaction + 0.04 : 0.0;
    }

    // A face-down position already seen to hold the face that is up at `pos`.
    int partnerOf(int pos, int count) const {
        for (int p = 0; p < count; ++p) {
            if (p != pos && known[p] == known[pos]) {
                return p;
            }
        }
        return -1;
    }

    int knownPair(int count, int& second) const {
        for (int a = 0; a < count; ++a) {
            for (int b = a + 1; b < count && known[a] >= 0; ++b) {
                if (known[a] == known[b]) {
                    second = b;
                    return a;
                }
            }
        }
        return -1;
    }

    int unseen(int count) const {
        for (int p = 0; p < count; ++p) {
            if (known[p] == kUnknown) {
                return p;
            }
        }
        return -1;
    }

    Tapper tap;
    int known[12] = {-1, -1, -1, -1, -1, -1, -1, -1, -1, -1, -1, -1};
    double wrongPairSeen = -1.0;
    double lookAgainAt = 0.0;
    int queued = -1;
};

}  // namespace

std::unique_ptr<Solver> makeMemorySolver(const std::string& type) {
    if (type == "simon") return std::make_unique<SimonSolver>();
    if (type == "antisimon") return std::make_unique<AntiSimonSolver>();
    if (type == "sequence") return std::make_unique<SequenceSolver>();
    if (type == "recall") return std::make_unique<RecallSolver>();
    if (type == "memory") return std::make_unique<MemorySolver>();
    if (type == "morse") return std::make_unique<MorseSolver>();
    return nullptr;
}

}  // namespace vorn::test
