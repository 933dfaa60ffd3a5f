#include "prompts/WallpaperWatch.h"

#include <gtest/gtest.h>

#include <functional>
#include <vector>

#include "support/FakeClock.h"

namespace brennvar {
namespace {

using namespace std::chrono_literals;

struct FakeValue final : WallpaperValue {
    std::optional<std::string> value;
    int changes = 0;
    std::vector<std::string> log;
    bool WaitForChange() override { return changes-- > 0; }
    std::optional<std::string> Read() override { return value; }
    void Write(const std::string& text) override {
        value = text;
        log.push_back("write " + text);
    }
    void Apply(const std::string& text) override { log.push_back("apply " + text); }
};

struct FakeUser final : ActivityUser {
    bool allows = false;
    std::vector<ActivityRequest> asked;
    std::function<void()> whileAsking = [] {};
    ActivityAnswer Ask(const ActivityRequest& request) override {
        asked.push_back(request);
        whileAsking();
        return {.allow = allows};
    }
    void Trust(const std::string&) override {}
    void BringForward() override {}
    void LeaveProgram() override {}
};

using Log = std::vector<std::string>;

class WallpaperWatchTest : public testing::Test {
protected:
    FakeValue value;
    FakeUser user;
    test::FakeClock clock;
    WallpaperWatch watch{value, user, clock};

    void ChangeTo(const std::string& text) {
        value.value = text;
        watch.Check();
    }
};

TEST_F(WallpaperWatchTest, TakesTheFirstValueAndPicturesSilently) {
    for (const char* const text : {"first.htm", "first.htm", "hills.bmp", "", "ht.ml.png"}) ChangeTo(text);
    value.value.reset();
    watch.Check();
    EXPECT_TRUE(user.asked.empty() && value.log.empty());
    // The last one is known: it is what a page is put back to.
    ChangeTo("page.html");
    EXPECT_EQ(value.log.front(), "write ht.ml.png");
}

TEST_F(WallpaperWatchTest, PutsAPageBackUntilTheUserAgrees) {
    ChangeTo("hills.bmp");
    user.whileAsking = [this] {
        EXPECT_EQ(value.value, "hills.bmp");
        value.value = "again.htm";
    };
    for (const char* const page : {"page.htm", "PAGE.HTML", "a.html?x"}) {
        value.log.clear();
        ChangeTo(page);
        EXPECT_EQ(value.log, (Log{"write hills.bmp", "write hills.bmp"})) << page;
    }
    EXPECT_EQ(user.asked, std::vector<ActivityRequest>(3, {.kind = ActivityRequest::Kind::ChangeWallpaper}));
    EXPECT_TRUE(clock.sleeps.empty());
}

TEST_F(WallpaperWatchTest, AppliesWhatTheUserAgreesToAndRests) {
    ChangeTo("hills.bmp");
    user.allows = true;
    ChangeTo("page.htm");
    EXPECT_EQ(value.log, (Log{"write hills.bmp", "write page.htm", "apply page.htm"}));
    EXPECT_EQ(clock.sleeps, std::vector{std::chrono::milliseconds(3000)});
    watch.Check();
    EXPECT_EQ(user.asked.size(), 1U) << "it is the known one now";
}

}  // namespace
}  // namespace brennvar
