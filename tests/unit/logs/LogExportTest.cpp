#include "logs/LogExport.h"

#include <gtest/gtest.h>

#include <csignal>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <numeric>

#ifndef _WIN32
#include <sys/resource.h>
#endif

#include "support/LogFileRig.h"

namespace brennvar {
namespace {

using test::Event;

const Language kEnglish{nullptr};
const LogTexts kTexts{kEnglish};
constexpr std::string_view kHeading = "\xEF\xBB\xBFTime,Action,Protocol,Address,Program,Rule or event,Path\r\n";

class LogExportTest : public testing::Test {
protected:
    test::DataFolder folder;
    StopSignal stop;
    std::string file = folder.File("log.csv");

    LogSelection Listed(std::string_view log, std::vector<std::uint32_t> numbers) {
        LogSelection selection;
        selection.place.path = folder.Write(R"(\Log\20260309.log)", log);
        selection.count = numbers.size();
        selection.numberAt = [numbers](std::size_t i) { return numbers[i]; };
        return selection;
    }
    static std::string Read(const std::string& path) {
        std::ifstream stream(path, std::ios::binary);
        return {std::istreambuf_iterator<char>(stream), {}};
    }
    // Files of the folder of the exported one.
    [[nodiscard]] std::size_t FileCount() const {
        const auto place = std::filesystem::path(file).parent_path();
        const auto files = std::filesystem::directory_iterator(place);
        return static_cast<std::size_t>(std::count_if(begin(files), end(files), [](const auto& entry) {
            return entry.path().filename().string().find("log.csv") != std::string::npos;
        }));
    }
};

TEST_F(LogExportTest, WritesTheListedRowsInTheirOrder) {
    const std::string log =
        std::string(Event(1, 1, 2, 3)) +
        std::string(Event(6, 2, 0, 0, "C:\\a,\"b\"\\\xE9.exe").Text(112, "line\nbreak").U32(472, 0)) +
        std::string(Event(2, 3, 0, 0, "=1+1.exe"));
    LogExportState state;
    folder.Write("log.csv", "what was there before");
    ExportLog(Listed(log, {2, 0, 1}), file, LogFormat::Csv, kTexts, CodePage::Western, stop, state);
    EXPECT_TRUE(state.isOver);
    EXPECT_EQ(state.result, WriteResult::Written);
    EXPECT_EQ(Read(file),
              std::string(kHeading) +
                  "03:00:00,Denied,TCP,10.0.0.5:1025 -> 93.184.216.34:443,\"'=1+1.exe\",Web rule,\"'=1+1.exe\"\r\n"
                  "01:02:03,Allowed,TCP,10.0.0.5:1025 -> 93.184.216.34:443,app.exe,Web rule,"
                  "C:\\Program Files\\App\\app.exe\r\n"
                  "02:00:00,Message,TCP,\"line\nbreak\",\xC3\xA9.exe,\"line\nbreak\","
                  "\"C:\\a,\"\"b\"\"\\\xC3\xA9.exe\"\r\n");
    EXPECT_EQ(FileCount(), 1U);
    // The same bytes mean other letters elsewhere.
    LogExportState text;
    ExportLog(Listed(log, {1}), file, LogFormat::Text, kTexts, CodePage::Cyrillic, stop, text);
    EXPECT_EQ(Read(file),
              "\xEF\xBB\xBFTime\tAction\tProtocol\tAddress\tProgram\tRule or event\tPath\r\n"
              "02:00:00\tMessage\tTCP\tline break\t\xD0\xB9.exe\tline break\tC:\\a,\"b\"\\\xD0\xB9.exe\r\n");
}

// Texts are looked at several bytes at a time: wherever in a text of whatever size the character stands, it is
// seen, and its neighbours in ASCII are not taken for it.
TEST_F(LogExportTest, SeesWhatIsSpecialAnywhereInAText) {
    const std::pair<char, std::string_view> quoted[] = {{',', ","}, {'"', "\"\""}, {'\n', "\n"}, {'\r', "\r"}};
    const std::pair<char, std::string_view> unquoted[] = {{'\xE9', "\xC3\xA9"}, {'\x80', "\xE2\x82\xAC"},
                                                          {'\t', "\t"},         {'!', "!"},
                                                          {'#', "#"},           {'.', "."},
                                                          {'*', "*"},           {' ', " "},
                                                          {'\x7F', "\x7F"}};
    std::string log;
    std::string expected(kHeading);
    std::uint32_t count = 0;
    const auto add = [&](const std::string& rule, const std::string& cell) {
        log += Event(1, 1, 2, 3, "a.exe").Text(112, rule + std::string(8, '\0'));
        expected += "01:02:03,Allowed,TCP,10.0.0.5:1025 -> 93.184.216.34:443,a.exe," + cell + ",a.exe\r\n";
        ++count;
    };
    for (std::size_t before = 0; before < 18; ++before) {
        for (std::size_t after = 0; before + after < 18; ++after) {
            const std::string as(before, 'a');
            const std::string bs(after, 'b');
            for (const auto& [special, sign] : quoted) {
                add(as + special + bs, '"' + as + std::string(sign) + bs + '"');
            }
            for (const auto& [special, sign] : unquoted) add(as + special + bs, as + std::string(sign) + bs);
        }
    }
    std::vector<std::uint32_t> numbers(count);
    std::iota(numbers.begin(), numbers.end(), 0U);
    LogExportState state;
    ExportLog(Listed(log, numbers), file, LogFormat::Csv, kTexts, CodePage::Western, stop, state);
    EXPECT_EQ(state.result, WriteResult::Written);
    EXPECT_TRUE(Read(file) == expected);
}

TEST_F(LogExportTest, WritesNothingOfAnotherLog) {
    const std::string log(Event(1, 1, 2, 3));
    LogNewsBox box;
    LogSelection selection = Listed(log, {0});
    ListLog(selection.place, {}, kTexts, stop, box);
    selection.extent = box.Take().extent;
    ASSERT_TRUE(selection.extent);
    folder.Write("log.csv", "what was there before");
    test::AppendTo(selection.place.path, log);  // still the same
    LogExportState same;
    CopyLog(selection, kTexts, stop, same);
    EXPECT_EQ(same.missing, 0U);
    EXPECT_FALSE(same.text.empty());
    (void)Listed(std::string(Event(2, 3, 0, 0)) + log + log, {0});
    LogExportState state;
    ExportLog(selection, file, LogFormat::Csv, kTexts, CodePage::Western, stop, state);
    EXPECT_TRUE(state.isOver);
    EXPECT_EQ(state.result, WriteResult::Failed);
    EXPECT_EQ(state.missing, 1U);
    EXPECT_EQ(Read(file), "what was there before");
    EXPECT_EQ(FileCount(), 1U);
    LogExportState copy;
    CopyLog(selection, kTexts, stop, copy);
    EXPECT_EQ(copy.missing, 1U);
    EXPECT_EQ(copy.text, "");
}

TEST_F(LogExportTest, LeavesWhatWasThereWhenItCannotEnd) {
    std::string log;
    for (int i = 0; i < 10'000; ++i) log += Event(1, 1, 2, 3);
    std::vector<std::uint32_t> numbers(10'000);
    std::iota(numbers.begin(), numbers.end(), 0U);
    folder.Write("log.csv", "old");
    {
        LogExportState state;  // stopped in the middle
        LogSelection selection = Listed(log, numbers);
        selection.numberAt = [this](std::size_t i) {
            if (i == 9000) stop.Request();
            return static_cast<std::uint32_t>(i);
        };
        ExportLog(selection, file, LogFormat::Csv, kTexts, CodePage::Western, stop, state);
        EXPECT_TRUE(state.wasStopped && state.isOver);
        EXPECT_EQ(Read(file), "old");
    }
    const StopSignal never;
    LogExportState denied;
    ExportLog(Listed(log, numbers), folder.File("nowhere") + "/log.csv", LogFormat::Csv, kTexts, CodePage::Western,
              never, denied);
    EXPECT_EQ(denied.result, WriteResult::Failed);
    LogExportState missing;  // the log is cut off meanwhile
    LogSelection selection = Listed(log, numbers);
    std::filesystem::resize_file(selection.place.path, 480 * 5 + 100);
    ExportLog(selection, file, LogFormat::Csv, kTexts, CodePage::Western, never, missing);
    EXPECT_EQ(missing.result, WriteResult::Written);
    EXPECT_EQ(missing.missing, 9'995U);
    EXPECT_EQ(FileCount(), 1U);
}

TEST_F(LogExportTest, LeavesNoFileBesideOneThatCannotBeReplaced) {
    std::filesystem::create_directories(file + "/full");  // not even an empty folder
    LogExportState state;
    ExportLog(Listed(Event(1, 1, 2, 3), {0}), file, LogFormat::Csv, kTexts, CodePage::Western, stop, state);
    EXPECT_NE(state.result, WriteResult::Written);
    EXPECT_EQ(FileCount(), 1U);
}

#ifndef _WIN32
// A disk that takes 100,000 bytes more. The rest of the log is not read for it.
TEST_F(LogExportTest, SaysThatTheDiskIsFull) {
    std::vector<std::uint32_t> numbers(50'000);
    folder.Write("log.csv", "old");
    const LogSelection selection = Listed(Event(1, 1, 2, 3), numbers);
    rlimit before{};
    ASSERT_EQ(getrlimit(RLIMIT_FSIZE, &before), 0);
    rlimit full = before;
    full.rlim_cur = 100'000;
    const auto handler = std::signal(SIGXFSZ, SIG_IGN);
    ASSERT_EQ(setrlimit(RLIMIT_FSIZE, &full), 0);
    LogExportState state;
    ExportLog(selection, file, LogFormat::Csv, kTexts, CodePage::Western, stop, state);
    EXPECT_EQ(setrlimit(RLIMIT_FSIZE, &before), 0);
    (void)std::signal(SIGXFSZ, handler);
    EXPECT_EQ(state.result, WriteResult::DiskFull);
    EXPECT_LT(state.done, numbers.size() / 2);
    EXPECT_EQ(Read(file), "old");
    EXPECT_EQ(FileCount(), 1U);
}
#endif

TEST_F(LogExportTest, CopiesRowsAsTheyAreShown) {
    LogExportState state;
    CopyLog(Listed(std::string(Event(1, 1, 2, 3)) + std::string(Event(2, 4, 5, 6, "x\ty")), {1, 0, 7}), kTexts,
            stop, state);
    EXPECT_EQ(state.text,
              "04:05:06\tDenied\tTCP\t10.0.0.5:1025 -> 93.184.216.34:443\tx y\tWeb rule\r\n"
              "01:02:03\tAllowed\tTCP\t10.0.0.5:1025 -> 93.184.216.34:443\tapp.exe\tWeb rule\r\n");
    EXPECT_EQ(state.missing, 1U);
}

TEST(CodePageTest, MakesUtf8OfTheCodePageOfTheLanguage) {
    const auto utf8 = [](std::string_view text, const char* language) {
        std::string made;
        AppendUtf8(made, text, CodePageOf(language));
        return made;
    };
    EXPECT_EQ(utf8("a\xE4\x80", "German"), "a\xC3\xA4\xE2\x82\xAC");  // a umlaut, euro
    EXPECT_EQ(utf8("\xE8\x9A!", "Slovak"), "\xC4\x8D\xC5\xA1!");      // c and s with caron
    EXPECT_EQ(utf8("\xC6\xF3\xF0\xED\xE0\xEB", "Russian"), "\xD0\x96\xD1\x83\xD1\x80\xD0\xBD\xD0\xB0\xD0\xBB");
    EXPECT_EQ(utf8("\x81\xFF", "English"), "\xC2\x81\xC3\xBF");
}

}  // namespace
}  // namespace brennvar
