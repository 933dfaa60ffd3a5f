#include "ipc/RecordCipher.h"

#include <gtest/gtest.h>

#include <string>

#include "support/GoldenCipher.h"

namespace brennvar {
namespace {

std::string Cipher(std::string bytes, std::size_t recordSize) {
    CipherRecords(std::as_writable_bytes(std::span(bytes)), recordSize);
    return bytes;
}

TEST(RecordCipherTest, MatchesARecordEncipheredByHand) {
    // Option 18, value 600, text "second(s)".
    const std::string plain = std::string("\x12\0\0\0\x58\x02\0\0second(s)", 17) + std::string(111, '\0');
    const std::string golden = test::FromHex(
        "1c1a89a09e6293e86c47e5c94e0b7624a3f4d2896ec9bd277853ea89ce428a3f"
        "8572338d85503bd5088aa0d853a9a4f4ba5ba43253b76204db674663f024c9c3"
        "522839f6573f79520948a2453fe86b49c02f6171464e26d63d6ed788becf2449"
        "e7be8bb2ef9e667925ff3f5598589abcfcc59a1742ea9cbd57ce2821ff8e3985");
    EXPECT_EQ(Cipher(plain, 128), golden);
    EXPECT_EQ(Cipher(golden, 128), plain);
}

TEST(RecordCipherTest, StartsAfreshWithEveryRecord) {
    // Sizes around the steps in which the bytes are combined, three records and a part of a fourth.
    for (const std::size_t size : {1U, 7U, 8U, 9U, 12U, 31U, 32U, 33U, 108U, 128U, 264U, 294U, 320U}) {
        const std::string plain(size * 3 + size / 2, 'x');
        EXPECT_EQ(Cipher(plain, size), test::EncipherByHand(plain, size)) << size;
    }
}

TEST(RecordCipherTest, LeavesTheBytesAroundAlone) {
    std::string bytes(3 + 264 + 3, '\0');
    CipherRecords(std::as_writable_bytes(std::span(bytes)).subspan(3, 264), 264);
    EXPECT_EQ(bytes.substr(0, 3), std::string(3, '\0'));
    EXPECT_EQ(bytes.substr(3, 264), test::kKeystream.substr(0, 264));
    EXPECT_EQ(bytes.substr(267), std::string(3, '\0'));
}

TEST(RecordCipherTest, TakesRecordsOfAnySize) {
    const std::string longRecords = Cipher(std::string(3008, '\0'), 1504);
    EXPECT_EQ(longRecords.substr(0, 320), test::kKeystream);
    EXPECT_EQ(longRecords.substr(1488, 16), test::FromHex("db0b749d3e1e0b6b46c113eaa30240ad"));
    EXPECT_EQ(longRecords.substr(1504), longRecords.substr(0, 1504));
    EXPECT_EQ(Cipher("abc", 5000), test::EncipherByHand("abc", 5000));
    EXPECT_EQ(Cipher("", 264), "");
    EXPECT_EQ(Cipher("abc", 0), "abc");
}

}  // namespace
}  // namespace brennvar
