#include "commands/ProtectionModes.h"

#include <gtest/gtest.h>

#include <deque>

#include "support/FakeClock.h"
#include "support/FakePipe.h"

namespace brennvar {
namespace {

constexpr FileTime kMinute = 600'000'000;
using enum ProtectionMode;

// A service that stores what it is sent, but writes it down only when the test lets it read.
class ProtectionModesTest : public testing::Test {
protected:
    using Done = std::function<void(ProtectionMode)>;
    test::FakeClock clock;
    test::FakePipe pipe;
    CommandPipe commands{pipe, clock};
    Language language{nullptr};
    bool allows = true;
    ProtectionMode stored = Normal;
    std::deque<Done> readings;  // under way
    std::vector<ProtectionMode> icons;
    int changes = 0;
    ProtectionModes modes{
        {.clock = clock,
         .language = language,
         .checkPassword =
             [this](const std::function<void()>& action) {
                 if (allows) action();
             },
         .send =
             [this](const std::function<void(CommandPipe&)>& task, const std::function<void()>& delivered) {
                 task(commands);
                 delivered();
             },
         .read = [this](auto, Done done) { readings.push_back(std::move(done)); },
         .changed = [this] { ++changes; },
         .idleModeRead = [this](ProtectionMode mode) { icons.push_back(mode); }}};

    void FinishReadings() {
        while (!readings.empty()) {
            const Done done = std::move(readings.front());
            readings.pop_front();
            done(stored);
        }
    }
    void Tick(bool isIdle) {
        modes.Tick(isIdle);
        FinishReadings();
    }
    void Choose(ModeChange change) {
        modes.Change(change);
        stored = change.mode;
        FinishReadings();
        pipe.writes.clear();
    }
    // The records that were sent since the last call: the command, and for command 8 its value.
    std::string Sent() {
        std::string text;
        for (const auto& message : pipe.writes) {
            text += std::to_string(std::to_integer<int>(message.bytes[0]));
            if (message.bytes[0] == std::byte{8}) {
                EXPECT_EQ(message.bytes[5592], std::byte{1}) << "the key of the mode";
                text += '=';
                text += std::to_string(std::to_integer<int>(message.bytes[5468]));
            }
            text += " ";
        }
        pipe.writes.clear();
        return text;
    }
};

TEST_F(ProtectionModesTest, TimedModeEndsOnTheFirstIdleTick) {
    const FileTime start = clock.now;
    Choose({AllowAll, 5});
    EXPECT_EQ(modes.Display(), (ModeDisplay{AllowAll, start + 5 * kMinute}));
    clock.now = start + 5 * kMinute - 1;
    Tick(true);
    EXPECT_EQ(Sent(), "");
    clock.now = start + 9 * kMinute;
    Tick(false);
    EXPECT_EQ(Sent(), "") << "traffic keeps the mode";
    Tick(true);
    EXPECT_EQ(Sent(), "8=0 7 ") << "without gate and event";
    EXPECT_EQ(icons, (std::vector{AllowAll, Normal})) << "only idle ticks reach the icon";
    Tick(true);
    EXPECT_EQ(Sent(), "") << "once";
}

TEST_F(ProtectionModesTest, WhatDoesNotArmLeavesAnEarlierExpiryAsItIs) {
    allows = false;
    Choose({AllowAll, 7});  // refused
    allows = true;
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

TEST_F(ProtectionModesTest, ReadsOnceAtATimeAndAnswersWithWhatIsStoredThen) {
    Choose({AllowAll, 5});
    clock.now += 6 * kMinute;
    modes.Tick(true);
    modes.Tick(false);  // traffic again, while the file is held
    std::vector<ProtectionMode> answers;
    modes.Read([&](ProtectionMode mode) { answers.push_back(mode); });
    ASSERT_EQ(readings.size(), 1U);
    const Done first = std::move(readings.front());
    readings.pop_front();
    first(AllowAll);
    EXPECT_EQ(Sent(), "8=0 7 ") << "the idle tick counts";
    EXPECT_TRUE(answers.empty());
    EXPECT_EQ(readings.size(), 1U);
    stored = BlockAll;
    FinishReadings();
    EXPECT_EQ(answers, std::vector{BlockAll});
    const int before = changes;
    Tick(false);
    EXPECT_EQ(changes, before) << "nothing has changed";
}

}  // namespace
}  // namespace brennvar
