#include "commands/ProtectionModes.h"

#include <gtest/gtest.h>

#include <functional>
#include <optional>
#include <string>
#include <vector>

#include "support/CommanderRig.h"
#include "support/FakeClock.h"
#include "support/FakeTaskQueue.h"

namespace brennvar {
namespace {

constexpr FileTime kMinute = 600'000'000;
using enum ProtectionMode;

TEST(ModeWordsTest, TellHowLongTheModeLasts) {
    constexpr FileTime kNow = 1'000'000'000;
    const std::string ending = "ends at the next quiet second";
    const struct {
        ModeDisplay display;
        std::string left, end;
    } rows[] = {{{AllowAll, kNow + 1}, "1 min", "until 14:28, 1 min left"},
                {{BlockAll, kNow + kMinute}, "1 min", "until 14:28, 1 min left"},
                {{BlockAll, kNow + kMinute + 1}, "2 min", "until 14:28, 2 min left"},
                {{BlockAll, kNow}, "ending", ending},
                {{BlockAll, kNow - 1}, "ending", ending},
                {{AllowAll, {}}, "", ""}};
    for (const auto& row : rows) {
        const ModeWords words = DescribeMode(row.display, kNow, "14:28", Language(nullptr));
        EXPECT_EQ(words.left, row.left);
        EXPECT_EQ(words.end, row.end);
    }
}

// A service that stores what it is sent, but writes it down only when the test lets it read.
class ProtectionModesTest : public testing::Test, protected ModeView {
protected:
    test::FakeClock clock;
    test::CommanderRig rig;
    test::FakeTaskQueue reads;
    ProtectionMode stored = Normal;
    std::chrono::milliseconds lastPause{};
    std::vector<ProtectionMode> icons;
    int changes = 0;
    ProtectionModes modes{clock,
                          rig.language,
                          rig.commander,
                          reads,
                          [this](std::chrono::milliseconds pause) {
                              lastPause = pause;
                              return std::optional(stored);
                          },
                          *this};

    void OnModeChanged() override { ++changes; }
    void OnIdleMode(ProtectionMode mode) override { icons.push_back(mode); }

    void Tick(bool isIdle) {
        modes.Tick(isIdle);
        reads.RunAll();
    }
    void Choose(ModeChange change) {
        modes.Change(change);
        stored = change.mode;
        rig.Settle();
        reads.RunAll();
        (void)rig.TakeRecords();
    }
    // The records that were sent since the last call: the command, and for command 8 its value.
    std::string Sent() {
        std::string text;
        for (const test::RawBytes& record : rig.TakeRecords()) {
            text += std::to_string(std::to_integer<int>(record[0]));
            if (record[0] == std::byte{8}) {
                EXPECT_EQ(record[5592], std::byte{1}) << "the key of the mode";
                text += '=';
                text += std::to_string(std::to_integer<int>(record[5468]));
            }
            text += " ";
        }
        return text;
    }
};

TEST_F(ProtectionModesTest, TimedModeIsReadBackAndEndsOnTheFirstIdleTick) {
    const FileTime start = clock.now;
    modes.Change({AllowAll, 5});
    EXPECT_EQ(Sent(), "8=1 7 1 ");
    stored = AllowAll;
    modes.Tick(false);  // while the reading waits
    reads.RunAll();
    EXPECT_EQ(lastPause, std::chrono::milliseconds(200)) << "the service has had time to write it";
    EXPECT_EQ(changes, 1);
    EXPECT_EQ(modes.Display(), (ModeDisplay{AllowAll, start + 5 * kMinute}));
    clock.now = start + 5 * kMinute - 1;
    Tick(true);
    EXPECT_EQ(Sent(), "");
    clock.now = start + 9 * kMinute;
    Tick(false);
    EXPECT_EQ(Sent(), "") << "traffic keeps the mode";
    rig.Pipe().breaksOff = true;
    Tick(true);
    EXPECT_EQ(Sent(), "");
    rig.Pipe().breaksOff = false;
    reads.RunAll();
    Tick(true);
    EXPECT_EQ(Sent(), "8=0 7 ") << "without gate and event, until the service has it";
    EXPECT_EQ(icons, (std::vector{AllowAll, Normal, Normal})) << "only idle ticks reach the icon";
    Tick(true);
    EXPECT_EQ(Sent(), "") << "once";
}

TEST_F(ProtectionModesTest, WhatDoesNotArmLeavesAnEarlierExpiryAsItIs) {
    rig.password.answer = test::FakePassword::Answer::Refuse;
    Choose({AllowAll, 7});
    rig.password.answer = test::FakePassword::Answer::Allow;
    for (const std::uint32_t minutes : {0U, 5000U, 0xFFFFFFFFU}) {
        Choose({BlockAll, minutes});
        EXPECT_EQ(modes.Display().until, std::nullopt) << minutes;
    }
    Choose({BlockAll, 1});
    EXPECT_EQ(modes.Display().until, clock.now + kMinute);
    Choose({BlockAll, 4999});
    const FileTime expiry = clock.now + 4999 * kMinute;
    Choose({AllowAll, 0});
    EXPECT_EQ(modes.Display().until, expiry);
    Choose({Normal, 0});
    EXPECT_EQ(modes.Display(), (ModeDisplay{Normal, std::nullopt}));
    clock.now = expiry;
    Tick(true);
    EXPECT_EQ(Sent(), "") << "Normal has no end";
    Choose({BlockAll, 0});
    Tick(true);
    EXPECT_EQ(Sent(), "8=0 7 ") << "at the very moment";
}

TEST_F(ProtectionModesTest, AllowAllNeverTakesEffectLate) {
    const auto sentLate = [&](std::vector<ModeChange> changes, std::chrono::milliseconds late) {
        {
            const auto held = rig.Hold();
            for (const ModeChange& change : changes) modes.Change(change);
            clock.Pass(late);
            modes.WithdrawLate();
        }
        return Sent();
    };
    using namespace std::chrono_literals;
    EXPECT_EQ(sentLate({{AllowAll, 0}}, 1999ms), "8=1 7 1 ");
    EXPECT_EQ(sentLate({{AllowAll, 5}}, 2000ms), "");
    EXPECT_EQ(sentLate({{BlockAll, 0}}, 1h), "8=2 7 1 ") << "late, but better than never";
    EXPECT_EQ(sentLate({{AllowAll, 0}, {BlockAll, 0}, {Normal, 0}}, 0ms), "8=0 7 1 ") << "what is wanted last";
    EXPECT_EQ(sentLate({{AllowAll, 0}, {BlockAll, 0}}, 1h), "8=2 7 1 ") << "that one is not meant any more";
}

TEST_F(ProtectionModesTest, WhatIsLostNeitherEndsALaterModeNorKeepsAnEarlierOne) {
    const auto lose = [&](const std::function<void()>& send) {
        rig.Settle();
        rig.Pipe().breaksOff = true;
        send();
        EXPECT_EQ(Sent(), "");
        rig.Pipe().breaksOff = false;
        reads.RunAll();
    };
    // The end of the one mode is lost, and the user has chosen another one before that is known.
    Choose({AllowAll, 5});
    clock.now += 5 * kMinute;
    rig.Pipe().breaksOff = true;
    Tick(true);
    rig.link.WaitUntilSent({.whileReachable = std::chrono::hours(1), .whileMissing = std::chrono::hours(1)});
    rig.Pipe().breaksOff = false;
    Choose({BlockAll, 0});
    Tick(true);
    EXPECT_EQ(Sent(), "") << "Block All stays";
    // A timed mode is lost: the one that was there, and one that is chosen later, have the end that they had.
    lose([&] { modes.Change({AllowAll, 5}); });
    Choose({BlockAll, 0});
    clock.now += 5 * kMinute;
    Tick(true);
    EXPECT_EQ(Sent(), "") << "Block All still stays";
    // Only the answer is lost: the service has stored it.
    lose([&] {
        modes.Change({AllowAll, 5});
        stored = AllowAll;
    });
    clock.now += 5 * kMinute;
    Tick(true);
    EXPECT_EQ(Sent(), "8=0 7 ");
}

TEST_F(ProtectionModesTest, ReadsOnceAtATimeAndAnswersWithWhatIsStoredThen) {
    modes.Tick(true);
    modes.Tick(false);  // traffic again, while the file is held
    std::vector<ProtectionMode> answers;
    modes.Read([&](ProtectionMode mode) { answers.push_back(mode); });
    ASSERT_EQ(reads.Waiting(), 1U);
    reads.Run();
    EXPECT_EQ(icons, std::vector{Normal}) << "the idle tick counts";
    EXPECT_TRUE(answers.empty());
    stored = static_cast<ProtectionMode>(7);
    reads.RunAll();
    EXPECT_EQ(answers, std::vector{static_cast<ProtectionMode>(7)}) << "the menu checks none of them";
    EXPECT_EQ(modes.Display().mode, Normal);
    EXPECT_EQ(changes, 0);
}

}  // namespace
}  // namespace brennvar
