#include "security/PasswordCheck.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <filesystem>
#include <new>
#include <optional>
#include <string>

#include "security/StoredPassword.h"
#include "support/DataFolder.h"
#include "support/FakeClock.h"
#include "support/GoldenCipher.h"

namespace brennvar {
namespace {

TEST(PasswordTest, IsCheckedBeforeItsConfirmation) {
    using enum PasswordVerdict;
    const struct {
        const char *stored, *old, *entered, *confirmation;  // without an old one: to be let through
        PasswordVerdict expected;
    } rows[] = {
        {"Secret1", nullptr, "Secret1", "Secret1", Right},
        {"Secret1", nullptr, "secret1", "secret1", Wrong},
        {"Secret1", nullptr, "Secret12", "Secret1", Wrong},
        {"Secret1", nullptr, "", "", Wrong},
        {"Secret1", nullptr, "Secret1", "Secret", Unconfirmed},
        {"Secret1", nullptr, "Secret1", "", Unconfirmed},
        {"old", "old", "", "", Right},  // clears it
        {"old", "fresh", "fresh", "", Wrong},
        {"old", "old", "fresh", "", Unconfirmed},
        {"", "", "fresh", "fresh", Right},
        {"", "old", "fresh", "fresh", Wrong},  // none is set, so that it must be left empty
    };
    for (const auto& row : rows) {
        const Password stored(row.stored), entered(row.entered), confirmation(row.confirmation);
        EXPECT_EQ(row.old ? CheckChange(stored, Password(row.old), entered, confirmation)
                          : CheckEntered(stored, entered, confirmation),
                  row.expected)
            << &row - rows;
    }
}

TEST(PasswordTest, LeavesNothingInMemory) {
    alignas(Password) unsigned char place[sizeof(Password)];
    std::fill(std::begin(place), std::end(place), static_cast<unsigned char>(0xA5));
    auto* password = new (place) Password(std::string(200, 'x'));
    EXPECT_EQ(password->View(), std::string(119, 'x'));
    password->~Password();
    // Read as something else than the object that has gone.
    const volatile unsigned char* bytes = place;
    EXPECT_EQ(std::count_if(bytes, bytes + sizeof place, [](unsigned char byte) { return byte != 0; }), 0);
}

TEST(StoredPasswordTest, IsTheTextOfTheFirstRecordOfOptionFour) {
    const auto record = [](char id, std::string text) {
        text.resize(120, '\0');
        return std::string{id, 0, 0, 0, 0, 0, 0, 0} + text;
    };
    std::string others;
    for (int i = 0; i < 40; ++i) others += record(static_cast<char>(40 + i), "other");
    const test::DataFolder folder;
    test::FakeClock clock;
    const auto stored = [&](const std::string& plain) {
        folder.Write("\\config.conf", test::EncipherByHand(plain, 128));
        return StoredPassword(folder.Path(), clock).Read();
    };
    EXPECT_EQ(StoredPassword(folder.Path() + "nowhere", clock).Read(), Password()) << "no file at all";
    EXPECT_EQ(stored(record(4, "Secret1") + record(4, "other")), Password("Secret1"));
    EXPECT_EQ(stored(others + record(4, std::string(120, 'x'))), Password(std::string(119, 'x')));  // unterminated
    EXPECT_EQ(stored(others), Password());
    EXPECT_EQ(stored(""), Password());
    // It may stand in the part that is not there.
    EXPECT_EQ(stored(record(4, "Secret1").substr(0, 127)), std::nullopt);
    EXPECT_EQ(stored(record(4, "Secret1") + record(5, "other").substr(0, 9)), Password("Secret1"));
    // Nor can it be told of a path that is no file.
    std::filesystem::remove(folder.File("\\config.conf"));
    std::filesystem::create_directories(folder.File("\\config.conf"));
    EXPECT_EQ(StoredPassword(folder.Path(), clock).Read(), std::nullopt);
}

}  // namespace
}  // namespace brennvar
