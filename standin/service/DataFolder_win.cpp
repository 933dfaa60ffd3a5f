#include "service/DataFolder_win.h"

#include <algorithm>
#include <array>
#include <cstdio>

#include "base/Handles_win.h"
#include "service/RecordFile_win.h"
// Needs what Windows_win.h brings.
#include <shlobj.h>

namespace brennvar::standin {
namespace {

constexpr std::string_view kOptionsFile = R"(\config.conf)";
constexpr std::string_view kRulesFile = R"(\Rules\rules.conf)";
constexpr std::string_view kAdvancedRulesFile = R"(\Rules\rules_advanced.conf)";
constexpr std::string_view kTrustedFile = R"(\trusted.conf)";
constexpr std::string_view kSitesFile = R"(\domain.conf)";
constexpr std::uint32_t kMessageAction = 6;  // the first action code of the traffic log that reads "Message"
constexpr std::size_t kDateLength = 8;       // YYYYMMDD

bool EqualPaths(std::string_view left, std::string_view right) {
    return left.size() == right.size() && ::_strnicmp(left.data(), right.data(), left.size()) == 0;
}

// A change that cannot be written is told on the console; the client has no way to learn of it.
void Check(bool written, const std::string& path) {
    if (!written) std::fprintf(stderr, "cannot write %s\n", path.c_str());
}

std::vector<AdvancedRuleRecord>::iterator FindAdvancedRule(std::vector<AdvancedRuleRecord>& rules,
                                                           std::uint32_t id) {
    return std::find_if(rules.begin(), rules.end(), [&](const auto& rule) { return rule.id == id; });
}

template <class Record>
std::uint32_t LastId(const std::vector<Record>& records) {
    std::uint32_t last = 0;
    for (const Record& record : records) last = std::max<std::uint32_t>(last, record.id);
    return last;
}

OptionRecord& FindOrAddOption(std::vector<OptionRecord>& options, std::uint32_t id) {
    const auto found =
        std::find_if(options.begin(), options.end(), [&](const auto& option) { return option.id == id; });
    if (found != options.end()) return *found;
    OptionRecord option{};
    option.id = id;
    return options.emplace_back(option);
}

bool IsDate(std::string_view text) {
    return text.size() == kDateLength &&
           std::all_of(text.begin(), text.end(), [](char digit) { return digit >= '0' && digit <= '9'; });
}

template <class Record>
void PutTimeOfNow(Record& record) {
    SYSTEMTIME now;
    ::GetLocalTime(&now);
    record.second = now.wSecond;
    record.minute = now.wMinute;
    record.hour = now.wHour;
    // As C's broken-down time counts: months from 0, years from 1900. Day of year and daylight flag stay 0.
    record.restOfTime[0] = now.wDay;
    record.restOfTime[1] = now.wMonth - 1U;
    record.restOfTime[2] = now.wYear - 1900U;
    record.restOfTime[3] = now.wDayOfWeek;
}

bool MakeFolder(const std::string& path) {
    const int result = ::SHCreateDirectoryExA(nullptr, path.c_str(), nullptr);
    return result == ERROR_SUCCESS || result == ERROR_ALREADY_EXISTS || result == ERROR_FILE_EXISTS;
}

}  // namespace

std::string DataFolder::DefaultPath() {
    std::array<char, MAX_PATH> folder{};
    ::SHGetSpecialFolderPathA(nullptr, folder.data(), CSIDL_COMMON_APPDATA, TRUE);
    return std::string(folder.data()) + R"(\Quorlan\Brennvar Firewall)";
}

bool DataFolder::Open(const std::string& path) {
    std::array<char, MAX_PATH> full{};  // SHCreateDirectoryEx takes whole paths only
    if (::GetFullPathNameA(path.c_str(), MAX_PATH, full.data(), nullptr) == 0) return false;
    m_path = full.data();
    return MakeFolder(m_path) && MakeFolder(m_path + R"(\Rules)") && MakeFolder(m_path + R"(\Log)");
}

void DataFolder::SetLogDay(std::string_view date) {
    const std::scoped_lock lock(m_lock);
    m_logDay = date;
}

std::string DataFolder::CurrentLog(std::string_view suffix) {
    const std::scoped_lock lock(m_lock);
    if (!m_logDay.empty()) return m_path + R"(\Log\)" + m_logDay + std::string(suffix);
    SYSTEMTIME now;
    ::GetLocalTime(&now);
    std::array<char, kDateLength + 1> date{};
    std::snprintf(date.data(), date.size(), "%04u%02u%02u", now.wYear % 10000U, now.wMonth % 100U, now.wDay % 100U);
    return m_path + R"(\Log\)" + date.data() + std::string(suffix);
}

template <RecordType Record, class Change>
void DataFolder::ChangeFile(std::string_view name, const Change& change) {
    const std::scoped_lock lock(m_lock);
    const std::string path = m_path + std::string(name);
    Check(ChangeRecords<Record>(path, change), path);
}

void DataFolder::SetOption(std::uint32_t id, std::uint32_t value) {
    ChangeFile<OptionRecord>(kOptionsFile, [&](auto& options) { FindOrAddOption(options, id).value = value; });
}

std::uint32_t DataFolder::OptionOr(std::uint32_t id, std::uint32_t fallback) {
    std::uint32_t value = fallback;
    ChangeFile<OptionRecord>(kOptionsFile, [&](const auto& options) {
        const auto at = std::find_if(options.begin(), options.end(), [id](const auto& o) { return o.id == id; });
        if (at != options.end()) value = at->value;
    });
    return value;
}

void DataFolder::SetOptionText(std::uint32_t id, std::string_view text) {
    ChangeFile<OptionRecord>(kOptionsFile,
                             [&](auto& options) { PutText(FindOrAddOption(options, id).text, text); });
}

void DataFolder::SetFolderName(const char* section, std::string_view name) {
    const std::scoped_lock lock(m_lock);
    const std::string path = m_path + R"(\settings.ini)";
    Check(::WritePrivateProfileStringA(section, "Directory", std::string(name).c_str(), path.c_str()) != 0, path);
}

void DataFolder::SetRule(std::string_view path, RuleAction action) {
    if (path.empty()) return;
    ChangeFile<ApplicationRuleRecord>(kRulesFile, [&](auto& rules) {
        const auto found = std::find_if(rules.begin(), rules.end(),
                                        [&](const auto& rule) { return EqualPaths(TextOf(rule.path), path); });
        if (found != rules.end()) {
            found->action = action;
            return;
        }
        ApplicationRuleRecord& rule = rules.emplace_back();
        PutText(rule.path, path);
        rule.action = action;
    });
}

void DataFolder::RemoveRule(std::string_view path) {
    ChangeFile<ApplicationRuleRecord>(kRulesFile, [&](auto& rules) {
        std::erase_if(rules, [&](const auto& rule) { return EqualPaths(TextOf(rule.path), path); });
    });
}

std::vector<AdvancedRuleRecord> DataFolder::AdvancedRules() {
    const std::scoped_lock lock(m_lock);
    return DecipherRecords<AdvancedRuleRecord>(ReadFileBytes(m_path + std::string(kAdvancedRulesFile)));
}

void DataFolder::AddAdvancedRules(std::vector<AdvancedRuleRecord> added) {
    ChangeFile<AdvancedRuleRecord>(kAdvancedRulesFile, [&](auto& rules) {
        std::uint32_t id = LastId(rules);
        for (AdvancedRuleRecord& rule : added) rule.id = ++id;
        rules.insert(rules.end(), added.begin(), added.end());
    });
}

void DataFolder::ReplaceAdvancedRule(std::uint32_t id, const AdvancedRuleRecord& rule) {
    ChangeFile<AdvancedRuleRecord>(kAdvancedRulesFile, [&](auto& rules) {
        const auto old = FindAdvancedRule(rules, id);
        if (old == rules.end()) return;
        *old = rule;
        old->id = id;
    });
}

void DataFolder::RemoveAdvancedRule(std::uint32_t id) {
    ChangeFile<AdvancedRuleRecord>(kAdvancedRulesFile, [&](auto& rules) {
        const auto rule = FindAdvancedRule(rules, id);
        if (rule != rules.end()) rules.erase(rule);
    });
}

void DataFolder::MoveAdvancedRule(std::uint32_t id, bool up) {
    ChangeFile<AdvancedRuleRecord>(kAdvancedRulesFile, [&](auto& rules) {
        const auto rule = FindAdvancedRule(rules, id);
        if (rule == rules.end()) return;
        if (up && rule != rules.begin()) std::iter_swap(rule, rule - 1);
        if (!up && rule + 1 != rules.end()) std::iter_swap(rule, rule + 1);
    });
}

void DataFolder::AddTrusted(const std::vector<std::string>& paths) {
    ChangeFile<TrustedRecord>(kTrustedFile, [&](auto& trusted) {
        // Many at once are made up, and differ.
        const auto isListed = [&](const std::string& path) {
            return std::any_of(trusted.begin(), trusted.end(), [&](const TrustedRecord& record) {
                return EqualPaths(TextOf(record.shortPath), path) || EqualPaths(TextOf(record.longPath), path);
            });
        };
        if (paths.size() == 1 && (paths.front().empty() || isListed(paths.front()))) return;
        for (const std::string& path : paths) {
            TrustedRecord& record = trusted.emplace_back();
            if (path.size() < sizeof(record.shortPath)) {
                PutText(record.shortPath, path);
            } else {
                PutText(record.longPath, path);
            }
        }
    });
}

void DataFolder::ClearTrusted() {
    ChangeFile<TrustedRecord>(kTrustedFile, [](auto& trusted) { trusted.clear(); });
}

void DataFolder::AddSites(const std::vector<std::string>& names) {
    ChangeFile<SiteRecord>(kSitesFile, [&](auto& sites) {
        std::uint32_t id = LastId(sites);
        for (const std::string& name : names) {
            SiteRecord& site = sites.emplace_back();
            site.id = ++id;
            PutText(site.name, name);
        }
    });
}

void DataFolder::RemoveSite(std::uint32_t id) {
    ChangeFile<SiteRecord>(
        kSitesFile, [&](auto& sites) { std::erase_if(sites, [&](const auto& site) { return site.id == id; }); });
}

bool DataFolder::HasSite(std::string_view name) {
    bool found = false;
    ChangeFile<SiteRecord>(kSitesFile, [&](auto& sites) {
        found = std::any_of(sites.begin(), sites.end(),
                            [&](const auto& site) { return EqualPaths(TextOf(site.name), name); });
    });
    return found;
}

template <RecordType Record>
void DataFolder::SpoilFile(std::string_view name, Spoiling how) {
    ChangeFile<Record>(name, [how](auto& records) { SpoilRecords(records, how); });
    const std::scoped_lock lock(m_lock);
    const std::string path = m_path + std::string(name);
    Check(RewriteFile(path, [how](auto& content) { SpoilEnd(content, sizeof(Record), how); }), path);
}

void DataFolder::Spoil(ServiceFile file, Spoiling how) {
    switch (file) {
        case ServiceFile::AdvancedRules: return SpoilFile<AdvancedRuleRecord>(kAdvancedRulesFile, how);
        case ServiceFile::Trusted: return SpoilFile<TrustedRecord>(kTrustedFile, how);
        case ServiceFile::Sites: return SpoilFile<SiteRecord>(kSitesFile, how);
    }
}

void DataFolder::Append(const std::string& path, std::span<const std::byte> record) {
    const std::scoped_lock lock(m_lock);
    Check(AppendToFile(path, record), path);
}

void DataFolder::LogEvent(std::string_view title) {
    TrafficLogRecord record{};
    record.action = kMessageAction;
    PutText(record.shortText, title);
    LogEvents({record});
}

void DataFolder::LogEvents(std::vector<TrafficLogRecord> records) {
    for (TrafficLogRecord& record : records) PutTimeOfNow(record);
    Append(CurrentLog(".log"), std::as_bytes(std::span(records)));
}

void DataFolder::LogPacket(const PacketLogHeader& header, std::span<const std::byte> bytes) {
    PacketLogHeader record = header;
    PutTimeOfNow(record);
    const auto head = RecordBytes(record);
    std::vector<std::byte> entry(head.begin(), head.end());  // written as one piece
    entry.insert(entry.end(), bytes.begin(), bytes.end());
    Append(CurrentLog("_packet.log"), entry);
}

void DataFolder::LogName(const DnsLogRecord& record) {
    Append(CurrentLog("_dns.log"), RecordBytes(record));
}

void DataFolder::LogHardwareAddress(const MacLogRecord& record) {
    Append(CurrentLog("_mac.log"), RecordBytes(record));
}

void DataFolder::AddAdvice(const AdviceRecord& record) {
    Append(m_path + R"(\advice.dat)", RecordBytes(record));
}

void DataFolder::DeleteLogs(std::string_view date, bool earlierToo) {
    if (!IsDate(date)) return;
    const std::scoped_lock lock(m_lock);
    const std::string folder = m_path + R"(\Log\)";
    WIN32_FIND_DATAA entry;
    const UniqueFind search(::FindFirstFileA((folder + "*.log").c_str(), &entry));
    if (!search) return;
    do {
        const std::string name = entry.cFileName;
        const std::string_view day = std::string_view(name).substr(0, kDateLength);
        if (!IsDate(day) || (earlierToo ? day > date : day != date)) continue;
        Check(::DeleteFileA((folder + name).c_str()) != 0, folder + name);
    } while (::FindNextFileA(search.Get(), &entry));
}

}  // namespace brennvar::standin
