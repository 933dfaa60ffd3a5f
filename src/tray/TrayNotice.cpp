#include "tray/TrayNotice.h"

#include <algorithm>

#include "base/AsciiCase.h"

namespace brennvar {
namespace {

constexpr std::string_view kWhiteSpace = " \t\r\n";

std::string_view Trimmed(std::string_view text) {
    const std::size_t first = text.find_first_not_of(kWhiteSpace);
    if (first == std::string_view::npos) return {};
    return text.substr(first, text.find_last_not_of(kWhiteSpace) - first + 1);
}

}  // namespace

TrayNotice ParseTrayNotice(std::string_view message) {
    const std::size_t bar = message.find('|');
    TrayNotice notice;
    notice.text = message.substr(0, bar);
    if (bar != std::string_view::npos) notice.link = Trimmed(message.substr(bar + 1));
    if (notice.text == "REFRESH") notice.kind = TrayNotice::Kind::Refresh;
    if (notice.text == "ATTACK") notice.kind = TrayNotice::Kind::Attack;
    return notice;
}

std::string CutNotice(std::string_view text, std::size_t characters, std::size_t lines) {
    constexpr std::string_view kDots = "...";
    text = Trimmed(text);
    std::size_t end = std::min(text.size(), characters);
    std::size_t line = 0;
    for (std::size_t at = text.find('\n'); at < end; at = text.find('\n', at + 1)) {
        if (++line == lines) end = at;
    }
    if (end == text.size()) return std::string(text);
    // Back to the end of a word, unless that would cost a quarter of the text.
    const std::size_t blank = text.substr(0, end + 1).find_last_of(kWhiteSpace);
    if (blank != std::string_view::npos && blank >= end - end / 4) end = blank;
    std::string cut(Trimmed(text.substr(0, end)));
    cut += kDots;
    return cut;
}

bool IsWebAddress(std::string_view link) {
    const auto beginsWith = [&](std::string_view scheme) {
        return link.size() > scheme.size() && EqualsIgnoringCase(link.substr(0, scheme.size()), scheme);
    };
    const auto belongs = [](char character) { return character > ' ' && character < 0x7F && character != '"'; };
    return (beginsWith("http://") || beginsWith("https://")) && std::all_of(link.begin(), link.end(), belongs);
}

}  // namespace brennvar
