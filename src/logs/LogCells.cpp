#include "logs/LogCells.h"

#include <algorithm>
#include <charconv>

namespace brennvar {
namespace {

// The decimal digits of all numbers that a byte can hold, since a log list is made of little else.
struct ByteDigits {
    char digits[3];
    std::uint8_t size;
};
constexpr std::array<ByteDigits, 256> kBytes = [] {
    std::array<ByteDigits, 256> all{};
    for (unsigned n = 0; n < all.size(); ++n) {
        ByteDigits& one = all[n];
        if (n >= 100) one.digits[one.size++] = static_cast<char>('0' + n / 100);
        if (n >= 10) one.digits[one.size++] = static_cast<char>('0' + n / 10 % 10);
        one.digits[one.size++] = static_cast<char>('0' + n % 10);
    }
    return all;
}();

char* PutByte(char* at, unsigned number) {
    const ByteDigits& digits = kBytes[number & 0xFFU];
    at[0] = digits.digits[0];  // three at any rate: what is too much is written over
    at[1] = digits.digits[1];
    at[2] = digits.digits[2];
    return at + digits.size;
}

char* PutEndpoint(char* at, Ipv4 address, std::uint32_t port) {
    for (unsigned shift = 0; shift < 32; shift += 8) {
        at = PutByte(at, address >> shift);
        *at++ = shift < 24 ? '.' : ':';
    }
    return PutNumber(at, port);
}

}  // namespace

Tone ToneOf(LogAction action) {
    switch (action) {
        case LogAction::Allowed: return Tone::Allow;
        case LogAction::Denied: return Tone::Deny;
        case LogAction::Asked: return Tone::Ask;
        default: return Tone::Muted;
    }
}

LogTexts::LogTexts(const Language& language)
    : actions{language.GetText(4, "Allowed"), language.GetText(5, "Denied"), language.GetText(6, "Asked"),
              language.GetText(7, "Disconnected"), language.GetText(8, "Message")},
      columns{language.GetText(1339, "Time"),     language.GetText(1028, "Action"),
              language.GetText(1421, "Protocol"), language.GetText(1021, "Address"),
              language.GetText(1422, "Program"),  language.GetText(1423, "Rule or event")},
      path(language.GetText(1026, "Path")),
      bytes(language.GetText(1433, "bytes")) {}

char* PutNumber(char* at, std::uint32_t number) {
    constexpr std::size_t kMostDigits = 10;  // 4294967295
    return std::to_chars(at, at + kMostDigits, number).ptr;
}

char* PutTime(char* at, const LogEntry& entry) {
    const std::uint32_t second = SecondOfDay(entry.hour, entry.minute, entry.second);
    for (const std::uint32_t part : {second / 3600, second / 60 % 60, second % 60}) {
        *at++ = static_cast<char>('0' + part / 10);
        *at++ = static_cast<char>('0' + part % 10);
        *at++ = ':';
    }
    return at - 1;  // the last colon does not count
}

char* PutAddresses(char* at, const LogEntry& entry) {
    constexpr std::size_t kEndpointSize = 15 + 1 + 10;  // address, colon, port
    constexpr std::size_t kAhead = 2;                   // PutByte writes over what follows
    static_assert(2 * kEndpointSize + sizeof " -> " + kAhead <= kAddressesRoom);
    at = PutEndpoint(at, entry.localAddress, entry.localPort);
    *at++ = ' ';
    *at++ = entry.isOutgoing ? '-' : '<';
    *at++ = entry.isOutgoing ? '>' : '-';
    *at++ = ' ';
    return PutEndpoint(at, entry.remoteAddress, entry.remotePort);
}

void AppendTime(std::string& text, const LogEntry& entry) {
    char buffer[kTimeSize + 1];
    text.append(buffer, PutTime(buffer, entry));
}

void AppendAddresses(std::string& text, const LogEntry& entry) {
    char buffer[kAddressesRoom];
    text.append(buffer, PutAddresses(buffer, entry));
}

std::string_view ProgramOf(const LogEntry& entry) {
    return entry.path.substr(entry.path.rfind('\\') + 1);  // all of it when there is none: npos + 1 is 0
}

void AppendCell(std::string& text, LogColumn column, const LogEntry& entry, const LogTexts& texts) {
    switch (column) {
        case LogColumn::Time: AppendTime(text, entry); break;
        case LogColumn::Action:
            if (!entry.isPacket) text += texts.actions[static_cast<std::size_t>(entry.action)];
            break;
        case LogColumn::Protocol: text += NameOf(entry.protocol); break;
        case LogColumn::Address:
            if (entry.hasAddresses) {
                AppendAddresses(text, entry);
            } else {
                text += entry.shortText;
            }
            break;
        case LogColumn::Program: text += ProgramOf(entry); break;
        case LogColumn::Remark:
            if (!entry.isPacket) {
                text += entry.shortText;
            } else {
                AppendNumber(text, entry.packetSize);
                text += ' ';
                text += texts.bytes;
            }
            break;
    }
}

}  // namespace brennvar
