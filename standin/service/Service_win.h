// What the service does with each record that comes in over its pipes.
#pragma once

#include <atomic>
#include <cstddef>
#include <cstdint>
#include <deque>
#include <map>
#include <mutex>
#include <optional>
#include <span>
#include <string>
#include <vector>

#include "ipc/CommandRecord.h"
#include "ipc/PipeRecords.h"
#include "service/DataFolder_win.h"
#include "service/DriverFeeder_win.h"
#include "service/RuleJudge.h"
#include "service/StartedProcesses_win.h"

namespace brennvar::standin {

class Service final : public ConnectionJudge {
public:
    using Bytes = std::span<const std::byte>;
    using Answer = std::optional<std::vector<std::byte>>;

    // dieAfter: in the middle of which request for a process path the process ends; 0 for never.
    // dieAfterCommand: when so many commands have been applied.
    Service(DataFolder& data, DriverFeeder& feeder, StartedProcesses& processes, std::uint32_t dieAfter,
            std::uint32_t dieAfterCommand);
    Service(const Service&) = delete;
    Service& operator=(const Service&) = delete;
    ~Service() override;

    // One per pipe, each called on its pipe's thread. A record of a wrong length is left alone.
    Answer HandleCommand(Bytes record);
    Answer HandlePid(Bytes record);
    Answer HandleTray(Bytes record);
    Answer HandleQueue(Bytes record);
    Answer HandleConfirm(Bytes record);

    // Any thread, as are the others below.
    [[nodiscard]] bool Denies(const ConnectionEntry& entry) override;
    // What the advanced rules say to a question, which is not asked then.
    [[nodiscard]] std::optional<Verdict> VerdictOn(const ConnectionPromptRequest& request);
    // Takes the advanced rules of the file.
    void LoadRules();
    // The next changes of advanced rules and lists, so many, are not carried out.
    void Refuse(std::uint32_t changes) { m_refusals = changes; }
    void AddNotice(std::string text);
    void AddProcess(std::uint32_t processId, std::string path);

private:
    void Apply(const CommandRecord& command);
    void ApplyRule(const CommandRecord& command);
    [[nodiscard]] bool Refuses();
    std::string PathOfProcess(std::uint32_t processId);
    [[nodiscard]] std::optional<Verdict> Judge(const SeenConnection& seen);

    DataFolder& m_data;
    DriverFeeder& m_feeder;
    StartedProcesses& m_started;
    std::uint32_t m_dieAfter;
    std::uint32_t m_dieAfterCommand;
    std::atomic<std::uint32_t> m_refusals = 0;
    std::mutex m_lock;  // guards what is below
    std::vector<AdvancedRuleRecord> m_rules;
    std::deque<std::string> m_notices;
    std::map<std::uint32_t, std::string> m_processes;
};

}  // namespace brennvar::standin
