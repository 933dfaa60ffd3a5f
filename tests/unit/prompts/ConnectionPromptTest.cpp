#include "prompts/ConnectionPrompt.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cstring>
#include <stdexcept>

#include "support/FakeDevice.h"
#include "support/RawBytes.h"
#include "unit/prompts/FakePromptWorld.h"

namespace brennvar {
namespace {

using namespace std::string_view_literals;

constexpr char kMailPath[] = R"(C:\Mail\mail.exe)";

// What the driver fills in: TCP, process 4711, 192.168.0.5:49152 to 203.0.113.7:25.
test::RawBytes Request(std::string_view path, std::string_view local = "\xC0\xA8\0\5"sv,
                       std::string_view remote = "\xCB\0\x71\7"sv, std::string_view processId = "\x67\x12\0\0"sv) {
    return test::ZerosWith(
        449, {{20, "\6"}, {24, processId}, {34, "\xC0"}, {36, local}, {50, "\0\x19"sv}, {52, remote}, {161, path}});
}

bool IsZero(std::span<const std::byte> bytes) {
    return std::all_of(bytes.begin(), bytes.end(), [](std::byte b) { return b == std::byte{0}; });
}

class ConnectionPromptTest : public testing::Test {
protected:
    ConnectionPromptTest() {
        driver.exchange = [this](std::uint32_t code, std::span<std::byte> block) { return Exchange(code, block); };
    }
    // Writes through the addresses, as the driver does.
    bool Exchange(std::uint32_t code, std::span<std::byte> block) {
        EXPECT_EQ(code, 0x8E862020U);
        EXPECT_EQ(block.size(), 40U);
        std::byte* areas[4] = {};  // at 8 the packet data, at 24 the request
        std::memcpy(areas, block.data() + 8, 24);
        EXPECT_EQ(std::memcmp(&block[16], "\0\0\1\0", 4), 0);  // 65,536 bytes of packet data
        EXPECT_TRUE(IsZero(block.first(8)) && IsZero(block.subspan(20, 4)) && IsZero(block.subspan(32)));
        EXPECT_TRUE(IsZero({areas[0], 65536}) && IsZero({areas[2], 449}));
        std::fill_n(areas[0], 65536, std::byte{0xA5});
        std::copy(request.begin(), request.end(), areas[2]);
        if (spoilsBlock) std::fill(block.begin() + 8, block.end(), std::byte{0xFF});
        std::memcpy(block.data(), "\4\3\2\1", 4);
        std::memcpy(block.data() + 4, &present, 4);
        return succeeds;
    }
    // The answer of one cycle, which sends one and asks one question unless it needs none.
    ConnectionPromptAnswer Cycle() {
        world.sent.clear();
        world.questions.clear();
        EXPECT_EQ(service.RunCycle(), PromptCycle::Answered);
        EXPECT_EQ(world.sent.size(), 1U);
        return world.sent.at(0);
    }

    test::RawBytes request = Request(kMailPath);
    std::uint32_t present = 1;
    bool succeeds = true, spoilsBlock = false;
    test::FakeDriver driver;
    test::FakePromptWorld world;
    ConnectionPromptService service{driver, world};
};

TEST_F(ConnectionPromptTest, DoesNothingWithoutDeviceAnswerOrQuestion) {
    driver.isPresent = false;
    EXPECT_EQ(service.RunCycle(), PromptCycle::NoDevice);
    driver.isPresent = true;
    succeeds = false;
    EXPECT_EQ(service.RunCycle(), PromptCycle::RequestFailed);
    succeeds = true;
    present = 0;
    EXPECT_EQ(service.RunCycle(), PromptCycle::NoQuestion);
    EXPECT_TRUE(world.sent.empty() && world.questions.empty());
    EXPECT_EQ(driver.opened, std::vector<std::string>(3, R"(\\.\brennvarfw_ctl)"));
    EXPECT_EQ(driver.openCount, 0);
}

TEST_F(ConnectionPromptTest, AsksAndSendsTheAnswerByteForByte) {
    world.answer = {.allow = true, .remember = false};
    world.descriptions[kMailPath] = "Mail Reader";
    world.hosts[0x077100CB] = "mail.example.org";
    world.advice[kMailPath] = 0;
    world.texts["Language/DL_N_201_445"] = "Ja";
    const ConnectionPromptAnswer answer = Cycle();
    const auto golden =
        test::ZerosWith(276, {{0, "\3"}, {4, "\1"}, {8, "\4\3\2\1"}, {12, kMailPath}, {272, "\x67\x12"}});
    EXPECT_EQ(std::memcmp(&answer, golden.data(), 276), 0);
    const PromptQuestion& asked = world.questions.at(0);
    EXPECT_EQ(asked.path, kMailPath);
    EXPECT_EQ(asked.localAddress, "192.168.0.5:49152");
    EXPECT_EQ(asked.allowButton, "Ja");
    EXPECT_EQ(asked.body,
              "Mail Reader\nis trying to communicate to mail.example.org.\n\nConnection details:\n"
              "Remote host: 203.0.113.7:25\nReason: SMTP - E-Mail sending\nProtocol: TCP\n\n"
              "General advice: Deny\n\nAllow this network communication?");
}

TEST_F(ConnectionPromptTest, TheAnswerOrARuleMakesTheDecision) {
    struct Row {
        std::uint32_t rule;
        PromptAnswer answer;
        std::uint32_t expected;
        bool asks;
    };
    for (const Row& row :
         {Row{0, {true, false}, 1, true}, Row{0, {false, false}, 2, true}, Row{0, {true, true}, 3, true},
          Row{0, {false, true}, 4, true}, Row{1, {true, false}, 4, false}, Row{2, {false, false}, 3, false},
          Row{3, {false, false}, 2, true}, Row{0xFFFFFFFF, {true, false}, 1, true}}) {
        world.rules[kMailPath] = static_cast<RuleAction>(row.rule);
        world.answer = row.answer;
        EXPECT_EQ(static_cast<std::uint32_t>(Cycle().decision), row.expected) << row.rule;
        EXPECT_EQ(!world.questions.empty(), row.asks) << row.rule;
    }
}

TEST_F(ConnectionPromptTest, AnswersAQuestionWithoutProcessAtOnce) {
    request = Request(kMailPath, "", "", "\xFF\xFF\xFF\xFF");
    world.rules[kMailPath] = RuleAction::Allow;
    const ConnectionPromptAnswer answer = Cycle();
    EXPECT_EQ(answer.decision, PromptDecision::None);
    EXPECT_EQ(answer.processId, 0xFFFFFFFFU);
    EXPECT_TRUE(IsZero(std::as_bytes(std::span(answer.path))));
    EXPECT_TRUE(world.questions.empty());
}

TEST_F(ConnectionPromptTest, ResolvesAnEmptyPathByProcessOrNamesItUnknown) {
    request = Request("");
    for (const std::string resolved : {kMailPath, ""}) {
        world.processes[4711] = resolved;
        world.described.clear();
        EXPECT_EQ(TextOf(Cycle().path), resolved.empty() ? "Unknown name" : kMailPath);
        EXPECT_EQ(world.questions.at(0).localAddress, resolved.empty() ? "unknown" : "192.168.0.5:49152");
        EXPECT_EQ(world.described.empty(), resolved.empty());  // no file of that name is opened
    }
}

TEST_F(ConnectionPromptTest, ReplacesAnUnknownAddressByTheOneUsedTowardsTheOther) {
    request = Request(kMailPath, "");
    world.localAddresses = {{0x077100CB, 0x0600A8C0}, {0x0500A8C0, 0x0700A8C0}};
    world.hosts[0x0700A8C0] = "own.example.org";
    (void)Cycle();
    EXPECT_EQ(world.questions.at(0).localAddress, "192.168.0.6:49152");
    request = Request(kMailPath, "\xC0\xA8\0\5"sv, "");
    (void)Cycle();
    EXPECT_EQ(world.questions.at(0).remoteAddress, "192.168.0.7:25");
    EXPECT_EQ(world.questions.at(0).remoteHost, "own.example.org");
}

TEST_F(ConnectionPromptTest, BelievesNoAddressThatComesBackAndEndsALongPathItself) {
    spoilsBlock = true;
    present = 0x80000000;                      // anything but 0 is a question
    request = Request(std::string(288, 'p'));  // no zero up to the end of the record
    (void)Cycle();                             // the exchange checks that the areas are whole and zero again
    const ConnectionPromptAnswer answer = Cycle();
    EXPECT_EQ(world.questions.at(0).path, std::string(259, 'p'));
    EXPECT_EQ(std::string_view(answer.path, 260), std::string(259, 'p') + '\0');
    EXPECT_EQ(answer.processId, 4711U);
}

TEST_F(ConnectionPromptTest, HoldsAQuestionUntilItCanBeAsked) {
    world.isReady = false;
    for (int cycle = 0; cycle < 2; ++cycle) EXPECT_EQ(service.RunCycle(), PromptCycle::Held);
    EXPECT_TRUE(service.IsBusy());
    EXPECT_TRUE(world.sent.empty() && world.questions.empty());
    EXPECT_EQ(driver.opened.size(), 1U) << "the driver hands a question out once";
    EXPECT_EQ(driver.openCount, 1);
    world.isReady = true;
    request = Request("other.exe");
    EXPECT_EQ(TextOf(Cycle().path), kMailPath);
    EXPECT_FALSE(service.IsBusy());
    EXPECT_EQ(driver.openCount, 0);
    // What a rule decides does not wait for the user.
    world.isReady = false;
    world.rules["other.exe"] = RuleAction::Deny;
    world.sent.clear();
    EXPECT_EQ(service.RunCycle(), PromptCycle::Answered);
    EXPECT_EQ(world.sent.at(0).decision, PromptDecision::DenyAndRemember);
}

TEST_F(ConnectionPromptTest, RefusesASecondCycleWhileAQuestionIsOnScreen) {
    world.whileAsking = [&] {
        EXPECT_EQ(driver.openCount, 1);  // closed after the answer, not before
        request = Request("other.exe");
        EXPECT_EQ(service.RunCycle(), PromptCycle::Busy);
    };
    EXPECT_EQ(TextOf(Cycle().path), kMailPath);
    EXPECT_EQ(driver.opened.size(), 1U);
    EXPECT_EQ(driver.openCount, 0);
    // Ready again, even after a dialog that threw.
    world.whileAsking = [] { throw std::runtime_error("no window"); };
    EXPECT_EQ(Cycle().decision, PromptDecision::DenyOnce);
    world.whileAsking = nullptr;
    EXPECT_EQ(TextOf(Cycle().path), "other.exe");
}

}  // namespace
}  // namespace brennvar
