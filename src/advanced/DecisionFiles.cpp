#include "advanced/DecisionFiles.h"

#include "config/Folders.h"
#include "rules/AdvancedRuleFile.h"
#include "rules/ApplicationRules.h"

namespace brennvar {

DecisionFiles::DecisionFiles(const std::string& dataFolder, Clock& clock, const OptionSource& options)
    : m_rulesFile(RulesFilePath(dataFolder)),
      m_advancedFile(AdvancedRulesFilePath(dataFolder)),
      m_clock(clock),
      m_options(options) {}

DecisionReading DecisionFiles::Read() const {
    DecisionReading reading;
    if (const auto stored = m_options.Read()) {
        reading.mode = ProtectionModeOf(stored->values.Number(OptionId::ProtectionMode));
    }
    reading.advanced = LoadAdvancedRules(m_advancedFile, m_clock);
    return reading;
}

std::optional<RuleAction> DecisionFiles::ActionOf(const std::string& program) const {
    // A look-up does not tell a file that cannot be read from one without such a rule.
    if (!RulesFileOpen(m_rulesFile, m_clock) && !RecordFile::IsMissing(m_rulesFile)) return std::nullopt;
    return LookupApplicationAction(m_rulesFile, m_clock, program);
}

}  // namespace brennvar
