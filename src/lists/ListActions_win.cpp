#include "lists/ListActions_win.h"

#include <algorithm>
#include <string>

namespace brennvar {
namespace {

// At 96 pixels per inch.
constexpr int kHeight = 34;
constexpr int kGap = 8;
constexpr int kCountRoom = 64;  // for the number of rows, beside the buttons

std::string MenuText(const ListAction& action, const Language& language) {
    std::string text = language.GetText(action.caption);
    if (action.key == ListKey::Delete) text += "\tDel";
    if (action.key == ListKey::Enter) text += "\tEnter";
    return text;
}

}  // namespace

void ListActions::Create(HWND window, const Look& look, const Language& language,
                         std::span<const ListAction> actions) {
    m_actions = actions;
    // All of one kind, in which every caption is whole.
    const ButtonKind* kind = &kButton;
    for (const ListAction& action : actions) {
        if (action.place != ActionPlace::ButtonAndMenu) continue;
        m_buttons.emplace_back(&action);
        if (!FitsButton(kButton, window, look, language.GetText(action.caption))) kind = &kButtonMedium;
    }
    for (ActionButton& button : m_buttons) {
        button.control.Create(window, *kind, language.GetText(button.action->caption), button.action->id, look);
    }
}

const ListAction* ListActions::Find(int id) const {
    const auto found = std::find_if(m_actions.begin(), m_actions.end(),
                                    [id](const ListAction& action) { return action.id == id; });
    return found == m_actions.end() ? nullptr : &*found;
}

const ListAction* ListActions::FindByKey(ListKey key) const {
    const auto found = std::find_if(m_actions.begin(), m_actions.end(),
                                    [key](const ListAction& action) { return action.key == key; });
    return found == m_actions.end() ? nullptr : &*found;
}

std::size_t ListActions::RowCount(int width) const {
    if (m_buttons.empty()) return 0;
    const int each = static_cast<int>(m_buttons.front().control.Size().cx) + Scale(kGap);
    const int most = std::max(1, (width - Scale(kCountRoom) + Scale(kGap)) / each);
    const auto perRow = static_cast<std::size_t>(most);
    return (m_buttons.size() + perRow - 1) / perRow;
}

int ListActions::Height(int width) const {
    const auto rows = static_cast<int>(RowCount(width));
    if (rows == 0) return 0;
    return Scale(kHeight) + (rows - 1) * (static_cast<int>(m_buttons.front().control.Size().cy) + Scale(kGap));
}

LONG ListActions::Place(const RECT& band) const {
    const std::size_t rows = RowCount(band.right - band.left);
    if (rows == 0) return band.right;
    // Rows as equal as can be, from the lowest one up.
    const std::size_t perRow = (m_buttons.size() + rows - 1) / rows;
    LONG lowestLeft = band.right;
    for (std::size_t row = 0; row < rows; ++row) {
        const std::size_t first = row * perRow;
        LONG left = band.right;
        for (std::size_t i = std::min(first + perRow, m_buttons.size()); i-- > first;) {
            const SIZE size = m_buttons[i].control.Size();
            left -= size.cx;
            m_buttons[i].control.MoveTo(
                left, band.bottom - size.cy - static_cast<LONG>(rows - 1 - row) * (size.cy + Scale(kGap)));
            left -= Scale(kGap);
        }
        lowestLeft = left;
    }
    return lowestLeft;
}

void ListActions::Enable(const PossibleActions& possible, HWND list) const {
    for (const ActionButton& button : m_buttons) {
        const HWND window = button.control.Window();
        const bool isPossible = possible.IsPossible(*button.action);
        if (!isPossible && ::GetFocus() == window) ::SetFocus(list);
        if ((::IsWindowEnabled(window) != FALSE) != isPossible) ::EnableWindow(window, isPossible);
    }
}

void ListActions::AddTo(CPopupMenu& menu, const Language& language, const PossibleActions& possible) const {
    for (const ActionPlace place : {ActionPlace::ButtonAndMenu, ActionPlace::Menu}) {
        bool isAny = false;
        for (const ListAction& action : m_actions) {
            if (action.place != place) continue;
            isAny = true;
            menu.Add(action.id, MenuText(action, language),
                     action.showsDetails ? MenuImage::About : MenuImage::None,
                     {.isDisabled = !possible.IsPossible(action)});
        }
        if (isAny) menu.AddSeparator();
    }
}

}  // namespace brennvar
