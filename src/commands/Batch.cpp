#include "commands/Batch.h"

#include <algorithm>
#include <array>
#include <cstdio>

namespace brennvar {
namespace {

std::string DateText(const LocalDate& day) {
    std::array<char, 40> text{};  // three numbers of any size
    (void)std::snprintf(text.data(), text.size(), "%04d%02d%02d", day.year, day.month, day.day);
    return text.data();
}

}  // namespace

void Batch::SendTo(CommandPipe& pipe, const Language& language) const {
    for (const CommandStep& step : m_info->steps) {
        if (step.onlyAfterChangeOf == OptionId{} || Changes(step.onlyAfterChangeOf)) SendStep(step, pipe);
    }
    if (m_info->event.number == 0) return;
    const std::string subject =
        m_info->subject.number == 0 ? m_arguments.subject : language.GetText(m_info->subject);
    pipe.CMD_EVENT_REPORT(language.GetText(m_info->event), subject, static_cast<std::uint32_t>(m_info->severity),
                          m_arguments.detail);
}

void Batch::SendStep(const CommandStep& step, CommandPipe& pipe) const {
    const std::uint32_t value = step.value.value_or(m_arguments.value);
    switch (step.code) {
        case CommandCode::BlockAddress: pipe.CMD_BLOCK_ADDRESS(m_arguments.address); break;
        case CommandCode::TerminateProcess: pipe.CMD_TERMINATE_PROCESS(m_arguments.processId); break;
        case CommandCode::AddAdvancedRule:
            for (const AdvancedRuleRecord& rule : m_arguments.rules) pipe.CMD_ADD_ADVANCED_RULE(rule);
            break;
        case CommandCode::ModifyAdvancedRule:
            for (const AdvancedRuleRecord& rule : m_arguments.rules) pipe.CMD_MODIFY_ADVANCED_RULE(rule.id, rule);
            break;
        case CommandCode::DeleteAdvancedRule:
            for (const std::uint32_t id : m_arguments.ruleIds) pipe.CMD_DELETE_ADVANCED_RULE(id);
            break;
        case CommandCode::MoveAdvancedRuleUp: SendMoves(pipe, true); break;
        case CommandCode::MoveAdvancedRuleDown: SendMoves(pipe, false); break;
        case CommandCode::ReloadAdvancedRules: pipe.CMD_RELOAD_ADVANCED_RULES(); break;
        case CommandCode::SetOption: SendOptions(pipe); break;
        case CommandCode::SetOptionText:
            pipe.CMD_SET_OPTION_TEXT(static_cast<std::uint32_t>(OptionId::Password), m_arguments.password.View());
            break;
        case CommandCode::SetValue10: pipe.CMD_SET_VALUE_10(value); break;
        case CommandCode::ShutdownSecond: pipe.CMD_SHUTDOWN_SECOND(); break;
        case CommandCode::ReloadApplicationRules: pipe.CMD_RELOAD_APPLICATION_RULES(); break;
        case CommandCode::ShutdownFirst: pipe.CMD_SHUTDOWN_FIRST(); break;
        case CommandCode::Option7On: pipe.CMD_OPTION7_ON(); break;
        case CommandCode::Option7Off: pipe.CMD_OPTION7_OFF(); break;
        case CommandCode::ReloadOptions: pipe.CMD_RELOAD_OPTIONS(); break;
        case CommandCode::ResetFingerprints: pipe.CMD_RESET_FINGERPRINTS(); break;
        case CommandCode::SetSkin: pipe.CMD_SET_SKIN(m_arguments.resources.skin); break;
        case CommandCode::SetLanguage: pipe.CMD_SET_LANGUAGE(m_arguments.resources.language); break;
        case CommandCode::SendTestMail: pipe.CMD_SEND_TEST_MAIL(); break;
        case CommandCode::ReloadSignatures: pipe.CMD_RELOAD_SIGNATURES(); break;
        case CommandCode::SetApplicationRule:
            for (const ApplicationChange& change : m_arguments.applications) {
                pipe.CMD_SET_APPLICATION_RULE(change.path, change.action);
            }
            break;
        case CommandCode::DeleteLogs:
            pipe.CMD_DELETE_LOGS(DateText(m_arguments.day), m_arguments.olderToo ? 1 : 0);
            break;
        case CommandCode::SetRunState: pipe.CMD_SET_RUN_STATE(value); break;
        case CommandCode::SetValue25: pipe.CMD_SET_VALUE_25(value); break;
        case CommandCode::AllowProcessText: pipe.CMD_ALLOW_PROCESS_TEXT(m_arguments.path); break;
        case CommandCode::ResetTrusted: pipe.CMD_RESET_TRUSTED(); break;
        case CommandCode::Reset: pipe.CMD_RESET(); break;
        default: break;  // stands in no row of the table
    }
}

void Batch::SendMoves(CommandPipe& pipe, bool isUp) const {
    for (const RuleMove& move : m_arguments.moves) {
        for (int place = move.places; isUp && place < 0; ++place) pipe.CMD_MOVE_ADVANCED_RULE_UP(move.id);
        for (int place = move.places; !isUp && place > 0; --place) pipe.CMD_MOVE_ADVANCED_RULE_DOWN(move.id);
    }
}

void Batch::SendOptions(CommandPipe& pipe) const {
    for (const OptionSetting& option : m_arguments.options) {
        const auto id = static_cast<std::uint32_t>(option.id);
        const OptionInfo* const info = FindOption(id);
        if (info && info->IsText()) {
            pipe.CMD_SET_OPTION_TEXT(id, option.text.Text());
        } else {
            pipe.CMD_SET_OPTION(id, option.number);
        }
    }
}

bool Batch::Changes(OptionId id) const {
    return std::any_of(m_arguments.options.begin(), m_arguments.options.end(),
                       [id](const OptionSetting& option) { return option.id == id && option.isChanged; });
}

Batch OptionsBatch(OptionGroup group, const OptionValues& wanted, const OptionValues& stored) {
    CommandArguments arguments;
    for (const OptionInfo& option : OptionTable()) {
        if (option.group != group) continue;
        arguments.options.push_back({.id = option.id,
                                     .number = wanted.Number(option.id),
                                     .text = wanted.TextOf(option.id),
                                     .isChanged = !wanted.SameAs(stored, option.id)});
    }
    return Batch(CommandOf(group), std::move(arguments));
}

std::string BlockedText(const Language& language, Ipv4 address, std::uint32_t seconds) {
    return language.GetText(496, "IP:") + " " + FormatIpv4(address) + ". " +
           language.GetText(499, "Blocking IP address for") + " " + std::to_string(seconds) + " " +
           language.GetText(500, "seconds");
}

Batch BlockAddressBatch(const Language& language, Ipv4 address, std::uint32_t seconds) {
    return Batch(
        UserCommand::BlockAddress,
        {.address = address, .subject = FormatIpv4(address), .detail = BlockedText(language, address, seconds)});
}

}  // namespace brennvar
