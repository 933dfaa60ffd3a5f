// The files of the service, changed in their real formats. Every member may be called from any thread.
#pragma once

#include <mutex>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "base/Ipv4.h"
#include "config/OptionRecord.h"
#include "ipc/CommandRecord.h"
#include "logs/LogRecords.h"
#include "rules/ApplicationRuleRecord.h"
#include "rules/ListRecords.h"
#include "service/SpoiledRecords.h"

namespace brennvar::standin {

class DataFolder {
public:
    // The all-users folder of the product.
    [[nodiscard]] static std::string DefaultPath();

    // Makes the folder with "Rules" and "Log" in it. False when it cannot.
    [[nodiscard]] bool Open(const std::string& path);
    [[nodiscard]] const std::string& Path() const { return m_path; }

    void SetOption(std::uint32_t id, std::uint32_t value);
    [[nodiscard]] std::uint32_t OptionOr(std::uint32_t id, std::uint32_t fallback);
    void SetOptionText(std::uint32_t id, std::string_view text);
    void SetFolderName(const char* section, std::string_view name);  // settings.ini, section "Skin" or "Language"

    void SetRule(std::string_view path, RuleAction action);
    void RemoveRule(std::string_view path);

    [[nodiscard]] std::vector<AdvancedRuleRecord> AdvancedRules();
    // At the end, with identifiers that are free.
    void AddAdvancedRules(std::vector<AdvancedRuleRecord> added);
    // The rule keeps its identifier.
    void ReplaceAdvancedRule(std::uint32_t id, const AdvancedRuleRecord& rule);
    void RemoveAdvancedRule(std::uint32_t id);
    void MoveAdvancedRule(std::uint32_t id, bool up);

    // A path that is listed is not added again.
    void AddTrusted(const std::vector<std::string>& paths);
    void ClearTrusted();

    // With identifiers that are free.
    void AddSites(const std::vector<std::string>& names);
    void RemoveSite(std::uint32_t id);
    [[nodiscard]] bool HasSite(std::string_view name);

    void Spoil(ServiceFile file, Spoiling how);

    // Logs are today's, unless another day was set (YYYYMMDD); the time of an event or packet is now.
    void SetLogDay(std::string_view date);
    void LogEvent(std::string_view title);
    void LogEvents(std::vector<TrafficLogRecord> records);
    void LogPacket(const PacketLogHeader& header, std::span<const std::byte> bytes);
    void LogName(const DnsLogRecord& record);
    void LogHardwareAddress(const MacLogRecord& record);
    void AddAdvice(const AdviceRecord& record);
    // date: YYYYMMDD; anything else deletes nothing.
    void DeleteLogs(std::string_view date, bool earlierToo);

private:
    template <RecordType Record, class Change>
    void ChangeFile(std::string_view name, const Change& change);
    template <RecordType Record>
    void SpoilFile(std::string_view name, Spoiling how);
    void Append(const std::string& path, std::span<const std::byte> record);
    [[nodiscard]] std::string CurrentLog(std::string_view suffix);

    std::mutex m_lock;  // one change at a time
    std::string m_path;
    std::string m_logDay;  // empty: today
};

}  // namespace brennvar::standin
