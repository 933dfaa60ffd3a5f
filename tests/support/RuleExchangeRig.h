// An exchange of rules on a folder of its own, with a user who answers as the test says.
#pragma once

#include <functional>
#include <optional>
#include <string>
#include <vector>

#include "support/CommanderRig.h"
#include "support/FailingRuleFiles.h"
#include "support/FakeClock.h"
#include "support/FakeTaskQueue.h"
#include "support/TempFolder.h"
#include "views/RuleExchange.h"

namespace brennvar::test {

class FakeRuleDialogs final : public RuleDialogs {
public:
    std::optional<std::string> path;  // chosen
    bool agrees = true;
    std::function<void()> whileAsked = [] {};
    std::vector<std::string> said;  // messages, questions with their answers, and the counts of previews
    std::vector<std::string> suggested;

    std::optional<std::string> AskSavePath(const SaveWish& wish) override {
        suggested.push_back(wish.name);
        whileAsked();
        return path;
    }
    std::optional<std::string> AskOpenPath(const OpenWish& wish) override {
        suggested.push_back(wish.name);
        whileAsked();
        return path;
    }
    bool AskImport(const ImportRows& rows) override {
        said.push_back(rows.Counts());
        whileAsked();
        return agrees;
    }
    bool Ask(const std::string& question, const std::string& yes, Otherwise) override {
        said.push_back(question + '|' + yes);
        return agrees;
    }
    void Tell(const std::string& text) override { said.push_back(text); }
    // Since the last call.
    std::vector<std::string> TakeSaid() { return std::exchange(said, {}); }
};

class FakeAdvancedRulesReader final : public AdvancedRulesReader {
public:
    int reads = 0;
    bool isSlow = false;
    std::function<void()> over;  // of a slow reading
    void ReadAgain(std::function<void()> whenOver) override {
        ++reads;
        over = std::move(whenOver);
        if (!isSlow) over();
    }
};

class RuleExchangeRig {
public:
    CommanderRig commanding;
    FakeTaskQueue queue;
    FakeClock clock;
    FakeRuleDialogs dialogs;
    FakeAdvancedRulesReader advanced;
    FailingRuleFiles files;
    TempFolder folder;
    RuleExchange exchange{{.language = commanding.language,
                           .queue = queue,
                           .clock = clock,
                           .commander = commanding.commander,
                           .dialogs = dialogs,
                           .advanced = advanced,
                           .files = files,
                           .folders = {.rules = folder.File("Rules"),
                                       .import = folder.File("Rules.import"),
                                       .restore = folder.File("Rules.restore")}}};
};

}  // namespace brennvar::test
