#include "views/ImportDialog_win.h"

#include <algorithm>

#include "config/ResourceIds.h"
#include "ui/Paint_win.h"

namespace brennvar {
namespace {

// At 96 pixels per inch.
constexpr int kWidth = 720;
constexpr int kListHeight = 320;
constexpr int kGap = 16;
constexpr int kSmallGap = 8;
constexpr int kChangeWidth = 96;
constexpr int kStateWidth = 120;
constexpr int kLeastPath = 160;
constexpr int kFrame = 1;  // pixels

}  // namespace

bool ImportDialog::Ask(HWND owner) {
    return DoModal(owner, IDD_IMPORT_RULES) == IDOK;
}

void ImportDialog::OnCreateContent() {
    ::SetWindowTextA(Window(), m_language.GetText(1832, "Import rules").c_str());
    ::SetDlgItemTextA(Window(), IDC_IMPORT_COUNTS, m_rows.Counts().c_str());
    std::string remarks;
    for (const std::string& remark : m_rows.Remarks()) remarks.append(remarks.empty() ? "" : "\n").append(remark);
    ::SetDlgItemTextA(Window(), IDC_IMPORT_REMARKS, remarks.c_str());
    ::SetDlgItemTextA(Window(), IDOK, m_language.GetText(1870, "Import").c_str());
    ::SetDlgItemTextA(Window(), IDCANCEL, m_language.GetText(1001, "Cancel").c_str());
    m_counts.Adopt(Item(IDC_IMPORT_COUNTS), LabelKind::Bold, GetLook());
    m_remarks.Adopt(Item(IDC_IMPORT_REMARKS), LabelKind::Plain, GetLook());
    m_import.Adopt(Item(IDOK), kPrimaryButton, GetLook());
    m_cancel.Adopt(Item(IDCANCEL), kButtonDialog, GetLook());
    if (!CreateList()) {
        End(IDCANCEL);
        return;
    }
    // Tab goes from top to bottom.
    HWND above = HWND_TOP;
    for (const HWND control :
         {m_counts.Window(), m_remarks.Window(), m_list.Window(), m_import.Window(), m_cancel.Window()}) {
        ::SetWindowPos(control, above, 0, 0, 0, 0, SWP_NOMOVE | SWP_NOSIZE | SWP_NOACTIVATE);
        above = control;
    }
    // Rules that nobody can read are not imported by a key that is pressed without looking.
    const int byEnter = m_rows.IsDoubtful() ? IDCANCEL : IDOK;
    SetFirstFocus(byEnter);
    ::SendMessageA(Window(), DM_SETDEFID, static_cast<WPARAM>(byEnter), 0);
    PlaceParts();
}

bool ImportDialog::CreateList() {
    std::vector<TreeColumn> columns;
    const auto titles = m_rows.Titles();
    for (int column = 0; column < ImportRows::kColumnCount; ++column) {
        const bool isPath = column == ImportRows::kPath;
        TreeColumn made{.title = titles[static_cast<std::size_t>(column)],
                        .width = column == ImportRows::kChange ? kChangeWidth : kStateWidth};
        if (isPath) made.minimalWidth = kLeastPath;
        made.takesRoom = isPath;
        made.isPath = isPath && !m_rows.HasSentences();
        made.longest = m_rows.Longest(column);
        columns.push_back(std::move(made));
    }
    const TreeSetup setup{
        .parent = Window(), .id = IDC_IMPORT_LIST, .selectsMany = true, .empty = {.text = m_rows.EmptyText()}};
    return m_list.Create(setup, GetLook(), columns, *this);
}

void ImportDialog::PlaceParts() {
    const int width = Scale(kWidth);
    const int countsHeight = m_counts.Measure(width).cy;
    const bool hasRemarks = !m_rows.Remarks().empty();
    const int remarksHeight = hasRemarks ? m_remarks.Measure(width).cy + Scale(kSmallGap) : 0;
    SetContentPixels(
        {width, countsHeight + remarksHeight + Scale(kSmallGap + kListHeight + kGap) + m_import.Size().cy});
    RECT rest = ContentRect();
    m_counts.Place({rest.left, rest.top, rest.right, rest.top + countsHeight});
    rest.top += countsHeight + Scale(kSmallGap);
    if (hasRemarks) {
        m_remarks.Place({rest.left, rest.top, rest.right, rest.top + remarksHeight - Scale(kSmallGap)});
        rest.top += remarksHeight;
    }
    // From below: what the work area cuts off is cut off the list, which scrolls.
    LONG right = rest.right;
    for (const CButton* button : {&m_cancel, &m_import}) {
        button->MoveTo(right - button->Size().cx, rest.bottom - button->Size().cy);
        right -= button->Size().cx + Scale(kSmallGap);
    }
    rest.bottom -= m_import.Size().cy + Scale(kGap);
    m_card = rest;
    m_list.Place(Inset(rest, kFrame));
    m_list.FitToContent();
    ::ShowWindow(m_list.Window(), SW_SHOWNA);
}

TreeCell ImportDialog::Cell(int row, int column) const {
    TreeCell cell;
    cell.text = m_rows.CellText(row, column);
    cell.tone = m_rows.ToneOf(row, column);
    return cell;
}

void ImportDialog::OnPaintGround(HDC dc) {
    DrawFrame(dc, m_card, GetLook().colours.frame2);
}

void ImportDialog::OnCommand(int id, int notification) {
    if (id == IDOK && notification == BN_CLICKED) End(IDOK);
}

}  // namespace brennvar
