#include "logs/Lookups.h"

#include <algorithm>
#include <cstdio>
#include <span>

#include "base/AsciiCase.h"
#include "config/Folders.h"
#include "ipc/RecordFile.h"
#include "logs/LogFiles.h"
#include "logs/LogRecords.h"

namespace brennvar {
namespace {

template <RecordType Record, class Visit>
void ScanFile(const std::string& path, Visit visit) {
    if (auto file = RecordFile::OpenReadOnly(path)) ScanRecords<Record>(*file, Cipher::Plain, visit);
}

}  // namespace

std::string FindHostName(const std::string& dataFolder, LocalDate day, Ipv4 address) {
    std::string name;
    ScanFile<DnsLogRecord>(LogFilePath(dataFolder, LogKind::Dns, day), [&](std::span<const DnsLogRecord> records) {
        // Backwards within the piece: the latest name counts.
        const auto at = std::find_if(records.rbegin(), records.rend(),
                                     [&](const auto& record) { return record.address == address; });
        if (at != records.rend()) name = TextOf(at->name);
        return true;
    });
    return name;
}

std::string FindHardwareAddress(const std::string& dataFolder, LocalDate day, Ipv4 address) {
    std::string text;
    ScanFile<MacLogRecord>(LogFilePath(dataFolder, LogKind::Mac, day), [&](std::span<const MacLogRecord> records) {
        const auto at = std::find_if(records.begin(), records.end(),
                                     [&](const auto& record) { return record.address == address; });
        if (at == records.end()) return true;
        const auto& b = at->hardwareAddress;
        char formatted[sizeof "00-00-00-00-00-00"];
        (void)std::snprintf(formatted, sizeof formatted, "%02x-%02x-%02x-%02x-%02x-%02x", b[0], b[1], b[2], b[3],
                            b[4], b[5]);
        text = formatted;
        return false;
    });
    return text;
}

std::optional<std::uint32_t> FindAdvice(const std::string& dataFolder, std::string_view path) {
    std::optional<std::uint32_t> advice;
    if (path.empty()) return advice;
    ScanFile<AdviceRecord>(AdviceFilePath(dataFolder), [&](std::span<const AdviceRecord> records) {
        const auto at = std::find_if(records.begin(), records.end(), [&](const auto& record) {
            return EqualsIgnoringCase(TextOf(record.path), path);
        });
        if (at != records.end()) advice = at->advice;
        return !advice;
    });
    return advice;
}

}  // namespace brennvar
