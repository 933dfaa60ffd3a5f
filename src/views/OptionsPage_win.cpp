#include "views/OptionsPage_win.h"

#include <algorithm>
#include <optional>
#include <utility>

#include "base/FlagWhile.h"
#include "config/ResourceIds.h"
#include "dialogs/MessageDialog_win.h"
#include "dialogs/ModalPlace_win.h"
#include "dialogs/Questions_win.h"
#include "ui/ChildControls_win.h"
#include "ui/Enabling_win.h"
#include "ui/Paint_win.h"
#include "views/OptionFields.h"
#include "views/OptionHelp.h"

namespace brennvar {
namespace {

using namespace std::chrono_literals;

// At 96 pixels per inch.
constexpr int kListWidth = 152;  // unless a language needs more: the cards stand at the same place in each
constexpr int kListPadding = 32;
constexpr int kGap = 16;
constexpr int kNoteGap = 12;
constexpr int kButtonGap = 8;
constexpr int kHelpHeight = 48;
constexpr int kHelpPadding = 12;

constexpr UINT_PTR kWatchTimer = 1;
constexpr UINT kWatchPause = 1000;  // ms
constexpr UINT_PTR kFollowTimer = 2;
constexpr UINT kFollowPause = 100;  // ms
constexpr UINT_PTR kTellTimer = 3;

constexpr int kFilteringApplied = 1199;  // a command that the page posts to itself

constexpr auto kWarningDuration = 15s;

bool HasFields(const SectionInfo& section) {
    return std::any_of(section.rows.begin(), section.rows.end(),
                       [](const RowInfo& row) { return row.kind == RowKind::Field; });
}

}  // namespace

OptionsPage::OptionsPage(const CFonts& fonts, const Language& language, PageTexts texts,
                         const OptionEditor::Parts& parts, OptionLists::Sources lists)
    : CPage(fonts, std::move(texts)),
      m_language(language),
      m_resources(parts.resources),
      m_editor(parts, *this),
      m_lists(fonts, language,
              {.commander = parts.commander, .reads = parts.reads, .clock = parts.clock, .source = {}},
              std::move(lists), *this),
      m_balloon(fonts),
      m_forms(OptionSections().size()) {}

OptionsPage::~OptionsPage() = default;

// Sections

void OptionsPage::OnCreateContent() {
    const Look& look = GetLook();
    m_list.Create(Window(), IDC_OPTIONS_SECTIONS, look);
    for (const SectionInfo& section : OptionSections()) m_list.Add(m_language.GetText(section.caption));
    m_apply.Create(Window(), kPrimaryButton, m_language.GetText(1116, "Apply"), IDC_OPTIONS_APPLY, look);
    m_discard.Create(Window(), kButtonDialog, m_language.GetText(1215, "Discard"), IDC_OPTIONS_DISCARD, look);
    m_note.Create(Texts(), "", LabelKind::Quiet, SS_LEFT | SS_CENTERIMAGE, IDC_OPTIONS_NOTE, look);
    m_help.Create(Texts(), m_language.GetText(OptionHelp(0)), LabelKind::Quiet, SS_LEFT, IDC_OPTIONS_HELP, look);
    OpenSection(0);
}

void OptionsPage::OnPlaceContent(const RECT& place) {
    int textWidth = Scale(kListWidth - kListPadding);
    for (const SectionInfo& section : OptionSections()) {
        const std::string caption = m_language.GetText(section.caption);
        textWidth = std::max<int>(textWidth, MeasureText(GetLook().fonts.Text(), caption, 0).cx);
    }
    RECT list = place;
    list.right = list.left + textWidth + Scale(kListPadding);
    RECT form = place;
    form.left = list.right + Scale(kGap);
    const LONG applyTop = form.bottom - m_apply.Size().cy;
    form.bottom = applyTop - Scale(kGap);
    // Below the options, with a line between them.
    RECT help = form;
    help.top = help.bottom - Scale(kHelpHeight);
    form.bottom = help.top + 1;
    m_help.Place({help.left + Scale(kHelpPadding), help.top + Scale(kHelpPadding) / 2,
                  help.right - Scale(kHelpPadding), help.bottom - 1});
    m_list.Place(Inset(list, 1));
    const LONG discardLeft = form.right - m_discard.Size().cx;
    m_apply.MoveTo(discardLeft - Scale(kButtonGap) - m_apply.Size().cx, applyTop);
    m_discard.MoveTo(discardLeft, applyTop);
    m_footer = {form.left, applyTop, form.right, place.bottom};
    PlaceNote();
    m_formPlace = Inset(form, 1);
    SetCards({{.place = list}, {.place = form}, {.place = help}});
    if (Form()) Form()->Place(m_formPlace);
}

void OptionsPage::PlaceNote() {
    RECT note = m_footer;
    if (HasFields(Info())) note.right -= m_apply.Size().cx + m_discard.Size().cx + Scale(kButtonGap + kNoteGap);
    m_note.Place(note);
}

std::optional<LRESULT> OptionsPage::OnMessage(UINT message, WPARAM wParam, LPARAM lParam) {
    // Windows asks the parents of the window below the mouse first.
    if (message == WM_SETCURSOR) ShowHelp(reinterpret_cast<HWND>(wParam));
    if (message == kControlFocused) ShowHelp(reinterpret_cast<HWND>(lParam));
    return CPage::OnMessage(message, wParam, lParam);
}

void OptionsPage::ShowHelp(HWND control) {
    if (Form() && ::IsChild(Form()->Window(), control)) {
        m_help.SetText(m_language.GetText(OptionHelp(::GetDlgCtrlID(control))));
    }
}

void OptionsPage::ChooseSection() {
    const int chosen = m_list.Selected();
    if (chosen < 0 || static_cast<std::size_t>(chosen) == m_current) return;
    if (MayLeave()) {
        OpenSection(static_cast<std::size_t>(chosen));
    } else {
        m_list.Select(static_cast<int>(m_current));
    }
}

bool OptionsPage::CreateForm(std::size_t index) {
    auto form = std::make_unique<OptionForm>(GetLook(), m_language, OptionSections()[index], m_lists.ByControl());
    if (!form->CreateForm(Window(), IDC_OPTIONS_FORM)) return false;
    // Tab goes from the list to the form and on to the button.
    ::SetWindowPos(form->Window(), m_list.Window(), 0, 0, 0, 0, SWP_NOMOVE | SWP_NOSIZE | SWP_NOACTIVATE);
    m_lists.Adopt(*form);
    m_forms[index] = std::move(form);
    return true;
}

void OptionsPage::OpenSection(std::size_t index) {
    if (!m_forms[index] && !CreateForm(index)) return;
    m_balloon.Hide();
    m_editor.ForgetNote(m_current);
    if (ServiceList* const list = m_lists.Find(Info().List())) list->ForgetNote();
    OptionForm* const last = Form();
    m_current = index;
    m_help.SetText(m_language.GetText(OptionHelp(0)));
    m_list.Select(static_cast<int>(index));
    FillResourceLists();
    ShowOptions();
    Form()->Place(m_formPlace);
    ::ShowWindow(Form()->Window(), SW_SHOWNA);
    if (last && last != Form()) {
        // The keyboard must not stay in a form that nobody sees.
        if (::IsChild(last->Window(), ::GetFocus())) ::SetFocus(m_list.Window());
        ::ShowWindow(last->Window(), SW_HIDE);
    }
    for (const CButton* button : {&m_apply, &m_discard}) {
        ::ShowWindow(button->Window(), HasFields(Info()) ? SW_SHOWNA : SW_HIDE);
    }
    PlaceNote();
}

void OptionsPage::FillResourceLists() {
    if (Info().kind != SectionInfo::Kind::Resources) return;
    const FlagWhile showing(m_isShowing);
    Form()->SetItems(IDC_OPTIONS_SKIN, m_resources.Skins());
    Form()->SetItems(IDC_OPTIONS_LANGUAGE, m_resources.Languages());
}

void OptionsPage::TakeEdits() {
    if (Form() && !m_isShowing) m_editor.Edit(m_current, Form()->ReadFields());
}

void OptionsPage::ShowOptions() {
    if (!Form()) return;
    {
        const FlagWhile showing(m_isShowing);
        Form()->ShowFields(m_editor.Shown(m_current));
    }
    ShowState();
}

void OptionsPage::ShowState() {
    if (!Form()) return;
    ShowNote();
    m_lists.ShowState();
    if (m_editor.IsFollowing() || m_lists.IsFollowing()) {
        ::SetTimer(Window(), kFollowTimer, kFollowPause, nullptr);
    } else {
        ::KillTimer(Window(), kFollowTimer);
    }
}

void OptionsPage::ShowNote() {
    Text note = m_editor.NoteText(m_current);
    if (ServiceList* const list = m_lists.Find(Info().List()); list && note.number == 0) note = list->NoteText();
    m_note.SetText(note.number != 0 ? m_language.GetText(note) : std::string());
    const bool isUnapplied = m_editor.IsUnapplied(m_current);
    m_list.Mark(isUnapplied ? static_cast<int>(m_current) : CListBox::kNone);
    SetEnabled({{m_apply.Window(), isUnapplied && m_editor.CanApply(m_current)}, {m_discard.Window(), isUnapplied}},
               m_list.Window());
}

// What the user does

void OptionsPage::OnCommand(int id, int notification) {
    if (id == IDC_OPTIONS_SECTIONS) {
        if (notification == LBN_SELCHANGE) ChooseSection();
        return;
    }
    if (id == IDC_OPTIONS_APPLY && notification == BN_CLICKED) {
        if (Apply()) TellOfFilteringLater();
        return;
    }
    if (id == IDC_OPTIONS_DISCARD && notification == BN_CLICKED) {
        m_editor.Discard(m_current);
        return ShowOptions();
    }
    if (id == kFilteringApplied) return ShowFilteringApplied();
    for (const RowInfo& row : Info().rows) {
        if (row.control == id) return OnRowCommand(row, notification);
    }
}

void OptionsPage::OnRowCommand(const RowInfo& row, int notification) {
    if (row.kind == RowKind::Action) {
        if (notification == BN_CLICKED) m_lists.OnButton(row.control, Window());
        return;
    }
    if (row.kind == RowKind::Button) {
        if (notification == BN_CLICKED) PostToOwner(row.control);
        return;
    }
    if (m_isShowing) return;
    if (row.control == ControlOf(OptionId::AntiIpSpoofing) && notification == BN_CLICKED) WarnOfSpoofing();
    Form()->EnableRows();
    TakeEdits();
    ShowNote();
}

void OptionsPage::WarnOfSpoofing() {
    m_balloon.ShowFor(Form()->ControlWindow(ControlOf(OptionId::AntiIpSpoofing)),
                      {.title = {},
                       .text = m_language.GetText(322,
                                                  "Warning. Setting anti-IP spoofing on or off will disable your "
                                                  "active connections."),
                       .link = {}},
                      {.timeout = kWarningDuration, .isBelow = true});
}

bool OptionsPage::Apply() {
    TakeEdits();
    return m_editor.Apply(m_current) && Info().kind == SectionInfo::Kind::BrowserFiltering;
}

void OptionsPage::TellOfFilteringLater() {
    ::PostMessageA(Window(), WM_COMMAND, kFilteringApplied, 0);  // the message is modal
}

void OptionsPage::ShowFilteringApplied() {
    const HWND owner = ::GetAncestor(Window(), GA_ROOT);
    // Another dialog has come first: the message waits for its end.
    if (!::IsWindowEnabled(owner)) {
        ::SetTimer(Window(), kTellTimer, kWatchPause, nullptr);
        return;
    }
    TellOfBrowser(owner);
}

void OptionsPage::TellOfBrowser(HWND owner) {
    ShowMessage(GetLook().fonts, m_language, owner,
                m_language.GetText(607, "Please restart your Internet browser to apply changes."));
}

bool OptionsPage::MayLeave() {
    if (m_isAsking) return false;
    TakeEdits();
    if (!m_editor.IsUnapplied(m_current)) return true;
    // A connection question cannot end before one that is opened during it, and the driver waits for its answer.
    const std::optional<HWND> owner = ModalOwner(::GetAncestor(Window(), GA_ROOT));
    if (!owner) return false;
    MessageDialog question(
        GetLook().fonts,
        {.caption = m_language.GetText(41, "Brennvar Personal Firewall"),
         .message = m_language.GetText(
             1214, "This section has changes that are not applied yet. Do you want to apply them?"),
         .ok = m_language.GetText(1116, "Apply"),
         .cancel = m_language.GetText(1216, "Stay here"),
         .other = m_language.GetText(1215, "Discard")});
    const MessageAnswer answer = [&] {
        const FlagWhile asking(m_isAsking);
        return question.Choose(*owner);
    }();
    if (answer == MessageAnswer::Cancel) return false;
    if (answer == MessageAnswer::Ok) {
        // At once: the page may be gone later.
        if (Apply()) TellOfBrowser(*owner);
    } else {
        m_editor.Discard(m_current);
        ShowOptions();
    }
    return true;
}

// When the page is seen

void OptionsPage::OnShow() {
    ::SetTimer(Window(), kWatchTimer, kWatchPause, nullptr);
    Reload();
}

void OptionsPage::OnHide() {
    ::KillTimer(Window(), kWatchTimer);
    m_balloon.Hide();
}

void OptionsPage::Reload() {
    FillResourceLists();
    m_editor.Reload();
    m_lists.Reload();
}

void OptionsPage::OnTimer(UINT_PTR id) {
    if (id == kWatchTimer) {
        m_editor.Watch();
        // A program that works a control need not tell of it, and what can be applied is to be offered.
        TakeEdits();
        ShowNote();
        if (ServiceList* const list = m_lists.Find(Info().List())) list->Watch();
    }
    if (id == kTellTimer) {
        ::KillTimer(Window(), kTellTimer);
        ShowFilteringApplied();
    }
    if (id != kFollowTimer) return;
    m_editor.Follow();
    m_lists.Follow();
}

}  // namespace brennvar
