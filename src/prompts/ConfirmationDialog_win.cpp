#include "prompts/ConfirmationDialog_win.h"

#include "config/ResourceIds.h"
#include "config/Resources_win.h"
#include "dialogs/AddressMenu_win.h"

namespace brennvar {
namespace {

constexpr int kPathGap = 8;  // below the path, at 96 pixels per inch

}  // namespace

ConfirmationDialog::ConfirmationDialog(const CFonts& fonts, AddressTools& tools, const PromptQuestion& question)
    : QuestionDialog(fonts, ContentOf(question)), m_tools(tools), m_address(question.address) {}

void ConfirmationDialog::OnLink(HWND link) {
    // Rules are for later: the question waits for its answer.
    OpenToolFromMenu(link, m_address, AddressItems::Tools, m_tools, OpenLanguage(), GetLook());
}

QuestionDialog::Content ConfirmationDialog::ContentOf(const PromptQuestion& question) {
    return {.caption = question.caption,
            .icon = question.icon,
            .heading = {{IDC_PROGRAM_NAME, question.displayName, LabelKind::Title},
                        {IDC_PROGRAM_PATH, question.path, LabelKind::Quiet, kPathGap},
                        {IDC_WANTS, question.wantsText, LabelKind::Quiet},
                        {IDC_HOST, question.remoteHost, LabelKind::Title, 0, true},
                        {IDC_SERVICE, question.serviceLabel + " " + question.service, LabelKind::Plain}},
            .card = {.tableTitle = question.detailsTitle,
                     .rows = {{question.remoteLabel, question.remoteAddress},
                              {question.protocolLabel, question.protocol}},
                     .askText = question.askText,
                     .advice = QuestionCard::Advice{question.adviceLabel, question.advice, question.adviceKind}},
            .message = question.body,
            .tickText = question.rememberText,
            .whyNoTick = question.whyNotRemembered,
            .unticked = question.onceText,
            .ticked = question.alwaysText,
            .allowText = question.allowButton,
            .denyText = question.denyButton,
            .linkText = question.addressLink};
}

}  // namespace brennvar
