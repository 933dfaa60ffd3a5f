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

TEST(RecordCipherTest, StartsAfreshWithEveryRecordOfAnySize) {
    // Sizes around the steps in which the bytes are combined, three records and a part of a fourth.
    for (const std::size_t size : {1U, 7U, 8U, 9U, 12U, 31U, 32U, 33U, 108U, 128U, 264U, 294U, 320U}) {
        const std::string plain(size * 3 + size / 2, 'x');
        EXPECT_EQ(Cipher(plain, size), test::EncipherByHand(plain, size)) << size;
    }
    const std::string longRecords = Cipher(std::string(3008, '\0'), 1504);
    EXPECT_EQ(longRecords.substr(1488, 16), test::TextFromHex("db0b749d3e1e0b6b46c113eaa30240ad"));
    EXPECT_EQ(longRecords.substr(1504), longRecords.substr(0, 1504));
    EXPECT_EQ(Cipher("abc", 5000), test::EncipherByHand("abc", 5000));
    EXPECT_EQ(Cipher("", 264), "");
    EXPECT_EQ(Cipher("abc", 0), "abc");
}

}  // namespace
}  // namespace brennvar
