// The items of a list box, and of the list of a combo box, as screen readers are told of them.
#pragma once

#include "ui/Accessible_win.h"
#include "ui/Control_win.h"

namespace brennvar {

// The text of an item, from 0; empty when there is no such item.
[[nodiscard]] std::string TextOfItem(HWND list, int index);

class ListItems final : public AccessibleParts {
public:
    // Borrows the list, whose window may come later. Of a list that drops down from a combo box nothing can be
    // chosen by number: the box has the keyboard.
    enum class Kind { List, Dropped };
    ListItems(CControl& list, Kind kind) : m_list(list), m_kind(kind) {}

    [[nodiscard]] int PartCount() const override;
    void TellPart(int part, AccessibleThing& thing) const override;
    [[nodiscard]] int PartAt(POINT point) const override;
    [[nodiscard]] int FocusedPart() const override;
    [[nodiscard]] std::vector<int> SelectedParts(std::size_t most) const override;
    bool SelectPart(int part, LONG flags) override;
    // As a click: the parent is told.
    void DoPart(int part) override;

private:
    CControl& m_list;
    const Kind m_kind;
};

}  // namespace brennvar
