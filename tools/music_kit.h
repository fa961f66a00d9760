#pragma once
// The instruments and the studio the music generator plays them in: a
// stereo mix bus with reverb and echo sends, oscillators and filters, the
// melodic voices and the drum kit. Every voice renders one note into the bus
// at a time; a looping bus wraps what runs past its end back to its start.

#include <cstddef>
#include <cstdint>
#include <vector>

namespace vorn::tools::music {

constexpr int kRate = 44100;
constexpr double kTwoPi = 6.283185307179586476925;

double midiHz(double note);

// xorshift32 with a fixed seed: the same "random" choices on every build.
class Dice {
public:
    explicit Dice(std::uint32_t seed) : state(seed != 0 ? seed : 1u) {}
    std::uint32_t bits() {
        state ^= state << 13;
        state ^= state >> 17;
        state ^= state << 5;
        return state;
    }
    double unit() { return static_cast<double>(bits()) / 4294967296.0; }   // [0, 1)
    double noise() { return 2.0 * unit() - 1.0; }                          // [-1, 1)
    int below(int n) { return static_cast<int>(bits() % static_cast<std::uint32_t>(n)); }
    bool chance(double p) { return unit() < p; }

private:
    std::uint32_t state;
};

// Where a voice sits: its place across the stereo field (-1 left .. 1 right)
// and how much of it goes to the reverb and to the echo.
struct Placement {
    double pan = 0.0;
    double reverb = 0.0;
    double echo = 0.0;
};

class Bus {
public:
    Bus(std::size_t length, bool loops, double echoSeconds);

    // A placement as the four gains a sample is sent out with.
    struct Gains {
        double left, right, reverb, echo;
    };
    static Gains gainsFor(const Placement& at);

    // Adds one mono sample at `index` (wrapped on a looping bus, dropped past
    // the end otherwise), placed as given.
    void add(std::size_t index, double value, const Gains& to);
    std::size_t at(double seconds) const;
    std::size_t length() const { return left.size(); }
    bool loops() const { return looping; }

    // Runs the reverb and the echo over their sends and mixes them in.
    void finish();

    std::vector<float> left;
    std::vector<float> right;

private:
    std::vector<float> reverbSend;
    std::vector<float> echoSend;
    bool looping;
    double echoSeconds;
};

// The resonant low-pass of every subtractive voice (a state-variable filter
// in its trapezoidal form: stable when swept fast).
class LowPass {
public:
    void set(double cutoffHz, double resonance);
    double operator()(double x);

private:
    double a1 = 0.0, a2 = 0.0, a3 = 0.0, k = 1.0;
    double ic1 = 0.0, ic2 = 0.0;
};

// ---- melodic voices: start and held length in seconds, MIDI note, level 0..1

// Two detuned band-limited saws through a low-pass whose cutoff falls from
// `bright` to `dark` Hz: a plucked synth, or a lead when held.
void sawVoice(Bus& bus, double start, double held, double note, double level, double bright, double dark,
              double fall, double resonance, double vibrato, const Placement& at);
// A pulse of the given width, softly filtered: the chip voice.
void pulseVoice(Bus& bus, double start, double held, double note, double level, double width, double cutoff,
                double vibrato, const Placement& at);
// Two-operator FM: an electric piano (ratio 1) or a bell (ratio 3.5).
void fmVoice(Bus& bus, double start, double held, double note, double level, double ratio, double index,
             double ring, const Placement& at);
// A chord of detuned saws swelling in and out, its filter drifting with `sweep`.
void padVoice(Bus& bus, double start, double held, const std::vector<int>& notes, double level, double cutoff,
              double sweep, const Placement& at);
// A round bass: sine and a touch of filtered saw with a plucked filter.
void bassVoice(Bus& bus, double start, double held, double note, double level, double bite, const Placement& at);

// ---- drums: start in seconds, level 0..1

void kickDrum(Bus& bus, double start, double level, double punch);
void snareDrum(Bus& bus, double start, double level, Dice& dice, const Placement& at);
void clap(Bus& bus, double start, double level, Dice& dice, const Placement& at);
void hiHat(Bus& bus, double start, double level, double decay, Dice& dice, const Placement& at);
void tom(Bus& bus, double start, double level, double hz, const Placement& at);
void cymbal(Bus& bus, double start, double level, Dice& dice, const Placement& at);
void rimShot(Bus& bus, double start, double level, const Placement& at);

}  // namespace vorn::tools::music
