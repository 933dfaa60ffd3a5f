#include "config/OptionFile_win.h"

#include <utility>

#include "base/Windows_win.h"
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
    const auto join = [](DWORD high, DWORD low) { return std::uint64_t{high} << 32 | low; };
    WIN32_FILE_ATTRIBUTE_DATA facts{};
    if (!::GetFileAttributesExA(ConfigFilePath(GetDataFolder()).c_str(), GetFileExInfoStandard, &facts)) return {};
    return {.written = join(facts.ftLastWriteTime.dwHighDateTime, facts.ftLastWriteTime.dwLowDateTime),
            .size = join(facts.nFileSizeHigh, facts.nFileSizeLow)};
}

}  // namespace brennvar
