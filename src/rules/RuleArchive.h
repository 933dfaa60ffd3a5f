// Rule archives, ".fxz": ZIP files that hold the files of the folder "Rules" under their plain names, as they are
// on the disk. A small layer over libzip, which knows the container; both ends work in memory, so that nothing
// outside can change an archive while it is read, and what is written is put in place whole (base/NewFile.h).
#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

struct zip;
struct zip_source;

namespace brennvar {

// An archive longer than this is none of ours. Unpacked it may have kMostUnpacked bytes, so that what is left is
// room for the container.
inline constexpr std::uint64_t kLongestArchive = std::uint64_t{80} << 20;
// All entries together; a million application rules are four times as much, and nobody has ten thousand.
inline constexpr std::uint64_t kMostUnpacked = std::uint64_t{64} << 20;
// An entry above kRatioMatters bytes may be at most this many times as long as it is packed. Rules differ in their
// paths, which keeps theirs below 100; the most that deflate reaches is 1032.
inline constexpr std::uint64_t kMostRatio = 200;
inline constexpr std::uint64_t kRatioMatters = std::uint64_t{1} << 20;
inline constexpr std::size_t kMostEntries = 1000;

enum class ArchiveFault : std::uint8_t {
    None,
    NotOpened,      // missing, held, too long, or no ZIP file at all
    Damaged,        // its parts contradict one another, or an entry is not what its checksum says
    Enciphered,     // an entry needs a password
    UnknownMethod,  // neither stored nor deflated
    TooLarge,       // more than the limits above
    SameNameTwice,  // two entries would be one file
    Empty,          // no entry can be unpacked
};

enum class Packing : std::uint8_t {
    Deflated,  // at the level that other programs pack at as well
    Fast,      // deflated as fast as it goes, for who waits
    Stored,
};

class ArchiveWriter {
public:
    // Creates an archive without entries.
    ArchiveWriter();
    ArchiveWriter(const ArchiveWriter&) = delete;
    ArchiveWriter& operator=(const ArchiveWriter&) = delete;
    ~ArchiveWriter();

    // The content is borrowed until Close. False: the name is taken, or memory is short.
    [[nodiscard]] bool AddFile(const std::string& name, std::string_view content, Packing packing);
    // At most 65,535 bytes.
    [[nodiscard]] bool SetComment(const std::string& comment);
    // The bytes of the archive; nothing when it has no entry or could not be made. The last call.
    [[nodiscard]] std::optional<std::string> Close();

private:
    struct Discard {
        void operator()(zip* archive) const;
    };
    struct Release {
        void operator()(zip_source* source) const;
    };
    std::unique_ptr<zip_source, Release> m_bytes;
    std::unique_ptr<zip, Discard> m_archive;
};

class ArchiveReader {
public:
    struct Entry {
        std::string name;          // as it is stored, any bytes but zeros
        std::uint64_t size = 0;    // unpacked
        std::uint64_t packed = 0;  // in the archive
        std::uint32_t crc = 0;     // CRC-32 of the content
        ArchiveFault fault{};  // why this entry cannot be unpacked: Enciphered, UnknownMethod, TooLarge, Damaged
    };

    // Opens an archive and holds its directory against the headers of its entries. The bytes are borrowed for the
    // life of the reader.
    explicit ArchiveReader(std::string_view bytes);
    ArchiveReader(const ArchiveReader&) = delete;
    ArchiveReader& operator=(const ArchiveReader&) = delete;
    ~ArchiveReader();

    // Whether it could be opened: NotOpened, Damaged and TooLarge (of the entries' number) have no entries.
    [[nodiscard]] ArchiveFault Fault() const { return m_fault; }
    [[nodiscard]] std::size_t Count() const { return m_entries.size(); }
    [[nodiscard]] const std::vector<Entry>& Entries() const { return m_entries; }
    [[nodiscard]] std::string Comment() const;
    // The content of one entry, held against its size and its checksum; nothing when it is damaged or has a fault.
    [[nodiscard]] std::optional<std::string> Extract(std::size_t index) const;

private:
    void List();
    struct Discard {
        void operator()(zip* archive) const;
    };
    std::unique_ptr<zip, Discard> m_archive;
    const std::uint64_t m_length;
    ArchiveFault m_fault = ArchiveFault::None;
    std::vector<Entry> m_entries;
};

}  // namespace brennvar
