// What the export and import of rules ask of the user; the shell has the windows (views/RuleDialogs_win.h). All but
// Tell return when the user has answered, which pumps messages. User-interface thread only.
#pragma once

#include <optional>
#include <string>

#include "dialogs/SaveWish.h"
#include "views/ImportRows.h"

namespace brennvar {

class RuleDialogs {
public:
    virtual ~RuleDialogs() = default;
    // Nothing: the user would rather not, or nothing can be asked now.
    [[nodiscard]] virtual std::optional<std::string> AskSavePath(const SaveWish& wish) = 0;
    [[nodiscard]] virtual std::optional<std::string> AskOpenPath(const OpenWish& wish) = 0;
    // Shows what an import would change; true: it is to be done.
    [[nodiscard]] virtual bool AskImport(const ImportRows& rows) = 0;
    // True for the answer that is named; the other one is "Cancel", or "Close" where nothing is to be decided.
    enum class Otherwise { Cancel, Close };
    [[nodiscard]] virtual bool Ask(const std::string& question, const std::string& yes, Otherwise otherwise) = 0;
    virtual void Tell(const std::string& text) = 0;
};

}  // namespace brennvar
