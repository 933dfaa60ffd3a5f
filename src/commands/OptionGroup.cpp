#include "commands/OptionGroup.h"

#include <algorithm>
#include <array>
#include <cstddef>

namespace brennvar {
namespace {

constexpr OptionId kGeneral[] = {OptionId::ShowSecurityMessages, OptionId::ShowBlockedMessages,
                                 OptionId::LoadAtStartup};
constexpr OptionFollowUp kAfterGeneral[] = {{&CommandPipe::CMD_OPTION7_ON, OptionId::LoadAtStartup},
                                            {&CommandPipe::CMD_OPTION7_OFF}};

constexpr OptionId kEnhancements[] = {OptionId::IntrusionPrevention,
                                      OptionId::NetBiosProtection,
                                      OptionId::BlockPlugAndPlay,
                                      OptionId::MasqueradeFingerprint,
                                      OptionId::FingerprintAuthentication,
                                      OptionId::AntiMacSpoofing,
                                      OptionId::AntiDnsSpoofing,
                                      OptionId::AntiIpSpoofing,
                                      OptionId::BlockAttacker,
                                      OptionId::BlockSeconds,
                                      OptionId::BlockFragments,
                                      OptionId::DetectPortScan,
                                      OptionId::DetectDos,
                                      OptionId::LocalTraffic,
                                      OptionId::TimeSynchronisation,
                                      OptionId::Dhcp,
                                      OptionId::Dns,
                                      OptionId::ProcessDefense,
                                      OptionId::AppInitProtection};
constexpr OptionFollowUp kAfterEnhancements[] = {{&CommandPipe::CMD_RELOAD_OPTIONS},
                                                 {&CommandPipe::CMD_RELOAD_ADVANCED_RULES}};

constexpr OptionId kLogging[] = {OptionId::SecurityLog,
                                 OptionId::SystemLog,
                                 OptionId::TrafficLog,
                                 OptionId::PacketLog,
                                 OptionId::TrafficLogKilobytes,
                                 OptionId::PacketLogKilobytes,
                                 OptionId::LogDays,
                                 OptionId::MailNotification,
                                 OptionId::MailFrom,
                                 OptionId::MailTo,
                                 OptionId::MailCc,
                                 OptionId::MailSubject,
                                 OptionId::MailServer,
                                 OptionId::MailLogin,
                                 OptionId::MailPassword};

constexpr OptionId kMiscellaneous[] = {
    OptionId::NotifyNewVersion, OptionId::UpdateSignatures, OptionId::ProxyHost, OptionId::ProxyPort,
    OptionId::ProxyLogin,       OptionId::ProxyPassword,    OptionId::ProxyType};

constexpr auto kFirstIcmp = static_cast<std::uint32_t>(OptionId::IcmpIncomingFirst);
constexpr auto kLastIcmp = static_cast<std::uint32_t>(OptionId::IcmpOutgoingLast);
constexpr auto kIcmp = [] {
    std::array<OptionId, kLastIcmp - kFirstIcmp + 1> options{};
    for (std::size_t i = 0; i < options.size(); ++i) options[i] = static_cast<OptionId>(kFirstIcmp + i);
    return options;
}();
constexpr OptionFollowUp kAfterIcmp[] = {{&CommandPipe::CMD_RELOAD_OPTIONS}};

constexpr OptionId kFileSharing[] = {OptionId::BlockFileSharing, OptionId::BlockNetworkNeighborhood};
constexpr OptionFollowUp kAfterFileSharing[] = {{&CommandPipe::CMD_RELOAD_ADVANCED_RULES}};

constexpr std::uint32_t kSeverityNotice = 0;

}  // namespace

constexpr OptionGroup kGeneralOptions = {Text{196, "General"}, kGeneral, kAfterGeneral};
// Spelled so in every language file of old, and in the service's log.
constexpr OptionGroup kEnhancementOptions = {Text{198, "Enhacements"}, kEnhancements, kAfterEnhancements};
constexpr OptionGroup kLoggingOptions = {Text{201, "Logging"}, kLogging, {}};
constexpr OptionGroup kMiscellaneousOptions = {Text{204, "Miscellaneous"}, kMiscellaneous, {}};
constexpr OptionGroup kIcmpOptions = {Text{1200, "ICMP"}, kIcmp, kAfterIcmp};
constexpr OptionGroup kFileSharingOptions = {Text{1201, "File sharing"}, kFileSharing, kAfterFileSharing};

void SendOptionGroup(const OptionGroup& group, const OptionValues& wanted, const OptionValues& before,
                     const OptionEvent& event, CommandPipe& pipe) {
    for (const OptionId id : group.options) {
        const OptionInfo* const info = FindOption(static_cast<std::uint32_t>(id));
        if (info->kind == OptionKind::Text) {
            pipe.CMD_SET_OPTION_TEXT(static_cast<std::uint32_t>(id), wanted.TextOf(id));
        } else {
            pipe.CMD_SET_OPTION(static_cast<std::uint32_t>(id), wanted.Number(id));
        }
    }
    pipe.CMD_EVENT_REPORT(event.title, event.subject, kSeverityNotice, "");
    for (const OptionFollowUp& followUp : group.followUps) {
        const OptionId condition = followUp.onlyAfterChangeOf;
        if (condition == OptionId{} || !wanted.SameAs(before, condition)) (pipe.*followUp.send)();
    }
}

bool GroupIsSame(const OptionGroup& group, const OptionValues& left, const OptionValues& right) {
    return std::all_of(group.options.begin(), group.options.end(),
                       [&](OptionId id) { return left.SameAs(right, id); });
}

}  // namespace brennvar
