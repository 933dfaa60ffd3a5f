// The user's choice of skin and language, and what becomes of a new one.
#pragma once

#include <functional>
#include <string>

namespace brennvar {

// Names of folders, compared exactly.
struct ResourceChoice {
    std::string skin;
    std::string language;
    friend bool operator==(const ResourceChoice&, const ResourceChoice&) = default;
};

struct ResourceChoiceSteps {
    std::function<bool()> askForRestart;  // true: the user wants it now
    std::function<void(const ResourceChoice&)> send;
    std::function<bool()> isBusy;  // something is under way that a restart would break off
};

// Does nothing when the choice is the current one. Else it asks, sends the choice whatever the answer, and returns
// true when the program is to be restarted; a restart that comes at the wrong time is left to the user.
[[nodiscard]] bool ApplyResourceChoice(const ResourceChoice& current, const ResourceChoice& chosen,
                                       const ResourceChoiceSteps& steps);

}  // namespace brennvar
