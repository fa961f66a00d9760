#pragma once
// A small but real FLAC file, written by hand: one STREAMINFO block and
// frames of verbatim (uncompressed) subframes with their CRCs. FLAC is
// lossless, so whatever decodes it must give back exactly these samples;
// that makes it a sharp test of the mixer's FLAC decoder on every platform
// without shipping a binary fixture.

#include <cstdint>
#include <string>
#include <vector>

namespace vorn::test {

// Interleaved 16-bit stereo samples at 44.1 kHz as the bytes of a .flac file.
std::string flacBytes(const std::vector<std::int16_t>& interleavedStereo);

}  // namespace vorn::test
