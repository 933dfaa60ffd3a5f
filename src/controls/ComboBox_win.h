// Combo boxes: a field that shows one of several texts, and a list to choose it from.
#pragma once

#include <string>

#include "controls/ListItems_win.h"
#include "ui/Control_win.h"

namespace brennvar {

// The list that a combo box drops down.
class CComboList final : public CControl {
public:
    void Adopt(HWND list, const Look& look);
    void TellAccessible(AccessibleThing& thing) const override { thing.role = AccessibleRole::List; }
    [[nodiscard]] AccessibleParts* GetAccessibleParts() override { return &m_items; }

private:
    friend class CComboBox;
    [[nodiscard]] bool PaintsAll() const override { return false; }
    std::optional<LRESULT> OnMessage(UINT message, WPARAM wParam, LPARAM lParam) override;
    void PaintBorder() const;

    Palette m_colours;
    ListItems m_items{*this, ListItems::Kind::Dropped};
    mutable bool m_mayChange = false;  // the combo box gives it other items
};

// A COMBOBOX of kept strings without an edit field: all CB_ messages work but those that change the items, and its
// window text is the selected text. Its texts are in the language's character set, so they are drawn by us, in the
// list as well. The parent gets CBN_SELCHANGE when the user chooses, nothing when a program does.
class CComboBox final : public CControl {
public:
    // Makes it, visible, FieldHeight() high and without a width yet. Its height stays; Place's counts for nothing.
    void Create(HWND parent, int id, const Look& look);
    // Takes over a combo box of a dialog template. It must be an owner-drawn drop-down list of strings:
    // CBS_DROPDOWNLIST | CBS_OWNERDRAWFIXED | CBS_HASSTRINGS.
    void Adopt(HWND control, const Look& look);

    // Returns its index, from 0.
    int Add(const std::string& text) const;
    void Clear() const;
    [[nodiscard]] int Count() const;
    // -1: none.
    [[nodiscard]] int Selected() const;
    void Select(int index) const;
    // Empty when there is no such item.
    [[nodiscard]] std::string ItemText(int index) const;
    void TellAccessible(AccessibleThing& thing) const override;
    // Opens or closes the list.
    void DoAccessible() override;

private:
    void SetUp(const Look& look);
    void OnPaint(HDC dc, const RECT& client) override;
    std::optional<LRESULT> OnMessage(UINT message, WPARAM wParam, LPARAM lParam) override;
    std::optional<LRESULT> OnReflected(UINT message, WPARAM wParam, LPARAM lParam) override;
    void PaintItem(const DRAWITEMSTRUCT& item);
    // Of the items.
    LRESULT Change(UINT message, LPARAM lParam) const;

    Palette m_colours;
    CComboList m_list;
};

}  // namespace brennvar
