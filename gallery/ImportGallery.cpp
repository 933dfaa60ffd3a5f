// The preview of an import of rules: with rules and other files, and with rules that cannot be read.
#include "OpeningPage.h"
#include "config/Resources_win.h"
#include "views/ImportDialog_win.h"

namespace brennvar::gallery {
namespace {

using enum ApplicationState;
using Kind = RuleChange::Kind;

ImportPreview Preview() {
    ImportPreview preview{
        .rules = {{.kind = Kind::Added, .path = R"(C:\Program Files\Northwind\northwind.exe)", .after = Allow},
                  {.kind = Kind::Added,
                   .path = R"(c:\program files\Northwind\Mail and Calendar\bin\mail-and-calendar-helper.exe)",
                   .after = Deny},
                  {.kind = Kind::Removed, .path = R"(C:\Users\Public\Downloads\helper.exe)", .before = Deny},
                  {.kind = Kind::Removed, .path = R"(C:\Windows\regedit.exe)", .before = Ask},
                  {.kind = Kind::Changed,
                   .path = R"(C:\Program Files\Aurora\aurora.exe)",
                   .before = Allow,
                   .after = Ask},
                  {.kind = Kind::Changed, .path = R"(C:\Windows\notepad.exe)", .before = Ask, .after = Deny}},
        .added = 2,
        .removed = 2,
        .changed = 2,
        .unchanged = 41,
        .files = {{.path = "rules_backup.conf", .before = 7120, .after = 8544}},
        .skipped = 1};
    return preview;
}

ImportPreview AdvancedPreview() {
    AdvancedRule mail;
    mail.description = "Mail";
    mail.action = AdvancedAction::Allow;
    mail.protocol = RuleProtocol::Tcp;
    mail.route = RuleRoute::Outgoing;
    mail.remote.firstPort = 993;
    mail.remote.lastPort = 995;
    mail.program = R"(C:\Program Files\Postbote\postbote.exe)";
    AdvancedRule nights;
    nights.description = "Quiet nights";
    nights.hours = RuleHours{.first = 22 * 60, .last = 6 * 60};
    AdvancedRule days = nights;
    days.hours = RuleHours{.first = 20 * 60, .last = 6 * 60};
    using AdvancedKind = AdvancedRuleChange::Kind;
    return {.advanced = {{.kind = AdvancedKind::Added, .after = mail, .placeAfter = 2},
                         {.kind = AdvancedKind::Removed, .before = mail, .placeBefore = 4},
                         {.kind = AdvancedKind::Changed, .before = nights, .after = days, .placeBefore = 1},
                         {.kind = AdvancedKind::Moved, .before = mail, .after = mail, .placeAfter = 3}},
            .added = 1,
            .removed = 1,
            .changed = 1,
            .moved = 1,
            .unchanged = 12,
            .damaged = 1};
}

std::unique_ptr<GalleryPage> Make(const ImportPreview& preview) {
    return std::make_unique<OpeningPage>([preview](HWND window, const Look& look) {
        const Language language = OpenLanguage();
        (void)ImportDialog(look.fonts, language, ImportRows(language, preview)).Ask(window);
    });
}

}  // namespace

std::unique_ptr<GalleryPage> MakeImportGallery() {
    return Make(Preview());
}

std::unique_ptr<GalleryPage> MakeImportAdvancedGallery() {
    return Make(AdvancedPreview());
}

std::unique_ptr<GalleryPage> MakeImportUnreadableGallery() {
    return Make({.isUnreadable = true});
}

}  // namespace brennvar::gallery
