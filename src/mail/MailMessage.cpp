#include "mail/MailMessage.h"

#include <algorithm>
#include <array>
#include <cstdio>

#include "base/AsciiCase.h"
#include "mail/HeaderText.h"

namespace brennvar {
namespace {

constexpr std::string_view kLineEnd = "\r\n";
constexpr std::string_view kContentType = "Content-Type";

// A header's name: printable, without a colon (RFC 5322, 2.2).
bool IsHeaderName(std::string_view name) {
    return !name.empty() &&
           std::all_of(name.begin(), name.end(), [](char c) { return c > ' ' && c < '\x7F' && c != ':'; });
}

// Only folded lines stay lines.
std::string SafeValue(std::string_view value) {
    std::string safe;
    while (!value.empty()) {
        const bool isFold =
            value.size() > 2 && value.starts_with(kLineEnd) && (value[2] == ' ' || value[2] == '\t');
        const std::size_t count = isFold ? 3 : 1;
        safe += isFold ? std::string(value.substr(0, count)) : CleanText(value.substr(0, count));
        value.remove_prefix(count);
    }
    return safe;
}

std::string Entry(const MailAddress& who, CodePage page) {
    const std::string address = '<' + CleanText(who.address) + '>';
    if (who.name.empty()) return address;
    const std::string name = EncodeDisplayName(who.name, page);
    if (name.front() == '"') return name + ' ' + address;
    // A line with encoded words has at most 76 characters (RFC 2047, 2).
    constexpr std::size_t kLongestLine = 76;
    const std::size_t lastLine = name.size() - (name.rfind('\n') + 1);  // of one that is not folded: all of it
    const bool fits = kBeforeName + lastLine + 1 + address.size() <= kLongestLine;
    return name + (fits ? " " : "\r\n ") + address;
}

std::string Quoted(const std::string& text) {
    return '"' + text + '"';
}

class Composer {
public:
    Composer(const MailMessage& message, std::uint32_t boundaryNumber)
        : m_message(message), m_mail(std::make_unique<MailText>()) {
        EncodeTexts();
        m_outer = Boundary(0, boundaryNumber);
        m_inner = Boundary(1, boundaryNumber);
    }

    std::unique_ptr<MailText> Compose() {
        WriteHeaders();
        if (!IsMultipart()) {
            m_mail->AddText(kLineEnd);
            if (!m_texts.empty()) m_mail->AddText(m_texts.front());
            return std::move(m_mail);
        }
        m_mail->AddText("\r\nThis is a multipart message in MIME format");
        if (IsNested()) {
            Open(m_outer);
            m_mail->AddText("Content-Type: multipart/alternative;\r\n\tboundary=" + Quoted(m_inner) + "\r\n");
        }
        WriteTexts(IsNested() ? m_inner : m_outer);
        if (IsNested()) CloseAll(m_inner);
        for (const MailFilePart& file : m_message.files) {
            if (!WriteFile(file)) return nullptr;
        }
        CloseAll(m_outer);
        return std::move(m_mail);
    }

private:
    [[nodiscard]] bool IsMultipart() const { return m_texts.size() > 1 || !m_message.files.empty(); }
    [[nodiscard]] bool IsNested() const { return m_texts.size() > 1 && !m_message.files.empty(); }
    [[nodiscard]] const char* Subtype() const {
        if (m_message.files.empty()) return "alternative";
        const bool isAttached = std::any_of(m_message.files.begin(), m_message.files.end(),
                                            [](const MailFilePart& file) { return !file.isInline; });
        return isAttached ? "mixed" : "related";
    }

    void EncodeTexts() {
        for (const MailTextPart& part : m_message.texts) {
            m_encodings.push_back(FittingEncoding(part.encoding, part.text));
            m_texts.push_back(EncodeText(m_encodings.back(), part.text));
        }
    }

    [[nodiscard]] std::string Boundary(unsigned level, std::uint32_t number) const {
        std::array<char, 48> boundary{};
        do {
            (void)std::snprintf(boundary.data(), boundary.size(), "CSmtpMsgPart123X456_%03u_%8.8X", level,
                                number++);
        } while (std::any_of(m_texts.begin(), m_texts.end(), [&](const std::string& text) {
            return text.find(boundary.data()) != std::string::npos;
        }));
        return boundary.data();
    }

    void WriteHeaders() {
        MailHeaders headers = m_message.headers;
        headers.Add("X-Priority", "3 (Normal)");
        headers.Add("X-MSMail-Priority", "Normal");
        headers.Add("X-Mailer", "Brennvar Personal Firewall");
        headers.Add("Importance", "Normal");
        headers.Add("Date", FormatMailDate(m_message.date));
        constexpr std::string_view kSubject = "Subject";
        headers.Add(kSubject, EncodeHeaderText(m_message.subject, m_message.page, kSubject.size() + 2));
        headers.Add("To", Named());
        headers.Add("From", Entry(m_message.from, m_message.page));
        if (IsMultipart()) {
            headers.Add(kContentType, std::string("multipart/") + Subtype() + ";\r\n\tboundary=" + Quoted(m_outer));
        } else if (!m_texts.empty()) {
            headers.Add(kContentType, TypeOf(m_message.texts.front()));
            headers.Add("Content-Transfer-Encoding", NameOf(m_encodings.front()));
            const std::string& id = m_message.texts.front().contentId;
            if (!id.empty()) headers.Add("Content-ID", '<' + CleanText(id) + '>');
        }
        headers.Add("MIME-Version", "1.0");
        if (!m_message.messageId.empty()) headers.Add("Message-ID", '<' + CleanText(m_message.messageId) + '>');
        m_mail->AddText(headers.Text());
    }

    [[nodiscard]] std::string Named() const {
        std::string named;
        for (const std::vector<MailAddress>* const list : {&m_message.to, &m_message.cc}) {
            for (const MailAddress& who : *list) {
                if (!named.empty()) named += ",\r\n\t";
                named += Entry(who, m_message.page);
            }
        }
        return named;
    }

    [[nodiscard]] static std::string TypeOf(const MailTextPart& part) {
        return CleanText(part.contentType) + ";\r\n\tcharset=" + Quoted(CleanText(part.charset));
    }

    void Open(const std::string& boundary) { m_mail->AddText("\r\n--" + boundary + "\r\n"); }
    void CloseAll(const std::string& boundary) { m_mail->AddText("\r\n--" + boundary + "--\r\n"); }

    void WriteTexts(const std::string& boundary) {
        for (std::size_t i = 0; i < m_texts.size(); ++i) {
            const MailTextPart& part = m_message.texts[i];
            Open(boundary);
            std::string head = std::string(kContentType) + ": " + TypeOf(part) +
                               "\r\nContent-Transfer-Encoding: " + NameOf(m_encodings[i]);
            if (!part.contentId.empty()) head += "\r\nContent-ID: <" + CleanText(part.contentId) + '>';
            m_mail->AddText(head + "\r\n\r\n");
            m_mail->AddText(m_texts[i]);
        }
    }

    [[nodiscard]] bool WriteFile(const MailFilePart& file) {
        const std::string name = EncodeFileName(file.name, m_message.page);
        Open(m_outer);
        m_mail->AddText(std::string(kContentType) + ": " + CleanText(file.contentType) + ";\r\n\tname=" + name +
                        "\r\nContent-Transfer-Encoding: " + NameOf(TransferEncoding::Base64) +
                        "\r\nContent-Disposition: " + (file.isInline ? "inline" : "attachment") +
                        ";\r\n\tfilename=" + name + "\r\n\r\n");
        return m_mail->AddFile(file.path);
    }

    const MailMessage& m_message;
    std::unique_ptr<MailText> m_mail;
    std::vector<std::string> m_texts;  // encoded
    std::vector<TransferEncoding> m_encodings;
    std::string m_outer;
    std::string m_inner;
};

}  // namespace

void MailHeaders::Add(std::string_view name, std::string_view value) {
    if (!IsHeaderName(name) || EqualsIgnoringCase(name, "Bcc") || Has(name)) return;
    m_headers.emplace_back(name, SafeValue(value));
}

bool MailHeaders::Has(std::string_view name) const {
    return std::any_of(m_headers.begin(), m_headers.end(),
                       [name](const auto& header) { return EqualsIgnoringCase(header.first, name); });
}

std::string MailHeaders::Text() const {
    std::string text;
    for (const auto& [name, value] : m_headers) text.append(name).append(": ").append(value).append(kLineEnd);
    return text;
}

std::vector<MailAddress> MailMessage::Recipients() const {
    std::vector<MailAddress> all = to;
    all.insert(all.end(), cc.begin(), cc.end());
    all.insert(all.end(), bcc.begin(), bcc.end());
    return all;
}

std::unique_ptr<MailText> ComposeMail(const MailMessage& message, std::uint32_t boundaryNumber) {
    return Composer(message, boundaryNumber).Compose();
}

}  // namespace brennvar
