#include "rules/SafeEntryName.h"

#include <gtest/gtest.h>

namespace brennvar {
namespace {

constexpr auto kSkipped = std::nullopt;

TEST(SafeEntryNameTest, DropsWhateverCouldLeaveTheFolder) {
    struct Row {
        std::string_view given;
        std::optional<std::string> name;
        std::optional<std::string> path;  // of the file
    };
    const Row rows[] = {
        {"rules.conf", "rules.conf", "rules.conf"},
        {"C:\\x\\..\\rules.conf", "rules.conf", "rules.conf"},
        {"C:rules.conf", "rules.conf", "rules.conf"},
        {"C:D:\\/rules.conf", "rules.conf", "rules.conf"},
        {"\\\\server\\share\\rules.conf", "server\\share\\rules.conf", "server/share/rules.conf"},
        {"\\\\?\\C:\\rules.conf", kSkipped, kSkipped},  // a colon is left
        {"../../rules.conf", "rules.conf", "rules.conf"},
        {"..\\../rules.conf", "rules.conf", "rules.conf"},
        {"a\\../b/..\\c/../d\\..\\e", "e", "e"},
        {"a/../C:/b", "b", "b"},  // the loop starts again after each drop
        {"a\\..\\\\b", "b", "b"},
        {"sub/rules.conf", "sub/rules.conf", "sub/rules.conf"},
        {"./rules.conf", "./rules.conf", "rules.conf"},
        {"sub\\\\.\\rules.conf", "sub\\\\.\\rules.conf", "sub/rules.conf"},
        {"rules.conf. . ", "rules.conf. . ", "rules.conf"},  // Windows drops these
        {"sub. /rules.conf", "sub. /rules.conf", "sub/rules.conf"},
        {"..rules.conf", "..rules.conf", "..rules.conf"},
        {"\xE4\xF6.conf", "\xE4\xF6.conf", "\xE4\xF6.conf"},
        {"COM10", "COM10", "COM10"},
        {"console", "console", "console"},
        // Nothing that can be a file of the folder
        {"", kSkipped, kSkipped},
        {"C:\\", kSkipped, kSkipped},
        {".", kSkipped, kSkipped},
        {"..", kSkipped, kSkipped},
        {"a\\..", kSkipped, kSkipped},
        {"a/..", kSkipped, kSkipped},
        {"rules.conf:stream", kSkipped, kSkipped},
        {"ab:c", kSkipped, kSkipped},
        {"NUL", kSkipped, kSkipped},
        {"sub\\con .txt", kSkipped, kSkipped},
        {"aux.conf/x", kSkipped, kSkipped},
        {"Com1.txt", kSkipped, kSkipped},
        {"lpt0", kSkipped, kSkipped},
        {"COM\xB9", kSkipped, kSkipped},
        {"conout$", kSkipped, kSkipped},
        // Names that only the path refuses
        {"sub/", "sub/", kSkipped},
        {"sub\\", "sub\\", kSkipped},
        {"a/.. /b", "a/.. /b", kSkipped},
        {"a/.../b", "a/.../b", kSkipped},
        {". .", ". .", kSkipped},
        {"rul*s", "rul*s", kSkipped},
        {"a\tb", "a\tb", kSkipped},
        {"RULES~1.CON", "RULES~1.CON", kSkipped},  // what Windows calls rules.conf, too
        {"sub/RULES~12", "sub/RULES~12", kSkipped},
        {"RULES~1.CON. ", "RULES~1.CON. ", kSkipped},
        {"LONGDI~1/x", "LONGDI~1/x", kSkipped},
        {"rules~1.conf", "rules~1.conf", "rules~1.conf"},  // none of these has the form
        {"rules_ad~1.con", "rules_ad~1.con", "rules_ad~1.con"},
        {"rules~.con", "rules~.con", "rules~.con"},
        {"rules~1a", "rules~1a", "rules~1a"},
        {"a~1.b.c", "a~1.b.c", "a~1.b.c"},
    };
    for (const Row& row : rows) {
        EXPECT_EQ(SafeEntryName(row.given), row.name) << row.given;
        EXPECT_EQ(EntryPath(row.given), row.path) << row.given;
    }
}

}  // namespace
}  // namespace brennvar
