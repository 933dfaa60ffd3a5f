// Reads what a decision is made of from the files of the service. Used on the queue for reading only: each call may
// wait for a file that the service holds.
#pragma once

#include <optional>
#include <string>
#include <vector>

#include "base/Clock.h"
#include "commands/ProtectionMode.h"
#include "config/OptionSource.h"
#include "rules/AdvancedRule.h"
#include "rules/ApplicationRuleRecord.h"

namespace brennvar {

// Nothing: it could not be read.
struct DecisionReading {
    std::optional<ProtectionMode> mode;
    std::optional<std::vector<AdvancedRule>> advanced;
};

class DecisionFiles {
public:
    // Clock and options are borrowed.
    DecisionFiles(const std::string& dataFolder, Clock& clock, const OptionSource& options);
    [[nodiscard]] DecisionReading Read() const;
    [[nodiscard]] std::optional<RuleAction> ActionOf(const std::string& program) const;

private:
    const std::string m_rulesFile;
    const std::string m_advancedFile;
    Clock& m_clock;
    const OptionSource& m_options;
};

}  // namespace brennvar
