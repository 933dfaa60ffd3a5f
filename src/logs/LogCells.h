// The columns of a log list, and the texts of their cells. The same columns for both kinds of log.
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>

#include "config/Language.h"
#include "config/SkinTones.h"
#include "logs/LogEntry.h"

namespace brennvar {

enum class LogColumn : std::uint8_t {
    Time,
    Action,  // empty for a packet
    Protocol,
    Address,  // or the short text of an event without addresses
    Program,  // the file's name
    Remark,   // rule or event; the size of a packet
};
inline constexpr std::size_t kLogColumnCount = 6;

// In the user's language. Made on the user-interface thread and then only read.
struct LogTexts {
    explicit LogTexts(const Language& language);
    std::array<std::string, kLogActionCount> actions;
    std::array<std::string, kLogColumnCount> columns;
    std::string path;   // heading of a file's column
    std::string bytes;  // "bytes"
};

// How a list and the details show what happened.
[[nodiscard]] Tone ToneOf(LogAction action);

// The cells that nearly every row has, written to where there is room for so many characters; behind the last.
inline constexpr std::size_t kTimeSize = 8;
inline constexpr std::size_t kAddressesRoom = 64;
[[nodiscard]] char* PutTime(char* at, const LogEntry& entry);
[[nodiscard]] char* PutAddresses(char* at, const LogEntry& entry);
// "14:02:11"; "00:00:00" for what is no time of day.
void AppendTime(std::string& text, const LogEntry& entry);
// "a.b.c.d:port -> a.b.c.d:port", "<-" when incoming.
void AppendAddresses(std::string& text, const LogEntry& entry);
// The part of the path behind its last backslash.
[[nodiscard]] std::string_view ProgramOf(const LogEntry& entry);

// As the record has it: of any characters, without a zero.
void AppendCell(std::string& text, LogColumn column, const LogEntry& entry, const LogTexts& texts);

}  // namespace brennvar
