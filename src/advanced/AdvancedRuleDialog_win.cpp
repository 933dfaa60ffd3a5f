#include "advanced/AdvancedRuleDialog_win.h"

#include <algorithm>
#include <utility>

#include "advanced/RuleFields.h"
#include "config/ResourceIds.h"
#include "dialogs/Questions_win.h"
#include "dialogs/SavePlaceDialog_win.h"
#include "logs/ServiceNameTable.h"
#include "rules/RuleSentence.h"
#include "ui/ChildControls_win.h"
#include "ui/PopupMenu_win.h"

namespace brennvar {
namespace {

using enum RuleField;

// What hours begin with when they are wanted: those of an office.
constexpr int kFirstMinute = 8 * 60;
constexpr int kLastMinute = 17 * 60;

// As many as a menu shows without growing endless; what is not among them can be typed.
constexpr std::size_t kMostPicks = 60;

// The field whose remark tells of this one as well.
RuleField RemarkOf(RuleField field) {
    if (field == LastTime) return FirstTime;
    return field == LastDay ? FirstDay : field;
}

// "&" is no mnemonic in a text from outside.
std::string MenuText(const std::string& text) {
    std::string doubled;
    for (const char c : text) doubled.append(c == '&' ? 2U : 1U, c);
    return doubled;
}

template <class Step>
void ForEachField(const Step& step) {
    for (std::size_t i = 0; i < kRuleFieldCount; ++i) step(static_cast<RuleField>(i));
}

}  // namespace

AdvancedRuleDialog::AdvancedRuleDialog(const RuleDialogParts& parts, const AdvancedRule& first, Heading heading)
    : CSkinDialog(parts.fonts), m_parts(parts), m_first(first), m_heading(std::move(heading)) {}

std::optional<AdvancedRule> AdvancedRuleDialog::Ask(HWND owner) {
    m_answer.reset();
    return DoModal(owner, IDD_ADVANCED_RULE) == IDOK ? m_answer : std::nullopt;
}

void AdvancedRuleDialog::OnCreateContent() {
    ::SetWindowTextA(Window(), m_heading.title.c_str());
    CreateControls();
    PlaceControls();
    ShowForm(RuleFormOf(m_first));
    m_isFilled = true;
    m_parts.choices.FindPrograms(
        m_alive.Guard([this](std::vector<std::string> paths) { m_programs = std::move(paths); }));
    m_parts.choices.FindUsers(
        m_alive.Guard([this](std::vector<std::string> users) { m_users = std::move(users); }));
    ShowState();
    // Where only the description is missing of a rule that somebody has filled in, that is what is to be typed.
    const bool isFilledIn = !(m_first == AdvancedRule()) && m_check.FirstFault() == Description;
    const int action = m_first.action == AdvancedAction::Allow ? IDC_RULE_ALLOW : IDC_RULE_DENY;
    SetFirstFocus(isFilledIn ? IDC_RULE_FIELD + static_cast<int>(Description) : action);
}

void AdvancedRuleDialog::ShowForm(const RuleForm& form) {
    m_deny.SetChecked(form.action == AdvancedAction::Deny);
    m_allow.SetChecked(form.action == AdvancedAction::Allow);
    const auto protocol = std::find(kRuleProtocols.begin(), kRuleProtocols.end(), form.protocol);
    m_protocol.Select(static_cast<int>(protocol - kRuleProtocols.begin()));
    m_route.Select(static_cast<int>(form.route));
    m_hours.SetChecked(form.hasHours);
    m_dates.SetChecked(form.hasDates);
    m_logged.SetChecked(form.isLogged);
    m_enabled.SetChecked(form.isEnabled);
    ForEachField([&](RuleField field) { Row(field).SetText(form.texts[field]); });
}

RuleForm AdvancedRuleDialog::ReadForm() const {
    const int protocol = std::max(m_protocol.Selected(), 0);
    RuleForm form{.action = m_allow.IsChecked() ? AdvancedAction::Allow : AdvancedAction::Deny,
                  .protocol = kRuleProtocols.at(static_cast<std::size_t>(protocol)),
                  .route = static_cast<RuleRoute>(std::max(m_route.Selected(), 0)),
                  .hasHours = m_hours.IsChecked(),
                  .hasDates = m_dates.IsChecked(),
                  .isLogged = m_logged.IsChecked(),
                  .isEnabled = m_enabled.IsChecked()};
    ForEachField([&](RuleField field) { form.texts[field] = Row(field).Text(); });
    return form;
}

void AdvancedRuleDialog::ShowState() {
    if (!m_isFilled) return;
    const RuleForm form = ReadForm();
    m_check = CheckRuleForm(form);
    m_check.rule.id = m_first.id;
    m_check.rule.idle = m_first.idle;
    ForEachField([&](RuleField field) { Row(field).Enable(m_check.ignored[field].number == 0); });
    for (const RuleField field : {FirstTime, LastTime}) Row(field).Enable(form.hasHours);
    for (const RuleField field : {FirstDay, LastDay}) Row(field).Enable(form.hasDates);
    ShowLookUp(m_local, LocalHost, form);
    ShowLookUp(m_remote, RemoteHost, form);
    ShowRemarks();
    m_sentence.SetText(Sentence());
    m_sentence.SetColour(m_check.FirstFault() ? GetLook().colours.quietText : GetLook().colours.text);
    const bool isWhole = !m_check.FirstFault();
    if ((::IsWindowEnabled(m_ok.Window()) != FALSE) != isWhole) ::EnableWindow(m_ok.Window(), isWhole);
}

void AdvancedRuleDialog::ShowRemarks() {
    using enum RuleFieldRow::RemarkKind;
    const Language& language = m_parts.language;
    OfRuleFields<std::pair<std::string, RuleFieldRow::RemarkKind>> remarks;
    ForEachField([&](RuleField field) {
        auto& remark = remarks[RemarkOf(field)];
        if (!remark.first.empty()) return;
        if (m_lookingUp == field) {
            remark = {language.GetText(2013, "Looking it up..."), Quiet};
        } else if (m_notFound == field) {
            remark = {language.GetText(2012, "This name has no IPv4 address."), Warning};
        } else if (m_found && m_found->host == field) {
            remark = {language.GetText(2152, "It has several addresses: F4 offers them."), Quiet};
        } else if (m_tells[field] && m_check.faults[field].number != 0) {
            remark = {language.GetText(m_check.faults[field]), Warning};
        } else if (m_check.ignored[field].number != 0) {
            remark = {language.GetText(m_check.ignored[field]), Quiet};
        } else if (m_check.hints[field].number != 0) {
            remark = {language.GetText(m_check.hints[field]), Quiet};
        }
    });
    ForEachField([&](RuleField field) {
        if (RemarkOf(field) == field) Row(field).ShowRemark(remarks[field].first, remarks[field].second);
    });
}

void AdvancedRuleDialog::ShowLookUp(const EndParts& end, RuleField host, const RuleForm& form) const {
    const bool isLooking = m_lookingUp == host;
    end.lookUp.SetText(isLooking ? m_parts.language.GetText(1403, "Stop")
                                 : m_parts.language.GetText(1991, "Loo&k up"));
    const bool isEnabled = isLooking || (!m_lookingUp && CanBeLookedUp(form, host));
    if ((::IsWindowEnabled(end.lookUp.Window()) != FALSE) == isEnabled) return;
    // The keyboard would stay with a button that does not answer it any more.
    if (!isEnabled && ::GetFocus() == end.lookUp.Window()) Row(host).Focus();
    ::EnableWindow(end.lookUp.Window(), isEnabled);
}

std::string AdvancedRuleDialog::Sentence() const {
    const Language& language = m_parts.language;
    const std::string sentence = RuleSentence(language, m_check.rule);
    const auto fault = m_check.FirstFault();
    if (!fault) return sentence;
    std::string text = language.GetText(m_check.faults[*fault]);
    // What cannot be read is not in the sentence: it must not pass for the rule.
    return text.append(" ").append(language.GetText(2007, "So far:")).append(" ").append(sentence);
}

void AdvancedRuleDialog::OnTyped(RuleField field) {
    if (!m_isFilled) return;
    if (m_lookingUp == field) StopLookUp();
    if (m_notFound == field) m_notFound.reset();
    if (m_found && m_found->host == field) m_found.reset();
    // What was right when the field was left is judged anew when it is left again.
    if (m_check.faults[field].number == 0) m_tells[field] = false;
    ShowState();
}

void AdvancedRuleDialog::OnLeft(RuleField field) {
    if (!m_isFilled || std::exchange(m_tells[field], true)) return;
    ShowState();
}

void AdvancedRuleDialog::OnLimitsChosen(const CCheckBox& box, RuleField first, const std::string& from,
                                        const std::string& to) {
    const auto second = static_cast<RuleField>(static_cast<int>(first) + 1);
    if (box.IsChecked() && Row(first).Text().empty() && Row(second).Text().empty()) {
        Row(first).SetText(from);
        Row(second).SetText(to);
    }
    ShowState();
}

void AdvancedRuleDialog::Confirm() {
    ShowState();
    if (m_check.FirstFault()) return TellFirstFault();
    m_answer = m_check.rule;
    End(IDOK);
}

void AdvancedRuleDialog::TellFirstFault() {
    const auto field = m_check.FirstFault();
    if (!field) return;
    ForEachField([&](RuleField each) { m_tells[each] = true; });
    ShowState();
    ShowMessage(GetLook().fonts, m_parts.language, Window(), m_parts.language.GetText(m_check.faults[*field]),
                MessageSign::Failure);
    if (Window()) Row(*field).Focus();
}

void AdvancedRuleDialog::Browse() {
    const Language& language = m_parts.language;
    const auto path = AskOpenPath(Window(), {.title = language.GetText(2008, "Choose a program"),
                                             .name = {},
                                             .types = {{language.GetText(2009, "Programs"), "exe"}}});
    if (!path || !Window()) return;
    Row(Program).SetText(*path);
    Row(Program).Focus();
}

void AdvancedRuleDialog::Suggest() {
    AdvancedRule rule = m_check.rule;
    rule.isEnabled = true;  // what it is for does not change when it is off
    Row(Description).SetText(RuleSentence(m_parts.language, rule).substr(0, kLongestRuleDescription));
    Row(Description).Focus();
}

void AdvancedRuleDialog::Pick(RuleField field) {
    const Language& language = m_parts.language;
    if (field == LocalPorts || field == RemotePorts) return PickPort(field);
    if (field == LocalHost || field == RemoteHost) return PickAddress(field);
    const bool isProgram = field == Program;
    const auto& known = isProgram ? m_programs : m_users;
    std::vector<PickItem> items;
    for (const std::string& text : known.value_or(std::vector<std::string>())) {
        if (items.size() < kMostPicks) items.push_back({.text = text, .label = MenuText(text)});
    }
    const std::string none = isProgram ? language.GetText(2010, "No program has connections now.")
                                       : language.GetText(2014, "No users were found.");
    PickOf(field, items, known ? none : language.GetText(2011, "Still looking..."));
}

void AdvancedRuleDialog::PickPort(RuleField field) {
    std::vector<PickItem> items;
    for (const ServiceName& service : ServiceNames()) {
        if (m_check.rule.protocol == RuleProtocol::Udp && !service.alsoUdp) continue;
        const std::string port = std::to_string(service.remotePort);
        items.push_back({.text = port, .label = MenuText(m_parts.language.GetText(service.text)) + '\t' + port});
    }
    PickOf(field, items, {});
}

void AdvancedRuleDialog::PickAddress(RuleField host) {
    if (!m_found || m_found->host != host) return;
    std::vector<PickItem> items;
    for (const Ipv4 address : m_found->addresses) {
        if (items.size() < kMostPicks) items.push_back({.text = FormatIpv4(address), .label = FormatIpv4(address)});
    }
    PickOf(host, items, {});
}

void AdvancedRuleDialog::PickOf(RuleField field, const std::vector<PickItem>& items, const std::string& none) {
    if (!::IsWindowEnabled(Row(field).Field())) return;
    CPopupMenu menu;
    for (std::size_t i = 0; i < items.size(); ++i) menu.Add(static_cast<int>(i) + 1, items[i].label);
    if (items.empty()) menu.Add(1, none, MenuImage::None, {.isDisabled = true});
    // The way a dialog gives the keyboard on, so that OK stays what Enter means.
    ::SendMessageA(Window(), WM_NEXTDLGCTL, reinterpret_cast<WPARAM>(Row(field).Field()), TRUE);
    RECT place{};
    ::GetWindowRect(Row(field).Field(), &place);
    const int chosen =
        menu.Track(Window(), {place.left, place.bottom}, TPM_RETURNCMD | TPM_LEFTALIGN, GetLook(), nullptr);
    if (chosen <= 0 || static_cast<std::size_t>(chosen) > items.size() || !Window()) return;
    Row(field).SetText(items[static_cast<std::size_t>(chosen) - 1].text);
    Row(field).Focus();
}

void AdvancedRuleDialog::LookUp(RuleField host) {
    if (m_lookingUp) return StopLookUp();
    m_notFound.reset();
    m_found.reset();
    m_lookingUp = host;
    m_parts.choices.LookUp(
        std::string(WithoutBlanks(Row(host).Text())),
        m_alive.Guard([this, host](const std::vector<Ipv4>& addresses) { TakeAddresses(host, addresses); }));
    ShowState();
}

void AdvancedRuleDialog::StopLookUp() {
    if (!std::exchange(m_lookingUp, std::nullopt)) return;
    m_parts.choices.StopLookUp();
    ShowState();
}

void AdvancedRuleDialog::TakeAddresses(RuleField host, const std::vector<Ipv4>& addresses) {
    if (!Window() || !std::exchange(m_lookingUp, std::nullopt)) return;
    // It may come while the user types elsewhere, or answers a message: the keyboard is his then.
    const HWND focus = ::GetFocus();
    const bool isAwaited =
        ::IsWindowEnabled(Window()) &&
        (focus == Row(host).Field() || focus == (host == LocalHost ? m_local : m_remote).lookUp.Window());
    if (addresses.empty()) m_notFound = host;
    if (addresses.size() > 1) m_found = Found{.host = host, .addresses = addresses};
    ShowState();
    if (addresses.size() == 1) Row(host).SetText(FormatIpv4(addresses.front()));
    if (!isAwaited || addresses.empty()) return;
    if (m_found) return PickAddress(host);
    Row(host).Focus();
}

void AdvancedRuleDialog::OnCommand(int id, int notification) {
    const int field = id - IDC_RULE_FIELD;
    if (field >= 0 && field < static_cast<int>(kRuleFieldCount)) {
        if (notification == EN_CHANGE) OnTyped(static_cast<RuleField>(field));
        if (notification == EN_KILLFOCUS) OnLeft(static_cast<RuleField>(field));
        return;
    }
    if (id == IDC_RULE_PROTOCOL || id == IDC_RULE_ROUTE) {
        if (notification == CBN_SELCHANGE) ShowState();
        return;
    }
    if (notification != BN_CLICKED) return;
    const int picked = id - IDC_RULE_PICK;
    if (picked >= 0 && picked < static_cast<int>(kRuleFieldCount)) return Pick(static_cast<RuleField>(picked));
    switch (id) {
        case IDOK: Confirm(); break;
        case IDC_RULE_DENY:
        case IDC_RULE_ALLOW:
        case IDC_RULE_ENABLED:
        case IDC_RULE_LOGGED: ShowState(); break;
        case IDC_RULE_HOURS:
            OnLimitsChosen(m_hours, FirstTime, TimeText(kFirstMinute), TimeText(kLastMinute));
            break;
        case IDC_RULE_DATES: {
            const std::string today = DateText(m_parts.clock.Today());
            OnLimitsChosen(m_dates, FirstDay, today, today);
            break;
        }
        case IDC_RULE_LOOK_UP_LOCAL: LookUp(LocalHost); break;
        case IDC_RULE_LOOK_UP_REMOTE: LookUp(RemoteHost); break;
        case IDC_RULE_BROWSE: Browse(); break;
        case IDC_RULE_SUGGEST: Suggest(); break;
        default: break;
    }
}

bool AdvancedRuleDialog::OnLoopMessage(const MSG& message) {
    if (message.message != WM_KEYDOWN && message.message != WM_SYSKEYDOWN) return false;
    const bool isDown = message.message == WM_SYSKEYDOWN && message.wParam == VK_DOWN;
    if (isDown || (message.message == WM_KEYDOWN && message.wParam == VK_F4)) {
        const int field = ::GetDlgCtrlID(message.hwnd) - IDC_RULE_FIELD;
        const bool isField = field >= 0 && field < static_cast<int>(kRuleFieldCount);
        if (!isField || !CanPick(static_cast<RuleField>(field))) return false;
        Pick(static_cast<RuleField>(field));
        return true;
    }
    if (message.message != WM_KEYDOWN) return false;
    if (message.wParam == VK_ESCAPE && m_lookingUp) {
        StopLookUp();
        return true;
    }
    // A disabled default button would only beep. On a button Enter presses that, and it closes an open list.
    const bool isButton =
        (::SendMessageA(message.hwnd, WM_GETDLGCODE, 0, 0) & (DLGC_DEFPUSHBUTTON | DLGC_UNDEFPUSHBUTTON)) != 0;
    if (message.wParam != VK_RETURN || isButton || !m_check.FirstFault()) return false;
    if (::SendMessageA(message.hwnd, CB_GETDROPPEDSTATE, 0, 0) != 0) return false;
    TellFirstFault();
    return true;
}

std::optional<LRESULT> AdvancedRuleDialog::OnMessage(UINT message, WPARAM wParam, LPARAM lParam) {
    if (message == WM_LBUTTONDOWN) {
        // What is meant for a disabled button comes to its parent.
        POINT point{static_cast<short>(LOWORD(lParam)), static_cast<short>(HIWORD(lParam))};
        ::ClientToScreen(Window(), &point);
        RECT ok{};
        ::GetWindowRect(m_ok.Window(), &ok);
        if (::PtInRect(&ok, point) && m_check.FirstFault()) TellFirstFault();
        return 0;
    }
    return CSkinDialog::OnMessage(message, wParam, lParam);
}

void AdvancedRuleDialog::OnCancel() {
    m_isFilled = false;  // a field that loses the keyboard now has nothing to tell any more
    End(IDCANCEL);
}

void AdvancedRuleDialog::OnDestroy() {
    m_isFilled = false;
    m_parts.choices.Forget();
    CSkinDialog::OnDestroy();
}

AddCustomRuleDialog::AddCustomRuleDialog(const RuleDialogParts& parts, const AdvancedRule& first)
    : AdvancedRuleDialog(parts, first,
                         {.title = parts.language.GetText(1980, "New rule"),
                          .note = parts.language.GetText(
                              2016, "Rules are asked from the top; a new one stands below the others.")}) {}

EditCustomRuleDialog::EditCustomRuleDialog(const RuleDialogParts& parts, const AdvancedRule& stored,
                                           RulePlace place)
    : AdvancedRuleDialog(
          parts, stored,
          {.title = parts.language.GetText(1981, "Edit rule"),
           .note = FillText(parts.language.GetText(2005, "Rules are asked from the top; this is number %1 of %2."),
                            {std::to_string(place.number), std::to_string(place.count)}) +
                   (stored.isDamaged ? '\n' + parts.language.GetText(
                                                  2006,
                                                  "Parts of this rule are damaged and have their defaults here. "
                                                  "Until it is saved, it never matches.")
                                     : std::string())}) {}

}  // namespace brennvar
