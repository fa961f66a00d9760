#include "music_kit.h"

#include <algorithm>
#include <array>
#include <cmath>

namespace vorn::tools::music {

double midiHz(double note) { return 440.0 * std::pow(2.0, (note - 69.0) / 12.0); }

Bus::Bus(std::size_t length, bool loops, double echo)
    : left(length, 0.0f), right(length, 0.0f), reverbSend(length, 0.0f), echoSend(length, 0.0f),
      looping(loops), echoSeconds(echo) {}

std::size_t Bus::at(double seconds) const {
    return static_cast<std::size_t>(std::max(0L, std::lround(seconds * kRate)));
}

Bus::Gains Bus::gainsFor(const Placement& place) {
    // Constant-power pan: a voice keeps its loudness wherever it sits.
    const double angle = (place.pan + 1.0) * 0.25 * 3.14159265358979;
    return Gains{std::cos(angle) * 1.41421356, std::sin(angle) * 1.41421356, place.reverb, place.echo};
}

void Bus::add(std::size_t index, double value, const Gains& to) {
    if (looping) {
        index %= left.size();
    } else if (index >= left.size()) {
        return;
    }
    left[index] += static_cast<float>(value * to.left);
    right[index] += static_cast<float>(value * to.right);
    reverbSend[index] += static_cast<float>(value * to.reverb);
    echoSend[index] += static_cast<float>(value * to.echo);
}

namespace {

// One damped feedback comb of the reverb.
class Comb {
public:
    explicit Comb(std::size_t size) : line(size, 0.0) {}
    double operator()(double x, double feedback, double damp) {
        const double out = line[pos];
        store = out * (1.0 - damp) + store * damp;
        line[pos] = x + store * feedback;
        pos = (pos + 1) % line.size();
        return out;
    }

private:
    std::vector<double> line;
    std::size_t pos = 0;
    double store = 0.0;
};

class AllPass {
public:
    explicit AllPass(std::size_t size) : line(size, 0.0) {}
    double operator()(double x) {
        const double held = line[pos];
        line[pos] = x + held * 0.5;
        pos = (pos + 1) % line.size();
        return held - x;
    }

private:
    std::vector<double> line;
    std::size_t pos = 0;
};

// A small hall: parallel combs then series all-passes, each side with its
// own slightly longer lines so the tail spreads across the field.
class Reverb {
public:
    explicit Reverb(std::size_t spread) {
        for (std::size_t size : {1116u, 1188u, 1277u, 1356u, 1422u, 1491u}) {
            combs.emplace_back(size + spread);
        }
        for (std::size_t size : {556u, 441u}) {
            passes.emplace_back(size + spread);
        }
    }
    double operator()(double x) {
        double sum = 0.0;
        for (Comb& c : combs) {
            sum += c(x, 0.82, 0.3);
        }
        for (AllPass& p : passes) {
            sum = p(sum);
        }
        return sum;
    }

private:
    std::vector<Comb> combs;
    std::vector<AllPass> passes;
};

}  // namespace

void Bus::finish() {
    const std::size_t n = left.size();
    Reverb roomLeft(0);
    Reverb roomRight(23);
    // The echo bounces between the sides, each repeat darker than the last.
    const auto echoLength = static_cast<std::size_t>(echoSeconds * kRate);
    std::vector<double> echoLeft(echoLength, 0.0);
    std::vector<double> echoRight(echoLength, 0.0);
    std::size_t echoPos = 0;
    double darkLeft = 0.0;
    double darkRight = 0.0;
    // A looping bus is run round twice and keeps the second lap, so the
    // tails at its end ring on into its start.
    const std::size_t laps = looping ? 2 : 1;
    for (std::size_t lap = 0; lap < laps; ++lap) {
        const bool keep = lap + 1 == laps;
        for (std::size_t i = 0; i < n; ++i) {
            const double wet = reverbSend[i] * 0.05;
            const double l = roomLeft(wet);
            const double r = roomRight(wet);
            const double outLeft = echoLeft[echoPos];
            const double outRight = echoRight[echoPos];
            darkLeft += 0.35 * (outRight - darkLeft);
            darkRight += 0.35 * (outLeft - darkRight);
            echoLeft[echoPos] = echoSend[i] + 0.38 * darkLeft;
            echoRight[echoPos] = 0.38 * darkRight;
            echoPos = (echoPos + 1) % echoLength;
            if (keep) {
                left[i] += static_cast<float>(l + 0.6 * outLeft);
                right[i] += static_cast<float>(r + 0.6 * outRight);
            }
        }
    }
}

void LowPass::set(double cutoffHz, double resonance) {
    const double g = std::tan(3.14159265358979 * std::clamp(cutoffHz, 20.0, 18000.0) / kRate);
    k = 2.0 - 2.0 * std::clamp(resonance, 0.0, 0.95);
    a1 = 1.0 / (1.0 + g * (g + k));
    a2 = g * a1;
    a3 = g * a2;
}

double LowPass::operator()(double x) {
    const double v3 = x - ic2;
    const double v1 = a1 * ic1 + a2 * v3;
    const double v2 = ic2 + a2 * ic1 + a3 * v3;
    ic1 = 2.0 * v1 - ic1;
    ic2 = 2.0 * v2 - ic2;
    return v2;
}

namespace {

// A saw with its step smoothed (polyBLEP), so high notes do not alias.
double blepSaw(double phase, double step) {
    double value = 2.0 * phase - 1.0;
    if (phase < step) {
        const double t = phase / step;
        value -= t + t - t * t - 1.0;
    } else if (phase > 1.0 - step) {
        const double t = (phase - 1.0) / step;
        value -= t * t + t + t + 1.0;
    }
    return value;
}

// Calls `voice(t)` for every sample of `seconds` from `start` and adds it.
template <typename Voice>
void play(Bus& bus, double start, double seconds, const Placement& at, Voice&& voice) {
    const std::size_t first = bus.at(start);
    const auto count = static_cast<std::size_t>(seconds * kRate);
    const Bus::Gains gains = Bus::gainsFor(at);
    for (std::size_t i = 0; i < count; ++i) {
        bus.add(first + i, voice(static_cast<double>(i) / kRate, i), gains);
    }
}

// Attack, exponential decay toward a sustain while held, then a release.
double envelope(double t, double held, double attack, double decay, double sustain, double release) {
    const auto level = [&](double x) {
        return x < attack ? x / attack : sustain + (1.0 - sustain) * std::exp(-(x - attack) / decay);
    };
    return t < held ? level(t) : level(held) * std::max(0.0, 1.0 - (t - held) / release);
}

}  // namespace

void sawVoice(Bus& bus, double start, double held, double note, double level, double bright, double dark,
              double fall, double resonance, double vibrato, const Placement& at) {
    const double hz = midiHz(note);
    const double release = 0.08;
    double p1 = 0.0;
    double p2 = 0.37;
    LowPass filter;
    play(bus, start, held + release, at, [&](double t, std::size_t i) {
        if (i % 16 == 0) {
            filter.set(dark + (bright - dark) * std::exp(-t / fall), resonance);
        }
        const double wobble = 1.0 + (t > 0.2 ? vibrato * std::sin(kTwoPi * 5.2 * t) : 0.0);
        const double s1 = hz * 1.003 * wobble / kRate;
        const double s2 = hz * 0.997 * wobble / kRate;
        p1 += s1;
        p1 -= std::floor(p1);
        p2 += s2;
        p2 -= std::floor(p2);
        const double raw = 0.5 * (blepSaw(p1, s1) + blepSaw(p2, s2));
        return level * envelope(t, held, 0.004, 0.25, 0.7, release) * filter(raw);
    });
}

void pulseVoice(Bus& bus, double start, double held, double note, double level, double width, double cutoff,
                double vibrato, const Placement& at) {
    const double hz = midiHz(note);
    const double release = 0.06;
    double phase = 0.0;
    LowPass filter;
    filter.set(cutoff, 0.1);
    play(bus, start, held + release, at, [&](double t, std::size_t) {
        const double wobble = 1.0 + (t > 0.15 ? vibrato * std::sin(kTwoPi * 5.5 * t) : 0.0);
        const double step = hz * wobble / kRate;
        phase += step;
        phase -= std::floor(phase);
        double shifted = phase + (1.0 - width);
        shifted -= std::floor(shifted);
        const double raw = 0.5 * (blepSaw(phase, step) - blepSaw(shifted, step));
        return level * envelope(t, held, 0.003, 0.12, 0.65, release) * filter(raw);
    });
}

void fmVoice(Bus& bus, double start, double held, double note, double level, double ratio, double index,
             double ring, const Placement& at) {
    const double hz = midiHz(note);
    const double release = std::min(0.4, ring);
    // Decays kept as running products: an exp() a sample for every note
    // would be most of the generator's time.
    const double ringStep = std::exp(-1.0 / (ring * kRate));
    const double depthStep = std::exp(-1.0 / (ring * 0.35 * kRate));
    const double tineStep = std::exp(-1.0 / (0.02 * kRate));
    double decay = 1.0;
    double depth = index;
    double tine = 0.15;
    play(bus, start, held + release, at, [&](double t, std::size_t) {
        const double body = std::sin(kTwoPi * hz * t + depth * std::sin(kTwoPi * hz * ratio * t));
        const double amp = std::min(1.0, t / 0.002) * decay *
                           (t < held ? 1.0 : std::max(0.0, 1.0 - (t - held) / release));
        const double out = level * amp * (body + tine * std::sin(kTwoPi * hz * 7.0 * t));
        decay *= ringStep;
        depth *= depthStep;
        tine *= tineStep;
        return out;
    });
}

void padVoice(Bus& bus, double start, double held, const std::vector<int>& notes, double level, double cutoff,
              double sweep, const Placement& at) {
    std::vector<double> steps;
    for (int note : notes) {
        for (double detune : {0.996, 1.0, 1.0045}) {
            steps.push_back(midiHz(note) * detune / kRate);
        }
    }
    std::vector<double> phases(steps.size());
    for (std::size_t v = 0; v < phases.size(); ++v) {
        phases[v] = static_cast<double>((v * 7) % 11) / 11.0;
    }
    const double attack = 0.5;
    const double release = 1.2;
    LowPass filter;
    const double scale = 1.0 / static_cast<double>(steps.size());
    play(bus, start, held + release, at, [&](double t, std::size_t i) {
        if (i % 32 == 0) {
            filter.set(cutoff * (1.0 + sweep * std::sin(kTwoPi * t / 7.3 + start)), 0.2);
        }
        double raw = 0.0;
        for (std::size_t v = 0; v < phases.size(); ++v) {
            phases[v] += steps[v];
            phases[v] -= std::floor(phases[v]);
            raw += blepSaw(phases[v], steps[v]);
        }
        const double rise = std::min(1.0, t / attack);
        const double fall = t < held ? 1.0 : std::max(0.0, 1.0 - (t - held) / release);
        return level * rise * fall * filter(raw * scale * 2.0);
    });
}

void bassVoice(Bus& bus, double start, double held, double note, double level, double bite, const Placement& at) {
    const double hz = midiHz(note);
    double phase = 0.0;
    LowPass filter;
    play(bus, start, held + 0.03, at, [&](double t, std::size_t i) {
        if (i % 16 == 0) {
            filter.set(hz * (1.5 + 10.0 * bite * std::exp(-t / 0.07)), 0.35);
        }
        const double step = hz / kRate;
        phase += step;
        phase -= std::floor(phase);
        const double raw = 0.8 * std::sin(kTwoPi * phase) + 0.5 * filter(blepSaw(phase, step));
        return level * envelope(t, held, 0.003, 0.3, 0.75, 0.03) * raw;
    });
}

void kickDrum(Bus& bus, double start, double level, double punch) {
    double phase = 0.0;
    play(bus, start, 0.45, Placement{0.0, 0.05, 0.0}, [&](double t, std::size_t) {
        phase += (48.0 + 120.0 * punch * std::exp(-t / 0.03)) / kRate;
        const double click = std::exp(-t / 0.002) * 0.3;
        return level * std::min(1.0, t / 0.0008) * (std::exp(-t / 0.22) * std::sin(kTwoPi * phase) + click);
    });
}

void snareDrum(Bus& bus, double start, double level, Dice& dice, const Placement& at) {
    LowPass body;
    body.set(5000.0, 0.3);
    play(bus, start, 0.3, at, [&](double t, std::size_t) {
        const double hiss = body(dice.noise());
        return level * std::min(1.0, t / 0.001) *
               (0.7 * hiss * std::exp(-t / 0.07) + 0.5 * std::sin(kTwoPi * 185.0 * t) * std::exp(-t / 0.05) +
                0.25 * std::sin(kTwoPi * 330.0 * t) * std::exp(-t / 0.03));
    });
}

void clap(Bus& bus, double start, double level, Dice& dice, const Placement& at) {
    LowPass band;
    band.set(2200.0, 0.6);
    play(bus, start, 0.35, at, [&](double t, std::size_t) {
        // Three quick slaps and a short room behind them.
        const double slap = t < 0.03 ? std::exp(-std::fmod(t, 0.01) / 0.003) : std::exp(-(t - 0.03) / 0.08);
        return level * 1.6 * slap * band(dice.noise());
    });
}

void hiHat(Bus& bus, double start, double level, double decay, Dice& dice, const Placement& at) {
    // Noise between 7 and 12 kHz: bright, but clear of the band the MP3
    // encoder drops, so the title keeps its loudness once encoded.
    LowPass low;
    low.set(7000.0, 0.0);
    LowPass top;
    top.set(12000.0, 0.0);
    play(bus, start, decay * 5.0, at, [&](double t, std::size_t) {
        const double hiss = top(dice.noise());
        return level * 1.3 * (hiss - low(hiss)) * std::exp(-t / decay);
    });
}

void tom(Bus& bus, double start, double level, double hz, const Placement& at) {
    double phase = 0.0;
    play(bus, start, 0.5, at, [&](double t, std::size_t) {
        phase += hz * (1.0 + 0.6 * std::exp(-t / 0.04)) / kRate;
        return level * std::min(1.0, t / 0.001) * std::exp(-t / 0.18) * std::sin(kTwoPi * phase);
    });
}

void cymbal(Bus& bus, double start, double level, Dice& dice, const Placement& at) {
    LowPass low;
    low.set(4500.0, 0.0);
    LowPass top;
    top.set(12000.0, 0.0);
    play(bus, start, 2.5, at, [&](double t, std::size_t) {
        const double hiss = top(dice.noise());
        return level * (hiss - low(hiss)) * std::exp(-t / 0.6) * std::min(1.0, t / 0.002);
    });
}

void rimShot(Bus& bus, double start, double level, const Placement& at) {
    play(bus, start, 0.08, at, [&](double t, std::size_t) {
        return level * std::exp(-t / 0.012) *
               (std::sin(kTwoPi * 1700.0 * t) + 0.6 * std::sin(kTwoPi * 820.0 * t));
    });
}

}  // namespace vorn::tools::music
