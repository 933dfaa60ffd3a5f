#include "mail/MailText.h"

#include <algorithm>
#include <utility>

#include "base/FileSize.h"

namespace brennvar {

void MailText::AddText(std::string_view text) {
    if (m_parts.empty() || !std::holds_alternative<std::string>(m_parts.back()))
        m_parts.emplace_back(std::string());
    std::string& part = std::get<std::string>(m_parts.back());
    const std::size_t before = part.size();
    AppendWithDotsDoubled(part, text);
    m_size += part.size() - before;
}

bool MailText::AddFile(const std::string& path) {
    const std::optional<std::uint64_t> size = SizeOfFile(path);
    if (!size) return false;  // a folder as well
    OpenedFile opened;
    opened.file.reset(std::fopen(path.c_str(), "rb"));
    if (!opened.file) return false;
    opened.size = *size;
    m_size += SizeOfBase64Lines(opened.size);
    m_parts.emplace_back(std::move(opened));
    return true;
}

std::optional<std::string_view> MailText::Next() {
    while (m_next < m_parts.size()) {
        if (const auto* const text = std::get_if<std::string>(&m_parts[m_next])) {
            ++m_next;
            if (!text->empty()) return *text;
            continue;
        }
        auto& file = std::get<OpenedFile>(m_parts[m_next]);
        if (file.read < file.size) return NextOf(file);
        ++m_next;
    }
    return std::string_view();
}

std::optional<std::string_view> MailText::NextOf(OpenedFile& file) {
    const auto wanted = static_cast<std::size_t>(std::min<std::uint64_t>(kFilePiece, file.size - file.read));
    m_bytes.resize(wanted);
    // A file that has become shorter would leave the message without what its size promised.
    if (std::fread(m_bytes.data(), 1, wanted, file.file.get()) != wanted) return std::nullopt;
    m_lines.clear();
    AppendBase64Lines(m_lines, m_bytes, file.read == 0);
    file.read += wanted;
    return m_lines;
}

}  // namespace brennvar
