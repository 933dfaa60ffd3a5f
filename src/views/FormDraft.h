// What stands in the fields of a form, beside what is stored: which fields the user has edited, and what becomes of
// them when the stored values change. Fields go by the numbers of their controls, contents are texts.
#pragma once

#include <map>
#include <set>
#include <string>

#include "base/WipedText.h"

namespace brennvar {

class FormDraft {
public:
    using Fields = std::map<int, WipedText>;  // some are passwords

    // The stored contents, all of them: fields follow, but for those that the user has edited. An edit that is the
    // stored content is none.
    void SetStored(const Fields& stored);
    // The user has made this of a field.
    void Edit(int field, const std::string& content);
    [[nodiscard]] const Fields& Shown() const { return m_shown; }
    [[nodiscard]] bool IsEdited() const { return !m_edited.empty(); }
    // Back to what is stored.
    void Discard();
    // What is shown is on its way to be stored. Until it is over, a field that the user takes back is edited as
    // well.
    void Apply() { m_applied = m_shown; }
    // The way is over, one way or the other: what is stored counts again, but for what the user has changed since.
    void Settle();
    // What was applied has not been sent: it is still edited.
    void Withdraw();

private:
    // The content is neither what is stored nor, as long as something is on its way, what will be.
    [[nodiscard]] bool IsWanted(int field, const std::string& content) const;

    Fields m_stored;
    Fields m_shown;
    Fields m_applied;  // what is on its way; empty when nothing is
    std::set<int> m_edited;
};

}  // namespace brennvar
