// Every option that the interface reads, in one table: how it is stored, what the Options page shows and where, and
// what is sent together. A new option is one row of the table and the texts of its caption.
#pragma once

#include <cstdint>
#include <span>

#include "config/Text.h"

namespace brennvar {

// The identifiers of the records in config.conf. Named here are those that code speaks of; the others are just
// their numbers.
enum class OptionId : std::uint32_t {
    ProtectionMode = 1,
    BlockFileSharing = 2,
    Password = 4,
    ShowSecurityMessages = 5,
    ShowBlockedMessages = 6,
    LoadAtStartup = 7,
    AntiIpSpoofing = 16,
    BlockSeconds = 18,
    BlockFragments = 19,
    Dns = 25,
    TrafficLogKilobytes = 31,
    PacketLogKilobytes = 32,
    LogDays = 33,
    MailFrom = 35,
    MailTo = 36,
    MailCc = 37,
    MailSubject = 38,
    MailServer = 39,
    MailLogin = 40,
    MailPassword = 41,
    ProxyHost = 66,
    ProxyPort = 67,  // 0: none
    ProxyUser = 68,
    ProxyPassword = 69,
    ProxyType = 70,  // 0 HTTP, 1 SOCKS 5
    FilteringProxyPort = 79,
};

// How an option is kept and shown.
enum class OptionKind {
    Flag,          // 0 or 1: a check box
    Number,        // a field for digits
    Port,          // likewise, 0 to 65535
    NumberOfFlag,  // likewise, below the flag that it belongs to; its caption is its unit
    List,          // the index of an entry
    Line,          // a text
    Secret,        // a text that nobody is to read over the user's shoulder
};

// What is applied together, from one section of the Options page: all options of a group are sent, in the order of
// the table. None is not shown there; browser filtering goes a way of its own.
enum class OptionGroup { None, General, Enhancements, Logging, Miscellaneous, Icmp, FileSharing, BrowserFiltering };

struct OptionInfo {
    OptionId id;
    OptionKind kind;
    std::uint32_t fallback;  // what holds without a record; a text is then empty
    OptionGroup group;
    int column;  // of its section, from the left
    Text caption;

    [[nodiscard]] constexpr bool IsText() const { return kind == OptionKind::Line || kind == OptionKind::Secret; }
};

// Ordered by identifier.
[[nodiscard]] std::span<const OptionInfo> OptionTable();
// Null for an identifier that the interface does not use.
[[nodiscard]] const OptionInfo* FindOption(std::uint32_t id);

}  // namespace brennvar
