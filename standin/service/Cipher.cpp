#include "service/Cipher.h"

#include <array>
#include <cstdint>
#include <utility>

namespace brennvar::standin {
namespace {

constexpr std::size_t kKeySize = 16;
// The key is their XOR: it stands nowhere as a whole.
constexpr std::array<std::uint8_t, kKeySize> kKeyHalf1{0x45, 0xFB, 0x0E, 0xB7, 0xAF, 0x18, 0x99, 0x0B,
                                                       0xDB, 0x98, 0xAA, 0x9D, 0x5C, 0x50, 0x12, 0xBF};
constexpr std::array<std::uint8_t, kKeySize> kKeyHalf2{0xDB, 0xC0, 0x5F, 0x70, 0xAB, 0x75, 0x6B, 0x83,
                                                       0x7A, 0xE4, 0x9F, 0x47, 0x3C, 0x4F, 0xA6, 0x56};

// RC4's state after the key schedule.
std::array<std::uint8_t, 256> ScheduledState() {
    std::array<std::uint8_t, 256> state;
    for (std::size_t i = 0; i < state.size(); ++i) state[i] = static_cast<std::uint8_t>(i);
    std::size_t j = 0;
    for (std::size_t i = 0; i < state.size(); ++i) {
        const std::size_t key = kKeyHalf1[i % kKeySize] ^ kKeyHalf2[i % kKeySize];
        j = (j + state[i] + key) % state.size();
        std::swap(state[i], state[j]);
    }
    return state;
}

}  // namespace

void CipherRecord(std::span<std::byte> record) {
    std::array<std::uint8_t, 256> state = ScheduledState();
    std::size_t i = 0;
    std::size_t j = 0;
    for (std::byte& byte : record) {
        i = (i + 1) % state.size();
        j = (j + state[i]) % state.size();
        std::swap(state[i], state[j]);
        byte ^= std::byte{state[(state[i] + std::size_t{state[j]}) % state.size()]};
    }
}

}  // namespace brennvar::standin
