#include "tree/TreeFit_win.h"

#include <algorithm>
#include <vector>

#include "ui/Paint_win.h"

namespace brennvar {
namespace {

constexpr int kSampledRows = 200;  // so that a list of a million rows takes no longer
constexpr int kWidestFit = 320;    // pixels at 96 per inch: a longer text shows as a tip
constexpr int kSortMark = 16;      // pixels at 96 per inch, the mark with its margins

int FittingWidth(TreeState& state, HDC dc, int column) {
    const TreePlaces& places = state.Places();
    const TreeColumn& info = places.Column(column);
    const auto needed = [&](const TreeCell& cell, const TreeRow& row) {
        const RECT place{0, 0, TreePlaces::kWidestText, TreePainter::RowHeight()};
        const CellPlaces parts = TreePainter::PlaceParts(cell, row, place, places.KeepsExpander(column));
        return state.Painter().NeededWidth(dc, cell, parts);
    };
    TreeCell title;
    title.text = info.title;
    int width = needed(title, {}) + Scale(kSortMark);
    int content = 0;
    TreeCell longest;  // with what stands before the texts of this column
    const int end = std::min(places.RowCount(), places.FirstRow() + kSampledRows);
    for (int row = places.FirstRow(); row < end; ++row) {
        TreeCell cell = state.Source().Cell(row, column);
        // Rows out of sight have no icon yet, but need its room.
        longest.icon = cell.icon = cell.icon ? cell.icon : longest.icon;
        if (cell.checked) longest.checked = cell.checked;
        content = std::max(content, needed(cell, places.LevelOf(row)));
    }
    for (const std::string& text : info.longest) {
        longest.text = text;
        width = std::max(width, needed(longest, {}));
    }
    return std::max(width, std::min(content, Scale(kWidestFit)));
}

}  // namespace

void FitToContent(TreeState& state) {
    if (!state.Window()) return;
    ColumnLayout& columns = state.Places().Columns();
    std::vector<int> widths;
    {
        const CTextDc dc(state.Painter().Font());
        for (int column = 0; column < columns.Count(); ++column) {
            const bool takesRoom = state.Places().Column(column).takesRoom;
            widths.push_back(std::max(columns.Width(column), takesRoom ? 0 : FittingWidth(state, dc.Dc(), column)));
        }
    }
    columns.Restore(widths);
    state.LayOut();
}

}  // namespace brennvar
