#include "views/ConnectionsModel.h"

#include <utility>

namespace brennvar {

ConnectionsModel::ConnectionsModel(const Language& language, DeviceOpener& devices, TaskQueue& reads,
                                   ServiceLink& link)
    : m_language(language),
      m_reader(devices, reads, link, language.GetText(313, "no process associated"),
               [this](ConnectionsReader::Reading reading) { OnRead(std::move(reading)); }) {}

std::vector<ListColumn> ConnectionsModel::Columns() const {
    std::vector<std::string> states;
    for (std::uint32_t state = 0; !ConnectionStateText(state).empty(); ++state) {
        states.emplace_back(ConnectionStateText(state));
    }
    return {{.title = m_language.GetText(1020, "Process"), .width = 96},
            {.title = m_language.GetText(1021, "Address"), .width = 200},
            {.title = m_language.GetText(1022, "State"), .width = 80, .longest = std::move(states)},
            {.title = m_language.GetText(1023, "PID"), .width = 48, .isNumber = true},
            {.title = m_language.GetText(1024, "Bytes in"), .width = 80, .isNumber = true},
            {.title = m_language.GetText(1025, "Bytes out"), .width = 80, .isNumber = true},
            {.title = m_language.GetText(1026, "Path"), .width = 96, .takesRoom = true, .isPath = true}};
}

std::string ConnectionsModel::EmptyText() const {
    switch (m_state) {
        case State::NotRead:
            return m_language.GetText(1018,
                                      "Reading the connections. This takes longer while the firewall service is "
                                      "not reachable.");
        case State::Unreadable:
            return m_language.GetText(1017,
                                      "The connections cannot be read: the firewall driver is not "
                                      "reachable. The list fills by itself when it is.");
        default: return m_language.GetText(1016, "There are no connections and no listening ports.");
    }
}

ListCell ConnectionsModel::Cell(int row, int column) const {
    const ConnectionRow& connection = Row(row);
    switch (column) {
        case kProcess: return {.text = connection.name};
        case kAddress: return {.text = connection.address};
        case kState: return {.text = std::string(ConnectionStateText(connection.state))};
        case kPath: return {.text = connection.path};
        default: return {.text = std::to_string(SortNumber(row, column))};
    }
}

std::uint64_t ConnectionsModel::SortNumber(int row, int column) const {
    switch (column) {
        case kProcessId: return Row(row).processId;
        case kBytesIn: return Row(row).bytesIn;
        case kBytesOut: return Row(row).bytesOut;
        default: return 0;
    }
}

std::string ConnectionsModel::Key(int row) const {
    // A connection is the same one while its state and its counters go on; a listener on its port is another.
    const ConnectionRow& connection = Row(row);
    const std::uint32_t parts[] = {
        connection.processId,  connection.localAddress,
        connection.localPort,  connection.remoteAddress,
        connection.remotePort, connection.state < kStateListenTcp ? 0 : connection.state};
    std::string key;
    for (const std::uint32_t part : parts) key += std::to_string(part) + ' ';
    return key;
}

void ConnectionsModel::Read(ReadReason reason) {
    if (reason == ReadReason::RulesChanged) return;  // nothing that is shown here
    if (reason == ReadReason::Shown) {
        m_isShown = true;
        if (View()) View()->WakeIn(kPeriod);
    }
    m_reader.Refresh();
}

void ConnectionsModel::OnWake() {
    if (!m_isShown) return;
    if (View()) View()->WakeIn(kPeriod);
    m_reader.Refresh();
}

void ConnectionsModel::OnRead(ConnectionsReader::Reading reading) {
    m_state = reading ? State::Read : State::Unreadable;
    if (!reading) {
        // The rows stay as they were.
        if (View()) View()->EmptyTextChanged();
        return;
    }
    ChangeRows([&] {
        m_rows = std::move(*reading);
        return ListView::Change::Rows;
    });
}

}  // namespace brennvar
