// The preview of an import as the user reads it: counts, remarks, and a list with a row for each rule and each file
// that would be another one.
#pragma once

#include <string>
#include <vector>

#include "config/Language.h"
#include "config/SkinTones.h"
#include "rules/RuleChanges.h"

namespace brennvar {

class ImportRows {
public:
    enum Column { kChange, kPath, kBefore, kAfter };
    static constexpr int kColumnCount = 4;

    // The language is borrowed.
    ImportRows(const Language& language, ImportPreview preview)
        : m_language(language), m_preview(std::move(preview)) {}

    [[nodiscard]] std::vector<std::string> Titles() const;
    // "Added: 3   Removed: 1   Changed: 2   Unchanged: 40"
    [[nodiscard]] std::string Counts() const;
    // One line each; what the user should know before agreeing.
    [[nodiscard]] std::vector<std::string> Remarks() const;
    [[nodiscard]] std::string EmptyText() const;
    // The application rules cannot be read here: the answer for somebody in a hurry is no.
    [[nodiscard]] bool IsDoubtful() const { return m_preview.isUnreadable; }

    [[nodiscard]] int Count() const {
        return static_cast<int>(m_preview.files.size() + m_preview.rules.size() + m_preview.advanced.size());
    }
    // The rows are advanced rules: sentences stand where paths do.
    [[nodiscard]] bool HasSentences() const { return !m_preview.advanced.empty(); }
    [[nodiscard]] std::string CellText(int row, int column) const;
    [[nodiscard]] Tone ToneOf(int row, int column) const;
    // What may stand in the columns but the path.
    [[nodiscard]] std::vector<std::string> Longest(int column) const;

private:
    // Files come first: there are few.
    [[nodiscard]] const FileChange* FileAt(int row) const;
    [[nodiscard]] const RuleChange& RuleAt(int row) const;
    // Null: it is none.
    [[nodiscard]] const AdvancedRuleChange* AdvancedAt(int row) const;
    [[nodiscard]] std::string CellOf(const AdvancedRuleChange& change, int column) const;
    [[nodiscard]] std::string NameOf(AdvancedRuleChange::Kind kind) const;
    [[nodiscard]] std::string NameOf(RuleChange::Kind kind) const;

    const Language& m_language;
    const ImportPreview m_preview;
};

}  // namespace brennvar
