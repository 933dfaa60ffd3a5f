#include "prompts/ActivityText.h"

#include "base/DisplayName.h"
#include "ipc/CommandRecord.h"

namespace brennvar {
namespace {

// A field of a request may be full, which is more than anybody reads, and more than a list of facts can show.
constexpr std::size_t kLongestPath = 1024;
// What the command for it carries beside its final zero. The list knows whole paths only.
constexpr std::size_t kLongestTrustedPath = sizeof(CommandRecord::optionText) - 1;

std::string NameOf(const ActivityProgram& program, const Language& language) {
    const std::string unknown = language.GetText(1115, "Unknown name");
    return program.path.empty() ? unknown : ShownNameOf(program.path, program.fileDescription, unknown);
}

std::string ShownPath(const std::string& path) {
    if (path.size() <= kLongestPath) return ShownText(path);
    // The file name is what tells.
    return "..." + ShownText(path.substr(path.size() - kLongestPath));
}

ActivityQuestion MessageOf(std::string text, const Language& language) {
    ActivityQuestion question;
    question.isMessage = true;
    question.body = std::move(text);
    question.caption = language.GetText(41, "Brennvar Personal Firewall");
    question.allowButton = language.GetText(125, "OK");
    question.denyButton = language.GetText(1001, "Cancel");
    return question;
}

ActivityQuestion QuestionOf(const ActivityFacts& facts, std::string wantsText, const Language& language) {
    ActivityQuestion question;
    question.displayName = NameOf(facts.acting, language);
    question.path = ShownPath(facts.acting.path);
    question.icon = facts.acting.icon;
    question.program = DescribeProgram(facts.acting.path, facts.acting.company, language);
    question.wantsText = std::move(wantsText);
    question.targetName = NameOf(facts.target, language);
    question.targetPath = ShownPath(facts.target.path);
    question.askText = language.GetText(572, "Allow this action?");
    question.body = language.GetText(570, "Process:") + "\n\n" + question.displayName + "\n\n" +
                    question.wantsText + "\n\n" + question.targetName + "\n\n" + question.askText;
    question.caption = language.GetText(566, "Confirm process activity");
    question.allowButton = language.GetText(445, "Yes");
    question.denyButton = language.GetText(446, "No");
    question.closeTip = language.GetText(2434, "Blocks this time");
    question.trustText = language.GetText(567, "Add to the Trusted Applications") + "\n" +
                         language.GetText(568, "and do not ask me next time") + "\n" +
                         language.GetText(569, "for this application.");
    if (facts.acting.path.empty()) {
        question.path = language.GetText(1401, "It could not be found out which program this is.");
        question.whyNotTrusted = language.GetText(1402, "The answer for an unknown program cannot be remembered.");
    } else if (facts.acting.path.size() > kLongestTrustedPath) {
        question.whyNotTrusted =
            language.GetText(1600, "The path of this program is too long for the list of trusted programs.");
    }
    return question;
}

}  // namespace

ActivityQuestion BuildActivityQuestion(const ActivityFacts& facts, const Language& language) {
    switch (facts.kind) {
        case ActivityRequest::Kind::WriteToProcess:
            return QuestionOf(facts, language.GetText(571, "is trying to write data into the remote process:"),
                              language);
        case ActivityRequest::Kind::StartBrowser:
            return QuestionOf(facts, language.GetText(573, "is trying to execute the web browser:"), language);
        case ActivityRequest::Kind::ChangeAppInit:
            return MessageOf(
                language.GetText(575,
                                 "Some application is changing value of the AppInit_DLLs registry key. This "
                                 "key allows to inject library into the executed applications. Allow this "
                                 "action?"),
                language);
        case ActivityRequest::Kind::ChangeWallpaper: break;
    }
    return MessageOf(
        language.GetText(574, "Some application is trying to change desktop wallpaper. Allow this action?"),
        language);
}

}  // namespace brennvar
