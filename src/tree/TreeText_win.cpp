#include "tree/TreeText_win.h"

#include <algorithm>
#include <cstring>

namespace brennvar {
namespace {

// A cell must not make more cells or lines of itself.
void AppendFlat(std::string& text, const std::string& cell) {
    for (const char character : cell) {
        const bool parts = character == '\t' || character == '\r' || character == '\n' || character == '\0';
        text += parts ? ' ' : character;
    }
}

void CopyText(HWND owner, const std::string& text) {
    if (!::OpenClipboard(owner)) return;
    ::EmptyClipboard();
    const HGLOBAL memory = ::GlobalAlloc(GMEM_MOVEABLE, text.size() + 1);
    if (void* bytes = memory ? ::GlobalLock(memory) : nullptr) {
        std::memcpy(bytes, text.c_str(), text.size() + 1);
        ::GlobalUnlock(memory);
        // The clipboard owns the memory when it has taken it.
        if (!::SetClipboardData(CF_TEXT, memory)) ::GlobalFree(memory);
    } else if (memory) {
        ::GlobalFree(memory);
    }
    ::CloseClipboard();
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
    if (count > 0) CopyText(state.Window(), text);
}

}  // namespace brennvar
