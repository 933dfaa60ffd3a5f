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

namespace brennvar::standin {

#pragma pack(push, 1)
// One record of "trusted.conf". A path of at most 33 characters stands at 260, a longer one at 0.
struct TrustedRecord {
    char longPath[260];  //   0
    char shortPath[34];  // 260  empty when the long one counts
};

// One record of "domain.conf".
struct DomainRecord {
    std::uint32_t id;  // 0
    char name[104];    // 4
};
#pragma pack(pop)
static_assert(RecordType<TrustedRecord> && sizeof(TrustedRecord) == 294 &&
              offsetof(TrustedRecord, shortPath) == 260);
static_assert(RecordType<DomainRecord> && sizeof(DomainRecord) == 108 && offsetof(DomainRecord, name) == 4);

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

    void AddAdvancedRule(const AdvancedRuleRecord& rule);
    void ReplaceAdvancedRule(std::uint32_t id, const AdvancedRuleRecord& rule);
    void RemoveAdvancedRule(std::uint32_t id);
    void MoveAdvancedRule(std::uint32_t id, bool up);

    void AddTrusted(std::string_view path);
    void ClearTrusted();

    void AddDomain(std::string_view name);
    void RemoveDomain(std::uint32_t id);
    [[nodiscard]] bool HasDomain(std::string_view name);

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
    void Append(const std::string& path, std::span<const std::byte> record);
    [[nodiscard]] std::string CurrentLog(std::string_view suffix);

    std::mutex m_lock;  // one change at a time
    std::string m_path;
    std::string m_logDay;  // empty: today
};

}  // namespace brennvar::standin
