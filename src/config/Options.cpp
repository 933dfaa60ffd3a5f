#include "config/Options.h"

#include <algorithm>
#include <set>
#include <span>
#include <utility>

#include "config/Folders.h"
#include "ipc/RecordFile.h"

namespace brennvar {

OptionReader::OptionReader(std::string dataFolder, Clock& clock)
    : m_dataFolder(std::move(dataFolder)), m_clock(clock) {}

std::optional<OptionRecord> OptionReader::FindRecord(std::uint32_t id) const {
    auto file = RecordFile::OpenShared(ConfigFilePath(m_dataFolder), m_clock);
    if (!file) return std::nullopt;
    std::optional<OptionRecord> found;
    ScanRecords<OptionRecord>(*file, Cipher::Enciphered, [&](std::span<const OptionRecord> records) {
        const auto at = std::find_if(records.begin(), records.end(), [&](const auto& r) { return r.id == id; });
        if (at != records.end()) found = *at;
        return !found;
    });
    return found;
}

std::uint32_t OptionReader::ReadOption(std::uint32_t id, std::uint32_t fallback) const {
    const auto record = FindRecord(id);
    return record ? record->value : fallback;
}

std::string OptionReader::ReadOptionText(std::uint32_t id) const {
    const auto record = FindRecord(id);
    return record ? std::string(TextOf(record->text)) : std::string();
}

std::optional<OptionValues> OptionReader::ReadAll() const {
    auto file = RecordFile::OpenShared(ConfigFilePath(m_dataFolder), m_clock);
    OptionValues values;
    if (!file) return RecordFile::IsMissing(ConfigFilePath(m_dataFolder)) ? std::optional(values) : std::nullopt;
    std::set<std::uint32_t> seen;
    ScanRecords<OptionRecord>(*file, Cipher::Enciphered, [&](std::span<const OptionRecord> records) {
        for (const OptionRecord& record : records) {
            const OptionInfo* const info = FindOption(record.id);
            if (!info || !seen.insert(record.id).second || info->id == OptionId::Password) continue;
            if (info->IsText()) {
                values.SetText(info->id, TextOf(record.text));
            } else {
                values.SetNumber(info->id, record.value);
            }
        }
        return seen.size() < OptionTable().size();
    });
    return values;
}

}  // namespace brennvar
