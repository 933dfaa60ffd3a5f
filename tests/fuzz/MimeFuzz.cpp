// What is encoded decodes to itself, in lines of at most 76 characters, and no field of a message begins a header.
#include <algorithm>

#include "fuzz/FuzzInput.h"
#include "mail/HeaderText.h"
#include "mail/MailMessage.h"
#include "mail/TransferEncoding.h"
#include "tools/Base64.h"

using namespace brennvar;

namespace {

std::string WithLineEnds(const std::string& text, bool keepsCr) {
    std::string out;
    for (std::size_t i = 0; i < text.size(); ++i) {
        const bool isPair = text[i] == '\r' && i + 1 < text.size() && text[i + 1] == '\n';
        if (isPair) ++i;
        if (isPair || text[i] == '\n' || (text[i] == '\r' && !keepsCr)) {
            out += "\r\n";
        } else {
            out += text[i];
        }
    }
    return out;
}

int HexDigit(char c) {
    return c <= '9' ? c - '0' : c - 'A' + 10;
}

std::string DecodeQuoted(const std::string& text) {
    std::string out;
    for (std::size_t i = 0; i < text.size(); ++i) {
        if (text[i] != '=') {
            out += text[i];
        } else if (text.compare(i, 3, "=\r\n") == 0) {
            i += 2;
        } else {
            fuzz::Require(i + 2 < text.size());
            out += static_cast<char>(HexDigit(text[i + 1]) * 16 + HexDigit(text[i + 2]));
            i += 2;
        }
    }
    return out;
}

void RequireShortLines(const std::string& text) {
    std::size_t length = 0;
    for (std::size_t i = 0; i < text.size(); ++i) {
        const bool isEnd = text.compare(i, 2, "\r\n") == 0;
        if (isEnd && i > 0) fuzz::Require(text[i - 1] != ' ' && text[i - 1] != '\t');
        fuzz::Require(isEnd || (text[i] != '\r' && text[i] != '\n'));
        length = isEnd ? 0 : length + 1;
        i += isEnd ? 1 : 0;
        fuzz::Require(length <= 76);
    }
}

std::string DecodeWords(std::string text) {
    const std::string begin = "=?windows-1252?B?";
    if (!text.starts_with(begin)) return text;
    std::string out;
    while (!text.empty()) {
        fuzz::Require(text.starts_with(begin));
        const std::size_t end = text.find("?=");
        fuzz::Require(end != std::string::npos && end + 2 <= 75);
        const auto piece = DecodeBase64(text.substr(begin.size(), end - begin.size()));
        fuzz::Require(piece.has_value());
        out += *piece;
        text.erase(0, end + 2);
        if (!text.empty()) {
            fuzz::Require(text.starts_with("\r\n "));
            text.erase(0, 3);
        }
    }
    return out;
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const std::string text = fuzz::TextOfInput(data, size);

    const std::string quoted = EncodeText(TransferEncoding::QuotedPrintable, text);
    RequireShortLines(quoted);
    fuzz::Require(DecodeQuoted(quoted) == WithLineEnds(text, true));

    std::string base64 = EncodeText(TransferEncoding::Base64, text);
    RequireShortLines(base64);
    fuzz::Require(base64.size() == SizeOfBase64Lines(WithLineEnds(text, false).size()));
    std::erase_if(base64, [](char c) { return c == '\r' || c == '\n'; });
    fuzz::Require(DecodeBase64(base64) == WithLineEnds(text, false));

    fuzz::Require(DecodeWords(EncodeHeaderText(text, CodePage::Western, 9)) == CleanText(text));

    MailMessage message;
    message.from = {text, text};
    message.to = {{text, text}};
    message.subject = text;
    message.messageId = text;
    message.headers.Add(text, text);
    message.headers.Add("X-Other", text);
    message.texts.push_back({.text = text});
    const auto mail = ComposeMail(message, 1);
    fuzz::Require(mail != nullptr);
    std::string whole;
    while (true) {
        const auto piece = mail->Next();
        fuzz::Require(piece.has_value());
        if (piece->empty()) break;
        whole += *piece;
    }
    fuzz::Require(whole.size() == mail->Size());
    fuzz::Require(whole.find("\n.\r\n") == std::string::npos && !whole.starts_with(".\r\n"));
    // Every line end is a whole one, and the headers are the ones that were made.
    for (std::size_t i = 0; i < whole.size(); ++i) {
        fuzz::Require(whole[i] != '\n' || (i > 0 && whole[i - 1] == '\r'));
        fuzz::Require(whole[i] != '\r' || (i + 1 < whole.size() && whole[i + 1] == '\n'));
    }
    const std::string headers = whole.substr(0, whole.find("\r\n\r\n"));
    int lines = 1;
    for (std::size_t at = headers.find("\r\n"); at != std::string::npos; at = headers.find("\r\n", at + 2)) {
        if (headers[at + 2] != ' ' && headers[at + 2] != '\t') ++lines;
    }
    fuzz::Require(lines >= 11 && lines <= 14);
    return 0;
}
