#include "prompts/ConfirmationDialog_win.h"

#include <utility>
#include <vector>

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
    std::vector<Heading> heading = ProgramHeading(question.displayName, question.path, question.program, kPathGap);
    heading.push_back({IDC_WANTS, question.wantsText, LabelKind::Quiet});
    heading.push_back({IDC_HOST, question.remoteHost, LabelKind::Title, 0, true});
    heading.push_back({IDC_SERVICE, question.serviceLabel + " " + question.service, LabelKind::Plain});
    std::vector<QuestionCard::Row> rows = PublisherRow(question.program);
    rows.push_back({IDC_FACT_REMOTE_HOST, question.remoteLabel, question.remoteAddress});
    rows.push_back({IDC_FACT_PROTOCOL, question.protocolLabel, question.protocol});
    rows.push_back({IDC_FACT_LOCAL_ADDRESS, question.localLabel, question.localAddress});
    rows.push_back({IDC_FACT_PROCESS, question.processLabel, question.processId});
    return {.caption = question.caption,
            .icon = question.icon,
            .programFile = question.program.file,
            .heading = std::move(heading),
            .card = {.tableTitle = question.detailsTitle,
                     .rows = std::move(rows),
                     .askText = question.askText,
                     .advice = QuestionCard::Advice{question.adviceLabel, question.advice, question.adviceKind}},
            .message = question.body,
            .tickText = question.rememberText,
            .whyNoTick = question.whyNotRemembered,
            .unticked = question.onceText,
            .ticked = question.alwaysText,
            .allowText = question.allowButton,
            .denyText = question.denyButton,
            .closeTip = question.closeTip,
            .linkText = question.addressLink};
}

}  // namespace brennvar
