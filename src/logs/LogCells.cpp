#include "logs/LogCells.h"

#include "base/Endpoint.h"

namespace brennvar {

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
    static_assert(2 * kEndpointRoom + sizeof " -> " <= kAddressesRoom);
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
