// The Connections page: every connection and listening port with its process, read anew while the page is shown.
#pragma once

#include <chrono>
#include <string>
#include <vector>

#include "config/Language.h"
#include "lists/ListModel.h"
#include "views/ConnectionRows.h"
#include "views/ConnectionsReader.h"

namespace brennvar {

class ConnectionsModel final : public ListModel {
public:
    static constexpr std::chrono::milliseconds kPeriod{2000};  // between two readings

    // All are borrowed, and outlive the tasks on the threads.
    ConnectionsModel(const Language& language, DeviceOpener& devices, TaskQueue& reads, ServiceLink& link);

    [[nodiscard]] std::string Name() const override { return "Connections"; }
    [[nodiscard]] std::vector<ListColumn> Columns() const override;
    [[nodiscard]] std::string EmptyText() const override;
    [[nodiscard]] int RowCount() const override { return static_cast<int>(m_rows.size()); }
    [[nodiscard]] ListCell Cell(int row, int column) const override;
    [[nodiscard]] std::uint64_t SortNumber(int row, int column) const override;
    [[nodiscard]] std::string Key(int row) const override;

    void Read(ReadReason reason) override;
    void OnHidden() override { m_isShown = false; }
    void OnWake() override;

private:
    enum class State { NotRead, Unreadable, Read };
    enum Column { kProcess, kAddress, kState, kProcessId, kBytesIn, kBytesOut, kPath };

    [[nodiscard]] const ConnectionRow& Row(int row) const { return m_rows[static_cast<std::size_t>(row)]; }
    void OnRead(ConnectionsReader::Reading reading);

    const Language& m_language;
    std::vector<ConnectionRow> m_rows;
    State m_state = State::NotRead;
    bool m_isShown = false;
    ConnectionsReader m_reader;
};

}  // namespace brennvar
