// What the service says on the tray pipe.
#pragma once

#include <string>
#include <string_view>

namespace brennvar {

struct TrayNotice {
    enum class Kind {
        Refresh,  // the application rules have changed
        Attack,   // one more attack was noticed
        Balloon,  // to be shown; nothing when the text is empty
    };
    Kind kind = Kind::Balloon;
    std::string text;
    std::string link;  // may be empty
};

// A message is its text up to the first '|' and a link after it, which is trimmed. The two words are matched
// exactly, case included.
[[nodiscard]] TrayNotice ParseTrayNotice(std::string_view message);

}  // namespace brennvar
