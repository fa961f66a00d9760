#include "support/open_mixer.h"
#include "support/test_platform.h"

#include <SDL.h>
#include <SDL_mixer.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <filesystem>
#include <string>
#include <vector>

// The shipped music as the mixer this program is linked with decodes it:
// natively Debian's SDL_mixer, under Wine our own Windows build, the one the
// zip ships. Every file has its exact length (a decoder that keeps an MP3's
// encoder delay and padding adds some 1,500 samples of silence, which is a
// hole at every loop of the title), plays at one loudness, and keeps its
// peaks under the ceiling the playlist and the effects are mixed for.

namespace vorn {
namespace {

namespace fs = std::filesystem;

constexpr double kPi = 3.14159265358979323846;

const fs::path kMusic = fs::u8path(VORN_GAME_DIR) / "data" / "music";

// Frames (one left and one right sample) of each piece, from its tempo and
// bars: a beat is 44100 * 60 / BPM samples, a bar four beats; a track with an
// ending has 3.5 s (154,350 frames) of room for its last chord to ring out.
struct Expected {
    const char* file;
    long frames;
};
const Expected kPieces[] = {
    {"vorn-title.mp3", 1728000},   // 98 BPM = 27000 a beat; 16 bars loop: 16 * 4 * 27000
    {"shift-01.ogg", 4858350},     // 126 BPM = 21000; 56 bars: 4,704,000 + 154,350
    {"shift-02.ogg", 5234670},     // 100 BPM = 26460; 48 bars: 5,080,320 + 154,350
    {"shift-03.ogg", 4387950},     // 140 BPM = 18900; 56 bars: 4,233,600 + 154,350
};

// A decoded piece as two channels of floats, through the same mixer calls
// the game's chunks go through (the device is 44.1 kHz 16-bit stereo, so the
// decoder's output is taken as it is).
struct Decoded {
    std::vector<float> left;
    std::vector<float> right;
};

class ShippedMusic : public test::OpenMixerTest {
protected:
    static Decoded decode(const char* file) {
        Decoded out;
        Mix_Chunk* chunk = Mix_LoadWAV((kMusic / file).u8string().c_str());
        EXPECT_NE(chunk, nullptr) << file << ": " << SDL_GetError();
        if (chunk == nullptr) {
            return out;
        }
        const auto* samples = reinterpret_cast<const std::int16_t*>(chunk->abuf);
        const std::size_t frames = chunk->alen / 4;
        out.left.resize(frames);
        out.right.resize(frames);
        for (std::size_t i = 0; i < frames; ++i) {
            out.left[i] = samples[2 * i] / 32768.0f;
            out.right[i] = samples[2 * i + 1] / 32768.0f;
        }
        Mix_FreeChunk(chunk);
        return out;
    }
};

// ---- loudness as ITU-R BS.1770-4 defines it -------------------------------

struct Biquad {
    double b0, b1, b2, a1, a2;
    double s1 = 0.0, s2 = 0.0;
    double step(double x) {
        const double y = b0 * x + s1;
        s1 = b1 * x - a1 * y + s2;
        s2 = b2 * x - a2 * y;
        return y;
    }
};

// The K-weighting stages for 44.1 kHz, from the analogue prototypes behind
// the recommendation's 48 kHz table (a +4 dB high shelf at 1681.97 Hz, a
// second-order high-pass at 38.14 Hz), by the bilinear transform.
Biquad shelfStage() {
    const double k = std::tan(kPi * 1681.974450955533 / 44100.0);
    const double q = 0.7071752369554196;
    const double vh = std::pow(10.0, 3.999843853973347 / 20.0);
    const double vb = std::pow(vh, 0.4996667741545416);
    const double d = 1.0 + k / q + k * k;
    return {(vh + vb * k / q + k * k) / d, 2.0 * (k * k - vh) / d, (vh - vb * k / q + k * k) / d,
            2.0 * (k * k - 1.0) / d, (1.0 - k / q + k * k) / d};
}
Biquad highPassStage() {
    const double k = std::tan(kPi * 38.13547087602444 / 44100.0);
    const double q = 0.5003270373238773;
    const double d = 1.0 + k / q + k * k;
    return {1.0, -2.0, 1.0, 2.0 * (k * k - 1.0) / d, (1.0 - k / q + k * k) / d};
}

// Integrated loudness: mean square of the K-weighted channels over 400 ms
// blocks overlapping by 75 %, blocks under -70 LUFS dropped, then blocks
// more than 10 LU under the mean of the rest dropped.
double integratedLufs(const Decoded& d) {
    Biquad shelf[2] = {shelfStage(), shelfStage()};
    Biquad high[2] = {highPassStage(), highPassStage()};
    const std::size_t quarter = 4410;   // 100 ms
    std::vector<double> quarters;
    double sum = 0.0;
    for (std::size_t i = 0; i < d.left.size(); ++i) {
        const double l = high[0].step(shelf[0].step(d.left[i]));
        const double r = high[1].step(shelf[1].step(d.right[i]));
        sum += l * l + r * r;
        if ((i + 1) % quarter == 0) {
            quarters.push_back(sum / quarter);
            sum = 0.0;
        }
    }
    std::vector<double> blocks;
    for (std::size_t q = 3; q < quarters.size(); ++q) {
        blocks.push_back((quarters[q - 3] + quarters[q - 2] + quarters[q - 1] + quarters[q]) / 4.0);
    }
    const auto toLufs = [](double z) { return -0.691 + 10.0 * std::log10(z); };
    const auto meanAbove = [&](double gate) {
        double total = 0.0;
        std::size_t n = 0;
        for (double z : blocks) {
            if (z > 0.0 && toLufs(z) > gate) {
                total += z;
                ++n;
            }
        }
        return n > 0 ? total / static_cast<double>(n) : 1e-12;
    };
    const double relativeGate = toLufs(meanAbove(-70.0)) - 10.0;
    return toLufs(meanAbove(std::max(-70.0, relativeGate)));
}

// True peak in dBTP: the signal over-sampled four times (a 48-tap
// windowed-sinc interpolator) around every sample within 6 dB of full scale,
// which is where a peak over -1 dBTP can only be.
double truePeakDb(const Decoded& d) {
    constexpr int kTaps = 12;   // per side
    double peak = 0.0;
    for (const std::vector<float>* ch : {&d.left, &d.right}) {
        const std::vector<float>& x = *ch;
        const long n = static_cast<long>(x.size());
        for (long i = 0; i + 1 < n; ++i) {
            peak = std::max(peak, static_cast<double>(std::abs(x[static_cast<std::size_t>(i)])));
            if (std::max(std::abs(x[static_cast<std::size_t>(i)]), std::abs(x[static_cast<std::size_t>(i + 1)])) <
                0.45f) {
                continue;
            }
            for (double frac : {0.25, 0.5, 0.75}) {
                double v = 0.0;
                for (long k = -kTaps + 1; k <= kTaps; ++k) {
                    const long j = i + k;
                    if (j < 0 || j >= n) {
                        continue;
                    }
                    const double t = static_cast<double>(k) - frac;
                    const double sinc = std::sin(kPi * t) / (kPi * t);
                    const double window = 0.5 + 0.5 * std::cos(kPi * t / kTaps);
                    v += x[static_cast<std::size_t>(j)] * sinc * window;
                }
                peak = std::max(peak, std::abs(v));
            }
        }
    }
    return 20.0 * std::log10(peak);
}

TEST_F(ShippedMusic, EveryPieceDecodesToItsExactLengthInStereo) {
    for (const Expected& piece : kPieces) {
        const Decoded d = decode(piece.file);
        // A few samples of slack for a decoder's rounding; an encoder delay
        // left in would be well over a thousand.
        EXPECT_NEAR(static_cast<double>(d.left.size()), static_cast<double>(piece.frames), 8.0) << piece.file;
        double difference = 0.0;
        for (std::size_t i = 0; i < d.left.size(); i += 7) {
            difference += std::abs(d.left[i] - d.right[i]);
        }
        EXPECT_GT(difference, 10.0) << piece.file << " is mono";   // the layers are spread across the field
    }
}

TEST_F(ShippedMusic, EveryPieceIsAtMinusSixteenLufsWithPeaksUnderMinusOneDbtp) {
    for (const Expected& piece : kPieces) {
        const Decoded d = decode(piece.file);
        ASSERT_FALSE(d.left.empty()) << piece.file;
        EXPECT_NEAR(integratedLufs(d), -16.0, 0.5) << piece.file;
        EXPECT_LE(truePeakDb(d), -1.0) << piece.file;
    }
}

TEST_F(ShippedMusic, GameplayTracksLastAMinuteAndAHalfAndEndInSilence) {
    for (const Expected& piece : kPieces) {
        if (std::string(piece.file) == "vorn-title.mp3") {
            continue;
        }
        const Decoded d = decode(piece.file);
        ASSERT_GE(d.left.size(), static_cast<std::size_t>(90 * 44100)) << piece.file;
        // The written ending rings out to nothing rather than stopping mid-phrase.
        float last = 0.0f;
        for (std::size_t i = d.left.size() - 441; i < d.left.size(); ++i) {
            last = std::max({last, std::abs(d.left[i]), std::abs(d.right[i])});
        }
        EXPECT_LT(last, 0.001f) << piece.file;
    }
}

// The title as the mixer loops it: its end runs straight into its start, and
// no 10 ms anywhere on that circle is silent (below -60 dBFS), the seam
// included. Together with the exact length, this is a gapless loop in the
// decoder this build ships.
TEST_F(ShippedMusic, TheTitleLoopsWithoutASilentMoment) {
    const Decoded d = decode("vorn-title.mp3");
    ASSERT_GT(d.left.size(), 44100u);
    const std::size_t n = d.left.size();
    const std::size_t window = 441;
    const double floor = std::pow(10.0, -60.0 / 20.0);
    double quietest = 1.0;
    for (std::size_t start = 0; start < n; start += window / 2) {
        double sum = 0.0;
        for (std::size_t k = 0; k < window; ++k) {
            const std::size_t i = (start + k) % n;
            sum += 0.5 * (d.left[i] * d.left[i] + d.right[i] * d.right[i]);
        }
        quietest = std::min(quietest, std::sqrt(sum / window));
    }
    EXPECT_GT(quietest, floor);
    // No jump at the seam bigger than the music's own sample-to-sample steps.
    double largestStep = 0.0;
    for (std::size_t i = 1; i < n; ++i) {
        largestStep = std::max(largestStep, static_cast<double>(std::abs(d.left[i] - d.left[i - 1])));
    }
    EXPECT_LE(std::abs(d.left[0] - d.left[n - 1]), largestStep);
}

}  // namespace
}  // namespace vorn
