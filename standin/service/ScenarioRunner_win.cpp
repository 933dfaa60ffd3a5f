#include "service/ScenarioRunner_win.h"

#include <array>
#include <string>
#include <utility>
#include <vector>

namespace brennvar::standin {
namespace {

// Table lines in a row reach the driver in one piece.
bool FillsTables(const Instruction& instruction) {
    return std::holds_alternative<ConnectionInstruction>(instruction) ||
           std::holds_alternative<ConnectionsInstruction>(instruction) ||
           std::holds_alternative<ListenersInstruction>(instruction) ||
           std::holds_alternative<ListenerInstruction>(instruction) ||
           std::holds_alternative<ClearTablesInstruction>(instruction);
}

}  // namespace

void ScenarioRunner::Run(const Scenario& scenario) {
    for (const Instruction& instruction : scenario.instructions) {
        if (m_stop.Requested()) return;
        if (!FillsTables(instruction)) m_feeder.Push();
        std::visit([this](const auto& one) { Do(one); }, instruction);
    }
    m_feeder.Push();
    m_journal.Event("scenario-done");
}

void ScenarioRunner::Do(const WaitInstruction& wait) {
    (void)m_stop.Sleep(wait.milliseconds);
}

void ScenarioRunner::Do(const WaitForRecordsInstruction& wait) {
    const std::array<HANDLE, 2> events{m_stop.Event(), m_progress.Changed()};
    while (!m_stop.Requested() && m_progress.Count(wait.channel) < wait.count)
        ::WaitForMultipleObjects(static_cast<DWORD>(events.size()), events.data(), FALSE, INFINITE);
}

void ScenarioRunner::Do(const QuestionInstruction& question) {
    ConnectionPromptRequest request = question.request;
    request.processId = m_processes.IdOf(request.processId);
    if (const auto verdict = m_service.VerdictOn(request)) {
        m_journal.Event((verdict->isAllowed ? "question-allowed " : "question-denied ") +
                        std::to_string(verdict->ruleId));
        return;
    }
    const std::uint32_t id = m_feeder.QueueQuestion(request);
    m_journal.Event("question-queued " + std::to_string(id));
}

void ScenarioRunner::Do(const NoticeInstruction& notice) {
    m_service.AddNotice(notice.text);
}

void ScenarioRunner::Do(const ProcessInstruction& process) {
    m_service.AddProcess(m_processes.IdOf(process.processId), process.path);
}

void ScenarioRunner::Do(const StartProcessInstruction& process) {
    m_processes.Start(process.number);
    m_journal.Event("process-started " + std::to_string(m_processes.IdOf(process.number)));
}

void ScenarioRunner::Do(const ConnectionInstruction& connection) {
    ConnectionEntry entry = connection.entry;
    entry.processId = m_processes.IdOf(entry.processId);
    m_feeder.AddConnection(entry);
}

void ScenarioRunner::Do(const ConnectionsInstruction& connections) {
    for (std::uint32_t index = 0; index < connections.count; ++index)
        m_feeder.AddConnection(MadeUpConnection(index));
}

void ScenarioRunner::Do(const ListenersInstruction& listeners) {
    for (std::uint32_t index = 0; index < listeners.count; ++index) m_feeder.AddListener(MadeUpListener(index));
}

void ScenarioRunner::Do(const ListenerInstruction& listener) {
    ListenerEntry entry = listener.entry;
    entry.processId = m_processes.IdOf(entry.processId);
    m_feeder.AddListener(entry);
}

void ScenarioRunner::Do(const ClearTablesInstruction&) {
    m_feeder.ClearTables();
}

void ScenarioRunner::Do(const TotalsInstruction& totals) {
    m_feeder.SetTotals(totals.totals);
}

void ScenarioRunner::Do(const RateInstruction& rate) {
    m_feeder.SetRate(rate.inPerSecond, rate.outPerSecond);
}

void ScenarioRunner::Do(const DnsInstruction& dns) {
    m_data.LogName(dns.record);
}

void ScenarioRunner::Do(const MacInstruction& mac) {
    m_data.LogHardwareAddress(mac.record);
}

void ScenarioRunner::Do(const AdviceInstruction& advice) {
    m_data.AddAdvice(advice.record);
}

void ScenarioRunner::Do(const LogInstruction& log) {
    m_data.LogEvents({log.record});
}

void ScenarioRunner::Do(const LogManyInstruction& many) {
    constexpr std::uint32_t kAtOnce = 1000;  // as a service that is busy appends them
    std::vector<TrafficLogRecord> records;
    for (std::uint32_t index = 0; index < many.count && !m_stop.Requested(); ++index) {
        records.push_back(MadeUpEvent(index));
        if (records.size() < kAtOnce && index + 1 < many.count) continue;
        m_data.LogEvents(std::move(records));
        records.clear();
    }
}

void ScenarioRunner::Do(const PacketInstruction& packet) {
    m_data.LogPacket(packet.header, packet.bytes);
}

void ScenarioRunner::Do(const LogDayInstruction& day) {
    m_data.SetLogDay(day.date);
}

void ScenarioRunner::Do(const RuleInstruction& rule) {
    m_data.SetRule(rule.path, rule.action);
}

void ScenarioRunner::UseRules() {
    m_service.LoadRules();
    m_feeder.AskJudgeAgain();
}

void ScenarioRunner::Do(const AdvancedRuleInstruction& rule) {
    m_data.AddAdvancedRules({rule.record});
    UseRules();
}

void ScenarioRunner::Do(const TrustedInstruction& trusted) {
    m_data.AddTrusted({trusted.path});
}

void ScenarioRunner::Do(const SiteInstruction& site) {
    m_data.AddSites({site.name});
}

void ScenarioRunner::Do(const FillInstruction& fill) {
    const auto made = [&fill](auto make) {
        std::vector<decltype(make(0))> records;
        for (std::uint32_t index = 0; index < fill.count; ++index) records.push_back(make(index));
        return records;
    };
    switch (fill.file) {
        case ServiceFile::AdvancedRules:
            m_data.AddAdvancedRules(made(MadeUpRule));
            UseRules();
            break;
        case ServiceFile::Trusted: m_data.AddTrusted(made(MadeUpTrusted)); break;
        case ServiceFile::Sites: m_data.AddSites(made(MadeUpSite)); break;
    }
}

void ScenarioRunner::Do(const SpoilInstruction& spoil) {
    m_data.Spoil(spoil.file, spoil.how);
}

void ScenarioRunner::Do(const RefuseInstruction& refuse) {
    m_service.Refuse(refuse.count);
}

void ScenarioRunner::Do(const OptionInstruction& option) {
    m_data.SetOption(option.id, option.value);
}

void ScenarioRunner::Do(const OptionTextInstruction& option) {
    m_data.SetOptionText(option.id, option.text);
}

void ScenarioRunner::Do(const HostileInstruction& hostile) {
    m_feeder.SetHostile(hostile.order);
}

void ScenarioRunner::Do(const ActivityInstruction& activity) {
    m_caller.Put(activity.request);
}

void ScenarioRunner::Do(const ExitInstruction&) {
    m_stop.Request();
}

}  // namespace brennvar::standin
