#include <gtest/gtest.h>

#include "base/Windows_win.h"
#include "ipc/RecordFile.h"
#include "support/GoldenCipher.h"

namespace brennvar {
namespace {

// Holds for the optimising build, where a compiler might join the key's two halves ahead of time.
TEST(RecordCipherWinTest, KeepsTheKeyOutOfTheProgramFile) {
    char own[MAX_PATH] = {};
    ::GetModuleFileNameA(nullptr, own, MAX_PATH);
    auto file = RecordFile::OpenReadOnly(own);
    ASSERT_TRUE(file);
    std::string image(static_cast<std::size_t>(file->Rewind()), '\0');
    ASSERT_EQ(file->Read(std::as_writable_bytes(std::span(image))), image.size());
    // The cipher is in this program, with the key in its two halves.
    EXPECT_NE(image.find(test::TextFromHex("57a713637d7df4703c03d8f04af3e5b6")), std::string::npos);
    EXPECT_EQ(image.find(test::TextFromHex("9e3b51c7046df288a17c35da601fb4e9")), std::string::npos);
    EXPECT_EQ(image.find(test::kKeystream.substr(0, 16)), std::string::npos);
}

}  // namespace
}  // namespace brennvar
