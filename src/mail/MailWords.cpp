#include "mail/MailWords.h"

#include <utility>

#include "mail/HeaderText.h"

namespace brennvar {

std::string DescribeOutcome(const MailOutcome& outcome, const Language& language) {
    if (outcome.failure) return DescribeFailure(*outcome.failure, language);
    std::string text = language.GetText(1804, "The mail server has taken the mail.");
    if (outcome.refused.empty()) return text;
    text += ' ' + language.GetText(1805, "It refused these recipients:");
    for (const std::string& address : outcome.refused) text += ' ' + CleanText(address);
    return text;
}

MailWork TestMail(MailAccount account, const Language& language, CodePage page) {
    MailWork work{.account = std::move(account),
                  .text = language.GetText(1811, "This is a test mail. The options for mail are right.") + "\r\n",
                  .page = page,
                  .date = {}};
    if (work.account.subject.empty()) work.account.subject = language.GetText(1810, "Test mail of the firewall");
    return work;
}

}  // namespace brennvar
