// Columns as wide as what they hold.
#include <algorithm>

#include "tree/Tree_win.h"
#include "ui/Paint_win.h"

namespace brennvar {
namespace {

constexpr int kSampledRows = 200;  // so that a list of a million rows takes no longer
constexpr int kWidestFit = 320;    // pixels at 96 per inch: a longer text shows as a tip
constexpr int kAnyWidth = 10'000;  // pixels, more than any column has
constexpr int kSortMark = 16;      // pixels at 96 per inch, the mark with its margins

}  // namespace

void CTree::FitToContent() {
    if (!Window()) return;
    std::vector<int> widths;
    widths.reserve(m_columns.size());
    const HDC dc = ::GetDC(Window());
    {
        const CSelect font(dc, m_painter->Font());
        for (int column = 0; column < m_layout.Count(); ++column) {
            const bool takesRoom = m_columns[static_cast<std::size_t>(column)].takesRoom;
            widths.push_back(std::max(m_layout.Width(column), takesRoom ? 0 : FittingWidth(dc, column)));
        }
    }
    ::ReleaseDC(Window(), dc);
    m_layout.Restore(widths);
    LayOut();
    Repaint();
}

int CTree::FittingWidth(HDC dc, int column) const {
    const TreeColumn& info = m_columns[static_cast<std::size_t>(column)];
    const auto needed = [&](const TreeCell& cell, const TreeRow& row) {
        const RECT place{0, 0, kAnyWidth, TreePainter::RowHeight()};
        const bool keepsExpander = m_setup.hasLevels && column == 0;
        return m_painter->NeededWidth(dc, cell, TreePainter::PlaceParts(cell, row, place, keepsExpander));
    };
    TreeCell title;
    title.text = info.title;
    int width = needed(title, {}) + Scale(kSortMark);
    for (const std::string& text : info.longest) {
        TreeCell cell;
        cell.text = text;
        width = std::max(width, needed(cell, {}));
    }
    int content = 0;
    HICON icon = nullptr;  // rows out of sight have none yet, but need its room
    const int first = FirstVisibleRow();
    for (int row = first; row < m_rowCount && row < first + kSampledRows; ++row) {
        TreeCell cell = m_source.Cell(row, column);
        icon = cell.icon = cell.icon ? cell.icon : icon;
        content = std::max(content, needed(cell, m_setup.hasLevels ? m_source.Row(row) : TreeRow{}));
    }
    return std::max(width, std::min(content, Scale(kWidestFit)));
}

}  // namespace brennvar
