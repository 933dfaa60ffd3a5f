#include "unit/texts/TextScanner.h"

#include <algorithm>
#include <cctype>
#include <charconv>
#include <cstddef>
#include <optional>
#include <utility>

namespace brennvar::test {
namespace {

struct Token {
    enum class Kind { Name, Number, String, Other };
    Kind kind = Kind::Other;
    std::string text;  // of a string: what it means
    int line = 0;
    bool isValid = true;  // of a string: every escape is known and it has an end
};

bool IsNameCharacter(char c) {
    return std::isalnum(static_cast<unsigned char>(c)) != 0 || c == '_';
}

class Tokenizer {
public:
    explicit Tokenizer(std::string_view source) : m_source(source) {}

    std::vector<Token> Run() {
        while (m_at < m_source.size()) Step();
        return std::move(m_tokens);
    }

private:
    [[nodiscard]] bool LooksAt(std::string_view text) const { return m_source.substr(m_at).starts_with(text); }
    [[nodiscard]] bool AtEnd() const { return m_at >= m_source.size(); }

    void Step() {
        const char c = m_source[m_at];
        if (c == '\n') ++m_line;
        if (std::isspace(static_cast<unsigned char>(c)) != 0) {
            ++m_at;
        } else if (LooksAt("//")) {
            while (!AtEnd() && m_source[m_at] != '\n') ++m_at;
        } else if (LooksAt("/*")) {
            SkipPast("*/", m_at + 2);
        } else if (LooksAt("R\"")) {
            TakeRawString();
        } else if (c == '"') {
            TakeString();
        } else if (c == '\'') {
            TakeCharacter();
        } else if (std::isdigit(static_cast<unsigned char>(c)) != 0) {
            // With its separators, letters and point; only plain decimal numbers are of interest.
            TakeWhile(Token::Kind::Number, [](char d) { return IsNameCharacter(d) || d == '\'' || d == '.'; });
        } else if (IsNameCharacter(c)) {
            TakeWhile(Token::Kind::Name, IsNameCharacter);
        } else {
            m_tokens.push_back({.text = std::string(1, c), .line = m_line});
            ++m_at;
        }
    }

    // The text from here to the end mark; the lines in it are counted.
    std::string SkipPast(std::string_view mark, std::size_t from) {
        const std::size_t end = m_source.find(mark, from);
        const std::size_t next = end == std::string_view::npos ? m_source.size() : end + mark.size();
        m_line += static_cast<int>(std::count(m_source.begin() + static_cast<std::ptrdiff_t>(m_at),
                                              m_source.begin() + static_cast<std::ptrdiff_t>(next), '\n'));
        m_at = next;
        return std::string(m_source.substr(from, end == std::string_view::npos ? end : end - from));
    }

    template <class Predicate>
    void TakeWhile(Token::Kind kind, Predicate belongs) {
        const std::size_t start = m_at;
        while (!AtEnd() && belongs(m_source[m_at])) ++m_at;
        m_tokens.push_back({kind, std::string(m_source.substr(start, m_at - start)), m_line});
    }

    void TakeRawString() {
        const int line = m_line;
        const std::size_t open = m_source.find('(', m_at);
        std::string mark = ")";
        mark += m_source.substr(m_at + 2, open - m_at - 2);
        mark += '"';
        m_tokens.push_back({Token::Kind::String, SkipPast(mark, open + 1), line});
    }

    void TakeCharacter() {
        ++m_at;
        while (!AtEnd() && m_source[m_at] != '\'' && m_source[m_at] != '\n') m_at += m_source[m_at] == '\\' ? 2 : 1;
        ++m_at;
        m_tokens.push_back({.text = "'", .line = m_line});
    }

    void TakeString() {
        Token token{Token::Kind::String, "", m_line};
        ++m_at;
        while (!AtEnd() && m_source[m_at] != '"' && m_source[m_at] != '\n') {
            if (m_source[m_at] == '\\') {
                ++m_at;
                token.isValid = TakeEscape(token.text) && token.isValid;
            } else {
                token.text += m_source[m_at++];
            }
        }
        token.isValid = token.isValid && !AtEnd() && m_source[m_at] == '"';
        if (!AtEnd() && m_source[m_at] == '"') ++m_at;
        m_tokens.push_back(std::move(token));
    }

    // The texts for the user need no other escapes.
    bool TakeEscape(std::string& text) {
        constexpr std::pair<char, char> kKnown[] = {{'n', '\n'}, {'t', '\t'}, {'"', '"'}, {'\\', '\\'}};
        for (const auto& [letter, meaning] : kKnown) {
            if (AtEnd() || m_source[m_at] != letter) continue;
            text += meaning;
            ++m_at;
            return true;
        }
        return false;
    }

    std::string_view m_source;
    std::size_t m_at = 0;
    int m_line = 1;
    std::vector<Token> m_tokens;
};

class Scanner {
public:
    explicit Scanner(std::vector<Token> tokens) : m_tokens(std::move(tokens)) {}

    ScanResult Run() {
        for (std::size_t at = 0; at < m_tokens.size(); ++at) {
            if (IsName(at, "GetText") && Is(at + 1, "(") && !HandsTextOn(at + 1)) Take(at + 1, ")");
            if (IsName(at, "Text")) ScanObject(at);
        }
        return std::move(m_result);
    }

private:
    [[nodiscard]] bool Is(std::size_t at, std::string_view mark) const {
        return at < m_tokens.size() && m_tokens[at].kind == Token::Kind::Other && m_tokens[at].text == mark;
    }
    [[nodiscard]] bool IsKind(std::size_t at, Token::Kind kind) const {
        return at < m_tokens.size() && m_tokens[at].kind == kind;
    }
    [[nodiscard]] bool IsName(std::size_t at, std::string_view name) const {
        return IsKind(at, Token::Kind::Name) && m_tokens[at].text == name;
    }

    // N, "..." "..." and the closing mark, from the first token behind the opening one.
    [[nodiscard]] std::optional<FoundText> ReadPair(std::size_t at, std::string_view close) const {
        FoundText found;
        if (!IsKind(at, Token::Kind::Number) || !Is(at + 1, ",")) return std::nullopt;
        const std::string& digits = m_tokens[at].text;
        const auto [end, error] = std::from_chars(digits.data(), digits.data() + digits.size(), found.number);
        if (error != std::errc() || end != digits.data() + digits.size() || found.number <= 0) return std::nullopt;
        found.line = m_tokens[at].line;
        at += 2;
        if (!IsKind(at, Token::Kind::String)) return std::nullopt;
        for (; IsKind(at, Token::Kind::String); ++at) {
            if (!m_tokens[at].isValid) return std::nullopt;
            found.english += m_tokens[at].text;
        }
        if (Is(at, ",") && Is(at + 1, close)) ++at;  // a comma may stand at the end of a list
        if (!Is(at, close) || found.english.empty()) return std::nullopt;
        return found;
    }

    // The text behind the mark that opens at that token, or a fault.
    void Take(std::size_t open, std::string_view close) {
        if (const auto found = ReadPair(open + 1, close)) return m_result.texts.push_back(*found);
        m_result.faults.push_back("line " + std::to_string(m_tokens[open].line) +
                                  ": not a number and literals that can be read");
    }

    // One argument without a literal, but for those of a Text{...}, which is looked at by itself.
    [[nodiscard]] bool HandsTextOn(std::size_t open) const {
        int depth = 0;
        bool isInText = false;
        for (std::size_t at = open; at < m_tokens.size(); ++at) {
            if (Is(at, "(") || Is(at, "{") || Is(at, "[")) ++depth;
            if (Is(at, ")") || Is(at, "}") || Is(at, "]")) --depth;
            if (depth == 0) return at > open + 1;
            if (Is(at, "{")) isInText = IsName(at - 1, "Text");
            if (Is(at, "}")) isInText = false;
            if (IsKind(at, Token::Kind::String) && !isInText) return false;
            if (depth == 1 && (Is(at, ",") || IsKind(at, Token::Kind::Number))) return false;
        }
        return false;
    }

    void ScanObject(std::size_t at) {
        // Another class's member of this name.
        if (at > 0 && (Is(at - 1, ".") || (Is(at - 1, ">") && at > 1 && Is(at - 2, "-")))) return;
        // An object with a name of its own: the mark stands behind that.
        const bool hasName = IsKind(at + 1, Token::Kind::Name);
        const std::size_t open = at + (hasName ? 2 : 1);
        if (Is(open, "{") && !Is(open + 1, "}")) Take(open, "}");
        // Behind a name these may as well be the parameters of a function.
        if (Is(open, "(") && !Is(open + 1, ")") && (!hasName || IsKind(open + 1, Token::Kind::Number))) {
            Take(open, ")");
        }
    }

    std::vector<Token> m_tokens;
    ScanResult m_result;
};

}  // namespace

ScanResult ScanTexts(std::string_view source) {
    return Scanner(Tokenizer(source).Run()).Run();
}

}  // namespace brennvar::test
