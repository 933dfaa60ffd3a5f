#include "app/DeleteLogDialog_win.h"

#include <cstddef>
#include <optional>
#include <utility>

#include "config/ResourceIds.h"
#include "controls/FieldFrame_win.h"
#include "logs/LogFiles.h"

namespace brennvar {
namespace {

// At 96 pixels per inch.
constexpr int kListWidth = 208;
constexpr int kHeadingGap = 12;  // below the heading
constexpr int kNoteGap = 12;     // between the list and the note at its right
constexpr int kButtonTop = 24;   // below both
constexpr int kButtonGap = 8;

}  // namespace

DeleteLogDialog::DeleteLogDialog(const CFonts& fonts, const Language& language, TaskQueue& reads,
                                 const std::string& dataFolder, const LocalDate& today)
    : CSkinDialog(fonts),
      m_language(language),
      m_today(today),
      m_day(today),
      m_reading(
          reads, [dataFolder](const auto&) { return std::optional(FindLogDays(dataFolder)); },
          [this](std::optional<std::vector<LocalDate>> days, const auto&) {
              OnDays(std::move(days).value_or(std::vector<LocalDate>()));
          }) {}

DeleteLogDialog::Choice DeleteLogDialog::Ask(HWND owner) {
    switch (DoModal(owner, IDD_DELETE_LOG)) {
        case IDOK: return Choice::Day;
        case IDC_DELETE_LOG_OLDER: return Choice::DayAndOlder;
        default: return Choice::None;
    }
}

void DeleteLogDialog::OnCreateContent() {
    ::SetWindowTextA(Window(), m_language.GetText(1272, "Delete logs").c_str());
    ::SetDlgItemTextA(Window(), IDC_DELETE_LOG_HEADING,
                      m_language.GetText(1273, "Delete the logs of which day?").c_str());
    ::SetDlgItemTextA(Window(), IDC_DELETE_LOG_NOTE, m_language.GetText(2501, "Looking for logs.").c_str());
    ::SetDlgItemTextA(Window(), IDOK, m_language.GetText(1277, "Delete this day").c_str());
    ::SetDlgItemTextA(Window(), IDC_DELETE_LOG_OLDER,
                      m_language.GetText(1278, "Delete this day and older").c_str());
    ::SetDlgItemTextA(Window(), IDCANCEL, m_language.GetText(1001, "Cancel").c_str());
    m_heading.Adopt(Item(IDC_DELETE_LOG_HEADING), LabelKind::Bold, GetLook());
    m_list.Adopt(Item(IDC_DELETE_LOG_DAY), GetLook());
    m_note.Adopt(Item(IDC_DELETE_LOG_NOTE), LabelKind::Quiet, GetLook());
    m_ok.Adopt(Item(IDOK), Ranked(kButtonMedium, ButtonRank::Destructive), GetLook());
    m_older.Adopt(Item(IDC_DELETE_LOG_OLDER), Ranked(kButtonLarge, ButtonRank::Destructive), GetLook());
    m_cancel.Adopt(Item(IDCANCEL), kButtonDialog, GetLook());
    PlaceControls();
    for (const int id : {IDC_DELETE_LOG_DAY, IDOK, IDC_DELETE_LOG_OLDER}) ::EnableWindow(Item(id), FALSE);
    // What destroys is never a key away.
    ::SendMessageA(Window(), DM_SETDEFID, IDCANCEL, 0);
    ::SetFocus(Item(IDCANCEL));
    m_reading.Refresh();
}

void DeleteLogDialog::OnDays(std::vector<LocalDate> days) {
    m_days = std::move(days);
    for (const LocalDate& day : m_days) (void)m_list.Add(TextOfDay(day, m_today, m_language));
    const std::string note = m_days.empty() ? m_language.GetText(2500, "There are no logs.") : "";
    ::SetDlgItemTextA(Window(), IDC_DELETE_LOG_NOTE, note.c_str());
    if (m_days.empty()) return;
    m_list.Select(0);
    for (const int id : {IDC_DELETE_LOG_DAY, IDOK, IDC_DELETE_LOG_OLDER}) ::EnableWindow(Item(id), TRUE);
}

void DeleteLogDialog::PlaceControls() {
    const int buttonsWidth = m_ok.Size().cx + m_older.Size().cx + m_cancel.Size().cx + 2 * Scale(kButtonGap);
    const int headingHeight = m_heading.Measure(buttonsWidth).cy;
    const int listTop = headingHeight + Scale(kHeadingGap);
    const int buttonTop = listTop + FieldHeight() + Scale(kButtonTop);
    SetContentPixels({buttonsWidth, buttonTop + m_ok.Size().cy});

    const RECT content = ContentRect();
    m_heading.Place({content.left, content.top, content.right, content.top + headingHeight});
    const LONG top = content.top + listTop;
    const LONG listEnd = content.left + Scale(kListWidth);
    m_list.Place({content.left, top, listEnd, top + FieldHeight()});
    m_note.Place({listEnd + Scale(kNoteGap), top, content.right, top + FieldHeight()});
    LONG buttonLeft = content.left;
    for (const CButton* button : {&m_ok, &m_older, &m_cancel}) {
        button->MoveTo(buttonLeft, content.top + buttonTop);
        buttonLeft += button->Size().cx + Scale(kButtonGap);
    }
}

void DeleteLogDialog::OnCommand(int id, int notification) {
    if ((id != IDOK && id != IDC_DELETE_LOG_OLDER) || notification != BN_CLICKED) return;
    // No day: a program that presses a button which is disabled, or takes the choice away.
    const int chosen = m_list.Selected();
    if (chosen < 0 || chosen >= static_cast<int>(m_days.size())) return;
    m_day = m_days[static_cast<std::size_t>(chosen)];
    End(id);
}

}  // namespace brennvar
