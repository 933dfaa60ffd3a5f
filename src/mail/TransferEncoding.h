// How the bytes of a part of a message travel (RFC 2045, 6). Lines end in CR LF; those that are made here have at
// most 76 characters.
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>

namespace brennvar {

enum class TransferEncoding : std::uint8_t { SevenBit, EightBit, QuotedPrintable, Base64 };

// "7bit", "8bit", "quoted-printable", "base64".
[[nodiscard]] const char* NameOf(TransferEncoding encoding);

// The encoding that text can have: the wanted one, or quoted-printable where that would not bring it over unharmed
// (bytes above 127 in 7bit, zeros, lines above 998 characters: RFC 5322, 2.1.1).
[[nodiscard]] TransferEncoding FittingEncoding(TransferEncoding wanted, std::string_view text);

// Text in the encoding. Its line ends, CR LF or LF alone, become CR LF; a CR alone ends a line as well, but in
// quoted-printable, where it stays what it is. Base64 has no line end behind its last line.
[[nodiscard]] std::string EncodeText(TransferEncoding encoding, std::string_view text);

// Text in quoted-printable, made piece by piece: a long one need not stand in memory twice.
class QuotedPrintable {
public:
    // So many bytes of the text, and at most one more, are encoded at a time.
    static constexpr std::size_t kPiece = 0x4000;

    // The text is borrowed.
    explicit QuotedPrintable(std::string_view text) : m_text(text) {}
    // Appends what the next piece of the text becomes; a line that has not ended yet comes with a later one. False:
    // all of it has been encoded.
    [[nodiscard]] bool AppendNext(std::string& out);

private:
    // What stands at its beginning as it is, as far as the line has room. Returns how many letters that were.
    std::size_t AppendPlain(std::string_view text);
    void AppendCode(char c);
    void EndLine(std::string& out);
    void BreakSoftly(std::string& out);
    void CodeTrailingBlank(std::string& out);

    std::string_view m_text;      // that is left
    std::array<char, 80> m_line;  // the one that is being written: 76 characters and its end
    std::size_t m_length = 0;     // of it
};

// So many bytes make a line of base64: 76 characters.
inline constexpr std::size_t kBytesOfBase64Line = 57;
// Appends lines of base64 with line ends between them. A file is encoded piece by piece: each piece but the last is
// a multiple of kBytesOfBase64Line, and isFirst tells whether a line end comes before it.
void AppendBase64Lines(std::string& out, std::string_view bytes, bool isFirst);
// How long all lines of so many bytes are, with the line ends between them.
[[nodiscard]] std::uint64_t SizeOfBase64Lines(std::uint64_t bytes);

// Appends text that ends in no half line, with a dot doubled where it begins a line, so that no line of it can end
// the message (RFC 5321, 4.5.2). The text begins a line.
void AppendWithDotsDoubled(std::string& out, std::string_view text);

}  // namespace brennvar
