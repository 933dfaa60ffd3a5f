// Dialogs, menus and balloons: each page opens its own over an empty window.
#include <array>
#include <deque>
#include <functional>
#include <initializer_list>
#include <optional>

#include "NoTools.h"
#include "OpeningPage.h"
#include "app/AboutDialog_win.h"
#include "app/StatusLine_win.h"
#include "commands/ModeDisplay.h"
#include "config/KeyNames.h"
#include "config/Resources_win.h"
#include "controls/Button_win.h"
#include "dialogs/MessageDialog_win.h"
#include "prompts/ConfirmationDialog_win.h"
#include "prompts/MessageDialogAllowDeny_win.h"
#include "prompts/PromptText.h"
#include "prompts/QuestionMessage_win.h"
#include "tray/ModeButton_win.h"
#include "tray/TrayBalloon_win.h"
#include "tray/TrayMenu_win.h"
#include "ui/Balloon_win.h"
#include "ui/Paint_win.h"
#include "ui/PopupMenu_win.h"
#include "ui/ToolkitIds.h"

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
            .advice = advice,
            .company = "Aurora Software",
            .processId = 4711};
}

PromptFacts UnknownFacts() {
    PromptFacts facts = Facts(std::nullopt);
    facts.applicationKnown = false;
    return facts;
}

PromptFacts FactsOfHost() {
    PromptFacts facts = Facts(std::nullopt);
    facts.hostName = "downloads-of-the-day.cdn.example.network";  // 40 characters
    return facts;
}

PromptFacts TemporaryFacts() {
    PromptFacts facts = Facts(0);
    facts.path = R"(C:\Users\Jo\AppData\Local\Temp\7zS4A2B.tmp\setup.exe)";
    facts.fileDescription = "Setup";
    facts.company = "";
    return facts;
}

// Whatever comes from outside is longer than its place.
PromptFacts LongestFacts() {
    PromptFacts facts = Facts(0);
    facts.path = R"(C:\Users\Jo\AppData\Roaming\)" + std::string(200, 'W') + R"(\aurora.exe)";
    facts.fileDescription = std::string(60, 'W');
    facts.company = std::string(300, 'W');
    facts.hostName = "www.bank.example." + std::string(200, 'w') + ".attacker.example";
    facts.localAddress = facts.remoteAddress = 0xFEFEFEFE;
    facts.localPort = facts.remotePort = 65535;
    facts.protocol = 0xFFFFFFFF;
    facts.processId = 0xFFFFFFFE;
    return facts;
}

void PressKeys(HWND window, std::initializer_list<int> keys) {
    for (const int key : keys) ::PostMessageA(window, WM_KEYDOWN, static_cast<WPARAM>(key), 0);
}

void OpenMenu(HWND window, const Look& look) {
    const Language language = OpenLanguage();
    CPopupMenu more;
    more.Add(4, language.GetText(49, "Applications"), MenuImage::Applications);
    more.Add(5, language.GetText(50, "Traffic Log"), MenuImage::TrafficLog, {.isDefault = true});
    CPopupMenu menu;
    menu.AddSubMenu(std::move(more), language.GetText(41, "Brennvar Personal Firewall"), MenuImage::Shield);
    menu.AddSeparator();
    menu.Add(461, language.GetText(45, "Statistics"), MenuImage::Statistics);
    menu.Add(462, language.GetText(46, "Connections"), MenuImage::Connections, {.isChecked = true});
    menu.Add(429, language.GetText(47, "Advanced"), MenuImage::Advanced);
    menu.Add(437, language.GetText(48, "Options"), MenuImage::Options, {.isDisabled = true});
    menu.AddSeparator();
    menu.Add(1, WithKey(language.GetText(1070, "&Copy"), KeyStroke::ControlC, language), MenuImage::Copy);
    menu.Add(2, WithKey(language.GetText(1071, "Select &all"), KeyStroke::ControlA, language),
             MenuImage::SelectAll);
    menu.Add(3, WithKey(language.GetText(1072, "&Refresh"), KeyStroke::F5, language), MenuImage::Refresh);
    menu.AddSeparator();
    menu.Add(427, language.GetText(52, "About"), MenuImage::About);
    menu.Add(376, language.GetText(53, "Exit Firewall"), MenuImage::Exit);
    PressKeys(window, {VK_DOWN, VK_RIGHT});
    POINT corner{64, 16};
    ::ClientToScreen(window, &corner);
    const CSkinImage images = LoadMenuImages();
    (void)menu.Track(window, corner, TPM_RETURNCMD, look, &images);
}

// The tray's own menu, with one of its sub-menus open.
void OpenTrayMenu(HWND window, const Look& look, ProtectionMode mode, std::initializer_list<int> keys) {
    PressKeys(window, keys);
    POINT corner{700, 600};
    ::ClientToScreen(window, &corner);
    ShowTrayMenu(window, corner, OpenLanguage(), {.mode = mode, .isNetworkOn = false}, look);
}

// A notice of the service at the notification area.
class NoticePage final : public GalleryPage {
public:
    explicit NoticePage(std::string link) : m_link(std::move(link)) {}
    [[nodiscard]] SIZE Size() const override { return {960, 640}; }
    void Fill(HWND, const Look&) override {}
    void OnShown(HWND window, const Look& look) override {
        const Language language = OpenLanguage();
        m_balloon.emplace(look.fonts, [](const std::string&) {});
        m_balloon->ShowTrayBalloon(
            window, {.text = language.GetText(318, "Welcome to Brennvar Personal Firewall. It protects you") + " " +
                             language.GetText(319, "against unauthorized incoming and outgoing network traffic."),
                     .title = language.GetText(41, "Brennvar Personal Firewall"),
                     .time = "14:28",
                     .link = m_link,
                     .icon = IDI_PROGRAM});
    }

private:
    const std::string m_link;
    std::optional<TrayBalloon> m_balloon;
};

// The protection mode in the column's foot and on its card, at its width and at its least: each mode, and with the
// longest texts.
class ModesPage final : public GalleryPage {
public:
    [[nodiscard]] SIZE Size() const override { return {kCardsRight, kRows * kRowHeight}; }
    void PaintGround(HDC dc, const RECT& client, const Look& look) const override {
        const CSkinImage ground =
            CSkinImage::Load(look.skin.GetSkinImagePath("MAIN_BOTTOM_LEFT", "bottom_left.png"));
        FillSolid(dc, client, look.colours.page);
        for (int row = 0; row < kRows; ++row) {
            const LONG top = row * kRowHeight;
            ground.DrawPart(dc, {0, top, kColumn, top + kCellHeight}, {0, 0, ground.Width(), ground.Height()});
            for (const RECT& card : Cards(top)) {
                FillSolid(dc, card, look.colours.list);
                DrawFrame(dc, card, look.colours.frame2);
            }
        }
    }
    void Fill(HWND window, const Look& look) override {
        constexpr FileTime kNow = 133'500'000'000'000'000;
        constexpr FileTime kTwoHours = kNow + 7200 * kFileTimePerSecond;
        const ModeDisplay displays[] = {{ProtectionMode::Normal, {}},          {ProtectionMode::AllowAll, {}},
                                        {ProtectionMode::AllowAll, kTwoHours}, {ProtectionMode::BlockAll, {}},
                                        {ProtectionMode::BlockAll, kTwoHours}, {ProtectionMode::BlockAll, kNow}};
        static_assert(std::size(displays) == kRows);
        for (int row = 0; row < kRows; ++row) {
            const LONG top = row * kRowHeight;
            const auto add = [&](ModeButton::Form form, const RECT& place) {
                ModeButton& button = m_buttons.emplace_back(m_language);
                button.Create(window, form, static_cast<int>(m_buttons.size()), look);
                button.Place(place);
                button.Show(displays[row], kNow);
            };
            add(ModeButton::Form::Cell, StatusLine::ModePlace({kColumn, top, 900, top + kCellHeight}));
            for (const RECT& card : Cards(top)) add(ModeButton::Form::Card, Inset(card, 1));
        }
    }

private:
    static constexpr int kRows = 6;
    static constexpr int kRowHeight = 88;
    static constexpr int kColumn = 184;
    static constexpr int kCellHeight = 32;
    static constexpr int kCardsRight = kColumn + 8 + 240 + 8 + 192 + 8;
    static std::array<RECT, 2> Cards(LONG top) {
        constexpr LONG kSecond = kColumn + 8 + 240 + 8;
        return {RECT{kColumn + 8, top + 4, kColumn + 8 + 240, top + 84},
                RECT{kSecond, top + 4, kSecond + 192, top + 84}};
    }

    const Language m_language = OpenLanguage();
    std::deque<ModeButton> m_buttons;
};

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

void OpenConfirmation(HWND window, const Look& look, const PromptFacts& facts) {
    const PromptQuestion question = BuildPromptQuestion(facts, OpenLanguage());
    NoTools tools;
    (void)ConfirmationDialog(look.fonts, tools, question).Ask(window);
}

ActivityQuestion Activity(ActivityRequest::Kind kind) {
    return BuildActivityQuestion(
        {.kind = kind,
         .acting = {.path = R"(C:\Program Files\Aurora Browser Community Edition\application\bin\aurora.exe)",
                    .fileDescription = "Aurora Browser & Mail",
                    .icon = {},
                    .company = "Aurora Software"},
         .target = {.path = R"(C:\Program Files\Ledger\ledger.exe)", .fileDescription = {}}},
        OpenLanguage());
}

void OpenActivity(HWND window, const Look& look) {
    (void)MessageDialogAllowDeny(look.fonts, Activity(ActivityRequest::Kind::WriteToProcess)).Ask(window);
}

// All that can be asked at the same time.
void OpenQuestions(HWND window, const Look& look) {
    MessageDialogAllowDeny activity(look.fonts, Activity(ActivityRequest::Kind::StartBrowser));
    activity.Open(window, [] {});
    const ActivityQuestion question = Activity(ActivityRequest::Kind::ChangeAppInit);
    QuestionMessage message(look.fonts,
                            {.caption = question.caption,
                             .message = question.body,
                             .ok = question.allowButton,
                             .cancel = question.denyButton,
                             .isCancelDefault = true},
                            [] {});
    message.Open(window);
    OpenConfirmation(window, look, Facts(1));
}

std::unique_ptr<GalleryPage> ConfirmationOf(const PromptFacts& facts) {
    return std::make_unique<OpeningPage>(
        [facts](HWND window, const Look& look) { OpenConfirmation(window, look, facts); });
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
    return ConfirmationOf(Facts(1));
}
std::unique_ptr<GalleryPage> MakeConfirmationDenyGallery() {
    return ConfirmationOf(Facts(0));
}
std::unique_ptr<GalleryPage> MakeConfirmationNoneGallery() {
    return ConfirmationOf(Facts(std::nullopt));
}
std::unique_ptr<GalleryPage> MakeConfirmationUnknownGallery() {
    return ConfirmationOf(UnknownFacts());
}
std::unique_ptr<GalleryPage> MakeConfirmationHostGallery() {
    return ConfirmationOf(FactsOfHost());
}
std::unique_ptr<GalleryPage> MakeConfirmationTemporaryGallery() {
    return ConfirmationOf(TemporaryFacts());
}
std::unique_ptr<GalleryPage> MakeConfirmationLongestGallery() {
    return ConfirmationOf(LongestFacts());
}
std::unique_ptr<GalleryPage> MakeConfirmationFirstGallery() {
    // Time stands still, and the buttons stay as they are at first.
    QuestionStand::s_tickCount = []() -> ULONGLONG { return 0; };
    return ConfirmationOf(Facts(1));
}
std::unique_ptr<GalleryPage> MakeActivityGallery() {
    return std::make_unique<OpeningPage>(&OpenActivity);
}
std::unique_ptr<GalleryPage> MakeQuestionsGallery() {
    return std::make_unique<OpeningPage>(&OpenQuestions);
}
std::unique_ptr<GalleryPage> MakeAboutGallery() {
    return std::make_unique<OpeningPage>(&OpenAbout);
}
std::unique_ptr<GalleryPage> MakeMenuGallery() {
    return std::make_unique<OpeningPage>(&OpenMenu);
}
std::unique_ptr<GalleryPage> MakeTrayBlockGallery() {
    return std::make_unique<OpeningPage>([](HWND window, const Look& look) {
        OpenTrayMenu(window, look, ProtectionMode::Normal, {VK_DOWN, VK_DOWN, VK_RIGHT});
    });
}
std::unique_ptr<GalleryPage> MakeTrayAllowGallery() {
    return std::make_unique<OpeningPage>([](HWND window, const Look& look) {
        OpenTrayMenu(window, look, ProtectionMode::AllowAll, {VK_DOWN, VK_DOWN, VK_DOWN, VK_DOWN, VK_RIGHT});
    });
}
std::unique_ptr<GalleryPage> MakeNoticeGallery() {
    return std::make_unique<NoticePage>("");
}
std::unique_ptr<GalleryPage> MakeNoticeLinkGallery() {
    return std::make_unique<NoticePage>("https://www.brennvar.example/support/index.php");
}
std::unique_ptr<GalleryPage> MakeModesGallery() {
    return std::make_unique<ModesPage>();
}
std::unique_ptr<GalleryPage> MakeBalloonGallery() {
    return std::make_unique<BalloonPage>();
}

}  // namespace brennvar::gallery
