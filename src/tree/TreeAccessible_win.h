// The rows of a tree and its header as screen readers are told of them. The number of a row and one more is the
// number of its part; the titles of the columns, from left to right, come behind the last row.
#pragma once

#include "tree/TreeState_win.h"
#include "ui/Accessible_win.h"

namespace brennvar {

class TreeAccessible final : public AccessibleParts {
public:
    explicit TreeAccessible(TreeState& state) : m_state(state) {}

    // The list itself.
    void Tell(AccessibleThing& thing) const;

    [[nodiscard]] int PartCount() const override { return m_state.Places().RowCount() + TitleCount(); }
    // The name of a row is its cells that say something, each behind the title of its column.
    void TellPart(int part, AccessibleThing& thing) const override;
    [[nodiscard]] int PartAt(POINT point) const override;
    [[nodiscard]] int FocusedPart() const override { return m_state.FocusedRow() + 1; }
    [[nodiscard]] std::vector<int> SelectedParts(std::size_t most) const override;
    bool SelectPart(int part, LONG flags) override;
    // Opens or closes a row with children, checks or unchecks one with a check box, else opens it as Enter does.
    // A title is clicked.
    void DoPart(int part) override;

private:
    struct Row {
        std::string name;
        int checkColumn = -1;  // the first one with a check box; -1: none
        bool isChecked = false;
    };
    [[nodiscard]] Row ReadRow(int row) const;
    // Lines of output have no header.
    [[nodiscard]] int TitleCount() const;
    // Below zero: the part is a row.
    [[nodiscard]] int ColumnOf(int part) const { return part - 1 - m_state.Places().RowCount(); }
    void TellTitle(int column, AccessibleThing& thing) const;

    TreeState& m_state;
};

}  // namespace brennvar
