// What becomes of the service's options while their file is held or denied, on every road that reads it.
#include <gtest/gtest.h>

#ifndef _WIN32  // file modes stand for what another program, or an access list, keeps from this user

#include <sys/stat.h>
#include <unistd.h>

#include <filesystem>
#include <initializer_list>
#include <string>
#include <tuple>

#include "config/Options.h"
#include "security/StoredPassword.h"
#include "support/DataFolder.h"
#include "support/FakeClock.h"
#include "support/GoldenCipher.h"

namespace brennvar {
namespace {

namespace fs = std::filesystem;

// As a user whom file modes mean, and who owns this: the superuser may open everything.
class AsPlainUser {
public:
    explicit AsPlainUser(std::initializer_list<std::string> owned) {
        if (::geteuid() != 0) return;
        for (const std::string& path : owned) std::ignore = ::chown(path.c_str(), kNobody, kNobody);
        EXPECT_EQ(::seteuid(kNobody), 0);
    }
    AsPlainUser(const AsPlainUser&) = delete;
    AsPlainUser& operator=(const AsPlainUser&) = delete;
    ~AsPlainUser() {
        if (::getuid() == 0) std::ignore = ::seteuid(0);
    }

private:
    static constexpr uid_t kNobody = 65534;
};

TEST(HeldFilesTest, OptionsAreReadWhenTheyCanBeAndAreNeverTakenForNone) {
    enum class Expected { Values, Defaults, Unreadable };
    using enum Expected;
    const struct {
        const char* what;
        mode_t folder, file, later;  // later: after ten pauses
        bool isThere;
        Expected expected;
        std::size_t pauses;
    } rows[] = {{"free", 0700, 0600, 0600, true, Values, 0},
                {"may only be read", 0500, 0400, 0400, true, Values, 0},
                {"may only be read, and is held for ten milliseconds", 0500, 0000, 0400, true, Values, 10},
                {"held for ten milliseconds", 0700, 0000, 0600, true, Values, 10},
                {"held for good", 0700, 0000, 0000, true, Unreadable, 6000},
                {"missing, and may not be made", 0500, 0, 0, false, Defaults, 0}};
    for (const auto& row : rows) {
        const test::DataFolder data;
        const std::string path = data.File("\\config.conf");
        const std::string folder = fs::path(path).parent_path().string();
        // Option 18 with 5, option 4 with "pw".
        std::string records = std::string("\x12\0\0\0\5\0\0\0", 8) + std::string(120, '\0');
        records += std::string("\4\0\0\0\0\0\0\0pw", 10) + std::string(118, '\0');
        if (row.isThere) data.Write("\\config.conf", test::EncipherByHand(records, 128));
        const AsPlainUser user({folder, path});
        test::FakeClock clock;
        const auto read = [&](auto road) {
            clock.sleeps.clear();
            (void)::chmod(path.c_str(), row.file);
            EXPECT_EQ(::chmod(folder.c_str(), row.folder), 0);
            auto result = road();
            EXPECT_EQ(::chmod(folder.c_str(), 0700), 0);
            EXPECT_EQ(clock.sleeps.size(), row.pauses) << row.what;
            return result;
        };
        clock.whenSlept = [&] {
            if (clock.sleeps.size() == 10) (void)::chmod(path.c_str(), row.later);
        };
        const OptionReader options(data.Path(), clock);
        const auto values = read([&] { return options.ReadAll(); });
        const OptionValues defaults;
        EXPECT_EQ(values.has_value(), row.expected != Unreadable) << row.what;
        EXPECT_EQ(values.value_or(defaults).Number(OptionId::BlockSeconds), row.expected == Values ? 5U : 600U)
            << row.what;
        const auto password = read([&] { return StoredPassword(data.Path(), clock).Read(); });
        EXPECT_EQ(password.has_value(), row.expected != Unreadable) << row.what;
        EXPECT_EQ(password.value_or(Password()), Password(row.expected == Values ? "pw" : "")) << row.what;
    }
}

}  // namespace
}  // namespace brennvar

#endif
