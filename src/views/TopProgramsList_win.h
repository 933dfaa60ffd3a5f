// The programs with the most traffic, as rows of a tree: icon and name, received, sent, with bars behind the
// numbers.
#pragma once

#include <atomic>
#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "config/Amounts.h"
#include "config/Language.h"
#include "lists/ProgramReader_win.h"
#include "statistics/Statistics.h"
#include "tree/Tree_win.h"

namespace brennvar {

class CTopProgramsList final : public CTree, private TreeRows {
public:
    explicit CTopProgramsList(const Language& language) : m_language(language), m_words(language) {}
    [[nodiscard]] bool CreateList(HWND parent, int id, const Look& look);

    // What was selected is selected again, wherever it stands now.
    void ShowPrograms(const std::vector<Statistics::ProgramUse>& programs);

private:
    static constexpr UINT kMessageIconRead = WM_APP + 1;
    enum Column { Name, Received, Sent };

    [[nodiscard]] int RowCount() const override { return static_cast<int>(m_programs.size()); }
    [[nodiscard]] TreeCell Cell(int row, int column) const override;
    [[nodiscard]] std::string Tip(int row, int column) const override;

    void OnDestroy() override;
    std::optional<LRESULT> OnMessage(UINT message, WPARAM wParam, LPARAM lParam) override;
    [[nodiscard]] HICON IconOf(const std::string& path) const;
    [[nodiscard]] TreeCell AmountCell(std::uint64_t bytes) const;

    const Language& m_language;
    const AmountWords m_words;
    std::vector<Statistics::ProgramUse> m_programs;
    std::uint64_t m_longestBar = 1;                   // bytes
    std::atomic<HWND> m_postTarget = nullptr;         // for the thread that reads icons
    mutable std::unique_ptr<ProgramReader> m_reader;  // made for the first program
};

}  // namespace brennvar
