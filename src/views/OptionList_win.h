// A list of the service in a form of the Options page: its entries as rows of a tree, with the icons of programs
// where they are some.
#pragma once

#include <atomic>
#include <cstdint>
#include <functional>
#include <memory>
#include <optional>
#include <set>
#include <string>
#include <utility>
#include <vector>

#include "config/Language.h"
#include "lists/ProgramReader_win.h"
#include "tree/Tree_win.h"
#include "views/ServiceList.h"

namespace brennvar {

class COptionList final : public CTree {
public:
    // Both are borrowed.
    COptionList(const Language& language, const ServiceList& list);
    ~COptionList() override;
    [[nodiscard]] bool CreateList(HWND parent, int id, const Look& look);

    // Del; may be empty.
    std::function<void()> removeWanted;

    // Around a change of the list's entries. What was selected is selected again, by its identifier and text.
    void BeforeChange();
    void AfterChange();
    // Places in the list.
    [[nodiscard]] std::vector<int> SelectedPlaces() const;

private:
    static constexpr UINT kMessageIconRead = WM_APP + 1;
    class Rows;

    void OnDestroy() override;
    bool OnKeyDown(UINT key) override;
    std::optional<LRESULT> OnMessage(UINT message, WPARAM wParam, LPARAM lParam) override;
    void RepaintRowsOf(const std::string& program) const;

    const Language& m_language;
    const ServiceList& m_list;
    std::unique_ptr<Rows> m_rows;
    std::atomic<HWND> m_postTarget = nullptr;   // for the thread that reads icons
    std::unique_ptr<ProgramReader> m_programs;  // none where entries are no programs
    using EntryKey = std::pair<std::uint32_t, std::string>;
    [[nodiscard]] EntryKey KeyOf(int place) const;
    std::set<EntryKey> m_selectedBefore;
    std::optional<EntryKey> m_focusedBefore;
};

}  // namespace brennvar
