#include "tools/AddressInText.h"

#include <algorithm>

namespace brennvar {
namespace {

bool IsDigit(char c) {
    return c >= '0' && c <= '9';
}

// What belongs to a word: a name such as "10.0.0.1.example" holds no address.
bool IsOfWord(char c) {
    return IsDigit(c) || (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z') || c == '.' || c == '-' || c == '_' ||
           static_cast<unsigned char>(c) >= 0x80;
}

}  // namespace

std::optional<Ipv4> FindIpv4(std::string_view line) {
    const auto end = line.end();
    for (auto begin = std::find_if(line.begin(), end, IsOfWord); begin != end;) {
        const auto behind = std::find_if_not(begin, end, IsOfWord);
        std::string_view word(&*begin, static_cast<std::size_t>(behind - begin));
        // The end of a sentence, and a range that is written without blanks.
        word = word.substr(0, word.find('-'));
        while (word.ends_with('.')) word.remove_suffix(1);
        const std::optional<Ipv4> address = ParseIpv4(word);
        if (address && *address != 0) return address;
        begin = std::find_if(behind, end, IsOfWord);
    }
    return std::nullopt;
}

}  // namespace brennvar
