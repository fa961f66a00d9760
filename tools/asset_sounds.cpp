#include "asset_sounds.h"

#include "byte_files.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstdint>
#include <cstdlib>
#include <fstream>
#include <vector>

namespace vorn::tools {

namespace {

namespace fs = std::filesystem;

constexpr double kTwoPi = 6.283185307179586476925;
constexpr int kEffectRate = 44100;   // effects and sting: short, so full quality is cheap
constexpr int kMusicRate = 22050;    // music: mono 22 kHz keeps the files small

// xorshift32 with a fixed seed: noise that is identical on every build, so
// the generated files never change unless this code does.
class Noise {
public:
    explicit Noise(std::uint32_t seed) : state(seed != 0 ? seed : 1u) {}
    std::uint32_t bits() {
        state ^= state << 13;
        state ^= state >> 17;
        state ^= state << 5;
        return state;
    }
    double next() { return static_cast<double>(bits()) / 2147483648.0 - 1.0; }   // [-1, 1)
    // 0 .. n-1; the slight modulo bias is irrelevant for composing tunes.
    int below(int n) { return static_cast<int>(bits() % static_cast<std::uint32_t>(n)); }

private:
    std::uint32_t state;
};

// A mono mix bus. A looping buffer wraps every write around its end, so the
// tails of the last notes ring on into the first bar and the loop point is
// inaudible.
struct Buffer {
    Buffer(int sampleRate, std::size_t length, bool wraps)
        : rate(sampleRate), samples(length, 0.0), loops(wraps) {}

    void add(std::size_t index, double value) {
        if (loops) {
            index %= samples.size();
        } else if (index >= samples.size()) {
            return;
        }
        samples[index] += value;
    }
    std::size_t at(double seconds) const {
        return static_cast<std::size_t>(std::lround(seconds * rate));
    }

    int rate;
    std::vector<double> samples;
    bool loops;
};

struct OnePole {
    OnePole(double cutoffHz, int rate) { setCutoff(cutoffHz, rate); }
    void setCutoff(double cutoffHz, int rate) { a = 1.0 - std::exp(-kTwoPi * cutoffHz / rate); }
    double operator()(double x) {
        y += a * (x - y);
        return y;
    }
    double a = 0.0;
    double y = 0.0;
};

double midiHz(double note) { return 440.0 * std::pow(2.0, (note - 69.0) / 12.0); }

// Renders `seconds` of a voice starting at `start`; the voice is called with
// the time since its own start, in order, so it may keep phase and filter
// state between calls.
template <typename Voice>
void render(Buffer& out, double start, double seconds, Voice&& voice) {
    const std::size_t first = out.at(start);
    const auto count = static_cast<std::size_t>(seconds * out.rate);
    for (std::size_t i = 0; i < count; ++i) {
        out.add(first + i, voice(static_cast<double>(i) / out.rate));
    }
}

// Attack to full, exponential fall toward `sustain` while held, then a
// linear release: the one envelope shape every melodic voice uses.
double envelope(double t, double held, double attack, double decay, double sustain, double release) {
    const auto level = [&](double at) {
        if (at < attack) {
            return at / attack;
        }
        return sustain + (1.0 - sustain) * std::exp(-(at - attack) / decay);
    };
    if (t < held) {
        return level(t);
    }
    return level(held) * std::max(0.0, 1.0 - (t - held) / release);
}

// ---- voices -------------------------------------------------------------

// A struck bar: a few harmonic partials, the upper ones dying first, which is
// what makes it read as a chime rather than an organ.
void bell(Buffer& out, double start, double note, double gain, double ring) {
    const double hz = midiHz(note);
    render(out, start, ring * 4.0, [=](double t) {
        const double attack = std::min(1.0, t / 0.002);
        return gain * attack *
               (std::sin(kTwoPi * hz * t) * std::exp(-t / ring) +
                0.35 * std::sin(kTwoPi * 2.0 * hz * t) * std::exp(-t / (ring * 0.5)) +
                0.12 * std::sin(kTwoPi * 3.0 * hz * t) * std::exp(-t / (ring * 0.3)));
    });
}

// The chiptune lead: a pulse wave, softened by a low-pass so the naive
// square edges do not alias into a hiss at 22 kHz.
void pulse(Buffer& out, double start, double held, double note, double gain, double duty,
           double cutoff, double vibrato = 0.0) {
    const double hz = midiHz(note);
    const double release = 0.05;
    double phase = 0.0;
    OnePole filter(cutoff, out.rate);
    const int rate = out.rate;
    render(out, start, held + release, [=](double t) mutable {
        const double wobble = t > 0.15 ? vibrato * std::sin(kTwoPi * 5.5 * t) : 0.0;
        phase += hz * (1.0 + wobble) / rate;
        phase -= std::floor(phase);
        const double raw = (phase < duty ? 1.0 : -1.0) - (2.0 * duty - 1.0);
        return gain * envelope(t, held, 0.004, 0.08, 0.6, release) * filter(raw);
    });
}

// Bass: a triangle, round enough to sit under everything else.
void triangle(Buffer& out, double start, double held, double note, double gain) {
    const double hz = midiHz(note);
    double phase = 0.0;
    const int rate = out.rate;
    render(out, start, held + 0.04, [=](double t) mutable {
        phase += hz / rate;
        phase -= std::floor(phase);
        const double raw = 4.0 * std::abs(phase - 0.5) - 1.0;
        return gain * envelope(t, held, 0.005, 0.2, 0.85, 0.04) * raw;
    });
}

// A slow pad: every chord tone as three detuned saws, summed and sent through
// two low-pass stages (one filter for the whole chord: it is linear, so that
// sounds the same as one per tone). The detuning gives the chorus-like drift
// of an old office synth.
void pad(Buffer& out, double start, double held, const std::vector<double>& notes, double gain,
         double cutoff, double attack, double release) {
    std::vector<double> steps;
    for (double note : notes) {
        for (double detune : {0.997, 1.0, 1.003}) {
            steps.push_back(midiHz(note) * detune / out.rate);
        }
    }
    std::vector<double> phases(steps.size());
    for (std::size_t v = 0; v < phases.size(); ++v) {
        phases[v] = static_cast<double>(v % 3) / 3.0;
    }
    OnePole first(cutoff, out.rate);
    OnePole second(cutoff, out.rate);
    render(out, start, held + release, [=](double t) mutable {
        double raw = 0.0;
        for (std::size_t v = 0; v < phases.size(); ++v) {
            phases[v] += steps[v];
            phases[v] -= std::floor(phases[v]);
            raw += 2.0 * phases[v] - 1.0;
        }
        const double rise = std::min(1.0, t / attack);
        const double fall = t < held ? 1.0 : std::max(0.0, 1.0 - (t - held) / release);
        return gain * rise * fall * second(first(raw / 3.0));
    });
}

void kick(Buffer& out, double start, double gain) {
    double phase = 0.0;
    const int rate = out.rate;
    render(out, start, 0.3, [=](double t) mutable {
        phase += (45.0 + 110.0 * std::exp(-t / 0.035)) / rate;
        return gain * std::min(1.0, t / 0.001) * std::exp(-t / 0.16) * std::sin(kTwoPi * phase);
    });
}

void snare(Buffer& out, double start, double gain, Noise& noise) {
    OnePole body(1500.0, out.rate);
    render(out, start, 0.2, [&noise, gain, body](double t) mutable {
        const double hiss = noise.next();
        const double bright = hiss - body(hiss);
        return gain * std::min(1.0, t / 0.001) *
               (0.65 * bright * std::exp(-t / 0.06) + 0.35 * std::sin(kTwoPi * 190.0 * t) * std::exp(-t / 0.04));
    });
}

void hat(Buffer& out, double start, double gain, double decay, Noise& noise) {
    OnePole low(6000.0, out.rate);
    render(out, start, decay * 4.0, [&noise, gain, decay, low](double t) mutable {
        const double hiss = noise.next();
        return gain * (hiss - low(hiss)) * std::exp(-t / decay);
    });
}

// ---- files ----------------------------------------------------------------

// Writes 16-bit mono PCM, scaled so the loudest sample reaches `peak`. A
// one-shot sound gets a 3 ms fade at its end so it never stops on a click.
bool writeWav(const fs::path& path, Buffer sound, double peak, std::string& error) {
    if (!sound.loops) {
        const std::size_t fade = std::min(sound.samples.size(), static_cast<std::size_t>(sound.rate * 3 / 1000));
        for (std::size_t i = 0; i < fade; ++i) {
            sound.samples[sound.samples.size() - 1 - i] *= static_cast<double>(i) / static_cast<double>(fade);
        }
    }
    double loudest = 0.0;
    for (double s : sound.samples) {
        loudest = std::max(loudest, std::abs(s));
    }
    const double scale = loudest > 0.0 ? peak / loudest : 0.0;

    const auto dataBytes = static_cast<std::uint32_t>(sound.samples.size() * 2);
    std::vector<char> bytes;
    bytes.reserve(44);
    bytes.insert(bytes.end(), {'R', 'I', 'F', 'F'});
    putLe(bytes, 36 + dataBytes, 4);
    bytes.insert(bytes.end(), {'W', 'A', 'V', 'E', 'f', 'm', 't', ' '});
    putLe(bytes, 16, 4);                                              // fmt chunk size
    putLe(bytes, 1, 2);                                               // PCM
    putLe(bytes, 1, 2);                                               // mono
    putLe(bytes, static_cast<std::uint32_t>(sound.rate), 4);
    putLe(bytes, static_cast<std::uint32_t>(sound.rate * 2), 4);      // bytes per second
    putLe(bytes, 2, 2);                                               // block align
    putLe(bytes, 16, 2);                                              // bits per sample
    bytes.insert(bytes.end(), {'d', 'a', 't', 'a'});
    putLe(bytes, dataBytes, 4);

    const std::size_t header = bytes.size();
    bytes.resize(header + dataBytes);
    for (std::size_t i = 0; i < sound.samples.size(); ++i) {
        const long value = std::lround(std::clamp(sound.samples[i] * scale, -1.0, 1.0) * 32767.0);
        const auto word = static_cast<std::uint16_t>(static_cast<std::int16_t>(value));
        bytes[header + 2 * i] = static_cast<char>(word & 0xFFu);
        bytes[header + 2 * i + 1] = static_cast<char>(word >> 8);
    }
    return writeBytes(path, bytes, error);
}

Buffer oneShot(double seconds) {
    return Buffer(kEffectRate, static_cast<std::size_t>(seconds * kEffectRate), false);
}

// ---- effects --------------------------------------------------------------

// The clock pair: a short knock of two inharmonic partials and a breath of
// noise for the attack, the tock pitched lower so the two read as a swing.
Buffer clockKnock(double body, double overtone, double ring) {
    Buffer out = oneShot(0.1);
    Noise noise(0x71C4u);
    render(out, 0.0, 0.1, [&](double t) {
        return std::min(1.0, t / 0.0008) *
               (0.7 * std::sin(kTwoPi * body * t) * std::exp(-t / ring) +
                0.35 * std::sin(kTwoPi * overtone * t) * std::exp(-t / (ring * 0.45)) +
                0.3 * noise.next() * std::exp(-t / 0.0018));
    });
    return out;
}

// Two tones swapping every eighth of a second: urgent, but short enough to
// sit under the tick it is played with.
Buffer siren() {
    Buffer out = oneShot(0.5);
    double phase = 0.0;
    render(out, 0.0, 0.5, [&](double t) {
        const bool high = static_cast<int>(t / 0.125) % 2 == 0;
        phase += (high ? 960.0 : 720.0) / kEffectRate;
        const double s = std::sin(kTwoPi * phase);
        const double level = std::min(1.0, t / 0.005) * std::min(1.0, (0.5 - t) / 0.04);
        return level * (0.6 * s + 0.4 * std::tanh(3.0 * s));
    });
    return out;
}

// A bright major arpeggio climbing to the octave: the sound of a job done.
Buffer passChime() {
    Buffer out = oneShot(0.85);
    const std::array<double, 4> notes{84.0, 88.0, 91.0, 96.0};   // C6 E6 G6 C7
    for (std::size_t i = 0; i < notes.size(); ++i) {
        bell(out, 0.07 * static_cast<double>(i), notes[i], i + 1 == notes.size() ? 0.5 : 0.35, 0.16);
    }
    return out;
}

// Two falling buzzes, the second lower and longer: unmistakably "no".
Buffer failBuzzer() {
    Buffer out = oneShot(0.72);
    const auto buzz = [&out](double start, double length, double fromHz, double toHz) {
        double phase = 0.0;
        OnePole filter(1800.0, kEffectRate);
        render(out, start, length, [=](double t) mutable {
            phase += (fromHz + (toHz - fromHz) * t / length) / kEffectRate;
            phase -= std::floor(phase);
            const double raw = 0.5 * (2.0 * phase - 1.0) + 0.5 * (phase < 0.5 ? 1.0 : -1.0);
            const double level = std::min(1.0, t / 0.005) * std::min(1.0, (length - t) / 0.04);
            return level * (0.8 + 0.2 * std::sin(kTwoPi * 30.0 * t)) * filter(raw);
        });
    };
    buzz(0.0, 0.25, 330.0, 262.0);
    buzz(0.29, 0.42, 220.0, 131.0);
    return out;
}

// A crisp UI click: a hair of bright noise over a tiny high blip.
Buffer uiClick() {
    Buffer out = oneShot(0.035);
    Noise noise(0xC11Cu);
    OnePole low(3000.0, kEffectRate);
    render(out, 0.0, 0.035, [&](double t) {
        const double hiss = noise.next();
        return std::min(1.0, t / 0.0003) *
               (0.8 * (hiss - low(hiss)) * std::exp(-t / 0.0015) +
                0.6 * std::sin(kTwoPi * 3200.0 * t) * std::exp(-t / 0.004) +
                0.2 * std::sin(kTwoPi * 1600.0 * t) * std::exp(-t / 0.006));
    });
    return out;
}

// The studio ident: a mallet arpeggio opens, a warm chord swells under a
// rising noise wash, and a bright chime lands on the peak before it fades.
Buffer studioSting() {
    constexpr double kLength = 3.8;
    constexpr double kPeak = 1.6;
    Buffer out = oneShot(kLength);
    const auto swell = [](double t) {
        if (t < kPeak) {
            return (t / kPeak) * (t / kPeak);
        }
        if (t < 2.4) {
            return 1.0;
        }
        return 0.5 + 0.5 * std::cos(3.14159265358979 * std::min(1.0, (t - 2.4) / (kLength - 2.4)));
    };

    // The chord: C major add9 with the seventh, three saws a tone, through
    // one filter that opens with the swell and half closes again after.
    std::vector<double> steps;
    for (double note : {48.0, 55.0, 64.0, 71.0, 74.0}) {
        for (double detune : {0.996, 1.0, 1.004}) {
            steps.push_back(midiHz(note) * detune / kEffectRate);
        }
    }
    std::vector<double> phases(steps.size(), 0.0);
    OnePole first(400.0, kEffectRate);
    OnePole second(400.0, kEffectRate);
    render(out, 0.0, kLength, [&](double t) {
        const double cutoff = t < kPeak ? 400.0 + 2000.0 * t / kPeak : 2400.0 - 800.0 * std::min(1.0, t - kPeak);
        first.setCutoff(cutoff, kEffectRate);
        second.setCutoff(cutoff, kEffectRate);
        double raw = 0.0;
        for (std::size_t v = 0; v < phases.size(); ++v) {
            phases[v] += steps[v];
            phases[v] -= std::floor(phases[v]);
            raw += 2.0 * phases[v] - 1.0;
        }
        return 0.12 * swell(t) * second(first(raw / 3.0));
    });
    render(out, 0.0, kLength, [&](double t) {   // sub bass C2
        return 0.25 * swell(t) * std::sin(kTwoPi * midiHz(36.0) * t);
    });

    const std::array<double, 4> mallet{67.0, 72.0, 76.0, 79.0};   // G4 C5 E5 G5
    for (std::size_t i = 0; i < mallet.size(); ++i) {
        bell(out, 0.09 * static_cast<double>(i), mallet[i], 0.22, 0.35);
    }

    Noise noise(0x5EED5u);
    OnePole wash(300.0, kEffectRate);
    render(out, 0.0, kPeak + 0.01, [&](double t) {
        wash.setCutoff(300.0 + 5000.0 * t / kPeak, kEffectRate);
        const double rise = std::pow(t / kPeak, 3.0);
        const double cut = t > kPeak ? std::max(0.0, 1.0 - (t - kPeak) / 0.01) : 1.0;
        return 0.18 * rise * cut * wash(noise.next());
    });

    bell(out, kPeak, 84.0, 0.3, 0.6);   // C6
    bell(out, kPeak, 91.0, 0.2, 0.5);   // G6
    kick(out, kPeak, 0.35);
    return out;
}

// ---- music ----------------------------------------------------------------

// The title tune: 90 BPM in A minor over Am9, Fmaj7, Dm7, E7, two bars each,
// an office clock ticking on the beats. 90 BPM gives exactly 14700 samples a
// beat at 22050 Hz, so the 64 beats loop on a sample boundary.
Buffer titleTune() {
    constexpr int kCycleBeats = 32;
    constexpr int kBeats = 2 * kCycleBeats;
    constexpr double kBeat = 60.0 / 90.0;
    Buffer out(kMusicRate, static_cast<std::size_t>(kBeats) * 14700, true);

    struct Chord {
        double bass;
        std::vector<double> tones;
    };
    const std::array<Chord, 4> chords{{
        {45.0, {57.0, 60.0, 64.0, 67.0, 71.0}},   // Am9
        {41.0, {53.0, 57.0, 60.0, 64.0}},         // Fmaj7
        {38.0, {53.0, 57.0, 60.0, 62.0}},         // Dm7
        {40.0, {56.0, 59.0, 62.0, 64.0}},         // E7
    }};
    // The melody: (beat, length in beats, note).
    const std::array<std::array<double, 3>, 16> melody{{
        {0, 3, 76}, {3, 1, 74}, {4, 2, 72}, {6, 2, 71},
        {8, 3, 72}, {11, 1, 69}, {12, 2, 72}, {14, 2, 76},
        {16, 3, 74}, {19, 1, 77}, {20, 2, 76}, {22, 1, 74}, {23, 1, 72},
        {24, 4, 71}, {28, 2, 68}, {30, 2, 71},
    }};

    // Two passes of the progression: the first states the tune, the second
    // hands it to a lower, hollower voice over the same chords, so the loop
    // does not wear thin while the player sits at the menu.
    for (int pass = 0; pass < 2; ++pass) {
        const double cycle = pass * kCycleBeats * kBeat;
        for (std::size_t c = 0; c < chords.size(); ++c) {
            const double bar = cycle + static_cast<double>(c) * 8.0 * kBeat;
            pad(out, bar, 8.0 * kBeat, chords[c].tones, 0.09, 900.0, 0.6, 1.5);
            // Bass: a lazy syncopation, jumping the octave at the end of the
            // second bar to lean into the next chord.
            for (int b = 0; b < 2; ++b) {
                const double at = bar + b * 4.0 * kBeat;
                triangle(out, at, 1.4 * kBeat, chords[c].bass, 0.35);
                triangle(out, at + 1.5 * kBeat, 0.45 * kBeat, chords[c].bass, 0.3);
                triangle(out, at + 2.5 * kBeat, 1.3 * kBeat, chords[c].bass + (b == 1 ? 12.0 : 0.0), 0.3);
            }
            // Arpeggio in eighths, up and down the chord an octave higher.
            const std::vector<double>& tones = chords[c].tones;
            const std::array<std::size_t, 6> walk{0, 1, 2, 3, 2, 1};
            for (int e = 0; e < 16; ++e) {
                const double note = tones[walk[static_cast<std::size_t>(e) % walk.size()] % tones.size()] + 12.0;
                bell(out, bar + e * 0.5 * kBeat, note, e % 2 == 0 ? 0.1 : 0.07, 0.12);
            }
        }
        for (const auto& [beat, length, note] : melody) {
            if (pass == 0) {
                pulse(out, cycle + beat * kBeat, length * kBeat * 0.95, note, 0.12, 0.5, 1500.0, 0.006);
            } else {
                pulse(out, cycle + beat * kBeat, length * kBeat * 0.9, note - 12.0, 0.13, 0.25, 1100.0, 0.01);
            }
        }
    }

    Noise noise(0x0FF1CEu);
    for (int beat = 0; beat < kBeats; ++beat) {
        hat(out, beat * kBeat, 0.06, 0.012, noise);
        hat(out, (beat + 0.5) * kBeat, 0.025, 0.008, noise);
    }
    return out;
}

struct TrackStyle {
    const char* file;
    int bpm;                   // chosen so a beat is a whole number of samples
    int root;                  // MIDI note of the key's tonic in the lead's octave
    std::array<int, 4> degrees;   // one chord a bar, as natural-minor scale degrees
    std::uint32_t seed;
    double duty;               // lead pulse width: the track's "voice"
    const char* sections;      // I intro, A/B phrases, C phrase A with arpeggio, O outro
};

constexpr std::array<int, 7> kMinor{0, 2, 3, 5, 7, 8, 10};

// Scale step (7 a octave) to semitones above the tonic.
int semitones(int step) { return 12 * (step / 7) + kMinor[static_cast<std::size_t>(step % 7)]; }

struct LeadNote {
    int slot;     // eighth-note slot within the four-bar phrase
    int length;   // in eighths
    int step;     // scale step above the tonic
};

// A four-bar phrase: a random walk on the scale that lands on a chord tone
// at every bar and comes home to the last chord's root, so it sounds
// composed rather than random.
std::vector<LeadNote> makePhrase(Noise& rng, const std::array<int, 4>& degrees) {
    std::vector<LeadNote> notes;
    int step = degrees[0] + 7;
    for (int slot = 0; slot < 32; ++slot) {
        const int degree = degrees[static_cast<std::size_t>(slot / 8)];
        if (slot == 28) {
            notes.push_back({slot, 4, degree + 7});
            break;
        }
        if (slot % 8 == 0) {
            int best = degree + 7;
            for (int tone : {degree, degree + 2, degree + 4, degree + 7, degree + 9, degree + 11}) {
                if (std::abs(tone - step) < std::abs(best - step)) {
                    best = tone;
                }
            }
            step = best;
        } else {
            const int roll = rng.below(100);
            if (roll < 18) {
                continue;   // a rest
            }
            if (roll < 33 && !notes.empty() && notes.back().slot + notes.back().length == slot) {
                ++notes.back().length;   // hold the previous note
                continue;
            }
            static constexpr std::array<int, 7> kMoves{-2, -1, -1, 0, 1, 1, 2};
            step = std::clamp(step + kMoves[static_cast<std::size_t>(rng.below(7))], 4, 16);
        }
        notes.push_back({slot, 1, step});
    }
    return notes;
}

Buffer shiftTrack(const TrackStyle& style) {
    const int beatSamples = kMusicRate * 60 / style.bpm;
    const double beat = static_cast<double>(beatSamples) / kMusicRate;
    int bars = 0;
    for (const char* s = style.sections; *s != '\0'; ++s) {
        bars += (*s == 'I' || *s == 'O') ? 2 : 4;
    }
    Buffer out(kMusicRate, static_cast<std::size_t>(bars) * 4 * static_cast<std::size_t>(beatSamples), true);

    Noise rng(style.seed);
    const std::vector<LeadNote> phraseA = makePhrase(rng, style.degrees);
    const std::vector<LeadNote> phraseB = makePhrase(rng, style.degrees);
    const auto chordRoot = [&](int bar) {
        return style.root - 12 + semitones(style.degrees[static_cast<std::size_t>(bar % 4)]);
    };

    int bar = 0;
    for (const char* s = style.sections; *s != '\0'; ++s) {
        const char section = *s;
        const int length = (section == 'I' || section == 'O') ? 2 : 4;
        const double start = bar * 4.0 * beat;

        if (section == 'A' || section == 'B' || section == 'C') {
            // Phrase B sits an octave up: the lift of a chorus.
            const std::vector<LeadNote>& phrase = section == 'B' ? phraseB : phraseA;
            const double lift = section == 'B' ? 12.0 : 0.0;
            for (const LeadNote& n : phrase) {
                pulse(out, start + n.slot * 0.5 * beat, n.length * 0.5 * beat * 0.85,
                      style.root - 12.0 + lift + semitones(n.step), 0.16, style.duty, 4000.0, 0.004);
            }
        }

        for (int b = 0; b < length; ++b) {
            const int chordBar = bar + b;
            const double at = start + b * 4.0 * beat;
            const double root = chordRoot(chordBar);
            // Octave-jumping eighths: the engine of every chiptune.
            for (int e = 0; e < 8; ++e) {
                if (section == 'I' && e % 2 == 1) {
                    continue;
                }
                pulse(out, at + e * 0.5 * beat, 0.42 * beat, root - 12.0 + (e % 2 == 1 ? 12.0 : 0.0), 0.2,
                      0.5, 900.0);
            }
            if (section == 'B' || section == 'C' || section == 'O') {
                const int degree = style.degrees[static_cast<std::size_t>(chordBar % 4)];
                const std::array<int, 4> arp{degree, degree + 2, degree + 4, degree + 7};
                for (int sixteenth = 0; sixteenth < 16; ++sixteenth) {
                    pulse(out, at + sixteenth * 0.25 * beat, 0.18 * beat,
                          style.root + semitones(arp[static_cast<std::size_t>(sixteenth % 4)]), 0.06,
                          0.125, 5000.0);
                }
            }
            // Drums: kick on one and three, snare on two and four, hats on
            // the eighths; the intro and outro hold back.
            kick(out, at, 0.5);
            if (section != 'O') {
                kick(out, at + 2.0 * beat, 0.5);
            }
            if (section != 'I' && section != 'O') {
                snare(out, at + beat, 0.3, rng);
                snare(out, at + 3.0 * beat, 0.3, rng);
                if (chordBar % 4 == 3) {
                    kick(out, at + 2.5 * beat, 0.4);
                }
            }
            const int hats = section == 'B' ? 16 : 8;
            for (int h = 0; h < hats; ++h) {
                hat(out, at + h * 4.0 * beat / hats, h % 2 == 1 ? 0.1 : 0.07, 0.02, rng);
            }
        }
        bar += length;
    }
    return out;
}

}  // namespace

// Encodes a WAV with a command-line encoder, then removes the WAV. The
// encoders are deterministic for fixed options (oggenc needs its stream
// serial fixed), so every build still writes the same bytes.
bool encode(const std::string& command, const fs::path& wav, const fs::path& target, std::string& error,
            bool targetFirst = false) {
    const std::string in = "\"" + wav.u8string() + "\"";
    const std::string out = "\"" + target.u8string() + "\"";
    const std::string line = command + " " + (targetFirst ? out + " " + in : in + " " + out);
    const int status = std::system(line.c_str());
    std::error_code ignored;
    fs::remove(wav, ignored);
    if (status != 0) {
        error = "encoding " + target.filename().u8string() + " failed (" + command +
                "); scripts/setup.sh installs lame and vorbis-tools";
        return false;
    }
    return true;
}

bool writeMusic(const fs::path& path, Buffer sound, std::string& error) {
    fs::path wav = path;
    wav += ".tmp.wav";
    if (!writeWav(wav, std::move(sound), 0.8, error)) {
        return false;
    }
    if (path.extension() == ".mp3") {
        return encode("lame --quiet --noreplaygain -m m -b 64", wav, path, error);
    }
    return encode("oggenc --quiet --serial 20260101 -q 2 -o", wav, path, error, true);
}

bool writeSounds(const fs::path& gameDir, std::string& error) {
    const fs::path audio = gameDir / "assets" / "audio";
    const fs::path music = gameDir / "data" / "music";

    const std::array<TrackStyle, 3> tracks{{
        {"shift-01.ogg", 140, 64, {0, 5, 2, 6}, 0x5A1F7001u, 0.25, "IACBCABACBO"},    // E minor
        {"shift-02.ogg", 150, 62, {0, 3, 6, 4}, 0x5A1F7002u, 0.5, "IAABBCABACBO"},    // D minor
        {"shift-03.ogg", 126, 67, {0, 5, 3, 4}, 0x5A1F7003u, 0.125, "IABACBCABO"},    // G minor
    }};

    bool ok = writeWav(audio / "tick.wav", clockKnock(1250.0, 2900.0, 0.012), 0.55, error) &&
              writeWav(audio / "tock.wav", clockKnock(780.0, 1810.0, 0.02), 0.55, error) &&
              writeWav(audio / "siren.wav", siren(), 0.35, error) &&
              writeWav(audio / "pass.wav", passChime(), 0.6, error) &&
              writeWav(audio / "fail.wav", failBuzzer(), 0.5, error) &&
              writeWav(audio / "click.wav", uiClick(), 0.5, error) &&
              writeWav(audio / "zembrilux-sting.wav", studioSting(), 0.85, error) &&
              writeMusic(music / "vorn-title.mp3", titleTune(), error);
    for (const TrackStyle& style : tracks) {
        ok = ok && writeMusic(music / style.file, shiftTrack(style), error);
    }
    return ok;
}

}  // namespace vorn::tools
