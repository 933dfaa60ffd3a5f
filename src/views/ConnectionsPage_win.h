// The Connections page: every connection and listening port with its process, read anew while the page is shown.
#pragma once

#include <cstddef>
#include <functional>
#include <optional>
#include <string>
#include <vector>

#include "views/ConnectionRows.h"
#include "views/ConnectionsReader.h"
#include "views/ListPage_win.h"

namespace brennvar {

class ConnectionsPage final : public ListPage {
public:
    using Reading = ConnectionsReader::Reading;
    // Reads without keeping the caller waiting; calls done later, on the same thread, or not at all.
    using Reader = std::function<void(ConnectionsReader::Done done)>;

    ConnectionsPage(const ListPageContext& context, PageTexts texts, Reader read);

    void Reload() override;

private:
    void OnShow() override;
    void OnHide() override;
    void OnTimer(UINT_PTR id) override;
    [[nodiscard]] Content DescribeList() const override;
    [[nodiscard]] int SourceRowCount() const override { return static_cast<int>(m_rows.size()); }
    [[nodiscard]] TreeCell SourceCell(int row, int column) const override;
    [[nodiscard]] std::string SourceKey(int row) const override;

    void OnRead(Reading reading);

    const Reader m_read;
    std::vector<ConnectionRow> m_rows;
};

}  // namespace brennvar
