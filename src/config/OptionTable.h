// Every option that the interface reads, in one table: what the option pages show, load and send.
#pragma once

#include <cstdint>
#include <span>

#include "config/Text.h"

namespace brennvar {

// The identifiers of the records in config.conf.
enum class OptionId : std::uint32_t {
    ProtectionMode = 1,
    BlockFileSharing = 2,
    BlockNetworkNeighborhood = 3,
    Password = 4,
    ShowSecurityMessages = 5,
    ShowBlockedMessages = 6,
    LoadAtStartup = 7,
    IntrusionPrevention = 8,
    NetBiosProtection = 9,
    BlockPlugAndPlay = 11,
    MasqueradeFingerprint = 12,
    FingerprintAuthentication = 13,
    AntiMacSpoofing = 14,
    AntiDnsSpoofing = 15,
    AntiIpSpoofing = 16,
    BlockAttacker = 17,
    BlockSeconds = 18,
    BlockFragments = 19,
    DetectPortScan = 20,
    DetectDos = 21,
    LocalTraffic = 22,
    TimeSynchronisation = 23,
    Dhcp = 24,
    Dns = 25,
    ProcessDefense = 26,
    SecurityLog = 27,
    SystemLog = 28,
    TrafficLog = 29,
    PacketLog = 30,
    TrafficLogKilobytes = 31,
    PacketLogKilobytes = 32,
    LogDays = 33,
    MailNotification = 34,
    MailFrom = 35,
    MailTo = 36,
    MailCc = 37,
    MailSubject = 38,
    MailServer = 39,
    MailLogin = 40,
    MailPassword = 41,
    IcmpIncomingFirst = 42,  // eleven of them, one per ICMP type
    IcmpIncomingLast = 52,
    IcmpOutgoingFirst = 53,  // the same types in the same order
    IcmpOutgoingLast = 63,
    NotifyNewVersion = 64,
    UpdateSignatures = 65,
    ProxyHost = 66,
    ProxyPort = 67,  // 0: none
    ProxyLogin = 68,
    ProxyPassword = 69,
    ProxyType = 70,  // index in the list of proxy types
    AppInitProtection = 78,
    FilteringProxyPort = 79,
};

enum class OptionKind { Number, Flag, Text };

// What is applied together: all options of a group are sent, in the order of the table.
enum class OptionGroup { None, General, Enhancements, Logging, Miscellaneous, Icmp, FileSharing };

struct OptionInfo {
    OptionId id;
    OptionKind kind;
    OptionGroup group;
    std::uint32_t fallback;  // what holds without a record; a text is then empty
    Text caption;            // none: shown in another way than as a captioned field
};

// Ordered by identifier.
[[nodiscard]] std::span<const OptionInfo> OptionTable();
// Null for an identifier that the interface does not use.
[[nodiscard]] const OptionInfo* FindOption(std::uint32_t id);

}  // namespace brennvar
