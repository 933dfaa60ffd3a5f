#include "service/Journal_win.h"

namespace brennvar::standin {

bool Journal::Open(const std::string& path) {
    m_file.Reset(::CreateFileA(path.c_str(), GENERIC_WRITE, FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE,
                               nullptr, CREATE_ALWAYS, FILE_ATTRIBUTE_NORMAL, nullptr));
    return static_cast<bool>(m_file);
}

void Journal::Record(Channel channel, std::span<const std::byte> record) {
    const std::scoped_lock lock(m_lock);
    WriteLine(FormatRecordLine(++m_sequence, channel, record));
}

void Journal::Event(std::string_view event) {
    const std::scoped_lock lock(m_lock);
    WriteLine(FormatEventLine(++m_sequence, event));
}

void Journal::WriteLine(std::string line) {
    line += '\n';
    DWORD written = 0;
    ::WriteFile(m_file.Get(), line.data(), static_cast<DWORD>(line.size()), &written, nullptr);
    ::FlushFileBuffers(m_file.Get());
}

void Progress::Add(Channel channel) {
    {
        const std::scoped_lock lock(m_lock);
        ++m_counts.at(static_cast<std::size_t>(channel));
    }
    ::SetEvent(m_changed.Get());
}

std::uint32_t Progress::Count(Channel channel) const {
    const std::scoped_lock lock(m_lock);
    return m_counts.at(static_cast<std::size_t>(channel));
}

}  // namespace brennvar::standin
