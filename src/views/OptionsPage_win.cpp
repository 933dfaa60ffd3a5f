#include "views/OptionsPage_win.h"

#include <algorithm>
#include <optional>
#include <utility>

#include "config/ResourceIds.h"
#include "dialogs/MessageDialog_win.h"
#include "dialogs/ModalPlace_win.h"
#include "dialogs/Questions_win.h"
#include "ui/ChildControls_win.h"
#include "ui/Paint_win.h"
#include "views/OptionFields.h"

namespace brennvar {
namespace {

using namespace std::chrono_literals;

// At 96 pixels per inch.
constexpr int kListWidth = 136;  // wider where the language needs it
constexpr int kListPadding = 32;
constexpr int kGap = 16;
constexpr int kNoteGap = 12;

constexpr UINT_PTR kWatchTimer = 1;
constexpr UINT kWatchPause = 1000;  // ms
constexpr UINT_PTR kFollowTimer = 2;
constexpr UINT kFollowPause = 100;  // ms

constexpr int kFilteringApplied = 1199;  // a command that the page posts to itself

constexpr auto kWarningDuration = 15s;

}  // namespace

OptionsPage::OptionsPage(const CFonts& fonts, const Language& language, PageTexts texts,
                         const OptionEditor::Parts& parts)
    : CPage(fonts, std::move(texts)),
      m_language(language),
      m_resources(parts.resources),
      m_editor(parts, *this),
      m_balloon(fonts),
      m_forms(OptionSections().size()) {}

OptionsPage::~OptionsPage() = default;

// Sections

void OptionsPage::OnCreateContent() {
    const Look& look = GetLook();
    m_list.Create(Window(), IDC_OPTIONS_SECTIONS, look);
    for (const SectionInfo& section : OptionSections()) m_list.Add(m_language.GetText(section.caption));
    m_apply.Create(Window(), kButtonDialog, m_language.GetText(1116, "Apply"), IDC_OPTIONS_APPLY, look);
    m_note.Create(Window(), "", LabelKind::Quiet, SS_LEFT | SS_NOPREFIX | SS_CENTERIMAGE, IDC_OPTIONS_NOTE, look);
    OpenSection(0);
}

void OptionsPage::OnPlaceContent(const RECT& place) {
    int textWidth = Scale(kListWidth - kListPadding);
    for (const SectionInfo& section : OptionSections()) {
        const std::string caption = m_language.GetText(section.caption);
        textWidth = std::max<int>(textWidth, MeasureText(Window(), GetLook().fonts.Text(), caption, 0).cx);
    }
    RECT list = place;
    list.right = list.left + textWidth + Scale(kListPadding);
    RECT form = place;
    form.left = list.right + Scale(kGap);
    const LONG applyTop = form.bottom - m_apply.Size().cy;
    form.bottom = applyTop - Scale(kGap);
    m_list.Place(Inset(list, 1));
    m_apply.MoveTo(form.left, applyTop);
    m_note.Place({form.left + m_apply.Size().cx + Scale(kNoteGap), applyTop, form.right, place.bottom});
    m_formPlace = Inset(form, 1);
    SetCards({list, form});
    if (Form()) Form()->Place(m_formPlace);
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
    auto form = std::make_unique<OptionForm>(GetLook(), m_language, OptionSections()[index]);
    if (!form->CreateForm(Window(), IDC_OPTIONS_FORM)) return false;
    // Tab goes from the list to the form and on to the button.
    ::SetWindowPos(form->Window(), m_list.Window(), 0, 0, 0, 0, SWP_NOMOVE | SWP_NOSIZE | SWP_NOACTIVATE);
    m_forms[index] = std::move(form);
    return true;
}

void OptionsPage::OpenSection(std::size_t index) {
    if (!m_forms[index] && !CreateForm(index)) return;
    m_balloon.Hide();
    m_editor.ForgetNote(m_current);
    OptionForm* const last = Form();
    m_current = index;
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
    ::ShowWindow(m_apply.Window(), Info().kind == SectionInfo::Kind::Password ? SW_HIDE : SW_SHOWNA);
}

void OptionsPage::FillResourceLists() {
    if (Info().kind != SectionInfo::Kind::Resources) return;
    m_isShowing = true;
    Form()->SetItems(IDC_OPTIONS_SKIN, m_resources.Skins());
    Form()->SetItems(IDC_OPTIONS_LANGUAGE, m_resources.Languages());
    m_isShowing = false;
}

void OptionsPage::TakeEdits() {
    if (Form() && !m_isShowing) m_editor.Edit(m_current, Form()->ReadFields());
}

void OptionsPage::ShowOptions() {
    if (!Form()) return;
    m_isShowing = true;
    Form()->ShowFields(m_editor.Shown(m_current));
    m_isShowing = false;
    ShowNote();
    if (m_editor.IsFollowing()) {
        ::SetTimer(Window(), kFollowTimer, kFollowPause, nullptr);
    } else {
        ::KillTimer(Window(), kFollowTimer);
    }
}

void OptionsPage::ShowNote() {
    m_note.SetText(m_language.GetText(m_editor.NoteText(m_current)));
    // Not while it applies: a button that is disabled loses the keyboard.
    const bool canApply = m_editor.IsLoaded();
    if (canApply != (::IsWindowEnabled(m_apply.Window()) != FALSE)) ::EnableWindow(m_apply.Window(), canApply);
}

// What the user does

void OptionsPage::OnCommand(int id, int notification) {
    if (id == IDC_OPTIONS_SECTIONS) {
        if (notification == LBN_SELCHANGE) ChooseSection();
        return;
    }
    if (id == IDC_OPTIONS_APPLY && notification == BN_CLICKED) return Apply();
    if (id == kFilteringApplied) return ShowFilteringApplied();
    for (const RowInfo& row : Info().rows) {
        if (row.control == id) return OnRowCommand(row, notification);
    }
}

void OptionsPage::OnRowCommand(const RowInfo& row, int notification) {
    if (row.kind == RowKind::Button) {
        if (notification == BN_CLICKED) PostToOwner(row.control);
        return;
    }
    if (m_isShowing) return;
    if (row.control == ControlOf(OptionId::AntiIpSpoofing) && notification == BN_CLICKED) WarnOfSpoofing();
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
                      {.timeout = kWarningDuration});
}

void OptionsPage::Apply() {
    TakeEdits();
    if (!m_editor.Apply(m_current)) return;
    // Later: the message is modal.
    if (Info().kind == SectionInfo::Kind::BrowserFiltering) {
        ::PostMessageA(Window(), WM_COMMAND, kFilteringApplied, 0);
    }
}

void OptionsPage::ShowFilteringApplied() {
    const HWND owner = ::GetAncestor(Window(), GA_ROOT);
    if (!::IsWindowEnabled(owner)) return;  // another dialog has come first
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
    m_isAsking = true;
    MessageDialog question(
        GetLook().fonts,
        {.caption = m_language.GetText(41, "Brennvar Personal Firewall"),
         .message = m_language.GetText(
             1214, "This section has changes that are not applied yet. Do you want to apply them?"),
         .ok = m_language.GetText(1116, "Apply"),
         .cancel = m_language.GetText(1216, "Stay here"),
         .other = m_language.GetText(1215, "Discard")});
    const MessageAnswer answer = question.Choose(*owner);
    m_isAsking = false;
    if (answer == MessageAnswer::Cancel) return false;
    if (answer == MessageAnswer::Ok) {
        Apply();
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
}

void OptionsPage::OnTimer(UINT_PTR id) {
    if (id == kWatchTimer) m_editor.Watch();
    if (id == kFollowTimer) m_editor.Follow();
}

}  // namespace brennvar
