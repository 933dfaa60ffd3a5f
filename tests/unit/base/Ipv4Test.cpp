#include "base/Ipv4.h"

#include <gtest/gtest.h>

namespace brennvar {

TEST(Ipv4Test, ParsesAndFormatsTheLowestByteFirst) {
    for (const auto& [text, address] :
         {std::pair{"127.0.0.1", 0x0100007FU}, {"255.255.255.255", 0xFFFFFFFFU}, {"0.0.0.0", 0U}}) {
        EXPECT_EQ(ParseIpv4(text), address);
        EXPECT_EQ(FormatIpv4(address), text);
    }
    for (const char* bad : {"", "1.2.3", "1.2.3.", "1.2.3.4.", "1.2.3.256", "1.2.3.4 ", " 1.2.3.4", "1..3.4",
                            "1.2.3.0004", "-1.2.3.4", "99999999999.2.3.4"}) {
        EXPECT_EQ(ParseIpv4(bad), std::nullopt) << bad;
    }
}

}  // namespace brennvar
