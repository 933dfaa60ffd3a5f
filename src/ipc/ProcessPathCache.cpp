#include "ipc/ProcessPathCache.h"

namespace brennvar {

std::optional<std::string> ProcessPathCache::operator()(std::uint32_t processId) {
    if (const auto found = m_paths.find(processId); found != m_paths.end()) return found->second;
    if (m_serviceMissing) return std::nullopt;
    auto path = m_pipes.ResolveProcessPath(processId);
    m_serviceMissing = !m_pipes.LastWaitFoundService();
    return m_paths.emplace(processId, std::move(path)).first->second;
}

}  // namespace brennvar
