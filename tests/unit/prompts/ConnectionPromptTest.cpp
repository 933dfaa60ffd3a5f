#include "prompts/ConnectionPrompt.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <cstring>
#include <functional>
#include <stdexcept>

#include "support/FakeDevice.h"
#include "unit/prompts/FakePromptWorld.h"

namespace brennvar {
namespace {

constexpr char kMailPath[] = R"(C:\Mail\mail.exe)";

// The driver's side of the exchange, byte by byte: what it puts at which offset.
struct DriverQuestion {
    std::array<std::byte, 449> request{};
    std::uint32_t id = 0x01020304;
    std::uint32_t present = 1;

    DriverQuestion() {
        Put<std::uint32_t>(20, 6);
        Put<std::uint32_t>(24, 4711);
        Put<std::uint16_t>(34, 0x00C0);      // 49152 in network order
        Put<std::uint32_t>(36, 0x0500A8C0);  // 192.168.0.5
        Put<std::uint16_t>(50, 0x1900);      // 25
        Put<std::uint32_t>(52, 0x077100CB);  // 203.0.113.7
        PutPath(kMailPath);
    }
    template <class Number>
    void Put(std::size_t offset, Number number) {
        std::memcpy(request.data() + offset, &number, sizeof number);
    }
    void PutPath(std::string_view path) {
        std::fill(request.begin() + 161, request.end(), std::byte{0});
        std::memcpy(request.data() + 161, path.data(), path.size());
    }
};

template <class Number>
Number NumberAt(std::span<const std::byte> bytes, std::size_t offset) {
    Number number = 0;
    std::memcpy(&number, bytes.data() + offset, sizeof number);
    return number;
}

std::span<std::byte> AreaAt(std::uint64_t address, std::size_t size) {
    // The driver gets addresses as numbers. NOLINTNEXTLINE(performance-no-int-to-ptr)
    return {reinterpret_cast<std::byte*>(static_cast<std::uintptr_t>(address)), size};
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
        const auto data = AreaAt(NumberAt<std::uint64_t>(block, 8), NumberAt<std::uint32_t>(block, 16));
        const auto request = AreaAt(NumberAt<std::uint64_t>(block, 24), 449);
        EXPECT_EQ(data.size(), 65536U);
        EXPECT_TRUE(IsZero(block.subspan(0, 8)) && IsZero(block.subspan(20, 4)) && IsZero(block.subspan(32)));
        EXPECT_TRUE(IsZero(data) && IsZero(request));
        std::fill(data.begin(), data.end(), std::byte{0xA5});
        std::copy(question.request.begin(), question.request.end(), request.begin());
        std::memcpy(block.data(), &question.id, 4);
        std::memcpy(block.data() + 4, &question.present, 4);
        if (spoilBlock) spoilBlock(block);
        return succeeds;
    }

    // The one answer of one cycle.
    ConnectionPromptAnswer AnswerOfCycle() {
        world.sent.clear();
        EXPECT_EQ(service.RunCycle(), PromptCycle::Answered);
        EXPECT_EQ(world.sent.size(), 1U);
        return world.sent.empty() ? ConnectionPromptAnswer{} : world.sent.back();
    }
    PromptQuestion QuestionOfCycle() {
        world.questions.clear();
        (void)AnswerOfCycle();
        EXPECT_EQ(world.questions.size(), 1U);
        return world.questions.empty() ? PromptQuestion{} : world.questions.back();
    }

    DriverQuestion question;
    bool succeeds = true;
    std::function<void(std::span<std::byte>)> spoilBlock;
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
    question.present = 0;
    EXPECT_EQ(service.RunCycle(), PromptCycle::NoQuestion);

    EXPECT_TRUE(world.sent.empty() && world.questions.empty());
    EXPECT_EQ(driver.opened, std::vector<std::string>(3, R"(\\.\brennvarfw_ctl)"));
    EXPECT_EQ(driver.openCount, 0);
    EXPECT_FALSE(service.IsBusy());
}

TEST_F(ConnectionPromptTest, AsksAndSendsTheAnswerByteForByte) {
    world.answer = {.allow = true, .remember = false};
    const ConnectionPromptAnswer answer = AnswerOfCycle();
    std::string expected("\x03\0\0\0\x01\0\0\0\x04\x03\x02\x01", 12);
    expected += R"(C:\Mail\mail.exe)";
    expected.resize(272, '\0');
    expected += std::string_view("\x67\x12\0\0", 4);  // 4711
    EXPECT_EQ(std::string(reinterpret_cast<const char*>(&answer), sizeof answer), expected);
}

TEST_F(ConnectionPromptTest, CodesTheFourAnswers) {
    struct Row {
        PromptAnswer answer;
        std::uint32_t expected;
    };
    const Row rows[] = {{{.allow = true, .remember = false}, 1},
                        {{.allow = false, .remember = false}, 2},
                        {{.allow = true, .remember = true}, 3},
                        {{.allow = false, .remember = true}, 4}};
    for (const Row& row : rows) {
        world.answer = row.answer;
        EXPECT_EQ(static_cast<std::uint32_t>(AnswerOfCycle().decision), row.expected);
    }
}

TEST_F(ConnectionPromptTest, LetsARuleDecideWithoutAsking) {
    struct Row {
        std::uint32_t rule, expected;
        bool asks;
    };
    const Row rows[] = {{1, 4, false}, {2, 3, false}, {0, 2, true}, {3, 2, true}, {0xFFFFFFFF, 2, true}};
    for (const Row& row : rows) {
        world.rules[kMailPath] = static_cast<RuleAction>(row.rule);
        world.questions.clear();
        EXPECT_EQ(static_cast<std::uint32_t>(AnswerOfCycle().decision), row.expected) << row.rule;
        EXPECT_EQ(!world.questions.empty(), row.asks) << row.rule;
    }
}

TEST_F(ConnectionPromptTest, AnswersAQuestionWithoutProcessAtOnce) {
    question.Put<std::uint32_t>(24, 0xFFFFFFFF);
    world.rules[kMailPath] = RuleAction::Allow;
    const ConnectionPromptAnswer answer = AnswerOfCycle();
    EXPECT_EQ(answer.decision, PromptDecision::None);
    EXPECT_EQ(answer.questionId, 0x01020304U);
    EXPECT_EQ(answer.processId, 0xFFFFFFFFU);
    EXPECT_TRUE(IsZero(std::as_bytes(std::span(answer.path))));
    EXPECT_TRUE(world.questions.empty());
}

TEST_F(ConnectionPromptTest, FillsTheQuestionFromRequestAndWorld) {
    world.descriptions[kMailPath] = "Mail Reader";
    world.hosts[0x077100CB] = "mail.example.org";
    world.advice[kMailPath] = 0;
    world.texts["Language/DL_N_201_445"] = "Ja";
    const PromptQuestion asked = QuestionOfCycle();
    EXPECT_EQ(asked.path, kMailPath);
    EXPECT_EQ(asked.localAddress, "192.168.0.5:49152");
    EXPECT_EQ(asked.allowButton, "Ja");
    EXPECT_EQ(asked.body,
              "Mail Reader\nis trying to communicate to mail.example.org.\n\nConnection details:\n"
              "Remote host: 203.0.113.7:25\nReason: SMTP - E-Mail sending\nProtocol: TCP\n\n"
              "General advice: Deny\n\nAllow this network communication?");
}

TEST_F(ConnectionPromptTest, ResolvesAnEmptyPathByProcess) {
    question.PutPath("");
    world.processes[4711] = kMailPath;
    world.rules[kMailPath] = RuleAction::Deny;
    const ConnectionPromptAnswer answer = AnswerOfCycle();
    EXPECT_EQ(answer.decision, PromptDecision::DenyAndRemember);
    EXPECT_EQ(TextOf(answer.path), kMailPath);
}

TEST_F(ConnectionPromptTest, NamesAnUnknownApplicationWithoutAddresses) {
    question.PutPath("");
    for (const bool knownButEmpty : {false, true}) {
        if (knownButEmpty) world.processes[4711] = "";
        const PromptQuestion asked = QuestionOfCycle();
        EXPECT_EQ(asked.displayName, "Unknown name");
        EXPECT_FALSE(asked.applicationKnown);
        EXPECT_EQ(asked.localAddress, "unknown");
        EXPECT_EQ(asked.remoteAddress, "unknown");
        EXPECT_EQ(TextOf(world.sent.back().path), "Unknown name");
        EXPECT_TRUE(world.described.empty());  // no file of that name is opened
    }
}

TEST_F(ConnectionPromptTest, ReplacesAnUnknownAddressByTheOneUsedTowardsTheOther) {
    question.Put<std::uint32_t>(36, 0);
    world.localAddresses[0x077100CB] = 0x0600A8C0;
    EXPECT_EQ(QuestionOfCycle().localAddress, "192.168.0.6:49152");

    question = {};
    question.Put<std::uint32_t>(52, 0);
    world.localAddresses[0x0500A8C0] = 0x0700A8C0;
    world.hosts[0x0700A8C0] = "own.example.org";
    EXPECT_EQ(QuestionOfCycle().remoteAddress, "192.168.0.7:25");
    EXPECT_EQ(world.questions.back().remoteHost, "own.example.org");
}

TEST_F(ConnectionPromptTest, EndsALongPathItself) {
    // No zero up to the end of the record: its last byte is taken as one.
    question.PutPath(std::string(288, 'p'));
    EXPECT_EQ(QuestionOfCycle().path, std::string(259, 'p'));
    EXPECT_EQ(TextOf(world.sent.back().path), std::string(259, 'p'));
    EXPECT_EQ(world.sent.back().path[259], '\0');
    EXPECT_EQ(world.sent.back().processId, 4711U);
}

TEST_F(ConnectionPromptTest, BelievesNoAddressThatComesBack) {
    spoilBlock = [](std::span<std::byte> block) { std::fill(block.begin() + 8, block.end(), std::byte{0xFF}); };
    question.present = 0x80000000;  // anything but 0 is a question
    EXPECT_EQ(QuestionOfCycle().path, kMailPath);
    EXPECT_EQ(QuestionOfCycle().path, kMailPath);  // the exchange checks that the areas are whole and zero again
}

TEST_F(ConnectionPromptTest, RefusesASecondCycleWhileAQuestionIsOnScreen) {
    int devicesWhileAsking = 0;
    world.whileAsking = [&] {
        EXPECT_TRUE(service.IsBusy());
        devicesWhileAsking = driver.openCount;
        question.PutPath("other.exe");
        EXPECT_EQ(service.RunCycle(), PromptCycle::Busy);
    };
    EXPECT_EQ(TextOf(AnswerOfCycle().path), kMailPath);
    EXPECT_EQ(driver.opened.size(), 1U);
    EXPECT_EQ(devicesWhileAsking, 1);  // closed after the answer, not before
    EXPECT_EQ(driver.openCount, 0);
    EXPECT_FALSE(service.IsBusy());
}

TEST_F(ConnectionPromptTest, IsReadyAgainAfterADialogThatThrew) {
    world.whileAsking = [] { throw std::runtime_error("no window"); };
    EXPECT_EQ(AnswerOfCycle().decision, PromptDecision::DenyOnce);
    world.whileAsking = nullptr;
    EXPECT_EQ(TextOf(AnswerOfCycle().path), kMailPath);
}

}  // namespace
}  // namespace brennvar
