// What one connection question needs of the outside: the service's files and pipes, the system, the user.
#pragma once

#include <cstdint>
#include <optional>
#include <string>

#include "base/Ipv4.h"
#include "config/Language.h"
#include "ipc/PipeRecords.h"
#include "prompts/PromptQuestion.h"
#include "rules/ApplicationRuleRecord.h"

namespace brennvar {

// All calls come on the user-interface thread.
class PromptWorld {
public:
    virtual ~PromptWorld() = default;

    // What the rules file says about a program file.
    [[nodiscard]] virtual RuleAction LookupAction(const std::string& path) = 0;
    // 1 allow, 0 deny, another value or nothing: no advice.
    [[nodiscard]] virtual std::optional<std::uint32_t> Advice(const std::string& path) = 0;
    // The executable of a process, at most 259 characters; nothing when the service does not know it.
    [[nodiscard]] virtual std::optional<std::string> ResolveProcessPath(std::uint32_t processId) = 0;
    // The latest name of an address in today's DNS log; empty when it has none.
    [[nodiscard]] virtual std::string HostName(Ipv4 address) = 0;
    // The file description of a program's version resource; empty when there is none.
    [[nodiscard]] virtual std::string FileDescription(const std::string& path) = 0;
    // The own address that the system would use towards another; 0 when it would use none.
    [[nodiscard]] virtual Ipv4 LocalAddressFor(Ipv4 address) = 0;
    // The language that the user has chosen by now.
    [[nodiscard]] virtual Language LoadLanguage() = 0;
    // False: something that is about to end keeps mouse and keyboard to itself. To be asked again a little later.
    [[nodiscard]] virtual bool IsReadyToAsk() { return true; }
    // Shows the question and returns when it is answered. Pumps messages meanwhile, so timers go on.
    [[nodiscard]] virtual PromptAnswer Ask(const PromptQuestion& question) = 0;
    // Hands the answer to the service. It is lost without a word when the service is not there.
    virtual void SendAnswer(const ConnectionPromptAnswer& answer) = 0;
};

}  // namespace brennvar
