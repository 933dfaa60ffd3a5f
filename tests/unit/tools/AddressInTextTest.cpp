#include "tools/AddressInText.h"

#include <gtest/gtest.h>

namespace brennvar {
namespace {

TEST(AddressInTextTest, FindsAnAddressThatStandsByItself) {
    struct Row {
        std::string_view line;
        std::string_view expected;  // empty: none
    };
    const Row rows[] = {
        {"IP: 10.0.0.1 [-] reached in: 12 ms.", "10.0.0.1"},
        {"inetnum:        192.0.2.0 - 192.0.2.255", "192.0.2.0"},
        {"NetRange:192.0.2.7-192.0.2.255", "192.0.2.7"},
        {"It belongs to 192.0.2.9.", "192.0.2.9"},
        {"(255.255.255.255)", "255.255.255.255"},
        {"0.0.0.0 is nobody, 1.2.3.4 is somebody", "1.2.3.4"},
        {"host 10.0.0.1.example", ""},
        {"version 1.2.3.4.5 or 1.2.3", ""},
        {"256.1.1.1 a1.2.3.4", ""},
        {"...", ""},
        {"", ""},
    };
    for (const Row& row : rows) {
        const std::optional<Ipv4> found = FindIpv4(row.line);
        EXPECT_EQ(found ? FormatIpv4(*found) : "", row.expected) << row.line;
    }
}

}  // namespace
}  // namespace brennvar
