#include "views/ConnectionsPage_win.h"

#include <utility>

namespace brennvar {
namespace {

constexpr UINT_PTR kRefreshTimer = 1;
constexpr UINT kRefreshPeriod = 2000;  // ms

}  // namespace

ConnectionsPage::ConnectionsPage(const ListPageContext& context, PageTexts texts, Reader read)
    : ListPage(context, std::move(texts), "Connections"), m_read(std::move(read)) {}

ListPage::Content ConnectionsPage::DescribeList() const {
    const Language& language = GetLanguage();
    return {.columns = {{.title = language.GetText(1020, "Process"), .width = 128},
                        {.title = language.GetText(1021, "Address"), .width = 240},
                        {.title = language.GetText(1022, "State"), .width = 80},
                        {.title = language.GetText(1023, "PID"), .width = 48, .isNumber = true},
                        {.title = language.GetText(1024, "Bytes in"), .width = 80, .isNumber = true},
                        {.title = language.GetText(1025, "Bytes out"), .width = 80, .isNumber = true},
                        {.title = language.GetText(1026, "Path"), .width = 96, .takesRoom = true}},
            .emptyText = language.GetText(
                1018, "Reading the connections. This takes longer while the firewall service is not reachable.")};
}

std::string ConnectionsPage::SourceKey(int row) const {
    // A connection is the same one while its state and its counters go on; a listener on its port is another.
    const ConnectionRow& connection = m_rows[static_cast<std::size_t>(row)];
    const std::uint32_t parts[] = {
        connection.processId,  connection.localAddress,
        connection.localPort,  connection.remoteAddress,
        connection.remotePort, connection.state < kStateListenTcp ? 0 : connection.state};
    std::string key;
    for (const std::uint32_t part : parts) key += std::to_string(part) + ' ';
    return key;
}

TreeCell ConnectionsPage::SourceCell(int row, int column) const {
    const ConnectionRow& connection = m_rows[static_cast<std::size_t>(row)];
    TreeCell cell;
    switch (column) {
        case 0: cell.text = connection.name; break;
        case 1: cell.text = connection.address; break;
        case 2: cell.text = ConnectionStateText(connection.state); break;
        case 3: cell.text = std::to_string(connection.processId); break;
        case 4: cell.text = std::to_string(connection.bytesIn); break;
        case 5: cell.text = std::to_string(connection.bytesOut); break;
        case 6: cell.text = connection.path; break;
        default: break;
    }
    return cell;
}

void ConnectionsPage::OnShow() {
    ::SetTimer(Window(), kRefreshTimer, kRefreshPeriod, nullptr);
    Reload();
}

void ConnectionsPage::OnHide() {
    ::KillTimer(Window(), kRefreshTimer);
}

void ConnectionsPage::OnTimer(UINT_PTR id) {
    if (id == kRefreshTimer && IsShown()) Reload();  // a tick may still come when the page is hidden
}

void ConnectionsPage::Reload() {
    m_read([this](Reading reading) { OnRead(std::move(reading)); });
}

void ConnectionsPage::OnRead(Reading reading) {
    if (!reading) {
        // The rows stay as they were.
        SetEmptyText(GetLanguage().GetText(1017,
                                           "The connections cannot be read: the firewall driver is not "
                                           "reachable. The list fills by itself when it is."));
        return;
    }
    SetEmptyText(GetLanguage().GetText(1016, "There are no connections and no listening ports."));
    ChangeRows([this, &reading] { m_rows = std::move(*reading); });
}

}  // namespace brennvar
