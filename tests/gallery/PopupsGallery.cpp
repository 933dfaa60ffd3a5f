// Dialogs, menus and balloons: each page opens its own over an empty window.
#include <deque>
#include <functional>
#include <utility>

#include "GalleryPage.h"
#include "app/AboutDialog.h"
#include "config/Resources_win.h"
#include "prompts/ConfirmationDialog_win.h"
#include "ui/Balloon.h"
#include "ui/Button.h"
#include "ui/MessageDialog.h"
#include "ui/PopupMenu.h"
#include "ui/ResourceIds.h"

namespace brennvar::gallery {
namespace {

// A page that only opens something.
class OpeningPage final : public GalleryPage {
public:
    using Open = std::function<void(HWND window, const Look& look)>;
    explicit OpeningPage(Open open) : m_open(std::move(open)) {}
    [[nodiscard]] SIZE Size() const override { return {960, 640}; }
    void Fill(HWND, const Look&) override {}
    void OnShown(HWND window, const Look& look) override { m_open(window, look); }

private:
    const Open m_open;
};

PromptQuestion Question(PromptAdvice advice, const char* adviceText) {
    PromptQuestion question;
    question.path = R"(C:\Program Files\Aurora Browser Community Edition\application\bin\aurora.exe)";
    question.displayName = "Aurora Browser & Mail";
    question.remoteHost = "www.example.com";
    question.remoteAddress = "93.184.216.34:443";
    question.service = "HTTPS - Secure web connection";
    question.protocol = "TCP";
    question.adviceKind = advice;
    question.advice = adviceText;
    question.wantsText = "is trying to communicate to";
    question.detailsTitle = "Connection details:";
    question.remoteLabel = "Remote host:";
    question.serviceLabel = "Reason:";
    question.protocolLabel = "Protocol:";
    question.adviceLabel = "General advice:";
    question.askText = "Allow this network communication?";
    question.caption = "Confirm network connection";
    question.allowButton = "Yes";
    question.denyButton = "No";
    question.rememberText = "Remember my answer\nand do not ask me next time\nfor this application.";
    return question;
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
    CPopupMenu menu;
    menu.Add(409, "Brennvar Personal Firewall", MenuImage::Shield, {.isDefault = true});
    menu.AddSeparator();
    menu.AddSubMenu(TimedMenu("Block All", 435), "&Block All");
    menu.Add(431, "&Normal", MenuImage::None, {.isChecked = true});
    menu.AddSubMenu(TimedMenu("Allow All", 433), "A&llow All");
    menu.AddSeparator();
    menu.Add(461, "&Statistics", MenuImage::Statistics);
    menu.Add(462, "&Connections", MenuImage::Connections, {.isChecked = true});
    menu.Add(429, "&Advanced", MenuImage::Advanced);
    menu.Add(437, "&Options", MenuImage::Options, {.isDisabled = true});
    menu.AddSeparator();
    menu.Add(1, "&Copy\tCtrl+C", MenuImage::Copy);
    menu.Add(2, "Re&fresh the list of connections\tCtrl+Shift+F5", MenuImage::Refresh);
    menu.AddSeparator();
    menu.Add(427, "About", MenuImage::About);
    menu.Add(376, "E&xit Firewall", MenuImage::Exit);
    // Opens the sub-menu of Allow All.
    for (const WPARAM key : {WPARAM{'L'}, WPARAM{VK_DOWN}, WPARAM{VK_DOWN}})
        ::PostMessageA(window, WM_KEYDOWN, key, 0);
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
        const std::string text =
            "Welcome to Brennvar Personal Firewall. It protects you against unauthorized incoming and outgoing "
            "network traffic.";
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
    MessageDialog(look.fonts, {.caption = "Brennvar Personal Firewall",
                               .message = "The file could not be written.",
                               .ok = "OK",
                               .cancel = ""})
        .Ask(window);
}

void OpenQuestion(HWND window, const Look& look) {
    MessageDialog(
        look.fonts,
        {.caption = "Brennvar Personal Firewall",
         .message = "Do you really want to exit Brennvar Personal Firewall? Warning: After this action, your "
                    "system will be not protected against internet threats and your active connections could "
                    "be lost. Continue anyway?",
         .ok = "OK",
         .cancel = "Cancel"})
        .Ask(window);
}

template <PromptAdvice kAdvice>
void OpenConfirmation(HWND window, const Look& look) {
    const char* word = kAdvice == PromptAdvice::Allow ? "Allow" : kAdvice == PromptAdvice::Deny ? "Deny" : "None";
    (void)ConfirmationDialog(look.fonts, Question(kAdvice, word)).Ask(window);
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
    return std::make_unique<OpeningPage>(&OpenConfirmation<PromptAdvice::Allow>);
}
std::unique_ptr<GalleryPage> MakeConfirmationDenyGallery() {
    return std::make_unique<OpeningPage>(&OpenConfirmation<PromptAdvice::Deny>);
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
