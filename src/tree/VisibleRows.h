// Which entries of a list with parents can be seen. Entries are numbered as their owner keeps them, rows as they
// are shown: children below their parent, in the order of their numbers, and none below a collapsed one.
#pragma once

#include <span>
#include <vector>

namespace brennvar {

class VisibleRows {
public:
    static constexpr int kNone = -1;

    // The parent of each entry, or kNone. A parent that is no entry, or that leads back to its own child, counts as
    // none. Entries that were there before keep their state, new ones are expanded or collapsed as told.
    void SetParents(std::span<const int> parents, bool newOnesAreExpanded = true);
    void SetExpanded(int entry, bool isExpanded);
    void SetAllExpanded(bool isExpanded);

    [[nodiscard]] int RowCount() const { return static_cast<int>(m_entries.size()); }
    [[nodiscard]] int EntryOf(int row) const { return m_entries[static_cast<std::size_t>(row)]; }
    // kNone while a collapsed parent hides it.
    [[nodiscard]] int RowOf(int entry) const { return m_nodes[static_cast<std::size_t>(entry)].row; }
    [[nodiscard]] int ParentOf(int entry) const { return m_nodes[static_cast<std::size_t>(entry)].parent; }
    [[nodiscard]] int LevelOf(int entry) const;
    [[nodiscard]] bool HasChildren(int entry) const {
        return m_nodes[static_cast<std::size_t>(entry)].firstChild != kNone;
    }
    [[nodiscard]] bool IsExpanded(int entry) const { return m_nodes[static_cast<std::size_t>(entry)].isExpanded; }

private:
    struct Node {
        int parent = kNone;
        int firstChild = kNone;
        int nextSibling = kNone;
        int row = kNone;
        bool isExpanded = true;
    };
    [[nodiscard]] Node& At(int entry) { return m_nodes[static_cast<std::size_t>(entry)]; }
    void BreakCircles();
    void LinkChildren();
    void Number();

    std::vector<Node> m_nodes;
    std::vector<int> m_entries;  // by row
    int m_firstTop = kNone;
};

}  // namespace brennvar
