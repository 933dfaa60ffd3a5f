// What a tree is made with, and what it tells its owner.
#pragma once

#include <functional>
#include <string>

#include "base/Windows_win.h"
#include "tree/EmptyList_win.h"

namespace brennvar {

struct TreeSetup {
    HWND parent = nullptr;
    int id = 0;
    bool selectsMany = false;
    bool hasLevels = false;  // rows may have children: the first column has room for their expand marks
    bool isZebra = true;
    bool hasFixedLetters = false;  // all of one width, for texts that are set out with blanks
    EmptyNote empty{};             // why there are no rows and what to do about it
    std::string name{};            // for screen readers, where no label in a window of its own says it
};

// What the user did. Each may be empty. The tree is in order before one is called: it may refresh the tree or show
// a dialog.
struct TreeEvents {
    std::function<void()> selectionChanged;  // not for changes that the owner made
    // The left button goes down on a cell, the second press of a double click included. True: it is dealt with, and
    // the row is neither selected nor opened.
    std::function<bool(int row, int column)> cellClicked;
    std::function<void(int row, int column, bool isChecked)> checkToggled;  // as the user wants it
    std::function<void(int row)> opened;                                    // double click or Enter
    std::function<void(int row, POINT screen)> contextMenu;                 // row: -1 beside all rows
    std::function<void(int column)> headerClicked;
    std::function<void()> widthsChanged;  // the user has dragged a divider
    std::function<void()> refreshWanted;  // F5
    std::function<void()> findWanted;     // Ctrl+F
    // Whether the selected rows may be dragged now, and that they were, to before this row; the number of rows:
    // behind all.
    std::function<bool()> canDragRows;
    std::function<void(int before)> rowsDragged;
    std::function<void()> emptyAction;  // of TreeSetup::empty: a click on it, or Enter
    std::function<bool()> copyWanted;   // Ctrl+C. True: it is dealt with
};

}  // namespace brennvar
