// How the service changes its files: opened exclusively, read whole, changed and written back, so that the
// interface finds a file locked for a moment and never sees half of a change.
#pragma once

#include <functional>
#include <span>
#include <string>
#include <vector>

#include "base/Bytes.h"
#include "service/Cipher.h"

namespace brennvar::standin {

// Makes the file when it is missing. False when another program kept it open for 6 seconds or it cannot be written.
[[nodiscard]] bool RewriteFile(const std::string& path,
                               const std::function<void(std::vector<std::byte>& content)>& change);

// All that a file holds, which others may be reading; nothing when there is none.
[[nodiscard]] std::vector<std::byte> ReadFileBytes(const std::string& path);

// Adds to the end of a file that others may be reading.
[[nodiscard]] bool AppendToFile(const std::string& path, std::span<const std::byte> bytes);

// The enciphered records of a file in the clear. A partial last record is dropped.
template <RecordType Record>
[[nodiscard]] std::vector<Record> DecipherRecords(std::span<const std::byte> content) {
    std::vector<Record> records(content.size() / sizeof(Record));
    const std::span<std::byte> bytes = std::as_writable_bytes(std::span(records));
    std::copy_n(content.begin(), bytes.size(), bytes.begin());
    for (Record& record : records) CipherRecord(WritableRecordBytes(record));
    return records;
}

// Changes a file of enciphered records.
template <RecordType Record>
[[nodiscard]] bool ChangeRecords(const std::string& path,
                                 const std::function<void(std::vector<Record>& records)>& change) {
    return RewriteFile(path, [&](std::vector<std::byte>& content) {
        std::vector<Record> records = DecipherRecords<Record>(content);
        change(records);
        for (Record& record : records) CipherRecord(WritableRecordBytes(record));
        const std::span<const std::byte> changed = std::as_bytes(std::span(records));
        content.assign(changed.begin(), changed.end());
    });
}

}  // namespace brennvar::standin
