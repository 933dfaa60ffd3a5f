#include "views/TopProgramsList_win.h"

#include <algorithm>

#include "base/DisplayName.h"
#include "ui/ChildControls_win.h"

namespace brennvar {
namespace {

// At 96 pixels per inch. An amount of four digits with its unit in every language; a longer title makes a column
// wider.
constexpr int kAmountWidth = 64;
constexpr int kTitleMargins = 18;
constexpr int kLeastName = 64;

}  // namespace

bool CTopProgramsList::CreateList(HWND parent, int id, const Look& look) {
    const auto amounts = [&look](const std::string& title) {
        // Columns are written at 96 per inch, and a measured text is in pixels of the screen.
        const int titleWidth =
            ::MulDiv(MeasureText(look.fonts.Text(), title, 0).cx, kTitleMargins, Scale(kTitleMargins));
        return TreeColumn{
            .title = title, .width = std::max(kAmountWidth, titleWidth + kTitleMargins), .isNumber = true};
    };
    const TreeColumn columns[] = {{.title = m_language.GetText(2403, "Top programs"),
                                   .width = kLeastName,
                                   .minimalWidth = kLeastName,
                                   .takesRoom = true},
                                  amounts(m_language.GetText(1662, "Received")),
                                  amounts(m_language.GetText(1663, "Sent"))};
    const TreeSetup setup{
        .parent = parent,
        .id = id,
        .empty = {.text = m_language.GetText(2404, "No program has sent or received anything yet.")},
        .name = m_language.GetText(2403, "Top programs")};
    if (!CTree::Create(setup, look, columns, *this)) return false;
    m_postTarget = Window();
    return true;
}

void CTopProgramsList::ShowPrograms(const std::vector<Statistics::ProgramUse>& programs) {
    if (programs == m_programs) return;
    std::optional<std::string> selected;
    if (const int row = SelectedRow(); row >= 0) selected = m_programs[static_cast<std::size_t>(row)].sum.path;
    m_programs = programs;
    m_longestBar = 1;
    for (const Statistics::ProgramUse& program : m_programs) {
        m_longestBar = std::max({m_longestBar, program.sum.bytesIn, program.sum.bytesOut});
    }
    Refresh();
    if (!selected) return;
    const auto at =
        std::ranges::find(m_programs, *selected, [](const Statistics::ProgramUse& use) { return use.sum.path; });
    SelectRow(at == m_programs.end() ? -1 : static_cast<int>(at - m_programs.begin()));
}

TreeCell CTopProgramsList::Cell(int row, int column) const {
    const Statistics::ProgramUse& program = m_programs[static_cast<std::size_t>(row)];
    if (column == Received) return AmountCell(program.sum.bytesIn);
    if (column == Sent) return AmountCell(program.sum.bytesOut);
    TreeCell cell;
    cell.text = program.name;
    cell.icon = IconOf(program.sum.path);
    return cell;
}

TreeCell CTopProgramsList::AmountCell(std::uint64_t bytes) const {
    TreeCell cell;
    cell.text = FormatBytes(bytes, m_words);
    cell.bar = static_cast<std::uint8_t>(static_cast<double>(bytes) * kFullBar / static_cast<double>(m_longestBar));
    return cell;
}

std::string CTopProgramsList::Tip(int row, int column) const {
    const ProgramSum& sum = m_programs[static_cast<std::size_t>(row)].sum;
    if (column == Name) return OneLine(sum.path);
    return FormatCount(column == Received ? sum.bytesIn : sum.bytesOut) + " " + m_language.GetText(1679, "bytes");
}

HICON CTopProgramsList::IconOf(const std::string& path) const {
    if (!m_reader) {
        m_reader = std::make_unique<ProgramReader>([this] {
            if (const HWND target = m_postTarget) ::PostMessageA(target, kMessageIconRead, 0, 0);
        });
        m_reader->onIcon = [this](const std::string& program) {
            for (int row = 0; row < RowCount(); ++row) {
                if (m_programs[static_cast<std::size_t>(row)].sum.path == program) RefreshRow(row);
            }
        };
    }
    return m_reader->Icon(path);
}

void CTopProgramsList::OnDestroy() {
    m_postTarget = nullptr;
    CTree::OnDestroy();
}

std::optional<LRESULT> CTopProgramsList::OnMessage(UINT message, WPARAM wParam, LPARAM lParam) {
    if (message != kMessageIconRead) return CTree::OnMessage(message, wParam, lParam);
    if (m_reader) m_reader->RunCompletions();
    return 0;
}

}  // namespace brennvar
