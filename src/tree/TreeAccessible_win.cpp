#include "tree/TreeAccessible_win.h"

#include <utility>

namespace brennvar {
namespace {

// Columns in one line of speech.
std::string Flat(std::string text) {
    for (char& character : text) {
        if (character == '\t' || character == '\r' || character == '\n') character = ' ';
    }
    return text;
}

}  // namespace

void TreeAccessible::Tell(AccessibleThing& thing) const {
    thing.role = m_state.Places().HasLevels() ? AccessibleRole::Tree : AccessibleRole::List;
    thing.font = m_state.Font();
    NameByLabel(m_state.Window(), thing);
    const TreeSetup& setup = m_state.Setup();
    if (!setup.name.empty()) thing.name = setup.name;
    if (m_state.Places().RowCount() != 0) return;
    thing.description = setup.empty.text;
    if (!setup.empty.action.empty()) thing.description += " " + setup.empty.action;
}

TreeAccessible::Row TreeAccessible::ReadRow(int row) const {
    Row read;
    for (int column = 0; column < m_state.Places().Columns().Count(); ++column) {
        const TreeCell cell = m_state.Source().Words(row, column);
        if (cell.checked && read.checkColumn < 0) {
            read.checkColumn = column;
            read.isChecked = *cell.checked;
        }
        if (cell.text.empty()) continue;
        const std::string& title = m_state.Places().Column(column).title;
        if (!read.name.empty()) read.name += "; ";
        if (!title.empty()) read.name += title + ": ";
        read.name += Flat(cell.text);
    }
    return read;
}

int TreeAccessible::TitleCount() const {
    return ::IsRectEmpty(&m_state.Places().Header()) ? 0 : m_state.Places().Columns().Count();
}

int TreeAccessible::PartAt(POINT point) const {
    const TreePlaces& places = m_state.Places();
    if (TitleCount() == 0 || !::PtInRect(&places.Header(), point)) return places.RowAt(point) + 1;
    const int column = places.ColumnAt(point);
    return column == ColumnLayout::kNone ? 0 : places.RowCount() + 1 + column;
}

void TreeAccessible::TellTitle(int column, AccessibleThing& thing) const {
    RECT seen{};
    thing.role = AccessibleRole::ColumnHeader;
    thing.name = m_state.Places().Column(column).title;
    thing.place = m_state.Places().HeaderCell(column);
    thing.Set(STATE_SYSTEM_OFFSCREEN, !::IntersectRect(&seen, &thing.place, &m_state.Places().Header()));
    if (m_state.events.headerClicked) thing.action = AccessibleAction::Press;
}

void TreeAccessible::TellPart(int part, AccessibleThing& thing) const {
    if (ColumnOf(part) >= 0) return TellTitle(ColumnOf(part), thing);
    const int row = part - 1;
    const TreeRow level = m_state.Places().LevelOf(row);
    Row read = ReadRow(row);
    const bool hasKeyboard = ::GetFocus() == m_state.Window();
    RECT seen{};
    thing.role = m_state.Places().HasLevels() ? AccessibleRole::TreeItem : AccessibleRole::ListItem;
    thing.name = std::move(read.name);
    thing.place = m_state.Places().Row(row);
    // As Windows' own trees say how deep a row lies.
    if (m_state.Places().HasLevels()) thing.value = std::to_string(level.level);
    thing.Set(STATE_SYSTEM_SELECTABLE | STATE_SYSTEM_FOCUSABLE, true);
    thing.Set(STATE_SYSTEM_MULTISELECTABLE | STATE_SYSTEM_EXTSELECTABLE, m_state.Setup().selectsMany);
    thing.Set(STATE_SYSTEM_SELECTED, m_state.Selection().IsSelected(row));
    thing.Set(STATE_SYSTEM_FOCUSED, hasKeyboard && m_state.FocusedRow() == row);
    thing.Set(STATE_SYSTEM_OFFSCREEN, !::IntersectRect(&seen, &thing.place, &m_state.Places().Rows()));
    if (level.hasChildren) {
        thing.Set(level.isExpanded ? STATE_SYSTEM_EXPANDED : STATE_SYSTEM_COLLAPSED, true);
        thing.action = level.isExpanded ? AccessibleAction::Collapse : AccessibleAction::Expand;
    } else if (read.checkColumn >= 0) {
        thing.Set(STATE_SYSTEM_CHECKED, read.isChecked);
        thing.action = read.isChecked ? AccessibleAction::Uncheck : AccessibleAction::Check;
    } else if (m_state.events.opened) {
        thing.action = AccessibleAction::Open;
    }
}

std::vector<int> TreeAccessible::SelectedParts(std::size_t most) const {
    std::vector<int> parts;
    for (const RowRanges::Range& range : m_state.Selection().Rows().Ranges()) {
        for (int row = range.first; row <= range.last && parts.size() < most; ++row) parts.push_back(row + 1);
    }
    return parts;
}

bool TreeAccessible::SelectPart(int part, LONG flags) {
    if (ColumnOf(part) >= 0) return false;
    const int row = part - 1;
    const LONG how = flags & ~kTakeFocus;
    const bool isOneOfMany = how == kAddSelection || how == kRemoveSelection;
    if (how != 0 && how != kTakeSelection && !(isOneOfMany && m_state.Selection().IsMultiple())) return false;
    if ((flags & kTakeFocus) != 0) ::SetFocus(m_state.Window());
    m_state.EnsureVisible(row);
    m_state.ChangeSelection([&](RowSelection& selection) {
        if (how == kTakeSelection) return selection.SelectOnly(row);
        if (how != 0 && selection.IsSelected(row) == (how == kAddSelection)) return false;
        if (how != 0) return selection.Click(row, {.control = true});
        return selection.FocusOnly(row);
    });
    return true;
}

void TreeAccessible::DoPart(int part) {
    if (ColumnOf(part) >= 0) return m_state.events.headerClicked(ColumnOf(part));
    const int row = part - 1;
    const TreeRow level = m_state.Places().LevelOf(row);
    const int check = ReadRow(row).checkColumn;
    if (level.hasChildren) return m_state.ExpandByUser(row, !level.isExpanded);
    if (check >= 0) return m_state.ToggleCheck({row, check});
    if (!m_state.events.opened) return;
    // What is opened is what is selected.
    m_state.ChangeSelection([&](RowSelection& selection) { return selection.SelectOnly(row); });
    m_state.events.opened(row);
}

}  // namespace brennvar
