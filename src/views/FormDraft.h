// What stands in the fields of a form, beside what is stored: which fields the user has edited, and what becomes of
// them when the stored values change. Fields go by the numbers of their controls, contents are texts.
#pragma once

#include <map>
#include <set>
#include <string>

namespace brennvar {

class FormDraft {
public:
    using Fields = std::map<int, std::string>;

    // The stored contents, all of them: fields follow, but for those that the user has edited. An edit that is the
    // stored content is none.
    void SetStored(const Fields& stored);
    // The user has made this of a field.
    void Edit(int field, const std::string& content);
    [[nodiscard]] const Fields& Shown() const { return m_shown; }
    [[nodiscard]] bool IsEdited() const { return !m_edited.empty(); }
    // Back to what is stored.
    void Discard();
    // The end of an attempt to store these contents: what is stored counts again, but for what the user has
    // changed since.
    void Settle(const Fields& sent);

private:
    Fields m_stored;
    Fields m_shown;
    std::set<int> m_edited;
};

}  // namespace brennvar
