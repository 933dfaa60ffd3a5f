// The road of connection questions with everything outside of it replaced: facts set by hand, threads that do a
// task when the test says so, a user who answers at once, and a record of what was asked.
#pragma once

#include <functional>
#include <map>
#include <utility>
#include <vector>

#include "prompts/ConnectionQuestions.h"
#include "support/FakeClock.h"
#include "support/FakeDevice.h"
#include "support/FakeIni.h"
#include "support/FakePipe.h"
#include "support/FakeTaskQueue.h"

namespace brennvar::test {

class FakeFactSources final : public FactSources {
public:
    std::map<std::string, RuleAction> rules;
    std::map<std::string, std::uint32_t> advice;
    std::map<std::uint32_t, std::string> processes;
    std::map<Ipv4, std::string> hosts;
    std::map<std::string, std::string> descriptions;
    std::map<Ipv4, Ipv4> localAddresses;
    FakeIni::Values texts;            // "Language/DL_N_201_..."
    std::vector<std::string> looked;  // paths that anything was looked up for

    [[nodiscard]] std::optional<std::string> ResolveProcessPath(std::uint32_t processId) override {
        return Find(processes, processId);
    }
    [[nodiscard]] RuleAction LookupAction(const std::string& path) override {
        looked.push_back(path);
        return Find(rules, path).value_or(RuleAction::Ask);
    }
    [[nodiscard]] std::string FileDescription(const std::string& path) override {
        looked.push_back(path);
        return Find(descriptions, path).value_or("");
    }
    [[nodiscard]] std::shared_ptr<const QuestionIcon> Icon(const std::string& path) override {
        looked.push_back(path);
        return nullptr;
    }
    [[nodiscard]] Language LoadLanguage() override { return Language(std::make_unique<FakeIni>(texts)); }
    [[nodiscard]] Ipv4 LocalAddressFor(Ipv4 address) override { return Find(localAddresses, address).value_or(0); }
    [[nodiscard]] std::string HostName(LocalDate day, Ipv4 address) override {
        return day == FakeClock().today ? Find(hosts, address).value_or("") : "";
    }
    [[nodiscard]] std::optional<std::uint32_t> Advice(const std::string& path) override {
        looked.push_back(path);
        return Find(advice, path);
    }

private:
    template <class Key, class Value>
    static std::optional<Value> Find(const std::map<Key, Value>& map, const Key& key) {
        const auto found = map.find(key);
        return found == map.end() ? std::nullopt : std::optional<Value>(found->second);
    }
};

class FakeAsker final : public QuestionAsker {
public:
    PromptAnswer answer;
    bool isReady = true;
    std::function<void()> whileAsking;  // what happens while the question is on screen
    std::vector<PromptQuestion> questions;

    [[nodiscard]] bool IsReadyToAsk() override { return isReady; }
    [[nodiscard]] PromptAnswer Ask(const PromptQuestion& question) override {
        questions.push_back(question);
        if (whileAsking) whileAsking();
        return answer;
    }
};

struct QuestionRig {
    FakeDriver driver;
    FakeClock clock;
    FakeFactSources sources;
    FakePipe pipe;
    FakeAsker asker;
    FakeTaskQueue deciding, programs, connection, delivering;
    FactsGatherer facts{sources, {.deciding = deciding, .programs = programs, .connection = connection}, clock};
    AnswerDelivery delivery{delivering, pipe, clock};
    ConnectionQuestions questions{driver, facts, delivery, asker};

    // A tick, and every look-up that it has led to.
    void TickAndLookUp() {
        questions.Tick();
        while (deciding.Waiting() + programs.Waiting() + connection.Waiting() > 0) {
            for (FakeTaskQueue* const queue : {&deciding, &programs, &connection}) queue->RunAll();
        }
    }
};

}  // namespace brennvar::test
