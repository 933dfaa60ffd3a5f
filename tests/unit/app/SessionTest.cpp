#include "app/Session_win.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <atomic>
#include <future>

#include "support/AskedTools.h"
#include "support/DataFolder.h"
#include "support/FakeAddresses.h"
#include "support/FakeClock.h"
#include "support/FakeDevice.h"
#include "support/FakePipe.h"
#include "support/FakeSessionView.h"
#include "support/FakeUserValues.h"

namespace brennvar {
namespace {

// A session with a service that takes commands and has one notice to tell.
class SessionTest : public testing::Test {
protected:
    struct Connector final : PipeConnector {
        explicit Connector(test::FakePipe& fake) : pipe(fake) {}
        bool WaitForInstance(const std::string& name, std::chrono::milliseconds limit) override {
            return pipe.WaitForInstance(name, limit);
        }
        OpenedPipe Open(const std::string& name) override { return pipe.Open(name); }
        test::FakePipe& pipe;
    };

    struct FakeUserSession final : UserSession {
        std::atomic<bool> isInFront = true;
        std::atomic<HWND> told = nullptr;
        std::atomic<int> refusals = 0;
        [[nodiscard]] bool IsInFront() const override { return isInFront; }
        bool isEnding = false;
        [[nodiscard]] bool IsEnding() const override { return isEnding; }
        bool TellChangesTo(HWND window) override {
            if (refusals-- > 0) return false;
            told = window;
            return true;
        }
        void StopTelling(HWND window) override {
            if (told == window) told = nullptr;
        }
    };

    FakeUserSession userSession;
    test::FakePipe pipe;
    test::FakeClock clock;
    test::FakeDriver driver;
    test::FakeUserValues userValues;
    test::DataFolder folder;
    test::FakeSessionView view;
    test::FakeAddresses addresses;
    HWND window = ::CreateWindowExA(0, "STATIC", "", 0, 0, 0, 0, 0, HWND_MESSAGE, nullptr, nullptr, nullptr);
    Session session{{.clock = clock,
                     .devices = driver,
                     .makeConnector = [this](const StopSignal&) { return std::make_unique<Connector>(pipe); },
                     .addresses = addresses,
                     .userValues = userValues,
                     .userSession = userSession,
                     .dataFolder = folder.Path(),
                     .languageName = "English"},
                    Language(nullptr)};

    void TearDown() override { ::DestroyWindow(window); }

    // Dispatches the window's messages until the condition holds; a session has posted them.
    template <class Condition>
    void PumpUntil(Condition condition) {
        while (!condition()) {
            MSG message;
            ASSERT_GT(::GetMessageA(&message, nullptr, 0, 0), 0);
            if (message.message == Session::kMessageCompletions) {
                session.RunCompletions();
            } else {
                ::DispatchMessageA(&message);
            }
        }
    }
    static test::FakePipe::Bytes AnswerWith(std::string_view text) {
        TrayTextAnswer answer{};
        answer.status = kServiceAnswerValid;
        PutText(answer.text, text);
        const auto bytes = RecordBytes(answer);
        return {bytes.begin(), bytes.end()};
    }
    void Tell(std::string_view text) {
        pipe.server = [text = std::string(text)](const test::FakePipe::Message&) { return AnswerWith(text); };
        const std::size_t before = view.notices.size();
        session.FetchNotice();
        session.FetchNotice();  // not twice at a time
        PumpUntil([&] { return view.notices.size() > before; });
    }
};

TEST_F(SessionTest, IsSilentTowardsAWindowThatHasGone) {
    session.Begin(window, view);
    session.End();
    session.RefreshFigures();
    EXPECT_TRUE(view.modes.empty());
    session.StopLinks(std::chrono::seconds(10));
    EXPECT_EQ(pipe.writes.size(), 3U) << "what was sent has arrived";
    session.commander.Send(Batch(UserCommand::ReloadNetwork));
    EXPECT_EQ(pipe.writes.size(), 3U);
}

TEST_F(SessionTest, FetchesNothingWhileAnotherUsersSessionIsInFront) {
    session.Begin(window, view);
    test::AskedTools tools;
    const auto questionsAsked = [&] {
        session.prompt.Tick(window, tools);
        return std::count(driver.opened.begin(), driver.opened.end(), kDriverControlDeviceName);
    };
    const auto change = [&](bool isInFront) {
        userSession.isInFront = isInFront;
        session.OnUserSessionChanged();
        PumpUntil([&] { return session.IsInFront() == isInFront; });
    };
    EXPECT_EQ(questionsAsked(), 1);
    std::promise<void> changed;
    pipe.server = [isChanged = changed.get_future().share()](const test::FakePipe::Message&) {
        isChanged.get();
        return AnswerWith("On its way");
    };
    session.FetchNotice();
    change(false);
    changed.set_value();
    PumpUntil([&] { return session.statistics.Notices().size() == 1; });
    EXPECT_TRUE(view.notices.empty());
    pipe.server = [](const test::FakePipe::Message&) -> test::FakePipe::Bytes {
        ADD_FAILURE() << "the notice was fetched";
        return {};
    };
    EXPECT_EQ(questionsAsked(), 1);
    session.FetchNotice();
    // Whatever was asked before this has been done when it has.
    bool isDone = false;
    session.link.Ask<int>([](ServicePipes&) { return 1; }, [&](std::optional<int>) { isDone = true; });
    PumpUntil([&] { return isDone; });
    change(true);
    EXPECT_EQ(questionsAsked(), 2);
    Tell("Port scan");
}

TEST_F(SessionTest, LooksAgainAtWhoseSessionIsInFrontWhenNobodyTellsIt) {
    session.Begin(window, view);
    userSession.isInFront = false;
    userSession.refusals = 1;
    session.RefreshFigures();
    PumpUntil([&] { return !session.IsInFront(); });
    EXPECT_EQ(userSession.told, nullptr);
    userSession.isInFront = true;
    clock.Pass(Session::kFrontLookAnyway);
    session.RefreshFigures();
    PumpUntil([&] { return session.IsInFront(); });
    EXPECT_EQ(userSession.told, window);
    session.End();
    EXPECT_EQ(userSession.told, nullptr);
}

TEST_F(SessionTest, EndsWithTheUserSessionWhenTheSystemSaysSoToo) {
    EXPECT_FALSE(session.IsUserSessionEnding(true)) << "somebody else has said so";
    userSession.isEnding = true;
    EXPECT_TRUE(session.IsUserSessionEnding(true));
    EXPECT_FALSE(session.IsUserSessionEnding(false)) << "it was refused";
}

TEST_F(SessionTest, AFileThatIsHeldHoldsUpNeitherTheDriverNorThePasswordNorTheEnd) {
    session.Begin(window, view);
    std::promise<void> held;
    std::promise<void> begun;
    session.reads.Post([&] {
        begun.set_value();
        held.get_future().get();
    });
    begun.get_future().get();
    session.RefreshFigures();
    PumpUntil([&] { return !view.counts.empty(); });
    bool isAllowed = false;
    session.commander.AskFor(UserCommand::Exit, [&] { isAllowed = true; });
    PumpUntil([&] { return isAllowed; });
    session.StopLinks(std::chrono::milliseconds(0));
    held.set_value();
}

}  // namespace
}  // namespace brennvar
