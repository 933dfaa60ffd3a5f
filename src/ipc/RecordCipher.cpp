#include "ipc/RecordCipher.h"

#include <algorithm>
#include <array>
#include <cstdint>
#include <cstring>
#include <numeric>
#include <utility>
#include <vector>

namespace brennvar {
namespace {

// The key is the XOR of these two, so that it never stands whole in the program file. They are volatile because a
// compiler that knows both would put the result there itself.
constexpr std::size_t kKeySize = 16;
const volatile std::uint8_t kKeyMask[kKeySize] = {0x57, 0xA7, 0x13, 0x63, 0x7D, 0x7D, 0xF4, 0x70,
                                                  0x3C, 0x03, 0xD8, 0xF0, 0x4A, 0xF3, 0xE5, 0xB6};
const volatile std::uint8_t kMaskedKey[kKeySize] = {0xC9, 0x9C, 0x42, 0xA4, 0x79, 0x10, 0x06, 0xF8,
                                                    0x9D, 0x7F, 0xED, 0x2A, 0x2A, 0xEC, 0x51, 0x5F};

// Longer than every record of ours; the stream for a longer one is made anew for each call.
constexpr std::size_t kKeptStreamSize = 1024;

void MakeKeystream(std::span<std::byte> stream) {
    std::array<std::uint8_t, 256> state;
    std::iota(state.begin(), state.end(), std::uint8_t{0});
    for (unsigned i = 0, j = 0; i < state.size(); ++i) {
        const std::size_t k = i % kKeySize;
        j = (j + state[i] + (kKeyMask[k] ^ kMaskedKey[k])) & 0xFFU;
        std::swap(state[i], state[j]);
    }
    unsigned i = 0;
    unsigned j = 0;
    for (std::byte& out : stream) {
        i = (i + 1) & 0xFFU;
        j = (j + state[i]) & 0xFFU;
        std::swap(state[i], state[j]);
        out = std::byte{state[(state[i] + state[j]) & 0xFFU]};
    }
}

std::array<std::byte, kKeptStreamSize> MakeKeptStream() {
    std::array<std::byte, kKeptStreamSize> stream;
    MakeKeystream(stream);
    return stream;
}

// In words that are read, combined and written one at a time: compilers make vector instructions of this loop.
void XorInto(std::span<std::byte> data, const std::byte* stream) {
    std::uint64_t word = 0;
    std::uint64_t mask = 0;
    std::size_t at = 0;
    for (; data.size() - at >= sizeof word; at += sizeof word) {
        std::memcpy(&word, data.data() + at, sizeof word);
        std::memcpy(&mask, stream + at, sizeof mask);
        word ^= mask;
        std::memcpy(data.data() + at, &word, sizeof word);
    }
    for (; at < data.size(); ++at) data[at] ^= stream[at];
}

}  // namespace

void CipherRecords(std::span<std::byte> bytes, std::size_t recordSize) {
    if (recordSize == 0) return;
    static const std::array<std::byte, kKeptStreamSize> kept = MakeKeptStream();
    const std::byte* stream = kept.data();
    std::vector<std::byte> longStream;
    if (recordSize > kept.size()) {
        longStream.resize(std::min(recordSize, bytes.size()));
        MakeKeystream(longStream);
        stream = longStream.data();
    }
    while (!bytes.empty()) {
        const std::size_t size = std::min(recordSize, bytes.size());
        XorInto(bytes.first(size), stream);
        bytes = bytes.subspan(size);
    }
}

}  // namespace brennvar
