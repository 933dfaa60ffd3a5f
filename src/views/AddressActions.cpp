#include "views/AddressActions.h"

#include <optional>

namespace brennvar {
namespace {

constexpr std::string_view kLocatePage = "https://www.brennvar.example/locate/index.php?ip=";

std::optional<AddressTool> ToolOf(int action) {
    switch (action) {
        case IDC_ADDRESS_TRACE_ROUTE: return AddressTool::TraceRoute;
        case IDC_ADDRESS_WHOIS: return AddressTool::WhoIs;
        case IDC_ADDRESS_LOCATE: return AddressTool::Locate;
        default: return std::nullopt;
    }
}

// Without regard to the locale, which knows more letters.
bool IsLetterOrDigit(char c) {
    return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z') || (c >= '0' && c <= '9');
}

}  // namespace

std::string UrlEncodeAddress(std::string_view text) {
    constexpr std::string_view kDigits = "0123456789ABCDEF";
    std::string encoded;
    for (const char c : text) {
        if (IsLetterOrDigit(c)) {
            encoded += c;
        } else if (c == ' ') {
            encoded += '+';
        } else {
            const auto code = static_cast<unsigned char>(c);
            encoded += {'%', kDigits[code >> 4], kDigits[code & 0xF]};
        }
    }
    return encoded;
}

std::string LocateAddress(std::string_view address) {
    return std::string(kLocatePage) + UrlEncodeAddress(address);
}

bool IsAddressAction(int action) {
    return ToolOf(action).has_value();
}

bool CanDoAddressAction(int action, Ipv4 address) {
    return ToolOf(action) && address != 0;
}

bool DoAddressAction(int action, Ipv4 address, ListView& view) {
    const std::optional<AddressTool> tool = ToolOf(action);
    if (!tool) return false;
    if (*tool != AddressTool::Locate) {
        view.OpenTool(*tool, address != 0 ? FormatIpv4(address) : std::string());
    } else if (address != 0) {
        view.OpenLink(LocateAddress(FormatIpv4(address)));
    }
    return true;
}

bool DoRuleAction(int action, const TrafficFacts& facts, ListView& view) {
    if (action == IDC_MAKE_RULE) view.MakeRule(facts);
    if (action == IDC_WHY) view.Explain(facts);
    return IsRuleAction(action);
}

}  // namespace brennvar
