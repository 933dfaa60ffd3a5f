// The commands to the service, one sender per command code. Each fills its fields of a zeroed CommandRecord and
// sends it over a connection of its own; there is no answer and no report of failure: what a command did shows when
// the service's files are read again. Texts longer than their field are cut.
//
// A sender blocks its thread while the service is absent (up to 30 waits of 10 s and the pauses between them), so
// the control center calls them on the link thread.
#pragma once

#include <cstddef>
#include <cstdint>
#include <span>
#include <string>
#include <string_view>

#include "base/Ipv4.h"
#include "ipc/CommandRecord.h"
#include "ipc/PipePolicy.h"

namespace brennvar {

class CommandPipe {
public:
    // Both are borrowed and must outlive the pipe.
    CommandPipe(PipeConnector& connector, Clock& clock) : m_connector(connector), m_clock(clock) {}

    // One record as one message; silent when it cannot be delivered.
    void CommandPipeSend(const std::string& pipeName, std::span<const std::byte> record);

    // value: 0 for a settings event, 2 for a blocking or termination.
    void CMD_EVENT_REPORT(std::string_view eventTitle, std::string_view subject, std::uint32_t value,
                          std::string_view detail);
    void CMD_BLOCK_ADDRESS(Ipv4 address);
    void CMD_TERMINATE_PROCESS(std::uint32_t processId);
    void CMD_ADD_ADVANCED_RULE(const AdvancedRuleRecord& rule);
    void CMD_MODIFY_ADVANCED_RULE(std::uint32_t ruleId, const AdvancedRuleRecord& rule);
    void CMD_DELETE_ADVANCED_RULE(std::uint32_t ruleId);
    void CMD_RELOAD_ADVANCED_RULES();
    void CMD_SET_OPTION(std::uint32_t optionId, std::uint32_t value);
    void CMD_SET_OPTION_TEXT(std::uint32_t optionId, std::string_view text);
    void CMD_SET_VALUE_10(std::uint32_t value);
    void CMD_SHUTDOWN_SECOND();
    void CMD_RELOAD_APPLICATION_RULES();
    void CMD_SHUTDOWN_FIRST();
    void CMD_OPTION7_ON();
    void CMD_OPTION7_OFF();
    void CMD_RELOAD_OPTIONS();
    void CMD_RESET_FINGERPRINTS();
    void CMD_SET_SKIN(std::string_view folderName);
    void CMD_SET_LANGUAGE(std::string_view folderName);
    void CMD_SEND_TEST_MAIL();
    void CMD_RELOAD_SIGNATURES();
    void CMD_SET_APPLICATION_RULE(std::string_view path, RuleCommandAction action);
    // date: "yyyymmdd"; value: 1 when the dialog ended with its other result, 0 for OK.
    void CMD_DELETE_LOGS(std::string_view date, std::uint32_t value);
    void CMD_SET_RUN_STATE(std::uint32_t value);
    void CMD_SET_VALUE_25(std::uint32_t value);
    void CMD_ALLOW_PROCESS_TEXT(std::string_view path);
    void CMD_RESET_TRUSTED();
    void CMD_SET_REGISTRY_VALUE(std::string_view valueName, std::string_view valueData, std::string_view keyPath);
    void CMD_RESET();
    void CMD_MOVE_ADVANCED_RULE_UP(std::uint32_t ruleId);
    void CMD_MOVE_ADVANCED_RULE_DOWN(std::uint32_t ruleId);

private:
    void Send(const CommandRecord& record) { CommandPipeSend(kCommandPipeName, RecordBytes(record)); }
    void SendCode(CommandCode code);
    void SendValue(CommandCode code, std::uint32_t value);
    void SendRuleId(CommandCode code, std::uint32_t ruleId);
    void SendText(CommandCode code, std::string_view text);

    PipeConnector& m_connector;
    Clock& m_clock;
};

}  // namespace brennvar
