#include "security/StoredPassword.h"

#include <algorithm>
#include <cstdint>
#include <span>

#include "config/Folders.h"
#include "config/OptionRecord.h"
#include "config/OptionTable.h"
#include "ipc/RecordFile.h"

namespace brennvar {

StoredPassword::StoredPassword(const std::string& dataFolder, Clock& clock)
    : m_path(ConfigFilePath(dataFolder)), m_clock(clock) {}

std::optional<Password> StoredPassword::Read() const {
    auto file = RecordFile::OpenShared(m_path, m_clock);
    if (!file) return RecordFile::IsMissing(m_path) ? std::optional(Password()) : std::nullopt;
    Password stored;
    bool isFound = false;
    const bool isWhole = file->Rewind() % sizeof(OptionRecord) == 0;
    const bool isRead =
        ScanRecords<OptionRecord>(*file, Cipher::Enciphered, [&](std::span<const OptionRecord> records) {
            const auto at = std::find_if(records.begin(), records.end(), [](const OptionRecord& record) {
                return record.id == static_cast<std::uint32_t>(OptionId::Password);
            });
            if (at == records.end()) return true;
            stored = Password(TextOf(at->text));
            isFound = true;
            return false;
        });
    // A record that is not there may be in the part that is not there.
    return isFound || (isWhole && isRead) ? std::optional(stored) : std::nullopt;
}

}  // namespace brennvar
