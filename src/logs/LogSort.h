// Puts the numbers of listed records into the order of a column. Takes 4 bytes for each record of the file and 4
// for each that is listed, whatever the texts are.
#pragma once

#include <cstdint>
#include <string>
#include <unordered_map>
#include <vector>

#include "base/StopSignal.h"
#include "logs/LogCells.h"

namespace brennvar {

// Numbers for texts, by which they can be sorted once all are known. Logs say the same again and again. Texts
// beyond the limits come behind all others, by their first four characters alone.
class TextRanks {
public:
    static constexpr std::size_t kMostTexts = 32'768;
    static constexpr std::size_t kMostBytes = 0x200000;

    [[nodiscard]] std::uint32_t Add(std::string_view text);
    // What an added number becomes: 0 and up in the order of the texts, without regard to ASCII case.
    void Rank();
    // Of what was not added here: itself.
    [[nodiscard]] std::uint32_t RankOf(std::uint32_t added) const {
        return added < m_ranks.size() ? m_ranks[added] : added;
    }

private:
    static constexpr std::uint32_t kBeyond = 0x80000000U;  // above all ranks

    struct Hash {
        using is_transparent = void;
        std::size_t operator()(std::string_view text) const { return std::hash<std::string_view>()(text); }
    };
    std::unordered_map<std::string, std::uint32_t, Hash, std::equal_to<>> m_texts;
    std::size_t m_bytes = 0;
    std::vector<std::uint32_t> m_ranks;
};

// By the time of day, the text of the action, of the protocol or of the program, the size of packets. Addresses by
// the remote one, behind all events without addresses, which are sorted by their texts. What is equal stays in the
// order in which it was added.
class LogSort {
public:
    // room: entries that will be added at most, where that is known.
    LogSort(LogColumn column, bool isAscending, const LogTexts& texts, std::size_t room);
    // The numbers go one way, up or down.
    void Add(const LogEntry& entry, std::uint32_t number);
    // The numbers in order; none when stopped.
    [[nodiscard]] std::vector<std::uint32_t> Sorted(const StopSignal& stop);

private:
    [[nodiscard]] std::uint32_t KeyOf(const LogEntry& entry);

    const LogColumn m_column;
    const bool m_isAscending;
    TextRanks m_texts;
    std::array<std::uint32_t, kLogActionCount> m_actions{};
    std::array<std::uint32_t, kLogProtocolCount> m_protocols{};
    std::vector<std::uint32_t> m_keys;  // by the number of the record
    std::vector<std::uint32_t> m_numbers;
};

}  // namespace brennvar
