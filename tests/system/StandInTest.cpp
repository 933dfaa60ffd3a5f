// The stand-ins from the outside, over the bare pipes and devices. All expected bytes are written by hand;
// enciphered ones were computed with another RC4 program.
#include <gtest/gtest.h>

#include <cstdint>
#include <initializer_list>
#include <optional>
#include <string>
#include <utility>

#include "StandInProcess.h"
#include "driver/DriverFeed.h"
#include "ipc/CommandRecord.h"
#include "ipc/PipeRecords.h"

namespace brennvar {
namespace {

using namespace std::string_literals;
using test::StandInProcess;

constexpr auto kPatienceMs = static_cast<DWORD>(std::chrono::milliseconds(test::kPatience).count());

UniqueFile OpenDevice(const char* name) {
    return UniqueFile(::CreateFileA(name, GENERIC_READ | GENERIC_WRITE, FILE_SHARE_READ | FILE_SHARE_WRITE, nullptr,
                                    OPEN_EXISTING, 0, nullptr));
}

// The bytes that a request claims to have written, at most size; nothing when it fails.
std::optional<std::string> Ask(std::uint32_t request, DWORD size) {
    const UniqueFile handle = OpenDevice(R"(\\.\brennvarfw_nfo)");
    std::string answer(size, '#');
    DWORD returned = 0;
    if (!::DeviceIoControl(handle.Get(), request, nullptr, 0, answer.data(), size, &returned, nullptr))
        return std::nullopt;
    answer.resize(returned);
    return answer;
}

bool WritePipe(const char* name, const void* record, DWORD size) {
    if (!::WaitNamedPipeA(name, kPatienceMs)) return false;
    const UniqueFile pipe(::CreateFileA(name, GENERIC_READ | GENERIC_WRITE, 0, nullptr, OPEN_EXISTING, 0, nullptr));
    DWORD written = 0;
    return ::WriteFile(pipe.Get(), record, size, &written, nullptr) && written == size;
}

template <class Record>
std::string Transact(const char* name, const Record& request) {
    std::string answer(sizeof(Record) + 1, '#');
    DWORD size = 0;
    if (!::CallNamedPipeA(name, const_cast<Record*>(&request), sizeof(request), answer.data(),
                          static_cast<DWORD>(answer.size()), &size, kPatienceMs))
        return "failed";
    answer.resize(size);
    return answer;
}

// A record of zeros but for the bytes at some offsets.
std::string Zeros(std::size_t size, std::initializer_list<std::pair<std::size_t, std::string>> runs) {
    std::string bytes(size, '\0');
    for (const auto& [offset, run] : runs) bytes.replace(offset, run.size(), run);
    return bytes;
}

TEST(StandInTest, AnswersTablesAndTotalsByteForByte) {
    const StandInProcess standIn({"connection ESTAB-OUT 10.0.0.5:1025 1.2.3.4:443 4711 256 7",
                                  "connection 12 10.0.0.6:80 5.6.7.8:4097 4712 0 1", "listener udp 127.0.0.1:53 16",
                                  "totals 0x100000002 3"});
    ASSERT_TRUE(standIn.WaitForJournal("EVENT scenario-done")) << standIn.Output();
    const std::string first =
        "\x04\0\0\0\x0A\0\0\x05\x04\x01\x01\x02\x03\x04\x01\xBB\x67\x12\0\0\0\x01\0\0\x07\0\0\0"s;
    const std::string second =
        "\x0C\0\0\0\x0A\0\0\x06\0\x50\x05\x06\x07\x08\x10\x01\x68\x12\0\0\0\0\0\0\x01\0\0\0"s;
    EXPECT_EQ(Ask(0x8E872408, 0x540000), first + second);
    EXPECT_EQ(Ask(0x8E872408, 55), first);  // no part of an entry
    EXPECT_EQ(Ask(0x8E872408, 27), "");
    EXPECT_EQ(Ask(0x8E872404, 0x2A0000), "\x11\0\0\0\x7F\0\0\x01\0\x35\x10\0\0\0"s);
    EXPECT_EQ(Ask(0x8E87240C, 32), Zeros(32, {{0, "\x02\0\0\0\x01"s}, {8, "\x03"}}));
    EXPECT_EQ(Ask(0x8E87240C, 31), std::nullopt);
}

// One fetch of a question, as the interface does it.
struct Fetch {
    std::string request = std::string(449, '\0');
    std::string data = std::string(65536, '\0');
    PromptExchangeBlock block{};

    Fetch() {
        block.dataAddress = reinterpret_cast<std::uint64_t>(data.data());
        block.dataSize = 65536;
        block.requestAddress = reinterpret_cast<std::uint64_t>(request.data());
        const UniqueFile device = OpenDevice(R"(\\.\brennvarfw_ctl)");
        OVERLAPPED overlapped{};
        EXPECT_TRUE(::DeviceIoControl(device.Get(), 0x8E862020, &block, 40, &block, 40, nullptr, &overlapped));
    }
};

TEST(StandInTest, HandsAQuestionOutOnceAndWritesAnswerAndCommandDown) {
    const StandInProcess standIn(
        {R"(question tcp 10.0.0.5:1025 1.2.3.4:80 77 C:\Tools\a.exe)", "wait-for-answers 1", "notice answered"});
    ASSERT_TRUE(standIn.WaitForJournal("EVENT question-queued 1")) << standIn.Output();
    const Fetch first;
    EXPECT_EQ(first.block.questionId, 1U);
    EXPECT_EQ(first.block.questionPresent, 1U);
    EXPECT_EQ(first.request, Zeros(449, {{20, "\x06\0\0\0\x4D"s},
                                         {34, "\x04\x01\x0A\0\0\x05"s},
                                         {50, "\0\x50\x01\x02\x03\x04"s},
                                         {161, R"(C:\Tools\a.exe)"}}));
    EXPECT_EQ(first.data, Zeros(65536, {{0, "\x45\0\0\x14\0\0\0\0\x80\x06\0\0\x0A\0\0\x05\x01\x02\x03\x04"s}}));
    EXPECT_EQ(Fetch().block.questionPresent, 0U);

    const std::string answer =
        Zeros(276, {{0, "\x03"}, {4, "\x03"}, {8, "\x01"}, {12, R"(C:\Tools\a.exe)"}, {272, "\x4D"}});
    ASSERT_TRUE(WritePipe(R"(\\.\pipe\BRENNVAR_IPC_CONFIRM)", answer.data(), 276));
    EXPECT_TRUE(standIn.WaitForJournal("CONFIRM 276 0:03 4:03 8:01 12:433A5C546F6F6C735C612E657865 272:4D"));
    ASSERT_TRUE(standIn.WaitForJournal("EVENT scenario-done"));
    const std::string rules = standIn.Read(R"(Rules\rules.conf)");
    ASSERT_EQ(rules.size(), 264U);
    EXPECT_EQ(rules.substr(0, 16), "\x4D\x20\xD5\xF4\xA9\x0F\xFF\x9B\x43\x43\xA8\xC3\x58\x0A\x5E\x57"s);
    EXPECT_EQ(rules.substr(256), "\x66\xBE\xCB\x22\x5A\xF1\x99\xD1"s);

    CommandRecord option{};
    option.code = CommandCode::SetOption;
    option.optionId = 18;
    option.optionValue = 600;
    ASSERT_TRUE(WritePipe(kCommandPipeName, &option, sizeof(option)));
    EXPECT_TRUE(standIn.WaitForJournal("COMMAND 5596 0:08 5468:5802 5592:12"));
    EXPECT_TRUE(test::WaitUntil([&] { return standIn.Read("config.conf").size() == 128; }));
    EXPECT_EQ(standIn.Read("config.conf").substr(0, 16),
              "\x1C\x1A\x89\xA0\x9E\x62\x93\xE8\x1F\x22\x86\xA6\x20\x6F\x5E\x57"s);

    // The notices come in their order, then there is none.
    TrayTextRequest request{};
    request.code = 1;
    for (const auto& notice : {Zeros(4100, {{0, "\x02"}, {4, "REFRESH"}}),
                               Zeros(4100, {{0, "\x02"}, {4, "answered"}}), Zeros(4100, {{0, "\x01"}})}) {
        EXPECT_EQ(Transact(R"(\\.\pipe\BRENNVAR_IPC_TRAY)", request), notice);
    }
}

TEST(StandInTest, SpoilsTheNextAnswersOnRequest) {
    const StandInProcess standIn({"connection 1 1.1.1.1:1 2.2.2.2:2 1 0 0", "hostile connections odd",
                                  "hostile listeners fail", "hostile totals short",
                                  "question tcp 1.1.1.1:1 2.2.2.2:2 1 x", "hostile question odd"});
    ASSERT_TRUE(standIn.WaitForJournal("EVENT scenario-done")) << standIn.Output();
    EXPECT_EQ(Ask(0x8E872408, 0x540000)->substr(28), "\xFF\xFF\xFF\xFF\xFF");
    EXPECT_EQ(Ask(0x8E872408, 0x540000)->size(), 28U);
    EXPECT_EQ(Ask(0x8E872404, 14), std::nullopt);
    EXPECT_EQ(Ask(0x8E87240C, 32)->size(), 16U);
    const Fetch question;
    EXPECT_EQ(question.block.questionPresent, 0xFFFFFFFFU);
    EXPECT_EQ(question.request.substr(161), std::string(288, 'A'));
}

TEST(StandInTest, DiesOnRequestOrOfABadScenarioAndIsReplaced) {
    PidResolveRequest request{};
    request.code = 1;
    {
        const StandInProcess dying({}, "--die-after 2");
        EXPECT_EQ(Transact(R"(\\.\pipe\BRENNVAR_PID_RESOLVE)", request).size(), 520U) << dying.Output();
        EXPECT_EQ(Transact(R"(\\.\pipe\BRENNVAR_PID_RESOLVE)", request), "failed");
        EXPECT_EQ(dying.WaitForEnd(), 3);
    }
    const StandInProcess bad({"notice x", "", "listen tcp"});
    EXPECT_EQ(bad.WaitForEnd(), 2);
    EXPECT_NE(bad.Output().find(":3: not understood: listen tcp"), std::string::npos) << bad.Output();
    // The driver that the dead one left behind does not keep the next one from starting.
    const StandInProcess next({"listener tcp 1.1.1.1:1 1", "exit"});
    EXPECT_EQ(next.WaitForEnd(), 0) << next.Output();
    EXPECT_FALSE(OpenDevice(R"(\\.\brennvarfw)"));  // the driver has gone with it
}

}  // namespace
}  // namespace brennvar
