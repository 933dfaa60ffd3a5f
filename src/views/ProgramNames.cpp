#include "views/ProgramNames.h"

#include <algorithm>
#include <utility>

#include "base/DisplayName.h"

namespace brennvar {

ProgramNames::ProgramNames(TaskQueue& queue, const ProgramFiles& files, std::function<void()> changed)
    : m_queue(queue), m_files(files), m_changed(std::move(changed)) {}

void ProgramNames::Want(const std::vector<std::string>& paths) {
    if (m_entries.size() + paths.size() > kMostPrograms) Forget(paths);
    for (const std::string& path : paths) {
        if (path.empty() || m_underWay.contains(path)) continue;
        const auto entry = m_entries.find(path);
        if (entry != m_entries.end() && entry->second.isChecked) continue;
        const bool isKnown = entry != m_entries.end();
        if (!isKnown && m_entries.size() + m_underWay.size() >= kMostPrograms) continue;
        Read(path, isKnown ? std::optional(entry->second.stamp) : std::nullopt);
    }
}

// What nobody wants now makes room.
void ProgramNames::Forget(const std::vector<std::string>& wanted) {
    const std::unordered_set<std::string> kept(wanted.begin(), wanted.end());
    const auto gone = std::erase_if(m_entries, [&](const auto& entry) { return !kept.contains(entry.first); });
    if (gone > 0) m_isKnownOld = true;
}

void ProgramNames::LookAgain() {
    for (auto& [path, entry] : m_entries) entry.isChecked = false;
}

void ProgramNames::Read(const std::string& path, std::optional<FileStamp> known) {
    m_underWay.insert(path);
    m_queue.Ask<Found>(
        [&files = m_files, path, known] {
            Found found{.stamp = files.Stamp(path), .description = {}};
            found.isOther = found.stamp != known;
            if (found.isOther) found.description = OneLine(files.Description(path));
            return found;
        },
        m_alive.Guard([this, path](std::optional<Found> found) { OnRead(path, std::move(found)); }));
}

void ProgramNames::OnRead(const std::string& path, std::optional<Found> found) {
    m_underWay.erase(path);
    Entry& entry = m_entries[path];
    entry.isChecked = true;
    if (found && found->isOther) {
        entry.stamp = found->stamp;
        if (entry.description != found->description) m_isKnownOld = m_isAnythingNew = true;
        entry.description = std::move(found->description);
    }
    // One by one they would have the list made anew for each.
    if (m_underWay.empty() && std::exchange(m_isAnythingNew, false)) m_changed();
}

std::shared_ptr<const ProgramNames::Descriptions> ProgramNames::Known() {
    if (std::exchange(m_isKnownOld, false)) {
        auto known = std::make_shared<Descriptions>();
        for (const auto& [path, entry] : m_entries) {
            if (!entry.description.empty()) known->emplace(path, entry.description);
        }
        m_known = std::move(known);
    }
    return m_known;
}

}  // namespace brennvar
