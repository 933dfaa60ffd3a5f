// The actions of a list as buttons below it and as items of its menu.
#pragma once

#include <cstddef>
#include <deque>
#include <span>

#include "config/Language.h"
#include "controls/Button_win.h"
#include "lists/ListModel.h"
#include "ui/Look_win.h"
#include "ui/PopupMenu_win.h"

namespace brennvar {

// Which actions work now.
class PossibleActions {
public:
    virtual ~PossibleActions() = default;
    [[nodiscard]] virtual bool IsPossible(const ListAction& action) const = 0;
};

class ListActions {
public:
    // The buttons become children of the window, which gets their commands. The actions are borrowed.
    void Create(HWND window, const Look& look, const Language& language, std::span<const ListAction> actions);

    // Null: there is no such action.
    [[nodiscard]] const ListAction* Find(int id) const;
    [[nodiscard]] const ListAction* FindByKey(ListKey key) const;

    // The height that the buttons need in a band of this width, in two rows where one has no room for them, in
    // pixels of the screen; 0 without buttons.
    [[nodiscard]] int Height(int width) const;
    // At the right end of the band; where the first of the lowest row begins.
    LONG Place(const RECT& band) const;
    // list: gets the keyboard when its owner is a button that can no longer be pressed.
    void Enable(const PossibleActions& possible, HWND list) const;
    // Buttons first, and behind a separator what is in the menu only; ends with a separator.
    void AddTo(CPopupMenu& menu, const Language& language, const PossibleActions& possible) const;

private:
    // Those that need a row above those that do not.
    [[nodiscard]] bool AreInTwoRows(int width) const;

    struct ActionButton {
        const ListAction* action;
        CButton control{};
    };

    std::span<const ListAction> m_actions;
    std::deque<ActionButton> m_buttons;
};

}  // namespace brennvar
