// The editor of advanced rules: a new rule, a stored one that is filled in, one that was damaged, and what it says
// of fields that are wrong.
#include "OpeningPage.h"
#include "advanced/AdvancedRuleDialog_win.h"
#include "base/SystemClock.h"
#include "config/ResourceIds.h"
#include "config/Resources_win.h"

namespace brennvar::gallery {
namespace {

// Has the same to offer on every machine.
class ShownChoices final : public RuleChoices {
public:
    void FindPrograms(Told told) override { told({R"(C:\Program Files\Northwind\northwind.exe)"}); }
    void FindUsers(Told told) override { told({R"(HOME\fred)"}); }
    void LookUp(const std::string&, std::function<void(std::vector<Ipv4>)>) override {}
    void StopLookUp() override {}
    void Forget() override {}
};

// What the dialog borrows.
struct Surroundings {
    explicit Surroundings(const Look& look) : fonts(look.fonts) {}
    const CFonts& fonts;
    const Language language = OpenLanguage();
    ShownChoices choices;
    StopSignal stop;
    SystemClock clock{stop};
    [[nodiscard]] RuleDialogParts Parts() {
        return {.fonts = fonts, .language = language, .choices = choices, .clock = clock};
    }
};

AdvancedRule Filled() {
    AdvancedRule rule{.id = 7,
                      .protocol = RuleProtocol::Tcp,
                      .route = RuleRoute::Outgoing,
                      .hours = RuleHours{.first = 8 * 60, .last = 17 * 60},
                      .dates = RuleDates{.first = {2026, 12, 1}, .last = {2026, 12, 24}},
                      .isLogged = true,
                      .program = R"(C:\Program Files\Northwind\northwind.exe)",
                      .user = R"(HOME\fred)",
                      .description = "No shopping at work"};
    rule.remote = {.kind = RuleEnd::Kind::Ipv4,
                   .address = ParseIpv4("192.0.2.0").value_or(0),
                   .mask = MaskOf(24),
                   .firstPort = 80,
                   .lastPort = 88};
    return rule;
}

// What is typed into the dialog that opens next over the window.
struct Typing {
    RuleField field;
    const char* text;
};
constexpr Typing kMistakes[] = {{RuleField::LocalHost, "02:00:00:AB:CD:EF"},
                                {RuleField::LocalPorts, "88-80"},
                                {RuleField::RemoteHost, "192.0.2.4-192.0.2.6"},
                                {RuleField::RemotePorts, "nothing"},
                                {RuleField::Program, "browser.exe"},
                                {RuleField::User, "fred"},
                                {RuleField::FirstTime, "25:00"},
                                {RuleField::LastDay, "2026-11-31"},
                                {RuleField::Description, ""}};

void MakeMistakesLater(HWND window) {
    ::SetTimer(window, 1, USER_TIMER_MINIMUM, [](HWND owner, UINT, UINT_PTR id, DWORD) {
        ::KillTimer(owner, id);
        const HWND dialog = ::GetLastActivePopup(owner);
        for (const Typing& typing : kMistakes) {
            const int field = IDC_RULE_FIELD + static_cast<int>(typing.field);
            ::SetDlgItemTextA(dialog, field, typing.text);
            ::SendMessageA(dialog, WM_COMMAND, MAKEWPARAM(field, EN_KILLFOCUS), 0);
        }
    });
}

}  // namespace

std::unique_ptr<GalleryPage> MakeNewRuleGallery() {
    return std::make_unique<OpeningPage>([](HWND window, const Look& look) {
        Surroundings surroundings(look);
        (void)AddCustomRuleDialog(surroundings.Parts(), {}).Ask(window);
    });
}

std::unique_ptr<GalleryPage> MakeEditRuleGallery() {
    return std::make_unique<OpeningPage>([](HWND window, const Look& look) {
        Surroundings surroundings(look);
        (void)EditCustomRuleDialog(surroundings.Parts(), Filled(), {.number = 3, .count = 12}).Ask(window);
    });
}

std::unique_ptr<GalleryPage> MakeWrongRuleGallery() {
    return std::make_unique<OpeningPage>([](HWND window, const Look& look) {
        Surroundings surroundings(look);
        AdvancedRule rule = Filled();
        rule.isDamaged = true;
        MakeMistakesLater(window);
        (void)EditCustomRuleDialog(surroundings.Parts(), rule, {.number = 3, .count = 12}).Ask(window);
    });
}

}  // namespace brennvar::gallery
