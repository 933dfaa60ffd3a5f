#include "views/ConnectionsReader.h"

#include <utility>

namespace brennvar {

ConnectionsReader::ConnectionsReader(DeviceOpener& devices, LinkThread& reads, ServiceLink& link,
                                     std::string noProcessText)
    : m_devices(devices), m_reads(reads), m_link(link), m_noProcessText(std::move(noProcessText)) {}

void ConnectionsReader::Read(Done done) {
    if (m_isReadingTables) return;
    m_isReadingTables = true;
    ++m_latest;
    m_reads.Ask<std::optional<DriverTables>>(
        [this] { return ReadDriverTables(m_devices); },
        [this, done = std::move(done)](std::optional<std::optional<DriverTables>> answer) {
            m_isReadingTables = false;
            if (!answer || !*answer) return Deliver(m_latest, done, std::nullopt);
            auto tables = std::make_shared<const DriverTables>(std::move(**answer));
            // A call to a missing service stands on the link thread for long; the next ones would only pile up.
            if (m_isAsking || m_link.Service() == PeerState::Missing) return UseLastPaths(std::move(tables), done);
            AskForPaths(std::move(tables), done);
        });
}

void ConnectionsReader::AskForPaths(std::shared_ptr<const DriverTables> tables, Done done) {
    m_isAsking = true;
    m_link.Ask<NamedRows>(
        [tables = std::move(tables), noProcess = m_noProcessText](ServicePipes& pipes) {
            NamedRows named;
            bool isMissing = false;
            const auto resolve = [&](std::uint32_t processId) -> std::optional<std::string> {
                // One wait for a service that is not there is enough for a reading: the rest is unknown.
                if (isMissing) return std::nullopt;
                auto path = pipes.ResolveProcessPath(processId);
                isMissing = !pipes.LastCallMetService();
                named.paths.emplace(processId, path);
                return path;
            };
            named.rows = BuildConnectionRows(*tables, resolve, noProcess);
            return named;
        },
        [this, number = m_latest, done = std::move(done)](std::optional<NamedRows> named) {
            m_isAsking = false;
            if (!named) return;
            m_lastPaths = std::make_shared<const Paths>(std::move(named->paths));
            Deliver(number, done, std::move(named->rows));
        });
}

void ConnectionsReader::Deliver(unsigned number, const Done& done, Reading reading) {
    if (number <= m_delivered) return;
    m_delivered = number;
    done(std::move(reading));
}

void ConnectionsReader::UseLastPaths(std::shared_ptr<const DriverTables> tables, Done done) {
    m_reads.Ask<std::vector<ConnectionRow>>(
        [tables = std::move(tables), paths = m_lastPaths, noProcess = m_noProcessText] {
            return BuildConnectionRows(
                *tables,
                [&](std::uint32_t processId) {
                    const auto known = paths->find(processId);
                    return known == paths->end() ? std::nullopt : known->second;
                },
                noProcess);
        },
        [this, number = m_latest, done = std::move(done)](std::optional<std::vector<ConnectionRow>> rows) {
            if (rows) Deliver(number, done, std::move(*rows));
        });
}

}  // namespace brennvar
