#include "base/Ipv4.h"

#include <gtest/gtest.h>

namespace brennvar {
namespace {

TEST(Ipv4Test, FormatsTheLowestByteFirst) {
    EXPECT_EQ(FormatIpv4(0), "0.0.0.0");
    EXPECT_EQ(FormatIpv4(0x0100007F), "127.0.0.1");
    EXPECT_EQ(FormatIpv4(0xFFFFFFFF), "255.255.255.255");
}

TEST(Ipv4Test, ParsesFourNumbersAndNothingElse) {
    struct Row {
        std::string_view given;
        std::optional<Ipv4> expected;
    };
    const Row rows[] = {
        {"127.0.0.1", 0x0100007F},
        {"255.255.255.255", 0xFFFFFFFF},
        {"0.0.0.0", 0},
        {"", std::nullopt},
        {"1.2.3", std::nullopt},
        {"1.2.3.", std::nullopt},
        {"1.2.3.4.", std::nullopt},
        {"1.2.3.256", std::nullopt},
        {"1.2.3.4 ", std::nullopt},
        {" 1.2.3.4", std::nullopt},
        {"1..3.4", std::nullopt},
        {"1.2.3.0004", std::nullopt},
        {"-1.2.3.4", std::nullopt},
        {"99999999999.2.3.4", std::nullopt},
    };
    for (const Row& row : rows) EXPECT_EQ(ParseIpv4(row.given), row.expected) << row.given;
}

TEST(Ipv4Test, SwapsBetweenNetworkAndHostOrder) {
    EXPECT_EQ(SwapPort(0x3500), 53);
    EXPECT_EQ(SwapAddress(0x0100007F), 0x7F000001U);
}

}  // namespace
}  // namespace brennvar
