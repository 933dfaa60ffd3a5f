// The controls of the editor: what they are called, and where they stand.
#include <algorithm>

#include "advanced/AdvancedRuleDialog_win.h"
#include "config/ResourceIds.h"
#include "rules/RuleSentence.h"
#include "ui/ChildControls_win.h"
#include "ui/Paint_win.h"

namespace brennvar {
namespace {

// At 96 pixels per inch.
constexpr int kWidth = 840;  // of the content
constexpr int kGap = 12;     // between blocks
constexpr int kSmallGap = 8;
constexpr int kRowGap = 4;  // below a remark
constexpr int kActionWidth = 104;
constexpr int kProtocolWidth = 144;
constexpr int kEndGap = 4;  // inside the frame of an end, below its last remark
constexpr int kTimeWidth = 64;
constexpr int kDayWidth = 96;
constexpr int kUserShare = 3;  // of eight parts of the row that the program has the rest of
constexpr int kCardInset = 8;
constexpr int kSentenceLines = 3;

constexpr RuleField After(RuleField field, int count) {
    return static_cast<RuleField>(static_cast<int>(field) + count);
}

}  // namespace

void AdvancedRuleDialog::CreateControls() {
    const Language& language = m_parts.language;
    const Look& look = GetLook();
    const HWND window = Window();
    m_note.Create(window, m_heading.note, LabelKind::Quiet, SS_LEFT | SS_NOPREFIX, IDC_RULE_NOTE, look);
    if (m_first.isDamaged) m_note.SetColour(look.colours.warning);
    CreateChoiceRow();
    CreateEnd(m_local, language.GetText(1986, "&Local end"), RuleField::LocalHost, IDC_RULE_LOOK_UP_LOCAL);
    CreateEnd(m_remote, language.GetText(1987, "&Remote end"), RuleField::RemoteHost, IDC_RULE_LOOK_UP_REMOTE);
    const std::string any = language.GetText(1918, "any");
    CreateRow(RuleField::Program, {.name = language.GetText(1992, "Pro&gram:"),
                                   .cue = any,
                                   .picks = language.GetText(2017, "Programs with connections")});
    m_browse.Create(window, kButton, language.GetText(1993, "&Browse..."), IDC_RULE_BROWSE, look);
    CreateRow(RuleField::User,
              {.name = language.GetText(1994, "&User:"), .cue = any, .picks = language.GetText(2018, "Users")});
    const std::string to = language.GetText(1997, "to");
    m_hours.Create(window, language.GetText(1995, "Only at these &hours:"), IDC_RULE_HOURS, look);
    CreateRow(RuleField::FirstTime, {});
    CreateRow(RuleField::LastTime, {.name = to, .hasRemark = false});
    m_dates.Create(window, language.GetText(1996, "Only on these da&ys:"), IDC_RULE_DATES, look);
    CreateRow(RuleField::FirstDay, {});
    CreateRow(RuleField::LastDay, {.name = to, .hasRemark = false});
    CreateRow(RuleField::Description, {.name = language.GetText(2000, "D&escription:"),
                                       .cue = language.GetText(2002, "What is this rule for?")});
    m_suggest.Create(window, kButton, language.GetText(2001, "&Suggest"), IDC_RULE_SUGGEST, look);
    m_sentence.Create(window, "", LabelKind::Plain, SS_LEFT | SS_NOPREFIX, IDC_RULE_SENTENCE, look);
    m_enabled.Create(window, language.GetText(1999, "E&nabled"), IDC_RULE_ENABLED, look);
    m_logged.Create(window, language.GetText(1998, "&Write matches to the traffic log"), IDC_RULE_LOGGED, look);
    ::SetDlgItemTextA(window, IDOK, language.GetText(125, "OK").c_str());
    ::SetDlgItemTextA(window, IDCANCEL, language.GetText(1001, "Cancel").c_str());
    m_ok.Adopt(Item(IDOK), kPrimaryButton, look);
    m_cancel.Adopt(Item(IDCANCEL), kButtonDialog, look);
    for (const HWND last : {m_ok.Window(), m_cancel.Window()}) {
        ::SetWindowPos(last, HWND_BOTTOM, 0, 0, 0, 0, SWP_NOMOVE | SWP_NOSIZE | SWP_NOACTIVATE);
    }
}

void AdvancedRuleDialog::CreateChoiceRow() {
    const Language& language = m_parts.language;
    const Look& look = GetLook();
    const HWND window = Window();
    constexpr DWORD kName = SS_LEFT | SS_CENTERIMAGE;
    // Without a mnemonic: a radio button that gets the keyboard by one is checked.
    m_actionName.Create(window, language.GetText(1503, "Action:"), LabelKind::Plain, kName, IDC_RULE_LABEL, look);
    m_deny.Create(window, ActionText(language, AdvancedAction::Deny), RadioPlace::FirstOfGroup, IDC_RULE_DENY,
                  look);
    m_allow.Create(window, ActionText(language, AdvancedAction::Allow), RadioPlace::Further, IDC_RULE_ALLOW, look);
    // A group of radio buttons ends where the next one begins.
    m_protocolName.Create(window, language.GetText(1983, "&Protocol:"), LabelKind::Plain, kName | WS_GROUP,
                          IDC_RULE_LABEL, look);
    m_protocol.Create(window, IDC_RULE_PROTOCOL, look);
    for (const RuleProtocol protocol : kRuleProtocols) m_protocol.Add(ProtocolText(language, protocol));
    m_routeName.Create(window, language.GetText(1984, "D&irection:"), LabelKind::Plain, kName, IDC_RULE_LABEL,
                       look);
    m_route.Create(window, IDC_RULE_ROUTE, look);
    m_route.Add(language.GetText(1985, "Both directions"));
    m_route.Add(language.GetText(1330, "Incoming"));
    m_route.Add(language.GetText(1331, "Outgoing"));
}

void AdvancedRuleDialog::CreateEnd(EndParts& end, const std::string& title, RuleField host, int lookUpId) {
    const Language& language = m_parts.language;
    const std::string any = language.GetText(1918, "any");
    end.frame.Create(Window(), title, IDC_RULE_LABEL, GetLook());
    CreateRow(host, {.name = language.GetText(1988, "&Address:"), .cue = any});
    end.lookUp.Create(Window(), kButton, language.GetText(1991, "Loo&k up"), lookUpId, GetLook());
    CreateRow(After(host, 1), {.name = language.GetText(1989, "&Mask:"), .cue = "255.255.255.255"});
    CreateRow(After(host, 2),
              {.name = language.GetText(1990, "P&orts:"), .cue = any, .picks = language.GetText(2019, "Services")});
}

void AdvancedRuleDialog::CreateRow(RuleField field, const RuleFieldRow::Setup& setup) {
    Row(field).Create(Window(), field, setup, GetLook());
}

int AdvancedRuleDialog::RowHeight() const {
    return RuleFieldRow::HeightWithRemark(GetLook()) + Scale(kRowGap);
}

void AdvancedRuleDialog::PlaceControls() {
    const int width = Scale(kWidth);
    const int noteHeight = m_note.Measure(width).cy;
    const int lineHeight = MeasureText(GetLook().fonts.Text(), "Ag", 0).cy;
    const int frameHeight = lineHeight + Scale(3 * kSmallGap + kEndGap) + 3 * RowHeight();
    const int cardHeight = kSentenceLines * lineHeight + 2 * Scale(kCardInset);
    SetContentPixels({width, noteHeight + Scale(kSmallGap) + FieldHeight() + Scale(kGap) + frameHeight +
                                 Scale(kGap) + 3 * RowHeight() + Scale(kSmallGap) + cardHeight + Scale(kGap) +
                                 m_ok.Size().cy});
    const RECT content = ContentRect();
    int top = content.top;
    m_note.Place({content.left, top, content.right, top + noteHeight});
    top = PlaceChoiceRow(top + noteHeight + Scale(kSmallGap)) + Scale(kGap);

    const LONG half = (content.right - content.left - Scale(kGap)) / 2;
    PlaceEnd(m_local, RuleField::LocalHost, {content.left, top, content.left + half, top + frameHeight});
    PlaceEnd(m_remote, RuleField::RemoteHost, {content.right - half, top, content.right, top + frameHeight});
    top += frameHeight + Scale(kGap);
    PlaceWhoAndWhen(top);

    m_card = {content.left, top, content.right, top + cardHeight};
    m_sentence.Place(Inset(m_card, Scale(kCardInset)));

    LONG right = content.right;
    const LONG buttonTop = content.bottom - m_ok.Size().cy;
    for (const CButton* button : {&m_cancel, &m_ok}) {
        button->MoveTo(right - button->Size().cx, buttonTop);
        right -= button->Size().cx + Scale(kSmallGap);
    }
    LONG left = content.left;
    for (const CCheckBox* box : {&m_enabled, &m_logged}) {
        const LONG end = std::min(left + box->FullWidth(), right);
        box->Place({left, buttonTop, end, content.bottom});
        left = end + Scale(2 * kGap);
    }
}

int AdvancedRuleDialog::PlaceChoiceRow(int top) const {
    const RECT content = ContentRect();
    const int bottom = top + FieldHeight();
    LONG left = content.left;
    const auto placeName = [&](const CLabel& name) {
        const LONG width = name.Measure(0).cx;
        name.Place({left, top, left + width, bottom});
        left += width + Scale(kSmallGap);
    };
    placeName(m_actionName);
    for (const CRadioButton* button : {&m_deny, &m_allow}) {
        button->Place({left, top, left + Scale(kActionWidth), bottom});
        left += Scale(kActionWidth);
    }
    left += Scale(kGap);
    placeName(m_protocolName);
    m_protocol.Place({left, top, left + Scale(kProtocolWidth), bottom});
    left += Scale(kProtocolWidth + 2 * kGap);
    placeName(m_routeName);
    m_route.Place({left, top, content.right, bottom});
    return bottom;
}

void AdvancedRuleDialog::PlaceEnd(const EndParts& end, RuleField host, const RECT& place) const {
    end.frame.Place(place);
    const RECT inside = Inset(end.frame.Inside(), Scale(kEndGap));
    int nameWidth = 0;
    for (int i = 0; i < 3; ++i) nameWidth = std::max(nameWidth, Row(After(host, i)).NameWidth());
    const LONG buttonWidth = end.lookUp.Size().cx + Scale(kSmallGap);
    LONG top = inside.top;
    Row(host).Place({inside.left, top, inside.right - buttonWidth, top}, nameWidth, buttonWidth);
    end.lookUp.MoveTo(inside.right - end.lookUp.Size().cx, top + (FieldHeight() - end.lookUp.Size().cy) / 2);
    for (int i = 1; i < 3; ++i) {
        top += RowHeight();
        Row(After(host, i)).Place({inside.left, top, inside.right, top}, nameWidth);
    }
}

void AdvancedRuleDialog::PlaceWhoAndWhen(int& top) const {
    const RECT content = ContentRect();
    const LONG userWidth = (content.right - content.left) * kUserShare / 8;
    const int nameWidth = std::max(Row(RuleField::Program).NameWidth(), Row(RuleField::Description).NameWidth());
    const auto placeWithButton = [&](RuleField field, const CButton& button, LONG right) {
        const LONG buttonLeft = right - button.Size().cx;
        button.MoveTo(buttonLeft, top + (FieldHeight() - button.Size().cy) / 2);
        Row(field).Place({content.left, top, buttonLeft - Scale(kSmallGap), top}, nameWidth,
                         button.Size().cx + Scale(kSmallGap));
    };
    const LONG userLeft = content.right - userWidth + Scale(2 * kGap);
    placeWithButton(RuleField::Program, m_browse, userLeft - Scale(2 * kGap));
    Row(RuleField::User).Place({userLeft, top, content.right, top}, Row(RuleField::User).NameWidth());
    top += RowHeight();

    // Under the frames of the two ends.
    const LONG middle = content.left + (content.right - content.left + Scale(kGap)) / 2;
    PlaceLimits(m_hours, RuleField::FirstTime, {content.left, top, middle - Scale(kGap), top}, Scale(kTimeWidth));
    PlaceLimits(m_dates, RuleField::FirstDay, {middle, top, content.right, top}, Scale(kDayWidth));
    top += RowHeight();
    placeWithButton(RuleField::Description, m_suggest, content.right);
    top += RowHeight() + Scale(kSmallGap);
}

void AdvancedRuleDialog::PlaceLimits(const CCheckBox& box, RuleField first, const RECT& place,
                                     int fieldWidth) const {
    LONG left = place.left;
    box.Place({left, place.top, left + box.FullWidth(), place.top + FieldHeight()});
    left += box.FullWidth() + Scale(kSmallGap);
    // The remark of both stands below both, and has the rest of the row.
    const LONG firstEnd = left + fieldWidth;
    Row(first).Place({left, place.top, firstEnd, place.top}, 0, place.right - firstEnd);
    const RuleFieldRow& second = Row(After(first, 1));
    left = firstEnd + Scale(kSmallGap);
    second.Place({left, place.top, left + second.NameWidth() + Scale(kSmallGap) + fieldWidth, place.top},
                 second.NameWidth());
}

void AdvancedRuleDialog::OnPaintGround(HDC dc) {
    FillSolid(dc, m_card, GetLook().colours.list);
    DrawFrame(dc, m_card, GetLook().colours.frame2);
}

}  // namespace brennvar
