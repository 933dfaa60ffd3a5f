#include "tree/TreeTip_win.h"

#include <algorithm>

#include "ui/Paint_win.h"

namespace brennvar {

void TreeTip::Begin(const Look& look, const TreePainter& painter) {
    m_painter = &painter;
    m_tip = std::make_unique<CTextTip>(look);
}

void TreeTip::Follow(std::optional<CellId> cell) {
    if (cell.value_or(CellId{}) == m_cell) return;
    Hide();
    m_cell = cell.value_or(CellId{});
    UINT delay = 400;  // ms
    ::SystemParametersInfoA(SPI_GETMOUSEHOVERTIME, 0, &delay, 0);
    if (cell) ::SetTimer(m_window.Window(), kTimer, delay, nullptr);
}

void TreeTip::OnTimer() {
    ::KillTimer(m_window.Window(), kTimer);
    if (m_cell.row < 0 || m_cell.row >= m_places.RowCount()) return;
    const TreeCell cell = m_source.Cell(m_cell.row, m_cell.column);
    const CellPlaces parts = m_places.PartsOf(m_cell);
    m_says = m_source.Tip(m_cell.row, m_cell.column);
    if (m_says.empty() && (cell.text.empty() || !IsCut(cell, parts))) return;
    RECT text = parts.text;
    text.left = std::max(text.left, m_places.Rows().left);
    // What says something else than the cell stands below it.
    if (!m_says.empty()) ::OffsetRect(&text, 0, HeightOf(text));
    ::MapWindowPoints(m_window.Window(), nullptr, reinterpret_cast<POINT*>(&text), 2);
    m_tip->Show(m_window.Window(), text, m_says.empty() ? cell.text : m_says);
}

bool TreeTip::IsCut(const TreeCell& cell, const CellPlaces& parts) const {
    const RECT& rows = m_places.Rows();
    if (parts.text.right > rows.right || parts.text.left < rows.left) return true;
    const CTextDc dc(m_painter->Font());
    return m_painter->IsCut(dc.Dc(), cell, parts);
}

void TreeTip::HideUnlessSame() {
    if (!m_tip->IsShown()) return Hide();
    const std::string says = m_source.Tip(m_cell.row, m_cell.column);
    // Another tip for the same cell is a number that has gone on: what was asked for still stands there.
    if (says.empty() ? m_source.Cell(m_cell.row, m_cell.column).text != m_tip->Text() : m_says.empty()) Hide();
}

void TreeTip::Hide() {
    m_cell = {};
    if (!m_window.Window()) return;
    ::KillTimer(m_window.Window(), kTimer);
    m_tip->Hide();
}

}  // namespace brennvar
