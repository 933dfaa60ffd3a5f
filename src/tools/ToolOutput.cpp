#include "tools/ToolOutput.h"

#include <algorithm>
#include <utility>

namespace brennvar {
namespace {

bool IsControl(char c) {
    const auto code = static_cast<unsigned char>(c);
    return code < ' ' || code == 0x7F;
}

}  // namespace

void ToolLines::Print(const std::string& line) {
    std::string shown = line;
    std::replace_if(shown.begin(), shown.end(), IsControl, ' ');
    bool wasEmpty = false;
    {
        const std::lock_guard lock(m_mutex);
        wasEmpty = m_lines.empty() && !m_isAnew;
        m_lines.push_back(std::move(shown));
    }
    if (wasEmpty) m_wake();
}

void ToolLines::Clear() {
    bool wasEmpty = false;
    {
        const std::lock_guard lock(m_mutex);
        wasEmpty = m_lines.empty() && !m_isAnew;
        m_lines.clear();
        m_isAnew = true;
    }
    if (wasEmpty) m_wake();
}

ToolLines::Taken ToolLines::Take(std::size_t most) {
    const std::lock_guard lock(m_mutex);
    Taken taken;
    taken.isAnew = std::exchange(m_isAnew, false);
    for (; taken.count < most && !m_lines.empty(); ++taken.count) {
        if (taken.count > 0) taken.text += '\n';
        taken.text += m_lines.front();
        m_lines.pop_front();
    }
    taken.hasMore = !m_lines.empty();
    return taken;
}

}  // namespace brennvar
