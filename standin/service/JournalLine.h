// One line of the journal:
//
//     <sequence> <CHANNEL> <length> <offset>:<hex> <offset>:<hex> ...
//     <sequence> EVENT <word> [<number>]
//
// Each run of non-zero bytes of the record is given by its decimal offset and its bytes in upper-case hex; all
// other bytes are zero, so that nothing is lost and a test can write the line by hand.
#pragma once

#include <cstddef>
#include <cstdint>
#include <span>
#include <string>
#include <string_view>

namespace brennvar::standin {

// Where a record came in. The names stand in the journal.
enum class Channel : std::uint32_t { Command, Pid, Tray, Queue, Confirm, Activity };
inline constexpr std::size_t kChannelCount = 6;
[[nodiscard]] std::string_view ChannelName(Channel channel);

// Without the line end.
[[nodiscard]] std::string FormatRecordLine(std::uint64_t sequence, Channel channel,
                                           std::span<const std::byte> record);
[[nodiscard]] std::string FormatEventLine(std::uint64_t sequence, std::string_view event);

}  // namespace brennvar::standin
