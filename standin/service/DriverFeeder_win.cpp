#include "service/DriverFeeder_win.h"

#include <cstdio>

namespace brennvar::standin {
namespace {

// The packet that the driver holds back while it asks: an IPv4 header (RFC 791) without data.
#pragma pack(push, 1)
struct PacketHeader {
    std::uint8_t versionAndLength = 0x45;  //  0  version 4, 5 words
    std::uint8_t service = 0;              //  1
    std::uint16_t length = SwapPort(20);   //  2  network order
    std::uint32_t fragment = 0;            //  4
    std::uint8_t timeToLive = 128;         //  8
    std::uint8_t protocol = 0;             //  9
    std::uint16_t checksum = 0;            // 10  left to the network card
    Ipv4 source = 0;                       // 12
    Ipv4 destination = 0;                  // 16
};
struct QuestionWithPacket {
    QueuedQuestion question{};
    PacketHeader packet;
};
#pragma pack(pop)
static_assert(RecordType<QuestionWithPacket> && sizeof(PacketHeader) == 20);

}  // namespace

DriverFeeder::DriverFeeder(const DriverLink& driver, bool scriptsTables, bool scriptsTotals)
    : m_driver(driver), m_scriptsTables(scriptsTables), m_scriptsTotals(scriptsTotals) {}

void DriverFeeder::AddConnection(const ConnectionEntry& entry) {
    const std::scoped_lock lock(m_lock);
    m_tables.connections.push_back(entry);
    m_tablesChanged = true;
}

void DriverFeeder::AddListener(const ListenerEntry& entry) {
    const std::scoped_lock lock(m_lock);
    m_tables.listeners.push_back(entry);
    m_tablesChanged = true;
}

void DriverFeeder::ClearTables() {
    const std::scoped_lock lock(m_lock);
    m_tables = {};
    m_tablesChanged = true;
}

void DriverFeeder::Push() {
    const std::scoped_lock lock(m_lock);
    if (m_tablesChanged) FeedTables();
}

void DriverFeeder::SetTotals(const TrafficTotals& totals) {
    const std::scoped_lock lock(m_lock);
    m_totals = totals;
    FeedTotals();
}

void DriverFeeder::SetRate(std::uint64_t inPerSecond, std::uint64_t outPerSecond) {
    const std::scoped_lock lock(m_lock);
    m_rate.bytesIn = inPerSecond;
    m_rate.bytesOut = outPerSecond;
}

void DriverFeeder::BlockAddress(Ipv4 address, std::chrono::seconds time) {
    const std::scoped_lock lock(m_lock);
    m_blocked[address] = std::chrono::steady_clock::now() + time;
    FeedTables();
}

void DriverFeeder::DropProcess(std::uint32_t processId) {
    const std::scoped_lock lock(m_lock);
    m_droppedProcesses.insert(processId);
    FeedTables();
}

void DriverFeeder::SetJudge(ConnectionJudge* judge) {
    const std::scoped_lock lock(m_lock);
    m_judge = judge;
}

void DriverFeeder::AskJudgeAgain() {
    const std::scoped_lock lock(m_lock);
    if (m_scriptsTables) FeedTables();
}

void DriverFeeder::Tick() {
    const std::scoped_lock lock(m_lock);
    const unsigned tick = m_ticks++ % kTicksPerSecond;
    const auto isOver = [now = std::chrono::steady_clock::now()](const auto& blocked) {
        return blocked.second <= now;
    };
    if (std::erase_if(m_blocked, isOver) > 0) m_tablesChanged = true;
    if (m_scriptsTotals) {
        // Whole bytes, which come to the rate in each second.
        const auto share = [tick](std::uint64_t rate) {
            return rate * (tick + 1) / kTicksPerSecond - rate * tick / kTicksPerSecond;
        };
        m_totals.bytesIn += share(m_rate.bytesIn);
        m_totals.bytesOut += share(m_rate.bytesOut);
        FeedTotals();
    }
    if (tick != 0) return;
    if (!m_scriptsTables) m_tables = ReadMachineTables();
    if (!m_scriptsTables || m_tablesChanged) FeedTables();
    if (m_scriptsTotals) return;
    m_totals = m_machineTotals.Read();
    FeedTotals();
}

std::uint32_t DriverFeeder::QueueQuestion(const ConnectionPromptRequest& request) {
    const std::scoped_lock lock(m_lock);
    QuestionWithPacket question;
    question.question.id = ++m_lastQuestionId;
    question.question.request = request;
    question.packet.protocol = static_cast<std::uint8_t>(request.protocol);
    question.packet.source = request.localAddress;
    question.packet.destination = request.remoteAddress;
    if (!m_driver.Send(kFeedQueueQuestion, RecordBytes(question)))
        std::fprintf(stderr, "the driver takes no question\n");
    return m_lastQuestionId;
}

void DriverFeeder::AnswerQuestion(std::uint32_t questionId) {
    // An answer to a question that was never asked is the client's affair: it stands in the journal.
    (void)m_driver.Send(kFeedAnswerQuestion, RecordBytes(questionId));
}

void DriverFeeder::SetHostile(const HostileOrder& order) {
    if (!m_driver.Send(kFeedSetHostile, RecordBytes(order))) std::fprintf(stderr, "the driver takes no order\n");
}

// Without a driver (--no-driver) there is nobody to feed: the failures of these two are meant to pass.
void DriverFeeder::FeedTables() {
    // What is blocked only waits.
    std::vector<ConnectionEntry> connections = m_tables.connections;
    std::erase_if(connections, [&](const ConnectionEntry& entry) {
        const Ipv4 remote = entry.remoteAddress;
        const std::uint32_t processId = entry.processId;
        return m_blocked.contains(remote) || m_droppedProcesses.contains(processId) ||
               (m_scriptsTables && m_judge && m_judge->Denies(entry));
    });
    std::erase_if(m_tables.listeners, [&](const ListenerEntry& entry) {
        const std::uint32_t processId = entry.processId;
        return m_droppedProcesses.contains(processId);
    });
    (void)m_driver.Send(kFeedSetConnections, std::as_bytes(std::span(connections)));
    (void)m_driver.Send(kFeedSetListeners, std::as_bytes(std::span(m_tables.listeners)));
    m_tablesChanged = false;
}

void DriverFeeder::FeedTotals() {
    (void)m_driver.Send(kFeedSetTotals, RecordBytes(m_totals));
}

}  // namespace brennvar::standin
