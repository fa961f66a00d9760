#include "asset_sounds.h"

#include "asset_music.h"
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
constexpr int kEffectRate = 44100;

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

void kick(Buffer& out, double start, double gain) {
    double phase = 0.0;
    const int rate = out.rate;
    render(out, start, 0.3, [=](double t) mutable {
        phase += (45.0 + 110.0 * std::exp(-t / 0.035)) / rate;
        return gain * std::min(1.0, t / 0.001) * std::exp(-t / 0.16) * std::sin(kTwoPi * phase);
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

// The clock pair: a wooden knock with a body under it (a low thump and a
// short room), so it is heard over the music without being sharp. The tock
// is lower and a little longer, so the two read as a swing.
Buffer clockKnock(double knock, double thump, double length) {
    Buffer out = oneShot(length);
    Noise noise(0x71C4u);
    OnePole room(2500.0, kEffectRate);
    render(out, 0.0, length, [&](double t) {
        const double strike = std::min(1.0, t / 0.0006);
        const double wood = 0.6 * std::sin(kTwoPi * knock * t) * std::exp(-t / 0.018) +
                            0.25 * std::sin(kTwoPi * knock * 2.76 * t) * std::exp(-t / 0.008);
        const double body = 0.55 * std::sin(kTwoPi * thump * t + 2.0 * std::exp(-t / 0.01)) * std::exp(-t / 0.045);
        const double air = 0.12 * room(noise.next()) * std::exp(-t / 0.06);
        const double tail = std::min(1.0, (length - t) / 0.02);
        return strike * tail * (wood + body + air + 0.2 * noise.next() * std::exp(-t / 0.0015));
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

// A bright major arpeggio climbing to the octave over a low C that rings
// on, each note echoing a little as it fades: the sound of a job done.
Buffer passChime() {
    Buffer out = oneShot(1.6);
    bell(out, 0.0, 48.0, 0.35, 0.45);   // C3: the low note under the chime
    bell(out, 0.0, 60.0, 0.25, 0.35);   // C4
    const std::array<double, 4> notes{84.0, 88.0, 91.0, 96.0};   // C6 E6 G6 C7
    for (int echo = 0; echo < 3; ++echo) {
        const double delay = 0.19 * echo;
        const double fade = std::pow(0.35, echo);
        for (std::size_t i = 0; i < notes.size(); ++i) {
            bell(out, delay + 0.07 * static_cast<double>(i), notes[i],
                 fade * (i + 1 == notes.size() ? 0.45 : 0.3), 0.22);
        }
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

// A crisp UI click: a hair of bright noise over a tiny high blip, with a
// short low knock under it so it carries over the music.
Buffer uiClick() {
    Buffer out = oneShot(0.045);
    Noise noise(0xC11Cu);
    OnePole low(3000.0, kEffectRate);
    render(out, 0.0, 0.045, [&](double t) {
        const double hiss = noise.next();
        return std::min(1.0, t / 0.0003) *
               (0.8 * (hiss - low(hiss)) * std::exp(-t / 0.002) +
                0.6 * std::sin(kTwoPi * 3200.0 * t) * std::exp(-t / 0.006) +
                0.35 * std::sin(kTwoPi * 1600.0 * t) * std::exp(-t / 0.009) +
                0.3 * std::sin(kTwoPi * 520.0 * t) * std::exp(-t / 0.01));
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

// Writes a mastered stereo piece as 16-bit PCM, then encodes it: the MP3 in
// LAME's VBR preset 2 (about 200 kbit/s; the constant-rate modes drop enough
// of the brushes' top end to cost half a LU of loudness), whose header holds
// the encoder delay and padding, which is what lets a decoder loop the
// title without a gap; the Ogg at quality 4.
bool writeMusic(const fs::path& folder, const StereoPiece& piece, std::string& error) {
    const fs::path path = folder / piece.file;
    fs::path wav = path;
    wav += ".tmp.wav";
    const auto dataBytes = static_cast<std::uint32_t>(piece.left.size() * 4);
    std::vector<char> bytes;
    bytes.insert(bytes.end(), {'R', 'I', 'F', 'F'});
    putLe(bytes, 36 + dataBytes, 4);
    bytes.insert(bytes.end(), {'W', 'A', 'V', 'E', 'f', 'm', 't', ' '});
    putLe(bytes, 16, 4);
    putLe(bytes, 1, 2);                                               // PCM
    putLe(bytes, 2, 2);                                               // stereo
    putLe(bytes, static_cast<std::uint32_t>(piece.rate), 4);
    putLe(bytes, static_cast<std::uint32_t>(piece.rate * 4), 4);      // bytes per second
    putLe(bytes, 4, 2);                                               // block align
    putLe(bytes, 16, 2);
    bytes.insert(bytes.end(), {'d', 'a', 't', 'a'});
    putLe(bytes, dataBytes, 4);
    const std::size_t header = bytes.size();
    bytes.resize(header + dataBytes);
    for (std::size_t i = 0; i < piece.left.size(); ++i) {
        for (int c = 0; c < 2; ++c) {
            const float s = c == 0 ? piece.left[i] : piece.right[i];
            const long value = std::lround(std::clamp(static_cast<double>(s), -1.0, 1.0) * 32767.0);
            const auto word = static_cast<std::uint16_t>(static_cast<std::int16_t>(value));
            bytes[header + 4 * i + 2 * static_cast<std::size_t>(c)] = static_cast<char>(word & 0xFFu);
            bytes[header + 4 * i + 2 * static_cast<std::size_t>(c) + 1] = static_cast<char>(word >> 8);
        }
    }
    if (!writeBytes(wav, bytes, error)) {
        return false;
    }
    if (path.extension() == ".mp3") {
        return encode("lame --quiet --noreplaygain -q 2 -V 2", wav, path, error);
    }
    return encode("oggenc --quiet --serial 20260101 -q 4 -o", wav, path, error, true);
}

bool writeSounds(const fs::path& gameDir, std::string& error) {
    const fs::path audio = gameDir / "assets" / "audio";
    const fs::path music = gameDir / "data" / "music";

    bool ok = writeWav(audio / "tick.wav", clockKnock(1250.0, 190.0, 0.2), 0.6, error) &&
              writeWav(audio / "tock.wav", clockKnock(830.0, 140.0, 0.24), 0.6, error) &&
              writeWav(audio / "siren.wav", siren(), 0.35, error) &&
              writeWav(audio / "pass.wav", passChime(), 0.6, error) &&
              writeWav(audio / "fail.wav", failBuzzer(), 0.5, error) &&
              writeWav(audio / "click.wav", uiClick(), 0.95, error) &&
              writeWav(audio / "zembrilux-sting.wav", studioSting(), 0.85, error);
    if (ok) {
        for (const StereoPiece& piece : composeMusic()) {
            ok = ok && writeMusic(music, piece, error);
        }
    }
    return ok;
}

}  // namespace vorn::tools
