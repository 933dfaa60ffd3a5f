// The Applications page: one row per application rule.
#pragma once

#include <functional>
#include <string>
#include <vector>

#include "rules/ApplicationRules.h"
#include "views/ListPage_win.h"

namespace brennvar {

class ApplicationsPage final : public ListPage {
public:
    // Reads the rules without keeping the caller waiting; calls done later, on the same thread.
    using Reader = std::function<void(std::function<void(std::vector<ApplicationRow>)> done)>;

    ApplicationsPage(const ListPageContext& context, PageTexts texts, Reader read);

    void Reload() override;
    void OnRulesChanged() override;

private:
    void OnShow() override { Reload(); }
    [[nodiscard]] Content DescribeList() const override;
    [[nodiscard]] int SourceRowCount() const override { return static_cast<int>(m_rows.size()); }
    [[nodiscard]] TreeCell SourceCell(int row, int column) const override;
    [[nodiscard]] std::string SourceKey(int row) const override {
        return m_rows[static_cast<std::size_t>(row)].path;
    }
    [[nodiscard]] TreeCell ActionCell(ApplicationState action) const;

    const Reader m_read;
    std::vector<ApplicationRow> m_rows;
};

}  // namespace brennvar
