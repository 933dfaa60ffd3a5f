#include "base/Ipv4.h"

#include <charconv>

namespace brennvar {

void AppendNumber(std::string& text, std::uint32_t number) {
    char digits[10];  // 4294967295
    const auto end = std::to_chars(digits, digits + sizeof digits, number).ptr;
    text.append(digits, end);
}

std::string FormatIpv4(Ipv4 address) {
    std::string text;
    for (unsigned shift = 0; shift < 32; shift += 8) {
        if (shift != 0) text += '.';
        AppendNumber(text, (address >> shift) & 0xFFU);
    }
    return text;
}

std::optional<Ipv4> ParseIpv4(std::string_view text) {
    Ipv4 address = 0;
    const char* at = text.data();
    const char* const end = at + text.size();
    for (unsigned shift = 0; shift < 32; shift += 8) {
        if (shift != 0 && (at == end || *at++ != '.')) return std::nullopt;
        std::uint32_t number = 0;
        const auto [next, error] = std::from_chars(at, end, number);
        if (error != std::errc() || number > 255 || next - at > 3) return std::nullopt;
        address |= number << shift;
        at = next;
    }
    if (at != end) return std::nullopt;
    return address;
}

}  // namespace brennvar
