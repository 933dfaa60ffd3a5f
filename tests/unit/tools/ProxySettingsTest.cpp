#include "tools/ProxySettings.h"

#include <gtest/gtest.h>

namespace brennvar {
namespace {

TEST(ProxySettingsTest, AreOptions66To70) {
    OptionValues options;
    EXPECT_FALSE(ProxyOf(options).IsUsed());
    options.SetText(static_cast<OptionId>(66), "proxy.example");
    options.SetNumber(static_cast<OptionId>(67), 3128);
    options.SetText(static_cast<OptionId>(68), "fred");
    options.SetText(static_cast<OptionId>(69), "s3cret");
    options.SetNumber(static_cast<OptionId>(70), 1);
    const ProxySettings proxy = ProxyOf(options);
    EXPECT_TRUE(proxy.IsUsed());
    EXPECT_EQ(proxy.host, "proxy.example");
    EXPECT_EQ(proxy.port, 3128);
    EXPECT_EQ(proxy.user, "fred");
    EXPECT_EQ(proxy.password, "s3cret");
    EXPECT_EQ(proxy.kind, ProxyKind::Socks5);
}

TEST(ProxySettingsTest, TakeNumbersOutOfRangeForTheirDefaults) {
    OptionValues options;
    options.SetNumber(OptionId::ProxyPort, 65535);
    EXPECT_EQ(ProxyOf(options).port, 65535);
    options.SetNumber(OptionId::ProxyPort, 65536 + 80);
    options.SetNumber(OptionId::ProxyType, 2);
    EXPECT_EQ(ProxyOf(options).port, 0);
    EXPECT_EQ(ProxyOf(options).kind, ProxyKind::Http);
}

}  // namespace
}  // namespace brennvar
