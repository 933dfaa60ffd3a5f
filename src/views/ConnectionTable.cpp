#include "views/ConnectionTable.h"

#include <algorithm>
#include <bit>
#include <limits>
#include <numeric>
#include <tuple>
#include <utility>

#include "base/AsciiCase.h"
#include "base/DisplayName.h"
#include "statistics/TrafficMeter.h"

namespace brennvar {
namespace {

using std::chrono::milliseconds;

// A shorter time between two readings, as after F5, gives rates that jump; the last ones stay.
constexpr milliseconds kShortestMeasure{500};
// What flowed in a longer time, as while nobody looked, is not what flows now.
constexpr milliseconds kLongestMeasure{10'000};

std::uint32_t TenthsOf(milliseconds time) {
    return static_cast<std::uint32_t>(time.count() / 100);
}

std::uint8_t StateOf(const ConnectionEntry& entry) {
    // The driver has no listeners in this table: a listener's number here means nothing.
    return entry.state >= kStateListenTcp ? kStateUnknown : static_cast<std::uint8_t>(entry.state);
}

std::uint8_t StateOf(const ListenerEntry& entry) {
    switch (entry.protocol) {
        case kProtocolTcp: return kStateListenTcp;
        case kProtocolUdp: return kStateListenUdp;
        case kProtocolIp: return kStateListenIp;
        default: return kStateListenOther;
    }
}

bool HasSameEnds(const ConnectionRow& row, const ConnectionKey& key) {
    return row.localAddress == key.localAddress && row.remoteAddress == key.remoteAddress &&
           row.localPort == key.localPort && row.remotePort == key.remotePort && row.processId == key.processId &&
           (row.IsListener() ? row.state : 0U) == key.listener;
}

std::uint64_t HashOf(const ConnectionKey& key) {
    // Multiplication by odd numbers spreads what differs in few bits; the shifts bring it down to the low ones.
    const std::uint64_t addresses = std::uint64_t{key.localAddress} << 32 | key.remoteAddress;
    const std::uint64_t rest =
        (std::uint64_t{key.localPort} << 48 | std::uint64_t{key.remotePort} << 32 | key.processId) + key.listener;
    std::uint64_t hash = addresses * 0x9E3779B97F4A7C15U;
    hash = std::rotl(hash, 29) ^ (rest * 0xD6E8FEB86659FD93U);
    hash ^= hash >> 32;
    hash *= 0xD6E8FEB86659FD93U;
    return hash ^ hash >> 32;
}

// The order of the driver's tables, as ConnectionComesBefore and ListenerComesBefore have it.
bool ComesBefore(const ConnectionRow& left, const ConnectionRow& right) {
    const auto key = [](const ConnectionRow& row) {
        constexpr int kListenerOrder[] = {1, 2, 0, 3};  // TCP 6, UDP 17, IP 0, others
        const int table = row.IsListener() ? 100 + kListenerOrder[row.state - kStateListenTcp] : row.state;
        const std::uint32_t local = SwapAddress(row.localAddress);
        return std::tuple(table, row.IsListener() ? ~local : local, row.localPort, SwapAddress(row.remoteAddress),
                          row.remotePort);
    };
    return key(left) < key(right);
}

// Gives each program its place in the order of a text.
template <class TextOf>
void Rank(std::vector<ConnectionProgram>& programs, std::uint32_t ConnectionProgram::*rank, const TextOf& textOf) {
    std::vector<std::pair<std::string, std::uint32_t>> texts;
    texts.reserve(programs.size());
    for (std::uint32_t program = 0; program < programs.size(); ++program) {
        std::string text = textOf(programs[program]);
        std::transform(text.begin(), text.end(), text.begin(), &AsciiLower);
        texts.emplace_back(std::move(text), program);
    }
    std::sort(texts.begin(), texts.end());
    for (std::uint32_t place = 0; place < texts.size(); ++place) programs[texts[place].second].*rank = place;
}

}  // namespace

std::uint32_t RateBetween(std::uint32_t before, std::uint32_t now, milliseconds elapsed) {
    if (elapsed.count() <= 0) return 0;
    const auto time = static_cast<std::uint64_t>(elapsed.count());
    const std::uint64_t grown = CounterGrowth(before, now, elapsed).value_or(0);
    return static_cast<std::uint32_t>(
        std::min<std::uint64_t>(grown * 1000 / time, std::numeric_limits<std::uint32_t>::max()));
}

ConnectionKey KeyOf(const ConnectionRow& row) {
    return {.localAddress = row.localAddress,
            .remoteAddress = row.remoteAddress,
            .localPort = row.localPort,
            .remotePort = row.remotePort,
            .processId = row.processId,
            .listener = row.IsListener() ? row.state : 0U,
            .occurrence = row.occurrence};
}

ConnectionTable::ConnectionTable(const DriverTables& tables, milliseconds time, const ProgramSource& programs,
                                 const ConnectionTable* before, bool isFirst)
    : m_tenths(TenthsOf(time)), m_time(time), m_baseTime(time) {
    AddProgram({}, programs);
    AddRows(tables, programs);
    m_presentCount = m_rows.size();
    Index();
    if (before) {
        FollowOn(*before, programs, isFirst);
    } else {
        for (ConnectionRow& row : m_rows) row.isOlder = true;
    }
    RankPrograms();
    SumUp();
}

void ConnectionTable::AddRows(const DriverTables& tables, const ProgramSource& programs) {
    const std::size_t count = tables.connections.size() + tables.listeners.size();
    const LargeVector<std::uint32_t> connections = OrderOf(tables.connections);
    const LargeVector<std::uint32_t> listeners = OrderOf(tables.listeners);
    m_rows.reserve(count + count / 16);  // with room for those that have gone, which come behind
    m_rows.resize(count);
    auto row = m_rows.begin();
    for (const std::uint32_t number : connections) {
        const ConnectionEntry& entry = tables.connections[number];
        row->localAddress = entry.localAddress;
        row->remoteAddress = entry.remoteAddress;
        row->localPort = SwapPort(entry.localPort);
        row->remotePort = SwapPort(entry.remotePort);
        row->bytesIn = row->baseIn = entry.bytesIn;
        row->bytesOut = row->baseOut = entry.bytesOut;
        row->state = StateOf(entry);
        row->processId = entry.processId;
        ++row;
    }
    for (const std::uint32_t number : listeners) {
        const ListenerEntry& entry = tables.listeners[number];
        row->localAddress = entry.localAddress;
        row->localPort = SwapPort(entry.localPort);
        row->state = StateOf(entry);
        row->processId = entry.processId;
        ++row;
    }
    for (ConnectionRow& added : m_rows) {
        added.program = ProgramOfProcess(added.processId, programs);
        added.since = m_tenths;
    }
}

std::uint32_t ConnectionTable::ProgramOfProcess(std::uint32_t processId, const ProgramSource& programs) {
    const auto [found, isNew] = m_programById.try_emplace(processId, kUnknownProgram);
    if (isNew && programs.pathOf) {
        if (const auto path = programs.pathOf(processId)) found->second = AddProgram(*path, programs);
    }
    return found->second;
}

std::uint32_t ConnectionTable::AddProgram(const std::string& path, const ProgramSource& programs) {
    std::string lower = path;
    std::transform(lower.begin(), lower.end(), lower.begin(), &AsciiLower);
    const auto [found, isNew] = m_programByPath.try_emplace(lower, static_cast<std::uint32_t>(m_programs.size()));
    if (isNew) {
        const std::string description =
            lower.empty() || !programs.descriptionOf ? std::string() : programs.descriptionOf(lower);
        std::string name = lower.empty() ? programs.noProcess : OneLine(DisplayNameOf(lower, description));
        m_programs.push_back({.path = std::move(lower), .name = std::move(name)});
    }
    return found->second;
}

void ConnectionTable::Index() {
    m_slots.assign(std::bit_ceil(std::max<std::size_t>(m_rows.size() * 2, 16)), 0);
    // How many rows there are of each key that has several; few, as a rule.
    std::unordered_map<std::uint32_t, std::uint32_t> counts;
    for (std::uint32_t row = 0; row < m_rows.size(); ++row) {
        // The slots of a full table are more than the fastest memory holds, and are met in no order.
        constexpr std::size_t kAhead = 16;
        if (row + kAhead < m_rows.size()) {
            __builtin_prefetch(&m_slots[HashOf(KeyOf(m_rows[row + kAhead])) & (m_slots.size() - 1)], 1);
        }
        std::uint32_t& slot = m_slots[SlotOf(KeyOf(m_rows[row]))];
        if (slot == 0) {
            slot = row + 1;
            continue;
        }
        const std::uint32_t first = slot - 1;
        const std::uint32_t occurrence = ++counts[first];
        m_rows[row].occurrence = occurrence;
        m_rows[row].isRepeated = m_rows[first].isRepeated = true;
        m_repeats.push_back({.first = first, .occurrence = occurrence, .row = row});
    }
    std::sort(m_repeats.begin(), m_repeats.end(), [](const Repeat& left, const Repeat& right) {
        return std::tie(left.first, left.occurrence) < std::tie(right.first, right.occurrence);
    });
}

std::size_t ConnectionTable::SlotOf(const ConnectionKey& key) const {
    const std::size_t mask = m_slots.size() - 1;
    std::size_t slot = static_cast<std::size_t>(HashOf(key)) & mask;
    while (m_slots[slot] != 0 && !HasSameEnds(m_rows[m_slots[slot] - 1], key)) slot = (slot + 1) & mask;
    return slot;
}

std::uint32_t ConnectionTable::Find(const ConnectionKey& key, std::uint32_t likely) const {
    if (likely < m_presentCount && m_rows[likely].occurrence == key.occurrence &&
        HasSameEnds(m_rows[likely], key)) {
        return likely;
    }
    const std::uint32_t number = m_slots[SlotOf(key)];
    if (number == 0) return kNoRow;
    const std::uint32_t first = number - 1;
    if (m_rows[first].occurrence == key.occurrence) return first;
    const auto repeat = std::lower_bound(
        m_repeats.begin(), m_repeats.end(), std::pair(first, key.occurrence),
        [](const Repeat& left, const auto& right) { return std::pair(left.first, left.occurrence) < right; });
    const bool isFound =
        repeat != m_repeats.end() && repeat->first == first && repeat->occurrence == key.occurrence;
    return isFound ? repeat->row : kNoRow;
}

std::uint32_t ConnectionTable::FindProgram(const std::string& path) const {
    const auto found = m_programByPath.find(path);
    return found == m_programByPath.end() ? kUnknownProgram : found->second;
}

std::optional<std::string> ConnectionTable::PathOfProcess(std::uint32_t processId) const {
    const auto found = m_programById.find(processId);
    if (found == m_programById.end()) return std::nullopt;
    return m_programs[found->second].path;
}

void ConnectionTable::FollowOn(const ConnectionTable& before, const ProgramSource& programs, bool isFirst) {
    const milliseconds elapsed = m_time - before.m_baseTime;
    if (elapsed < kShortestMeasure) m_baseTime = before.m_baseTime;
    // Where the programs of the table before stand in this one.
    std::vector<std::uint32_t> moved(before.m_programs.size());
    std::transform(before.m_programs.begin(), before.m_programs.end(), moved.begin(),
                   [this](const ConnectionProgram& program) { return FindProgram(program.path); });
    std::vector<bool> isStillThere(before.m_presentCount);
    // Both tables have the same order, so that most rows follow the one that was found last.
    std::uint32_t likely = 0;
    for (ConnectionRow& row : m_rows) {
        const std::uint32_t at = before.Find(KeyOf(row), likely);
        const bool isKnown = at < before.m_presentCount;
        if (isKnown) {
            isStillThere[at] = true;
            likely = at + 1;
        }
        // An identifier that came back with another program.
        const bool isSameProgram =
            isKnown && (row.program == kUnknownProgram || before.m_rows[at].program == kUnknownProgram ||
                        moved[before.m_rows[at].program] == row.program);
        if (!isSameProgram) {
            row.mark = isFirst ? RowMark::None : RowMark::New;
            row.isOlder = isFirst;
            continue;
        }
        row.since = before.m_rows[at].since;
        row.isOlder = before.m_rows[at].isOlder;
        if (row.program == kUnknownProgram) KeepProgram(row, before.m_rows[at], before, moved, programs);
        MeasureRates(row, before.m_rows[at], before);
    }
    if (isFirst) return;
    for (std::uint32_t at = 0; at < before.m_presentCount; ++at) {
        if (isStillThere[at]) continue;
        const ConnectionRow& row = before.m_rows[at];
        AddGoneRow(row, AddProgram(before.ProgramOf(row).path, programs));
    }
    std::sort(m_repeats.begin(), m_repeats.end(), [](const Repeat& left, const Repeat& right) {
        return std::tie(left.first, left.occurrence) < std::tie(right.first, right.occurrence);
    });
}

// A service that is away takes no name from what stays. Other rows of the process get none by it.
void ConnectionTable::KeepProgram(ConnectionRow& row, const ConnectionRow& old, const ConnectionTable& before,
                                  std::vector<std::uint32_t>& moved, const ProgramSource& programs) {
    if (old.program == kUnknownProgram) return;
    std::uint32_t& program = moved[old.program];
    if (program == kUnknownProgram) program = AddProgram(before.ProgramOf(old).path, programs);
    row.program = program;
    std::uint32_t& ofProcess = m_programById[row.processId];
    if (ofProcess == kUnknownProgram) ofProcess = program;
}

void ConnectionTable::MeasureRates(ConnectionRow& row, const ConnectionRow& old,
                                   const ConnectionTable& before) const {
    const milliseconds elapsed = m_time - before.m_baseTime;
    if (row.IsListener() || row.isRepeated || old.isRepeated || elapsed > kLongestMeasure) return;
    if (elapsed < kShortestMeasure) {
        row.baseIn = old.baseIn;
        row.baseOut = old.baseOut;
        row.rateIn = old.rateIn;
        row.rateOut = old.rateOut;
        return;
    }
    row.rateIn = RateBetween(old.baseIn, row.bytesIn, elapsed);
    row.rateOut = RateBetween(old.baseOut, row.bytesOut, elapsed);
}

void ConnectionTable::AddGoneRow(const ConnectionRow& row, std::uint32_t program) {
    const auto number = static_cast<std::uint32_t>(m_rows.size());
    ConnectionRow& gone = m_rows.emplace_back(row);
    gone.program = program;
    gone.mark = RowMark::Gone;
    gone.rateIn = gone.rateOut = 0;
    if (m_slots.size() < m_rows.size() * 2) {
        // More have gone than there are: the slots are made for twice as many.
        LargeVector<std::uint32_t> slots(m_slots.size() * 2, 0);
        slots.swap(m_slots);
        for (const std::uint32_t slot : slots) {
            if (slot != 0) m_slots[SlotOf(KeyOf(m_rows[slot - 1]))] = slot;
        }
    }
    std::uint32_t& slot = m_slots[SlotOf(KeyOf(gone))];
    if (slot == 0) {
        slot = number + 1;
    } else {
        m_repeats.push_back({.first = slot - 1, .occurrence = gone.occurrence, .row = number});
    }
}

void ConnectionTable::RankPrograms() {
    Rank(m_programs, &ConnectionProgram::nameRank, [](const ConnectionProgram& program) { return program.name; });
    Rank(m_programs, &ConnectionProgram::pathRank, [](const ConnectionProgram& program) { return program.path; });
}

void ConnectionTable::SumUp() {
    std::vector<std::uint64_t> rates(m_programs.size());
    std::vector<bool> hasConnections(m_programs.size());
    for (std::size_t at = 0; at < m_presentCount; ++at) {
        const ConnectionRow& row = m_rows[at];
        if (row.IsListener()) {
            ++m_summary.listeners;
            continue;
        }
        ++m_summary.connections;
        hasConnections[row.program] = true;
        rates[row.program] += std::uint64_t{row.rateIn} + row.rateOut;
    }
    m_summary.programs = static_cast<std::size_t>(std::count(hasConnections.begin(), hasConnections.end(), true));
    const auto busiest = std::max_element(rates.begin(), rates.end());
    m_summary.busiest = static_cast<std::uint32_t>(busiest - rates.begin());
    m_summary.busiestRate = *busiest;
}

LargeVector<std::uint32_t> ConnectionTable::OrderAsRead() const {
    LargeVector<std::uint32_t> order(m_rows.size());
    std::iota(order.begin(), order.end(), 0);
    if (m_presentCount == m_rows.size()) return order;
    const LargeVector<std::uint32_t> rows = order;
    const auto goneAt = rows.begin() + static_cast<std::ptrdiff_t>(m_presentCount);
    std::merge(
        rows.begin(), goneAt, goneAt, rows.end(), order.begin(),
        [this](std::uint32_t left, std::uint32_t right) { return ComesBefore(m_rows[left], m_rows[right]); });
    return order;
}

}  // namespace brennvar
