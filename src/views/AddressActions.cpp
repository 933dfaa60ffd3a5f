#include "views/AddressActions.h"

namespace brennvar {
namespace {

constexpr std::string_view kLocatePage = "https://www.brennvar.example/locate/index.php?ip=";

bool IsAddressAction(int action) {
    return action == kLocateAction.id;
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

std::string LocateAddress(Ipv4 address) {
    return std::string(kLocatePage) + UrlEncodeAddress(FormatIpv4(address));
}

bool CanDoAddressAction(int action, Ipv4 address) {
    return IsAddressAction(action) && address != 0;
}

bool DoAddressAction(int action, Ipv4 address, ListView& view) {
    if (!IsAddressAction(action)) return false;
    if (address != 0) view.OpenLink(LocateAddress(address));
    return true;
}

}  // namespace brennvar
