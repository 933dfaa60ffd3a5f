#include "prompts/ConnectionQuestions.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cstring>
#include <stdexcept>

#include "support/FailingMemory.h"
#include "support/RawBytes.h"
#include "unit/prompts/QuestionRig.h"

namespace brennvar {
namespace {

using namespace std::string_view_literals;
using namespace std::chrono_literals;
using State = ConnectionQuestions::State;

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

class ConnectionQuestionsTest : public testing::Test, protected test::QuestionRig {
protected:
    ConnectionQuestionsTest() {
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
    [[nodiscard]] State Tick() {
        questions.Tick();
        return questions.CurrentState();
    }
    [[nodiscard]] State TickAfter(std::chrono::milliseconds time) {
        clock.Pass(time);
        return Tick();
    }
    // What has arrived at the service now that the question is decided, and nothing else is under way.
    ConnectionPromptAnswer Delivered() {
        EXPECT_EQ(Tick(), State::Delivering);
        pipe.writes.clear();
        delivering.Run();
        EXPECT_EQ(pipe.opened.back(), R"(\\.\pipe\BRENNVAR_IPC_CONFIRM)");
        EXPECT_EQ(pipe.writes.size(), 1U);
        return DecodeRecord<ConnectionPromptAnswer>(pipe.writes.at(0).bytes).value_or(ConnectionPromptAnswer{});
    }
    // The answer of a whole round, with every look-up done in time.
    ConnectionPromptAnswer Round() {
        asker.questions.clear();
        TickAndLookUp();
        return Delivered();
    }

    test::RawBytes request = Request(kMailPath);
    std::uint32_t present = 1;
    bool succeeds = true, spoilsBlock = false;
};

TEST_F(ConnectionQuestionsTest, AsksAndSendsTheAnswerByteForByte) {
    asker.answer = {.allow = true, .remember = false};
    sources.description = "Mail Reader";
    sources.company = "Mail Co";
    sources.hosts[0x077100CB] = "mail.example.org";
    sources.charset = 204;
    const ConnectionPromptAnswer answer = Round();
    const auto golden =
        test::ZerosWith(276, {{0, "\3"}, {4, "\1"}, {8, "\4\3\2\1"}, {12, kMailPath}, {272, "\x67\x12"}});
    EXPECT_EQ(std::memcmp(&answer, golden.data(), 276), 0);
    const PromptQuestion& asked = asker.questions.at(0);
    EXPECT_EQ(asked.localAddress, "192.168.0.5:49152");
    EXPECT_EQ(asked.displayName + ", " + asked.remoteHost + ", " + asked.remoteAddress,
              "Mail Reader, mail.example.org, 203.0.113.7:25");
    EXPECT_EQ(asked.program.file + ", " + asked.program.publisher + ", " + asked.processId,
              R"(C:\Mail\mail.exe, Mail Co, 4711)");
    EXPECT_EQ(asked.charset, 204) << "of the language of the moment, not of the program's";
}

TEST_F(ConnectionQuestionsTest, TheAnswerOrARuleMakesTheDecision) {
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
        sources.rules[kMailPath] = static_cast<RuleAction>(row.rule);
        asker.answer = row.answer;
        asker.isReady = row.asks;  // what a rule decides does not wait for the user
        EXPECT_EQ(static_cast<std::uint32_t>(Round().decision), row.expected) << row.rule;
        EXPECT_EQ(!asker.questions.empty(), row.asks) << row.rule;
    }
    // Without a process there is nothing to be looked up.
    request = Request(kMailPath, "", "", "\xFF\xFF\xFF\xFF");
    sources.looked.clear();
    const ConnectionPromptAnswer answer = Round();
    EXPECT_EQ(answer.decision, PromptDecision::None);
    EXPECT_EQ(answer.processId, 0xFFFFFFFFU);
    EXPECT_TRUE(IsZero(std::as_bytes(std::span(answer.path))));
    EXPECT_TRUE(asker.questions.empty() && sources.looked.empty());
}

TEST_F(ConnectionQuestionsTest, AProgramThatCannotBeResolvedIsUnknownAndNotRemembered) {
    request = Request("");
    asker.answer = {.allow = true, .remember = true};
    sources.rules["Unknown name"] = RuleAction::Deny;
    sources.advice = 1;
    sources.hosts[0x077100CB] = "mail.example.org";
    for (const std::string resolved : {kMailPath, ""}) {
        sources.process = resolved;
        sources.looked.clear();
        const ConnectionPromptAnswer answer = Round();
        const PromptQuestion& asked = asker.questions.at(0);
        const bool isKnown = !resolved.empty();
        EXPECT_EQ(TextOf(answer.path), isKnown ? kMailPath : "Unknown name");
        EXPECT_EQ(answer.decision, isKnown ? PromptDecision::AllowAndRemember : PromptDecision::AllowOnce);
        EXPECT_EQ(asked.whyNotRemembered.empty(), isKnown);
        EXPECT_EQ(asked.remoteAddress, isKnown ? "203.0.113.7:25" : "unknown");
        EXPECT_EQ(asked.remoteHost, "mail.example.org");
        EXPECT_EQ(asked.advice, isKnown ? "Allow" : "None");
        EXPECT_EQ(asked.program.file, resolved);
        EXPECT_EQ(asked.processId, "4711");
        EXPECT_EQ(sources.looked.empty(), !isKnown);  // no rule, no advice and no file of that name
    }
}

TEST_F(ConnectionQuestionsTest, WaitsTwoSecondsForThePathAndHalfASecondForTheRest) {
    request = Request("");
    sources.process = kMailPath;
    EXPECT_EQ(Tick(), State::Gathering);
    EXPECT_EQ(TickAfter(1999ms), State::Gathering);
    EXPECT_EQ(connection.Waiting(), 0U);
    EXPECT_EQ(TickAfter(1ms), State::Gathering);
    deciding.Run();  // too late
    EXPECT_EQ(TickAfter(499ms), State::Gathering);
    EXPECT_TRUE(asker.questions.empty());
    EXPECT_EQ(TickAfter(1ms), State::Delivering);
    EXPECT_EQ(asker.questions.at(0).displayName, "Unknown name");
    EXPECT_EQ(asker.questions.at(0).remoteHost, "unknown");
    connection.RunAll();  // too late as well
    EXPECT_EQ(TextOf(Delivered().path), "Unknown name");
}

TEST_F(ConnectionQuestionsTest, WaitsForTheRuleAsLongAsItsFileAndNotForThreadsThatHang) {
    sources.rules[kMailPath] = RuleAction::Deny;
    sources.description = "Mail Reader";
    sources.hosts[0x077100CB] = "mail.example.org";
    EXPECT_EQ(Tick(), State::Gathering);
    EXPECT_EQ(TickAfter(7999ms), State::Gathering);
    deciding.Run();
    EXPECT_EQ(Delivered().decision, PromptDecision::DenyAndRemember);
    EXPECT_EQ(connection.Waiting() + programs.Waiting(), 0U) << "nobody is asked, so nothing else is looked up";

    // The threads for rules and for programs hang: the question comes without them, and so does the next one.
    for (int question = 1; question <= 2; ++question) {
        EXPECT_EQ(Tick(), State::Gathering);
        EXPECT_EQ(TickAfter(8000ms), State::Gathering);
        connection.RunAll();
        EXPECT_EQ(TickAfter(499ms), State::Gathering);
        EXPECT_EQ(TickAfter(1ms), State::Delivering);
        EXPECT_EQ(asker.questions.back().displayName, "mail.exe");
        EXPECT_EQ(asker.questions.back().program.publisher, "unknown") << "which is not to say that there is none";
        EXPECT_EQ(asker.questions.back().remoteHost, "mail.example.org");
        EXPECT_EQ(Delivered().decision, PromptDecision::DenyOnce);
    }
    // What they come back to is wanted no more, and not looked up.
    sources.looked.clear();
    deciding.RunAll();
    programs.RunAll();
    EXPECT_TRUE(sources.looked.empty());
}

TEST_F(ConnectionQuestionsTest, AClockThatIsSetChangesNoLimit) {
    EXPECT_EQ(Tick(), State::Gathering);
    deciding.Run();
    clock.now -= 3600 * kFileTimePerSecond;
    EXPECT_EQ(TickAfter(499ms), State::Gathering);
    EXPECT_EQ(TickAfter(1ms), State::Delivering);
}

TEST_F(ConnectionQuestionsTest, ReplacesAnUnknownAddressByTheOneUsedTowardsTheOther) {
    request = Request(kMailPath, "");
    sources.localAddresses = {{0x077100CB, 0x0600A8C0}, {0x0500A8C0, 0x0700A8C0}};
    sources.hosts[0x0700A8C0] = "own.example.org";
    (void)Round();
    EXPECT_EQ(asker.questions.at(0).localAddress, "192.168.0.6:49152");
    request = Request(kMailPath, "\xC0\xA8\0\5"sv, "");
    (void)Round();
    EXPECT_EQ(asker.questions.at(0).remoteAddress, "192.168.0.7:25");
    EXPECT_EQ(asker.questions.at(0).remoteHost, "own.example.org");
}

TEST_F(ConnectionQuestionsTest, BelievesNoAddressThatComesBackAndEndsALongPathItself) {
    spoilsBlock = true;
    present = 0x80000000;                      // anything but 0 is a question
    request = Request(std::string(288, 'p'));  // no zero up to the end of the record
    (void)Round();                             // the exchange checks that the areas are whole and zero again
    const ConnectionPromptAnswer answer = Round();
    EXPECT_EQ(asker.questions.at(0).path, std::string(259, 'p'));
    EXPECT_EQ(std::string_view(answer.path, 260), std::string(259, 'p') + '\0');
    EXPECT_EQ(answer.processId, 4711U);
}

TEST_F(ConnectionQuestionsTest, TakesOneQuestionAtATimeUntilItsAnswerIsOver) {
    asker.whileAsking = [&] {
        request = Request("other.exe");
        EXPECT_EQ(Tick(), State::Asking);
        EXPECT_TRUE(questions.IsBusy());
        EXPECT_EQ(delivering.Waiting(), 0U);
    };
    TickAndLookUp();
    EXPECT_EQ(Tick(), State::Delivering);
    EXPECT_FALSE(questions.IsBusy());
    pipe.failingWaits = test::FakePipe::kAlways;
    delivering.DoTask();
    EXPECT_EQ(Tick(), State::Delivering);
    EXPECT_EQ(driver.openCount, 1);  // closed after the answer, not before
    EXPECT_EQ(driver.opened.size(), 1U);
    EXPECT_EQ(pipe.waits, std::vector<std::chrono::milliseconds>{20s}) << "given up after one wait";
    delivering.Complete();
    // A dialog that throws denies, and the questions go on.
    asker.whileAsking = [] { throw std::runtime_error("no window"); };
    asker.answer = {.allow = true, .remember = true};
    pipe.failingWaits = 0;
    const ConnectionPromptAnswer answer = Round();
    EXPECT_EQ(TextOf(answer.path), "other.exe");
    EXPECT_EQ(answer.decision, PromptDecision::DenyOnce);
    present = 0;
    EXPECT_EQ(Tick(), State::Idle);
    EXPECT_EQ(driver.openCount, 0);
}

TEST_F(ConnectionQuestionsTest, LosesNoQuestionAndMixesNoneUpWithoutMemory) {
    constexpr char kOtherPath[] = R"(C:\Programs of all kinds\other.exe)";
    int before = 0;
    for (bool hasFailed = true; hasFailed; ++before) {
        SCOPED_TRACE(before);
        // One question before, about another program, whose facts must not come up again.
        request = Request(kMailPath);
        present = 1;
        asker.answer = {.allow = true, .remember = true};
        (void)Round();
        present = 0;
        questions.Tick();
        ASSERT_EQ(questions.CurrentState(), State::Idle);
        request = Request(kOtherPath);
        present = 1;
        asker.questions.clear();
        pipe.writes.clear();
        test::FailingMemory memory(before);
        for (int tick = 0; tick < 100 && pipe.writes.empty(); ++tick) {
            memory.Run([this] { questions.Tick(); });
            if (questions.CurrentState() != State::Idle) present = 0;
            clock.Pass(100ms);
            for (test::FakeTaskQueue* const queue : {&deciding, &programs, &connection, &delivering}) {
                while (queue->Waiting() > 0) {
                    queue->DoTask();
                    memory.Run([queue] { queue->Complete(); });
                }
            }
        }
        ASSERT_EQ(pipe.writes.size(), 1U);
        const auto answer = DecodeRecord<ConnectionPromptAnswer>(pipe.writes[0].bytes).value();
        const std::string path(TextOf(answer.path));
        for (const PromptQuestion& question : asker.questions)
            EXPECT_EQ(question.path.find("ail.exe"), question.path.npos);
        EXPECT_TRUE(path == kOtherPath || path == "Unknown name") << path;
        // Whatever has failed: what is allowed has been asked, and for good only where the program is known.
        if (asker.questions.empty()) {
            EXPECT_EQ(answer.decision, PromptDecision::DenyOnce);
        } else if (path != kOtherPath) {
            EXPECT_NE(answer.decision, PromptDecision::AllowAndRemember);
        }
        EXPECT_LE(asker.questions.size(), 1U);
        hasFailed = memory.HasFailed();
        TickAndLookUp();
        EXPECT_FALSE(questions.IsBusy());
    }
    EXPECT_GT(before, 20) << "allocations of one question";
}

}  // namespace
}  // namespace brennvar
