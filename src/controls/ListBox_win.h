// Lists of a few short texts, one of which is selected.
#pragma once

#include <string>

#include "controls/ListItems_win.h"
#include "ui/Control_win.h"

namespace brennvar {

// Whether a list box gets other items by the message. A number that it tells would mean another item then, or none:
// its owner alone does so.
[[nodiscard]] bool ChangesListItems(UINT message);

// A LISTBOX of kept strings: all LB_ messages work but those that change the items, and arrows, Home, End and first
// letters choose. Its texts are in the language's character set, so they are drawn by us. The parent gets
// LBN_SELCHANGE when the user chooses, nothing when a program does.
class CListBox final : public CControl {
public:
    // Makes it, visible, of no size yet and without a frame.
    void Create(HWND parent, int id, const Look& look);

    void Add(const std::string& text) const;
    // kNone: none.
    [[nodiscard]] int Selected() const;
    void Select(int index) const;
    // A dot behind one text, or behind none: something has to be done there.
    static constexpr int kNone = -1;
    void Mark(int index);

    void TellAccessible(AccessibleThing& thing) const override;
    [[nodiscard]] AccessibleParts* GetAccessibleParts() override { return &m_items; }

private:
    [[nodiscard]] bool PaintsAll() const override { return false; }
    std::optional<LRESULT> OnMessage(UINT message, WPARAM wParam, LPARAM lParam) override;
    std::optional<LRESULT> OnReflected(UINT message, WPARAM wParam, LPARAM lParam) override;
    void PrintRows(HDC dc, LPARAM flags);
    void PaintItem(const DRAWITEMSTRUCT& item) const;

    Palette m_colours;
    ListItems m_items{*this, ListItems::Kind::List};
    int m_marked = kNone;
};

}  // namespace brennvar
