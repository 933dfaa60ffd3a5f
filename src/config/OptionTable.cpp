#include "config/OptionTable.h"

#include <algorithm>
#include <iterator>

namespace brennvar {
namespace {

// The identifier of the index-th ICMP type in one of the two blocks.
constexpr OptionId Icmp(OptionId first, std::uint32_t index) {
    return static_cast<OptionId>(static_cast<std::uint32_t>(first) + index);
}

// By default the machine may ping out and receive the answers and error reports, and nothing else of ICMP.
constexpr OptionInfo kOptions[] = {
    {OptionId::ProtectionMode, OptionKind::Number, OptionGroup::None, 0, Text{}},
    {OptionId::BlockFileSharing, OptionKind::Flag, OptionGroup::FileSharing, 0,
     Text{371, "Disable sharing of my files and printers"}},
    {OptionId::BlockNetworkNeighborhood, OptionKind::Flag, OptionGroup::FileSharing, 0,
     Text{372, "Disable Network Neighborhood browsing"}},
    {OptionId::Password, OptionKind::Text, OptionGroup::None, 0, Text{}},
    {OptionId::ShowSecurityMessages, OptionKind::Flag, OptionGroup::General, 1,
     Text{373, "Show security notification messages in the system tray"}},
    {OptionId::ShowBlockedMessages, OptionKind::Flag, OptionGroup::General, 0,
     Text{504, "Show blocked applications messages in the system tray"}},
    {OptionId::LoadAtStartup, OptionKind::Flag, OptionGroup::General, 1,
     Text{374, "Automatically load firewall at Windows startup"}},
    {OptionId::IntrusionPrevention, OptionKind::Flag, OptionGroup::Enhancements, 1,
     Text{376, "Enable Intrusion Prevention System"}},
    {OptionId::NetBiosProtection, OptionKind::Flag, OptionGroup::Enhancements, 1,
     Text{377, "Enable NetBIOS Protection"}},
    {OptionId::BlockPlugAndPlay, OptionKind::Flag, OptionGroup::Enhancements, 1,
     Text{379, "Block Universal Plug and Play traffic"}},
    {OptionId::MasqueradeFingerprint, OptionKind::Flag, OptionGroup::Enhancements, 1,
     Text{380, "Enable OS fingerprint masquerading"}},
    {OptionId::FingerprintAuthentication, OptionKind::Flag, OptionGroup::Enhancements, 1,
     Text{381, "Enable fingerprint authentication"}},
    {OptionId::AntiMacSpoofing, OptionKind::Flag, OptionGroup::Enhancements, 1,
     Text{382, "Enable anti-MAC spoofing"}},
    {OptionId::AntiDnsSpoofing, OptionKind::Flag, OptionGroup::Enhancements, 1,
     Text{383, "Enable anti-DNS spoofing"}},
    {OptionId::AntiIpSpoofing, OptionKind::Flag, OptionGroup::Enhancements, 0,
     Text{384, "Enable anti-IP spoofing"}},
    {OptionId::BlockAttacker, OptionKind::Flag, OptionGroup::Enhancements, 1,
     Text{385, "Automatically block attacker for:"}},
    {OptionId::BlockSeconds, OptionKind::Number, OptionGroup::Enhancements, 600, Text{346, "second(s)"}},
    {OptionId::BlockFragments, OptionKind::Flag, OptionGroup::Enhancements, 0,
     Text{558, "Block fragmented packets"}},
    {OptionId::DetectPortScan, OptionKind::Flag, OptionGroup::Enhancements, 1,
     Text{386, "Enable portscan detection"}},
    {OptionId::DetectDos, OptionKind::Flag, OptionGroup::Enhancements, 1, Text{387, "Enable DoS detection"}},
    {OptionId::LocalTraffic, OptionKind::Flag, OptionGroup::Enhancements, 1,
     Text{388, "Enable local network traffic"}},
    {OptionId::TimeSynchronisation, OptionKind::Flag, OptionGroup::Enhancements, 1,
     Text{389, "Enable time synchronisation"}},
    {OptionId::Dhcp, OptionKind::Flag, OptionGroup::Enhancements, 1, Text{390, "Enable DHCP"}},
    {OptionId::Dns, OptionKind::Flag, OptionGroup::Enhancements, 1, Text{391, "Enable DNS"}},
    {OptionId::ProcessDefense, OptionKind::Flag, OptionGroup::Enhancements, 1,
     Text{579, "Enable Process Defense System"}},
    {OptionId::SecurityLog, OptionKind::Flag, OptionGroup::Logging, 1, Text{393, "Enable Security Log"}},
    {OptionId::SystemLog, OptionKind::Flag, OptionGroup::Logging, 1, Text{394, "Enable System Log"}},
    {OptionId::TrafficLog, OptionKind::Flag, OptionGroup::Logging, 1, Text{395, "Enable Traffic Log"}},
    {OptionId::PacketLog, OptionKind::Flag, OptionGroup::Logging, 0, Text{396, "Enable Packet Log"}},
    {OptionId::TrafficLogKilobytes, OptionKind::Number, OptionGroup::Logging, 4096,
     Text{348, "Maximum traffic log size (KB):"}},
    {OptionId::PacketLogKilobytes, OptionKind::Number, OptionGroup::Logging, 10240,
     Text{349, "Maximum packet log size (KB):"}},
    {OptionId::LogDays, OptionKind::Number, OptionGroup::Logging, 30,
     Text{350, "Delete old log files after (days):"}},
    {OptionId::MailNotification, OptionKind::Flag, OptionGroup::Logging, 0, Text{400, "Enable Notification"}},
    {OptionId::MailFrom, OptionKind::Text, OptionGroup::Logging, 0, Text{352, "From:"}},
    {OptionId::MailTo, OptionKind::Text, OptionGroup::Logging, 0, Text{353, "To:"}},
    {OptionId::MailCc, OptionKind::Text, OptionGroup::Logging, 0, Text{354, "Cc:"}},
    {OptionId::MailSubject, OptionKind::Text, OptionGroup::Logging, 0, Text{355, "Subject:"}},
    {OptionId::MailServer, OptionKind::Text, OptionGroup::Logging, 0, Text{356, "Server:"}},
    {OptionId::MailLogin, OptionKind::Text, OptionGroup::Logging, 0, Text{357, "Login:"}},
    {OptionId::MailPassword, OptionKind::Text, OptionGroup::Logging, 0, Text{358, "Password:"}},
    {Icmp(OptionId::IcmpIncomingFirst, 0), OptionKind::Flag, OptionGroup::Icmp, 1, Text{1100, "(0) Echo Reply"}},
    {Icmp(OptionId::IcmpIncomingFirst, 1), OptionKind::Flag, OptionGroup::Icmp, 1,
     Text{1101, "(3) Dest. Unreachable"}},
    {Icmp(OptionId::IcmpIncomingFirst, 2), OptionKind::Flag, OptionGroup::Icmp, 0, Text{1102, "(4) Source Quench"}},
    {Icmp(OptionId::IcmpIncomingFirst, 3), OptionKind::Flag, OptionGroup::Icmp, 0, Text{1103, "(5) Redirect"}},
    {Icmp(OptionId::IcmpIncomingFirst, 4), OptionKind::Flag, OptionGroup::Icmp, 0, Text{1104, "(8) Echo"}},
    {Icmp(OptionId::IcmpIncomingFirst, 5), OptionKind::Flag, OptionGroup::Icmp, 1,
     Text{1105, "(11) Time Exceeded"}},
    {Icmp(OptionId::IcmpIncomingFirst, 6), OptionKind::Flag, OptionGroup::Icmp, 0,
     Text{1106, "(12) Param. Problem"}},
    {Icmp(OptionId::IcmpIncomingFirst, 7), OptionKind::Flag, OptionGroup::Icmp, 0, Text{1107, "(13) Timestamp"}},
    {Icmp(OptionId::IcmpIncomingFirst, 8), OptionKind::Flag, OptionGroup::Icmp, 0,
     Text{1108, "(14) Timestamp Reply"}},
    {Icmp(OptionId::IcmpIncomingFirst, 9), OptionKind::Flag, OptionGroup::Icmp, 0,
     Text{1109, "(17) Address Mask Rq."}},
    {Icmp(OptionId::IcmpIncomingFirst, 10), OptionKind::Flag, OptionGroup::Icmp, 0,
     Text{1110, "(18) Address Mask Rp."}},
    {Icmp(OptionId::IcmpOutgoingFirst, 0), OptionKind::Flag, OptionGroup::Icmp, 0, Text{1100, "(0) Echo Reply"}},
    {Icmp(OptionId::IcmpOutgoingFirst, 1), OptionKind::Flag, OptionGroup::Icmp, 0,
     Text{1101, "(3) Dest. Unreachable"}},
    {Icmp(OptionId::IcmpOutgoingFirst, 2), OptionKind::Flag, OptionGroup::Icmp, 0, Text{1102, "(4) Source Quench"}},
    {Icmp(OptionId::IcmpOutgoingFirst, 3), OptionKind::Flag, OptionGroup::Icmp, 0, Text{1103, "(5) Redirect"}},
    {Icmp(OptionId::IcmpOutgoingFirst, 4), OptionKind::Flag, OptionGroup::Icmp, 1, Text{1104, "(8) Echo"}},
    {Icmp(OptionId::IcmpOutgoingFirst, 5), OptionKind::Flag, OptionGroup::Icmp, 0,
     Text{1105, "(11) Time Exceeded"}},
    {Icmp(OptionId::IcmpOutgoingFirst, 6), OptionKind::Flag, OptionGroup::Icmp, 0,
     Text{1106, "(12) Param. Problem"}},
    {Icmp(OptionId::IcmpOutgoingFirst, 7), OptionKind::Flag, OptionGroup::Icmp, 0, Text{1107, "(13) Timestamp"}},
    {Icmp(OptionId::IcmpOutgoingFirst, 8), OptionKind::Flag, OptionGroup::Icmp, 0,
     Text{1108, "(14) Timestamp Reply"}},
    {Icmp(OptionId::IcmpOutgoingFirst, 9), OptionKind::Flag, OptionGroup::Icmp, 0,
     Text{1109, "(17) Address Mask Rq."}},
    {Icmp(OptionId::IcmpOutgoingFirst, 10), OptionKind::Flag, OptionGroup::Icmp, 0,
     Text{1110, "(18) Address Mask Rp."}},
    {OptionId::NotifyNewVersion, OptionKind::Flag, OptionGroup::Miscellaneous, 1,
     Text{402, "Notify me about newer version"}},
    {OptionId::UpdateSignatures, OptionKind::Flag, OptionGroup::Miscellaneous, 1,
     Text{403, "Automatically update signatures"}},
    {OptionId::ProxyHost, OptionKind::Text, OptionGroup::Miscellaneous, 0, Text{1111, "Host:"}},
    {OptionId::ProxyPort, OptionKind::Number, OptionGroup::Miscellaneous, 0, Text{1112, "Port:"}},
    {OptionId::ProxyLogin, OptionKind::Text, OptionGroup::Miscellaneous, 0, Text{357, "Login:"}},
    {OptionId::ProxyPassword, OptionKind::Text, OptionGroup::Miscellaneous, 0, Text{358, "Password:"}},
    {OptionId::ProxyType, OptionKind::Number, OptionGroup::Miscellaneous, 0, Text{1113, "Proxy Type:"}},
    {OptionId::AppInitProtection, OptionKind::Flag, OptionGroup::Enhancements, 1,
     Text{581, "Enable AppInit DLL Protection"}},
    {OptionId::FilteringProxyPort, OptionKind::Number, OptionGroup::None, 8215,
     Text{602, "Filtering proxy server port:"}},
};
static_assert(std::is_sorted(std::begin(kOptions), std::end(kOptions),
                             [](const OptionInfo& a, const OptionInfo& b) { return a.id < b.id; }));

}  // namespace

std::span<const OptionInfo> OptionTable() {
    return kOptions;
}

const OptionInfo* FindOption(std::uint32_t id) {
    const auto* const at =
        std::lower_bound(std::begin(kOptions), std::end(kOptions), static_cast<OptionId>(id),
                         [](const OptionInfo& info, OptionId wanted) { return info.id < wanted; });
    return at != std::end(kOptions) && at->id == static_cast<OptionId>(id) ? at : nullptr;
}

}  // namespace brennvar
