// gallery.exe --page NAME   shows a page until it is closed, in the skin and the language of settings.ini
// gallery.exe --list        prints the pages, one a line: name, number of the windows and menus that it opens over
// its
//                           own window, and "translated" where it shows texts of the language
#include <cstring>
#include <memory>
#include <string>

#include "GalleryPage.h"
#include "config/Charset.h"
#include "config/Resources_win.h"
#include "ui/OwnMessages_win.h"
#include "ui/Window_win.h"

namespace brennvar::gallery {
namespace {

struct PageEntry {
    const char* name;
    std::unique_ptr<GalleryPage> (*make)();
    int opens = 0;
    bool isTranslated = false;
};

constexpr PageEntry kPages[] = {
    {"controls", &MakeControlsGallery},
    {"events", &MakeEventsGallery, 1},
    {"message", &MakeMessageGallery, 1, true},
    {"question", &MakeQuestionGallery, 1, true},
    {"confirmation", &MakeConfirmationGallery, 1, true},
    {"confirmation-deny", &MakeConfirmationDenyGallery, 1, true},
    {"confirmation-none", &MakeConfirmationNoneGallery, 1, true},
    {"confirmation-unknown", &MakeConfirmationUnknownGallery, 1, true},
    {"confirmation-host", &MakeConfirmationHostGallery, 1, true},
    {"confirmation-temporary", &MakeConfirmationTemporaryGallery, 1, true},
    {"confirmation-longest", &MakeConfirmationLongestGallery, 1, true},
    {"confirmation-first", &MakeConfirmationFirstGallery, 1, true},
    {"confirmation-activity", &MakeActivityGallery, 1, true},
    {"questions", &MakeQuestionsGallery, 3, true},
    {"about", &MakeAboutGallery, 1, true},
    {"menu", &MakeMenuGallery, 2, true},
    {"traymenu-block", &MakeTrayBlockGallery, 2, true},
    {"traymenu-allow", &MakeTrayAllowGallery, 2, true},
    {"notice", &MakeNoticeGallery, 1, true},
    {"notice-link", &MakeNoticeLinkGallery, 1, true},
    {"modes", &MakeModesGallery, 0, true},
    {"balloon", &MakeBalloonGallery, 5, true},
    {"tree", &MakeTreeGallery},
    {"password", &MakePasswordGallery, 1, true},
    {"password-wrong", &MakePasswordWrongGallery, 2, true},
    {"password-unconfirmed", &MakePasswordUnconfirmedGallery, 2, true},
    {"password-set", &MakeSetPasswordGallery, 1, true},
    {"password-set-wrong", &MakeSetPasswordWrongGallery, 2, true},
    {"password-set-unconfirmed", &MakeSetPasswordUnconfirmedGallery, 2, true},
    {"details-packet", &MakePacketDetailsGallery, 1, true},
    {"details-packet-large", &MakeLargePacketDetailsGallery, 1, true},
    {"details-log", &MakeLogDetailsGallery, 1, true},
    {"details-connection", &MakeConnectionDetailsGallery, 1, true},
    {"import", &MakeImportGallery, 1, true},
    {"import-advanced", &MakeImportAdvancedGallery, 1, true},
    {"import-unreadable", &MakeImportUnreadableGallery, 1, true},
    {"rule-new", &MakeNewRuleGallery, 1, true},
    {"rule-edit", &MakeEditRuleGallery, 1, true},
    {"rule-wrong", &MakeWrongRuleGallery, 1, true},
    {"trace", &MakeTraceGallery, 1, true},
    {"whois", &MakeWhoIsGallery, 1, true},
    {"graphs", &MakeGraphsGallery},
    {"statistics", &MakeStatisticsGallery, 0, true},
};

class GalleryWindow final : public CWindow {
public:
    GalleryWindow(const Look& look, GalleryPage& page) : m_look(look), m_page(page) {}

private:
    bool OnCreate() override {
        m_page.Fill(Window(), m_look);
        return true;
    }
    void OnDestroy() override { ::PostQuitMessage(0); }
    void OnPaint(HDC dc, const RECT&) override { m_page.PaintGround(dc, ClientRect(), m_look); }
    void OnCommand(int id, int notification) override { m_page.OnCommand(Window(), id, notification); }
    std::optional<LRESULT> OnMessage(UINT message, WPARAM wParam, LPARAM) override {
        if (message == WM_CLOSE) {
            EndWindow(Window());
            return 0;
        }
        if (message != WM_ERASEBKGND) return std::nullopt;
        m_page.PaintGround(reinterpret_cast<HDC>(wParam), ClientRect(), m_look);
        return TRUE;
    }

    const Look& m_look;
    GalleryPage& m_page;
};

std::unique_ptr<GalleryPage> MakePage() {
    const PageEntry* chosen = &kPages[0];
    for (int i = 1; i + 1 < __argc; ++i) {
        if (std::strcmp(__argv[i], "--page") != 0) continue;
        for (const PageEntry& page : kPages) {
            if (std::strcmp(__argv[i + 1], page.name) == 0) chosen = &page;
        }
    }
    return chosen->make();
}

void ListPages() {
    std::string names;
    for (const PageEntry& page : kPages) {
        names += std::string(page.name) + ' ' + std::to_string(page.opens);
        names += page.isTranslated ? " translated\n" : "\n";
    }
    // A program with windows has an output only where the caller gives it one.
    DWORD written = 0;
    (void)::WriteFile(::GetStdHandle(STD_OUTPUT_HANDLE), names.data(), static_cast<DWORD>(names.size()), &written,
                      nullptr);
}

int Run() {
    if (__argc == 2 && std::strcmp(__argv[1], "--list") == 0) {
        ListPages();
        return 0;
    }
    const CFonts fonts(GetFontCharset(CurrentLanguageName()));
    const Look look(fonts);
    const std::unique_ptr<GalleryPage> page = MakePage();
    GalleryWindow window(look, *page);
    WindowSetup setup;
    setup.text = "Gallery";
    setup.style = WS_OVERLAPPEDWINDOW | WS_CLIPCHILDREN;
    setup.extendedStyle = WS_EX_CONTROLPARENT;
    const SIZE size = page->Size();
    setup.place = {0, 0, size.cx, size.cy};
    ::AdjustWindowRectEx(&setup.place, setup.style, FALSE, setup.extendedStyle);
    ::OffsetRect(&setup.place, -setup.place.left, -setup.place.top);
    setup.className = "BrennvarGallery";
    if (!window.Create(setup)) return 1;
    ::ShowWindow(window.Window(), SW_SHOW);
    page->OnShown(window.Window(), look);
    MSG message;
    while (::GetMessageA(&message, nullptr, 0, 0) > 0) {
        // A page may open dialogs that leave the window as it is.
        if (::IsDialogMessageA(::GetAncestor(message.hwnd, GA_ROOT), &message)) continue;
        ::TranslateMessage(&message);
        ::DispatchMessageA(&message);
    }
    return static_cast<int>(message.wParam);
}

}  // namespace
}  // namespace brennvar::gallery

int WINAPI WinMain(HINSTANCE, HINSTANCE, LPSTR, int) {
    return brennvar::gallery::Run();
}
