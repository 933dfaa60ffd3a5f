// What a tree shows and everything that changes it: rows, columns, scrolling, focus and selection. A change
// repaints what looks different and tells screen readers; what the user does tells the owner as well. Mouse,
// keyboard and automation of a tree work on this, each for itself.
#pragma once

#include <functional>
#include <memory>
#include <span>
#include <string>

#include "tree/RowSelection.h"
#include "tree/TreeEvents_win.h"
#include "tree/TreePainter_win.h"
#include "tree/TreePlaces_win.h"
#include "tree/TreeSource_win.h"
#include "tree/TreeTip_win.h"
#include "ui/Window_win.h"

namespace brennvar {

class TreeState {
public:
    // Borrows the tree's window, which need not be there yet, and the owner's wishes, which may yet be set.
    TreeState(const CWindow& window, const TreeEvents& treeEvents) : events(treeEvents), m_window(window) {}

    const TreeEvents& events;

    // Borrows the fonts of the look and the rows.
    void Begin(const TreeSetup& setup, const Look& look, std::span<const TreeColumn> columns, TreeRows& rows);

    [[nodiscard]] const TreeSetup& Setup() const { return m_setup; }
    [[nodiscard]] const TreeSource& Source() const { return m_source; }
    [[nodiscard]] const TreePlaces& Places() const { return m_places; }
    [[nodiscard]] TreePlaces& Places() { return m_places; }
    [[nodiscard]] const RowSelection& Selection() const { return m_selection; }
    [[nodiscard]] int FocusedRow() const { return m_selection.Focused(); }  // -1: none
    [[nodiscard]] TreePainter& Painter() { return *m_painter; }
    [[nodiscard]] TreeTip& Tip() { return m_tip; }
    [[nodiscard]] HFONT Font() const { return m_painter->Font(); }

    [[nodiscard]] HWND Window() const { return m_window.Window(); }
    void Repaint() const { m_window.Repaint(); }
    void Repaint(const RECT& part) const { m_window.Repaint(part); }
    void RepaintRow(int row) const;

    // The owner's rows have changed.
    void Refresh();
    void MoveRowsBehind(int row, int by);
    void SetExpanded(int row, bool isExpanded);
    void SetEmpty(const EmptyNote& note);
    // Client coordinates; empty while there are rows.
    [[nodiscard]] RECT EmptyAction() const;

    void LayOut();
    // The column shall have this width, or hold what is in sight uncut.
    void DragColumn(int column, int width);
    void FitColumn(int column);
    void WidenFor(int column, const std::string& text);

    // One of the two bars, to a position that is brought into its range.
    void Scroll(CScrollBar& bar, int position);
    void ScrollTo(int firstRow) { Scroll(m_places.Vertical(), firstRow); }
    void EnsureVisible(int row);

    // The focus is marked while the user works with the keyboard.
    [[nodiscard]] bool ShowsFocus() const { return m_showsFocus; }
    void ShowFocus(bool isShown);
    void SetSelection(RowRanges rows, int focused);

    // As the user does it: the change tells whether other rows are selected now.
    void ChangeSelection(const std::function<bool(RowSelection&)>& change);
    void ExpandByUser(int row, bool isExpanded);
    void ToggleCheck(CellId cell);
    // For screen readers: an EVENT_OBJECT_ number; row -1 is the list itself.
    void Announce(DWORD event, int row) const { ::NotifyWinEvent(event, Window(), OBJID_CLIENT, row + 1); }

private:
    void RepaintSelection(const RowRanges& before, int focusedBefore) const;
    void AnnounceFocus(int focusedBefore) const;

    const CWindow& m_window;
    TreeSetup m_setup;
    TreeSource m_source;
    TreePlaces m_places{m_source};
    std::unique_ptr<TreePainter> m_painter;
    TreeTip m_tip{m_window, m_places, m_source};
    RowSelection m_selection;
    bool m_showsFocus = false;
};

}  // namespace brennvar
