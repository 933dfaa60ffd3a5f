#include "mail/HeaderText.h"

#include <algorithm>

#include "tools/Base64.h"

namespace brennvar {
namespace {

constexpr std::size_t kLongestWord = 75;    // RFC 2047, 2
constexpr std::size_t kLongestLine = 76;    // of a line with encoded words, there as well
constexpr std::size_t kLongestPlain = 900;  // below the 998 of RFC 5322, 2.1.1, with room for the header's name
constexpr std::size_t kLongestFileName = 200;

bool MayStandPlain(std::string_view text) {
    return IsAscii(text) && text.find("=?") == std::string_view::npos && text.size() <= kLongestPlain;
}

std::string EncodedWords(std::string_view text, CodePage page, std::size_t used, std::string_view between) {
    const std::string opening = std::string("=?") + CharsetName(page) + "?B?";
    constexpr std::string_view kClosing = "?=";
    std::string words;
    while (!text.empty()) {
        const std::size_t room = std::min(kLongestWord, kLongestLine - std::min(used, kLongestLine / 2));
        // Four letters carry three bytes, and a byte is a character.
        const std::size_t count = std::min(text.size(), (room - opening.size() - kClosing.size()) / 4 * 3);
        if (!words.empty()) words += between;
        words.append(opening).append(EncodeBase64(text.substr(0, count))).append(kClosing);
        text.remove_prefix(count);
        used = 1;  // the blank that begins the next line
    }
    return words;
}

}  // namespace

const char* CharsetName(CodePage page) {
    switch (page) {
        case CodePage::CentralEuropean: return "windows-1250";
        case CodePage::Cyrillic: return "windows-1251";
        default: return "windows-1252";
    }
}

std::string CleanText(std::string_view text) {
    std::string clean(text);
    const auto isControl = [](char c) { return static_cast<unsigned char>(c) < ' ' || c == '\x7F'; };
    std::replace_if(clean.begin(), clean.end(), isControl, ' ');
    return clean;
}

bool IsAscii(std::string_view text) {
    return std::none_of(text.begin(), text.end(), [](char c) { return static_cast<unsigned char>(c) > 127; });
}

std::string EncodeHeaderText(std::string_view text, CodePage page, std::size_t used) {
    std::string clean = CleanText(text);
    return MayStandPlain(clean) ? clean : EncodedWords(clean, page, used, "\r\n ");
}

std::string EncodeDisplayName(std::string_view name, CodePage page) {
    const std::string clean = CleanText(name);
    if (!MayStandPlain(clean)) return EncodedWords(clean, page, kBeforeName, "\r\n ");
    std::string quoted = "\"";
    for (const char c : clean) {
        if (c == '"' || c == '\\') quoted += '\\';
        quoted += c;
    }
    return quoted + '"';
}

std::string EncodeFileName(std::string_view name, CodePage page) {
    std::string clean = CleanText(name.substr(0, kLongestFileName));
    const auto isHarmful = [](char c) { return std::string_view("\"\\/:*?<>|").find(c) != std::string_view::npos; };
    std::replace_if(clean.begin(), clean.end(), isHarmful, '_');
    return '"' + (MayStandPlain(clean) ? clean : EncodedWords(clean, page, 0, " ")) + '"';
}

}  // namespace brennvar
