#include "tree/VisibleRows.h"

#include <cstddef>
#include <cstdint>

namespace brennvar {

void VisibleRows::SetParents(std::span<const int> parents, bool newOnesAreExpanded) {
    const auto count = static_cast<int>(parents.size());
    m_nodes.resize(parents.size(), Node{.isExpanded = newOnesAreExpanded});
    for (int entry = 0; entry < count; ++entry) {
        Node& node = At(entry);
        const int parent = parents[static_cast<std::size_t>(entry)];
        node.parent = parent >= 0 && parent < count ? parent : kNone;
    }
    BreakCircles();
    LinkChildren();
    Number();
}

void VisibleRows::BreakCircles() {
    enum class Mark : std::uint8_t { New, OnThisWay, Good };
    std::vector<Mark> marks(m_nodes.size(), Mark::New);
    const auto mark = [&](int entry) -> Mark& { return marks[static_cast<std::size_t>(entry)]; };
    for (int start = 0; start < static_cast<int>(m_nodes.size()); ++start) {
        int last = kNone;
        int entry = start;
        for (; entry != kNone && mark(entry) == Mark::New; last = entry, entry = At(entry).parent) {
            mark(entry) = Mark::OnThisWay;
        }
        if (entry != kNone && mark(entry) == Mark::OnThisWay) At(last).parent = kNone;
        for (entry = start; entry != kNone && mark(entry) == Mark::OnThisWay; entry = At(entry).parent) {
            mark(entry) = Mark::Good;
        }
    }
}

void VisibleRows::LinkChildren() {
    m_firstTop = kNone;
    for (Node& node : m_nodes) node.firstChild = kNone;
    // Backwards, so that each list of siblings begins with the lowest number.
    for (int entry = static_cast<int>(m_nodes.size()) - 1; entry >= 0; --entry) {
        int& first = At(entry).parent == kNone ? m_firstTop : At(At(entry).parent).firstChild;
        At(entry).nextSibling = first;
        first = entry;
    }
}

void VisibleRows::Number() {
    m_entries.clear();
    m_entries.reserve(m_nodes.size());
    for (Node& node : m_nodes) node.row = kNone;
    for (int entry = m_firstTop; entry != kNone;) {
        At(entry).row = static_cast<int>(m_entries.size());
        m_entries.push_back(entry);
        if (At(entry).isExpanded && At(entry).firstChild != kNone) {
            entry = At(entry).firstChild;
            continue;
        }
        while (entry != kNone && At(entry).nextSibling == kNone) entry = At(entry).parent;
        if (entry != kNone) entry = At(entry).nextSibling;
    }
}

void VisibleRows::SetExpanded(int entry, bool isExpanded) {
    if (At(entry).isExpanded == isExpanded) return;
    At(entry).isExpanded = isExpanded;
    Number();
}

void VisibleRows::SetAllExpanded(bool isExpanded) {
    for (Node& node : m_nodes) node.isExpanded = isExpanded;
    Number();
}

int VisibleRows::LevelOf(int entry) const {
    int level = 0;
    while ((entry = ParentOf(entry)) != kNone) ++level;
    return level;
}

}  // namespace brennvar
