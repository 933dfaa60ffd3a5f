// What can be done with an address in a list, wherever it stands: rows of the Connections page and of the Traffic
// Log. A tool that asks others about an address becomes one more action here, and is then on both pages.
// (dialogs/AddressTools.h is the way from anywhere else.)
#pragma once

#include <string>
#include <string_view>

#include "base/Ipv4.h"
#include "config/ResourceIds.h"
#include "lists/ListModel.h"

namespace brennvar {

// Letters and digits as they are, a blank as "+", everything else as "%" and its code in two hexadecimal digits:
// "192%2E168%2E0%2E1".
[[nodiscard]] std::string UrlEncodeAddress(std::string_view text);
// The page of the web that tells where the address is.
[[nodiscard]] std::string LocateAddress(std::string_view address);

// For a model's table of actions.
inline constexpr ListAction kTraceRouteAction{IDC_ADDRESS_TRACE_ROUTE, Text{1744, "&Trace route"},
                                              ActionPlace::Menu, ActionRows::Focused};
inline constexpr ListAction kWhoIsAction{IDC_ADDRESS_WHOIS, Text{1745, "&Who is it?"}, ActionPlace::Menu,
                                         ActionRows::Focused};
// The tools as buttons, which work without a row as well: the user then types what they are to ask about.
inline constexpr ListAction kTraceRouteButton{IDC_ADDRESS_TRACE_ROUTE, Text{1720, "Trace route..."},
                                              ActionPlace::ButtonAndMenu, ActionRows::FocusedIfAny};
inline constexpr ListAction kWhoIsButton{IDC_ADDRESS_WHOIS, Text{1721, "Who is it..."}, ActionPlace::ButtonAndMenu,
                                         ActionRows::FocusedIfAny};
inline constexpr ListAction kLocateAction{IDC_ADDRESS_LOCATE, Text{1672, "&Locate in browser"}, ActionPlace::Menu,
                                          ActionRows::Focused};

// What can be done with a whole connection (dialogs/RuleTools.h).
inline constexpr ListAction kMakeRuleAction{IDC_MAKE_RULE, Text{1935, "&Make a rule..."}, ActionPlace::Menu,
                                            ActionRows::Focused};
inline constexpr ListAction kWhyAction{IDC_WHY, Text{1933, "Wh&y?"}, ActionPlace::Menu, ActionRows::Focused};

[[nodiscard]] bool IsAddressAction(int action);
// False: it is none of these, or there is nothing to ask about 0.0.0.0.
[[nodiscard]] bool CanDoAddressAction(int action, Ipv4 address);
// False: it is none of these. Of 0.0.0.0 nothing is located, and the tools open empty.
bool DoAddressAction(int action, Ipv4 address, ListView& view);

// False: it is neither of the two.
[[nodiscard]] constexpr bool IsRuleAction(int action) {
    return action == IDC_MAKE_RULE || action == IDC_WHY;
}
bool DoRuleAction(int action, const TrafficFacts& facts, ListView& view);

}  // namespace brennvar
