#include "views/TopPrograms.h"

#include <utility>

#include "base/DisplayName.h"
#include "ipc/PipeRecords.h"

namespace brennvar {

TopPrograms::TopPrograms(const ConnectionsReader::Parts& parts, std::string noProcessText, Statistics& statistics)
    : m_parts(parts),
      m_noProcessText(std::move(noProcessText)),
      m_statistics(statistics),
      m_names(parts.programQueue, parts.programFiles, [this] { Show(); }) {
    m_parts.tables.Watch(*this);
}

void TopPrograms::OnReading(std::shared_ptr<const ConnectionReading> reading) {
    // Readings that come faster than they are counted are left out: the next one counts on.
    if (!reading || m_changes > 0) return;
    m_readAt = reading->time;
    Change([reading = std::move(reading)](
               ProgramTraffic& traffic) { traffic.Count(reading->tables.connections, reading->time); },
           [this](Counted counted) { AskForPathsOf(std::move(counted.notNamed)); });
}

void TopPrograms::Change(std::function<void(ProgramTraffic&)> change, std::function<void(Counted)> done) {
    m_parts.reads.Ask<Counted>(
        [traffic = m_traffic, change = std::move(change)] {
            change(*traffic);
            return Counted{.most = traffic->Most(kMostShown), .notNamed = traffic->NotNamed()};
        },
        m_alive.Guard([this, done = std::move(done)](std::optional<Counted> counted) {
            --m_changes;
            if (!counted) return;  // without memory: the next one shows what there is
            m_most = std::move(counted->most);
            done(std::move(*counted));
            Show();
        }));
    ++m_changes;
}

void TopPrograms::AskForPathsOf(std::vector<ProgramTraffic::Process> processes) {
    const auto sinceAsked = m_readAt - m_askedAt.value_or(m_readAt);
    if (processes.empty() || m_isAsking) return;
    if (m_askedAt && !IsWorthAskingForPaths(m_parts.link.StateOf(kPidResolvePipeName), sinceAsked)) return;
    m_askedAt = m_readAt;
    m_parts.link.Ask<std::vector<Named>>(
        [processes = std::move(processes)](ServicePipes& pipes) {
            std::vector<std::uint32_t> ids;
            for (const ProgramTraffic::Process& process : processes) ids.push_back(process.id);
            const ProcessPaths paths = AskForPaths(ids, pipes);
            // Of a call that did not meet the service nothing can be said.
            const bool isAnswered = pipes.LastCallMetService();
            std::vector<Named> named;
            for (const ProgramTraffic::Process& process : processes) {
                const auto path = paths.find(process.id);
                if (path == paths.end() || (!path->second && !isAnswered)) continue;
                named.push_back({.process = process, .path = path->second});
            }
            return named;
        },
        m_alive.Guard([this](std::optional<std::vector<Named>> named) {
            m_isAsking = false;
            if (named && !named->empty()) OnNamed(std::move(*named));
        }));
    m_isAsking = true;
}

void TopPrograms::OnNamed(std::vector<Named> named) {
    // Who is not named then is asked for with the next reading: a service that does not answer is left alone.
    Change(
        [named = std::move(named)](ProgramTraffic& traffic) {
            for (const Named& one : named) traffic.Name(one.process, one.path);
        },
        [](const Counted&) {});
}

void TopPrograms::Show() {
    std::vector<std::string> paths;
    for (const ProgramSum& sum : m_most) paths.push_back(sum.path);
    m_names.Want(paths);
    const auto descriptions = m_names.Known();
    std::vector<Statistics::ProgramUse> programs;
    for (const ProgramSum& sum : m_most) {
        const auto description = descriptions->find(sum.path);
        std::string name = OneLine(
            DisplayNameOf(sum.path, description == descriptions->end() ? std::string() : description->second));
        programs.push_back({.name = sum.path.empty() ? m_noProcessText : std::move(name), .sum = sum});
    }
    m_statistics.SetPrograms(std::move(programs));
}

}  // namespace brennvar
