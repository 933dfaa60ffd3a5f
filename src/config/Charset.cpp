#include "config/Charset.h"

namespace brennvar {
namespace {

// Windows' numbers.
constexpr std::uint8_t kAnsi = 0;
constexpr std::uint8_t kDefault = 1;
constexpr std::uint8_t kShiftJis = 128;
constexpr std::uint8_t kTurkish = 162;
constexpr std::uint8_t kArabic = 178;
constexpr std::uint8_t kCyrillic = 204;
constexpr std::uint8_t kEasternEuropean = 238;

struct Row {
    std::string_view languageName;
    std::uint8_t charset;
};
constexpr Row kRows[] = {
    {"Slovak", kEasternEuropean},
    {"Czech", kEasternEuropean},
    {"Hungarian", kEasternEuropean},
    {"Polish", kEasternEuropean},
    {"Slovenian", kEasternEuropean},
    {"Bulgarian", kCyrillic},
    {"Russian", kCyrillic},
    {"ChineseS", kDefault},
    {"ChineseT", kDefault},
    {"Turkish", kTurkish},
    {"Arabic", kArabic},
    {"Japanese", kShiftJis},
};

}  // namespace

std::uint8_t GetFontCharset(std::string_view languageName) {
    for (const Row& row : kRows) {
        if (row.languageName == languageName) return row.charset;
    }
    return kAnsi;
}

}  // namespace brennvar
