// The network tools in a menu, the same wherever an address is shown. User-interface thread only.
#pragma once

#include <optional>

#include "base/Ipv4.h"
#include "config/Language.h"
#include "dialogs/AddressTools.h"
#include "ui/PopupMenu_win.h"

namespace brennvar {

// Adds an item for each tool; their commands are the given one and those that follow. They are grey when there is
// no address to ask about.
void AddAddressTools(CPopupMenu& menu, const Language& language, int firstCommand, bool isPossible);
// The tool of such a command; nothing: it is none of these.
[[nodiscard]] std::optional<AddressTool> AddressToolOf(int command, int firstCommand);

// Likewise two items: a rule for the address, and what decides about it.
void AddRuleTools(CPopupMenu& menu, const Language& language, int firstCommand, bool isPossible);
// False: it is neither of their commands.
bool DoRuleCommand(int command, int firstCommand, Ipv4 address, RuleTools& tools);

enum class AddressItems { Tools, ToolsAndRules };

// Shows such a menu below a button, which pumps messages, and opens the tool that the user chooses. The button may
// go meanwhile; the others are borrowed until the menu has closed.
void OpenToolFromMenu(HWND button, Ipv4 address, AddressItems items, AddressTools& tools, const Language& language,
                      const Look& look);

}  // namespace brennvar
