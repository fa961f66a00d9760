#include "support/flac_file.h"

#include <algorithm>

namespace vorn::test {
namespace {

// Appends values most significant bit first, as FLAC packs everything.
class BitWriter {
public:
    void put(std::uint64_t value, int bits) {
        for (int i = bits - 1; i >= 0; --i) {
            current = static_cast<std::uint8_t>((current << 1) | ((value >> i) & 1u));
            if (++filled == 8) {
                bytes.push_back(static_cast<char>(current));
                current = 0;
                filled = 0;
            }
        }
    }
    std::string bytes;

private:
    std::uint8_t current = 0;
    int filled = 0;
};

// CRC-8 (polynomial x^8 + x^2 + x + 1) of a frame header.
std::uint8_t crc8(const std::string& data) {
    std::uint8_t crc = 0;
    for (char c : data) {
        crc ^= static_cast<std::uint8_t>(c);
        for (int i = 0; i < 8; ++i) {
            crc = static_cast<std::uint8_t>((crc & 0x80) ? (crc << 1) ^ 0x07 : crc << 1);
        }
    }
    return crc;
}

// CRC-16 (polynomial x^16 + x^15 + x^2 + 1) of a whole frame.
std::uint16_t crc16(const std::string& data) {
    std::uint16_t crc = 0;
    for (char c : data) {
        crc ^= static_cast<std::uint16_t>(static_cast<std::uint8_t>(c) << 8);
        for (int i = 0; i < 8; ++i) {
            crc = static_cast<std::uint16_t>((crc & 0x8000) ? (crc << 1) ^ 0x8005 : crc << 1);
        }
    }
    return crc;
}

constexpr int kBlock = 1152;   // samples per channel in each frame

}  // namespace

std::string flacBytes(const std::vector<std::int16_t>& interleavedStereo) {
    const std::size_t total = interleavedStereo.size() / 2;
    BitWriter out;
    out.put(0x664C6143, 32);        // "fLaC"
    out.put(1, 1);                  // the last (and only) metadata block
    out.put(0, 7);                  // STREAMINFO
    out.put(34, 24);
    out.put(kBlock, 16);            // smallest block (the last may be shorter)
    out.put(kBlock, 16);            // largest block
    out.put(0, 24);                 // frame sizes unknown
    out.put(0, 24);
    out.put(44100, 20);
    out.put(2 - 1, 3);              // two channels
    out.put(16 - 1, 5);             // 16 bits a sample
    out.put(total, 36);
    for (int i = 0; i < 4; ++i) {
        out.put(0, 32);             // no MD5 signature
    }

    std::size_t frameNumber = 0;
    for (std::size_t first = 0; first < total; first += kBlock, ++frameNumber) {
        const std::size_t count = std::min<std::size_t>(kBlock, total - first);
        BitWriter frame;
        frame.put(0x3FFE, 14);      // frame sync
        frame.put(0, 1);
        frame.put(0, 1);            // fixed block size: frames counted by number
        frame.put(0x7, 4);          // block size given as 16 bits after the header
        frame.put(0x9, 4);          // 44.1 kHz
        frame.put(0x1, 4);          // left and right, independent
        frame.put(0x4, 3);          // 16 bits a sample
        frame.put(0, 1);
        frame.put(frameNumber, 8);  // frame numbers below 128 take one byte
        frame.put(count - 1, 16);
        frame.put(crc8(frame.bytes), 8);
        for (int channel = 0; channel < 2; ++channel) {
            frame.put(0x02, 8);     // a verbatim subframe, no wasted bits
            for (std::size_t i = 0; i < count; ++i) {
                frame.put(static_cast<std::uint16_t>(interleavedStereo[(first + i) * 2 + channel]), 16);
            }
        }
        frame.put(crc16(frame.bytes), 16);
        out.bytes += frame.bytes;
    }
    return out.bytes;
}

}  // namespace vorn::test
