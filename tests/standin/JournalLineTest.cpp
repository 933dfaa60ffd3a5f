#include "service/JournalLine.h"

#include <gtest/gtest.h>

#include <array>

namespace brennvar::standin {
namespace {

TEST(JournalLineTest, ListsTheRunsOfNonZeroBytes) {
    std::array<unsigned char, 12> record{0x08, 0, 0, 0, 0x58, 0x02, 0, 0xAB, 0, 0, 0, 0xFF};
    EXPECT_EQ(FormatRecordLine(7, Channel::Command, std::as_bytes(std::span(record))),
              "7 COMMAND 12 0:08 4:5802 7:AB 11:FF");
    EXPECT_EQ(FormatRecordLine(1, Channel::Pid, std::as_bytes(std::span(record).first(0))), "1 PID 0");
    record.fill(0);
    EXPECT_EQ(FormatRecordLine(2, Channel::Tray, std::as_bytes(std::span(record))), "2 TRAY 12");
    record.fill(0x10);
    EXPECT_EQ(FormatRecordLine(3, Channel::Queue, std::as_bytes(std::span(record))),
              "3 QUEUE 12 0:101010101010101010101010");
    EXPECT_EQ(FormatRecordLine(4, Channel::Confirm, std::as_bytes(std::span(record).first(1))), "4 CONFIRM 1 0:10");
    EXPECT_EQ(FormatEventLine(5, "question-queued 3"), "5 EVENT question-queued 3");
}

}  // namespace
}  // namespace brennvar::standin
