#include "ipc/RecordPipe_win.h"

#include <gtest/gtest.h>

#include <chrono>
#include <thread>
#include <vector>

namespace brennvar {
namespace {

using namespace std::chrono_literals;

constexpr char kName[] = R"(\\.\pipe\brennvar-test-record-pipe)";
constexpr DWORD kSize = 8208;
using Bytes = std::vector<std::byte>;

class RecordPipeWinTest : public testing::Test {
protected:
    WinRecordPipe pipe{kName, kSize};
    Bytes buffer = Bytes(kSize);

    void SetUp() override { ASSERT_TRUE(pipe.Create()); }
    static UniqueFile Connect() {
        UniqueFile client(
            ::CreateFileA(kName, GENERIC_READ | GENERIC_WRITE, 0, nullptr, OPEN_EXISTING, 0, nullptr));
        DWORD mode = PIPE_READMODE_MESSAGE;
        EXPECT_TRUE(client && ::SetNamedPipeHandleState(client.Get(), &mode, nullptr, nullptr));
        return client;
    }
    static void Write(const UniqueFile& client, std::size_t size) {
        const Bytes bytes(size, std::byte{7});
        DWORD written = 0;
        EXPECT_TRUE(::WriteFile(client.Get(), bytes.data(), static_cast<DWORD>(size), &written, nullptr));
    }
    template <class Call>
    static std::chrono::milliseconds TimeOf(Call call) {
        const auto start = std::chrono::steady_clock::now();
        call();
        return std::chrono::ceil<std::chrono::milliseconds>(std::chrono::steady_clock::now() - start);
    }
};

TEST_F(RecordPipeWinTest, ReadsWhatIsThereAndGivesItBack) {
    for (const std::size_t size : {std::size_t{1}, std::size_t{4000}, std::size_t{kSize}}) {
        UniqueFile client = Connect();
        Write(client, size);
        ASSERT_TRUE(pipe.Accept());
        EXPECT_EQ(pipe.Read(buffer), size);
        EXPECT_EQ(buffer[size - 1], std::byte{7});
        EXPECT_TRUE(pipe.Write(buffer));
        // The client reads only later: what it has got must not be lost by then.
        Bytes answer(kSize);
        std::thread reader([&] {
            ::Sleep(100);
            DWORD read = 0;
            EXPECT_TRUE(::ReadFile(client.Get(), answer.data(), kSize, &read, nullptr));
            EXPECT_EQ(read, kSize);
        });
        EXPECT_GE(TimeOf([&] { pipe.Flush(); }), 50ms);
        pipe.Disconnect();
        reader.join();
        EXPECT_EQ(answer, buffer);
    }
}

TEST_F(RecordPipeWinTest, HasNoPatienceWithClientsThatAreStuck) {
    const UniqueFile silent = Connect();
    ASSERT_TRUE(pipe.Accept());
    std::size_t size = 1;
    EXPECT_LT(TimeOf([&] { size = pipe.Read(buffer); }), 5s);
    EXPECT_EQ(size, 0U);
    pipe.Disconnect();

    const UniqueFile deaf = Connect();
    ASSERT_TRUE(pipe.Accept());
    Write(deaf, kSize);
    EXPECT_EQ(pipe.Read(buffer), kSize);
    EXPECT_TRUE(pipe.Write(buffer));
    const auto flush = TimeOf([&] { pipe.Flush(); });
    EXPECT_GE(flush, 900ms);
    EXPECT_LT(flush, 5s);
    EXPECT_LT(TimeOf([&] {
                  while (pipe.Write(buffer)) {
                  }
              }),
              5s);
    pipe.Disconnect();
    EXPECT_FALSE(pipe.Write(buffer));
    pipe.Flush();
}

TEST_F(RecordPipeWinTest, TakesClientsThatHaveComeAndGone) {
    for (const std::size_t size : {std::size_t{0}, std::size_t{10}, std::size_t{kSize + 1}}) {
        UniqueFile client = Connect();
        if (size > 0) Write(client, size);
        client.Reset();
        ASSERT_TRUE(pipe.Accept());
        EXPECT_EQ(pipe.Read(buffer), size > kSize ? 0 : size);
        pipe.Disconnect();
    }
}

TEST_F(RecordPipeWinTest, StopEndsEveryWait) {
    EXPECT_FALSE(WinRecordPipe(kName, kSize).Create()) << "there is one instance";
    std::thread stopper([&] {
        ::Sleep(100);
        pipe.Stop();
    });
    EXPECT_FALSE(pipe.Accept());
    stopper.join();
    const UniqueFile silent = Connect();
    (void)pipe.Accept();
    EXPECT_LT(TimeOf([&] { EXPECT_EQ(pipe.Read(buffer), 0U); }), 900ms);
}

}  // namespace
}  // namespace brennvar
