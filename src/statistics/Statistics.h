// What the Statistics page shows, gathered from the start of the program whether or not the page is open: the
// traffic of each second, sums, attacks, the service's notices. The control center owns it and feeds it from its
// one-second tick and from the tray pipe. All of this belongs to the user-interface thread.
#pragma once

#include <cstddef>
#include <cstdint>
#include <deque>
#include <functional>
#include <optional>
#include <string>
#include <vector>

#include "base/Clock.h"
#include "commands/ModeDisplay.h"
#include "config/Amounts.h"
#include "controls/PushGraphSamples.h"
#include "ipc/DriverTables.h"
#include "statistics/ProgramTraffic.h"
#include "statistics/RecentTraffic.h"
#include "statistics/TrafficMeter.h"

namespace brennvar {

class Statistics {
public:
    // The one line of each graph.
    static constexpr int kLine = 0;
    static constexpr std::size_t kMostNotices = 50;

    struct Notice {
        FileTime time = 0;
        std::string text;
    };
    struct ProgramUse {
        std::string name;  // what the user knows it by
        ProgramSum sum;
        friend bool operator==(const ProgramUse&, const ProgramUse&) = default;
    };
    struct Rates {
        std::string in;  // as FormatRate writes them
        std::string out;
    };

    // words: of the rates.
    explicit Statistics(AmountWords words = {});
    Statistics(const Statistics&) = delete;
    Statistics& operator=(const Statistics&) = delete;

    // The second's traffic and the time that it took; nothing when the driver cannot be read: the graphs then stand
    // still.
    void Tick(const std::optional<TrafficIncrease>& increase, std::uint64_t milliseconds);
    void CountAttack() { ++m_attackCount; }
    // An empty text is none.
    void AddNotice(const std::string& text, FileTime now);
    void SetMode(const ModeDisplay& mode);
    // Nothing: not known at present.
    void SetConnections(const std::optional<ConnectionCounts>& counts);

    // Those with the most traffic, most first.
    void SetPrograms(std::vector<ProgramUse> programs);

    // Nothing while the driver cannot be read.
    [[nodiscard]] const std::optional<Rates>& CurrentRates() const { return m_rates; }
    // Since the start of the program.
    [[nodiscard]] const TrafficIncrease& Totals() const { return m_totals; }
    [[nodiscard]] std::uint32_t AttackCount() const { return m_attackCount; }
    // Those that the last sample of the graph stands for.
    [[nodiscard]] std::uint32_t AttacksOfLastTick() const { return m_attacksOfLastTick; }
    // The latest first.
    [[nodiscard]] const std::deque<Notice>& Notices() const { return m_notices; }
    // Of all that have come, also of those that have been dropped.
    [[nodiscard]] std::uint64_t NoticeCount() const { return m_noticeCount; }
    [[nodiscard]] const ModeDisplay& Mode() const { return m_mode; }
    [[nodiscard]] const std::optional<ConnectionCounts>& Connections() const { return m_connections; }

    [[nodiscard]] const std::vector<ProgramUse>& Programs() const { return m_programs; }

    // The graphs' windows paint these, and tidy them while they do.
    [[nodiscard]] PushGraphSamples& Incoming() { return m_incoming; }
    [[nodiscard]] PushGraphSamples& Outgoing() { return m_outgoing; }
    [[nodiscard]] PushGraphSamples& Attacks() { return m_attacks; }

    // What the traffic graphs are made of, as it was: their samples are cut at the range.
    [[nodiscard]] const RecentTraffic& RecentIn() const { return m_recentIn; }
    [[nodiscard]] const RecentTraffic& RecentOut() const { return m_recentOut; }

    // Called after each change but CountAttack and SetPrograms, which show with the next tick; empty: nobody looks.
    // The caller takes it back before it goes.
    void Watch(std::function<void()> changed) { m_changed = std::move(changed); }

private:
    void PushAttacks();
    void Changed() const {
        if (m_changed) m_changed();
    }

    const AmountWords m_words;
    PushGraphSamples m_incoming;
    PushGraphSamples m_outgoing;
    PushGraphSamples m_attacks;
    RecentTraffic m_recentIn;
    RecentTraffic m_recentOut;
    bool m_isFirstTick = true;
    std::optional<Rates> m_rates;
    TrafficIncrease m_totals;
    std::uint32_t m_attackCount = 0;
    std::uint32_t m_attackCountOfLastTick = 0;
    std::uint32_t m_attacksOfLastTick = 0;
    std::deque<Notice> m_notices;
    std::uint64_t m_noticeCount = 0;
    ModeDisplay m_mode;
    std::optional<ConnectionCounts> m_connections;
    std::vector<ProgramUse> m_programs;
    std::function<void()> m_changed;
};

// The range of a traffic graph in a second with so many bytes. It is chosen anew each second and jumps with the
// traffic.
[[nodiscard]] PushGraphSamples::Range TrafficRange(std::uint64_t bytes);

}  // namespace brennvar
