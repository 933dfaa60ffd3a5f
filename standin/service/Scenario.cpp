#include "service/Scenario.h"

#include <algorithm>
#include <utility>

#include "service/ScenarioWords.h"

namespace brennvar::standin {
namespace {

Instruction ReadActivity(Words& words) {
    constexpr std::pair<std::string_view, std::uint32_t> kKinds[] = {{"write", 1},   {"own", 2},  {"browser", 3},
                                                                     {"appinit", 4}, {"show", 5}, {"leave", 6}};
    ActivityInstruction activity{};
    const std::string_view kind = words.Word();
    const auto named = Choose(kKinds, kind);
    activity.request.kind = static_cast<ActivityKind>(words.Take(named ? named : ParseNumber32(kind)));
    activity.request.processId = words.Number();
    const std::string_view paths = words.OptionalText(sizeof(ActivityQueueMessage));
    const std::size_t bar = std::min(paths.find('|'), paths.size());
    PutText(activity.request.actingPath, TrimBlanks(paths.substr(0, bar)));
    PutText(activity.request.targetPath, TrimBlanks(paths.substr(std::min(bar + 1, paths.size()))));
    return activity;
}

Instruction ReadWaitForRecords(Words& words) {
    constexpr std::pair<std::string_view, Channel> kChannels[] = {
        {"COMMAND", Channel::Command}, {"PID", Channel::Pid},         {"TRAY", Channel::Tray},
        {"QUEUE", Channel::Queue},     {"CONFIRM", Channel::Confirm}, {"ACTIVITY", Channel::Activity}};
    WaitForRecordsInstruction wait{};
    wait.channel = words.Take(Choose(kChannels, words.Word()));
    wait.count = words.Number();
    return wait;
}

Instruction ReadInstruction(Words& words) {
    const std::string_view name = words.Word();
    if (name == "wait") return WaitInstruction{words.Number()};
    if (name == "wait-for-answers") return WaitForRecordsInstruction{Channel::Confirm, words.Number()};
    if (name == "wait-for-records") return ReadWaitForRecords(words);
    if (name == "notice") return NoticeInstruction{std::string(words.Text(sizeof(TrayTextAnswer::text)))};
    if (name == "process") {
        const std::uint32_t processId = words.ProcessId();
        return ProcessInstruction{processId, std::string(words.Text(sizeof(PidResolveAnswer::path)))};
    }
    if (name == "start-process") return StartProcessInstruction{words.NewProcess()};
    if (name == "activity") return ReadActivity(words);
    if (name == "exit") return ExitInstruction{};
    for (const auto read : {ReadTrafficInstruction, ReadLogInstruction, ReadFileInstruction}) {
        if (auto instruction = read(name, words)) return *std::move(instruction);
    }
    words.Reject();
    return ExitInstruction{};
}

void ReadLine(std::string_view line, std::size_t number, std::vector<std::string>& names, Scenario& scenario) {
    const std::string_view trimmed = TrimBlanks(line);
    if (trimmed.empty() || trimmed.front() == '#') return;
    Words words(trimmed, names);
    Instruction instruction = ReadInstruction(words);
    if (!words.AllGood()) {
        scenario.faults.push_back({number, std::string(trimmed)});
        return;
    }
    scenario.scriptsTables |= std::holds_alternative<ConnectionInstruction>(instruction) ||
                              std::holds_alternative<ConnectionsInstruction>(instruction) ||
                              std::holds_alternative<ListenersInstruction>(instruction) ||
                              std::holds_alternative<ListenerInstruction>(instruction) ||
                              std::holds_alternative<ClearTablesInstruction>(instruction);
    scenario.scriptsTotals |= std::holds_alternative<TotalsInstruction>(instruction) ||
                              std::holds_alternative<RateInstruction>(instruction);
    scenario.instructions.push_back(std::move(instruction));
}

}  // namespace

Scenario ParseScenario(std::string_view text) {
    Scenario scenario;
    std::vector<std::string> names;
    for (std::size_t number = 1; !text.empty(); ++number) {
        const std::size_t end = std::min(text.find('\n'), text.size());
        ReadLine(text.substr(0, end), number, names, scenario);
        text.remove_prefix(std::min(end + 1, text.size()));
    }
    return scenario;
}

}  // namespace brennvar::standin
