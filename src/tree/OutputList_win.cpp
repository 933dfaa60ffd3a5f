#include "tree/OutputList_win.h"

#include <algorithm>
#include <utility>

namespace brennvar {

bool COutputList::Create(HWND parent, int id, const Look& look, std::string emptyText) {
    const TreeColumn columns[] = {{.title = {}, .takesRoom = true}};
    const TreeSetup setup{.parent = parent,
                          .id = id,
                          .selectsMany = true,
                          .isZebra = false,
                          .hasFixedLetters = true,
                          .empty = {.text = std::move(emptyText), .picture = EmptyPicture::None}};
    return m_tree.Create(setup, look, columns, *this);
}

TreeCell COutputList::Cell(int row, int) const {
    const Line& line = m_lines[static_cast<std::size_t>(row)];
    TreeCell cell;
    cell.text = line.text;
    cell.textColour = line.colour;
    return cell;
}

void COutputList::Append(const std::string& text, std::optional<COLORREF> colour) {
    const bool isAtEnd = m_tree.IsAtEnd();
    std::size_t begin = 0;
    do {
        const std::size_t end = std::min(text.find('\n', begin), text.size());
        const std::size_t length = end - begin;
        const bool hasReturn = length > 0 && text[end - 1] == '\r';
        AppendLine(text.substr(begin, hasReturn ? length - 1 : length), colour);
        begin = end + 1;
    } while (begin < text.size());
    m_tree.Refresh();
    if (isAtEnd) m_tree.ScrollTo(RowCount());
}

void COutputList::AppendLine(std::string text, std::optional<COLORREF> colour) {
    if (m_lines.size() == m_mostLines) {
        m_lines.pop_front();
        m_tree.MoveRowsBehind(-1, -1);
    }
    m_tree.WidenFor(0, text);
    m_lines.push_back({std::move(text), colour});
}

void COutputList::Clear() {
    m_lines.clear();
    m_tree.Refresh();
}

void COutputList::SelectAll() {
    if (m_lines.empty()) return;
    RowRanges all;
    all.Add(0, RowCount() - 1);
    m_tree.SetSelection(std::move(all), std::max(0, m_tree.FocusedRow()));
}

std::string COutputList::SelectedText() const {
    std::string text;
    for (const RowRanges::Range& range : m_tree.SelectedRows().Ranges()) {
        const int last = std::min(range.last, RowCount() - 1);
        for (int row = range.first; row <= last; ++row) text += LineText(row) + "\r\n";
    }
    return text;
}

std::string COutputList::LineText(int row) const {
    return row >= 0 && row < RowCount() ? m_lines[static_cast<std::size_t>(row)].text : std::string();
}

std::string COutputList::Text() const {
    std::string text;
    for (const Line& line : m_lines) text += line.text + "\r\n";
    return text;
}

}  // namespace brennvar
