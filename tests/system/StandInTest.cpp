// The stand-ins from the outside, over the bare pipes and devices. All expected bytes are written by hand;
// enciphered ones were computed with another RC4 program.
#include <gtest/gtest.h>

#include <cstdint>
#include <filesystem>
#include <fstream>
#include <initializer_list>
#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "StandInProcess.h"
#include "driver/DriverFeed.h"
#include "ipc/CommandRecord.h"
#include "ipc/PipeRecords.h"

namespace brennvar {
namespace {

using namespace std::string_literals;
using test::StandInProcess;

constexpr auto kPatienceMs = static_cast<DWORD>(std::chrono::milliseconds(test::kPatience).count());

constexpr char kApp[] = R"(C:\Tools\a.exe)";

UniqueFile OpenDevice(const char* name) {
    return UniqueFile(::CreateFileA(name, GENERIC_READ | GENERIC_WRITE, FILE_SHARE_READ | FILE_SHARE_WRITE, nullptr,
                                    OPEN_EXISTING, 0, nullptr));
}

// The bytes that a request claims to have written, at most size; nothing when it fails.
std::optional<std::string> Ask(const char* device, std::uint32_t request, DWORD size) {
    const UniqueFile handle = OpenDevice(device);
    std::string answer(size + 64U, '#');
    DWORD returned = 0;
    if (!::DeviceIoControl(handle.Get(), request, nullptr, 0, answer.data(), size, &returned, nullptr))
        return std::nullopt;
    EXPECT_EQ(answer.substr(size), std::string(64, '#')) << "written behind the buffer";
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

// The first bytes of every enciphered record are its own combined with these.
constexpr std::string_view kKeystream("\x0E\x1A\x89\xA0\xC6\x60\x93\xE8", 8);
std::string FirstBytes(const std::string& file, std::size_t recordSize) {
    std::string bytes;
    for (std::size_t at = 0; at + recordSize <= file.size(); at += recordSize)
        bytes += static_cast<char>(file[at] ^ kKeystream[0]);
    return bytes;
}

bool SendCommand(CommandRecord command) {
    return WritePipe(kCommandPipeName, &command, sizeof(command));
}

CommandRecord Command(std::uint32_t code) {
    CommandRecord command{};
    command.code = static_cast<CommandCode>(code);
    return command;
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
    EXPECT_EQ(Ask(R"(\\.\brennvarfw_nfo)", 0x8E872408, 0x540000), first + second);
    EXPECT_EQ(Ask(R"(\\.\brennvarfw_nfo)", 0x8E872408, 55), first);  // no part of an entry
    EXPECT_EQ(Ask(R"(\\.\brennvarfw_nfo)", 0x8E872408, 27), "");
    EXPECT_EQ(Ask(R"(\\.\brennvarfw_nfo)", 0x8E872404, 0x2A0000), "\x11\0\0\0\x7F\0\0\x01\0\x35\x10\0\0\0"s);
    EXPECT_EQ(Ask(R"(\\.\brennvarfw_nfo)", 0x8E87240C, 32), Zeros(32, {{0, "\x02\0\0\0\x01"s}, {8, "\x03"}}));
    EXPECT_EQ(Ask(R"(\\.\brennvarfw_nfo)", 0x8E87240C, 31), std::nullopt);
    // Each request belongs to one device.
    EXPECT_EQ(Ask(R"(\\.\brennvarfw_ctl)", 0x8E872408, 0x540000), std::nullopt);
    EXPECT_EQ(Ask(R"(\\.\brennvarfw)", 0x8E87240C, 32), std::nullopt);

    // Blocking an address and ending a process take their rows away.
    CommandRecord block = Command(2);
    block.address = 0x04030201;
    ASSERT_TRUE(SendCommand(block));
    EXPECT_TRUE(test::WaitUntil([&] { return Ask(R"(\\.\brennvarfw_nfo)", 0x8E872408, 0x540000) == second; }));
    CommandRecord terminate = Command(3);
    terminate.processId = 16;
    ASSERT_TRUE(SendCommand(terminate));
    EXPECT_TRUE(test::WaitUntil([&] { return Ask(R"(\\.\brennvarfw_nfo)", 0x8E872404, 0x2A0000) == ""; }));
}

TEST(StandInTest, FillsTheLargestTable) {
    const StandInProcess standIn({"connections 196609"});  // one more than the interface's buffer holds
    ASSERT_TRUE(standIn.WaitForJournal("EVENT scenario-done")) << standIn.Output();
    const auto table = Ask(R"(\\.\brennvarfw_nfo)", 0x8E872408, 0x540000);
    ASSERT_TRUE(table);
    ASSERT_EQ(table->size(), 0x540000U);
    // Number 196607, 0x2FFFF, from port 1024 + 196607 % 64512 = 4095.
    EXPECT_EQ(table->substr(196607 * 28),
              "\x04\0\0\0\xC0\xA8\0\x01\x0F\xFF\x0A\x02\xFF\xFF\x01\xBB\xEF\x03\0\0\xFF\xFF\x02\0\xFE\xFF\x05\0"s);
}

// One fetch of a question, as the interface does it.
struct Fetch {
    std::string request = std::string(449, '\0');
    std::string data = std::string(65536, '\0');
    PromptExchangeBlock block{};
    bool ok = false;
    DWORD returned = 0;

    explicit Fetch(bool badAddress = false) {
        block.dataAddress = reinterpret_cast<std::uint64_t>(data.data());
        block.dataSize = 65536;
        block.requestAddress = badAddress ? 16 : reinterpret_cast<std::uint64_t>(request.data());
        const UniqueFile device = OpenDevice(R"(\\.\brennvarfw_ctl)");
        const UniqueEvent event(::CreateEventA(nullptr, TRUE, FALSE, nullptr));
        OVERLAPPED overlapped{};
        overlapped.hEvent = event.Get();
        ok = ::DeviceIoControl(device.Get(), 0x8E862020, &block, 40, &block, 40, &returned, &overlapped) != 0;
    }
};

TEST(StandInTest, HandsEachQuestionOutOnceAndInOrder) {
    const StandInProcess standIn(
        {R"(question tcp 10.0.0.5:1025 1.2.3.4:80 77 C:\a b\c.exe)", "question udp 0.0.0.0:0 1.2.3.4:53 none"});
    ASSERT_TRUE(standIn.WaitForJournal("EVENT question-queued 2")) << standIn.Output();

    EXPECT_FALSE(Fetch(true).ok);  // cannot be written to the caller: stays with the driver

    const Fetch first;
    EXPECT_TRUE(first.ok);
    EXPECT_EQ(first.returned, 40U);
    EXPECT_EQ(first.block.questionId, 1U);
    EXPECT_EQ(first.block.questionPresent, 1U);
    EXPECT_EQ(first.block.dataSize, 65536U);
    EXPECT_EQ(first.request, Zeros(449, {{20, "\x06"},
                                         {24, "\x4D"},
                                         {34, "\x04\x01\x0A\0\0\x05"s},
                                         {50, "\0\x50\x01\x02\x03\x04"s},
                                         {161, R"(C:\a b\c.exe)"}}));
    EXPECT_EQ(first.data, Zeros(65536, {{0, "\x45\0\0\x14\0\0\0\0\x80\x06\0\0\x0A\0\0\x05\x01\x02\x03\x04"s}}));

    const Fetch second;
    EXPECT_EQ(second.block.questionId, 2U);
    EXPECT_EQ(second.request,
              Zeros(449, {{20, "\x11"}, {24, "\xFF\xFF\xFF\xFF"}, {50, "\0\x35\x01\x02\x03\x04"s}}));

    const Fetch third;
    EXPECT_TRUE(third.ok);
    EXPECT_EQ(third.block.questionPresent, 0U);
    EXPECT_EQ(third.request, std::string(449, '\0'));
}

TEST(StandInTest, TurnsARememberedAnswerIntoARule) {
    const StandInProcess standIn(
        {R"(question tcp 10.0.0.5:1 1.2.3.4:80 77 C:\Tools\a.exe)", "wait-for-answers 1", "notice answered"});
    ASSERT_TRUE(standIn.WaitForJournal("EVENT question-queued 1")) << standIn.Output();
    EXPECT_EQ(Fetch().block.questionPresent, 1U);

    const std::string answer = Zeros(276, {{0, "\x03"}, {4, "\x03"}, {8, "\x01"}, {12, kApp}, {272, "\x4D"}});
    ASSERT_TRUE(WritePipe(R"(\\.\pipe\BRENNVAR_IPC_CONFIRM)", answer.data(), 276));
    ASSERT_TRUE(standIn.WaitForJournal("EVENT scenario-done"));
    EXPECT_TRUE(standIn.WaitForJournal("CONFIRM 276 0:03 4:03 8:01 12:433A5C546F6F6C735C612E657865 272:4D"));

    const std::string rules = standIn.Read(R"(Rules\rules.conf)");
    ASSERT_EQ(rules.size(), 264U);
    EXPECT_EQ(rules.substr(0, 16), "\x4D\x20\xD5\xF4\xA9\x0F\xFF\x9B\x43\x43\xA8\xC3\x58\x0A\x5E\x57"s);
    EXPECT_EQ(rules.substr(256), "\x66\xBE\xCB\x22\x5A\xF1\x99\xD1"s);

    const auto counts = Ask(R"(\\.\brennvarfw)", 0x8E87281C, 12);
    EXPECT_EQ(counts, "\0\0\0\0\0\0\0\0\x01\0\0\0"s);

    // The notices come in their order, then there is none.
    TrayTextRecord request{};
    request.codeOrStatus = 1;
    EXPECT_EQ(Transact(R"(\\.\pipe\BRENNVAR_IPC_TRAY)", request), Zeros(4100, {{0, "\x02"}, {4, "REFRESH"}}));
    EXPECT_EQ(Transact(R"(\\.\pipe\BRENNVAR_IPC_TRAY)", request), Zeros(4100, {{0, "\x02"}, {4, "answered"}}));
    EXPECT_EQ(Transact(R"(\\.\pipe\BRENNVAR_IPC_TRAY)", request), Zeros(4100, {{0, "\x01"}}));
}

TEST(StandInTest, AppliesOptionRuleAndFolderCommands) {
    const StandInProcess standIn({}, "--no-driver");
    CommandRecord option = Command(8);
    option.optionId = 18;
    option.optionValue = 600;
    ASSERT_TRUE(SendCommand(option));
    EXPECT_TRUE(standIn.WaitForJournal("COMMAND 5596 0:08 5468:5802 5592:12")) << standIn.Output();
    EXPECT_TRUE(test::WaitUntil([&] { return standIn.Read("config.conf").size() == 128; }));
    EXPECT_EQ(standIn.Read("config.conf").substr(0, 16),
              "\x1C\x1A\x89\xA0\x9E\x62\x93\xE8\x1F\x22\x86\xA6\x20\x6F\x5E\x57"s);
    EXPECT_EQ(standIn.Read("config.conf").substr(120), "\x57\xCE\x28\x21\xFF\x8E\x39\x85"s);
    option.optionValue = 0;  // the record is changed, not added
    ASSERT_TRUE(SendCommand(option));
    EXPECT_TRUE(test::WaitUntil(
        [&] { return standIn.Read("config.conf").substr(0, 8) == "\x1C\x1A\x89\xA0\xC6\x60\x93\xE8"s; }));
    EXPECT_EQ(standIn.Read("config.conf").size(), 128U);
    CommandRecord text = Command(9);
    text.optionId = 35;
    PutText(text.optionText, "me@x");
    ASSERT_TRUE(SendCommand(text));
    EXPECT_TRUE(test::WaitUntil([&] {
        const std::string file = standIn.Read("config.conf");
        return file.size() == 256 &&
               file.substr(128, 13) == "\x2D\x1A\x89\xA0\xC6\x60\x93\xE8\x72\x47\xC6\xDE\x20"s;
    }));

    // The command's 0, 1, 2 are the file's 1, 2, 0; 3 removes. 260: the place of the action.
    CommandRecord rule = Command(22);
    PutText(rule.subject, kApp);
    for (const auto& [value, stored] : {std::pair{0U, '\x59'}, {1U, '\x5A'}, {2U, '\x58'}}) {
        rule.value = value;
        ASSERT_TRUE(SendCommand(rule));
        EXPECT_TRUE(test::WaitUntil([&, wanted = stored] {
            const std::string file = standIn.Read(R"(Rules\rules.conf)");
            return file.size() == 264 && file[260] == wanted;
        })) << value;
    }
    PutText(rule.subject, R"(c:\TOOLS\A.EXE)");
    rule.value = 3;
    ASSERT_TRUE(SendCommand(rule));
    EXPECT_TRUE(standIn.WaitForFile(R"(Rules\rules.conf)", ""));

    CommandRecord skin = Command(18);
    PutText(skin.optionText, "Dark");
    ASSERT_TRUE(SendCommand(skin));
    CommandRecord language = Command(19);
    PutText(language.optionText, "Deutsch");
    ASSERT_TRUE(SendCommand(language));
    const auto folderName = [&](const char* section) {
        char name[128]{};
        ::GetPrivateProfileStringA(section, "Directory", "none", name, sizeof(name),
                                   (standIn.DataFolder() + R"(\settings.ini)").c_str());
        return std::string(name);
    };
    EXPECT_TRUE(test::WaitUntil([&] { return folderName("Language") == "Deutsch"; }));
    EXPECT_EQ(folderName("Skin"), "Dark");

    // A record of a wrong length is written down and left alone.
    ASSERT_TRUE(WritePipe(kCommandPipeName, &option, 100));
    EXPECT_TRUE(standIn.WaitForJournal("COMMAND 100 0:08"));
}

TEST(StandInTest, KeepsAdvancedRulesTrustedProgramsAndLogs) {
    StandInProcess standIn({"advice deny C:\\x.exe"}, "--no-driver");
    const auto waitForOrder = [&](const std::string& order) {
        return test::WaitUntil(
            [&] { return FirstBytes(standIn.Read(R"(Rules\rules_advanced.conf)"), 712) == order; });
    };
    CommandRecord command = Command(4);
    for (unsigned char id = 1; id <= 3; ++id) {
        command.advancedRule.bytes[0] = std::byte{id};
        ASSERT_TRUE(SendCommand(command));
    }
    EXPECT_TRUE(waitForOrder("\x01\x02\x03"));
    command = Command(30);
    command.ruleId = 3;
    ASSERT_TRUE(SendCommand(command));
    EXPECT_TRUE(waitForOrder("\x01\x03\x02"));
    command.code = CommandCode{31};
    command.ruleId = 1;
    ASSERT_TRUE(SendCommand(command));
    EXPECT_TRUE(waitForOrder("\x03\x01\x02"));
    command.code = CommandCode{5};
    command.advancedRule.bytes[0] = std::byte{9};
    ASSERT_TRUE(SendCommand(command));
    EXPECT_TRUE(waitForOrder("\x03\x09\x02"));
    command.code = CommandCode{6};
    command.ruleId = 3;
    ASSERT_TRUE(SendCommand(command));
    EXPECT_TRUE(waitForOrder("\x09\x02"));

    // 33 characters stand in the record's short field, one more in the long one.
    command = Command(26);
    PutText(command.optionText, std::string(33, 'a'));
    ASSERT_TRUE(SendCommand(command));
    PutText(command.optionText, std::string(34, 'a'));
    ASSERT_TRUE(SendCommand(command));
    EXPECT_TRUE(test::WaitUntil([&] { return standIn.Read("trusted.conf").size() == 588; }));
    EXPECT_EQ(FirstBytes(standIn.Read("trusted.conf"), 294), "\0a"s);
    EXPECT_EQ(standIn.Read("trusted.conf").substr(260, 1), "\x39");  // 'a' with the keystream's 0x58
    EXPECT_EQ(standIn.Read("trusted.conf").substr(294 + 260, 1), "\x58");
    ASSERT_TRUE(SendCommand(Command(27)));
    EXPECT_TRUE(standIn.WaitForFile("trusted.conf", ""));

    EXPECT_TRUE(standIn.WaitForFile("advice.dat", Zeros(404, {{0, "C:\\x.exe"}})));

    // Logs of one day, then of that day and before.
    const std::string log = standIn.DataFolder() + R"(\Log\)";
    const char* const names[] = {"20200101.log", "20200102_dns.log", "20200103_mac.log", "20200104.log"};
    for (const char* name : names) std::ofstream(log + name) << "x";
    const auto left = [&] {
        std::string days;
        for (const char* name : names)
            if (std::filesystem::exists(log + name)) days += name[7];
        return days;
    };
    ASSERT_EQ(left(), "1234");
    command = Command(23);
    PutText(command.subject, "20200102");
    ASSERT_TRUE(SendCommand(command));
    EXPECT_TRUE(test::WaitUntil([&] { return left() == "134"; }));
    PutText(command.subject, "20200103");
    command.value = 1;
    ASSERT_TRUE(SendCommand(command));
    EXPECT_TRUE(test::WaitUntil([&] { return left() == "4"; }));
}

TEST(StandInTest, AnswersProcessPathsAndTheFilterQueue) {
    const StandInProcess standIn({R"(process 4711 C:\Program Files\x.exe)"}, "--no-driver");
    ASSERT_TRUE(standIn.WaitForJournal("EVENT scenario-done")) << standIn.Output();
    PidResolveRecord request{};
    request.codeOrStatus = 1;
    request.processId = 4711;
    EXPECT_EQ(Transact(R"(\\.\pipe\BRENNVAR_PID_RESOLVE)", request),
              Zeros(520, {{0, "\x02"}, {4, "\x67\x12"}, {8, R"(C:\Program Files\x.exe)"}}));
    request.processId = 1;
    EXPECT_EQ(Transact(R"(\\.\pipe\BRENNVAR_PID_RESOLVE)", request), Zeros(520, {{0, "\x01"}, {4, "\x01"}}));
    request.processId = ::GetCurrentProcessId();
    EXPECT_NE(Transact(R"(\\.\pipe\BRENNVAR_PID_RESOLVE)", request).find("standin_system_tests.exe"),
              std::string::npos);

    FilterQueueRecord filter{};
    filter.code = 4;
    PutText(filter.text, "ads.example");
    const std::string valid = Zeros(6168, {{0, "\x64"}});
    EXPECT_EQ(Transact(R"(\\.\pipe\BRENNVAR_IPC_QUEUE_SRV)", filter), valid);
    EXPECT_EQ(standIn.Read("domain.conf").substr(0, 8), "\x0F\x1A\x89\xA0\xA7\x04\xE0\xC6"s);
    EXPECT_EQ(standIn.Read("domain.conf").size(), 108U);
    filter.code = 3;
    EXPECT_EQ(Transact(R"(\\.\pipe\BRENNVAR_IPC_QUEUE_SRV)", filter), Zeros(6168, {{0, "\x64"}, {8, "\x01"}}));
    PutText(filter.text, "other.example");
    EXPECT_EQ(Transact(R"(\\.\pipe\BRENNVAR_IPC_QUEUE_SRV)", filter), Zeros(6168, {{0, "\x64"}, {8, "\x02"}}));
    filter = {};
    filter.code = 5;
    filter.entryOrValue = 1;
    EXPECT_EQ(Transact(R"(\\.\pipe\BRENNVAR_IPC_QUEUE_SRV)", filter), valid);
    EXPECT_EQ(standIn.Read("domain.conf"), "");
}

TEST(StandInTest, SpoilsTheNextAnswersOnRequest) {
    const StandInProcess standIn({"connection 1 1.1.1.1:1 2.2.2.2:2 1 0 0",
                                  "connection 1 1.1.1.1:1 2.2.2.2:2 1 0 0", "totals 1 1",
                                  "hostile connections odd 2", "hostile listeners fail", "hostile totals short",
                                  "question tcp 1.1.1.1:1 2.2.2.2:2 1 x", "hostile question odd"});
    ASSERT_TRUE(standIn.WaitForJournal("EVENT scenario-done")) << standIn.Output();
    const auto table = [] { return Ask(R"(\\.\brennvarfw_nfo)", 0x8E872408, 0x540000).value_or("failed"); };
    EXPECT_EQ(table().substr(56), "\xFF\xFF\xFF\xFF\xFF");
    EXPECT_EQ(table().size(), 61U);
    EXPECT_EQ(table().size(), 56U);
    EXPECT_EQ(Ask(R"(\\.\brennvarfw_nfo)", 0x8E872404, 14), std::nullopt);
    EXPECT_EQ(Ask(R"(\\.\brennvarfw_nfo)", 0x8E872404, 14), "");
    EXPECT_EQ(Ask(R"(\\.\brennvarfw_nfo)", 0x8E87240C, 32)->size(), 16U);
    EXPECT_EQ(Ask(R"(\\.\brennvarfw_nfo)", 0x8E87240C, 32)->size(), 32U);
    const Fetch question;
    EXPECT_EQ(question.block.questionPresent, 0xFFFFFFFFU);
    EXPECT_EQ(question.request.substr(161), std::string(288, 'A'));
}

TEST(StandInTest, ClaimsMoreThanTheBufferHolds) {
    const StandInProcess standIn({"connection 1 1.1.1.1:1 2.2.2.2:2 1 0 0", "hostile connections long"});
    ASSERT_TRUE(standIn.WaitForJournal("EVENT scenario-done")) << standIn.Output();
    EXPECT_EQ(Ask(R"(\\.\brennvarfw_nfo)", 0x8E872408, 0x540000)->size(), 0x540000U + 28);
    EXPECT_EQ(Ask(R"(\\.\brennvarfw_nfo)", 0x8E872408, 0x540000)->size(), 28U);
}

TEST(StandInTest, FeedsTheMachinesOwnListenersOnceASecond) {
    const StandInProcess standIn({});
    ASSERT_TRUE(standIn.WaitForJournal("EVENT scenario-done")) << standIn.Output();
    WSADATA data;
    ASSERT_EQ(::WSAStartup(MAKEWORD(2, 2), &data), 0);
    const SOCKET socket = ::socket(AF_INET, SOCK_STREAM, 0);
    sockaddr_in address{};
    address.sin_family = AF_INET;
    address.sin_addr.s_addr = 0x0100007F;
    int size = sizeof(address);
    ASSERT_EQ(::bind(socket, reinterpret_cast<sockaddr*>(&address), size), 0);
    ASSERT_EQ(::listen(socket, 1), 0);
    ASSERT_EQ(::getsockname(socket, reinterpret_cast<sockaddr*>(&address), &size), 0);
    const std::string entry =
        "\x06\0\0\0\x7F\0\0\x01"s + std::string(reinterpret_cast<char*>(&address.sin_port), 2);

    const auto isListed = [&] {
        const auto table = Ask(R"(\\.\brennvarfw_nfo)", 0x8E872404, 0x2A0000);
        return table && table->find(entry) != std::string::npos;
    };
    EXPECT_TRUE(test::WaitUntil(isListed));
    ::closesocket(socket);
    EXPECT_TRUE(test::WaitUntil([&] { return !isListed(); }));
    ::WSACleanup();
}

TEST(StandInTest, RefusesABadScenarioBeforeItStarts) {
    const StandInProcess standIn({"notice x", "", "listen tcp"});
    EXPECT_EQ(standIn.WaitForEnd(), 2);
    EXPECT_NE(standIn.Output().find(":3: not understood: listen tcp"), std::string::npos) << standIn.Output();
    EXPECT_TRUE(standIn.Journal().empty());
}

TEST(StandInTest, EndsByItselfAndTakesTheDriverAway) {
    const StandInProcess standIn({"exit"});
    EXPECT_EQ(standIn.WaitForEnd(), 0);
    EXPECT_EQ(standIn.Journal(), (std::vector<std::string>{"EVENT driver-loaded", "EVENT started",
                                                           "EVENT scenario-done", "EVENT stopped"}))
        << standIn.Output();
    EXPECT_FALSE(OpenDevice(R"(\\.\brennvarfw)"));
}

TEST(StandInTest, DiesInTheMiddleOfARequestAndIsReplaced) {
    PidResolveRecord request{};
    request.codeOrStatus = 1;
    {
        const StandInProcess dying({}, "--die-after 2");
        EXPECT_EQ(Transact(R"(\\.\pipe\BRENNVAR_PID_RESOLVE)", request).size(), 520U) << dying.Output();
        EXPECT_EQ(Transact(R"(\\.\pipe\BRENNVAR_PID_RESOLVE)", request), "failed");
        EXPECT_EQ(dying.WaitForEnd(), 3);
    }
    // The driver that it left behind does not keep the next one from starting.
    const StandInProcess next({"listener tcp 1.1.1.1:1 1"});
    ASSERT_TRUE(next.WaitForJournal("EVENT scenario-done")) << next.Output();
    EXPECT_EQ(Ask(R"(\\.\brennvarfw_nfo)", 0x8E872404, 0x2A0000)->size(), 14U);
}

TEST(StandInTest, UnloadsTheDriverUnderAnOpenHandle) {
    StandInProcess first({"totals 1 1"});
    const UniqueFile held = OpenDevice(R"(\\.\brennvarfw_nfo)");
    ASSERT_TRUE(held) << first.Output();
    first.Stop();
    char totals[32];
    DWORD returned = 0;
    EXPECT_FALSE(::DeviceIoControl(held.Get(), 0x8E87240C, nullptr, 0, totals, 32, &returned, nullptr));

    const StandInProcess second({"totals 2 2"});
    ASSERT_TRUE(second.WaitForJournal("EVENT scenario-done")) << second.Output();
    EXPECT_EQ(Ask(R"(\\.\brennvarfw_nfo)", 0x8E87240C, 32), Zeros(32, {{0, "\x02"}, {8, "\x02"}}));
}

TEST(StandInTest, AnswersLateOnRequest) {
    const StandInProcess standIn({}, "--no-driver --slow-ms 300");
    TrayTextRecord request{};
    request.codeOrStatus = 1;
    const ULONGLONG start = ::GetTickCount64();
    EXPECT_EQ(Transact(R"(\\.\pipe\BRENNVAR_IPC_TRAY)", request).size(), 4100U);
    EXPECT_GE(::GetTickCount64() - start, 290U);  // the tick count moves in steps
}

}  // namespace
}  // namespace brennvar
