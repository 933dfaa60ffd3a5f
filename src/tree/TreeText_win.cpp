#include "tree/TreeText_win.h"

#include <algorithm>

#include "ui/Clipboard_win.h"

namespace brennvar {
namespace {

// A cell must not make more cells or lines of itself.
void AppendFlat(std::string& text, const std::string& cell) {
    for (const char character : cell) {
        const bool parts = character == '\t' || character == '\r' || character == '\n' || character == '\0';
        text += parts ? ' ' : character;
    }
}

}  // namespace

std::string TextOfRow(const TreeState& state, int row) {
    std::string text;
    for (int column = 0; column < state.Places().Columns().Count(); ++column) {
        if (column > 0) text += '\t';
        AppendFlat(text, state.Source().Cell(row, column).text);
    }
    return text;
}

void CopySelection(const TreeState& state) {
    std::string text;
    int count = 0;
    for (const RowRanges::Range& range : state.Selection().Rows().Ranges()) {
        const int last = std::min(range.last, state.Places().RowCount() - 1);
        for (int row = range.first; row <= last && count < kMostCopiedRows; ++row, ++count) {
            text += TextOfRow(state, row) + "\r\n";
        }
    }
    if (count > 0) CopyToClipboard(state.Window(), text, state.Font());
}

}  // namespace brennvar
