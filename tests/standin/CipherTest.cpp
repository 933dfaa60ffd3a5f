#include "service/Cipher.h"

#include <gtest/gtest.h>

#include <array>
#include <cstdint>
#include <cstring>

namespace brennvar::standin {
namespace {

// Made with another program: openssl enc -rc4 -K 9E3B51C7046DF288A17C35DA601FB4E9.
TEST(CipherTest, YieldsTheKeystreamOfTheProductsKey) {
    constexpr std::array<std::uint8_t, 32> kKeystream{
        0x0E, 0x1A, 0x89, 0xA0, 0xC6, 0x60, 0x93, 0xE8, 0x1F, 0x22, 0x86, 0xA6, 0x20, 0x6F, 0x5E, 0x57,
        0x8A, 0xF4, 0xD2, 0x89, 0x6E, 0xC9, 0xBD, 0x27, 0x78, 0x53, 0xEA, 0x89, 0xCE, 0x42, 0x8A, 0x3F};
    std::array<std::uint8_t, 268> zeros{};
    CipherRecord(std::as_writable_bytes(std::span(zeros)));
    EXPECT_EQ(std::memcmp(zeros.data(), kKeystream.data(), kKeystream.size()), 0);
    // Past the 256th byte the counter starts over.
    constexpr std::array<std::uint8_t, 12> kAt256{0x66, 0xBE, 0xCB, 0x22, 0x58, 0xF1,
                                                  0x99, 0xD1, 0x73, 0x2B, 0x94, 0xE6};
    EXPECT_EQ(std::memcmp(zeros.data() + 256, kAt256.data(), kAt256.size()), 0);

    // Fresh for each record: the second is not enciphered with what follows the first.
    std::array<std::uint8_t, 4> second{0xFF, 0x00, 0x00, 0x01};
    CipherRecord(std::as_writable_bytes(std::span(second)));
    EXPECT_EQ(second, (std::array<std::uint8_t, 4>{0xF1, 0x1A, 0x89, 0xA1}));
}

}  // namespace
}  // namespace brennvar::standin
