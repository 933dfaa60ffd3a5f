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
    std::string process;  // the path of every process without one
    std::map<std::string, RuleAction> rules;
    std::optional<std::uint32_t> advice;
    std::map<Ipv4, std::string> hosts;
    std::string description;
    std::string company;
    std::map<Ipv4, Ipv4> localAddresses;
    FakeIni::Values texts;  // "Language/DL_N_201_..."
    std::uint8_t charset = 0;
    std::vector<std::string> looked;  // paths that anything was looked up for

    [[nodiscard]] std::optional<std::string> ResolveProcessPath(std::uint32_t) override { return process; }
    [[nodiscard]] RuleAction LookupAction(const std::string& path) override {
        looked.push_back(path);
        return rules[path];
    }
    [[nodiscard]] std::optional<ProgramVersion> Version(const std::string& path) override {
        looked.push_back(path);
        return ProgramVersion{.description = description, .company = company, .version = {}};
    }
    [[nodiscard]] std::shared_ptr<const QuestionIcon> Icon(const std::string& path) override {
        looked.push_back(path);
        return nullptr;
    }
    [[nodiscard]] QuestionWords LoadWords() override {
        return {.language = Language(std::make_unique<FakeIni>(texts)), .charset = charset};
    }
    [[nodiscard]] Ipv4 LocalAddressFor(Ipv4 address) override { return localAddresses[address]; }
    [[nodiscard]] std::string HostName(LocalDate day, Ipv4 address) override {
        return day == FakeClock().today ? hosts[address] : "";
    }
    [[nodiscard]] std::optional<std::uint32_t> Advice(const std::string& path) override {
        looked.push_back(path);
        return advice;
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
