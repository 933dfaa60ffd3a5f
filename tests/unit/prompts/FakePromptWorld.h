// The surroundings of a connection question for tests: answers set by hand, and a record of what was asked.
#pragma once

#include <functional>
#include <map>
#include <memory>
#include <utility>
#include <vector>

#include "prompts/PromptWorld.h"
#include "support/FakeIni.h"

namespace brennvar::test {

class FakePromptWorld final : public PromptWorld {
public:
    std::map<std::string, RuleAction> rules;
    std::map<std::string, std::uint32_t> advice;
    std::map<std::uint32_t, std::string> processes;
    std::map<Ipv4, std::string> hosts;
    std::map<std::string, std::string> descriptions;
    std::map<Ipv4, Ipv4> localAddresses;
    FakeIni::Values texts;  // "Language/DL_N_201_..."
    PromptAnswer answer;
    bool isReady = true;
    std::function<void()> whileAsking;  // what happens while the question is on screen

    std::vector<std::string> described;  // paths whose description was read
    std::vector<PromptQuestion> questions;
    std::vector<ConnectionPromptAnswer> sent;

    [[nodiscard]] RuleAction LookupAction(const std::string& path) override {
        const auto rule = rules.find(path);
        return rule == rules.end() ? RuleAction::Ask : rule->second;
    }
    [[nodiscard]] std::optional<std::uint32_t> Advice(const std::string& path) override {
        return Find(advice, path);
    }
    [[nodiscard]] std::optional<std::string> ResolveProcessPath(std::uint32_t processId) override {
        return Find(processes, processId);
    }
    [[nodiscard]] std::string HostName(Ipv4 address) override { return Find(hosts, address).value_or(""); }
    [[nodiscard]] std::string FileDescription(const std::string& path) override {
        described.push_back(path);
        return Find(descriptions, path).value_or("");
    }
    [[nodiscard]] Ipv4 LocalAddressFor(Ipv4 address) override { return Find(localAddresses, address).value_or(0); }
    [[nodiscard]] Language LoadLanguage() override { return Language(std::make_unique<FakeIni>(texts)); }
    [[nodiscard]] bool IsReadyToAsk() override { return isReady; }
    [[nodiscard]] PromptAnswer Ask(const PromptQuestion& question) override {
        questions.push_back(question);
        if (whileAsking) whileAsking();
        return answer;
    }
    void SendAnswer(const ConnectionPromptAnswer& record) override { sent.push_back(record); }

private:
    template <class Key, class Value>
    static std::optional<Value> Find(const std::map<Key, Value>& map, const Key& key) {
        const auto found = map.find(key);
        return found == map.end() ? std::nullopt : std::optional<Value>(found->second);
    }
};

}  // namespace brennvar::test
