#include "rules/CoveredRules.h"

#include <gtest/gtest.h>

#include <random>

#include "rules/RuleMatch.h"
#include "support/RuleWords.h"

namespace brennvar {
namespace {

// What a rule matches, out of traffic that has a sample on each side of every border that the rules below have.
class Samples {
public:
    Samples() {
        const char* parts[][7] = {
            {"icmp", "tcp", "udp", "47", "arp"},
            {"in", "out"},
            {"r=192.0.2.1 rh=2", "r=192.0.2.2 rh=1", "r=192.0.9.9 rh=2", "r=10.0.0.1 rh=1", "r=10.0.0.1 rh=2"},
            {"rp=80", "rp=84", "rp=1", "rp=60000"},
            {"l=10.0.0.1 lp=5", "l=10.0.0.1 lp=6", "l=11.0.0.1 lp=5"},
            {"t=0", "t=370", "t=490", "t=550", "t=700", "t=1100", "t=1330"},
            {"d=20261201", "d=20261202", "d=20261203"},
            {"p=A u=me", "p=A u=you", "p=b u=me"}};
        m_words = {""};
        for (const auto& part : parts) {
            std::vector<std::string> longer;
            for (const std::string& words : m_words) {
                for (const char* word : part) {
                    if (word) longer.push_back(words + ' ' + word);
                }
            }
            m_words = std::move(longer);
        }
        for (const std::string& words : m_words) m_facts.push_back(test::FactsIn(words));
    }
    [[nodiscard]] std::vector<bool> MatchedBy(const AdvancedRule& rule) const {
        std::vector<bool> matched;
        for (const TrafficFacts& facts : m_facts) {
            matched.push_back(MatchRule(rule, facts, *facts.when).answer == RuleAnswer::Yes);
        }
        return matched;
    }

private:
    std::vector<std::string> m_words;
    std::vector<TrafficFacts> m_facts;
};

bool IsSubset(const std::vector<bool>& narrow, const std::vector<bool>& wide) {
    for (std::size_t i = 0; i < narrow.size(); ++i) {
        if (narrow[i] && !wide[i]) return false;
    }
    return true;
}

TEST(CoveredRulesTest, AgreesWithWhatTheRulesMatch) {
    const std::vector<std::vector<const char*>> parts = {
        {"any", "any", "ip", "icmp", "tcp", "tcp", "udp", "arp"},
        {"", "", "in", "out"},
        {"", "", "r=192.0.2.0/24", "r=192.0.2.9/24", "r=192.0.0.0/16", "r=192.0.2.1", "r=1.2.3.4/0", "rh=1"},
        {"", "", "", "rp=80-88", "rp=80", "rp=0-88", "rp=1-65535"},
        {"", "", "", "l=10.0.0.0/8"},
        {"", "", "lp=5"},
        {"", "", "", "h=480-1020", "h=1320-360", "h=480-479", "h=540-560", "h=1080-560"},
        {"", "", "", "d=20261201-20261202", "d=20261202"},
        {"", "", "p=a", "p=A"},
        {"", "", "", "u=me"},
        {"deny", "allow"},
        {"", "", "", "", "", "", "", "off", "damaged"}};
    const Samples samples;
    std::mt19937 random(12);  // the same rules every time
    std::vector<AdvancedRule> rules;
    std::vector<std::string> words;
    std::vector<std::vector<bool>> matched;
    for (int i = 0; i < 100; ++i) {
        std::string& line = words.emplace_back();
        for (const auto& part : parts) line += std::string(part[random() % part.size()]) + ' ';
        rules.push_back(test::RuleIn(line));
        matched.push_back(samples.MatchedBy(rules.back()));
    }
    const std::vector<int> covered = FindCoveredRules(rules, StopSignal());
    int count = 0;
    for (std::size_t i = 0; i < rules.size(); ++i) {
        const bool isAsked = rules[i].isEnabled && !rules[i].isDamaged;
        std::size_t first = 0;
        while (first < i && !(isAsked && rules[first].isEnabled && !rules[first].isDamaged &&
                              IsSubset(matched[i], matched[first]))) {
            ++first;
        }
        EXPECT_EQ(covered[i], first < i ? static_cast<int>(first) : kNotCovered)
            << words[i] << "\nby " << words[first];
        if (first < i) ++count;
    }
    EXPECT_GT(count, 15);
    EXPECT_LT(count, 80);
    StopSignal stop;
    stop.Request();
    EXPECT_EQ(FindCoveredRules(rules, stop), std::vector<int>(rules.size(), kNotCovered));
}

}  // namespace
}  // namespace brennvar
