#include "commands/FirewallCommands.h"

#include <array>
#include <cstdio>

namespace brennvar {
namespace {

// Severities in the service's log.
constexpr std::uint32_t kSettingsEvent = 0;
constexpr std::uint32_t kBlockingEvent = 2;

// The values of command 25.
constexpr std::uint32_t kNetworkOff = 0;
constexpr std::uint32_t kNetworkOn = 1;

}  // namespace

void ResetTrusted(CommandPipe& pipe, const Language& language) {
    pipe.CMD_RESET_TRUSTED();
    pipe.CMD_EVENT_REPORT(language.GetText(580, "Reset Trusted"), "", kSettingsEvent, "");
}

void ResetFingerprints(CommandPipe& pipe, const Language& language, bool isNetworkOn) {
    pipe.CMD_RESET_FINGERPRINTS();
    EnableNetwork(pipe, isNetworkOn);
    pipe.CMD_EVENT_REPORT(language.GetText(199, "Fingerprints reset"), "", kSettingsEvent, "");
}

void ResetFirewall(CommandPipe& pipe, const Language& language) {
    pipe.CMD_RESET();
    pipe.CMD_EVENT_REPORT(language.GetText(195, "Options changed"), language.GetText(610, "Reset"), kSettingsEvent,
                          "");
}

void SendTestMail(CommandPipe& pipe, const Language& language) {
    pipe.CMD_SEND_TEST_MAIL();
    pipe.CMD_EVENT_REPORT(language.GetText(200, "E-mail notification test"), "", kSettingsEvent, "");
}

void TerminateProcess(CommandPipe& pipe, const Language& language, std::uint32_t processId, std::string_view path) {
    pipe.CMD_TERMINATE_PROCESS(processId);
    pipe.CMD_EVENT_REPORT(language.GetText(554, "Process termination"), path, kBlockingEvent, "");
}

void BlockAddress(CommandPipe& pipe, const Language& language, Ipv4 address, std::uint32_t seconds) {
    pipe.CMD_BLOCK_ADDRESS(address);
    pipe.CMD_EVENT_REPORT(language.GetText(553, "Blocked connection"), FormatIpv4(address), kBlockingEvent,
                          BlockingText(language, address, seconds));
}

std::string BlockingText(const Language& language, Ipv4 address, std::uint32_t seconds) {
    std::string text = language.GetText(496, "IP:");
    text += ' ';
    text += FormatIpv4(address);
    text += ". ";
    text += language.GetText(499, "Blocking IP address for");
    text += ' ';
    AppendNumber(text, seconds);
    text += ' ';
    text += language.GetText(500, "seconds");
    return text;
}

void UpdateSignatures(CommandPipe& pipe) {
    pipe.CMD_RELOAD_SIGNATURES();
}

void EnableNetwork(CommandPipe& pipe, bool isEnabled) {
    pipe.CMD_SET_VALUE_25(isEnabled ? kNetworkOn : kNetworkOff);
}

void DeleteLogs(CommandPipe& pipe, const LocalDate& day, bool olderToo) {
    std::array<char, 40> date{};  // three numbers of any size
    (void)std::snprintf(date.data(), date.size(), "%04d%02d%02d", day.year, day.month, day.day);
    pipe.CMD_DELETE_LOGS(date.data(), olderToo ? 1 : 0);
}

}  // namespace brennvar
