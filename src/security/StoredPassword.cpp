#include "security/StoredPassword.h"

#include <algorithm>
#include <span>

#include "config/Folders.h"
#include "config/OptionRecord.h"
#include "config/OptionTable.h"
#include "ipc/RecordFile.h"

namespace brennvar {

Password ReadStoredPassword(const std::string& dataFolder, Clock& clock) {
    Password stored;
    auto file = RecordFile::OpenShared(ConfigFilePath(dataFolder), clock);
    if (!file) return stored;
    ScanRecords<OptionRecord>(*file, Cipher::Enciphered, [&](std::span<const OptionRecord> records) {
        const auto at = std::find_if(records.begin(), records.end(), [](const OptionRecord& record) {
            return record.id == static_cast<std::uint32_t>(OptionId::Password);
        });
        if (at == records.end()) return true;
        stored = Password(TextOf(at->text));
        return false;
    });
    return stored;
}

}  // namespace brennvar
