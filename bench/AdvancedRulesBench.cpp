// 20,000 advanced rules: telling which one decides, beside one look at each rule's record, and finding those that
// others cover, beside one look at every pair.
#include <benchmark/benchmark.h>

#include <cstring>
#include <random>
#include <vector>

#include "advanced/Decision.h"
#include "advanced/WhyReport.h"
#include "rules/CoveredRules.h"

namespace brennvar {
namespace {

constexpr std::size_t kRules = 20'000;

// Rules for single ports and networks of programs, as a long-grown list has them. None decides about the traffic
// that is asked about, so that all are looked at.
std::vector<AdvancedRule> ManyRules() {
    std::mt19937 random(7);
    std::vector<AdvancedRule> rules(kRules);
    for (AdvancedRule& rule : rules) {
        rule.protocol = random() % 2 == 0 ? RuleProtocol::Tcp : RuleProtocol::Udp;
        rule.route = static_cast<RuleRoute>(random() % 3);
        if (random() % 2 == 0) {
            rule.remote.kind = RuleEnd::Kind::Ipv4;
            rule.remote.address = SwapAddress(0x0A000000 | (random() & 0xFFFF));
            rule.remote.mask = MaskOf(16 + static_cast<int>(random() % 17));
        }
        rule.remote.firstPort = rule.remote.lastPort = static_cast<std::uint16_t>(1 + random() % 40'000);
        if (random() % 4 == 0) rule.hours = RuleHours{.first = 480, .last = 1020};
        if (random() % 2 == 0) {
            rule.program =
                R"(C:\Program Files\Maker\Program )" + std::to_string(random() % 500) + R"(\program.exe)";
        }
    }
    return rules;
}

const std::vector<AdvancedRule>& Rules() {
    static const std::vector<AdvancedRule> rules = ManyRules();
    return rules;
}

const TrafficFacts& Facts() {
    static const TrafficFacts facts{.program = R"(C:\Program Files\Maker\Program 7\program.exe)",
                                    .protocol = 6,
                                    .direction = TrafficDirection::Outgoing,
                                    .localAddress = 0x0100000A,
                                    .remoteAddress = 0x0100000A,
                                    .localPort = 5000,
                                    .remotePort = 50'000};
    return facts;
}

void WhyRules(benchmark::State& state) {
    const KnownRules known{.mode = ProtectionMode::Normal, .advanced = Rules(), .application = RuleAction::Ask};
    for (auto _ : state) {
        const Decision decision = Decide(known, Facts(), {.day = {2026, 12, 1}, .minute = 720});
        if (decision.notMatching != kRules) state.SkipWithError("a rule matches");
    }
}
BENCHMARK(WhyRules)->Unit(benchmark::kMillisecond);

// Of what is known of a row with no more than an address, with the answer in words, as the dialog makes it at each
// key: most rules may match.
void WhyRulesOfAnAddress(benchmark::State& state) {
    std::vector<AdvancedRule> rules = Rules();
    for (AdvancedRule& rule : rules) {
        rule.remote.kind = RuleEnd::Kind::Any;
        rule.hours.reset();
    }
    const TrafficFacts facts{.remoteAddress = 0x0100000A};
    const KnownRules known{.mode = ProtectionMode::Normal, .advanced = rules, .application = RuleAction::Ask};
    const Language language(nullptr);
    for (auto _ : state) {
        const Decision decision = Decide(known, facts, {.day = {2026, 12, 1}, .minute = 720});
        if (decision.notMatching != 0) state.SkipWithError("a rule does not match");
        benchmark::DoNotOptimize(ReportDecision(language, decision, known, facts));
    }
}
BENCHMARK(WhyRulesOfAnAddress)->Unit(benchmark::kMillisecond);

// The least: the texts and numbers of every rule are copied once.
void CopyAdvancedRules(benchmark::State& state) {
    std::vector<AdvancedRuleRecord> records(kRules);
    for (auto _ : state) {
        for (std::size_t i = 0; i < kRules; ++i) records[i] = EncodeRule(Rules()[i]);
        benchmark::ClobberMemory();
    }
}
BENCHMARK(CopyAdvancedRules)->Unit(benchmark::kMillisecond);

void CoveredRules(benchmark::State& state) {
    const StopSignal stop;
    for (auto _ : state) benchmark::DoNotOptimize(FindCoveredRules(Rules(), stop));
}
BENCHMARK(CoveredRules)->Unit(benchmark::kMillisecond);

// Rules of one shape, for ports that are all others: none covers another one, and none can be told apart by the
// values that rules have in common.
void CoveredRulesOfOneShape(benchmark::State& state) {
    std::vector<AdvancedRule> rules(kRules);
    for (std::size_t i = 0; i < kRules; ++i) {
        rules[i].protocol = RuleProtocol::Tcp;
        rules[i].remote.firstPort = rules[i].remote.lastPort = static_cast<std::uint16_t>(i + 1);
    }
    const StopSignal stop;
    for (auto _ : state) benchmark::DoNotOptimize(FindCoveredRules(rules, stop));
}
BENCHMARK(CoveredRulesOfOneShape)->Unit(benchmark::kMillisecond);

// Rules of as many shapes as there can be: each is compared with all of them.
void CoveredRulesOfAllShapes(benchmark::State& state) {
    std::vector<AdvancedRule> rules(kRules);
    std::mt19937 random(9);
    const RuleProtocol protocols[] = {RuleProtocol::Tcp, RuleProtocol::Udp, RuleProtocol::Icmp, RuleProtocol::Ip};
    for (AdvancedRule& rule : rules) {
        rule.protocol = protocols[random() % 4];
        rule.route = static_cast<RuleRoute>(random() % 3);
        for (RuleEnd* end : {&rule.local, &rule.remote}) {
            end->kind = RuleEnd::Kind::Ipv4;
            end->address = static_cast<Ipv4>(random());
            end->mask = MaskOf(8 + static_cast<int>(random() % 25));
        }
        if (random() % 2 == 0) rule.user.assign(1, 'u');
        if (random() % 2 == 0) rule.program.assign(1, 'p');
    }
    const StopSignal stop;
    for (auto _ : state) benchmark::DoNotOptimize(FindCoveredRules(rules, stop));
}
BENCHMARK(CoveredRulesOfAllShapes)->Unit(benchmark::kMillisecond);

// One pass over all pairs, with the cheapest question that could be asked of each.
void AllPairs(benchmark::State& state) {
    const auto& rules = Rules();
    std::vector<std::uint32_t> protocols(kRules);
    for (std::size_t i = 0; i < kRules; ++i) protocols[i] = static_cast<std::uint32_t>(rules[i].protocol);
    for (auto _ : state) {
        std::size_t same = 0;
        for (std::size_t i = 0; i < kRules; ++i) {
            for (std::size_t j = 0; j < i; ++j) same += protocols[i] == protocols[j] ? 1 : 0;
            benchmark::DoNotOptimize(same);
        }
    }
}
BENCHMARK(AllPairs)->Unit(benchmark::kMillisecond);

}  // namespace
}  // namespace brennvar
