#include "tray/TrayBalloon_win.h"

#include "tray/NotifyBox_win.h"
#include "tray/TrayNotice.h"
#include "ui/ProgramIcon_win.h"

namespace brennvar {
namespace {

// What is still read at a glance, and fits on the smallest screen: a service may send 4095 characters.
constexpr std::size_t kTextCharacters = 600;
constexpr std::size_t kTextLines = 12;
constexpr std::size_t kTitleCharacters = 63;
constexpr std::size_t kLinkCharacters = 120;

constexpr int kIconSize = 16;  // at 96 pixels per inch

}  // namespace

void TrayBalloon::ShowTrayBalloon(HWND owner, const Notice& notice) {
    if (notice.text.empty()) return;
    const RECT anchor = GetTaskbarIconsRect();
    // A window in the tray or the task bar has nothing to bring forward.
    if (::IsWindowVisible(owner) && !::IsIconic(owner)) ::SetForegroundWindow(owner);
    BalloonOptions options{.timeout = notice.timeout, .keyboard = owner};
    if (m_isFirst) {
        m_isFirst = false;
        m_icon = LoadOwnIcon(notice.icon, Scale(kIconSize), Scale(kIconSize));
        options.owner = notice.parent;
    }
    options.icon = m_icon.Get();
    BalloonTexts texts{.title = CutNotice(notice.title, kTitleCharacters, 1),
                       .text = CutNotice(notice.text, kTextCharacters, kTextLines),
                       .link = {},
                       .time = notice.time};
    if (IsWebAddress(notice.link)) {
        texts.link = CutNotice(notice.link, kLinkCharacters, 1);
        options.onLink = [this, link = notice.link] { m_openLink(link); };
    }
    m_balloon.Show(texts, anchor, std::move(options));
}

}  // namespace brennvar
