#include "views/OptionsPage_win.h"

#include <algorithm>
#include <utility>

#include "config/ResourceIds.h"
#include "dialogs/MessageDialog_win.h"
#include "dialogs/ModalPlace_win.h"
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

constexpr auto kWarningDuration = 15s;

// Names of protocols are not translated; their order is that of the stored numbers.
constexpr const char* kProxyTypes[] = {"HTTP", "SOCKS4", "SOCKS5"};

std::vector<OptionForm::Item> ItemsOf(const std::vector<std::string>& names) {
    std::vector<OptionForm::Item> items;
    items.reserve(names.size());
    for (const std::string& name : names) items.push_back({.content = name, .text = name});
    return items;
}

bool IsField(RowKind kind) {
    return kind != RowKind::Heading && kind != RowKind::Line && kind != RowKind::Button;
}

}  // namespace

OptionsPage::OptionsPage(const CFonts& fonts, const Language& language, PageTexts texts, Resources resources,
                         Services services)
    : CPage(fonts, std::move(texts)),
      m_language(language),
      m_resources(std::move(resources)),
      m_services(std::move(services)),
      m_balloon(fonts) {
    for (const SectionInfo& info : OptionSections()) m_sections.emplace_back().info = &info;
}

OptionsPage::~OptionsPage() = default;

std::function<void()> OptionsPage::IfAlive(std::function<void()> action) const {
    return [alive = std::weak_ptr(m_alive), action = std::move(action)] {
        if (!alive.expired()) action();
    };
}

// Sections

void OptionsPage::OnCreateContent() {
    const Look& look = GetLook();
    m_list.Create(Window(), IDC_OPTIONS_SECTIONS, look);
    for (const Section& section : m_sections) m_list.Add(m_language.GetText(section.info->caption));
    m_apply.Create(Window(), kButtonDialog, m_language.GetText(1116, "Apply"), IDC_OPTIONS_APPLY, look);
    m_note.Create(Window(), "", LabelKind::Quiet, SS_LEFT | SS_NOPREFIX | SS_CENTERIMAGE, IDC_OPTIONS_NOTE, look);
    UpdateStored();
    OpenSection(0);
}

void OptionsPage::OnPlaceContent(const RECT& place) {
    int textWidth = Scale(kListWidth - kListPadding);
    for (const Section& section : m_sections) {
        const std::string caption = m_language.GetText(section.info->caption);
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
    PlaceForm();
}

void OptionsPage::PlaceForm() {
    if (Current().form) Current().form->Place(m_formPlace);
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

void OptionsPage::OpenSection(std::size_t index) {
    Section& last = Current();
    Section& next = m_sections[index];
    if (!next.form) {
        auto form = std::make_unique<OptionForm>(GetLook(), m_language, *next.info);
        if (!form->CreateForm(Window(), IDC_OPTIONS_FORM)) return;
        next.form = std::move(form);
        // Tab goes from the list to the form and on to the button.
        ::SetWindowPos(next.form->Window(), m_list.Window(), 0, 0, 0, 0, SWP_NOMOVE | SWP_NOSIZE | SWP_NOACTIVATE);
    }
    m_balloon.Hide();
    last.note = Note::None;
    m_current = index;
    m_list.Select(static_cast<int>(index));
    FillResourceLists();
    ShowDraft(next);
    PlaceForm();
    ::ShowWindow(next.form->Window(), SW_SHOWNA);
    if (&last != &next && last.form) {
        // The keyboard must not stay in a form that nobody sees.
        if (::IsChild(last.form->Window(), ::GetFocus())) ::SetFocus(m_list.Window());
        ::ShowWindow(last.form->Window(), SW_HIDE);
    }
    ::ShowWindow(m_apply.Window(), next.info->kind == SectionInfo::Kind::Password ? SW_HIDE : SW_SHOWNA);
    ShowNote();
}

void OptionsPage::FillResourceLists() {
    OptionForm& form = *Current().form;
    m_isShowing = true;
    if (Current().info->kind == SectionInfo::Kind::Resources) {
        form.SetItems(IDC_OPTIONS_SKIN, ItemsOf(m_resources.skins()));
        form.SetItems(IDC_OPTIONS_LANGUAGE, ItemsOf(m_resources.languages()));
    }
    std::vector<OptionForm::Item> types;
    for (const char* name : kProxyTypes) types.push_back({.content = std::to_string(types.size()), .text = name});
    form.SetItems(ControlOf(OptionId::ProxyType), std::move(types));
    m_isShowing = false;
}

void OptionsPage::ShowDraft(Section& section) {
    if (&section != &Current() || !section.form) return;
    m_isShowing = true;
    section.form->ShowFields(section.draft.Shown());
    m_isShowing = false;
}

// Not every change is told: a program that works the fields need not do so.
void OptionsPage::TakeFields() {
    Section& section = Current();
    if (!section.form || m_isShowing) return;
    for (const auto& [control, content] : section.form->ReadFields()) section.draft.Edit(control, content);
}

std::string OptionsPage::NoteText() {
    const Section& section = Current();
    if (section.attempt) return m_language.GetText(1212, "Applying...");
    if (section.draft.IsEdited()) return m_language.GetText(1210, "Changes are not applied yet.");
    switch (section.note) {
        case Note::Stored: return m_language.GetText(1211, "Stored.");
        case Note::NotStored: return m_language.GetText(1213, "The change was not stored.");
        default: return {};
    }
}

void OptionsPage::ShowNote() {
    m_note.SetText(NoteText());
    // Not while it applies: a button that is disabled loses the keyboard.
    if (m_isLoaded != (::IsWindowEnabled(m_apply.Window()) != FALSE)) ::EnableWindow(m_apply.Window(), m_isLoaded);
}

void OptionsPage::OnCommand(int id, int notification) {
    if (id == IDC_OPTIONS_SECTIONS) {
        if (notification == LBN_SELCHANGE) ChooseSection();
        return;
    }
    if (id == IDC_OPTIONS_APPLY && notification == BN_CLICKED) return Apply();
    if (id == kFilteringApplied) return ShowFilteringApplied();
    for (const RowInfo& row : Current().info->rows) {
        if (row.control != id) continue;
        if (row.kind == RowKind::Button) {
            if (notification == BN_CLICKED) PostToOwner(id);
            return;
        }
        if (m_isShowing) return;
        if (id == ControlOf(OptionId::AntiIpSpoofing) && notification == BN_CLICKED) WarnOfSpoofing();
        TakeFields();
        if (Current().draft.IsEdited()) Current().note = Note::None;
        ShowNote();
        return;
    }
}

void OptionsPage::WarnOfSpoofing() {
    m_balloon.ShowFor(Current().form->ControlWindow(ControlOf(OptionId::AntiIpSpoofing)),
                      {.title = {},
                       .text = m_language.GetText(322,
                                                  "Warning. Setting anti-IP spoofing on or off will disable your "
                                                  "active connections."),
                       .link = {}},
                      {.timeout = kWarningDuration});
}

bool OptionsPage::MayLeave() {
    if (m_isAsking) return false;
    TakeFields();
    Section& section = Current();
    if (!section.draft.IsEdited() || section.attempt) return true;
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
        section.draft.Discard();
        ShowDraft(section);
        ShowNote();
    }
    return true;
}

// What is stored

void OptionsPage::OnShow() {
    ::SetTimer(Window(), kWatchTimer, kWatchPause, nullptr);
    Reload();
}

void OptionsPage::OnHide() {
    ::KillTimer(Window(), kWatchTimer);
    m_balloon.Hide();
}

void OptionsPage::Reload() {
    m_choice = m_resources.current();
    UpdateStored();
    FillResourceLists();
    ShowDraft(Current());
    ShowNote();
    Read();
}

void OptionsPage::OnTimer(UINT_PTR id) {
    if (id == kWatchTimer) Watch();
    if (id == kAttemptTimer) FollowAttempts();
}

void OptionsPage::Watch() {
    const FileStamp stamp = m_services.stampOptions();
    if (m_stamp != stamp || IsFresh(stamp)) Read();
}

void OptionsPage::Read() {
    if (m_isReading) {
        m_readsAgain = true;
        return;
    }
    m_isReading = true;
    m_readsAgain = false;
    m_stamp = m_services.stampOptions();
    m_services.readOptions([this, alive = std::weak_ptr(m_alive)](const std::optional<OptionValues>& values) {
        if (!alive.expired()) OnRead(values);
    });
}

void OptionsPage::OnRead(const std::optional<OptionValues>& values) {
    m_isReading = false;
    // Applied, the defaults that would show for a file that is held would take the place of all that it stores.
    if (!values) m_stamp.reset();
    m_isLoaded |= values.has_value();
    if (values && std::exchange(m_values, *values) != m_values) {
        // What could not be stored may have been stored late.
        for (Section& section : m_sections) section.note = Note::None;
    }
    UpdateStored();
    JudgeAttempts();
    ShowDraft(Current());
    ShowNote();
    if (m_readsAgain) Read();
}

void OptionsPage::UpdateStored() {
    TakeFields();
    for (Section& section : m_sections) section.draft.SetStored(StoredFields(*section.info));
}

FormDraft::Fields OptionsPage::StoredFields(const SectionInfo& section) const {
    FormDraft::Fields fields;
    for (const RowInfo& row : section.rows) {
        if (IsField(row.kind)) fields[row.control] = StoredField(row.control);
    }
    return fields;
}

std::string OptionsPage::StoredField(int control) const {
    if (const OptionInfo* const option = OptionOfControl(control)) return FieldOf(option->id, m_values);
    if (control == IDC_OPTIONS_SKIN) return m_choice.skin;
    if (control == IDC_OPTIONS_LANGUAGE) return m_choice.language;
    for (const FilterFlag& flag : FilterFlags()) {
        std::uint32_t value = 0;
        if (flag.control == control && m_services.userValues.ReadUserValue(flag.userValue, value)) {
            return value != 0 ? "1" : "0";
        }
    }
    return "0";
}

}  // namespace brennvar
