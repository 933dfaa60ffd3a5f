#include "views/OptionList_win.h"

#include <utility>

namespace brennvar {
namespace {

constexpr int kLeastColumn = 96;  // at 96 pixels per inch

}  // namespace

class COptionList::Rows final : public TreeRows {
public:
    explicit Rows(const COptionList& owner) : m_owner(owner) {}

    [[nodiscard]] int RowCount() const override { return static_cast<int>(m_owner.m_list.Entries().size()); }
    [[nodiscard]] TreeCell Cell(int row, int) const override {
        TreeCell cell;
        cell.text = m_owner.m_list.Entries()[static_cast<std::size_t>(row)].text;
        if (m_owner.m_programs) cell.icon = m_owner.m_programs->Icon(cell.text);
        return cell;
    }

private:
    const COptionList& m_owner;
};

COptionList::COptionList(const Language& language, const ServiceList& list)
    : m_language(language), m_list(list), m_rows(std::make_unique<Rows>(*this)) {}

COptionList::~COptionList() = default;

bool COptionList::CreateList(HWND parent, int id, const Look& look) {
    if (m_list.HoldsPrograms()) {
        m_programs = std::make_unique<ProgramReader>([this] {
            if (const HWND target = m_postTarget) ::PostMessageA(target, kMessageIconRead, 0, 0);
        });
        m_programs->onIcon = [this](const std::string& program) { RepaintRowsOf(program); };
    }
    const TreeColumn columns[] = {{.title = m_language.GetText(m_list.Title()),
                                   .width = kLeastColumn,
                                   .minimalWidth = kLeastColumn,
                                   .takesRoom = true,
                                   .isPath = m_list.HoldsPrograms()}};
    const TreeSetup setup{.parent = parent, .id = id, .selectsMany = true};
    if (!CTree::Create(setup, look, columns, *m_rows)) return false;
    m_postTarget = Window();
    AfterChange();
    return true;
}

void COptionList::OnDestroy() {
    m_postTarget = nullptr;
    CTree::OnDestroy();
}

bool COptionList::OnKeyDown(UINT key) {
    if (key == VK_DELETE && removeWanted) {
        removeWanted();
        return true;
    }
    return CTree::OnKeyDown(key);
}

std::optional<LRESULT> COptionList::OnMessage(UINT message, WPARAM wParam, LPARAM lParam) {
    if (message != kMessageIconRead) return CTree::OnMessage(message, wParam, lParam);
    if (m_programs) m_programs->RunCompletions();
    return 0;
}

void COptionList::RepaintRowsOf(const std::string& program) const {
    const std::vector<ListEntry>& entries = m_list.Entries();
    const int count = static_cast<int>(entries.size());
    for (int row = FirstVisibleRow(); row < count; ++row) {
        const RECT place = CellRect(row, 0);
        if (::IsRectEmpty(&place)) return;
        if (entries[static_cast<std::size_t>(row)].text == program) RefreshRow(row);
    }
}

std::vector<int> COptionList::SelectedPlaces() const {
    const int count = static_cast<int>(m_list.Entries().size());
    std::vector<int> places;
    for (const auto& range : SelectedRows().Ranges()) {
        for (int row = range.first; row <= range.last && row < count; ++row) places.push_back(row);
    }
    return places;
}

void COptionList::BeforeChange() {
    for (const int place : SelectedPlaces()) m_selectedBefore.insert(KeyOf(place));
    const int focused = FocusedRow();
    if (focused >= 0 && focused < m_rows->RowCount()) m_focusedBefore = KeyOf(focused);
}

COptionList::EntryKey COptionList::KeyOf(int place) const {
    const ListEntry& entry = m_list.Entries()[static_cast<std::size_t>(place)];
    return {entry.id, entry.text};
}

void COptionList::AfterChange() {
    const Text empty = m_list.EmptyText();
    SetEmpty({.text = empty.number != 0 ? m_language.GetText(empty) : std::string()});
    Refresh();
    const std::set<EntryKey> selected = std::exchange(m_selectedBefore, {});
    const std::optional<EntryKey> kept = std::exchange(m_focusedBefore, std::nullopt);
    RowRanges rows;
    int focused = -1;
    for (int row = 0; row < m_rows->RowCount(); ++row) {
        const EntryKey key = KeyOf(row);
        if (selected.contains(key)) rows.Add(row, row);
        if (key == kept) focused = row;
    }
    if (focused < 0 && !rows.IsEmpty()) focused = rows.Ranges().front().first;
    SetSelection(std::move(rows), focused);
}

}  // namespace brennvar
