#include "views/ImportRows.h"

#include "config/Amounts.h"
#include "views/ApplicationList.h"

namespace brennvar {
namespace {

using Kind = RuleChange::Kind;

Kind KindOf(const FileChange& file) {
    return !file.before ? Kind::Added : !file.after ? Kind::Removed : Kind::Changed;
}

}  // namespace

const FileChange* ImportRows::FileAt(int row) const {
    const auto index = static_cast<std::size_t>(row);
    return index < m_preview.files.size() ? &m_preview.files[index] : nullptr;
}

const RuleChange& ImportRows::RuleAt(int row) const {
    return m_preview.rules[static_cast<std::size_t>(row) - m_preview.files.size()];
}

std::string ImportRows::NameOf(Kind kind) const {
    switch (kind) {
        case Kind::Added: return m_language.GetText(1867, "Added");
        case Kind::Removed: return m_language.GetText(1868, "Removed");
        default: return m_language.GetText(1869, "Changed");
    }
}

std::vector<std::string> ImportRows::Titles() const {
    return {m_language.GetText(1864, "Change"), m_language.GetText(1026, "Path"), m_language.GetText(1865, "Now"),
            m_language.GetText(1866, "After the import")};
}

std::string ImportRows::Counts() const {
    const auto count = [](const std::string& what, std::size_t number) {
        return what + ": " + std::to_string(number);
    };
    constexpr const char* kGap = "     ";
    return count(NameOf(Kind::Added), m_preview.added) + kGap + count(NameOf(Kind::Removed), m_preview.removed) +
           kGap + count(NameOf(Kind::Changed), m_preview.changed) + kGap +
           count(m_language.GetText(1863, "Unchanged"), m_preview.unchanged);
}

std::vector<std::string> ImportRows::Remarks() const {
    std::vector<std::string> remarks;
    if (m_preview.isUnreadable) {
        remarks.push_back(
            m_language.GetText(1871,
                               "The rules of this archive cannot be read here: they are damaged, or of an "
                               "installation with another key."));
    }
    if (!m_preview.files.empty()) {
        remarks.push_back(m_language.GetText(1873, "Other files of the archive:") + ' ' +
                          std::to_string(m_preview.files.size()));
    }
    if (m_preview.skipped > 0) {
        remarks.push_back(m_language.GetText(1874, "Left out because of their names:") + ' ' +
                          std::to_string(m_preview.skipped));
    }
    return remarks;
}

std::string ImportRows::EmptyText() const {
    return m_preview.isUnreadable ? std::string() : m_language.GetText(1872, "Nothing would change.");
}

std::string ImportRows::CellText(int row, int column) const {
    if (const FileChange* const file = FileAt(row)) {
        const auto size = [this](const std::optional<std::uint64_t>& bytes) {
            return bytes ? FormatBytes(*bytes, AmountWords(m_language)) : std::string();
        };
        switch (column) {
            case kChange: return NameOf(KindOf(*file));
            case kPath: return file->path;
            case kBefore: return size(file->before);
            default: return size(file->after);
        }
    }
    const RuleChange& rule = RuleAt(row);
    switch (column) {
        case kChange: return NameOf(rule.kind);
        case kPath: return rule.path;
        case kBefore:
            return rule.kind == Kind::Added ? std::string() : m_language.GetText(NameOfState(rule.before));
        default: return rule.kind == Kind::Removed ? std::string() : m_language.GetText(NameOfState(rule.after));
    }
}

Tone ImportRows::ToneOf(int row, int column) const {
    if (FileAt(row) || (column != kBefore && column != kAfter) || CellText(row, column).empty()) return Tone::Plain;
    return ToneOfState(column == kBefore ? RuleAt(row).before : RuleAt(row).after);
}

std::vector<std::string> ImportRows::Longest(int column) const {
    std::vector<std::string> longest;
    if (column == kChange) {
        for (const Kind kind : {Kind::Added, Kind::Removed, Kind::Changed}) longest.push_back(NameOf(kind));
    } else if (column == kBefore || column == kAfter) {
        for (const auto state : {ApplicationState::Deny, ApplicationState::Allow, ApplicationState::Ask}) {
            longest.push_back(m_language.GetText(NameOfState(state)));
        }
    }
    return longest;
}

}  // namespace brennvar
