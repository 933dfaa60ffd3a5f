#include "logs/LogReader.h"

#include <algorithm>
#include <cstring>
#include <utility>

#include "ipc/RecordCipher.h"

namespace brennvar {
namespace {

constexpr std::size_t kBlockCount = kScanSize / sizeof(TrafficLogRecord);

}  // namespace

void PacketPlaces::Note(std::uint32_t number, std::uint64_t position) {
    if (number % kStep != 0) return;
    const std::lock_guard lock(m_mutex);
    if (number / kStep == m_positions.size()) m_positions.push_back(position);
}

PacketPlaces::Place PacketPlaces::Before(std::uint32_t number) const {
    const std::lock_guard lock(m_mutex);
    if (m_positions.empty()) return {};
    const std::size_t index = std::min<std::size_t>(number / kStep, m_positions.size() - 1);
    return {.number = static_cast<std::uint32_t>(index) * kStep, .position = m_positions[index]};
}

PacketWalk::PacketWalk(const LogFile& file, Cipher cipher, std::size_t readSize)
    : m_file(file),
      m_cipher(cipher),
      m_buffer(std::clamp<std::uint64_t>(file.State().size, sizeof(PacketLogHeader), readSize)) {}

const PacketLogHeader* PacketWalk::At(std::uint64_t position) {
    const auto isHeld = [&] {
        return position >= m_start && position - m_start <= m_size &&
               m_size - static_cast<std::size_t>(position - m_start) >= sizeof(PacketLogHeader);
    };
    if (!isHeld()) {
        m_start = position;
        m_size = m_file.ReadAt(position, m_buffer);
        if (!isHeld()) return nullptr;
    }
    std::memcpy(&m_header, m_buffer.data() + (position - m_start), sizeof m_header);
    if (m_cipher == Cipher::Enciphered) CipherRecords(WritableRecordBytes(m_header), sizeof m_header);
    return &m_header;
}

std::unique_ptr<LogReader> LogReader::Open(const LogPlace& place) {
    auto file = LogFile::Open(place.path);
    if (!file) return nullptr;
    return std::unique_ptr<LogReader>(new LogReader(place, *std::move(file)));
}

LogReader::LogReader(LogPlace place, LogFile file)
    : m_place(std::move(place)), m_file(std::move(file)), m_headers(m_file, m_place.cipher, PacketWalk::kNear) {}

const LogEntry* LogReader::Read(std::uint32_t number) {
    if (m_place.kind == LogKind::Packet) {
        const PacketLogHeader* const header = Packet(number);
        if (header == nullptr) return nullptr;
        m_entry = EntryOf(*header);
    } else {
        const TrafficLogRecord* const record = Event(number);
        if (record == nullptr) return nullptr;
        m_entry = EntryOf(*record);
    }
    return &m_entry;
}

std::optional<TrafficLogRecord> LogReader::ReadEvent(std::uint32_t number) {
    const TrafficLogRecord* const record = Event(number);
    return record ? std::optional(*record) : std::nullopt;
}

std::optional<LoggedPacket> LogReader::ReadPacket(std::uint32_t number) {
    const PacketLogHeader* const header = Packet(number);
    if (header == nullptr) return std::nullopt;
    LoggedPacket packet{.header = *header, .captured = {}};
    packet.captured.resize(std::min<std::size_t>(packet.header.packetSize, kPacketLimit));
    packet.captured.resize(m_file.ReadAt(m_packet.position + sizeof(PacketLogHeader), packet.captured));
    if (m_place.cipher == Cipher::Enciphered && !packet.captured.empty()) {
        CipherRecords(packet.captured, packet.captured.size());
    }
    return packet;
}

const TrafficLogRecord* LogReader::Event(std::uint32_t number) {
    const std::uint64_t end = m_blockFirst + m_blockSize;
    if (number < m_blockFirst || number >= end) {
        // Who asks for a neighbour of the last block goes through the file that way; else for this one alone.
        if (number >= end && number - end < kBlockCount) {
            ReadBlock(number, kBlockCount);
        } else if (number < m_blockFirst && m_blockFirst - number <= kBlockCount) {
            const std::uint64_t first = number + 1 - std::min<std::uint64_t>(number + 1, kBlockCount);
            ReadBlock(first, static_cast<std::size_t>(number + 1 - first));
        } else {
            ReadBlock(number, 1);
        }
        if (number < m_blockFirst || number >= m_blockFirst + m_blockSize) return nullptr;
    }
    return &m_block[static_cast<std::size_t>(number - m_blockFirst)];
}

void LogReader::ReadBlock(std::uint64_t first, std::size_t count) {
    m_block.resize(std::max(m_block.size(), count));
    const auto buffer = std::as_writable_bytes(std::span(m_block).first(count));
    m_blockFirst = first;
    m_blockSize = m_file.ReadAt(first * sizeof(TrafficLogRecord), buffer) / sizeof(TrafficLogRecord);
    if (m_place.cipher == Cipher::Enciphered) {
        CipherRecords(buffer.first(m_blockSize * sizeof(TrafficLogRecord)), sizeof(TrafficLogRecord));
    }
}

const PacketLogHeader* LogReader::Packet(std::uint32_t number) {
    const PacketPlaces::Place known = m_place.packets->Before(number);
    if (number < m_packet.number || known.number > m_packet.number) m_packet = known;
    for (;;) {
        const PacketLogHeader* const header = m_headers.At(m_packet.position);
        if (header == nullptr || m_packet.number == number) return header;
        m_packet = {.number = m_packet.number + 1, .position = PacketWalk::Behind(m_packet.position, *header)};
    }
}

}  // namespace brennvar
