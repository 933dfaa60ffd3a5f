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

TEST_F(OptionReaderTest, ReadsTheFirstRecordOfAnOptionToTheEndOfItsText) {
    // Option 18, value 600, text "second(s)", by hand.
    const std::string golden = std::string("\x12\0\0\0\x58\x02\0\0second(s)", 17) + std::string(111, '\0');
    WriteConfig(Record(5, 3) + golden + Record(18, 9, "second") + Record(38, 0, std::string(120, 'x')));
    EXPECT_EQ(m_options.ReadOption(18, 1), 600U);
    EXPECT_EQ(m_options.ReadOptionText(18), "second(s)");
    EXPECT_EQ(m_options.ReadOption(38, 1), 0U);
    EXPECT_EQ(m_options.ReadOptionText(38), std::string(119, 'x'));  // unterminated
}

TEST(OptionTableTest, HasTheKindAndTheDefaultOfEveryOption) {
    std::string all;
    for (std::uint32_t id = 0; id < 100; ++id) {
        const OptionInfo* const option = FindOption(id);
        if (!option) continue;
        all += std::to_string(static_cast<std::uint32_t>(option->id)) + "FNPBLTS"[static_cast<int>(option->kind)];
        if (option->fallback != 0) all += std::to_string(option->fallback);
        all += ' ';
    }
    EXPECT_EQ(all,
              "1N 2F 3F 4S 5F1 6F 7F1 8F1 9F1 11F1 12F1 13F1 14F1 15F1 16F 17F1 18B600 19F 20F1 21F1 "
              "22F1 23F1 24F1 25F1 26F1 27F1 28F1 29F1 30F 31N4096 32N10240 33N30 34F 35T 36T 37T 38T 39T 40T 41S "
              "42F1 43F1 44F 45F 46F 47F1 48F 49F 50F 51F 52F 53F 54F 55F 56F 57F1 58F 59F 60F 61F 62F 63F "
              "64F1 65F1 66T 67P 68T 69S 70L 78F1 79P8215 ");
}

TEST_F(OptionReaderTest, KeepsDefaultsWithoutAWholeRecord) {
    EXPECT_EQ(m_options.ReadOption(5, 1), 1U);
    EXPECT_EQ(m_options.ReadOptionText(39), "");
    EXPECT_EQ(std::filesystem::file_size(m_folder.File(kConfig)), 0U);  // created empty
    WriteConfig((Record(5, 7) + Record(6, 8)).substr(0, 255));
    EXPECT_EQ(m_options.ReadOption(5, 1), 7U);
    EXPECT_EQ(m_options.ReadOption(6, 1), 1U);
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
    EXPECT_EQ(values.Number(OptionId::ShowBlockedMessages), 1U);
    EXPECT_EQ(values.Number(OptionId::ProxyType), 5U);
    EXPECT_EQ(values.Number(OptionId::ShowSecurityMessages), 1U);  // the default: its record is cut
    EXPECT_THROW((void)values.Number(OptionId{10}), std::out_of_range);
    std::filesystem::remove(m_folder.File(kConfig));
    std::filesystem::create_directory(m_folder.File(kConfig));
    EXPECT_EQ(m_options.ReadAll(), std::nullopt);
}

}  // namespace
}  // namespace brennvar
