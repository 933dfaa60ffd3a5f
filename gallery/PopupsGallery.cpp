// Dialogs, menus and balloons: each page opens its own over an empty window.
#include <deque>
#include <optional>

#include "OpeningPage.h"
#include "app/AboutDialog.h"
#include "config/Resources_win.h"
#include "prompts/ConfirmationDialog_win.h"
#include "prompts/PromptText.h"
#include "ui/Balloon.h"
#include "ui/Button.h"
#include "ui/MessageDialog.h"
#include "ui/PopupMenu.h"
#include "ui/ResourceIds.h"

namespace brennvar::gallery {
namespace {

PromptFacts Facts(std::optional<std::uint32_t> advice) {
    return {.path = R"(C:\Program Files\Aurora Browser Community Edition\application\bin\aurora.exe)",
            .fileDescription = "Aurora Browser & Mail",
            .protocol = 6,
            .localAddress = 0x0A010203,
            .localPort = 49152,
            .remoteAddress = 0x5DB8D822,
            .remotePort = 443,
            .hostName = "www.example.com",
            .advice = advice};
}

CPopupMenu TimedMenu(const std::string& mode, int first) {
    CPopupMenu menu;
    menu.Add(first, mode);
    for (const char* minutes : {"5", "10", "15", "30", "60", "120"}) {
        menu.Add(++first, mode + " (" + minutes + " min timeout)");
    }
    return menu;
}

void OpenMenu(HWND window, const Look& look) {
    const Language language = OpenLanguage();
    CPopupMenu menu;
    menu.Add(409, language.GetText(41, "Brennvar Personal Firewall"), MenuImage::Shield, {.isDefault = true});
    menu.AddSeparator();
    menu.AddSubMenu(TimedMenu(language.GetText(42, "Block All"), 435), language.GetText(42, "Block All"));
    menu.Add(431, language.GetText(43, "Normal"), MenuImage::None, {.isChecked = true});
    menu.AddSubMenu(TimedMenu(language.GetText(44, "Allow All"), 433), language.GetText(44, "Allow All"));
    menu.AddSeparator();
    menu.Add(461, language.GetText(45, "Statistics"), MenuImage::Statistics);
    menu.Add(462, language.GetText(46, "Connections"), MenuImage::Connections, {.isChecked = true});
    menu.Add(429, language.GetText(47, "Advanced"), MenuImage::Advanced);
    menu.Add(437, language.GetText(48, "Options"), MenuImage::Options, {.isDisabled = true});
    menu.AddSeparator();
    menu.Add(1, language.GetText(1070, "&Copy") + "\tCtrl+C", MenuImage::Copy);
    menu.Add(2, language.GetText(1071, "Select &all") + "\tCtrl+A", MenuImage::SelectAll);
    menu.Add(3, language.GetText(1072, "&Refresh") + "\tF5", MenuImage::Refresh);
    menu.AddSeparator();
    menu.Add(427, language.GetText(52, "About"), MenuImage::About);
    menu.Add(376, language.GetText(53, "Exit Firewall"), MenuImage::Exit);
    // Opens the sub-menu of Allow All.
    for (const int key : {VK_DOWN, VK_DOWN, VK_DOWN, VK_DOWN, VK_RIGHT}) {
        ::PostMessageA(window, WM_KEYDOWN, static_cast<WPARAM>(key), 0);
    }
    POINT corner{64, 16};
    ::ClientToScreen(window, &corner);
    const CSkinImage images = LoadMenuImages();
    (void)menu.Track(window, corner, TPM_RETURNCMD, look, &images);
}

class BalloonPage final : public GalleryPage {
public:
    [[nodiscard]] SIZE Size() const override { return {960, 640}; }
    void Fill(HWND window, const Look& look) override {
        m_button.Create(window, kButtonDialog, "Help", 1, look);
        m_button.MoveTo(16, 300);
    }
    void OnShown(HWND window, const Look& look) override {
        POINT corner{0, 0};
        ::ClientToScreen(window, &corner);
        const auto at = [&](LONG left, LONG top) {
            return RECT{corner.x + left, corner.y + top, corner.x + left + 20, corner.y + top + 20};
        };
        const Language language = OpenLanguage();
        const std::string text =
            language.GetText(318, "Welcome to Brennvar Personal Firewall. It protects you") + " " +
            language.GetText(319, "against unauthorized incoming and outgoing network traffic.");
        const HICON shield = ::LoadIconA(::GetModuleHandleA(nullptr), MAKEINTRESOURCEA(IDI_PROGRAM));
        Add(look).Show({"A title", text, ""}, at(300, 200));
        Add(look).Show({"Brennvar Personal Firewall", text, "What does this mean?"}, at(700, 300),
                       {.icon = shield});
        Add(look).Show({"", "Only a text.", ""}, {corner.x + 300, -10, corner.x + 320, 10});
        Add(look).Show({"Below the edge", "It is pointed to from the edge.", ""}, {1160, 2000, 1180, 2020});
        Add(look).ShowFor(m_button.Window(), {"A control", "What the control is for, and what it does.", ""});
    }

private:
    CBalloon& Add(const Look& look) { return m_balloons.emplace_back(look.fonts); }

    CButton m_button;
    std::deque<CBalloon> m_balloons;
};

void OpenMessage(HWND window, const Look& look) {
    const Language language = OpenLanguage();
    MessageDialog(look.fonts, {.caption = language.GetText(41, "Brennvar Personal Firewall"),
                               .message = language.GetText(170, "Description is missing!"),
                               .ok = language.GetText(125, "OK"),
                               .cancel = ""})
        .Ask(window);
}

void OpenQuestion(HWND window, const Look& look) {
    const Language language = OpenLanguage();
    MessageDialog(look.fonts, {.caption = language.GetText(41, "Brennvar Personal Firewall"),
                               .message = language.GetText(505, "Do you really want to exit?"),
                               .ok = language.GetText(125, "OK"),
                               .cancel = language.GetText(1001, "Cancel")})
        .Ask(window);
}

void OpenConfirmation(HWND window, const Look& look, std::optional<std::uint32_t> advice) {
    const PromptQuestion question = BuildPromptQuestion(Facts(advice), OpenLanguage());
    (void)ConfirmationDialog(look.fonts, question).Ask(window);
}

void OpenAbout(HWND window, const Look& look) {
    AboutDialog(look.fonts, OpenLanguage()).Show(window);
}

}  // namespace

std::unique_ptr<GalleryPage> MakeMessageGallery() {
    return std::make_unique<OpeningPage>(&OpenMessage);
}
std::unique_ptr<GalleryPage> MakeQuestionGallery() {
    return std::make_unique<OpeningPage>(&OpenQuestion);
}
std::unique_ptr<GalleryPage> MakeConfirmationGallery() {
    return std::make_unique<OpeningPage>([](HWND window, const Look& look) { OpenConfirmation(window, look, 1); });
}
std::unique_ptr<GalleryPage> MakeConfirmationDenyGallery() {
    return std::make_unique<OpeningPage>([](HWND window, const Look& look) { OpenConfirmation(window, look, 0); });
}
std::unique_ptr<GalleryPage> MakeAboutGallery() {
    return std::make_unique<OpeningPage>(&OpenAbout);
}
std::unique_ptr<GalleryPage> MakeMenuGallery() {
    return std::make_unique<OpeningPage>(&OpenMenu);
}
std::unique_ptr<GalleryPage> MakeBalloonGallery() {
    return std::make_unique<BalloonPage>();
}

}  // namespace brennvar::gallery
