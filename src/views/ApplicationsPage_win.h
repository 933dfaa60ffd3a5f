// The Applications page: one row per application rule.
#pragma once

#include <functional>
#include <string>
#include <vector>

#include "config/Language.h"
#include "rules/ApplicationRules.h"
#include "ui/Page.h"
#include "ui/Tree.h"

namespace brennvar {

class ApplicationsPage final : public CPage, private TreeRows {
public:
    // Reads the rules without keeping the caller waiting; calls done later, on the same thread.
    using Reader = std::function<void(std::function<void(std::vector<ApplicationRow>)> done)>;

    ApplicationsPage(const CFonts& fonts, const Language& language, PageTexts texts, Reader read);

    void Reload() override;
    void OnRulesChanged() override;

private:
    void OnCreateContent() override;
    void OnPlaceContent(const RECT& place) override { m_list.Place(place); }
    void OnShow() override { Reload(); }

    [[nodiscard]] int RowCount() const override { return static_cast<int>(m_rows.size()); }
    [[nodiscard]] TreeCell Cell(int row, int column) const override;
    [[nodiscard]] TreeCell ActionCell(ApplicationState action) const;

    void OnRead(std::vector<ApplicationRow> rows);

    const Language& m_language;
    const Reader m_read;
    CTree m_list;
    std::vector<ApplicationRow> m_rows;
};

}  // namespace brennvar
