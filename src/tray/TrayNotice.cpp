#include "tray/TrayNotice.h"

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

}  // namespace brennvar
