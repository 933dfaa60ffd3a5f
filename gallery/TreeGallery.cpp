#include <array>
#include <vector>

#include "GalleryPage.h"
#include "tree/OutputList_win.h"
#include "ui/ProgramIcon_win.h"

#include "tree/TreeMessages_win.h"
#include "tree/Tree_win.h"
#include "tree/VisibleRows.h"

namespace brennvar::gallery {
namespace {

constexpr int kDeny = 0, kAllow = 1;

// Programs with rules below them.
class RuleRows final : public TreeRows {
public:
    RuleRows() : m_icon(LoadNoIcon(IconSize::Small)) {
        std::vector<int> parents;
        for (int entry = 0; entry < kEntries; ++entry) parents.push_back(IsProgram(entry) ? -1 : entry - entry % 4);
        m_visible.SetParents(parents);
        m_visible.SetExpanded(4, false);
    }
    [[nodiscard]] int RowCount() const override { return m_visible.RowCount(); }
    [[nodiscard]] TreeRow Row(int row) const override {
        const int entry = m_visible.EntryOf(row);
        return {m_visible.LevelOf(entry), m_visible.HasChildren(entry), m_visible.IsExpanded(entry)};
    }
    [[nodiscard]] TreeCell Cell(int row, int column) const override {
        const int entry = m_visible.EntryOf(row);
        TreeCell cell;
        switch (column) {
            case 0:
                cell.text = IsProgram(entry) ? "program" + std::to_string(entry / 4) + ".exe" : "Rule for one port";
                if (IsProgram(entry)) cell.icon = m_icon.Get();
                if (!IsProgram(entry)) cell.checked = m_isChecked[static_cast<std::size_t>(entry)];
                break;
            case 1:
                cell.text = R"(c:\program files\some maker\some program with a long name\program.exe)";
                if (!IsProgram(entry)) cell.tone = Tone::Muted;
                break;
            case 2: return ActionCell(entry % 3);
            case 3: return StateCell(entry % 3);
            case 4: cell.text = std::to_string(entry * 123457); break;
            default: break;
        }
        return cell;
    }
    void SetExpanded(int row, bool isExpanded) override {
        m_visible.SetExpanded(m_visible.EntryOf(row), isExpanded);
    }
    void SetChecked(int row, bool isChecked) {
        m_isChecked[static_cast<std::size_t>(m_visible.EntryOf(row))] = isChecked;
    }

private:
    static constexpr int kEntries = 60;
    static bool IsProgram(int entry) { return entry % 4 == 0; }
    static TreeCell ActionCell(int action) {
        TreeCell cell;
        cell.text = action == kDeny ? "Deny" : action == kAllow ? "Allow" : "Ask";
        cell.tone = action == kDeny ? Tone::Deny : action == kAllow ? Tone::Allow : Tone::Ask;
        return cell;
    }

    static TreeCell StateCell(int state) {
        constexpr const char* kTexts[] = {"ESTAB", "LISTEN", "SYN"};
        constexpr CellGlyph kGlyphs[] = {CellGlyph::Filled, CellGlyph::Bar, CellGlyph::Hollow};
        TreeCell cell;
        cell.text = kTexts[state];
        cell.glyph = kGlyphs[state];
        return cell;
    }

    UniqueIcon m_icon;
    VisibleRows m_visible;
    std::array<bool, kEntries> m_isChecked{false, true, false, true};
};

class NoRows final : public TreeRows {
public:
    [[nodiscard]] int RowCount() const override { return 0; }
    [[nodiscard]] TreeCell Cell(int, int) const override { return {}; }
};

class TreeGallery final : public GalleryPage {
public:
    [[nodiscard]] SIZE Size() const override { return {1120, 760}; }
    void Fill(HWND window, const Look& look) override {
        const TreeColumn columns[] = {{.title = "Application", .width = 220},
                                      {.title = "Path", .width = 240, .minimalWidth = 120, .takesRoom = true},
                                      {.title = "Action", .width = 80},
                                      {.title = "State", .width = 80},
                                      {.title = "Bytes", .width = 100, .isNumber = true}};
        m_tree.events.checkToggled = [this](int row, int, bool isChecked) { m_rules.SetChecked(row, isChecked); };
        m_tree.events.headerClicked = [this](int column) {
            m_isAscending = column != m_sorted || !m_isAscending;
            m_sorted = column;
            m_tree.SetSortMark(column, m_isAscending);
        };
        (void)m_tree.Create({.parent = window, .id = 1, .selectsMany = true, .hasLevels = true}, look, columns,
                            m_rules);
        m_tree.Place({16, 16, 736, 400});
        m_tree.SetSortMark(0, true);
        // Selected, with the focus frame on the last of them.
        ::SendMessageA(m_tree.Window(), kTreeSelectRow, 1, 0);
        RowRanges rows;
        rows.Add(2, 3);
        m_tree.SetSelection(rows, 1);

        // Too narrow for its columns: both scroll bars.
        (void)m_narrow.Create({.parent = window, .id = 2, .hasLevels = true}, look, columns, m_rules);
        m_narrow.Place({752, 16, 1104, 400});
        m_narrow.SelectRow(4);

        const std::string why =
            "No rules yet. A program appears here once its question is answered with 'Remember my answer'.";
        (void)m_empty.Create({.parent = window, .id = 3, .empty = {.text = why}}, look, columns, m_none);
        m_empty.Place({16, 416, 552, 744});

        (void)m_output.Create(window, 4, look);
        m_output.Place({568, 416, 1104, 744});
        for (int line = 0; line < 40; ++line) {
            m_output.Append(std::to_string(line) + "  " + std::to_string(line * 3) + " ms  10.1.2." +
                            std::to_string(line) + "  host" + std::to_string(line) + ".example");
        }
        m_output.Append("The destination did not answer.", RGB(165, 14, 44));
    }
    void OnShown(HWND, const Look&) override {
        ::SetFocus(m_tree.Window());
        ::SendMessageA(m_tree.Window(), WM_KEYDOWN, VK_DOWN, 0);
    }

private:
    RuleRows m_rules;
    NoRows m_none;
    CTree m_tree;
    CTree m_narrow;
    CTree m_empty;
    COutputList m_output;
    int m_sorted = 0;
    bool m_isAscending = true;
};

}  // namespace

std::unique_ptr<GalleryPage> MakeTreeGallery() {
    return std::make_unique<TreeGallery>();
}

}  // namespace brennvar::gallery
