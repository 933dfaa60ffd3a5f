#include "views/ConnectionsPage_win.h"

#include <stdexcept>
#include <utility>

#include "ui/ResourceIds.h"

namespace brennvar {
namespace {

constexpr UINT_PTR kRefreshTimer = 1;
constexpr UINT kRefreshPeriod = 2000;  // ms

// The same connection in another reading; its state and its counters go on.
bool IsSameConnection(const ConnectionRow& left, const ConnectionRow& right) {
    return left.processId == right.processId && left.localAddress == right.localAddress &&
           left.localPort == right.localPort && left.remoteAddress == right.remoteAddress &&
           left.remotePort == right.remotePort &&
           (left.state < kStateListenTcp) == (right.state < kStateListenTcp) &&
           (left.state < kStateListenTcp || left.state == right.state);
}

}  // namespace

ConnectionsPage::ConnectionsPage(const CFonts& fonts, const Language& language, PageTexts texts, Reader read,
                                 CountShown countShown)
    : CPage(fonts, std::move(texts)),
      m_language(language),
      m_read(std::move(read)),
      m_countShown(std::move(countShown)) {}

void ConnectionsPage::OnCreateContent() {
    const TreeColumn columns[] = {{.title = m_language.GetText(1020, "Process"), .width = 128},
                                  {.title = m_language.GetText(1021, "Address"), .width = 240},
                                  {.title = m_language.GetText(1022, "State"), .width = 80},
                                  {.title = m_language.GetText(1023, "PID"), .width = 48, .isNumber = true},
                                  {.title = m_language.GetText(1024, "Bytes in"), .width = 80, .isNumber = true},
                                  {.title = m_language.GetText(1025, "Bytes out"), .width = 80, .isNumber = true},
                                  {.title = m_language.GetText(1026, "Path"), .width = 96, .takesRoom = true}};
    const std::string emptyText = m_language.GetText(
        1018, "Reading the connections. This takes longer while the firewall service is not reachable.");
    const TreeSetup setup{.parent = Window(), .id = IDC_PAGE_LIST, .emptyText = emptyText};
    if (!m_list.Create(setup, GetLook(), columns, *this)) throw std::runtime_error("no list");
}

TreeCell ConnectionsPage::Cell(int row, int column) const {
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
    m_countShown(m_rows.empty() ? std::nullopt : std::optional(m_rows.size()));
    Reload();
}

void ConnectionsPage::OnHide() {
    ::KillTimer(Window(), kRefreshTimer);
    m_countShown(std::nullopt);
}

void ConnectionsPage::OnTimer(UINT_PTR id) {
    // Nobody looks at a minimised window.
    if (id == kRefreshTimer && IsShown() && !::IsIconic(::GetAncestor(Window(), GA_ROOT))) Reload();
}

void ConnectionsPage::Reload() {
    m_read([this](Reading reading) { OnRead(std::move(reading)); });
}

void ConnectionsPage::OnRead(Reading reading) {
    if (!reading) {
        // The rows stay as they were.
        m_list.SetEmptyText(m_language.GetText(1017,
                                               "The connections cannot be read: the firewall driver is not "
                                               "reachable. The list fills by itself when it is."));
        return;
    }
    m_list.SetEmptyText(m_language.GetText(1016, "There are no connections and no listening ports."));
    std::optional<ConnectionRow> selected;
    if (const int row = m_list.SelectedRow(); row >= 0) selected = m_rows[static_cast<std::size_t>(row)];
    m_rows = std::move(*reading);
    int newRow = -1;
    for (std::size_t row = 0; selected && row < m_rows.size(); ++row) {
        if (!IsSameConnection(m_rows[row], *selected)) continue;
        newRow = static_cast<int>(row);
        break;
    }
    m_list.Refresh();
    m_list.SelectRow(newRow);
    if (IsShown()) m_countShown(m_rows.size());
}

}  // namespace brennvar
