#include "unit/texts/TextScanner.h"

#include <algorithm>
#include <cctype>
#include <charconv>
#include <cstddef>
#include <optional>
#include <utility>

namespace brennvar::test {
namespace {

constexpr auto kEnd = std::string_view::npos;

bool IsDigit(char c) {
    return std::isdigit(static_cast<unsigned char>(c)) != 0;
}
bool IsNameCharacter(char c) {
    return std::isalnum(static_cast<unsigned char>(c)) != 0 || c == '_';
}
// Blanks go from its beginning, and so does the mark if it stands there then.
bool Take(std::string_view& rest, std::string_view mark = {}) {
    rest.remove_prefix(std::min(rest.find_first_not_of(" \t\r\n"), rest.size()));
    if (!rest.starts_with(mark)) return false;
    rest.remove_prefix(mark.size());
    return true;
}

// A literal, behind its first quotation mark. The texts for the user need no other escapes.
bool TakeLiteral(std::string_view& rest, std::string& meaning) {
    constexpr std::pair<char, char> kEscapes[] = {{'n', '\n'}, {'t', '\t'}, {'"', '"'}, {'\\', '\\'}};
    for (bool isEscaped = false; !rest.empty() && rest[0] != '\n'; rest.remove_prefix(1)) {
        const char c = rest[0];
        if (isEscaped) {
            const auto* const escape =
                std::find_if(std::begin(kEscapes), std::end(kEscapes), [&](auto e) { return e.first == c; });
            if (escape == std::end(kEscapes)) return false;
            meaning += escape->second;
            isEscaped = false;
        } else if (c == '"') {
            rest.remove_prefix(1);
            return true;
        } else if (c == '\\') {
            isEscaped = true;
        } else {
            meaning += c;
        }
    }
    return false;
}

// N, "..." "..." and the closing mark; a comma may stand at the end of a list.
std::optional<FoundText> ReadPair(std::string_view rest, std::string_view close) {
    FoundText found;
    (void)Take(rest);
    const auto [end, error] = std::from_chars(rest.data(), rest.data() + rest.size(), found.number);
    if (error != std::errc() || found.number <= 0) return std::nullopt;
    rest.remove_prefix(static_cast<std::size_t>(end - rest.data()));
    if (!Take(rest, ",")) return std::nullopt;
    while (Take(rest, "\"")) {
        if (!TakeLiteral(rest, found.english)) return std::nullopt;
    }
    (void)Take(rest, ",");
    if (!Take(rest, close) || found.english.empty()) return std::nullopt;
    return found;
}

// One argument without a literal or number of its own; a Text{...} in it is looked at by itself.
bool HandsTextOn(std::string_view argument) {
    int depth = 0;
    for (std::size_t at = 0; at < argument.size(); ++at) {
        if (argument.substr(at).starts_with("Text{")) at = std::min(argument.find('}', at), argument.size() - 1);
        const char c = argument[at];
        if (c == '(' || c == '[') ++depth;
        if ((c == ')' || c == ']') && --depth < 0) return Take(argument) && argument[0] != ')';
        const bool isNumber = IsDigit(c) && (at == 0 || !IsNameCharacter(argument[at - 1]));
        if (c == '"' || (depth == 0 && (c == ',' || isNumber))) return false;
    }
    return false;
}

// What stands behind the bracket of a Text{...}, Text(...) or Text name{...} from behind the word; nothing: it is
// something else.
std::optional<std::string_view> InsideOfObject(std::string_view rest) {
    const bool hasName = Take(rest, "") && !rest.empty() && IsNameCharacter(rest[0]);
    while (hasName && !rest.empty() && IsNameCharacter(rest[0])) rest.remove_prefix(1);
    const bool isList = rest.starts_with('{');
    if (!isList && !rest.starts_with('(')) return std::nullopt;
    rest.remove_prefix(1);
    (void)Take(rest);
    if (rest.starts_with(isList ? '}' : ')')) return std::nullopt;
    // Behind a name these may as well be the parameters of a function.
    if (hasName && !isList && (rest.empty() || !IsDigit(rest[0]))) return std::nullopt;
    return rest;
}

}  // namespace

ScanResult ScanTexts(std::string_view source) {
    ScanResult result;
    for (std::size_t at = source.find("Text"); at != kEnd; at = source.find("Text", at + 1)) {
        std::string_view before = source.substr(0, at);
        if (before.substr(std::min(before.rfind('\n') + 1, before.size())).find("//") != kEnd) continue;
        std::string_view rest = source.substr(at + 4);
        const bool isCall = before.ends_with("Get") && rest.starts_with('(');
        if (isCall) before.remove_suffix(3);
        // A part of a longer name.
        if (!before.empty() && IsNameCharacter(before.back())) continue;
        if (!rest.empty() && IsNameCharacter(rest[0])) continue;
        std::string_view close = ")";
        if (isCall) {
            rest.remove_prefix(1);
            if (HandsTextOn(rest)) continue;
        } else {
            // Behind a point or an arrow it is another class's member of this name.
            if (before.ends_with('.') || before.ends_with("->")) continue;
            const auto inside = InsideOfObject(rest);
            if (!inside) continue;
            rest = *inside;
            const std::string_view upToInside = source.substr(0, source.size() - rest.size());
            close = upToInside[upToInside.find_last_of("({")] == '{' ? "}" : ")";
        }
        const int line = static_cast<int>(std::count(before.begin(), before.end(), '\n')) + 1;
        if (auto found = ReadPair(rest, close)) {
            found->line = line;
            result.texts.push_back(*std::move(found));
        } else {
            result.faults.push_back("line " + std::to_string(line) +
                                    ": not a number and literals that can be read");
        }
    }
    return result;
}

}  // namespace brennvar::test
