#include "base/NetworkSignature.h"

#include <gtest/gtest.h>

#include <vector>

namespace brennvar {

TEST(NetworkSignatureTest, SumsOperationalAddressesModulo32Bits) {
    using Addresses = std::vector<InterfaceAddress>;
    EXPECT_EQ(NetworkSignature(Addresses{}), 0U);
    EXPECT_EQ(NetworkSignature(Addresses{{0x0100007F, 5}, {0x0A00000A, 5}}), 0x0B000089U);
    EXPECT_EQ(NetworkSignature(Addresses{{0x0100007F, 5}, {0x0A00000A, 4}, {1, 6}}), 0x0100007FU);
    EXPECT_EQ(NetworkSignature(Addresses{{0xFFFFFFFF, 5}, {0x00000003, 5}}), 2U);  // wraps
}

}  // namespace brennvar
