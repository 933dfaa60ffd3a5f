#include "mail/MailAddress.h"

#include <algorithm>
#include <utility>

namespace brennvar {
namespace {

constexpr std::size_t kLongestAddress = 254;  // a path is 256 characters, angle brackets included

std::string_view Trimmed(std::string_view text) {
    constexpr std::string_view kBlanks = " \t\r\n";
    const std::size_t first = text.find_first_not_of(kBlanks);
    if (first == std::string_view::npos) return {};
    return text.substr(first, text.find_last_not_of(kBlanks) - first + 1);
}

// Where the first separator stands that is not within quotes; the size of the text when there is none.
std::size_t EndOfEntry(std::string_view text) {
    bool isQuoted = false;
    for (std::size_t i = 0; i < text.size(); ++i) {
        if (text[i] == '\\' && isQuoted) {
            ++i;
        } else if (text[i] == '"') {
            isQuoted = !isQuoted;
        } else if (!isQuoted && (text[i] == ',' || text[i] == ';')) {
            return i;
        }
    }
    return text.size();
}

std::string NameOf(std::string_view text) {
    if (text.size() < 2 || text.front() != '"' || text.back() != '"') return std::string(text);
    std::string name;
    text = text.substr(1, text.size() - 2);
    for (std::size_t i = 0; i < text.size(); ++i) {
        if (text[i] == '\\' && i + 1 < text.size()) ++i;
        name += text[i];
    }
    return name;
}

std::optional<MailAddress> ParseEntry(std::string_view entry) {
    MailAddress parsed;
    if (entry.ends_with('>')) {
        const std::size_t opening = entry.rfind('<');
        if (opening == std::string_view::npos) return std::nullopt;
        parsed.name = NameOf(Trimmed(entry.substr(0, opening)));
        entry = Trimmed(entry.substr(opening + 1, entry.size() - opening - 2));
    }
    const std::size_t at = entry.rfind('@');
    if (at == std::string_view::npos || at == 0 || at + 1 == entry.size()) return std::nullopt;
    if (!IsSafeAddress(entry)) return std::nullopt;
    parsed.address = entry;
    return parsed;
}

}  // namespace

bool IsSafeAddress(std::string_view address) {
    const auto isUnsafe = [](char c) {
        return static_cast<unsigned char>(c) <= ' ' || c == '\x7F' || c == '<' || c == '>';
    };
    return !address.empty() && address.size() <= kLongestAddress &&
           std::none_of(address.begin(), address.end(), isUnsafe);
}

std::optional<std::vector<MailAddress>> ParseAddresses(std::string_view text) {
    std::vector<MailAddress> addresses;
    while (!text.empty()) {
        const std::size_t end = EndOfEntry(text);
        const std::string_view entry = Trimmed(text.substr(0, end));
        text.remove_prefix(std::min(end + 1, text.size()));
        if (entry.empty()) continue;
        std::optional<MailAddress> parsed = ParseEntry(entry);
        if (!parsed) return std::nullopt;
        addresses.push_back(std::move(*parsed));
    }
    return addresses;
}

}  // namespace brennvar
