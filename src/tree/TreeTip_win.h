// Shows what a list says of a cell, or the whole text of a cell that is cut, when the mouse rests over it.
#pragma once

#include <memory>
#include <optional>
#include <string>

#include "controls/TextTip_win.h"
#include "tree/TreePlaces_win.h"

namespace brennvar {

class TreeTip {
public:
    static constexpr UINT_PTR kTimer = 2;  // of the tree's window

    TreeTip(const CWindow& window, const TreePlaces& places, const TreeSource& source)
        : m_window(window), m_places(places), m_source(source) {}
    // Borrows the look's fonts and the painter.
    void Begin(const Look& look, const TreePainter& painter);

    // The mouse is over this cell, or beside all.
    void Follow(std::optional<CellId> cell);
    void OnTimer();
    void Hide();
    // The rows have changed. A list that is refreshed every few seconds does not take the text away that somebody
    // reads.
    void HideUnlessSame();

private:
    [[nodiscard]] bool IsCut(const TreeCell& cell, const CellPlaces& parts) const;

    const CWindow& m_window;
    const TreePlaces& m_places;
    const TreeSource& m_source;
    const TreePainter* m_painter = nullptr;
    std::unique_ptr<CTextTip> m_tip;
    CellId m_cell;       // the one below the mouse
    std::string m_says;  // what the owner says of it; empty: its text
};

}  // namespace brennvar
