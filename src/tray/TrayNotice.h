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

// The text as a balloon shows it: at most so many characters and lines, cut at the end of a word where there is
// one near, with three dots for what is missing.
[[nodiscard]] std::string CutNotice(std::string_view text, std::size_t characters, std::size_t lines);

// Whether a link of a notice may be opened: "http://" or "https://", case ignored, and no character that an address
// does not have. A notice comes from outside, and anything else could be a program.
[[nodiscard]] bool IsWebAddress(std::string_view link);

}  // namespace brennvar
