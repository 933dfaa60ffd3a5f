// Where the facts of a question come from: the service's files and pipes, and the system.
#pragma once

#include <cstdint>
#include <memory>
#include <optional>
#include <string>

#include "base/Clock.h"
#include "base/Ipv4.h"
#include "base/ProgramVersion.h"
#include "prompts/PromptQuestion.h"
#include "prompts/QuestionWords.h"
#include "rules/ApplicationRuleRecord.h"

namespace brennvar {

// What is told of a program, and in which words. Every call may take long and comes on a thread that may wait: the
// look-ups of program files on one thread, the language on another. What cannot be found out is empty.
class ProgramSources {
public:
    virtual ~ProgramSources() = default;

    // Nothing when the file was not looked into: it is not there, or on another machine.
    [[nodiscard]] virtual std::optional<ProgramVersion> Version(const std::string& path) = 0;
    [[nodiscard]] virtual std::shared_ptr<const QuestionIcon> Icon(const std::string& path) = 0;
    // The language that the user has chosen by now.
    [[nodiscard]] virtual QuestionWords LoadWords() = 0;
};

// Of a connection. Here the first two come on one thread that may wait, the others on that of the language.
class FactSources : public ProgramSources {
public:
    // The executable of a process, at most 259 characters.
    [[nodiscard]] virtual std::optional<std::string> ResolveProcessPath(std::uint32_t processId) = 0;
    // What the rules file says about a program file.
    [[nodiscard]] virtual RuleAction LookupAction(const std::string& path) = 0;

    // The own address that the system would use towards another; 0 when it would use none.
    [[nodiscard]] virtual Ipv4 LocalAddressFor(Ipv4 address) = 0;
    // The latest name of an address in the DNS log of that day.
    [[nodiscard]] virtual std::string HostName(LocalDate day, Ipv4 address) = 0;
    // 1 allow, 0 deny, another value or nothing: no advice.
    [[nodiscard]] virtual std::optional<std::uint32_t> Advice(const std::string& path) = 0;
};

}  // namespace brennvar
