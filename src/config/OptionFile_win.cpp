#include "config/OptionFile_win.h"

#include <utility>

#include "config/FileStamp_win.h"
#include "config/Folders.h"
#include "config/Folders_win.h"
#include "config/Options.h"

namespace brennvar {

std::optional<StoredOptions> OptionFile::Read() const {
    const FileStamp stamp = Stamp();
    auto values = OptionReader(GetDataFolder(), m_clock).ReadAll();
    if (!values) return std::nullopt;
    return StoredOptions{.values = *std::move(values), .stamp = stamp};
}

FileStamp OptionFile::Stamp() const {
    return StampOf(ConfigFilePath(GetDataFolder()));
}

}  // namespace brennvar
