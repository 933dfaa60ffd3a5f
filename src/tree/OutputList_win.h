// Lines of text in letters of one width that come one after the other: what a tool prints, what is logged. Keeps
// the last ones and shows the newest, unless the user has scrolled up to read.
#pragma once

#include <cstddef>
#include <deque>
#include <optional>
#include <string>

#include "tree/Tree_win.h"

namespace brennvar {

class COutputList final : private TreeRows {
public:
    static constexpr std::size_t kMostLines = 10'000;

    explicit COutputList(std::size_t mostLines = kMostLines) : m_mostLines(mostLines) {}

    // Borrows the look's fonts for the life of the window.
    [[nodiscard]] bool Create(HWND parent, int id, const Look& look, std::string emptyText = {});
    // A text of several lines becomes as many rows.
    void Append(const std::string& text, std::optional<COLORREF> colour = std::nullopt);
    void Clear();

    // What the user does with the lines, for the owner to set.
    [[nodiscard]] TreeEvents& Events() { return m_tree.events; }
    [[nodiscard]] bool HasSelection() const { return m_tree.SelectedRow() >= 0; }
    void SelectAll();
    // The lines that are selected, each with an end of line.
    [[nodiscard]] std::string SelectedText() const;
    // Empty for a row that does not exist.
    [[nodiscard]] std::string LineText(int row) const;

    [[nodiscard]] HWND Window() const { return m_tree.Window(); }
    void Place(const RECT& place) const { m_tree.Place(place); }
    [[nodiscard]] std::size_t LineCount() const { return m_lines.size(); }
    // All lines, each with an end of line.
    [[nodiscard]] std::string Text() const;

private:
    struct Line {
        std::string text;
        std::optional<COLORREF> colour;
    };
    [[nodiscard]] int RowCount() const override { return static_cast<int>(m_lines.size()); }
    [[nodiscard]] TreeCell Cell(int row, int column) const override;
    void AppendLine(std::string text, std::optional<COLORREF> colour);

    const std::size_t m_mostLines;
    std::deque<Line> m_lines;
    CTree m_tree;
};

}  // namespace brennvar
