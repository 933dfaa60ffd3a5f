// Files of fixed-size records, without header or count: how many there are follows from the length, and a partial
// record at the end is ignored. Reads never fail loudly: what cannot be read is not there.
#pragma once

#include <algorithm>
#include <chrono>
#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <memory>
#include <optional>
#include <span>
#include <string>
#include <vector>

#include "base/Bytes.h"
#include "base/Clock.h"
#include "base/Wipe.h"
#include "ipc/RecordCipher.h"

namespace brennvar {

// The service may hold a file while it rewrites it. This is how long a reader waits for it: about six seconds,
// by count, and by the clock where a pause takes longer than it should.
struct RecordFilePolicy {
    int retries;
    std::chrono::milliseconds pause;
};
inline constexpr RecordFilePolicy kRecordFilePolicy{.retries = 6000, .pause = std::chrono::milliseconds(1)};

// A file that is read whole may have at most this many bytes (four million application rules); a longer one is no
// file of ours and counts as unreadable. Scans have no limit: they read in pieces of kScanSize, large enough that
// the calls do not count and small enough to stay in a processor's second cache.
inline constexpr std::uint64_t kWholeFileLimit = std::uint64_t{1} << 30;
inline constexpr std::size_t kScanSize = 0x40000;

enum class Cipher { Plain, Enciphered };

// One open file, closed by the destructor. Used on one thread at a time.
class RecordFile {
public:
    // Opens a file that the service writes: for update, retried while the service holds it; created empty when it
    // is missing or empty; read-only as the last resort, and in every round when this user may not write it.
    // Nothing when even that fails, or when the path is not that of a file. Blocks for the time of
    // kRecordFilePolicy at most, less when the clock's waits are cut short.
    [[nodiscard]] static std::optional<RecordFile> OpenShared(const std::string& path, Clock& clock);
    // Opens an existing file for reading; neither waits nor creates.
    [[nodiscard]] static std::optional<RecordFile> OpenReadOnly(const std::string& path);
    // True when there certainly is nothing at this path; a path that cannot be looked at may have a file.
    [[nodiscard]] static bool IsMissing(const std::string& path);

    // Goes back to the first byte and returns the length in bytes as it is now; 0 when it cannot be found out.
    [[nodiscard]] std::uint64_t Rewind();
    // Fills as much of the buffer as there is; returns how many bytes that was.
    [[nodiscard]] std::size_t Read(std::span<std::byte> buffer);

private:
    struct Closer {
        void operator()(std::FILE* file) const { (void)std::fclose(file); }  // only read from: nothing is lost
    };
    explicit RecordFile(std::FILE* file);
    static std::optional<RecordFile> Open(const std::string& path, const char* mode);
    // For update, or for reading where this user may not write. Neither waits nor creates.
    static std::optional<RecordFile> OpenNow(const std::string& path);

    std::unique_ptr<std::FILE, Closer> m_file;
};

// Fills as many whole records as there are, deciphered; the part of the buffer that was filled.
template <RecordType Record>
[[nodiscard]] std::span<const Record> ReadRecords(RecordFile& file, Cipher cipher, std::span<Record> buffer) {
    const std::size_t count = file.Read(std::as_writable_bytes(buffer)) / sizeof(Record);
    const std::span<Record> records = buffer.first(count);
    if (cipher == Cipher::Enciphered) CipherRecords(std::as_writable_bytes(records), sizeof(Record));
    return records;
}

// Where a scan reads to. Deciphered records, among which may be a password, do not stay in memory.
template <RecordType Record>
struct ScanBuffer {
    ScanBuffer(std::size_t count, Cipher cipherOfFile) : records(count), cipher(cipherOfFile) {}
    ScanBuffer(const ScanBuffer&) = delete;
    ScanBuffer& operator=(const ScanBuffer&) = delete;
    ~ScanBuffer() {
        if (cipher == Cipher::Enciphered) WipeMemory(records.data(), records.size() * sizeof(Record));
    }
    std::vector<Record> records;
    const Cipher cipher;
};

// Hands the records to visit(std::span<const Record>) from first to last, some kScanSize bytes at a time, until
// it returns false. Records that are added meanwhile are not seen. False when reading broke off before the end.
template <RecordType Record, class Visit>
bool ScanRecords(RecordFile& file, Cipher cipher, Visit visit) {
    static_assert(sizeof(Record) <= kScanSize);
    std::uint64_t left = file.Rewind() / sizeof(Record);
    ScanBuffer<Record> buffer(static_cast<std::size_t>(std::min<std::uint64_t>(left, kScanSize / sizeof(Record))),
                              cipher);
    while (left > 0) {
        const auto wanted = static_cast<std::size_t>(std::min<std::uint64_t>(left, buffer.records.size()));
        const auto records = ReadRecords(file, cipher, std::span(buffer.records).first(wanted));
        if (!visit(records)) return true;
        if (records.size() < wanted) return false;
        left -= wanted;
    }
    return true;
}

// All records of an open file, first to last.
template <RecordType Record>
[[nodiscard]] std::vector<Record> ReadAllRecords(RecordFile& file, Cipher cipher) {
    const std::uint64_t length = file.Rewind();
    if (length > kWholeFileLimit) return {};
    std::vector<Record> records(static_cast<std::size_t>(length / sizeof(Record)));
    records.resize(ReadRecords(file, cipher, std::span(records)).size());
    return records;
}

}  // namespace brennvar
