// Puts what a program wants to do into words.
#pragma once

#include <cstdint>
#include <memory>
#include <optional>
#include <string>

#include "config/Language.h"
#include "prompts/ActivityRequest.h"
#include "prompts/ProgramWords.h"
#include "prompts/PromptQuestion.h"

namespace brennvar {

// A program that takes part.
struct ActivityProgram {
    std::string path;
    std::string fileDescription{};  // empty: none, or not known in time
    std::shared_ptr<const QuestionIcon> icon{};
    std::optional<std::string> company{};  // see DescribeProgram
};

struct ActivityFacts {
    ActivityRequest::Kind kind = ActivityRequest::Kind::WriteToProcess;
    ActivityProgram acting{};
    ActivityProgram target{};
};

// All texts are in the language of the user, without trailing line breaks.
struct ActivityQuestion {
    // A message with OK and Cancel, which has only caption, body and buttons.
    bool isMessage = false;

    std::string displayName;  // of the program that acts
    std::string path;
    std::shared_ptr<const QuestionIcon> icon;
    ProgramWords program;    // likewise
    std::string wantsText;   // "is trying to write data into the remote process:"
    std::string targetName;  // of the program that it acts on
    std::string targetPath;
    std::string askText;  // "Allow this action?"

    std::string body;  // the question as one text, broken by "\n"
    std::string caption;
    std::string allowButton;
    std::string denyButton;
    std::string closeTip;       // what closing the question does
    std::string trustText;      // three lines
    std::string whyNotTrusted;  // empty: the program can be trusted

    std::uint8_t charset = 0;  // of the fonts, by the language of the texts
};

[[nodiscard]] ActivityQuestion BuildActivityQuestion(const ActivityFacts& facts, const Language& language);

}  // namespace brennvar
