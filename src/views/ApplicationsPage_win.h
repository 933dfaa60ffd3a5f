// The Applications page: one row per application rule.
#pragma once

#include <functional>
#include <string>
#include <vector>

#include "config/Language.h"
#include "rules/ApplicationRules.h"
#include "ui/ListView.h"
#include "ui/Page.h"

namespace brennvar {

class ApplicationsPage final : public CPage, private ListRows {
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
    LRESULT OnNotify(NMHDR& header) override { return m_list.OnNotify(header); }
    HBRUSH OnControlColor(HDC dc, HWND control) override { return m_list.OnControlColor(dc, control); }

    [[nodiscard]] int RowCount() const override { return static_cast<int>(m_rows.size()); }
    [[nodiscard]] std::string CellText(int row, int column) const override;
    [[nodiscard]] std::string ActionText(ApplicationState action) const;

    void OnRead(std::vector<ApplicationRow> rows);

    const Language& m_language;
    const Reader m_read;
    CListView m_list;
    std::vector<ApplicationRow> m_rows;
};

}  // namespace brennvar
