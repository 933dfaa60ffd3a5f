#include "security/StoredPassword.h"

#include <algorithm>
#include <array>
#include <span>

#include "config/Folders.h"
#include "config/OptionRecord.h"
#include "config/OptionTable.h"
#include "ipc/RecordFile.h"

namespace brennvar {
namespace {

// Some of the file's records at a time; the mail and proxy passwords are among them.
struct Piece {
    Piece() = default;
    Piece(const Piece&) = delete;
    Piece& operator=(const Piece&) = delete;
    ~Piece() { WipeRecord(records); }
    std::array<OptionRecord, 32> records{};
};

}  // namespace

Password ReadStoredPassword(const std::string& dataFolder, Clock& clock) {
    auto file = RecordFile::RulesFileOpen(ConfigFilePath(dataFolder), clock);
    if (!file) return {};
    (void)file->Rewind();
    Piece piece;
    for (;;) {
        const auto records = ReadRecords(*file, Cipher::Enciphered, std::span<OptionRecord>(piece.records));
        const auto at = std::find_if(records.begin(), records.end(), [](const OptionRecord& record) {
            return record.id == static_cast<std::uint32_t>(OptionId::Password);
        });
        if (at != records.end()) return Password(TextOf(at->text));
        if (records.size() < piece.records.size()) return {};
    }
}

}  // namespace brennvar
