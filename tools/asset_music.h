#pragma once
// The game's music, composed and rendered at build time: the looping title
// tune and the gameplay tracks. Each piece is written out of a few fixed
// choices (tempo, key, chord progressions, instruments, groove, seed) by a
// small composer: sections, motifs with answers and variations, drum
// patterns with fills; then rendered in stereo at 44.1 kHz through a reverb
// and an echo, and mastered to one loudness so the playlist never jumps.

#include <string>
#include <vector>

namespace vorn::tools {

struct StereoPiece {
    std::string file;     // name in data/music
    int rate = 44100;
    std::vector<float> left;
    std::vector<float> right;
};

// The title tune (loops: its end flows into its start) and every gameplay
// track (each with a written ending), mastered and ready to encode.
std::vector<StereoPiece> composeMusic();

// Integrated loudness in LUFS (K-weighted, gated) of a stereo signal.
double integratedLoudness(const std::vector<float>& left, const std::vector<float>& right, int rate);

}  // namespace vorn::tools
