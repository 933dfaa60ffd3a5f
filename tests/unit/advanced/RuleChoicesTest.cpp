#include <gtest/gtest.h>

#include <algorithm>
#include <atomic>
#include <optional>
#include <string>
#include <thread>

#include "advanced/RuleChoices_win.h"
#include "support/FakeClock.h"
#include "support/FakeDevice.h"
#include "support/FakePipe.h"
#include "support/FakeProgramFiles.h"
#include "support/FakeTaskQueue.h"

namespace brennvar {
namespace {

// The system is asked, on this machine only.
class RuleChoicesTest : public testing::Test {
protected:
    test::FakeDriver driver;
    test::FakeTaskQueue reads;
    test::FakeTaskQueue programQueue;
    test::FakeProgramFiles files;
    test::FakeClock clock;
    ServiceLink link{[] {}, [](const StopSignal&) { return std::make_unique<test::FakePipe>(); }};
    std::atomic<int> wakes = 0;
    ConnectionTables tables{driver, reads, clock};
    WinRuleChoices choices{
        {.tables = tables, .reads = reads, .link = link, .programQueue = programQueue, .programFiles = files},
        [this] { ++wakes; }};

    // Until something has come of one more question.
    void WaitForAnswer() {
        const int before = m_answers++;
        while (wakes <= before) std::this_thread::yield();
        choices.RunCompletions();
    }

private:
    int m_answers = 0;
};

TEST_F(RuleChoicesTest, TellsUsersAndAddressesOfThisMachine) {
    std::optional<std::vector<std::string>> users;
    choices.FindUsers([&](std::vector<std::string> found) { users = std::move(found); });
    WaitForAnswer();
    ASSERT_TRUE(users);
    EXPECT_FALSE(users->empty());
    for (const std::string& user : *users) {
        const std::size_t sign = user.find('\\');
        EXPECT_TRUE(sign != std::string::npos && sign > 0 && sign + 1 < user.size()) << user;
        EXPECT_EQ(std::count(users->begin(), users->end(), user), 1) << user;
    }
    std::vector<Ipv4> addresses;
    choices.LookUp("localhost", [&](const std::vector<Ipv4>& found) { addresses = found; });
    WaitForAnswer();
    EXPECT_EQ(addresses, std::vector<Ipv4>{ParseIpv4("127.0.0.1").value_or(0)});
}

TEST_F(RuleChoicesTest, TellsNobodyWhoHasGone) {
    const auto users = [](const std::vector<std::string>&) { ADD_FAILURE() << "users"; };
    const auto addresses = [](const std::vector<Ipv4>&) { ADD_FAILURE() << "addresses"; };
    choices.FindPrograms([](const std::vector<std::string>&) { ADD_FAILURE() << "programs"; });
    choices.FindUsers(users);
    choices.LookUp("localhost", addresses);
    choices.StopLookUp();
    choices.Forget();
    reads.RunAll();
    WaitForAnswer();
    WaitForAnswer();
}

TEST_F(RuleChoicesTest, TellsThatNoProgramIsKnownWithoutADriver) {
    driver.isPresent = false;
    std::optional<std::vector<std::string>> programs;
    choices.FindPrograms([&](std::vector<std::string> found) { programs = std::move(found); });
    reads.RunAll();
    EXPECT_EQ(programs, std::vector<std::string>());
}

}  // namespace
}  // namespace brennvar
