#include "prompts/ActivityServer.h"

#include <gtest/gtest.h>

#include <deque>
#include <map>
#include <vector>

#include "support/FakeClock.h"
#include "support/RawBytes.h"

namespace brennvar {
namespace {

using namespace std::chrono_literals;
using namespace std::string_literals;
using namespace std::string_view_literals;
using test::RawBytes;
using Kind = ActivityRequest::Kind;

// Clients that come one after the other; each has written something, or nothing.
class FakeRecordPipe final : public RecordPipe {
public:
    bool canBeMade = true;
    std::deque<RawBytes> clients;
    int failingAccepts = 0;
    bool canWrite = true;
    std::function<void()> whenEmpty = [] {};
    std::vector<std::string> log;
    std::vector<RawBytes> written;

    bool Create() override { return canBeMade; }
    bool Accept() override {
        if (failingAccepts-- > 0) return false;
        if (clients.size() == 1) whenEmpty();
        return !clients.empty();
    }
    std::size_t Read(std::span<std::byte> buffer) override {
        EXPECT_EQ(buffer.size(), 8208U);
        const RawBytes client = clients.front();
        clients.pop_front();
        std::copy(client.begin(), client.end(), buffer.begin());
        return client.size();
    }
    bool Write(std::span<const std::byte> record) override {
        log.emplace_back("write");
        written.emplace_back(record.begin(), record.end());
        return canWrite;
    }
    void Flush() override { log.emplace_back("flush"); }
    void Disconnect() override { log.emplace_back("disconnect"); }
};

struct FakeSources final : ActivitySources {
    std::string trusted = "nobody";
    std::map<std::uint32_t, std::string> processes;
    bool IsTrusted(std::string_view path) override { return path == trusted; }
    std::optional<std::string> ProcessPath(std::uint32_t id) override {
        const auto found = processes.find(id);
        return found == processes.end() ? std::nullopt : std::optional(found->second);
    }
};

struct FakeUser final : ActivityUser {
    ActivityAnswer answer;
    std::vector<ActivityRequest> asked;
    std::vector<std::string> log;
    std::function<std::size_t()> slept = [] { return std::size_t{0}; };
    ActivityAnswer Ask(const ActivityRequest& request) override {
        asked.push_back(request);
        return answer;
    }
    void Trust(const std::string& path) override {
        EXPECT_EQ(slept(), 0U) << "the pause comes after the command";
        log.push_back("trust " + path);
    }
    void BringForward() override { log.emplace_back("forward"); }
    void LeaveProgram() override { log.emplace_back("leave"); }
};

constexpr char kActing[] = R"(C:\Tools\acting.exe)";
constexpr char kTarget[] = R"(C:\Tools\target.exe)";

// A request of 8,208 bytes that fills every field.
RawBytes Request(char kind, std::string_view acting = kActing, std::string_view target = kTarget) {
    return test::ZerosWith(8208, {{0, std::string_view(&kind, 1)},
                                  {4, "\x11\x22\x33\x44"sv},
                                  {8, "\xEE\xEE\xEE\xEE"sv},
                                  {12, acting},
                                  {4108, target},
                                  {8204, "\x67\x12\0\0"sv}});
}
RawBytes Answer(char answer) {
    RawBytes bytes = Request('d');  // 100
    bytes[8] = static_cast<std::byte>(answer);
    bytes[9] = bytes[10] = bytes[11] = std::byte{0};
    return bytes;
}

class ActivityServerTest : public testing::Test {
protected:
    FakeRecordPipe pipe;
    FakeSources sources;
    FakeUser user;
    test::FakeClock clock;
    ActivityServer server{pipe, sources, user, clock};

    ActivityServerTest() {
        user.slept = [this] { return clock.sleeps.size(); };
        pipe.whenEmpty = [this] { server.RequestStop(); };
    }
    std::vector<std::string> Serve(std::deque<RawBytes> clients) {
        pipe.clients = std::move(clients);
        pipe.log.clear();
        pipe.written.clear();
        server.Run();
        return pipe.log;
    }
};

using Log = std::vector<std::string>;

TEST_F(ActivityServerTest, AsksAndGivesTheAnswerBackInTheWholeRecord) {
    for (const bool allows : {false, true}) {
        user.answer = {.allow = allows, .trust = false};
        ActivityServer again(pipe, sources, user, clock);
        pipe.clients = {Request(1), Request(3), Request(4)};
        pipe.whenEmpty = [&] { again.RequestStop(); };
        pipe.written.clear();
        again.Run();
        EXPECT_EQ(pipe.written, std::vector<RawBytes>(3, Answer(allows ? 1 : 0)));
    }
    user.asked.resize(3);
    EXPECT_EQ(user.asked, (std::vector<ActivityRequest>{{Kind::WriteToProcess, kActing, kTarget},
                                                        {Kind::StartBrowser, kActing, kTarget},
                                                        {Kind::ChangeAppInit}}));
    EXPECT_TRUE(user.log.empty() && clock.sleeps.empty());
}

TEST_F(ActivityServerTest, TellsTheServiceToTrustAndWaitsBeforeItAnswers) {
    user.answer = {.allow = true, .trust = true};
    Serve({Request(1)});
    EXPECT_EQ(user.log, Log{std::string("trust ") + kActing});
    EXPECT_EQ(clock.sleeps, std::vector{std::chrono::milliseconds(1000)});
    EXPECT_EQ(pipe.written, std::vector<RawBytes>{Answer(1)});
}

TEST_F(ActivityServerTest, NoIsNeverTrusted) {
    user.answer = {.allow = false, .trust = true};
    Serve({Request(3)});
    EXPECT_TRUE(user.log.empty());
    EXPECT_EQ(pipe.written, std::vector<RawBytes>{Answer(0)});
}

TEST_F(ActivityServerTest, OwnProcessesAreFoundByTheirNameInAnyCase) {
    const std::pair<std::optional<std::string>, char> rows[] = {{R"(C:\Tools\BrennvarGUI.EXE)", 0},
                                                                {R"(C:\x\brennvar.exe)", 0},
                                                                {R"(C:\x\HARROWLYN.exe)", 0},
                                                                {R"(C:\x\myharrowlynsrv.exe.bak)", 0},
                                                                {R"(C:\x\brennvar.ex)", 1},
                                                                {"", 1},
                                                                {std::nullopt, 1}};
    for (const auto& [path, answer] : rows) {
        sources.processes.clear();
        if (path) sources.processes[0x1267] = *path;
        ActivityServer again(pipe, sources, user, clock);
        pipe.clients = {Request(2)};
        pipe.log.clear();
        pipe.written.clear();
        pipe.whenEmpty = [&] { again.RequestStop(); };
        again.Run();
        EXPECT_EQ(pipe.log, (Log{"write", "disconnect"})) << path.value_or("unknown");
        EXPECT_EQ(pipe.written, std::vector<RawBytes>{Answer(answer)}) << path.value_or("unknown");
    }
    EXPECT_TRUE(user.asked.empty());
}

TEST_F(ActivityServerTest, ControlRequestsAndUnknownKindsGetNoAnswer) {
    EXPECT_EQ(Serve({Request(5), Request(0), Request(100), Request(6), Request(24)}), Log(5, "disconnect"));
    EXPECT_EQ(user.log, (Log{"forward", "leave"}));
    EXPECT_TRUE(user.asked.empty());
}

TEST_F(ActivityServerTest, GoesOnWhateverAClientSends) {
    // Nothing, one byte, half of a record, paths without an end; an answer that nobody takes.
    RawBytes half = Request(1);
    half.resize(4104);
    const std::string endless(4096, 'p');
    pipe.canWrite = false;
    EXPECT_EQ(Serve({{}, RawBytes{std::byte{1}}, half, Request(1, endless, endless), Request(1)}),
              (Log{"disconnect", "write", "disconnect", "write", "disconnect", "write", "disconnect", "write",
                   "disconnect"}));
    ASSERT_EQ(user.asked.size(), 4U);
    EXPECT_EQ(user.asked[0], (ActivityRequest{Kind::WriteToProcess, "", ""}));
    EXPECT_EQ(user.asked[1], (ActivityRequest{Kind::WriteToProcess, kActing, ""}));
    EXPECT_EQ(user.asked[2], (ActivityRequest{Kind::WriteToProcess, endless.substr(1), endless.substr(1)}));
    EXPECT_EQ(pipe.written[0], test::ZerosWith(8208, {{0, "d"}}));
}

TEST_F(ActivityServerTest, PausesAfterAFailedWaitAndEndsWithoutAPipe) {
    pipe.failingAccepts = 2;
    Serve({Request(24)});
    EXPECT_EQ(clock.sleeps, std::vector(2, 100ms));
    clock.stopped = true;
    pipe.failingAccepts = 1000;
    ActivityServer(pipe, sources, user, clock).Run();
    EXPECT_EQ(clock.sleeps.size(), 3U);
    pipe.canBeMade = false;
    pipe.log.clear();
    ActivityServer(pipe, sources, user, clock).Run();
    EXPECT_EQ(pipe.log, Log());
}

}  // namespace
}  // namespace brennvar
