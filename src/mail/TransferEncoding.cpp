#include "mail/TransferEncoding.h"

#include <algorithm>
#include <array>

#include "tools/Base64.h"

namespace brennvar {
namespace {

constexpr std::size_t kLongestTextLine = 998;  // RFC 5322, 2.1.1
constexpr std::size_t kLongestLine = 76;       // RFC 2045, 6.7 (5)
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

bool IsPlain(char c) {
    return kPlain[static_cast<unsigned char>(c)];
}

void AppendCode(std::string& out, char c) {
    const auto byte = static_cast<unsigned char>(c);
    const char code[kCodeSize] = {'=', kHexDigits[byte >> 4], kHexDigits[byte & 0xF]};
    out.append(code, kCodeSize);
}

// Lines of quoted-printable, the last of which is being written.
class QuotedLines {
public:
    // codes: how many of the text's bytes become codes. With room for the ends of broken lines, so that nothing is
    // copied while it grows.
    QuotedLines(std::size_t sizeOfText, std::size_t codes) {
        const std::size_t size = sizeOfText + codes * (kCodeSize - 1);
        m_out.reserve(size + size / 8);
    }

    void Plain(std::string_view text) {
        while (!text.empty()) {
            if (Length() == kSoft) BreakSoftly();
            const std::size_t count = std::min(text.size(), kSoft - Length());
            m_out.append(text.substr(0, count));
            text.remove_prefix(count);
        }
    }
    void Code(char c) {
        while (Length() + kCodeSize > kSoft) BreakSoftly();
        AppendCode(m_out, c);
    }
    void EndLine() {
        CodeTrailingBlank();
        m_out += "\r\n";
        m_lineStart = m_out.size();
    }
    [[nodiscard]] std::string Take() {
        CodeTrailingBlank();
        return std::move(m_out);
    }

private:
    // Of a line that goes on in the next one: the "=" at its end counts as well.
    static constexpr std::size_t kSoft = kLongestLine - 1;
    static constexpr std::size_t kWordLimit = kSoft / 2;  // a longer word is broken

    [[nodiscard]] std::size_t Length() const { return m_out.size() - m_lineStart; }

    // Moves what follows the last good place, if there is one, to the next line.
    void BreakSoftly() {
        constexpr std::string_view kBreak = "=\r\n";
        std::size_t at = m_out.size();
        const std::size_t last = at - kWordLimit;
        while (at > last && !IsGoodPlace(at)) --at;
        if (at == last) at = m_out.size();
        m_out.insert(at, kBreak);
        m_lineStart = at + kBreak.size();
    }
    // Behind a character of kBreaks, as it stands or as a code. All of kBreaks but "!" stand as they are.
    [[nodiscard]] bool IsGoodPlace(std::size_t at) const {
        const char before = m_out[at - 1];
        if (kIsBreak[static_cast<unsigned char>(before)]) return true;
        return before == '1' && m_out.compare(at - kCodeSize, kCodeSize, "=21") == 0;
    }
    // A blank at the end of a line may be lost on the way (RFC 2045, 6.7 (3)).
    void CodeTrailingBlank() {
        if (Length() == 0 || (m_out.back() != ' ' && m_out.back() != '\t')) return;
        const char blank = m_out.back();
        m_out.pop_back();
        if (Length() + kCodeSize > kLongestLine) {
            m_out += "=\r\n";
            m_lineStart = m_out.size();
        }
        AppendCode(m_out, blank);
    }

    std::string m_out;
    std::size_t m_lineStart = 0;
};

std::string EncodeQuotedPrintable(std::string_view text) {
    const auto plain = static_cast<std::size_t>(std::count_if(text.begin(), text.end(), IsPlain));
    QuotedLines lines(text.size(), text.size() - plain);
    while (!text.empty()) {
        const auto end = std::find_if_not(text.begin(), text.end(), IsPlain);
        const auto count = static_cast<std::size_t>(end - text.begin());
        lines.Plain(text.substr(0, count));
        text.remove_prefix(count);
        if (text.empty()) break;
        const bool isPair = text.starts_with("\r\n");
        if (isPair || text.front() == '\n') {
            lines.EndLine();
        } else {
            lines.Code(text.front());
        }
        text.remove_prefix(isPair ? 2 : 1);
    }
    return lines.Take();
}

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
    if (encoding == TransferEncoding::QuotedPrintable) return EncodeQuotedPrintable(text);
    std::string lines = WithLineEnds(text);
    if (encoding != TransferEncoding::Base64) return lines;
    std::string encoded;
    AppendBase64Lines(encoded, lines, true);
    return encoded;
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
