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
    std::string expected = "409 Brennvar Personal Firewall\n-\n0 Block All*\n|435 Block All =2,0\n";
    const int minutes[] = {5, 10, 15, 30, 60, 120};
    const auto addTimed = [&](int command, const std::string& name, const std::string& mode) {
        for (const int count : minutes) {
            const std::string number = std::to_string(count);
            expected += "|" + std::to_string(command++) + " " + name + " (" + number + " min timeout) =" + mode +
                        "," + number + "\n";
        }
    };
    addTimed(856, "Block All", "2");
    expected += "431 Normal =0,0\n0 Allow All\n|433 Allow All =1,0\n";
    addTimed(850, "Allow All", "1");
    expected +=
        "-\n461 Statistics\n462 Connections\n429 Advanced\n437 Options\n439 Applications\n463 Traffic Log\n"
        "-\n700 Enable Network Connections\n701 Disable Network Connections\n-\n427 About\n-\n376 Exit Firewall\n";
    EXPECT_EQ(Describe(BuildTrayMenu(Language(nullptr), {.mode = ProtectionMode::BlockAll})), expected);
    const std::pair<ProtectionMode, std::string> modes[] = {
        {ProtectionMode::Normal, " 1"}, {ProtectionMode::AllowAll, " 2"}, {static_cast<ProtectionMode>(3), ""}};
    for (const auto& [mode, checked] : modes) {
        const std::vector<TrayMenuItem> items = BuildModeMenu(Language(nullptr), mode);
        std::string found;
        for (std::size_t i = 0; i < items.size(); ++i) found += items[i].isChecked ? " " + std::to_string(i) : "";
        EXPECT_EQ(found, checked);
    }
    // The network is switched only to where it is not known to be.
    const std::pair<std::optional<bool>, std::string> networks[] = {
        {std::nullopt, ""}, {true, "700 "}, {false, "701 "}};
    for (const auto& [isNetworkOn, wanted] : networks) {
        std::string disabled;
        for (const TrayMenuItem& item : BuildTrayMenu(Language(nullptr), {.isNetworkOn = isNetworkOn})) {
            if (item.isDisabled) disabled += std::to_string(item.command) + " ";
        }
        EXPECT_EQ(disabled, wanted);
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
}

}  // namespace
}  // namespace brennvar
