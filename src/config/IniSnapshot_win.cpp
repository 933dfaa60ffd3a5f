#include "config/IniSnapshot_win.h"

#include <string_view>

#include "base/Windows_win.h"

namespace brennvar {
namespace {

// More is no file of texts or colours.
constexpr std::size_t kLargestSection = 0x100000;

// Keys are names of ours: plain letters, digits and underscores.
std::string LowerCase(std::string_view text) {
    std::string lower(text);
    for (char& letter : lower) {
        if (letter >= 'A' && letter <= 'Z') letter = static_cast<char>(letter - 'A' + 'a');
    }
    return lower;
}

std::string_view Trimmed(std::string_view text) {
    constexpr std::string_view kBlanks = " \t";
    const std::size_t first = text.find_first_not_of(kBlanks);
    if (first == std::string_view::npos) return {};
    return text.substr(first, text.find_last_not_of(kBlanks) - first + 1);
}

// As for a single key: one pair of quotes keeps blanks and is no part of the value.
std::string_view Unquoted(std::string_view text) {
    const bool isQuoted =
        text.size() >= 2 && text.front() == text.back() && (text.front() == '"' || text.front() == '\'');
    return isQuoted ? text.substr(1, text.size() - 2) : text;
}

}  // namespace

std::string CIniSnapshot::Read(const std::string& section, const std::string& key,
                               const std::string& fallback) const {
    const std::lock_guard lock(m_lock);
    auto found = m_sections.find(section);
    if (found == m_sections.end()) found = m_sections.emplace(section, Load(section)).first;
    const auto value = found->second.find(LowerCase(key));
    return value == found->second.end() ? fallback : value->second;
}

CIniSnapshot::Values CIniSnapshot::Load(const std::string& section) const {
    // Lines one after the other, each with its zero, and a zero after the last. Every file of texts of ours fits at
    // once.
    std::string lines(0x10000, '\0');
    for (;;) {
        const DWORD length = ::GetPrivateProfileSectionA(section.c_str(), lines.data(),
                                                         static_cast<DWORD>(lines.size()), m_path.c_str());
        // Size minus two: it was cut.
        if (length + 2 < lines.size() || lines.size() >= kLargestSection) {
            lines.resize(length);
            break;
        }
        lines.resize(lines.size() * 2);
    }
    Values values;
    for (std::size_t at = 0; at < lines.size();) {
        const std::string_view line(lines.c_str() + at);
        at += line.size() + 1;
        const std::size_t equals = line.find('=');
        if (equals == std::string_view::npos) continue;
        // The first of two equal keys counts.
        values.emplace(LowerCase(Trimmed(line.substr(0, equals))), Unquoted(Trimmed(line.substr(equals + 1))));
    }
    return values;
}

}  // namespace brennvar
