// Tells the statistics which programs have sent and received most: counts every reading of the driver's tables that
// there is, has the service name the processes that are new, and the disk what their programs call themselves. All
// of this belongs to the user-interface thread; the counting is done on the thread that reads the tables, where
// full ones take long.
#pragma once

#include <chrono>
#include <cstddef>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "base/WhileAlive.h"
#include "statistics/ProgramTraffic.h"
#include "statistics/Statistics.h"
#include "views/ConnectionsReader.h"

namespace brennvar {

class TopPrograms final : private ConnectionWatcher {
public:
    // That are told of: more than a list is looked through for.
    static constexpr std::size_t kMostShown = 20;

    // The parts, of which reads has to be the queue that reads the tables, and the statistics are borrowed.
    // noProcessText: the name of what has no program.
    TopPrograms(const ConnectionsReader::Parts& parts, std::string noProcessText, Statistics& statistics);
    TopPrograms(const TopPrograms&) = delete;
    TopPrograms& operator=(const TopPrograms&) = delete;
    ~TopPrograms() override { m_parts.tables.Forget(*this); }

private:
    struct Counted {
        std::vector<ProgramSum> most;
        std::vector<ProgramTraffic::Process> notNamed;
    };
    struct Named {
        ProgramTraffic::Process process;
        std::optional<std::string> path;
    };

    void OnReading(std::shared_ptr<const ConnectionReading> reading) override;
    // Has something done with the sums, on their thread.
    void Change(std::function<void(ProgramTraffic&)> change, std::function<void(Counted)> done);
    void AskForPathsOf(std::vector<ProgramTraffic::Process> processes);
    void OnNamed(std::vector<Named> named);
    void Show();

    const ConnectionsReader::Parts m_parts;
    const std::string m_noProcessText;
    Statistics& m_statistics;
    const std::shared_ptr<ProgramTraffic> m_traffic = std::make_shared<ProgramTraffic>();  // for tasks only
    int m_changes = 0;  // of the sums, that are under way
    bool m_isAsking = false;
    std::chrono::milliseconds m_readAt{};                // the last reading
    std::optional<std::chrono::milliseconds> m_askedAt;  // of the reading that it was asked for
    std::vector<ProgramSum> m_most;
    ProgramNames m_names;
    const WhileAlive m_alive;
};

}  // namespace brennvar
