// Reads single entries of a log by their numbers, which count from 0 from the start of the file. Neighbours come
// from one reading; which way they are asked for does not matter.
#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>
#include <mutex>
#include <optional>
#include <string>
#include <vector>

#include "ipc/RecordFile.h"
#include "logs/LogEntry.h"
#include "logs/LogFile.h"
#include "logs/LogFiles.h"

namespace brennvar {

// Where the packets of a log begin, which the log itself says only from one packet to the next. Every sixteenth is
// kept: half a byte a packet, and at most sixteen headers to read for any of them. Filled by one thread and asked
// by others meanwhile.
class PacketPlaces {
public:
    static constexpr std::uint32_t kStep = 16;

    // Packet after packet, from 0.
    void Note(std::uint32_t number, std::uint64_t position);
    // The last place that is known up to this packet.
    struct Place {
        std::uint32_t number = 0;
        std::uint64_t position = 0;
    };
    [[nodiscard]] Place Before(std::uint32_t number) const;

private:
    mutable std::mutex m_mutex;
    std::vector<std::uint64_t> m_positions;
};

// One traffic or packet log. Copies stand for the same one.
struct LogPlace {
    std::string path;
    LogKind kind = LogKind::Traffic;
    Cipher cipher = Cipher::Plain;
    std::shared_ptr<PacketPlaces> packets = std::make_shared<PacketPlaces>();
};

// Goes through the headers of a packet log.
class PacketWalk {
public:
    // What is read at a time; more than one header.
    static constexpr std::size_t kAhead = kScanSize;  // for who goes through all of them
    static constexpr std::size_t kNear = 0x2000;      // for who wants one

    // The file is borrowed.
    PacketWalk(const LogFile& file, Cipher cipher, std::size_t readSize);
    // Null: the file does not have all of it. Valid until the next call.
    [[nodiscard]] const PacketLogHeader* At(std::uint64_t position);
    // Where the next entry begins, whatever the header says: it may lie far beyond the file.
    [[nodiscard]] static std::uint64_t Behind(std::uint64_t position, const PacketLogHeader& header) {
        return position + sizeof(PacketLogHeader) + header.packetSize;
    }

private:
    const LogFile& m_file;
    const Cipher m_cipher;
    std::vector<std::byte> m_buffer;
    std::uint64_t m_start = 0;  // of what the buffer holds, in the file
    std::size_t m_size = 0;
    PacketLogHeader m_header{};
};

struct LoggedPacket {
    PacketLogHeader header{};
    std::vector<std::byte> captured;  // fewer than the header says when the file has fewer, or at the limit
};

class LogReader {
public:
    static constexpr std::size_t kPacketLimit = 0x40000;  // four times the largest IPv4 packet

    // Nothing when the log is not there.
    [[nodiscard]] static std::unique_ptr<LogReader> Open(const LogPlace& place);
    LogReader(const LogReader&) = delete;
    LogReader& operator=(const LogReader&) = delete;

    [[nodiscard]] const LogFile& File() const { return m_file; }
    // Null: the file does not have it. Valid until the next call.
    [[nodiscard]] const LogEntry* Read(std::uint32_t number);
    // Whole, for its details: the first of a traffic log, the second of a packet log.
    [[nodiscard]] std::optional<TrafficLogRecord> ReadEvent(std::uint32_t number);
    [[nodiscard]] std::optional<LoggedPacket> ReadPacket(std::uint32_t number);

private:
    LogReader(LogPlace place, LogFile file);
    [[nodiscard]] const TrafficLogRecord* Event(std::uint32_t number);
    void ReadBlock(std::uint64_t first, std::size_t count);
    // Its header, and where that stands.
    [[nodiscard]] const PacketLogHeader* Packet(std::uint32_t number);

    const LogPlace m_place;
    const LogFile m_file;
    LogEntry m_entry;

    std::vector<TrafficLogRecord> m_block;
    std::uint64_t m_blockFirst = 0;
    std::size_t m_blockSize = 0;

    PacketWalk m_headers;
    PacketPlaces::Place m_packet;  // where the walk stands
};

}  // namespace brennvar
