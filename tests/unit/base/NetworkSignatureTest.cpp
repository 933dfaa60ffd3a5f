#include "base/NetworkSignature.h"

#include <gtest/gtest.h>

#include <vector>

namespace brennvar {
namespace {

TEST(NetworkSignatureTest, SumsOperationalAddressesModulo32Bits) {
    struct Row {
        std::vector<InterfaceAddress> addresses;
        std::uint32_t expected;
    };
    const Row rows[] = {
        {{}, 0},
        {{{0x0100007F, 5}}, 0x0100007F},
        {{{0x0100007F, 5}, {0x0A00000A, 5}}, 0x0B000089},
        {{{0x0100007F, 5}, {0x0A00000A, 4}}, 0x0100007F},  // connected, but not operational
        {{{0x0100007F, 6}, {0x0A00000A, 0}}, 0},
        {{{0xFFFFFFFF, 5}, {0x00000003, 5}}, 2},  // wraps
    };
    for (const Row& row : rows) EXPECT_EQ(NetworkSignature(row.addresses), row.expected);
}

}  // namespace
}  // namespace brennvar
