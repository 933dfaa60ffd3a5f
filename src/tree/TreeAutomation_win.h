// What a tree tells automation and screen readers. The messages are explained in tree/TreeMessages_win.h.
#pragma once

#include <cstddef>
#include <optional>
#include <string>

#include "tree/TreeState_win.h"

namespace brennvar {

class TreeAutomation {
public:
    explicit TreeAutomation(TreeState& state) : m_state(state), m_places(state.Places()) {}

    // Nothing for messages that are none of these.
    [[nodiscard]] std::optional<LRESULT> Answer(UINT message, WPARAM wParam, LPARAM lParam);

private:
    [[nodiscard]] std::optional<LRESULT> OnTreeMessage(UINT message, WPARAM wParam, LPARAM lParam);
    [[nodiscard]] std::optional<LRESULT> OnRowMessage(UINT message, int row, LPARAM lParam);
    [[nodiscard]] std::optional<LRESULT> OnCellMessage(UINT message, CellId cell);
    [[nodiscard]] LRESULT QueryCell(CellId cell);
    [[nodiscard]] std::string WindowText() const;
    // The size counts the zero at the end; how many characters stand before it.
    [[nodiscard]] LRESULT CopyWindowText(char* buffer, std::size_t size);
    // What the messages of Windows' own scroll bars ask for.
    void Scroll(CScrollBar& bar, WORD request);

    TreeState& m_state;
    TreePlaces& m_places;
    std::optional<std::string> m_query;  // the text that was asked for last, until it is read
};

}  // namespace brennvar
