#include "logs/Lookups.h"

#include <algorithm>
#include <cstdio>
#include <utility>

#include "base/AsciiCase.h"
#include "base/Hash.h"
#include "config/Folders.h"
#include "logs/LogFiles.h"

namespace brennvar {

std::uint64_t AdviceTraits::HashOf(std::string_view path) {
    ByteHash hash;
    for (const char c : path) hash.Add(static_cast<std::uint8_t>(AsciiLower(c)));
    return hash.Value();
}

std::uint64_t AdviceTraits::HashOf(const Record& record) {
    return HashOf(TextOf(record.path));
}

bool AdviceTraits::Matches(const Record& record, std::string_view path) {
    return EqualsIgnoringCase(TextOf(record.path), path);
}

template <class Traits>
RecordIndex<Traits>& LogLookups::Files<Traits>::FileAt(const std::string& path) {
    const auto known =
        std::find_if(m_files.begin(), m_files.end(), [&](const auto& file) { return file->Path() == path; });
    if (known != m_files.end()) {
        std::rotate(known, known + 1, m_files.end());
    } else {
        if (m_files.size() == kMost) m_files.erase(m_files.begin());
        m_files.push_back(std::make_unique<RecordIndex<Traits>>(path, m_stop));
    }
    return *m_files.back();
}

LogLookups::LogLookups(std::string dataFolder, const StopSignal& stop)
    : m_dataFolder(std::move(dataFolder)), m_names(stop), m_hardware(stop), m_advice(stop) {}

std::string LogLookups::HostName(LocalDate day, Ipv4 address) {
    const auto record = m_names.Find(LogFilePath(m_dataFolder, LogKind::Dns, day), address);
    return record ? std::string(TextOf(record->name)) : std::string();
}

std::string LogLookups::HardwareAddress(LocalDate day, Ipv4 address) {
    const auto record = m_hardware.Find(LogFilePath(m_dataFolder, LogKind::Mac, day), address);
    if (!record) return {};
    const auto& b = record->hardwareAddress;
    char text[sizeof "00-00-00-00-00-00"];
    (void)std::snprintf(text, sizeof text, "%02x-%02x-%02x-%02x-%02x-%02x", b[0], b[1], b[2], b[3], b[4], b[5]);
    return text;
}

std::optional<std::uint32_t> LogLookups::Advice(std::string_view path) {
    if (path.empty()) return std::nullopt;
    const auto record = m_advice.Find(AdviceFilePath(m_dataFolder), path);
    return record ? std::optional(record->advice) : std::nullopt;
}

}  // namespace brennvar
