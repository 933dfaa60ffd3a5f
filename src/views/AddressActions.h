// What can be done with an address in a list, wherever it stands: rows of the Connections page and of the Traffic
// Log. A tool that asks others about an address becomes one more action here, and is then on both pages.
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
[[nodiscard]] std::string LocateAddress(Ipv4 address);

// For a model's table of actions.
inline constexpr ListAction kLocateAction{IDC_ADDRESS_LOCATE, Text{1672, "&Locate in browser"}, ActionPlace::Menu,
                                          ActionRows::Focused};

// False: it is none of these, or there is nothing to ask about 0.0.0.0.
[[nodiscard]] bool CanDoAddressAction(int action, Ipv4 address);
// False: it is none of these.
bool DoAddressAction(int action, Ipv4 address, ListView& view);

}  // namespace brennvar
