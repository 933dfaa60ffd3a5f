#include "views/AddressActions.h"

#include <gtest/gtest.h>

namespace brennvar {

TEST(AddressActionsTest, EncodesEverythingButLettersAndDigits) {
    const std::pair<std::string_view, std::string_view> rows[] = {
        {"192.168.0.1", "192%2E168%2E0%2E1"},
        {"azAZ09", "azAZ09"},
        {"a b", "a+b"},
        {"`{@[/:", "%60%7B%40%5B%2F%3A"},  // the neighbours of letters and digits
        {std::string_view("\0\x7F\xE4\xFF", 4), "%00%7F%E4%FF"},
        {"", ""}};
    for (const auto& [given, expected] : rows) EXPECT_EQ(UrlEncodeAddress(given), expected) << given;
    EXPECT_EQ(LocateAddress("10.20.30.255"), "https://www.brennvar.example/locate/index.php?ip=10%2E20%2E30%2E255");
}

}  // namespace brennvar
