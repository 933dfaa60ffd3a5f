#include "config/Options.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <stdexcept>

#include "support/DataFolder.h"
#include "support/FakeClock.h"
#include "support/GoldenCipher.h"

namespace brennvar {
namespace {

constexpr char kConfig[] = R"(\config.conf)";

class OptionReaderTest : public testing::Test {
protected:
    void WriteConfig(const std::string& plain) const { m_folder.Write(kConfig, test::EncipherByHand(plain, 128)); }
    static std::string Record(char id, char value, std::string text = "") {
        text.resize(120, '\0');
        return std::string{id, 0, 0, 0, value, 0, 0, 0} + text;
    }

    test::DataFolder m_folder;
    test::FakeClock m_clock;
    OptionReader m_options{m_folder.Path(), m_clock};
};

TEST_F(OptionReaderTest, ReadsTheFirstWholeRecordOfAnOptionToTheEndOfItsText) {
    EXPECT_EQ(m_options.ReadOption(5, 1), 1U);
    EXPECT_EQ(m_options.ReadOptionText(39), "");
    EXPECT_EQ(std::filesystem::file_size(m_folder.File(kConfig)), 0U);  // created empty
    // Option 18, value 600, text "second(s)", by hand.
    const std::string golden = std::string("\x12\0\0\0\x58\x02\0\0second(s)", 17) + std::string(111, '\0');
    WriteConfig(Record(5, 3) + golden + Record(18, 9, "second") + Record(38, 0, std::string(120, 'x')) +
                Record(6, 8).substr(0, 127));
    EXPECT_EQ(m_options.ReadOption(18, 1), 600U);
    EXPECT_EQ(m_options.ReadOptionText(18), "second(s)");
    EXPECT_EQ(m_options.ReadOption(38, 1), 0U);
    EXPECT_EQ(m_options.ReadOptionText(38), std::string(119, 'x'));  // unterminated
    EXPECT_EQ(m_options.ReadOption(6, 1), 1U) << "its record is cut";
}

TEST_F(OptionReaderTest, ReadsEverythingAtOnce) {
    EXPECT_EQ(m_options.ReadAll(), OptionValues());
    // Two of one option, a flag that is neither 0 nor 1, a list's index that the list does not have, a number with
    // all its bits, options that nobody knows (before, between and behind the known ones), the security password,
    // which is left out, and half a record.
    const std::string large = std::string("\x12\0\0\0\xFF\xFF\xFF\xFF", 8) + std::string(120, '\0');
    WriteConfig(Record(6, 2) + Record(38, 9, "first") + Record(38, 9, "second") + Record(70, 5) + large +
                Record(0, 9) + Record(10, 0) + Record(77, 0) + Record(80, 9) + Record(4, 0, "Secret1") +
                Record(5, 0).substr(0, 100));
    OptionValues expected;
    expected.SetNumber(OptionId::ShowBlockedMessages, 1);
    expected.SetText(OptionId::MailSubject, "first");
    expected.SetNumber(OptionId::ProxyType, 5);
    expected.SetNumber(OptionId::BlockSeconds, 0xFFFFFFFF);
    const OptionValues values = m_options.ReadAll().value();
    EXPECT_EQ(values, expected);
    EXPECT_EQ(values.Number(OptionId::ShowSecurityMessages), 1U);  // the default: its record is cut
    EXPECT_THROW((void)values.Number(OptionId{10}), std::out_of_range);
    std::filesystem::remove(m_folder.File(kConfig));
    std::filesystem::create_directory(m_folder.File(kConfig));
    EXPECT_EQ(m_options.ReadAll(), std::nullopt);
}

}  // namespace
}  // namespace brennvar
