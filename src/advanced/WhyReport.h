// What "Why?" answers, in the language of the user: one sentence, and below it the stages in their order.
#pragma once

#include <optional>
#include <string>
#include <vector>

#include "advanced/Decision.h"
#include "advanced/WhyFields.h"
#include "config/Language.h"
#include "config/SkinTones.h"

namespace brennvar {

// A row of a page, as PageOwner::OpenPageAt takes it.
struct WhyLink {
    int page = 0;
    std::string row{};
    friend bool operator==(const WhyLink&, const WhyLink&) = default;
};

struct WhyLine {
    std::string stage;    // "Advanced rule 3"
    std::string says;     // its sentence
    std::string verdict;  // "decides"
    Tone tone = Tone::Plain;
    bool isDecider = false;
    std::optional<WhyLink> link{};  // where what it speaks of is changed
};

struct WhyReport {
    std::string answer;
    Tone tone = Tone::Plain;
    std::vector<WhyLine> lines;
    std::size_t decider = 0;  // among the lines
};

// The rules are those that the decision was made of.
[[nodiscard]] WhyReport ReportDecision(const Language& language, const Decision& decision, const KnownRules& known,
                                       const TrafficFacts& facts);

// The name of a field, "Program:".
[[nodiscard]] std::string WhyLabel(const Language& language, WhyField field);
// What stands below the answer, always.
[[nodiscard]] std::string WhyRemark(const Language& language);

}  // namespace brennvar
