#include "prompts/ActivityQuestions.h"

#include <gtest/gtest.h>

#include <atomic>
#include <map>
#include <thread>
#include <vector>

#include "support/FailingMemory.h"
#include "support/FakeClock.h"
#include "support/FakeIni.h"
#include "support/FakeTaskQueue.h"

namespace brennvar {
namespace {

using namespace std::chrono_literals;
using Kind = ActivityRequest::Kind;

struct FakePrograms final : ProgramSources {
    std::map<std::string, std::string> descriptions;
    test::FakeIni::Values texts;
    std::vector<std::string> opened;
    std::optional<ProgramVersion> Version(const std::string& path) override {
        opened.push_back(path);
        return ProgramVersion{.description = descriptions[path], .company = "Co of " + path, .version = {}};
    }
    std::shared_ptr<const QuestionIcon> Icon(const std::string& path) override {
        opened.push_back(path);
        return nullptr;
    }
    QuestionWords LoadWords() override {
        return {.language = Language(std::make_unique<test::FakeIni>(texts)), .charset = 204};
    }
};

struct FakeAsker final : ActivityAsker {
    bool isReady = true;
    std::optional<ActivityAnswer> answer;
    std::vector<ActivityQuestion> opened;
    int takenAway = 0;
    bool IsReadyToAsk() override { return isReady; }
    void Open(const ActivityQuestion& question) override { opened.push_back(question); }
    std::optional<ActivityAnswer> Answer() override { return std::exchange(answer, std::nullopt); }
    void TakeAway() override { ++takenAway; }
};

struct FakeView final : ActivityView {
    std::vector<std::string> log;
    std::function<void()> over;
    void TrustProgram(const std::string& path, std::function<void()> done) override {
        log.push_back("trust " + path);
        over = std::move(done);
    }
    std::function<void()> onForward = [] {};
    void BringForward() override {
        log.emplace_back("forward");
        onForward();
    }
    void LeaveProgram() override { log.emplace_back("leave"); }
};

constexpr char kActing[] = R"(C:\Tools\acting.exe)";
constexpr char kTarget[] = R"(C:\Tools\target.exe)";

// Two threads as in the program: asks run on one of their own each, the rest on the test's.
class ActivityQuestionsTest : public testing::Test {
protected:
    std::atomic<int> wakes = 0;
    test::FakeClock clock;
    FakePrograms sources;
    test::FakeTaskQueue programs, words;
    FakeAsker asker;
    FakeView view;
    ActivityDesk desk{[this] { ++wakes; }, 10min};
    ActivityQuestions questions{desk, sources, {.programs = programs, .words = words}, asker, clock};
    std::vector<std::thread> threads;
    std::vector<std::unique_ptr<std::optional<ActivityAnswer>>> answers;

    void TearDown() override {
        questions.Stop();
        Join();
    }
    void Join() {
        for (std::thread& thread : threads) thread.join();
        threads.clear();
    }
    // Waits until the request lies on the desk.
    void Ask(const ActivityRequest& request) {
        const int before = wakes;
        auto* const answer = answers.emplace_back(std::make_unique<std::optional<ActivityAnswer>>()).get();
        threads.emplace_back([this, request, answer] { *answer = desk.Ask(request); });
        while (wakes == before) std::this_thread::yield();
    }
    void TickAndLookUp() {
        questions.Tick();
        programs.RunAll();
        words.RunAll();
        questions.Tick();
    }
    void Answer(ActivityAnswer answer) {
        asker.answer = answer;
        TickAndLookUp();
    }
};

TEST_F(ActivityQuestionsTest, WhatIsNotFoundInTimeIsLeftOut) {
    sources.descriptions[kActing] = "Too late";
    sources.texts["Language/DL_N_201_573"] = "startet den Browser:";
    Ask({.kind = Kind::StartBrowser, .actingPath = kActing, .targetPath = kTarget});
    questions.Tick();
    words.RunAll();
    clock.Pass(499ms);
    questions.Tick();
    EXPECT_TRUE(asker.opened.empty());
    clock.Pass(1ms);
    questions.Tick();
    ASSERT_EQ(asker.opened.size(), 1U);
    EXPECT_EQ(asker.opened[0].displayName, "acting.exe");
    EXPECT_EQ(asker.opened[0].wantsText, "startet den Browser:");
    programs.RunAll();
    questions.Tick();
    EXPECT_EQ(asker.opened.size(), 1U);
}

TEST_F(ActivityQuestionsTest, OpensOnlyFilesThatAreNamedWholeAndOnThisMachine) {
    using Paths = std::vector<std::string>;
    for (const std::string path :
         {"", "a.exe", R"(\\x\y\a.exe)", R"(\x)", "/x", R"(\\.\pipe\x)", "C:", "C:a.exe", "1:/a.exe"}) {
        Ask({.kind = Kind::WriteToProcess, .actingPath = path, .targetPath = path});
        TickAndLookUp();
        ASSERT_FALSE(asker.opened.empty());
        Answer({});
        EXPECT_EQ(sources.opened, Paths()) << path;
    }
    EXPECT_EQ(asker.opened[1].displayName, "a.exe");
    Ask({.kind = Kind::WriteToProcess, .actingPath = kActing, .targetPath = "d:/x.exe"});
    TickAndLookUp();
    EXPECT_EQ(sources.opened, (Paths{kActing, kActing, "d:/x.exe"}));
}

TEST_F(ActivityQuestionsTest, StoppingDeniesWhatIsOnScreenAndWhatWaits) {
    Ask({.kind = Kind::ChangeAppInit});
    Ask({.kind = Kind::ChangeWallpaper});
    TickAndLookUp();
    questions.Stop();
    Join();
    EXPECT_EQ(*answers[0], ActivityAnswer());
    EXPECT_EQ(*answers[1], ActivityAnswer());
    EXPECT_EQ(asker.takenAway, 1);
    EXPECT_FALSE(questions.IsBusy());
    EXPECT_EQ(desk.Ask({.kind = Kind::ChangeAppInit}), ActivityAnswer());
    questions.Tick();
    EXPECT_EQ(asker.opened.size(), 1U);
}

TEST_F(ActivityQuestionsTest, AThousandOrdersToComeForwardAreOne) {
    for (int order = 0; order < 1000; ++order) desk.BringForward();
    EXPECT_EQ(wakes, 1);
    desk.RunOrders(view);
    EXPECT_EQ(view.log, std::vector<std::string>{"forward"});
    // One that comes while they are carried out is for the next time.
    view.onForward = [&] { desk.BringForward(); };
    desk.BringForward();
    desk.RunOrders(view);
    EXPECT_EQ(view.log.size(), 2U);
    EXPECT_EQ(wakes, 3);
}

TEST_F(ActivityQuestionsTest, TrustingIsWaitedForButNotForEver) {
    // The wait ends with the command, and with the program.
    const std::function<void()> ends[] = {[&] { view.over(); }, [&] { desk.Close(); }};
    for (const auto& end : ends) {
        std::atomic<bool> isOver = false;
        const int before = wakes;
        std::thread thread([&] {
            desk.Trust(kActing);
            isOver = true;
        });
        while (wakes == before) std::this_thread::yield();
        desk.RunOrders(view);
        EXPECT_FALSE(isOver);
        end();
        thread.join();
    }
    EXPECT_EQ(view.log, std::vector<std::string>(2, std::string("trust ") + kActing));
    desk.Trust(kActing);
    desk.RunOrders(view);
    EXPECT_EQ(view.log.size(), 2U) << "nobody carries an order out any more";
    // And with its limit.
    ActivityDesk hasty([] {}, 1ms);
    hasty.Trust(kActing);
    hasty.RunOrders(view);
    EXPECT_EQ(view.log.size(), 3U);
}

TEST(ActivityTextTest, NamesProgramsAsTheUserKnowsThem) {
    const Language language(nullptr);
    const auto question = [&](std::string path, std::string description) {
        return BuildActivityQuestion(
            {.kind = Kind::WriteToProcess,
             .acting = {.path = std::move(path), .fileDescription = std::move(description)},
             .target = {.path = kTarget, .fileDescription = {}}},
            language);
    };
    EXPECT_EQ(question(kActing, "").displayName, "acting.exe");
    EXPECT_EQ(question(kActing, std::string(40, 'd')).displayName, std::string(40, 'd'));
    EXPECT_EQ(question(kActing, std::string(41, 'd')).displayName, std::string(37, 'd') + "...");
    EXPECT_EQ(question(kActing, "a\r\nAllow").displayName, "a Allow");
    EXPECT_EQ(question(kActing, "").whyNotTrusted, "");
    EXPECT_NE(question("", "").whyNotTrusted, "") << "nobody could be trusted by that";
    // More than the command carries would be another program to the list.
    const std::string longest = R"(C:\)" + std::string(112, 'p') + ".exe";
    ASSERT_EQ(longest.size(), 119U);
    EXPECT_EQ(question(longest, "").whyNotTrusted, "");
    EXPECT_EQ(question(longest + "e", "").whyNotTrusted,
              "The path of this program is too long for the list of trusted programs.");
    // The end of a path tells; all of it would not fit anywhere.
    const ActivityQuestion endless = question(std::string(4000, 'p') + R"(\acting.exe)", "");
    EXPECT_LE(endless.path.size(), 1100U);
    EXPECT_TRUE(endless.path.starts_with("...") && endless.path.ends_with(R"(\acting.exe)"));
}

TEST_F(ActivityQuestionsTest, LosesNoQuestionAndMixesNoneUpWithoutMemory) {
    constexpr char kOther[] = R"(C:\Programs of all kinds\other.exe)";
    int before = 0;
    for (bool hasFailed = true; hasFailed; ++before) {
        SCOPED_TRACE(before);
        Ask({.kind = Kind::WriteToProcess, .actingPath = kActing, .targetPath = kTarget});
        TickAndLookUp();
        Answer({.allow = true, .trust = true});
        Join();
        asker.opened.clear();
        Ask({.kind = Kind::WriteToProcess, .actingPath = kOther, .targetPath = kTarget});
        test::FailingMemory memory(before);
        for (int tick = 0; tick < 100 && !*answers.back(); ++tick) {
            if (!asker.opened.empty() || tick == 50)
                asker.answer = ActivityAnswer{};  // as a window that failed has
            memory.Run([this] { questions.Tick(); });
            clock.Pass(100ms);
            for (test::FakeTaskQueue* const queue : {&programs, &words}) {
                while (queue->Waiting() > 0) {
                    queue->DoTask();
                    memory.Run([queue] { queue->Complete(); });
                }
            }
            if (!questions.IsBusy() && tick > 0) break;
        }
        Join();
        EXPECT_LE(asker.opened.size(), 1U);
        for (const ActivityQuestion& question : asker.opened) EXPECT_EQ(question.path, kOther);
        EXPECT_FALSE((*answers.back())->allow);
        hasFailed = memory.HasFailed();
    }
    EXPECT_GT(before, 10) << "allocations of one question";
}

}  // namespace
}  // namespace brennvar
