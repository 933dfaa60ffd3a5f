// Who writes a message and who gets it.
#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace brennvar {

struct MailAddress {
    std::string name;     // shown before the address; may be empty
    std::string address;  // "user@host"
    friend bool operator==(const MailAddress&, const MailAddress&) = default;
};

// Whether the address can stand between "<" and ">" in a command or a header and be nothing else: no control
// characters, no angle brackets, at most 254 characters (RFC 5321, 4.5.3.1.3), and not empty. No blank either.
[[nodiscard]] bool IsSafeAddress(std::string_view address);

// What a user types: addresses with "," or ";" between them, each plain or as "Name <address>", the name in quotes
// or not. Empty text is no address. Nothing when one of them is none: each needs something on both sides of an "@".
[[nodiscard]] std::optional<std::vector<MailAddress>> ParseAddresses(std::string_view text);

}  // namespace brennvar
