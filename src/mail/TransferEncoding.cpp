#include "mail/TransferEncoding.h"

#include <algorithm>
#include <array>

#include "tools/Base64.h"

namespace brennvar {
namespace {

constexpr std::size_t kLongestTextLine = 998;  // RFC 5322, 2.1.1
constexpr std::size_t kLongestLine = 76;       // RFC 2045, 6.7 (5)
// Of a line that goes on in the next one: the "=" at its end counts as well.
constexpr std::size_t kSoft = kLongestLine - 1;
constexpr std::size_t kWordLimit = kSoft / 2;  // a longer word is broken
constexpr std::size_t kCodeSize = 3;           // "=3D"
constexpr char kHexDigits[] = "0123456789ABCDEF";

// What some gateways of old harm on its way, and "=", is written as a code.
constexpr std::string_view kHarmed = "!#@[\\]^`{|}~\"=";
// A line is rather broken behind one of these, or behind a blank, than in the middle of a word.
constexpr std::string_view kBreaks = "-;.,?! \t";

constexpr std::array<bool, 256> MakePlain() {
    std::array<bool, 256> plain{};
    for (unsigned c = 33; c <= 126; ++c) plain[c] = kHarmed.find(static_cast<char>(c)) == std::string_view::npos;
    plain[' '] = true;
    plain['\t'] = true;
    return plain;
}
constexpr std::array<bool, 256> kPlain = MakePlain();

constexpr std::array<bool, 256> kIsBreak = [] {
    std::array<bool, 256> isBreak{};
    for (const char c : kBreaks) isBreak[static_cast<unsigned char>(c)] = true;
    return isBreak;
}();

std::string WithLineEnds(std::string_view text) {
    std::string out;
    out.reserve(text.size() + text.size() / 32);
    while (!text.empty()) {
        const std::size_t count = std::min(text.find_first_of("\r\n"), text.size());
        out.append(text.substr(0, count));
        text.remove_prefix(count);
        if (text.empty()) break;
        out += "\r\n";
        text.remove_prefix(text.starts_with("\r\n") ? 2 : 1);
    }
    return out;
}

}  // namespace

const char* NameOf(TransferEncoding encoding) {
    switch (encoding) {
        case TransferEncoding::SevenBit: return "7bit";
        case TransferEncoding::EightBit: return "8bit";
        case TransferEncoding::QuotedPrintable: return "quoted-printable";
        default: return "base64";
    }
}

TransferEncoding FittingEncoding(TransferEncoding wanted, std::string_view text) {
    if (wanted == TransferEncoding::QuotedPrintable || wanted == TransferEncoding::Base64) return wanted;
    std::size_t length = 0;
    for (const char c : text) {
        length = c == '\n' || c == '\r' ? 0 : length + 1;
        const bool isAbove = static_cast<unsigned char>(c) > 127 && wanted == TransferEncoding::SevenBit;
        if (isAbove || c == '\0' || length > kLongestTextLine) return TransferEncoding::QuotedPrintable;
    }
    return wanted;
}

std::string EncodeText(TransferEncoding encoding, std::string_view text) {
    if (encoding == TransferEncoding::QuotedPrintable) {
        std::string quoted;
        quoted.reserve(text.size() + text.size() / 8);
        QuotedPrintable lines(text);
        while (lines.AppendNext(quoted)) {
        }
        return quoted;
    }
    std::string lines = WithLineEnds(text);
    if (encoding != TransferEncoding::Base64) return lines;
    std::string encoded;
    AppendBase64Lines(encoded, lines, true);
    return encoded;
}

bool QuotedPrintable::AppendNext(std::string& out) {
    if (m_text.empty()) return false;
    std::size_t at = 0;
    while (at < m_text.size() && at < kPiece) {
        const char c = m_text[at];
        if (kPlain[static_cast<unsigned char>(c)]) {
            if (m_length == kSoft) BreakSoftly(out);
            at += AppendPlain(m_text.substr(at, kPiece - at));
            continue;
        }
        if (c == '\n' || (c == '\r' && at + 1 < m_text.size() && m_text[at + 1] == '\n')) {
            if (c == '\r') ++at;
            EndLine(out);
        } else {
            if (m_length + kCodeSize > kSoft) BreakSoftly(out);
            AppendCode(c);
        }
        ++at;
    }
    m_text.remove_prefix(at);
    if (m_text.empty()) {
        CodeTrailingBlank(out);
        out.append(m_line.data(), m_length);
    }
    return true;
}

std::size_t QuotedPrintable::AppendPlain(std::string_view text) {
    // Counted beside the line: what is written into it could be any member, as far as the compiler knows.
    const std::size_t most = std::min(text.size(), kSoft - m_length);
    const char* const from = text.data();
    char* const to = m_line.data() + m_length;
    std::size_t count = 0;
    for (; count < most && kPlain[static_cast<unsigned char>(from[count])]; ++count) to[count] = from[count];
    m_length += count;
    return count;
}

void QuotedPrintable::AppendCode(char c) {
    const auto byte = static_cast<unsigned char>(c);
    m_line[m_length++] = '=';
    m_line[m_length++] = kHexDigits[byte >> 4];
    m_line[m_length++] = kHexDigits[byte & 0xF];
}

void QuotedPrintable::EndLine(std::string& out) {
    CodeTrailingBlank(out);
    m_line[m_length++] = '\r';
    m_line[m_length++] = '\n';
    out.append(m_line.data(), m_length);
    m_length = 0;
}

// Moves what follows the last good place, if there is one, to the next line.
void QuotedPrintable::BreakSoftly(std::string& out) {
    // Behind a character of kBreaks, as it stands or as a code. All of kBreaks but "!" stand as they are.
    const auto isGoodPlace = [this](std::size_t at) {
        if (kIsBreak[static_cast<unsigned char>(m_line[at - 1])]) return true;
        return std::string_view(m_line.data() + at - kCodeSize, kCodeSize) == "=21";
    };
    std::size_t at = m_length;
    const std::size_t last = at - kWordLimit;  // a line is broken when it is nearly full
    while (at > last && !isGoodPlace(at)) --at;
    if (at == last) at = m_length;
    out.append(m_line.data(), at).append("=\r\n");
    std::copy(m_line.begin() + static_cast<std::ptrdiff_t>(at),
              m_line.begin() + static_cast<std::ptrdiff_t>(m_length), m_line.begin());
    m_length -= at;
}

// A blank at the end of a line may be lost on the way (RFC 2045, 6.7 (3)).
void QuotedPrintable::CodeTrailingBlank(std::string& out) {
    if (m_length == 0) return;
    const char blank = m_line[m_length - 1];
    if (blank != ' ' && blank != '\t') return;
    --m_length;
    if (m_length + kCodeSize > kLongestLine) {
        out.append(m_line.data(), m_length).append("=\r\n");
        m_length = 0;
    }
    AppendCode(blank);
}

void AppendBase64Lines(std::string& out, std::string_view bytes, bool isFirst) {
    out.reserve(out.size() + SizeOfBase64Lines(bytes.size()) + 2);
    // Few lines at a time, so that what lies between stays in the fastest memory.
    constexpr std::size_t kAtOnce = 64 * kBytesOfBase64Line;
    for (; !bytes.empty(); bytes.remove_prefix(std::min(kAtOnce, bytes.size()))) {
        const std::string letters = EncodeBase64(bytes.substr(0, kAtOnce));
        for (std::size_t at = 0; at < letters.size(); at += kLongestLine) {
            if (!isFirst) out += "\r\n";
            isFirst = false;
            out.append(letters, at, kLongestLine);
        }
    }
}

std::uint64_t SizeOfBase64Lines(std::uint64_t bytes) {
    if (bytes == 0) return 0;
    const std::uint64_t letters = (bytes + 2) / 3 * 4;
    return letters + (letters - 1) / kLongestLine * 2;
}

void AppendWithDotsDoubled(std::string& out, std::string_view text) {
    if (text.starts_with('.')) out += '.';
    while (true) {
        const std::size_t at = text.find("\n.");
        if (at == std::string_view::npos) break;
        out.append(text.substr(0, at + 2));
        out += '.';
        text.remove_prefix(at + 2);
    }
    out.append(text);
}

}  // namespace brennvar
