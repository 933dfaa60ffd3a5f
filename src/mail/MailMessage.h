// A message: who writes it, who gets it, and its parts, which are put together in MIME form (RFC 2045, 2046).
#pragma once

#include <cstdint>
#include <memory>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "config/CodePage.h"
#include "mail/MailAddress.h"
#include "mail/MailDate.h"
#include "mail/MailText.h"
#include "mail/TransferEncoding.h"

namespace brennvar {

// Headers in the order in which they were added. The first of a name wins, whatever its case. Names that are no
// lawful ones are left out, and so is "Bcc": who gets a blind copy is for the server alone.
class MailHeaders {
public:
    // Line ends in the value that do not go on with a blank or a tab become blanks: they would begin another
    // header.
    void Add(std::string_view name, std::string_view value);
    [[nodiscard]] bool Has(std::string_view name) const;
    // Every header as "Name: value" and a line end.
    [[nodiscard]] std::string Text() const;

private:
    std::vector<std::pair<std::string, std::string>> m_headers;
};

struct MailTextPart {
    std::string contentType = "text/plain";
    std::string charset = "iso-8859-1";
    TransferEncoding encoding = TransferEncoding::SevenBit;  // see FittingEncoding
    std::string contentId{};                                 // without angle brackets; empty: none
    std::string text{};
};

struct MailFilePart {
    std::string path;
    std::string name;                                      // as the recipient sees it
    std::string contentType = "application/octet-stream";  // the encoding is base64
    bool isInline = false;                                 // part of what is read, and not attached to it
};

struct MailMessage {
    MailAddress from;
    std::vector<MailAddress> to;   // at least one
    std::vector<MailAddress> cc;   // named in "To" behind the others
    std::vector<MailAddress> bcc;  // in no header
    std::string subject;
    CodePage page = CodePage::Western;  // of subject and names
    MailHeaders headers;                // of the caller; they come first
    MailDate date;
    std::string messageId;  // without angle brackets; empty: none
    // Several texts are alternatives of one another, the best last.
    std::vector<MailTextPart> texts;
    std::vector<MailFilePart> files;

    // Everybody who gets it, in the order in which the server is told.
    [[nodiscard]] std::vector<MailAddress> Recipients() const;
};

// The message as it is sent, without the line that ends it. boundaryNumber is the first that is tried for the
// boundaries: one that a text contains is not taken. Null when a file cannot be opened.
[[nodiscard]] std::unique_ptr<MailText> ComposeMail(const MailMessage& message, std::uint32_t boundaryNumber);

}  // namespace brennvar
