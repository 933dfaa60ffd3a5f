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
    // A client that has been accepted, and has written so much by then.
    [[nodiscard]] UniqueFile Accept(std::size_t size) {
        UniqueFile client;
        std::thread caller([&] {
            while (!client) {
                client.Reset(
                    ::CreateFileA(kName, GENERIC_READ | GENERIC_WRITE, 0, nullptr, OPEN_EXISTING, 0, nullptr));
            }
            DWORD mode = PIPE_READMODE_MESSAGE;
            EXPECT_TRUE(::SetNamedPipeHandleState(client.Get(), &mode, nullptr, nullptr));
            const Bytes bytes(size, std::byte{7});
            DWORD written = 0;
            if (size == 0) return;
            EXPECT_TRUE(::WriteFile(client.Get(), bytes.data(), static_cast<DWORD>(size), &written, nullptr));
        });
        EXPECT_TRUE(pipe.Accept());
        caller.join();
        return client;
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
        const UniqueFile client = Accept(size);
        EXPECT_EQ(pipe.Read(buffer), size);
        EXPECT_EQ(buffer[size - 1], std::byte{7});
        EXPECT_TRUE(pipe.Write(buffer));
        // The client reads only later: what it has got must not be lost by then, as without the flush it would be.
        Bytes answer(kSize);
        std::thread reader([&] {
            ::Sleep(100);
            DWORD read = 0;
            EXPECT_TRUE(::ReadFile(client.Get(), answer.data(), kSize, &read, nullptr));
            EXPECT_EQ(read, kSize);
        });
        pipe.Flush();
        pipe.Disconnect();
        reader.join();
        EXPECT_EQ(answer, buffer);
    }
}

TEST_F(RecordPipeWinTest, HasNoPatienceWithClientsThatAreStuck) {
    const UniqueFile silent = Accept(0);
    std::size_t size = 1;
    EXPECT_LT(TimeOf([&] { size = pipe.Read(buffer); }), 5s);
    EXPECT_EQ(size, 0U);
    pipe.Disconnect();

    const UniqueFile deaf = Accept(kSize);
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

TEST_F(RecordPipeWinTest, StopEndsEveryWait) {
    const UniqueFile silent = Accept(0);
    EXPECT_TRUE(pipe.Write(buffer));
    pipe.Stop();
    // Each of them would have its second of patience.
    EXPECT_LT(TimeOf([&] {
                  for (int round = 0; round < 20; ++round) {
                      EXPECT_EQ(pipe.Read(buffer), 0U);
                      pipe.Flush();
                  }
              }),
              15s);
    pipe.Disconnect();
    EXPECT_FALSE(pipe.Accept());
}

TEST_F(RecordPipeWinTest, StopEndsAWaitThatHasBegun) {
    // Without a client nothing else would end it.
    std::thread stopper([&] {
        ::Sleep(100);
        pipe.Stop();
    });
    EXPECT_FALSE(pipe.Accept());
    stopper.join();
}

TEST_F(RecordPipeWinTest, IsNotMadeBesideAnotherOne) {
    EXPECT_FALSE(WinRecordPipe(kName, kSize).Create());
    constexpr char kForeign[] = R"(\\.\pipe\brennvar-test-foreign-pipe)";
    UniqueFile foreign(::CreateNamedPipeA(kForeign, PIPE_ACCESS_DUPLEX, PIPE_TYPE_MESSAGE, PIPE_UNLIMITED_INSTANCES,
                                          kSize, kSize, 0, nullptr));
    ASSERT_TRUE(foreign);
    EXPECT_FALSE(WinRecordPipe(kForeign, kSize).Create()) << "its clients would come to either";
    foreign.Reset();
    EXPECT_TRUE(WinRecordPipe(kForeign, kSize).Create());
}

}  // namespace
}  // namespace brennvar
