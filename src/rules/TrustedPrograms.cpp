#include "rules/TrustedPrograms.h"

#include <algorithm>
#include <span>

#include "base/AsciiCase.h"
#include "ipc/RecordFile.h"
#include "rules/ListFile.h"
#include "rules/ListRecords.h"

namespace brennvar {
namespace {

std::string_view PathOf(const TrustedRecord& record) {
    const std::string_view path = TextOf(record.shortPath);
    return path.empty() ? TextOf(record.longPath) : path;
}

}  // namespace

bool IsTrustedProgram(const std::string& trustedFile, std::string_view path) {
    if (path.empty()) return false;
    auto file = RecordFile::OpenReadOnly(trustedFile);
    if (!file) return false;
    bool isTrusted = false;
    (void)ScanRecords<TrustedRecord>(*file, Cipher::Enciphered, [&](std::span<const TrustedRecord> records) {
        isTrusted = std::any_of(records.begin(), records.end(), [&](const TrustedRecord& record) {
            return EqualsIgnoringCase(PathOf(record), path);
        });
        return !isTrusted;
    });
    return isTrusted;
}

std::optional<std::vector<std::string>> LoadTrustedPrograms(const std::string& trustedFile, Clock& clock) {
    std::vector<std::string> paths;
    const bool isWhole =
        ReadListRecords<TrustedRecord>(trustedFile, clock, paths, [&paths](const TrustedRecord& record) {
            const std::string_view path = PathOf(record);
            if (!path.empty()) paths.emplace_back(path);
        });
    if (!isWhole) return std::nullopt;
    return paths;
}

}  // namespace brennvar
