#include "lists/ListActions_win.h"

#include <algorithm>
#include <string>

#include "config/KeyNames.h"
#include "ui/Enabling_win.h"

namespace brennvar {
namespace {

// At 96 pixels per inch.
constexpr int kHeight = 34;
constexpr int kGap = 8;
constexpr int kCountRoom = 64;  // for the number of rows, beside the buttons

std::string MenuText(const ListAction& action, const Language& language) {
    const std::string caption = language.GetText(action.caption);
    switch (action.key) {
        case ListKey::Delete: return WithKey(caption, KeyStroke::Delete, language);
        case ListKey::Enter: return WithKey(caption, KeyStroke::Enter, language);
        case ListKey::ControlUp: return WithKey(caption, KeyStroke::ControlUp, language);
        case ListKey::ControlDown: return WithKey(caption, KeyStroke::ControlDown, language);
        case ListKey::Space:  // not shown: it does what a click into the row does
        case ListKey::None: break;
    }
    return caption;
}

}  // namespace

void ListActions::Create(HWND window, const Look& look, const Language& language,
                         std::span<const ListAction> actions) {
    m_actions = actions;
    for (const ListAction& action : actions) {
        if (action.place == ActionPlace::ButtonAndMenu) m_buttons.emplace_back(&action);
    }
    // All buttons are of one kind, in which every caption is whole.
    const bool fit = std::all_of(m_buttons.begin(), m_buttons.end(), [&](const ActionButton& button) {
        return FitsButton(kButton, look, language.GetText(button.action->caption));
    });
    const ButtonKind& kind = fit ? kButton : kButtonMedium;
    for (ActionButton& button : m_buttons) {
        const ButtonRank rank = button.action->destroys ? ButtonRank::Destructive : ButtonRank::Plain;
        button.control.Create(window, Ranked(kind, rank), language.GetText(button.action->caption),
                              button.action->id, look);
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

bool ListActions::AreInTwoRows(int width) const {
    int needed = Scale(kCountRoom);
    for (const ActionButton& button : m_buttons) needed += static_cast<int>(button.control.Size().cx) + Scale(kGap);
    return needed - Scale(kGap) > width &&
           std::any_of(m_buttons.begin(), m_buttons.end(),
                       [](const ActionButton& button) { return !NeedsRow(*button.action); });
}

int ListActions::Height(int width) const {
    if (m_buttons.empty()) return 0;
    return Scale(kHeight) * (AreInTwoRows(width) ? 2 : 1);
}

LONG ListActions::Place(const RECT& band) const {
    const bool areInTwoRows = AreInTwoRows(band.right - band.left);
    LONG left = band.right;
    LONG leftAbove = band.right;
    for (auto button = m_buttons.rbegin(); button != m_buttons.rend(); ++button) {
        const bool isAbove = areInTwoRows && NeedsRow(*button->action);
        LONG& at = isAbove ? leftAbove : left;
        const SIZE size = button->control.Size();
        at -= size.cx;
        button->control.MoveTo(at, band.bottom - size.cy - (isAbove ? Scale(kHeight) : 0));
        at -= Scale(kGap);
    }
    return left;
}

void ListActions::Enable(const PossibleActions& possible, HWND list) const {
    for (const ActionButton& button : m_buttons) {
        SetEnabled({{button.control.Window(), possible.IsPossible(*button.action)}}, list);
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
