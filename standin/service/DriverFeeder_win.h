// What the driver is told: the machine's real tables and totals, or the scenario's. Any thread.
#pragma once

#include <chrono>
#include <map>
#include <mutex>
#include <set>

#include "driver/DriverFeed.h"
#include "service/DriverLink_win.h"
#include "service/MachineTables_win.h"

namespace brennvar::standin {

// Says which connections are not let through.
class ConnectionJudge {
public:
    virtual ~ConnectionJudge() = default;
    // Called while the feeder is locked.
    [[nodiscard]] virtual bool Denies(const ConnectionEntry& entry) = 0;
};

class DriverFeeder {
public:
    // What the scenario scripts is not read from the machine.
    DriverFeeder(const DriverLink& driver, bool scriptsTables, bool scriptsTotals);

    // These change the scripted tables; Push hands them to the driver.
    void AddConnection(const ConnectionEntry& entry);
    void AddListener(const ListenerEntry& entry);
    void ClearTables();
    void Push();

    void SetTotals(const TrafficTotals& totals);
    void SetRate(std::uint64_t inPerSecond, std::uint64_t outPerSecond);

    // For so long no entry with that remote address is fed.
    void BlockAddress(Ipv4 address, std::chrono::seconds time);
    // From now on no entry of that process is fed.
    void DropProcess(std::uint32_t processId);

    // The scripted entries that the judge denies are not fed; ask it again when it has changed its mind. Borrowed.
    void SetJudge(ConnectionJudge* judge);
    void AskJudgeAgain();

    // So many times a second: moves the scripted totals on by their rate, so that each second sees some of it. The
    // machine is read once a second.
    static constexpr unsigned kTicksPerSecond = 10;
    void Tick();

    // Yields the question's identifier: 1, 2, 3 ...
    [[nodiscard]] std::uint32_t QueueQuestion(const ConnectionPromptRequest& request);
    void AnswerQuestion(std::uint32_t questionId);
    void SetHostile(const HostileOrder& order);

private:
    void FeedTables();
    void FeedTotals();

    const DriverLink& m_driver;
    const bool m_scriptsTables;
    const bool m_scriptsTotals;
    std::mutex m_lock;
    Tables m_tables;
    bool m_tablesChanged = true;
    ConnectionJudge* m_judge = nullptr;
    std::map<Ipv4, std::chrono::steady_clock::time_point> m_blocked;  // until when
    std::set<std::uint32_t> m_droppedProcesses;
    TrafficTotals m_totals{};
    TrafficTotals m_rate{};  // per second
    unsigned m_ticks = 0;
    MachineTotals m_machineTotals;
    std::uint32_t m_lastQuestionId = 0;
};

}  // namespace brennvar::standin
