#include "service/JournalLine.h"

#include <array>

namespace brennvar::standin {
namespace {

constexpr std::array<std::string_view, kChannelCount> kChannelNames{"COMMAND", "PID",     "TRAY",
                                                                    "QUEUE",   "CONFIRM", "ACTIVITY"};

void AppendHex(std::string& text, std::byte byte) {
    constexpr std::string_view kDigits = "0123456789ABCDEF";
    text += kDigits[std::to_integer<std::size_t>(byte >> 4)];
    text += kDigits[std::to_integer<std::size_t>(byte & std::byte{0x0F})];
}

}  // namespace

std::string_view ChannelName(Channel channel) {
    return kChannelNames.at(static_cast<std::size_t>(channel));
}

std::string FormatRecordLine(std::uint64_t sequence, Channel channel, std::span<const std::byte> record) {
    std::string line = std::to_string(sequence) + ' ';
    line += ChannelName(channel);
    line += ' ' + std::to_string(record.size());
    bool inRun = false;
    for (std::size_t offset = 0; offset < record.size(); ++offset) {
        const bool isZero = record[offset] == std::byte{0};
        if (!isZero && !inRun) line += ' ' + std::to_string(offset) + ':';
        if (!isZero) AppendHex(line, record[offset]);
        inRun = !isZero;
    }
    return line;
}

std::string FormatEventLine(std::uint64_t sequence, std::string_view event) {
    std::string line = std::to_string(sequence) + " EVENT ";
    line += event;
    return line;
}

}  // namespace brennvar::standin
