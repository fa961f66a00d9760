// Solvers for the aim and pointer stations. Several of them need a press to
// land at a known moment (a pop-up that is about to vanish, a dot that keeps
// drifting, two clicks inside 0.4 s), so they anticipate as a practised
// player does: they know their own reaction time and hand speed, remember
// what they asked their hand to do, and work out where the hand will be when
// the order given now is carried out.

#include "stations/aim_stations.h"
#include "support/play_area.h"
#include "support/solvers/family_solvers.h"

#include <algorithm>
#include <cmath>
#include <deque>
#include <vector>

namespace vorn::test {

namespace {

struct Point {
    double x = 0.0;
    double y = 0.0;
};

double dist(double x1, double y1, double x2, double y2) {
    return std::hypot(x2 - x1, y2 - y1);
}

// The player's feel for their own hand: the orders still on their way to it,
// and where it will stand when the order being given now is carried out.
class HandForecast {
public:
    // The frame time, learnt from the station clock's steps.
    void observe(double t) {
        if (haveT && t - lastT > 1e-6) {
            dt = t - lastT;
        }
        haveT = true;
        lastT = t;
    }

    // Frames between giving an order and the hand acting on it.
    int lag() const { return static_cast<int>(std::ceil(limits.reaction / dt - 1e-6)); }

    // Station time of the update that first sees what an order given at t does.
    double effectAt(double t) const { return t + (lag() + 1) * dt; }

    // Where the hand will be after carrying out an order to go to (x, y) given now.
    Point predict(const Hand& hand, int x, int y) const {
        Point p{static_cast<double>(hand.x), static_cast<double>(hand.y)};
        const int n = lag();
        const int start = static_cast<int>(sent.size()) - n;
        for (int i = start; i < static_cast<int>(sent.size()); ++i) {
            if (i >= 0) {
                p = step(p, sent[static_cast<std::size_t>(i)].x, sent[static_cast<std::size_t>(i)].y);
            }
        }
        return step(p, x, y);
    }

    // True when an order to press at (x, y) given now will find the hand there.
    bool arrives(const Hand& hand, int x, int y) const {
        const Point p = predict(hand, x, y);
        return std::lround(p.x) == x && std::lround(p.y) == y;
    }

    Intent send(const Intent& intent) {
        sent.push_back(intent);
        while (sent.size() > 64) {
            sent.pop_front();
        }
        return intent;
    }

    Limits limits;
    double dt = 1.0 / 60.0;

private:
    Point step(Point p, int x, int y) const {
        const double dx = x - p.x;
        const double dy = y - p.y;
        const double d = std::hypot(dx, dy);
        const double reach = limits.maxSpeed * dt;
        if (d <= reach) {
            return Point{static_cast<double>(x), static_cast<double>(y)};
        }
        return Point{p.x + dx / d * reach, p.y + dy / d * reach};
    }

    std::deque<Intent> sent;
    bool haveT = false;
    double lastT = 0.0;
};

// Swat greens, earliest to vanish first, from a spot no red covers, and never
// while a new pop-up could appear under the hand before the swat lands.
class WhackSolver final : public Solver {
public:
    Intent decide(const Level& station, const Hand& hand, double t) override {
        const auto& level = dynamic_cast<const WhackLevel&>(station);
        hands.observe(t);
        const double dt = hands.dt;
        watch(level, t);

        const double pressAt = hands.effectAt(t);
        ++framesSinceDown;

        // The earliest-vanishing green that is not already being swatted and
        // will still be there when a swat ordered now lands.
        int best = -1;
        Point bestSpot;
        double bestDeadline = 1e9;
        for (int i = 0; i < 6; ++i) {
            const WhackLevel::Slot& s = level.slots[i];
            if (!s.active || s.red || claimedUntil[i] >= t) {
                continue;
            }
            const double deadline = seenAt[i] + 1.1 - 3 * dt;
            Point spot;
            if (deadline < pressAt || !safeSpot(level, s, spot)) {
                continue;
            }
            if (deadline < bestDeadline) {
                best = i;
                bestSpot = spot;
                bestDeadline = deadline;
            }
        }
        if (best < 0) {
            return hands.send(Intent{aim.x, aim.y, false});
        }
        aim = Intent{static_cast<int>(std::lround(bestSpot.x)),
                     static_cast<int>(std::lround(bestSpot.y)), false};
        const bool press = framesSinceDown >= 4 && !spawnDue(t, pressAt) &&
                           hands.arrives(hand, aim.x, aim.y);
        if (!press) {
            return hands.send(aim);
        }
        framesSinceDown = 0;
        claimedUntil[best] = pressAt + 2 * dt;
        return hands.send(Intent{aim.x, aim.y, true});
    }

private:
    // Notes when each pop-up appeared, and the beat they appear on.
    void watch(const WhackLevel& level, double t) {
        for (int i = 0; i < 6; ++i) {
            const WhackLevel::Slot& s = level.slots[i];
            const bool fresh = s.active && (!wasActive[i] || s.x != lastX[i] || s.y != lastY[i]);
            if (fresh) {
                seenAt[i] = t;
                claimedUntil[i] = -1.0;
                if (lastSpawn >= 0.0 && t - lastSpawn > 0.4 && t - lastSpawn < 0.7) {
                    beat = t - lastSpawn;
                }
                lastSpawn = t;
            }
            wasActive[i] = s.active;
            lastX[i] = s.x;
            lastY[i] = s.y;
        }
    }

    // Could a pop-up appear after what was last seen and by the time of the press?
    bool spawnDue(double t, double pressAt) const {
        if (lastSpawn < 0.0) {
            return true;   // the beat is not known yet
        }
        const double slack = 2.5 * hands.dt;
        double next = lastSpawn + beat;
        while (next + slack < t) {
            next += beat;   // a beat that found the board full shows nothing
        }
        return next - slack <= pressAt;
    }

    // A point on the green, well clear of every red.
    static bool safeSpot(const WhackLevel& level, const WhackLevel::Slot& green, Point& out) {
        static const double offsets[][2] = {{0, 0},    {10, 0},  {-10, 0}, {0, 10},  {0, -10},
                                            {7, 7},    {-7, 7},  {7, -7},  {-7, -7}, {18, 0},
                                            {-18, 0},  {0, 18},  {0, -18}, {13, 13}, {-13, 13},
                                            {13, -13}, {-13, -13}};
        for (const auto& o : offsets) {
            const Point p{green.x + o[0], green.y + o[1]};
            bool clear = true;
            for (const WhackLevel::Slot& s : level.slots) {
                if (s.active && s.red && dist(p.x, p.y, s.x, s.y) < s.radius + 6) {
                    clear = false;
                    break;
                }
            }
            if (clear) {
                out = p;
                return true;
            }
        }
        return false;
    }

    HandForecast hands;
    Intent aim{kPlayCentreX, kPlayCentreY, false};
    int framesSinceDown = 100;
    bool wasActive[6]{};
    int lastX[6]{};
    int lastY[6]{};
    double seenAt[6]{};
    double claimedUntil[6]{-1.0, -1.0, -1.0, -1.0, -1.0, -1.0};
    double lastSpawn = -1.0;
    double beat = 0.55;
};

// Go to the lit desk and, once there with time to spare before the light
// moves on, click twice four frames apart.
class DoubleClickSolver final : public Solver {
public:
    Intent decide(const Level& station, const Hand& hand, double t) override {
        const auto& level = dynamic_cast<const DoubleClickLevel&>(station);
        hands.observe(t);
        const double dt = hands.dt;
        // The light keeps a steady beat from the moment the desks appear;
        // each visible move sets it again.
        if (level.litCell != lastLit) {
            if (lastLit >= 0) {
                beatStart = t;
            }
            lastLit = level.litCell;
        }
        while (t > beatStart + 1.4 + 3 * dt) {
            beatStart += 1.4;   // it moved to the desk it was already on
        }

        const Rect& c = level.cells[level.litCell];
        const int x = c.x + c.w / 2;
        const int y = c.y + c.h / 2;
        ++frame;
        if (frame == secondPress) {
            return hands.send(Intent{x, y, true});
        }
        const double pressAt = hands.effectAt(t);
        const bool inBeat = pressAt + 4 * dt < beatStart + 1.4 - 3 * dt;
        if (frame > secondPress + 3 && inBeat && hands.arrives(hand, x, y)) {
            secondPress = frame + 4;
            return hands.send(Intent{x, y, true});
        }
        return hands.send(Intent{x, y, false});
    }

private:
    HandForecast hands;
    int lastLit = -1;
    double beatStart = 0.0;
    long frame = 0;
    long secondPress = -100;
};

// Follow the dot's drift, bounces included, and press where it will be when
// the press lands.
class PrecisionSolver final : public Solver {
public:
    Intent decide(const Level& station, const Hand& hand, double t) override {
        const auto& level = dynamic_cast<const PrecisionLevel&>(station);
        hands.observe(t);
        const double dt = hands.dt;
        const Rect& p = level.playArea;
        const double r = level.ringRadius;
        auto outX = [&](double x) { return x < p.x + r || x > p.x + p.w - r; };
        auto outY = [&](double y) { return y < p.y + r || y > p.y + p.h - r; };

        if (!seen || t - lastT < 1e-9) {
            seen = true;
            lastT = t;
            lastDot = Point{level.x, level.y};
            return hands.send(Intent{static_cast<int>(level.x), static_cast<int>(level.y), false});
        }
        // The drift as seen over the last frame; at a wall it has just turned.
        double vx = (level.x - lastDot.x) / (t - lastT);
        double vy = (level.y - lastDot.y) / (t - lastT);
        vx = outX(level.x) ? -vx : vx;
        vy = outY(level.y) ? -vy : vy;
        lastDot = Point{level.x, level.y};
        lastT = t;

        Point dot{level.x, level.y};
        const int frames = hands.lag() + 1;
        for (int i = 0; i < frames; ++i) {
            dot.x += vx * dt;
            dot.y += vy * dt;
            vx = outX(dot.x) ? -vx : vx;
            vy = outY(dot.y) ? -vy : vy;
        }
        const int x = static_cast<int>(std::lround(dot.x));
        const int y = static_cast<int>(std::lround(dot.y));
        const bool press = ++sinceDown >= 4 && hands.arrives(hand, x, y);
        if (press) {
            sinceDown = 0;
        }
        return hands.send(Intent{x, y, press});
    }

private:
    HandForecast hands;
    bool seen = false;
    double lastT = 0.0;
    Point lastDot;
    int sinceDown = 100;
};

// Dash to just outside its flinching distance, then creep in slowly and only
// click once it has turned green.
class DecoySolver final : public Solver {
public:
    Intent decide(const Level& station, const Hand& hand, double t) override {
        const auto& level = dynamic_cast<const DecoyLevel&>(station);
        const double dt = t - lastT > 1e-6 ? t - lastT : 1.0 / 60.0;
        lastT = t;
        if (!started) {
            started = true;
            creep = Point{static_cast<double>(hand.x), static_cast<double>(hand.y)};
        }
        const double d = dist(creep.x, creep.y, level.x, level.y);
        if (d > 125.0) {
            // Quick is fine out here: it only flinches at a fast hand inside 120 px.
            creep = Point{level.x + (creep.x - level.x) / d * 122.0,
                          level.y + (creep.y - level.y) / d * 122.0};
        } else if (d > 1.0) {
            const double stepLen = std::min(d, kCreepSpeed * dt);
            creep.x += (level.x - creep.x) / d * stepLen;
            creep.y += (level.y - creep.y) / d * stepLen;
        }
        const int x = static_cast<int>(std::lround(creep.x));
        const int y = static_cast<int>(std::lround(creep.y));
        // Green (calm 0.9) means it trusts the hand; the press lands where the
        // hand already is, so nothing moves quickly on the way.
        const bool green = level.calm >= 0.9;
        const bool close = dist(hand.x, hand.y, level.x, level.y) < 20.0 &&
                           dist(x, y, level.x, level.y) < 20.0;
        return Intent{x, y, green && close && !hand.down};
    }

private:
    // Slow enough that a rounded pixel step never reads as a hasty hand.
    static constexpr double kCreepSpeed = 75.0;
    bool started = false;
    double lastT = 0.0;
    Point creep;
};

// Grab the track right over the mark and hold on until it has sat there long enough.
class GreasedSolver final : public Solver {
public:
    Intent decide(const Level& station, const Hand& /*hand*/, double /*t*/) override {
        const auto& level = dynamic_cast<const GreasedLevel&>(station);
        const Rect& tr = level.track;
        const int x = tr.x + static_cast<int>(std::lround(tr.w * level.mark));
        return Intent{x, tr.y + tr.h / 2, true};
    }
};

// Read how far the spot is from the glow at every point the hand passes,
// sweep a little to get bearings, then work out where the distances meet.
// Press only once the glow says the hand is on it.
class HotColdSolver final : public Solver {
public:
    Intent decide(const Level& station, const Hand& hand, double /*t*/) override {
        const auto& level = dynamic_cast<const HotColdLevel&>(station);
        const Rect& p = level.playArea;
        const double reach = std::hypot(static_cast<double>(p.w), static_cast<double>(p.h)) * 0.5;
        if (!started) {
            // Go to the middle of the floor first, wherever the hand was
            // left, then sweep across it to feel which way it warms.
            started = true;
            startX = hand.x;
            startY = hand.y;
            const int cx = p.x + p.w / 2;
            const int cy = p.y + p.h / 2;
            sweep[0] = Intent{cx, cy, false};
            sweep[1] = Intent{cx - 120, cy - 60, false};
            sweep[2] = Intent{cx + 120, cy - 60, false};
        }
        // The glow only follows the hand once the hand has moved.
        moved = moved || hand.x != startX || hand.y != startY;
        // The glow's red shade, read to the nearest step.
        const int shade = static_cast<int>(20 + 200 * level.heat);
        const double heat = (shade - 20 + 0.5) / 200.0;
        const double d = (1.0 - heat) * reach;
        if (moved && waypoint >= 1 && shade > 20) {
            samples.push_back(Sample{static_cast<double>(hand.x), static_cast<double>(hand.y), d});
        }
        if (waypoint < 3) {
            if (hand.x == sweep[waypoint].x && hand.y == sweep[waypoint].y) {
                ++waypoint;
            }
            if (waypoint < 3) {
                return sweep[waypoint];
            }
        }
        Point guess;
        if (!locate(guess)) {
            return Intent{hand.x, hand.y + 40, false};
        }
        const int x = static_cast<int>(std::lround(guess.x));
        const int y = static_cast<int>(std::lround(guess.y));
        const bool onIt = moved && hand.x == x && hand.y == y && d < 30.0;
        return Intent{x, y, onIt && !hand.down};
    }

private:
    struct Sample {
        double x, y, d;
    };

    // Least squares over (x - xi)^2 + (y - yi)^2 = di^2, linear in x, y and
    // x^2 + y^2; coordinates are taken about the first sample to keep it tame.
    bool locate(Point& out) const {
        if (samples.size() < 3) {
            return false;
        }
        const double ox = samples[0].x;
        const double oy = samples[0].y;
        double a[3][4] = {};
        for (const Sample& s : samples) {
            const double xi = s.x - ox;
            const double yi = s.y - oy;
            const double row[3] = {-2 * xi, -2 * yi, 1.0};
            const double rhs = s.d * s.d - xi * xi - yi * yi;
            for (int i = 0; i < 3; ++i) {
                for (int j = 0; j < 3; ++j) {
                    a[i][j] += row[i] * row[j];
                }
                a[i][3] += row[i] * rhs;
            }
        }
        for (int c = 0; c < 3; ++c) {
            int pivot = c;
            for (int r = c + 1; r < 3; ++r) {
                if (std::fabs(a[r][c]) > std::fabs(a[pivot][c])) {
                    pivot = r;
                }
            }
            if (std::fabs(a[pivot][c]) < 1e-9) {
                return false;
            }
            for (int j = 0; j < 4; ++j) {
                std::swap(a[c][j], a[pivot][j]);
            }
            for (int r = 0; r < 3; ++r) {
                if (r != c) {
                    const double f = a[r][c] / a[c][c];
                    for (int j = c; j < 4; ++j) {
                        a[r][j] -= f * a[c][j];
                    }
                }
            }
        }
        out = Point{ox + a[0][3] / a[0][0], oy + a[1][3] / a[1][1]};
        return std::isfinite(out.x) && std::isfinite(out.y);
    }

    bool started = false;
    bool moved = false;
    int startX = 0;
    int startY = 0;
    Intent sweep[3];
    int waypoint = 0;
    std::vector<Sample> samples;
};

}  // namespace

std::unique_ptr<Solver> makeAimSolver(const std::string& type) {
    if (type == "whack") {
        return std::make_unique<WhackSolver>();
    }
    if (type == "doubleclick") {
        return std::make_unique<DoubleClickSolver>();
    }
    if (type == "precision") {
        return std::make_unique<PrecisionSolver>();
    }
    if (type == "decoy") {
        return std::make_unique<DecoySolver>();
    }
    if (type == "greased") {
        return std::make_unique<GreasedSolver>();
    }
    if (type == "hotcold") {
        return std::make_unique<HotColdSolver>();
    }
    return nullptr;
}

}  // namespace vorn::test
