// Puts a connection question into words.
#pragma once

#include <cstdint>
#include <memory>
#include <optional>
#include <string>

#include "base/Ipv4.h"
#include "config/Language.h"
#include "prompts/PromptQuestion.h"

namespace brennvar {

// What is known about a connection that waits for its decision.
struct PromptFacts {
    std::string path;
    bool applicationKnown = true;  // false: path is only a stand-in, shown in the user's words, without addresses
                                   // and not to be remembered
    std::string fileDescription;   // empty: the program is named by its file
    std::uint32_t protocol = 0;    // IP protocol number
    Ipv4 localAddress = 0;
    std::uint16_t localPort = 0;  // host order, 0: none
    Ipv4 remoteAddress = 0;
    std::uint16_t remotePort = 0;                        // host order, 0: none
    std::string hostName;                                // of the remote address; empty: not known
    std::optional<std::uint32_t> advice;                 // 0 deny, 1 allow, anything else none
    std::shared_ptr<const QuestionIcon> icon = nullptr;  // null: the plain one
    std::optional<std::string> company = std::nullopt;   // see DescribeProgram
    std::uint32_t processId = 0;
};

[[nodiscard]] PromptQuestion BuildPromptQuestion(const PromptFacts& facts, const Language& language);

}  // namespace brennvar
