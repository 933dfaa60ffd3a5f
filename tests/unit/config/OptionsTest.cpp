#include "config/Options.h"

#include <gtest/gtest.h>

#include <filesystem>

#include "support/DataFolder.h"
#include "support/FakeClock.h"
#include "support/GoldenCipher.h"

namespace brennvar {
namespace {

constexpr char kConfig[] = R"(\config.conf)";

class OptionReaderTest : public testing::Test {
protected:
    void WriteConfig(const std::string& plain) const {
        m_folder.Write(kConfig, test::EncipherByHand(plain, sizeof(OptionRecord)));
    }
    static std::string Record(std::uint32_t id, std::uint32_t value, std::string_view text = "") {
        OptionRecord record{.id = id, .value = value, .text = {}};
        PutText(record.text, text);
        return test::BytesOf(record);
    }

    test::DataFolder m_folder;
    test::FakeClock m_clock;
    OptionReader m_options{m_folder.Path(), m_clock};
};

TEST_F(OptionReaderTest, ReadsARecordEncipheredByHand) {
    // Option 18, value 600, text "second(s)".
    m_folder.Write(kConfig, test::FromHex("1c1a89a09e6293e86c47e5c94e0b7624a3f4d2896ec9bd277853ea89ce428a3f"
                                          "8572338d85503bd5088aa0d853a9a4f4ba5ba43253b76204db674663f024c9c3"
                                          "522839f6573f79520948a2453fe86b49c02f6171464e26d63d6ed788becf2449"
                                          "e7be8bb2ef9e667925ff3f5598589abcfcc59a1742ea9cbd57ce2821ff8e3985"));
    EXPECT_EQ(m_options.ReadOption(18, 1), 600U);
    EXPECT_EQ(m_options.ReadOptionText(18), "second(s)");
}

TEST_F(OptionReaderTest, KeepsDefaultsWithoutAFileAndCreatesItEmpty) {
    EXPECT_EQ(m_options.ReadOption(5, 1), 1U);
    EXPECT_EQ(m_options.ReadOptionText(39), "");
    EXPECT_EQ(std::filesystem::file_size(m_folder.File(kConfig)), 0U);
    EXPECT_EQ(m_options.ReadOption(5, 1), 1U);  // and again with the empty one
}

TEST_F(OptionReaderTest, IgnoresAPartialLastRecord) {
    WriteConfig((Record(5, 7) + Record(6, 8)).substr(0, 200));
    EXPECT_EQ(m_options.ReadOption(5, 1), 7U);
    EXPECT_EQ(m_options.ReadOption(6, 1), 1U);
    WriteConfig(Record(5, 7).substr(0, 127));
    EXPECT_EQ(m_options.ReadOption(5, 1), 1U);
}

TEST_F(OptionReaderTest, LetsTheFirstRecordWinAndSkipsUnknownOnes) {
    WriteConfig(Record(0xFFFFFFFF, 3) + Record(40, 0, "first") + Record(40, 9, "second"));
    EXPECT_EQ(m_options.ReadOption(40, 5), 0U);
    EXPECT_EQ(m_options.ReadOptionText(40), "first");
}

TEST_F(OptionReaderTest, EndsATextAtItsLastByteWhateverThatHolds) {
    std::string record = Record(38, 0);
    record.replace(8, 120, std::string(120, 'x'));
    WriteConfig(record);
    EXPECT_EQ(m_options.ReadOptionText(38), std::string(119, 'x'));
}

}  // namespace
}  // namespace brennvar
