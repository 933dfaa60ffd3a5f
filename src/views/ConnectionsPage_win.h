// The Connections page: every connection and listening port with its process, read anew while the page is shown.
#pragma once

#include <cstddef>
#include <functional>
#include <optional>
#include <string>
#include <vector>

#include "config/Language.h"
#include "ui/Page.h"
#include "ui/Tree.h"
#include "views/ConnectionRows.h"
#include "views/ConnectionsReader.h"

namespace brennvar {

class ConnectionsPage final : public CPage, private TreeRows {
public:
    using Reading = ConnectionsReader::Reading;
    // Reads without keeping the caller waiting; calls done later, on the same thread, or not at all.
    using Reader = std::function<void(ConnectionsReader::Done done)>;
    // Told how many rows the page shows, and nothing when it is hidden.
    using CountShown = std::function<void(std::optional<std::size_t>)>;

    ConnectionsPage(const CFonts& fonts, const Language& language, PageTexts texts, Reader read,
                    CountShown countShown);

    void Reload() override;

private:
    void OnCreateContent() override;
    void OnPlaceContent(const RECT& place) override { m_list.Place(place); }
    void OnShow() override;
    void OnHide() override;
    void OnTimer(UINT_PTR id) override;

    [[nodiscard]] int RowCount() const override { return static_cast<int>(m_rows.size()); }
    [[nodiscard]] TreeCell Cell(int row, int column) const override;

    void OnRead(Reading reading);

    const Language& m_language;
    const Reader m_read;
    const CountShown m_countShown;
    CTree m_list;
    std::vector<ConnectionRow> m_rows;
};

}  // namespace brennvar
