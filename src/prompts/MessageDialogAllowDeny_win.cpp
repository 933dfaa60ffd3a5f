#include "prompts/MessageDialogAllowDeny_win.h"

#include "config/ResourceIds.h"

namespace brennvar {
namespace {

constexpr int kPathGap = 8;  // below the path, at 96 pixels per inch

}  // namespace

MessageDialogAllowDeny::MessageDialogAllowDeny(const CFonts& fonts, const ActivityQuestion& question)
    : QuestionDialog(fonts, ContentOf(question)) {}

QuestionDialog::Content MessageDialogAllowDeny::ContentOf(const ActivityQuestion& question) {
    return {.caption = question.caption,
            .icon = question.icon,
            .heading = {{IDC_PROGRAM_NAME, question.displayName, LabelKind::Title},
                        {IDC_PROGRAM_PATH, question.path, LabelKind::Quiet, kPathGap},
                        {IDC_WANTS, question.wantsText, LabelKind::Quiet},
                        {IDC_HOST, question.targetName, LabelKind::Title},
                        {IDC_TARGET_PATH, question.targetPath, LabelKind::Quiet}},
            .card = {.tableTitle = {}, .rows = {}, .askText = question.askText},
            .message = question.body,
            .tickText = question.trustText,
            .whyNoTick = question.whyNotTrusted,
            .allowText = question.allowButton,
            .denyText = question.denyButton};
}

}  // namespace brennvar
