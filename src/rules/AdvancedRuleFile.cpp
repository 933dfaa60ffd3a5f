#include "rules/AdvancedRuleFile.h"

#include <algorithm>
#include <iterator>
#include <span>

#include "ipc/RecordFile.h"

namespace brennvar {

std::optional<std::vector<AdvancedRule>> LoadAdvancedRules(const std::string& file, Clock& clock) {
    auto records = RecordFile::OpenShared(file, clock);
    std::vector<AdvancedRule> rules;
    if (!records) return RecordFile::IsMissing(file) ? std::optional(std::move(rules)) : std::nullopt;
    const bool isWhole = ScanRecords<AdvancedRuleRecord>(
        *records, Cipher::Enciphered, [&rules](std::span<const AdvancedRuleRecord> piece) {
            const auto count = std::min(piece.size(), kMostAdvancedRules - rules.size());
            std::transform(piece.begin(), piece.begin() + static_cast<std::ptrdiff_t>(count),
                           std::back_inserter(rules), DecodeRule);
            return rules.size() < kMostAdvancedRules;
        });
    return isWhole ? std::optional(std::move(rules)) : std::nullopt;
}

}  // namespace brennvar
