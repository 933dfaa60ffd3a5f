// Advanced rules with a service behind them that keeps and orders them like the real one, when the test lets it;
// and with a user who writes in the editor what the test says.
#pragma once

#include <algorithm>
#include <functional>
#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "advanced/AdvancedRules.h"
#include "ipc/CommandRecord.h"
#include "support/CommanderRig.h"
#include "support/FakeClock.h"
#include "support/FakeTaskQueue.h"
#include "support/RuleExchangeRig.h"

namespace brennvar::test {

inline AdvancedRule NamedRule(std::uint32_t id, const std::string& description = "rule") {
    AdvancedRule rule;
    rule.id = id;
    rule.protocol = RuleProtocol::Tcp;
    rule.description = description;
    return rule;
}

class FakeRuleEditor final : public RuleEditor {
public:
    std::optional<AdvancedRule> answer;
    std::function<void()> whileOpen = [] {};
    std::vector<AdvancedRule> opened;
    RulePlace place{};

    std::optional<AdvancedRule> AskNew(const AdvancedRule& first) override {
        opened.push_back(first);
        whileOpen();
        return answer;
    }
    std::optional<AdvancedRule> AskChange(const AdvancedRule& stored, RulePlace where) override {
        opened.push_back(stored);
        place = where;
        whileOpen();
        return answer;
    }
};

class AdvancedRulesRig {
public:
    // The rules are read now.
    void Load(std::vector<AdvancedRule> rules) {
        stored = std::move(rules);
        advanced.Read();
        reads.RunAll();
    }
    // "4 7": the codes of the commands since the last call, in their order; the service carries them out.
    std::string Serve() {
        std::string codes;
        for (const RawBytes& bytes : commanding.TakeRecords()) {
            const CommandRecord record = *DecodeRecord<CommandRecord>(bytes);
            if (!codes.empty()) codes += ' ';
            codes += std::to_string(static_cast<int>(record.code));
            CarryOut(record);
        }
        return codes;
    }
    // "1 2 3": the identifiers, as they are shown.
    [[nodiscard]] std::string Shown() const { return Listed(advanced.Shown()->Rules()); }
    [[nodiscard]] static std::string Listed(const std::vector<AdvancedRule>& rules) {
        std::string ids;
        for (const AdvancedRule& rule : rules) {
            if (!ids.empty()) ids += ' ';
            ids += std::to_string(rule.id);
            if (!rule.isEnabled) ids += '-';
        }
        return ids;
    }

    CommanderRig commanding;
    FakeClock clock;
    FakeTaskQueue reads;
    FakeRuleEditor editor;
    FakeRuleDialogs dialogs;
    std::vector<AdvancedRule> stored;
    bool isReadable = true;
    AdvancedRules advanced{{.language = commanding.language,
                            .clock = clock,
                            .reads = reads,
                            .load =
                                [this](std::chrono::milliseconds pause) {
                                    clock.Pass(pause);
                                    return isReadable ? std::optional(stored) : std::nullopt;
                                },
                            .commander = commanding.commander,
                            .editor = editor,
                            .dialogs = dialogs}};

private:
    void CarryOut(const CommandRecord& record) {
        const auto rule = std::find_if(stored.begin(), stored.end(),
                                       [&](const AdvancedRule& one) { return one.id == record.ruleId; });
        if (record.code == CommandCode::AddAdvancedRule) {
            stored.push_back(DecodeRule(record.advancedRule));
            stored.back().id = ++m_lastId;
        }
        if (rule == stored.end() || record.ruleId == 0) return;
        switch (record.code) {
            case CommandCode::ModifyAdvancedRule: *rule = DecodeRule(record.advancedRule); break;
            case CommandCode::DeleteAdvancedRule: stored.erase(rule); break;
            case CommandCode::MoveAdvancedRuleUp:
                if (rule != stored.begin()) std::swap(*rule, *(rule - 1));
                break;
            case CommandCode::MoveAdvancedRuleDown:
                if (rule + 1 != stored.end()) std::swap(*rule, *(rule + 1));
                break;
            default: break;
        }
    }

    std::uint32_t m_lastId = 100;
};

}  // namespace brennvar::test
