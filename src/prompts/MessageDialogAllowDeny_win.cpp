#include "prompts/MessageDialogAllowDeny_win.h"

#include <utility>
#include <vector>

#include "config/ResourceIds.h"

namespace brennvar {
namespace {

constexpr int kPathGap = 8;  // below the path, at 96 pixels per inch

}  // namespace

MessageDialogAllowDeny::MessageDialogAllowDeny(const CFonts& fonts, const ActivityQuestion& question)
    : QuestionDialog(fonts, ContentOf(question)) {}

QuestionDialog::Content MessageDialogAllowDeny::ContentOf(const ActivityQuestion& question) {
    std::vector<Heading> heading = ProgramHeading(question.displayName, question.path, question.program, kPathGap);
    heading.push_back({IDC_WANTS, question.wantsText, LabelKind::Quiet});
    heading.push_back({IDC_HOST, question.targetName, LabelKind::Title});
    heading.push_back({IDC_TARGET_PATH, question.targetPath, LabelKind::Quiet});
    return {.caption = question.caption,
            .icon = question.icon,
            .programFile = question.program.file,
            .heading = std::move(heading),
            .card = {.tableTitle = {}, .rows = PublisherRow(question.program), .askText = question.askText},
            .message = question.body,
            .tickText = question.trustText,
            .whyNoTick = question.whyNotTrusted,
            .allowText = question.allowButton,
            .denyText = question.denyButton,
            .closeTip = question.closeTip};
}

}  // namespace brennvar
