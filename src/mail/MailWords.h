// What the user is told when a mail has been sent, or was not.
#pragma once

#include <string>

#include "config/Language.h"
#include "mail/MailSending.h"

namespace brennvar {

// One sentence, and the recipients whom the server refused.
[[nodiscard]] std::string DescribeOutcome(const MailOutcome& outcome, const Language& language);

// The mail that only tries the options out.
[[nodiscard]] MailWork TestMail(MailAccount account, const Language& language, CodePage page);

}  // namespace brennvar
