#include "app/DeleteLogDialog_win.h"

#include <algorithm>
#include <array>
#include <cstdio>

#include "base/Calendar.h"
#include "config/ResourceIds.h"
#include "controls/FieldFrame_win.h"

namespace brennvar {
namespace {

// Logs are kept for days or months; this is for who never had them deleted.
constexpr int kYears = 10;
constexpr int kMonths = 12;

// At 96 pixels per inch.
constexpr int kPartWidth = 96;
constexpr int kPartGap = 16;
constexpr int kHeadingGap = 12;  // below the heading
constexpr int kLabelGap = 4;
constexpr int kButtonTop = 24;  // below the lists
constexpr int kButtonGap = 8;

void AddNumber(const CComboBox& list, int number) {
    std::array<char, 16> text{};
    (void)std::snprintf(text.data(), text.size(), "%02d", number);
    (void)list.Add(text.data());
}

}  // namespace

DeleteLogDialog::DeleteLogDialog(const CFonts& fonts, const Language& language, const LocalDate& today)
    : CSkinDialog(fonts), m_language(language), m_today(today), m_day(today) {}

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
    ::SetDlgItemTextA(Window(), IDOK, m_language.GetText(1277, "Delete this day").c_str());
    ::SetDlgItemTextA(Window(), IDC_DELETE_LOG_OLDER,
                      m_language.GetText(1278, "Delete this day and older").c_str());
    ::SetDlgItemTextA(Window(), IDCANCEL, m_language.GetText(1001, "Cancel").c_str());
    m_heading.Adopt(Item(IDC_DELETE_LOG_HEADING), LabelKind::Bold, GetLook());
    AdoptPart(m_dayPart, IDC_DELETE_LOG_DAY_LABEL, IDC_DELETE_LOG_DAY, m_language.GetText(1274, "&Day"));
    AdoptPart(m_monthPart, IDC_DELETE_LOG_MONTH_LABEL, IDC_DELETE_LOG_MONTH, m_language.GetText(1275, "&Month"));
    AdoptPart(m_yearPart, IDC_DELETE_LOG_YEAR_LABEL, IDC_DELETE_LOG_YEAR, m_language.GetText(1276, "&Year"));
    m_ok.Adopt(Item(IDOK), Ranked(kButtonMedium, ButtonRank::Destructive), GetLook());
    m_older.Adopt(Item(IDC_DELETE_LOG_OLDER), Ranked(kButtonLarge, ButtonRank::Destructive), GetLook());
    m_cancel.Adopt(Item(IDCANCEL), kButtonDialog, GetLook());
    for (int i = 0; i < kYears; ++i) AddNumber(m_yearPart.list, m_today.year - i);
    for (int month = 1; month <= kMonths; ++month) AddNumber(m_monthPart.list, month);
    m_yearPart.list.Select(0);
    m_monthPart.list.Select(m_day.month - 1);
    FillDays();
    PlaceControls();
    // What destroys is never a key away.
    ::SendMessageA(Window(), DM_SETDEFID, IDCANCEL, 0);
}

void DeleteLogDialog::AdoptPart(Part& part, int label, int list, const std::string& text) {
    ::SetDlgItemTextA(Window(), label, text.c_str());
    part.label.Adopt(Item(label), LabelKind::Plain, GetLook());
    part.list.Adopt(Item(list), GetLook());
}

void DeleteLogDialog::PlaceControls() {
    const int buttonsWidth = m_ok.Size().cx + m_older.Size().cx + m_cancel.Size().cx + 2 * Scale(kButtonGap);
    const int headingHeight = m_heading.Measure(buttonsWidth).cy;
    const int labelHeight = m_dayPart.label.Measure(0).cy;
    const int labelTop = headingHeight + Scale(kHeadingGap);
    const int listTop = labelTop + labelHeight + Scale(kLabelGap);
    const int buttonTop = listTop + FieldHeight() + Scale(kButtonTop);
    SetContentPixels({buttonsWidth, buttonTop + m_ok.Size().cy});

    const RECT content = ContentRect();
    m_heading.Place({content.left, content.top, content.right, content.top + headingHeight});
    LONG left = content.left;
    for (const Part* part : {&m_dayPart, &m_monthPart, &m_yearPart}) {
        const LONG right = left + Scale(kPartWidth);
        const LONG top = content.top + listTop;
        part->label.Place({left, content.top + labelTop, right, content.top + labelTop + labelHeight});
        part->list.Place({left, top, right, top + FieldHeight()});
        left = right + Scale(kPartGap);
    }
    LONG buttonLeft = content.left;
    for (const CButton* button : {&m_ok, &m_older, &m_cancel}) {
        button->MoveTo(buttonLeft, content.top + buttonTop);
        buttonLeft += button->Size().cx + Scale(kButtonGap);
    }
}

void DeleteLogDialog::FillDays() {
    m_dayPart.list.Clear();
    for (int day = 1; day <= DaysInMonth(m_day.year, m_day.month); ++day) AddNumber(m_dayPart.list, day);
    m_dayPart.list.Select(m_day.day - 1);
}

void DeleteLogDialog::OnChosen() {
    const LocalDate before = m_day;
    // A list without a choice, which another program can make one, counts as its first number.
    m_day = NearestDay({.year = m_today.year - std::max(m_yearPart.list.Selected(), 0),
                        .month = std::max(m_monthPart.list.Selected(), 0) + 1,
                        .day = std::max(m_dayPart.list.Selected(), 0) + 1});
    if (m_day.year != before.year || m_day.month != before.month) FillDays();
}

void DeleteLogDialog::OnCommand(int id, int notification) {
    switch (id) {
        case IDOK:
        case IDC_DELETE_LOG_OLDER:
            if (notification != BN_CLICKED) break;
            OnChosen();  // a program that chooses in a list tells nobody
            End(id);
            break;
        case IDC_DELETE_LOG_DAY:
        case IDC_DELETE_LOG_MONTH:
        case IDC_DELETE_LOG_YEAR:
            if (notification == CBN_SELCHANGE) OnChosen();
            break;
        default: break;
    }
}

}  // namespace brennvar
