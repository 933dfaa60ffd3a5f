#include "dialogs/AddressMenu_win.h"

#include <cstddef>
#include <iterator>

#include "config/Text.h"

namespace brennvar {
namespace {

constexpr int kFirstCommand = 1;
constexpr int kFirstRuleCommand = 11;

struct Item {
    AddressTool tool;
    Text text;
};
constexpr Item kItems[] = {{AddressTool::TraceRoute, Text{1744, "&Trace route"}},
                           {AddressTool::WhoIs, Text{1745, "&Who is it?"}},
                           {AddressTool::Locate, Text{1672, "&Locate in browser"}}};

}  // namespace

void AddAddressTools(CPopupMenu& menu, const Language& language, int firstCommand, bool isPossible) {
    int command = firstCommand;
    for (const Item& item : kItems) {
        menu.Add(command++, language.GetText(item.text), MenuImage::None, {.isDisabled = !isPossible});
    }
}

std::optional<AddressTool> AddressToolOf(int command, int firstCommand) {
    const int index = command - firstCommand;
    if (index < 0 || index >= static_cast<int>(std::size(kItems))) return std::nullopt;
    return kItems[static_cast<std::size_t>(index)].tool;
}

void AddRuleTools(CPopupMenu& menu, const Language& language, int firstCommand, bool isPossible) {
    menu.Add(firstCommand, language.GetText(1935, "&Make a rule..."), MenuImage::None, {.isDisabled = !isPossible});
    menu.Add(firstCommand + 1, language.GetText(1933, "Wh&y?"), MenuImage::None, {.isDisabled = !isPossible});
}

bool DoRuleCommand(int command, int firstCommand, Ipv4 address, RuleTools& tools) {
    const TrafficFacts facts{.remoteAddress = address};
    if (command == firstCommand) {
        tools.MakeRule(facts);
    } else if (command == firstCommand + 1) {
        tools.Explain(facts);
    } else {
        return false;
    }
    return true;
}

void OpenToolFromMenu(HWND button, Ipv4 address, AddressItems items, AddressTools& tools, const Language& language,
                      const Look& look) {
    CPopupMenu menu;
    AddAddressTools(menu, language, kFirstCommand, true);
    if (items == AddressItems::ToolsAndRules) {
        menu.AddSeparator();
        AddRuleTools(menu, language, kFirstRuleCommand, true);
    }
    RECT place{};
    ::GetWindowRect(button, &place);
    const int command =
        menu.Track(::GetAncestor(button, GA_ROOT), {place.left, place.bottom}, TPM_RETURNCMD, look, nullptr);
    if (DoRuleCommand(command, kFirstRuleCommand, address, tools)) return;
    if (const auto tool = AddressToolOf(command, kFirstCommand)) tools.OpenTool(*tool, FormatIpv4(address));
}

}  // namespace brennvar
