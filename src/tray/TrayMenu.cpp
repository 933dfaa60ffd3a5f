#include "tray/TrayMenu.h"

#include <array>
#include <cstddef>
#include <utility>

#include "config/ResourceIds.h"

namespace brennvar {
namespace {

// What the numbers of the timed commands stand for, in their order.
constexpr std::array<std::uint32_t, 6> kMinutes = {5, 10, 15, 30, 60, 120};

TrayMenuItem TimedMenu(const std::string& mode, int untimed, int firstTimed, bool isChecked) {
    TrayMenuItem menu{.text = mode, .isChecked = isChecked};
    menu.items.push_back({.command = untimed, .text = mode});
    for (const std::uint32_t minutes : kMinutes) {
        // Not translated, in no language.
        menu.items.push_back(
            {.command = firstTimed++, .text = mode + " (" + std::to_string(minutes) + " min timeout)"});
    }
    return menu;
}

std::optional<ModeChange> TimedChange(ProtectionMode mode, int command, int first) {
    if (command < first || command >= first + static_cast<int>(kMinutes.size())) return std::nullopt;
    return ModeChange{.mode = mode, .minutes = kMinutes[static_cast<std::size_t>(command - first)]};
}

}  // namespace

std::vector<TrayMenuItem> BuildModeMenu(const Language& language, ProtectionMode mode) {
    const auto modeText = [&](ProtectionMode of) { return language.GetText(ProtectionModeText(of)); };
    std::vector<TrayMenuItem> menu;
    menu.push_back(TimedMenu(modeText(ProtectionMode::BlockAll), IDM_MODE_BLOCK_ALL, IDM_MODE_BLOCK_TIMED_FIRST,
                             mode == ProtectionMode::BlockAll));
    menu.push_back({.command = IDM_MODE_NORMAL,
                    .text = modeText(ProtectionMode::Normal),
                    .isChecked = mode == ProtectionMode::Normal});
    menu.push_back(TimedMenu(modeText(ProtectionMode::AllowAll), IDM_MODE_ALLOW_ALL, IDM_MODE_ALLOW_TIMED_FIRST,
                             mode == ProtectionMode::AllowAll));
    return menu;
}

std::vector<TrayMenuItem> BuildTrayMenu(const Language& language, const TrayMenuState& state) {
    std::vector<TrayMenuItem> menu;
    menu.push_back({.command = IDM_OPEN, .text = language.GetText(41, "Brennvar Personal Firewall")});
    menu.push_back({});
    for (TrayMenuItem& item : BuildModeMenu(language, state.mode)) menu.push_back(std::move(item));
    menu.push_back({});
    menu.push_back({.command = IDM_STATISTICS, .text = language.GetText(45, "Statistics")});
    menu.push_back({.command = IDM_CONNECTIONS, .text = language.GetText(46, "Connections")});
    menu.push_back({.command = IDM_ADVANCED, .text = language.GetText(47, "Advanced")});
    menu.push_back({.command = IDM_OPTIONS, .text = language.GetText(48, "Options")});
    menu.push_back({.command = IDM_APPLICATIONS, .text = language.GetText(49, "Applications")});
    menu.push_back({.command = IDM_TRAFFIC_LOG, .text = language.GetText(50, "Traffic Log")});
    menu.push_back({});
    menu.push_back({.command = IDM_NETWORK_ENABLE,
                    .text = language.GetText(556, "Enable Network Connections"),
                    .isDisabled = state.isNetworkOn == true});
    menu.push_back({.command = IDM_NETWORK_DISABLE,
                    .text = language.GetText(557, "Disable Network Connections"),
                    .isDisabled = state.isNetworkOn == false});
    menu.push_back({});
    menu.push_back({.command = IDM_ABOUT, .text = language.GetText(52, "About")});
    menu.push_back({});
    menu.push_back({.command = IDM_EXIT, .text = language.GetText(53, "Exit Firewall")});
    return menu;
}

std::optional<ModeChange> ModeChangeOf(int command) {
    switch (command) {
        case IDM_MODE_NORMAL: return ModeChange{.mode = ProtectionMode::Normal};
        case IDM_MODE_ALLOW_ALL: return ModeChange{.mode = ProtectionMode::AllowAll};
        case IDM_MODE_BLOCK_ALL: return ModeChange{.mode = ProtectionMode::BlockAll};
        default: break;
    }
    if (const auto allow = TimedChange(ProtectionMode::AllowAll, command, IDM_MODE_ALLOW_TIMED_FIRST)) return allow;
    return TimedChange(ProtectionMode::BlockAll, command, IDM_MODE_BLOCK_TIMED_FIRST);
}

}  // namespace brennvar
