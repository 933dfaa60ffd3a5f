#include "ipc/CommandPipe.h"

#include "base/Wipe.h"
#include "ipc/PipeWriteOnce.h"

namespace brennvar {

void CommandPipe::CommandPipeSend(const std::string& pipeName, std::span<const std::byte> record) {
    // Silent by design: the caller reads the service's files again and sees whether the command took effect.
    (void)PipeWriteOnce(m_connector, m_clock, pipeName, record, kCommandPipePolicy);
}

void CommandPipe::SendCode(CommandCode code) {
    CommandRecord record{};
    record.code = code;
    Send(record);
}

void CommandPipe::SendValue(CommandCode code, std::uint32_t value) {
    CommandRecord record{};
    record.code = code;
    record.value = value;
    Send(record);
}

void CommandPipe::SendRuleId(CommandCode code, std::uint32_t ruleId) {
    CommandRecord record{};
    record.code = code;
    record.ruleId = ruleId;
    Send(record);
}

void CommandPipe::SendText(CommandCode code, std::string_view text) {
    CommandRecord record{};
    record.code = code;
    PutText(record.optionText, text);
    Send(record);
}

void CommandPipe::CMD_EVENT_REPORT(std::string_view eventTitle, std::string_view subject, std::uint32_t value,
                                   std::string_view detail) {
    CommandRecord record{};
    record.code = CommandCode::EventReport;
    PutText(record.eventTitle, eventTitle);
    PutText(record.subject, subject);
    record.value = value;
    PutText(record.detail, detail);
    Send(record);
}

void CommandPipe::CMD_BLOCK_ADDRESS(Ipv4 address) {
    CommandRecord record{};
    record.code = CommandCode::BlockAddress;
    record.address = address;
    Send(record);
}

void CommandPipe::CMD_TERMINATE_PROCESS(std::uint32_t processId) {
    CommandRecord record{};
    record.code = CommandCode::TerminateProcess;
    record.processId = processId;
    Send(record);
}

void CommandPipe::CMD_ADD_ADVANCED_RULE(const AdvancedRuleRecord& rule) {
    CommandRecord record{};
    record.code = CommandCode::AddAdvancedRule;
    record.advancedRule = rule;
    Send(record);
}

void CommandPipe::CMD_MODIFY_ADVANCED_RULE(std::uint32_t ruleId, const AdvancedRuleRecord& rule) {
    CommandRecord record{};
    record.code = CommandCode::ModifyAdvancedRule;
    record.ruleId = ruleId;
    record.advancedRule = rule;
    Send(record);
}

void CommandPipe::CMD_SET_OPTION(std::uint32_t optionId, std::uint32_t value) {
    CommandRecord record{};
    record.code = CommandCode::SetOption;
    record.optionId = optionId;
    record.optionValue = value;
    Send(record);
}

void CommandPipe::CMD_SET_OPTION_TEXT(std::uint32_t optionId, std::string_view text) {
    CommandRecord record{};
    record.code = CommandCode::SetOptionText;
    record.optionId = optionId;
    PutText(record.optionText, text);
    Send(record);
    WipeRecord(record);  // it may have been a password
}

void CommandPipe::CMD_SET_APPLICATION_RULE(std::string_view path, RuleCommandAction action) {
    CommandRecord record{};
    record.code = CommandCode::SetApplicationRule;
    PutText(record.subject, path);
    record.value = static_cast<std::uint32_t>(action);
    Send(record);
}

void CommandPipe::CMD_DELETE_LOGS(std::string_view date, std::uint32_t value) {
    CommandRecord record{};
    record.code = CommandCode::DeleteLogs;
    PutText(record.subject, date);
    record.value = value;
    Send(record);
}

void CommandPipe::CMD_SET_REGISTRY_VALUE(std::string_view valueName, std::string_view valueData,
                                         std::string_view keyPath) {
    CommandRecord record{};
    record.code = CommandCode::SetRegistryValue;
    PutText(record.eventTitle, valueName);
    PutText(record.subject, valueData);
    PutText(record.detail, keyPath);
    Send(record);
}

void CommandPipe::CMD_DELETE_ADVANCED_RULE(std::uint32_t ruleId) {
    SendRuleId(CommandCode::DeleteAdvancedRule, ruleId);
}
void CommandPipe::CMD_MOVE_ADVANCED_RULE_UP(std::uint32_t ruleId) {
    SendRuleId(CommandCode::MoveAdvancedRuleUp, ruleId);
}
void CommandPipe::CMD_MOVE_ADVANCED_RULE_DOWN(std::uint32_t ruleId) {
    SendRuleId(CommandCode::MoveAdvancedRuleDown, ruleId);
}

void CommandPipe::CMD_SET_VALUE_10(std::uint32_t value) {
    SendValue(CommandCode::SetValue10, value);
}
void CommandPipe::CMD_SET_RUN_STATE(std::uint32_t value) {
    SendValue(CommandCode::SetRunState, value);
}
void CommandPipe::CMD_SET_VALUE_25(std::uint32_t value) {
    SendValue(CommandCode::SetValue25, value);
}

void CommandPipe::CMD_SET_SKIN(std::string_view folderName) {
    SendText(CommandCode::SetSkin, folderName);
}
void CommandPipe::CMD_SET_LANGUAGE(std::string_view folderName) {
    SendText(CommandCode::SetLanguage, folderName);
}
void CommandPipe::CMD_ALLOW_PROCESS_TEXT(std::string_view path) {
    SendText(CommandCode::AllowProcessText, path);
}

void CommandPipe::CMD_RELOAD_ADVANCED_RULES() {
    SendCode(CommandCode::ReloadAdvancedRules);
}
void CommandPipe::CMD_SHUTDOWN_SECOND() {
    SendCode(CommandCode::ShutdownSecond);
}
void CommandPipe::CMD_RELOAD_APPLICATION_RULES() {
    SendCode(CommandCode::ReloadApplicationRules);
}
void CommandPipe::CMD_SHUTDOWN_FIRST() {
    SendCode(CommandCode::ShutdownFirst);
}
void CommandPipe::CMD_OPTION7_ON() {
    SendCode(CommandCode::Option7On);
}
void CommandPipe::CMD_OPTION7_OFF() {
    SendCode(CommandCode::Option7Off);
}
void CommandPipe::CMD_RELOAD_OPTIONS() {
    SendCode(CommandCode::ReloadOptions);
}
void CommandPipe::CMD_RESET_FINGERPRINTS() {
    SendCode(CommandCode::ResetFingerprints);
}
void CommandPipe::CMD_SEND_TEST_MAIL() {
    SendCode(CommandCode::SendTestMail);
}
void CommandPipe::CMD_RELOAD_SIGNATURES() {
    SendCode(CommandCode::ReloadSignatures);
}
void CommandPipe::CMD_RESET_TRUSTED() {
    SendCode(CommandCode::ResetTrusted);
}
void CommandPipe::CMD_RESET() {
    SendCode(CommandCode::Reset);
}

}  // namespace brennvar
