// What a file of records may be found as by a reader that has to bear everything.
#pragma once

#include <cstddef>
#include <cstdint>
#include <vector>

#include "ipc/AdvancedRuleRecord.h"
#include "rules/ListRecords.h"

namespace brennvar::standin {

// Files that scenarios fill and spoil.
enum class ServiceFile : std::uint8_t { AdvancedRules, Trusted, Sites };

enum class Spoiling : std::uint8_t {
    Cut,           // the last record ends in its middle
    Tail,          // five bytes stand behind it
    SameIds,       // the second record has the first one's identifier, or is the first one where there is none
    NoIds,         // the first one has none, or no path
    Unterminated,  // the texts of the first one fill their fields
    Noise,         // the first one is all ones
};

// Those that change what records say; the file that has too few is left as it is.
void SpoilRecords(std::vector<AdvancedRuleRecord>& records, Spoiling how);
void SpoilRecords(std::vector<TrustedRecord>& records, Spoiling how);
void SpoilRecords(std::vector<SiteRecord>& records, Spoiling how);
// Cut and Tail, of the bytes of a file.
void SpoilEnd(std::vector<std::byte>& content, std::size_t recordSize, Spoiling how);

}  // namespace brennvar::standin
