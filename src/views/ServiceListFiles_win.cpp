#include "views/ServiceListFiles_win.h"

#include <optional>
#include <utility>
#include <vector>

#include "config/FileStamp_win.h"
#include "config/Folders.h"
#include "rules/SiteList.h"
#include "rules/TrustedPrograms.h"

namespace brennvar {
namespace {

using Entries = std::optional<std::vector<ListEntry>>;

class ListFileSource final : public ListSource {
public:
    using Load = Entries (*)(const std::string& path, Clock& clock);
    ListFileSource(std::string path, Clock& clock, Load load)
        : m_path(std::move(path)), m_clock(clock), m_load(load) {}
    [[nodiscard]] Entries Read() const override { return m_load(m_path, m_clock); }
    [[nodiscard]] FileStamp Stamp() const override { return StampOf(m_path); }

private:
    const std::string m_path;
    Clock& m_clock;
    const Load m_load;
};

Entries TrustedEntries(const std::string& path, Clock& clock) {
    auto programs = LoadTrustedPrograms(path, clock);
    if (!programs) return std::nullopt;
    std::vector<ListEntry> entries;
    entries.reserve(programs->size());
    for (std::string& program : *programs) entries.push_back({.text = std::move(program)});
    return entries;
}

Entries SiteEntries(const std::string& path, Clock& clock) {
    auto sites = LoadSites(path, clock);
    if (!sites) return std::nullopt;
    std::vector<ListEntry> entries;
    entries.reserve(sites->size());
    for (Site& site : *sites) entries.push_back({.id = site.id, .text = std::move(site.name)});
    return entries;
}

}  // namespace

std::shared_ptr<const ListSource> TrustedFile(const std::string& dataFolder, Clock& clock) {
    return std::make_shared<ListFileSource>(TrustedFilePath(dataFolder), clock, TrustedEntries);
}

std::shared_ptr<const ListSource> SitesFile(const std::string& dataFolder, Clock& clock) {
    return std::make_shared<ListFileSource>(SitesFilePath(dataFolder), clock, SiteEntries);
}

}  // namespace brennvar
