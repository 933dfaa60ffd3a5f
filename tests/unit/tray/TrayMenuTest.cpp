#include "tray/TrayMenu.h"

#include <gtest/gtest.h>

#include "tray/TrayIconState.h"

namespace brennvar {
namespace {

// One line for each item: its command, its text, "*" when checked, the mode that it sets and for how many minutes;
// the items of sub-menus behind a bar.
std::string Describe(const std::vector<TrayMenuItem>& items, const std::string& indent = "") {
    std::string lines;
    for (const TrayMenuItem& item : items) {
        lines += indent + (item.IsSeparator() ? "-" : std::to_string(item.command) + " " + item.text);
        if (item.isChecked) lines += '*';
        if (const auto change = ModeChangeOf(item.command)) {
            lines += " =" + std::to_string(static_cast<int>(change->mode)) + "," + std::to_string(change->minutes);
        }
        lines += '\n' + Describe(item.items, indent + "|");
    }
    return lines;
}

TEST(TrayMenuTest, HasItsItemsInOrderWithTheModeChecked) {
    EXPECT_EQ(Describe(BuildTrayMenu(Language(nullptr), {.mode = ProtectionMode::BlockAll})),
              "409 Brennvar Personal Firewall\n-\n"
              "0 Block All*\n"
              "|435 Block All =2,0\n"
              "|856 Block All (5 min timeout) =2,5\n"
              "|857 Block All (10 min timeout) =2,10\n"
              "|858 Block All (15 min timeout) =2,15\n"
              "|859 Block All (30 min timeout) =2,30\n"
              "|860 Block All (60 min timeout) =2,60\n"
              "|861 Block All (120 min timeout) =2,120\n"
              "431 Normal =0,0\n"
              "0 Allow All\n"
              "|433 Allow All =1,0\n"
              "|850 Allow All (5 min timeout) =1,5\n"
              "|851 Allow All (10 min timeout) =1,10\n"
              "|852 Allow All (15 min timeout) =1,15\n"
              "|853 Allow All (30 min timeout) =1,30\n"
              "|854 Allow All (60 min timeout) =1,60\n"
              "|855 Allow All (120 min timeout) =1,120\n"
              "-\n461 Statistics\n462 Connections\n429 Advanced\n437 Options\n439 Applications\n463 Traffic Log\n"
              "-\n700 Enable Network Connections\n701 Disable Network Connections\n"
              "-\n427 About\n-\n376 Exit Firewall\n");
    EXPECT_TRUE(BuildModeMenu(Language(nullptr), ProtectionMode::Normal)[1].isChecked);
    EXPECT_TRUE(BuildModeMenu(Language(nullptr), ProtectionMode::AllowAll)[2].isChecked);
    for (const TrayMenuItem& item : BuildModeMenu(Language(nullptr), static_cast<ProtectionMode>(3))) {
        EXPECT_FALSE(item.isChecked) << item.text;
    }
}

TEST(TrayMenuTest, SwitchesTheNetworkOnlyToWhereItIsNotKnownToBe) {
    const std::pair<std::optional<bool>, std::string> rows[] = {
        {std::nullopt, ""}, {true, "700 "}, {false, "701 "}};
    for (const auto& [isNetworkOn, expected] : rows) {
        std::string disabled;
        for (const TrayMenuItem& item : BuildTrayMenu(Language(nullptr), {.isNetworkOn = isNetworkOn})) {
            if (item.isDisabled) disabled += std::to_string(item.command) + " ";
        }
        EXPECT_EQ(disabled, expected);
    }
}

TEST(TrayIconStateTest, TrafficComesBeforeTheMode) {
    const struct {
        std::uint64_t in, out;
        ProtectionMode mode;
        TrayIconState state;
    } rows[] = {{1, 1, ProtectionMode::BlockAll, TrayIconState::TrafficInAndOut},
                {1, 0, ProtectionMode::BlockAll, TrayIconState::TrafficIn},
                {0, 1, ProtectionMode::AllowAll, TrayIconState::TrafficOut},
                {0, 0, ProtectionMode::Normal, TrayIconState::IdleNormal},
                {0, 0, ProtectionMode::AllowAll, TrayIconState::IdleAllowAll},
                {0, 0, ProtectionMode::BlockAll, TrayIconState::IdleBlockAll},
                {0, 0, static_cast<ProtectionMode>(7), TrayIconState::IdleNormal}};
    for (const auto& row : rows) EXPECT_EQ(ChooseTrayIcon({row.in, row.out}, row.mode), row.state);
    EXPECT_EQ(ProtectionModeOf(3), ProtectionMode::Normal);
    EXPECT_EQ(ProtectionModeOf(2), ProtectionMode::BlockAll);
}

}  // namespace
}  // namespace brennvar
