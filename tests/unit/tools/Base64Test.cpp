#include "tools/Base64.h"

#include <gtest/gtest.h>

namespace brennvar {
namespace {

TEST(Base64Test, WritesAndReadsTheExamplesOfTheStandard) {
    struct Row {
        std::string_view bytes, text;
    };
    // RFC 4648, 10, and bytes whose letters are the last of the alphabet.
    const Row rows[] = {{"", ""},
                        {"f", "Zg=="},
                        {"fo", "Zm8="},
                        {"foo", "Zm9v"},
                        {"foob", "Zm9vYg=="},
                        {"fooba", "Zm9vYmE="},
                        {"foobar", "Zm9vYmFy"},
                        {"\xFF\xEF\xFE", "/+/+"},
                        {std::string_view("\0\0", 2), "AAA="},
                        {"Aladdin:open sesame", "QWxhZGRpbjpvcGVuIHNlc2FtZQ=="}};
    for (const Row& row : rows) {
        EXPECT_EQ(EncodeBase64(row.bytes), row.text);
        EXPECT_EQ(DecodeBase64(row.text), std::string(row.bytes)) << row.text;
    }
}

TEST(Base64Test, RefusesWhatIsNoneOfIt) {
    for (const std::string_view text : {"Z", "Zg", "Zg=", "Zg==Zg==", "Z===", "====", "Zm9v\r\n", "Zm 9", "Zm9-",
                                        "Zm9_", "Zm=v", "=m9v", "Zm9v\xC4\x80\x80\x80"}) {
        EXPECT_EQ(DecodeBase64(text), std::nullopt) << text;
    }
}

}  // namespace
}  // namespace brennvar
