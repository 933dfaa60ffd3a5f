// The rows of a tree as screen readers are told of them: the number of a row and one more is the number of its
// part.
#pragma once

#include "tree/TreeState_win.h"
#include "ui/Accessible_win.h"

namespace brennvar {

class TreeAccessible final : public AccessibleParts {
public:
    explicit TreeAccessible(TreeState& state) : m_state(state) {}

    // The list itself.
    void Tell(AccessibleThing& thing) const;

    [[nodiscard]] int PartCount() const override { return m_state.Places().RowCount(); }
    // Its name is the first of its cells that say something, and the others with the titles of their columns.
    void TellPart(int part, AccessibleThing& thing) const override;
    [[nodiscard]] int PartAt(POINT point) const override { return m_state.Places().RowAt(point) + 1; }
    [[nodiscard]] int FocusedPart() const override { return m_state.FocusedRow() + 1; }
    [[nodiscard]] std::vector<int> SelectedParts(std::size_t most) const override;
    bool SelectPart(int part, LONG flags) override;
    // Opens or closes a row with children, checks or unchecks one with a check box, else opens it as Enter does.
    void DoPart(int part) override;

private:
    [[nodiscard]] std::string NameOfRow(int row) const;
    // The first column with a check box in this row; -1: none.
    [[nodiscard]] int CheckColumn(int row) const;

    TreeState& m_state;
};

}  // namespace brennvar
